// plughost validate: tries to break a plug-in. Nothing of a session is needed: the validator loads the plug-in itself,
// again and again, in child processes.
#pragma once

namespace plughost {

struct Program;

void addValidate(Program &program);

} // namespace plughost
