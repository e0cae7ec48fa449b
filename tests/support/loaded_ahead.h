// What black-box cases find done, beside Cocoa started: no case is about it, and it takes longer than most cases.
#pragma once

namespace support {

// The files of the plug-in and of its family are in memory as the loader leaves them; no function that they export has
// been called.
void loadFilesAhead();

} // namespace support
