// FolderItems: where they come from, and what programs ask them.
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include "host/script/library.h"

namespace script::library {

namespace fs = std::filesystem;

namespace {

enum PathType { kAbsolutePath, kShellPath, kURLPath, kNativePath };

constexpr char kFileScheme[] = "file://";

// "file:///a%20b" as "/a b"; empty for any other address.
std::string pathOfURL(const std::string &url)
{
    if (url.compare(0, sizeof kFileScheme - 1, kFileScheme) != 0)
        return "";
    std::string path;
    for (size_t i = url.find('/', sizeof kFileScheme - 1); i < url.size(); i++) {
        bool isEscape = url[i] == '%' && i + 2 < url.size();
        path += isEscape ? char(strtol(url.substr(i + 1, 2).c_str(), nullptr, 16)) : url[i];
        i += isEscape ? 2 : 0;
    }
    return path;
}

std::string urlOf(const std::string &path)
{
    std::string url = kFileScheme;
    for (unsigned char c : path) {
        char escaped[4];
        snprintf(escaped, sizeof escaped, "%%%02X", c);
        url += isalnum(c) || strchr("/-_.~", c) ? std::string(1, char(c)) : escaped;
    }
    return url;
}

// Nil when the folder that it lies in does not exist.
Value folderItem(const std::string &path)
{
    std::error_code error;
    fs::path absolute = fs::absolute(path, error).lexically_normal();
    if (path.empty() || error || !fs::is_directory(absolute.parent_path(), error))
        return Value();
    return Value::folderItem(absolute);
}

Value itemAt(A a, At)
{
    bool isURL = a.size() > 1 && a[1].int32() == kURLPath;
    return folderItem(isURL ? pathOfURL(a[0].text()) : a[0].text());
}

std::string environmentValue(const char *name, const std::string &otherwise)
{
    const char *value = getenv(name);
    return value && *value ? value : otherwise;
}

std::string homePath(const std::string &inside = "")
{
    return environmentValue("HOME", "/") + inside;
}

// The folders are made when they are asked for, as a user's are there.
Value specialFolder(const std::string &path)
{
    std::error_code error;
    fs::create_directories(path, error);
    return error ? Value() : Value::folderItem(path);
}

struct stat statusOf(const Value &item)
{
    struct stat status = {};
    stat(item.path().c_str(), &status);
    return status;
}

Value dateOf(time_t seconds)
{
    tm parts;
    localtime_r(&seconds, &parts);
    return Value::date(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min,
                       parts.tm_sec);
}

} // namespace

LibraryRows fileRows()
{
    return {
        {"Volume(index As Integer) As FolderItem",
         [](A arguments, At) { return arguments[0].int32() == 0 ? Value::folderItem("/") : Value(); }},
        {"VolumeCount As Integer", [](A, At) { return Value(1); }},
        {"GetFolderItem(path As String, Optional pathType As Integer) As FolderItem", itemAt},
        {"Shared FolderItem.PathTypeAbsolute As Integer", constant<kAbsolutePath>},
        {"Shared FolderItem.PathTypeNative As Integer", constant<kNativePath>},
        {"Shared FolderItem.PathTypeShell As Integer", constant<kShellPath>},
        {"Shared FolderItem.PathTypeURL As Integer", constant<kURLPath>},
        {"Shared SpecialFolder.ApplicationData As FolderItem",
         [](A, At) { return specialFolder(homePath("/Library/Application Support")); }},
        {"Shared SpecialFolder.Desktop As FolderItem", [](A, At) { return specialFolder(homePath("/Desktop")); }},
        {"Shared SpecialFolder.Documents As FolderItem", [](A, At) { return specialFolder(homePath("/Documents")); }},
        {"Shared SpecialFolder.Preferences As FolderItem",
         [](A, At) { return specialFolder(homePath("/Library/Preferences")); }},
        {"Shared SpecialFolder.Temporary As FolderItem",
         [](A, At) { return specialFolder(environmentValue("TMPDIR", "/tmp")); }},
        {"Shared SpecialFolder.UserHome As FolderItem", [](A, At) { return specialFolder(homePath()); }},
        {"FolderItem.CreateAsFolder",
         [](A a, At) {
             mkdir(a[0].path().c_str(), 0777);
             return Value();
         }},
        {"FolderItem.Delete",
         [](A a, At) {
             remove(a[0].path().c_str());
             return Value();
         }},
        {"FolderItem.DisplayName As String", [](A a, At) { return a[0].property("Name"); }},
        {"FolderItem.IsReadable As Boolean", [](A a, At) { return Value(access(a[0].path().c_str(), R_OK) == 0); }},
        {"FolderItem.IsWriteable As Boolean", [](A a, At) { return Value(access(a[0].path().c_str(), W_OK) == 0); }},
        {"FolderItem.Length As Int64", [](A a, At) { return Value(static_cast<long long>(statusOf(a[0]).st_size)); }},
        {"FolderItem.ModificationDate As Date", [](A a, At) { return dateOf(statusOf(a[0]).st_mtime); }},
        {"FolderItem.URLPath As String", [](A a, At) { return Value(urlOf(a[0].path())); }},
    };
}

} // namespace script::library
