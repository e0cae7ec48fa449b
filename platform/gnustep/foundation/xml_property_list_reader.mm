// The XML form as macOS reads it: not a general XML parser but a few elements, each with contents of its own. Whatever
// does not fit makes the whole list unreadable. GNUstep takes what it can of anything.

#include "platform/gnustep/core_foundation/strings.h"
#include "platform/gnustep/foundation/number_texts.h"
#include "platform/gnustep/foundation/numbers.h"
#include "platform/gnustep/foundation/xml_property_list.h"

#include <string.h>
#include <strings.h>

#include <charconv>
#include <cmath>
#include <map>
#include <optional>
#include <string>

namespace platform {
namespace {

class XMLReader {
public:
    explicit XMLReader(const std::string &utf8) : text(utf8) {}

    id root()
    {
        skipMisc();
        return at("<") ? element(nullptr) : nil;
    }

private:
    const std::string &text;
    size_t position = 0;
    unsigned depth = 0;
    bool failed = false;

    // What lies deeper would need more stack than there is.
    static const unsigned deepest = 5000;

    bool at(const char *what) const { return text.compare(position, strlen(what), what) == 0; }

    bool take(const char *what)
    {
        if (!at(what))
            return false;
        position += strlen(what);
        return true;
    }

    void skipSpace() { position = std::min(text.find_first_not_of(" \t\r\n", position), text.size()); }

    void skipBehind(const char *what)
    {
        size_t found = text.find(what, position);
        position = found == std::string::npos ? text.size() : found + strlen(what);
    }

    // White space, comments, instructions, and a document type without declarations of its own.
    void skipMisc()
    {
        for (skipSpace();; skipSpace()) {
            if (at("<!--"))
                skipBehind("-->");
            else if (at("<?"))
                skipBehind("?>");
            else if (at("<!"))
                skipBehind(">");
            else
                return;
        }
    }

    bool close(const std::string &name)
    {
        if (!take("</") || !take(name.c_str()))
            return false;
        skipSpace();
        return take(">");
    }

    // The next element; nil in front of a closing tag, and for what is none. *name is its name.
    id element(std::string *name)
    {
        skipMisc();
        if (!at("<") || at("</"))
            return nil;
        size_t end = text.find('>', position);
        if (end == std::string::npos)
            return nil;
        std::string tag = text.substr(position + 1, end - position - 1);
        bool isEmpty = !tag.empty() && tag.back() == '/';
        if (isEmpty)
            tag.pop_back();
        tag = tag.substr(0, tag.find_first_of(" \t\r\n"));
        position = end + 1;
        if (name)
            *name = tag;
        ++depth;
        id object = isEmpty ? emptyElement(tag) : depth > deepest ? nil : contents(tag);
        --depth;
        failed = failed || !object || !(isEmpty || close(tag));
        return failed ? nil : object;
    }

    static id emptyElement(const std::string &tag)
    {
        if (tag == "dict")
            return [NSDictionary dictionary];
        if (tag == "array")
            return [NSArray array];
        if (tag == "string" || tag == "key")
            return @"";
        return boolean(tag);
    }

    static id boolean(const std::string &tag)
    {
        return tag == "true" || tag == "false" ? [NSNumber numberWithBool:tag == "true"] : nil;
    }

    id contents(const std::string &tag)
    {
        static const std::map<std::string, id (XMLReader::*)()> elements = {
            {"plist", &XMLReader::onlyElement}, {"dict", &XMLReader::dictionary}, {"array", &XMLReader::array},
            {"string", &XMLReader::string},     {"key", &XMLReader::string},      {"data", &XMLReader::data},
            {"date", &XMLReader::date},         {"real", &XMLReader::real},       {"integer", &XMLReader::integer}};
        auto element = elements.find(tag);
        return element == elements.end() ? boolean(tag) : (this->*element->second)();
    }

    id onlyElement()
    {
        id object = element(nullptr);
        skipMisc();
        return object;
    }

    id array()
    {
        NSMutableArray *array = [NSMutableArray array];
        while (id object = element(nullptr))
            [array addObject:object];
        return failed ? nil : [[array copy] autorelease];
    }

    id dictionary()
    {
        NSMutableDictionary *dictionary = [NSMutableDictionary dictionary];
        std::string name;
        while (id key = element(&name)) {
            id value = name == "key" ? element(nullptr) : nil;
            if (!value)
                return nil;
            [dictionary setObject:value forKey:key];
        }
        return failed ? nil : [[dictionary copy] autorelease];
    }

    std::string upToTag()
    {
        size_t end = std::min(text.find('<', position), text.size());
        std::string part = text.substr(position, end - position);
        position = end;
        return part;
    }

    std::optional<std::string> characters()
    {
        std::string result;
        while (true) {
            std::string part = upToTag();
            for (size_t i = 0; i < part.size();) {
                if (part[i] != '&') {
                    result.push_back(part[i++]);
                    continue;
                }
                size_t end = part.find(';', i);
                std::optional<std::string> character =
                    end == std::string::npos ? std::nullopt : entity(part.substr(i + 1, end - i - 1));
                if (!character)
                    return std::nullopt;
                result += *character;
                i = end + 1;
            }
            if (!take("<![CDATA["))
                return result;
            size_t end = text.find("]]>", position);
            if (end == std::string::npos)
                return std::nullopt;
            result += text.substr(position, end - position);
            position = end + 3;
        }
    }

    // A character's number has 16 bits; half a surrogate pair is no character.
    static std::optional<std::string> entity(const std::string &name)
    {
        static const char *const named[][2] = {{"lt", "<"}, {"gt", ">"}, {"amp", "&"}, {"apos", "'"}, {"quot", "\""}};
        for (const auto &row : named)
            if (name == row[0])
                return row[1];
        if (name.size() < 2 || name[0] != '#')
            return std::nullopt;
        bool isHex = name[1] == 'x';
        std::string digits = name.substr(isHex ? 2 : 1);
        if (digits.find_first_not_of(isHex ? "0123456789abcdefABCDEF" : "0123456789") != std::string::npos)
            return std::nullopt;
        UniChar unit = 0;
        for (char digit : digits)
            unit = unit * (isHex ? 16 : 10) + (digit <= '9' ? digit - '0' : (digit & 7) + 9);
        std::string utf8;
        encodeText(Units(1, unit), kCFStringEncodingUTF8, &utf8);
        return utf8;
    }

    id string()
    {
        std::optional<std::string> utf8 = characters();
        Units units;
        if (!utf8 || !decodeText(reinterpret_cast<const UInt8 *>(utf8->data()), utf8->size(), kCFStringEncodingUTF8,
                                 false, &units))
            return nil;
        return [newString(units.data(), units.size()) autorelease];
    }

    // Base 64 in groups of four; other characters are passed over, and so is a group that is not whole.
    id data()
    {
        static const char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        std::string bytes;
        unsigned group = 0;
        unsigned digits = 0;
        unsigned padding = 0;
        for (char c : upToTag()) {
            const char *digit = c ? strchr(alphabet, c) : nullptr;
            if (!digit && c != '=')
                continue;
            padding = digit ? 0 : padding + 1;
            group = group << 6 | (digit ? digit - alphabet : 0);
            if (++digits % 4)
                continue;
            for (unsigned i = 0; i < 3 - std::min(padding, 2U); ++i)
                bytes.push_back(group >> (16 - 8 * i));
        }
        return [NSData dataWithBytes:bytes.data() length:bytes.size()];
    }

    // [-]year-MM-DDThh:mm:ssZ, with any number of digits in the year.
    id date()
    {
        std::string value = upToTag();
        int fields[6];
        int length = 0;
        bool before = value[0] == '-';
        const char *start = value.c_str() + before;
        if (sscanf(start, "%9d-%2d-%2dT%2d:%2d:%2dZ%n", fields, fields + 1, fields + 2, fields + 3, fields + 4,
                   fields + 5, &length) != 6 ||
            length == 0 || start[length] || strspn(start, "0123456789") == 0 ||
            strspn(start, "0123456789-T:Z") != strlen(start))
            return nil;
        SInt64 year = before ? -fields[0] : fields[0];
        return [NSDate dateWithTimeIntervalSinceReferenceDate:secondsOf(year, fields[1], fields[2]) + fields[3] * 3600 +
                                                              fields[4] * 60 + fields[5]];
    }

    // The calendar of today for all times.
    static double secondsOf(SInt64 year, int month, int day)
    {
        year -= month <= 2;
        SInt64 era = (year >= 0 ? year : year - 399) / 400;
        SInt64 yearOfEra = year - era * 400;
        SInt64 dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
        SInt64 dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
        const SInt64 daysBefore2001 = 730791; // since March of the year 0
        return (era * 146097.0 + dayOfEra - daysBefore2001) * 86400.0;
    }

    id real()
    {
        std::optional<std::string> value = characters();
        if (!value)
            return nil;
        static const struct {
            const char *name;
            double value;
        } named[] = {{"nan", NAN},      {"infinity", INFINITY}, {"+infinity", INFINITY}, {"-infinity", -INFINITY},
                     {"inf", INFINITY}, {"+inf", INFINITY},     {"-inf", -INFINITY}};
        for (const auto &row : named)
            if (strcasecmp(value->c_str(), row.name) == 0)
                return [NSNumber numberWithDouble:row.value];
        double number;
        size_t read = readReal(*value, &number);
        return read && read == value->size() ? [NSNumber numberWithDouble:number] : nil;
    }

    // Decimal or, behind "0x", hexadecimal; of 16 bytes from 2^63 on.
    id integer()
    {
        skipSpace();
        bool isNegative = take("-");
        if (!isNegative)
            take("+");
        skipSpace();
        int base = take("0x") || take("0X") ? 16 : 10;
        std::string digits = upToTag();
        const char *end = digits.data() + digits.size();
        UInt64 value;
        auto [behind, error] = std::from_chars(digits.data(), end, value, base);
        if (error != std::errc() || behind != end)
            return nil;
        const UInt64 limit = static_cast<UInt64>(1) << 63;
        if (isNegative)
            return value <= limit ? [NSNumber numberWithLongLong:-value] : nil;
        return value < limit ? [NSNumber numberWithLongLong:value] : numberOf16Bytes(value);
    }
};

// The encoding that the data begins with or names; UTF-8 otherwise.
std::optional<std::string> utf8Of(NSData *data)
{
    std::string bytes(static_cast<const char *>([data bytes]), [data length]);
    CFStringEncoding encoding = kCFStringEncodingUTF8;
    if (bytes.compare(0, 2, "\xFF\xFE") == 0 || bytes.compare(0, 2, "\xFE\xFF") == 0) {
        encoding = kCFStringEncodingUTF16;
    } else if (bytes.compare(0, 5, "<?xml") == 0) {
        std::string declaration = bytes.substr(0, bytes.find("?>"));
        size_t name = declaration.find("encoding=");
        if (name != std::string::npos && name + 10 < declaration.size()) {
            size_t end = declaration.find(declaration[name + 9], name + 10);
            encoding = encodingNamed(declaration.substr(name + 10, end - name - 10));
        }
    }
    if (encoding == kCFStringEncodingUTF8)
        return bytes.compare(0, 3, "\xEF\xBB\xBF") == 0 ? bytes.substr(3) : bytes;
    Units units;
    std::string utf8;
    if (!decodeText(reinterpret_cast<const UInt8 *>(bytes.data()), bytes.size(), encoding, true, &units) ||
        !encodeText(units, kCFStringEncodingUTF8, &utf8))
        return std::nullopt;
    return utf8;
}

} // namespace

id propertyListFromXML(NSData *data)
{
    std::optional<std::string> utf8 = utf8Of(data);
    return utf8 ? XMLReader(*utf8).root() : nil;
}

} // namespace platform
