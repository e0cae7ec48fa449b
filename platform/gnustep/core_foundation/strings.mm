#include "platform/gnustep/core_foundation/strings.h"

#include <stdlib.h>
#include <string.h>

#include <algorithm>

using namespace platform;

@interface PlatformExactString : NSString {
    unichar *units;
    NSUInteger count;
}
@end

@implementation PlatformExactString

- (id)initWithCharacters:(const unichar *)characters length:(NSUInteger)length
{
    units = static_cast<unichar *>(malloc(length * sizeof *units));
    std::copy_n(characters, length, units);
    count = length;
    return self;
}

- (NSUInteger)length
{
    return count;
}

- (unichar)characterAtIndex:(NSUInteger)index
{
    if (index >= count)
        [NSException raise:NSRangeException format:@"index %u of %u", index, count];
    return units[index];
}

- (void)getCharacters:(unichar *)buffer range:(NSRange)range
{
    if (range.location > count || range.length > count - range.location)
        [NSException raise:NSRangeException format:@"%@ of %u", NSStringFromRange(range), count];
    std::copy_n(units + range.location, range.length, buffer);
}

- (id)copyWithZone:(NSZone *)zone
{
    (void)zone;
    return [self retain];
}

// Behind another character a byte order mark is kept, and it stays when that character goes.
- (id)mutableCopyWithZone:(NSZone *)zone
{
    NSMutableString *copy = [[NSMutableString allocWithZone:zone] initWithString:@"0"];
    [copy appendString:self];
    [copy deleteCharactersInRange:NSMakeRange(0, 1)];
    return copy;
}

- (void)dealloc
{
    free(units);
    [super dealloc];
}

@end

static bool foundationKeeps(const UniChar *units, size_t length)
{
    if (length && (units[0] == 0xFEFF || units[0] == 0xFFFE))
        return false;
    for (size_t i = 0; i < length; ++i) {
        if (isLowSurrogate(units[i]) ||
            (isHighSurrogate(units[i]) && (i + 1 == length || !isLowSurrogate(units[i + 1]))))
            return false;
        i += isHighSurrogate(units[i]);
    }
    return true;
}

NSString *platform::newString(const UniChar *units, size_t length)
{
    Class stringClass = foundationKeeps(units, length) ? [NSString class] : [PlatformExactString class];
    return [[stringClass alloc] initWithCharacters:units length:length];
}

Units platform::unitsOf(NSString *string)
{
    Units units([string length]);
    [string getCharacters:units.data() range:NSMakeRange(0, units.size())];
    return units;
}

// GNUstep's conversion has room for three units for each unit of the text, too few for some Greek letters: it raises
// for a text of such letters only. Padding with letters that stay as they are gives it more; a digit in front, with
// which nothing combines, keeps a leading byte order mark.
static void appendNormalized(const UniChar *units, size_t length, CFStringNormalizationForm form, Units *result)
{
    size_t padding = length + 8;
    Units padded(1, '0');
    padded.insert(padded.end(), units, units + length);
    padded.insert(padded.end(), padding, 'x');
    NSString *text = [newString(padded.data(), padded.size()) autorelease];
    switch (form) {
    case kCFStringNormalizationFormD:
        text = [text decomposedStringWithCanonicalMapping];
        break;
    case kCFStringNormalizationFormKD:
        text = [text decomposedStringWithCompatibilityMapping];
        break;
    case kCFStringNormalizationFormC:
        text = [text precomposedStringWithCanonicalMapping];
        break;
    case kCFStringNormalizationFormKC:
        text = [text precomposedStringWithCompatibilityMapping];
        break;
    }
    padded = unitsOf(text);
    result->insert(result->end(), padded.begin() + 1, padded.end() - padding);
}

// Half a surrogate pair, which GNUstep's conversion refuses, combines with nothing: what lies between such halves is
// converted piece by piece.
Units platform::normalized(const Units &text, CFStringNormalizationForm form)
{
    Units result;
    size_t start = 0;
    for (size_t i = 0; i <= text.size(); ++i) {
        if (i + 1 < text.size() && isHighSurrogate(text[i]) && isLowSurrogate(text[i + 1])) {
            ++i;
        } else if (i == text.size() || isHighSurrogate(text[i]) || isLowSurrogate(text[i])) {
            appendNormalized(text.data() + start, i - start, form, &result);
            result.insert(result.end(), text.begin() + i, text.begin() + std::min(i + 1, text.size()));
            start = i + 1;
        }
    }
    return result;
}

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8 *bytes, CFIndex length, CFStringEncoding encoding,
                                    Boolean isExternalRepresentation)
{
    Units text;
    if (length < 0 || (length && !bytes) || !decodeText(bytes, length, encoding, isExternalRepresentation, &text))
        return nullptr;
    return (CFStringRef)newString(text.data(), text.size());
}

CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char *text, CFStringEncoding encoding)
{
    if (!text)
        return nullptr;
    return CFStringCreateWithBytes(allocator, reinterpret_cast<const UInt8 *>(text), strlen(text), encoding, false);
}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar *units, CFIndex length)
{
    if (length < 0 || (length && !units))
        return nullptr;
    return (CFStringRef)newString(units, length);
}

CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef, CFIndex maxLength, CFStringRef string)
{
    if (!string || (maxLength > 0 && CFStringGetLength(string) > maxLength))
        return nullptr;
    return (CFMutableStringRef)[(NSString *)string mutableCopy];
}

CFIndex CFStringGetLength(CFStringRef string)
{
    return [(NSString *)string length];
}

void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar *units)
{
    [(NSString *)string getCharacters:units range:NSMakeRange(range.location, range.length)];
}

Boolean CFStringGetCString(CFStringRef string, char *buffer, CFIndex size, CFStringEncoding encoding)
{
    std::string bytes;
    if (!encodeText(unitsOf((NSString *)string), encoding, &bytes) || static_cast<CFIndex>(bytes.size()) >= size)
        return false;
    memcpy(buffer, bytes.c_str(), bytes.size() + 1);
    return true;
}

void CFStringNormalize(CFMutableStringRef string, CFStringNormalizationForm form)
{
    NSMutableString *text = (NSMutableString *)string;
    Units units = normalized(unitsOf(text), form);
    [text setString:[newString(units.data(), units.size()) autorelease]];
}
