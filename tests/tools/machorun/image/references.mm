// What the loader fixes up before any code runs: pointers, constants, selectors, classes, imported variables.
#include "tests/tools/machorun/image/exported.h"

#include <Foundation/Foundation.h>

#include <cstring>

namespace {

int first()
{
    return 1;
}
int second()
{
    return 2;
}

struct Row {
    const char *name;
    int (*function)();
    const char *aliases[2];
};

Row rows[] = {{"alpha", first, {"a", "A"}}, {"beta", second, {"b", nullptr}}};
Row *lastRow = &rows[1];

volatile int seed = 41;
struct Initialized {
    int value;
    Initialized() : value(seed + 1) {}
    ~Initialized() { seed = 0; }
};
Initialized initialized;

int uninitialized;

} // namespace

EXPORTED int pointersBetweenSections()
{
    return strcmp(rows[0].name, "alpha") == 0 && rows[1].function() == 2 && strcmp(lastRow->aliases[0], "b") == 0 &&
           lastRow->aliases[1] == nullptr;
}

EXPORTED int valueSetByInitializer()
{
    return initialized.value;
}

EXPORTED int countedUpFromZero()
{
    return ++uninitialized;
}

EXPORTED int classOfString(id object)
{
    return [object class] == [NSString class];
}
EXPORTED int isKindOfString(id object)
{
    return [object isKindOfClass:[NSString class]];
}
EXPORTED int respondsTo(id object, int wantsExisting)
{
    return [object respondsToSelector:wantsExisting ? @selector(integerForKey:) : @selector(noSuchMethodAnywhere:)];
}

EXPORTED id asciiString()
{
    return @"plain text";
}
EXPORTED id emptyString()
{
    return @"";
}
EXPORTED id utf16String()
{
    return @"h\u00e9llo \u2603 \U0001F600";
}
EXPORTED unsigned lengthOfUtf16String()
{
    return [@"h\u00e9llo \u2603 \U0001F600" length];
}
EXPORTED int characterOfAsciiString(unsigned index)
{
    return [@"plain text" characterAtIndex:index];
}

EXPORTED id importedVariable()
{
    return NSGlobalDomain;
}
EXPORTED long lengthOfConstantThroughCoreFoundation()
{
    return CFStringGetLength((CFStringRef) @"four");
}
