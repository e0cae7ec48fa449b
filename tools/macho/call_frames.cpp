#include "tools/macho/call_frames.h"

#include <map>
#include <string>

namespace macho {

using namespace format;

namespace {

// The part that the records of several functions share.
struct CommonRecord {
    bool hasAugmentationData = false;
    uint8_t functionEncoding = DW_EH_PE_absptr;
    uint8_t handlerTableEncoding = DW_EH_PE_omit;
};

class Parser {
public:
    Parser(const std::string &where, uint32_t address, const ByteView &bytes)
        : where(where), address(address), bytes(bytes)
    {
    }
    CallFrameTable parse();

private:
    [[noreturn]] void refuse(uint32_t record, const std::string &reason) const
    {
        fail(where, "+", hex(record), ": call frame record: ", reason);
    }
    void parseCommon(uint32_t record, uint64_t end);
    void parseFunction(uint32_t record, uint64_t end, const CommonRecord &common);
    void addPointer(uint32_t record, uint64_t offset, uint8_t encoding, CallFramePointer::Kind kind);

    static constexpr const char *what = "a call frame record";
    const std::string &where;
    const uint32_t address;
    const ByteView bytes;
    std::map<uint32_t, CommonRecord> commonRecords;
    CallFrameTable table;
};

CallFrameTable Parser::parse()
{
    for (uint32_t record = 0; record < bytes.size();) {
        uint32_t length = bytes.u32(record, what);
        if (length == 0)
            break;
        uint64_t end = uint64_t{record} + 4 + length;
        if (length < 4 || end > bytes.size())
            refuse(record, "damaged: it has the impossible length " + std::to_string(length));
        uint32_t toCommon = bytes.u32(record + 4, what);
        table.records.push_back({record, 4 + length, toCommon == 0 ? record : record + 4 - toCommon});
        if (toCommon == 0) {
            parseCommon(record, end);
        } else {
            auto common = commonRecords.find(table.records.back().common);
            if (common == commonRecords.end())
                refuse(record, "damaged: the record that it continues does not exist");
            parseFunction(record, end, common->second);
        }
        record = static_cast<uint32_t>(end);
    }
    return std::move(table);
}

void Parser::parseCommon(uint32_t record, uint64_t end)
{
    CommonRecord common;
    uint64_t at = record + 8;
    uint8_t version = bytes.u8(at++, what);
    if (version != 1 && version != 3)
        refuse(record, "version " + std::to_string(version) + " is not supported");
    std::string_view augmentation = bytes.text(at, 32, what);
    at += augmentation.size() + 1;
    bytes.uleb(at, what); // code alignment
    bytes.sleb(at, what); // data alignment
    table.records.back().returnRegister = static_cast<uint32_t>(at);
    if (version == 1)
        at++;
    else
        bytes.uleb(at, what);
    if (!augmentation.empty()) {
        if (augmentation[0] != 'z')
            refuse(record, "augmentation \"" + printable(augmentation) + "\" is not supported");
        common.hasAugmentationData = true;
        bytes.uleb(at, what); // its length
        for (char letter : augmentation.substr(1)) {
            if (letter == 'L') {
                common.handlerTableEncoding = bytes.u8(at++, what);
            } else if (letter == 'R') {
                common.functionEncoding = bytes.u8(at++, what);
            } else if (letter == 'P') {
                uint8_t encoding = bytes.u8(at++, what);
                addPointer(record, at, encoding, CallFramePointer::Handler);
                at += 4;
            } else if (letter != 'S') {
                refuse(record, "augmentation \"" + printable(augmentation) + "\" is not supported");
            }
        }
    }
    if (at > end)
        refuse(record, "damaged: its fields reach past its end");
    table.records.back().instructions = static_cast<uint32_t>(at);
    commonRecords[record] = common;
}

void Parser::parseFunction(uint32_t record, uint64_t end, const CommonRecord &common)
{
    uint64_t at = record + 8;
    addPointer(record, at, common.functionEncoding, CallFramePointer::Function);
    at += 8; // the function's address and its length
    if (common.hasAugmentationData) {
        uint32_t length = bytes.uleb(at, what);
        if (common.handlerTableEncoding != DW_EH_PE_omit) {
            if (length < 4)
                refuse(record, "damaged: it has no room for its handler table");
            if (bytes.u32(at, what) != 0) // null: this function has no handlers
                addPointer(record, at, common.handlerTableEncoding, CallFramePointer::HandlerTable);
        }
        at += length;
    }
    if (at > end)
        refuse(record, "damaged: its fields reach past its end");
    table.records.back().instructions = static_cast<uint32_t>(at);
}

void Parser::addPointer(uint32_t record, uint64_t offset, uint8_t encoding, CallFramePointer::Kind kind)
{
    uint8_t form = encoding & 0x0f, base = encoding & 0x70;
    bool fourBytes = form == DW_EH_PE_absptr || form == DW_EH_PE_udata4 || form == DW_EH_PE_sdata4;
    bool indirectCode = kind != CallFramePointer::Handler && (encoding & DW_EH_PE_indirect);
    if (!fourBytes || base != DW_EH_PE_pcrel || indirectCode)
        refuse(record, "pointer encoding " + hex(encoding) + " is not supported");
    auto place = static_cast<uint32_t>(offset);
    table.records.back().pointers.push_back({kind, place, address + place + bytes.u32(offset, what)});
}

} // namespace

CallFrameTable parseCallFrames(const std::string &where, uint32_t address, const ByteView &bytes)
{
    return Parser(where, address, bytes).parse();
}

CallFrameTable parseCallFrames(const ObjectFile &object, const Section &section)
{
    std::string where = object.describe(section);
    // Differences inside the table are settled already; an address from elsewhere would have to be written by the
    // loader.
    for (const Relocation &relocation : section.relocations)
        if (relocation.type == GENERIC_RELOC_VANILLA)
            fail(where, "+", hex(relocation.offset), ": call frame record: a text relocation would be needed");
    return parseCallFrames(where, section.address, ByteView(where, section.contents.data(), section.contents.size()));
}

} // namespace macho
