// Strings and the texts of URLs under a key.
#include "userdefaults/carried_defaults.h"

#include <CoreFoundation/CoreFoundation.h>

REALstring stringForKey(REALobject self, REALstring key)
{
    return guardedWith(
        key, [=](NSString *name, HeldHandles &held) { return HostTextOf([defaultsOf(self) stringForKey:name], held); });
}

REALstring URLForKey(REALobject self, REALstring key)
{
    return guardedWith(key, [=](NSString *name, HeldHandles &held) {
        return HostTextOf([[defaultsOf(self) URLForKey:name] absoluteString], held);
    });
}

// The URL that a text stands for, autoreleased; nil for a null string and for a text that is no URL.
static NSURL *URLOfText(REALstring string)
{
    CFStringRef text = string ? RBString2CFString(string) : nullptr;
    if (!text)
        return nil;
    CFURLRef url = CFURLCreateWithString(nullptr, text, nullptr);
    CFRelease(text);
    return [(NSURL *)url autorelease];
}

void setStringForKey(REALobject self, REALstring key, REALstring value)
{
    guardedWith(key, [=](NSString *name) {
        NSString *text = TextOf(value);
        [defaultsOf(self) setObject:text forKey:name];
    });
}

void setURLForKey(REALobject self, REALstring key, REALstring value)
{
    guardedWith(key, [=](NSString *name) {
        NSURL *url = URLOfText(value);
        [defaultsOf(self) setURL:url forKey:name];
    });
}
