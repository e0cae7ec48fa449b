// From text to tree.
#pragma once

#include "host/script/left_out.h"
#include "host/script/syntax.h"
#include "host/script/tokens.h"

namespace script {

// Throws ProblemsFound with the first place that fits no rule of the grammar. With `allowsExpressions` a line can be a
// bare expression, too, as in the interactive mode.
std::unique_ptr<Program> parse(const Source &source, bool allowsExpressions = false);

// The rules are in docs/script.md; each function reads what its name says, from the token that is next.
class Parser {
public:
    Parser(const Source &source, bool allowsExpressions);
    std::unique_ptr<Program> program();

private:
    // Tokens.
    const Token &peek(size_t ahead = 0) const;
    const Token &advance();
    bool take(std::string_view sign);
    bool takeWord(std::string_view word);
    void need(std::string_view sign, const char *after);
    void needWord(std::string_view word, const std::string &after);
    Named needName(const char *what);
    void needLineEnd();
    void needBrackets(const char *after); // ")" behind "("
    void skipLines();                     // reads directives, too
    void directive();
    bool directiveHolds();
    void skipToBranch(bool mayTake);
    [[noreturn]] void failAtOpenDirective();
    void refuseLeftOut(LeftOutAt at) const; // when the next word gives away something that the language leaves out
    [[noreturn]] void unexpected(const std::string &wanted) const;

    // Counts how deeply the rules are nested, as long as it lives; fails when the stack could end before they do.
    struct Nested {
        explicit Nested(Parser &parser);
        ~Nested() { _parser._depth--; }

    private:
        Parser &_parser;
    };

    // Expressions.
    ExpressionPtr expression();
    ExpressionPtr binary(int precedence);
    ExpressionPtr negation();
    ExpressionPtr power();
    ExpressionPtr postfix();
    ExpressionPtr primary();
    ExpressionPtr number(const Token &token);
    ExpressionPtr creation(const Token &start);
    ExpressionPtr conditional(const Token &start);
    ExpressionPtr use(ExpressionPtr base, const Token &name);
    Expressions arguments(); // after the opening bracket, the closing one included

    // Statements.
    std::unique_ptr<Statement> statement();
    Block block(std::initializer_list<const char *> ends, const Token &start, const char *closing);
    bool atStatementEnd() const;
    void endStatement();
    bool atEndWord(std::initializer_list<const char *> ends) const;
    void closeWith(const char *first, const char *second);
    Dim dim(bool isConstant);
    DimGroup dimGroup(bool isConstant);
    WrittenType writtenType();
    If ifStatement(const Token &start);
    bool takeElseIf();
    Select selectStatement(const Token &start);
    Select::Test caseTest();
    LoopVariable loopVariable();
    std::unique_ptr<Statement> forStatement(const Token &start);
    Loop whileStatement(const Token &start);
    Loop doStatement(const Token &start);
    Leave leave(bool isContinue);
    Try tryStatement(const Token &start);
    Assertion assertion();
    Redim redim();
    std::unique_ptr<Statement> assignmentOrCall();
    bool startsArguments(const Expression &target) const;

    // Declarations.
    void function(Function &function, bool hasResult);
    Function::Parameter parameter();
    void classDefinition(ClassDefinition &definition);
    Access access();
    void enumeration(Enumeration &enumeration);

    const Source &_source;
    std::vector<Token> _tokens;
    size_t _next = 0;
    bool _allowsExpressions;
    int _depth = 0;
    std::vector<Place> _directives; // each #If that is open
    bool _onOneLine = false;        // in the first statement of an If on one line, which Else ends, too
};

struct BinaryOperator {
    const char *text;
    int precedence; // a higher one binds more tightly
    Operator operation;
};

// Null for any other token, IsA among them, which has a name on its right.
const BinaryOperator *binaryOperator(const Token &token);

// An expression or a statement around its node.
template <class Node>
ExpressionPtr makeExpression(const Place &place, Node node)
{
    return std::make_unique<Expression>(Expression{place, {}, std::move(node)});
}

template <class Node>
std::unique_ptr<Statement> makeStatement(const Place &place, Node node)
{
    return std::make_unique<Statement>(Statement{place, std::move(node)});
}

} // namespace script
