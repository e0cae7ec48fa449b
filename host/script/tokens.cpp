#include "host/script/tokens.h"

#include <algorithm>
#include <cctype>

#include "host/declaration.h"

namespace script {

namespace {

bool isDigit(char c)
{
    return isdigit(static_cast<unsigned char>(c));
}

bool startsWord(char c)
{
    return isalpha(static_cast<unsigned char>(c)) || static_cast<unsigned char>(c) >= 0x80;
}

bool continuesWord(char c)
{
    return startsWord(c) || isDigit(c) || c == '_';
}

class Lexer {
public:
    explicit Lexer(const Source &source) : _source(source), _text(source.text) {}

    std::vector<Token> all()
    {
        do
            _tokens.push_back(next());
        while (_tokens.back().kind != TokenKind::End);
        return std::move(_tokens);
    }

private:
    char at(size_t place) const { return place < _text.size() ? _text[place] : '\0'; }

    Place placeOf(size_t start, size_t end) const { return {&_source, start, end - start}; }

    Token token(TokenKind kind, size_t end)
    {
        Token made{kind, _text.substr(_place, end - _place), placeOf(_place, end)};
        _place = end;
        return made;
    }

    size_t lineEnd(size_t from) const { return std::min(_text.find('\n', from), _text.size()); }

    // Blanks, comments, and line ends after a "_" that stands alone.
    void skip()
    {
        for (;;) {
            char c = at(_place);
            if (_place < _text.size() && (c == ' ' || c == '\t' || c == '\r'))
                _place++;
            else if (c == '\'' || (c == '/' && at(_place + 1) == '/') || startsRemark())
                _place = lineEnd(_place);
            else if (c == '_' && !continuesWord(at(_place + 1)) && blankUntilLineEnd(_place + 1))
                _place = std::min(lineEnd(_place) + 1, _text.size());
            else
                return;
        }
    }

    bool startsRemark() const
    {
        return host::equalIgnoringCase(_text.substr(_place, 3), "Rem") && !continuesWord(at(_place + 3)) &&
               (_tokens.empty() || !_tokens.back().isSign("."));
    }

    bool blankUntilLineEnd(size_t from) const
    {
        size_t place = _text.find_first_not_of(" \t\r", from);
        return place == std::string_view::npos || _text[place] == '\n' || _text[place] == '\'' ||
               _text.substr(place, 2) == "//";
    }

    Token next()
    {
        skip();
        if (_place == _text.size())
            return token(TokenKind::End, _place);
        char c = _text[_place];
        if (c == '\n')
            return token(TokenKind::LineEnd, _place + 1);
        if (startsWord(c) || (c == '_' && continuesWord(at(_place + 1))))
            return token(TokenKind::Word, endOfWord(_place));
        if (isDigit(c) || (c == '.' && isDigit(at(_place + 1))))
            return number();
        if (c == '"')
            return text();
        if (c == '&')
            return literalWithPrefix();
        if (c == '#' && startsWord(at(_place + 1)))
            return token(TokenKind::Directive, endOfWord(_place + 1));
        return sign();
    }

    size_t endOfWord(size_t end) const
    {
        while (continuesWord(at(end)))
            end++;
        return end;
    }

    Token number()
    {
        size_t end = _place;
        while (isDigit(at(end)))
            end++;
        if (at(end) == '.' && isDigit(at(end + 1)))
            for (end++; isDigit(at(end));)
                end++;
        if (at(end) == 'e' || at(end) == 'E') {
            size_t digits = end + (at(end + 1) == '+' || at(end + 1) == '-' ? 2 : 1);
            if (isDigit(at(digits)))
                for (end = digits; isDigit(at(end));)
                    end++;
        }
        refuseMore(end);
        return token(TokenKind::Number, end);
    }

    void refuseMore(size_t end)
    {
        if (continuesWord(at(end)))
            fail(placeOf(_place, endOfWord(end)),
                 "\"" + std::string(_text.substr(_place, endOfWord(end) - _place)) + "\" is no number");
    }

    Token text()
    {
        size_t end = _place + 1;
        for (;;) {
            if (end == _text.size() || _text[end] == '\n')
                fail(placeOf(_place, end), "this text has no closing quotation mark on its line");
            if (_text[end] == '"') {
                if (at(end + 1) != '"')
                    return token(TokenKind::Text, end + 1);
                end++;
            }
            end++;
        }
    }

    // &h…, &b…, &o…, &c… and &u…
    Token literalWithPrefix()
    {
        size_t end = endOfWord(_place + 1);
        std::string_view digits = _text.substr(std::min(_place + 2, _text.size()), end - std::min(_place + 2, end));
        char prefix = char(tolower(static_cast<unsigned char>(at(_place + 1))));
        bool isHexadecimal = prefix == 'h' || prefix == 'c' || prefix == 'u';
        const char *allowed = isHexadecimal   ? "0123456789abcdefABCDEF"
                              : prefix == 'o' ? "01234567"
                              : prefix == 'b' ? "01"
                                              : "";
        std::string shown(_text.substr(_place, end - _place));
        if (shown == "&")
            fail(placeOf(_place, end), "\"&\" does not join texts here; write +");
        bool fits = !digits.empty() && digits.find_first_not_of(allowed) == std::string_view::npos;
        if (!fits)
            fail(placeOf(_place, end), "\"" + shown + "\" is no literal; they begin with &h, &b, &o, &c or &u");
        if (prefix == 'c' && digits.size() != 6)
            fail(placeOf(_place, end), "a colour has six digits, &cRRGGBB");
        return token(prefix == 'c' ? TokenKind::Color : prefix == 'u' ? TokenKind::Text : TokenKind::Number, end);
    }

    Token sign()
    {
        static const char *const signs[] = {"<>", "<=", ">=", "+", "-", "*", "/", "\\", "^",
                                            "=",  "<",  ">",  "(", ")", ",", ".", ":"};
        for (std::string_view each : signs)
            if (_text.substr(_place, each.size()) == each)
                return token(TokenKind::Sign, _place + each.size());
        fail(placeOf(_place, _place + 1), "\"" + std::string(1, _text[_place]) + "\" has no meaning here");
    }

    const Source &_source;
    std::string_view _text;
    size_t _place = 0;
    std::vector<Token> _tokens;
};

} // namespace

bool Token::isWord(std::string_view word) const
{
    return kind == TokenKind::Word && host::equalIgnoringCase(text, word);
}

bool Token::isDirective(std::string_view word) const
{
    return kind == TokenKind::Directive && host::equalIgnoringCase(text, word);
}

std::vector<Token> tokensOf(const Source &source)
{
    return Lexer(source).all();
}

const std::vector<std::string> &reservedWords()
{
    static const std::vector<std::string> words = {
        "And",   "Array",    "As",      "Assert", "ByRef",    "ByVal", "Call", "Case",     "Catch", "Class",
        "Const", "Continue", "Dim",     "Do",     "DownTo",   "Each",  "Else", "ElseIf",   "End",   "Enum",
        "Exit",  "False",    "Finally", "For",    "Function", "If",    "In",   "Inherits", "Is",    "IsA",
        "Loop",  "Me",       "Mod",     "New",    "Next",     "Nil",   "Not",  "Optional", "Or",    "Print",
        "Raise", "Redim",    "Rem",     "Return", "Select",   "Self",  "Step", "Sub",      "Then",  "To",
        "True",  "Try",      "Until",   "Wend",   "While",    "Xor"};
    return words;
}

bool isReserved(std::string_view word)
{
    const std::vector<std::string> &words = reservedWords();
    return std::any_of(words.begin(), words.end(),
                       [&](const std::string &each) { return host::equalIgnoringCase(each, word); });
}

} // namespace script
