#include "host/interface/family.h"
#include "host/interface/codes.h"
#include "host/runtime/entries/entries.h"
#include "host/runtime/objects.h"
#include "host/runtime/state.h"
#include "host/runtime/strings.h"

namespace host::runtime::entries {

namespace {

void *newStringForFamily(const char *utf8)
{
    return (new StringHandle(utf8, kUTF8))->record;
}

Byte leavesOut(const char *feature)
{
    return state().profile.familyLeaves(feature);
}

const interface::FamilyServices *familyServices()
{
    static const interface::FamilyServices services = {
        registerClass,      newInstance,  lockObject,        unlockObject,
        newStringForFamily, unlockString, setStringProperty, leavesOut,
    };
    return &services;
}

} // namespace

EntryPoints familyEntryPoints()
{
    return {entry<familyServices>("FamilyServices")};
}

} // namespace host::runtime::entries
