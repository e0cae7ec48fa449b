#include "host/runtime/folder_items.h"

#include <algorithm>
#include <dirent.h>
#include <sys/stat.h>
#include <vector>

#include "host/runtime/exceptions.h"

namespace host::runtime {

namespace {

std::string pathOf(const Value &item)
{
    return payloadOf<FolderItemPayload>(item)->path;
}

bool isFolder(const std::string &path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::vector<std::string> namesIn(const std::string &folder)
{
    std::vector<std::string> names;
    if (DIR *directory = opendir(folder.c_str())) {
        while (dirent *entry = readdir(directory))
            if (std::string(entry->d_name) != "." && std::string(entry->d_name) != "..")
                names.push_back(entry->d_name);
        closedir(directory);
    }
    std::sort(names.begin(), names.end());
    return names;
}

// The item of that number in a folder, counted from 1 in the order of names.
Value itemAt(const Value &folder, int32_t index)
{
    std::vector<std::string> names = namesIn(pathOf(folder));
    if (index < 1 || size_t(index) > names.size())
        return Value();
    return Value::folderItem(childPath(pathOf(folder), names[size_t(index) - 1]));
}

} // namespace

ObjectHandle *newFolderItem(const std::string &path)
{
    ObjectHandle *item = newInstance(*findClass("FolderItem"));
    std::string cleaned = path;
    while (cleaned.size() > 1 && cleaned.back() == '/')
        cleaned.pop_back();
    payloadOf<FolderItemPayload>(item)->path = cleaned;
    return item;
}

bool itemExists(const std::string &path)
{
    struct stat status;
    return lstat(path.c_str(), &status) == 0;
}

std::string parentPath(const std::string &path)
{
    size_t slash = path.rfind('/');
    return slash == std::string::npos || slash == 0 ? "/" : path.substr(0, slash);
}

std::string leafName(const std::string &path)
{
    return path == "/" ? path : path.substr(path.rfind('/') + 1);
}

std::string childPath(const std::string &folder, const std::string &name)
{
    return folder == "/" ? folder + name : folder + "/" + name;
}

void addFolderItemClass()
{
    Class &item = addOwnClass("FolderItem", "", [] { return std::make_unique<FolderItemPayload>(); });
    auto readOnly = [&](const char *name, Passing type, Value (*get)(const std::string &path)) {
        item.properties.push_back(
            {name, type, [get](ObjectHandle &object) { return get(payloadOf<FolderItemPayload>(&object)->path); },
             nullptr});
    };
    auto wholePath = [](const std::string &path) { return Value(path); };
    readOnly("Name", Passing::String, [](const std::string &path) { return Value(leafName(path)); });
    readOnly("AbsolutePath", Passing::String, wholePath);
    readOnly("NativePath", Passing::String, wholePath);
    readOnly("ShellPath", Passing::String, wholePath);
    readOnly("Exists", Passing::Boolean, [](const std::string &path) { return Value(itemExists(path)); });
    readOnly("Directory", Passing::Boolean, [](const std::string &path) { return Value(isFolder(path)); });
    readOnly("Count", Passing::Int32, [](const std::string &path) { return Value(int32_t(namesIn(path).size())); });
    readOnly("Parent", Passing::Object,
             [](const std::string &path) { return path == "/" ? Value() : Value::folderItem(parentPath(path)); });

    addMethod(item, "TrueItem(Index as integer) as Folderitem",
              [](const Value &self, const Arguments &arguments) { return itemAt(self, arguments[0].int32()); });
    addMethod(item, "Item(Index as integer) as Folderitem",
              [](const Value &self, const Arguments &arguments) { return itemAt(self, arguments[0].int32()); });
    addMethod(item, "Child(Name as string) as Folderitem", [](const Value &self, const Arguments &arguments) {
        return Value::folderItem(childPath(pathOf(self), arguments[0].text()));
    });
}

} // namespace host::runtime
