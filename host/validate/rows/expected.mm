#include "host/validate/rows/expected.h"

#include "host/validate/rows/samples.h"

#include <unistd.h>

namespace validate {

// --- What comes back to host code -----------------------------------------------------------------------------------

// Without the setter a Date is the moment when it was made.
std::string newDate(World &world)
{
    std::string made = world.newObject("Date", kDate);
    return made == "nil" || world.has("REALSetPropValueInt") ? made : "date *";
}

// One entry; its key is lost where there are no text Variants.
static std::string newDictionary(World &world, const std::string &entryKey, const Text &value)
{
    std::string made = world.newObject("Dictionary", "{}");
    if (made == "nil")
        return made;
    std::string shownKey = world.newTextVariant(entryKey);
    std::string shownValue = value(world);
    return world.has("REALLoadObjectMethod") ? "{" + shownKey + ": " + shownValue + "}" : made;
}

std::string newList(World &world, const std::vector<Text> &elements)
{
    std::string list;
    for (const Text &element : elements) {
        std::string made = element(world);
        if (world.inserts())
            list += (list.empty() ? "" : ", ") + made;
    }
    return "[" + list + "]";
}

Text variantOf(const char *entry, const char *shownValue)
{
    return [=](World &world) { return world.newVariant(entry, shownValue); };
}

Text textVariant(const char *utf8)
{
    return [=](World &world) { return world.newTextVariant(utf8); };
}

Text newString(const char *utf8)
{
    return [=](World &world) { return world.newText(utf8); };
}

Text item(const char *entry, const char *path)
{
    return [=](World &world) { return world.newItem(entry, path); };
}

std::string newBlock(World &world)
{
    return world.newMemoryBlock("00ff10", 3);
}

std::string newLongText(World &world)
{
    return world.newText(std::string(150, 'x'));
}

std::string newNestedDictionary(World &world)
{
    return newDictionary(world, "outside",
                         [](World &w) { return newDictionary(w, "inside", variantOf("Int32ToVariant", "int32 7")); });
}

// --- What reaches Cocoa of a host value -----------------------------------------------------------------------------

// Without its methods a Dictionary is taken for one without entries.
std::string readDictionary(World &world)
{
    if (!world.has("REALGetPropValueInt") || !world.has("REALLoadObjectMethod"))
        return "{}";
    std::string name = world.textOfVariant("name");
    return "{" + name + ": " + world.number("VariantToInt32", "REALGetPropValueInt", "7", "0") + "}";
}

std::string readBlock(World &world)
{
    return world.has("memoryBlockGetSize") && world.has("memoryBlockGetPtr") ? "{00ff10}" : "nil";
}

Text readItem(const char *path, const char *url)
{
    bool exists = access(path, F_OK) == 0;
    return [=](World &world) {
        bool byReference = world.has("REALFSRefFromFolderItem");
        bool bySpec = exists && world.has("REALFSSpecFromFolderItem");
        return byReference || bySpec ? std::string(url) : std::string("nil");
    };
}

std::string wrapped(World &world)
{
    return world.family() ? "KTZREALobjectWrapper" : "nil";
}

Text objectOfClass(const char *className, const Text &convert)
{
    return [=](World &world) {
        if (!world.knowsTypes())
            return std::string("nil");
        return world.is(className) ? convert(world) : wrapped(world);
    };
}

Text objectWithItem(const Text &convert)
{
    return [=](World &world) {
        if (!world.knowsTypes())
            return std::string("nil");
        return world.has("REALLoadObjectMethod") ? convert(world) : wrapped(world);
    };
}

Text arrayOf(std::vector<Text> elements, const char *zero)
{
    return [=](World &world) {
        if (!world.knowsTypes())
            return std::string("nil");
        bool reads = world.readsStorage() || world.has("RuntimeArrayDirectGetGetProc");
        std::string list;
        for (int32_t i = 0; i < world.elements(int32_t(elements.size())); i++) {
            std::string element = reads ? elements[size_t(i)](world) : zero;
            if (element == "nil")
                throw CocoaRefuses{"NSInvalidArgumentException"};
            list += (i ? ", " : "") + element;
        }
        return "[" + list + "]";
    };
}

Text readText(const char *ascii)
{
    return [=](World &world) { return world.text(ascii); };
}

Text arrayArgument(const char *reader, std::vector<Text> elements)
{
    return [=](World &world) {
        std::string list;
        bool reads = world.readsStorage() || world.has(reader);
        for (int32_t i = 0; reads && i < world.elements(int32_t(elements.size())); i++) {
            std::string element = elements[size_t(i)](world);
            if (element != "nil")
                list += (list.empty() ? "" : ", ") + element;
        }
        return "[" + list + "]";
    };
}

Text number(const char *convert, const char *property, const char *value, const char *zero)
{
    return [=](World &world) { return world.number(convert, property, value, zero); };
}

Text int32(const char *value)
{
    return number("VariantToInt32", "REALGetPropValueInt", value, "0");
}

Text textInVariant(const char *ascii)
{
    return [=](World &world) { return world.textOfVariant(ascii); };
}

std::string dateInVariant(World &world)
{
    if (!world.knowsTypes() || !world.has("REALGetPropValueObject"))
        return "nil";
    return world.date(kDate);
}

} // namespace validate
