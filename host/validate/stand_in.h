// A defaults object for an instance to carry in the place of a real one. It writes down every message and answers what
// it was told to, so that a call is seen from both sides and nothing is stored.
#pragma once

#include <string>
#include <vector>

#include "host/value.h"

namespace validate {

enum class Throwing { Nothing, Exception, Subclass, Foreign };

// What a raising stand-in and the raising methods of Cocoa throw.
inline constexpr char kThrownName[] = "ValidationException";
inline constexpr char kThrownReason[] = "raised for the case";
[[noreturn]] void throwForCase(Throwing what);
const void *foreignObject(); // what Throwing::Foreign throws

// What a text is put into before it is answered.
enum class AnswerShape { Text, InArray, AsValue, AsKey };

class StandIn {
public:
    StandIn();
    ~StandIn();
    StandIn(const StandIn &) = delete;
    StandIn &operator=(const StandIn &) = delete;

    void carryIn(const host::Value &instance); // which holds one retain from then on

    // Answers, by the message; an Objective-C object is retained.
    void answerNumber(const char *selector, const void *bytes, size_t size);
    void answerObject(const char *selector, void *object);
    // Of any units, lone surrogates among them.
    void answerText(const char *selector, AnswerShape shape, const std::u16string &units);
    void raise(Throwing what); // whatever message comes

    // Such as `setInteger:7 forKey:"Runs"`: texts quoted, URLs in <>, data as {00ff}, nil as nil.
    const std::vector<std::string> &messages() const;
    int retainCount() const; // our own included

private:
    void *_object;
};

// An Objective-C object as the messages show it.
std::string shownObjectOfCocoa(void *object);

} // namespace validate
