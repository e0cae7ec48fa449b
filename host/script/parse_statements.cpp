// Statements.
#include <utility>

#include "host/script/parser.h"

namespace script {

// --- Blocks --------------------------------------------------------------------------------------------------------

bool Parser::atEndWord(std::initializer_list<const char *> ends) const
{
    for (const char *end : ends)
        if (peek().isWord(end))
            return true;
    return false;
}

Block Parser::block(std::initializer_list<const char *> ends, const Token &start, const char *closing)
{
    Block statements;
    for (skipLines(); !atEndWord(ends); skipLines()) {
        if (peek().kind == TokenKind::End)
            throw ProblemsFound({{start.place, "this " + std::string(start.text) + " has no " + closing, true}});
        statements.push_back(statement());
    }
    return statements;
}

void Parser::closeWith(const char *first, const char *second)
{
    needWord(first, "the statements");
    needWord(second, first);
    needLineEnd();
}

bool Parser::atStatementEnd() const
{
    return peek().endsLine() || (_onOneLine && peek().isWord("Else"));
}

void Parser::endStatement()
{
    if (!_onOneLine || !peek().isWord("Else"))
        needLineEnd();
}

std::unique_ptr<Statement> Parser::statement()
{
    Nested nested(*this);
    const Token &start = peek();
    auto simple = [&](auto node) {
        std::unique_ptr<Statement> made = makeStatement(start.place, std::move(node));
        return made;
    };
    auto oneLine = [&](auto node) {
        endStatement();
        return simple(std::move(node));
    };
    if (takeWord("Dim"))
        return oneLine(dim(false));
    if (takeWord("Const"))
        return oneLine(dim(true));
    if (takeWord("If"))
        return simple(ifStatement(start));
    if (takeWord("Select"))
        return simple(selectStatement(start));
    if (takeWord("For"))
        return forStatement(start);
    if (takeWord("While"))
        return simple(whileStatement(start));
    if (takeWord("Do"))
        return simple(doStatement(start));
    if (takeWord("Try"))
        return simple(tryStatement(start));
    if (takeWord("Exit"))
        return oneLine(leave(false));
    if (takeWord("Continue"))
        return oneLine(leave(true));
    if (takeWord("Return"))
        return oneLine(Return{atStatementEnd() ? nullptr : expression(), {}});
    if (takeWord("Raise"))
        return oneLine(Raise{expression()});
    if (takeWord("Print"))
        return oneLine(Print{atStatementEnd() ? nullptr : expression()});
    if (takeWord("Assert"))
        return oneLine(assertion());
    if (takeWord("Redim"))
        return oneLine(redim());
    if (takeWord("Call"))
        return oneLine(Evaluation{postfix(), true});
    return assignmentOrCall();
}

// --- Statements ----------------------------------------------------------------------------------------------------

Dim Parser::dim(bool isConstant)
{
    Dim dim;
    dim.isConstant = isConstant;
    do {
        Dim::Item item;
        item.variable.name = needName("the name of a variable");
        if (!isConstant && take("(")) {
            item.isArray = true;
            if (!take(")")) {
                item.upperBound = expression();
                need(")", "the upper bound of an array");
            }
        }
        dim.items.push_back(std::move(item));
    } while (!isConstant && take(","));
    finishDim(dim);
    return dim;
}

void Parser::finishDim(Dim &dim)
{
    if (!dim.isConstant) {
        needWord("As", "the name of a variable");
        if (peek().isWord("New")) {
            const Token &start = advance();
            dim.type.name = {std::string(peek().text), peek().place};
            dim.initial = creation(start);
            return;
        }
        dim.type = writtenType();
    } else if (takeWord("As")) {
        dim.type = writtenType();
    }
    if (dim.isConstant)
        need("=", "the name of a constant");
    if (dim.isConstant || take("="))
        dim.initial = expression();
}

If Parser::ifStatement(const Token &start)
{
    If made;
    made.branches.emplace_back();
    made.branches.back().condition = expression();
    needWord("Then", "the condition");
    if (!peek().endsLine()) {
        bool wasOnOneLine = std::exchange(_onOneLine, true);
        made.branches.back().body.push_back(statement());
        _onOneLine = wasOnOneLine;
        if (takeWord("Else"))
            made.otherwise.push_back(statement());
        return made;
    }
    made.branches.back().body = block({"ElseIf", "Else", "End"}, start, "End If");
    while (takeWord("ElseIf")) {
        made.branches.emplace_back();
        made.branches.back().condition = expression();
        needWord("Then", "the condition");
        needLineEnd();
        made.branches.back().body = block({"ElseIf", "Else", "End"}, start, "End If");
    }
    if (takeWord("Else")) {
        needLineEnd();
        made.otherwise = block({"End"}, start, "End If");
    }
    closeWith("End", "If");
    return made;
}

Select Parser::selectStatement(const Token &start)
{
    Select made;
    needWord("Case", "Select");
    made.subject = expression();
    needLineEnd();
    skipLines();
    while (takeWord("Case")) {
        if (takeWord("Else")) {
            needLineEnd();
            made.otherwise = block({"End"}, start, "End Select");
            break;
        }
        Select::Case one;
        do
            one.values.push_back(expression());
        while (take(","));
        needLineEnd();
        one.body = block({"Case", "End"}, start, "End Select");
        made.cases.push_back(std::move(one));
    }
    closeWith("End", "Select");
    return made;
}

LoopVariable Parser::loopVariable()
{
    LoopVariable variable;
    variable.variable.name = needName("the name of a variable");
    if (takeWord("As")) {
        variable.ownType = writtenType();
        return variable;
    }
    Use existing;
    existing.name = variable.variable.name;
    variable.existing = makeExpression(existing.name.place, std::move(existing));
    return variable;
}

std::unique_ptr<Statement> Parser::forStatement(const Token &start)
{
    auto body = [&] {
        needLineEnd();
        Block statements = block({"Next"}, start, "Next");
        advance();
        if (!peek().endsLine())
            needName("the name of the loop's variable");
        needLineEnd();
        return statements;
    };
    if (takeWord("Each")) {
        ForEach loop;
        loop.element = loopVariable();
        needWord("In", "the variable of For Each");
        loop.array = expression();
        loop.body = body();
        return makeStatement(start.place, std::move(loop));
    }
    ForCount loop;
    loop.counter = loopVariable();
    need("=", "the variable of For");
    loop.first = expression();
    loop.isDown = takeWord("DownTo");
    if (!loop.isDown)
        needWord("To", "the first value of For");
    loop.last = expression();
    if (takeWord("Step"))
        loop.step = expression();
    loop.body = body();
    return makeStatement(start.place, std::move(loop));
}

Loop Parser::whileStatement(const Token &start)
{
    Loop loop;
    loop.before = expression();
    needLineEnd();
    loop.body = block({"Wend"}, start, "Wend");
    advance();
    needLineEnd();
    return loop;
}

Loop Parser::doStatement(const Token &start)
{
    Loop loop;
    auto condition = [this](bool &until) -> ExpressionPtr {
        until = takeWord("Until");
        return until || takeWord("While") ? expression() : nullptr;
    };
    loop.before = condition(loop.untilBefore);
    needLineEnd();
    loop.body = block({"Loop"}, start, "Loop");
    advance();
    loop.after = condition(loop.untilAfter);
    needLineEnd();
    return loop;
}

Leave Parser::leave(bool isContinue)
{
    // The word behind it is for readers: it is always the innermost loop.
    if (!takeWord("For") && !takeWord("While"))
        takeWord("Do");
    return {isContinue};
}

Try Parser::tryStatement(const Token &start)
{
    Try made;
    needLineEnd();
    made.body = block({"Catch", "Finally", "End"}, start, "End Try");
    if (peek().isWord("End"))
        unexpected("Catch or Finally after the statements of Try");
    while (takeWord("Catch")) {
        Try::Catch handler;
        if (!peek().endsLine()) {
            handler.variable.emplace();
            handler.variable->name = needName("the name of a variable");
            if (takeWord("As"))
                handler.className = needName("the name of an exception's class");
        }
        needLineEnd();
        handler.body = block({"Catch", "Finally", "End"}, start, "End Try");
        made.catches.push_back(std::move(handler));
    }
    if (takeWord("Finally")) {
        needLineEnd();
        made.finally = block({"End"}, start, "End Try");
    }
    closeWith("End", "Try");
    return made;
}

// Assert(condition, message) or the same without brackets.
Assertion Parser::assertion()
{
    size_t first = _next;
    for (bool hasBrackets : {peek().isSign("("), false}) {
        _next = first;
        Assertion made;
        if (hasBrackets)
            advance();
        made.condition = expression();
        if (take(","))
            made.message = expression();
        if (hasBrackets)
            need(")", "the condition of Assert");
        if (!hasBrackets || atStatementEnd()) // else the brackets are the condition's own, as in (a) And (b)
            return made;
    }
    return {};
}

Redim Parser::redim()
{
    ExpressionPtr array = postfix();
    auto *use = std::get_if<Use>(&array->node);
    if (!use || use->arguments.size() != 1)
        fail(array->place, "Redim takes an array with its new upper bound, as in Redim names(9)");
    Redim made;
    made.upperBound = std::move(use->arguments.front());
    use->arguments.clear();
    use->hasBrackets = false;
    array->place = spanning(use->base ? use->base->place : use->name.place, use->name.place);
    made.array = std::move(array);
    return made;
}

std::unique_ptr<Statement> Parser::assignmentOrCall()
{
    const Token &start = peek();
    size_t first = _next;
    if (start.kind == TokenKind::Word && isReserved(start.text) && !start.isWord("Self") && !_allowsExpressions)
        unexpected("a statement");
    ExpressionPtr target = postfix();
    std::unique_ptr<Statement> made;
    // Alone, 1 = 1 is a comparison.
    bool canBeTarget = !_allowsExpressions || std::holds_alternative<Use>(target->node);
    if (canBeTarget && take("=")) {
        ExpressionPtr value = expression();
        made = makeStatement(start.place, Assignment{std::move(target), std::move(value)});
    } else {
        auto *use = std::get_if<Use>(&target->node);
        bool isPlain = atStatementEnd();
        if (_allowsExpressions && !isPlain) {
            _next = first;
            target = expression();
        } else if (use && !isPlain && !use->hasBrackets && peek().kind != TokenKind::Sign) {
            do // arguments without brackets
                use->arguments.push_back(expression());
            while (take(","));
            use->hasBrackets = true;
            target->place = spanning(target->place, use->arguments.back()->place);
        } else if (!use && !_allowsExpressions) {
            fail(target->place, "a value alone is no statement");
        }
        made = makeStatement(start.place, Evaluation{std::move(target), false});
    }
    endStatement();
    return made;
}

} // namespace script
