#include "bridge/variant/host_object.h"

#include "bridge/data/dictionary.h"
#include "bridge/data/folder_item.h"
#include "bridge/data/memory_block.h"
#include "bridge/family/family.h"
#include "bridge/variant/value_wrapper.h"
#include "bridge/variant/wrapper_objects.h"
#include "hostapi/services.h"

#include <objc/runtime.h>

#include <iterator>

namespace {

struct ClassRow {
    const char *className;
    id (*convert)(REALobject object, HeldHandles &held);
};

} // namespace

static id DataOf(REALobject object, HeldHandles &held)
{
    return NewNSData(reinterpret_cast<REALmemoryBlock>(object), held);
}

static id DictionaryOf(REALobject object, HeldHandles &held)
{
    return NewNSDictionary(reinterpret_cast<REALdictionary>(object), held);
}

static id Carried(REALobject object, HeldHandles &)
{
    return CarriedObject(object);
}

// clang-format off

// The first class that the object is an instance of decides, subclasses included, so the order is part of
// what a host program sees. A folder item comes after the first row; it is known by a method, not a class.
static const ClassRow rowsBeforeFiles[] = {
    {"MemoryBlock", DataOf},
};

static const ClassRow rowsAfterFiles[] = {
    {"Dictionary", DictionaryOf},

    // Wrappers of Cocoa objects
    {"NSPathComponentCellKTZ", Carried},
    {"NSPathCellKTZ", Carried},
    {"NSPathControlKTZ", Carried},
    {"NSObjectKTZ", Carried},
    {"NSPipeKTZ", Carried},
    {"NSTaskKTZ", Carried},
    {"NSFileHandleKTZ", Carried},
    {"NSClipViewKTZ", Carried},
    {"NSAnimationKTZ", Carried},
    {"NSCoderKTZ", Carried},
    {"NSTimeZoneKTZ", Carried},
    {"NSDateComponentsKTZ", Carried},
    {"NSAnimationContextKTZ", Carried},
    {"NSTimerKTZ", Carried},
    {"NSBoxKTZ", Carried},
    {"NSComboBoxKTZ", Carried},
    {"NSImageViewKTZ", Carried},
    {"NSPopUpButtonKTZ", Carried},
    {"NSTextFieldKTZ", Carried},
    {"NSSearchFieldCellKTZ", Carried},
    {"NSSecureTextFieldKTZ", Carried},
    {"NSSecureTextFieldCellKTZ", Carried},
    {"NSApplicationKTZ", Carried},
    {"NSSearchFieldKTZ", Carried},
    {"NSTabViewKTZ", Carried},
    {"NSTabViewItemKTZ", Carried},
    {"NSStepperKTZ", Carried},
    {"NSURLRequestKTZ", Carried},
    {"NSURLDownloadKTZ", Carried},
    {"NSURLConnectionKTZ", Carried},
    {"NSFontPanelKTZ", Carried},
    {"NSFontManagerKTZ", Carried},
    {"NSImageKTZ", Carried},
    {"NSImageRepKTZ", Carried},
    {"NSAffineTransformKTZ", Carried},
    {"NSFontKTZ", Carried},
    {"NSToolbarItemKTZ", Carried},
    {"NSToolbarKTZ", Carried},
    {"NSScreenKTZ", Carried},
    {"NSCharacterSetKTZ", Carried},
    {"NSTextStorageKTZ", Carried},
    {"NSColorKTZ", Carried},
    {"NSAttributedStringKTZ", Carried},
    {"NSAssertionHandlerKTZ", Carried},
    {"NSMenuKTZ", Carried},
    {"NSFontDescriptorKTZ", Carried},
    {"NSMenuItemKTZ", Carried},
    {"NSErrorKTZ", Carried},
    {"NSViewControllerKTZ", Carried},
    {"NSWindowControllerKTZ", Carried},
    {"NSHTTPCookieKTZ", Carried},
    {"NSHTTPCookieStorageKTZ", Carried},
    {"NSPasteboardKTZ", Carried},
    {"NSBundleKTZ", Carried},
    {"NSEnumeratorKTZ", Carried},
    {"NSDirectoryEnumeratorKTZ", Carried},
    {"NSRunningApplicationKTZ", Carried},
    {"NSURLCacheKTZ", Carried},
    {"NSCellKTZ", Carried},
    {"NSFileManagerKTZ", Carried},
    {"NSSoundKTZ", Carried},
    {"NSBezierPathKTZ", Carried},
    {"NSCursorKTZ", Carried},
    {"NSEventKTZ", Carried},
    {"NSIndexSetKTZ", Carried},
    {"NSCalendarKTZ", Carried},
    {"NSViewKTZ", Carried},
    {"NSWindowKTZ", Carried},
    {"NSColorListKTZ", Carried},
    {"NSColorSpaceKTZ", Carried},
    {"NSTableColumnKTZ", Carried},
    {"NSUndoManagerKTZ", Carried},
    {"NSScrollerKTZ", Carried},
    {"NSResponderKTZ", Carried},
    {"NSTextFieldCellKTZ", Carried},
    {"NSTextKTZ", Carried},
    {"NSTableHeaderViewKTZ", Carried},
    {"NSOperationKTZ", Carried},
    {"NSNotificationKTZ", Carried},
    {"NSNotificationCenterKTZ", Carried},
    {"NSDistributedNotificationCenterKTZ", Carried},
    {"QuartzFilterKTZ", Carried},
    {"NSUserDefaultsKTZ", Carried},
    {"NSDockTileKTZ", Carried},
    {"NSLocaleKTZ", Carried},
    {"NSAppleEventDescriptorKTZ", Carried},
    {"NSAppleScriptKTZ", Carried},
    {"NSTableViewKTZ", Carried},
    {"NSLayoutManagerKTZ", Carried},
    {"NSTextContainerKTZ", Carried},
    {"NSTextViewKTZ", Carried},
    {"NSTextTabKTZ", Carried},
    {"NSParagraphStyleKTZ", Carried},
    {"NSDraggingImageComponentKTZ", Carried},
    {"NSPasteboardItemKTZ", Carried},
    {"NSRunLoopKTZ", Carried},
    {"NSMetadataQueryKTZ", Carried},
    {"NSMetadataItemKTZ", Carried},
    {"NSPredicateKTZ", Carried},
    {"NSCompoundPredicateKTZ", Carried},
    {"NSSortDescriptorKTZ", Carried},
    {"NSMetadataQueryResultGroupKTZ", Carried},
    {"NSComparisonPredicateKTZ", Carried},
    {"NSExpressionKTZ", Carried},
    {"WebUIDelegateKTZ", Carried},
    {"WebResourceLoadDelegateKTZ", Carried},
    {"WebFrameLoadDelegateKTZ", Carried},
    {"WebDownloadDelegateKTZ", Carried},
    {"DRBurnKTZ", Carried},
    {"PDFAnnotationKTZ", Carried},
    {"PDFActionKTZ", Carried},

    // Structures
    {"NSSizeKTZ", SizeValueOf},
    {"NSRectKTZ", RectValueOf},
    {"NSRangeKTZ", RangeValueOf},
    {"NSPointKTZ", PointValueOf},

    // Time values, which the family's libraries convert: where a class is, its message is expected to be
    {"QTKitTimeKTZ", [](REALobject o, HeldHandles &) -> id { return [NSValue valueWithQTTimeKTZ:o]; }},
    {"QTKitTimeRangeKTZ", [](REALobject o, HeldHandles &) -> id { return [NSValue valueWithQTTimeRangeKTZ:o]; }},
    {"CMTimeMappingKTZ", [](REALobject o, HeldHandles &) -> id { return [NSValue valueWithCMTimeMappingKTZ:o]; }},
    {"CMTimeRangeKTZ", [](REALobject o, HeldHandles &) -> id { return [NSValue valueWithCMTimeRangeKTZ:o]; }},
    {"CMTimeKTZ", [](REALobject o, HeldHandles &) -> id { return [NSValue valueWithCMTimeKTZ:o]; }},

    {"WebPolicyDelegateKTZ", Carried},

    // Core Foundation and Core Graphics references, in an object's place
    {"CFObjectKTZ", Carried},
    {"CGColorKTZ", Carried},
    {"CGFontKTZ", Carried},
    {"CGImageKTZ", Carried},
    {"CGColorSpaceKTZ", Carried},
    {"CGPathKTZ", Carried},
    {"CGContextKTZ", Carried},
    {"CGLayerKTZ", Carried},
};

// clang-format on

static_assert(std::size(rowsBeforeFiles) + std::size(rowsAfterFiles) == 131);

// Class references are asked for anew each time: a class may come with a library that is loaded later.
template <size_t count>
static const ClassRow *FirstMatch(const ClassRow (&rows)[count], REALobject object)
{
    for (const ClassRow &row : rows) {
        REALclassRef hostClass = REALGetClassRef(row.className);
        if (hostClass && REALObjectIsA(object, hostClass))
            return &row;
    }
    return nullptr;
}

static bool IsFolderItem(REALobject object)
{
    return REALLoadObjectMethod(object, "TrueItem(Index as integer) as Folderitem") != nullptr;
}

id ObjectOfHostObject(REALobject object, HeldHandles &held)
{
    if (const ClassRow *row = FirstMatch(rowsBeforeFiles, object))
        return row->convert(object, held);
    if (IsFolderItem(object))
        return NewNSURLfile(reinterpret_cast<REALfolderItem>(object));
    if (const ClassRow *row = FirstMatch(rowsAfterFiles, object))
        return row->convert(object, held);

    return [objc_getClass(kObjectWrapperClass) wrap:object]; // nil where the class is missing
}
