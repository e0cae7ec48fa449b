// JSON text as the JSON library keeps it.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace plughost {

using Json = nlohmann::json;

// Throws InputError for what is no JSON, with line and column, and for an object in which a key stands twice.
Json parseStrictJson(const std::string &text);

} // namespace plughost
