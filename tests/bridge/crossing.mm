#include "tests/bridge/crossing.h"

#import <objc/runtime.h>

#include <stdexcept>

using host::Value;

@interface NSException (RegistryOfTheFamily)
+ (CFMutableDictionaryRef)GetInstancesDictionaryKTZ;
@end

@implementation CrossingDefaults

- (void)dealloc
{
    [answer release];
    [sent release];
    [sentKey release];
    [super dealloc];
}

// clang-format off
- (id)objectForKey:(NSString *)key             { (void)key; return answer; }
- (id)dataForKey:(NSString *)key               { (void)key; return answer; }
- (id)stringArrayForKey:(NSString *)key        { (void)key; return answer; }
- (id)arrayForKey:(NSString *)key              { (void)key; return answer; }
- (id)dictionaryForKey:(NSString *)key         { (void)key; return answer; }
- (id)URLForKey:(NSString *)key                { (void)key; return answer; }
- (id)persistentDomainForName:(NSString *)name { (void)name; return answer; }
- (id)volatileDomainForName:(NSString *)name   { (void)name; return answer; }
// clang-format on

- (void)setObject:(id)object forKey:(NSString *)key
{
    [object retain];
    [sent release];
    sent = object;
    [sentKey release];
    sentKey = [key copy];
    timesSent++;
}

- (void)setURL:(NSURL *)url forKey:(NSString *)key
{
    [self setObject:url forKey:key];
}
- (void)setPersistentDomain:(id)domain forName:(NSString *)name
{
    [self setObject:domain forKey:name];
}
- (void)setVolatileDomain:(id)domain forName:(NSString *)name
{
    [self setObject:domain forKey:name];
}
- (void)registerDefaults:(id)domain
{
    [self setObject:domain forKey:nil];
}

@end

host::Profile CrossingTest::profileWithBareFamily(const std::string &version)
{
    host::Profile profile = *host::Profile::named(version);
    profile.familyLeavesOut = {"*"};
    profile.familyKeeps = {"NSExceptionKTZ", "NewNSExceptionKTZ:", "PrepareNSExceptionKTZ",
                           "GetInstancesDictionaryKTZ"};
    return profile;
}

CrossingDefaults *CrossingTest::standIn()
{
    carrier();
    return _standIn;
}

const Value &CrossingTest::carrier()
{
    if (!_standIn) {
        _carrier = newEmptyInstance();
        _standIn = [[CrossingDefaults alloc] init];
        *static_cast<id *>(_carrier.instanceData()) = [_standIn retain]; // the instance's own retain
    }
    return _carrier;
}

host::Outcome CrossingTest::tryToHost(id object, const char *getter)
{
    CrossingDefaults *defaults = standIn();
    [object retain];
    [defaults->answer release];
    defaults->answer = object;
    return host.tryCall(carrier(), getter, {"key"});
}

bool CrossingTest::everyObjectIsTyped()
{
    return [NSObject instancesRespondToSelector:sel_registerName("_cfTypeID")];
}

Value CrossingTest::toHostWith(const char *getter, id object)
{
    host::Outcome outcome = tryToHost(object, getter);
    for (const host::RaisedException &raised : outcome.raised)
        ADD_FAILURE() << getter << " raised " << raised.className << ": " << raised.message;
    return outcome.result;
}

std::vector<host::RaisedException> CrossingTest::tryToCocoa(const Value &value, const char *setter)
{
    CrossingDefaults *defaults = standIn();
    [defaults->sent release];
    defaults->sent = nil;
    defaults->timesSent = 0;
    return host.tryCall(carrier(), setter, {"key", value}).raised;
}

id CrossingTest::toCocoaWith(const char *setter, const Value &value)
{
    for (const host::RaisedException &raised : tryToCocoa(value, setter))
        ADD_FAILURE() << setter << " raised " << raised.className << ": " << raised.message;
    EXPECT_EQ(timesSent(), 1) << setter;
    return [[sent() retain] autorelease];
}

void CrossingTest::defineWrapperClass(const std::string &name, const std::string &superName)
{
    host::HostClass definition;
    definition.name = name;
    definition.superName = superName;
    definition.dataSize = superName.empty() ? 16 : 0;
    host.defineClass(definition);
}

void CrossingTest::defineTaggedClass(const std::string &name)
{
    host::HostClass definition;
    definition.name = name;
    definition.dataSize = 16;
    definition.initialiser = [](void *object) { static_cast<uint32_t *>(object)[6 + 2] = 0x52424346; };
    host.defineClass(definition);
}

void *CrossingTest::lockedForPlugin(const Value &value)
{
    entry<void (*)(void *)>("REALLockObject")(value.handle());
    return value.handle();
}

std::vector<int> CrossingTest::indexesWithoutTheSecondProcedure(const std::function<void()> &convert)
{
    static int asked;
    static std::vector<int> indexes;
    host.replace("RuntimeArrayDirectGetInsertProc", bodyOf([](void *) -> void * {
                     return asked++ == 1 ? nullptr
                                         : bodyOf([](void *, int32_t index, void *) { indexes.push_back(index); });
                 }));
    convert();
    return indexes;
}

int CrossingTest::releaseLeftBehind(const std::string &className)
{
    int count = 0;
    for (const host::HandleInfo &info : host.imbalances()) {
        if (info.what != className)
            continue;
        count++;
        for (int lock = info.heldElsewhere(); lock > 0; lock--)
            entry<void (*)(const void *)>("REALUnlockObject")(info.handle);
    }
    return count;
}

void CrossingTest::TearDown()
{
    _carrier = Value();
    if (_standIn)
        EXPECT_EQ([_standIn retainCount], 1u) << "the finaliser releases what the instance carries, once";
    [_standIn release];
    _standIn = nil;
    support::BlackBox::TearDown();
}

static void add(Class target, const char *selector, void *body)
{
    if (!class_addMethod(target, sel_registerName(selector), reinterpret_cast<IMP>(body), "@12@0:4@8"))
        throw std::invalid_argument(std::string("there is a method already: ") + selector);
}

void addMethod(const char *className, const char *selector, void *body)
{
    add(objc_getClass(className), selector, body);
}

void addClassMethod(const char *className, const char *selector, void *body)
{
    add(object_getClass(objc_getClass(className)), selector, body);
}

std::string textOf(id object)
{
    return object ? [[object description] UTF8String] : "nil";
}

CFMutableDictionaryRef familyInstances()
{
    return [NSException GetInstancesDictionaryKTZ];
}
