// Texts of every length that matters, in four encodings, both ways.
#include "bench/cases/arguments.h"

#include <vector>

namespace bench {

namespace {

struct TextKind {
    const char *name;
    uint32_t encoding;       // of the host string
    const char16_t *pattern; // repeated to the wanted length
};

// Emoji count two units each; the host gets them as UTF-8.
const TextKind kKinds[] = {
    {"ASCII", host::kASCII, u"text"},
    {"Latin-1", host::kISOLatin1, u"t\u00E9xt"},
    {"UTF-16", host::kUTF16, u"t\u0435\u4E00t"},
    {"emoji", host::kUTF8, u"\U0001F600\U0001F680"},
};

std::vector<long> lengths(Extent extent)
{
    if (extent == Extent::Everything)
        return {0, 16, 20, 99, 100, 1000, 1000000};
    return {0, 16, 20, 99, 100, 1000};
}

NSString *newText(const TextKind &kind, long units)
{
    std::u16string text;
    while (long(text.size()) < units)
        text += kind.pattern;
    text.resize(size_t(units));
    if (units && text.back() >= 0xD800 && text.back() <= 0xDBFF)
        text.back() = u'.'; // half a pair is no text
    return [[NSString alloc] initWithCharacters:reinterpret_cast<const unichar *>(text.data()) length:text.size()];
}

NSStringEncoding foundationEncoding(uint32_t encoding)
{
    switch (encoding) {
    case host::kASCII:
        return NSASCIIStringEncoding;
    case host::kISOLatin1:
        return NSISOLatin1StringEncoding;
    case host::kUTF16:
        return NSUTF16LittleEndianStringEncoding;
    default:
        return NSUTF8StringEncoding;
    }
}

Value hostText(const TextKind &kind, NSString *text)
{
    NSData *bytes = [text dataUsingEncoding:foundationEncoding(kind.encoding)];
    return Value::string({static_cast<const char *>([bytes bytes]), [bytes length]}, kind.encoding);
}

} // namespace

void addStrings(Cases &cases, Ground &ground, Extent extent)
{
    for (const TextKind &kind : kKinds) {
        for (long units : lengths(extent)) {
            const std::string what = std::string(kind.name) + ", " + std::to_string(units) + " units";
            const Key key(what, 16);
            NSString *text = newText(kind, units), *ours = newText(kind, units);
            Value value = hostText(kind, text);
            auto store = [=] { [standard() setObject:text forKey:key.cocoa]; };
            auto drop = [=] { forget(key.cocoa); };
            const int repeats = units > 100000 ? 1 : 5;
            addCall<void *>(cases, ground, "stringForKey(key as string) as string", key)
                .named("get text " + what, units)
                .repeated(repeats)
                .byHand([=] { return [standard() stringForKey:key.cocoa]; })
                .beforeEach(store)
                .atTheEnd(drop);
            addCall(cases, ground, "setStringValue(key as string, value as string)", key, value)
                .named("set text " + what, units)
                .repeated(repeats)
                .byHand([=] { [standard() setObject:ours forKey:key.cocoa]; })
                .beforeEach(store)
                .atTheEnd(drop);
        }
    }
}

} // namespace bench
