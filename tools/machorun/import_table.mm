// The table of everything that a loaded library may import: each symbol of macOS and what stands for it here. The names
// are those of the file, with the leading underscore that macOS gives to C.
#include "tools/machorun/bad_image.h"
#include "tools/machorun/exceptions.h"
#include "tools/machorun/imports.h"
#include "tools/machorun/messages.h"

#include <AppKit/AppKit.h>
#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>
#include <CoreText/CoreText.h>
#include <Foundation/Foundation.h>
#include <objc/objc-sync.h>
#include <objc/runtime.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cxxabi.h>
#include <exception>
#include <new>
#include <typeinfo>
#include <unordered_map>
#include <unwind.h>

// The virtual tables behind run-time type information have no declaration in any header.
extern "C" {
extern const char _ZTVN10__cxxabiv117__class_type_infoE[];
extern const char _ZTVN10__cxxabiv120__si_class_type_infoE[];
extern const char _ZTVN10__cxxabiv121__vmi_class_type_infoE[];
extern const char _ZTIi[];
}

namespace machorun {

namespace {

// A library's constant strings point at this until objc_references.mm gives them the class that is here. Binding only
// needs an address.
const char constantStringClass = 0;

// Nothing is unloaded here, so what a library wants to be done at its end is done at the end of the process.
int atExitOfProcess(void (*function)(void *), void *argument, void *)
{
    return abi::__cxa_atexit(function, argument, nullptr);
}

// clang-format off

#define SAME(name) {"_" #name, (const void *)&name}

const auto &rows = *new std::unordered_map<std::string, const void *>{
    // Messages, exceptions: functions of the loader's own, because the conventions differ.
    {"_objc_msgSend",                   (const void *)&machorun_msgSend},
    {"_objc_msgSend_fpret",             (const void *)&machorun_msgSend_fpret},
    {"_objc_msgSend_stret",             (const void *)&machorun_msgSend_stret},
    {"_objc_msgSendSuper",              (const void *)&machorun_msgSendSuper},
    {"_objc_msgSendSuper_stret",        (const void *)&machorun_msgSendSuper_stret},
    {"_objc_exception_try_enter",       (const void *)&TryEnter},
    {"_objc_exception_try_exit",        (const void *)&TryExit},
    {"_objc_exception_extract",         (const void *)&ExceptionOf},
    {"_objc_exception_throw",           (const void *)&Throw},
    {"_objc_exception_match",           (const void *)&ExceptionMatches},
    {"__setjmp",                        (const void *)&machorun_setjmp},
    {"___gxx_personality_v0",           (const void *)&Personality},
    {"___CFConstantStringClassReference", &constantStringClass},

    // The Objective-C runtime.
    SAME(objc_sync_enter),
    SAME(objc_sync_exit),
    SAME(objc_getClass),
    SAME(objc_lookUpClass),
    SAME(object_getClassName),
    SAME(sel_registerName),
    SAME(sel_getUid),

    // Foundation and AppKit.
    SAME(NSLog),
    SAME(NSGlobalDomain),
    SAME(NSArgumentDomain),
    SAME(NSRegistrationDomain),
    SAME(NSUserDefaultsDidChangeNotification),
    SAME(NSInvalidArgumentException),
    SAME(NSApplicationLoad),

    // Core Foundation.
    SAME(CFRetain),
    SAME(CFRelease),
    SAME(CFGetTypeID),
    SAME(CFStringCreateWithCString),
    SAME(CFStringCreateWithBytes),
    SAME(CFStringCreateWithCharacters),
    SAME(CFStringCreateMutableCopy),
    SAME(CFStringGetLength),
    SAME(CFStringGetCharacters),
    SAME(CFStringGetCString),
    SAME(CFStringNormalize),
    SAME(CFURLCreateWithString),
    SAME(CFURLCopyLastPathComponent),
    SAME(CFURLCreateCopyDeletingLastPathComponent),
    SAME(CFURLCreateCopyAppendingPathComponent),
    SAME(CFURLCreateFromFSRef),
    SAME(CFURLGetFSRef),
    SAME(CFDictionaryGetValue),
    SAME(CFDictionaryGetValueIfPresent),
    SAME(CFDictionarySetValue),
    SAME(CFDictionaryRemoveValue),
    SAME(CFURLGetTypeID),
    SAME(CFDictionaryGetTypeID),
    SAME(CFStringGetTypeID),
    SAME(CFNumberGetTypeID),
    SAME(CFArrayGetTypeID),
    SAME(CFBooleanGetTypeID),
    SAME(CFDataGetTypeID),
    SAME(CFCharacterSetGetTypeID),
    SAME(CFBundleGetTypeID),
    SAME(CFSetGetTypeID),
    SAME(CFBagGetTypeID),
    SAME(CFUUIDGetTypeID),
    SAME(CFTimeZoneGetTypeID),
    SAME(CFDateGetTypeID),
    SAME(CFAttributedStringGetTypeID),
    SAME(CFErrorGetTypeID),

    // Core Text.
    SAME(CTFontGetTypeID),
    SAME(CTFontCollectionGetTypeID),
    SAME(CTFrameGetTypeID),
    SAME(CTFramesetterGetTypeID),
    SAME(CTGlyphInfoGetTypeID),
    SAME(CTLineGetTypeID),
    SAME(CTParagraphStyleGetTypeID),
    SAME(CTRunGetTypeID),
    SAME(CTTypesetterGetTypeID),
    SAME(CTRunDelegateGetTypeID),

    // The File Manager.
    SAME(FSGetCatalogInfo),
    SAME(FSpMakeFSRef),

    // The C library.
    SAME(abort),
    SAME(calloc),
    SAME(free),
    SAME(malloc),
    SAME(realloc),
    {"_memchr",  (const void *)static_cast<void *(*)(void *, int, size_t)>(&memchr)},
    {"_memcmp",  (const void *)&memcmp},
    {"_memcpy",  (const void *)&memcpy},
    {"_memmove", (const void *)&memmove},
    {"_memset",  (const void *)&memset},
    SAME(snprintf),
    SAME(strcmp),
    SAME(strlen),
    SAME(strncmp),

    // The C++ runtime. What `new` takes is an unsigned long there and an unsigned int here, which only the name shows.
    {"__Znwm",  (const void *)static_cast<void *(*)(size_t)>(&::operator new)},
    {"__Znam",  (const void *)static_cast<void *(*)(size_t)>(&::operator new[])},
    {"__ZdlPv", (const void *)static_cast<void (*)(void *)>(&::operator delete)},
    {"__ZdaPv", (const void *)static_cast<void (*)(void *)>(&::operator delete[])},
    {"__ZTISt9bad_alloc", &typeid(std::bad_alloc)},
    {"__ZTIi", _ZTIi},
    {"__ZTVN10__cxxabiv117__class_type_infoE",     _ZTVN10__cxxabiv117__class_type_infoE},
    {"__ZTVN10__cxxabiv120__si_class_type_infoE",  _ZTVN10__cxxabiv120__si_class_type_infoE},
    {"__ZTVN10__cxxabiv121__vmi_class_type_infoE", _ZTVN10__cxxabiv121__vmi_class_type_infoE},
    {"__ZSt9terminatev", (const void *)&std::terminate},
    {"___cxa_atexit", (const void *)&atExitOfProcess},
    {"___cxa_allocate_exception", (const void *)&abi::__cxa_allocate_exception},
    {"___cxa_free_exception",     (const void *)&abi::__cxa_free_exception},
    {"___cxa_throw",              (const void *)&abi::__cxa_throw},
    {"___cxa_begin_catch",        (const void *)&abi::__cxa_begin_catch},
    {"___cxa_end_catch",          (const void *)&abi::__cxa_end_catch},
    {"___cxa_rethrow",            (const void *)&abi::__cxa_rethrow},
    {"___cxa_pure_virtual",       (const void *)&abi::__cxa_pure_virtual},
    SAME(_Unwind_Resume),
};

// clang-format on

} // namespace

macho::SymbolAddress ImportsWithout(std::vector<std::string> absent)
{
    return [absent = std::move(absent)](const macho::DylibBind &bind) {
        bool isAbsent = std::find(absent.begin(), absent.end(), bind.symbol) != absent.end();
        auto row = rows.find(bind.symbol);
        bool isThere = !isAbsent && row != rows.end();
        if (!isThere && !bind.weak) {
            throw BadImage("imports " + bind.symbol +
                           (isAbsent ? ", which is absent" : ", which the import table does not have"));
        }
        return isThere ? reinterpret_cast<uint32_t>(row->second) : 0;
    };
}

} // namespace machorun
