// The dictionary without call-backs: words as keys and values, compared by identity, none retained. As on macOS it is a
// mutable NSDictionary as well.

#import <Foundation/Foundation.h>

#include <iterator>
#include <unordered_map>

using Entries = std::unordered_map<const void *, const void *>;

@interface PlatformIdentityDictionary : NSMutableDictionary {
@public
    Entries entries;
}
@end

@interface PlatformIdentityKeys : NSEnumerator {
    PlatformIdentityDictionary *dictionary;
    Entries::const_iterator next;
}
- (id)initWithDictionary:(PlatformIdentityDictionary *)owner;
@end

@implementation PlatformIdentityDictionary

- (id)initWithCapacity:(NSUInteger)capacity
{
    (void)capacity;
    return self;
}

- (NSUInteger)count
{
    return entries.size();
}

- (id)objectForKey:(id)key
{
    auto entry = entries.find(key);
    return entry == entries.end() ? nil : (id)entry->second;
}

- (NSEnumerator *)keyEnumerator
{
    return [[[PlatformIdentityKeys alloc] initWithDictionary:self] autorelease];
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState *)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)length
{
    NSUInteger count = 0;
    for (auto entry = std::next(entries.begin(), state->state); entry != entries.end() && count < length; ++entry)
        buffer[count++] = (id)entry->first;
    state->state += count;
    state->itemsPtr = buffer;
    state->mutationsPtr = &state->extra[0];
    return count;
}

- (void)setObject:(id)object forKey:(id)key
{
    entries[key] = object;
}

- (void)removeObjectForKey:(id)key
{
    entries.erase(key);
}

@end

@implementation PlatformIdentityKeys

- (id)initWithDictionary:(PlatformIdentityDictionary *)owner
{
    if ((self = [super init])) {
        dictionary = [owner retain];
        next = owner->entries.begin();
    }
    return self;
}

- (id)nextObject
{
    return next == dictionary->entries.end() ? nil : (id)(next++)->first;
}

- (void)dealloc
{
    [dictionary release];
    [super dealloc];
}

@end

// The entries of a dictionary without call-backs, null for any other dictionary.
static Entries *entriesOf(CFDictionaryRef dictionary)
{
    id object = (id)dictionary;
    return [object isKindOfClass:[PlatformIdentityDictionary class]]
               ? &static_cast<PlatformIdentityDictionary *>(object)->entries
               : nullptr;
}

static NSMutableDictionary *objectsOf(CFDictionaryRef dictionary)
{
    return (NSMutableDictionary *)dictionary;
}

CFMutableDictionaryRef CFDictionaryCreateMutable(CFAllocatorRef, CFIndex, const CFDictionaryKeyCallBacks *keyCallBacks,
                                                 const CFDictionaryValueCallBacks *valueCallBacks)
{
    if (keyCallBacks || valueCallBacks)
        return nullptr;
    return (CFMutableDictionaryRef)[[PlatformIdentityDictionary alloc] initWithCapacity:0];
}

CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary)
{
    return [objectsOf(dictionary) count];
}

Boolean CFDictionaryGetValueIfPresent(CFDictionaryRef dictionary, const void *key, const void **value)
{
    const void *found;
    if (Entries *entries = entriesOf(dictionary)) {
        auto entry = entries->find(key);
        if (entry == entries->end())
            return false;
        found = entry->second;
    } else if (!(found = [objectsOf(dictionary) objectForKey:(id)key])) {
        return false;
    }
    if (value)
        *value = found;
    return true;
}

const void *CFDictionaryGetValue(CFDictionaryRef dictionary, const void *key)
{
    const void *value = nullptr;
    CFDictionaryGetValueIfPresent(dictionary, key, &value);
    return value;
}

void CFDictionarySetValue(CFMutableDictionaryRef dictionary, const void *key, const void *value)
{
    [objectsOf(dictionary) setObject:(id)value forKey:(id)key];
}

void CFDictionaryRemoveValue(CFMutableDictionaryRef dictionary, const void *key)
{
    [objectsOf(dictionary) removeObjectForKey:(id)key];
}
