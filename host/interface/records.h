// The plug-in interface as the host sees it: the records that cross between host and plug-in, word for word.
// Declared here from the interface's description, not shared with any plug-in: if a plug-in lays a record out
// differently, the host misreads it and a test fails.
#pragma once

#include <cstddef>
#include <cstdint>

namespace host::interface {

// Every object begins with the host's own 24 bytes; the instance data of its class follows.
struct ObjectHeader {
    uint32_t mark;
    void *hostClass;
    uint32_t reserved[4];
};
static_assert(sizeof(ObjectHeader) == 24);

constexpr uint32_t kObjectMark = 0x6A624F48; // "HObj"
constexpr int32_t kInstanceDataOffset = 24;

// A one-dimensional array. `elements` points at the packed elements on hosts that keep them in one piece, else 0.
struct ArrayRecord {
    uint32_t mark;
    uint32_t elementType;
    void *elements;
    uint32_t reserved[3];
};
static_assert(offsetof(ArrayRecord, elements) == 8);

constexpr uint32_t kArrayMark = 0x72724148; // "HArr"

// A string on hosts before 2012: the text begins one byte after the start of the buffer.
struct OldStringRecord {
    uint32_t mark;
    char *buffer;
    uint32_t encoding;
    int32_t length;
};
static_assert(offsetof(OldStringRecord, buffer) == 4 && offsetof(OldStringRecord, length) == 12);

// A string on hosts from 2012 on. Where the old record has buffer and length, this one has words of another
// meaning; they lead a reader of the old layout to a text that says what it did.
struct StringRecord {
    uint32_t mark;
    const char *notTheBuffer;
    uint32_t reserved;
    int32_t notTheLength;
    char *text;
    int32_t length;
    uint32_t encoding;
};

constexpr uint32_t kStringMark = 0x72745348; // "HStr"

// The bytes of a string, filled by "PluginGetStringData". The last two words are the host's.
struct StringData {
    void *data;
    int32_t length;
    uint32_t encoding;
    void *hostWord1;
    void *hostWord2;
};
static_assert(sizeof(StringData) == 20);

// A method, shared or not. Hosts before 2012 read the first four words only (record version 9).
struct MethodRecord9 {
    void *function;
    void *setterFunction;
    const char *declaration;
    int32_t mFlags;
};
static_assert(sizeof(MethodRecord9) == 16);

struct MethodRecord : MethodRecord9 {
    int32_t attributeCount;
    void *attributes;
};
static_assert(sizeof(MethodRecord) == 24);

using ObjectFunction = void (*)(void *object);

// A class. Record version 9 ends after `sharedMethodCount`; versions 10 to 12 have all 29 words.
struct ClassRecord9 {
    int32_t version;
    const char *name;
    const char *superName;
    int32_t dataSize;
    int32_t forSystemUse; // the host writes the offset of the instance data here
    ObjectFunction constructor;
    ObjectFunction destructor;
    void *properties;
    int32_t propertyCount;
    void *methods;
    int32_t methodCount;
    void *events;
    int32_t eventCount;
    void *eventInstances;
    int32_t eventInstanceCount;
    const char *interfaces;
    void *bindDescriptions;
    int32_t bindDescriptionCount;
    void *constants;
    int32_t constantCount;
    int32_t mFlags;
    void *sharedProperties;
    int32_t sharedPropertyCount;
    void *sharedMethods;
    int32_t sharedMethodCount;
};
static_assert(sizeof(ClassRecord9) == 25 * 4);

struct ClassRecord : ClassRecord9 {
    void *delegates;
    int32_t delegateCount;
    void *enums;
    int32_t enumCount;
};
static_assert(sizeof(ClassRecord) == 29 * 4);

constexpr int32_t kOldestRecordVersion = 9;
constexpr int32_t kNewestRecordVersion = 12;

// What a plug-in is handed and what it exports.
using Resolver = void *(*)(const char *entryPointName);
using PluginMain = void (*)(Resolver);
constexpr const char *kPluginMainName = "REALPluginMain";

} // namespace host::interface
