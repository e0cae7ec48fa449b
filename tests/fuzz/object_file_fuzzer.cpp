// Object files of any bytes: the linker refuses each with one line, or makes a library that reads back.
#include "tests/fuzz/input.h"
#include "tools/macho/dylib_file.h"
#include "tools/macho/link.h"

static const char imports[] = "library /usr/lib/libSystem.B.dylib 88.1.0 1.0.0\n"
                              "_call\n_data\n_weak weak\n_malloc\n_objc_msgSend\n"
                              "library /usr/lib/libobjc.A.dylib 227.0.0 1.0.0\n"
                              ".objc_class_name_NSObject\n___CFConstantStringClassReference\n";

static macho::ImportTable *table;

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    auto parsed = macho::parseImportTable("imports", imports);
    REQUIRE(bool(parsed));
    table = new macho::ImportTable(std::move(parsed.value()));
    return 0;
}

static void requireOneLine(const macho::Error &error)
{
    REQUIRE(!error.message.empty() && error.message.find('\n') == std::string::npos);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    auto parsed = macho::parseObject("a.o", macho::Bytes(data, data + size));
    if (!parsed) {
        requireOneLine(parsed.error());
        return 0;
    }
    // How it is linked depends on the object, too, so that one input is one run.
    const size_t choice = parsed.value().symbols.size() + parsed.value().sections.size();
    macho::LinkOptions options;
    options.fixups = static_cast<macho::FixupForm>(choice % 3);
    options.strip = choice % 2;
    std::vector<macho::ObjectFile> objects;
    objects.push_back(std::move(parsed.value()));
    auto library = macho::link(objects, *table, options);
    if (!library) {
        requireOneLine(library.error());
        return 0;
    }
    auto dylib = macho::parseDylib("out", std::move(library.value().bytes));
    REQUIRE(bool(dylib));
    return 0;
}
