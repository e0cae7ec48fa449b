#include "bridge/variant/object_to_variant.h"

#include "bridge/data/date.h"
#include "bridge/data/dictionary.h"
#include "bridge/data/folder_item.h"
#include "bridge/data/memory_block.h"
#include "bridge/exceptions/held_handles.h"
#include "bridge/family/family.h"
#include "bridge/family/instances.h"
#include "bridge/strings/cf_string.h"
#include "bridge/variant/number_variant.h"
#include "bridge/variant/value_wrapper.h"
#include "bridge/variant/wrapper_objects.h"
#include "hostapi/services.h"

#include <AppKit/AppKit.h>
#include <objc/runtime.h>

#include <iterator>

// Cocoa keeps this message to itself: the Core Foundation type of an object, 0 for one that has none.
@interface NSObject (TypeOfCoreFoundation)
- (CFTypeID)_cfTypeID;
@end

void FillObjectArray(REALarray array, NSArray *objects)
{
    if (!array)
        return;
    NSEnumerator *enumerator = [objects objectEnumerator];
    int32_t index = 0;
    while (id element = [enumerator nextObject]) {
        REALobject variant = Hold(NewVariantFromNSObject(element));
        REALInsertArrayValueObject(array, index, variant);
        ReleaseNewestHeld();
        index++;
    }
}

static REALobject NewHostArray(NSArray *objects)
{
    REALarray array = REALCreateArray(kHostObjectElements, kEmptyArrayBound);
    if (!array)
        return nullptr;
    Hold(AsObject(array));
    FillObjectArray(array, objects);
    KeepNewestHeld();
    return AsObject(array);
}

// Null text gives the host's Variant of no text.
static REALobject NewTextVariant(NSString *text)
{
    REALstring string = Hold(CFString2RBString((CFStringRef)text));
    REALobject variant = REALNewVariantString(string);
    ReleaseNewestHeld();
    return variant;
}

static REALobject NewFromView(id view)
{
    if ([NSValue respondsToSelector:@selector(NewQTKitNSViewKTZ:)]) {
        if (REALobject object = [NSValue NewQTKitNSViewKTZ:view])
            return object;
    }
    return NewNSObjectKTZ(view, objc_getClass("NSView"));
}

// A file that can be told to the host is a FolderItem; every other URL is its text.
static REALobject NewFromURL(id url)
{
    if (REALfolderItem item = NSURLRBFile(url))
        return AsObject(item);
    return NewTextVariant([url absoluteString]);
}

namespace {

struct KindRow {
    Class (*kind)(); // Nil where the running system or the family lacks the class: nothing is of that kind
    REALobject (*convert)(id value);
    Class known = Nil; // the kind as soon as it is there; asked for again until then
};

} // namespace

#define KIND(name) [] { return Class([name class]); }
#define KIND_BY_NAME(name) [] { return Class(objc_getClass(name)); }
#define REGISTERED(wrapperClass) [](id v) { return NewRegisteredWrapper(v, wrapperClass); }
#define MOST_DERIVED(required) [](id v) { return NewNSObjectKTZ(v, objc_getClass(required)); }

// clang-format off

// The first kind that fits decides, so the order is part of what a host program sees: collections and
// property-list values before the wrapped classes, NSNumber before NSValue, of which it is a kind.
static KindRow rows[] = {
    {KIND(NSArray),                        [](id v) { return NewHostArray(v); }},
    {KIND(NSSet),                          [](id v) { return NewHostArray([v allObjects]); }},
    {KIND(NSString),                       [](id v) { return NewTextVariant(v); }},
    {KIND(NSData),                         [](id v) { return AsObject(NSDataRB(v)); }},
    {KIND(NSNumber),                       [](id v) { return NewVariantFromNumber(v); }},
    {KIND(NSDate),                         [](id v) { return NewHostDate(v); }},
    {KIND(NSDictionary),                   [](id v) { return AsObject(NSDictionaryRB(v)); }},
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
    {KIND_BY_NAME(kObjectWrapperClass),    [](id v) { return [v unwrap]; }},
    {KIND(NSValue),                        [](id v) { return NewVariantFromValue(v); }},
};
static_assert(std::size(rows) == 23);

// clang-format on

static Class KindOf(KindRow &row)
{
    if (!row.known)
        row.known = row.kind();
    return row.known;
}

// A Core Foundation object answers its type; what raises instead, or answers none, is a Cocoa object.
static bool IsCoreFoundationObject(id value, REALobject *wrapper)
{
    if (![value respondsToSelector:@selector(_cfTypeID)])
        return false;
    @try {
        if (static_cast<CFIndex>([value _cfTypeID]) <= 0)
            return false;
        *wrapper = NewCFWrapper((CFTypeRef)value);
        return true;
    } @catch (NSException *) {
        return false;
    }
}

REALobject NewVariantFromNSObject(id value)
{
    if (!value || value == [NSNull null])
        return nullptr;

    // A Cocoa object in the registry comes back as the host object that stands there, whatever its kind.
    if (REALobject carrier = LockedCarrierOf(value))
        return carrier;

    for (KindRow &row : rows) {
        if ([value isKindOfClass:KindOf(row)])
            return row.convert(value);
    }

    REALobject wrapper = nullptr;
    if (IsCoreFoundationObject(value, &wrapper))
        return wrapper;
    return NewWrapperByClassName(value);
}
