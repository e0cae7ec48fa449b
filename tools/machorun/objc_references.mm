#include "tools/machorun/objc_sections.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

namespace machorun {

namespace {

template <class Record, class Fix>
void forEachRecord(const macho::DylibFile &file, const MappedImage &image, const char *segment, const char *name,
                   Fix fix)
{
    const macho::DylibSection *section = file.section(segment, name);
    if (!section) {
        return;
    }
    if (section->size % sizeof(Record)) {
        throw BadImage("has a section of a strange size: " + section->segment + "," + section->name);
    }
    image.requireWritable(section->address);
    auto *records = reinterpret_cast<Record *>(image.at(section->address));
    for (uint32_t index = 0; index < section->size / sizeof(Record); index++) {
        fix(records[index]);
    }
}

// A constant string as the compiler lays it out for macOS, and what GNUstep's class of constant strings has in the same
// place. The text is ASCII in one and UTF-8 in the other, so only UTF-16 text must be copied.
struct CFConstantString {
    const void *isa;
    uint32_t flags;
    uint32_t characters;
    uint32_t length;
};

struct GNUstepConstantString {
    Class isa;
    const char *utf8;
    uint32_t byteCount;
    uint32_t unused;
};
static_assert(sizeof(CFConstantString) == sizeof(GNUstepConstantString));

constexpr uint32_t kAsciiFlags = 0x7c8;
constexpr uint32_t kUtf16Flags = 0x7d0;

// Never freed, like the constant that it belongs to.
GNUstepConstantString utf8CopyOf(const unichar *characters, uint32_t length)
{
    NSString *text = [[NSString alloc] initWithCharacters:characters length:length];
    NSData *utf8 = [text dataUsingEncoding:NSUTF8StringEncoding];
    if (!utf8) {
        throw BadImage("has a constant string that is no valid UTF-16");
    }
    auto byteCount = static_cast<uint32_t>([utf8 length]);
    char *copy = new char[byteCount + 1]();
    [utf8 getBytes:copy length:byteCount];
    [text release];
    return {nil, copy, byteCount, 0};
}

void fixConstantString(const MappedImage &image, CFConstantString &string, Class stringClass)
{
    const char *what = "the text of a constant string";
    GNUstepConstantString fixed{};
    if (string.flags == kAsciiFlags) {
        fixed = {nil, image.textAt(string.characters, what), string.length, 0};
        if (strlen(fixed.utf8) < string.length) {
            throw BadImage(std::string("has a wrong length for ") + what);
        }
    } else if (string.flags == kUtf16Flags) {
        // UTF-16 needs two-byte alignment only.
        if (string.length > UINT32_MAX / sizeof(unichar) ||
            !image.contains(reinterpret_cast<const void *>(string.characters), string.length * sizeof(unichar))) {
            throw BadImage(std::string("has a pointer that leads outside it: ") + what);
        }
        fixed = utf8CopyOf(reinterpret_cast<const unichar *>(string.characters), string.length);
    } else {
        throw BadImage("has a constant string of an unknown kind: " + macho::hex(string.flags));
    }
    fixed.isa = stringClass;
    memcpy(&string, &fixed, sizeof fixed);
}

} // namespace

void FixObjectiveCReferences(const macho::DylibFile &file, const MappedImage &image)
{
    NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
    forEachRecord<uint32_t>(file, image, "__OBJC", "__message_refs", [&](uint32_t &reference) {
        reference = reinterpret_cast<uint32_t>(sel_registerName(image.textAt(reference, "a selector's name")));
    });
    forEachRecord<uint32_t>(file, image, "__OBJC", "__cls_refs", [&](uint32_t &reference) {
        const char *name = image.textAt(reference, "a class's name");
        Class found = objc_lookUpClass(name);
        if (!found) {
            throw BadImage(std::string("uses the class ") + name + ", which this process does not have");
        }
        reference = reinterpret_cast<uint32_t>(found);
    });
    Class stringClass = [NSConstantString class];
    forEachRecord<CFConstantString>(file, image, "__DATA", "__cfstring",
                                    [&](CFConstantString &string) { fixConstantString(image, string, stringClass); });
    [pool release];
}

} // namespace machorun
