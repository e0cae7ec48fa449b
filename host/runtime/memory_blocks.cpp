#include "host/runtime/memory_blocks.h"

#include <cstdlib>
#include <cstring>

#include "host/runtime/exceptions.h"

namespace host::runtime {

namespace {

MemoryBlockPayload &blockOf(const Value &value)
{
    return *payloadOf<MemoryBlockPayload>(value);
}

// False, and the exception of the language is raised, for bytes outside the block.
bool isInside(const MemoryBlockPayload &block, int64_t offset, int64_t length)
{
    if (offset >= 0 && length >= 0 && offset + length <= block.size)
        return true;
    raiseException("OutOfBoundsException", "The MemoryBlock has " + std::to_string(block.size) + " bytes.");
    return false;
}

} // namespace

MemoryBlockPayload::~MemoryBlockPayload()
{
    free(data);
}

bool MemoryBlockPayload::resize(int32_t newSize)
{
    auto *moved = static_cast<uint8_t *>(realloc(data, newSize ? size_t(newSize) : 1));
    if (!moved)
        return false;
    if (newSize > size)
        memset(moved + size, 0, size_t(newSize - size));
    data = moved;
    size = newSize;
    return true;
}

ObjectHandle *newMemoryBlock(int32_t size)
{
    if (size < 0)
        return nullptr;
    ObjectHandle *object = newInstance(*findClass("MemoryBlock"));
    if (!payloadOf<MemoryBlockPayload>(object)->resize(size)) {
        unlock(*object);
        return nullptr;
    }
    return object;
}

void addMemoryBlockClass()
{
    Class &block = addOwnClass("MemoryBlock", "", [] {
        auto payload = std::make_unique<MemoryBlockPayload>();
        payload->resize(0);
        return payload;
    });
    block.properties.push_back(
        {"Size", Passing::Int32,
         [](ObjectHandle &object) { return Value(payloadOf<MemoryBlockPayload>(&object)->size); },
         [](ObjectHandle &object, const Value &value) {
             if (value.int32() < 0 || !payloadOf<MemoryBlockPayload>(&object)->resize(value.int32()))
                 raiseException("OutOfMemoryException", "");
         }});
    addMethod(block, "Constructor(size As Integer)", [](const Value &self, const Arguments &arguments) {
        if (arguments[0].int32() < 0 || !blockOf(self).resize(arguments[0].int32()))
            raiseException("OutOfMemoryException", "");
        return Value();
    });
    addMethod(block, "Byte(offset As Integer) As Integer", [](const Value &self, const Arguments &arguments) {
        int32_t offset = arguments[0].int32();
        return Value(isInside(blockOf(self), offset, 1) ? blockOf(self).data[offset] : 0);
    });
    addMethod(block, "Byte(offset As Integer, Assigns value As Integer)",
              [](const Value &self, const Arguments &arguments) {
                  int32_t offset = arguments[0].int32();
                  if (isInside(blockOf(self), offset, 1))
                      blockOf(self).data[offset] = uint8_t(arguments[1].int32());
                  return Value();
              });
    addMethod(block, "StringValue(offset As Integer, length As Integer) As String",
              [](const Value &self, const Arguments &arguments) {
                  int32_t offset = arguments[0].int32(), length = arguments[1].int32();
                  if (!isInside(blockOf(self), offset, length))
                      return Value::nullString();
                  return Value::string(blockOf(self).bytes().substr(size_t(offset), size_t(length)), kUnknownEncoding);
              });
    addMethod(block, "StringValue(offset As Integer, length As Integer, Assigns value As String)",
              [](const Value &self, const Arguments &arguments) {
                  int32_t offset = arguments[0].int32(), length = arguments[1].int32();
                  if (isInside(blockOf(self), offset, length)) {
                      std::string bytes = arguments[2].isNullHandle() ? "" : arguments[2].bytes();
                      bytes.resize(size_t(length));
                      memcpy(blockOf(self).data + offset, bytes.data(), bytes.size());
                  }
                  return Value();
              });
}

} // namespace host::runtime
