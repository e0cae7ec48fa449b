// Host code carried out and written down as it goes: each line shows a call in the host's language and what it gave.
// The text of a call is made from the call itself, so that it cannot say anything else. Every result is compared with
// the expected one.
#pragma once

#include <string>
#include <vector>

#include "host/host.h"

namespace plughost {

// A value with its spelling in host code: a literal, or a variable's name.
struct Term {
    std::string text;
    host::Value value;

    Term(const char *string);
    Term(int value);
    Term(double value);
    Term(bool value);
    Term(const std::string &text, const host::Value &value) : text(text), value(value) {}
};

using Terms = std::vector<Term>;

Term single(float value);
Term array(const Terms &elements);        // Array(...) of Variants
Term stringArray(const Terms &elements);  // Array(...) of strings
Term folderItem(const std::string &path); // GetFolderItem("...")

class Transcript {
public:
    explicit Transcript(host::Host &host) : _host(host) {}

    // Parts of the text.
    void heading(const std::string &title);
    void remark(const std::string &text);

    // Dim name As type = Class.method, a shared method without arguments.
    Term dimShared(const std::string &name, const std::string &type, const std::string &className,
                   const std::string &method);
    Term dim(const std::string &name, const std::string &type, const Term &object, const std::string &method,
             const Terms &arguments = {}); // the same on an object
    Term dimDictionary(const std::string &name);
    Term dimMemoryBlock(const std::string &name, const std::string &bytes);
    Term dimDate(const std::string &name, int year, int month, int day, int hour, int minute, int second);
    void put(const Term &dictionary, const Term &key, const Term &value); // dictionary.Value(key) = value

    // object.method(arguments), with the result as host code would write it.
    void run(const Term &object, const std::string &method, const Terms &arguments = {});
    void show(const Term &object, const std::string &method, const Terms &arguments, const std::string &expected);
    void showShared(const std::string &className, const std::string &method, const std::string &expected);
    void showSame(const Term &object, const std::string &className, const std::string &method);
    // object.method(arguments) = value
    void assign(const Term &object, const std::string &method, const Terms &arguments, const Term &value);
    // A call that raises; expected is "ExceptionClass: message".
    void showRaised(const Term &object, const std::string &method, const Terms &arguments, const std::string &expected);

    // A command of the system's defaults tool and what it prints; an expected failure is its message.
    void command(const std::string &line, const std::string &expected);

    // Any other expression that is true or false.
    void fact(const std::string &text, bool holds, bool expected = true);

    int failures() const { return _failures; }

private:
    host::Host &_host;
    int _failures = 0;

    void line(const std::string &code);
    void line(const std::string &code, const std::string &result, const std::string &expected);
};

} // namespace plughost
