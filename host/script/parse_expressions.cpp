// Expressions, and the tokens that everything is read from.
#include <cerrno>
#include <cstdlib>

#include "host/declaration.h"
#include "host/script/parser.h"

namespace script {

using host::Value;

// --- Tokens --------------------------------------------------------------------------------------------------------

Parser::Parser(const Source &source, bool allowsExpressions)
    : _source(source), _tokens(tokensOf(source)), _allowsExpressions(allowsExpressions)
{
}

const Token &Parser::peek(size_t ahead) const
{
    return _tokens[std::min(_next + ahead, _tokens.size() - 1)];
}

const Token &Parser::advance()
{
    const Token &token = peek();
    if (token.kind != TokenKind::End)
        _next++;
    return token;
}

bool Parser::take(std::string_view sign)
{
    bool found = peek().isSign(sign);
    if (found)
        advance();
    return found;
}

bool Parser::takeWord(std::string_view word)
{
    bool found = peek().isWord(word);
    if (found)
        advance();
    return found;
}

void Parser::unexpected(const std::string &wanted) const
{
    refuseLeftOut(LeftOutAt::Sign);
    const Token &token = peek();
    std::string found = token.kind == TokenKind::End       ? "the end"
                        : token.kind == TokenKind::LineEnd ? "the end of the line"
                                                           : "\"" + std::string(token.text) + "\"";
    throw ProblemsFound({{token.endsLine() ? Place{token.place.source, token.place.offset, 1} : token.place,
                          "expected " + wanted + ", found " + found, token.kind == TokenKind::End}});
}

void Parser::need(std::string_view sign, const char *after)
{
    if (!take(sign))
        unexpected("\"" + std::string(sign) + "\" after " + after);
}

void Parser::needWord(std::string_view word, const std::string &after)
{
    if (!takeWord(word))
        unexpected(std::string(word) + " after " + after);
}

Named Parser::needName(const char *what)
{
    const Token &token = peek();
    if (token.kind != TokenKind::Word)
        unexpected(what);
    if (isReserved(token.text))
        fail(token.place, "\"" + std::string(token.text) + "\" is a word of the language and cannot be " + what);
    advance();
    return {std::string(token.text), token.place};
}

void Parser::needLineEnd()
{
    if (!peek().endsLine())
        unexpected("the end of the line");
    advance();
}

void Parser::needBrackets(const char *after)
{
    need(")", (std::string("\"(\" of ") + after).c_str());
}

void Parser::skipLines()
{
    for (;;) {
        if (peek().kind == TokenKind::LineEnd)
            advance();
        else if (peek().kind == TokenKind::Directive)
            directive();
        else
            return;
    }
}

void Parser::refuseLeftOut(LeftOutAt at) const
{
    std::string message = leftOutMessage(at, peek().text);
    // In front of anything but a name the word may be one of the program's own.
    bool isMeant = at == LeftOutAt::Sign || peek(1).kind == TokenKind::Word;
    if (!message.empty() && isMeant)
        fail(peek().place, message);
}

Parser::Nested::Nested(Parser &parser) : _parser(parser)
{
    static constexpr int deepest = 200;
    if (++parser._depth > deepest)
        fail(parser.peek().place, "this is nested too deeply");
}

// --- Expressions ---------------------------------------------------------------------------------------------------

static const BinaryOperator kBinaryOperators[] = {
    {"Or", 1, Operator::Or},          {"Xor", 1, Operator::Xor},    {"And", 2, Operator::And},
    {"=", 4, Operator::Equal},        {"<>", 4, Operator::Unequal}, {"<", 4, Operator::Less},
    {"<=", 4, Operator::LessOrEqual}, {">", 4, Operator::Greater},  {">=", 4, Operator::GreaterOrEqual},
    {"Is", 4, Operator::Is},          {"+", 5, Operator::Add},      {"-", 5, Operator::Subtract},
    {"*", 6, Operator::Multiply},     {"/", 6, Operator::Divide},   {"\\", 6, Operator::IntegerDivide},
    {"Mod", 6, Operator::Modulo},
};

static constexpr int kLowestPrecedence = 1;
static constexpr int kNotPrecedence = 3;
static constexpr int kComparisonPrecedence = 4;
static constexpr int kHighestPrecedence = 6;

const BinaryOperator *binaryOperator(const Token &token)
{
    for (const BinaryOperator &each : kBinaryOperators)
        if (token.isSign(each.text) || token.isWord(each.text))
            return &each;
    return nullptr;
}

ExpressionPtr Parser::expression()
{
    Nested nested(*this);
    return binary(kLowestPrecedence);
}

ExpressionPtr Parser::binary(int precedence)
{
    if (precedence > kHighestPrecedence)
        return negation();
    if (precedence == kNotPrecedence) {
        if (!peek().isWord("Not"))
            return binary(precedence + 1);
        Nested nested(*this);
        const Token &start = advance();
        ExpressionPtr operand = binary(precedence);
        Place place = spanning(start.place, operand->place);
        return makeExpression(place, Unary{Operator::Not, std::move(operand)});
    }
    ExpressionPtr left = binary(precedence + 1);
    for (;;) {
        if (precedence == kComparisonPrecedence && takeWord("IsA")) {
            Named className = needName("the name of a class");
            Place place = spanning(left->place, className.place);
            left = makeExpression(place, TypeTest{std::move(left), className});
            continue;
        }
        const BinaryOperator *found = binaryOperator(peek());
        if (!found || found->precedence != precedence)
            return left;
        Place sign = advance().place;
        ExpressionPtr right = binary(precedence + 1);
        Place place = spanning(left->place, right->place);
        left = makeExpression(place, Binary{found->operation, sign, std::move(left), std::move(right)});
    }
}

ExpressionPtr Parser::negation()
{
    if (!peek().isSign("-") && !peek().isSign("+"))
        return power();
    Nested nested(*this);
    const Token &sign = advance();
    ExpressionPtr operand = negation();
    if (sign.text == "+")
        return operand;
    Place place = spanning(sign.place, operand->place);
    return makeExpression(place, Unary{Operator::Negate, std::move(operand)});
}

ExpressionPtr Parser::power()
{
    ExpressionPtr base = postfix();
    if (!peek().isSign("^"))
        return base;
    Place sign = advance().place;
    ExpressionPtr exponent = negation();
    Place place = spanning(base->place, exponent->place);
    return makeExpression(place, Binary{Operator::Power, sign, std::move(base), std::move(exponent)});
}

ExpressionPtr Parser::postfix()
{
    ExpressionPtr base = primary();
    while (take(".")) {
        if (peek().kind != TokenKind::Word)
            unexpected("the name of a member after \".\"");
        base = use(std::move(base), advance());
    }
    return base;
}

ExpressionPtr Parser::use(ExpressionPtr base, const Token &name)
{
    Use made;
    Place start = base ? base->place : name.place;
    made.base = std::move(base);
    made.name = {std::string(name.text), name.place};
    Place end = name.place;
    if (take("(")) {
        made.hasBrackets = true;
        made.arguments = arguments();
        end = _tokens[_next - 1].place;
    }
    // Ubound(names) is names.Ubound.
    if (!made.base && made.arguments.size() == 1 && name.isWord("Ubound")) {
        made.base = std::move(made.arguments.front());
        made.arguments.clear();
    }
    return makeExpression(spanning(start, end), std::move(made));
}

Expressions Parser::arguments()
{
    Expressions all;
    if (take(")"))
        return all;
    do
        all.push_back(expression());
    while (take(","));
    need(")", "the arguments");
    return all;
}

// "…", or &u with a code point.
static std::string textOf(std::string_view literal)
{
    if (literal[0] == '&') {
        auto code = uint32_t(strtoul(std::string(literal.substr(2)).c_str(), nullptr, 16));
        return Value::string({reinterpret_cast<const char *>(&code), sizeof code}, host::kUTF32).text();
    }
    std::string text;
    for (size_t i = 1; i + 1 < literal.size(); i++) {
        text += literal[i];
        if (literal[i] == '"')
            i++; // the second one of a pair
    }
    return text;
}

ExpressionPtr Parser::primary()
{
    const Token &token = peek();
    switch (token.kind) {
    case TokenKind::Number:
        return number(advance());
    case TokenKind::Text:
        return makeExpression(advance().place, Literal{Value(textOf(token.text))});
    case TokenKind::Color: {
        std::string digits(advance().text.substr(2));
        return makeExpression(token.place, Literal{Value::color(uint32_t(strtoul(digits.c_str(), nullptr, 16)))});
    }
    case TokenKind::Sign:
        if (take("(")) {
            ExpressionPtr inner = expression();
            need(")", "the expression in brackets");
            inner->place = spanning(token.place, _tokens[_next - 1].place);
            return inner;
        }
        break;
    case TokenKind::Word:
        if (token.isWord("True") || token.isWord("False"))
            return makeExpression(advance().place, Literal{Value(token.isWord("True"))});
        if (token.isWord("Nil"))
            return makeExpression(advance().place, Literal{Value()});
        if (token.isWord("Self"))
            return makeExpression(advance().place, SelfObject{});
        if (token.isWord("New"))
            return creation(advance());
        if (token.isWord("If") && peek(1).isSign("("))
            return conditional(advance());
        if (token.isWord("Array") && peek(1).isSign("(")) {
            advance();
            advance();
            Expressions elements = arguments();
            return makeExpression(spanning(token.place, _tokens[_next - 1].place), ArrayLiteral{std::move(elements)});
        }
        if (!isReserved(token.text))
            return use(nullptr, advance());
        break;
    default:
        break;
    }
    unexpected("a value");
}

// The smallest type that holds it: Integer, Int64, Double.
ExpressionPtr Parser::number(const Token &token)
{
    std::string text(token.text);
    int base = 10;
    if (text[0] == '&') {
        base = text[1] == 'h' || text[1] == 'H' ? 16 : text[1] == 'b' || text[1] == 'B' ? 2 : 8;
        text = text.substr(2);
    } else if (text.find_first_of(".eE") != std::string::npos) {
        return makeExpression(token.place, Literal{Value(strtod(text.c_str(), nullptr))});
    }
    errno = 0;
    long long value = strtoll(text.c_str(), nullptr, base);
    if (errno == ERANGE)
        fail(token.place, std::string(token.text) + " is too large for an integer of 64 bits");
    Value literal = value == int32_t(value) ? Value(int32_t(value)) : Value(value);
    return makeExpression(token.place, Literal{std::move(literal)});
}

ExpressionPtr Parser::conditional(const Token &start)
{
    Conditional made;
    need("(", "If");
    made.condition = expression();
    need(",", "the condition");
    made.yes = expression();
    need(",", "the first value");
    made.no = expression();
    need(")", "the second value");
    return makeExpression(spanning(start.place, _tokens[_next - 1].place), std::move(made));
}

ExpressionPtr Parser::creation(const Token &start)
{
    Creation made;
    made.className = needName("the name of a class");
    Place end = made.className.place;
    if (take("(")) {
        made.arguments = arguments();
        end = _tokens[_next - 1].place;
    }
    return makeExpression(spanning(start.place, end), std::move(made));
}

} // namespace script
