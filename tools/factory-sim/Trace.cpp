#include "Trace.h"

#include "SimJournal.h"

namespace factorysim {

using sim::JsonQuote;

bool Trace::Open(const std::string& path) {
    m_out.open(path, std::ios::out | std::ios::trunc);
    return m_out.is_open();
}

void Trace::Write(uint64_t tMs, const std::string& kind, const std::string& rest) {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_out.is_open()) {
        return;
    }
    m_out << "{\"t\":" << tMs << ",\"kind\":" << JsonQuote(kind) << rest << "}\n";
    const auto now = std::chrono::steady_clock::now();
    if (m_everyLine || now - m_flushed >= std::chrono::milliseconds(100)) {
        m_out.flush();
        m_flushed = now;
    }
}

void Trace::FlushEveryLine(bool on) {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_everyLine = on;
}

void Trace::Flush() {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_out.is_open()) {
        m_out.flush();
        m_flushed = std::chrono::steady_clock::now();
    }
}

void Trace::Notify(uint64_t tMs, int channel, const std::string& cmd, const std::string& data,
                   bool numeric) {
    const std::string value = numeric ? data : JsonQuote(data);
    Write(tMs, "notify",
          ",\"channel\":" + std::to_string(channel) + ",\"cmd\":" + JsonQuote(cmd) +
              ",\"data\":" + (value.empty() ? "null" : value));
}

void Trace::Call(uint64_t tMs, const std::string& fn, const std::string& argsJson) {
    Write(tMs, "call", ",\"fn\":" + JsonQuote(fn) + ",\"args\":" + argsJson);
}

void Trace::Listener(uint64_t tMs, unsigned long code) {
    Write(tMs, "listener", ",\"code\":" + std::to_string(code));
}

void Trace::Log(uint64_t tMs, unsigned long long mask, const std::string& text) {
    Write(tMs, "log", ",\"mask\":" + std::to_string(mask) + ",\"text\":" + JsonQuote(text));
}

void Trace::Console(uint64_t tMs, const std::string& text) {
    Write(tMs, "console", ",\"text\":" + JsonQuote(text));
}

}  // namespace factorysim
