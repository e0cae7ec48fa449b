#include "platform/gnustep/core_foundation/foreign_encoding.h"

#include <errno.h>
#include <iconv.h>
#include <strings.h>

namespace platform {
namespace {

// clang-format off
const struct {
    CFStringEncoding encoding;
    const char *name; // the C library's
} systemNames[] = {
    {0x0001, "SJIS"},            {0x0002, "BIG5"},            {0x0003, "EUC-KR"},        {0x0007, "MAC-CYRILLIC"},
    {0x0019, "EUC-CN"},          {0x001D, "MAC-CENTRALEUROPE"}, {0x0025, "MAC-IS"},      {0x0098, "MAC-UK"},
    {0x0202, "ISO-8859-2"},      {0x0203, "ISO-8859-3"},      {0x0204, "ISO-8859-4"},    {0x0205, "ISO-8859-5"},
    {0x0206, "ISO-8859-6"},      {0x0207, "ISO-8859-7"},      {0x0208, "ISO-8859-8"},    {0x0209, "ISO-8859-9"},
    {0x020A, "ISO-8859-10"},     {0x020B, "ISO-8859-11"},     {0x020D, "ISO-8859-13"},   {0x020E, "ISO-8859-14"},
    {0x020F, "ISO-8859-15"},     {0x0210, "ISO-8859-16"},
    {0x0400, "CP437"},           {0x0405, "CP737"},           {0x0406, "CP775"},         {0x0410, "CP850"},
    {0x0412, "CP852"},           {0x0413, "CP855"},           {0x0414, "CP857"},         {0x0415, "CP860"},
    {0x0416, "CP861"},           {0x0417, "CP862"},           {0x0418, "CP863"},         {0x0419, "CP864"},
    {0x041A, "CP865"},           {0x041B, "CP866"},           {0x041C, "CP869"},         {0x041D, "CP874"},
    {0x0420, "CP932"},           {0x0421, "CP936"},           {0x0422, "CP949"},         {0x0423, "BIG5"},
    {0x0500, "CP1252"},          {0x0501, "CP1250"},          {0x0502, "CP1251"},        {0x0503, "CP1253"},
    {0x0504, "CP1254"},          {0x0505, "CP1255"},          {0x0506, "CP1256"},        {0x0507, "CP1257"},
    {0x0508, "CP1258"},          {0x0510, "JOHAB"},           {0x0628, "SHIFT_JISX0213"}, {0x0630, "EUC-CN"},
    {0x0631, "GBK"},             {0x0632, "GB18030"},         {0x0640, "EUC-KR"},        {0x0641, "JOHAB"},
    {0x0820, "ISO-2022-JP"},     {0x0821, "ISO-2022-JP-2"},   {0x0823, "ISO-2022-JP-3"}, {0x0830, "ISO-2022-CN"},
    {0x0831, "ISO-2022-CN-EXT"}, {0x0840, "ISO-2022-KR"},     {0x0920, "EUC-JP"},        {0x0930, "EUC-CN"},
    {0x0931, "EUC-TW"},          {0x0940, "EUC-KR"},          {0x0A01, "SJIS"},          {0x0A02, "KOI8-R"},
    {0x0A03, "BIG5"},            {0x0A06, "BIG5-HKSCS"},      {0x0A07, "VISCII"},        {0x0A08, "KOI8-U"},
    {0x0C01, "EBCDIC-US"},       {0x0C02, "CP037"},           {0x04000100, "UTF-7"},
};
// clang-format on

const char *systemName(CFStringEncoding encoding)
{
    for (const auto &row : systemNames)
        if (row.encoding == encoding)
            return row.name;
    return nullptr;
}

// All of the input, or false: nothing is left out and nothing is replaced.
bool convert(const char *to, const char *from, const char *bytes, size_t length, std::string *result)
{
    iconv_t converter = iconv_open(to, from);
    if (converter == reinterpret_cast<iconv_t>(-1))
        return false;
    char *input = const_cast<char *>(bytes);
    bool isDone = false;
    while (!isDone) {
        char buffer[1024];
        char *output = buffer;
        size_t room = sizeof buffer;
        // With no input left the last step writes what ends the text.
        isDone = length == 0;
        size_t substituted = iconv(converter, isDone ? nullptr : &input, &length, &output, &room);
        result->append(buffer, output - buffer);
        if (substituted != 0 && !(substituted == static_cast<size_t>(-1) && errno == E2BIG)) {
            iconv_close(converter);
            return false;
        }
    }
    iconv_close(converter);
    return true;
}

} // namespace

bool decodeForeign(const UInt8 *bytes, size_t length, CFStringEncoding encoding, Units *text)
{
    const char *name = systemName(encoding);
    std::string units;
    if (!name || !convert("UTF-16LE", name, reinterpret_cast<const char *>(bytes), length, &units))
        return false;
    auto first = reinterpret_cast<const UniChar *>(units.data()); // this processor's order
    text->insert(text->end(), first, first + units.size() / sizeof *first);
    return true;
}

bool encodeForeign(const Units &text, CFStringEncoding encoding, std::string *bytes)
{
    const char *name = systemName(encoding);
    auto units = reinterpret_cast<const char *>(text.data());
    return name && convert(name, "UTF-16LE", units, text.size() * sizeof(UniChar), bytes);
}

CFStringEncoding encodingNamed(const std::string &name)
{
    static const struct {
        const char *name;
        CFStringEncoding encoding;
    } builtIn[] = {{"UTF-8", kCFStringEncodingUTF8},
                   {"UTF-16", kCFStringEncodingUTF16},
                   {"UTF-16BE", kCFStringEncodingUTF16BE},
                   {"UTF-16LE", kCFStringEncodingUTF16LE},
                   {"US-ASCII", kCFStringEncodingASCII},
                   {"ISO-8859-1", kCFStringEncodingISOLatin1},
                   {"macintosh", kCFStringEncodingMacRoman},
                   {"windows-1252", kCFStringEncodingWindowsLatin1},
                   {"Shift_JIS", 0x0A01}};
    for (const auto &row : builtIn)
        if (strcasecmp(name.c_str(), row.name) == 0)
            return row.encoding;
    for (const auto &row : systemNames)
        if (strcasecmp(name.c_str(), row.name) == 0)
            return row.encoding;
    return kCFStringEncodingInvalidId;
}

} // namespace platform
