// The simulated set's monotonic clock: virtual in tests, real time in factory-sim.
#pragma once

#include <atomic>
#include <cstdint>

namespace sim {

enum class TimeMode { Virtual, Real };

class Clock {
public:
    explicit Clock(TimeMode mode);

    TimeMode Mode() const { return m_mode; }
    // Nanoseconds since the set booted.
    uint64_t NowNs() const;
    uint64_t NowMs() const { return NowNs() / 1000000; }
    // Virtual time only: moves the clock to an absolute time, never backwards.
    void SetNs(uint64_t ns);
    // A wait made by the library: real time sleeps, virtual time just moves on.
    void Sleep(uint64_t ns);

private:
    TimeMode m_mode;
    std::atomic<uint64_t> m_virtualNs{0};
    uint64_t m_realBootNs = 0;
};

}  // namespace sim
