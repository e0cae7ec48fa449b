// Reads a stretch of bytes and never leaves it, whatever the bytes say.
#pragma once

#include "tools/machorun/bad_image.h"

#include <cstdint>
#include <cstring>
#include <string>

namespace machorun {

class ByteReader {
public:
    // `what` names the bytes in errors and must outlive the reader.
    ByteReader(const uint8_t *bytes, uint32_t size, const char *what) : bytes_(bytes), size_(size), what_(what) {}

    uint32_t size() const { return size_; }
    uint32_t position() const { return position_; }
    bool atEnd() const { return position_ == size_; }

    void seek(uint32_t position)
    {
        if (position > size_) {
            fail();
        }
        position_ = position;
    }

    void skip(uint32_t count) { take(count); }

    template <class Record>
    Record read()
    {
        Record record;
        std::memcpy(&record, take(sizeof record), sizeof record);
        return record;
    }

    template <class Record>
    Record readAt(uint32_t position)
    {
        seek(position);
        return read<Record>();
    }

    // A name up to its terminating zero, which must be there.
    const char *readString()
    {
        const void *zero = std::memchr(bytes_ + position_, 0, size_ - position_);
        if (!zero) {
            fail();
        }
        const uint8_t *start = bytes_ + position_;
        take(static_cast<uint32_t>(static_cast<const uint8_t *>(zero) - start) + 1);
        return reinterpret_cast<const char *>(start);
    }

    uint32_t readUleb()
    {
        uint64_t value = 0;
        for (unsigned shift = 0;; shift += 7) {
            uint8_t byte = read<uint8_t>();
            if (shift > 28) {
                fail();
            }
            value |= static_cast<uint64_t>(byte & 0x7f) << shift;
            if (!(byte & 0x80)) {
                break;
            }
        }
        if (value > UINT32_MAX) {
            fail();
        }
        return static_cast<uint32_t>(value);
    }

    int32_t readSleb()
    {
        uint64_t value = 0;
        unsigned shift = 0;
        uint8_t byte;
        do {
            if (shift > 28) {
                fail();
            }
            byte = read<uint8_t>();
            value |= static_cast<uint64_t>(byte & 0x7f) << shift;
            shift += 7;
        } while (byte & 0x80);
        if (byte & 0x40) {
            value |= ~uint64_t{0} << shift;
        }
        return static_cast<int32_t>(value);
    }

private:
    const uint8_t *take(uint32_t count)
    {
        if (count > size_ - position_) {
            fail();
        }
        const uint8_t *start = bytes_ + position_;
        position_ += count;
        return start;
    }

    [[noreturn]] void fail() const { throw BadImage(std::string("ends or goes wrong inside its ") + what_); }

    const uint8_t *bytes_;
    uint32_t size_;
    uint32_t position_ = 0;
    const char *what_;
};

} // namespace machorun
