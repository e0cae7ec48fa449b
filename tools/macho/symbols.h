// Which definition each name stands for across all objects, and which names come from libraries.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <tuple>
#include <vector>

#include "tools/macho/import_table.h"
#include "tools/macho/object_file.h"

namespace macho {

// A byte of an object's section, by its address in the object.
struct Place {
    uint32_t object, section, address;
    bool operator<(const Place &other) const
    {
        return std::tie(object, section, address) < std::tie(other.object, other.section, other.address);
    }
};

struct Import {
    std::string_view name;
    size_t library; // an index into the import table's libraries
    bool weak;
};

// What a symbol stands for.
struct Target {
    enum Kind { Defined, Imported, ImageHeader, Absolute } kind;
    Place place = {};  // Defined
    size_t import = 0; // Imported: an index into Symbols::imports
};

class Symbols {
public:
    // Raises a Failure for a name defined twice, or defined nowhere and not in the table.
    Symbols(const std::vector<ObjectFile> &objects, const ImportTable &table);

    // Sorted by name.
    const std::vector<Import> &imports() const { return importList; }
    Target resolve(uint32_t object, uint32_t symbol) const;
    std::optional<Target> definition(std::string_view name) const;
    // A weak definition that lost against another of the same name stays in its section, but whoever means its first
    // byte gets the winner's.
    Place surviving(const Place &place) const;
    bool isReplaced(uint32_t object, uint32_t symbol) const;

private:
    struct Reference {
        uint32_t object, symbol;
    };
    const Symbol &symbolOf(Reference reference) const { return objects[reference.object].symbols[reference.symbol]; }
    Place placeOf(Reference reference) const;
    void addDefinition(Reference reference);
    void addImport(Reference reference, const ImportTable &table);

    const std::vector<ObjectFile> &objects;
    std::map<std::string_view, Reference> definitions; // global names only
    std::map<Place, Reference> replacements;
    std::vector<Import> importList;
};

} // namespace macho
