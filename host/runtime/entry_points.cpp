#include "host/runtime/entry_points.h"

#include <cstring>

#include "host/exception.h"
#include "host/runtime/entries/entries.h"
#include "host/runtime/ledger.h"
#include "host/runtime/state.h"

namespace host::runtime {

namespace {

using namespace entries;

// Offered by every host that has a version number at all.
constexpr double kAnyNumber = 0.001;

template <auto Function>
struct Entry;

template <class Result, class... Arguments, Result (*Function)(Arguments...)>
struct Entry<Function> {
    static inline Door door;

    static Result call(Arguments... arguments)
    {
        ++door.calls;
        if (door.observer)
            std::function<void()>(door.observer)(); // a copy: it may remove itself
        auto *function = door.replacement ? reinterpret_cast<Result (*)(Arguments...)>(door.replacement) : Function;
        return function(arguments...);
    }
};

template <auto Function>
Door *entry(const char *name, double since = 0)
{
    Door &door = Entry<Function>::door;
    door.name = name;
    door.since = since;
    door.entry = reinterpret_cast<void *>(&Entry<Function>::call);
    return &door;
}

template <auto Function>
Door *global(const char *name, const char *declaration)
{
    Door *door = entry<Function>(name);
    door->declaration = declaration;
    return door;
}

} // namespace

const std::vector<Door *> &doors()
{
    // clang-format off
    static const auto *const table = new std::vector<Door *>{
        // The plug-in itself
        entry<registerPluginVersion>("RegisterPluginVersion"),
        entry<getRBVersion>("REALGetRBVersion", kAnyNumber),
        entry<registerClass>("PluginRegisterClass"),

        // Objects
        entry<newInstance>("PluginNewInstance"),
        entry<lockObject>("REALLockObject"),
        entry<unlockObject>("REALUnlockObject"),
        entry<entries::raiseException>("RuntimeRaiseException"),
        entry<classReference>("pluginObjectType"),
        entry<objectIsA>("RuntimeObjectIsa"),
        entry<loadObjectMethod>("REALLoadObjectMethod"),
        entry<loadGlobalMethod>("REALLoadGlobalMethod"),

        // Properties
        entry<getInt32Property>("REALGetPropValueInt"),
        entry<getInt64Property>("REALGetPropValueInt64"),
        entry<getSingleProperty>("REALGetPropValueSingle"),
        entry<getDoubleProperty>("REALGetPropValueDouble"),
        entry<getStringProperty>("REALGetPropValueString"),
        entry<getObjectProperty>("REALGetPropValueObject"),
        entry<setInt32Property>("REALSetPropValueInt"),
        entry<setStringProperty>("REALSetPropValueString"),

        // Strings
        entry<lockString>("REALLockString"),
        entry<unlockString>("REALUnlockString"),
        entry<buildString>("REALBuildString"),
        entry<getStringEncoding>("REALGetStringEncoding"),
        entry<setStringEncoding>("REALSetStringEncoding"),
        entry<convertString>("REALConvertString"),
        entry<getStringData>("PluginGetStringData", 2012.0),
        entry<disposeStringData>("PluginDisposeStringData", 2012.0),
        entry<getStringCFString>("REALGetStringCFString", 2012.0),
        entry<stringGetCString>("StringGetCString"),
        global<stringLengthInBytes>("LenB", "LenB( s as string ) as integer"),

        // Variants
        entry<variantFromString>("StringToVariant"),
        entry<variantFromInt32>("Int32ToVariant"),
        entry<variantFromUInt32>("UInt32ToVariant"),
        entry<variantFromInt64>("Int64ToVariant"),
        entry<variantFromUInt64>("UInt64ToVariant"),
        entry<variantFromSingle>("SingleToVariant"),
        entry<variantFromDouble>("DoubleToVariant"),
        entry<variantFromBoolean>("BooleanToVariant"),
        // Before these, a Variant was read through its properties.
        entry<variantToString>("VariantToString", 2010.0),
        entry<variantToInt32>("VariantToInt32", 2010.0),
        entry<variantToInt64>("VariantToInt64", 2010.0),
        entry<variantToSingle>("VariantToSingle", 2010.0),
        entry<variantToDouble>("VariantToDouble", 2010.0),
        global<variantType>("VarType", "VarType(value As Variant) As Int32"),

        // Arrays
        entry<createArray>("RuntimeArrayCreateSingleDimBoundedArray"),
        entry<arrayUpperBound>("RuntimeUBound"),
        entry<readStringArray>("RuntimeDirectReadStringArray"),
        entry<readObjectArray>("RuntimeDirectReadObjectArray"),
        entry<insertProcedure>("RuntimeArrayDirectGetInsertProc"),
        entry<readProcedure>("RuntimeArrayDirectGetGetProc"),

        // MemoryBlocks
        entry<entries::newMemoryBlock>("newMemoryBlock"),
        entry<memoryBlockPointer>("memoryBlockGetPtr"),
        entry<memoryBlockSize>("memoryBlockGetSize"),

        // Files
        entry<fsRefFromFolderItem>("REALFSRefFromFolderItem"),
        entry<fsSpecFromFolderItem>("REALFSSpecFromFolderItem"),
        entry<folderItemFromParent>("REALFolderItemFromParentFSRef"),
        entry<folderItemFromFSSpec>("FolderItemFromFSSpec"),

        // The companion library
        entry<familyServices>("FamilyServices"),
    };
    // clang-format on
    return *table;
}

Door &doorNamed(const std::string &name)
{
    for (Door *door : doors())
        if (door->name == name)
            return *door;
    throw CallError("this host knows no entry point " + name);
}

bool Door::isOffered() const
{
    const Profile &profile = state().profile;
    if (hidden || profile.without.count(name))
        return false;
    return profile.versionNumber() >= since || profile.with.count(name) != 0;
}

void *lookUp(const char *name)
{
    if (!name)
        return nullptr;
    state().lookupLog.push_back(name);
    for (Door *door : doors()) {
        if (door->declaration || strcmp(door->name, name) != 0)
            continue;
        ++door->lookups;
        return door->isOffered() ? door->entry : nullptr;
    }
    return nullptr;
}

void *lookUpGlobalMethod(const char *declaration)
{
    Declaration wanted;
    try {
        wanted = parseDeclaration(declaration);
    } catch (const DeclarationError &error) {
        noteFault(std::string("REALLoadGlobalMethod: ") + error.what());
        return nullptr;
    }
    for (Door *door : doors()) {
        if (!door->declaration || !parseDeclaration(door->declaration).matches(wanted))
            continue;
        ++door->lookups;
        return door->isOffered() ? door->entry : nullptr;
    }
    return nullptr;
}

} // namespace host::runtime
