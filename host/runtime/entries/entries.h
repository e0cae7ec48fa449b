// The host's services as plug-ins call them: C functions over raw handles. The table in runtime/entry_points.cpp gives
// each its name and the host version that brought it.
//
// Handles passed in are borrowed; handles given out carry one lock for the caller. A handle that is dead or of the
// wrong kind is noted as a fault and counts as null.
#pragma once

#include <cstdint>

#include "host/interface/family.h"
#include "host/interface/records.h"

struct FSRef;
struct FSSpec;
struct HFSUniStr255;

namespace host::runtime {
struct Class;
}

namespace host::runtime::entries {

using Byte = uint8_t; // the host's boolean

// The plug-in itself
void registerPluginVersion(int32_t recordVersion);
double getRBVersion();
void registerClass(interface::ClassRecord9 *record);

// Objects
void *newInstance(const char *className);
void lockObject(void *object); // an array in a Variant's place too
void unlockObject(void *object);
void raiseException(void *exception);
const Class *classReference(const char *className);
Byte objectIsA(void *object, const Class *hostClass);
void *loadObjectMethod(void *object, const char *declaration);
void *loadGlobalMethod(void *module, const char *declaration);

// Properties: 1 when there is one of that name and type
Byte getInt32Property(void *object, const char *name, int32_t *value);
Byte getInt64Property(void *object, const char *name, int64_t *value);
Byte getSingleProperty(void *object, const char *name, float *value);
Byte getDoubleProperty(void *object, const char *name, double *value);
Byte getStringProperty(void *object, const char *name, void **value);
Byte getObjectProperty(void *object, const char *name, void **value);
Byte setInt32Property(void *object, const char *name, int32_t value);
Byte setStringProperty(void *object, const char *name, void *value);

// Strings
void lockString(void *string);
void unlockString(void *string);
void *buildString(const char *bytes, int32_t length); // of unknown encoding
uint32_t getStringEncoding(void *string);
void setStringEncoding(void *string, uint32_t encoding);
void *convertString(void *string, uint32_t encoding); // null when it cannot be converted
Byte getStringData(void *string, uint32_t encoding, interface::StringData *data);
void disposeStringData(interface::StringData *data);
const void *getStringCFString(void *string, Byte flag); // a CFString that the caller owns; null for unknown bytes
const char *stringGetCString(void *string);
int32_t stringLengthInBytes(void *string); // LenB

// Variants
void *variantFromString(void *string);
void *variantFromInt32(int32_t value);
void *variantFromUInt32(uint32_t value);
void *variantFromInt64(int64_t value);
void *variantFromUInt64(uint64_t value);
void *variantFromSingle(float value);
void *variantFromDouble(double value);
void *variantFromBoolean(Byte value);
void *variantToString(void *variant);
int32_t variantToInt32(void *variant);
int64_t variantToInt64(void *variant);
float variantToSingle(void *variant);
double variantToDouble(void *variant);
int32_t variantType(void *variant); // VarType

// Arrays
void *createArray(int32_t elementType, int32_t upperBound);
int32_t arrayUpperBound(void *array); // -1 for an empty or no array
void *readStringArray(void *array, int32_t index);
void *readObjectArray(void *array, int32_t index);
void *insertProcedure(void *array); // (array, index, value), for the array's element type
void *readProcedure(void *array);   // (array, index) to the element

// MemoryBlocks
void *newMemoryBlock(int32_t size);
void *memoryBlockPointer(void *block);
int32_t memoryBlockSize(void *block);

// Files
Byte fsRefFromFolderItem(void *item, FSRef *ref, HFSUniStr255 *name);
Byte fsSpecFromFolderItem(FSSpec *spec, void *item);
void *folderItemFromParent(const FSRef *parent, const HFSUniStr255 *name);
void *folderItemFromFSSpec(const FSSpec *spec);

// What the companion library works with
const interface::FamilyServices *familyServices();

} // namespace host::runtime::entries
