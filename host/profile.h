// Which host the embedded host plays: its version, the entry points that it offers, the layouts that it uses and
// what the companion library adds.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace host {

struct Profile {
    std::string name;

    // What "REALGetRBVersion" answers. A host without a number does not offer that entry point at all.
    std::optional<double> version;

    // Entry points (and global methods such as "VarType") that this host lacks although its version would offer
    // them, or offers although its version would not.
    std::set<std::string> without;
    std::set<std::string> with;

    // Whether array records point at their elements; decided by the version (up to 2013.9) when not set.
    std::optional<bool> arrayStorage;

    // Dictionaries compare text keys byte for byte; hosts of the time could also ignore case.
    bool caseInsensitiveKeys = false;

    // The companion library of the plug-in family, and the names of what it leaves out: a class ("NSFontKTZ"), a
    // class method ("GetInstancesDictionaryKTZ", "valueWithCMTimeKTZ:"), "KTZREALobjectWrapper", or the tag of a
    // Core Foundation wrapper ("CFStringKTZ.tag"). "*" leaves out everything that `familyKeeps` does not name.
    bool family = true;
    std::set<std::string> familyLeavesOut;
    std::set<std::string> familyKeeps;

    double versionNumber() const { return version.value_or(0.0); }
    bool hasArrayStorage() const { return arrayStorage.value_or(versionNumber() <= 2013.9); }
    bool hasOldStringRecords() const { return versionNumber() < 2012.0; }
    bool familyLeaves(const std::string &feature) const;

    // The predefined profiles: "2009" (no version number), "2011.4", "2012.0", "2012.2", "2013.0", "2013.02",
    // "2013.03", "2014.1".
    static const std::vector<Profile> &predefined();

    // A predefined profile by name, or one for another version number from 2009 to 2014.x written as text ("2012.1").
    // Nothing for a text that is neither.
    static std::optional<Profile> named(const std::string &name);
};

} // namespace host
