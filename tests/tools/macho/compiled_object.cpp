#include "tests/tools/macho/compiled_object.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <md5.h>

#include <sys/wait.h>
#include <unistd.h>

#include "ground.h"

namespace macho::test {

namespace fs = std::filesystem;

const char usualImports[] = "library /usr/lib/libfirst.dylib 2.0 1.0\n"
                            "_call\n"
                            "_number\n"
                            "_perhaps weak\n"
                            "library /usr/lib/libc++rt.dylib 7.4 7.0\n"
                            "___gxx_personality_v0\n"
                            "___cxa_begin_catch\n"
                            "___cxa_end_catch\n"
                            "__Unwind_Resume\n"
                            "__ZSt9terminatev\n"
                            "__ZTIi\n"
                            "___cxa_atexit\n"
                            "library /usr/lib/liboptional.dylib 1.0 1.0\n"
                            "_optional weak\n"
                            "library /usr/lib/libobjc.A.dylib 1.0 1.0\n"
                            ".objc_class_name_NSObject\n"
                            "_objc_msgSend\n"
                            "_objc_msgSendSuper\n"
                            "___CFConstantStringClassReference\n";

namespace {

[[noreturn]] void giveUp(const std::string &message)
{
    std::cerr << message << std::endl;
    std::abort();
}

struct TemporaryFolder {
    TemporaryFolder()
    {
        std::string pattern = (fs::temp_directory_path() / "macho-test-XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            giveUp("no temporary folder");
        path = pattern;
    }
    ~TemporaryFolder() { fs::remove_all(path); }
    std::string path;
};

struct LanguageNames {
    const char *option, *flags;
};

LanguageNames namesOf(Language language)
{
    switch (language) {
    case Language::C:
        return {"c", ""};
    case Language::Cpp:
        return {"c++", "-std=c++17 -stdlib=libc++ -fexceptions"};
    case Language::ObjectiveC:
        return {"objective-c", "-fobjc-runtime=macosx-fragile-10.4"};
    case Language::ObjectiveCpp:
        return {"objective-c++", "-std=c++17 -stdlib=libc++ -fexceptions -fobjc-exceptions "
                                 "-fobjc-runtime=macosx-fragile-10.4"};
    case Language::Assembler:
        return {"assembler", "-Wno-unused-command-line-argument -Wa,--no-warn"};
    }
    std::abort();
}

// The compiler takes most of the tests' time, and gives the same again as long as it is the same itself.
fs::path keptObject(const std::string &command, std::string_view source)
{
    auto compilerTime = fs::last_write_time(CLANG_FOR_MACOS).time_since_epoch().count();
    std::string key = std::to_string(compilerTime) + command + "\n" + std::string(source);
    char name[MD5_DIGEST_STRING_LENGTH];
    MD5Data(reinterpret_cast<const uint8_t *>(key.data()), key.size(), name);
    fs::path folder = fs::path(kBuildDir) / "test-objects";
    fs::create_directories(folder);
    return folder / name;
}

} // namespace

const std::string &temporaryFolder()
{
    static TemporaryFolder folder;
    return folder.path;
}

void writeText(const std::string &path, std::string_view text)
{
    writeFile(path, text.data(), text.size());
}

Outcome runCommand(const std::string &command)
{
    std::string out = temporaryFolder() + "/stdout", err = temporaryFolder() + "/stderr";
    int status = std::system(("(" + command + ") >" + out + " 2>" + err).c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, std::string(textOf(readFile(out))),
            std::string(textOf(readFile(err)))};
}

Bytes compile(Language language, std::string_view source, const std::string &flags)
{
    LanguageNames names = namesOf(language);
    const std::string command = std::string(CLANG_FOR_MACOS) +
                                " -target i386-apple-macosx10.4 -fPIC -fvisibility=hidden -fno-stack-protector -w " +
                                names.flags + " " + flags + " -x " + names.option;
    const fs::path kept = keptObject(command, source);
    if (!fs::exists(kept)) {
        std::string input = temporaryFolder() + "/source", output = kept.string() + "-" + std::to_string(getpid());
        writeText(input, source);
        Outcome run = runCommand(command + " -c " + input + " -o " + output);
        if (run.status != 0)
            giveUp("the compiler: " + run.err);
        fs::rename(output, kept); // other tests may compile the same at this moment
    }
    return readFile(kept);
}

ObjectFile object(const std::string &name, Language language, std::string_view source, const std::string &flags)
{
    return parseObject(name, compile(language, source, flags));
}

ImportTable importTable(std::string_view text)
{
    return parseImportTable("imports", text);
}

DylibFile linked(const std::vector<ObjectFile> &objects, const std::vector<std::string> &exports, LinkOptions options,
                 std::string_view imports)
{
    options.exports = exports;
    options.installName = "@executable_path/test.dylib";
    return parseDylib("test.dylib", link(objects, importTable(imports), options).bytes);
}

std::string linkError(const std::vector<ObjectFile> &objects, const std::vector<std::string> &exports,
                      LinkOptions options, std::string_view imports)
{
    options.exports = exports;
    return failureOf([&] { link(objects, importTable(imports), options); });
}

uint32_t addressOf(const DylibFile &dylib, const std::string &name)
{
    for (const DylibSymbol &symbol : dylib.symbols)
        if (symbol.name == name && !symbol.isImport())
            return symbol.value;
    giveUp("no symbol " + name);
}

} // namespace macho::test
