// What the cases stand on: Foundation started once in the parent, the log caught, and in each child a host with the
// plug-in freshly loaded.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "host/host.h"
#include "host/validate/settings.h"

namespace validate {

inline constexpr char kClass[] = "NSUserDefaultsKTZ";

// In the parent: starts Foundation and AppKit, which takes longer than a case, but loads no plug-in.
void prepareGround(const Settings &settings);
const Settings &settings();

// Runs a case: empty when it passed, else what was wrong, exceptions that nobody expected among it.
std::string whyItFails(const std::function<void()> &body);

// --- In a child -----------------------------------------------------------------------------------------------------

host::Host &theHost();

// A host to play.
struct Played {
    std::string profile;
    bool family = true;                // with the companion library
    std::set<std::string> hidden = {}; // entry points

    // In the names of cases.
    std::string path() const { return "/" + profile + (family ? "/family/" : "/alone/"); }
};

// Loads the plug-in; entry points that are hidden are so before it asks for them.
void startHost(const Played &played);

// What was logged since the last time, without time and process in front.
std::vector<std::string> takeLog();

// A call, and what came out of it: an Objective-C exception that passed through is named in `thrown` ("NSException
// NSRangeException", "NSString foreign"), and its address is `thrownObject`.
struct Called {
    host::Outcome outcome;
    std::string thrown;
    const void *thrownObject = nullptr;
};
Called callAndCatch(const std::function<host::Outcome()> &call);

// The registered method. Throws Failure when the class has none.
const host::MethodDescription &methodOf(const std::string &declaration, bool isShared = false);
host::Value standardUserDefaults();
host::Value call(const host::Value &defaults, const std::string &method, const host::Arguments &arguments = {});

// Throws Failure for handles out of balance, broken rules and exceptions that nobody took.
void expectBalance(const host::LedgerMark &since = {});

// A value so that every difference can be seen: kinds of numbers, null strings, bytes, unknown encodings.
std::string shown(const host::Value &value);

} // namespace validate
