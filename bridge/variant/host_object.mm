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
    id (*convert)(REALobject object);
};

} // namespace

static id DataOf(REALobject object)
{
    return NewNSData(reinterpret_cast<REALmemoryBlock>(object));
}

static id DictionaryOf(REALobject object)
{
    return NewNSDictionary(reinterpret_cast<REALdictionary>(object));
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
    {"NSPathComponentCellKTZ", CarriedObject},
    {"NSPathCellKTZ", CarriedObject},
    {"NSPathControlKTZ", CarriedObject},
    {"NSObjectKTZ", CarriedObject},
    {"NSPipeKTZ", CarriedObject},
    {"NSTaskKTZ", CarriedObject},
    {"NSFileHandleKTZ", CarriedObject},
    {"NSClipViewKTZ", CarriedObject},
    {"NSAnimationKTZ", CarriedObject},
    {"NSCoderKTZ", CarriedObject},
    {"NSTimeZoneKTZ", CarriedObject},
    {"NSDateComponentsKTZ", CarriedObject},
    {"NSAnimationContextKTZ", CarriedObject},
    {"NSTimerKTZ", CarriedObject},
    {"NSBoxKTZ", CarriedObject},
    {"NSComboBoxKTZ", CarriedObject},
    {"NSImageViewKTZ", CarriedObject},
    {"NSPopUpButtonKTZ", CarriedObject},
    {"NSTextFieldKTZ", CarriedObject},
    {"NSSearchFieldCellKTZ", CarriedObject},
    {"NSSecureTextFieldKTZ", CarriedObject},
    {"NSSecureTextFieldCellKTZ", CarriedObject},
    {"NSApplicationKTZ", CarriedObject},
    {"NSSearchFieldKTZ", CarriedObject},
    {"NSTabViewKTZ", CarriedObject},
    {"NSTabViewItemKTZ", CarriedObject},
    {"NSStepperKTZ", CarriedObject},
    {"NSURLRequestKTZ", CarriedObject},
    {"NSURLDownloadKTZ", CarriedObject},
    {"NSURLConnectionKTZ", CarriedObject},
    {"NSFontPanelKTZ", CarriedObject},
    {"NSFontManagerKTZ", CarriedObject},
    {"NSImageKTZ", CarriedObject},
    {"NSImageRepKTZ", CarriedObject},
    {"NSAffineTransformKTZ", CarriedObject},
    {"NSFontKTZ", CarriedObject},
    {"NSToolbarItemKTZ", CarriedObject},
    {"NSToolbarKTZ", CarriedObject},
    {"NSScreenKTZ", CarriedObject},
    {"NSCharacterSetKTZ", CarriedObject},
    {"NSTextStorageKTZ", CarriedObject},
    {"NSColorKTZ", CarriedObject},
    {"NSAttributedStringKTZ", CarriedObject},
    {"NSAssertionHandlerKTZ", CarriedObject},
    {"NSMenuKTZ", CarriedObject},
    {"NSFontDescriptorKTZ", CarriedObject},
    {"NSMenuItemKTZ", CarriedObject},
    {"NSErrorKTZ", CarriedObject},
    {"NSViewControllerKTZ", CarriedObject},
    {"NSWindowControllerKTZ", CarriedObject},
    {"NSHTTPCookieKTZ", CarriedObject},
    {"NSHTTPCookieStorageKTZ", CarriedObject},
    {"NSPasteboardKTZ", CarriedObject},
    {"NSBundleKTZ", CarriedObject},
    {"NSEnumeratorKTZ", CarriedObject},
    {"NSDirectoryEnumeratorKTZ", CarriedObject},
    {"NSRunningApplicationKTZ", CarriedObject},
    {"NSURLCacheKTZ", CarriedObject},
    {"NSCellKTZ", CarriedObject},
    {"NSFileManagerKTZ", CarriedObject},
    {"NSSoundKTZ", CarriedObject},
    {"NSBezierPathKTZ", CarriedObject},
    {"NSCursorKTZ", CarriedObject},
    {"NSEventKTZ", CarriedObject},
    {"NSIndexSetKTZ", CarriedObject},
    {"NSCalendarKTZ", CarriedObject},
    {"NSViewKTZ", CarriedObject},
    {"NSWindowKTZ", CarriedObject},
    {"NSColorListKTZ", CarriedObject},
    {"NSColorSpaceKTZ", CarriedObject},
    {"NSTableColumnKTZ", CarriedObject},
    {"NSUndoManagerKTZ", CarriedObject},
    {"NSScrollerKTZ", CarriedObject},
    {"NSResponderKTZ", CarriedObject},
    {"NSTextFieldCellKTZ", CarriedObject},
    {"NSTextKTZ", CarriedObject},
    {"NSTableHeaderViewKTZ", CarriedObject},
    {"NSOperationKTZ", CarriedObject},
    {"NSNotificationKTZ", CarriedObject},
    {"NSNotificationCenterKTZ", CarriedObject},
    {"NSDistributedNotificationCenterKTZ", CarriedObject},
    {"QuartzFilterKTZ", CarriedObject},
    {"NSUserDefaultsKTZ", CarriedObject},
    {"NSDockTileKTZ", CarriedObject},
    {"NSLocaleKTZ", CarriedObject},
    {"NSAppleEventDescriptorKTZ", CarriedObject},
    {"NSAppleScriptKTZ", CarriedObject},
    {"NSTableViewKTZ", CarriedObject},
    {"NSLayoutManagerKTZ", CarriedObject},
    {"NSTextContainerKTZ", CarriedObject},
    {"NSTextViewKTZ", CarriedObject},
    {"NSTextTabKTZ", CarriedObject},
    {"NSParagraphStyleKTZ", CarriedObject},
    {"NSDraggingImageComponentKTZ", CarriedObject},
    {"NSPasteboardItemKTZ", CarriedObject},
    {"NSRunLoopKTZ", CarriedObject},
    {"NSMetadataQueryKTZ", CarriedObject},
    {"NSMetadataItemKTZ", CarriedObject},
    {"NSPredicateKTZ", CarriedObject},
    {"NSCompoundPredicateKTZ", CarriedObject},
    {"NSSortDescriptorKTZ", CarriedObject},
    {"NSMetadataQueryResultGroupKTZ", CarriedObject},
    {"NSComparisonPredicateKTZ", CarriedObject},
    {"NSExpressionKTZ", CarriedObject},
    {"WebUIDelegateKTZ", CarriedObject},
    {"WebResourceLoadDelegateKTZ", CarriedObject},
    {"WebFrameLoadDelegateKTZ", CarriedObject},
    {"WebDownloadDelegateKTZ", CarriedObject},
    {"DRBurnKTZ", CarriedObject},
    {"PDFAnnotationKTZ", CarriedObject},
    {"PDFActionKTZ", CarriedObject},

    // Structures
    {"NSSizeKTZ", SizeValueOf},
    {"NSRectKTZ", RectValueOf},
    {"NSRangeKTZ", RangeValueOf},
    {"NSPointKTZ", PointValueOf},

    // Time values, which the family's libraries convert: where a class is, its message is expected to be
    {"QTKitTimeKTZ", [](REALobject o) -> id { return [NSValue valueWithQTTimeKTZ:o]; }},
    {"QTKitTimeRangeKTZ", [](REALobject o) -> id { return [NSValue valueWithQTTimeRangeKTZ:o]; }},
    {"CMTimeMappingKTZ", [](REALobject o) -> id { return [NSValue valueWithCMTimeMappingKTZ:o]; }},
    {"CMTimeRangeKTZ", [](REALobject o) -> id { return [NSValue valueWithCMTimeRangeKTZ:o]; }},
    {"CMTimeKTZ", [](REALobject o) -> id { return [NSValue valueWithCMTimeKTZ:o]; }},

    {"WebPolicyDelegateKTZ", CarriedObject},

    // Core Foundation and Core Graphics references, in an object's place
    {"CFObjectKTZ", CarriedObject},
    {"CGColorKTZ", CarriedObject},
    {"CGFontKTZ", CarriedObject},
    {"CGImageKTZ", CarriedObject},
    {"CGColorSpaceKTZ", CarriedObject},
    {"CGPathKTZ", CarriedObject},
    {"CGContextKTZ", CarriedObject},
    {"CGLayerKTZ", CarriedObject},
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

id ObjectOfHostObject(REALobject object)
{
    if (const ClassRow *row = FirstMatch(rowsBeforeFiles, object))
        return row->convert(object);
    if (IsFolderItem(object))
        return NewNSURLfile(reinterpret_cast<REALfolderItem>(object));
    if (const ClassRow *row = FirstMatch(rowsAfterFiles, object))
        return row->convert(object);

    return [objc_getClass(kObjectWrapperClass) wrap:object]; // nil where the class is missing
}
