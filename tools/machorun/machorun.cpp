#include "tools/machorun/machorun.h"

#include "tools/macho/files.h"
#include "tools/machorun/imports.h"
#include "tools/machorun/loadable_file.h"
#include "tools/machorun/mapped_image.h"
#include "tools/machorun/messages.h"
#include "tools/machorun/objc_sections.h"
#include "tools/machorun/unwind_tables.h"

#include <cstdlib>
#include <memory>
#include <sstream>
#include <sys/stat.h>

namespace machorun {

using namespace macho;

namespace {

// Which of a file's two encodings is taken.
const DylibFixups &chosenFixups(const DylibFile &file, Fixups wanted)
{
    if (wanted == Fixups::Preferred) {
        wanted = file.compressed.present ? Fixups::Compressed : Fixups::Classic;
    }
    if (wanted == Fixups::Classic && !file.classic.present) {
        throw BadImage("has no classic fix-ups");
    }
    if (wanted == Fixups::Compressed && !file.compressed.present) {
        throw BadImage("has no compressed fix-ups");
    }
    return wanted == Fixups::Classic ? file.classic : file.compressed;
}

class Library {
public:
    Library(const std::string &path, const Options &options)
        : path_(path), file_(LoadableFile(path, readFile(path))), fixups_(chosenFixups(file_, options.fixups)),
          image_(file_)
    {
        image_.fill(fixups_, ImportsWithout(options.absent));
    }

    // From here on the process keeps pointers into the image.
    void start() const
    {
        image_.protect();
        RegisterMethodsOf(image_);
        RegisterUnwindTables(TranslatedUnwindTables(file_, image_));
        DefineClasses(file_, image_);
        FixObjectiveCReferences(file_, image_);
        runInitializers();
    }

    const std::string &path() const { return path_; }

    // Through the symbol table, as older systems look it up, or through the export tree of the compressed information.
    void *findExport(const std::string &symbol) const
    {
        if (&fixups_ == &file_.compressed) {
            auto found = file_.exportTrie.find(symbol);
            return found == file_.exportTrie.end() ? nullptr : image_.exportAt(found->second);
        }
        for (const DylibSymbol &candidate : file_.symbols) {
            if (candidate.isExport() && candidate.name == symbol) {
                return image_.exportAt(candidate.value);
            }
        }
        return nullptr;
    }

private:
    void runInitializers() const
    {
        // What a system hands them: as for main, and its own variables.
        using Initializer = void (*)(int, const char **, const char **, const char **, const void *);
        for (const DylibSection &section : file_.sections) {
            if (section.type() != format::S_MOD_INIT_FUNC_POINTERS) {
                continue;
            }
            auto *functions = reinterpret_cast<const uint32_t *>(image_.at(section.address));
            for (uint32_t index = 0; index < section.size / sizeof(uint32_t); index++) {
                if (!image_.isExecutable(functions[index])) {
                    throw BadImage("has an initialiser that is not code");
                }
                const char *none[] = {nullptr};
                reinterpret_cast<Initializer>(functions[index])(0, none, none, none, nullptr);
            }
        }
    }

    std::string path_;
    DylibFile file_;
    const DylibFixups &fixups_;
    MappedImage image_;
};

// A file is known by its place on the disk, whatever path leads there.
struct LoadedLibrary {
    dev_t device;
    ino_t inode;
    std::unique_ptr<Library> library;
    bool isStarted;
};

// Those that could not be started to the end stay, too: the process knows parts of them.
std::vector<LoadedLibrary> &loadedLibraries()
{
    static auto *libraries = new std::vector<LoadedLibrary>; // outlives everything that runs at exit
    return *libraries;
}

std::vector<std::string> splitAtColons(const char *text)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, ':');) {
        if (!part.empty()) {
            parts.push_back(part);
        }
    }
    return parts;
}

bool optionsFromEnvironment(Options &options, std::string &error)
{
    if (const char *absent = std::getenv("MACHORUN_ABSENT")) {
        options.absent = splitAtColons(absent);
    }
    std::string fixups = std::getenv("MACHORUN_FIXUPS") ? std::getenv("MACHORUN_FIXUPS") : "";
    if (fixups == "classic") {
        options.fixups = Fixups::Classic;
    } else if (fixups == "compressed") {
        options.fixups = Fixups::Compressed;
    } else if (!fixups.empty()) {
        error = "MACHORUN_FIXUPS is neither classic nor compressed: " + fixups;
        return false;
    }
    return true;
}

} // namespace

void *Load(const std::string &path, std::string &error, const Options &options)
{
    struct stat status {};
    bool exists = stat(path.c_str(), &status) == 0;
    for (const LoadedLibrary &loaded : loadedLibraries()) {
        if (exists && loaded.isStarted && loaded.device == status.st_dev && loaded.inode == status.st_ino) {
            return loaded.library.get();
        }
    }
    try {
        loadedLibraries().push_back(
            {status.st_dev, status.st_ino, std::make_unique<Library>(path, options), /*isStarted=*/false});
        size_t index = loadedLibraries().size() - 1; // its initialisers may load further ones
        Library *library = loadedLibraries()[index].library.get();
        library->start();
        loadedLibraries()[index].isStarted = true;
        return library;
    } catch (const BadImage &reason) {
        error = path + " " + reason.what();
    } catch (const Failure &failure) { // which names the file
        error = failure.what();
    }
    return nullptr;
}

void *FindExport(void *library, const char *name, std::string &error)
{
    auto *searched = static_cast<Library *>(library);
    try {
        void *found = searched->findExport(std::string("_") + name);
        if (!found) {
            error = searched->path() + " does not export " + name;
        }
        return found;
    } catch (const BadImage &reason) {
        error = searched->path() + " " + reason.what();
        return nullptr;
    }
}

void *LoadPlugin(const char *path, std::string &error)
{
    Options options;
    if (!optionsFromEnvironment(options, error))
        return nullptr;
    void *library = Load(path, error, options);
    return library ? FindExport(library, "REALPluginMain", error) : nullptr;
}

} // namespace machorun
