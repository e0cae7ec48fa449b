// The integer types of the older interfaces. The 32-bit ones are long, as C code for 32-bit processes expects.
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

typedef unsigned char Str63[64];
typedef Str63 StrFileName; // a length byte, then up to 63 bytes of text

enum { noErr = 0 };
