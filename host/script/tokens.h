// Words and signs of the script language.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/script/source.h"

namespace script {

enum class TokenKind {
    Word,      // a name or a reserved word
    Number,    // 12, 1.5, 1e3, &hFF, &b101, &o17
    Text,      // "…", still with its quotation marks; &u20AC
    Color,     // &cRRGGBB
    Sign,      // operators, brackets, commas
    Directive, // #If and its like
    LineEnd,
    End,
};

struct Token {
    TokenKind kind;
    std::string_view text;
    Place place;

    bool isWord(std::string_view word) const;      // ignoring case
    bool isDirective(std::string_view word) const; // ignoring case
    bool isSign(std::string_view sign) const { return kind == TokenKind::Sign && text == sign; }
    bool endsLine() const { return kind == TokenKind::LineEnd || kind == TokenKind::End; }
};

// The last token is the only one of kind End. Throws ProblemsFound.
std::vector<Token> tokensOf(const Source &source);

// Words that cannot be names of the program's own.
const std::vector<std::string> &reservedWords();
bool isReserved(std::string_view word);

} // namespace script
