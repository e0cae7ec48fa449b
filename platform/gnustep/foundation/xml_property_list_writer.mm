#include "platform/gnustep/core_foundation/strings.h"
#include "platform/gnustep/foundation/property_lists.h"
#include "platform/gnustep/foundation/xml_property_list.h"

#include <cmath>
#include <limits>
#include <string>

namespace platform {
namespace {

const char head[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                    "<plist version=\"1.0\">\n";

// Half a surrogate pair is left out.
std::string escaped(NSString *text)
{
    std::string result;
    Units units = unitsOf(text);
    for (size_t i = 0; i < units.size(); ++i) {
        size_t length = isHighSurrogate(units[i]) && i + 1 < units.size() && isLowSurrogate(units[i + 1]) ? 2 : 1;
        std::string utf8;
        encodeText(Units(units.begin() + i, units.begin() + i + length), kCFStringEncodingUTF8, &utf8);
        result += utf8 == "<" ? "&lt;" : utf8 == ">" ? "&gt;" : utf8 == "&" ? "&amp;" : utf8;
        i += length - 1;
    }
    return result;
}

std::string base64(NSData *data, const std::string &indent)
{
    const std::string digits = [[data base64EncodedStringWithOptions:0] UTF8String];
    size_t width = (76 - 8 * std::min<size_t>(indent.size(), 8)) / 4 * 4;
    std::string text;
    for (size_t i = 0; i < digits.size(); i += width)
        text += indent + digits.substr(i, width) + "\n";
    return text;
}

std::string real(double value)
{
    if (std::isnan(value))
        return "nan";
    if (std::isinf(value))
        return value < 0 ? "-infinity" : "+infinity";
    if (value == 0)
        return "0.0";
    char text[32];
    snprintf(text, sizeof text, "%.*g", std::numeric_limits<double>::max_digits10, value);
    return text;
}

std::string number(NSNumber *number)
{
    if (isBoolean(number))
        return [number boolValue] ? "<true/>" : "<false/>";
    if (isReal(number))
        return "<real>" + real([number doubleValue]) + "</real>";
    bool isUnsigned = strchr("CSILQ", [number objCType][0]);
    return "<integer>" +
           (isUnsigned ? std::to_string([number unsignedLongLongValue]) : std::to_string([number longLongValue])) +
           "</integer>";
}

// The calendar of today for all times. What has no day is what the overflow of 32-bit Intel makes of it, which nobody
// reads back.
std::string date(double seconds)
{
    if (!(std::fabs(seconds) < 1e18))
        return "2030437302-06-07T24:60:-2147483648Z";
    SInt64 days = std::floor(seconds / 86400);
    int second = seconds - days * 86400.0;
    SInt64 z = days + 730791; // since March of the year 0
    SInt64 era = (z >= 0 ? z : z - 146096) / 146097;
    unsigned day = z - era * 146097;
    unsigned year = (day - day / 1460 + day / 36524 - day / 146096) / 365;
    day -= year * 365 + year / 4 - year / 100;
    unsigned month = (5 * day + 2) / 153;
    day -= (153 * month + 2) / 5;
    char text[64];
    snprintf(text, sizeof text, "%04lld-%02u-%02uT%02d:%02d:%02dZ",
             static_cast<long long>(year) + era * 400 + (month > 9), month > 9 ? month - 9 : month + 3, day + 1,
             second / 3600, second / 60 % 60, second % 60);
    return text;
}

void append(id value, const std::string &indent, std::string *xml)
{
    *xml += indent;
    if ([value isKindOfClass:[NSString class]]) {
        *xml += "<string>" + escaped(value) + "</string>";
    } else if ([value isKindOfClass:[NSNumber class]]) {
        *xml += number(value);
    } else if ([value isKindOfClass:[NSDate class]]) {
        *xml += "<date>" + date([value timeIntervalSinceReferenceDate]) + "</date>";
    } else if ([value isKindOfClass:[NSData class]]) {
        *xml += "<data>\n" + base64(value, indent) + indent + "</data>";
    } else if ([value isKindOfClass:[NSArray class]] && [value count]) {
        *xml += "<array>\n";
        for (id element in value)
            append(element, indent + "\t", xml);
        *xml += indent + "</array>";
    } else if ([value isKindOfClass:[NSDictionary class]] && [value count]) {
        *xml += "<dict>\n";
        for (id key in [[value allKeys] sortedArrayUsingSelector:@selector(compare:)]) {
            *xml += indent + "\t<key>" + escaped(key) + "</key>\n";
            append([value objectForKey:key], indent + "\t", xml);
        }
        *xml += indent + "</dict>";
    } else {
        *xml += [value isKindOfClass:[NSArray class]] ? "<array/>" : "<dict/>";
    }
    *xml += "\n";
}

} // namespace

NSData *xmlPropertyList(id root)
{
    std::string xml = head;
    append(root, "", &xml);
    xml += "</plist>\n";
    return [NSData dataWithBytes:xml.data() length:xml.size()];
}

} // namespace platform
