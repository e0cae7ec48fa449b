// Calls that do not nest, and calls that end in the middle. A host has threads that hand over to each other: a call can
// stand still in any of the services and methods that it asks of the host, while another one begins, ends, or stands
// still, too. Host code can leave such a place with an exception of its own or of Cocoa. Whatever happens, each call
// gives back what it holds, nothing else, and not before it is done with it: the host's ledger tells which handles are
// held.
#include "host/isolation/host_exceptions.h"
#include "host/isolation/other_stack.h"
#include "tests/bridge/crossing.h"

#include <map>

using host::Value;

namespace {

// Called at each place where a call is in the host's hands; `step` counts them for the call at hand.
std::function<void()> atEachStep;

void step()
{
    if (atEachStep)
        atEachStep();
}

// The methods of a Dictionary are host code, too.
void (*hostSetValue)(void *, void *, void *);
void *(*hostValue)(void *, void *);
void *(*hostKey)(void *, int32_t);

void setValue(void *dictionary, void *key, void *value)
{
    step();
    hostSetValue(dictionary, key, value);
}

void *value(void *dictionary, void *key)
{
    step();
    return hostValue(dictionary, key);
}

void *key(void *dictionary, int32_t index)
{
    step();
    return hostKey(dictionary, index);
}

template <class Function>
void *put(Function *&hostMethod, Function *ours, void *method)
{
    hostMethod = reinterpret_cast<Function *>(method);
    return reinterpret_cast<void *>(ours);
}

void *loadMethod(void *object, const char *declaration)
{
    step();
    const std::string wanted = declaration;
    const host::MethodDescription *method =
        Value::borrowHandle(object).isA("Dictionary") ? host::Host::shared().findMethod("Dictionary", wanted) : nullptr;
    if (!method)
        return nullptr;
    if (wanted.find("Assigns") != std::string::npos)
        return put(hostSetValue, setValue, method->function);
    return wanted[0] == 'K' ? put(hostKey, key, method->function) : put(hostValue, value, method->function);
}

// One call of a member with values of its own.
struct Call {
    const char *member;
    bool isSetter;
    Value (*argument)();
    id (*answer)();
};

Value nestedDictionary()
{
    return Value::dictionary({{"k", Value::dictionary({{"inner", "text"}})}, {"block", Value::memoryBlock("bytes")}});
}

id nestedAnswer()
{
    NSDictionary *inner = [NSDictionary dictionaryWithObject:@"text" forKey:@"inner"];
    return [NSDictionary
        dictionaryWithObject:[NSArray arrayWithObjects:inner, [NSDate dateWithTimeIntervalSinceReferenceDate:0],
                                                       @"more", [NSNumber numberWithInt:5], nil]
                      forKey:@"k"];
}

const Call kCalls[] = {
    {"setDictionaryValue", true, nestedDictionary, nullptr},
    {"setVariantValue", true,
     [] {
         return Value::variants({nestedDictionary(), Value::date(2000, 1, 1), Value::strings({"a", "b"})});
     },
     nullptr},
    {"setArrayValue", true,
     [] {
         return Value::variants({"text", Value::memoryBlock("bytes"), 5});
     },
     nullptr},
    {"setStringArrayValue", true,
     [] {
         return Value::strings({"first", "second"});
     },
     nullptr},
    {"setDataValue", true, [] { return Value::memoryBlock("bytes"); }, nullptr},
    {"variantForKey", false, nullptr, nestedAnswer},
    {"dictionaryForKey", false, nullptr, nestedAnswer},
    {"arrayForKey", false, nullptr, [] { return id([NSArray arrayWithObjects:nestedAnswer(), @"text", nil]); }},
    {"stringArrayForKey", false, nullptr, [] { return id([NSArray arrayWithObjects:@"first", @"second", nil]); }},
    {"dataForKey", false, nullptr, [] { return id([NSData dataWithBytes:"bytes" length:5]); }},
    {"stringForKey", false, nullptr, [] { return id(@"text"); }},
};

std::string nameOf(const testing::TestParamInfo<Call> &info)
{
    return info.param.member;
}

// The handles that plug-ins hold now, each with its locks.
std::map<const void *, int32_t> heldNow()
{
    std::map<const void *, int32_t> held;
    for (const host::HandleInfo &info : host::Host::shared().imbalances())
        held[info.handle] = info.heldElsewhere();
    return held;
}

std::map<const void *, int32_t> without(std::map<const void *, int32_t> all,
                                        const std::map<const void *, int32_t> &some)
{
    for (const auto &[handle, locks] : some)
        if ((all[handle] -= locks) == 0)
            all.erase(handle);
    return all;
}

} // namespace

@interface CallDefaults : CrossingDefaults
@end

@implementation CallDefaults
- (NSString *)stringForKey:(NSString *)name
{
    (void)name;
    return answer;
}
@end

namespace {

class Calls : public CrossingTest, public testing::WithParamInterface<Call> {
protected:
    void SetUp() override
    {
        start("2013.03");
        log.emplace();
        for (const host::EntryPointInfo &entry : host.entryPoints())
            if (entry.offered && entry.name.find("Unlock") == std::string::npos && entry.name != "REALLoadObjectMethod")
                host.beforeCall(entry.name, step);
        host.replace("REALLoadObjectMethod", reinterpret_cast<void *>(loadMethod));
    }
    void TearDown() override
    {
        atEachStep = nullptr;
        log.reset();
        CrossingTest::TearDown();
    }

    // Makes a call of its own and tells, in words, what came of it.
    std::string make(const Call &call)
    {
        host::CocoaPool pool; // also for what a call that is left leaves behind
        Value instance = newEmptyInstance();
        CallDefaults *defaults = [[[CallDefaults alloc] init] autorelease];
        *static_cast<id *>(instance.instanceData()) = [defaults retain];
        defaults->answer = call.answer ? [call.answer() retain] : nil;
        const host::MethodDescription &member = method(call.member);
        Value name = "key";
        std::string outcome;
        if (call.isSetter) {
            Value argument = call.argument();
            reinterpret_cast<void (*)(void *, void *, void *)>(member.function)(instance.handle(), name.handle(),
                                                                                argument.handle());
            outcome = textOf(defaults->sent);
        } else {
            void *result =
                reinterpret_cast<void *(*)(void *, void *)>(member.function)(instance.handle(), name.handle());
            outcome = result ? Value::adopt(result).describe() : "nothing";
        }
        return outcome;
    }

    // How many steps a call takes once the entry points are found.
    int stepsOf(const Call &call)
    {
        make(call);
        int steps = 0;
        atEachStep = [&] { steps++; };
        expected = make(call);
        atEachStep = nullptr;
        return steps;
    }

    std::string expected;
    std::optional<support::LogCapture> log;
};

TEST_P(Calls, ThatStandStillInTurnHoldWhatIsTheirs)
{
    const int steps = stepsOf(GetParam());
    ASSERT_GT(steps, 1);
    const std::string alone = expected;
    // This one stands still at `first`, the other one, on another stack, at `second`; then this one ends, then that
    // one.
    for (int first = 0; first < steps; first++) {
        for (int second = 0; second < steps; second++) {
            std::map<const void *, int32_t> heldHere, heldThere;
            std::string outcomeThere;
            int stepsHere = 0, stepsThere = 0;
            isolation::OtherStack other; // a call that is served from what another one loaded has fewer steps
            atEachStep = [&] {
                if (!other.isHere()) {
                    if (stepsHere++ != first)
                        return;
                    heldHere = heldNow();
                    other.start([&] { outcomeThere = make(GetParam()); });
                } else if (stepsThere++ == second) {
                    heldThere = without(heldNow(), heldHere);
                    other.standStill();
                }
            };
            const std::string outcomeHere = make(GetParam());
            if (!other.hasStarted())
                continue; // this one has fewer steps by now
            ASSERT_EQ(heldNow(), heldThere) << "this one ends, from " << first << ", with the other one at " << second;
            other.finish();
            ASSERT_EQ(outcomeHere, alone) << first << ", " << second;
            ASSERT_EQ(outcomeThere, alone) << first << ", " << second;
            ASSERT_TRUE(heldNow().empty()) << first << ", " << second;
            ASSERT_TRUE(host.faults().empty()) << first << ", " << second << ": " << host.faults()[0];
        }
    }
}

TEST_P(Calls, ThatHostCodeLeavesWithAnExceptionOfItsOwnGiveBackWhatTheyHeld)
{
    const int steps = stepsOf(GetParam());
    for (int last = 0; last < steps; last++) {
        int seen = 0;
        atEachStep = [&] {
            if (seen++ == last)
                isolation::throwHostException();
        };
        const bool wasLeft = isolation::swallowedIn([&] { make(GetParam()); });
        EXPECT_EQ(wasLeft, seen > last) << last;
        atEachStep = nullptr;
        ASSERT_TRUE(heldNow().empty()) << "left at " << last;
    }
    EXPECT_EQ(make(GetParam()), expected);
}

TEST_P(Calls, ThatHostCodeLeavesWithAnExceptionOfCocoaGiveBackWhatTheyHeld)
{
    const int steps = stepsOf(GetParam());
    for (int last = 0; last < steps; last++) {
        int seen = 0;
        atEachStep = [&] {
            if (seen++ == last)
                [NSException raise:@"NSTestException" format:@"of host code"];
        };
        @try {
            make(GetParam());
        } @catch (NSException *) { // in a step before the guard
        }
        atEachStep = nullptr;
        host.takePendingExceptions();
        ASSERT_TRUE(heldNow().empty()) << "left at " << last;
    }
    EXPECT_EQ(make(GetParam()), expected);
}

TEST_P(Calls, InsideWhichAnotherOneIsLeftAndSwallowedGoOnUndisturbed)
{
    const int steps = stepsOf(GetParam());
    const std::string alone = expected;
    for (int outer = 0; outer < steps; outer++) {
        for (int inner = 0; inner < steps; inner++) {
            int seenOutside = 0, seenInside = 0;
            bool inside = false;
            atEachStep = [&] {
                if (inside) {
                    if (seenInside++ == inner)
                        isolation::throwHostException();
                    return;
                }
                if (seenOutside++ != outer)
                    return;
                const auto heldOutside = heldNow();
                inside = true;
                isolation::swallowedIn([&] { make(GetParam()); });
                inside = false;
                EXPECT_EQ(heldNow(), heldOutside) << outer << ", " << inner;
            };
            ASSERT_EQ(make(GetParam()), alone) << outer << ", " << inner;
            atEachStep = nullptr;
            ASSERT_TRUE(heldNow().empty()) << outer << ", " << inner;
            ASSERT_TRUE(host.faults().empty()) << outer << ", " << inner << ": " << host.faults()[0];
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EachMember, Calls, testing::ValuesIn(kCalls), nameOf);

} // namespace
