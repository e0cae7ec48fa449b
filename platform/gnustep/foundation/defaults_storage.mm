// How a domain lies on disk: as a binary property list, which macOS writes too. GNUstep writes XML, where characters
// above U+FFFF, fractions of a second and the difference between single and double precision are lost. Domains that
// other programs wrote as XML are still read.

#include "platform/gnustep/foundation/property_lists.h"
#include "platform/gnustep/foundation/replacement.h"

#import <Foundation/Foundation.h>

using Synchronize = BOOL (*)(id, SEL);
using WriteList = NSData *(*)(id, SEL, id, NSPropertyListFormat, NSString **);
using ReadList = id (*)(id, SEL, NSData *, NSPropertyListReadOptions, NSPropertyListFormat *, NSError **);
using WantToRead = BOOL (*)(id, SEL, NSDate *);

static Synchronize synchronizeBefore;
static WriteList writeBefore;
static ReadList readBefore;
static WantToRead wantToReadBefore;

// Above 0 while this thread reads and writes the file of a domain; other property lists stay GNUstep's.
static thread_local int synchronizingDomain;

static BOOL synchronizeDomain(id self, SEL selector)
{
    ++synchronizingDomain;
    @try {
        return synchronizeBefore(self, selector);
    } @finally {
        --synchronizingDomain;
    }
}

static NSData *writeList(id self, SEL selector, id root, NSPropertyListFormat format, NSString **error)
{
    platform::initialize(self);
    return synchronizingDomain ? platform::binaryPropertyList(root, error)
                               : writeBefore(self, selector, root, format, error);
}

static id readList(id self, SEL selector, NSData *data, NSPropertyListReadOptions options, NSPropertyListFormat *format,
                   NSError **error)
{
    platform::initialize(self);
    id root = synchronizingDomain ? platform::propertyListFromBinary(data) : nil;
    return root ? root : readBefore(self, selector, data, options, format, error);
}

// GNUstep looks at the folder again when it changed after the last time it looked. The disk's clock is a few
// milliseconds behind, so what another process wrote right after that would never be seen.
static BOOL wantToRead(id self, SEL selector, NSDate *lastSynchronization)
{
    return wantToReadBefore(self, selector, [lastSynchronization dateByAddingTimeInterval:-0.05]);
}

@interface PlatformDefaultsStorage : NSObject
@end

@implementation PlatformDefaultsStorage

+ (void)load
{
    const char *serialization = "NSPropertyListSerialization";
    synchronizeBefore = platform::replaceMethod("GSPersistentDomain", "synchronize", synchronizeDomain);
    writeBefore =
        platform::replaceClassMethod(serialization, "dataFromPropertyList:format:errorDescription:", writeList);
    readBefore = platform::replaceClassMethod(serialization, "propertyListWithData:options:format:error:", readList);
    wantToReadBefore = platform::replaceMethod("NSUserDefaults", "wantToReadDefaultsSince:", wantToRead);
}

@end
