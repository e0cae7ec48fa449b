// Classes and categories that the image defines.
#include "tests/tools/machorun/image/exported.h"

#include <Foundation/Foundation.h>

static int deallocated;

// Stands before its superclass in the list of classes when it is defined first.
@class ImageShape;

@interface ImageShape : NSObject {
    int sides_;
    NSString *label_;
    double size_;
}
+ (id)shapeWithSides:(int)sides;
- (int)sides;
- (double)size;
- (NSRange)span;
- (NSRect)frame;
- (NSString *)description;
@end

@interface ImageSquare : ImageShape
@end

@implementation ImageSquare
+ (id)shapeWithSides:(int)sides
{
    return [super shapeWithSides:sides + 1];
}
- (int)sides
{
    return [super sides] * 2;
}
- (NSRange)span
{
    NSRange span = [super span];
    span.length++;
    return span;
}
- (NSRect)frame
{
    NSRect frame = [super frame];
    frame.origin.x = 5;
    return frame;
}
@end

@implementation ImageShape
+ (id)shapeWithSides:(int)sides
{
    ImageShape *shape = [[self alloc] init];
    shape->sides_ = sides;
    shape->size_ = sides * 1.5;
    return [shape autorelease];
}
- (id)init
{
    self = [super init];
    if (self)
        label_ = @"shape";
    return self;
}
- (int)sides
{
    return sides_;
}
- (double)size
{
    return size_;
}
- (NSRange)span
{
    return NSMakeRange(sides_, 9);
}
- (NSRect)frame
{
    return NSMakeRect(1, 2, 3, sides_);
}
- (NSString *)description
{
    return [NSString stringWithFormat:@"<%@ of %d>", label_, sides_];
}
- (void)dealloc
{
    deallocated++;
    [super dealloc];
}
@end

@interface NSString (ImageAdditions)
- (NSUInteger)imageTwiceTheLength;
+ (id)imageGreeting;
@end

@implementation NSString (ImageAdditions)
- (NSUInteger)imageTwiceTheLength
{
    return 2 * [self length];
}
+ (id)imageGreeting
{
    return @"hello";
}
@end

EXPORTED id makeShape(int sides)
{
    return [ImageShape shapeWithSides:sides];
}
EXPORTED id makeSquare(int sides)
{
    return [ImageSquare shapeWithSides:sides];
}
EXPORTED int sidesOf(ImageShape *shape)
{
    return [shape sides];
}
EXPORTED double sizeOf(ImageShape *shape)
{
    return [shape size];
}
EXPORTED unsigned endOf(ImageShape *shape)
{
    return [shape span].location + [shape span].length;
}
EXPORTED float heightOf(ImageShape *shape)
{
    return [shape frame].size.height + [shape frame].origin.x;
}
EXPORTED unsigned twiceTheLength(NSString *string)
{
    return [string imageTwiceTheLength];
}
EXPORTED id greeting()
{
    return [NSString imageGreeting];
}
EXPORTED int deallocatedShapes()
{
    return deallocated;
}
