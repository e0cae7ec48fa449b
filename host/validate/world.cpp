#include "host/validate/world.h"

namespace validate {

using host::Creation;

namespace {

struct OutOfMemory {};

constexpr double kModernStrings = 2012.0;
constexpr double kLastWithStorage = 2013.9;

} // namespace

World::World()
{
    host::Host &host = host::Host::shared();
    for (const host::EntryPointInfo &entry : host.entryPoints())
        _offered[entry.name] = entry.offered;
    _version = has("REALGetRBVersion") ? host.profile().versionNumber() : 0.0;
    _family = host.profile().family;
}

bool World::has(const std::string &entry) const
{
    return _offered.at(entry);
}

bool World::readsStorage() const
{
    return _version <= kLastWithStorage && host::Host::shared().profile().hasArrayStorage();
}

bool World::buildString()
{
    if (!has("REALBuildString"))
        return false;
    if (_throws.strikes())
        throw OutOfMemory();
    return make(Creation::String);
}

std::string World::newText(const std::string &text, uint32_t encoding)
{
    if (text.empty())
        return "null";
    try {
        if (!buildString())
            return "null";
    } catch (const OutOfMemory &) {
        if (!_raisingOutOfMemory) {
            _raisingOutOfMemory = true;
            raise("OutOfMemoryException", "Failed to allocate memory for a string.");
            _raisingOutOfMemory = false;
        }
        return "null";
    }
    if (!has("REALSetStringEncoding"))
        return "\"" + text + "\"?";
    return "\"" + text + "\"" + (encoding == host::kUTF8 ? "" : "#" + std::to_string(encoding));
}

std::string World::newVariant(const char *entry, const std::string &shownValue)
{
    return has(entry) && make(Creation::Variant) ? shownValue : "nil";
}

std::string World::newTextVariant(const std::string &text)
{
    std::string string = newText(text);
    return newVariant("StringToVariant", string);
}

std::string World::newObject(const std::string &className, const std::string &shownObject)
{
    if (!has("PluginNewInstance") || !host::Host::shared().findClass(className))
        return "nil";
    return make(className == "Dictionary" ? Creation::Dictionary : Creation::Instance) ? shownObject : "nil";
}

std::string World::newMemoryBlock(const std::string &digits, int size)
{
    if (has("newMemoryBlock") && make(Creation::MemoryBlock) && has("memoryBlockGetPtr"))
        return "<" + digits + ">";
    raise("OutOfMemoryException", "Failed to allocate a memoryblock with " + std::to_string(size) + " bytes in size.");
    return "nil";
}

std::string World::newItem(const char *entry, const std::string &path)
{
    return has(entry) && make(Creation::FolderItem) ? "file " + path : "nil";
}

bool World::newArray()
{
    return has("RuntimeArrayCreateSingleDimBoundedArray") && make(Creation::Array);
}

void World::raise(const std::string &className, const std::string &message)
{
    bool hasText = newText(message, host::kASCII) != "null";
    std::string exception = newObject(className, className);
    if (exception == "nil")
        exception = newObject("RuntimeException", "RuntimeException");
    if (exception != "nil" && has("RuntimeRaiseException"))
        raised.push_back(exception + ": " + (hasText && has("REALSetPropValueString") ? message : ""));
}

void World::raiseOfCocoa(const std::string &name, const std::string &reason)
{
    log.push_back("A " + name + ": " + reason + ", Info: *");
    // Without the companion library nobody makes host exceptions of Cocoa's: the message to do so raises in its turn.
    if (!_family)
        thrown = "NSException NSInvalidArgumentException";
    else if (make(Creation::Instance) && has("RuntimeRaiseException"))
        raised.push_back("NSExceptionKTZ: " + reason);
}

std::string World::text(const std::string &ascii)
{
    const std::string quoted = "\"" + ascii + "\"";
    if (has("REALGetStringCFString"))
        return quoted;
    if (_version < kModernStrings)
        return quoted; // read from the host's record
    if (has("PluginGetStringData"))
        return quoted;
    if (!has("StringGetCString") || !has("REALLoadGlobalMethod") || !has("LenB"))
        return "nil";
    if (has("PluginDisposeStringData"))
        strangeRecords++;
    return quoted;
}

bool World::knowsTypes() const
{
    return (has("REALLoadGlobalMethod") && has("VarType")) || has("REALGetPropValueInt");
}

std::string World::number(const char *convert, const char *property, const std::string &value, const std::string &zero)
{
    if (!knowsTypes())
        return "nil";
    return has(convert) || has(property) ? value : zero;
}

std::string World::textOfVariant(const std::string &ascii)
{
    if (!knowsTypes())
        return "nil";
    if (!has("VariantToString") && !has("REALGetPropValueString"))
        return "\"\"";
    std::string read = text(ascii);
    return read == "nil" ? "\"\"" : read;
}

std::string World::date(const std::string &shownDate) const
{
    return has("REALGetPropValueInt") ? shownDate : "nil";
}

bool World::is(const char *className) const
{
    return has("pluginObjectType") && has("RuntimeObjectIsa") && host::Host::shared().findClass(className);
}

bool matches(const std::string &text, const std::string &expected)
{
    // Greedy from the left, with a return to the last star.
    size_t t = 0, e = 0, star = std::string::npos, retry = 0;
    while (t < text.size()) {
        if (e < expected.size() && expected[e] == '*') {
            star = e++;
            retry = t;
        } else if (e < expected.size() && expected[e] == text[t]) {
            t++, e++;
        } else if (star != std::string::npos) {
            e = star + 1;
            t = ++retry;
        } else {
            return false;
        }
    }
    while (e < expected.size() && expected[e] == '*')
        e++;
    return e == expected.size();
}

} // namespace validate
