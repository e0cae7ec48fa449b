#include "host/plughost/arguments.h"

#include <cstdlib>
#include <cstring>

#include "host/plughost/errors.h"
#include "host/runtime/utf8.h"

namespace plughost {

void requireText(int count, char **arguments)
{
    for (int i = 1; i < count; i++)
        if (host::runtime::firstBadByte(arguments[i]) < strlen(arguments[i]))
            throw UsageError("argument " + std::to_string(i) + " is no UTF-8 text");
}

std::string defaultsFolderOf(int count, char **arguments)
{
    const std::string option = "--defaults-dir";
    const char *usual = getenv("PLUGHOST_DEFAULTS_DIR");
    std::string folder = usual ? usual : "";
    for (int i = 1; i < count && strcmp(arguments[i], "--") != 0; i++) {
        if (arguments[i] == option && i + 1 < count)
            folder = arguments[i + 1];
        else if (strncmp(arguments[i], (option + "=").c_str(), option.size() + 1) == 0)
            folder = arguments[i] + option.size() + 1;
    }
    return folder;
}

} // namespace plughost
