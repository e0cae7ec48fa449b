#include "host/plughost/strict_json.h"

#include <functional>
#include <set>
#include <vector>

#include "host/plughost/errors.h"

namespace plughost {

// The library would keep the last of two equal keys without a word.
class DuplicateKeys {
public:
    bool operator()(int, Json::parse_event_t event, Json &parsed)
    {
        if (event == Json::parse_event_t::object_start)
            _keys.emplace_back();
        else if (event == Json::parse_event_t::object_end)
            _keys.pop_back();
        else if (event == Json::parse_event_t::key && !_keys.back().insert(parsed.get<std::string>()).second)
            throw InputError("the key " + parsed.dump() + " stands twice in one object");
        return true;
    }

private:
    std::vector<std::set<std::string>> _keys;
};

Json parseStrictJson(const std::string &text)
{
    try {
        DuplicateKeys duplicates;
        return Json::parse(text, std::ref(duplicates));
    } catch (const Json::exception &exception) {
        // "[json.exception.parse_error.101] parse error at line 1, column 2: ..."
        std::string message = exception.what();
        size_t end = message.find("] ");
        throw InputError("no valid JSON: " + (end == std::string::npos ? message : message.substr(end + 2)));
    }
}

} // namespace plughost
