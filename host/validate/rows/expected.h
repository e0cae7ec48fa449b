// What a call must give on a host that may lack entry points, told by the model.
#pragma once

#include "host/validate/rows/shapes.h"

namespace validate {

// --- What comes back to host code -----------------------------------------------------------------------------------

std::string newDate(World &world);
std::string newBlock(World &world);
std::string newList(World &world, const std::vector<Text> &elements);
std::string newNestedDictionary(World &world);
std::string newLongText(World &world);

Text variantOf(const char *entry, const char *shownValue);
Text textVariant(const char *utf8);
Text newString(const char *utf8);
Text item(const char *entry, const char *path);

// --- What reaches Cocoa of a host value -----------------------------------------------------------------------------

std::string readDictionary(World &world);
std::string readBlock(World &world);
std::string dateInVariant(World &world);
Text readItem(const char *path, const char *url);
Text readText(const char *ascii);

// Of a Variant.
Text number(const char *convert, const char *property, const char *value, const char *zero);
Text int32(const char *value);
Text textInVariant(const char *ascii);

// An object that is recognised by its class is converted; any other travels in a wrapper, where there is one.
std::string wrapped(World &world);
Text objectOfClass(const char *className, const Text &convert);
// A FolderItem is recognised by its method.
Text objectWithItem(const Text &convert);

// An array in a Variant's place. Elements are read from storage, or by procedures that may be missing; what cannot be
// read is `zero`. A nil element is refused by Cocoa.
Text arrayOf(std::vector<Text> elements, const char *zero);
// An array argument: elements that cannot be read or converted are left out.
Text arrayArgument(const char *reader, std::vector<Text> elements);

} // namespace validate
