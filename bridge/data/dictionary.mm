#include "bridge/data/dictionary.h"

#include "bridge/variant/object_to_variant.h"
#include "bridge/variant/variant_to_object.h"
#include "hostapi/dictionary_methods.h"
#include "hostapi/held_handles.h"

REALdictionary NSDictionaryRB(NSDictionary *dictionary, HeldHandles &held)
{
    if (!dictionary)
        return nullptr;
    REALobject result = held.hold(REALnewInstance("Dictionary"));
    if (!result)
        return nullptr;

    if (NSArray *keys = [dictionary allKeys]) {
        const NSUInteger count = [keys count];
        for (NSUInteger i = 0; i < count; i++) {
            id key = [keys objectAtIndex:i];
            id value = [dictionary objectForKey:key];
            REALobject hostKey = NewVariantFromNSObject(key, held);
            REALobject hostValue = NewVariantFromNSObject(value, held);
            if (auto setValue = SetValueMethodOf(result))
                setValue(result, hostKey, hostValue);
            held.release(hostKey);
            held.release(hostValue);
        }
        ForgetLastDictionary();
    }
    return reinterpret_cast<REALdictionary>(result);
}

static id OrNull(id object)
{
    return object ? object : [NSNull null];
}

static void StoreEntry(NSMutableDictionary *result, REALobject key, REALobject value, HeldHandles &held)
{
    id cocoaKey = GetVariantAsNSObject(key, held);
    id cocoaValue = GetVariantAsNSObject(value, held);
    [result setObject:OrNull(cocoaValue) forKey:OrNull(cocoaKey)];
}

NSDictionary *NewNSDictionary(REALdictionary dictionary, HeldHandles &held)
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
        auto keyAt = KeyMethodOf(source);
        REALobject key = held.hold(keyAt ? keyAt(source, i) : nullptr);
        auto valueFor = ValueMethodOf(source); // looked at again: the key may come from host code
        REALobject value = held.hold(valueFor ? valueFor(source, key) : nullptr);
        if (key && valueFor)
            StoreEntry(result, key, value, held);
        held.release(key);
        held.release(value);
    }
    ForgetLastDictionary();
    return result;
}
