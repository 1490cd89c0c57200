// The --trace file: JSON Lines, one object per line, each stamped with the set's
// clock. Its fields are a contract with line-station tools (README, "Trace").
#pragma once

#include <chrono>
#include <cstdint>
#include <fstream>
#include <functional>
#include <mutex>
#include <string>

namespace factorysim {

class Trace {
public:
    // Without a path the trace records nothing. False when the file cannot be made.
    bool Open(const std::string& path);
    bool IsOpen() const { return m_out.is_open(); }
    // Sees every line (kind, JSON object) whether or not a file is open; set before
    // the set starts.
    using Observer = std::function<void(const std::string& kind, const std::string& line)>;
    void SetObserver(Observer observer) { m_observer = std::move(observer); }

    void Notify(uint64_t tMs, int channel, const std::string& cmd, const std::string& data,
                bool numeric);
    void Call(uint64_t tMs, const std::string& fn, const std::string& argsJson);
    void Listener(uint64_t tMs, unsigned long code);
    void Log(uint64_t tMs, unsigned long long mask, const std::string& text);
    void Console(uint64_t tMs, const std::string& text);
    // Per line (a station tails the file in real time), or in blocks with a flush at
    // least every tenth of a second and at each Flush (virtual time: a long run would
    // spend its time in write calls).
    void FlushEveryLine(bool on);
    void Flush();

private:
    // Lines are put together only when a file or the observer takes them.
    bool Wanted() const { return m_out.is_open() || m_observer != nullptr; }
    void Write(uint64_t tMs, const char* kind, const std::string& rest);

    std::mutex m_mutex;
    std::ofstream m_out;
    Observer m_observer;
    bool m_everyLine = true;
    std::chrono::steady_clock::time_point m_flushed{};
};

}  // namespace factorysim
