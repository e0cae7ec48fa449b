// Tests of functions inside the plug-in: its object files are linked into the test program and started with the
// embedded host's resolver.
#pragma once

#include "hostapi/held_handles.h"
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

// Takes over the lock of a handle that the plug-in made: what `make` leaves held.
template <class Make>
host::Value adopted(Make make)
{
    HeldHandles held;
    host::Value value = host::Value::adopt(held.keep(make(held)));
    EXPECT_EQ(held.count(), 0) << "held longer than it was needed";
    return value;
}

} // namespace support
