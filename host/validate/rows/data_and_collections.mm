#include "host/validate/rows/expected.h"
#include "host/validate/rows/samples.h"
#include "host/validate/rows/tables.h"

namespace validate {

using host::Value;

// clang-format off

Rows dataRows()
{
    const char *const getsFile = "fileForKey(key as string) as folderitem";
    const char *const setsFile = "setFileValue(key as string, value as folderitem)";
    const auto existing = []() -> id { return [NSURL fileURLWithPath:@(kExistingFile)]; };
    const auto missing = []() -> id { return [NSURL fileURLWithPath:@(kMissingFile)]; };
    const auto root = []() -> id { return [NSURL fileURLWithPath:@"/"]; };
    return {
        getter("dataForKey(key as string) as memoryblock", "dataForKey", answerObject("dataForKey:", bytes), newBlock),
        setter("setDataValue(key as string, value as memoryblock)", "setObject", block, readBlock),
        getter(getsFile, "URLForKey", answerObject("URLForKey:", existing), item("REALFolderItemFromParentFSRef", kExistingFile)),
        getter(getsFile, "URLForKey", answerObject("URLForKey:", missing), item("REALFolderItemFromParentFSRef", kMissingFile), "missing"),
        getter(getsFile, "URLForKey", answerObject("URLForKey:", root), item("FolderItemFromFSSpec", "/"), "root"),
        setter(setsFile, "setURL", [] { return Value::folderItem(kExistingFile); }, readItem(kExistingFile, "<file://*/etc/hosts>")),
        setter(setsFile, "setURL", [] { return Value::folderItem(kMissingFile); }, readItem(kMissingFile, "<file://*/etc/no%20such%20file>"), "missing"),
    };
}

Rows collectionRows()
{
    const Text listOfTwo = [](World &world) { return newList(world, {newString("first"), newString("second")}); };
    const Text listOfFour = [](World &world) {
        return newList(world, {variantOf("Int32ToVariant", "int32 7"), textVariant("x"), text("nil"), newNestedDictionary});
    };
    const auto fourElements = []() -> id {
        return [NSArray arrayWithObjects:[NSNumber numberWithInt:7], @"x", [NSNull null], nestedDictionary(), nil];
    };
    return {
        getter("stringArrayForKey(key as string) as string()", "stringArrayForKey", answerObject("stringArrayForKey:", twoStrings), listOfTwo),
        getter("dictionaryForKey(key as string) as dictionary", "dictionaryForKey", answerObject("dictionaryForKey:", nestedDictionary), newNestedDictionary),
        getter("arrayForKey(key as string) as variant()", "arrayForKey", answerObject("arrayForKey:", fourElements), listOfFour),
        setter("setStringArrayValue(key as string, values() as string)", "setObject", [] { return Value::strings({"first", "second"}); },
               arrayArgument("RuntimeDirectReadStringArray", {readText("first"), readText("second")})),
        setter("setDictionaryValue(key as string, value as dictionary)", "setObject", dictionary, readDictionary),
        setter("setArrayValue(key as string, values() as variant)", "setObject", [] { return Value::variants({7, "x", nullptr, 8}); },
               arrayArgument("RuntimeDirectReadObjectArray", {int32("7"), textInVariant("x"), text("nil"), int32("8")})),
    };
}

// clang-format on

} // namespace validate
