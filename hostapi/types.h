// The host's handles. They are opaque, owned by the host and counted by its lock and unlock
// services; a null handle is the host's Nil. Only this folder knows what lies behind them.
#pragma once

#include <cstdint>

typedef struct REALobjectStruct *REALobject; // any object of the host, a Variant or an array in a Variant's place
typedef struct REALstringStruct *REALstring;
typedef struct REALmemoryBlockStruct *REALmemoryBlock;
typedef struct REALfolderItemStruct *REALfolderItem;
typedef struct _REALdictionary *REALdictionary;
typedef struct _REALdate *REALdate;
typedef struct _REALarray *REALarray; // of strings, of Variants or of plain values

// The host's boolean: one byte, false when zero.
typedef unsigned char RBBoolean;

// A memory block, folder item, date, dictionary or array is an object and can be passed wherever the
// host takes one.
template <typename Handle>
REALobject AsObject(Handle handle)
{
    return reinterpret_cast<REALobject>(handle);
}

// The element type codes of REALCreateArray that this library asks for.
enum HostArrayElement : int32_t {
    kHostStringElements = 3,
    kHostObjectElements = 4,
};

constexpr int32_t kEmptyArrayBound = -1;
