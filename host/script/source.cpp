#include "host/script/source.h"

#include <algorithm>

namespace script {

Place spanning(const Place &first, const Place &last)
{
    return {first.source, first.offset, last.offset + last.length - first.offset};
}

static bool startsCharacter(char byte)
{
    return (byte & 0xC0) != 0x80;
}

static size_t characters(const std::string &utf8)
{
    return size_t(std::count_if(utf8.begin(), utf8.end(), startsCharacter));
}

std::string report(const Place &place, const std::string &message)
{
    const std::string &text = place.source->text;
    size_t offset = std::min(place.offset, text.size());
    size_t start = offset == 0 ? 0 : text.rfind('\n', offset - 1) + 1;
    size_t end = std::min(text.find('\n', offset), text.size());
    size_t line = size_t(std::count(text.begin(), text.begin() + ptrdiff_t(start), '\n')) + 1;

    std::string shown = text.substr(start, end - start);
    if (!shown.empty() && shown.back() == '\r')
        shown.pop_back();
    std::string before = text.substr(start, offset - start);
    std::string marked = text.substr(offset, std::min(place.length, end - offset));

    // Tabs stay tabs, so that the caret stands below its character however wide they are.
    std::string padding;
    for (char c : before)
        if (startsCharacter(c))
            padding += c == '\t' ? '\t' : ' ';
    size_t width = std::max<size_t>(characters(marked), 1);
    return place.source->name + ":" + std::to_string(line) + ":" + std::to_string(characters(before) + 1) + ": " +
           message + "\n" + shown + "\n" + padding + "^" + std::string(width - 1, '~') + "\n";
}

ProblemsFound::ProblemsFound(std::vector<Problem> found)
    : std::runtime_error(found.front().message), problems(std::move(found))
{
}

void fail(const Place &place, const std::string &message)
{
    throw ProblemsFound({{place, message}});
}

} // namespace script
