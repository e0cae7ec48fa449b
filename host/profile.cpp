#include "host/profile.h"

#include <cmath>
#include <cstdlib>

namespace host {

namespace {

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
    char *end = nullptr;
    double version = strtod(name.c_str(), &end);
    if (name.empty() || *end || !(version > 0) || !std::isfinite(version))
        return std::nullopt;
    return profileOf(name.c_str(), version);
}

} // namespace host
