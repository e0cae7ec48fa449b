// What the other libraries of the plug-in family add to Cocoa's classes at run time. Any of it may be
// missing, so it is asked for first, with two exceptions: +NewNSExceptionKTZ:, and the messages that make time
// values, which are there wherever the host class is whose objects they take.
#pragma once

#include "hostapi/types.h"

#include <CoreFoundation/CoreFoundation.h>
#include <Foundation/Foundation.h>

@interface NSException (ExceptionsOfTheFamily)
// A host exception object with one lock for the caller, or null.
+ (REALobject)NewNSExceptionKTZ:(NSException *)exception;
+ (void)PrepareNSExceptionKTZ;
// The dictionary of live wrapper objects that all libraries of the family share. Borrowed.
+ (CFMutableDictionaryRef)GetInstancesDictionaryKTZ;
@end

@interface NSValue (ValuesOfTheFamily)
+ (REALobject)NewQTKitNSViewKTZ:(id)view;

// Host objects for time values, locked for the caller.
- (REALobject)QTTimeValueKTZ;
- (REALobject)QTTimeRangeValueKTZ;
- (REALobject)CMTimeValueKTZ;
- (REALobject)CMTimeRangeValueKTZ;
- (REALobject)CMTimeMappingValueKTZ;

// Time values of host objects, autoreleased.
+ (id)valueWithQTTimeKTZ:(REALobject)object;
+ (id)valueWithQTTimeRangeKTZ:(REALobject)object;
+ (id)valueWithCMTimeKTZ:(REALobject)object;
+ (id)valueWithCMTimeRangeKTZ:(REALobject)object;
+ (id)valueWithCMTimeMappingKTZ:(REALobject)object;
@end

// The class "KTZREALobjectWrapper" carries a host object through Cocoa. It is found by name; these are its
// messages.
@interface NSObject (ObjectWrapperOfTheFamily)
+ (id)wrap:(REALobject)object;
- (REALobject)unwrap;
@end

const char *const kObjectWrapperClass = "KTZREALobjectWrapper";
