// FolderItems: an absolute path, whether or not something is there.
#pragma once

#include <string>

#include "host/runtime/objects.h"

struct FSRef;
struct HFSUniStr255;

namespace host::runtime {

struct FolderItemPayload : Payload {
    std::string describe() const override { return path; }
    std::string path; // UTF-8; empty in one that was made by its class name
};

ObjectHandle *newFolderItem(const std::string &path); // one lock for the caller

bool itemExists(const std::string &path);
std::string parentPath(const std::string &path); // of a root: the root
std::string leafName(const std::string &path);
std::string childPath(const std::string &folder, const std::string &name);

} // namespace host::runtime
