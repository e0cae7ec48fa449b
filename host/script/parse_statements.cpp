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

// End alone closes any block.
void Parser::closeWith(const char *first, const char *second)
{
    needWord(first, "the statements");
    if (!peek().endsLine())
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
    refuseLeftOut(LeftOutAt::Statement);
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
    do
        dim.groups.push_back(dimGroup(isConstant));
    while (!isConstant && take(","));
    return dim;
}

DimGroup Parser::dimGroup(bool isConstant)
{
    DimGroup group;
    group.isConstant = isConstant;
    do {
        DimGroup::Item item;
        item.variable.name = needName(isConstant ? "the name of a constant" : "the name of a variable");
        if (!isConstant && take("(")) {
            item.isArray = true;
            if (!take(")")) {
                item.upperBound = expression();
                if (peek().isSign(","))
                    fail(peek().place, "arrays of more than one dimension are not part of this language here");
                need(")", "the upper bound of an array");
            }
        }
        group.items.push_back(std::move(item));
    } while (!isConstant && take(","));
    if (!isConstant) {
        needWord("As", "the name of a variable");
        if (peek().isWord("New")) {
            const Token &start = advance();
            group.type.name = {std::string(peek().text), peek().place};
            group.initial = creation(start);
            return group;
        }
        group.type = writtenType();
    } else if (takeWord("As")) {
        group.type = writtenType();
    }
    if (isConstant)
        need("=", "the name of a constant");
    if (isConstant || take("="))
        group.initial = expression();
    return group;
}

// Written as one word or as two.
bool Parser::takeElseIf()
{
    bool isTwoWords = peek().isWord("Else") && peek(1).isWord("If");
    if (isTwoWords)
        advance();
    return isTwoWords ? takeWord("If") : takeWord("ElseIf");
}

If Parser::ifStatement(const Token &start)
{
    If made;
    do {
        If::Branch &branch = made.branches.emplace_back();
        branch.condition = expression();
        needWord("Then", "the condition");
        if (made.branches.size() == 1 && !peek().endsLine()) {
            bool wasOnOneLine = std::exchange(_onOneLine, true);
            branch.body.push_back(statement());
            _onOneLine = wasOnOneLine;
            if (takeWord("Else"))
                made.otherwise.push_back(statement());
            return made;
        }
        needLineEnd();
        branch.body = block({"ElseIf", "Else", "End"}, start, "End If");
    } while (takeElseIf());
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
    while (peek().isWord("Case") || peek().isWord("Else")) {
        if (takeWord("Else") || (takeWord("Case") && takeWord("Else"))) {
            needLineEnd();
            made.otherwise = block({"End"}, start, "End Select");
            break;
        }
        Select::Case one;
        do
            one.tests.push_back(caseTest());
        while (take(","));
        needLineEnd();
        one.body = block({"Case", "Else", "End"}, start, "End Select");
        made.cases.push_back(std::move(one));
    }
    closeWith("End", "Select");
    return made;
}

Select::Test Parser::caseTest()
{
    Select::Test test;
    if (takeWord("IsA")) {
        test.className = needName("the name of a class");
        return test;
    }
    if (takeWord("Is")) {
        const BinaryOperator *found = binaryOperator(peek());
        if (!found || found->operation < Operator::Equal || found->operation > Operator::GreaterOrEqual)
            unexpected("a comparison after Is");
        test.comparison = found->operation;
        advance();
    }
    test.value = expression();
    if (test.comparison == Operator::Equal && takeWord("To"))
        test.last = expression();
    return test;
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
    loop.kind = LoopKind::Do;
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
    Leave leave{isContinue, LoopKind::Any, {}};
    if (takeWord("For"))
        leave.loop = LoopKind::For;
    else if (takeWord("While"))
        leave.loop = LoopKind::While;
    else if (takeWord("Do"))
        leave.loop = LoopKind::Do;
    else if (!isContinue && (takeWord("Sub") || takeWord("Function")))
        leave.method = _tokens[_next - 1].text;
    return leave;
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

// Whether the arguments of a call follow, written without brackets: a value begins here. Behind an operator only a
// bracket or a sign could begin one, and only where an expression alone is no statement.
bool Parser::startsArguments(const Expression &target) const
{
    auto *use = std::get_if<Use>(&target.node);
    if (!use || use->hasBrackets)
        return false;
    const Token &next = peek();
    if (next.kind == TokenKind::Sign)
        return !_allowsExpressions && next.isSign("-");
    return next.kind != TokenKind::Word || (!binaryOperator(next) && !next.isWord("IsA"));
}

std::unique_ptr<Statement> Parser::assignmentOrCall()
{
    const Token &start = peek();
    size_t first = _next;
    if (start.kind == TokenKind::Word && isReserved(start.text) && !start.isWord("Self") && !_allowsExpressions)
        unexpected("a statement");
    ExpressionPtr target = postfix();
    bool isUse = std::holds_alternative<Use>(target->node);
    // Alone, 1 = 1 is a comparison.
    if ((!_allowsExpressions || isUse) && take("=")) {
        ExpressionPtr value = expression();
        endStatement();
        return makeStatement(start.place, Assignment{std::move(target), std::move(value)});
    }
    if (peek().kind == TokenKind::Sign && peek(1).isSign("=")) {
        std::string message = leftOutMessage(LeftOutAt::Sign, std::string(peek().text) + "=");
        if (!message.empty())
            fail(spanning(peek().place, peek(1).place), message);
    }
    bool isComplete = atStatementEnd();
    // MsgBox ("a") + "b": the brackets belong to the argument.
    bool isBareCall = !_allowsExpressions && !isComplete && isUse && _tokens[first + 1].isSign("(") &&
                      _tokens[first + 1].place.offset > start.place.offset + start.place.length;
    if (isBareCall) {
        _next = first + 1;
        Use callee;
        callee.name = {std::string(start.text), start.place};
        target = makeExpression(start.place, std::move(callee));
    }
    if (isBareCall || (!isComplete && startsArguments(*target))) {
        Use &use = std::get<Use>(target->node);
        do
            use.arguments.push_back(expression());
        while (take(","));
        use.hasBrackets = true;
        target->place = spanning(target->place, use.arguments.back()->place);
    } else if (_allowsExpressions && !isComplete) {
        _next = first;
        target = expression();
    } else if (!isUse && !_allowsExpressions) {
        fail(target->place, "a value alone is no statement");
    }
    std::unique_ptr<Statement> made = makeStatement(start.place, Evaluation{std::move(target), false});
    endStatement();
    return made;
}

} // namespace script
