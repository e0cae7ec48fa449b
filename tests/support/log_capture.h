// What NSLog writes while it is alive goes here and not to the standard error output.
#pragma once

#include <string>
#include <vector>

namespace support {

// One at a time.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    // The messages without time, process name and number in front; an end of line is kept as it was logged.
    const std::vector<std::string> &messages() const;
};

} // namespace support
