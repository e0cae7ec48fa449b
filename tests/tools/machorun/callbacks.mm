#include "tests/tools/machorun/callbacks.h"

#include <Foundation/Foundation.h>

@interface RaisedSubclass : NSException
@end
@implementation RaisedSubclass
@end

const char kRaisedName[] = "RaisedByTheTest";

static void (*nestedFunction)(void (*)());
static void (*nestedArgument)();
static bool nestedCaught;

void doNothing() {}

void raiseNamed()
{
    [NSException raise:[NSString stringWithUTF8String:kRaisedName] format:@"reason %d", 1];
}

void raiseSubclass()
{
    @throw [RaisedSubclass exceptionWithName:@"Subclass" reason:@"none" userInfo:nil];
}

void raiseFromFoundation()
{
    [[NSMutableArray array] addObject:nil];
}

std::string nameOfException(void (*function)())
{
    @try {
        function();
    } @catch (NSException *exception) {
        return [[exception name] UTF8String];
    }
    return "";
}

void setNested(void (*function)(void (*)()), void (*argument)())
{
    nestedFunction = function;
    nestedArgument = argument;
    nestedCaught = false;
}

void callNestedInsideTry()
{
    @try {
        nestedFunction(nestedArgument);
    } @catch (NSException *) {
        nestedCaught = true;
    }
}

bool nestedWasCaughtHere()
{
    return nestedCaught;
}
