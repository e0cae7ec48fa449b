// Where the library's imports lead.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace machorun {

// The implementation of a symbol, by its name in the file (with the leading underscore); null when the table in
// import_table.mm has no row for it.
const void *FindImport(const std::string &symbol);

class Imports {
public:
    explicit Imports(std::vector<std::string> absent) : absent_(std::move(absent)) {}

    // 0 for a weak import that is absent; throws BadImage, naming the symbol, for a strong one.
    uint32_t addressOf(const std::string &symbol, bool isWeak) const;

private:
    std::vector<std::string> absent_;
};

} // namespace machorun
