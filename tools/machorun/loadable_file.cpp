#include "tools/machorun/loadable_file.h"

#include "tools/machorun/bad_image.h"

namespace machorun {

using namespace macho;
using namespace macho::format;

namespace {

constexpr uint32_t kPageSize = 4096;
// Far above any plug-in: a damaged size must not eat the address space of the process.
constexpr uint32_t kLargestImage = 64 << 20;

void requireKnown(uint32_t command)
{
    // The import table knows every symbol by its name, whatever library it is said to be in.
    bool isKnown = command == LC_LOAD_WEAK_DYLIB || command == LC_DYLD_INFO_ONLY;
    if (command & LC_REQ_DYLD && !isKnown) {
        throw BadImage("has a load command that must be understood and is not: " + hex(command));
    }
}

void requireMappable(const DylibSegment &segment)
{
    if (segment.address % kPageSize || segment.memorySize % kPageSize ||
        segment.address + segment.memorySize > kLargestImage) {
        throw BadImage("has a segment whose place or size is wrong: " + segment.name);
    }
    if (segment.isWritable() && segment.protection & VM_PROT_EXECUTE) {
        throw BadImage("has a segment that is both writable and executable: " + segment.name);
    }
}

} // namespace

DylibFile LoadableFile(const std::string &path, Bytes bytes)
{
    DylibFile file = parseDylib(path, std::move(bytes));
    if (file.processor != CPU_TYPE_I386) {
        throw BadImage("is not made for 32-bit Intel processors");
    }
    if (file.fileType != MH_DYLIB) {
        throw BadImage("is a Mach-O file, but not a dynamic library");
    }
    for (uint32_t command : file.commands) {
        requireKnown(command);
    }
    for (const DylibSegment &segment : file.segments) {
        requireMappable(segment);
    }
    return file;
}

} // namespace machorun
