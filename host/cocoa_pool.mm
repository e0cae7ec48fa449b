#include "host/cocoa_pool.h"

#include <Foundation/Foundation.h>

namespace host {

CocoaPool::CocoaPool() : _pool([NSAutoreleasePool new]) {}

CocoaPool::~CocoaPool()
{
    [static_cast<NSAutoreleasePool *>(_pool) release];
}

void CocoaPool::drain()
{
    [static_cast<NSAutoreleasePool *>(_pool) release];
    _pool = [NSAutoreleasePool new];
}

} // namespace host
