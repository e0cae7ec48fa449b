#include "host/runtime/arrays.h"

#include <cstring>

#include "host/runtime/currency.h"
#include "host/runtime/entries/entries.h"
#include "host/runtime/exceptions.h"
#include "host/runtime/ledger.h"
#include "host/runtime/state.h"

namespace host::runtime::entries {

namespace {

bool hasIndex(const ArrayHandle *array, int32_t index, int32_t end)
{
    if (array && index >= 0 && index < end)
        return true;
    if (array)
        runtime::raiseException("OutOfBoundsException",
                                "There is no index " + std::to_string(index) + " in an " + array->what() + ".");
    return false;
}

// (array, index, value), for one element type; `Make` makes the host's value.
template <auto Make>
struct Insert;

template <class Element, Value (*Make)(Element)>
struct Insert<Make> {
    static void call(void *record, int32_t index, Element element)
    {
        Value value = Make(element);
        ArrayHandle *array = expectArray(record, "the insert procedure of an array");
        if (array && hasIndex(array, index, array->count() + 1))
            array->insert(index, value);
    }
};

template <class Number>
Value number(Number value)
{
    return value;
}

Value boolean(Byte value)
{
    return value != 0;
}

Value currency(int64_t units)
{
    return Value::currency(fromCurrency(units));
}

Value string(void *record)
{
    return expect(record, HandleKind::String, "an array of string") ? Value::borrowHandle(record) : Value();
}

template <class T>
T readElement(void *record, int32_t index)
{
    ArrayHandle *array = expectArray(record, "the read procedure of an array");
    T value{};
    if (array && hasIndex(array, index, array->count()))
        memcpy(&value, array->raw(index), sizeof value);
    return value;
}

void *readHandle(void *record, int32_t index)
{
    void *element = readElement<void *>(record, index);
    if (Handle *handle = find(element))
        lock(*handle);
    return element;
}

struct Procedures {
    ElementType type;
    void *insert;
    void *read;
};

template <class Function>
void *pointer(Function *function)
{
    return reinterpret_cast<void *>(function);
}

const Procedures *proceduresOf(void *record, const char *user)
{
    static const Procedures procedures[] = {
        {ElementType::Int32, pointer(Insert<number<int32_t>>::call), pointer(readElement<int32_t>)},
        {ElementType::Int64, pointer(Insert<number<int64_t>>::call), pointer(readElement<int64_t>)},
        {ElementType::Single, pointer(Insert<number<float>>::call), pointer(readElement<float>)},
        {ElementType::Double, pointer(Insert<number<double>>::call), pointer(readElement<double>)},
        {ElementType::Boolean, pointer(Insert<boolean>::call), pointer(readElement<Byte>)},
        {ElementType::Currency, pointer(Insert<currency>::call), pointer(readElement<int64_t>)},
        {ElementType::Color, pointer(Insert<Value::color>::call), pointer(readElement<uint32_t>)},
        {ElementType::String, pointer(Insert<string>::call), pointer(readHandle)},
        {ElementType::Object, pointer(Insert<Value::borrowHandle>::call), pointer(readHandle)},
        {ElementType::Date, pointer(Insert<Value::borrowHandle>::call), pointer(readHandle)},
    };
    ArrayHandle *array = expectArray(record, user);
    for (const Procedures &each : procedures)
        if (array && each.type == array->type())
            return &each;
    return nullptr;
}

void *createArray(int32_t elementType, int32_t upperBound)
{
    if (!isElementType(elementType) || upperBound < -1) {
        noteFault("RuntimeArrayCreateSingleDimBoundedArray: element type " + std::to_string(elementType) +
                  ", upper bound " + std::to_string(upperBound));
        return nullptr;
    }
    if (creationFails(Creation::Array))
        return nullptr;
    return (new ArrayHandle(ElementType(elementType), upperBound + 1))->record;
}

// -1 for an empty or no array.
int32_t arrayUpperBound(void *record)
{
    ArrayHandle *array = expectArray(record, "RuntimeUBound");
    return array ? array->count() - 1 : -1;
}

void *readStringArray(void *record, int32_t index)
{
    ArrayHandle *array = expectArray(record, "RuntimeDirectReadStringArray");
    return array && array->type() == ElementType::String ? readHandle(record, index) : nullptr;
}

void *readObjectArray(void *record, int32_t index)
{
    ArrayHandle *array = expectArray(record, "RuntimeDirectReadObjectArray");
    bool ofObjects = array && (array->type() == ElementType::Object || array->type() == ElementType::Date);
    return ofObjects ? readHandle(record, index) : nullptr;
}

void *insertProcedure(void *array)
{
    const Procedures *procedures = proceduresOf(array, "RuntimeArrayDirectGetInsertProc");
    return procedures ? procedures->insert : nullptr;
}

void *readProcedure(void *array)
{
    const Procedures *procedures = proceduresOf(array, "RuntimeArrayDirectGetGetProc");
    return procedures ? procedures->read : nullptr;
}

} // namespace

EntryPoints arrayEntryPoints()
{
    return {
        entry<createArray>("RuntimeArrayCreateSingleDimBoundedArray"),
        entry<arrayUpperBound>("RuntimeUBound"),
        entry<readStringArray>("RuntimeDirectReadStringArray"),
        entry<readObjectArray>("RuntimeDirectReadObjectArray"),
        entry<insertProcedure>("RuntimeArrayDirectGetInsertProc"),
        entry<readProcedure>("RuntimeArrayDirectGetGetProc"),
    };
}

} // namespace host::runtime::entries
