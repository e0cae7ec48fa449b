#include "host/plughost/storable.h"

#include "host/plughost/application.h"
#include "host/plughost/errors.h"
#include "host/plughost/text_forms.h"

namespace plughost {

using host::Value;

// What is lost of a value that is no collection; empty when nothing is.
static std::string loss(const Value &value)
{
    if (value.isNil())
        return "null cannot be stored";
    if (value.isA("MemoryBlock") && value.bytes().empty())
        return "data of no bytes cannot be stored";
    if (value.isString() && value.text().find('\0') != std::string::npos)
        return "text behind a null character cannot be stored";
    return "";
}

static void check(const Value &value, const std::string &what, const std::string &place)
{
    std::string why = loss(value);
    if (!why.empty())
        throw InputError(what + ": " + (place.empty() ? "" : place + ": ") + why);
    if (value.isArray())
        for (int32_t i = 0; i < value.count(); i++)
            check(value.at(i), what, place + "/" + std::to_string(i));
    if (value.isA("Dictionary"))
        for (int32_t i = 0; i < value.count(); i++) {
            Value key = value.keyAt(i);
            check(value.lookup(key), what, place + "/" + (key.isString() ? key.text() : textOfValue(key)));
        }
}

void requireStorable(const Value &value, const std::string &what)
{
    check(value, what, "");
}

void requireStorable(const ValueType &type, const Value &value, const std::string &what)
{
    requireStorable(value, what);
    if (type.setter == std::string("setURLValue") && !isURL(value.text()))
        throw InputError(what + ": \"" + value.text() + "\" is no URL");
}

} // namespace plughost
