// Imports a function that no table has.
#include "tests/tools/machorun/image/exported.h"

extern "C" int functionThatNobodyHas();

EXPORTED int callIt()
{
    return functionThatNobodyHas();
}
