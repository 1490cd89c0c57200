#include "SimClock.h"

#include <ctime>
#include <thread>

namespace sim {

namespace {
uint64_t MonotonicNs() {
    struct timespec ts {};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return static_cast<uint64_t>(ts.tv_sec) * 1000000000ULL + static_cast<uint64_t>(ts.tv_nsec);
}
}  // namespace

// A simulated set boots with the simulator: real time counts from the start, so
// its readings are as small as a freshly booted set's.
Clock::Clock(TimeMode mode) : m_mode(mode), m_realBootNs(MonotonicNs()) {}

uint64_t Clock::NowNs() const {
    if (m_mode == TimeMode::Virtual) {
        return m_virtualNs.load();
    }
    return MonotonicNs() - m_realBootNs;
}

void Clock::SetNs(uint64_t ns) {
    uint64_t now = m_virtualNs.load();
    while (ns > now && !m_virtualNs.compare_exchange_weak(now, ns)) {
    }
}

void Clock::Sleep(uint64_t ns) {
    if (m_mode == TimeMode::Virtual) {
        m_virtualNs.fetch_add(ns);
        return;
    }
    std::this_thread::sleep_for(std::chrono::nanoseconds(ns));
}

}  // namespace sim
