// Names and types, checked before anything runs.
#pragma once

#include <algorithm>
#include <functional>
#include <map>

#include "host/script/library.h"
#include "host/script/syntax.h"
#include "host/script/types.h"

namespace script {

// Names without regard to case.
struct IgnoringCase {
    bool operator()(const std::string &a, const std::string &b) const;
};
template <class Meant>
using Names = std::map<std::string, Meant, IgnoringCase>;

// What a program knows when it begins: nothing, or what the lines before it declared in the interactive mode.
struct Symbols {
    Names<Variable> globals;
    Names<Function *> functions;
    Names<ClassDefinition *> classes;
    Names<Enumeration *> enumerations;
    size_t globalSlots = 0;

    // What can be meant, for completion and suggestions: by a name alone, and by a member of a type.
    std::vector<std::string> bareNames() const;
    std::vector<std::string> membersOf(const Type &type) const;
    ClassDefinition *definitionOf(const std::string &className) const; // null when the program has none
};

// Fills in the tree and enters what the program declares; its classes become classes of the host. Throws ProblemsFound
// with all that is wrong, and then leaves the symbols as they were.
class Checker {
public:
    explicit Checker(Symbols &symbols, bool allowsExpressions = false)
        : _symbols(symbols), _allowsExpressions(allowsExpressions)
    {
    }
    void check(Program &program);

private:
    // A method that a call could mean, with the parameters as the call must give them.
    struct Candidate {
        std::vector<host::Parameter> parameters;
        Type result;
        std::string text;     // the declaration, for messages
        size_t required = 0;  // parameters that cannot be left out
        bool repeats = false; // the last parameter
        std::vector<size_t> byRef = {};
        const host::MethodDescription *method = nullptr;
        const Function *function = nullptr;
        const LibraryRow *row = nullptr;
        bool usesSetter = false;

        bool takes(size_t count) const { return count >= required && (repeats || count <= parameters.size()); }
        const host::Parameter &parameter(size_t index) const
        {
            return parameters[std::min(index, parameters.size() - 1)];
        }
    };

    // Declarations.
    void declareEnumeration(Enumeration &enumeration);
    void declareClasses(Program &program);
    void declareFunction(Function &function);
    void checkFields(ClassDefinition &definition);
    void checkFunction(Function &function);
    Type resolve(const WrittenType &written);
    Type attemptedType(const WrittenType &written); // nothing where it has a mistake, which is kept
    Type typeOf(const DimGroup::Item &item, const DimGroup &group, const Type &type);
    void checkGroup(DimGroup &group, Type &type); // gives the type that it names, too
    void needNewName(const Named &name);

    // Statements.
    void checkBlock(Block &block);
    void checkStatement(Statement &statement);
    void visit(Dim &dim, const Place &place);
    void visit(Assignment &assignment, const Place &place);
    void visit(Evaluation &evaluation, const Place &place);
    void visit(Print &print, const Place &place);
    void visit(Assertion &assertion, const Place &place);
    void visit(If &branches, const Place &place);
    void visit(Select &select, const Place &place);
    void visit(ForCount &loop, const Place &place);
    void visit(ForEach &loop, const Place &place);
    void visit(Loop &loop, const Place &place);
    void visit(Leave &leave, const Place &place);
    void visit(Return &leave, const Place &place);
    void visit(Try &attempt, const Place &place);
    void visit(Raise &raise, const Place &place);
    void visit(Redim &redim, const Place &place);
    void checkTest(Select::Test &test, const Type &subject);
    Type checkLoopVariable(LoopVariable &variable);
    void loopBody(Block &body, LoopKind kind);
    void attempt(const std::function<void()> &body); // keeps the problems that it finds
    void declare(Variable &variable, const Type &type);
    void needExceptionClass(const Named &name);

    // Expressions.
    Type check(Expression &expression, const Type *wanted = nullptr);
    Type visit(Literal &literal, Expression &expression, const Type *wanted);
    Type visit(ArrayLiteral &literal, Expression &expression, const Type *wanted);
    Type visit(Use &use, Expression &expression, const Type *wanted);
    Type visit(Unary &unary, Expression &expression, const Type *wanted);
    Type visit(Binary &binary, Expression &expression, const Type *wanted);
    Type visit(Conditional &choice, Expression &expression, const Type *wanted);
    Type visit(TypeTest &test, Expression &expression, const Type *wanted);
    Type visit(Creation &creation, Expression &expression, const Type *wanted);
    Type visit(SelfObject &self, Expression &expression, const Type *wanted);
    // Checks that the value fits the type; "the value must be an Integer, not a String".
    void need(Expression &expression, const Type &declared, const std::string &what);
    void needValue(Expression &expression);

    // Names and members. `assigned` is the value when the use is the target of an assignment.
    Type resolve(Use &use, Expression &expression, Expression *assigned);
    Type resolveBare(Use &use, Expression &expression, Expression *assigned);
    Type resolveShared(Use &use, const std::string &className, Expression *assigned);
    Type resolveArrayMember(Use &use, const Type &array, Expression *assigned);
    Type resolveMember(Use &use, const Type &object, Expression *assigned);
    Type variable(Use &use, const Variable &variable, Expression *assigned);
    Type value(Use &use, const Type &type, Expression *assigned); // that may be an array with an index behind it
    Type constant(Use &use, const Expression &value, Expression *assigned);
    Type field(Use &use, const ClassDefinition::Field &field, Expression *assigned);
    Type method(Use &use, const Function &method, Expression *assigned);
    void needAccess(const Named &name, Access access, const ClassDefinition &owner);
    Type call(Use &use, Meaning meaning, const std::vector<Candidate> &candidates, Expression *assigned);
    void needVariable(Expression &argument, const host::Parameter &parameter, const std::string &text);
    static Candidate candidateFor(const Function &function);
    static Candidate candidateFor(const host::MethodDescription &method);
    static Candidate candidateFor(const LibraryRow &row, bool isMember, bool isAssigned);
    std::vector<Candidate> libraryCandidates(const std::vector<const LibraryRow *> &rows, bool isMember,
                                             Expression *assigned);
    const Candidate &choose(const std::vector<Candidate> &candidates, const Expressions &arguments,
                            Expression *assigned, const Named &name);
    int fitOf(const Expression &expression, const Type &declared);
    const Variable *findLocal(const std::string &name) const;
    bool isClass(const std::string &name) const;
    const ClassDefinition::Field *findField(const ClassDefinition *definition, const std::string &name) const;
    Function *findMethod(const ClassDefinition *definition, const std::string &name) const;
    [[noreturn]] void unknownName(const Named &name);
    [[noreturn]] void unknownClass(const Named &name);
    [[noreturn]] void unknownMember(const Named &name, const std::string &owner, const std::vector<std::string> &known);

    Symbols &_symbols;
    bool _allowsExpressions; // as statements
    std::vector<Problem> _problems;
    std::vector<Names<Variable>> _scopes; // of the function that is checked, the innermost last
    Function *_function = nullptr;        // null in the program's statements
    size_t *_slots = nullptr;             // local variables so far
    std::vector<LoopKind> _loops;         // around the statement, the innermost last
};

} // namespace script
