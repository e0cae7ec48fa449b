#include "host/plughost/application.h"

#include "host/plughost/errors.h"
#include "host/plughost/file_complaints.h"
#include "host/script/shortened.h"

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>
#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace plughost {

static bool showsRaised;
static std::string lastRaised; // what a plug-in logged last before it raised it

static std::string oneLine(std::string text)
{
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

// "date process[id] A NSRangeException: reason, Info: (null)"
static void logUnlessRaised(NSString *message)
{
    std::string text = [message UTF8String];
    size_t begin = text.find("] A ");
    size_t end = text.rfind(", Info: ");
    bool isRaised = begin != std::string::npos && end != std::string::npos && begin < end;
    if (isRaised)
        lastRaised = text.substr(begin + 4, end - begin - 4);
    if (isRaised ? showsRaised : !takeFileComplaint(text))
        fputs(text.c_str(), stderr);
}

// Without the companion library the exception is that the plug-in cannot ask it to raise another one.
static void endWithOneLine(NSException *exception)
{
    std::string what = std::string([[exception name] UTF8String]) + ": " + [[exception reason] UTF8String];
    if (what.find("NewNSExceptionKTZ:") != std::string::npos && !lastRaised.empty())
        what = lastRaised;
    fflush(stdout);
    printUnreadFiles();
    fprintf(stderr, "plughost: a Cocoa exception ended the host: %s\n", script::shortened(oneLine(what)).c_str());
    _exit(kBadInput);
}

void becomeApplication(const std::string &domain, bool showLog)
{
    @autoreleasepool {
        std::string name = domain;
        char *arguments[] = {name.data(), nullptr};
        GSInitializeProcess(1, arguments, environ);
        // Foundation shortens a program's name as it does a path.
        [[NSProcessInfo processInfo] setProcessName:[NSString stringWithUTF8String:domain.c_str()]];
        [NSUserDefaults resetStandardUserDefaults]; // what a process read from which this one was forked
        showsRaised = showLog;
        _NSLog_printf_handler = logUnlessRaised;
        // As a host has one before it loads plug-ins. It answers an exception that nobody catches with a panel, which
        // nobody could close here.
        [NSApplication sharedApplication];
        NSSetUncaughtExceptionHandler(endWithOneLine);
    }
}

bool writeStandardDefaults()
{
    @autoreleasepool {
        return [[NSUserDefaults standardUserDefaults] synchronize];
    }
}

bool isUser(const std::string &name)
{
    @autoreleasepool {
        NSString *user = [NSString stringWithUTF8String:name.c_str()];
        return [[[NSUserDefaults alloc] initWithUser:user] autorelease] != nil;
    }
}

bool isURL(const std::string &text)
{
    @autoreleasepool {
        NSString *string = [NSString stringWithUTF8String:text.c_str()];
        CFURLRef url = [string length] ? CFURLCreateWithString(nullptr, (CFStringRef)string, nullptr) : nullptr;
        if (url)
            CFRelease(url);
        return url != nullptr;
    }
}

} // namespace plughost
