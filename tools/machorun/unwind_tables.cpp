#include "tools/machorun/unwind_tables.h"

#include <map>
#include <vector>

extern "C" void __register_frame(void *table);

namespace machorun {

namespace {

enum CallFrameOpcode : uint8_t {
    // These three carry an operand in their lower six bits.
    DW_CFA_advance_loc = 0x40,
    DW_CFA_offset = 0x80,
    DW_CFA_restore = 0xc0,
    DW_CFA_nop = 0x00,
    DW_CFA_set_loc = 0x01,
    DW_CFA_advance_loc1 = 0x02,
    DW_CFA_advance_loc2 = 0x03,
    DW_CFA_advance_loc4 = 0x04,
    DW_CFA_offset_extended = 0x05,
    DW_CFA_restore_extended = 0x06,
    DW_CFA_undefined = 0x07,
    DW_CFA_same_value = 0x08,
    DW_CFA_register = 0x09,
    DW_CFA_remember_state = 0x0a,
    DW_CFA_restore_state = 0x0b,
    DW_CFA_def_cfa = 0x0c,
    DW_CFA_def_cfa_register = 0x0d,
    DW_CFA_def_cfa_offset = 0x0e,
    DW_CFA_offset_extended_sf = 0x11,
    DW_CFA_def_cfa_sf = 0x12,
    DW_CFA_def_cfa_offset_sf = 0x13,
    DW_CFA_GNU_args_size = 0x2e,
};

// The tables of i386 macOS call ebp 4 and esp 5; everybody else has them the other way round.
uint8_t translatedRegister(uint8_t number)
{
    return number == 4 ? 5 : number == 5 ? 4 : number;
}

// A common record describes how the function records that name it are written.
struct CommonRecord {
    bool hasAugmentation = false;
    bool hasLanguageData = false;
};

class TableCopy {
public:
    TableCopy(const MappedImage &image, const Section &section)
        : image_(image), original_(image.startOf(section)), size_(section.size),
          // Four zero bytes end a table; the original may have none, since its section's size ends it.
          copy_(new uint8_t[section.size + 4]()), reader_(original_, size_, "unwind tables")
    {
        std::memcpy(copy_.get(), original_, size_);
    }

    void translate()
    {
        while (!reader_.atEnd()) {
            uint32_t start = reader_.position();
            auto length = reader_.read<uint32_t>();
            if (!length) {
                break;
            }
            uint32_t end = reader_.position() + length;
            reader_.skip(length);
            reader_.seek(start + 4);
            auto distance = reader_.read<uint32_t>();
            if (distance) {
                translateFunctionRecord(start + 4 - distance);
            } else {
                translateCommonRecord(start);
            }
            translateInstructions(end);
        }
    }

    std::unique_ptr<uint8_t[]> take() { return std::move(copy_); }

private:
    void translateCommonRecord(uint32_t start)
    {
        CommonRecord record;
        require(reader_.read<uint8_t>() == 1, "version");
        std::string augmentation = reader_.readString();
        reader_.readUleb(); // code alignment
        reader_.readSleb(); // data alignment
        uint32_t returnRegister = reader_.position();
        translateRegister(returnRegister);
        if (!augmentation.empty()) {
            require(augmentation[0] == 'z', "augmentation");
            record.hasAugmentation = true;
            uint32_t size = reader_.readUleb();
            uint32_t end = reader_.position() + size;
            for (char letter : augmentation.substr(1)) {
                auto encoding = reader_.read<uint8_t>();
                if (letter == 'P') {
                    require(encoding == (DW_EH_PE_indirect | DW_EH_PE_pcrel | DW_EH_PE_sdata4), "pointer encoding");
                    movePointer();
                } else {
                    require((letter == 'L' || letter == 'R') && encoding == (DW_EH_PE_pcrel | DW_EH_PE_absptr),
                            "pointer encoding");
                    record.hasLanguageData |= letter == 'L';
                }
            }
            reader_.seek(end);
        }
        require(augmentation.find('R') != std::string::npos, "pointer encoding");
        commonRecords_[start] = record;
    }

    void translateFunctionRecord(uint32_t commonStart)
    {
        auto common = commonRecords_.find(commonStart);
        require(common != commonRecords_.end(), "common record");
        require(image_.isExecutable(movePointer()), "function");
        reader_.read<uint32_t>(); // the function's size
        if (common->second.hasAugmentation) {
            uint32_t size = reader_.readUleb();
            uint32_t end = reader_.position() + size;
            if (common->second.hasLanguageData && size) {
                movePointer();
            }
            reader_.seek(end);
        }
    }

    // Makes the copy's relative pointer lead where the original's does, and answers where that is. Zero stays zero: it
    // means that there is nothing.
    uint32_t movePointer()
    {
        uint32_t position = reader_.position();
        auto relative = reader_.read<uint32_t>();
        if (!relative) {
            return 0;
        }
        uint32_t target = reinterpret_cast<uint32_t>(original_ + position) + relative;
        require(image_.contains(reinterpret_cast<const void *>(target)), "pointer");
        uint32_t moved = target - reinterpret_cast<uint32_t>(&copy_[position]);
        std::memcpy(&copy_[position], &moved, sizeof moved);
        return target;
    }

    void translateRegister(uint32_t position)
    {
        // Registers have small numbers: one byte each.
        copy_[position] = translatedRegister(reader_.read<uint8_t>());
        require(copy_[position] < 0x80, "register");
    }

    void translateInstructions(uint32_t end)
    {
        require(reader_.position() <= end, "record");
        while (reader_.position() < end) {
            uint32_t position = reader_.position();
            auto opcode = reader_.read<uint8_t>();
            uint8_t operand = opcode & 0x3f;
            switch (opcode & 0xc0) {
            case DW_CFA_advance_loc:
                break;
            case DW_CFA_offset:
                copy_[position] = DW_CFA_offset | translatedRegister(operand);
                reader_.readUleb();
                break;
            case DW_CFA_restore:
                copy_[position] = DW_CFA_restore | translatedRegister(operand);
                break;
            default:
                translateExtended(opcode);
            }
        }
        require(reader_.position() == end, "record");
    }

    void translateExtended(uint8_t opcode)
    {
        switch (opcode) {
        case DW_CFA_nop:
        case DW_CFA_remember_state:
        case DW_CFA_restore_state:
            break;
        case DW_CFA_advance_loc1:
            reader_.skip(1);
            break;
        case DW_CFA_advance_loc2:
            reader_.skip(2);
            break;
        case DW_CFA_advance_loc4:
            reader_.skip(4);
            break;
        case DW_CFA_offset_extended:
        case DW_CFA_def_cfa:
            translateRegister(reader_.position());
            reader_.readUleb();
            break;
        case DW_CFA_offset_extended_sf:
        case DW_CFA_def_cfa_sf:
            translateRegister(reader_.position());
            reader_.readSleb();
            break;
        case DW_CFA_register:
            translateRegister(reader_.position());
            translateRegister(reader_.position());
            break;
        case DW_CFA_restore_extended:
        case DW_CFA_undefined:
        case DW_CFA_same_value:
        case DW_CFA_def_cfa_register:
            translateRegister(reader_.position());
            break;
        case DW_CFA_def_cfa_offset:
        case DW_CFA_GNU_args_size:
            reader_.readUleb();
            break;
        case DW_CFA_def_cfa_offset_sf:
            reader_.readSleb();
            break;
        default:
            throw BadImage("has unwind tables with an unknown instruction: " + Hex(opcode));
        }
    }

    static void require(bool condition, const char *what)
    {
        if (!condition) {
            throw BadImage(std::string("has unwind tables with a wrong ") + what);
        }
    }

    const MappedImage &image_;
    const uint8_t *original_;
    uint32_t size_;
    std::unique_ptr<uint8_t[]> copy_;
    ByteReader reader_;
    std::map<uint32_t, CommonRecord> commonRecords_;
};

} // namespace

std::unique_ptr<uint8_t[]> TranslatedUnwindTables(const ImageFile &file, const MappedImage &image)
{
    const Section *section = file.findSection("__TEXT", "__eh_frame");
    if (!section || !section->size)
        return nullptr;
    TableCopy copy(image, *section);
    copy.translate();
    return copy.take();
}

void RegisterUnwindTables(std::unique_ptr<uint8_t[]> tables)
{
    if (tables)
        __register_frame(tables.release());
}

} // namespace machorun
