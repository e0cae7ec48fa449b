// What comes back to host code on a host that may lack entry points, told by the model.
#pragma once

#include "host/validate/rows/shapes.h"

namespace validate {

std::string newDate(World &world);
std::string newBlock(World &world);
std::string newList(World &world, const std::vector<Text> &elements);
std::string newNestedDictionary(World &world);
std::string newLongText(World &world);

Text variantOf(const char *entry, const char *shownValue);
Text textVariant(const char *utf8);
Text newString(const char *utf8);
Text item(const char *entry, const char *path);

} // namespace validate
