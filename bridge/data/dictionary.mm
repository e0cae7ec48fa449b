#include "bridge/data/dictionary.h"

#include "bridge/exceptions/held_handles.h"
#include "bridge/variant/object_to_variant.h"
#include "bridge/variant/variant_to_object.h"
#include "hostapi/services.h"

// The host methods of the Dictionary used last. Methods belong to an object, and a new Dictionary may have
// the address of one that is gone: so the cache is reset whenever a walk through a Dictionary is complete,
// and looked at again before every use, since a Dictionary inside another takes it over.
static REALobject LastDictionary = nullptr;
static void (*LastDictionarySetter)(REALobject dictionary, REALobject key, REALobject value) = nullptr;
static REALobject (*LastDictionaryGetter)(REALobject dictionary, REALobject key) = nullptr;
static REALobject (*LastDictionaryKeyGetter)(REALobject dictionary, int32_t index) = nullptr;

template <typename Method>
static void LoadMethod(REALobject dictionary, const char *declaration, Method *method)
{
    *method = reinterpret_cast<Method>(REALLoadObjectMethod(dictionary, declaration));
}

static void UseMethodsOf(REALobject dictionary)
{
    if (LastDictionary == dictionary)
        return;
    LastDictionary = dictionary;
    LoadMethod(dictionary, "Value(key As Variant, Assigns _value As Variant)", &LastDictionarySetter);
    LoadMethod(dictionary, "Value(key As Variant) As Variant", &LastDictionaryGetter);
    LoadMethod(dictionary, "Key(index As Integer) As Variant", &LastDictionaryKeyGetter);
}

REALdictionary NSDictionaryRB(NSDictionary *dictionary)
{
    if (!dictionary)
        return nullptr;
    REALobject result = REALnewInstance("Dictionary");
    if (!result)
        return nullptr;
    Hold(result);

    if (NSArray *keys = [dictionary allKeys]) {
        const NSUInteger count = [keys count];
        for (NSUInteger i = 0; i < count; i++) {
            id key = [keys objectAtIndex:i];
            id value = [dictionary objectForKey:key];
            REALobject hostKey = Hold(NewVariantFromNSObject(key));
            REALobject hostValue = Hold(NewVariantFromNSObject(value));
            UseMethodsOf(result);
            if (LastDictionarySetter)
                LastDictionarySetter(result, hostKey, hostValue);
            ReleaseTwoNewestHeld();
        }
        LastDictionary = nullptr;
    }
    KeepNewestHeld();
    return reinterpret_cast<REALdictionary>(result);
}

static id OrNull(id object)
{
    return object ? object : [NSNull null];
}

static void StoreEntry(NSMutableDictionary *result, REALobject key, REALobject value)
{
    id cocoaKey = GetVariantAsNSObject(key);
    id cocoaValue = GetVariantAsNSObject(value);
    [result setObject:OrNull(cocoaValue) forKey:OrNull(cocoaKey)];
}

NSDictionary *NewNSDictionary(REALdictionary dictionary)
{
    if (!dictionary)
        return nil;
    REALobject source = AsObject(dictionary);
    int32_t count = 0;
    if (!REALGetPropValueInt32(source, "Count", &count) || count < 1)
        return [NSDictionary dictionary];
    NSMutableDictionary *result = [NSMutableDictionary dictionaryWithCapacity:count];
    if (!result)
        return nil;

    for (int32_t i = 0; i < count; i++) {
        UseMethodsOf(source);
        REALobject key = Hold(LastDictionaryKeyGetter ? LastDictionaryKeyGetter(source, i) : nullptr);
        UseMethodsOf(source);
        const bool hasGetter = LastDictionaryGetter != nullptr;
        REALobject value = Hold(hasGetter ? LastDictionaryGetter(source, key) : nullptr);
        if (key && hasGetter)
            StoreEntry(result, key, value);
        ReleaseTwoNewestHeld();
    }
    LastDictionary = nullptr;
    return result;
}
