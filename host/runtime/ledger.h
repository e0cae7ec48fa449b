// The host's book of handles and of faults.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/ledger.h"
#include "host/runtime/handle.h"

namespace host::runtime {

std::vector<HandleInfo> liveHandles(); // in the order of creation
std::optional<HandleInfo> handleInfo(const void *record);
LedgerMark markLedger();

void noteFault(const std::string &fault);
std::vector<std::string> &faults();

// Records of dead handles are filled with a pattern and kept for a while, so that a late use is seen for what it is and
// not taken for a younger handle at the same address.
void bury(void *record, size_t size, const std::string &what);
// What a dead record was; nothing for memory that was never one or was forgotten since.
std::optional<std::string> epitaph(const void *record);

} // namespace host::runtime
