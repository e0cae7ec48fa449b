#include "host/plughost/file_complaints.h"

#include <algorithm>
#include <cstdio>
#include <set>

namespace plughost {

static const char kUnread[] = " cannot be read";
static const char kUnwritten[] = " cannot be written: ";

static std::set<std::string> printed;
static std::set<std::string> unread; // files that nothing was said of yet
static bool hasUnwritten;

static void print(const std::string &line)
{
    if (printed.insert(line).second)
        fprintf(stderr, "plughost: %s\n", line.c_str());
}

// "date process[id] /folder/domain.plist cannot be …"
bool takeFileComplaint(const std::string &logged)
{
    size_t begin = logged.find("] /");
    if (begin == std::string::npos)
        return false;
    std::string line = logged.substr(begin + 2, logged.find_last_not_of('\n') - begin - 1);
    size_t isUnread = line.find(kUnread), isUnwritten = line.find(kUnwritten);
    std::string file = line.substr(0, std::min(isUnread, isUnwritten));
    if (file == line)
        return false;
    if (isUnwritten != std::string::npos) {
        hasUnwritten = true;
        unread.erase(file);
        print(line);
    } else if (line == file + kUnread) {
        unread.insert(file);
    } else {
        print(line); // what becomes of the file, too
    }
    return true;
}

bool hasComplainedOfWriting()
{
    return hasUnwritten;
}

void printUnreadFiles()
{
    for (const std::string &file : unread)
        print(file + kUnread);
    unread.clear();
}

} // namespace plughost
