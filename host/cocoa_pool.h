// A scope with an autorelease pool, for C++ code that calls into Cocoa through a plug-in.
#pragma once

namespace host {

class CocoaPool {
public:
    CocoaPool();
    ~CocoaPool();
    CocoaPool(const CocoaPool &) = delete;
    CocoaPool &operator=(const CocoaPool &) = delete;

    // Releases what the pool holds now and goes on with an empty one.
    void drain();

private:
    void *_pool;
};

} // namespace host
