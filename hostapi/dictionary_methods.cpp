#include "hostapi/dictionary_methods.h"

#include "hostapi/services.h"

REALobject lastDictionary = nullptr;
DictionaryMethods lastDictionaryMethods = {};

template <typename Method>
static void LoadMethod(REALobject dictionary, const char *declaration, Method *method)
{
    *method = reinterpret_cast<Method>(REALLoadObjectMethod(dictionary, declaration));
}

DictionaryMethods LoadMethodsOf(REALobject dictionary)
{
    DictionaryMethods methods;
    LoadMethod(dictionary, "Value(key As Variant, Assigns _value As Variant)", &methods.setValue);
    LoadMethod(dictionary, "Value(key As Variant) As Variant", &methods.value);
    LoadMethod(dictionary, "Key(index As Integer) As Variant", &methods.key);
    lastDictionary = dictionary;
    lastDictionaryMethods = methods;
    return methods;
}
