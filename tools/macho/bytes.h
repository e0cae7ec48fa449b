// Reading bytes that may be damaged, and writing bytes: everything is little-endian, as on Intel, where this runs, too.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace macho {

using Bytes = std::vector<uint8_t>;

inline uint32_t load32(const uint8_t *at)
{
    return at[0] | at[1] << 8 | at[2] << 16 | static_cast<uint32_t>(at[3]) << 24;
}

inline void store32(uint8_t *at, uint32_t value)
{
    for (int byte = 0; byte < 4; byte++)
        at[byte] = static_cast<uint8_t>(value >> 8 * byte);
}

inline uint64_t alignUp(uint64_t value, uint64_t alignment)
{
    return (value + alignment - 1) / alignment * alignment;
}

// A borrowed range of bytes of a named file. Every access is checked: one past the end raises a Failure that names the
// file and what was being read.
class ByteView {
public:
    ByteView() = default;
    ByteView(std::string_view fileName, const uint8_t *bytes, size_t count)
        : file(fileName), first(bytes), length(count)
    {
    }

    size_t size() const { return length; }
    const uint8_t *data() const { return first; }

    // The `count` bytes from `offset`; `what` says what they are.
    ByteView slice(uint64_t offset, uint64_t count, const char *what) const;
    uint8_t u8(uint64_t offset, const char *what) const { return *at(offset, 1, what); }
    uint32_t u32(uint64_t offset, const char *what) const { return load32(at(offset, 4, what)); }
    // A record of the format, as it lies in the file.
    template <class Record>
    Record record(uint64_t offset, const char *what) const
    {
        Record record;
        std::memcpy(&record, at(offset, sizeof record, what), sizeof record);
        return record;
    }
    // Records one behind the other.
    template <class Record>
    std::vector<Record> records(uint64_t offset, uint32_t count, const char *what) const
    {
        ByteView all = slice(offset, uint64_t{count} * sizeof(Record), what);
        std::vector<Record> list(count);
        std::copy_n(all.first, all.length, reinterpret_cast<uint8_t *>(list.data()));
        return list;
    }
    // A number in the variable-length form; the offset is moved behind it.
    uint32_t uleb(uint64_t &offset, const char *what) const;
    int32_t sleb(uint64_t &offset, const char *what) const;
    // Up to the next zero byte, which must come within `longest` bytes.
    std::string_view text(uint64_t offset, size_t longest, const char *what) const;
    // A field of fixed width, without the zero bytes that fill it.
    std::string_view paddedText(uint64_t offset, size_t width, const char *what) const;

private:
    const uint8_t *at(uint64_t offset, uint64_t count, const char *what) const;

    std::string_view file;
    const uint8_t *first = nullptr;
    size_t length = 0;
};

class ByteWriter {
public:
    Bytes bytes;

    size_t size() const { return bytes.size(); }
    void u8(uint32_t value) { bytes.push_back(static_cast<uint8_t>(value)); }
    void u16(uint32_t value);
    void u32(uint32_t value);
    void uleb(uint32_t value);
    void sleb(int32_t value);
    void text(std::string_view value); // with its zero byte
    void paddedText(std::string_view value, size_t width);
    void append(const Bytes &more) { bytes.insert(bytes.end(), more.begin(), more.end()); }
    void alignTo(size_t alignment) { bytes.resize(alignUp(bytes.size(), alignment)); }
};

} // namespace macho
