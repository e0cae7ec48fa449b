// Runs a checked program by walking its tree.
#pragma once

#include <cstdio>
#include <functional>

#include "host/script/raised.h"
#include "host/script/syntax.h"

namespace script {

class Interpreter {
public:
    // `show` gets the value of an expression that stands alone.
    explicit Interpreter(std::function<void(const host::Value &)> show = nullptr) : _show(std::move(show)) {}

    // Throws Raised and AssertionFailed. The program must outlive the interpreter's objects of its classes.
    void run(const Program &program);

    // What a variable of the program holds.
    host::Value global(const Variable &variable) const;

private:
    struct Frame {
        std::vector<host::Value> locals;
        host::Value self;
        host::Value result;
    };
    // How a statement ended.
    enum class Flow { Onward, Exit, Continue, Return };

    // What runs now; throws Interrupted when somebody wants it to end.
    void goOn(const Place &place);

    // Statements.
    Flow run(const Block &block);
    Flow run(const Statement &statement);
    Flow visit(const Dim &dim, const Place &place);
    void run(const DimGroup &group);
    Flow visit(const Assignment &assignment, const Place &place);
    Flow visit(const Evaluation &evaluation, const Place &place);
    Flow visit(const Print &print, const Place &place);
    Flow visit(const Assertion &assertion, const Place &place);
    Flow visit(const If &branches, const Place &place);
    Flow visit(const Select &select, const Place &place);
    bool passes(const Select::Test &test, const host::Value &subject, const Place &place);
    Flow visit(const ForCount &loop, const Place &place);
    Flow visit(const ForEach &loop, const Place &place);
    Flow visit(const Loop &loop, const Place &place);
    Flow visit(const Leave &leave, const Place &place);
    Flow visit(const Return &leave, const Place &place);
    Flow visit(const Try &attempt, const Place &place);
    Flow visit(const Raise &raise, const Place &place);
    Flow visit(const Redim &redim, const Place &place);
    Flow runGuarded(const Try &attempt);
    void setLoopVariable(const LoopVariable &variable, const host::Value &value);
    bool holds(const Expression &condition);

    // Expressions.
    host::Value evaluate(const Expression &expression);
    host::Value evaluate(const Expression &expression, const Type &wanted); // converted
    int32_t integer(const Expression &expression);
    host::Value visit(const Literal &literal, const Expression &expression);
    host::Value visit(const ArrayLiteral &literal, const Expression &expression);
    host::Value visit(const Use &use, const Expression &expression);
    host::Value visit(const Unary &unary, const Expression &expression);
    host::Value visit(const Binary &binary, const Expression &expression);
    host::Value visit(const Conditional &choice, const Expression &expression);
    host::Value visit(const TypeTest &test, const Expression &expression);
    host::Value visit(const Creation &creation, const Expression &expression);
    host::Value visit(const SelfObject &self, const Expression &expression);

    host::Value base(const Use &use); // not nil
    host::Value read(const Use &use, const Expression &expression);
    void assign(const Use &use, const Expression &target, const Expression &value);
    void store(const Use &use, const host::Value &value);
    host::Value &slot(const Variable &variable);
    host::Value &slot(const Use &use);
    host::Arguments arguments(const Use &use, const std::vector<host::Parameter> &parameters);
    host::Value callRow(const Use &use, const Expression *assigned);
    host::Value call(const host::MethodDescription &method, bool usesSetter, const host::Value &self,
                     const host::Arguments &arguments, const Place &place);
    host::Value call(const Function &function, const host::Value &self, const Expressions &arguments,
                     const Place &place);
    void setUpFields(const host::Value &object);

    // A variable, a field or an element that a method may change.
    struct Reference {
        const Use *use;
        host::Value owner; // of an element, the array; of a field, the object; else nil
        int32_t index = 0;
    };
    Reference refer(const Expression &expression);
    void assign(const Reference &reference, const host::Value &value);

    // Whether a loop has to end after a round that ended so.
    bool leaves(Flow &flow, LoopKind kind, const Place &place);
    const ClassDefinition *definitionOf(const host::Value &object) const;

    std::function<void(const host::Value &)> _show;
    std::vector<host::Value> _globals;
    std::vector<const ClassDefinition *> _classes;
    Frame *_frame = nullptr;
    int _depth = 0;
    LoopKind _leaving = LoopKind::Any; // of the Exit or Continue that is under way
};

// The value itself; throws Raised for Nil.
host::Value notNil(const host::Value &value, const Place &place);

// Adds elements as long as the array's upper bound is less.
void grow(host::Value array, int32_t upperBound, const Type &type);

// Whatever bytes it has.
void writeLine(FILE *stream, std::string line);

// What an operator makes of two values; `type` is the type of the result.
host::Value operated(Operator operation, const host::Value &left, const host::Value &right, const Type &type,
                     const Place &place);

} // namespace script
