// Text of any bytes, encoding and length becomes a host string: against a plain account of what must come out.
#include "hostapi/held_handles.h"
#include "hostapi/strings.h"
#include "tests/fuzz/input.h"
#include "tests/fuzz/small_host.h"

#include <vector>

using small_host::String;

static const uint32_t encodings[] = {kMacRomanText, kUTF16Text, kWindowsLatin1Text,     kASCIIText,
                                     kUTF8Text,     kOwnBytes,  kUTF32LittleEndianText, 0x1C000100};

static void appendUTF8(uint16_t unit, std::vector<char> *bytes)
{
    if (unit < 0x80) {
        bytes->push_back(unit);
        return;
    }
    if (unit < 0x800) {
        bytes->push_back(0xC0 | unit >> 6);
    } else {
        bytes->push_back(0xE0 | unit >> 12);
        bytes->push_back(0x80 | (unit >> 6 & 0x3F));
    }
    bytes->push_back(0x80 | (unit & 0x3F));
}

// The bytes and the encoding that the host string must have.
static std::vector<char> expected(const char *bytes, size_t length, uint32_t *encoding)
{
    std::vector<char> result;
    if (*encoding == kUTF16Text || *encoding == kUTF32LittleEndianText) {
        const size_t width = *encoding == kUTF16Text ? 2 : 4;
        for (size_t i = 0; i + width <= length; i += width)
            appendUTF8(static_cast<uint8_t>(bytes[i]) | static_cast<uint8_t>(bytes[i + 1]) << 8, &result);
        *encoding = kUTF8Text;
        return result;
    }
    result.assign(bytes, bytes + length);
    bool isSevenBit = true;
    for (char byte : result)
        isSevenBit = isSevenBit && !(byte & 0x80);
    if (isSevenBit && (*encoding == kMacRomanText || *encoding == kWindowsLatin1Text || *encoding == kOwnBytes))
        *encoding = kASCIIText;
    return result;
}

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    small_host::install(2013.03);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Input input(data, size);
    const uint8_t choice = input.byte();
    uint32_t encoding = choice % 9 < 8 ? encodings[choice % 9] : input.number<uint32_t>();
    // The text repeated makes long ones of short inputs: 800 bytes is where the heap comes in.
    const size_t repeats = choice >= 0xF0 ? input.byte() : 1;
    size_t length;
    const char *text = input.text(SIZE_MAX, &length);
    std::vector<char> bytes;
    for (size_t i = 0; i < repeats; i++)
        bytes.insert(bytes.end(), text, text + length);
    bytes.shrink_to_fit(); // a read behind the end is seen

    HeldHandles held;
    if (choice == 0xEF) { // lengths that no text has
        const int64_t wrong = input.number<int64_t>();
        if (wrong <= 0 || wrong > INT32_MAX)
            REQUIRE(!REALBuildUnicodeString("text", wrong, encoding, held));
    }

    String *string =
        reinterpret_cast<String *>(held.keep(REALBuildUnicodeString(bytes.data(), bytes.size(), encoding, held)));
    REQUIRE((string == nullptr) == bytes.empty());
    if (string) {
        const std::vector<char> wanted = expected(bytes.data(), bytes.size(), &encoding);
        REQUIRE(string->locks == 1 && small_host::liveHandles == 1);
        REQUIRE(string->encoding == encoding);
        REQUIRE(string->length == static_cast<int32_t>(wanted.size()));
        REQUIRE(wanted.empty() || memcmp(string->text(), wanted.data(), wanted.size()) == 0);
        small_host::unlock(string);
    }
    REQUIRE(small_host::liveHandles == 0 && small_host::raisedExceptions == 0);
    return 0;
}
