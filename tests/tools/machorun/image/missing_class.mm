// Uses a class that no process has.
#include "tests/tools/machorun/image/exported.h"

#include <Foundation/Foundation.h>

@interface ClassThatNobodyHas : NSObject
@end

EXPORTED id askIt()
{
    return [ClassThatNobodyHas class];
}
