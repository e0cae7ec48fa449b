// Message sending for code of a loaded image. The functions themselves are in messages.S; they are only ever called by
// such code, under the names of the macOS runtime.
#pragma once

#include <cstdint>

namespace machorun {

class MappedImage;

// Methods implemented in an image return structs as macOS does; every other method returns them as Linux does.
void RegisterMethodsOf(const MappedImage &image);

} // namespace machorun

extern "C" {
void machorun_msgSend();
void machorun_msgSend_fpret();
void machorun_msgSend_stret();
void machorun_msgSendSuper();
void machorun_msgSendSuper_stret();
}
