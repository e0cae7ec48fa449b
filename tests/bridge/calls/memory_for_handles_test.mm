// Deep conversions hold more handles than fit into the frame of their call, and the plug-in asks for memory to write
// them down. Where there is none the call ends, with an exception in host code and nothing left locked; the host lives
// on. (Every test ends with a look at the locks of all handles.) This program's realloc comes before the system's.
#include "tests/bridge/crossing.h"
#include "tests/support/next_function.h"

#include <fstream>
#include <sstream>

using host::Value;

namespace {

// The mapping of code that the plug-in's functions lie in.
struct Code {
    uintptr_t first = 0, end = 0;
    bool has(const void *address) const
    {
        return first <= reinterpret_cast<uintptr_t>(address) && reinterpret_cast<uintptr_t>(address) < end;
    }
};

Code codeAround(const void *function)
{
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        Code code;
        char dash;
        std::istringstream(line) >> std::hex >> code.first >> dash >> code.end;
        if (code.has(function))
            return code;
    }
    return {};
}

Code plugin;
int granted = -1; // how many requests of the plug-in are still granted; without end when negative
bool wasRefused;

bool isRefused(const void *caller)
{
    if (granted < 0 || !plugin.has(caller))
        return false;
    if (granted-- > 0)
        return false;
    granted = 0; // all further ones, too
    return wasRefused = true;
}

} // namespace

extern "C" __attribute__((visibility("default"))) void *realloc(void *block, size_t size)
{
    static auto next = nextFunction<decltype(realloc)>("realloc");
    return isRefused(__builtin_return_address(0)) ? nullptr : next(block, size);
}

namespace {

const int kLevels = 40;

Value nestedValue()
{
    Value value = "innermost";
    for (int level = 0; level < kLevels; level++)
        value = level % 2 ? Value::dictionary({{"first", 1}, {"inner", value}}) : Value::variants({"first", value});
    return value;
}

id nestedObject()
{
    id object = @"innermost";
    for (int level = 0; level < kLevels; level++) {
        if (level % 2)
            object = [NSDictionary dictionaryWithObject:object forKey:@"inner"];
        else
            object = [NSArray arrayWithObjects:@"first", object, nil];
    }
    return object;
}

class MemoryForHandles : public CrossingTest {
protected:
    void SetUp() override
    {
        start();
        plugin = codeAround(method("setVariantValue").function);
        ASSERT_NE(plugin.end, 0u);
        carrier();
    }

    // Refuses the first request of the call and what comes after it, then the second one and so on, until the call
    // needs no more; tells how often it was refused. `call` looks at what is left of it and gives what it raised.
    int refuseEachRequest(const std::function<std::vector<host::RaisedException>()> &call)
    {
        for (int refused = 0;; refused++) {
            granted = refused;
            wasRefused = false;
            const std::vector<host::RaisedException> raised = call();
            granted = -1;
            if (!wasRefused) {
                EXPECT_TRUE(raised.empty());
                return refused;
            }
            EXPECT_TRUE(
                support::raisedOnce(raised, "OutOfMemoryException", "Failed to allocate memory for a conversion."));
            EXPECT_TRUE(host.imbalances().empty()) << refused;
        }
    }
};

} // namespace

TEST_F(MemoryForHandles, WithoutItASetterSendsNothing)
{
    Value value = nestedValue();
    for (const char *setter : {"setVariantValue", "setDictionaryValue"}) {
        const int refused = refuseEachRequest([&] {
            auto raised = tryToCocoa(value, setter);
            EXPECT_EQ(timesSent(), wasRefused ? 0 : 1);
            return raised;
        });
        EXPECT_GT(refused, 1) << setter;
        EXPECT_NE(textOf(sent()).find("innermost"), std::string::npos) << setter;
    }
}

TEST_F(MemoryForHandles, WithoutItAGetterGivesNothing)
{
    id object = nestedObject();
    for (const char *getter : {"variantForKey", "dictionaryForKey"}) {
        const int refused = refuseEachRequest([&] {
            host::Outcome outcome = tryToHost(object, getter);
            EXPECT_EQ(outcome.result.isNil(), wasRefused);
            return outcome.raised;
        });
        EXPECT_GT(refused, 1) << getter;
    }
}

TEST_F(MemoryForHandles, WithoutItAnArrayGetterGivesWhatItHasUpToThere)
{
    NSArray *array = [NSArray arrayWithObjects:@"x", nestedObject(), @"y", nil];
    const int refused = refuseEachRequest([&] {
        host::Outcome outcome = tryToHost(array, "arrayForKey");
        EXPECT_EQ(outcome.result.count(), wasRefused ? 1 : 3);
        return outcome.raised;
    });
    EXPECT_GT(refused, 1);
}
