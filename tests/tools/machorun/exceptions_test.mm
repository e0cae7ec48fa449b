// Objective-C exceptions between an image and this process, as the 32-bit macOS runtime delivers them.
#include "tests/tools/machorun/callbacks.h"
#include "tests/tools/machorun/loaded_image.h"

#include <Foundation/Foundation.h>

enum { kBody = 1, kCatch = 2, kFinally = 4, kOuterCatch = 8, kAfter = 16 }; // as the image counts

class Exceptions : public LoadedImage {
protected:
    NSString *const raisedName = [NSString stringWithUTF8String:kRaisedName];
};
INSTANTIATE_FOR_EVERY_IMAGE(Exceptions);

TEST_P(Exceptions, WithoutOneTheBodyAndFinallyRun)
{
    EXPECT_EQ(call<int>("tryCatchFinally", doNothing), kBody | kFinally | kAfter);
}

TEST_P(Exceptions, CatchTakesWhatThisProcessRaises)
{
    EXPECT_EQ(call<int>("tryCatchFinally", raiseNamed), kCatch | kFinally | kAfter);
    EXPECT_TRUE([call<id>("nameOfCaught", raiseNamed) isEqual:raisedName]);
}

TEST_P(Exceptions, CatchTakesWhatFoundationRaises)
{
    EXPECT_TRUE([call<id>("nameOfCaught", raiseFromFoundation) isEqual:NSInvalidArgumentException]);
}

TEST_P(Exceptions, CatchTakesSubclasses)
{
    EXPECT_TRUE([call<id>("nameOfCaught", raiseSubclass) isEqual:@"Subclass"]);
}

TEST_P(Exceptions, CatchTakesWhatTheImageThrows)
{
    EXPECT_EQ(call<int>("throwOwn", static_cast<id>(@"Own")), 1);
}

TEST_P(Exceptions, HandlerOfAnotherClassIsPassed)
{
    EXPECT_EQ(call<int>("passesHandlerOfOtherClass", raiseNamed), kFinally | kOuterCatch);
}

TEST_P(Exceptions, RethrowReachesTheOuterHandler)
{
    EXPECT_EQ(call<int>("rethrows", raiseNamed, static_cast<id>(raisedName)), kCatch | kOuterCatch);
}

TEST_P(Exceptions, ObjectsOfAnyClassCanBeThrown)
{
    EXPECT_EQ(call<int>("catchesThrownString"), kOuterCatch);
}

TEST_P(Exceptions, ExceptionCrossesTheImageToThisProcess)
{
    static void (*callWithoutTry)(void (*)());
    callWithoutTry = function<void(void (*)())>("callWithoutTry");
    EXPECT_EQ(nameOfException([] { callWithoutTry(raiseNamed); }), kRaisedName);
}

TEST_P(Exceptions, InnermostHandlerWinsWhenItIsThisProcesses)
{
    setNested(function<void(void (*)())>("callWithoutTry"), raiseNamed);
    EXPECT_EQ(call<int>("tryCatchFinally", callNestedInsideTry), kBody | kFinally | kAfter);
    EXPECT_TRUE(nestedWasCaughtHere());
}

TEST_P(Exceptions, InnermostHandlerWinsWhenItIsTheImages)
{
    static int (*tryCatchFinally)(void (*)());
    static int passed;
    tryCatchFinally = function<int(void (*)())>("tryCatchFinally");
    EXPECT_EQ(nameOfException([] { passed = tryCatchFinally(raiseNamed); }), "");
    EXPECT_EQ(passed, kCatch | kFinally | kAfter);
}

TEST_P(Exceptions, DestructorsAreSkippedAsByLongjmp)
{
    int destroyed = 0;
    EXPECT_EQ(call<int>("catchesAcrossGuard", &destroyed), kCatch);
    EXPECT_EQ(destroyed, 0);
}

TEST_P(Exceptions, DestructorsAreSkippedAlsoOnTheWayToThisProcess)
{
    static void (*callWithGuard)(void (*)(), int *);
    static int destroyed;
    callWithGuard = function<void(void (*)(), int *)>("callWithGuard");
    EXPECT_EQ(nameOfException([] { callWithGuard(raiseNamed, &destroyed); }), kRaisedName);
    EXPECT_EQ(destroyed, 0);
    callWithGuard(doNothing, &destroyed);
    EXPECT_EQ(destroyed, 1);
}

TEST_P(Exceptions, HandlerIsFoundByItsFrame)
{
    EXPECT_EQ(call<int>("catchesAtDepth", 6, 3), 103);
}

TEST_P(Exceptions, SynchronizedLockIsReleased)
{
    id object = [[[NSObject alloc] init] autorelease];
    EXPECT_EQ(call<int>("releasesLockOnException", object, raiseNamed), kCatch | kAfter);
    EXPECT_EQ(call<int>("releasesLockOnException", object, doNothing), kAfter);
}

TEST_P(Exceptions, VariablesWrittenInTheBodyAreSeenInTheHandler)
{
    EXPECT_EQ(call<int>("valueAtException", raiseNamed), 1);
}

TEST_P(Exceptions, ManyInARow)
{
    EXPECT_EQ(call<int>("catchesManyTimes", 2000), 2000);
}
