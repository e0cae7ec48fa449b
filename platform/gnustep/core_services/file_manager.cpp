#include "platform/gnustep/core_services/items.h"
#include "platform/gnustep/core_services/names.h"

#include <string.h>
#include <sys/stat.h>

using namespace platform;

namespace {

bool isDirectory(const std::string &path)
{
    struct stat64 item;
    return lstat64(path.c_str(), &item) == 0 && S_ISDIR(item.st_mode);
}

void fillCatalogInfo(const std::string &path, FSCatalogInfoBitmap which, FSCatalogInfo *info)
{
    if (which & kFSCatInfoNodeFlags)
        info->nodeFlags = isDirectory(path) ? kFSNodeIsDirectoryMask : 0;
    if (which & kFSCatInfoVolume)
        info->volume = volumeOf(path);
    if (which & kFSCatInfoParentDirID)
        info->parentDirID = isVolumeRoot(path) ? static_cast<UInt32>(fsRtParID) : nodeOf(folderOf(path));
    if (which & kFSCatInfoNodeID)
        info->nodeID = nodeOf(path);
}

// A volume has a name for the File Manager where Linux has only a place: that of its root folder, or a fixed one.
std::string nameOf(const std::string &path)
{
    return path == "/" ? "Linux" : leafOf(path);
}

OSErr fillSpecification(const std::string &path, FSSpec *spec)
{
    memset(spec, 0, sizeof *spec);
    if (!macRomanName(nameOf(path), spec->name))
        return bdNamErr;
    spec->vRefNum = volumeOf(path);
    spec->parID = isVolumeRoot(path) ? static_cast<SInt32>(fsRtParID) : static_cast<SInt32>(nodeOf(folderOf(path)));
    return noErr;
}

} // namespace

OSErr FSGetCatalogInfo(const FSRef *ref, FSCatalogInfoBitmap whichInfo, FSCatalogInfo *catalogInfo,
                       HFSUniStr255 *outName, FSSpecPtr fsSpec, FSRef *parentRef)
{
    std::string path;
    if (!ref)
        return paramErr;
    if (!pathOfItem(*ref, &path))
        return fnfErr;
    if (catalogInfo)
        fillCatalogInfo(path, whichInfo, catalogInfo);
    if (outName && !unicodeName(nameOf(path), outName))
        return bdNamErr;
    if (parentRef) {
        memset(parentRef, 0, sizeof *parentRef);
        if (!isVolumeRoot(path) && !makeReference(folderOf(path), parentRef))
            return fnfErr;
    }
    return fsSpec ? fillSpecification(path, fsSpec) : static_cast<OSErr>(noErr);
}

OSErr FSMakeFSRefUnicode(const FSRef *parentRef, UniCharCount nameLength, const UniChar *name, TextEncoding,
                         FSRef *newRef)
{
    std::string folder;
    std::string leaf;
    if (!parentRef || !name || !newRef)
        return paramErr;
    if (nameLength > 255)
        return errFSNameTooLong;
    if (!pathOfItem(*parentRef, &folder))
        return dirNFErr;
    if (!diskName(name, nameLength, &leaf))
        return bdNamErr;
    return findEntry(folder, leaf, &leaf) && makeReference(leaf, newRef) ? noErr : fnfErr;
}

OSErr FSpMakeFSRef(const FSSpec *source, FSRef *newRef)
{
    std::string path;
    std::string leaf;
    if (!source || !newRef)
        return paramErr;
    if (!rootOfVolume(source->vRefNum, &path))
        return nsvErr;
    if (source->parID != fsRtParID && !folderWithNode(source->vRefNum, source->parID, &path))
        return dirNFErr;
    if (source->parID != fsRtParID && source->name[0] != 0) {
        if (!diskName(source->name, &leaf))
            return bdNamErr;
        if (!findEntry(path, leaf, &path))
            return fnfErr;
    }
    return makeReference(path, newRef) ? noErr : fnfErr;
}

OSStatus FSPathMakeRefWithOptions(const UInt8 *path, UInt32 options, FSRef *ref, Boolean *directory)
{
    std::string found;
    if (!path || !ref)
        return paramErr;
    bool follow = !(options & kFSPathMakeRefDoNotFollowLeafSymlink);
    if (!findItem(reinterpret_cast<const char *>(path), follow, &found) || !makeReference(found, ref))
        return fnfErr;
    if (directory)
        *directory = isDirectory(found);
    return noErr;
}

OSStatus FSPathMakeRef(const UInt8 *path, FSRef *ref, Boolean *directory)
{
    return FSPathMakeRefWithOptions(path, kFSPathMakeRefDefaultOptions, ref, directory);
}

OSStatus FSRefMakePath(const FSRef *ref, UInt8 *path, UInt32 maxPathSize)
{
    std::string found;
    if (!ref || !path)
        return paramErr;
    if (!pathOfItem(*ref, &found))
        return fnfErr;
    if (found.size() >= maxPathSize)
        return pathTooLongErr;
    memcpy(path, found.c_str(), found.size() + 1);
    return noErr;
}
