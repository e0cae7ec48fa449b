#include "platform/gnustep/core_services/items.h"

#include "platform/gnustep/core_services/names.h"

#include <dirent.h>
#include <string.h>
#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <set>
#include <vector>

namespace platform {
namespace {

// What an FSRef holds. The inode alone would not tell hard links apart, the path alone would name whatever comes to lie
// there later.
struct Reference {
    UInt32 magic;
    UInt32 path; // index in the list of paths
    UInt64 device;
    UInt64 inode;
    UInt8 unused[56];
};
static_assert(sizeof(Reference) == sizeof(FSRef));

const UInt32 referenceMagic = 0x46535246; // 'FSRF'

const FSVolumeRefNum firstVolume = -100;

// Every path that was ever referred to; a reference must stay good for the life of the process, so none is dropped.
struct KnownPaths {
    std::vector<std::string> list;
    std::map<std::string, UInt32> indices;
    std::set<std::string> folders;
    std::vector<std::string> volumeRoots;
};

KnownPaths &known()
{
    static KnownPaths *paths = new KnownPaths; // never destroyed: references are used until the very end
    return *paths;
}

bool status(const std::string &path, struct stat64 *result)
{
    return lstat64(path.c_str(), result) == 0;
}

bool realPath(const std::string &path, std::string *result)
{
    std::error_code error;
    *result = std::filesystem::canonical(path, error);
    return !error;
}

std::string withoutTrailingSlashes(std::string path)
{
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

bool findFolder(const std::string &path, std::string *found)
{
    if (realPath(path, found))
        return true;
    std::string clean = withoutTrailingSlashes(path);
    std::string folder;
    std::string entry;
    return clean != "/" && findFolder(folderOf(clean), &folder) && findEntry(folder, leafOf(clean), &entry) &&
           realPath(entry, found);
}

std::string volumeRootOf(std::string path)
{
    struct stat64 here;
    struct stat64 above;
    if (!status(path, &here) || !S_ISDIR(here.st_mode))
        path = folderOf(path); // an overlay may give files another device than the folder they are in
    while (path != "/" && status(path, &here) && status(folderOf(path), &above) && here.st_dev == above.st_dev)
        path = folderOf(path);
    return path;
}

} // namespace

std::string folderOf(const std::string &path)
{
    size_t slash = path.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

std::string leafOf(const std::string &path)
{
    return path.substr(path.rfind('/') + 1);
}

std::string joined(const std::string &folder, const std::string &leaf)
{
    return folder == "/" ? folder + leaf : folder + "/" + leaf;
}

bool findEntry(const std::string &folder, const std::string &name, std::string *path)
{
    struct stat64 item;
    std::string exact = joined(folder, name);
    if (status(exact, &item)) {
        *path = exact;
        return true;
    }
    DIR *entries = opendir(folder.c_str());
    if (!entries)
        return false;
    bool found = false;
    std::string wanted = decomposed(name);
    while (const dirent64 *entry = found ? nullptr : readdir64(entries)) {
        found = decomposed(entry->d_name) == wanted;
        if (found)
            *path = joined(folder, entry->d_name);
    }
    closedir(entries);
    return found;
}

bool findItem(const std::string &path, bool followLast, std::string *found)
{
    if (path.empty() || path[0] != '/')
        return false;
    std::string clean = withoutTrailingSlashes(path);
    std::string leaf = leafOf(clean);
    if (followLast || leaf.empty() || leaf == "." || leaf == "..")
        return findFolder(clean, found);
    std::string folder;
    return findFolder(folderOf(clean), &folder) && findEntry(folder, leaf, found);
}

bool makeReference(const std::string &path, FSRef *ref)
{
    struct stat64 item;
    if (!status(path, &item))
        return false;
    KnownPaths &paths = known();
    auto [entry, isNew] = paths.indices.try_emplace(path, paths.list.size());
    if (isNew)
        paths.list.push_back(path);
    if (S_ISDIR(item.st_mode))
        paths.folders.insert(path);
    paths.folders.insert(folderOf(path));
    Reference reference = {referenceMagic, entry->second, item.st_dev, item.st_ino, {}};
    memcpy(ref, &reference, sizeof *ref);
    return true;
}

bool pathOfItem(const FSRef &ref, std::string *path)
{
    Reference reference;
    memcpy(&reference, &ref, sizeof reference);
    const KnownPaths &paths = known();
    if (reference.magic != referenceMagic || reference.path >= paths.list.size())
        return false;
    const std::string &last = paths.list[reference.path];
    struct stat64 item;
    if (!status(last, &item) || item.st_dev != reference.device || item.st_ino != reference.inode)
        return false;
    *path = last;
    return true;
}

bool isVolumeRoot(const std::string &path)
{
    return volumeRootOf(path) == path;
}

FSVolumeRefNum volumeOf(const std::string &path)
{
    std::vector<std::string> &roots = known().volumeRoots;
    std::string root = volumeRootOf(path);
    for (size_t i = 0; i < roots.size(); ++i)
        if (roots[i] == root)
            return firstVolume - i;
    roots.push_back(root);
    return firstVolume - (roots.size() - 1);
}

bool rootOfVolume(FSVolumeRefNum volume, std::string *path)
{
    const std::vector<std::string> &roots = known().volumeRoots;
    size_t index = firstVolume - volume;
    if (index >= roots.size())
        return false;
    *path = roots[index];
    return true;
}

UInt32 nodeOf(const std::string &path)
{
    if (isVolumeRoot(path))
        return fsRtDirID;
    struct stat64 item;
    if (!status(path, &item))
        return 0;
    // Node numbers below 16 are the volume's own on macOS, while a Linux disk may give them to any file.
    UInt32 node = static_cast<UInt32>(item.st_ino);
    return node < 16 ? node | 0x80000000 : node;
}

bool folderWithNode(FSVolumeRefNum volume, UInt32 node, std::string *path)
{
    if (node == fsRtDirID)
        return rootOfVolume(volume, path);
    for (const std::string &folder : known().folders) {
        if (nodeOf(folder) == node && volumeOf(folder) == volume) {
            *path = folder;
            return true;
        }
    }
    return false;
}

} // namespace platform
