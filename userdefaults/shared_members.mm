// The members of the class itself: the standard defaults object and the four names.
#include "bridge/family/cocoa_init.h"
#include "bridge/family/instances.h"
#include "hostapi/services.h"
#include "userdefaults/carried_defaults.h"

REALobject standardUserDefaults()
{
    CocoaInit();
    return guarded([]() -> REALobject {
        NSUserDefaults *standard = [NSUserDefaults standardUserDefaults];
        if (!standard)
            return nullptr;

        // One host object stands for the standard defaults as long as it lives; each caller gets a lock.
        if (REALobject shared = LockedCarrierOf(standard))
            return shared;

        REALobject created = Hold(REALnewInstance("NSUserDefaultsKTZ"));
        if (created) {
            *DefaultsWord(created, kInstanceDataOffset) = [standard retain];
            RecordCarrier(standard, created);
        }
        KeepNewestHeld();
        return created;
    });
}

void resetStandardUserDefaults()
{
    CocoaInit();
    guarded([] { [NSUserDefaults resetStandardUserDefaults]; });
}

// The names need neither Cocoa's start-up nor a guard: they are constants, nil where a system lacks them.
REALstring getNSGlobalDomain()
{
    return hostTextOf(NSGlobalDomain);
}

REALstring getNSArgumentDomain()
{
    return hostTextOf(NSArgumentDomain);
}

REALstring getNSRegistrationDomain()
{
    return hostTextOf(NSRegistrationDomain);
}

REALstring getNSUserDefaultsDidChangeNotification()
{
    return hostTextOf(NSUserDefaultsDidChangeNotification);
}
