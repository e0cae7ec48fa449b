// The host's services, one line for each: its signature, its name in this library and the name that the
// host knows it by. Two services may share a host name; each still has a cache of its own.
//
// Ownership, unless a line says otherwise: a handle passed in is borrowed by the host, a handle that
// comes back carries one lock that the caller owns.
#pragma once

#include "hostapi/entry_point.h"
#include "hostapi/types.h"

#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>

struct REALclassDefinition;
typedef struct REALclassRefStruct *REALclassRef;

// clang-format off

// Classes, objects and exceptions
inline HostEntry<void(REALclassDefinition *)>                       REALRegisterClass{"PluginRegisterClass"};
inline HostEntry<REALobject(const char *className)>                 REALnewInstance{"PluginNewInstance"};
inline HostEntry<void(REALobject)>                                  REALLockObject{"REALLockObject"};
inline HostEntry<void(REALobject)>                                  REALUnlockObject{"REALUnlockObject"};
inline HostEntry<void(REALstring)>                                  REALLockString{"REALLockString"};
inline HostEntry<void(REALstring)>                                  REALUnlockString{"REALUnlockString"};
inline HostEntry<void(REALobject exception)>                        REALRaiseException{"RuntimeRaiseException"};
inline HostEntry<REALclassRef(const char *className)>               REALGetClassRef{"pluginObjectType"};
inline HostEntry<RBBoolean(REALobject, REALclassRef)>               REALObjectIsA{"RuntimeObjectIsa"};
inline HostEntry<void *(REALobject, const char *declaration)>       REALLoadObjectMethod{"REALLoadObjectMethod"};

// Properties: true when the property was read or set. What a read hands out is locked for the caller.
inline HostEntry<RBBoolean(REALobject, const char *, int32_t *)>    REALGetPropValueInt32{"REALGetPropValueInt"};
inline HostEntry<RBBoolean(REALobject, const char *, int64_t *)>    REALGetPropValueInt64{"REALGetPropValueInt64"};
inline HostEntry<RBBoolean(REALobject, const char *, float *)>      REALGetPropValueSingle{"REALGetPropValueSingle"};
inline HostEntry<RBBoolean(REALobject, const char *, double *)>     REALGetPropValueDouble{"REALGetPropValueDouble"};
inline HostEntry<RBBoolean(REALobject, const char *, REALstring *)> REALGetPropValueString{"REALGetPropValueString"};
inline HostEntry<RBBoolean(REALobject, const char *, REALobject *)> REALGetPropValueObject{"REALGetPropValueObject"};
inline HostEntry<RBBoolean(REALobject, const char *, int32_t)>      REALSetPropValueInt32{"REALSetPropValueInt"};
inline HostEntry<RBBoolean(REALobject, const char *, REALstring)>   REALSetPropValueString{"REALSetPropValueString"};

// Variants
inline HostEntry<REALobject(REALstring)>                            REALNewVariantString{"StringToVariant"};
inline HostEntry<REALobject(int32_t)>                               REALNewVariantInteger{"Int32ToVariant"};
inline HostEntry<REALobject(uint32_t)>                              REALNewVariantUInt32{"UInt32ToVariant"};
inline HostEntry<REALobject(int64_t)>                               REALNewVariantInt64{"Int64ToVariant"};
inline HostEntry<REALobject(uint64_t)>                              REALNewVariantUInt64{"UInt64ToVariant"};
inline HostEntry<REALobject(float)>                                 REALNewVariantSingle{"SingleToVariant"};
inline HostEntry<REALobject(double)>                                REALNewVariantDouble{"DoubleToVariant"};
inline HostEntry<REALobject(RBBoolean)>                             REALNewVariantBoolean{"BooleanToVariant"};
inline HostEntry<REALstring(REALobject)>                            GetVariantString{"VariantToString"};
inline HostEntry<int32_t(REALobject)>                               GetVariantInt32{"VariantToInt32"};
inline HostEntry<int64_t(REALobject)>                               GetVariantInt64{"VariantToInt64"};
inline HostEntry<float(REALobject)>                                 GetVariantSingle{"VariantToSingle"};
inline HostEntry<double(REALobject)>                                GetVariantDouble{"VariantToDouble"};
inline HostMethod<int32_t(REALobject)>                              GetVariantType{"VarType(value As Variant) As Int32"};

// Arrays: an upper bound of -1 is an empty array
inline HostEntry<REALarray(int32_t elementType, int32_t upperBound)> REALCreateArray{"RuntimeArrayCreateSingleDimBoundedArray"};
inline HostEntry<int32_t(REALarray)>                                REALGetArrayUBound{"RuntimeUBound"};
inline HostEntry<REALstring(REALarray, int32_t index)>              REALGetArrayString{"RuntimeDirectReadStringArray"};
inline HostEntry<REALobject(REALarray, int32_t index)>              REALGetArrayObject{"RuntimeDirectReadObjectArray"};

// Memory blocks: sizes in bytes
inline HostEntry<REALmemoryBlock(int32_t size)>                     REALNewMemoryBlockOriginal{"newMemoryBlock"};
inline HostEntry<void *(REALmemoryBlock)>                           REALMemoryBlockGetPtr{"memoryBlockGetPtr"};
inline HostEntry<int32_t(REALmemoryBlock)>                          REALMemoryBlockGetSize{"memoryBlockGetSize"};

// Strings: the services with a body of their own are in hostapi/strings.h
inline HostEntry<uint32_t(REALstring)>                              REALGetStringEncoding{"REALGetStringEncoding"};
inline HostEntry<REALstring(REALstring, uint32_t encoding)>         REALConvertString{"REALConvertString"};
inline HostEntry<void(REALstring, uint32_t encoding)>               REALSetStringEncoding{"REALSetStringEncoding"};
inline HostEntry<REALstring(const char *bytes, int32_t length)>     originalREALBuildString{"REALBuildString"};
// The CFString is the caller's to release.
inline HostEntry<CFStringRef(REALstring, uint8_t flag)>             REALGetStringCFString{"REALGetStringCFString"};
inline HostEntry<CFStringRef(REALstring, uint8_t flag)>             copyStringCFString{"REALGetStringCFString"};

// Files
inline HostEntry<REALfolderItem(const FSSpec *)>                    REALFolderItemFromFSSpec{"FolderItemFromFSSpec"};
inline HostEntry<RBBoolean(FSSpec *, REALfolderItem)>               REALFSSpecFromFolderItem{"REALFSSpecFromFolderItem"};
inline HostEntry<RBBoolean(REALfolderItem, FSRef *, HFSUniStr255 *)> REALFSRefFromFolderItem{"REALFSRefFromFolderItem"};
inline HostEntry<REALfolderItem(const FSRef *parent, const HFSUniStr255 *name)> REALFolderItemFromParentFSRef{"REALFolderItemFromParentFSRef"};

// clang-format on

// As REALGetStringCFString with flag 0, with a cache of its own.
inline CFStringRef REALCopyStringCFString(REALstring string)
{
    return copyStringCFString(string, 0);
}

// Put a value at an index of an array through the host's insert procedure for that array, which is asked
// for anew each time; the array takes its own lock. Nothing happens when the host has none.
void REALInsertArrayValueString(REALarray array, int32_t index, REALstring value);
void REALInsertArrayValueObject(REALarray array, int32_t index, REALobject value);

// The element at an index through the host's read procedure for that array, which is asked for anew each
// time. Zero, false or null when the host has none; strings and objects come locked for the caller.
template <typename Value>
using ArrayElement = Value(REALarray array, int32_t index);
ArrayElement<int32_t> REALGetArrayValueInt32;
ArrayElement<int64_t> REALGetArrayValueInt64;
ArrayElement<uint8_t> REALGetArrayValueUInt8;
ArrayElement<float> REALGetArrayValueSingle;
ArrayElement<double> REALGetArrayValueDouble;
ArrayElement<REALstring> REALGetArrayValueString;
ArrayElement<REALobject> REALGetArrayValueObject;
