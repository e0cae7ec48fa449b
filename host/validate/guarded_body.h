// C++ exceptions are caught in plain C++ files only, Objective-C ones in Objective-C++ files only.
#pragma once

#include <functional>
#include <string>

namespace validate {

// Empty, or what the exception of C++ says that ended the body.
std::string whyBodyFails(const std::function<void()> &body);

} // namespace validate
