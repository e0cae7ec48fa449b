#include "tests/bridge/exceptions/cocoa_throwers.h"

#include "bridge/exceptions/method_guard.h"
#include "hostapi/holding.h"

#import <Foundation/Foundation.h>

static NSException *exceptionOf(const std::string &name, const std::string &reason, bool withInfo)
{
    return [NSException exceptionWithName:[NSString stringWithUTF8String:name.c_str()]
                                   reason:[NSString stringWithUTF8String:reason.c_str()]
                                 userInfo:withInfo ? [NSDictionary dictionaryWithObject:@"7" forKey:@"Line"] : nil];
}

namespace cocoa_throwers {

void raise(const std::string &name, const std::string &reason)
{
    @throw exceptionOf(name, reason, false);
}

void raiseWithInfo(const std::string &name, const std::string &reason)
{
    @throw exceptionOf(name, reason, true);
}

void throwObject()
{
    @throw @"foreign";
}

int32_t guardedInt32(const std::function<int32_t()> &body)
{
    return guarded([&] { return body(); });
}

double guardedDouble(const std::function<double()> &body)
{
    return guarded([&] { return body(); });
}

REALobject guardedHandle(const std::function<REALobject()> &body)
{
    return guarded([&] { return body(); });
}

void guardedNothing(const std::function<void()> &body)
{
    guarded([&] { body(); });
}

void guardedHolding(const std::function<void(HeldHandles &)> &body)
{
    guarded([&](HeldHandles &held) { body(held); });
}

REALobject guardedFrom(REALobject neutral, const std::function<void(HeldHandles &)> &body)
{
    return guarded(neutral, [&](HeldHandles &held) {
        body(held);
        return neutral;
    });
}

void throwWithoutMemory()
{
    @throw kNoMemoryForHandles;
}

std::string thrownBy(const std::function<void()> &body)
{
    @try {
        body();
    } @catch (NSException *exception) {
        return [[exception name] UTF8String];
    } @catch (id object) {
        return [[object description] UTF8String];
    }
    return "";
}

void raiseInHostCode(const std::string &name, const std::string &reason, bool withInfo)
{
    RaiseNSExceptionKTZ(exceptionOf(name, reason, withInfo));
}

} // namespace cocoa_throwers
