// Where the cases run: one process, one host, the plug-in's own file loaded as a host loads it.
#pragma once

#include "bench/case.h"
#include "bench/own_code.h"
#include "host/host.h"

#include <set>
#include <string>

namespace bench {

// Which host is played. A plug-in keeps the entry points it found, so each of these needs a process of its own.
struct Configuration {
    const char *name;
    const char *profile;
    bool hostMakesCFStrings; // it offers "REALGetStringCFString"
    bool objectsAreWrapped;  // the family has the class that carries host objects
    bool allCases;           // otherwise only those that this host does in another way
};
const Configuration *configurationNamed(const std::string &name);

class Ground {
public:
    // Before the plug-in has run: only the case of its entry function can be measured.
    explicit Ground(const Configuration &configuration);

    const Configuration &configuration;
    host::Host &host;
    host::Plugin *plugin;
    CodeRange code; // the plug-in's own

    // The method's C function, as the plug-in registered it.
    template <class Function>
    Function *member(const std::string &declaration, bool isShared = false)
    {
        return reinterpret_cast<Function *>(functionOf(declaration, isShared));
    }

    // The standard defaults as a host object: what every case calls. Made on the first call.
    void *self();

private:
    void *functionOf(const std::string &declaration, bool isShared);
    host::Value _standard;
};

// The autorelease pool of one measured stretch.
void *newPool();
void endPool(void *pool);

// The cases, in groups. The first group must be the first that a process runs.
void addStart(Cases &cases, Ground &ground);
void addMembers(Cases &cases, Ground &ground);
void addStrings(Cases &cases, Ground &ground, Extent extent);
void addCollections(Cases &cases, Ground &ground, Extent extent);
void addData(Cases &cases, Ground &ground, Extent extent);
void addObjects(Cases &cases, Ground &ground);
void addUnlistedHostObject(Cases &cases, Ground &ground);

// Those that go with the ground's configuration, without the start.
void addSteady(Cases &cases, Ground &ground, Extent extent);

} // namespace bench
