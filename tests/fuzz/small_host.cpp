#include "tests/fuzz/small_host.h"

#include "hostapi/strings.h"
#include "hostapi/version.h"
#include "tests/fuzz/input.h"

#include <CoreFoundation/CoreFoundation.h>

namespace small_host {

// The fuzzer takes note of what strcmp compares, which names of services are not worth.
static bool isSame(const char *a, const char *b)
{
    while (*a && *a == *b) {
        a++;
        b++;
    }
    return *a == *b;
}

bool answersCFStrings = false;
int liveHandles = 0;
int raisedExceptions = 0;

String *newString(const void *bytes, size_t length, uint32_t encoding)
{
    auto *string = static_cast<String *>(malloc(sizeof(String)));
    auto *buffer = static_cast<char *>(malloc(length + 2));
    buffer[0] = 0x7F;
    if (length)
        memcpy(buffer + 1, bytes, length);
    buffer[length + 1] = 0;
    *string = {0, buffer, encoding, static_cast<int32_t>(length), 1};
    ++liveHandles;
    return string;
}

static void lock(String *string)
{
    REQUIRE(string && string->locks > 0);
    ++string->locks;
}

void unlock(String *string)
{
    if (!string)
        return;
    REQUIRE(string->locks > 0);
    if (--string->locks)
        return;
    free(string->buffer);
    free(string);
    --liveHandles;
}

static Object *newObject(int32_t type, const char *className)
{
    auto *object = static_cast<Object *>(calloc(1, sizeof(Object)));
    object->locks = 1;
    object->type = type;
    object->className = className;
    ++liveHandles;
    return object;
}

static void lock(Object *object)
{
    REQUIRE(object && object->locks > 0);
    ++object->locks;
}

static const char dictionaryClass[] = "Dictionary";
static const char blockClass[] = "MemoryBlock";
static const char dateClass[] = "Date";
static const char *const classes[] = {dictionaryClass, blockClass,   dateClass,   "NSRectKTZ",
                                      "NSSizeKTZ",     "NSRangeKTZ", "NSPointKTZ"};

static const char *findClass(const char *name)
{
    for (const char *known : classes) {
        if (known[2] == name[2] && isSame(known, name)) // most begin with NS
            return known;
    }
    return nullptr;
}

static int32_t elementType(const Object *array)
{
    return array->type - kArrayOf;
}

static bool holdsStrings(const Object *array)
{
    return elementType(array) == kString;
}

static bool holdsObjects(const Object *array)
{
    return elementType(array) == kObject || elementType(array) == kDate;
}

static size_t elementWidth(const Object *array)
{
    switch (elementType(array)) {
    case kInt64:
    case kDouble:
    case kCurrency:
        return 8;
    case kBoolean:
        return 1;
    default:
        return 4;
    }
}

static bool isText(int32_t type)
{
    return type == kString || (type >= 18 && type <= 23 && type != 22);
}

void unlock(Object *object)
{
    if (!object)
        return;
    REQUIRE(object->locks > 0);
    if (--object->locks)
        return;
    if (isText(object->type)) {
        unlock(object->value.string);
    } else if (object->className == dictionaryClass) {
        for (int32_t i = 0; i < 2 * object->count; i++)
            unlock(object->objects()[i]);
    } else if (object->type > kArrayOf && holdsStrings(object)) {
        for (int32_t i = 0; i < object->count; i++)
            unlock(static_cast<String **>(object->elements)[i]);
    } else if (object->type > kArrayOf && holdsObjects(object)) {
        for (int32_t i = 0; i < object->count; i++)
            unlock(object->objects()[i]);
    }
    free(object->elements);
    free(object);
    --liveHandles;
}

Object *newVariant(int32_t type)
{
    return newObject(type, nullptr);
}

Object *newText(String *string)
{
    Object *variant = newObject(kString, nullptr);
    variant->value.string = string;
    return variant;
}

Object *newInstance(const char *className)
{
    const char *known = findClass(className);
    return known ? newObject(known == dateClass ? kDate : kObject, known) : nullptr;
}

Object *newBlock(int32_t size)
{
    Object *block = newObject(kObject, blockClass);
    block->elements = malloc(size);
    block->count = size;
    return block;
}

Object *newArray(int32_t elementType)
{
    return newObject(kArrayOf + elementType, nullptr);
}

static void *addRoom(Object *object, size_t width)
{
    if (object->count == object->room) {
        object->room = object->room ? 2 * object->room : 4;
        object->elements = realloc(object->elements, object->room * width);
        if (object->type > kArrayOf && rbversion_rbversion <= 2013.9)
            object->storage = object->elements;
    }
    return static_cast<char *>(object->elements) + object->count++ * width;
}

void appendElement(Object *array, const void *element)
{
    const size_t width = elementWidth(array);
    memcpy(addRoom(array, width), element, width);
}

void appendEntry(Object *dictionary, Object *key, Object *value)
{
    Object *entry[] = {key, value};
    memcpy(addRoom(dictionary, sizeof entry), entry, sizeof entry);
}

namespace {

// --- What the plug-in calls ------------------------------------------------------------------------------------------

Object *variantOf(int32_t type, const void *value, size_t size)
{
    Object *variant = newVariant(type);
    memcpy(&variant->value, value, size);
    return variant;
}

template <int32_t type, class Value>
Object *toVariant(Value value)
{
    return variantOf(type, &value, sizeof value);
}

Object *stringToVariant(String *string)
{
    if (string)
        lock(string);
    return newText(string);
}

// clang-format off
void lockString(String *string)         { lock(string); }
void unlockString(String *string)       { REQUIRE(string); unlock(string); }
void lockObject(Object *object)         { lock(object); }
void unlockObject(Object *object)       { REQUIRE(object); unlock(object); }
uint32_t getEncoding(String *string)    { return string->encoding; }
const char *getCString(String *string)  { return string->text(); }
int32_t lenB(String *string)            { return string->length; }
int32_t varType(Object *variant)        { return variant->type; }
int32_t variantToInt32(Object *variant) { return variant->value.int32; }
int64_t variantToInt64(Object *variant) { return variant->value.int64; }
float variantToSingle(Object *variant)  { return variant->value.single; }
double variantToDouble(Object *variant) { return variant->value.real; }
int32_t upperBound(Object *array)       { return array->count - 1; }
void *blockPointer(Object *block)       { return block->elements; }
int32_t blockSize(Object *block)        { return block->count; }
void raise(Object *)                    { ++raisedExceptions; }
const char *classReference(const char *name)                { return findClass(name); }
unsigned char isA(Object *object, const char *className)    { return object->className == className; }
// clang-format on

String *buildString(const char *bytes, int32_t length)
{
    REQUIRE(length >= 0 && (bytes || !length));
    return newString(bytes, length, kOwnBytes);
}

void setEncoding(String *string, uint32_t encoding)
{
    string->encoding = encoding;
}

// Converts what needs no table, keeping halves of surrogate pairs as three bytes; anything else it refuses.
String *convertString(String *string, uint32_t encoding)
{
    if (!string)
        return nullptr;
    if (encoding == string->encoding || encoding == kOwnBytes)
        return newString(string->text(), string->length, encoding);
    if (string->encoding != kUTF16Text || encoding != kUTF8Text)
        return nullptr;
    const size_t units = string->length / 2;
    auto *bytes = static_cast<uint8_t *>(malloc(3 * units + 1));
    uint8_t *end = bytes;
    for (size_t i = 0; i < units; i++) {
        uint16_t unit;
        memcpy(&unit, string->text() + 2 * i, sizeof unit);
        if (unit < 0x80) {
            *end++ = unit;
        } else if (unit < 0x800) {
            *end++ = 0xC0 | unit >> 6;
            *end++ = 0x80 | (unit & 0x3F);
        } else {
            *end++ = 0xE0 | unit >> 12;
            *end++ = 0x80 | (unit >> 6 & 0x3F);
            *end++ = 0x80 | (unit & 0x3F);
        }
    }
    String *converted = newString(bytes, end - bytes, kUTF8Text);
    free(bytes);
    return converted;
}

const void *getCFString(String *string, uint8_t)
{
    if (!answersCFStrings)
        return nullptr;
    return CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8 *>(string->text()), string->length,
                                   string->encoding, false);
}

String *variantToString(Object *variant)
{
    if (variant->value.string)
        lock(variant->value.string);
    return variant->value.string;
}

int32_t *dateProperty(Object *date, const char *name)
{
    static const char *const names[] = {"Year", "Month", "Day", "Hour", "Minute", "Second"};
    for (int i = 0; i < 6; i++) {
        if (date->type == kDate && isSame(names[i], name))
            return &date->value.date[i];
    }
    return nullptr;
}

unsigned char getInt32Property(Object *object, const char *name, int32_t *value)
{
    const int32_t *property =
        object->className == dictionaryClass && isSame(name, "Count") ? &object->count : dateProperty(object, name);
    if (property)
        *value = *property;
    return property != nullptr;
}

unsigned char setInt32Property(Object *object, const char *name, int32_t value)
{
    int32_t *property = dateProperty(object, name);
    if (property)
        *property = value;
    return property != nullptr;
}

unsigned char getObjectProperty(Object *object, const char *name, Object **value)
{
    REQUIRE(object->type == kDate && isSame(name, "DateValue"));
    lock(object);
    *value = object;
    return true;
}

void dictionarySet(Object *dictionary, Object *key, Object *value)
{
    if (key)
        lock(key);
    if (value)
        lock(value);
    appendEntry(dictionary, key, value);
}

Object *dictionaryGet(Object *dictionary, Object *key)
{
    for (int32_t i = 0; i < dictionary->count; i++) {
        if (dictionary->objects()[2 * i] != key)
            continue;
        if (Object *value = dictionary->objects()[2 * i + 1])
            lock(value);
        return dictionary->objects()[2 * i + 1];
    }
    return nullptr;
}

Object *dictionaryKey(Object *dictionary, int32_t index)
{
    REQUIRE(index >= 0 && index < dictionary->count);
    Object *key = dictionary->objects()[2 * index];
    if (key)
        lock(key);
    return key;
}

template <class Element>
Element readElement(Object *array, int32_t index)
{
    REQUIRE(index >= 0 && index < array->count);
    Element element = static_cast<Element *>(array->elements)[index];
    if constexpr (std::is_pointer_v<Element>) {
        if (element)
            lock(element);
    }
    return element;
}

void *readProcedure(Object *array)
{
    switch (elementType(array)) {
    case kInt64:
        return reinterpret_cast<void *>(readElement<int64_t>);
    case kSingle:
        return reinterpret_cast<void *>(readElement<float>);
    case kDouble:
        return reinterpret_cast<void *>(readElement<double>);
    case kBoolean:
        return reinterpret_cast<void *>(readElement<uint8_t>);
    case kString:
        return reinterpret_cast<void *>(readElement<String *>);
    case kObject:
    case kDate:
        return reinterpret_cast<void *>(readElement<Object *>);
    default:
        return reinterpret_cast<void *>(readElement<int32_t>);
    }
}

void insertObject(Object *array, int32_t index, Object *element)
{
    REQUIRE(index == array->count);
    if (element)
        lock(element);
    appendElement(array, &element);
}

void *insertProcedure(Object *array)
{
    REQUIRE(holdsObjects(array));
    return reinterpret_cast<void *>(insertObject);
}

Object *createArray(int32_t elementCode, int32_t bound)
{
    REQUIRE(elementCode == 4 && bound == -1);
    return newArray(kObject);
}

void *loadObjectMethod(Object *object, const char *declaration)
{
    if (object->className != dictionaryClass)
        return nullptr;
    if (isSame(declaration, "Value(key As Variant, Assigns _value As Variant)"))
        return reinterpret_cast<void *>(dictionarySet);
    if (isSame(declaration, "Value(key As Variant) As Variant"))
        return reinterpret_cast<void *>(dictionaryGet);
    if (isSame(declaration, "Key(index As Integer) As Variant"))
        return reinterpret_cast<void *>(dictionaryKey);
    return nullptr;
}

void *loadGlobalMethod(void *, const char *declaration)
{
    if (isSame(declaration, "LenB( s as string ) as integer"))
        return reinterpret_cast<void *>(lenB);
    if (isSame(declaration, "VarType(value As Variant) As Int32"))
        return reinterpret_cast<void *>(varType);
    return nullptr;
}

struct Service {
    const char *name;
    void *function;
};

template <class Function>
Service service(const char *name, Function *function)
{
    return {name, reinterpret_cast<void *>(function)};
}

// "PluginGetStringData" is left out, so that the plug-in makes its own copies.
const Service services[] = {
    service("REALLockString", lockString),
    service("REALUnlockString", unlockString),
    service("REALLockObject", lockObject),
    service("REALUnlockObject", unlockObject),
    service("REALBuildString", buildString),
    service("REALGetStringEncoding", getEncoding),
    service("REALSetStringEncoding", setEncoding),
    service("REALConvertString", convertString),
    service("REALGetStringCFString", getCFString),
    service("StringGetCString", getCString),
    service("REALLoadGlobalMethod", loadGlobalMethod),
    service("REALLoadObjectMethod", loadObjectMethod),
    service("PluginNewInstance", newInstance),
    service("pluginObjectType", classReference),
    service("RuntimeObjectIsa", isA),
    service("RuntimeRaiseException", raise),
    service("REALGetPropValueInt", getInt32Property),
    service("REALSetPropValueInt", setInt32Property),
    service("REALGetPropValueObject", getObjectProperty),
    service("StringToVariant", stringToVariant),
    service("Int32ToVariant", toVariant<kInt32, int32_t>),
    service("UInt32ToVariant", toVariant<kInt64, uint32_t>),
    service("Int64ToVariant", toVariant<kInt64, int64_t>),
    service("UInt64ToVariant", toVariant<kInt64, uint64_t>),
    service("SingleToVariant", toVariant<kSingle, float>),
    service("DoubleToVariant", toVariant<kDouble, double>),
    service("BooleanToVariant", toVariant<kBoolean, uint8_t>),
    service("VariantToString", variantToString),
    service("VariantToInt32", variantToInt32),
    service("VariantToInt64", variantToInt64),
    service("VariantToSingle", variantToSingle),
    service("VariantToDouble", variantToDouble),
    service("RuntimeArrayCreateSingleDimBoundedArray", createArray),
    service("RuntimeUBound", upperBound),
    service("RuntimeArrayDirectGetInsertProc", insertProcedure),
    service("RuntimeArrayDirectGetGetProc", readProcedure),
    service("newMemoryBlock", newBlock),
    service("memoryBlockGetPtr", blockPointer),
    service("memoryBlockGetSize", blockSize),
};

void *resolve(const char *name)
{
    for (const Service &service : services) {
        if (service.name[4] == name[4] && isSame(service.name, name))
            return service.function;
    }
    return nullptr;
}

} // namespace

void install(double version)
{
    gResolver = resolve;
    setVersion(version);
}

void setVersion(double version)
{
    rbversion_rbversion = version;
}

} // namespace small_host
