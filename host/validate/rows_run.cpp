// One row called, and everything about it compared with the model.
#include "host/validate/case.h"
#include "host/validate/rows.h"

namespace validate {

using host::Value;

namespace {

std::string listed(const std::vector<std::string> &items)
{
    std::string text;
    for (const std::string &item : items)
        text += (text.empty() ? "" : " | ") + item;
    return "[" + text + "]";
}

struct Expected {
    std::vector<std::string> messages;
    std::string result;
};

Expected expectedOf(const Row &row, World &world, Throwing throwing)
{
    const host::MethodDescription &method = methodOf(row.declaration, row.isShared);
    std::string neutral = row.isAssigned ? "nil" : neutralResult(method.declaration);
    bool lacksArray = method.declaration.result.isArray && !world.newArray();
    if (lacksArray)
        neutral = "nil";
    Expected expected;
    try {
        std::string message = row.message ? row.message(world) : "";
        if (!message.empty())
            expected.messages.push_back(message);
        if (throwing == Throwing::Nothing || message.empty())
            expected.result = row.result && !lacksArray ? row.result(world) : neutral;
        else if (throwing == Throwing::Foreign)
            world.thrown = "foreign to every exception";
        else
            world.raiseOfCocoa(kThrownName, kThrownReason);
        if (expected.result.empty())
            expected.result = neutral;
    } catch (const CocoaRefuses &refusal) {
        world.raiseOfCocoa(refusal.name, "*");
        expected.result = neutral;
    }
    if (!world.thrown.empty())
        expected.result = "nil"; // there is none
    return expected;
}

std::vector<std::string> raisedTexts(const host::Outcome &outcome)
{
    std::vector<std::string> texts;
    for (const host::RaisedException &raised : outcome.raised)
        texts.push_back(raised.text());
    return texts;
}

// Each lock that the host could not give is an unlock too many, each unlock that it could not take a lock too many:
// so many and no more. The host counts every look-up of an entry point that it lacks.
void expectLocks(const World &world, const host::LedgerMark &mark)
{
    host::Host &host = theHost();
    auto missed = [&](const char *entry) { return world.has(entry) ? 0L : host.lookups(entry); };
    long missedUnlocks = missed("REALUnlockObject") + missed("REALUnlockString");
    long missedLocks = missed("REALLockObject") + missed("REALLockString");
    long tooMany = 0, tooFew = 0, strange = 0;
    std::string details;
    for (const host::HandleInfo &handle : host.leaks(mark)) {
        tooMany += handle.heldElsewhere();
        details += " " + handle.text() + ";";
    }
    for (const std::string &fault : host.takeFaults()) {
        details += " " + fault + ";";
        if (fault.rfind("unlocked once too often", 0) == 0 || fault.rfind("handed to the host without a lock", 0) == 0)
            tooFew++;
        else if (fault.rfind("PluginDisposeStringData: not a record", 0) == 0)
            strange++;
        else
            throw Failure("a rule of the host is broken: " + fault);
    }
    expect(tooMany - tooFew == missedUnlocks - missedLocks,
           "locks: " + std::to_string(tooMany) + " too many and " + std::to_string(tooFew) + " too few, where " +
               std::to_string(missedUnlocks) + " unlocks and " + std::to_string(missedLocks) +
               " locks were impossible:" + details);
    expect(strange == world.strangeRecords,
           "string records disposed that the host did not fill: " + std::to_string(strange) + ", and should be " +
               std::to_string(world.strangeRecords));
}

} // namespace

std::string neutralResult(const host::Declaration &declaration)
{
    using host::Passing;
    const host::DeclaredType &type = declaration.result;
    if (type.isArray)
        return "[]";
    switch (type.passing) {
    case Passing::Int32:
        return "int32 0";
    case Passing::Single:
        return "single 0";
    case Passing::Double:
        return "double 0";
    case Passing::Boolean:
        return "false";
    case Passing::String:
        return "null";
    default:
        return "nil";
    }
}

void expectMatch(const std::string &actual, const std::string &expected, const std::string &what)
{
    auto shortened = [](const std::string &text) {
        return text.size() <= 400 ? text : text.substr(0, 400) + "... (" + std::to_string(text.size()) + " bytes)";
    };
    expect(matches(actual, expected), what + ": is " + shortened(actual) + ", and should be " + shortened(expected));
}

Observed observe(const Row &row, const World &world, Throwing throwing, const std::function<void()> &before,
                 const std::function<void()> &after)
{
    host::Host &host = theHost();
    host.takeFaults();
    host::LedgerMark mark = host.mark();
    StandIn standIn;
    Observed observed;
    {
        host::CocoaPool pool;
        const host::MethodDescription &method = methodOf(row.declaration, row.isShared);
        Value instance;
        if (!row.isShared) {
            instance = host.newInstance(kClass);
            if (row.carries)
                standIn.carryIn(instance);
        }
        if (row.answer)
            row.answer(standIn);
        standIn.raise(throwing);
        host::Arguments arguments = row.arguments ? row.arguments() : host::Arguments();
        takeLog();
        host.resetCounts();
        if (before)
            before();
        Called called = callAndCatch([&] {
            return row.isAssigned ? host.invokeSetter(method, instance, arguments)
                                  : host.invoke(method, instance, arguments);
        });
        if (after)
            after();
        pool.drain(); // what Cocoa still holds goes before the arguments do
        observed = {shown(called.outcome.result),
                    listed(standIn.messages()),
                    listed(raisedTexts(called.outcome)),
                    listed(takeLog()),
                    called.thrown,
                    called.thrownObject};
    }
    expect(standIn.retainCount() == 1, "the carried object is not released as often as retained");
    expectLocks(world, mark);
    for (const host::RaisedException &raised : host.takePendingExceptions())
        throw Failure("raised outside the call: " + raised.className + " " + raised.message);
    return observed;
}

void runRow(const Row &row, World world, Throwing throwing, const std::function<void()> &before,
            const std::function<void()> &after)
{
    Expected expected = expectedOf(row, world, throwing);
    Observed observed = observe(row, world, throwing, before, after);
    expectMatch(observed.thrown, world.thrown, "what was thrown through the plug-in");
    if (throwing == Throwing::Foreign && world.thrown == observed.thrown &&
        observed.thrown.rfind("NSException", 0) != 0 && !observed.thrown.empty())
        expect(observed.thrownObject == foreignObject(), "the foreign object is not the one that was thrown");
    expectMatch(observed.messages, listed(expected.messages), "messages to the defaults object");
    expectMatch(observed.raised, listed(world.raised), "exceptions raised");
    expectMatch(observed.logged, listed(world.log), "lines logged");
    expectMatch(observed.result, expected.result, "result");
}

} // namespace validate
