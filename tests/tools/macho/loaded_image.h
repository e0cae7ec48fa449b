// A linked library in this process's memory: 32-bit Intel code is 32-bit Intel code, so plain C functions run as they
// are.
#pragma once

#include <map>
#include <string>

#include "tools/macho/dylib_file.h"

namespace macho::test {

class LoadedImage {
public:
    // Imports by symbol name; one that is not there is null, as a weak import may be.
    LoadedImage(const DylibFile &dylib, const DylibFixups &fixups, const std::map<std::string, void *> &imports);
    ~LoadedImage();
    LoadedImage(const LoadedImage &) = delete;
    LoadedImage &operator=(const LoadedImage &) = delete;

    uint8_t *at(uint32_t address) const { return base + address; }
    template <class Type>
    Type *symbol(const std::string &name) const
    {
        return reinterpret_cast<Type *>(at(addressOfSymbol(name)));
    }

private:
    uint32_t addressOfSymbol(const std::string &name) const;

    const DylibFile &dylib;
    uint8_t *base = nullptr;
    size_t size = 0;
};

} // namespace macho::test
