#include "host/script/source.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "host/runtime/utf8.h"

namespace script {

using host::runtime::firstBadByte;
using host::runtime::startsCharacter;

Place spanning(const Place &first, const Place &last)
{
    return {first.source, first.offset, last.offset + last.length - first.offset};
}

static size_t characters(const std::string &utf8)
{
    return size_t(std::count_if(utf8.begin(), utf8.end(), startsCharacter));
}

static size_t startOfLine(const Place &place)
{
    size_t offset = std::min(place.offset, place.source->text.size());
    return offset == 0 ? 0 : place.source->text.rfind('\n', offset - 1) + 1;
}

size_t lineOf(const Place &place)
{
    auto first = place.source->text.begin();
    return size_t(std::count(first, first + ptrdiff_t(startOfLine(place)), '\n')) + place.source->firstLine;
}

static std::string textBefore(const Place &place)
{
    size_t start = startOfLine(place);
    return place.source->text.substr(start, place.offset - start);
}

std::string nameOf(const Place &place)
{
    return place.source->name + ":" + std::to_string(lineOf(place)) + ":" +
           std::to_string(characters(textBefore(place)) + 1);
}

std::string report(const Place &place, const std::string &message)
{
    const std::string &text = place.source->text;
    size_t start = startOfLine(place);
    size_t end = std::min(text.find('\n', start), text.size());
    std::string marked = text.substr(place.offset, std::min(place.length, end - place.offset));

    // Tabs stay tabs, so that the caret stands below its character however wide they are.
    std::string padding;
    for (char c : textBefore(place))
        if (startsCharacter(c))
            padding += c == '\t' ? '\t' : ' ';
    size_t width = std::max<size_t>(characters(marked), 1);
    return nameOf(place) + ": " + message + "\n" + text.substr(start, end - start) + "\n" + padding + "^" +
           std::string(width - 1, '~') + "\n";
}

// --- Files ---------------------------------------------------------------------------------------------------------

struct Mark {
    std::string_view bytes;
    const char *encoding;
};

// The longer ones first, since one begins another.
static const Mark kMarks[] = {
    {{"\xFF\xFE\0\0", 4}, "UTF-32"},
    {{"\0\0\xFE\xFF", 4}, "UTF-32"},
    {{"\xFF\xFE", 2}, "UTF-16"},
    {{"\xFE\xFF", 2}, "UTF-16"},
};

static constexpr std::string_view kUTF8Mark = "\xEF\xBB\xBF";

Source sourceOf(const std::string &name, const std::string &bytes)
{
    std::string_view text = bytes;
    if (text.substr(0, kUTF8Mark.size()) == kUTF8Mark)
        text.remove_prefix(kUTF8Mark.size());
    Source source{name, {}};
    for (size_t i = 0; i < text.size(); i++) {
        bool endsLine = text[i] == '\r';
        source.text += endsLine ? '\n' : text[i];
        i += endsLine && i + 1 < text.size() && text[i + 1] == '\n';
    }
    std::string encoding;
    for (const Mark &mark : kMarks)
        if (encoding.empty() && text.substr(0, mark.bytes.size()) == mark.bytes)
            encoding = mark.encoding;
    if (encoding.empty() && text.find('\0') != std::string_view::npos)
        encoding = "UTF-16, or no text at all";
    if (!encoding.empty())
        throw std::runtime_error(name + ": this is " + encoding + "; programs are read as UTF-8");
    size_t bad = firstBadByte(source.text);
    if (bad < source.text.size()) {
        size_t line = size_t(std::count(source.text.begin(), source.text.begin() + ptrdiff_t(bad), '\n')) + 1;
        char byte[8];
        snprintf(byte, sizeof byte, "%02X", static_cast<unsigned char>(source.text[bad]));
        throw std::runtime_error(name + ":" + std::to_string(line) + ": the byte " + byte +
                                 " is no UTF-8 (Mac Roman or Windows-1252?); programs are read as UTF-8");
    }
    return source;
}

ProblemsFound::ProblemsFound(std::vector<Problem> found)
    : std::runtime_error(found.empty() ? "" : found.front().message), problems(std::move(found))
{
}

void fail(const Place &place, const std::string &message)
{
    throw ProblemsFound({{place, message}});
}

} // namespace script
