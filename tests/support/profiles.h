// The hosts that the plug-in is tested with, for parameterised tests:
//
//     INSTANTIATE_TEST_SUITE_P(Hosts, EveryHost, support::everyProfile(), support::profileTestName);
#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace support {

struct ProfileFacts {
    std::string name;
    int recordVersion;
    bool handsOutStringBytes; // from 2012.0 on
};

// One row for each record version and for each side of its thresholds; "2009" reports no version number.
inline const std::vector<ProfileFacts> &profiles()
{
    static const std::vector<ProfileFacts> rows = {
        {"2009", 9, false},   {"2011.4", 9, false},  {"2012.0", 10, true},  {"2012.2", 10, true},
        {"2013.0", 11, true}, {"2013.02", 11, true}, {"2013.03", 12, true}, {"2014.1", 12, true},
    };
    return rows;
}

inline auto everyProfile()
{
    return ::testing::ValuesIn(profiles());
}

inline void PrintTo(const ProfileFacts &facts, std::ostream *out)
{
    *out << facts.name;
}

inline std::string profileTestName(const ::testing::TestParamInfo<ProfileFacts> &info)
{
    std::string name = info.param.name;
    std::replace(name.begin(), name.end(), '.', '_');
    return "Host" + name;
}

} // namespace support
