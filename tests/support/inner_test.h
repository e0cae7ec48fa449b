// Tests of functions inside the plug-in: its object files are linked into the test program and started with the
// embedded host's resolver.
#pragma once

#include "hostapi/types.h"
#include "plugin/entry.h"
#include "tests/support/host_test.h"

namespace support {

class Inner : public HostTest {
private:
    void loadPlugin() override { REALPluginMain(host::Host::resolver()); }
};

using InnerOn2013 = OnHost2013<Inner>;
using InnerOnEveryHost = OnEveryHost<Inner>;

inline REALobject objectOf(const host::Value &value)
{
    return static_cast<REALobject>(value.handle());
}
inline REALstring stringOf(const host::Value &value)
{
    return static_cast<REALstring>(value.handle());
}

// Takes over the lock of a handle that the plug-in made.
template <class Handle>
host::Value adopt(Handle handle)
{
    return host::Value::adopt(handle);
}

} // namespace support
