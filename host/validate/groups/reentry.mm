// Calls that come back in. While a member of the class works, host code runs: an observer of the notification that a
// setter posts, or whatever the host does in the middle of an entry point. It calls other members, dictionaries inside
// dictionaries among them, and neither call may disturb the other: also where they do not nest, because the host has
// another stack go on, and where host code leaves the inner one with an exception and swallows that.
#include "host/isolation/host_exceptions.h"
#include "host/isolation/other_stack.h"
#include "host/validate/case.h"
#include "host/validate/rows.h"

#import <Foundation/Foundation.h>

#include <algorithm>
#include <functional>
#include <optional>

@interface ValidationObserver : NSObject {
@public
    std::function<void()> *body;
}
- (void)defaultsChanged:(NSNotification *)notification;
@end

@implementation ValidationObserver
- (void)defaultsChanged:(NSNotification *)notification
{
    (void)notification;
    (*body)();
}
@end

namespace validate {

using host::Value;

namespace {

// How host code leaves the inner call.
struct Leaving {
    const char *name;
    void (*leave)();
    void (*swallowIn)(const std::function<void()> &body);
};

const Leaving kLeavings[] = {
    {"host-exception", isolation::throwHostException,
     [](const std::function<void()> &body) { isolation::swallowedIn(body); }},
    {"foreign-object", [] { throwForCase(Throwing::Foreign); },
     [](const std::function<void()> &body) {
         @try {
             body();
         } @catch (NSObject *thrown) {
             if (thrown != foreignObject())
                 @throw;
         }
     }},
};

// What the intruder does: a getter and a setter whose values are dictionaries inside dictionaries. It keeps the counts
// of the host and the log as they are.
class Intruder {
public:
    explicit Intruder(const Leaving *leaving = nullptr) : _leaving(leaving) {}

    // Runs unless it is running already.
    void comeIn()
    {
        if (_inside && _leaving)
            _leaving->leave();
        if (_inside)
            return;
        _inside = true;
        _visits++;
        visit([this] { readNested(); });
        visit([this] { writeNested(); });
        _inside = false;
    }
    long visits() const { return _visits; }
    // Checked after the call: a failure cannot be thrown through the plug-in.
    void expectUndisturbed() const { expect(_trouble.empty(), "the inner call is disturbed: " + _trouble); }

private:
    void visit(const std::function<void()> &body)
    {
        if (_leaving)
            _leaving->swallowIn(body);
        else
            body();
    }

    void readNested()
    {
        StandIn standIn;
        NSDictionary *inner = [NSDictionary dictionaryWithObject:@"deep" forKey:@"inside"];
        standIn.answerObject("dictionaryForKey:", [NSDictionary dictionaryWithObject:inner forKey:@"outside"]);
        Value instance = theHost().newInstance(kClass);
        standIn.carryIn(instance);
        Value read =
            theHost().invoke(methodOf("dictionaryForKey(key as string) as dictionary"), instance, {"Inner"}).result;
        note(shown(read), "{\"outside\": {\"inside\": \"deep\"}}");
    }

    void writeNested()
    {
        StandIn standIn;
        Value instance = theHost().newInstance(kClass);
        standIn.carryIn(instance);
        Value nested = Value::dictionary({{"outside", Value::dictionary({{"inside", "deep"}})}});
        theHost().invoke(methodOf("setDictionaryValue(key as string, value as dictionary)"), instance,
                         {"Inner", nested});
        note(standIn.messages().empty() ? "" : standIn.messages()[0],
             "setObject:{\"outside\": {\"inside\": \"deep\"}} forKey:\"Inner\"");
    }

    void note(const std::string &actual, const std::string &expected)
    {
        if (actual != expected && _trouble.empty())
            _trouble = actual + ", and should be " + expected;
    }

    const Leaving *_leaving;
    bool _inside = false;
    long _visits = 0;
    std::string _trouble;
};

} // namespace

// Those of a further call: the first one has loaded what is loaded once.
static std::vector<std::string> entriesCalledBy(const Row &row)
{
    std::vector<std::string> called;
    for (bool isFirst : {true, false}) {
        runRow(row, {}, Throwing::Nothing, nullptr, [&] {
            for (const host::EntryPointInfo &entry : theHost().entryPoints())
                if (!isFirst && entry.calls > 0)
                    called.push_back(entry.name);
        });
    }
    return called;
}

// Runs the row; the host does this at the start of each call of the entry point, where the intruder must have come in.
static void runIntruded(
    const Row &row, const std::string &entry, Intruder &intruder, const std::function<void()> &beforeCall,
    const std::function<void()> &afterwards = [] {})
{
    runRow(
        row, {}, Throwing::Nothing, [&] { theHost().beforeCall(entry, beforeCall); },
        [&] {
            afterwards();
            theHost().beforeCall(entry, nullptr);
        });
    expect(intruder.visits() > 0, entry + " is not called again");
    intruder.expectUndisturbed();
}

// The host calls back in at the start of each call of each entry point that the row uses, one entry after the other.
static void intrudeThroughEntries(const Row &row)
{
    for (const std::string &entry : entriesCalledBy(row)) {
        Intruder intruder;
        runIntruded(row, entry, intruder, [&] { intruder.comeIn(); });
    }
}

// The intruder comes in on a stack of its own and stands still in its own calls of the entry point: the two calls hand
// over to each other there, and the intruder's ends last. The host tells by nesting alone whose call has raised, so
// calls that raise are left to the other cases.
static void interleaveAtEntries(const Row &row)
{
    const std::vector<std::string> entries = entriesCalledBy(row);
    if (std::find(entries.begin(), entries.end(), "REALRaiseException") != entries.end())
        return;
    for (const std::string &entry : entries) {
        Intruder intruder;
        isolation::OtherStack other;
        auto handOver = [&] {
            if (other.isHere())
                other.standStill();
            else if (other.isUnderWay())
                other.goOn();
            else if (!other.hasStarted())
                other.start([&] {
                    host::CocoaPool pool;
                    intruder.comeIn();
                });
        };
        runIntruded(row, entry, intruder, handOver, [&] { other.finish(); });
    }
}

// The inner call ends in its first call of the entry point. What unlocks is left out: a lock that could not be given
// back stays.
static void leaveInnerCalls(const Row &row, const Leaving &leaving)
{
    for (const std::string &entry : entriesCalledBy(row)) {
        if (entry.find("Unlock") != std::string::npos)
            continue;
        Intruder intruder(&leaving);
        runIntruded(row, entry, intruder, [&] { intruder.comeIn(); });
    }
}

// --- An observer of the notification, with a real defaults object ----------------------------------------------------

namespace {

struct Setter {
    const char *name;
    Value (*value)();
    const char *getter;
    const char *read; // what the getter gives afterwards
};

const Setter kSetters[] = {
    {"setIntegerValue", [] { return Value(7); }, "integerForKey", "int32 7"},
    {"setFloatValue", [] { return Value(1.5f); }, "floatForKey", "single 1.5"},
    {"setDoubleValue", [] { return Value(2.25); }, "doubleForKey", "double 2.25"},
    {"setBoolValue", [] { return Value(true); }, "boolForKey", "true"},
    {"setStringValue", [] { return Value("Text"); }, "stringForKey", "\"Text\""},
    {"setURLValue", [] { return Value("http://example.com/"); }, "URLForKey", "\"http://example.com/\""},
    {"setDataValue", [] { return Value::memoryBlock("ab"); }, "dataForKey", "<6162>"},
    {"setFileValue", [] { return Value::folderItem("/etc/hosts"); }, "fileForKey", "file /etc/hosts"},
    {"setVariantValue",
     [] {
         return Value::variants({1, "x", Value::dictionary({{"k", 2}})});
     },
     "variantForKey", "[int32 1, \"x\", {\"k\": int32 2}]"},
    {"setDictionaryValue",
     [] {
         return Value::dictionary({{"k", Value::dictionary({{"l", 3}})}});
     },
     "dictionaryForKey", "{\"k\": {\"l\": int32 3}}"},
    {"setStringArrayValue",
     [] {
         return Value::strings({"first", "second"});
     },
     "stringArrayForKey", "[\"first\", \"second\"]"},
    {"setArrayValue",
     [] {
         return Value::variants({1, "x"});
     },
     "arrayForKey", "[int32 1, \"x\"]"},
};

} // namespace

static void intrudeThroughObserver(const Setter &setter)
{
    startHost({"2013.03"});
    {
        Value defaults = standardUserDefaults();
        Intruder intruder;
        int notices = 0;
        std::function<void()> body = [&] {
            notices++;
            intruder.comeIn();
            if (notices == 1) // the second store from inside posts once more, and ends there
                call(defaults, setter.name, {"FromInside", setter.value()});
        };
        ValidationObserver *observer = [[[ValidationObserver alloc] init] autorelease];
        observer->body = &body;
        [[NSNotificationCenter defaultCenter] addObserver:observer
                                                 selector:@selector(defaultsChanged:)
                                                     name:NSUserDefaultsDidChangeNotification
                                                   object:nil];
        call(defaults, setter.name, {"FromOutside", setter.value()});
        [[NSNotificationCenter defaultCenter] removeObserver:observer];
        expect(notices >= 2, "the observer was called " + std::to_string(notices) + " times");
        intruder.expectUndisturbed();
        for (const char *key : {"FromOutside", "FromInside"})
            expectEqual(shown(call(defaults, setter.getter, {key})), setter.read, key);
    }
    expectBalance();
}

void addReentry(const Settings &settings, Batches &batches)
{
    for (const std::string &profile : profilesAt(settings.level, {"2011.4", "2012.2", "2014.1"})) {
        for (bool family : {true, false}) {
            Played played = {profile, family};
            Batch batch;
            batch.prepare = [=] { startHost(played); };
            for (const Row &row : rows()) {
                batch.add("reentry/entries" + played.path() + row.name, [&row] { intrudeThroughEntries(row); });
                batch.add("reentry/interleaved" + played.path() + row.name, [&row] { interleaveAtEntries(row); });
            }
            batches.push_back(batch);

            batch.cases.clear();
            batch.losesMemory = true; // what the inner call has of Core Foundation in hand
            for (const Leaving &leaving : kLeavings)
                for (const Row &row : rows())
                    batch.add(std::string("reentry/") + leaving.name + played.path() + row.name,
                              [&] { leaveInnerCalls(row, leaving); });
            batches.push_back(std::move(batch));
        }
    }
    for (const Setter &setter : kSetters)
        batches.emplace_back().add(std::string("reentry/observer/") + setter.name,
                                   [&setter] { intrudeThroughObserver(setter); });
}

} // namespace validate
