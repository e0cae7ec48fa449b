// The members of the class, each in one or more calls whose outcome the model can tell: what is handed in, what the
// carried object answers, which message it must get and what must come back.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/validate/ground.h"
#include "host/validate/stand_in.h"
#include "host/validate/world.h"

namespace validate {

struct Row {
    std::string name;
    std::string declaration;
    bool isShared = false;
    bool isAssigned = false; // called as the setter in the getter's record
    bool carries = true;     // the instance carries a stand-in
    std::function<host::Arguments()> arguments;
    std::function<void(StandIn &)> answer;
    std::function<std::string(World &)> message; // empty: none is sent
    std::function<std::string(World &)> result;  // empty: the neutral result
};

// Every method, shared method and assignable form is in here at least once; loading a plug-in checks it.
const std::vector<Row> &rows();
const Row &rowNamed(const std::string &name);

// What `shown` gives for the neutral result of a method.
std::string neutralResult(const host::Declaration &declaration);

// What a call did, in words.
struct Observed {
    std::string result;
    std::string messages; // lists in brackets
    std::string raised;
    std::string logged;
    std::string thrown;
    const void *thrownObject = nullptr;
};

// Makes the call of a row in the host as it is, between `before` and `after`, which stay outside every check, and
// checks the locks. The stand-in throws if it is asked to.
Observed observe(const Row &row, const World &world, Throwing throwing, const std::function<void()> &before,
                 const std::function<void()> &after);

// Compares everything about the call with the model: the message, the result, what was raised, logged and thrown, every
// lock.
void runRow(const Row &row, World world = {}, Throwing throwing = Throwing::Nothing,
            const std::function<void()> &before = nullptr, const std::function<void()> &after = nullptr);

// A text with stars in it for anything.
void expectMatch(const std::string &actual, const std::string &expected, const std::string &what);

} // namespace validate
