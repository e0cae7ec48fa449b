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

// Ours stands before the host's, which is looked for once.
template <class Function>
void *put(Function *&hostMethod, Function *ours, const char *declaration)
{
    if (!hostMethod)
        hostMethod = reinterpret_cast<Function *>(host::Host::shared().findMethod("Dictionary", declaration)->function);
    return reinterpret_cast<void *>(ours);
}

void *loadMethod(void *object, const char *declaration)
{
    step();
    if (!Value::borrowHandle(object).isA("Dictionary"))
        return nullptr;
    if (declaration[0] == 'K')
        return put(hostKey, key, declaration);
    if (strstr(declaration, "Assigns"))
        return put(hostSetValue, setValue, declaration);
    return declaration[0] == 'V' ? put(hostValue, value, declaration) : nullptr; // a FolderItem's
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
    NSArray *array = [NSArray arrayWithObjects:inner, [NSDate dateWithTimeIntervalSinceReferenceDate:0], nil];
    return [NSDictionary dictionaryWithObject:array forKey:@"k"];
}

const Call kCalls[] = {
    {"setDictionaryValue", true, nestedDictionary, nullptr},
    {"setVariantValue", true,
     [] {
         return Value::variants({Value::dictionary({{"k", 5}}), Value::date(2000, 1, 1), Value::strings({"a"})});
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
    {"arrayForKey", false, nullptr,
     [] { return id([NSArray arrayWithObjects:nestedAnswer(), [NSNumber numberWithInt:5], nil]); }},
    {"stringArrayForKey", false, nullptr, [] { return id([NSArray arrayWithObjects:@"first", @"second", nil]); }},
    {"dataForKey", false, nullptr, [] { return id([NSData dataWithBytes:"bytes" length:5]); }},
    {"stringForKey", false, nullptr, [] { return id(@"text"); }},
};

std::string nameOf(const testing::TestParamInfo<Call> &info)
{
    return info.param.member;
}

// Handles that plug-ins hold, each with its locks.
using Held = std::map<const void *, int32_t>;

Held heldNow()
{
    const host::LedgerMark now = host::Host::shared().mark();
    return Held(now.heldElsewhere.begin(), now.heldElsewhere.end());
}

Held without(Held all, const Held &some)
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

    // This call stands still at one of its steps, the other one, on another stack, begins and stands still at one of
    // its own. Then this one ends, then that one; or this one goes on to its next step, that one ends, then this one.
    // What either has ended with, the other still holds what it held.
    void interleave(const Call &callHere, int pauseHere, const Call &callThere, int pauseThere, bool thereEndsFirst)
    {
        Held heldHere, heldThere;
        int stepHere = 0, stepThere = 0;
        outcomeThere = expected; // where this call is served from what another one loaded, and has fewer steps
        isolation::OtherStack other;
        atEachStep = [&] {
            if (other.isHere()) {
                if (stepThere++ != pauseThere)
                    return;
                heldThere = without(heldNow(), heldHere);
                other.standStill();
            } else if (stepHere++ == pauseHere) {
                heldHere = heldNow();
                other.start([&] { outcomeThere = make(callThere); });
            } else if (thereEndsFirst && other.isUnderWay()) {
                heldHere = without(heldNow(), heldThere);
                other.finish();
                EXPECT_EQ(heldNow(), heldHere);
            }
        };
        outcomeHere = make(callHere);
        if (other.isUnderWay())
            EXPECT_EQ(heldNow(), heldThere);
        other.finish();
        atEachStep = nullptr;
    }

    std::string expected; // of the call whose steps were counted last
    std::string outcomeHere, outcomeThere;
    std::optional<support::LogCapture> log;
};

// Where two calls stand still: at each pair of their steps where both are of the same member, else so that each step of
// either is among them.
std::vector<std::pair<int, int>> pausesOf(bool sameMember, int stepsHere, int stepsThere)
{
    std::vector<std::pair<int, int>> pauses;
    for (int here = 0; here < stepsHere && sameMember; here++)
        for (int there = 0; there < stepsThere; there++)
            pauses.push_back({here, there});
    for (int i = 0; i < std::max(stepsHere, stepsThere) && !sameMember; i++)
        pauses.push_back({i % stepsHere, i % stepsThere});
    return pauses;
}

TEST_P(Calls, ThatStandStillInTurnHoldWhatIsTheirs)
{
    const Call &callHere = GetParam();
    const int stepsAlone = stepsOf(callHere);
    ASSERT_GT(stepsAlone, 1);
    const std::string alone = expected;
    for (const Call &callThere : kCalls) {
        const int stepsThereAlone = stepsOf(callThere);
        for (const auto &[pauseHere, pauseThere] :
             pausesOf(callHere.member == callThere.member, stepsAlone, stepsThereAlone)) {
            for (bool thereEndsFirst : {false, true}) {
                SCOPED_TRACE(callThere.member + (" there, at " + std::to_string(pauseThere)) + ", with this one at " +
                             std::to_string(pauseHere) + (thereEndsFirst ? ", ends first" : ", ends last"));
                interleave(callHere, pauseHere, callThere, pauseThere, thereEndsFirst);
                ASSERT_EQ(outcomeHere, alone);
                ASSERT_EQ(outcomeThere, expected);
                ASSERT_TRUE(heldNow().empty());
                ASSERT_TRUE(host.faults().empty()) << host.faults()[0];
                ASSERT_FALSE(HasFailure());
            }
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
