#pragma once

namespace isolation {

// Starts Foundation and AppKit, for forks that need not do it again. What depends on the process, such as the defaults,
// is left to each of them.
void startCocoa();

} // namespace isolation
