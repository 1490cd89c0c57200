// The event thread of the simulated set: posted messages and timer ticks are
// delivered one at a time through each handler's message map.
//
// Virtual time: the thread that drives the set (a test) is the event thread;
// posting delivers at once and Advance() delivers exactly the ticks due by then.
// Real time: Start() runs a thread of its own that delivers as time passes.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "MEvtHandle.h"
#include "SimClock.h"

namespace sim {

struct ArmedTimer {
    MEvtHandle* handler;
    unsigned long id;
    unsigned long periodMs;
    EN_TIMER_MODE mode;
    uint64_t dueNs;
    const char* owner;  // the set's own timers name their owner; null: the handler's map
};

class EventLoop {
public:
    explicit EventLoop(Clock& clock);
    ~EventLoop();

    void Post(MEvtHandle* handler, unsigned int message, void* p1, void* p2, void* p3);
    // Runs a piece of work on the event thread, in order with the messages.
    void Invoke(std::function<void()> work);

    // owner names a timer of the simulated set itself (a tuner's sweep, say), so that
    // its ticks are not taken for the library's timer of the same id.
    void SetTimer(MEvtHandle* handler, unsigned long periodMs, unsigned long id, EN_TIMER_MODE mode,
                  const char* owner = nullptr);
    void KillTimer(MEvtHandle* handler, unsigned long id);
    std::vector<ArmedTimer> Timers() const;
    // A destroyed handler receives nothing more.
    void Forget(MEvtHandle* handler);

    // Virtual time: delivers everything due now.
    void RunUntilIdle();
    // Virtual time: moves the clock on by ms, delivering each tick at its time.
    void Advance(uint64_t ms);

    // Called after each piece of work (a message, an invocation, a timer tick),
    // before the clock may move on; factory-sim waits there for the page to have
    // received everything sent so far. onTick is called before each tick, with the
    // owner the timer was armed with (null for the library's timers).
    using OnTick = std::function<void(MEvtHandle* handler, unsigned long id, const char* owner)>;
    void SetAfterWork(std::function<void()> afterWork);
    void SetOnTick(OnTick onTick);
    // Whether the calling thread is inside a piece of work of an event loop.
    static bool InWork();

    // Real time: the event thread.
    void Start();
    void Stop();
    bool OnEventThread() const;

private:
    using Work = std::function<void()>;
    bool TakeNext(Work& work, uint64_t limitNs);
    void RunOne(Work& work);
    void Run();

    Clock& m_clock;
    mutable std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<Work> m_queue;
    std::map<std::pair<MEvtHandle*, unsigned long>, ArmedTimer> m_timers;
    bool m_dispatching = false;
    bool m_stop = false;
    std::thread m_thread;
    std::thread::id m_eventThread;
    std::function<void()> m_afterWork;
    OnTick m_onTick;
};

}  // namespace sim
