#include "tools/machorun/fixups.h"

namespace machorun {

namespace {

uint32_t asWord(const void *address)
{
    return reinterpret_cast<uint32_t>(address);
}

const Symbol &symbolAt(const ImageFile &file, uint32_t index)
{
    if (index >= file.symbols().size()) {
        throw BadImage("has a fix-up for a symbol that is not in its symbol table: " + Hex(index));
    }
    return file.symbols()[index];
}

// A linked library has plain pointers to fix up and nothing else.
void requirePlainPointer(const relocation_info &entry)
{
    if (entry.r_address & R_SCATTERED || entry.r_type != GENERIC_RELOC_VANILLA || entry.r_length != 2 ||
        entry.r_pcrel) {
        throw BadImage("has a relocation entry that is no plain pointer, at " + Hex(entry.r_address));
    }
}

// The pointers of a symbol-pointer section carry no addend: they are the import.
void bindSymbolPointers(const ImageFile &file, const MappedImage &image, const Imports &imports, const Section &section)
{
    const std::vector<uint32_t> &indirect = file.classicFixups()->indirectSymbols;
    uint32_t count = section.size / sizeof(uint32_t);
    if (section.firstIndirectSymbol > indirect.size() || count > indirect.size() - section.firstIndirectSymbol) {
        throw BadImage("has symbol pointers without indirect symbols: " + section.segment + "," + section.name);
    }
    for (uint32_t index = 0; index < count; index++) {
        uint32_t number = indirect[section.firstIndirectSymbol + index];
        if (number & (INDIRECT_SYMBOL_LOCAL | INDIRECT_SYMBOL_ABS)) {
            continue; // points into the image: a local relocation moves it
        }
        const Symbol &symbol = symbolAt(file, number);
        *image.fixupSlot(section.address + index * sizeof(uint32_t)) =
            asWord(imports.addressOf(symbol.name, symbol.isWeakImport));
    }
}

} // namespace

void ApplyClassicFixups(const ImageFile &file, const MappedImage &image, const Imports &imports)
{
    // Relocation entries count from the first segment.
    uint32_t base = file.segments().front().address;
    for (const relocation_info &entry : file.classicFixups()->local) {
        requirePlainPointer(entry);
        *image.fixupSlot(base + entry.r_address) += image.slide();
    }
    for (const relocation_info &entry : file.classicFixups()->external) {
        requirePlainPointer(entry);
        const Symbol &symbol = symbolAt(file, entry.r_symbolnum);
        *image.fixupSlot(base + entry.r_address) += asWord(imports.addressOf(symbol.name, symbol.isWeakImport));
    }
    for (const Section &section : file.sections()) {
        if (section.type == S_NON_LAZY_SYMBOL_POINTERS || section.type == S_LAZY_SYMBOL_POINTERS) {
            bindSymbolPointers(file, image, imports, section);
        }
    }
}

void *FindClassicExport(const ImageFile &file, const MappedImage &image, const std::string &symbol)
{
    for (const Symbol &candidate : file.exportedSymbols()) {
        if (candidate.name == symbol) {
            return image.exportAt(candidate.address);
        }
    }
    return nullptr;
}

} // namespace machorun
