// What a value that contains itself, or a program that calls itself without end, does to this process.
#pragma once

namespace plughost {

// From now on the end of the stack ends the program with one line that names the likely causes, and status 1. Other
// faults end it as before.
void guardStack();

} // namespace plughost
