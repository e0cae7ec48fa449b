#include "bridge/variant/object_to_variant.h"

#include "bridge/data/date.h"
#include "bridge/data/dictionary.h"
#include "bridge/data/folder_item.h"
#include "bridge/data/memory_block.h"
#include "bridge/family/family.h"
#include "bridge/family/instances.h"
#include "bridge/strings/ns_string.h"
#include "bridge/variant/number_variant.h"
#include "bridge/variant/value_wrapper.h"
#include "bridge/variant/wrapper_objects.h"
#include "hostapi/held_handles.h"

#include <AppKit/AppKit.h>
#include <objc/runtime.h>

#include <iterator>

// Cocoa keeps this message to itself: the Core Foundation type of an object, 0 for one that has none.
@interface NSObject (TypeOfCoreFoundation)
- (CFTypeID)_cfTypeID;
@end

void FillObjectArray(REALarray array, NSArray *objects, HeldHandles &held)
{
    if (!array)
        return;
    NSEnumerator *enumerator = [objects objectEnumerator];
    int32_t index = 0;
    while (id element = [enumerator nextObject]) {
        REALobject variant = NewVariantFromNSObject(element, held);
        REALInsertArrayValueObject(array, index, variant);
        held.release(variant);
        index++;
    }
}

static REALobject NewHostArray(NSArray *objects, HeldHandles &held)
{
    REALarray array = held.hold(REALCreateArray(kHostObjectElements, kEmptyArrayBound));
    if (!array)
        return nullptr;
    FillObjectArray(array, objects, held);
    return AsObject(array);
}

// Null text gives the host's Variant of no text.
static REALobject NewTextVariant(NSString *text, HeldHandles &held)
{
    REALstring string = HostTextOf(text, held);
    REALobject variant = held.hold(REALNewVariantString(string));
    held.release(string);
    return variant;
}

static REALobject NewFromView(id view, HeldHandles &held)
{
    if ([NSValue respondsToSelector:@selector(NewQTKitNSViewKTZ:)]) {
        if (REALobject object = held.hold([NSValue NewQTKitNSViewKTZ:view]))
            return object;
    }
    return NewNSObjectKTZ(view, objc_getClass("NSView"), held);
}

// A file that can be told to the host is a FolderItem; every other URL is its text.
static REALobject NewFromURL(id url, HeldHandles &held)
{
    if (REALfolderItem item = NSURLRBFile(url, held))
        return AsObject(item);
    return NewTextVariant([url absoluteString], held);
}

// A Core Foundation object answers its type; what raises instead, or answers none, is a Cocoa object. Tells whether it
// is one; `wrapper` is then what the family makes of it, which may be null.
static bool MadeCoreFoundationWrapper(id value, REALobject *wrapper, HeldHandles &held)
{
    if (![value respondsToSelector:@selector(_cfTypeID)])
        return false;
    const int32_t heldBefore = held.count();
    @try {
        if (static_cast<CFIndex>([value _cfTypeID]) <= 0)
            return false;
        *wrapper = NewCFWrapper((CFTypeRef)value, held);
        return true;
    } @catch (NSException *) {
        held.releaseTo(heldBefore);
        return false;
    }
}

static REALobject NewOfAnyOtherKind(id value, HeldHandles &held)
{
    REALobject wrapper = nullptr;
    if (MadeCoreFoundationWrapper(value, &wrapper, held))
        return wrapper;
    return NewWrapperByClassName(value, held);
}

namespace {

struct KindRow {
    Class (*find)(); // Nil where the running system or the family lacks the class: nothing is of that kind. Null at the
                     // end
    bool isLinked;   // with this library, and stays; a class found by name may go with its bundle
    REALobject (*convert)(id value, HeldHandles &held);
    Class known = Nil; // a linked one, once it was asked for
};

} // namespace

#define KIND(name) [] { return Class([name class]); }, true
#define KIND_BY_NAME(name) [] { return Class(objc_getClass(name)); }, false
#define REGISTERED(wrapperClass) [](id v, HeldHandles &held) { return NewRegisteredWrapper(v, wrapperClass, held); }
#define MOST_DERIVED(required) [](id v, HeldHandles &held) { return NewNSObjectKTZ(v, objc_getClass(required), held); }

// clang-format off

// The first kind that fits decides, so the order is part of what a host program sees: collections and
// property-list values before the wrapped classes, NSNumber before NSValue, of which it is a kind.
static KindRow rows[] = {
    {KIND(NSArray),                        [](id v, HeldHandles &held) { return NewHostArray(v, held); }},
    {KIND(NSSet),                          [](id v, HeldHandles &held) { return NewHostArray([v allObjects], held); }},
    {KIND(NSString),                       [](id v, HeldHandles &held) { return NewTextVariant(v, held); }},
    {KIND(NSData),                         [](id v, HeldHandles &held) { return AsObject(NSDataRB(v, held)); }},
    {KIND(NSNumber),                       [](id v, HeldHandles &held) { return NewVariantFromNumber(v, held); }},
    {KIND(NSDate),                         [](id v, HeldHandles &held) { return NewHostDate(v, held); }},
    {KIND(NSDictionary),                   [](id v, HeldHandles &held) { return AsObject(NSDictionaryRB(v, held)); }},
    {KIND(NSAttributedString),             MOST_DERIVED("NSAttributedString")},
    {KIND(NSCalendar),                     REGISTERED("NSCalendarKTZ")},
    {KIND(NSError),                        REGISTERED("NSErrorKTZ")},
    {KIND_BY_NAME("NSRunningApplication"), REGISTERED("NSRunningApplicationKTZ")}, // from Mac OS X 10.6 on
    {KIND(NSFont),                         REGISTERED("NSFontKTZ")},
    {KIND(NSFileHandle),                   REGISTERED("NSFileHandleKTZ")},
    {KIND(NSCharacterSet),                 REGISTERED("NSCharacterSetKTZ")},
    {KIND(NSLocale),                       REGISTERED("NSLocaleKTZ")},
    {KIND(NSTimer),                        REGISTERED("NSTimerKTZ")},
    {KIND(NSWindow),                       MOST_DERIVED("NSWindow")},
    {KIND(NSView),                         NewFromView},
    {KIND(NSTimeZone),                     REGISTERED("NSTimeZoneKTZ")},
    {KIND(NSParagraphStyle),               REGISTERED("NSParagraphStyleKTZ")},
    {KIND(NSURL),                          NewFromURL},
    {KIND_BY_NAME(kObjectWrapperClass),    [](id v, HeldHandles &held) { return held.hold([v unwrap]); }},
    {KIND(NSValue),                        [](id v, HeldHandles &held) { return held.hold(NewVariantFromValue(v)); }},
    {nullptr, false,                       NewOfAnyOtherKind},
};
static_assert(std::size(rows) == 24);

// clang-format on

// Nil where there is no such class now: nothing is of its kind, and no message is sent to find that out.
static Class FindKind(KindRow &row)
{
    Class kind = row.find();
    if (row.isLinked)
        row.known = kind;
    return kind;
}

static id TheNull()
{
    static id null = nil; // one object for the life of the process
    if (!null)
        null = [NSNull null];
    return null;
}

REALobject NewVariantFromNSObject(id value, HeldHandles &held)
{
    if (!value || value == TheNull())
        return nullptr;

    // A Cocoa object in the registry comes back as the host object that stands there, whatever its kind.
    if (REALobject carrier = LockedCarrierOf(value, held))
        return carrier;

    KindRow *row = rows;
    for (;; row++) {
        Class kind = row->known;
        if (!kind) {
            if (!row->find)
                break; // the last row takes everything
            kind = FindKind(*row);
            if (!kind)
                continue;
        }
        if ([value isKindOfClass:kind])
            break;
    }
    return row->convert(value, held);
}
