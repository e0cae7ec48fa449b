// The host methods of a Dictionary. They belong to one object: those of the Dictionary used last are kept, and looked
// at again before every use, since host code or a Dictionary inside another may take their place meanwhile.
#pragma once

#include "hostapi/types.h"

struct DictionaryMethods {
    void (*setValue)(REALobject dictionary, REALobject key, REALobject value);
    REALobject (*value)(REALobject dictionary, REALobject key);
    REALobject (*key)(REALobject dictionary, int32_t index);
};

// Null and empty for none.
extern REALobject lastDictionary;
extern DictionaryMethods lastDictionaryMethods;

// Asks the host and keeps the answers. They come at once, so that the kept ones are always those of one Dictionary,
// whatever runs while the host is asked.
DictionaryMethods LoadMethodsOf(REALobject dictionary);

// Each method is null when the host has none.
inline auto SetValueMethodOf(REALobject dictionary)
{
    return lastDictionary == dictionary ? lastDictionaryMethods.setValue : LoadMethodsOf(dictionary).setValue;
}

inline auto ValueMethodOf(REALobject dictionary)
{
    return lastDictionary == dictionary ? lastDictionaryMethods.value : LoadMethodsOf(dictionary).value;
}

inline auto KeyMethodOf(REALobject dictionary)
{
    return lastDictionary == dictionary ? lastDictionaryMethods.key : LoadMethodsOf(dictionary).key;
}

// To be called when a walk through a Dictionary is complete: a new one may get the address of one that is gone.
inline void ForgetLastDictionary()
{
    lastDictionary = nullptr;
}

// The same for an object that goes now, and for no other.
inline void ForgetMethodsOf(REALobject object)
{
    if (lastDictionary == object)
        ForgetLastDictionary();
}
