#include "host/validate/ground.h"

#import <Foundation/Foundation.h>

#include "host/isolation/cocoa.h"
#include "host/validate/case.h"
#ifdef VALIDATE_MACHORUN
#include "tools/machorun/host_loader.h"
#endif

namespace validate {

static Settings currentSettings;
static std::vector<std::string> logged;

static std::string textOf(NSString *text)
{
    const char *bytes = [text UTF8String];
    return bytes ? bytes : "(not text)";
}

// "2026-11-20 12:00:00.000 name[12:34] message"
static void catchLogLine(NSString *line)
{
    NSRange prefix = [line rangeOfString:@"] "];
    logged.push_back(textOf(prefix.length ? [line substringFromIndex:NSMaxRange(prefix)] : line));
}

void prepareGround(const Settings &settings)
{
    currentSettings = settings;
    @autoreleasepool {
        char name[] = "Validated";
        char *arguments[] = {name, nullptr};
        GSInitializeProcess(1, arguments, environ);
        [[NSProcessInfo processInfo] setProcessName:@"Validated"];
        _NSLog_printf_handler = catchLogLine;
    }
    isolation::startCocoa();
#ifdef VALIDATE_MACHORUN
    theHost().addLoader(machorun::HostLoader());
#endif
}

const Settings &settings()
{
    return currentSettings;
}

static std::string describeThrown(id thrown)
{
    std::string text = textOf(NSStringFromClass([thrown class]));
    if ([thrown isKindOfClass:[NSException class]])
        return text + " " + textOf([thrown name]) + ": " + textOf([thrown reason]);
    return text + " " + textOf([thrown description]);
}

std::string whyItFails(const std::function<void()> &body)
{
    host::CocoaPool pool;
    @try {
        return whyBodyFails(body);
    } @catch (id thrown) {
        return "an Objective-C exception got out: " + describeThrown(thrown);
    }
}

host::Host &theHost()
{
    return host::Host::shared();
}

void startHost(const Played &played)
{
    host::Host &host = theHost();
    host::Profile profile = *host::Profile::named(played.profile);
    profile.family = played.family;
    host.use(profile);
    if (played.family)
        host.load(settings().family);
    for (const std::string &name : played.hidden)
        host.hide(name);
    host.load(settings().plugin);
    logged.clear();
}

std::vector<std::string> takeLog()
{
    return std::exchange(logged, {});
}

Called callAndCatch(const std::function<host::Outcome()> &call)
{
    Called called;
    @try {
        called.outcome = call();
    } @catch (id thrown) {
        called.thrown = [thrown isKindOfClass:[NSException class]] ? "NSException " + textOf([thrown name])
                                                                   : textOf([thrown description]);
        called.thrownObject = thrown;
    }
    return called;
}

const host::MethodDescription &methodOf(const std::string &declaration, bool isShared)
{
    const host::MethodDescription *method = theHost().findMethod(kClass, declaration, isShared);
    if (!method)
        throw Failure("the class has no method " + declaration);
    return *method;
}

host::Value standardUserDefaults()
{
    return theHost().callShared(kClass, "standardUserDefaults");
}

host::Value call(const host::Value &defaults, const std::string &method, const host::Arguments &arguments)
{
    return theHost().call(defaults, method, arguments);
}

void expectBalance(const host::LedgerMark &since)
{
    for (const host::HandleInfo &handle : theHost().leaks(since))
        throw Failure("a handle is out of balance: " + handle.text());
    for (const std::string &fault : theHost().takeFaults())
        throw Failure("a rule of the host is broken: " + fault);
    for (const host::RaisedException &raised : theHost().takePendingExceptions())
        throw Failure("raised outside every call: " + raised.className + " " + raised.message);
}

} // namespace validate
