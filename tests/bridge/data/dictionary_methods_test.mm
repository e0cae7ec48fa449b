// The host's methods of a Dictionary: loaded anew for each Dictionary, kept during one walk, never used for another.
#include "tests/bridge/crossing.h"

using host::Value;

namespace {

const char kSetter[] = "Value(key As Variant, Assigns _value As Variant)";
const char kGetter[] = "Value(key As Variant) As Variant";
const char kKeyGetter[] = "Key(index As Integer) As Variant";

const std::vector<std::string> kMethods = {kSetter, kGetter, kKeyGetter};

// What the plug-in loads, in its order: for which Dictionary (counted from 0) and which method.
std::vector<void *> dictionaries;
std::vector<std::string> loaded;

void *loadMethod(void *object, const char *declaration)
{
    const host::MethodDescription *method = host::Host::shared().findMethod("Dictionary", declaration);
    if (!method || !Value::borrowHandle(object).isA("Dictionary"))
        return nullptr; // a FolderItem's, of which there is none here
    size_t number = std::find(dictionaries.begin(), dictionaries.end(), object) - dictionaries.begin();
    if (number == dictionaries.size())
        dictionaries.push_back(object);
    loaded.push_back(std::to_string(number) + " " + declaration);
    return method->function;
}

std::vector<std::string> threeOf(std::initializer_list<int> numbers)
{
    std::vector<std::string> expected;
    for (int number : numbers)
        for (const std::string &method : kMethods)
            expected.push_back(std::to_string(number) + " " + method);
    return expected;
}

class DictionaryMethods : public CrossingTest {
protected:
    void SetUp() override
    {
        start();
        host.replace("REALLoadObjectMethod", reinterpret_cast<void *>(loadMethod));
    }

    void forget()
    {
        dictionaries.clear();
        loaded.clear();
    }

    NSDictionary *dictionaryOf(const Value &value) { return toCocoaWith("setDictionaryValue", value); }
    Value hostDictionaryOf(NSDictionary *dictionary) { return toHostWith("dictionaryForKey", dictionary); }

    // One of text, whose walk ended in an exception the first time; its methods were the last to be loaded.
    Value dictionaryLeftByAnException()
    {
        support::LogCapture log;
        forget();
        Value dictionary = Value::dictionary({{"k", Value::strings({Value::nullString()})}});
        EXPECT_EQ(tryToCocoa(dictionary, "setDictionaryValue").size(), 1u);
        dictionary.put("k", "text");
        return dictionary;
    }

    void expectEntries(NSDictionary *dictionary, int count)
    {
        ASSERT_EQ([dictionary count], unsigned(count));
        for (int i = 0; i < count; i++) {
            NSString *key = [NSString stringWithFormat:@"k%d", i];
            EXPECT_TRUE([[dictionary objectForKey:key] isEqual:[NSNumber numberWithInt:i]]) << i;
        }
    }
};

Value entries(int count)
{
    Value dictionary = Value::dictionary();
    for (int i = 0; i < count; i++)
        dictionary.put("k" + std::to_string(i), i);
    return dictionary;
}

} // namespace

TEST_F(DictionaryMethods, AreLoadedOnceForAllEntriesOfADictionary)
{
    forget();
    Value five = entries(5);
    expectEntries(dictionaryOf(five), 5);
    EXPECT_EQ(loaded, threeOf({0}));

    forget();
    NSDictionary *source = dictionaryOf(five);
    forget();
    EXPECT_EQ(hostDictionaryOf(source).count(), 5);
    EXPECT_EQ(loaded, threeOf({0}));
}

TEST_F(DictionaryMethods, AreLoadedAfreshForTheSameDictionaryAfterAWholeWalk)
{
    forget();
    Value dictionary = entries(2);
    dictionaryOf(dictionary);
    dictionaryOf(dictionary);
    EXPECT_EQ(loaded, threeOf({0, 0})) << "a new Dictionary may have the address of one that is gone";
}

TEST_F(DictionaryMethods, OfAnInnerDictionaryNeverServeTheOuterOne)
{
    forget();
    Value inner = entries(3);
    Value outer =
        Value::dictionary({{"first", 1}, {"inner", inner}, {"second", 2}, {"inner again", inner}, {"third", 3}});
    NSDictionary *result = dictionaryOf(outer);
    ASSERT_EQ([result count], 5u);
    expectEntries([result objectForKey:@"inner"], 3);
    expectEntries([result objectForKey:@"inner again"], 3);
    EXPECT_TRUE([[result objectForKey:@"third"] isEqual:[NSNumber numberWithInt:3]]);
    EXPECT_EQ(loaded, threeOf({0, 1, 0, 1, 0}));

    forget();
    Value back = hostDictionaryOf(result);
    ASSERT_EQ(back.count(), 5);
    EXPECT_EQ(back.lookup("inner again").lookup("k2").int32(), 2);
    EXPECT_EQ(back.lookup("third").int32(), 3);
}

TEST_F(DictionaryMethods, AnEmptyInnerDictionaryTakesNothingOver)
{
    forget();
    Value outer = Value::dictionary({{"a", Value::dictionary()}, {"b", Value::dictionary()}, {"c", 3}});
    EXPECT_EQ([dictionaryOf(outer) count], 3u);
    EXPECT_EQ(loaded, threeOf({0})) << "nothing of an empty Dictionary is read";
}

TEST_F(DictionaryMethods, AnEmptyAnswerForgetsThemToo)
{
    forget();
    EXPECT_EQ(hostDictionaryOf([NSDictionary dictionary]).count(), 0);
    EXPECT_TRUE(loaded.empty());
}

// An exception leaves them as they were; the next walk through the same Dictionary starts where they are.
TEST_F(DictionaryMethods, StayAsTheyWereWhenCocoaRaisesInTheMiddle)
{
    Value dictionary = dictionaryLeftByAnException();
    EXPECT_EQ(loaded, threeOf({0}));
    EXPECT_EQ([dictionaryOf(dictionary) count], 1u);
    EXPECT_EQ(loaded, threeOf({0})) << "the same Dictionary still";
    EXPECT_EQ([dictionaryOf(dictionary) count], 1u);
    EXPECT_EQ(loaded, threeOf({0, 0})) << "and afresh after the whole walk";
}

TEST_F(DictionaryMethods, AreForgottenByAWalkThroughNoEntries)
{
    Value dictionary = dictionaryLeftByAnException();
    hostDictionaryOf([NSDictionary dictionary]);
    dictionaryOf(dictionary);
    EXPECT_EQ(loaded, threeOf({0, 0}));
}

TEST_F(DictionaryMethods, AreLeftAsTheyWereWhereNoWalkBegins)
{
    Value dictionary = dictionaryLeftByAnException();
    hostDictionaryOf(nil);
    dictionaryOf(Value::dictionary());
    {
        NSDictionary *source = [NSDictionary dictionaryWithObject:@"v" forKey:@"k"];
        support::CocoaMethod keys("NSDictionary", "allKeys", support::MethodOf::Instance,
                                  bodyOf([](id, SEL) -> id { return nil; }));
        hostDictionaryOf(source);
    }
    dictionaryOf(dictionary);
    EXPECT_EQ(loaded, threeOf({0}));
}

// --- What runs in the middle of a walk --------------------------------------------------------------------------

namespace {

std::function<void()> insideKeyGetter; // host code
void *(*hostsKeyGetter)(void *, int32_t);
void *(*hostsGetter)(void *, void *);

void *getKey(void *dictionary, int32_t index)
{
    void *key = hostsKeyGetter(dictionary, index);
    if (insideKeyGetter && dictionary == dictionaries[0])
        insideKeyGetter();
    return key;
}

// The getter of one Dictionary, for no other.
template <int number>
void *getValue(void *dictionary, void *key)
{
    EXPECT_EQ(dictionary, dictionaries[number]) << "asked by the getter of Dictionary " << number;
    return hostsGetter(dictionary, key);
}

void *loadWatchedMethod(void *object, const char *declaration)
{
    void *function = loadMethod(object, declaration);
    if (strcmp(declaration, kKeyGetter) == 0) {
        hostsKeyGetter = reinterpret_cast<void *(*)(void *, int32_t)>(function);
        return reinterpret_cast<void *>(getKey);
    }
    if (strcmp(declaration, kGetter) == 0) {
        hostsGetter = reinterpret_cast<void *(*)(void *, void *)>(function);
        return reinterpret_cast<void *>(object == dictionaries[0] ? getValue<0> : getValue<1>);
    }
    return function;
}

const Value *atTheAddress;

void *newInstanceAtTheAddress(const char *className)
{
    host::Host &host = host::Host::shared();
    if (strcmp(className, "Dictionary") == 0) {
        reinterpret_cast<void (*)(void *)>(host::Host::resolver()("REALLockObject"))(atTheAddress->handle());
        return atTheAddress->handle();
    }
    host.replace("PluginNewInstance", nullptr);
    void *instance = reinterpret_cast<void *(*)(const char *)>(host::Host::resolver()("PluginNewInstance"))(className);
    host.replace("PluginNewInstance", reinterpret_cast<void *>(newInstanceAtTheAddress));
    return instance;
}

// Raises when it is asked for its kind for the second time; the key of an entry is converted before its value.
int timesAskedForKind;

} // namespace

@interface ObjectThatRaisesLater : NSObject
@end

@implementation ObjectThatRaisesLater
- (BOOL)isKindOfClass:(Class)kind
{
    if (kind == [NSArray class] && ++timesAskedForKind == 2) // the first class that a conversion asks for
        [NSException raise:@"NSTestException" format:@"at the second entry"];
    return [super isKindOfClass:kind];
}
@end

TEST_F(DictionaryMethods, AreLookedAtAgainBetweenKeyAndValue)
{
    forget();
    host.replace("REALLoadObjectMethod", reinterpret_cast<void *>(loadWatchedMethod));
    Value outer = entries(2), inner = entries(1), other = newEmptyInstance();
    insideKeyGetter = [&] { host.call(other, "setDictionaryValue", {"key", inner}); };
    expectEntries(dictionaryOf(outer), 2);
    insideKeyGetter = nullptr;
    EXPECT_EQ(loaded, threeOf({0, 1, 0, 1, 0}));
}

// The Dictionary that was being filled is given back, and the host's next one gets its address: of both that are played
// by one here the plug-in sees no more.
TEST_F(DictionaryMethods, OfADictionaryThatAnExceptionEndedNeverServeTheNextAtItsAddress)
{
    support::LogCapture log;
    Value dictionary = entries(0);
    atTheAddress = &dictionary;
    host.replace("PluginNewInstance", reinterpret_cast<void *>(newInstanceAtTheAddress));
    forget();
    id raising = [[[ObjectThatRaisesLater alloc] init] autorelease];
    NSDictionary *source = [NSDictionary dictionaryWithObjectsAndKeys:raising, @"a", raising, @"b", nil];
    EXPECT_EQ(tryToHost(source, "dictionaryForKey").raised.size(), 1u);
    ASSERT_EQ(loaded, threeOf({0})) << "one entry was stored before";
    ASSERT_EQ(dictionary.lockCount(), 1) << "gone, as far as the plug-in knows";

    EXPECT_EQ(hostDictionaryOf([NSDictionary dictionaryWithObject:@"v" forKey:@"k"]).lookup("k").text(), "v");
    EXPECT_EQ(loaded, threeOf({0, 0}));
}

namespace {

class DictionaryWithout : public CrossingTest {
protected:
    NSDictionary *dictionaryOf(const Value &value) { return toCocoaWith("setDictionaryValue", value); }
};

} // namespace

TEST_F(DictionaryWithout, ItsSetterStaysEmpty)
{
    start();
    host.hideMethod("Dictionary", kSetter);
    NSArray *list = [NSArray arrayWithObject:@"v"];
    Value back = toHostWith("dictionaryForKey", [NSDictionary dictionaryWithObject:list forKey:@"k"]);
    ASSERT_TRUE(back.isA("Dictionary"));
    EXPECT_EQ(back.count(), 0);
    EXPECT_EQ([dictionaryOf(entries(2)) count], 2u) << "the other way does not need it";
}

TEST_F(DictionaryWithout, ItsGetterGivesNoEntriesAndReleasesTheKeys)
{
    start();
    host.hideMethod("Dictionary", kGetter);
    EXPECT_EQ([dictionaryOf(entries(2)) count], 0u);
}

TEST_F(DictionaryWithout, ItsKeysGivesNoEntries)
{
    start();
    host.hideMethod("Dictionary", kKeyGetter);
    std::vector<host::RaisedException> raised = tryToCocoa(entries(2), "setDictionaryValue");
    ASSERT_EQ(raised.size(), 2u) << "the getter is asked for the value of no key, which is the host's to refuse";
    EXPECT_EQ(raised[0].className, "KeyNotFoundException");
    EXPECT_EQ([sent() count], 0u);
}

TEST_F(DictionaryWithout, MethodsByDeclarationIsEmptyBothWays)
{
    host.hide("REALLoadObjectMethod");
    start();
    EXPECT_EQ([dictionaryOf(entries(2)) count], 0u);
    EXPECT_EQ(toHostWith("dictionaryForKey", [NSDictionary dictionaryWithObject:@"v" forKey:@"k"]).count(), 0);
}
