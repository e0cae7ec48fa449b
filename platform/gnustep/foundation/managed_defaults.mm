// Values that an administrator fixes. As on macOS they are property lists, one for each domain, in a folder named
// "Managed Preferences"; here it lies in the defaults folder of the user whose defaults they are. A fixed value is
// found behind the arguments and in front of every other domain of the search list, is part of the dictionary
// representation, and stays whatever is set.

#include "platform/gnustep/foundation/domain_files.h"
#include "platform/gnustep/foundation/replacement.h"

#import <Foundation/Foundation.h>

#include <mutex>
#include <vector>

static id (*objectBefore)(NSUserDefaults *, SEL, NSString *);
static NSDictionary *(*representationBefore)(NSUserDefaults *, SEL);
static BOOL (*synchronizeBefore)(NSUserDefaults *, SEL);

@interface NSUserDefaults (GNUstepPrivate)
- (NSString *)_directory;
@end

namespace {

struct Folder {
    NSString *path;
    NSDictionary *domains; // domain name to its fixed values; nil when they must be read again
};

// The calls below may come from any thread, and from within themselves while the folder is read.
std::recursive_mutex lock;
std::vector<Folder> &folders = *new std::vector<Folder>; // used until the very end of the process
bool reading;

NSDictionary *readDomains(NSString *path)
{
    NSMutableDictionary *domains = [[NSMutableDictionary alloc] init];
    NSString *managed = [path stringByAppendingPathComponent:@"Managed Preferences"];
    for (NSString *name in [[NSFileManager defaultManager] directoryContentsAtPath:managed]) {
        NSDictionary *domain = [[name pathExtension] isEqualToString:@"plist"]
                                   ? platform::readDomainFile([managed stringByAppendingPathComponent:name])
                                   : nil;
        if (domain)
            [domains setObject:domain forKey:[name stringByDeletingPathExtension]];
    }
    return domains;
}

Folder *folderOf(NSUserDefaults *defaults)
{
    NSString *path = [defaults _directory];
    if (!path)
        return nullptr;
    for (Folder &folder : folders)
        if (folder.path == path || [folder.path isEqualToString:path])
            return &folder;
    folders.push_back({[path copy], nil});
    return &folders.back();
}

// Domain name to fixed values, nil when nothing is fixed; autoreleased.
NSDictionary *managedDomains(NSUserDefaults *defaults)
{
    std::lock_guard<std::recursive_mutex> guard(lock);
    Folder *folder = reading ? nullptr : folderOf(defaults);
    if (!folder)
        return nil;
    if (!folder->domains) {
        reading = true;
        folder->domains = readDomains(folder->path);
        reading = false;
    }
    return [folder->domains count] ? [[folder->domains retain] autorelease] : nil;
}

id managedValue(NSUserDefaults *defaults, NSString *key)
{
    NSDictionary *domains = key ? managedDomains(defaults) : nil;
    if (!domains)
        return nil;
    for (NSString *name in [defaults searchList])
        if (id value = [[domains objectForKey:name] objectForKey:key])
            return value;
    return nil;
}

NSDictionary *arguments(NSUserDefaults *defaults)
{
    return [defaults volatileDomainForName:NSArgumentDomain];
}

id objectForKey(NSUserDefaults *self, SEL selector, NSString *key)
{
    id value = managedValue(self, key);
    return value && ![arguments(self) objectForKey:key] ? value : objectBefore(self, selector, key);
}

NSDictionary *dictionaryRepresentation(NSUserDefaults *self, SEL selector)
{
    NSDictionary *domains = managedDomains(self);
    NSDictionary *representation = representationBefore(self, selector);
    if (!domains)
        return representation;
    NSMutableDictionary *merged = [NSMutableDictionary dictionaryWithDictionary:representation];
    for (NSString *name in [[self searchList] reverseObjectEnumerator])
        [merged addEntriesFromDictionary:[domains objectForKey:name]];
    [merged addEntriesFromDictionary:arguments(self)];
    return merged;
}

BOOL synchronize(NSUserDefaults *self, SEL selector)
{
    {
        std::lock_guard<std::recursive_mutex> guard(lock);
        if (Folder *folder = reading ? nullptr : folderOf(self)) {
            [folder->domains autorelease];
            folder->domains = nil;
        }
    }
    return synchronizeBefore(self, selector);
}

} // namespace

@implementation NSUserDefaults (PlatformForcedValues)

- (BOOL)objectIsForcedForKey:(NSString *)key
{
    return managedValue(self, key) != nil;
}

- (BOOL)objectIsForcedForKey:(NSString *)key inDomain:(NSString *)domain
{
    return key && domain && [[managedDomains(self) objectForKey:domain] objectForKey:key] != nil;
}

@end

__attribute__((constructor)) static void install()
{
    objectBefore = platform::replaceMethod("NSUserDefaults", "objectForKey:", objectForKey);
    representationBefore =
        platform::replaceMethod("NSUserDefaults", "dictionaryRepresentation", dictionaryRepresentation);
    synchronizeBefore = platform::replaceMethod("NSUserDefaults", "synchronize", synchronize);
}
