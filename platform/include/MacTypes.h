// The integer types of macOS, as its own MacTypes.h has them for 32-bit processes (UInt32 and SInt32 are long there).
#pragma once

#include <stddef.h>
#include <stdint.h>

typedef unsigned char UInt8;
typedef signed char SInt8;
typedef unsigned short UInt16;
typedef signed short SInt16;
typedef unsigned long UInt32;
typedef signed long SInt32;
typedef unsigned long long UInt64;
typedef signed long long SInt64;

typedef unsigned char Boolean;
typedef UInt16 UniChar;
typedef unsigned long UniCharCount;
typedef UInt32 TextEncoding;

typedef SInt16 OSErr;
typedef SInt32 OSStatus;

typedef unsigned char StrFileName[64]; // a length byte, then up to 63 bytes of text
typedef const unsigned char *ConstStr255Param;

enum { noErr = 0 };
