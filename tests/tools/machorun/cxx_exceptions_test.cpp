// C++ exceptions between an image and this process. Its runtime compares types by name, so both sides agree on them.
#include "tests/tools/machorun/callbacks.h"
#include "tests/tools/machorun/loaded_image.h"

#include <new>

enum { kNothing, kBadAlloc, kInt, kOther }; // as the image answers
enum { kObjCCaught = 2, kObjCFinally = 4, kObjCAfter = 16 };

class CxxExceptions : public LoadedImage {};
INSTANTIATE_FOR_EVERY_IMAGE(CxxExceptions);

TEST_P(CxxExceptions, CatchTakesWhatThisProcessThrowsAndDestructorsRun)
{
    int destroyed = 0;
    EXPECT_EQ(call<int>("catchesCxx", throwBadAlloc, &destroyed), kBadAlloc);
    EXPECT_EQ(call<int>("catchesCxx", throwInt, &destroyed), kInt);
    EXPECT_EQ(call<int>("catchesCxx", throwDouble, &destroyed), kOther);
    EXPECT_EQ(destroyed, 3);
}

TEST_P(CxxExceptions, OwnClassesAreCaughtByTheirBase)
{
    EXPECT_EQ(call<int>("catchesOwnByBase", 9), 9);
}

TEST_P(CxxExceptions, ExceptionCrossesTheImageToThisProcess)
{
    int destroyed = 0;
    EXPECT_THROW(call<void>("callWithGuard", throwBadAlloc, &destroyed), std::bad_alloc);
    EXPECT_EQ(destroyed, 1);
}

TEST_P(CxxExceptions, ObjectiveCHandlersAreLeftOnTheWay)
{
    EXPECT_EQ(call<int>("catchesBehindTry", throwBadAlloc), kBadAlloc);
    // The @try that was left must not be taken for an open one.
    EXPECT_EQ(call<int>("tryCatchFinally", raiseNamed), kObjCCaught | kObjCFinally | kObjCAfter);
}

TEST_P(CxxExceptions, CatchAllSeesNoObjectiveCException)
{
    static int (*catchesAll)(void (*)());
    static int caught;
    catchesAll = function<int(void (*)())>("catchesAll");
    caught = kNothing;
    EXPECT_EQ(nameOfException([] { caught = catchesAll(raiseNamed); }), kRaisedName);
    EXPECT_EQ(caught, kNothing);
    EXPECT_EQ(catchesAll(throwInt), kOther);
}

TEST_P(CxxExceptions, NewAndDeleteWork)
{
    EXPECT_EQ(call<int>("allocates", 1000u), 17);
}
