#include "host/plughost/commands/change.h"

#include <cstdio>
#include <map>

#include "host/plughost/json_value.h"

namespace plughost {

using Values = std::map<std::string, std::string>; // key to JSON

static Values valuesInView(Session &session)
{
    host::Value all = session.call("dictionaryRepresentation");
    Values values;
    for (int32_t i = 0; i < all.count(); i++)
        values[all.keyAt(i).text()] = jsonOf(all.lookup(all.keyAt(i)));
    return values;
}

void printChange(Session &session, const std::function<void()> &change)
{
    Values before = valuesInView(session);
    change();
    Values after = valuesInView(session);
    for (const auto &[key, value] : after)
        if (before.count(key) == 0 || before[key] != value)
            printf("%s = %s\n", key.c_str(), value.c_str());
    for (const auto &[key, value] : before)
        if (after.count(key) == 0)
            printf("%s is gone\n", key.c_str());
}

} // namespace plughost
