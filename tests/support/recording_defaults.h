// A stand-in for the NSUserDefaults object that an instance of the plug-in's class carries. It writes down every
// message that it gets and answers what it was told to answer, 0 and nil otherwise.
#pragma once

#include "host/value.h"

#include <string>
#include <vector>

namespace support {

class RecordingDefaults {
public:
    RecordingDefaults();
    ~RecordingDefaults();
    RecordingDefaults(const RecordingDefaults &) = delete;
    RecordingDefaults &operator=(const RecordingDefaults &) = delete;

    // Puts the stand-in into an instance that carries nothing; the instance owns one retain, as of a real one.
    void carryIn(const host::Value &instance);

    // The answer to a message, of exactly the type that the method returns.
    template <class Number>
    void answer(const char *selector, Number number)
    {
        answerBytes(selector, &number, sizeof number);
    }
    void answerObject(const char *selector, void *object); // an Objective-C object, retained
    void answerText(const char *selector, const std::string &utf8);
    void answerURL(const char *selector, const std::string &text);

    // The message raises an NSException with the name "NSTestException" and the reason "raised by the stand-in".
    void raise(const char *selector);
    // The message throws an Objective-C object that is no NSException: the text "foreign".
    void throwForeignObject(const char *selector);
    void doNotRespondTo(const char *selector);

    // Each message with its arguments in the place of the selector's parts, such as
    // `setInteger:7 forKey:"Runs"`; texts quoted, URLs in <>, data as hexadecimal digits in {}, nil as nil.
    // Questions whether it responds, retain and release are not written down.
    const std::vector<std::string> &messages() const;
    void forgetMessages();

    int retainCount() const; // our own included
    void *object() const;

private:
    void answerBytes(const char *selector, const void *bytes, size_t size);
    void *_object;
};

// What is logged for the exception of RecordingDefaults::raise.
inline constexpr char kStandInLogLine[] = "A NSTestException: raised by the stand-in, Info: (null)\n";

} // namespace support
