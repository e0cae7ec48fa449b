// One-dimensional arrays with packed elements.
#pragma once

#include <vector>

#include "host/declaration.h"
#include "host/interface/codes.h"
#include "host/runtime/handle.h"
#include "host/value.h"

namespace host::runtime {

struct ArrayHandle : Handle {
    ArrayHandle(ElementType type, int32_t count);
    ~ArrayHandle() override;
    std::string what() const override;

    ElementType type() const { return _type; }
    int32_t count() const { return _count; }
    Value at(int32_t index) const;
    // The value must fit the element type; TypeError otherwise.
    void set(int32_t index, const Value &value);
    void insert(int32_t index, const Value &value);
    void remove(int32_t index);

    // The element as it lies in storage: a number, a byte, or a handle that the array holds.
    const void *raw(int32_t index) const { return &_storage[size_t(index) * _width]; }

private:
    void publish(); // after every change that may move the elements
    Handle *handleAt(int32_t index) const;

    ElementType _type;
    size_t _width;
    int32_t _count;
    std::vector<uint8_t> _storage;
};

ArrayHandle *expectArray(const void *record, const char *user);

int32_t elementVarType(ElementType type);
const char *elementName(ElementType type); // "string"
// The element type of an array declared with elements of that type; objects and Variants are both Object.
ElementType elementTypeOf(const DeclaredType &type);
bool isElementType(int32_t code);

} // namespace host::runtime
