// Every member of the class once, with small arguments.
#include "bench/cases/arguments.h"

namespace bench {

namespace {

using Getter = void *(void *, void *);
using Action = void(void *, void *);

class Members {
public:
    Members(Cases &cases, Ground &ground) : _cases(cases), _ground(ground), _self(ground.self()) {}

    void add()
    {
        lifecycle();
        scalars(8);
        scalars(64);
        text();
        objects();
        collections();
        domains();
        shared();
    }

private:
    template <class Function>
    Function *member(const char *declaration, bool isShared = false)
    {
        return _ground.member<Function>(declaration, isShared);
    }

    // A getter of a handle with a key.
    template <class Hand>
    void getter(const char *declaration, const Key &key, Hand hand)
    {
        auto *function = member<Getter>(declaration);
        _cases.add(declaration).byHand(hand).throughPlugin([=, self = _self] { return function(self, key.handle()); });
    }

    // A setter whose value is a handle.
    void setter(const char *declaration, const Key &key, const Value &value, id object)
    {
        auto *function = member<void(void *, void *, void *)>(declaration);
        id ours = equalTo(object);
        _cases.add(declaration)
            .byHand([=] { [standard() setObject:ours forKey:key.cocoa]; })
            .throughPlugin([=, self = _self] { function(self, key.handle(), value.handle()); });
    }

    void lifecycle()
    {
        auto *exception = member<void *(void *)>("_exception as NSExceptionKTZ");
        _cases.add("_exception as NSExceptionKTZ").throughPlugin([=, self = _self] { return exception(self); });

        static Value fresh;
        auto renew = [this] { fresh = _ground.host.newInstance("NSUserDefaultsKTZ"); };
        auto *constructor = member<void(void *)>("Constructor");
        static id made = nil;
        _cases.add("Constructor")
            .byHand([] { made = [[NSUserDefaults alloc] init]; })
            .throughPlugin([=] { constructor(fresh.handle()); })
            .beforeEach(renew)
            .afterEach([] { [made release], made = nil; });
        auto *constructorUser = member<Action>("Constructor(username as string)");
        const Key user("root", 4);
        _cases.add("Constructor(username as string)")
            .byHand([=] { made = [[NSUserDefaults alloc] initWithUser:user.cocoa]; })
            .throughPlugin([=] { constructorUser(fresh.handle(), user.handle()); })
            .beforeEach(renew)
            .afterEach([] { [made release], made = nil; });
        _cases.add("initialiser and finaliser")
            .throughPlugin([this] { fresh = _ground.host.newInstance("NSUserDefaultsKTZ"); })
            .beforeEach([] { fresh.reset(); });
    }

    template <class Number, class Get, class Set>
    void scalar(const std::string &name, const std::string &setName, const std::string &type, size_t keyLength,
                Number value, Get get, Set set)
    {
        const Key key(name, keyLength);
        set(key.cocoa, value);
        const std::string with = ", key of " + std::to_string(keyLength);
        const std::string getDeclaration = name + "(key as string) as " + type;
        const std::string setDeclaration = setName + "(key as string, value as " + type + ")";
        auto *getter = member<Number(void *, void *)>(getDeclaration.c_str());
        auto *setter = member<void(void *, void *, Number)>(setDeclaration.c_str());
        _cases.add(getDeclaration + with).byHand([=] { return get(key.cocoa); }).throughPlugin([=, self = _self] {
            return getter(self, key.handle());
        });
        _cases.add(setDeclaration + with).byHand([=] { set(key.cocoa, value); }).throughPlugin([=, self = _self] {
            setter(self, key.handle(), value);
        });
    }

    void scalars(size_t length)
    {
        scalar<int32_t>(
            "integerForKey", "setIntegerValue", "integer", length, 20130,
            [](NSString *k) { return [standard() integerForKey:k]; },
            [](NSString *k, int32_t v) { [standard() setInteger:v forKey:k]; });
        scalar<float>(
            "floatForKey", "setFloatValue", "single", length, 1.5f,
            [](NSString *k) { return [standard() floatForKey:k]; },
            [](NSString *k, float v) { [standard() setFloat:v forKey:k]; });
        scalar<double>(
            "doubleForKey", "setDoubleValue", "double", length, 2.5,
            [](NSString *k) { return [standard() doubleForKey:k]; },
            [](NSString *k, double v) { [standard() setDouble:v forKey:k]; });
        scalar<int8_t>(
            "boolForKey", "setBoolValue", "boolean", length, int8_t(1),
            [](NSString *k) { return int8_t([standard() boolForKey:k]); },
            [](NSString *k, int8_t v) { [standard() setBool:BOOL(v) forKey:k]; });
    }

    void text()
    {
        const Key key("text"), urlKey("url");
        NSString *stored = [@"twenty ASCII units .." copy];
        [standard() setObject:stored forKey:key.cocoa];
        getter("stringForKey(key as string) as string", key,
               [=] { return (void *)[standard() stringForKey:key.cocoa]; });
        setter("setStringValue(key as string, value as string)", key, "twenty ASCII units ..", stored);

        NSURL *url = [[NSURL alloc] initWithString:@"http://example.com/some/page"];
        [standard() setURL:url forKey:urlKey.cocoa];
        getter("URLForKey(key as string) as string", urlKey,
               [=] { return (void *)[[standard() URLForKey:urlKey.cocoa] absoluteString]; });
        auto *setURL = member<void(void *, void *, void *)>("setURLValue(key as string, value as string)");
        Value address("http://example.com/some/page");
        _cases.add("setURLValue(key as string, value as string)")
            .byHand(
                [=] { [standard() setURL:[NSURL URLWithString:@"http://example.com/some/page"] forKey:urlKey.cocoa]; })
            .throughPlugin([=, self = _self] { setURL(self, urlKey.handle(), address.handle()); });
    }

    void objects()
    {
        const Key dataKey("data"), fileKey("file"), variantKey("variant");
        const std::string bytes(256, 'd');
        NSData *data = [NSData dataWithBytes:bytes.data() length:bytes.size()];
        [standard() setObject:data forKey:dataKey.cocoa];
        getter("dataForKey(key as string) as memoryblock", dataKey,
               [=] { return (void *)[standard() dataForKey:dataKey.cocoa]; });
        setter("setDataValue(key as string, value as memoryblock)", dataKey, Value::memoryBlock(bytes), data);

        [standard() setInteger:77 forKey:variantKey.cocoa];
        getter("variantForKey(key as string) as variant", variantKey,
               [=] { return (void *)[standard() objectForKey:variantKey.cocoa]; });
        setter("setVariantValue(key as string, value as variant)", variantKey, Value(77).boxed(),
               [NSNumber numberWithInt:77]);

        NSURL *file = [[NSURL alloc] initFileURLWithPath:@"/tmp"];
        [standard() setURL:file forKey:fileKey.cocoa];
        getter("fileForKey(key as string) as folderitem", fileKey,
               [=] { return (void *)[standard() URLForKey:fileKey.cocoa]; });
        auto *setFile = member<void(void *, void *, void *)>("setFileValue(key as string, value as folderitem)");
        Value item = Value::folderItem("/tmp");
        _cases.add("setFileValue(key as string, value as folderitem)")
            .byHand([=] { [standard() setURL:file forKey:fileKey.cocoa]; })
            .throughPlugin([=, self = _self] { setFile(self, fileKey.handle(), item.handle()); });
    }

    void collections()
    {
        const Key stringsKey("strings"), arrayKey("array"), dictionaryKey("dictionary");
        NSArray *strings = @[ @"one", @"two", @"three" ];
        [standard() setObject:strings forKey:stringsKey.cocoa];
        getter("stringArrayForKey(key as string) as string()", stringsKey,
               [=] { return (void *)[standard() stringArrayForKey:stringsKey.cocoa]; });
        setter("setStringArrayValue(key as string, values() as string)", stringsKey,
               Value::strings({"one", "two", "three"}), strings);

        NSArray *numbers = @[ @1, @2, @3 ];
        [standard() setObject:numbers forKey:arrayKey.cocoa];
        getter("arrayForKey(key as string) as variant()", arrayKey,
               [=] { return (void *)[standard() arrayForKey:arrayKey.cocoa]; });
        setter("setArrayValue(key as string, values() as variant)", arrayKey, Value::variants({1, 2, 3}), numbers);

        NSDictionary *dictionary = @{@"one" : @1, @"two" : @2, @"three" : @3};
        [standard() setObject:dictionary forKey:dictionaryKey.cocoa];
        getter("dictionaryForKey(key as string) as dictionary", dictionaryKey,
               [=] { return (void *)[standard() dictionaryForKey:dictionaryKey.cocoa]; });
        setter("setDictionaryValue(key as string, value as dictionary)", dictionaryKey, small(), dictionary);
    }

    static Value small() { return Value::dictionary({{"one", 1}, {"two", 2}, {"three", 3}}); }

    // An action with one name. What it undoes is done again before each call.
    template <class Hand>
    void action(const char *declaration, const Key &key, Hand hand, std::function<void()> before = {})
    {
        auto *function = member<Action>(declaration);
        _cases.add(declaration)
            .byHand(hand)
            .throughPlugin([=, self = _self] { function(self, key.handle()); })
            .beforeEach(before);
    }

    void domains()
    {
        const Key key("removed"), domain("Domain"), volatileDomain("Volatile"), suite("Suite");
        NSDictionary *three = [@{@"one" : @1, @"two" : @2, @"three" : @3} retain];
        auto removeVolatile = [=] { [standard() removeVolatileDomainForName:volatileDomain.cocoa]; };

        auto *synchronize = member<int8_t(void *)>("synchronize as boolean");
        _cases.add("synchronize as boolean")
            .byHand([] { return [standard() synchronize]; })
            .throughPlugin([=, self = _self] { return synchronize(self); });

        action("removeObjectForKey(defaultName as string)", key, [=] { [standard() removeObjectForKey:key.cocoa]; });
        action("removeVolatileDomainForName(domainName as string)", volatileDomain, removeVolatile, [=] {
            [standard() removeVolatileDomainForName:volatileDomain.cocoa];
            [standard() setVolatileDomain:three forName:volatileDomain.cocoa];
        });
        action(
            "removePersistentDomainForName(domainName as string)", domain,
            [=] { [standard() removePersistentDomainForName:domain.cocoa]; },
            [=] { [standard() setPersistentDomain:three forName:domain.cocoa]; });
        auto removeSuite = [=] { [standard() removeSuiteNamed:suite.cocoa]; };
        action(
            "addSuiteNamed(suiteName as string)", suite, [=] { [standard() addSuiteNamed:suite.cocoa]; }, removeSuite);
        action("removeSuiteNamed(suiteName as string)", suite, removeSuite,
               [=] { [standard() addSuiteNamed:suite.cocoa]; });

        Value dictionary = small();
        auto *registerDefaults = member<Action>("registerDefaults(dic as dictionary)");
        _cases.add("registerDefaults(dic as dictionary)")
            .byHand([=] { [standard() registerDefaults:three]; })
            .throughPlugin([=, self = _self] { registerDefaults(self, dictionary.handle()); });
        auto *representation = member<void *(void *)>("dictionaryRepresentation as dictionary");
        _cases.add("dictionaryRepresentation as dictionary")
            .byHand([] { return (void *)[standard() dictionaryRepresentation]; })
            .throughPlugin([=, self = _self] { return representation(self); });

        auto *forced = member<int8_t(void *, void *)>("objectIsForcedForKey(key as string) as boolean");
        _cases.add("objectIsForcedForKey(key as string) as boolean")
            .byHand([=] { return [standard() objectIsForcedForKey:key.cocoa]; })
            .throughPlugin([=, self = _self] { return forced(self, key.handle()); });
        auto *forced2 =
            member<int8_t(void *, void *, void *)>("objectIsForcedForKey(key as string, domain as string) as boolean");
        _cases.add("objectIsForcedForKey(key as string, domain as string) as boolean")
            .byHand([=] { return [standard() objectIsForcedForKey:key.cocoa inDomain:domain.cocoa]; })
            .throughPlugin([=, self = _self] { return forced2(self, key.handle(), domain.handle()); });

        auto *setPersistent =
            member<void(void *, void *, void *)>("setPersistentDomain(domain as dictionary, domainName as string)");
        _cases.add("setPersistentDomain(domain as dictionary, domainName as string)")
            .byHand([=] { [standard() setPersistentDomain:three forName:domain.cocoa]; })
            .throughPlugin([=, self = _self] { setPersistent(self, dictionary.handle(), domain.handle()); });
        auto *setVolatile =
            member<void(void *, void *, void *)>("setVolatileDomain(domain as dictionary, domainName as string)");
        _cases.add("setVolatileDomain(domain as dictionary, domainName as string)")
            .byHand([=] { [standard() setVolatileDomain:three forName:volatileDomain.cocoa]; })
            .throughPlugin([=, self = _self] { setVolatile(self, dictionary.handle(), volatileDomain.handle()); })
            .beforeEach(removeVolatile);

        auto *persistentNames = member<void *(void *)>("persistentDomainNames as string()");
        _cases.add("persistentDomainNames as string()")
            .byHand([] { return (void *)[standard() persistentDomainNames]; })
            .throughPlugin([=, self = _self] { return persistentNames(self); });
        getter("persistentDomainForName(domainName as string) as dictionary", domain,
               [=] { return (void *)[standard() persistentDomainForName:domain.cocoa]; });
        auto *volatileNames = member<void *(void *)>("volatileDomainNames as string()");
        _cases.add("volatileDomainNames as string()")
            .byHand([] { return (void *)[standard() volatileDomainNames]; })
            .throughPlugin([=, self = _self] { return volatileNames(self); });
        getter("volatileDomainForName(domainName as string) as dictionary", volatileDomain,
               [=] { return (void *)[standard() volatileDomainForName:volatileDomain.cocoa]; });
    }

    void shared()
    {
        auto name = [this](const char *declaration, auto constant) {
            auto *function = member<void *()>(declaration, true);
            _cases.add(declaration).byHand(constant).throughPlugin([=] { return function(); });
        };
        name("NSGlobalDomain as string", [] { return (void *)NSGlobalDomain; });
        name("NSArgumentDomain as string", [] { return (void *)NSArgumentDomain; });
        name("NSRegistrationDomain as string", [] { return (void *)NSRegistrationDomain; });
        name("NSUserDefaultsDidChangeNotification as string",
             [] { return (void *)NSUserDefaultsDidChangeNotification; });
        name("standardUserDefaults as NSUserDefaultsKTZ", [] { return (void *)[NSUserDefaults standardUserDefaults]; });

        // The last of all: the object that every other case calls is no longer the standard one after it.
        auto *reset = member<void()>("resetStandardUserDefaults", true);
        _cases.add("resetStandardUserDefaults")
            .byHand([] { [NSUserDefaults resetStandardUserDefaults]; })
            .throughPlugin([=] { reset(); })
            .beforeEach([] { [NSUserDefaults standardUserDefaults]; })
            .repeated(2);
    }

    Cases &_cases;
    Ground &_ground;
    void *_self;
};

} // namespace

void addMembers(Cases &cases, Ground &ground)
{
    static Members members(cases, ground);
    members.add();
}

} // namespace bench
