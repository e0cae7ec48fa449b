// How the domains of a defaults object reach the disk: each as a binary property list, which macOS writes too. GNUstep
// writes XML, where characters above U+FFFF, fractions of a second and the difference between single and double
// precision are lost; it forgets what it could not write, and tells nobody; and it takes a file that it cannot read for
// an empty one, which the next value then replaces. Domains that other programs wrote as XML are still read.

#include "platform/gnustep/foundation/domain_files.h"
#include "platform/gnustep/foundation/property_lists.h"
#include "platform/gnustep/foundation/replacement.h"

#import <Foundation/Foundation.h>
#include <errno.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <utility>

// One domain, as Foundation declares it for itself.
@interface GSPersistentDomain : NSObject {
@public
    NSString *name;
    NSString *path;
    NSUserDefaults *owner;
    NSMutableDictionary *contents;
    NSMutableSet *added, *modified, *removed; // the keys of what is not written yet
    BOOL loaded;
}
@end

@interface NSUserDefaults (GNUstepPrivate)
- (NSString *)_directory;
- (BOOL)_readOnly; // there is no folder to lock
- (BOOL)_lockDefaultsFile:(BOOL *)wasLocked;
- (void)_unlockDefaultsFile;
@end

static id (*initLockBefore)(id, SEL, NSString *);
static BOOL (*lockBefore)(NSUserDefaults *, SEL, BOOL *);
static BOOL (*synchronizeBefore)(NSUserDefaults *, SEL);
static BOOL (*wantToReadBefore)(NSUserDefaults *, SEL, NSDate *);

// Whether a domain could not be written since this thread's innermost synchronize began.
static thread_local bool isUnwritten;

@implementation NSUserDefaults (PlatformStorage)

// The next synchronize writes the domain, whether or not it has changed again.
- (void)platformWriteLater:(NSString *)domain
{
    if (!_changedDomains)
        _changedDomains = [[NSMutableArray alloc] init];
    if (![_changedDomains containsObject:domain])
        [_changedDomains addObject:domain];
}

- (NSArray *)platformChangedDomains
{
    return [[_changedDomains copy] autorelease];
}

- (GSPersistentDomain *)platformDomain:(NSString *)name
{
    return [_persDomains objectForKey:name];
}

@end

static bool hasChanges(GSPersistentDomain *domain)
{
    return [domain->added count] || [domain->modified count] || [domain->removed count];
}

static void writeFailed(NSUserDefaults *defaults, NSString *domain, NSString *path, int error)
{
    isUnwritten = true;
    [defaults platformWriteLater:domain];
    NSLog(@"%@ cannot be written: %s", path, strerror(error));
}

// Once for each time that a file becomes unreadable; every defaults object reads it anew.
static void tellWhetherReadable(NSString *path, bool isReadable)
{
    static NSMutableSet *told = [[NSMutableSet alloc] init];
    if (isReadable) {
        [told removeObject:path];
    } else if (![told containsObject:path]) {
        [told addObject:path];
        NSString *kept = platform::nameToKeepDomainFile(path);
        if (kept)
            NSLog(@"%@ cannot be read; it is kept as %@ when values are written", path, [kept lastPathComponent]);
        else
            NSLog(@"%@ cannot be read", path);
    }
}

// What is on the disk with the changes that are not there yet. A file that cannot be read takes away nothing.
static NSMutableDictionary *mergedContents(GSPersistentDomain *domain, NSDictionary *onDisk)
{
    NSMutableDictionary *merged = [[onDisk ? onDisk : domain->contents mutableCopy] autorelease];
    for (NSString *key in domain->removed)
        [merged removeObjectForKey:key];
    for (NSSet *keys in @[ domain->added, domain->modified ])
        for (NSString *key in keys)
            [merged setObject:[domain->contents objectForKey:key] forKey:key];
    return merged;
}

static void writeDomain(GSPersistentDomain *domain, bool isReadable)
{
    int error = isReadable ? 0 : platform::keepDomainFile(domain->path);
    if (!error)
        error = platform::writeDomainFile(domain->contents, domain->path);
    if (error)
        return writeFailed(domain->owner, domain->name, domain->path, error);
    tellWhetherReadable(domain->path, true);
    for (NSMutableSet *keys in @[ domain->added, domain->modified, domain->removed ])
        [keys removeAllObjects];
}

static BOOL readAndWrite(GSPersistentDomain *domain, bool writes)
{
    NSDictionary *onDisk = platform::readDomainFile(domain->path);
    tellWhetherReadable(domain->path, onDisk);
    NSMutableDictionary *merged = mergedContents(domain, onDisk);
    BOOL isNews = !platform::isSameValue(domain->contents, merged);
    if (isNews) {
        [domain->contents autorelease];
        domain->contents = [merged retain];
    }
    domain->loaded = YES;
    if (writes)
        writeDomain(domain, onDisk);
    return isNews;
}

static BOOL synchronizeDomain(GSPersistentDomain *self, SEL)
{
    bool writes = hasChanges(self) && ![self->owner _readOnly];
    BOOL wasLocked = YES;
    if (writes)
        [self->owner _lockDefaultsFile:&wasLocked];
    @try {
        return readAndWrite(self, writes);
    } @finally {
        if (!wasLocked)
            [self->owner _unlockDefaultsFile];
    }
}

static NSString *fileOfDomain(NSUserDefaults *defaults, NSString *domain)
{
    return [[[defaults _directory] stringByAppendingPathComponent:domain] stringByAppendingPathExtension:@"plist"];
}

// GNUstep leaves domains alone in a folder that it cannot lock, and does not look whether the files of removed domains
// are gone. Some of those that it calls changed have only been looked for.
static void finishWriting(NSUserDefaults *defaults, NSArray *names)
{
    for (NSString *name in names) {
        NSString *file = fileOfDomain(defaults, name);
        GSPersistentDomain *domain = [defaults platformDomain:name];
        int error = 0;
        if (!domain)
            error = platform::writeDomainFile(nil, file);
        else if ([defaults _readOnly] && hasChanges(domain))
            error = access([[defaults _directory] fileSystemRepresentation], W_OK) == 0 ? ENOLCK : errno;
        if (error)
            writeFailed(defaults, name, file, error);
    }
}

static BOOL synchronizeDefaults(NSUserDefaults *self, SEL selector)
{
    bool outer = std::exchange(isUnwritten, false);
    @try {
        NSArray *changed = [self platformChangedDomains];
        BOOL isDone = synchronizeBefore(self, selector);
        finishWriting(self, changed);
        return isDone && !isUnwritten;
    } @finally {
        isUnwritten = outer;
    }
}

// A lock that cannot be made is none, and not worth a line: what cannot be written is told.
static id initLock(id self, SEL selector, NSString *path)
{
    if (access([[path stringByDeletingLastPathComponent] fileSystemRepresentation], W_OK | X_OK) == 0)
        return initLockBefore(self, selector, path);
    [self release];
    return nil;
}

// A disk that is full or takes no changes takes no lock either, for which GNUstep waits a minute whatever the reason.
// What is there is read without one; writing it fails then.
static BOOL lockDefaults(NSUserDefaults *self, SEL selector, BOOL *wasLocked)
{
    std::string probe = [[self _directory] fileSystemRepresentation];
    probe += "/.lck/probe-" + std::to_string(getpid());
    if (mkdir(probe.c_str(), 0700) != 0 && errno != EEXIST) {
        *wasLocked = YES; // by nobody who must unlock it
        return YES;
    }
    rmdir(probe.c_str());
    return lockBefore(self, selector, wasLocked);
}

// GNUstep looks at the folder again when it changed after the last time it looked. The disk's clock is a few
// milliseconds behind, so what another process wrote right after that would never be seen. A folder that cannot be
// locked has not been looked at when GNUstep says so.
static BOOL wantToRead(NSUserDefaults *self, SEL selector, NSDate *lastSynchronization)
{
    return [self _readOnly] || wantToReadBefore(self, selector, [lastSynchronization dateByAddingTimeInterval:-0.05]);
}

__attribute__((constructor)) static void install()
{
    platform::replaceMethod("GSPersistentDomain", "synchronize", synchronizeDomain);
    synchronizeBefore = platform::replaceMethod("NSUserDefaults", "synchronize", synchronizeDefaults);
    initLockBefore = platform::replaceMethod("NSDistributedLock", "initWithPath:", initLock);
    lockBefore = platform::replaceMethod("NSUserDefaults", "_lockDefaultsFile:", lockDefaults);
    wantToReadBefore = platform::replaceMethod("NSUserDefaults", "wantToReadDefaultsSince:", wantToRead);
}
