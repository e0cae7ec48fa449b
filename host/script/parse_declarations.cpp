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
        else
            program->statements.push_back(statement());
    }
    return program;
}

// --- Declarations --------------------------------------------------------------------------------------------------

WrittenType Parser::writtenType()
{
    WrittenType type;
    type.name = needName("the name of a type");
    if (take("(")) {
        need(")", "\"(\" of an array's type");
        type.isArray = true;
    }
    return type;
}

void Parser::function(Function &function, bool hasResult)
{
    const Token &start = _tokens[_next - 1];
    function.name = needName("the name of a method");
    if (take("(") && !take(")")) {
        do {
            takeWord("ByVal");
            Function::Parameter parameter;
            parameter.variable.name = needName("the name of a parameter");
            bool isArray = take("(");
            if (isArray)
                need(")", "\"(\" of an array");
            needWord("As", "the name of a parameter");
            parameter.type = writtenType();
            parameter.type.isArray |= isArray;
            function.parameters.push_back(std::move(parameter));
        } while (take(","));
        need(")", "the parameters");
    }
    if (hasResult) {
        needWord("As", "the parameters of a Function");
        function.writtenResult = writtenType();
    }
    needLineEnd();
    const char *closing = hasResult ? "End Function" : "End Sub";
    function.body = block({"End"}, start, closing);
    function.end = peek().place;
    closeWith("End", hasResult ? "Function" : "Sub");
}

void Parser::classDefinition(ClassDefinition &definition)
{
    const Token &start = advance();
    definition.name = needName("the name of a class");
    if (takeWord("Inherits"))
        definition.superName = needName("the name of a class");
    needLineEnd();
    for (skipLines(); !peek().isWord("End"); skipLines()) {
        const Token &token = peek();
        if (token.kind == TokenKind::End)
            throw ProblemsFound({{start.place, "this Class has no End Class", true}});
        if (takeWord("Sub") || takeWord("Function")) {
            Function &method = definition.methods.emplace_back();
            method.owner = &definition;
            function(method, token.isWord("Function"));
        } else if (takeWord("Dim")) {
            definition.fieldStatements.push_back({token.place, dim(false)});
            needLineEnd();
        } else {
            unexpected("Dim, Sub, Function or End Class");
        }
    }
    closeWith("End", "Class");
}

} // namespace script
