// Every member of the class once, with small arguments.
#include "bench/cases/arguments.h"

namespace bench {

namespace {

class Members {
public:
    Members(Cases &cases, Ground &ground) : _cases(cases), _ground(ground) {}

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
    template <class Result = void, class... Arguments>
    Case &call(const std::string &declaration, const Arguments &...arguments)
    {
        return addCall<Result>(_cases, _ground, declaration, arguments...);
    }

    // A getter of a handle with a key.
    template <class Hand>
    void getter(const char *declaration, const Key &key, Hand hand)
    {
        call<void *>(declaration, key).byHand(hand);
    }

    // A setter that stores an object by hand.
    void setter(const char *declaration, const Key &key, const Value &value, id object)
    {
        id ours = equalTo(object);
        call(declaration, key, value).byHand([=] { [standard() setObject:ours forKey:key.cocoa]; });
    }

    void lifecycle()
    {
        call<void *>("_exception as NSExceptionKTZ");

        static Value fresh;
        static id made = nil;
        auto renew = [this] { fresh = _ground.host.newInstance("NSUserDefaultsKTZ"); };
        auto *constructor = _ground.member<void(void *)>("Constructor");
        _cases.add("Constructor")
            .byHand([] { made = [[NSUserDefaults alloc] init]; })
            .throughPlugin([=] { constructor(fresh.handle()); })
            .beforeEach(renew)
            .afterEach([] { [made release], made = nil; });
        auto *constructorUser = _ground.member<void(void *, void *)>("Constructor(username as string)");
        const Key user("root", 4);
        _cases.add("Constructor(username as string)")
            .byHand([=] { made = [[NSUserDefaults alloc] initWithUser:user.cocoa]; })
            .throughPlugin([=] { constructorUser(fresh.handle(), passed(user)); })
            .beforeEach(renew)
            .afterEach([] { [made release], made = nil; });
        _cases.add("initialiser and finaliser").throughPlugin(renew).beforeEach([] { fresh.reset(); });
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
        call<Number>(getDeclaration, key).byHand([=] { return get(key.cocoa); }).named(getDeclaration + with);
        call(setDeclaration, key, value).byHand([=] { set(key.cocoa, value); }).named(setDeclaration + with);
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
        getter("stringForKey(key as string) as string", key, [=] { return [standard() stringForKey:key.cocoa]; });
        setter("setStringValue(key as string, value as string)", key, "twenty ASCII units ..", stored);

        [standard() setURL:[NSURL URLWithString:@"http://example.com/some/page"] forKey:urlKey.cocoa];
        getter("URLForKey(key as string) as string", urlKey,
               [=] { return [[standard() URLForKey:urlKey.cocoa] absoluteString]; });
        call("setURLValue(key as string, value as string)", urlKey, Value("http://example.com/some/page")).byHand([=] {
            [standard() setURL:[NSURL URLWithString:@"http://example.com/some/page"] forKey:urlKey.cocoa];
        });
    }

    void objects()
    {
        const Key dataKey("data"), fileKey("file"), variantKey("variant");
        const std::string bytes(256, 'd');
        NSData *data = [NSData dataWithBytes:bytes.data() length:bytes.size()];
        [standard() setObject:data forKey:dataKey.cocoa];
        getter("dataForKey(key as string) as memoryblock", dataKey,
               [=] { return [standard() dataForKey:dataKey.cocoa]; });
        setter("setDataValue(key as string, value as memoryblock)", dataKey, Value::memoryBlock(bytes), data);

        [standard() setInteger:77 forKey:variantKey.cocoa];
        getter("variantForKey(key as string) as variant", variantKey,
               [=] { return [standard() objectForKey:variantKey.cocoa]; });
        setter("setVariantValue(key as string, value as variant)", variantKey, Value(77).boxed(),
               [NSNumber numberWithInt:77]);

        NSURL *file = [[NSURL alloc] initFileURLWithPath:@"/tmp"];
        [standard() setURL:file forKey:fileKey.cocoa];
        getter("fileForKey(key as string) as folderitem", fileKey,
               [=] { return [standard() URLForKey:fileKey.cocoa]; });
        call("setFileValue(key as string, value as folderitem)", fileKey, Value::folderItem("/tmp")).byHand([=] {
            [standard() setURL:file forKey:fileKey.cocoa];
        });
    }

    void collections()
    {
        const Key stringsKey("strings"), arrayKey("array"), dictionaryKey("dictionary");
        NSArray *strings = @[ @"one", @"two", @"three" ];
        [standard() setObject:strings forKey:stringsKey.cocoa];
        getter("stringArrayForKey(key as string) as string()", stringsKey,
               [=] { return [standard() stringArrayForKey:stringsKey.cocoa]; });
        setter("setStringArrayValue(key as string, values() as string)", stringsKey,
               Value::strings({"one", "two", "three"}), strings);

        NSArray *numbers = @[ @1, @2, @3 ];
        [standard() setObject:numbers forKey:arrayKey.cocoa];
        getter("arrayForKey(key as string) as variant()", arrayKey,
               [=] { return [standard() arrayForKey:arrayKey.cocoa]; });
        setter("setArrayValue(key as string, values() as variant)", arrayKey, Value::variants({1, 2, 3}), numbers);

        NSDictionary *dictionary = three();
        [standard() setObject:dictionary forKey:dictionaryKey.cocoa];
        getter("dictionaryForKey(key as string) as dictionary", dictionaryKey,
               [=] { return [standard() dictionaryForKey:dictionaryKey.cocoa]; });
        setter("setDictionaryValue(key as string, value as dictionary)", dictionaryKey, small(), dictionary);
    }

    static Value small() { return Value::dictionary({{"one", 1}, {"two", 2}, {"three", 3}}); }
    static NSDictionary *three()
    {
        return @{@"one" : @1, @"two" : @2, @"three" : @3};
    }

    // What an action undoes is done again before each call.
    void domains()
    {
        const Key key("removed"), domain("Domain"), volatileDomain("Volatile"), suite("Suite");
        NSDictionary *entries = [three() retain];
        auto removeVolatile = [=] { [standard() removeVolatileDomainForName:volatileDomain.cocoa]; };
        auto addSuite = [=] { [standard() addSuiteNamed:suite.cocoa]; };
        auto removeSuite = [=] { [standard() removeSuiteNamed:suite.cocoa]; };
        auto setPersistent = [=] { [standard() setPersistentDomain:entries forName:domain.cocoa]; };
        auto setVolatile = [=] { [standard() setVolatileDomain:entries forName:volatileDomain.cocoa]; };

        call<int8_t>("synchronize as boolean").byHand([] { return [standard() synchronize]; });
        call("removeObjectForKey(defaultName as string)", key).byHand([=] {
            [standard() removeObjectForKey:key.cocoa];
        });
        call("removeVolatileDomainForName(domainName as string)", volatileDomain)
            .byHand(removeVolatile)
            .beforeEach([=] { removeVolatile(), setVolatile(); });
        call("removePersistentDomainForName(domainName as string)", domain)
            .byHand([=] { [standard() removePersistentDomainForName:domain.cocoa]; })
            .beforeEach(setPersistent);
        call("addSuiteNamed(suiteName as string)", suite).byHand(addSuite).beforeEach(removeSuite);
        call("removeSuiteNamed(suiteName as string)", suite).byHand(removeSuite).beforeEach(addSuite);

        Value dictionary = small();
        call("registerDefaults(dic as dictionary)", dictionary).byHand([=] { [standard() registerDefaults:entries]; });
        call<void *>("dictionaryRepresentation as dictionary").byHand([] {
            return [standard() dictionaryRepresentation];
        });

        call<int8_t>("objectIsForcedForKey(key as string) as boolean", key).byHand([=] {
            return [standard() objectIsForcedForKey:key.cocoa];
        });
        call<int8_t>("objectIsForcedForKey(key as string, domain as string) as boolean", key, domain).byHand([=] {
            return [standard() objectIsForcedForKey:key.cocoa inDomain:domain.cocoa];
        });

        call("setPersistentDomain(domain as dictionary, domainName as string)", dictionary, domain)
            .byHand(setPersistent);
        call("setVolatileDomain(domain as dictionary, domainName as string)", dictionary, volatileDomain)
            .byHand(setVolatile)
            .beforeEach(removeVolatile);

        call<void *>("persistentDomainNames as string()").byHand([] { return [standard() persistentDomainNames]; });
        getter("persistentDomainForName(domainName as string) as dictionary", domain,
               [=] { return [standard() persistentDomainForName:domain.cocoa]; });
        call<void *>("volatileDomainNames as string()").byHand([] { return [standard() volatileDomainNames]; });
        getter("volatileDomainForName(domainName as string) as dictionary", volatileDomain,
               [=] { return [standard() volatileDomainForName:volatileDomain.cocoa]; });
    }

    void shared()
    {
        auto name = [this](const char *declaration, auto constant) {
            auto *function = _ground.member<void *()>(declaration, true);
            _cases.add(declaration).byHand(constant).throughPlugin([=] { return function(); });
        };
        name("NSGlobalDomain as string", [] { return NSGlobalDomain; });
        name("NSArgumentDomain as string", [] { return NSArgumentDomain; });
        name("NSRegistrationDomain as string", [] { return NSRegistrationDomain; });
        name("NSUserDefaultsDidChangeNotification as string", [] { return NSUserDefaultsDidChangeNotification; });
        name("standardUserDefaults as NSUserDefaultsKTZ", [] { return [NSUserDefaults standardUserDefaults]; });

        // The last of all: the object that every other case calls is no longer the standard one after it.
        auto *reset = _ground.member<void()>("resetStandardUserDefaults", true);
        _cases.add("resetStandardUserDefaults")
            .byHand([] { [NSUserDefaults resetStandardUserDefaults]; })
            .throughPlugin([=] { reset(); })
            .beforeEach([] { [NSUserDefaults standardUserDefaults]; })
            .repeated(2);
    }

    Cases &_cases;
    Ground &_ground;
};

} // namespace

void addMembers(Cases &cases, Ground &ground)
{
    static Members members(cases, ground);
    members.add();
}

} // namespace bench
