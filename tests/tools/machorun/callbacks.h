// Functions of the test program that the image calls.
#pragma once

#include <string>

void doNothing();

// Objective-C exceptions.
void raiseNamed();          // an NSException with the name kRaisedName
void raiseSubclass();       // one of a subclass of NSException
void raiseFromFoundation(); // GNUstep's own code raises
extern const char kRaisedName[];

// Calls `function` inside @try; the name of the NSException that it raised, or "" when it raised none.
std::string nameOfException(void (*function)());

// Calls the image back inside a @try of this program.
void setNested(void (*function)(void (*)()), void (*argument)());
void callNestedInsideTry();
bool nestedWasCaughtHere();

// C++ exceptions.
void throwBadAlloc();
void throwInt();
void throwDouble();
