#include "SimEventLoop.h"

#include <cstdint>
#include <limits>

namespace sim {

namespace {
thread_local int t_inWork = 0;
}  // namespace

EventLoop::EventLoop(Clock& clock) : m_clock(clock), m_eventThread(std::this_thread::get_id()) {}

EventLoop::~EventLoop() { Stop(); }

void EventLoop::Post(MEvtHandle* handler, unsigned int message, void* p1, void* p2, void* p3) {
    Invoke([handler, message, p1, p2, p3] { handler->OnEvent(message, p1, p2, p3); });
}

void EventLoop::Invoke(Work work) {
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_queue.push_back(std::move(work));
    }
    m_wake.notify_all();
    if (m_clock.Mode() == TimeMode::Virtual) {
        RunUntilIdle();
    }
}

void EventLoop::SetTimer(MEvtHandle* handler, unsigned long periodMs, unsigned long id,
                         EN_TIMER_MODE mode, const char* owner) {
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        // Arming an armed timer restarts its period, as on the set.
        m_timers[{handler, id}] =
            ArmedTimer{handler, id, periodMs, mode, m_clock.NowNs() + periodMs * 1000000ULL, owner};
    }
    m_wake.notify_all();
}

void EventLoop::KillTimer(MEvtHandle* handler, unsigned long id) {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_timers.erase({handler, id});
}

std::vector<ArmedTimer> EventLoop::Timers() const {
    std::lock_guard<std::mutex> lock(m_mutex);
    std::vector<ArmedTimer> out;
    for (const auto& entry : m_timers) {
        out.push_back(entry.second);
    }
    return out;
}

void EventLoop::Forget(MEvtHandle* handler) {
    std::lock_guard<std::mutex> lock(m_mutex);
    for (auto it = m_timers.begin(); it != m_timers.end();) {
        it = it->first.first == handler ? m_timers.erase(it) : std::next(it);
    }
}

// Takes the next piece of work: queued messages first, then the earliest timer
// due by limitNs (ties in arming order of id). The tick carries the id in p2.
bool EventLoop::TakeNext(Work& work, uint64_t limitNs) {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_queue.empty()) {
        work = std::move(m_queue.front());
        m_queue.pop_front();
        return true;
    }
    auto due = m_timers.end();
    for (auto it = m_timers.begin(); it != m_timers.end(); ++it) {
        if (it->second.dueNs <= limitNs &&
            (due == m_timers.end() || it->second.dueNs < due->second.dueNs)) {
            due = it;
        }
    }
    if (due == m_timers.end()) {
        return false;
    }
    ArmedTimer timer = due->second;
    if (timer.mode == E_TIMER_ONESHOT) {
        m_timers.erase(due);
    } else {
        due->second.dueNs += (timer.periodMs == 0 ? 1 : timer.periodMs) * 1000000ULL;
    }
    if (m_clock.Mode() == TimeMode::Virtual) {
        m_clock.SetNs(timer.dueNs);
    }
    MEvtHandle* handler = timer.handler;
    const unsigned long timerId = timer.id;
    const char* owner = timer.owner;
    auto onTick = m_onTick;
    work = [handler, timerId, owner, onTick] {
        if (onTick) {
            onTick(handler, timerId, owner);
        }
        void* id = reinterpret_cast<void*>(static_cast<uintptr_t>(timerId));
        handler->OnEvent(MEvtHandle::kTimerMessage, nullptr, id, nullptr);
    };
    return true;
}

void EventLoop::SetAfterWork(std::function<void()> afterWork) {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_afterWork = std::move(afterWork);
}

void EventLoop::SetOnTick(OnTick onTick) {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_onTick = std::move(onTick);
}

bool EventLoop::InWork() { return t_inWork > 0; }

void EventLoop::RunOne(Work& work) {
    ++t_inWork;
    work();
    std::function<void()> afterWork;
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        afterWork = m_afterWork;
    }
    if (afterWork) {
        afterWork();
    }
    --t_inWork;
}

void EventLoop::RunUntilIdle() {
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        if (m_dispatching) {
            return;  // a handler posted: the outer loop delivers it next
        }
        m_dispatching = true;
    }
    Work work;
    while (TakeNext(work, m_clock.NowNs())) {
        RunOne(work);
    }
    std::lock_guard<std::mutex> lock(m_mutex);
    m_dispatching = false;
}

void EventLoop::Advance(uint64_t ms) {
    const uint64_t target = m_clock.NowNs() + ms * 1000000ULL;
    bool outer = false;
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        // A message posted by a tick's handler waits until that handler returns:
        // the event thread delivers one message at a time.
        outer = !m_dispatching;
        m_dispatching = true;
    }
    Work work;
    while (TakeNext(work, target)) {
        RunOne(work);
    }
    m_clock.SetNs(target);
    std::lock_guard<std::mutex> lock(m_mutex);
    if (outer) {
        m_dispatching = false;
    }
}

void EventLoop::Start() {
    if (m_thread.joinable()) {
        return;
    }
    m_stop = false;
    m_thread = std::thread([this] { Run(); });
}

void EventLoop::Stop() {
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_stop = true;
    }
    m_wake.notify_all();
    if (m_thread.joinable() && m_thread.get_id() != std::this_thread::get_id()) {
        m_thread.join();
    }
}

bool EventLoop::OnEventThread() const { return std::this_thread::get_id() == m_eventThread; }

void EventLoop::Run() {
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_eventThread = std::this_thread::get_id();
    }
    for (;;) {
        Work work;
        if (TakeNext(work, m_clock.NowNs())) {
            RunOne(work);
            continue;
        }
        std::unique_lock<std::mutex> lock(m_mutex);
        if (m_stop) {
            return;
        }
        if (!m_queue.empty()) {
            continue;
        }
        uint64_t next = std::numeric_limits<uint64_t>::max();
        for (const auto& entry : m_timers) {
            next = std::min(next, entry.second.dueNs);
        }
        const uint64_t now = m_clock.NowNs();
        if (next == std::numeric_limits<uint64_t>::max()) {
            m_wake.wait(lock);
        } else if (next > now) {
            m_wake.wait_for(lock, std::chrono::nanoseconds(next - now));
        }
    }
}

}  // namespace sim
