#include "tools/macho/bytes.h"

#include <algorithm>
#include <string>

#include "tools/macho/error.h"

namespace macho {

const uint8_t *ByteView::at(uint64_t offset, uint64_t count, const char *what) const
{
    if (count > length || offset > length - count)
        fail(printable(file), ": the file is cut off or damaged: ", what, " reaches past its end");
    return first + offset;
}

ByteView ByteView::slice(uint64_t offset, uint64_t count, const char *what) const
{
    return ByteView(file, at(offset, count, what), static_cast<size_t>(count));
}

uint32_t ByteView::uleb(uint64_t &offset, const char *what) const
{
    uint64_t value = 0;
    for (unsigned shift = 0;; shift += 7) {
        uint8_t byte = u8(offset++, what);
        if (shift > 28 || (shift == 28 && (byte & 0x70)))
            fail(printable(file), ": damaged: ", what, " holds a number of more than 32 bits");
        value |= static_cast<uint64_t>(byte & 0x7f) << shift;
        if (!(byte & 0x80))
            return static_cast<uint32_t>(value);
    }
}

int32_t ByteView::sleb(uint64_t &offset, const char *what) const
{
    uint64_t value = 0;
    for (unsigned shift = 0;;) {
        uint8_t byte = u8(offset++, what);
        if (shift > 28)
            fail(printable(file), ": damaged: ", what, " holds a number of more than 32 bits");
        value |= static_cast<uint64_t>(byte & 0x7f) << shift;
        shift += 7;
        if (!(byte & 0x80)) {
            if (byte & 0x40)
                value |= ~uint64_t{0} << shift;
            return static_cast<int32_t>(static_cast<uint32_t>(value));
        }
    }
}

std::string_view ByteView::text(uint64_t offset, size_t longest, const char *what) const
{
    const uint8_t *start = at(offset, 1, what);
    size_t available = length - static_cast<size_t>(offset);
    const void *end = std::memchr(start, 0, available < longest ? available : longest);
    if (!end)
        fail(printable(file), ": damaged: ", what, " holds a text without an end, or one of more than ",
             std::to_string(longest), " bytes");
    return std::string_view(reinterpret_cast<const char *>(start),
                            static_cast<size_t>(static_cast<const uint8_t *>(end) - start));
}

std::string_view ByteView::paddedText(uint64_t offset, size_t width, const char *what) const
{
    const char *start = reinterpret_cast<const char *>(at(offset, width, what));
    return std::string_view(start, strnlen(start, width));
}

void ByteWriter::u16(uint32_t value)
{
    u8(value);
    u8(value >> 8);
}

void ByteWriter::u32(uint32_t value)
{
    u16(value);
    u16(value >> 16);
}

void ByteWriter::uleb(uint32_t value)
{
    for (; value > 0x7f; value >>= 7)
        u8((value & 0x7f) | 0x80);
    u8(value);
}

void ByteWriter::sleb(int32_t value)
{
    for (;;) {
        uint32_t low = static_cast<uint32_t>(value) & 0x7f;
        value >>= 7;
        bool last = (value == 0 && !(low & 0x40)) || (value == -1 && (low & 0x40));
        u8(last ? low : low | 0x80);
        if (last)
            return;
    }
}

void ByteWriter::text(std::string_view value)
{
    bytes.insert(bytes.end(), value.begin(), value.end());
    u8(0);
}

void ByteWriter::paddedText(std::string_view value, size_t width)
{
    size_t end = bytes.size() + width;
    bytes.insert(bytes.end(), value.begin(), value.begin() + std::min(value.size(), width));
    bytes.resize(end);
}

} // namespace macho
