// The table of call frames, __TEXT,__eh_frame, by which exceptions find their way up the stack. Its records point at
// functions, handlers and handler tables relative to themselves, and the assembler settles such differences without
// leaving relocations. So the records are read, every pointer in them is found, and whoever moves a record or what it
// points at aims them anew.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "tools/macho/object_file.h"

namespace macho {

struct CallFramePointer {
    enum Kind {
        Function,     // that the record describes
        HandlerTable, // of that function
        Handler,      // the routine that decides about exceptions, or the pointer to it
    } kind;
    uint32_t offset; // of four bytes in the section that hold target minus their own address
    uint32_t target; // an address of the object
};

struct CallFrameRecord {
    uint32_t start, size;        // in the section
    uint32_t common;             // where the record starts that this one continues; its own start if it continues none
    uint32_t instructions = 0;   // where they start; they reach to the record's end
    uint32_t returnRegister = 0; // where the number of the return address's register is, of a record that starts one
    std::vector<CallFramePointer> pointers = {};
};

struct CallFrameTable {
    // A terminator, and whatever follows it, is left out: in the middle of the finished table it would hide the records
    // of the objects behind it.
    std::vector<CallFrameRecord> records;
};

// By object and section number: the table of each object that has one.
using CallFrameTables = std::map<std::pair<uint32_t, uint32_t>, CallFrameTable>;

// Raises a Failure for a record that cannot be followed. `where` names the table, `address` is where it lies.
CallFrameTable parseCallFrames(const std::string &where, uint32_t address, const ByteView &bytes);
// That of an object, whose table no relocation may change.
CallFrameTable parseCallFrames(const ObjectFile &object, const Section &section);

} // namespace macho
