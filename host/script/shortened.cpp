#include "host/script/shortened.h"

#include <algorithm>
#include <cstddef>

#include "host/runtime/utf8.h"

namespace script {

using host::runtime::startsCharacter;

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
    constexpr size_t most = 1000, atStart = 400, atEnd = 200;
    if (utf8.size() <= most)
        return utf8;
    size_t first = atStart, last = utf8.size() - atEnd;
    while (!startsCharacter(utf8[first]))
        first--;
    while (!startsCharacter(utf8[last]))
        last++;
    auto left =
        std::count_if(utf8.begin() + std::ptrdiff_t(first), utf8.begin() + std::ptrdiff_t(last), startsCharacter);
    return utf8.substr(0, first) + " … (" + grouped(left) + " more characters) … " + utf8.substr(last);
}

} // namespace script
