// Items on disk and the references to them. Paths are absolute, without links in front of the last component, and in
// the disk's own bytes.
#pragma once

#include <CoreServices/CoreServices.h>

#include <string>

namespace platform {

// The item at a path as somebody wrote it: links are followed (the last one only on request), and a component that is
// not there byte for byte is looked for in the other normal forms. False when there is no such item.
bool findItem(const std::string &path, bool followLast, std::string *found);

// The same for one name in a folder.
bool findEntry(const std::string &folder, const std::string &name, std::string *path);

// A reference to an existing item; false when there is none.
bool makeReference(const std::string &path, FSRef *ref);

// The path of a reference; false when it is none, or when another item or none is at its path by now.
bool pathOfItem(const FSRef &ref, std::string *path);

std::string folderOf(const std::string &path); // "/" for "/"
std::string leafOf(const std::string &path);   // "" for "/"
std::string joined(const std::string &folder, const std::string &leaf);

// Volumes have the numbers -100, -101, … in the order in which they are met. A volume is known by its root folder.
bool isVolumeRoot(const std::string &path);
FSVolumeRefNum volumeOf(const std::string &path);
bool rootOfVolume(FSVolumeRefNum volume, std::string *path);

// The node number within the volume: 2 for its root folder and for no other item.
UInt32 nodeOf(const std::string &path);

// A folder by its node number; known are the roots, and the folders of all references made so far and their parents.
bool folderWithNode(FSVolumeRefNum volume, UInt32 node, std::string *path);

} // namespace platform
