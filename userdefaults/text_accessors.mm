// Strings and the texts of URLs under a key.
#include "userdefaults/carried_defaults.h"

#include <CoreFoundation/CoreFoundation.h>

REALstring stringForKey(REALobject self, REALstring key)
{
    return guarded([=] { return hostTextOf([defaultsOf(self) stringForKey:textOf(key)]); });
}

void setStringForKey(REALobject self, REALstring key, REALstring value)
{
    guarded([=] {
        NSString *name = textOf(key);
        [defaultsOf(self) setObject:textOf(value) forKey:name];
    });
}

REALstring URLForKey(REALobject self, REALstring key)
{
    return guarded([=] { return hostTextOf([[defaultsOf(self) URLForKey:textOf(key)] absoluteString]); });
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

void setURLForKey(REALobject self, REALstring key, REALstring value)
{
    guarded([=] {
        NSString *name = textOf(key);
        [defaultsOf(self) setURL:URLOfText(value) forKey:name];
    });
}
