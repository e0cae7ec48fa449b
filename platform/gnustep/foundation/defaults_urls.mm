#import <Foundation/Foundation.h>

// nil when the data is no archive. As unarchiveObjectWithData:, which loses its coder then.
static id objectInArchive(NSData *data)
{
    NSKeyedUnarchiver *coder = [NSKeyedUnarchiver alloc];
    @try {
        coder = [coder initForReadingWithData:data];
        id object = [[[coder decodeObjectForKey:@"root"] retain] autorelease];
        [coder finishDecoding];
        return object;
    } @catch (NSException *) {
        return nil;
    } @finally {
        [coder release];
    }
}

@implementation NSUserDefaults (PlatformURLs)

- (void)setURL:(NSURL *)url forKey:(NSString *)defaultName
{
    id value = nil;
    if ([url isFileURL])
        value = [[[url absoluteURL] path] stringByAbbreviatingWithTildeInPath];
    else if (url)
        value = [NSKeyedArchiver archivedDataWithRootObject:url];
    [self setObject:value forKey:defaultName];
}

- (NSURL *)URLForKey:(NSString *)defaultName
{
    id value = [self objectForKey:defaultName];
    if ([value isKindOfClass:[NSString class]])
        return [NSURL fileURLWithPath:[value stringByExpandingTildeInPath]];
    if (![value isKindOfClass:[NSData class]])
        return nil;
    id url = objectInArchive(value);
    return [url isKindOfClass:[NSURL class]] ? url : nil;
}

@end
