// A host of a few functions, fast enough for millions of runs: strings, Variants, arrays, Dictionaries, Dates,
// MemoryBlocks and the structures of the family. Every handle is a block of its own, so that AddressSanitizer sees
// whoever uses a dead one, and what lives is counted. The plug-in's functions are called from inside.
#pragma once

#include <cstddef>
#include <cstdint>

namespace small_host {

// Its first four words are laid out as hosts before 2012 do; the text begins one byte behind the buffer's start.
struct String {
    uint32_t hostsOwn;
    char *buffer;
    uint32_t encoding;
    int32_t length;
    int32_t locks;

    const char *text() const { return buffer + 1; }
};

enum Type : int32_t {
    kInt32 = 2,
    kInt64 = 3,
    kSingle = 4,
    kDouble = 5,
    kCurrency = 6,
    kDate = 7,
    kString = 8,
    kObject = 9,
    kBoolean = 11,
    kColor = 16,
    kArrayOf = 4096,
};

// A Variant, an object or an array. What the plug-in may read itself is where hosts have it: the elements of an array
// at byte 8, the data of an instance from byte 24 on.
struct Object {
    int32_t locks;
    int32_t type;
    void *storage; // arrays of older hosts: the elements
    const char *className;
    int32_t count; // elements of an array, entries of a Dictionary, bytes of a MemoryBlock
    int32_t room;
    union {
        int32_t int32;
        int64_t int64;
        float single;
        double real;
        String *string;
        int32_t date[6];
        uint8_t data[24];
    } value;
    void *elements; // packed; of a Dictionary key and value in turn

    Object **objects() const { return static_cast<Object **>(elements); }
};
static_assert(offsetof(Object, storage) == 8 && offsetof(Object, value) == 24);

// The plug-in's services from now on are those of a host of that version.
void install(double version);
void setVersion(double version);

// Whether "REALGetStringCFString" answers; it is offered in any case.
extern bool answersCFStrings;

// Made with one lock, which the caller owns.
String *newString(const void *bytes, size_t length, uint32_t encoding);
Object *newVariant(int32_t type);
Object *newText(String *string);            // takes over its lock
Object *newInstance(const char *className); // null for a class that this host lacks
Object *newBlock(int32_t size);
Object *newArray(int32_t elementType);
void appendElement(Object *array, const void *element); // of the width of its type; handles: takes over the lock
void appendEntry(Object *dictionary, Object *key, Object *value); // takes over the locks

void unlock(String *string); // null is allowed, here and below
void unlock(Object *object);

extern int liveHandles;
extern int raisedExceptions;

} // namespace small_host
