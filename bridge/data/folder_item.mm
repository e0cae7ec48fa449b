#include "bridge/data/folder_item.h"

#include "hostapi/held_handles.h"

#include <CoreServices/CoreServices.h>

static const CFIndex kLongestName = 255; // UTF-16 units, what an HFSUniStr255 holds

// A copy of the name in form D, or the name itself when it cannot be copied. Owned by the caller.
static CFStringRef CopyDecomposed(CFStringRef name)
{
    CFMutableStringRef copy = CFStringCreateMutableCopy(nullptr, 0, name);
    if (!copy)
        return static_cast<CFStringRef>(CFRetain(name));
    CFStringNormalize(copy, kCFStringNormalizationFormD);
    return copy;
}

static UInt16 CutToLongestName(CFIndex length)
{
    return static_cast<UInt16>(length < kLongestName ? length : kLongestName);
}

static void GetFileName(CFStringRef name, HFSUniStr255 *fileName)
{
    fileName->length = CutToLongestName(CFStringGetLength(name));
    CFStringGetCharacters(name, CFRangeMake(0, fileName->length), fileName->unicode);
}

// For an item that does not exist yet: the item of that name in the parent folder.
static REALfolderItem NewItemInParent(CFURLRef url)
{
    CFURLRef parent = CFURLCreateCopyDeletingLastPathComponent(nullptr, url);
    if (!parent)
        return nullptr;

    REALfolderItem item = nullptr;
    FSRef parentRef;
    if (CFURLGetFSRef(parent, &parentRef)) {
        if (CFStringRef leaf = CFURLCopyLastPathComponent(url)) {
            CFStringRef name = CopyDecomposed(leaf);
            HFSUniStr255 fileName;
            GetFileName(name, &fileName);
            item = REALFolderItemFromParentFSRef(&parentRef, &fileName);
            CFRelease(name);
            CFRelease(leaf);
        }
    }
    CFRelease(parent);
    return item;
}

static REALfolderItem NewItemFromSpec(const FSRef *ref)
{
    FSSpec spec;
    if (FSGetCatalogInfo(ref, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr) != noErr)
        return nullptr;
    return REALFolderItemFromFSSpec(&spec);
}

static REALfolderItem NewItemOfExistingFile(const FSRef *ref)
{
    FSCatalogInfo info;
    FSRef parentRef;
    if (FSGetCatalogInfo(ref, kFSCatInfoNodeID, &info, nullptr, nullptr, &parentRef) != noErr)
        return NewItemFromSpec(ref);

    // A volume's root has no parent. A cleared reference names nothing, so the test below sends it on.
    if (info.nodeID == fsRtDirID)
        parentRef = FSRef();

    HFSUniStr255 fileName;
    if (FSGetCatalogInfo(ref, kFSCatInfoNone, nullptr, &fileName, nullptr, nullptr) == noErr &&
        FSGetCatalogInfo(&parentRef, kFSCatInfoNone, nullptr, nullptr, nullptr, nullptr) == noErr)
        return REALFolderItemFromParentFSRef(&parentRef, &fileName);
    return NewItemFromSpec(ref);
}

REALfolderItem NSURLRBFile(NSURL *url, HeldHandles &held)
{
    if (!url)
        return nullptr;
    FSRef ref;
    if (!CFURLGetFSRef((CFURLRef)url, &ref))
        return held.hold(NewItemInParent((CFURLRef)url));
    return held.hold(NewItemOfExistingFile(&ref));
}

// The first way: the host knows the item's own reference.
static CFURLRef CreateFromReference(REALfolderItem item)
{
    FSRef ref;
    if (!REALFSRefFromFolderItem(item, &ref, nullptr))
        return nullptr;
    return CFURLCreateFromFSRef(nullptr, &ref);
}

// The second way, for an item that does not exist: the host answers its parent's reference and its name.
// Once both are known this way decides, even when no URL can be made of them.
static bool DecidedByParentAndName(REALfolderItem item, CFURLRef *url)
{
    FSRef parentRef;
    HFSUniStr255 name = {};
    if (!REALFSRefFromFolderItem(item, &parentRef, &name))
        return false;
    CFURLRef parent = CFURLCreateFromFSRef(nullptr, &parentRef);
    if (!parent)
        return false;

    const UInt16 length = CutToLongestName(name.length); // the host may tell more than there is room for
    CFStringRef leaf = length ? CFStringCreateWithCharacters(nullptr, name.unicode, length) : nullptr;
    if (leaf) {
        CFStringRef decomposed = CopyDecomposed(leaf);
        *url = CFURLCreateCopyAppendingPathComponent(nullptr, parent, decomposed, false);
        CFRelease(decomposed);
        CFRelease(leaf);
    }
    CFRelease(parent);
    return leaf != nullptr;
}

// The oldest way.
static CFURLRef CreateFromSpec(REALfolderItem item)
{
    FSSpec spec;
    FSRef ref;
    if (!REALFSSpecFromFolderItem(&spec, item) || FSpMakeFSRef(&spec, &ref) != noErr)
        return nullptr;
    return CFURLCreateFromFSRef(nullptr, &ref);
}

NSURL *NewNSURLfile(REALfolderItem item)
{
    if (!item)
        return nil;
    CFURLRef url = CreateFromReference(item);
    if (!url && !DecidedByParentAndName(item, &url))
        url = CreateFromSpec(item);
    return [(NSURL *)url autorelease];
}
