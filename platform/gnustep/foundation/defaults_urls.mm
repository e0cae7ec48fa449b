#import <Foundation/Foundation.h>

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
    @try {
        id url = [NSKeyedUnarchiver unarchiveObjectWithData:value];
        return [url isKindOfClass:[NSURL class]] ? url : nil;
    } @catch (NSException *) { // the data is no archive
        return nil;
    }
}

@end
