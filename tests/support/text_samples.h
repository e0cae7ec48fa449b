// The same short text in every encoding that the plug-in names.
#pragma once

#include "host/interface/codes.h"

#include <ostream>
#include <string>

struct TextSample {
    const char *name;
    uint32_t encoding;
    std::string bytes;
    std::string utf8;
    std::u16string utf16;
};

inline void PrintTo(const TextSample &sample, std::ostream *out)
{
    *out << sample.name;
}

inline const TextSample kTextSamples[] = {
    {"ASCII", host::kASCII, "cafe", "cafe", u"cafe"},
    {"MacRoman", host::kMacRoman, "caf\x8E", "caf\u00E9", u"caf\u00E9"},
    {"WindowsLatin1", host::kWindowsLatin1, "caf\xE9 \x80", "caf\u00E9 \u20AC", u"caf\u00E9 \u20AC"},
    {"UTF8", host::kUTF8, "gr\u00FC\u00DF \U0001F44B", "gr\u00FC\u00DF \U0001F44B", u"gr\u00FC\u00DF \U0001F44B"},
    {"UTF16", host::kUTF16, std::string("\xE9\x00\x3D\xD8\x4B\xDC", 6), "\u00E9\U0001F44B", u"\u00E9\U0001F44B"},
};
