// How a defaults object comes into an instance of the class, and how it leaves.
#include "host/interface/records.h"
#include "tests/support/cocoa_method.h"
#include "tests/support/host_test.h"
#include "tests/support/log_capture.h"
#include "tests/support/plugin_under_test.h"
#include "tests/support/recording_defaults.h"
#include "tests/userdefaults/cocoa_objects.h"

using support::CocoaMethod;
using support::kClass;
using support::LogCapture;
using support::MethodOf;
using support::raisedOnce;
using support::RaisingMethod;
using support::RecordingDefaults;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr char kTooOften[] = "Constructor called too often. Object is already initialized.";
constexpr char kConstructor[] = "Constructor";
constexpr char kConstructorUser[] = "Constructor(username as string)";

class Lifecycle : public support::BlackBoxOnEveryHost {
protected:
    // Calls a constructor once more, with a name for the one that takes one.
    host::Outcome construct(const host::Value &instance, const std::string &constructor)
    {
        host::Arguments arguments;
        if (constructor == kConstructorUser)
            arguments = {cocoa::currentUser()};
        return host.invoke(method(constructor), instance, arguments);
    }
};

TEST_P(Lifecycle, InstanceWithoutConstructorIsEmpty)
{
    EXPECT_EQ(cocoa::carriedBy(newEmptyInstance()), nullptr);
}

TEST_P(Lifecycle, ConstructorsGiveEachInstanceADefaultsObjectOfItsOwn)
{
    host::Value first = host.newObject(kClass), second = host.newObject(kClass);
    host::Value third = host.newObject(kClass, {cocoa::currentUser()});
    EXPECT_NE(cocoa::carriedBy(first), nullptr);
    EXPECT_NE(cocoa::carriedBy(second), nullptr);
    EXPECT_NE(cocoa::carriedBy(third), nullptr);
    EXPECT_NE(cocoa::carriedBy(first), cocoa::carriedBy(second));
    EXPECT_NE(cocoa::carriedBy(first), cocoa::carriedBy(third));
    EXPECT_NE(cocoa::carriedBy(first), cocoa::standardUserDefaults());
}

TEST_P(Lifecycle, ConstructorsEnterTheInstanceInTheRegistryWithoutALock)
{
    for (const std::string constructor : {kConstructor, kConstructorUser}) {
        host::Value instance = newEmptyInstance();
        EXPECT_THAT(construct(instance, constructor).raised, IsEmpty());
        EXPECT_EQ(cocoa::registeredCarrier(cocoa::carriedBy(instance)), instance.handle());
        EXPECT_EQ(instance.lockCount(), 1);
    }
}

TEST_P(Lifecycle, DyingInstanceLeavesTheRegistryAndReleasesItsObjectOnce)
{
    RecordingDefaults standIn;
    const int carriers = [&] {
        host::Value instance = host.newObject(kClass);
        const int count = cocoa::registeredCarriers();
        host::Value other = newEmptyInstance();
        standIn.carryIn(other);
        EXPECT_EQ(standIn.retainCount(), 2);
        return count;
    }();
    EXPECT_EQ(cocoa::registeredCarriers(), carriers - 1);
    EXPECT_EQ(standIn.retainCount(), 1);
    EXPECT_THAT(standIn.messages(), IsEmpty());
}

TEST_P(Lifecycle, EmptyInstanceDiesQuietly)
{
    newEmptyInstance();
    EXPECT_THAT(host.takePendingExceptions(), IsEmpty());
}

TEST_P(Lifecycle, FinaliserMakesTheInstanceEmpty)
{
    auto finaliser = static_cast<const host::interface::ClassRecord9 *>(host.findClass(kClass)->record)->destructor;
    host::Value instance = host.newObject(kClass);
    void *carried = cocoa::carriedBy(instance);
    finaliser(instance.handle());
    EXPECT_EQ(cocoa::carriedBy(instance), nullptr);
    EXPECT_EQ(cocoa::registeredCarrier(carried), nullptr);
    finaliser(instance.handle()); // there is nothing left to release
}

INSTANTIATE_TEST_SUITE_P(Hosts, Lifecycle, support::everyProfile(), support::profileTestName);

// --- Constructors on an instance that carries an object already -------------------------------------------------

class SecondConstructor : public support::BlackBoxOnEveryHost {
protected:
    void expectRefused(const std::string &first, const std::string &second)
    {
        host::Value instance = newEmptyInstance();
        auto call = [&](const std::string &constructor) {
            return host.invoke(method(constructor), instance,
                               constructor == kConstructor ? host::Arguments{} : host::Arguments{cocoa::currentUser()});
        };
        EXPECT_THAT(call(first).raised, IsEmpty());
        void *carried = cocoa::carriedBy(instance);
        ASSERT_NE(carried, nullptr);
        EXPECT_TRUE(raisedOnce(call(second).raised, "UnsupportedOperationException", kTooOften));
        EXPECT_EQ(cocoa::carriedBy(instance), carried) << "the first object is kept";
        EXPECT_EQ(cocoa::registeredCarrier(carried), instance.handle());
    }
};

TEST_P(SecondConstructor, IsRefusedAndChangesNothing)
{
    expectRefused(kConstructor, kConstructor);
}

TEST_P(SecondConstructor, WithAUserIsRefusedAndChangesNothing)
{
    expectRefused(kConstructor, kConstructorUser);
    expectRefused(kConstructorUser, kConstructor);
    expectRefused(kConstructorUser, kConstructorUser);
}

INSTANTIATE_TEST_SUITE_P(Hosts, SecondConstructor, support::everyProfile(), support::profileTestName);

// --- The user's name --------------------------------------------------------------------------------------------

std::vector<void *> namesGiven;

// Initialisers that fail give up what was allocated for them.
void *noDefaultsForUser(void *self, void *, void *name)
{
    cocoa::release(self);
    namesGiven.push_back(name);
    return nullptr;
}

void *noDefaults(void *self, void *)
{
    cocoa::release(self);
    return nullptr;
}

// Cocoa makes defaults objects for itself: it has its own before a test takes the means away.
class ConstructorTest : public support::BlackBoxOn2013 {
protected:
    void SetUp() override
    {
        support::BlackBoxOn2013::SetUp();
        standardUserDefaults();
        instance = newEmptyInstance();
        carriers = cocoa::registeredCarriers();
    }
    void TearDown() override
    {
        instance = {};
        support::BlackBoxOn2013::TearDown();
    }
    host::Value instance;
    int carriers;
};

using UserConstructor = ConstructorTest;

TEST_F(UserConstructor, NullNameGoesToCocoaAsNil)
{
    CocoaMethod none("NSUserDefaults", "initWithUser:", MethodOf::Instance,
                     reinterpret_cast<void *>(noDefaultsForUser));
    host.invoke(method(kConstructorUser), instance, {host::Value::nullString()});
    host.invoke(method(kConstructorUser), instance, {host::Value::emptyString()});
    ASSERT_EQ(namesGiven.size(), 2u);
    EXPECT_EQ(namesGiven[0], nullptr);
    EXPECT_NE(namesGiven[1], nullptr);
}

TEST_F(UserConstructor, NilDefaultsLeaveTheInstanceEmptyWithoutAnError)
{
    CocoaMethod none("NSUserDefaults", "initWithUser:", MethodOf::Instance,
                     reinterpret_cast<void *>(noDefaultsForUser));
    EXPECT_THAT(host.invoke(method(kConstructorUser), instance, {cocoa::currentUser()}).raised, IsEmpty());
    EXPECT_EQ(cocoa::carriedBy(instance), nullptr);
    EXPECT_EQ(cocoa::registeredCarriers(), carriers);
    EXPECT_EQ(host.call(instance, "integerForKey", {"any"}).int32(), 0);
}

TEST_F(UserConstructor, InstanceLeftEmptyCanBeConstructedLater)
{
    {
        CocoaMethod none("NSUserDefaults", "init", MethodOf::Instance, reinterpret_cast<void *>(noDefaults));
        EXPECT_THAT(host.invoke(method(kConstructor), instance, {}).raised, IsEmpty());
        EXPECT_EQ(cocoa::carriedBy(instance), nullptr);
        EXPECT_EQ(cocoa::registeredCarriers(), carriers);
    }
    EXPECT_THAT(host.invoke(method(kConstructor), instance, {}).raised, IsEmpty());
    EXPECT_NE(cocoa::carriedBy(instance), nullptr);
}

// --- The end ----------------------------------------------------------------------------------------------------

void *initialised;

void *giveInitialised(void *self, void *)
{
    cocoa::release(self);
    return initialised;
}

using Finaliser = ConstructorTest;

// What Cocoa does while it releases the object must not find an instance that is about to die.
TEST_F(Finaliser, TakesTheInstanceOutOfTheRegistryBeforeItReleasesTheObject)
{
    std::vector<const void *> carriersSeen;
    initialised =
        cocoa::newObjectWithReleaseWatched([&] { carriersSeen.push_back(cocoa::registeredCarrier(initialised)); });
    CocoaMethod init("NSUserDefaults", "init", MethodOf::Instance, reinterpret_cast<void *>(giveInitialised));
    host.invoke(method(kConstructor), instance, {});
    ASSERT_EQ(cocoa::registeredCarrier(initialised), instance.handle());
    instance = {};
    EXPECT_THAT(carriersSeen, ElementsAre(nullptr));
}

// --- Cocoa raises -----------------------------------------------------------------------------------------------

class FailingLifecycle : public ConstructorTest {
protected:
    LogCapture log;
};

TEST_F(FailingLifecycle, RaisedByInitLeavesTheInstanceEmpty)
{
    RaisingMethod raising("NSUserDefaults", "init");
    auto raised = host.invoke(method(kConstructor), instance, {}).raised;
    EXPECT_TRUE(raisedOnce(raised, "NSExceptionKTZ", "raised by the test"));
    EXPECT_THAT(log.messages(), ElementsAre(support::kRaisingMethodLogLine));
    EXPECT_EQ(cocoa::carriedBy(instance), nullptr);
}

TEST_F(FailingLifecycle, RaisedByInitWithUserLeavesTheInstanceEmpty)
{
    RaisingMethod raising("NSUserDefaults", "initWithUser:");
    auto raised = host.invoke(method(kConstructorUser), instance, {cocoa::currentUser()}).raised;
    EXPECT_TRUE(raisedOnce(raised, "NSExceptionKTZ", "raised by the test"));
    EXPECT_THAT(log.messages(), ElementsAre(support::kRaisingMethodLogLine));
    EXPECT_EQ(cocoa::carriedBy(instance), nullptr);
}

TEST_F(FailingLifecycle, RaisedWhileReleasingLeavesTheWordAsItStood)
{
    auto finaliser = static_cast<const host::interface::ClassRecord9 *>(host.findClass(kClass)->record)->destructor;
    void *object = cocoa::newUnreleasableObject();
    *static_cast<void **>(instance.instanceData()) = object;
    finaliser(instance.handle());
    EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), "NSExceptionKTZ", "not released"));
    EXPECT_THAT(log.messages(), ElementsAre("A NSTestException: not released, Info: (null)\n"));
    EXPECT_EQ(cocoa::carriedBy(instance), object);
    *static_cast<void **>(instance.instanceData()) = nullptr;
    cocoa::releaseAllTheSame(object);
}

} // namespace
