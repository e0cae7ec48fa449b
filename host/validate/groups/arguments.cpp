// Arguments. Every text that a member takes, as key or as value, in every length around the thresholds and in every
// encoding, on hosts that hand texts out in each of the three ways; every text that Cocoa answers; and the ends of
// every number type with not-a-number and the infinities. What a text must be on the other side is worked out from the
// bytes by the host's own tables of encodings.
#include <cmath>
#include <limits>
#include <optional>

#include "host/runtime/text.h"
#include "host/validate/case.h"
#include "host/validate/rows.h"

namespace validate {

using host::Value;

namespace {

// --- Texts ----------------------------------------------------------------------------------------------------------

struct Sample {
    const char *name;
    std::u16string units;
    bool isNull = false;
};

std::u16string repeated(std::u16string_view pattern, size_t length)
{
    std::u16string units;
    while (units.size() < length)
        units += pattern[units.size() % pattern.size()];
    return units;
}

const std::vector<Sample> &samples()
{
    static const std::vector<Sample> all = {
        {"null", {}, true},
        {"empty", {}},
        {"one", u"a"},
        {"99", repeated(u"abc", 99)},
        {"100", repeated(u"abc", 100)},
        {"101", repeated(u"abc", 101)},
        {"64K", repeated(u"abcdefgh", 65536)},
        {"accented-1", u"\u00E9"},
        {"accented-99", repeated(u"\u00E9", 99)},
        {"accented-100", repeated(u"\u00E9", 100)},
        {"accented-101", repeated(u"\u00E9", 101)},
        {"euro-99", repeated(u"\u20AC", 99)},
        {"euro-100", repeated(u"\u20AC", 100)},
        {"pairs-50", repeated(u"\U0001F600", 100)},
        {"zero-inside", std::u16string(u"ab\0cd", 5)},
        {"zero-first", std::u16string(u"\0cd", 3)},
        {"high-surrogate", std::u16string({u'a', 0xD83D, u'b'})},
        {"low-surrogate", std::u16string({u'a', 0xDE00, u'b'})},
        {"surrogate-last", std::u16string({u'a', 0xD83D})},
        {"mark", std::u16string({0xFEFF, u'a'})},
    };
    return all;
}

struct NamedEncoding {
    const char *name;
    uint32_t encoding;
};

constexpr uint32_t kNoSuchEncoding = 0x12345678;

const NamedEncoding kEncodings[] = {
    {"MacRoman", host::kMacRoman},   {"WindowsLatin1", host::kWindowsLatin1},
    {"ISOLatin1", host::kISOLatin1}, {"ASCII", host::kASCII},
    {"UTF8", host::kUTF8},           {"UTF16", host::kUTF16},
    {"UTF16BE", host::kUTF16BE},     {"UTF16LE", host::kUTF16LE},
    {"UTF32", host::kUTF32},         {"UTF32BE", host::kUTF32BE},
    {"UTF32LE", host::kUTF32LE},     {"unmarked", host::kUnknownEncoding},
    {"unknown", kNoSuchEncoding},
};

bool hasLoneSurrogate(const std::u16string &units)
{
    for (size_t i = 0; i < units.size(); i++) {
        bool isHigh = units[i] >= 0xD800 && units[i] < 0xDC00;
        bool hasLow = i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] < 0xE000;
        if (isHigh && hasLow)
            i++;
        else if (units[i] >= 0xD800 && units[i] < 0xE000)
            return true;
    }
    return false;
}

// The bytes of a sample in an encoding. Unmarked and unknown ones hold UTF-8.
std::string bytesOf(const Sample &sample, uint32_t encoding)
{
    if (encoding == host::kUnknownEncoding || encoding == kNoSuchEncoding)
        encoding = host::kUTF8;
    return *host::runtime::encodeText(sample.units, encoding);
}

Value valueOf(const Sample &sample, uint32_t encoding)
{
    return sample.isNull ? Value::nullString() : Value::string(bytesOf(sample, encoding), encoding);
}

// --- What must arrive -----------------------------------------------------------------------------------------------

const char kAnything[] = "*";

std::string shownUnits(const std::u16string &units)
{
    std::string text = "\"";
    for (char16_t unit : units) {
        char escaped[8];
        snprintf(escaped, sizeof escaped, unit >= 0x20 && unit < 0x7F ? "%c" : "\\u%04X", unit);
        text += escaped;
    }
    return text + "\"";
}

// Where the plug-in reads bytes itself, a text ends at its first zero byte unless it is UTF-16, and bytes of no known
// encoding are MacRoman. What Core Foundation makes of wide text cut so, or of an encoding that it does not know, is
// its own affair.
std::string readFromBytes(std::string bytes, uint32_t encoding)
{
    if (encoding == host::kUnknownEncoding)
        encoding = host::kMacRoman;
    bool isNarrow = encoding == host::kMacRoman || encoding == host::kWindowsLatin1 || encoding == host::kISOLatin1 ||
                    encoding == host::kASCII || encoding == host::kUTF8;
    if (!isNarrow && encoding != host::kUTF16)
        return kAnything;
    if (isNarrow)
        bytes = bytes.substr(0, bytes.find('\0'));
    if (encoding == host::kUTF8 && bytes.compare(0, 3, "\xEF\xBB\xBF") == 0)
        bytes.erase(0, 3); // Core Foundation leaves the mark out
    std::optional<std::u16string> units = host::runtime::decodeText(bytes, encoding);
    return units ? shownUnits(*units) : kAnything;
}

std::string readText(const World &world, const Value &value)
{
    if (value.isNullHandle())
        return "nil";
    if (world.has("REALGetStringCFString"))
        if (std::optional<std::u16string> units = host::runtime::decodeText(value.bytes(), value.encoding()))
            return shownUnits(*units);
    if (world.has("PluginGetStringData") || world.version() < 2012.0 || world.has("LenB"))
        return readFromBytes(value.bytes(), value.encoding());
    return "nil";
}

// A text that Cocoa answers: an empty one is null, a zero ends it, and what UTF-8 cannot hold is left to Core
// Foundation.
std::string writtenText(const std::u16string &units)
{
    if (hasLoneSurrogate(units))
        return kAnything;
    std::u16string cut = units.substr(0, units.find(u'\0'));
    return cut.empty() ? "null" : "\"" + *host::runtime::encodeText(cut, host::kUTF8) + "\"";
}

// --- Members that take texts ----------------------------------------------------------------------------------------

// A row whose argument `position` is replaced by the sample, wherever the row's own text stood in the message.
Row withText(const Row &row, size_t position, const Value &value)
{
    Row changed = row;
    host::Arguments arguments = row.arguments();
    std::string usual = "\"" + arguments[position].text() + "\"";
    arguments[position] = value;
    changed.arguments = [arguments] { return arguments; };
    changed.message = [row, usual, value](World &world) {
        std::string message = row.message(world);
        size_t place = message.find(usual);
        expect(place != std::string::npos, "the row has no text " + usual);
        return message.replace(place, usual.size(), readText(world, value));
    };
    return changed;
}

struct TextArgument {
    const Row *row;
    size_t position;
};

// Rows with plain texts in the message; an assignment is the same function once more. A URL is no text any more.
std::vector<TextArgument> textArguments()
{
    std::vector<TextArgument> found;
    for (const Row &row : rows()) {
        if (!row.arguments || !row.message || row.isAssigned || row.name.find('-') != std::string::npos)
            continue;
        host::Declaration declaration = host::parseDeclaration(row.declaration);
        for (size_t i = 0; i < declaration.parameters.size(); i++) {
            const host::DeclaredType &type = declaration.parameters[i].type;
            if (type.passing == host::Passing::String && !type.isArray && !(row.name == "setURLValue" && i == 1))
                found.push_back({&row, i});
        }
    }
    return found;
}

struct Way {
    const char *name;
    const char *profile;
    std::set<std::string> hidden;
};

const Way kWays[] = {
    {"cfstring", "2013.03", {}},
    {"bytes", "2013.03", {"REALGetStringCFString"}},
    {"record", "2011.4", {}},
    {"copies", "2013.03", {"REALGetStringCFString", "PluginGetStringData", "PluginDisposeStringData"}},
};

void addTextArguments(const Settings &settings, Batches &batches)
{
    for (const Way &way : kWays) {
        for (const TextArgument &argument : textArguments()) {
            // Every member on one way is enough for a day: all read their texts with the same function.
            if (settings.level < 7 && &way != &kWays[0] && argument.row->name != "setStringValue" &&
                argument.row->name != "setPersistentDomain")
                continue;
            Batch batch;
            batch.prepare = [&way] { startHost({way.profile, true, way.hidden}); };
            for (const NamedEncoding &encoding : kEncodings)
                for (const Sample &sample : samples())
                    batch.add(std::string("arguments/text/") + way.name + "/" + argument.row->name + "-" +
                                  std::to_string(argument.position) + "/" + encoding.name + "/" + sample.name,
                              [argument, &encoding, &sample] {
                                  Value value = valueOf(sample, encoding.encoding);
                                  runRow(withText(*argument.row, argument.position, value));
                              });
            batches.push_back(std::move(batch));
        }
    }
}

// --- Texts that Cocoa answers ---------------------------------------------------------------------------------------

struct TextAnswer {
    const char *row;
    const char *selector;
    AnswerShape shape;
    const char *before, *after; // around the text in the result
};

const TextAnswer kTextAnswers[] = {
    {"stringForKey", "stringForKey:", AnswerShape::Text, "", ""},
    {"variantForKey-text", "objectForKey:", AnswerShape::Text, "", ""},
    {"stringArrayForKey", "stringArrayForKey:", AnswerShape::InArray, "[", "]"},
    {"persistentDomainNames", "persistentDomainNames", AnswerShape::InArray, "[", "]"},
    {"volatileDomainNames", "volatileDomainNames", AnswerShape::InArray, "[", "]"},
    {"arrayForKey", "arrayForKey:", AnswerShape::InArray, "[", "]"},
    {"dictionaryForKey", "dictionaryForKey:", AnswerShape::AsValue, "{\"key\": ", "}"},
    {"variantForKey-dictionary", "objectForKey:", AnswerShape::AsKey, "{", ": int32 1}"},
    {"dictionaryRepresentation", "dictionaryRepresentation", AnswerShape::AsKey, "{", ": int32 1}"},
};

void addTextAnswers(Batches &batches)
{
    for (const char *profile : {"2011.4", "2013.03"}) {
        Batch batch;
        batch.prepare = [profile] { startHost({profile}); };
        for (const TextAnswer &answer : kTextAnswers)
            for (const Sample &sample : samples()) {
                if (sample.isNull)
                    continue;
                batch.add(std::string("arguments/answer/") + profile + "/" + answer.row + "/" + sample.name, [&answer,
                                                                                                              &sample] {
                    Row row = rowNamed(answer.row);
                    row.answer = [&](StandIn &standIn) {
                        standIn.answerText(answer.selector, answer.shape, sample.units);
                    };
                    row.result = [&](World &) { return answer.before + writtenText(sample.units) + answer.after; };
                    runRow(row);
                });
            }
        batches.push_back(std::move(batch));
    }
}

// --- Numbers --------------------------------------------------------------------------------------------------------

std::string formatted(const char *format, double number)
{
    char text[64];
    snprintf(text, sizeof text, format, number);
    return text;
}

template <class Number>
std::vector<Number> ends()
{
    using Limits = std::numeric_limits<Number>;
    if (!Limits::is_integer)
        return {Number(0),           Number(-0.0),        Number(1),           Number(-1),       Limits::denorm_min(),
                Limits::min(),       -Limits::min(),      Limits::max(),       Limits::lowest(), Limits::epsilon(),
                Limits::infinity(),  -Limits::infinity(), Limits::quiet_NaN(), Number(0.1),      Number(16777217.0),
                Number(4294967296.0)};
    return {Number(0),
            Number(1),
            Number(-1),
            Limits::min(),
            Limits::max(),
            Number(Limits::min() + 1),
            Number(Limits::max() - 1),
            Number(127),
            Number(128),
            Number(255),
            Number(256),
            Number(65535),
            Number(65536)};
}

const char kSetVariant[] = "setVariantValue(key as string, value as variant)";

// The cases of one host. Each kind of value has its numbers in order.
class NumberCases {
public:
    explicit NumberCases(const std::string &profile) : _prefix("arguments/number/" + profile + "/")
    {
        batch.prepare = [profile] { startHost({profile}); };
    }

    // `kind` is the name of the case; the message is the selector with the number in this form.
    void setter(const std::string &kind, int index, const char *declaration, const char *selector, const Value &value,
                const std::string &stored)
    {
        Row row;
        row.declaration = declaration;
        row.arguments = [value] { return host::Arguments{"Key", value}; };
        row.message = [=](World &) { return selector + (":" + stored) + " forKey:\"Key\""; };
        add(kind, index, std::move(row));
    }

    template <class Number>
    void getter(const std::string &name, int index, const char *type, Number number, const std::string &result)
    {
        Row row;
        row.declaration = name + "(key as string) as " + type;
        row.arguments = [] { return host::Arguments{"Key"}; };
        row.answer = [=](StandIn &standIn) { standIn.answerNumber((name + ":").c_str(), &number, sizeof number); };
        row.message = [=](World &) { return name + ":\"Key\""; };
        row.result = [result](World &) { return result; };
        add(name, index, std::move(row));
    }

    Batch batch;

private:
    void add(const std::string &kind, int index, Row row)
    {
        batch.add(_prefix + kind + "/" + std::to_string(index), [row = std::move(row)] { runRow(row); });
    }

    std::string _prefix;
};

void addNumbers(const std::string &profile, Batches &batches)
{
    NumberCases cases(profile);
    int i = 0;
    for (int32_t number : ends<int32_t>()) {
        std::string digits = std::to_string(number);
        cases.setter("setIntegerValue", ++i, "setIntegerValue(key as string, value as integer)", "setInteger", number,
                     digits);
        cases.getter("integerForKey", i, "integer", number, "int32 " + digits);
        cases.setter("variant-int32", i, kSetVariant, "setObject", number, digits);
        cases.getter("boolForKey", i, "boolean", char(number), char(number) ? "true" : "false");
    }
    i = 0;
    for (int64_t number : ends<int64_t>())
        cases.setter("variant-int64", ++i, kSetVariant, "setObject", static_cast<long long>(number),
                     std::to_string(number));
    i = 0;
    for (float number : ends<float>()) {
        std::string digits = formatted("%.9g", number);
        cases.setter("setFloatValue", ++i, "setFloatValue(key as string, value as single)", "setFloat", number, digits);
        cases.getter("floatForKey", i, "single", number, formatted("single %.17g", number));
        const char *kind = std::isfinite(number) ? "single " : "double "; // there is one infinity, and it is a double
        cases.setter("variant-single", i, kSetVariant, "setObject", number, kind + digits);
    }
    i = 0;
    for (double number : ends<double>()) {
        std::string digits = formatted("%.17g", number);
        cases.setter("setDoubleValue", ++i, "setDoubleValue(key as string, value as double)", "setDouble", number,
                     digits);
        cases.getter("doubleForKey", i, "double", number, "double " + digits);
        cases.setter("variant-double", i, kSetVariant, "setObject", number, "double " + digits);
    }
    for (bool flag : {false, true})
        cases.setter("setBoolValue", flag, "setBoolValue(key as string, value as boolean)", "setBool", flag,
                     flag ? "1" : "0");
    batches.push_back(std::move(cases.batch));
}

} // namespace

void addArguments(const Settings &settings, Batches &batches)
{
    addTextArguments(settings, batches);
    addTextAnswers(batches);
    for (const char *profile : {"2009", "2011.4", "2012.2", "2013.03", "2014.1"})
        addNumbers(profile, batches);
}

} // namespace validate
