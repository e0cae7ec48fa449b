// Integers, singles, doubles and booleans under a key.
#include "userdefaults/carried_defaults.h"

int32_t integerForKey(REALobject self, REALstring key)
{
    return guardedWith(key, [=](NSString *name) { return [defaultsOf(self) integerForKey:name]; });
}

void setIntegerForKey(REALobject self, REALstring key, int32_t value)
{
    guardedWith(key, [=](NSString *name) { [defaultsOf(self) setInteger:value forKey:name]; });
}

float floatForKey(REALobject self, REALstring key)
{
    return guardedWith(key, [=](NSString *name) { return [defaultsOf(self) floatForKey:name]; });
}

void setFloatForKey(REALobject self, REALstring key, float value)
{
    guardedWith(key, [=](NSString *name) { [defaultsOf(self) setFloat:value forKey:name]; });
}

// The first systems have no doubles in their defaults: there a double is read and stored as a single.
double doubleForKey(REALobject self, REALstring key)
{
    return guarded([=]() -> double {
        NSString *name = TextOf(key);
        NSUserDefaults *defaults = defaultsOf(self);
        if ([defaults respondsToSelector:@selector(doubleForKey:)])
            return [defaults doubleForKey:name];
        return [defaults floatForKey:name];
    });
}

void setDoubleForKey(REALobject self, REALstring key, double value)
{
    guardedWith(key, [=](NSString *name) {
        NSUserDefaults *defaults = defaultsOf(self);
        if ([defaults respondsToSelector:@selector(setDouble:forKey:)])
            [defaults setDouble:value forKey:name];
        else
            [defaults setFloat:static_cast<float>(value) forKey:name];
    });
}

int32_t boolForKey(REALobject self, REALstring key)
{
    return guarded([=]() -> int32_t {
        NSString *name = TextOf(key);
        return static_cast<int8_t>([defaultsOf(self) boolForKey:name]);
    });
}

void setBoolForKey(REALobject self, REALstring key, int8_t value)
{
    guardedWith(key, [=](NSString *name) { [defaultsOf(self) setBool:static_cast<BOOL>(value) forKey:name]; });
}
