// The 131 classes by which a host object is known, in the order in which the host is asked for them.
#include "tests/bridge/crossing.h"

using host::Value;

namespace {

const char *const kClassesInOrder[] = {
    "MemoryBlock",
    "Dictionary",
    "NSPathComponentCellKTZ",
    "NSPathCellKTZ",
    "NSPathControlKTZ",
    "NSObjectKTZ",
    "NSPipeKTZ",
    "NSTaskKTZ",
    "NSFileHandleKTZ",
    "NSClipViewKTZ",
    "NSAnimationKTZ",
    "NSCoderKTZ",
    "NSTimeZoneKTZ",
    "NSDateComponentsKTZ",
    "NSAnimationContextKTZ",
    "NSTimerKTZ",
    "NSBoxKTZ",
    "NSComboBoxKTZ",
    "NSImageViewKTZ",
    "NSPopUpButtonKTZ",
    "NSTextFieldKTZ",
    "NSSearchFieldCellKTZ",
    "NSSecureTextFieldKTZ",
    "NSSecureTextFieldCellKTZ",
    "NSApplicationKTZ",
    "NSSearchFieldKTZ",
    "NSTabViewKTZ",
    "NSTabViewItemKTZ",
    "NSStepperKTZ",
    "NSURLRequestKTZ",
    "NSURLDownloadKTZ",
    "NSURLConnectionKTZ",
    "NSFontPanelKTZ",
    "NSFontManagerKTZ",
    "NSImageKTZ",
    "NSImageRepKTZ",
    "NSAffineTransformKTZ",
    "NSFontKTZ",
    "NSToolbarItemKTZ",
    "NSToolbarKTZ",
    "NSScreenKTZ",
    "NSCharacterSetKTZ",
    "NSTextStorageKTZ",
    "NSColorKTZ",
    "NSAttributedStringKTZ",
    "NSAssertionHandlerKTZ",
    "NSMenuKTZ",
    "NSFontDescriptorKTZ",
    "NSMenuItemKTZ",
    "NSErrorKTZ",
    "NSViewControllerKTZ",
    "NSWindowControllerKTZ",
    "NSHTTPCookieKTZ",
    "NSHTTPCookieStorageKTZ",
    "NSPasteboardKTZ",
    "NSBundleKTZ",
    "NSEnumeratorKTZ",
    "NSDirectoryEnumeratorKTZ",
    "NSRunningApplicationKTZ",
    "NSURLCacheKTZ",
    "NSCellKTZ",
    "NSFileManagerKTZ",
    "NSSoundKTZ",
    "NSBezierPathKTZ",
    "NSCursorKTZ",
    "NSEventKTZ",
    "NSIndexSetKTZ",
    "NSCalendarKTZ",
    "NSViewKTZ",
    "NSWindowKTZ",
    "NSColorListKTZ",
    "NSColorSpaceKTZ",
    "NSTableColumnKTZ",
    "NSUndoManagerKTZ",
    "NSScrollerKTZ",
    "NSResponderKTZ",
    "NSTextFieldCellKTZ",
    "NSTextKTZ",
    "NSTableHeaderViewKTZ",
    "NSOperationKTZ",
    "NSNotificationKTZ",
    "NSNotificationCenterKTZ",
    "NSDistributedNotificationCenterKTZ",
    "QuartzFilterKTZ",
    "NSUserDefaultsKTZ",
    "NSDockTileKTZ",
    "NSLocaleKTZ",
    "NSAppleEventDescriptorKTZ",
    "NSAppleScriptKTZ",
    "NSTableViewKTZ",
    "NSLayoutManagerKTZ",
    "NSTextContainerKTZ",
    "NSTextViewKTZ",
    "NSTextTabKTZ",
    "NSParagraphStyleKTZ",
    "NSDraggingImageComponentKTZ",
    "NSPasteboardItemKTZ",
    "NSRunLoopKTZ",
    "NSMetadataQueryKTZ",
    "NSMetadataItemKTZ",
    "NSPredicateKTZ",
    "NSCompoundPredicateKTZ",
    "NSSortDescriptorKTZ",
    "NSMetadataQueryResultGroupKTZ",
    "NSComparisonPredicateKTZ",
    "NSExpressionKTZ",
    "WebUIDelegateKTZ",
    "WebResourceLoadDelegateKTZ",
    "WebFrameLoadDelegateKTZ",
    "WebDownloadDelegateKTZ",
    "DRBurnKTZ",
    "PDFAnnotationKTZ",
    "PDFActionKTZ",
    "NSSizeKTZ",
    "NSRectKTZ",
    "NSRangeKTZ",
    "NSPointKTZ",
    "QTKitTimeKTZ",
    "QTKitTimeRangeKTZ",
    "CMTimeMappingKTZ",
    "CMTimeRangeKTZ",
    "CMTimeKTZ",
    "WebPolicyDelegateKTZ",
    "CFObjectKTZ",
    "CGColorKTZ",
    "CGFontKTZ",
    "CGImageKTZ",
    "CGColorSpaceKTZ",
    "CGPathKTZ",
    "CGContextKTZ",
    "CGLayerKTZ",
};
static_assert(std::size(kClassesInOrder) == 131);

const char kFolderItemMethod[] = "TrueItem(Index as integer) as Folderitem";

// What the plug-in asked the host for, and the one class that the host knows: the object is an instance of it.
std::vector<std::string> asked;
std::string known;

void *classReference(const char *name)
{
    asked.push_back(name);
    return name == known ? &known : nullptr;
}

unsigned char isInstance(void *, void *reference)
{
    return reference == &known;
}

void *noMethod(void *, const char *declaration)
{
    asked.push_back(declaration);
    return nullptr;
}

bool isAmong(const std::string &name, std::initializer_list<const char *> names)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

class HostObjectOrder : public CrossingTest {
protected:
    void SetUp() override
    {
        start(profileWithBareFamily());
        defineWrapperClass("Thing");
    }

    void playClasses()
    {
        host.replace("pluginObjectType", reinterpret_cast<void *>(classReference));
        host.replace("RuntimeObjectIsa", reinterpret_cast<void *>(isInstance));
        host.replace("REALLoadObjectMethod", reinterpret_cast<void *>(noMethod));
    }

    id toCocoaAs(const std::string &className, const Value &object)
    {
        known = className;
        asked.clear();
        return toCocoa(object);
    }
};

} // namespace

TEST_F(HostObjectOrder, ClassesAreAskedForInOneOrderAndTheFirstThatFitsDecides)
{
    playClasses();
    Value thing = host.newInstance("Thing");
    id carried = [[[NSObject alloc] init] autorelease];
    for (const char *message : {"valueWithQTTimeKTZ:", "valueWithQTTimeRangeKTZ:", "valueWithCMTimeMappingKTZ:",
                                "valueWithCMTimeRangeKTZ:", "valueWithCMTimeKTZ:"})
        addClassMethod("NSValue", message, bodyOf([](id, SEL, void *object) -> id {
                           return reinterpret_cast<id>(wordsOf(Value::borrowHandle(object))[0]);
                       }));

    std::vector<std::string> expected;
    for (const char *name : kClassesInOrder) {
        SCOPED_TRACE(name);
        wordsOf(thing)[0] = reinterpret_cast<uintptr_t>(carried);
        expected.push_back(name);
        id result = toCocoaAs(name, thing);
        EXPECT_EQ(asked, expected);
        if (isAmong(name, {"NSSizeKTZ", "NSRectKTZ", "NSRangeKTZ", "NSPointKTZ"}))
            EXPECT_TRUE([result isKindOfClass:[NSValue class]]);
        else if (!isAmong(name, {"MemoryBlock", "Dictionary"}))
            EXPECT_EQ(result, carried);
        if (strcmp(name, "MemoryBlock") == 0)
            expected.push_back(kFolderItemMethod);
    }
    wordsOf(thing)[0] = 0;
    host.replace("REALLoadObjectMethod", nullptr);
}

TEST_F(HostObjectOrder, ClassReferencesAreAskedForAnewInEachConversion)
{
    playClasses();
    Value thing = host.newInstance("Thing");
    for (int round = 0; round < 2; round++) {
        EXPECT_EQ(toCocoaAs("", thing), nil);
        EXPECT_EQ(asked.size(), 132u) << "131 classes and one method";
    }
    host.replace("REALLoadObjectMethod", nullptr);
}
