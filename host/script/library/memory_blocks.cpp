// Numbers and texts at their places in a MemoryBlock, in the byte order of the processor.
#include <cstring>

#include "host/script/library.h"

namespace script::library {

namespace {

// The bytes from an offset on; throws Raised when there are fewer.
uint8_t *bytesAt(const Value &block, int64_t offset, int64_t length, const Place &place)
{
    int32_t size = block.property("Size").int32();
    if (offset < 0 || length < 0 || offset + length > size)
        throw raised("OutOfBoundsException", "The MemoryBlock has " + std::to_string(size) + " bytes.", place);
    return block.data() + offset;
}

template <class Number>
Value read(A a, At place)
{
    Number number;
    memcpy(&number, bytesAt(a[0], a[1].int32(), sizeof number, place), sizeof number);
    if constexpr (sizeof number < sizeof(int32_t))
        return Value(int32_t(number));
    else
        return Value(number);
}

template <class Number>
Value write(A a, At place)
{
    Number number;
    if constexpr (std::is_floating_point_v<Number>)
        number = Number(a[2].number());
    else
        number = Number(a[2].int64());
    memcpy(bytesAt(a[0], a[1].int32(), sizeof number, place), &number, sizeof number);
    return Value();
}

Value readBoolean(A a, At place)
{
    return Value(*bytesAt(a[0], a[1].int32(), 1, place) != 0);
}

Value writeBoolean(A a, At place)
{
    *bytesAt(a[0], a[1].int32(), 1, place) = a[2].boolean();
    return Value();
}

Value readColor(A a, At place)
{
    return Value::color(uint32_t(read<uint32_t>(a, place).int64()));
}

Value writeColor(A a, At place)
{
    uint32_t color = a[2].colorValue();
    memcpy(bytesAt(a[0], a[1].int32(), sizeof color, place), &color, sizeof color);
    return Value();
}

// Up to a zero byte, or the end.
Value readCString(A a, At place)
{
    const uint8_t *start = bytesAt(a[0], a[1].int32(), 0, place);
    size_t most = size_t(a[0].property("Size").int32() - a[1].int32());
    return Value::string({reinterpret_cast<const char *>(start), strnlen(reinterpret_cast<const char *>(start), most)},
                         host::kUnknownEncoding);
}

Value writeCString(A a, At place)
{
    std::string bytes = a[2].isNullHandle() ? "" : a[2].bytes();
    memcpy(bytesAt(a[0], a[1].int32(), int64_t(bytes.size()) + 1, place), bytes.c_str(), bytes.size() + 1);
    return Value();
}

Value setLittleEndian(A a, At place)
{
    if (!a[1].boolean())
        throw raised("UnsupportedOperationException", "MemoryBlocks begin with the lowest byte of a number here.",
                     place);
    return Value();
}

} // namespace

LibraryRows memoryBlockRows()
{
    return {
        {"MemoryBlock.BooleanValue(offset As Integer) As Boolean", readBoolean, writeBoolean},
        {"MemoryBlock.ColorValue(offset As Integer) As Color", readColor, writeColor},
        {"MemoryBlock.CString(offset As Integer) As String", readCString, writeCString},
        {"MemoryBlock.DoubleValue(offset As Integer) As Double", read<double>, write<double>},
        {"MemoryBlock.Int16Value(offset As Integer) As Integer", read<int16_t>, write<int16_t>},
        {"MemoryBlock.Int32Value(offset As Integer) As Integer", read<int32_t>, write<int32_t>},
        {"MemoryBlock.Int64Value(offset As Integer) As Int64", read<int64_t>, write<int64_t>},
        {"MemoryBlock.Int8Value(offset As Integer) As Integer", read<int8_t>, write<int8_t>},
        {"MemoryBlock.LittleEndian As Boolean", constant<true>, setLittleEndian},
        {"MemoryBlock.Long(offset As Integer) As Integer", read<int32_t>, write<int32_t>},
        {"MemoryBlock.Short(offset As Integer) As Integer", read<int16_t>, write<int16_t>},
        {"MemoryBlock.SingleValue(offset As Integer) As Single", read<float>, write<float>},
        {"MemoryBlock.UInt16Value(offset As Integer) As Integer", read<uint16_t>, write<uint16_t>},
        {"MemoryBlock.UInt32Value(offset As Integer) As UInt32", read<uint32_t>, write<uint32_t>},
        {"MemoryBlock.UInt64Value(offset As Integer) As UInt64", read<uint64_t>, write<uint64_t>},
        {"MemoryBlock.UInt8Value(offset As Integer) As Integer", read<uint8_t>, write<uint8_t>},
        {"MemoryBlock.UShort(offset As Integer) As Integer", read<uint16_t>, write<uint16_t>},
    };
}

} // namespace script::library
