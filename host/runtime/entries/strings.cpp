#include "host/runtime/entries/entries.h"

#include <CoreFoundation/CoreFoundation.h>
#include <new>

#include "host/interface/codes.h"
#include "host/runtime/ledger.h"
#include "host/runtime/state.h"
#include "host/runtime/strings.h"
#include "host/runtime/text.h"

namespace host::runtime::entries {

namespace {

void *newString(std::string_view bytes, uint32_t encoding)
{
    return creationFails(Creation::String) ? nullptr : (new StringHandle(bytes, encoding))->record;
}

void lockString(void *string)
{
    if (StringHandle *handle = expectString(string, "REALLockString"))
        lock(*handle);
}

// Of unknown encoding.
void *buildString(const char *bytes, int32_t length)
{
    if (state().stringBuildingFault.strikes())
        throw std::bad_alloc();
    if (length < 0 || (!bytes && length > 0)) {
        noteFault("REALBuildString: no bytes, or a negative number of them");
        return nullptr;
    }
    return newString({bytes ? bytes : "", size_t(length)}, kUnknownEncoding);
}

uint32_t getStringEncoding(void *string)
{
    StringHandle *handle = expectString(string, "REALGetStringEncoding");
    return handle ? handle->encoding() : uint32_t(kUnknownEncoding);
}

void setStringEncoding(void *string, uint32_t encoding)
{
    if (StringHandle *handle = expectString(string, "REALSetStringEncoding"))
        handle->setEncoding(encoding);
}

// Null when it cannot be converted.
void *convertString(void *string, uint32_t encoding)
{
    StringHandle *handle = expectString(string, "REALConvertString");
    if (!handle)
        return nullptr;
    std::optional<std::string> converted = convertText(handle->bytes(), handle->encoding(), encoding);
    return converted ? newString(*converted, encoding) : nullptr;
}

Byte getStringData(void *string, uint32_t encoding, interface::StringData *data)
{
    StringHandle *handle = expectString(string, "PluginGetStringData");
    if (!handle || !data)
        return 0;
    uint32_t wanted = encoding == kUnknownEncoding ? handle->encoding() : encoding;
    std::optional<std::string> bytes = convertText(handle->bytes(), handle->encoding(), wanted);
    if (!bytes)
        return 0;
    auto *copy = new StringDataHandle(*bytes);
    *data = {copy->record, int32_t(bytes->size()), encoding, copy->record, nullptr};
    return 1;
}

void disposeStringData(interface::StringData *data)
{
    if (!data || data->hostWord1 != data->data) {
        noteFault("PluginDisposeStringData: not a record that PluginGetStringData filled");
        return;
    }
    if (Handle *copy = expect(data->data, HandleKind::StringData, "PluginDisposeStringData"))
        unlock(*copy);
}

// A CFString that the caller owns; null for unknown bytes.
const void *getStringCFString(void *string, Byte)
{
    StringHandle *handle = expectString(string, "REALGetStringCFString");
    if (!handle)
        return nullptr;
    std::optional<std::u16string> units = decodeText(handle->bytes(), handle->encoding());
    if (!units)
        return nullptr;
    return CFStringCreateWithCharacters(nullptr, reinterpret_cast<const UniChar *>(units->data()),
                                        CFIndex(units->size()));
}

const char *stringGetCString(void *string)
{
    StringHandle *handle = expectString(string, "StringGetCString");
    return handle ? handle->text() : nullptr;
}

int32_t stringLengthInBytes(void *string)
{
    StringHandle *handle = expectString(string, "LenB");
    return handle ? handle->length() : 0;
}

} // namespace

void unlockString(void *string)
{
    if (StringHandle *handle = expectString(string, "REALUnlockString"))
        unlock(*handle);
}

EntryPoints stringEntryPoints()
{
    return {
        entry<lockString>("REALLockString"),
        entry<unlockString>("REALUnlockString"),
        entry<buildString>("REALBuildString"),
        entry<getStringEncoding>("REALGetStringEncoding"),
        entry<setStringEncoding>("REALSetStringEncoding"),
        entry<convertString>("REALConvertString"),
        entry<getStringData>("PluginGetStringData", 2012.0),
        entry<disposeStringData>("PluginDisposeStringData", 2012.0),
        entry<getStringCFString>("REALGetStringCFString", 2012.0),
        entry<stringGetCString>("StringGetCString"),
        global<stringLengthInBytes>("LenB", "LenB( s as string ) as integer"),
    };
}

} // namespace host::runtime::entries
