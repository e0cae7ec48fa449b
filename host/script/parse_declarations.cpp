// The program as a whole, its methods and classes.
#include "host/script/parser.h"

namespace script {

std::unique_ptr<Program> parse(const Source &source, bool allowsExpressions)
{
    return Parser(source, allowsExpressions).program();
}

std::unique_ptr<Program> Parser::program()
{
    auto program = std::make_unique<Program>();
    for (skipLines(); peek().kind != TokenKind::End; skipLines()) {
        if (peek().isWord("Sub") || peek().isWord("Function"))
            function(program->functions.emplace_back(), advance().isWord("Function"));
        else if (peek().isWord("Class"))
            classDefinition(program->classes.emplace_back());
        else if (peek().isWord("Enum"))
            enumeration(program->enumerations.emplace_back());
        else
            program->statements.push_back(statement());
    }
    if (!_directives.empty())
        failAtOpenDirective();
    return program;
}

// --- Declarations --------------------------------------------------------------------------------------------------

WrittenType Parser::writtenType()
{
    WrittenType type;
    type.name = needName("the name of a type");
    if (take("(")) {
        needBrackets("an array's type");
        type.isArray = true;
    }
    return type;
}

Function::Parameter Parser::parameter()
{
    refuseLeftOut(LeftOutAt::Parameter);
    Function::Parameter parameter;
    parameter.isOptional = takeWord("Optional");
    if (!takeWord("ByVal"))
        parameter.isByRef = takeWord("ByRef");
    parameter.variable.name = needName("the name of a parameter");
    bool isArray = take("(");
    if (isArray)
        needBrackets("an array");
    needWord("As", "the name of a parameter");
    parameter.type = writtenType();
    parameter.type.isArray |= isArray;
    if (take("=")) {
        parameter.isOptional = true;
        parameter.initial = expression();
    }
    return parameter;
}

void Parser::function(Function &function, bool hasResult)
{
    const Token &start = _tokens[_next - 1];
    function.name = needName("the name of a method");
    if (take("(") && !take(")")) {
        do
            function.parameters.push_back(parameter());
        while (take(","));
        need(")", "the parameters");
    }
    if (hasResult) {
        needWord("As", "the parameters of a Function");
        function.writtenResult = writtenType();
    }
    needLineEnd();
    function.body = block({"End"}, start, hasResult ? "End Function" : "End Sub");
    function.end = peek().place;
    closeWith("End", hasResult ? "Function" : "Sub");
}

Access Parser::access()
{
    if (takeWord("Private"))
        return Access::Private;
    if (takeWord("Protected"))
        return Access::Protected;
    takeWord("Public");
    return Access::Public;
}

void Parser::classDefinition(ClassDefinition &definition)
{
    const Token &start = advance();
    definition.name = needName("the name of a class");
    bool isLineOver = peek().kind == TokenKind::LineEnd;
    skipLines(); // Inherits can have a line of its own
    if (takeWord("Inherits")) {
        definition.superName = needName("the name of a class");
        isLineOver = false;
    }
    refuseLeftOut(LeftOutAt::Statement);
    if (!isLineOver)
        needLineEnd();
    for (skipLines(); !peek().isWord("End"); skipLines()) {
        if (peek().kind == TokenKind::End)
            throw ProblemsFound({{start.place, "this Class has no End Class", true}});
        bool hasAccess = peek().isWord("Private") || peek().isWord("Protected") || peek().isWord("Public");
        Access allowed = access();
        refuseLeftOut(LeftOutAt::Statement);
        const Token &token = peek();
        if (takeWord("Sub") || takeWord("Function")) {
            Function &method = definition.methods.emplace_back();
            method.owner = &definition;
            method.access = allowed;
            function(method, token.isWord("Function"));
        } else if (takeWord("Dim") || takeWord("Const") || (hasAccess && !isReserved(token.text))) {
            for (DimGroup &group : dim(token.isWord("Const")).groups)
                definition.fieldGroups.push_back({std::move(group), allowed});
            needLineEnd();
        } else {
            unexpected("Dim, Const, Sub, Function or End Class");
        }
    }
    closeWith("End", "Class");
}

void Parser::enumeration(Enumeration &enumeration)
{
    const Token &start = advance();
    enumeration.name = needName("the name of an Enum");
    if (takeWord("As"))
        writtenType();
    needLineEnd();
    for (skipLines(); !peek().isWord("End"); skipLines()) {
        if (peek().kind == TokenKind::End)
            throw ProblemsFound({{start.place, "this Enum has no End Enum", true}});
        Enumeration::Item &item = enumeration.items.emplace_back();
        item.name = needName("a name in an Enum");
        if (take("="))
            item.value = negation();
        needLineEnd();
    }
    closeWith("End", "Enum");
}

} // namespace script
