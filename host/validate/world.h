// A model of a host and of what the plug-in can do on it, written from the outside: which entry points there are, which
// creations will fail, and so which value, message and exception a call must give.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/host.h"
#include "host/runtime/state.h"

namespace validate {

// Cocoa refuses what it was given; the call ends with its neutral result.
struct CocoaRefuses {
    std::string name;
};

class World {
public:
    World(); // the host as it is now

    bool has(const std::string &entry) const;
    double version() const { return _version; } // as the plug-in learnt it
    bool family() const { return _family; }
    bool readsStorage() const; // of arrays

    // The same faults as the host is told.
    void failCreation(host::Creation sort, int k, int times = 1) { _failures[sort] = {k, times}; }
    void throwWhileBuilding(int k, int times = 1) { _throws = {k, times}; }

    // --- Towards the host: values as `shown` shows them
    // ----------------------------------------------------------------

    std::string newText(const std::string &text, uint32_t encoding = host::kUTF8); // "null" where it cannot be made
    std::string newVariant(const char *entry, const std::string &shownValue);
    std::string newTextVariant(const std::string &text);
    std::string newObject(const std::string &className, const std::string &shownObject);
    std::string newMemoryBlock(const std::string &digits, int size);
    std::string newItem(const char *entry, const std::string &path);
    bool newArray();
    bool inserts() const { return has("RuntimeArrayDirectGetInsertProc"); }
    void raise(const std::string &className, const std::string &message);
    void raiseOfCocoa(const std::string &name, const std::string &reason);

    // --- Towards Cocoa: objects as messages show them
    // ------------------------------------------------------------------

    std::string text(const std::string &ascii); // "nil" where it cannot be read
    bool knowsTypes() const;
    std::string number(const char *convert, const char *property, const std::string &value, const std::string &zero);
    std::string textOfVariant(const std::string &ascii);
    std::string date(const std::string &shownDate) const;
    bool is(const char *className) const; // whether an object of that class is recognised
    int32_t elements(int32_t count) const { return has("RuntimeUBound") ? count : 1; }

    // What the call must leave behind.
    std::vector<std::string> raised; // "Class: message"
    std::vector<std::string> log;
    std::string thrown;     // what passes through
    int strangeRecords = 0; // string records disposed that the host did not fill

private:
    bool make(host::Creation sort) { return !_failures[sort].strikes(); }
    bool buildString(); // throws OutOfMemory

    std::map<std::string, bool> _offered;
    double _version;
    bool _family;
    std::map<host::Creation, host::runtime::PlannedFault> _failures;
    host::runtime::PlannedFault _throws;
    bool _raisingOutOfMemory = false;
};

// Whether a text is as expected, where a star in the expected one stands for anything.
bool matches(const std::string &text, const std::string &expected);

} // namespace validate
