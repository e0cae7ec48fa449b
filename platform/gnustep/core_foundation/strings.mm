#include "platform/gnustep/core_foundation/strings.h"

#include <stdlib.h>
#include <string.h>

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
    memcpy(units, characters, length * sizeof *units);
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
    memcpy(buffer, units + range.location, range.length * sizeof *units);
}

- (id)copyWithZone:(NSZone *)zone
{
    (void)zone;
    return [self retain];
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
        if ((units[i] & 0xF800) != 0xD800)
            continue;
        bool pair = (units[i] & 0xFC00) == 0xD800 && i + 1 < length && (units[i + 1] & 0xFC00) == 0xDC00;
        if (!pair)
            return false;
        ++i;
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
// for a text of such letters only. Padding with letters that stay as they are gives it more.
NSString *platform::normalized(NSString *string, CFStringNormalizationForm form)
{
    NSUInteger padding = [string length] + 8;
    NSString *padded = [string stringByPaddingToLength:[string length] + padding withString:@"x" startingAtIndex:0];
    switch (form) {
    case kCFStringNormalizationFormD:
        padded = [padded decomposedStringWithCanonicalMapping];
        break;
    case kCFStringNormalizationFormKD:
        padded = [padded decomposedStringWithCompatibilityMapping];
        break;
    case kCFStringNormalizationFormC:
        padded = [padded precomposedStringWithCanonicalMapping];
        break;
    case kCFStringNormalizationFormKC:
        padded = [padded precomposedStringWithCompatibilityMapping];
        break;
    default:
        return string;
    }
    return [padded substringToIndex:[padded length] - padding];
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
    [text setString:normalized(text, form)];
}
