// The host's records that describe a class, in the layout of record version 12 and in that of version 9.
// The host knows them by their layout alone: consecutive 32-bit words.
#pragma once

#include "hostapi/types.h"

#include <cstddef>

constexpr int32_t kNewestRecordVersion = 12;
constexpr int32_t kOldestRecordVersion = 9;

// A flag of the host; the class and all its methods carry it and no other.
constexpr int32_t kMemberFlags = 4;

struct REALmethodDefinition {
    const void *function;
    const void *setterFunction; // used for an assignment to the method's form; key first, value last
    const char *declaration;
    int32_t mFlags;
    int32_t attributeCount;
    const void *attributes;
};

struct REALclassDefinition {
    int32_t version;
    const char *name;
    const char *superName;
    int32_t dataSize;     // bytes of instance data
    int32_t forSystemUse; // the host writes here where the instance data of an object begins
    const void *constructor;
    const void *destructor;
    // Tables: their records, and how many.
    // clang-format off
    const void *properties;       int32_t propertyCount;
    const void *methods;          int32_t methodCount;
    const void *events;           int32_t eventCount;
    const void *eventInstances;   int32_t eventInstanceCount;
    const char *interfaces;
    const void *bindDescriptions; int32_t bindDescriptionCount;
    const void *constants;        int32_t constantCount;
    int32_t mFlags;
    const void *sharedProperties; int32_t sharedPropertyCount;
    const void *sharedMethods;    int32_t sharedMethodCount;
    // Record version 9 ends here.
    const void *delegates;        int32_t delegateCount;
    const void *enums;            int32_t enumCount;
    // clang-format on
};

// How many words a record has in the newest layout and in that of version 9, which keeps the first ones.
struct RecordWords {
    int32_t newest;
    int32_t version9;
};
constexpr RecordWords kClassWords = {29, 25};
constexpr RecordWords kPropertyWords = {12, 10};
constexpr RecordWords kMethodWords = {6, 4};
constexpr RecordWords kEventWords = {4, 2};
constexpr RecordWords kConstantWords = {5, 3};

constexpr size_t kWord = 4;
static_assert(sizeof(REALclassDefinition) == kClassWords.newest * kWord);
static_assert(offsetof(REALclassDefinition, forSystemUse) == 4 * kWord);
static_assert(offsetof(REALclassDefinition, methods) == 9 * kWord);
static_assert(offsetof(REALclassDefinition, bindDescriptions) == 16 * kWord);
static_assert(offsetof(REALclassDefinition, mFlags) == 20 * kWord);
static_assert(offsetof(REALclassDefinition, sharedMethodCount) == 24 * kWord);
static_assert(offsetof(REALclassDefinition, delegates) == kClassWords.version9 * kWord);
static_assert(sizeof(REALmethodDefinition) == kMethodWords.newest * kWord);
static_assert(offsetof(REALmethodDefinition, attributeCount) == kMethodWords.version9 * kWord);
