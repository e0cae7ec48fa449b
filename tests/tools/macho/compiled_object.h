// Objects for the linker's tests, compiled when a test first needs them, and short ways to link them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tools/macho/dylib_file.h"
#include "tools/macho/files.h"
#include "tools/macho/link.h"

namespace macho::test {

enum class Language { C, Cpp, ObjectiveC, ObjectiveCpp, Assembler };

// A folder of this test's own, removed when the test program ends.
const std::string &temporaryFolder();
void writeText(const std::string &path, std::string_view text);

struct Outcome {
    int status; // the exit status
    std::string out, err;
};
Outcome runCommand(const std::string &command);

// Compiled for i386 macOS 10.4, position-independent, names hidden unless told otherwise. A compiler's complaint ends
// the test program. What was compiled once is kept in the build tree.
Bytes compile(Language language, std::string_view source, const std::string &flags = "-O1");
ObjectFile object(const std::string &name, Language language, std::string_view source,
                  const std::string &flags = "-O1");

template <class... Objects>
std::vector<ObjectFile> objects(Objects... each)
{
    std::vector<ObjectFile> list;
    (list.push_back(std::move(each)), ...);
    return list;
}

ImportTable importTable(std::string_view text);
// What the objects of most tests import.
extern const char usualImports[];

// What a body raises a Failure for, or "none".
template <class Body>
std::string failureOf(Body body)
{
    try {
        body();
        return "none";
    } catch (const Failure &failure) {
        return failure.what();
    }
}

DylibFile linked(const std::vector<ObjectFile> &objects, const std::vector<std::string> &exports,
                 LinkOptions options = {}, std::string_view imports = usualImports);
std::string linkError(const std::vector<ObjectFile> &objects, const std::vector<std::string> &exports = {},
                      LinkOptions options = {}, std::string_view imports = usualImports);

uint32_t addressOf(const DylibFile &dylib, const std::string &symbol);

} // namespace macho::test
