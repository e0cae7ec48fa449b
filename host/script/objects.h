// Objects of the classes that a program defines. They are objects of the host, so that they can be stored in a
// Dictionary, passed to a plug-in and come back as themselves; their fields are kept here.
#pragma once

#include "host/script/syntax.h"

namespace script {

// Makes it a class of the host.
void defineScriptClass(const ClassDefinition &definition);

// The fields of a live object, in their slots; empty until the object has been set up.
std::vector<host::Value> &fieldsOf(const host::Value &object);

} // namespace script
