#include "host/validate/rows/expected.h"
#include "host/validate/rows/tables.h"

namespace validate {

using host::Arguments;
using host::Value;

namespace {

const char kConstructor[] = "Constructor";
const char kConstructorForUser[] = "Constructor(username as string)";

Row constructs(const char *declaration, const std::string &variation)
{
    Row row = plain(declaration, nullptr, variation);
    row.carries = false;
    return row;
}

Row constructsForUser()
{
    Row row = constructs(kConstructorForUser, "user");
    row.arguments = [] { return Arguments{Value::nullString()}; };
    return row;
}

std::string refused(World &world)
{
    world.raise("UnsupportedOperationException", "Constructor called too often. Object is already initialized.");
    return "nil";
}

Row refusedForUser()
{
    Row row = plain(kConstructorForUser, refused, "user-again");
    row.arguments = keyArgument;
    return row;
}

Row shared(const std::string &declaration, Text result)
{
    Row row = plain(declaration, std::move(result));
    row.isShared = true;
    return row;
}

Row constant(const char *name)
{
    return shared(std::string(name) + " as string", newString(name));
}

} // namespace

Rows lifecycleRows()
{
    return {
        plain("_exception as NSExceptionKTZ", nullptr),
        constructs(kConstructor, ""),
        constructsForUser(),
        plain(kConstructor, refused, "again"),
        refusedForUser(),
        constant("NSGlobalDomain"),
        constant("NSArgumentDomain"),
        constant("NSRegistrationDomain"),
        constant("NSUserDefaultsDidChangeNotification"),
        shared("resetStandardUserDefaults", nullptr),
        shared("standardUserDefaults as NSUserDefaultsKTZ",
               [](World &world) { return world.newObject(kClass, kClass); }),
    };
}

} // namespace validate
