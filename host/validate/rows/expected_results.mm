#include "host/validate/rows/expected_results.h"

#include "host/validate/rows/samples.h"

namespace validate {

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

} // namespace validate
