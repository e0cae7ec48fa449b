#include "host/validate/rows/expected.h"
#include "host/validate/rows/samples.h"
#include "host/validate/rows/tables.h"

namespace validate {

using host::Value;

// clang-format off

Rows scalarRows()
{
    return {
        getter("integerForKey(key as string) as integer", "integerForKey", answerNumber("integerForKey:", 7), text("int32 7")),
        getter("floatForKey(key as string) as single", "floatForKey", answerNumber("floatForKey:", 1.5f), text("single 1.5")),
        getter("doubleForKey(key as string) as double", "doubleForKey", answerNumber("doubleForKey:", 2.25), text("double 2.25")),
        getter("boolForKey(key as string) as boolean", "boolForKey", answerNumber("boolForKey:", char(1)), text("true")),
        setter("setIntegerValue(key as string, value as integer)", "setInteger", [] { return Value(7); }, text("7")),
        setter("setFloatValue(key as string, value as single)", "setFloat", [] { return Value(1.5f); }, text("1.5")),
        setter("setDoubleValue(key as string, value as double)", "setDouble", [] { return Value(2.25); }, text("2.25")),
        setter("setBoolValue(key as string, value as boolean)", "setBool", [] { return Value(true); }, text("1")),
    };
}

Rows textRows()
{
    const char *const getsString = "stringForKey(key as string) as string";
    const char *const setsString = "setStringValue(key as string, value as string)";
    const auto webAddress = []() -> id { return [NSURL URLWithString:@"http://example.com/a"]; };
    return {
        getter(getsString, "stringForKey", answerObject("stringForKey:", []() -> id { return @"Text"; }), newString("Text")),
        getter(getsString, "stringForKey", answerObject("stringForKey:", longText), newLongText, "long"),
        getter(getsString, "stringForKey", nullptr, text("null"), "nil"),
        getter("URLForKey(key as string) as string", "URLForKey", answerObject("URLForKey:", webAddress), newString("http://example.com/a")),
        setter(setsString, "setObject", [] { return Value("Text"); }, readText("Text")),
        setter(setsString, "setObject", [] { return Value::nullString(); }, text("nil"), "null"),
        setter("setURLValue(key as string, value as string)", "setURL", [] { return Value("http://example.com/a"); },
               [](World &world) { return world.text("") == "nil" ? "nil" : "<http://example.com/a>"; }),
    };
}

// clang-format on

} // namespace validate
