#include "platform/gnustep/core_foundation/strings.h"
#include "platform/gnustep/core_foundation/url_object.h"
#include "platform/gnustep/core_services/items.h"

using namespace platform;

static NSURL *urlOf(CFURLRef url)
{
    return (NSURL *)url;
}

static CFURLRef newURLBeside(CFURLRef url, const std::optional<URLText> &text)
{
    return (CFURLRef)newURL(text, [urlOf(url) baseURL]);
}

static CFStringRef newText(const std::optional<Units> &units)
{
    return units ? (CFStringRef)newString(units->data(), units->size()) : nullptr;
}

CFURLRef CFURLCreateWithString(CFAllocatorRef, CFStringRef text, CFURLRef baseURL)
{
    return text ? (CFURLRef)newURL(URLText::parse(unitsOf((NSString *)text)), urlOf(baseURL)) : nullptr;
}

CFStringRef CFURLCopyLastPathComponent(CFURLRef url)
{
    return newText(textOfURL(urlOf(url)).lastPathComponent());
}

CFURLRef CFURLCreateCopyDeletingLastPathComponent(CFAllocatorRef, CFURLRef url)
{
    return newURLBeside(url, textOfURL(urlOf(url)).withoutLastPathComponent());
}

CFURLRef CFURLCreateCopyAppendingPathComponent(CFAllocatorRef, CFURLRef url, CFStringRef component, Boolean isDirectory)
{
    return newURLBeside(url, textOfURL(urlOf(url)).withPathComponent(unitsOf((NSString *)component), isDirectory));
}

// The path stays as it lies on the disk, where other programs must find it; macOS's disks hold form D.
CFURLRef CFURLCreateFromFSRef(CFAllocatorRef, const FSRef *ref)
{
    std::string path;
    if (!ref || !pathOfItem(*ref, &path))
        return nullptr;
    NSString *text = [NSString stringWithUTF8String:path.c_str()];
    BOOL isFolder = NO;
    [[NSFileManager defaultManager] fileExistsAtPath:text isDirectory:&isFolder];
    return text ? (CFURLRef)newURL(URLText::ofPath(unitsOf(text), isFolder), nil) : nullptr;
}

Boolean CFURLGetFSRef(CFURLRef url, FSRef *ref)
{
    if (!url || ![urlOf(url) isFileURL])
        return false;
    std::string path;
    NSString *text = [urlOf(url) path];
    return text && encodeText(unitsOf(text), kCFStringEncodingUTF8, &path) && findItem(path, false, &path) &&
           makeReference(path, ref);
}
