#include "tests/support/host_test.h"

#include "tests/support/plugin_under_test.h"

#include <stdexcept>

namespace support {

using ::testing::AssertionFailure;
using ::testing::AssertionResult;
using ::testing::AssertionSuccess;

HostTest::HostTest() : host(host::Host::shared())
{
    addPluginLoaders();
}

void HostTest::start(const host::Profile &profile)
{
    host.use(profile);
    pool.emplace();
    if (profile.family)
        host.load(familyLibrary());
    loadPlugin();
}

void HostTest::start(const std::string &profileName)
{
    auto profile = host::Profile::named(profileName);
    if (!profile)
        throw std::invalid_argument("no profile " + profileName);
    start(*profile);
}

void HostTest::TearDown()
{
    if (pool)
        pool->drain();
    for (const host::HandleInfo &info : host.imbalances())
        ADD_FAILURE() << "not balanced: " << info.text();
    for (const std::string &fault : host.takeFaults())
        ADD_FAILURE() << "fault: " << fault;
    for (const host::RaisedException &raised : host.takePendingExceptions())
        ADD_FAILURE() << "never delivered: " << raised.className << " " << raised.message;
    pool.reset();
}

void BlackBox::loadPlugin()
{
    host.load(pluginUnderTest());
}

host::Value BlackBox::newEmptyInstance()
{
    return host.newInstance(kClass);
}

host::Value BlackBox::standardUserDefaults()
{
    return host.callShared(kClass, "standardUserDefaults");
}

const host::MethodDescription &BlackBox::method(const std::string &nameOrDeclaration, bool isShared)
{
    const host::MethodDescription *found = host.findMethod(kClass, nameOrDeclaration, isShared);
    if (!found)
        throw std::invalid_argument("no method " + nameOrDeclaration);
    return *found;
}

AssertionResult raisedOnce(const std::vector<host::RaisedException> &raised, const std::string &className,
                           const std::string &message)
{
    if (raised.size() != 1)
        return AssertionFailure() << raised.size() << " exceptions were raised";
    const host::RaisedException &one = raised.front();
    if (one.className != className || one.message != message || one.errorNumber != 0)
        return AssertionFailure() << "raised " << one.className << " \"" << one.message << "\" " << one.errorNumber;
    return AssertionSuccess();
}

} // namespace support
