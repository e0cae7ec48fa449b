#include "host/family/class_record.h"

namespace family {

namespace {

using host::interface::ClassRecord9;
using host::interface::MethodRecord9;

MethodRecord9 *newMethodTable(std::initializer_list<Method> methods)
{
    auto *table = new MethodRecord9[methods.size()];
    MethodRecord9 *row = table;
    for (const Method &method : methods)
        *row++ = {method.function, method.setter, method.declaration, 0};
    return table;
}

} // namespace

void addClass(const ClassFacts &facts, std::initializer_list<Method> methods,
              std::initializer_list<Method> sharedMethods)
{
    if (!has(facts.name))
        return;
    auto *record = new ClassRecord9{};
    record->version = host::interface::kOldestRecordVersion;
    record->name = facts.name;
    record->superName = facts.superName;
    record->dataSize = facts.dataSize;
    record->constructor = facts.initialiser;
    record->destructor = facts.finaliser;
    record->methods = newMethodTable(methods);
    record->methodCount = int32_t(methods.size());
    record->sharedMethods = newMethodTable(sharedMethods);
    record->sharedMethodCount = int32_t(sharedMethods.size());
    services->registerClass(record);
}

} // namespace family
