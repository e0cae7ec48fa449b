#include "host/plughost/session.h"

#include <algorithm>
#include <cstdio>

#include "host/plughost/application.h"
#include "host/plughost/errors.h"
#include "host/plughost/file_complaints.h"
#include "host/plughost/files.h"
#include "host/plughost/json_value.h"
#include "host/plughost/stack_guard.h"
#include "host/script/shortened.h"
#ifdef PLUGHOST_MACHORUN
#include "tools/machorun/host_loader.h"
#endif

namespace plughost {

static std::string knownVersions()
{
    std::string names;
    for (const host::Profile &profile : host::Profile::predefined())
        names += (names.empty() ? "" : ", ") + profile.name;
    return names;
}

static host::Profile profileFor(const Options &options)
{
    std::optional<host::Profile> profile = host::Profile::named(options.host);
    if (!profile)
        throw UsageError("--host: there is no version \"" + options.host + "\" of the host; known are " +
                         knownVersions() + ", and other numbers from 2009 to 2014.x");
    std::vector<host::EntryPointInfo> known = host::Host::shared().entryPoints();
    for (const std::string &name : options.without) {
        if (std::none_of(known.begin(), known.end(), [&](const auto &entry) { return entry.name == name; }))
            throw UsageError("--without: the host has no entry point \"" + name + "\"");
        profile->without.insert(name);
    }
    profile->family = !options.withoutFamily;
    return *profile;
}

Session::Session(const Options &options) : _options(options), _host(host::Host::shared())
{
    if (options.domain.empty() || options.domain.find('/') != std::string::npos)
        throw UsageError("--domain: \"" + options.domain + "\" cannot be the name of a domain");
    becomeApplication(options.domain, options.showLog);
    if (options.user && !isUser(*options.user))
        throw UsageError("--user: there is no user \"" + *options.user + "\"");
    _host.use(profileFor(options));
#ifdef PLUGHOST_MACHORUN
    _host.addLoader(machorun::HostLoader());
#endif
    if (!options.withoutFamily)
        _host.load(options.familyFile());
    host::Plugin &plugin = _host.load(options.pluginFile());
    if (!_host.findClass(kClassName))
        throw InputError(plugin.path() + ": it registers no class " + kClassName);
}

const host::ClassDescription &Session::defaultsClass() const
{
    return *_host.findClass(kClassName);
}

const host::Value &Session::defaults()
{
    if (!_defaults.isNil())
        return _defaults;
    _defaults = !_options.user ? _host.callShared(kClassName, "standardUserDefaults")
                               : _host.newObject(kClassName, {*_options.user});
    if (_defaults.isNil())
        throw InputError("there is no defaults object: standardUserDefaults answered nil");
    for (const std::string &suite : _options.suites)
        _host.call(_defaults, "addSuiteNamed", {suite});
    for (const std::string &file : _options.registrations)
        _host.call(_defaults, "registerDefaults", {dictionaryOfJson(readFile(file), nameOfFile(file))});
    return _defaults;
}

host::Value Session::call(const std::string &method, const host::Arguments &arguments)
{
    return _host.call(defaults(), method, arguments);
}

static void requireWritten(bool isWritten)
{
    if (isWritten)
        return;
    if (hasComplainedOfWriting())
        throw Reported();
    throw InputError("the defaults could not be written to disk");
}

void Session::save()
{
    requireWritten(call("synchronize").boolean());
}

void Session::end()
{
    requireWritten(writeStandardDefaults());
}

static void printLine(std::string line)
{
    // Cocoa describes collections over several lines.
    std::replace(line.begin(), line.end(), '\n', ' ');
    fprintf(stderr, "plughost: %s\n", script::shortened(line).c_str());
}

static void printRaised(const std::vector<host::RaisedException> &raised)
{
    for (const host::RaisedException &exception : raised)
        printLine(exception.text());
}

static int runAndReport(const Options &options, const std::function<void(Session &)> &body)
{
    try {
        Session session(options);
        body(session);
        return kDone;
    } catch (const host::Exception &exception) {
        printRaised(exception.raised());
        return kBadInput;
    } catch (const Reported &) {
        return kBadInput;
    }
}

// Everything that the command held is gone by now.
static bool handlesBalance()
{
    host::Host &host = host::Host::shared();
    std::vector<host::HandleInfo> imbalances = host.imbalances();
    for (const host::HandleInfo &handle : imbalances)
        printLine("handle out of balance: " + handle.text());
    for (const std::string &fault : host.faults())
        printLine("fault of the plug-in: " + fault);
    return imbalances.empty() && host.faults().empty();
}

int runInSession(const Options &options, const std::function<void(Session &)> &body)
{
    guardStack();
    int status;
    {
        host::CocoaPool pool;
        status = runAndReport(options, body);
    }
    fflush(stdout);
    printUnreadFiles();
    std::vector<host::RaisedException> late = host::Host::shared().takePendingExceptions();
    printRaised(late);
    if (!late.empty() || (options.checkHandles && !handlesBalance()))
        return kBadInput;
    return status;
}

} // namespace plughost
