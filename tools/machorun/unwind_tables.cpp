#include "tools/machorun/unwind_tables.h"

#include "tools/macho/call_frames.h"

#include <algorithm>
#include <map>

extern "C" void __register_frame(void *table);

namespace machorun {

namespace {

constexpr const char *what = "a record of the unwind tables";

// Instructions with an operand in their lower six bits, and all others.
constexpr uint8_t packedInstruction = 0xc0;
enum PackedInstruction : uint8_t { DW_CFA_advance_loc = 0x40, DW_CFA_offset = 0x80, DW_CFA_restore = 0xc0 };

// clang-format off

// The operands that follow an instruction: registers, unsigned and signed numbers of any length, so many bytes.
const std::map<uint8_t, const char *> operandsOf = {
    {DW_CFA_advance_loc, ""},
    {DW_CFA_offset,      "u"},
    {DW_CFA_restore,     ""},
    {0x00, ""},   // nop
    {0x02, "1"},  // advance_loc1
    {0x03, "2"},  // advance_loc2
    {0x04, "4"},  // advance_loc4
    {0x05, "ru"}, // offset_extended
    {0x06, "r"},  // restore_extended
    {0x07, "r"},  // undefined
    {0x08, "r"},  // same_value
    {0x09, "rr"}, // register
    {0x0a, ""},   // remember_state
    {0x0b, ""},   // restore_state
    {0x0c, "ru"}, // def_cfa
    {0x0d, "r"},  // def_cfa_register
    {0x0e, "u"},  // def_cfa_offset
    {0x11, "rs"}, // offset_extended_sf
    {0x12, "rs"}, // def_cfa_sf
    {0x13, "s"},  // def_cfa_offset_sf
    {0x2e, "u"},  // GNU_args_size
};

// clang-format on

// The tables of i386 macOS call ebp 4 and esp 5; everybody else has them the other way round.
uint8_t translatedRegister(uint8_t number)
{
    return number == 4 ? 5 : number == 5 ? 4 : number;
}

void require(bool condition, const char *part)
{
    if (!condition)
        throw BadImage(std::string("has unwind tables with a wrong ") + part);
}

class TableCopy {
public:
    TableCopy(const macho::DylibFile &file, const macho::DylibSection &section, const MappedImage &image)
        : image_(image), section_(section), original_(file.contents(section)),
          // Four zero bytes end a table; the original may have none, since its section's size ends it.
          copy_(new uint8_t[section.size + 4]())
    {
        std::copy_n(original_.data(), original_.size(), copy_.get());
    }

    std::unique_ptr<uint8_t[]> translated()
    {
        for (const macho::CallFrameRecord &record :
             macho::parseCallFrames(section_.name, section_.address, original_).records) {
            for (const macho::CallFramePointer &pointer : record.pointers)
                aim(pointer);
            if (record.common == record.start)
                translateRegister(record.returnRegister);
            translateInstructions(record.instructions, record.start + record.size);
        }
        return std::move(copy_);
    }

private:
    // Makes the copy's relative pointer lead where the original's does.
    void aim(const macho::CallFramePointer &pointer)
    {
        const uint8_t *place = image_.at(pointer.target);
        auto target = reinterpret_cast<uint32_t>(place);
        require(image_.contains(place), "pointer");
        require(pointer.kind != macho::CallFramePointer::Function || image_.isExecutable(target), "function");
        uint8_t *word = &copy_[pointer.offset];
        macho::store32(word, target - reinterpret_cast<uint32_t>(word));
    }

    void translateRegister(uint64_t at)
    {
        uint8_t number = original_.u8(at, what);
        require(number < 0x80, "register"); // registers have small numbers: one byte each
        copy_[at] = translatedRegister(number);
    }

    void translateInstructions(uint64_t at, uint64_t end)
    {
        while (at < end) {
            uint8_t instruction = original_.u8(at, what), packed = instruction & packedInstruction;
            if (packed == DW_CFA_offset || packed == DW_CFA_restore)
                copy_[at] = packed | translatedRegister(instruction & ~packedInstruction);
            auto operands = operandsOf.find(packed ? packed : instruction);
            if (operands == operandsOf.end())
                throw BadImage("has unwind tables with an unknown instruction: " + macho::hex(instruction));
            at++;
            for (const char *operand = operands->second; *operand; operand++) {
                switch (*operand) {
                case 'r':
                    translateRegister(at++);
                    break;
                case 'u':
                    original_.uleb(at, what);
                    break;
                case 's':
                    original_.sleb(at, what);
                    break;
                default:
                    at += *operand - '0';
                }
            }
        }
        require(at == end, "record");
    }

    const MappedImage &image_;
    const macho::DylibSection &section_;
    const macho::ByteView original_;
    std::unique_ptr<uint8_t[]> copy_;
};

} // namespace

std::unique_ptr<uint8_t[]> TranslatedUnwindTables(const macho::DylibFile &file, const MappedImage &image)
{
    const macho::DylibSection *section = file.section("__TEXT", "__eh_frame");
    if (!section || !section->size)
        return nullptr;
    return TableCopy(file, *section, image).translated();
}

void RegisterUnwindTables(std::unique_ptr<uint8_t[]> tables)
{
    if (tables)
        __register_frame(tables.release());
}

} // namespace machorun
