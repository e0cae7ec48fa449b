// A value of the host language in C++: nil, a number, a boolean, a colour, a string, an object or an array.
// A Value that holds a handle owns one lock on it, which the ledger counts as held by the host.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "host/interface/codes.h"

namespace host {

namespace runtime {
struct Handle;
}

class Value {
public:
    enum class Kind {
        Nothing,
        Int32,
        UInt32,
        Int64,
        UInt64,
        Single,
        Double,
        Currency,
        Boolean,
        Color,
        String,
        Object, // any object, Date, Dictionary, MemoryBlock and FolderItem among them
        Array,
    };

    Value() = default; // nil
    Value(std::nullptr_t) {}
    Value(bool value) : Value(Kind::Boolean, int64_t(value)) {}
    Value(int value) : Value(Kind::Int32, int64_t(value)) {}
    Value(long value) : Value(int(value)) {}
    Value(long long value) : Value(Kind::Int64, int64_t(value)) {}
    Value(unsigned value) : Value(Kind::UInt32, int64_t(value)) {}
    Value(unsigned long value) : Value(unsigned(value)) {}
    Value(unsigned long long value) : Value(Kind::UInt64, int64_t(value)) {}
    Value(float value) : Value(Kind::Single, double(value)) {}
    Value(double value) : Value(Kind::Double, value) {}
    Value(const char *utf8) : Value(utf8 ? string(utf8) : Value()) {} // "" makes an empty string, a null pointer nil
    Value(const std::string &utf8) : Value(string(utf8)) {}           // a string, which may hold zero bytes
    Value(const Value &other);
    Value(Value &&other) noexcept;
    Value &operator=(Value other) noexcept;
    ~Value();

    // Strings of any bytes in any encoding. The language knows two empty strings: a handle of length 0, and the null
    // handle, which `isNullHandle` tells apart. Both are of kind String and read as "".
    static Value string(std::string_view bytes, uint32_t encoding = kUTF8);
    static Value utf16(std::u16string_view units);
    static Value emptyString() { return string({}); }
    static Value nullString() { return Value(Kind::String); }

    static Value currency(double value) { return Value(Kind::Currency, value); }
    static Value color(uint32_t rgb) { return Value(Kind::Color, int64_t(rgb)); }
    static Value date(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
    static Value memoryBlock(std::string_view bytes);
    static Value folderItem(const std::string &absolutePath); // the item need not exist
    static Value dictionary();
    static Value dictionary(std::initializer_list<std::pair<Value, Value>> entries);
    static Value array(ElementType type, const std::vector<Value> &elements = {});
    static Value strings(const std::vector<Value> &elements) { return array(ElementType::String, elements); }
    static Value variants(const std::vector<Value> &elements) { return array(ElementType::Object, elements); }
    static Value variants(std::initializer_list<Value> elements) { return variants(std::vector<Value>(elements)); }

    // Becomes nil, as an assignment of nil does. An Objective-C exception of a plug-in's finaliser passes through this,
    // but cannot leave the destructor of a Value.
    void reset();

    // From raw handles. `adopt` takes over a lock that the caller owns (a plug-in's result), `borrow` adds one.
    // A scalar Variant becomes its value; a null handle nil.
    static Value adopt(void *handle);
    static Value borrow(void *handle);
    // As above, but a scalar Variant stays the Variant object itself (kind Object, class "Variant").
    static Value adoptHandle(void *handle);
    static Value borrowHandle(void *handle);
    // A new Variant object for a scalar or string value; the handle itself for objects and arrays; nil for nil.
    Value boxed() const;

    Kind kind() const { return _kind; }
    bool isNil() const { return _kind == Kind::Nothing; }
    bool isNullHandle() const { return isNil() || (isString() && !_value.handle); }
    bool isNumber() const;
    bool isString() const { return _kind == Kind::String; }
    bool isObject() const { return _kind == Kind::Object; }
    bool isArray() const { return _kind == Kind::Array; }
    bool isA(const std::string &className) const; // an object of the class or of a subclass
    int32_t varType() const;                      // as VarType reports it
    std::string typeName() const;                 // for messages: "integer", "string", "NSFontKTZ", "array of string"

    void *handle() const;                 // null for nil and for scalars; no lock is added
    int32_t lockCount() const;            // of the handle, this Value's own lock included; 0 without a handle
    const std::string &className() const; // of an object

    // Reading. Each throws TypeError for a value of another kind; numbers convert to each other.
    bool boolean() const;
    int32_t int32() const;
    int64_t int64() const;
    uint64_t uint64() const;
    float single() const;
    double number() const;
    uint32_t colorValue() const;
    std::string text() const;  // of a string, converted to UTF-8; nil gives ""
    std::string bytes() const; // of a string (as they are) or of a MemoryBlock
    uint32_t encoding() const; // of a string

    // Arrays and Dictionaries.
    ElementType elementType() const;
    int32_t count() const; // elements of an array, entries of a Dictionary
    Value at(int32_t index) const;
    void append(const Value &element);
    void setAt(int32_t index, const Value &element);
    void insert(int32_t index, const Value &element);
    void removeAt(int32_t index);
    Value keyAt(int32_t index) const;
    bool hasKey(const Value &key) const;
    Value lookup(const Value &key) const; // nil when there is no such key
    void put(const Value &key, const Value &value);

    // MemoryBlocks, FolderItems.
    uint8_t *data() const;    // a MemoryBlock's bytes
    std::string path() const; // a FolderItem's absolute path

    // Any object: its properties by name (throws CallError when there is none) and the start of its instance data.
    Value property(const std::string &name) const;
    void setProperty(const std::string &name, const Value &value);
    void *instanceData() const;

    // Equality of the language: numbers by value, strings by text, Dates by time, other objects and arrays by
    // identity.
    bool equals(const Value &other) const;
    bool sameHandle(const Value &other) const { return handle() == other.handle(); }

    // For people: strings quoted, arrays and Dictionaries with their contents.
    std::string describe() const;

private:
    Kind _kind = Kind::Nothing;
    union {
        int64_t integer;
        double real;
        runtime::Handle *handle; // one lock on it is ours
    } _value{};

    explicit Value(Kind kind) : _kind(kind) {}
    Value(Kind kind, int64_t integer) : _kind(kind) { _value.integer = integer; }
    Value(Kind kind, double real) : _kind(kind) { _value.real = real; }
    void take(runtime::Handle &handle);
};

using Arguments = std::vector<Value>;

} // namespace host
