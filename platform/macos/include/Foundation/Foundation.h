// Foundation, as far as the plug-in uses it. Classes that 10.4 lacks are not declared: they are looked up by name.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <Foundation/NSCollections.h>
#include <Foundation/NSDate.h>
#include <Foundation/NSException.h>
#include <Foundation/NSGeometry.h>
#include <Foundation/NSObject.h>
#include <Foundation/NSString.h>
#include <Foundation/NSUserDefaults.h>
#include <Foundation/NSValue.h>

@interface NSURL : NSObject
- (NSString *)absoluteString;
@end

// Only asked for their class.
@interface NSAttributedString : NSObject
@end
@interface NSCalendar : NSObject
@end
@interface NSCharacterSet : NSObject
@end
@interface NSError : NSObject
@end
@interface NSFileHandle : NSObject
@end
@interface NSLocale : NSObject
@end
@interface NSTimer : NSObject
@end
