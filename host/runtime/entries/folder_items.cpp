#include "host/runtime/folder_items.h"

#include <CoreServices/CoreServices.h>
#include <cstring>
#include <limits.h>

#include "host/interface/codes.h"
#include "host/runtime/entries/entries.h"
#include "host/runtime/ledger.h"
#include "host/runtime/state.h"
#include "host/runtime/text.h"

namespace host::runtime::entries {

namespace {

constexpr size_t kLongestName = 255;

const UInt8 *unsignedText(const std::string &text)
{
    return reinterpret_cast<const UInt8 *>(text.c_str());
}

// A link at the end of the path is an item of its own.
bool referTo(const std::string &path, FSRef *ref)
{
    return FSPathMakeRefWithOptions(unsignedText(path), kFSPathMakeRefDoNotFollowLeafSymlink, ref, nullptr) == noErr;
}

std::optional<std::string> pathOf(const FSRef &ref)
{
    UInt8 path[PATH_MAX];
    if (FSRefMakePath(&ref, path, sizeof path) != noErr)
        return std::nullopt;
    return reinterpret_cast<char *>(path);
}

FolderItemPayload *expectItem(void *record, const char *user)
{
    return payloadOf<FolderItemPayload>(expectObject(record, user));
}

void *newCountedItem(const std::string &path)
{
    return creationFails(Creation::FolderItem) ? nullptr : newFolderItem(path)->record;
}

void *itemAt(const FSRef &ref)
{
    std::optional<std::string> path = pathOf(ref);
    return path ? newCountedItem(*path) : nullptr;
}

// Of what need not be there.
void *itemIn(const FSRef &folder, const std::optional<std::string> &name)
{
    std::optional<std::string> path = pathOf(folder);
    return path && name ? newCountedItem(childPath(*path, *name)) : nullptr;
}

Byte fsRefFromFolderItem(void *record, FSRef *ref, HFSUniStr255 *name)
{
    FolderItemPayload *item = expectItem(record, "REALFSRefFromFolderItem");
    if (!item || !ref)
        return 0;
    if (!name)
        return referTo(item->path, ref);
    std::optional<std::u16string> leaf = decodeText(leafName(item->path), kUTF8);
    if (!leaf || leaf->size() > kLongestName || !referTo(parentPath(item->path), ref))
        return 0;
    name->length = UInt16(leaf->size());
    memcpy(name->unicode, leaf->data(), leaf->size() * sizeof(char16_t));
    return 1;
}

Byte fsSpecFromFolderItem(FSSpec *spec, void *record)
{
    FolderItemPayload *item = expectItem(record, "REALFSSpecFromFolderItem");
    FSRef ref;
    if (!item || !spec || !referTo(item->path, &ref))
        return 0;
    return FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, spec, nullptr) == noErr;
}

void *folderItemFromParent(const FSRef *parent, const HFSUniStr255 *name)
{
    if (!parent || !name || name->length == 0 || name->length > kLongestName) {
        noteFault("REALFolderItemFromParentFSRef: no parent or no name");
        return nullptr;
    }
    // What is there already is the item as the disk spells it.
    FSRef ref;
    if (FSMakeFSRefUnicode(parent, name->length, name->unicode, 0, &ref) == noErr)
        return itemAt(ref);
    return itemIn(*parent, encodeText({reinterpret_cast<const char16_t *>(name->unicode), name->length}, kUTF8));
}

void *folderItemFromFSSpec(const FSSpec *spec)
{
    if (!spec) {
        noteFault("FolderItemFromFSSpec: no FSSpec");
        return nullptr;
    }
    FSRef ref;
    if (FSpMakeFSRef(spec, &ref) == noErr)
        return itemAt(ref);
    // Nothing is there yet: the folder that the FSSpec names, and the name in it.
    FSSpec folderSpec = *spec;
    folderSpec.name[0] = 0;
    std::string_view name(reinterpret_cast<const char *>(&spec->name[1]), spec->name[0]);
    bool hasFolder = FSpMakeFSRef(&folderSpec, &ref) == noErr;
    return hasFolder ? itemIn(ref, convertText(name, kMacRoman, kUTF8)) : nullptr;
}

} // namespace

EntryPoints fileEntryPoints()
{
    return {
        entry<fsRefFromFolderItem>("REALFSRefFromFolderItem"),
        entry<fsSpecFromFolderItem>("REALFSSpecFromFolderItem"),
        entry<folderItemFromParent>("REALFolderItemFromParentFSRef"),
        entry<folderItemFromFSSpec>("FolderItemFromFSSpec"),
    };
}

} // namespace host::runtime::entries
