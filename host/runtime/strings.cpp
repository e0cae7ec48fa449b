#include "host/runtime/strings.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "host/interface/codes.h"
#include "host/interface/records.h"
#include "host/runtime/state.h"
#include "host/runtime/text.h"

namespace host::runtime {

namespace {

using interface::OldStringRecord;
using interface::StringRecord;

// What a plug-in reads that takes a string of a newer host for one of the old layout: the word that was the buffer
// points here, the word that was the length counts these bytes.
const char kWrongLayoutText[] = "?this string was read in the layout of hosts before 2012";

constexpr size_t kShownBytes = 40;

char *newText(std::string_view bytes, size_t offset)
{
    char *buffer = static_cast<char *>(malloc(offset + bytes.size() + 1));
    if (!buffer)
        throw std::bad_alloc();
    memset(buffer, 0x7F, offset);
    if (!bytes.empty())
        memcpy(buffer + offset, bytes.data(), bytes.size());
    buffer[offset + bytes.size()] = 0;
    return buffer;
}

} // namespace

StringHandle::StringHandle(std::string_view bytes, uint32_t encoding)
    : Handle(HandleKind::String,
             state().profile.hasOldStringRecords() ? sizeof(OldStringRecord) : sizeof(StringRecord)),
      _length(int32_t(bytes.size()))
{
    const size_t offset = state().profile.hasOldStringRecords() ? 1 : 0;
    _buffer = newText(bytes, offset);
    _text = _buffer + offset;
    if (offset > 0) {
        auto *old = static_cast<OldStringRecord *>(record);
        *old = {interface::kStringMark, _buffer, encoding, _length};
        _encoding = &old->encoding;
    } else {
        auto *modern = static_cast<StringRecord *>(record);
        *modern = {interface::kStringMark,
                   kWrongLayoutText,
                   0,
                   int32_t(sizeof kWrongLayoutText) - 2,
                   _buffer,
                   _length,
                   encoding};
        _encoding = &modern->encoding;
    }
}

StringHandle::~StringHandle()
{
    free(_buffer);
}

std::string StringHandle::what() const
{
    std::string shown = convertText(bytes(), encoding(), kUTF8).value_or("(not text)");
    if (shown.size() > kShownBytes)
        shown = shown.substr(0, kShownBytes) + "...";
    return "string \"" + shown + "\" (" + encodingName(encoding()) + ", " + std::to_string(length()) + " bytes)";
}

StringDataHandle::StringDataHandle(std::string_view bytes) : Handle(HandleKind::StringData, bytes.size() + 4)
{
    if (!bytes.empty())
        memcpy(record, bytes.data(), bytes.size());
}

std::string StringDataHandle::what() const
{
    return "string data of " + std::to_string(recordSize - 4) + " bytes";
}

StringHandle *expectString(const void *record, const char *user)
{
    return static_cast<StringHandle *>(expect(record, HandleKind::String, user));
}

} // namespace host::runtime
