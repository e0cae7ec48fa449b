// Foundation reads the arguments and the environment of a program as soon as the program is loaded. So this one,
// without Foundation, prepares both, and then becomes the one beside it that does the work.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <unistd.h>

#include "host/plughost/arguments.h"
#include "host/plughost/environment.h"
#include "host/plughost/errors.h"
#include "host/script/shortened.h"

static int fail(const char *message, int status)
{
    fprintf(stderr, "plughost: %s\n", script::shortened(message).c_str());
    return status;
}

int main(int count, char **arguments)
{
    try {
        plughost::requireText(count, arguments);
        plughost::prepareEnvironment(plughost::defaultsFolderOf(count, arguments));
        const std::string program = std::filesystem::read_symlink("/proc/self/exe").string() + "-cocoa";
        execv(program.c_str(), arguments);
        return fail((program + ": " + strerror(errno)).c_str(), plughost::kBadInput);
    } catch (const plughost::UsageError &error) {
        return fail(error.what(), plughost::kWrongUsage);
    } catch (const std::exception &error) {
        return fail(error.what(), plughost::kBadInput);
    }
}
