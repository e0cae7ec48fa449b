// One measured piece of work, done twice: by hand in Cocoa, and through the plug-in with the same arguments.
#pragma once

#include <functional>
#include <list>
#include <string>
#include <type_traits>
#include <utility>

namespace bench {

// A handle that came back from the plug-in is given back here, outside of what is measured.
void giveBack(void *handle);

struct Case {
    std::string name;
    long size = 0;     // elements, entries, units or bytes; 0 where size does not matter
    int repeats = 10;  // under callgrind, after a warm-up of two
    bool once = false; // neither warm-up nor repetition: what only the first time shows

    std::function<void()> hand;    // the bare Cocoa call; empty where Cocoa has none
    std::function<void()> through; // the call through the plug-in
    void *result = nullptr;        // the handle that `through` left

    // Around every call, outside of what is measured; `tidy` comes when the case is over.
    std::function<void()> before, after, tidy;

    template <class Call>
    Case &byHand(Call call)
    {
        hand = [call] { consume(call); };
        return *this;
    }
    template <class Call>
    Case &throughPlugin(Call call)
    {
        if constexpr (std::is_same_v<decltype(call()), void *>)
            through = [this, call] { result = call(); };
        else
            through = [call] { consume(call); };
        return *this;
    }
    Case &beforeEach(std::function<void()> hook) { return before = std::move(hook), *this; }
    Case &afterEach(std::function<void()> hook) { return after = std::move(hook), *this; }
    Case &atTheEnd(std::function<void()> hook) { return tidy = std::move(hook), *this; }
    Case &named(const std::string &newName, long newSize = 0) { return name = newName, size = newSize, *this; }
    Case &repeated(int times) { return repeats = times, *this; }
    Case &onlyOnce() { return once = true, repeats = 1, *this; }

    void prepare()
    {
        if (before)
            before();
    }
    // After a call: nothing of it is left.
    void settle()
    {
        if (result)
            giveBack(std::exchange(result, nullptr));
        if (after)
            after();
    }

private:
    // So that the compiler does not drop a call whose answer nobody reads.
    template <class Call>
    static void consume(Call &call)
    {
        if constexpr (std::is_void_v<decltype(call())>) {
            call();
        } else {
            volatile auto answer = call();
            (void)answer;
        }
    }
};

// How much is done. Under callgrind everything takes fifty times as long, so the largest sizes are not counted, but
// timed and weighed.
enum class Extent { Counted, Everything };

// By the words of the command line: "check" and "full".
inline Extent extentNamed(const std::string &name)
{
    return name == "full" ? Extent::Everything : Extent::Counted;
}

class Cases {
public:
    Case &add(const std::string &name, long size = 0)
    {
        Case &added = _cases.emplace_back();
        added.name = name;
        added.size = size;
        return added;
    }
    std::list<Case> &all() { return _cases; }

private:
    std::list<Case> _cases; // a list: a case's calls hold its address
};

} // namespace bench
