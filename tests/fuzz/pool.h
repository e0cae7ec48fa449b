// An autorelease pool around one run.
#pragma once

#import <Foundation/Foundation.h>

class RunPool {
public:
    RunPool() : _pool([NSAutoreleasePool new]) {}
    ~RunPool() { [_pool release]; }
    RunPool(const RunPool &) = delete;
    RunPool &operator=(const RunPool &) = delete;

private:
    NSAutoreleasePool *_pool;
};
