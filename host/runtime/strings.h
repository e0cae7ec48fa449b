// Strings: bytes with an encoding, in the record layout of the host that is played.
#pragma once

#include <string>
#include <string_view>

#include "host/runtime/handle.h"

namespace host::runtime {

struct StringHandle : Handle {
    StringHandle(std::string_view bytes, uint32_t encoding);
    ~StringHandle() override;
    std::string what() const override;

    char *text() const { return _text; } // with a zero byte behind it
    int32_t length() const { return _length; }
    std::string_view bytes() const { return {_text, size_t(_length)}; }
    uint32_t encoding() const { return *_encoding; }
    void setEncoding(uint32_t encoding) { *_encoding = encoding; }

private:
    char *_buffer, *_text;
    int32_t _length;
    uint32_t *_encoding; // in the record
};

// The bytes of a string as a plug-in got them, until it disposes of them. The record is the bytes.
struct StringDataHandle : Handle {
    explicit StringDataHandle(std::string_view bytes);
    std::string what() const override;
};

StringHandle *expectString(const void *record, const char *user);

} // namespace host::runtime
