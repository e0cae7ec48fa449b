// Exceptions as the 32-bit macOS runtime knows them: @try is a setjmp, and a raise is a longjmp to the innermost @try
// of the thread. The functions are only ever called by code of a loaded image, under the names of that runtime.
#pragma once

#include <cstdint>
#include <objc/objc.h>
#include <unwind.h>

namespace machorun {

// What a function with @try keeps in its frame: the compiler lays it out.
struct TryRecord {
    int registers[18];
    id exception;
    TryRecord *outer;
    void *unused[2];
};

void TryEnter(TryRecord *record);
void TryExit(TryRecord *record);
id ExceptionOf(TryRecord *record);
[[noreturn]] void Throw(id exception);
int ExceptionMatches(Class wanted, id exception);

// The personality routine of every function of an image. Raises come as exceptions of the unwinder here: one that
// reaches a function with an open @try becomes the longjmp that the function waits for, and one that passes through
// runs no C++ destructors, because the longjmp of macOS skips them. C++ exceptions go to the C++ personality.
_Unwind_Reason_Code Personality(int version, _Unwind_Action actions, uint64_t exceptionClass,
                                _Unwind_Exception *exception, _Unwind_Context *context);

} // namespace machorun

extern "C" {
// setjmp.S: the six registers that a call preserves, at the start of the 18 words that macOS has for them.
int machorun_setjmp(int *registers);
[[noreturn]] void machorun_longjmp(int *registers, int value);
}
