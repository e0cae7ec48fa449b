// The members of the class itself: the standard defaults object and the four names.
#include "bridge/family/cocoa_init.h"
#include "bridge/family/instances.h"
#include "hostapi/holding.h"
#include "userdefaults/carried_defaults.h"

REALobject standardUserDefaults()
{
    CocoaInit();
    return guarded([](HeldHandles &held) -> REALobject {
        NSUserDefaults *standard = [NSUserDefaults standardUserDefaults];
        if (!standard)
            return nullptr;

        // One host object stands for the standard defaults as long as it lives; each caller gets a lock.
        if (REALobject shared = LockedCarrierOf(standard, held))
            return shared;

        REALobject created = held.hold(REALnewInstance("NSUserDefaultsKTZ"));
        if (created) {
            *DefaultsWord(created, kInstanceDataOffset) = [standard retain];
            RecordCarrier(standard, created);
        }
        return created;
    });
}

void resetStandardUserDefaults()
{
    CocoaInit();
    guarded([] { [NSUserDefaults resetStandardUserDefaults]; });
}

// The names need neither Cocoa's start-up nor a guard: they are constants, nil where a system lacks them.
static REALstring HostName(NSString *name)
{
    return holding([=](HeldHandles &held) { return held.keep(HostTextOf(name, held)); });
}

REALstring getNSGlobalDomain()
{
    return HostName(NSGlobalDomain);
}

REALstring getNSArgumentDomain()
{
    return HostName(NSArgumentDomain);
}

REALstring getNSRegistrationDomain()
{
    return HostName(NSRegistrationDomain);
}

REALstring getNSUserDefaultsDidChangeNotification()
{
    return HostName(NSUserDefaultsDidChangeNotification);
}
