#include "hostapi/record_version_9.h"

#include "hostapi/zeroed_allocation.h"

#include <cstring>

static void *CutRecords(const void *records, int32_t count, RecordWords words)
{
    if (!records || count == 0)
        return nullptr;
    auto *table = static_cast<uint32_t *>(ZeroedAllocation(uint64_t(uint32_t(count)) * words.version9 * kWord));
    if (!table)
        return nullptr;
    auto *source = static_cast<const uint32_t *>(records);
    for (int32_t i = 0; i < count; i++)
        memcpy(table + i * words.version9, source + i * words.newest, words.version9 * kWord);
    return table;
}

void *FixProperties(const void *properties, int32_t count)
{
    return CutRecords(properties, count, kPropertyWords);
}

// As the other tables, and the second word of every source record is made to point at its copy: hosts
// with version 9 records go from the event that a plug-in names to the record that they registered.
static void *CutEvents(const void *events, int32_t count)
{
    auto *table = static_cast<uint32_t *>(CutRecords(events, count, kEventWords));
    auto *source = static_cast<uint32_t *>(const_cast<void *>(events));
    for (int32_t i = 0; table && i < count; i++) {
        uint32_t *copy = table + i * kEventWords.version9;
        source[i * kEventWords.newest + 1] = uint32_t(reinterpret_cast<uintptr_t>(copy));
    }
    return table;
}

void ConvertToVersion9(REALclassDefinition *definition)
{
    REALclassDefinition narrow = *definition;
    narrow.version = kOldestRecordVersion;
    narrow.properties = FixProperties(definition->properties, definition->propertyCount);
    narrow.methods = CutRecords(definition->methods, definition->methodCount, kMethodWords);
    narrow.events = CutEvents(definition->events, definition->eventCount);
    narrow.bindDescriptions = nullptr; // version 9 has none
    narrow.bindDescriptionCount = 0;
    narrow.constants = CutRecords(definition->constants, definition->constantCount, kConstantWords);
    narrow.sharedMethods = CutRecords(definition->sharedMethods, definition->sharedMethodCount, kMethodWords);
    narrow.sharedProperties = FixProperties(definition->sharedProperties, definition->sharedPropertyCount);
    memcpy(definition, &narrow, kClassWords.version9 * kWord);
}
