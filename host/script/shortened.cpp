#include "host/script/shortened.h"

#include <algorithm>
#include <cstddef>

namespace script {

static bool startsCharacter(char byte)
{
    return (byte & 0xC0) != 0x80;
}

// 1,234,567
static std::string grouped(std::ptrdiff_t number)
{
    std::string digits = std::to_string(number);
    for (auto at = std::ptrdiff_t(digits.size()) - 3; at > 0; at -= 3)
        digits.insert(size_t(at), ",");
    return digits;
}

std::string shortened(const std::string &utf8)
{
    constexpr size_t most = 1000, kept = 600;
    if (utf8.size() <= most)
        return utf8;
    size_t end = kept;
    while (!startsCharacter(utf8[end]))
        end--;
    auto left = std::count_if(utf8.begin() + std::ptrdiff_t(end), utf8.end(), startsCharacter);
    return utf8.substr(0, end) + "… (and " + grouped(left) + " more characters)";
}

} // namespace script
