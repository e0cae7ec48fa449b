#include "tests/support/log_capture.h"

#import <Foundation/Foundation.h>

static std::vector<std::string> captured;
static NSLog_printf_handler *usual;

// "2026-11-20 12:00:00.000 name[12:34] message"
static void capture(NSString *line)
{
    NSRange prefix = [line rangeOfString:@"] "];
    captured.push_back([[line substringFromIndex:NSMaxRange(prefix)] UTF8String]);
}

namespace support {

LogCapture::LogCapture()
{
    captured.clear();
    usual = _NSLog_printf_handler;
    _NSLog_printf_handler = capture;
}

LogCapture::~LogCapture()
{
    _NSLog_printf_handler = usual;
}

const std::vector<std::string> &LogCapture::messages() const
{
    return captured;
}

} // namespace support
