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

// What a dead record was; nothing for memory that was never one or was forgotten since.
std::optional<std::string> epitaph(const void *record);

} // namespace host::runtime
