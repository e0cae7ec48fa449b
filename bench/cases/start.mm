// What only the first time shows.
#include "bench/cases/arguments.h"

namespace bench {

void addStart(Cases &cases, Ground &ground)
{
    cases.add("REALPluginMain").onlyOnce().throughPlugin([&ground] { ground.plugin->start(); });

    // The companion library and AppKit start here, too; by hand it is only the object.
    cases.add("standardUserDefaults, first call")
        .onlyOnce()
        .byHand([] { return [NSUserDefaults standardUserDefaults]; })
        .throughPlugin([&ground] { return ground.member<void *()>("standardUserDefaults", true)(); });

    static const Key key("first");
    cases.add("integerForKey, first call")
        .onlyOnce()
        .byHand([] { return [standard() integerForKey:key.cocoa]; })
        .throughPlugin(
            [&ground] { return ground.member<int32_t(void *, void *)>("integerForKey")(ground.self(), passed(key)); });
}

} // namespace bench
