#pragma once

#include <Foundation/NSObjCRuntime.h>

typedef struct _NSPoint {
    CGFloat x;
    CGFloat y;
} NSPoint;

typedef struct _NSSize {
    CGFloat width;
    CGFloat height;
} NSSize;

typedef struct _NSRect {
    NSPoint origin;
    NSSize size;
} NSRect;

typedef struct _NSRange {
    NSUInteger location;
    NSUInteger length;
} NSRange;

static inline NSPoint NSMakePoint(CGFloat x, CGFloat y)
{
    NSPoint point = {x, y};
    return point;
}

static inline NSSize NSMakeSize(CGFloat width, CGFloat height)
{
    NSSize size = {width, height};
    return size;
}

static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height)
{
    NSRect rect = {{x, y}, {width, height}};
    return rect;
}

static inline NSRange NSMakeRange(NSUInteger location, NSUInteger length)
{
    NSRange range = {location, length};
    return range;
}
