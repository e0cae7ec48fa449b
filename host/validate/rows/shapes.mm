#include "host/validate/rows/shapes.h"

namespace validate {

using host::Arguments;
using host::Value;

std::string key(World &world)
{
    return world.text(kKey);
}

Arguments keyArgument()
{
    return {kKey};
}

Answer answerObject(const char *selector, id (*make)())
{
    return [=](StandIn &standIn) { standIn.answerObject(selector, make()); };
}

Text text(const std::string &exactly)
{
    return [=](World &) { return exactly; };
}

Row plain(const std::string &declaration, Text result, const std::string &variation)
{
    Row row;
    row.declaration = declaration;
    row.name = declaration.substr(0, declaration.find_first_of("( ")) + (variation.empty() ? "" : "-") + variation;
    row.result = std::move(result);
    return row;
}

Row getter(const char *declaration, const char *selector, Answer answer, Text result, const std::string &variation)
{
    Row row = plain(declaration, std::move(result), variation);
    row.arguments = keyArgument;
    row.answer = std::move(answer);
    row.message = [selector = std::string(selector)](World &world) { return selector + ":" + key(world); };
    return row;
}

Row setter(const char *declaration, const char *selector, std::function<Value()> value, Text stored,
           const std::string &variation)
{
    Row row = plain(declaration, nullptr, variation);
    row.arguments = [=] { return Arguments{kKey, value()}; };
    // The key comes first; only setString and the other objects are converted after it, which changes no lock.
    row.message = [=](World &world) {
        std::string name = key(world);
        return std::string(selector) + ":" + stored(world) + " forKey:" + name;
    };
    return row;
}

Row named(const char *declaration)
{
    Row row = getter(declaration, "", nullptr, nullptr);
    row.message = [name = row.name](World &world) { return name + ":" + key(world); };
    return row;
}

} // namespace validate
