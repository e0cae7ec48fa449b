// A URL as text: its parts, and the texts that come from it by way of its path. As on macOS a URL is its text; nothing
// is looked up, resolved or put right but for the few characters that are escaped when it is made.
#pragma once

#include "platform/gnustep/core_foundation/text_encoding.h"

#include <array>
#include <optional>
#include <string>

namespace platform {

enum URLPart {
    schemePart,
    userPart,
    passwordPart,
    hostPart,
    portPart,
    pathPart,
    parametersPart,
    queryPart,
    fragmentPart,
    urlPartCount
};

class URLText {
public:
    // Nothing for text that no URL may hold: RFC 2396's characters, "[" and "]", one "#" at most, and two hexadecimal
    // digits behind every "%".
    static std::optional<URLText> parse(const Units &text);

    // A file URL, or a relative one for a relative path; nothing for an empty path and for one with a character of
    // value 0 or half a surrogate pair. The path is taken as it is.
    static std::optional<URLText> ofPath(const Units &path, bool isFolder);

    const std::string &text() const { return characters; }
    bool has(URLPart part) const { return parts[part].has_value(); }
    std::string part(URLPart part) const; // with its escapes; empty when there is none
    std::optional<Units> unescapedPart(URLPart part) const;

    bool isFileURL() const;

    // The path without its escapes and without a slash at its end; nothing when there is none, or when what is escaped
    // is no UTF-8.
    std::optional<Units> filePath() const;

    // Without escapes; "/" for a root, empty without a path, nothing when what is escaped is no UTF-8.
    std::optional<Units> lastPathComponent() const;

    // Nothing without a path.
    std::optional<URLText> withoutLastPathComponent() const;
    std::optional<URLText> withPathComponent(const Units &component, bool isFolder) const;

    URLText resolvedAgainst(const URLText &base) const;

private:
    struct Span {
        size_t start;
        size_t length;
        size_t end() const { return start + length; }
    };

    explicit URLText(const std::string &text);
    void findParts();
    void findAuthority(size_t start, size_t end);
    void escapeParts();
    void setPart(URLPart part, size_t start, size_t end) { parts[part] = Span{start, end - start}; }
    Span lastComponent() const;
    URLText withPath(const std::string &path) const;

    std::string characters;
    std::array<std::optional<Span>, urlPartCount> parts;
};

} // namespace platform
