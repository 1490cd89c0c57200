// The --trace file: JSON Lines, one object per line, each stamped with the set's
// clock. Its fields are a contract with line-station tools (README, "Trace").
#pragma once

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

private:
    void Write(uint64_t tMs, const std::string& kind, const std::string& rest);

    std::mutex m_mutex;
    std::ofstream m_out;
    Observer m_observer;
};

}  // namespace factorysim
