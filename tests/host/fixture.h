// A host with the tests' own plug-in in it, and at the end a host in which everything is balanced.
#pragma once

#include "host/host.h"
#include "tests/host/test_plugin.h"

#include <gtest/gtest.h>
#include <string>

namespace host_tests {

class PluginFixture : public ::testing::Test {
protected:
    void start(const std::string &profile = "2013.03")
    {
        host.use(*host::Profile::named(profile));
        host::Plugin &plugin = host.load(TEST_PLUGIN);
        seen = reinterpret_cast<test_plugin::Seen *(*)()>(plugin.symbol("TestPluginSeen"))();
        // The one declaration of its table that cannot be read.
        EXPECT_EQ(host.takeFaults().size(), 1u);
    }

    void TearDown() override
    {
        for (const host::HandleInfo &info : host.imbalances())
            ADD_FAILURE() << "not balanced: " << info.text();
        for (const std::string &fault : host.takeFaults())
            ADD_FAILURE() << "fault: " << fault;
    }

    host::Host &host = host::Host::shared();
    test_plugin::Seen *seen = nullptr;
};

// As plug-ins find and call entry points.
template <class Result, class... Arguments>
Result entryCall(const char *name, Arguments... arguments)
{
    void *entry = host::Host::resolver()(name);
    if (!entry)
        throw host::CallError(std::string(name) + " is not offered");
    return reinterpret_cast<Result (*)(Arguments...)>(entry)(arguments...);
}

} // namespace host_tests
