// Arrays of strings and of Variants under a key. A getter's array is made before Cocoa is asked: host code
// gets an empty array for a missing key, and what was filled in when Cocoa raised in the middle.
#include "bridge/data/string_array.h"
#include "bridge/variant/array_to_object.h"
#include "bridge/variant/object_to_variant.h"
#include "userdefaults/carried_defaults.h"
#include "userdefaults/filled_array.h"

REALarray stringArrayForKey(REALobject self, REALstring key)
{
    return FilledArray(kHostStringElements, [=](REALarray array, HeldHandles &held) {
        NSString *name = TextOf(key);
        FillStringArray(array, [defaultsOf(self) stringArrayForKey:name], held);
    });
}

REALarray arrayForKey(REALobject self, REALstring key)
{
    return FilledArray(kHostObjectElements, [=](REALarray array, HeldHandles &held) {
        NSString *name = TextOf(key);
        FillObjectArray(array, [defaultsOf(self) arrayForKey:name], held);
    });
}

// The shape of both setters.
static void SetArray(REALobject self, REALstring key, REALarray values, NSArray *(*convert)(REALarray, HeldHandles &))
{
    guardedWith(key, [=](NSString *name, HeldHandles &held) {
        NSArray *array = convert(values, held);
        [defaultsOf(self) setObject:array forKey:name];
    });
}

void setStringArrayForKey(REALobject self, REALstring key, REALarray values)
{
    SetArray(self, key, values, ArrayOfStringArgument);
}

void setArrayForKey(REALobject self, REALstring key, REALarray values)
{
    SetArray(self, key, values, ArrayOfVariantArgument);
}
