// What number a text begins with, as Core Foundation of macOS reads it. GNUstep loses a digit of texts that have 19.

#include "platform/gnustep/foundation/number_texts.h"

#include "platform/gnustep/foundation/replacement.h"

#import <Foundation/Foundation.h>
#include <stdlib.h>
#include <string.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

size_t platform::readReal(const std::string &text, double *number)
{
    *number = 0;
    size_t start = std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size());
    bool isNegative = text.compare(start, 1, "-") == 0;
    if (isNegative || text.compare(start, 1, "+") == 0)
        ++start;
    if (start == text.size() || !strchr("0123456789.", text[start]))
        return 0;
    const char *begin = text.c_str() + start;
    auto [end, error] = std::from_chars(begin, text.c_str() + text.size(), *number, std::chars_format::general);
    if (error == std::errc::result_out_of_range)
        *number = std::string(begin, end).find("e-") == std::string::npos ? INFINITY : 0;
    if (isNegative)
        *number = -*number;
    return end == begin ? 0 : end - text.c_str();
}

static std::string asciiOf(NSString *text)
{
    std::string ascii;
    for (NSUInteger i = 0; i < [text length] && [text characterAtIndex:i] < 0x80; ++i)
        ascii.push_back([text characterAtIndex:i]);
    return ascii;
}

static double doubleValue(NSString *self, SEL)
{
    double number;
    platform::readReal(asciiOf(self), &number);
    return number;
}

static float floatValue(NSString *self, SEL selector)
{
    return doubleValue(self, selector);
}

// The nearest one where there is none. GNUstep's cannot stand half a surrogate pair.
template <typename Whole>
static Whole wholeValue(NSString *self, SEL)
{
    long long number = strtoll(asciiOf(self).c_str(), nullptr, 10);
    using Limits = std::numeric_limits<Whole>;
    return std::clamp<long long>(number, Limits::min(), Limits::max());
}

__attribute__((constructor)) static void install()
{
    platform::replaceMethod("NSString", "doubleValue", doubleValue);
    platform::replaceMethod("NSString", "floatValue", floatValue);
    platform::replaceMethod("NSString", "intValue", wholeValue<int>);
    platform::replaceMethod("NSString", "integerValue", wholeValue<NSInteger>);
    platform::replaceMethod("NSString", "longLongValue", wholeValue<long long>);
}
