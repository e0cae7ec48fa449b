// The wrapper classes: host objects that carry one Cocoa or Core Foundation object each.
#include "host/family/class_record.h"
#include "host/family/cocoa_methods.h"

#include <AppKit/AppKit.h>
#include <Foundation/Foundation.h>
#include <string>

namespace family {

namespace {

// Word 0 is the carried object, which the wrapper owns.
struct CocoaData {
    id object;
    uint32_t unused[3];
};

// The tag tells the plug-in that the object is of this kind.
struct CFData {
    CFTypeRef object;
    uint32_t own;
    uint32_t tag;
    uint32_t unused;
};

constexpr uint32_t kCFTag = 0x52424346; // 'RBCF'

// clang-format off
const char *const kCocoaClasses[] = {
    "NSPathComponentCellKTZ", "NSPathCellKTZ", "NSPathControlKTZ", "NSObjectKTZ", "NSPipeKTZ", "NSTaskKTZ",
    "NSFileHandleKTZ", "NSClipViewKTZ", "NSAnimationKTZ", "NSCoderKTZ", "NSTimeZoneKTZ", "NSDateComponentsKTZ",
    "NSAnimationContextKTZ", "NSTimerKTZ", "NSBoxKTZ", "NSComboBoxKTZ", "NSImageViewKTZ", "NSPopUpButtonKTZ",
    "NSTextFieldKTZ", "NSSearchFieldCellKTZ", "NSSecureTextFieldKTZ", "NSSecureTextFieldCellKTZ",
    "NSApplicationKTZ", "NSSearchFieldKTZ", "NSTabViewKTZ", "NSTabViewItemKTZ", "NSStepperKTZ", "NSURLRequestKTZ",
    "NSURLDownloadKTZ", "NSURLConnectionKTZ", "NSFontPanelKTZ", "NSFontManagerKTZ", "NSImageKTZ", "NSImageRepKTZ",
    "NSAffineTransformKTZ", "NSFontKTZ", "NSToolbarItemKTZ", "NSToolbarKTZ", "NSScreenKTZ", "NSCharacterSetKTZ",
    "NSTextStorageKTZ", "NSColorKTZ", "NSAttributedStringKTZ", "NSAssertionHandlerKTZ", "NSMenuKTZ",
    "NSFontDescriptorKTZ", "NSMenuItemKTZ", "NSErrorKTZ", "NSViewControllerKTZ", "NSWindowControllerKTZ",
    "NSHTTPCookieKTZ", "NSHTTPCookieStorageKTZ", "NSPasteboardKTZ", "NSBundleKTZ", "NSEnumeratorKTZ",
    "NSDirectoryEnumeratorKTZ", "NSRunningApplicationKTZ", "NSURLCacheKTZ", "NSCellKTZ", "NSFileManagerKTZ",
    "NSSoundKTZ", "NSBezierPathKTZ", "NSCursorKTZ", "NSEventKTZ", "NSIndexSetKTZ", "NSCalendarKTZ", "NSViewKTZ",
    "NSWindowKTZ", "NSColorListKTZ", "NSColorSpaceKTZ", "NSTableColumnKTZ", "NSUndoManagerKTZ", "NSScrollerKTZ",
    "NSResponderKTZ", "NSTextFieldCellKTZ", "NSTextKTZ", "NSTableHeaderViewKTZ", "NSOperationKTZ",
    "NSNotificationKTZ", "NSNotificationCenterKTZ", "NSDistributedNotificationCenterKTZ", "QuartzFilterKTZ",
    "NSDockTileKTZ", "NSLocaleKTZ", "NSAppleEventDescriptorKTZ", "NSAppleScriptKTZ", "NSTableViewKTZ",
    "NSLayoutManagerKTZ", "NSTextContainerKTZ", "NSTextViewKTZ", "NSTextTabKTZ", "NSParagraphStyleKTZ",
    "NSDraggingImageComponentKTZ", "NSPasteboardItemKTZ", "NSRunLoopKTZ", "NSMetadataQueryKTZ",
    "NSMetadataItemKTZ", "NSPredicateKTZ", "NSCompoundPredicateKTZ", "NSSortDescriptorKTZ",
    "NSMetadataQueryResultGroupKTZ", "NSComparisonPredicateKTZ", "NSExpressionKTZ", "WebUIDelegateKTZ",
    "WebResourceLoadDelegateKTZ", "WebFrameLoadDelegateKTZ", "WebDownloadDelegateKTZ", "DRBurnKTZ",
    "PDFAnnotationKTZ", "PDFActionKTZ",
    "WebPolicyDelegateKTZ",
    // Views of a framework of their own, which the view converter of the family asks for first.
    "QTMovieViewKTZ", "QTCaptureViewKTZ",
};

// Carried by reference in the same way.
const char *const kCoreGraphicsClasses[] = {
    "CGColorKTZ", "CGFontKTZ", "CGImageKTZ", "CGColorSpaceKTZ", "CGPathKTZ", "CGContextKTZ", "CGLayerKTZ",
};

// All are subclasses of the first.
const char *const kCFClasses[] = {
    "CFObjectKTZ",
    "CFURLKTZ", "CFDictionaryKTZ", "CFStringKTZ", "CFNumberKTZ", "CFArrayKTZ", "CFBooleanKTZ", "CFBinaryDataKTZ",
    "CFCharacterSetKTZ", "CFBundleKTZ", "CFSetKTZ", "CFBagKTZ", "CFUUIDKTZ", "CFTimeZoneKTZ", "CFDateKTZ",
    "CFAttributedStringKTZ", "CFErrorKTZ", "CTFontKTZ", "CTFontCollectionKTZ", "CTFrameKTZ", "CTFramesetterKTZ",
    "CTGlyphInfoKTZ", "CTLineKTZ", "CTParagraphStyleKTZ", "CTRunKTZ", "CTTypesetterKTZ", "CTRunDelegateKTZ",
};
// clang-format on

// Views of these Cocoa classes have wrapper classes of their own.
struct ViewWrapper {
    const char *cocoaClass;
    const char *hostClass;
};

const ViewWrapper kViewWrappers[] = {
    {"QTMovieView", "QTMovieViewKTZ"},
    {"QTCaptureView", "QTCaptureViewKTZ"},
};

void releaseCocoaObject(void *object)
{
    id &carried = dataOf<CocoaData>(object)->object;
    if (!carried)
        return;
    if (CFDictionaryGetValue(instances(), carried) == object)
        CFDictionaryRemoveValue(instances(), carried);
    [carried release];
    carried = nil;
}

void releaseCFObject(void *object)
{
    CFTypeRef &carried = dataOf<CFData>(object)->object;
    if (carried)
        CFRelease(carried);
    carried = nullptr;
}

void setTag(void *object)
{
    dataOf<CFData>(object)->tag = kCFTag;
}

void clearTag(void *object)
{
    dataOf<CFData>(object)->tag = 0;
}

// A class without its tag stands for one of a library that was built for another layout.
host::interface::ObjectFunction tagFunction(const char *className, bool isInherited)
{
    if (!has((std::string(className) + ".tag").c_str()))
        return clearTag;
    return isInherited ? nullptr : setTag;
}

void addCFClasses()
{
    const char *root = kCFClasses[0];
    for (const char *name : kCFClasses) {
        bool isSubclass = name != root && has(root);
        if (isSubclass)
            addClass({name, root, 0, tagFunction(name, true), nullptr});
        else
            addClass({name, nullptr, sizeof(CFData), tagFunction(name, false), releaseCFObject});
    }
}

void *newViewWrapper(id, SEL, id view)
{
    for (const ViewWrapper &wrapper : kViewWrappers) {
        Class viewClass = static_cast<Class>(objc_getClass(wrapper.cocoaClass));
        if (!viewClass || ![view isKindOfClass:viewClass])
            continue;
        void *object = services->newInstance(wrapper.hostClass);
        if (object)
            dataOf<CocoaData>(object)->object = [view retain];
        return object;
    }
    return nullptr;
}

} // namespace

void addWrapperClasses()
{
    for (const char *name : kCocoaClasses)
        addClass({name, nullptr, sizeof(CocoaData), nullptr, releaseCocoaObject});
    for (const char *name : kCoreGraphicsClasses)
        addClass({name, nullptr, sizeof(CocoaData), nullptr, releaseCFObject});
    addCFClasses();
    addClassMethod([NSValue class], "NewQTKitNSViewKTZ:", newViewWrapper, "^v@:@");
}

} // namespace family
