#include "host/validate/guarded_body.h"

#include "host/exception.h"
#include "host/validate/case.h"

namespace validate {

std::string whyBodyFails(const std::function<void()> &body)
{
    try {
        body();
        return "";
    } catch (const Failure &failure) {
        return failure.what();
    } catch (const host::Exception &exception) {
        return std::string("a host exception that is not expected: ") + exception.what();
    } catch (const std::exception &exception) {
        return std::string("cannot go on: ") + exception.what();
    }
}

} // namespace validate
