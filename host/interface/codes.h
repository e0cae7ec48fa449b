// Numbers that host and plug-in exchange: text encodings, array element types, Variant type codes.
#pragma once

#include <cstdint>

namespace host {

// Text encodings carry Core Foundation's numbers.
enum Encoding : uint32_t {
    kMacRoman = 0x0000,
    kUTF16 = 0x0100, // the processor's byte order
    kISOLatin1 = 0x0201,
    kWindowsLatin1 = 0x0500,
    kASCII = 0x0600,
    kUTF8 = 0x08000100,
    kUTF32 = 0x0C000100, // the processor's byte order
    kUTF16BE = 0x10000100,
    kUTF16LE = 0x14000100,
    kUTF32BE = 0x18000100,
    kUTF32LE = 0x1C000100,
    kUnknownEncoding = 0xFFFF, // the string's bytes are just bytes
};

// Element types of an array as plug-ins name them. 3 and 4 are what plug-ins rely on; the other numbers are this
// host's own.
enum class ElementType : int32_t {
    Int32 = 0,
    Single = 1,
    Double = 2,
    String = 3,
    Object = 4, // Variants are such elements too
    Int64 = 5,
    Boolean = 6,
    Date = 7,
    Currency = 8,
    Color = 9,
};

// What "VarType(value As Variant) As Int32" answers. An array answers kVarTypeArray plus the code of its elements.
enum VarType : int32_t {
    kVarTypeNil = 0,
    kVarTypeInt32 = 2,
    kVarTypeInt64 = 3, // UInt32 and UInt64 too: the host has no code of their own for them
    kVarTypeSingle = 4,
    kVarTypeDouble = 5,
    kVarTypeCurrency = 6,
    kVarTypeDate = 7,
    kVarTypeString = 8,
    kVarTypeObject = 9,
    kVarTypeBoolean = 11,
    kVarTypeColor = 16,
    kVarTypeArray = 4096,
};

} // namespace host
