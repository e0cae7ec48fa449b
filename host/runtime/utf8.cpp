#include "host/runtime/utf8.h"

#include <algorithm>

namespace host::runtime {

using Byte = unsigned char;

// How many bytes the character has that the text begins with; 0 when it is none.
static size_t lengthOfCharacter(std::string_view text)
{
    static const struct {
        Byte first, last; // of the first byte
        Byte low, high;   // of the second one
        size_t length;
    } rows[] = {
        {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3}, {0xE1, 0xEC, 0x80, 0xBF, 3},
        {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3}, {0xF0, 0xF0, 0x90, 0xBF, 4},
        {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
    };
    if (Byte(text[0]) < 0x80)
        return 1;
    for (const auto &row : rows) {
        if (Byte(text[0]) < row.first || Byte(text[0]) > row.last || text.size() < row.length)
            continue;
        bool fits = Byte(text[1]) >= row.low && Byte(text[1]) <= row.high &&
                    std::none_of(text.begin() + 2, text.begin() + row.length, startsCharacter);
        return fits ? row.length : 0;
    }
    return 0;
}

size_t firstBadByte(std::string_view text)
{
    size_t at = 0;
    while (at < text.size()) {
        size_t length = lengthOfCharacter(text.substr(at));
        if (length == 0)
            break;
        at += length;
    }
    return at;
}

} // namespace host::runtime
