#include "tools/machorun/imports.h"

#include "tools/machorun/bad_image.h"

#include <algorithm>

namespace machorun {

uint32_t Imports::addressOf(const std::string &symbol, bool isWeak) const
{
    bool isAbsent = std::find(absent_.begin(), absent_.end(), symbol) != absent_.end();
    const void *address = isAbsent ? nullptr : FindImport(symbol);
    if (!address && !isWeak) {
        throw BadImage("imports " + symbol +
                       (isAbsent ? ", which is absent" : ", which the import table does not have"));
    }
    return reinterpret_cast<uint32_t>(address);
}

} // namespace machorun
