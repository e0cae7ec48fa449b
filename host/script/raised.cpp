#include "host/script/raised.h"

namespace script {

Raised raised(const std::string &className, const std::string &message, const Place &place)
{
    host::Value object = host::Host::shared().newInstance(className);
    object.setProperty("Message", message);
    return {object, place, {}};
}

} // namespace script
