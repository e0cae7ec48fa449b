#include "tools/machorun/exceptions.h"

#include <objc/runtime.h>

extern "C" _Unwind_Reason_Code __gxx_personality_v0(int, _Unwind_Action, uint64_t, _Unwind_Exception *,
                                                    _Unwind_Context *);

namespace machorun {

namespace {

thread_local TryRecord *innermost;

// How the runtime here marks an Objective-C exception, and its record: the object follows the unwinder's part.
constexpr uint64_t kObjectiveCException = 0x474e55434f424a43; // "GNUCOBJC"

struct ObjectiveCException {
    _Unwind_Exception unwinder;
    id object;
};

constexpr int kFramePointer = 5; // ebp's number for the unwinder

// Whether the innermost open @try belongs to the function whose frame is given. Every function of an image keeps a
// frame pointer, and its record of the @try lies between the stack pointer at its call and that.
bool opensInnermostTry(uintptr_t stackPointer, uintptr_t framePointer)
{
    auto record = reinterpret_cast<uintptr_t>(innermost);
    return record && record >= stackPointer && record < framePointer;
}

[[noreturn]] void jumpToInnermostTry(id exception)
{
    TryRecord *record = innermost;
    innermost = record->outer;
    record->exception = exception;
    machorun_longjmp(record->registers, 1);
}

} // namespace

void TryEnter(TryRecord *record)
{
    record->outer = innermost;
    record->exception = nil;
    innermost = record;
}

void TryExit(TryRecord *record)
{
    innermost = record->outer;
}

id ExceptionOf(TryRecord *record)
{
    return record->exception;
}

int ExceptionMatches(Class wanted, id exception)
{
    for (Class c = object_getClass(exception); c; c = class_getSuperclass(c)) {
        if (c == wanted) {
            return 1;
        }
    }
    return 0;
}

// A function that calls nothing else inside @try gets no personality from the compiler, so its own @throw is delivered
// here. Any other one takes the way of the unwinder, past the frames and handlers of this process.
void Throw(id exception)
{
    auto *frame = static_cast<uintptr_t *>(__builtin_frame_address(0)); // the caller's frame pointer, then the return
    if (opensInnermostTry(reinterpret_cast<uintptr_t>(frame + 2), frame[0]))
        jumpToInnermostTry(exception);
    @throw exception;
}

_Unwind_Reason_Code Personality(int version, _Unwind_Action actions, uint64_t exceptionClass,
                                _Unwind_Exception *exception, _Unwind_Context *context)
{
    if (exceptionClass != kObjectiveCException || actions & _UA_FORCE_UNWIND) {
        return _Unwind_GetLanguageSpecificData(context)
                   ? __gxx_personality_v0(version, actions, exceptionClass, exception, context)
                   : _URC_CONTINUE_UNWIND;
    }
    if (!opensInnermostTry(_Unwind_GetCFA(context), _Unwind_GetGR(context, kFramePointer)))
        return _URC_CONTINUE_UNWIND;
    if (actions & _UA_SEARCH_PHASE) {
        return _URC_HANDLER_FOUND;
    }
    id object = reinterpret_cast<ObjectiveCException *>(exception)->object;
    _Unwind_DeleteException(exception);
    jumpToInnermostTry(object);
}

} // namespace machorun
