#include "host/profile.h"

#include <algorithm>
#include <cstdlib>

namespace host {

namespace {

// The hosts that the plug-in is made for.
const double kFirstVersion = 2009;
const double kVersionsEnd = 2015;

Profile profileOf(const char *name, std::optional<double> version)
{
    Profile profile;
    profile.name = name;
    profile.version = version;
    return profile;
}

} // namespace

bool Profile::familyLeaves(const std::string &feature) const
{
    if (familyLeavesOut.count(feature))
        return true;
    return familyLeavesOut.count("*") && !familyKeeps.count(feature);
}

const std::vector<Profile> &Profile::predefined()
{
    static const std::vector<Profile> profiles = {
        profileOf("2009", std::nullopt), profileOf("2011.4", 2011.4), profileOf("2012.0", 2012.0),
        profileOf("2012.2", 2012.2),     profileOf("2013.0", 2013.0), profileOf("2013.02", 2013.02),
        profileOf("2013.03", 2013.03),   profileOf("2014.1", 2014.1),
    };
    return profiles;
}

std::optional<Profile> Profile::named(const std::string &name)
{
    for (const Profile &profile : predefined())
        if (profile.name == name)
            return profile;
    bool isNumber =
        name.find_first_not_of("0123456789.") == std::string::npos && std::count(name.begin(), name.end(), '.') <= 1;
    double version = isNumber ? strtod(name.c_str(), nullptr) : 0;
    if (version < kFirstVersion || version >= kVersionsEnd)
        return std::nullopt;
    return profileOf(name.c_str(), version);
}

} // namespace host
