// URLs are edited as text: what stands in front of the path and behind it stays as it is.

#include "platform/gnustep/core_foundation/strings.h"
#include "platform/gnustep/core_services/items.h"

#include <ctype.h>
#include <string.h>

using namespace platform;

namespace {

NSURL *urlOf(CFURLRef url)
{
    return (NSURL *)url;
}

// Owned by the caller; nil when Foundation finds no URL in the text.
NSURL *newURL(NSString *text, NSURL *base)
{
    @try {
        return [[NSURL alloc] initWithString:text relativeToURL:base];
    } @catch (NSException *) {
        return nil;
    }
}

bool isLegalURLText(const Units &text)
{
    bool fragment = false;
    for (size_t i = 0; i < text.size(); ++i) {
        UniChar c = text[i];
        if (c == '%') {
            if (i + 2 >= text.size() || text[i + 1] > 127 || text[i + 2] > 127 || !isxdigit(text[i + 1]) ||
                !isxdigit(text[i + 2]))
                return false;
            i += 2;
        } else if (c == '#') {
            if (fragment)
                return false;
            fragment = true;
        } else if (c == 0 || c > 127 || (!isalnum(c) && !strchr("-_.!~*'();/?:@&=+$,[]", c))) {
            return false;
        }
    }
    return true;
}

// The path within a URL's text: behind scheme and authority, in front of parameters, query and fragment.
NSRange pathRange(NSString *text)
{
    NSUInteger length = [text length];
    NSUInteger start = 0;
    NSRange scheme = [text rangeOfString:@":"];
    NSRange slash = [text rangeOfString:@"/"];
    if (scheme.length && (!slash.length || scheme.location < slash.location))
        start = NSMaxRange(scheme);
    if ([[text substringFromIndex:start] hasPrefix:@"//"]) {
        NSRange rest = NSMakeRange(start + 2, length - start - 2);
        NSRange root = [text rangeOfString:@"/" options:0 range:rest];
        start = root.length ? root.location : length;
    }
    NSCharacterSet *ends = [NSCharacterSet characterSetWithCharactersInString:@";?#"];
    NSRange end = [text rangeOfCharacterFromSet:ends options:0 range:NSMakeRange(start, length - start)];
    return NSMakeRange(start, (end.length ? end.location : length) - start);
}

NSString *withoutTrailingSlash(NSString *path)
{
    return [path length] > 1 && [path hasSuffix:@"/"] ? [path substringToIndex:[path length] - 1] : path;
}

// Autoreleased; nil for half a surrogate pair.
NSString *escapedForPath(NSString *component)
{
    std::string bytes;
    if (!encodeText(unitsOf(component), kCFStringEncodingUTF8, &bytes))
        return nil;
    std::string escaped;
    for (unsigned char c : bytes) {
        if (c && c < 128 && (isalnum(c) || strchr("-_.!~*'():@&=+$,/", c))) {
            escaped.push_back(c);
        } else {
            char escape[4];
            snprintf(escape, sizeof escape, "%%%02X", c);
            escaped += escape;
        }
    }
    return [NSString stringWithUTF8String:escaped.c_str()];
}

CFURLRef newURLWithPath(CFURLRef url, NSString *path, bool keepRest)
{
    NSString *text = [urlOf(url) relativeString];
    NSRange range = pathRange(text);
    NSString *rest = keepRest ? [text substringFromIndex:NSMaxRange(range)] : @"";
    NSString *edited = [NSString stringWithFormat:@"%@%@%@", [text substringToIndex:range.location], path, rest];
    return (CFURLRef)newURL(edited, [urlOf(url) baseURL]);
}

NSString *pathTextOf(CFURLRef url)
{
    NSString *text = [urlOf(url) relativeString];
    return [text substringWithRange:pathRange(text)];
}

} // namespace

CFURLRef CFURLCreateWithString(CFAllocatorRef, CFStringRef text, CFURLRef baseURL)
{
    if (!text || CFStringGetLength(text) == 0 || !isLegalURLText(unitsOf((NSString *)text)))
        return nullptr;
    return (CFURLRef)newURL((NSString *)text, urlOf(baseURL));
}

CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef, CFStringRef path, CFURLPathStyle style, Boolean isDirectory)
{
    if (!path || CFStringGetLength(path) == 0 || style != kCFURLPOSIXPathStyle)
        return nullptr;
    NSString *escaped = escapedForPath((NSString *)path);
    if (isDirectory && ![escaped hasSuffix:@"/"])
        escaped = [escaped stringByAppendingString:@"/"];
    bool absolute = [escaped hasPrefix:@"/"];
    NSURL *folder = absolute ? nil : [NSURL fileURLWithPath:[[NSFileManager defaultManager] currentDirectoryPath]];
    return escaped ? (CFURLRef)newURL(absolute ? [@"file://" stringByAppendingString:escaped] : escaped, folder)
                   : nullptr;
}

CFStringRef CFURLGetString(CFURLRef url)
{
    return (CFStringRef)[urlOf(url) relativeString];
}

CFStringRef CFURLCopyFileSystemPath(CFURLRef url, CFURLPathStyle style)
{
    return style == kCFURLPOSIXPathStyle ? (CFStringRef)[[urlOf(url) path] copy] : nullptr;
}

CFStringRef CFURLCopyLastPathComponent(CFURLRef url)
{
    NSString *path = withoutTrailingSlash(pathTextOf(url));
    NSRange slash = [path rangeOfString:@"/" options:NSBackwardsSearch];
    if (slash.length && [path length] > 1)
        path = [path substringFromIndex:NSMaxRange(slash)];
    return (CFStringRef)[[path stringByReplacingPercentEscapesUsingEncoding:NSUTF8StringEncoding] copy];
}

CFURLRef CFURLCreateCopyDeletingLastPathComponent(CFAllocatorRef, CFURLRef url)
{
    NSString *path = withoutTrailingSlash(pathTextOf(url));
    NSRange slash = [path rangeOfString:@"/" options:NSBackwardsSearch];
    NSString *folder = slash.length ? [path substringToIndex:NSMaxRange(slash)] : @"";
    NSString *last = [path substringFromIndex:[folder length]];
    if ([last length] == 0 || [last isEqualToString:@".."])
        folder = [path stringByAppendingString:[path hasSuffix:@"/"] ? @"../" : @"/../"];
    else if ([folder length] == 0)
        folder = @"./";
    return newURLWithPath(url, folder, false);
}

CFURLRef CFURLCreateCopyAppendingPathComponent(CFAllocatorRef, CFURLRef url, CFStringRef component, Boolean isDirectory)
{
    NSString *escaped = escapedForPath((NSString *)component);
    if (!escaped)
        return nullptr;
    NSString *path = pathTextOf(url);
    NSString *separator = [path length] && ![path hasSuffix:@"/"] ? @"/" : @"";
    NSString *longer = [NSString stringWithFormat:@"%@%@%@%@", path, separator, escaped, isDirectory ? @"/" : @""];
    return newURLWithPath(url, longer, true);
}

CFURLRef CFURLCreateFromFSRef(CFAllocatorRef, const FSRef *ref)
{
    std::string path;
    if (!ref || !pathOfItem(*ref, &path))
        return nullptr;
    NSString *text = [NSString stringWithUTF8String:path.c_str()];
    return text ? (CFURLRef)[[NSURL alloc] initFileURLWithPath:text] : nullptr;
}

Boolean CFURLGetFSRef(CFURLRef url, FSRef *ref)
{
    if (!url || ![urlOf(url) isFileURL])
        return false;
    std::string path;
    NSString *text = [[urlOf(url) absoluteURL] path];
    return text && encodeText(unitsOf(text), kCFStringEncodingUTF8, &path) && findItem(path, false, &path) &&
           makeReference(path, ref);
}
