// How an NSUserDefaults object comes into an instance of the class, and how it leaves.
#include "bridge/family/cocoa_init.h"
#include "bridge/family/instances.h"
#include "hostapi/exceptions.h"
#include "userdefaults/carried_defaults.h"

void NSUserDefaultsConstructor(REALobject)
{
    CocoaInit(); // the data word of a new instance is nil already
}

void NSUserDefaultsDestructor(REALobject self)
{
    CocoaInit();
    guarded([=] {
        NSUserDefaults **word = DefaultsWord(self, kInstanceDataOffset);
        if (!*word)
            return;
        ForgetCarrier(*word);
        [*word release];
        *word = nil;
    });
}

// The shape of both constructors: `make` gives the new defaults object, owned by the instance from then on,
// or nil, which leaves the instance empty without any error.
template <typename Make>
static void Construct(REALobject self, Make make)
{
    if (defaultsOf(self)) {
        RaiseException("UnsupportedOperationException", "Constructor called too often. Object is already initialized.",
                       0);
        return;
    }
    CocoaInit();
    guarded([=] {
        NSUserDefaults *defaults = make();
        *DefaultsWord(self) = defaults;
        if (defaults)
            RecordCarrier(defaults, self);
    });
}

void Constructor(REALobject self)
{
    Construct(self, [] { return [[NSUserDefaults alloc] init]; });
}

void ConstructorUser(REALobject self, REALstring username)
{
    Construct(self, [=] {
        NSString *user = TextOf(username);
        return [[NSUserDefaults alloc] initWithUser:user];
    });
}
