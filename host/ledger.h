// The ledger of handles: every object, string, array and string-data record that lives, with its locks.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace host {

enum class HandleKind { Object, String, Array, StringData };

// What the ledger knows about one live handle.
struct HandleInfo {
    const void *handle = nullptr;
    HandleKind kind = HandleKind::Object;
    std::string what;       // "NSUserDefaultsKTZ", "string \"abc\" (UTF-8, 3 bytes)", "array of string, 2 elements"
    int32_t locks = 0;      // all locks
    int32_t heldByHost = 0; // those that Values, arrays, Dictionaries and the host itself own
    uint64_t serial = 0;    // order of creation

    int32_t heldElsewhere() const { return locks - heldByHost; } // by plug-ins; negative: unlocked too often
    std::string text() const;
};

// A moment in the life of the ledger, to compare with later.
struct LedgerMark {
    uint64_t serial = 0;
    std::vector<std::pair<const void *, int32_t>> heldElsewhere; // those that are not 0
};

} // namespace host
