// The embedded host: a miniature runtime of the host language that loads plug-ins and calls their classes.
//
// There is one host per process, since a plug-in keeps the entry points that it found for the life of the process.
// A typical use:
//
//     host::Host &host = host::Host::shared();
//     host.use(*host::Profile::named("2013.03"));
//     host.load("build/linux-i386/Family.so");
//     host.load("build/linux-i386/NSUserDefaults.so");
//     host::CocoaPool pool;
//     host::Value defaults = host.callShared("NSUserDefaultsKTZ", "standardUserDefaults");
//     host.assign(defaults, "integerForKey", {"Runs"}, 5);
//     int runs = host.call(defaults, "integerForKey", {"Runs"}).int32();
//
// Not for more than one thread, as the plug-ins that it serves.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/classes.h"
#include "host/cocoa_pool.h"
#include "host/declaration.h"
#include "host/exception.h"
#include "host/ledger.h"
#include "host/plugin.h"
#include "host/profile.h"
#include "host/value.h"

namespace host {

// What a call gave: the result (the plug-in's neutral result after a failure) and the exceptions it raised.
struct Outcome {
    Value result;
    std::vector<RaisedException> raised;
};

// One entry point as the host keeps it. Global methods ("VarType") are listed like entry points.
struct EntryPointInfo {
    std::string name;
    bool isGlobalMethod = false;
    bool offered = false; // by the profile, and not hidden
    bool hidden = false;
    long lookups = 0; // found or not
    long calls = 0;
};

// What can be made to fail.
enum class Creation { String, MemoryBlock, Array, Dictionary, Instance, FolderItem, Variant };

class Host {
public:
    static Host &shared();

    // --- Profile ---------------------------------------------------------------------------------------------------

    // Takes effect at once: for look-ups, string and array layouts of handles made from now on, the version number.
    void use(const Profile &profile);
    const Profile &profile() const;

    // --- Plug-ins --------------------------------------------------------------------------------------------------

    // Loads a file and runs its REALPluginMain. Throws CallError when it cannot be loaded or has no entry.
    // The Plugin lives until it is unloaded.
    Plugin &load(const std::string &path);
    Plugin &open(const std::string &path); // the same without running it
    // Classes that it registered are forgotten; live instances of them must be gone.
    void unload(Plugin &plugin);
    void addLoader(PluginLoader loader);
    // The function that plug-ins are handed, for tests that call REALPluginMain themselves.
    static interface::Resolver resolver();

    // --- Entry points ----------------------------------------------------------------------------------------------

    // Hiding changes what a look-up answers from now on; a plug-in that found the entry before goes on calling it.
    // Names are entry points ("REALLockObject") or global methods ("VarType", "LenB"); an unknown one throws CallError.
    void hide(const std::string &name);
    void show(const std::string &name);
    void showAll();
    // Puts a function of the caller's in the entry's place: for look-ups from now on and, since every entry goes
    // through one counted function, for calls by those who found it before. Null restores the host's own.
    void replace(const std::string &name, void *function);
    // Called at the start of every call of the entry, before the host does its part; null removes it.
    void beforeCall(const std::string &name, std::function<void()> observer);

    // Methods and properties of the host's own classes that plug-ins reach by name, as
    // hideMethod("Dictionary", "Key(index As Integer) As Variant") or hideProperty("Variant", "Type").
    void hideMethod(const std::string &className, const std::string &declaration);
    void hideProperty(const std::string &className, const std::string &property);

    std::vector<EntryPointInfo> entryPoints() const;
    long lookups(const std::string &name) const;
    long calls(const std::string &name) const;
    void resetCounts();
    // Every name asked of the resolver since the last resetCounts, in order, unknown ones too.
    const std::vector<std::string> &lookupLog() const;

    // --- Faults on request -----------------------------------------------------------------------------------------

    // The k-th creation of that sort by a plug-in from now on (1: the next one) gives null; 0 cancels. `times` fails
    // that many in a row. Values that host code makes itself do not count.
    void failCreation(Creation sort, int k, int times = 1);
    // The k-th "REALBuildString" from now on throws std::bad_alloc; 0 cancels.
    void throwWhileBuildingString(int k, int times = 1);
    long creations(Creation sort) const; // attempts by plug-ins since resetCounts

    // --- Classes ---------------------------------------------------------------------------------------------------

    const ClassDescription *findClass(const std::string &name) const; // null when there is none; any case
    std::vector<const ClassDescription *> classes(bool fromPluginsOnly = false) const; // in the order of registration
    // Those of the class and its superclasses, for Value::property and setProperty.
    std::vector<PropertyDescription> properties(const std::string &className) const;
    void defineClass(const HostClass &definition); // replaces a class of the same name
    // The name is unknown from now on. Instances live on.
    void removeClass(const std::string &name);
    // A method by its declaration, or by its name where there is one of that name; superclasses included. Null when
    // there is none or several fit the name.
    const MethodDescription *findMethod(const std::string &className, const std::string &nameOrDeclaration,
                                        bool isShared = false) const;

    // --- Calls -----------------------------------------------------------------------------------------------------

    // What `New ClassName(arguments)` does: makes an instance, then calls the constructor that fits, if arguments are
    // given or the class has one without.
    Value newObject(const std::string &className, const Arguments &arguments = {});
    Outcome tryNewObject(const std::string &className, const Arguments &arguments = {});
    // The instance alone, its initialisers run, no constructor called.
    Value newInstance(const std::string &className);

    // Choose among overloads by number and types of the arguments, check each against its declaration (TypeError,
    // CallError before anything is called), call, and deliver what was raised (Exception).
    Value call(const Value &object, const std::string &method, const Arguments &arguments = {});
    Value callShared(const std::string &className, const std::string &method, const Arguments &arguments = {});
    // The assignable form: object.method(arguments) = value.
    void assign(const Value &object, const std::string &method, const Arguments &arguments, const Value &value);

    // The same, but what was raised comes with the result.
    Outcome tryCall(const Value &object, const std::string &method, const Arguments &arguments = {});
    Outcome tryCallShared(const std::string &className, const std::string &method, const Arguments &arguments = {});
    Outcome tryAssign(const Value &object, const std::string &method, const Arguments &arguments, const Value &value);

    // One registered method called directly; `self` is nil for a shared one.
    Outcome invoke(const MethodDescription &method, const Value &self, const Arguments &arguments);
    // Its setter: the value is the last argument.
    Outcome invokeSetter(const MethodDescription &method, const Value &self, const Arguments &arguments);

    // Global methods of the host by declaration or name, such as "VarType".
    Value callGlobal(const std::string &method, const Arguments &arguments);

    // Exceptions that were raised while no call of the above was under way (a finaliser run by a dying Value, a raw
    // function pointer), taken away.
    std::vector<RaisedException> takePendingExceptions();
    // Raises as a plug-in does, for methods written in C++.
    void raise(const std::string &className, const std::string &message, int32_t errorNumber = 0);

    // --- Ledger ----------------------------------------------------------------------------------------------------

    std::vector<HandleInfo> liveHandles() const;
    std::optional<HandleInfo> handleInfo(const void *handle) const;
    // Live handles with locks that nobody in the host owns, or with fewer than the host owns.
    std::vector<HandleInfo> imbalances() const;

    LedgerMark mark() const;
    // Handles whose locks held by plug-ins differ from the mark's (0 for those made since).
    std::vector<HandleInfo> leaks(const LedgerMark &since) const;
    std::vector<HandleInfo> liveSince(const LedgerMark &since) const;

    // What plug-ins did against the rules: a dead handle unlocked or used, an object where a string belongs, a string
    // record disposed twice, a class record that cannot be read. In words, in order.
    const std::vector<std::string> &faults() const;
    std::vector<std::string> takeFaults();

private:
    Host();
    ~Host() = delete;
    friend class Plugin;
};

} // namespace host
