#include "host/plughost/application.h"

#include "host/plughost/errors.h"

#import <Foundation/Foundation.h>
#include <cstdio>
#include <unistd.h>

namespace plughost {

static void logUnlessRaised(NSString *message)
{
    const char *text = [message UTF8String];
    // "date process[id] A NSRangeException: reason, Info: (null)"
    if (strstr(text, "] A ") && strstr(text, ", Info: "))
        return;
    fputs(text, stderr);
}

void becomeApplication(const std::string &domain, bool showLog)
{
    @autoreleasepool {
        std::string name = domain;
        char *arguments[] = {name.data(), nullptr};
        GSInitializeProcess(1, arguments, environ);
        // Foundation shortens a program's name as it does a path.
        [[NSProcessInfo processInfo] setProcessName:[NSString stringWithUTF8String:domain.c_str()]];
        if (!showLog)
            _NSLog_printf_handler = logUnlessRaised;
    }
}

static void endWithOneLine(NSException *exception)
{
    fprintf(stderr, "plughost: a Cocoa exception ended the host: %s: %s\n", [[exception name] UTF8String],
            [[exception reason] UTF8String]);
    _exit(kBadInput);
}

void endOnUncaughtExceptions()
{
    NSSetUncaughtExceptionHandler(endWithOneLine);
}

} // namespace plughost
