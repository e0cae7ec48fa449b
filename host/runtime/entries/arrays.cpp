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

void insert(void *record, int32_t index, const Value &value)
{
    ArrayHandle *array = expectArray(record, "the insert procedure of an array");
    if (array && hasIndex(array, index, array->count() + 1))
        array->insert(index, value);
}

void insertInt32(void *array, int32_t index, int32_t value)
{
    insert(array, index, value);
}

void insertInt64(void *array, int32_t index, int64_t value)
{
    insert(array, index, value);
}

void insertSingle(void *array, int32_t index, float value)
{
    insert(array, index, value);
}

void insertDouble(void *array, int32_t index, double value)
{
    insert(array, index, value);
}

void insertBoolean(void *array, int32_t index, Byte value)
{
    insert(array, index, value != 0);
}

void insertCurrency(void *array, int32_t index, int64_t value)
{
    insert(array, index, Value::currency(fromCurrency(value)));
}

void insertColor(void *array, int32_t index, uint32_t value)
{
    insert(array, index, Value::color(value));
}

void insertString(void *array, int32_t index, void *value)
{
    insert(array, index,
           expect(value, HandleKind::String, "an array of string") ? Value::borrowHandle(value) : Value());
}

void insertObject(void *array, int32_t index, void *value)
{
    insert(array, index, Value::borrowHandle(value));
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
        {ElementType::Int32, pointer(insertInt32), pointer(readElement<int32_t>)},
        {ElementType::Int64, pointer(insertInt64), pointer(readElement<int64_t>)},
        {ElementType::Single, pointer(insertSingle), pointer(readElement<float>)},
        {ElementType::Double, pointer(insertDouble), pointer(readElement<double>)},
        {ElementType::Boolean, pointer(insertBoolean), pointer(readElement<Byte>)},
        {ElementType::Currency, pointer(insertCurrency), pointer(readElement<int64_t>)},
        {ElementType::Color, pointer(insertColor), pointer(readElement<uint32_t>)},
        {ElementType::String, pointer(insertString), pointer(readHandle)},
        {ElementType::Object, pointer(insertObject), pointer(readHandle)},
        {ElementType::Date, pointer(insertObject), pointer(readHandle)},
    };
    ArrayHandle *array = expectArray(record, user);
    for (const Procedures &each : procedures)
        if (array && each.type == array->type())
            return &each;
    return nullptr;
}

} // namespace

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

} // namespace host::runtime::entries
