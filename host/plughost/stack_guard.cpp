#include "host/plughost/stack_guard.h"

#include <csignal>
#include <cstdint>
#include <cstring>
#include <ucontext.h>
#include <unistd.h>

#include "host/plughost/errors.h"
#include "host/script/running.h"

namespace plughost {

static const char kName[] = "plughost: ";
static const char kLine[] = "the stack is used up: by a Dictionary or an array that contains itself, or by "
                            "methods that call each other without end\n";

// A stack that has grown by less has room left.
static const uintptr_t kDeep = 256 * 1024;
// How far from the stack's end a function may reach when it is the one that finds no room.
static const uintptr_t kNear = 64 * 1024;

static uintptr_t stackStart;

static void handleFault(int signal, siginfo_t *fault, void *context)
{
    auto *machine = static_cast<ucontext_t *>(context);
    auto stackEnd = uintptr_t(machine->uc_mcontext.gregs[REG_ESP]);
    auto address = uintptr_t(fault->si_addr);
    if (stackStart - stackEnd > kDeep && address + kNear > stackEnd && address < stackEnd + kNear) {
        ssize_t ignored;
        // Only what a signal handler may call. Lines that were printed are out already.
        if (!script::writeRunningPlace(STDERR_FILENO))
            ignored = write(STDERR_FILENO, kName, strlen(kName));
        ignored = write(STDERR_FILENO, kLine, strlen(kLine));
        (void)ignored;
        _exit(kBadInput);
    }
    ::signal(signal, SIG_DFL); // the instruction that faulted is run again
}

void guardStack()
{
    static char space[64 * 1024]; // the handler has no room on the stack that is used up
    stack_t other = {};
    other.ss_sp = space;
    other.ss_size = sizeof space;
    sigaltstack(&other, nullptr);

    stackStart = uintptr_t(__builtin_frame_address(0));
    struct sigaction action = {};
    action.sa_sigaction = handleFault;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigaction(SIGSEGV, &action, nullptr);
}

} // namespace plughost
