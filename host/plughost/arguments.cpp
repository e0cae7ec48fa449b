#include "host/plughost/arguments.h"

#include <cstdlib>
#include <cstring>

#include "host/plughost/errors.h"

namespace plughost {

using Byte = unsigned char;

// How many bytes the character has that begins here; 0 when it is none.
static int lengthOfCharacter(const Byte *text)
{
    static const struct {
        Byte first, last; // of the first byte
        Byte low, high;   // of the second one
        int length;
    } rows[] = {
        {0x01, 0x7F, 0x00, 0xFF, 1}, {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
        {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3},
        {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
    };
    for (const auto &row : rows) {
        if (text[0] < row.first || text[0] > row.last)
            continue;
        if (row.length > 1 && (text[1] < row.low || text[1] > row.high))
            return 0;
        for (int i = 2; i < row.length; i++)
            if ((text[i] & 0xC0) != 0x80)
                return 0;
        return row.length;
    }
    return 0;
}

static bool isText(const char *bytes)
{
    const Byte *text = reinterpret_cast<const Byte *>(bytes);
    while (*text) {
        int length = lengthOfCharacter(text);
        if (length == 0)
            return false;
        text += length;
    }
    return true;
}

void requireText(int count, char **arguments)
{
    for (int i = 1; i < count; i++)
        if (!isText(arguments[i]))
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
