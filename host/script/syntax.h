// The tree of a program. The parser makes it, the checker fills in what names and members stand for, the interpreter
// walks it.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/classes.h"
#include "host/declaration.h"
#include "host/script/source.h"
#include "host/value.h"

namespace script {

using Type = host::DeclaredType;

struct Builtin;
struct ClassDefinition;
struct Expression;
struct Function;

using ExpressionPtr = std::unique_ptr<Expression>;
using Expressions = std::vector<ExpressionPtr>;

// A name in the text.
struct Named {
    std::string text;
    Place place;
};

// --- Expressions ---------------------------------------------------------------------------------------------------

// Where a variable lives.
enum class Storage { Global, Local, Field };

// What a name or a member stands for.
enum class Meaning {
    Unknown,
    Variable,     // slot in a storage; a field belongs to the base, or to Self where there is none
    ScriptCall,   // function; with a base, or as a method of Self
    HostCall,     // method on the base
    SharedCall,   // method of a class
    HostProperty, // of the base, by name
    ArrayMember,  // Append, Ubound and their like on the base
    BuiltinCall,
    Cast,      // Class(value): the value as an object of the class
    ClassName, // only in front of a shared member
};

struct Literal {
    host::Value value;
};

// Array(…). Its type comes from where it stands, or from its elements.
struct ArrayLiteral {
    Expressions elements;
};

// name, name(arguments), base.name, base.name(arguments)
struct Use {
    ExpressionPtr base; // null for a bare name
    Named name;
    Expressions arguments;
    bool hasBrackets = false;

    Meaning meaning = Meaning::Unknown;
    bool isElement = false; // the arguments are the index into the array that is meant
    Type type;              // of what is meant, before the index
    Storage storage = Storage::Local;
    size_t slot = 0;
    const Function *function = nullptr;
    const host::MethodDescription *method = nullptr;
    bool usesSetter = false; // as the target of an assignment: the method's setter, not the method itself
    const Builtin *builtin = nullptr;
};

enum class Operator {
    Add,
    Subtract,
    Multiply,
    Divide,
    IntegerDivide,
    Modulo,
    Power,
    Equal,
    Unequal,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Is,
    And,
    Or,
    Xor,
    Not,
    Negate,
};

struct Unary {
    Operator operation;
    ExpressionPtr operand;
};

struct Binary {
    Operator operation;
    Place place; // of the operator
    ExpressionPtr left, right;
};

// value IsA Class
struct TypeTest {
    ExpressionPtr operand;
    Named className;
};

struct Creation {
    enum class Way { Plain, ScriptConstructor, HostConstructor, DateOfParts, ExceptionWithMessage };
    Named className;
    Expressions arguments;
    Way way = Way::Plain;
    const Function *constructor = nullptr;
    const host::MethodDescription *hostConstructor = nullptr;
};

struct SelfObject {};

struct Expression {
    Place place;
    Type type;
    std::variant<Literal, ArrayLiteral, Use, Unary, Binary, TypeTest, Creation, SelfObject> node;
};

// --- Statements ----------------------------------------------------------------------------------------------------

struct Statement;
using Block = std::vector<std::unique_ptr<Statement>>;

// A type as it is written.
struct WrittenType {
    Named name;
    bool isArray = false;
};

struct Variable {
    Named name;
    Type type;
    Storage storage = Storage::Local;
    size_t slot = 0;
    bool isConstant = false;
};

// Dim a, b() As Type = initial, or As New Type(arguments), which is an initial value, too.
struct Dim {
    struct Item {
        Variable variable;
        bool isArray = false;
        ExpressionPtr upperBound; // of an array; null makes an empty one
    };
    std::vector<Item> items;
    WrittenType type;
    ExpressionPtr initial;
    bool isConstant = false;
};

struct Assignment {
    ExpressionPtr target;
    ExpressionPtr value;
};

struct Evaluation {
    ExpressionPtr expression;
    bool ignoresResult = false; // written with Call
};

struct Print {
    ExpressionPtr text; // null: an empty line
};

struct Assertion {
    ExpressionPtr condition;
    ExpressionPtr message; // may be null
};

struct If {
    struct Branch {
        ExpressionPtr condition;
        Block body;
    };
    std::vector<Branch> branches;
    Block otherwise;
};

struct Select {
    struct Case {
        Expressions values;
        Block body;
    };
    ExpressionPtr subject;
    std::vector<Case> cases;
    Block otherwise;
};

// The variable of a loop: its own one, or one that is there already.
struct LoopVariable {
    Variable variable;
    std::optional<WrittenType> ownType;
    ExpressionPtr existing;
};

struct ForCount {
    LoopVariable counter;
    ExpressionPtr first, last, step; // step may be null
    bool isDown = false;
    Block body;
};

struct ForEach {
    LoopVariable element;
    ExpressionPtr array;
    Block body;
};

// While and Do: the conditions are null where there are none.
struct Loop {
    ExpressionPtr before, after;
    bool untilBefore = false, untilAfter = false;
    Block body;
};

struct Leave {
    bool isContinue = false;
};

struct Return {
    ExpressionPtr value;
    Type type; // of the result
};

struct Try {
    struct Catch {
        std::optional<Variable> variable;
        Named className; // empty: every exception
        Block body;
    };
    Block body;
    std::vector<Catch> catches;
    Block finally;
};

struct Raise {
    ExpressionPtr exception;
};

struct Redim {
    ExpressionPtr array;
    ExpressionPtr upperBound;
};

struct Statement {
    Place place;
    std::variant<Dim, Assignment, Evaluation, Print, Assertion, If, Select, ForCount, ForEach, Loop, Leave, Return, Try,
                 Raise, Redim>
        node;
};

// --- Declarations --------------------------------------------------------------------------------------------------

struct Function {
    struct Parameter {
        Variable variable;
        WrittenType type;
    };
    Named name;
    std::vector<Parameter> parameters;
    std::optional<WrittenType> writtenResult;
    Type result;
    Block body;
    ClassDefinition *owner = nullptr;
    size_t slots = 0; // local variables, the parameters first
    Place end;
    std::string declaration() const; // as messages show it
};

struct ClassDefinition {
    Named name;
    std::optional<Named> superName;
    std::vector<Statement> fieldStatements; // each a Dim
    std::deque<Function> methods;
    ClassDefinition *super = nullptr;      // when it is one of the program's own, too
    std::vector<const Dim::Item *> fields; // in their slots
    size_t firstField = 0;                 // after those of `super`
    size_t fieldCount() const { return firstField + fields.size(); }
};

struct Program {
    std::deque<ClassDefinition> classes;
    std::deque<Function> functions;
    Block statements;
    size_t slots = 0; // local variables of the statements, which are not global
};

} // namespace script
