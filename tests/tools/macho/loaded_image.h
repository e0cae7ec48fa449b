// A linked library in this process's memory: 32-bit Intel code is 32-bit Intel code, so plain C functions run as they
// are.
#pragma once

#include <map>
#include <string>

#include "tests/tools/macho/compiled_object.h"
#include "tools/machorun/mapped_image.h"

namespace macho::test {

class LoadedImage : public machorun::MappedImage {
public:
    // Imports by symbol name; one that is not there is null, as a weak import may be.
    LoadedImage(const DylibFile &dylib, const DylibFixups &fixups, const std::map<std::string, void *> &imports)
        : MappedImage(dylib), dylib(dylib)
    {
        fill(fixups, [&](const DylibBind &bind) {
            auto import = imports.find(bind.symbol);
            return import == imports.end() ? 0 : static_cast<uint32_t>(reinterpret_cast<uintptr_t>(import->second));
        });
        protect();
    }

    template <class Type>
    Type *symbol(const std::string &name) const
    {
        return reinterpret_cast<Type *>(at(addressOf(dylib, name)));
    }

private:
    const DylibFile &dylib;
};

} // namespace macho::test
