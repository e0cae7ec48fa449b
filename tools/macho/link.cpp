#include "tools/macho/link.h"

#include <algorithm>
#include <md5.h>

#include "tools/macho/call_frames.h"
#include "tools/macho/contents.h"
#include "tools/macho/load_commands.h"
#include "tools/macho/map_file.h"
#include "tools/macho/symbol_table.h"
#include "tools/macho/version.h"

namespace macho {

namespace {

CallFrameTables parseAllCallFrames(const std::vector<ObjectFile> &objects)
{
    CallFrameTables tables;
    for (uint32_t object = 0; object < objects.size(); object++)
        for (uint32_t section = 0; section < objects[object].sections.size(); section++)
            if (objects[object].sections[section].isCallFrameTable())
                tables[{object, section}] = parseCallFrames(objects[object], objects[object].sections[section]);
    return tables;
}

// Made from the content, so that the same content has the same one.
Identifier identifierOf(const Bytes &file)
{
    Identifier digest;
    static_assert(sizeof digest == MD5_DIGEST_LENGTH);
    MD5_CTX state;
    MD5Init(&state);
    MD5Update(&state, file.data(), file.size());
    MD5Final(digest.data(), &state);
    digest[6] = (digest[6] & 0x0f) | 0x30; // made by MD5
    digest[8] = (digest[8] & 0x3f) | 0x80; // laid out as RFC 4122 says
    return digest;
}

} // namespace

LinkedLibrary link(const std::vector<ObjectFile> &objects, const ImportTable &table, const LinkOptions &options)
{
    if (objects.empty())
        fail("no object files to link");
    requireOrderedVersions("", options.currentVersion, options.compatibilityVersion);
    Symbols symbols(objects, table);
    LoadedLibraries libraries = loadedLibraries(symbols.imports(), table);
    CallFrameTables callFrames = parseAllCallFrames(objects);
    Pieces pieces(objects, symbols, callFrames);
    Indirections indirections(objects, symbols);
    Layout layout(pieces, indirections);

    // The commands have the same size whatever they say.
    layout.assignAddresses(
        static_cast<uint32_t>(makeLoadCommands(layout, {}, {}, libraries.list, options).bytes.size()));
    Contents contents = makeContents(layout, callFrames);
    SymbolTable symbolTable = makeSymbolTable(layout, libraries.ordinals, options);
    LinkEdit linkEdit = makeLinkEdit(layout.endFileOffset(), symbolTable,
                                     classicFixups(contents.fixups, layout, contents.image, symbolTable.firstImport()),
                                     compressedFixups(contents.fixups, layout, libraries.ordinals), options.fixups);
    // What describes the library lies behind it in memory.
    if (alignUp(uint64_t{layout.endAddress()} + linkEdit.bytes.size(), Layout::pageSize) > Layout::largestImage)
        fail("the library would be larger than 1 GB in memory");
    LoadCommands commands = makeLoadCommands(layout, linkEdit, symbolTable, libraries.list, options);

    LinkedLibrary library;
    library.bytes = std::move(contents.image);
    std::copy(commands.bytes.begin(), commands.bytes.end(), library.bytes.begin());
    library.bytes.insert(library.bytes.end(), linkEdit.bytes.begin(), linkEdit.bytes.end());
    Identifier identifier = identifierOf(library.bytes);
    std::copy(identifier.begin(), identifier.end(), library.bytes.begin() + commands.uuidOffset);
    library.map = mapFile(identifier, layout, libraries.list);
    return library;
}

} // namespace macho
