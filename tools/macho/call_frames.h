// The table of call frames, __TEXT,__eh_frame, by which exceptions find their way up the stack. Its records point at
// functions, handlers and handler tables relative to themselves, and the assembler settles such differences without
// leaving relocations. So the records are read, every pointer in them is found, and each is aimed anew.
#pragma once

#include <cstdint>
#include <vector>

#include "tools/macho/object_file.h"

namespace macho {

struct CallFramePointer {
    enum Kind {
        Code,    // the function that a record describes, or its table of handlers: these stay with their own copy
        Handler, // the routine that decides about exceptions, or the pointer to it
    } kind;
    uint32_t offset; // of four bytes in the section that hold target minus their own address
    uint32_t target; // an address of the object
};

struct CallFrameTable {
    // The records' bytes. A terminator, and whatever follows it, is left out: in the middle of the finished table it
    // would hide the records of the objects behind it.
    uint32_t size = 0;
    std::vector<CallFramePointer> pointers;
};

// Raises a Failure for a record that cannot be followed.
CallFrameTable parseCallFrames(const ObjectFile &object, const Section &section);

} // namespace macho
