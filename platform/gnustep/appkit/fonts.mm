#include "platform/gnustep/appkit/fonts.h"

#include <string.h>

#pragma clang diagnostic ignored "-Wunused-parameter"

// Name, style, weight and traits of one font, as the enumerator lists them.
static NSArray *member(NSString *name, NSString *style, int weight, unsigned traits)
{
    return [NSArray
        arrayWithObjects:name, style, [NSNumber numberWithInt:weight], [NSNumber numberWithUnsignedInt:traits], nil];
}

@implementation PlatformFontEnumerator

- (void)enumerateFontsAndFamilies
{
    NSArray *plain = [NSArray
        arrayWithObjects:member(@"Plain", @"Regular", 5, 0), member(@"Plain-Bold", @"Bold", 9, NSBoldFontMask), nil];
    NSArray *fixed = [NSArray arrayWithObject:member(@"Fixed", @"Regular", 5, NSFixedPitchFontMask)];
    ASSIGN(allFontNames, ([NSArray arrayWithObjects:@"Plain", @"Plain-Bold", @"Fixed", nil]));
    ASSIGN(allFontFamilies, ([NSMutableDictionary dictionaryWithObjectsAndKeys:plain, @"Plain", fixed, @"Fixed", nil]));
}

- (NSString *)defaultSystemFontName
{
    return @"Plain";
}
- (NSString *)defaultBoldSystemFontName
{
    return @"Plain-Bold";
}
- (NSString *)defaultFixedPitchFontName
{
    return @"Fixed";
}

@end

@implementation PlatformFontMetrics

- (id)initWithFontName:(NSString *)name matrix:(const CGFloat *)fontMatrix screenFont:(BOOL)isScreenFont
{
    if (!(self = [super init]))
        return nil;
    CGFloat width = fontMatrix[0] * 0.6f;
    CGFloat height = fontMatrix[3];
    ASSIGNCOPY(fontName, name);
    ASSIGN(familyName, [[name componentsSeparatedByString:@"-"] objectAtIndex:0]);
    ASSIGN(fontDescriptor, [NSFontDescriptor fontDescriptorWithName:name size:fontMatrix[0]]);
    memcpy(matrix, fontMatrix, sizeof matrix);
    ascender = height * 0.8f;
    descender = -height * 0.2f;
    xHeight = height * 0.5f;
    capHeight = height * 0.7f;
    weight = [name hasSuffix:@"-Bold"] ? 9 : 5;
    isFixedPitch = [name isEqualToString:@"Fixed"];
    traits = [name hasSuffix:@"-Bold"] ? NSBoldFontMask : isFixedPitch ? NSFixedPitchFontMask : 0;
    maximumAdvancement = NSMakeSize(width, height);
    fontBBox = NSMakeRect(0, descender, width, height);
    mostCompatibleStringEncoding = NSUTF8StringEncoding;
    return self;
}

- (CGFloat)widthOfString:(NSString *)string
{
    return [string length] * maximumAdvancement.width;
}
- (NSSize)advancementForGlyph:(NSGlyph)glyph
{
    return NSMakeSize(maximumAdvancement.width, 0);
}
- (NSRect)boundingRectForGlyph:(NSGlyph)glyph
{
    return fontBBox;
}
- (BOOL)glyphIsEncoded:(NSGlyph)glyph
{
    return YES;
}
- (NSGlyph)glyphForCharacter:(unichar)character
{
    return character;
}
- (NSGlyph)glyphWithName:(NSString *)name
{
    return 0;
}
- (CGFloat)defaultLineHeightForFont
{
    return matrix[3];
}

@end
