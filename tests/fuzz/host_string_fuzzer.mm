// Host strings of any bytes, encoding and host version cross to Cocoa and back: against a plain account of the
// encodings that need no table of the system's, and against themselves in all others.
#include "bridge/strings/cf_string.h"
#include "hostapi/held_handles.h"
#include "hostapi/strings.h"
#include "tests/fuzz/input.h"
#include "tests/fuzz/pool.h"
#include "tests/fuzz/small_host.h"

#include <iterator>
#include <vector>

using small_host::String;
using Units = std::vector<UniChar>;

static const double versions[] = {0.0, 2009.0, 2011.4, 2012.0, 2013.03, 2014.1};
static const uint32_t encodings[] = {kMacRomanText, kUTF16Text, kWindowsLatin1Text,     kASCIIText, kUTF8Text,
                                     kOwnBytes,     kUTF8Text,  kUTF32LittleEndianText, 0x0201,     0x10000100};

static CFStringRef toCocoa(String *string)
{
    return RBString2CFString(reinterpret_cast<REALstring>(string));
}

static Units unitsOf(CFStringRef text)
{
    Units units(CFStringGetLength(text));
    CFStringGetCharacters(text, CFRangeMake(0, units.size()), units.data());
    return units;
}

// The character at *position of UTF-8, which moves behind it; -1 for bytes that are none.
static int32_t nextCharacter(const uint8_t *bytes, size_t length, size_t *position)
{
    const uint8_t lead = bytes[(*position)++];
    if (lead < 0x80)
        return lead;
    if (lead == 0xA9) // MacRoman's copyright sign, which the system lets pass
        return 0xFFFD;
    const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4 || length - *position < static_cast<size_t>(more))
        return -1;
    int32_t character = lead & (0x3F >> more);
    for (int i = 0; i < more; i++) {
        const uint8_t byte = bytes[(*position)++];
        if (byte >> 6 != 2)
            return -1;
        character = character << 6 | (byte & 0x3F);
    }
    const bool isSurrogate = character >= 0xD800 && character < 0xE000;
    const int32_t least = more == 1 ? 0x80 : more == 2 ? 0x800 : 0x10000;
    return character < least || character > 0x10FFFF || isSurrogate ? -1 : character;
}

// Core Foundation leaves the mark in front of UTF-8 out.
static bool beginsWithMark(const uint8_t *bytes, size_t length)
{
    return length >= 3 && memcmp(bytes, "\xEF\xBB\xBF", 3) == 0;
}

enum class Account { Text, NoText, Unknown };

// What the text of the bytes is, up to the first zero byte where the plug-in reads them as a C string.
static Account account(const String *string, bool asked, Units *units)
{
    auto *bytes = reinterpret_cast<const uint8_t *>(string->text());
    size_t length = string->length;
    if (string->encoding == kUTF16Text) {
        if (asked && length % 2)
            return Account::Unknown; // the system refuses half a unit, and then the plug-in leaves it out
        units->resize(length / 2);
        std::copy_n(bytes, length / 2 * 2, reinterpret_cast<uint8_t *>(units->data()));
        return Account::Text;
    }
    if (!asked)
        length = strlen(string->text());
    if (string->encoding != kUTF8Text && string->encoding != kASCIIText)
        return Account::Unknown;
    const bool isUTF8 = string->encoding == kUTF8Text;
    for (size_t i = isUTF8 && beginsWithMark(bytes, length) ? 3 : 0; i < length;) {
        const int32_t character = isUTF8 ? nextCharacter(bytes, length, &i) : bytes[i++]; // Latin 1's upper half
        if (character < 0)
            return asked ? Account::Unknown : Account::NoText; // what was not text with its zero bytes may be without
        if (character >= 0x10000) {
            units->push_back(0xD7C0 + (character >> 10));
            units->push_back(0xDC00 | (character & 0x3FF));
        } else {
            units->push_back(character);
        }
    }
    return Account::Text;
}

// Whether UTF-8 can express it, and where it ends there: a host string ends at the first U+0000.
static bool crossesBack(const Units &units, size_t *end)
{
    bool sawEnd = false;
    for (size_t i = 0; i < units.size(); i++) {
        if (!units[i] && !sawEnd) {
            sawEnd = true;
            *end = i;
        }
        if ((units[i] & 0xF800) != 0xD800)
            continue;
        if (units[i] >= 0xDC00 || i + 1 == units.size() || (units[i + 1] & 0xFC00) != 0xDC00)
            return false;
        i++;
    }
    if (!sawEnd)
        *end = units.size();
    return true;
}

static void checkWayBack(CFStringRef text)
{
    Units units = unitsOf(text);
    size_t end;
    HeldHandles held;
    auto *back = reinterpret_cast<String *>(held.keep(CFString2RBString(text, held)));
    if (!crossesBack(units, &end) || end == 0) {
        REQUIRE(!back);
        return;
    }
    REQUIRE(back && back->encoding == kUTF8Text && back->locks == 1);
    units.resize(end);
    if (units[0] == 0xFEFF)
        units.erase(units.begin()); // in UTF-8 it is the mark
    CFStringRef again = toCocoa(back);
    REQUIRE(again && unitsOf(again) == units);
    CFRelease(again);
    small_host::unlock(back);
}

// The bytes that the plug-in copies for itself.
static void checkData(String *string, uint32_t encoding)
{
    auto *handle = reinterpret_cast<REALstring>(string);
    REALstringData record = {};
    if (!REALGetStringData(handle, encoding, &record))
        return;
    REQUIRE(record.encoding == encoding);
    if (encoding == kOwnBytes || encoding == string->encoding)
        REQUIRE(record.length == string->length && memcmp(record.data, string->text(), string->length) == 0);
    const uint32_t zero = 0;
    REQUIRE(memcmp(record.data + record.length, &zero, sizeof zero) == 0);
    REALDisposeStringData(&record);
}

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    small_host::install(2013.03);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    RunPool pool;
    Input input(data, size);
    const uint8_t choice = input.byte();
    small_host::setVersion(versions[choice % std::size(versions)]);
    small_host::answersCFStrings = choice >= 0x80;
    const uint8_t named = input.byte();
    const uint32_t encoding = named < 0xF0 ? encodings[named % std::size(encodings)] : input.number<uint32_t>();
    // The text repeated makes long ones of short inputs: 100 units is where the heap comes in.
    const size_t repeats = named % 32 == 31 ? input.byte() % 16 : 1;
    size_t length;
    const char *text = input.text(SIZE_MAX, &length);
    std::vector<char> bytes;
    for (size_t i = 0; i < repeats; i++)
        bytes.insert(bytes.end(), text, text + length);
    String *string = small_host::newString(bytes.data(), bytes.size(), encoding);

    Units wanted;
    const Account account = ::account(string, small_host::answersCFStrings, &wanted);
    CFStringRef cocoa = toCocoa(string);
    REQUIRE(string->locks == 1 && small_host::liveHandles == 1);
    if (account == Account::Text)
        REQUIRE(cocoa && unitsOf(cocoa) == wanted);
    if (account == Account::NoText)
        REQUIRE(!cocoa);
    if (cocoa) {
        checkWayBack(cocoa);
        CFRelease(cocoa);
    }
    checkData(string, choice & 1 ? static_cast<uint32_t>(kOwnBytes) : kUTF8Text);

    small_host::unlock(string);
    REQUIRE(small_host::liveHandles == 0 && small_host::raisedExceptions == 0);
    return 0;
}
