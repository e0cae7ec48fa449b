// Property lists in and out of data, as macOS reads and writes them: binary and XML here, the older form by GNUstep.

#include "platform/gnustep/foundation/property_lists.h"
#include "platform/gnustep/foundation/replacement.h"
#include "platform/gnustep/foundation/xml_property_list.h"

#import <Foundation/Foundation.h>
#include <ctype.h>

#include <string>

static NSData *(*writeBefore)(id, SEL, id, NSPropertyListFormat, NSString **);
static id (*readBefore)(id, SEL, NSData *, NSPropertyListReadOptions, NSPropertyListFormat *, NSError **);

static NSData *writeList(id self, SEL selector, id root, NSPropertyListFormat format, NSString **error)
{
    platform::initialize(self);
    if (format != NSPropertyListBinaryFormat_v1_0 && format != NSPropertyListXMLFormat_v1_0)
        return writeBefore(self, selector, root, format, error);
    NSData *data = nil;
    if (platform::isPropertyList(root))
        data = format == NSPropertyListXMLFormat_v1_0 ? platform::xmlPropertyList(root)
                                                      : platform::binaryPropertyList(root);
    if (error)
        *error = data ? nil : @"not a property list";
    return data;
}

// In the older form only data in hexadecimal begins with "<".
static NSPropertyListFormat formatOf(NSData *data)
{
    std::string start(static_cast<const char *>([data bytes]), std::min<size_t>([data length], 1024));
    if ([data length] >= 40 && start.compare(0, 8, "bplist00") == 0)
        return NSPropertyListBinaryFormat_v1_0;
    bool hasMark = start.compare(0, 2, "\xFF\xFE") == 0 || start.compare(0, 2, "\xFE\xFF") == 0;
    size_t first = start.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
    bool isTag = first < start.size() - 1 && start[first] == '<' && !isxdigit(start[first + 1]) &&
                 !strchr(" \t\r\n>*", start[first + 1]);
    return hasMark || isTag ? NSPropertyListXMLFormat_v1_0 : NSPropertyListOpenStepFormat;
}

// Keys and values without the braces of a dictionary.
static NSDictionary *stringsFile(NSData *data, NSPropertyListFormat *format)
{
    NSString *text = [[[NSString alloc] initWithData:data encoding:NSUTF8StringEncoding] autorelease];
    @try {
        NSDictionary *strings = [text length] ? [text propertyListFromStringsFileFormat] : nil;
        if (strings && format)
            *format = NSPropertyListOpenStepFormat;
        return strings;
    } @catch (NSException *) {
        return nil;
    }
}

static id mutableCopy(id value, bool leavesToo)
{
    if ([value isKindOfClass:[NSArray class]]) {
        NSMutableArray *copy = [NSMutableArray array];
        for (id element in value)
            [copy addObject:mutableCopy(element, leavesToo)];
        return copy;
    }
    if ([value isKindOfClass:[NSDictionary class]]) {
        NSMutableDictionary *copy = [NSMutableDictionary dictionary];
        for (id key in value)
            [copy setObject:mutableCopy([value objectForKey:key], leavesToo) forKey:key];
        return copy;
    }
    bool isLeaf = [value isKindOfClass:[NSString class]] || [value isKindOfClass:[NSData class]];
    return leavesToo && isLeaf ? [[value mutableCopy] autorelease] : value;
}

static id readList(id self, SEL selector, NSData *data, NSPropertyListReadOptions options, NSPropertyListFormat *format,
                   NSError **error)
{
    platform::initialize(self);
    NSPropertyListFormat found = formatOf(data);
    if (found == NSPropertyListOpenStepFormat) {
        id root = readBefore(self, selector, data, options, format, error);
        return root ? root : stringsFile(data, format);
    }
    bool isBinary = found == NSPropertyListBinaryFormat_v1_0;
    id root = isBinary ? platform::propertyListFromBinary(data) : platform::propertyListFromXML(data);
    if (root && format)
        *format = found;
    if (!root && error)
        *error = [NSError errorWithDomain:NSCocoaErrorDomain code:3840 userInfo:nil];
    return root && options != NSPropertyListImmutable
               ? mutableCopy(root, options == NSPropertyListMutableContainersAndLeaves)
               : root;
}

__attribute__((constructor)) static void install()
{
    const char *serialization = "NSPropertyListSerialization";
    writeBefore =
        platform::replaceClassMethod(serialization, "dataFromPropertyList:format:errorDescription:", writeList);
    readBefore = platform::replaceClassMethod(serialization, "propertyListWithData:options:format:error:", readList);
}
