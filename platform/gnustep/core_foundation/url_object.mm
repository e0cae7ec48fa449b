// NSURL as macOS has it: any text that is legal makes one, and its parts are what the text says. GNUstep refuses an
// authority that "?" or "#" follows, a port that is no number, and the empty text.

#include "platform/gnustep/core_foundation/url_object.h"

#include "platform/gnustep/core_foundation/strings.h"
#include "platform/gnustep/foundation/replacement.h"

using namespace platform;

static id (*initWithStringBefore)(id, SEL, NSString *, NSURL *);
static id (*initWithPathBefore)(id, SEL, NSString *);
static id (*initWithFolderBefore)(id, SEL, NSString *, BOOL);

static NSString *stringOf(const std::string &ascii)
{
    return [[[NSString alloc] initWithBytes:ascii.data() length:ascii.size()
                                   encoding:NSASCIIStringEncoding] autorelease];
}

static NSString *stringOf(const std::optional<Units> &units)
{
    return units ? [newString(units->data(), units->size()) autorelease] : nil;
}

@interface PlatformURL : NSURL {
@public
    URLText *text;
    NSURL *base;
}
@end

@implementation PlatformURL

- (void)dealloc
{
    delete text;
    [base release];
    [super dealloc];
}

- (id)copyWithZone:(NSZone *)zone
{
    (void)zone;
    return [self retain];
}

- (Class)classForCoder
{
    return [NSURL class];
}

- (void)encodeWithCoder:(NSCoder *)coder
{
    if ([coder allowsKeyedCoding]) {
        [coder encodeObject:base forKey:@"NS.base"];
        [coder encodeObject:[self relativeString] forKey:@"NS.relative"];
    } else {
        [coder encodeObject:[self relativeString]];
        [coder encodeObject:base];
    }
}

- (BOOL)isEqual:(id)other
{
    return self == other ||
           ([other isKindOfClass:[NSURL class]] && [[self relativeString] isEqual:[other relativeString]] &&
            (base == [other baseURL] || [base isEqual:[other baseURL]]));
}

- (NSUInteger)hash
{
    return [[self relativeString] hash];
}

- (NSString *)description
{
    return base ? [NSString stringWithFormat:@"%@ -- %@", [self relativeString], base] : [self relativeString];
}

- (NSString *)relativeString
{
    return stringOf(text->text());
}

- (NSURL *)baseURL
{
    return base;
}

- (NSURL *)absoluteURL
{
    return base ? [newURL(text->resolvedAgainst(textOfURL([base absoluteURL])), nil) autorelease] : self;
}

- (NSString *)absoluteString
{
    return [[self absoluteURL] relativeString];
}

- (NSString *)absolutePart:(URLPart)part
{
    URLText whole = textOfURL([self absoluteURL]);
    return whole.has(part) ? stringOf(whole.part(part)) : nil;
}

- (NSString *)scheme
{
    return [self absolutePart:schemePart];
}

- (NSString *)user
{
    return stringOf(textOfURL([self absoluteURL]).unescapedPart(userPart));
}

- (NSString *)password
{
    return [self absolutePart:passwordPart];
}

- (NSString *)host
{
    NSString *host = stringOf(textOfURL([self absoluteURL]).unescapedPart(hostPart));
    return [host hasPrefix:@"["] && [host hasSuffix:@"]"] ? [host substringWithRange:NSMakeRange(1, [host length] - 2)]
                                                          : host;
}

- (NSNumber *)port
{
    NSString *port = [self absolutePart:portPart];
    return [port length] ? [NSNumber numberWithInt:[port intValue]] : nil;
}

- (NSString *)path
{
    return stringOf(textOfURL([self absoluteURL]).filePath());
}

- (NSString *)relativePath
{
    return stringOf(text->filePath());
}

- (NSString *)parameterString
{
    return text->has(parametersPart) ? stringOf(text->part(parametersPart)) : nil;
}

- (NSString *)query
{
    return text->has(queryPart) ? stringOf(text->part(queryPart)) : nil;
}

- (NSString *)fragment
{
    return text->has(fragmentPart) ? stringOf(text->part(fragmentPart)) : nil;
}

- (NSString *)resourceSpecifier
{
    return text->has(schemePart) ? stringOf(text->text().substr(text->part(schemePart).size() + 1))
                                 : [self relativeString];
}

- (BOOL)isFileURL
{
    return textOfURL([self absoluteURL]).isFileURL();
}

@end

// Subclasses of somebody else are made as GNUstep makes them.
static id initWithString(id self, SEL selector, NSString *text, NSURL *base)
{
    if (!text || [self class] != [NSURL class])
        return initWithStringBefore(self, selector, text, base);
    [self release];
    return newURL(URLText::parse(unitsOf(text)), base);
}

static id initWithFolder(id self, SEL selector, NSString *path, BOOL isFolder)
{
    if ([path length] == 0 || [self class] != [NSURL class])
        return initWithFolderBefore(self, selector, path, isFolder);
    [self release];
    NSURL *currentFolder = nil;
    if (![path hasPrefix:@"/"]) {
        Units current = unitsOf([[NSFileManager defaultManager] currentDirectoryPath]);
        currentFolder = [newURL(URLText::ofPath(current, true), nil) autorelease];
    }
    Units names = normalized(unitsOf(path), kCFStringNormalizationFormD);
    return newURL(URLText::ofPath(names, isFolder), currentFolder);
}

static id initWithPath(id self, SEL selector, NSString *path)
{
    BOOL isFolder = NO;
    if ([path length] == 0 || [self class] != [NSURL class])
        return initWithPathBefore(self, selector, path);
    [[NSFileManager defaultManager] fileExistsAtPath:path isDirectory:&isFolder];
    return initWithFolder(self, selector, path, isFolder);
}

// The part of the object that is GNUstep's holds the same text where GNUstep takes it.
NSURL *platform::newURL(const std::optional<URLText> &text, NSURL *base)
{
    if (!text)
        return nil;
    auto make = [](NSString *string) -> PlatformURL * {
        @try {
            return initWithStringBefore([PlatformURL alloc], @selector(initWithString:relativeToURL:), string, nil);
        } @catch (NSException *) {
            return nil;
        }
    };
    PlatformURL *url = make(stringOf(text->text()));
    if (!url)
        url = make(@"x");
    url->text = new URLText(*text);
    url->base = [base retain];
    return url;
}

URLText platform::textOfURL(NSURL *url)
{
    if ([url isKindOfClass:[PlatformURL class]])
        return *static_cast<PlatformURL *>(url)->text;
    return URLText::parse(unitsOf([url relativeString])).value_or(*URLText::parse({}));
}

__attribute__((constructor)) static void install()
{
    initWithStringBefore = replaceMethod("NSURL", "initWithString:relativeToURL:", initWithString);
    initWithPathBefore = replaceMethod("NSURL", "initFileURLWithPath:", initWithPath);
    initWithFolderBefore = replaceMethod("NSURL", "initFileURLWithPath:isDirectory:", initWithFolder);
}
