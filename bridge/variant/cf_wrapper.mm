// Wrapper objects for Core Foundation and Core Text objects, chosen by type id.
#include "bridge/variant/wrapper_objects.h"
#include "hostapi/held_handles.h"

#include <CoreText/CoreText.h>

#include <iterator>

static const uint32_t kCFWrapperTag = 0x52424346; // 'RBCF'
static const int kObjectWord = 0;
static const int kTagWord = 2;

static const char kAnyCFObject[] = "CFObjectKTZ";

namespace {

struct TypeRow {
    CFTypeID (*typeID)();
    const char *className;
};

} // namespace

// clang-format off

// In this order, the first equal type id decides. A function that the running system lacks is null (those
// of later systems are imported weakly) and its row is passed over. Data has "CFBinaryDataKTZ", not a name
// made from CFData: that is what the family calls the class.
static const TypeRow coreFoundationRows[] = {
    {CFURLGetTypeID,              "CFURLKTZ"},
    {CFDictionaryGetTypeID,       "CFDictionaryKTZ"},
    {CFStringGetTypeID,           "CFStringKTZ"},
    {CFNumberGetTypeID,           "CFNumberKTZ"},
    {CFArrayGetTypeID,            "CFArrayKTZ"},
    {CFBooleanGetTypeID,          "CFBooleanKTZ"},
    {CFDataGetTypeID,             "CFBinaryDataKTZ"},
    {CFCharacterSetGetTypeID,     "CFCharacterSetKTZ"},
    {CFBundleGetTypeID,           "CFBundleKTZ"},
    {CFSetGetTypeID,              "CFSetKTZ"},
    {CFBagGetTypeID,              "CFBagKTZ"},
    {CFUUIDGetTypeID,             "CFUUIDKTZ"},
    {CFTimeZoneGetTypeID,         "CFTimeZoneKTZ"},
    {CFDateGetTypeID,             "CFDateKTZ"},
    {CFAttributedStringGetTypeID, "CFAttributedStringKTZ"},
    {CFErrorGetTypeID,            "CFErrorKTZ"},
};

// Looked at only on systems with Core Text, which are those that have the first of them.
static const TypeRow coreTextRows[] = {
    {CTFontGetTypeID,             "CTFontKTZ"},
    {CTFontCollectionGetTypeID,   "CTFontCollectionKTZ"},
    {CTFrameGetTypeID,            "CTFrameKTZ"},
    {CTFramesetterGetTypeID,      "CTFramesetterKTZ"},
    {CTGlyphInfoGetTypeID,        "CTGlyphInfoKTZ"},
    {CTLineGetTypeID,             "CTLineKTZ"},
    {CTParagraphStyleGetTypeID,   "CTParagraphStyleKTZ"},
    {CTRunGetTypeID,              "CTRunKTZ"},
    {CTTypesetterGetTypeID,       "CTTypesetterKTZ"},
    {CTRunDelegateGetTypeID,      "CTRunDelegateKTZ"},
};

// clang-format on

static_assert(std::size(coreFoundationRows) + std::size(coreTextRows) == 26);

template <size_t count>
static const char *ClassNameIn(const TypeRow (&rows)[count], CFTypeID type)
{
    for (const TypeRow &row : rows) {
        if (row.typeID && row.typeID() == type)
            return row.className;
    }
    return nullptr;
}

static const char *ClassNameForType(CFTypeID type)
{
    const char *name = ClassNameIn(coreFoundationRows, type);
    if (!name && coreTextRows[0].typeID)
        name = ClassNameIn(coreTextRows, type);
    return name ? name : kAnyCFObject;
}

REALobject NewCFWrapper(CFTypeRef object, HeldHandles &held)
{
    REALobject wrapper = REALnewInstance(ClassNameForType(CFGetTypeID(object)));
    if (!wrapper)
        wrapper = REALnewInstance(kAnyCFObject); // asked for a second time when nothing matched
    if (!wrapper)
        return nullptr;

    // An instance without the tag has another shape: it is refused, and left as it is.
    uint32_t *words = InstanceData(wrapper);
    if (words[kTagWord] != kCFWrapperTag)
        return nullptr;
    words[kTagWord] = kCFWrapperTag;
    held.hold(wrapper);
    words[kObjectWord] = uint32_t(reinterpret_cast<uintptr_t>(CFRetain(object)));
    return wrapper;
}
