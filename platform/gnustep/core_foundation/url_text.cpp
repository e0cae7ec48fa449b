#include "platform/gnustep/core_foundation/url_text.h"

#include <ctype.h>
#include <string.h>
#include <strings.h>

#include <algorithm>

namespace platform {
namespace {

const size_t none = std::string::npos;

bool isOneOf(UniChar c, const char *characters)
{
    return c && c < 0x80 && strchr(characters, c);
}

bool isAlphanumeric(UniChar c)
{
    return c < 0x80 && isalnum(c);
}

bool isHexDigit(UniChar c)
{
    return c < 0x80 && isxdigit(c);
}

bool isPlain(UniChar c)
{
    return isAlphanumeric(c) || isOneOf(c, "-_.!~*'();/?:@&=+$,");
}

// All bytes escaped but letters, digits, and the characters given.
std::string escaped(const std::string &bytes, const char *keep)
{
    static const char digits[] = "0123456789ABCDEF";
    std::string text;
    for (unsigned char c : bytes) {
        if (isAlphanumeric(c) || isOneOf(c, keep)) {
            text.push_back(c);
        } else {
            text.push_back('%');
            text.push_back(digits[c >> 4]);
            text.push_back(digits[c & 15]);
        }
    }
    return text;
}

std::optional<Units> unescaped(const std::string &text)
{
    std::string bytes;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%') {
            bytes.push_back(std::stoi(text.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            bytes.push_back(text[i]);
        }
    }
    Units units;
    if (!decodeUTF8(bytes, &units))
        return std::nullopt;
    return units;
}

bool endsWith(const std::string &text, const char *end)
{
    size_t length = strlen(end);
    return text.size() >= length && text.compare(text.size() - length, length, end) == 0;
}

// "/a/./b" is "/a/b" and "/a/../b" is "/b"; what would leave the root is dropped.
std::string withoutDots(const std::string &path)
{
    std::string result;
    for (size_t start = 0; start < path.size();) {
        size_t slash = path.find('/', start);
        size_t end = slash == none ? path.size() : slash + 1;
        std::string component = path.substr(start, end - start);
        start = end;
        if (component == ".." || component == "../") {
            size_t parent = result.size() > 1 ? result.rfind('/', result.size() - 2) : none;
            if (parent != none)
                result.erase(parent + 1);
        } else if (component != "." && component != "./") {
            result += component;
        }
    }
    return result;
}

} // namespace

std::optional<URLText> URLText::parse(const Units &text)
{
    bool hasFragment = false;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%') {
            if (text.size() - i < 3 || !isHexDigit(text[i + 1]) || !isHexDigit(text[i + 2]))
                return std::nullopt;
        } else if (text[i] == '#') {
            if (hasFragment)
                return std::nullopt;
            hasFragment = true;
        } else if (!isPlain(text[i]) && !isOneOf(text[i], "[]")) {
            return std::nullopt;
        }
    }
    return URLText(std::string(text.begin(), text.end()));
}

std::optional<URLText> URLText::ofPath(const Units &path, bool isFolder)
{
    std::string bytes;
    if (path.empty() || std::find(path.begin(), path.end(), 0) != path.end() ||
        !encodeText(path, kCFStringEncodingUTF8, &bytes))
        return std::nullopt;
    if (isFolder && !endsWith(bytes, "/"))
        bytes.push_back('/');
    else if (!isFolder && bytes.size() > 1 && endsWith(bytes, "/") && !endsWith(bytes, "//"))
        bytes.pop_back();
    std::string text = escaped(bytes, "-_.!~*'()/:@&=+$,");
    if (text[0] == '/')
        return URLText("file://localhost" + text);
    bool looksLikeScheme = text.substr(0, text.find('/')).find(':') != none;
    return URLText(looksLikeScheme ? "./" + text : text);
}

URLText::URLText(const std::string &text) : characters(text)
{
    findParts();
    escapeParts();
}

// RFC 1808's order: what is behind the first "#", the scheme, then from the front the authority, and of the rest what
// is behind the first "?" and the first ";". A scheme that no "/" follows is followed by text without parts.
void URLText::findParts()
{
    parts.fill(std::nullopt);
    size_t end = std::min(characters.find('#'), characters.size());
    size_t start = 0;
    size_t behindScheme =
        std::find_if(characters.begin(), characters.begin() + end,
                     [](char c) { return !isAlphanumeric(static_cast<unsigned char>(c)) && !isOneOf(c, "+-."); }) -
        characters.begin();
    if (behindScheme < end && characters[behindScheme] == ':') {
        setPart(schemePart, 0, behindScheme);
        start = behindScheme + 1;
        if (start == end || characters[start] != '/')
            return;
    }
    if (end < characters.size())
        setPart(fragmentPart, end + 1, characters.size());
    bool hasAuthority = false;
    if (end - start >= 2 && characters.compare(start, 2, "//") == 0) {
        size_t behind = std::min(characters.find_first_of("/?", start + 2), end);
        hasAuthority = behind > start + 2;
        if (hasAuthority)
            findAuthority(start + 2, behind);
        start = behind;
    }
    for (auto [part, mark] : {std::pair(queryPart, '?'), std::pair(parametersPart, ';')}) {
        size_t found = characters.find(mark, start);
        if (found < end) {
            setPart(part, found + 1, end);
            end = found;
        }
    }
    if (end > start || hasAuthority)
        setPart(pathPart, start, end);
}

// user:password@host:port, of which only the host must be there.
void URLText::findAuthority(size_t start, size_t end)
{
    size_t at = characters.find('@', start);
    if (at < end) {
        size_t colon = characters.find(':', start);
        setPart(userPart, start, std::min(colon, at));
        if (colon < at)
            setPart(passwordPart, colon + 1, at);
        start = at + 1;
    }
    size_t position = start;
    for (; position < end && characters[position] != ':'; ++position)
        if (characters[position] == '[')
            position = std::min(characters.find(']', position), end);
    position = std::min(position, end);
    setPart(hostPart, start, position);
    if (position < end)
        setPart(portPart, position + 1, end);
}

// What a part may not hold as it is: a bracket that does not enclose a host, and "#" behind a scheme alone.
void URLText::escapeParts()
{
    std::string result;
    for (size_t i = 0; i < characters.size(); ++i) {
        char c = characters[i];
        const auto &host = parts[hostPart];
        bool marksHost = host && ((c == '[' && i == host->start) || (c == ']' && i + 1 == host->end()));
        bool escape = (isOneOf(c, "[]") && !marksHost) || (c == '#' && !has(fragmentPart));
        result += escape ? escaped(std::string(1, c), "") : std::string(1, c);
    }
    if (result != characters) {
        characters = result;
        findParts();
    }
}

std::string URLText::part(URLPart part) const
{
    return has(part) ? characters.substr(parts[part]->start, parts[part]->length) : "";
}

std::optional<Units> URLText::unescapedPart(URLPart part) const
{
    return has(part) ? unescaped(this->part(part)) : std::nullopt;
}

bool URLText::isFileURL() const
{
    return strcasecmp(part(schemePart).c_str(), "file") == 0;
}

// The slash at the end goes twice from a folder's path with escapes, where it would go once from one without.
std::optional<Units> URLText::filePath() const
{
    std::optional<Units> path = unescapedPart(pathPart);
    if (!path)
        return path;
    auto dropSlash = [&] {
        if (path->size() > 1 && path->back() == '/')
            path->pop_back();
    };
    std::string text = part(pathPart);
    if (text.find('%') != none)
        dropSlash();
    if (endsWith(text, "/"))
        dropSlash();
    return path;
}

// Where the last component lies, a root's slash for a root.
URLText::Span URLText::lastComponent() const
{
    Span path = parts[pathPart].value_or(Span{0, 0});
    if (path.length == 0 || part(pathPart) == "/")
        return path;
    if (characters[path.end() - 1] == '/')
        --path.length;
    size_t slash = characters.rfind('/', path.end() - 1);
    return slash == none || slash < path.start ? path : Span{slash + 1, path.end() - slash - 1};
}

std::optional<Units> URLText::lastPathComponent() const
{
    Span last = lastComponent();
    return unescaped(characters.substr(last.start, last.length));
}

URLText URLText::withPath(const std::string &path) const
{
    std::string edited = characters;
    return URLText(edited.replace(parts[pathPart]->start, parts[pathPart]->length, path));
}

// A component that cannot go is followed by "../", which takes the place of a "." but for that of "/.".
std::optional<URLText> URLText::withoutLastPathComponent() const
{
    if (!has(pathPart))
        return std::nullopt;
    Span last = lastComponent();
    std::string path = part(pathPart);
    std::string name = characters.substr(last.start, last.length);
    size_t before = last.start - parts[pathPart]->start;
    if (!name.empty() && name != "/" && name != "." && name != "..")
        return withPath(before ? path.substr(0, before) : "./");
    if (!path.empty() && !endsWith(path, "/"))
        path += "/";
    path += "../";
    if (path == "./../")
        path = "../";
    else if (path.size() > 7 && endsWith(path, "/./../"))
        path.replace(path.size() - 6, 6, "/../");
    return withPath(path);
}

std::optional<URLText> URLText::withPathComponent(const Units &component, bool isFolder) const
{
    std::string bytes;
    if (!has(pathPart) || !encodeText(component, kCFStringEncodingUTF8, &bytes))
        return std::nullopt;
    std::string path = part(pathPart);
    if (!endsWith(path, "/"))
        path += "/";
    return withPath(path + escaped(bytes, "-_.!~*'()/:@&=+$,") + (isFolder ? "/" : ""));
}

// RFC 1808: each part that is missing comes from the base as long as nothing in front of it was there.
URLText URLText::resolvedAgainst(const URLText &base) const
{
    if (has(schemePart) || !base.has(schemePart))
        return *this;
    std::string scheme = base.part(schemePart) + ":";
    if (characters.compare(0, 2, "//") == 0)
        return URLText(scheme + characters);
    std::string front = base.characters.substr(0, base.has(pathPart) ? base.parts[pathPart]->start : scheme.size());
    std::string path = part(pathPart);
    if (path.empty()) {
        bool changesQuery = has(parametersPart) || has(queryPart);
        size_t kept = changesQuery ? base.characters.find_first_of(has(parametersPart) ? ";?#" : "?#")
                                   : base.characters.find('#');
        return URLText(base.characters.substr(0, kept) + characters);
    }
    std::string rest = characters.substr(parts[pathPart]->end());
    if (path[0] != '/') {
        std::string folder = base.part(pathPart);
        folder.erase(folder.rfind('/') + 1);
        path = withoutDots((folder.empty() ? "/" : folder) + path);
    }
    return URLText(front + path + rest);
}

} // namespace platform
