// What every test in the embedded host shares: one host with a profile and the companion library, an autorelease pool,
// and at the end of the test a host in which every handle is balanced and no rule was broken.
#pragma once

#include "host/host.h"
#include "tests/support/profiles.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <type_traits>

namespace support {

class HostTest : public ::testing::Test {
protected:
    HostTest();

    // Plays the profile, loads the companion library unless the profile leaves it out, and lets the plug-in register
    // its class. To be called once, before the plug-in is used; entry points that the plug-in must never have found are
    // hidden before it.
    void start(const host::Profile &profile);
    void start(const std::string &profileName);

    void TearDown() override;

    host::Host &host;
    std::optional<host::CocoaPool> pool;

private:
    virtual void loadPlugin() = 0;
};

// Through the file that users load: everything goes through REALPluginMain and the registered methods.
class BlackBox : public HostTest {
protected:
    // A new object of the plug-in's class, without a constructor called: it carries nothing.
    host::Value newEmptyInstance();
    host::Value standardUserDefaults();

    // The registered method, for calls of the bare function; the test fails when there is none.
    const host::MethodDescription &method(const std::string &nameOrDeclaration, bool isShared = false);

private:
    void loadPlugin() override;
};

// A started fixture for a test whose host does not matter.
template <class Base>
class OnHost2013 : public Base {
protected:
    void SetUp() override { this->start("2013.03"); }
};

// A started fixture for INSTANTIATE_TEST_SUITE_P(Hosts, ..., everyProfile(), profileTestName).
template <class Base>
class OnEveryHost : public Base, public ::testing::WithParamInterface<ProfileFacts> {
protected:
    void SetUp() override { this->start(GetParam().name); }
    using ::testing::WithParamInterface<ProfileFacts>::GetParam;
};

using BlackBoxOn2013 = OnHost2013<BlackBox>;
using BlackBoxOnEveryHost = OnEveryHost<BlackBox>;

// Exactly one exception, of that class and with that message and the error number 0.
::testing::AssertionResult raisedOnce(const std::vector<host::RaisedException> &raised, const std::string &className,
                                      const std::string &message);

} // namespace support
