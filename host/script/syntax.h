// The tree of a program. The parser makes it, the checker fills in what names and members stand for, the interpreter
// walks it.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/classes.h"
#include "host/declaration.h"
#include "host/script/source.h"
#include "host/value.h"

namespace script {

using Type = host::DeclaredType;

struct LibraryRow;
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
    LibraryCall,  // a function of the library, or a member that it adds to the base's type
    Constant,     // of an Enum or a class
    Cast,         // Class(value), Type(value): the value as one of that type
    Owner,        // a class or an Enum, only in front of a shared member
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
    const LibraryRow *row = nullptr;
    const Expression *constant = nullptr;
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

// If(condition, yes, no)
struct Conditional {
    ExpressionPtr condition, yes, no;
};

// value IsA Class
struct TypeTest {
    ExpressionPtr operand;
    Named className;
};

struct Creation {
    enum class Way { Plain, ScriptConstructor, HostConstructor, DateOfParts, CopyOfDate, ExceptionWithMessage };
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
    std::variant<Literal, ArrayLiteral, Use, Unary, Binary, Conditional, TypeTest, Creation, SelfObject> node;
};

// --- Statements ----------------------------------------------------------------------------------------------------

struct Statement;
using Block = std::vector<std::unique_ptr<Statement>>;

// A type as it is written.
struct WrittenType {
    Named name;
    bool isArray = false;
};

// Who may use what a class has: everybody, the class and its subclasses, the class alone.
enum class Access { Public, Protected, Private };

struct Variable {
    Named name;
    Type type;
    Storage storage = Storage::Local;
    size_t slot = 0;
    bool isConstant = false;
    bool isMistaken = false; // its type could not be made out, which has been told
};

// a, b() As Type = initial, or As New Type(arguments), which is an initial value, too: a part of a Dim.
struct DimGroup {
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

struct Dim {
    std::vector<DimGroup> groups;
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
    // value, first To last, Is > value, IsA Class
    struct Test {
        ExpressionPtr value, last;
        Operator comparison = Operator::Equal;
        Named className;
    };
    struct Case {
        std::vector<Test> tests;
        Block body;
    };
    ExpressionPtr subject;
    std::vector<Case> cases;
    Block otherwise;
};

enum class LoopKind { Any, For, While, Do };

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
    LoopKind kind = LoopKind::While;
    ExpressionPtr before, after;
    bool untilBefore = false, untilAfter = false;
    Block body;
};

// Exit and Continue: the innermost loop of that kind, or, with Exit Sub and Exit Function, the method.
struct Leave {
    bool isContinue = false;
    LoopKind loop = LoopKind::Any;
    std::string_view method; // "Sub", "Function", or empty
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
        bool isByRef = false;
        bool isOptional = false;
        ExpressionPtr initial; // of an optional one; null: what a variable of the type begins as
    };
    Named name;
    Access access = Access::Public;
    std::vector<Parameter> parameters;
    std::optional<WrittenType> writtenResult;
    Type result;
    Block body;
    ClassDefinition *owner = nullptr;
    size_t slots = 0;        // local variables, the parameters first
    bool isMistaken = false; // a type of the declaration could not be made out, which has been told
    Place end;
    std::string declaration() const; // as messages show it
    std::string fullName() const;    // with its class in front
};

struct ClassDefinition {
    Named name;
    std::optional<Named> superName;
    // Dim and Const.
    struct FieldGroup {
        DimGroup group;
        Access access = Access::Public;
    };
    struct Field {
        const DimGroup::Item *item;
        Access access;
        const ClassDefinition *owner;
        const Expression *constant; // null for a variable
    };
    std::deque<FieldGroup> fieldGroups;
    std::deque<Function> methods;
    ClassDefinition *super = nullptr; // when it is one of the program's own, too
    std::vector<Field> fields;        // the constants among them
    size_t slotCount = 0;             // those of `super` included
};

// Named integers.
struct Enumeration {
    struct Item {
        Named name;
        ExpressionPtr value; // an integer literal, made by the checker where none is written
    };
    Named name;
    std::vector<Item> items;
};

struct Program {
    std::deque<Enumeration> enumerations;
    std::deque<ClassDefinition> classes;
    std::deque<Function> functions;
    Block statements;
    size_t slots = 0; // local variables of the statements, which are not global
};

} // namespace script
