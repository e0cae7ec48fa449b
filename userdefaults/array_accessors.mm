// Arrays of strings and of Variants under a key. A getter's array is made before Cocoa is asked: host code
// gets an empty array for a missing key, and what was filled in when Cocoa raised in the middle.
#include "bridge/data/string_array.h"
#include "bridge/variant/array_to_object.h"
#include "bridge/variant/object_to_variant.h"
#include "hostapi/services.h"
#include "userdefaults/carried_defaults.h"
#include "userdefaults/filled_array.h"

REALarrayString stringArrayForKey(REALobject self, REALstring key)
{
    return reinterpret_cast<REALarrayString>(
        FilledArray(REALCreateArray(kHostStringElements, kEmptyArrayBound), [=](REALarray array) {
            NSString *name = textOf(key);
            FillStringArray(reinterpret_cast<REALarrayString>(array), [defaultsOf(self) stringArrayForKey:name]);
        }));
}

REALarray arrayForKey(REALobject self, REALstring key)
{
    return FilledArray(REALCreateArray(kHostObjectElements, kEmptyArrayBound), [=](REALarray array) {
        NSString *name = textOf(key);
        FillObjectArray(array, [defaultsOf(self) arrayForKey:name]);
    });
}

void setStringArrayForKey(REALobject self, REALstring key, REALarrayString values)
{
    guarded([=] {
        NSString *name = textOf(key);
        NSArray *array = ArrayOfStringArgument(values);
        [defaultsOf(self) setObject:array forKey:name];
    });
}

void setArrayForKey(REALobject self, REALstring key, REALarray values)
{
    guarded([=] {
        NSString *name = textOf(key);
        NSArray *array = ArrayOfVariantArgument(values);
        [defaultsOf(self) setObject:array forKey:name];
    });
}
