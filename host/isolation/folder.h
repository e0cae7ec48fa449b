// A temporary folder of a case's own, in memory where the system has a place for that.
#pragma once

#include <string>

namespace isolation {

class Folder {
public:
    Folder();
    ~Folder();
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;

    // Makes it the current folder of this process.
    void enter() const;

private:
    std::string _path;
};

} // namespace isolation
