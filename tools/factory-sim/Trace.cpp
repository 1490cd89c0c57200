#include "Trace.h"

#include <json-c/json.h>

namespace factorysim {

namespace {

// A JSON string as json-c writes it; slashes stay as they are, as the trace is read
// by people as much as by tools. Lines are put together from such pieces rather than
// built as json-c objects: a long virtual run writes hundreds of thousands of them,
// and whole objects cost a tick several times what the set's work does.
std::string Quote(const std::string& text) {
    json_object* value = json_object_new_string_len(text.data(), static_cast<int>(text.size()));
    std::string out = json_object_to_json_string_ext(
        value, JSON_C_TO_STRING_PLAIN | JSON_C_TO_STRING_NOSLASHESCAPE);
    json_object_put(value);
    return out;
}

bool IsDecimal(const std::string& text) {
    size_t digits = text.size() > 1 && text[0] == '-' ? 1 : 0;
    if (digits == text.size()) {
        return false;
    }
    for (; digits < text.size(); ++digits) {
        if (text[digits] < '0' || text[digits] > '9') {
            return false;
        }
    }
    return true;
}

}  // namespace

bool Trace::Open(const std::string& path) {
    m_out.open(path, std::ios::out | std::ios::trunc);
    return m_out.is_open();
}

void Trace::Write(uint64_t tMs, const char* kind, const std::string& rest) {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (!Wanted()) {
        return;
    }
    const std::string line =
        "{\"t\":" + std::to_string(tMs) + ",\"kind\":\"" + kind + '"' + rest + "}";
    if (m_observer) {
        m_observer(kind, line);
    }
    if (!m_out.is_open()) {
        return;
    }
    m_out << line << '\n';
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
    if (!Wanted()) {
        return;
    }
    // Numeric data is the decimal the page parsed; anything else would not be JSON.
    const std::string value = !numeric ? Quote(data) : IsDecimal(data) ? data : "null";
    Write(tMs, "notify",
          ",\"channel\":" + std::to_string(channel) + ",\"cmd\":" + Quote(cmd) +
              ",\"data\":" + value);
}

void Trace::Call(uint64_t tMs, const std::string& fn, const std::string& argsJson) {
    if (!Wanted()) {
        return;
    }
    // The journal writes its argument lists as JSON arrays already.
    Write(tMs, "call", ",\"fn\":" + Quote(fn) + ",\"args\":" + argsJson);
}

void Trace::Listener(uint64_t tMs, unsigned long code) {
    Write(tMs, "listener", ",\"code\":" + std::to_string(code));
}

void Trace::Log(uint64_t tMs, unsigned long long mask, const std::string& text) {
    if (!Wanted()) {
        return;
    }
    Write(tMs, "log", ",\"mask\":" + std::to_string(mask) + ",\"text\":" + Quote(text));
}

void Trace::Console(uint64_t tMs, const std::string& text) {
    if (!Wanted()) {
        return;
    }
    Write(tMs, "console", ",\"text\":" + Quote(text));
}

}  // namespace factorysim
