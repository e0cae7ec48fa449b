// #If and its like: which lines of a program are read at all.
#include "host/script/interpreter.h"
#include "host/script/library.h"
#include "host/script/parser.h"
#include "host/script/types.h"

namespace script {

// Of literals, the language's own constants, and operators between them.
static host::Value constant(const Expression &expression)
{
    if (auto *literal = std::get_if<Literal>(&expression.node))
        return literal->value;
    if (auto *unary = std::get_if<Unary>(&expression.node); unary && unary->operation == Operator::Not)
        return host::Value(!constant(*unary->operand).boolean());
    if (auto *binary = std::get_if<Binary>(&expression.node))
        return operated(binary->operation, constant(*binary->left), constant(*binary->right), typeNamed("Boolean"),
                        binary->place);
    if (auto *use = std::get_if<Use>(&expression.node); use && !use->base && !use->hasBrackets)
        for (const LibraryRow *row : libraryFunctions(use->name.text))
            if (row->isConstant()) {
                host::Arguments none;
                return row->run(none, expression.place);
            }
    fail(expression.place, "#If looks at the language's own constants only, such as TargetMacOS and RBVersion");
}

bool Parser::directiveHolds()
{
    ExpressionPtr condition = expression();
    try {
        return constant(*condition).boolean();
    } catch (const host::TypeError &) {
        fail(condition->place, "#If needs a Boolean");
    }
}

void Parser::directive()
{
    const Token &start = advance();
    if (start.isDirective("#Pragma")) {
        while (!peek().endsLine())
            advance();
    } else if (start.isDirective("#If")) {
        bool holds = directiveHolds();
        if (takeWord("Then") && !peek().endsLine()) { // on one line
            while (!holds && !peek().endsLine())
                advance();
            return;
        }
        needLineEnd();
        _directives.push_back(start.place);
        if (!holds)
            skipToBranch(true);
    } else if (start.isDirective("#Else") || start.isDirective("#ElseIf") || start.isDirective("#EndIf")) {
        if (_directives.empty())
            fail(start.place, "there is no #If in front of this");
        _next--;
        skipToBranch(false);
    } else {
        fail(start.place, "\"" + std::string(start.text) + "\" is no directive; there are #If, #ElseIf, #Else, #EndIf");
    }
}

// To the lines of the next branch that holds, or behind #EndIf.
void Parser::skipToBranch(bool mayTake)
{
    for (size_t depth = 0;;) {
        const Token &token = advance();
        if (token.kind == TokenKind::End)
            failAtOpenDirective();
        if (token.isDirective("#If")) {
            depth++;
        } else if (token.isDirective("#EndIf")) {
            if (depth-- > 0)
                continue;
            _directives.pop_back();
            needLineEnd();
            return;
        } else if (depth == 0 && mayTake && token.isDirective("#Else")) {
            needLineEnd();
            return;
        } else if (depth == 0 && mayTake && token.isDirective("#ElseIf")) {
            bool holds = directiveHolds();
            takeWord("Then");
            needLineEnd();
            if (holds)
                return;
        }
    }
}

void Parser::failAtOpenDirective()
{
    throw ProblemsFound({{_directives.back(), "this #If has no #EndIf", true}});
}

} // namespace script
