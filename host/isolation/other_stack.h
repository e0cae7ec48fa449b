// Two stacks that hand over to each other, as the threads of a host do: one runs while the other stands still.
#pragma once

#include <functional>
#include <sched.h>
#include <semaphore.h>
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
        _hasStarted = true;
        // Both on one processor, where handing over costs least.
        cpu_set_t here;
        CPU_ZERO(&here);
        CPU_SET(sched_getcpu(), &here);
        sched_getaffinity(0, sizeof _allProcessors, &_allProcessors);
        sched_setaffinity(0, sizeof here, &here);
        _thread = std::thread([this, body = std::move(body)] {
            _there = std::this_thread::get_id();
            body();
            _hasEnded = true;
            _goOnHere.tell();
        });
        _goOnHere.wait();
    }
    // Called there: goes back to whoever started it or had it go on.
    void standStill()
    {
        _goOnHere.tell();
        _goOnThere.wait();
    }
    // Called here: until it stands still again or ends.
    void goOn()
    {
        _goOnThere.tell();
        _goOnHere.wait();
    }
    void finish()
    {
        while (isUnderWay())
            goOn();
        if (_thread.joinable()) {
            _thread.join();
            sched_setaffinity(0, sizeof _allProcessors, &_allProcessors);
        }
    }

    bool hasStarted() const { return _hasStarted; }
    bool isUnderWay() const { return _hasStarted && !_hasEnded; }
    // Whether the caller is on it.
    bool isHere() const { return std::this_thread::get_id() == _there; }

private:
    class Signal {
    public:
        Signal() { sem_init(&_semaphore, 0, 0); }
        ~Signal() { sem_destroy(&_semaphore); }
        void tell() { sem_post(&_semaphore); }
        void wait()
        {
            while (sem_wait(&_semaphore) != 0) // interrupted
                ;
        }

    private:
        sem_t _semaphore;
    };

    Signal _goOnHere, _goOnThere;
    cpu_set_t _allProcessors;
    bool _hasStarted = false;
    bool _hasEnded = false;
    std::thread::id _there;
    std::thread _thread;
};

} // namespace isolation
