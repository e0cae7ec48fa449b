#include "host/family/family.h"

namespace family {

const host::interface::FamilyServices *services = nullptr;

} // namespace family

extern "C" __attribute__((visibility("default"))) void REALPluginMain(host::interface::Resolver resolver)
{
    using GetServices = const host::interface::FamilyServices *();
    auto *getServices = reinterpret_cast<GetServices *>(resolver("FamilyServices"));
    if (!getServices)
        return; // a host without the embedded host's services has no use for this library
    family::services = getServices();
    family::addExceptions();
    family::addWrapperClasses();
    family::addValueClasses();
    family::addTimeClasses();
    family::addObjectWrapper();
}
