// Data, files, dictionaries and values of any kind under a key.
#include "bridge/data/dictionary.h"
#include "bridge/data/folder_item.h"
#include "bridge/data/memory_block.h"
#include "bridge/variant/object_to_variant.h"
#include "bridge/variant/variant_to_object.h"
#include "userdefaults/carried_defaults.h"

REALmemoryBlock dataForKey(REALobject self, REALstring key)
{
    return guardedWith(
        key, [=](NSString *name, HeldHandles &held) { return NSDataRB([defaultsOf(self) dataForKey:name], held); });
}

REALobject objectForKey(REALobject self, REALstring key)
{
    return guardedWith(key, [=](NSString *name, HeldHandles &held) {
        return NewVariantFromNSObject([defaultsOf(self) objectForKey:name], held);
    });
}

REALfolderItem fileForKey(REALobject self, REALstring key)
{
    return guardedWith(
        key, [=](NSString *name, HeldHandles &held) { return NSURLRBFile([defaultsOf(self) URLForKey:name], held); });
}

void setFileForKey(REALobject self, REALstring key, REALfolderItem value)
{
    guardedWith(key, [=](NSString *name) {
        NSURL *url = NewNSURLfile(value);
        [defaultsOf(self) setURL:url forKey:name];
    });
}

REALdictionary dictionaryForKey(REALobject self, REALstring key)
{
    return guardedWith(key, [=](NSString *name, HeldHandles &held) {
        return NSDictionaryRB([defaultsOf(self) dictionaryForKey:name], held);
    });
}

// The shape of the setters whose values are property-list objects: the key first, then the value.
template <typename Value, typename Object>
static void SetObject(REALobject self, REALstring key, Value value, Object (*convert)(Value, HeldHandles &))
{
    guardedWith(key, [=](NSString *name, HeldHandles &held) {
        Object object = convert(value, held);
        [defaultsOf(self) setObject:object forKey:name];
    });
}

void setDataForKey(REALobject self, REALstring key, REALmemoryBlock value)
{
    SetObject(self, key, value, NewNSData);
}

void setObjectForKey(REALobject self, REALstring key, REALobject value)
{
    SetObject(self, key, value, GetVariantAsNSObject);
}

void setDictionaryForKey(REALobject self, REALstring key, REALdictionary value)
{
    SetObject(self, key, value, NewNSDictionary);
}
