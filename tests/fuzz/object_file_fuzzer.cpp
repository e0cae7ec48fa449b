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
    table = new macho::ImportTable(macho::parseImportTable("imports", imports));
    return 0;
}

static macho::Bytes libraryOf(macho::Bytes object)
{
    std::vector<macho::ObjectFile> objects;
    objects.push_back(macho::parseObject("a.o", std::move(object)));
    // How it is linked depends on the object, too, so that one input is one run.
    const size_t choice = objects[0].symbols.size() + objects[0].sections.size();
    macho::LinkOptions options;
    options.fixups = static_cast<macho::FixupForm>(choice % 3);
    options.strip = choice % 2;
    return macho::link(objects, *table, options).bytes;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    macho::Bytes library;
    try {
        library = libraryOf(macho::Bytes(data, data + size));
    } catch (const macho::Failure &failure) {
        const std::string message = failure.what();
        REQUIRE(!message.empty() && message.find('\n') == std::string::npos);
        return 0;
    }
    macho::parseDylib("out", std::move(library)); // a Failure ends the fuzzer
    return 0;
}
