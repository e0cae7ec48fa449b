// Two stacks that hand over to each other, as the threads of a host do: one runs while the other stands still.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace isolation {

class OtherStack {
public:
    OtherStack() = default;
    ~OtherStack() { finish(); }
    OtherStack(const OtherStack &) = delete;
    OtherStack &operator=(const OtherStack &) = delete;

    // Runs the body there until it stands still or ends; once for each object.
    void start(std::function<void()> body)
    {
        _hasStarted = _goesOnThere = true;
        _thread = std::thread([this, body = std::move(body)] {
            _there = std::this_thread::get_id();
            body();
            _hasEnded = true;
            handOver(false);
        });
        waitFor(false);
    }
    // Called there: goes back to whoever started it or had it go on.
    void standStill()
    {
        handOver(false);
        waitFor(true);
    }
    // Called here: until it stands still again or ends.
    void goOn()
    {
        handOver(true);
        waitFor(false);
    }
    void finish()
    {
        while (isUnderWay())
            goOn();
        if (_thread.joinable())
            _thread.join();
    }

    bool hasStarted() const { return _hasStarted; }
    bool isUnderWay() const { return _hasStarted && !_hasEnded; }
    // Whether the caller is on it.
    bool isHere() const { return std::this_thread::get_id() == _there; }

private:
    void handOver(bool toThere)
    {
        std::lock_guard<std::mutex> lock(_mutex);
        _goesOnThere = toThere;
        _changed.notify_all();
    }
    void waitFor(bool there)
    {
        std::unique_lock<std::mutex> lock(_mutex);
        _changed.wait(lock, [this, there] { return _goesOnThere == there; });
    }

    std::mutex _mutex;
    std::condition_variable _changed;
    bool _goesOnThere = false;
    bool _hasStarted = false;
    bool _hasEnded = false;
    std::thread::id _there;
    std::thread _thread;
};

} // namespace isolation
