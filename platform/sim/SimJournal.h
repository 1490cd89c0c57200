// The journal of the simulated set: every platform call the library makes and
// every line it logs, stamped with the set's clock.
#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

namespace sim {

struct JournalEntry {
    uint64_t tMs = 0;
    std::string kind;             // "call" or "log"
    std::string fn;               // Class::Method for a call; empty for a log line
    std::string args;             // a JSON array for a call; the text for a log line
    unsigned long long mask = 0;  // log lines only
};

std::string JsonQuote(const std::string& text);

// Renders call arguments as a JSON array: numbers as numbers, text as strings.
class ArgList {
public:
    template <class... T>
    explicit ArgList(const T&... values) {
        (Add(values), ...);
    }
    std::string Json() const { return "[" + m_text + "]"; }

private:
    void Add(const char* text) { Append(text ? JsonQuote(text) : "null"); }
    void Add(char* text) { Add(static_cast<const char*>(text)); }
    void Add(const std::string& text) { Append(JsonQuote(text)); }
    void Add(bool value) { Append(value ? "true" : "false"); }
    template <class T, std::enable_if_t<std::is_arithmetic<T>::value, int> = 0>
    void Add(T value) {
        std::ostringstream out;
        out << +value;
        Append(out.str());
    }
    template <class T, std::enable_if_t<std::is_enum<T>::value, int> = 0>
    void Add(T value) {
        Add(static_cast<long long>(value));
    }
    void Append(const std::string& item) { m_text += (m_text.empty() ? "" : ", ") + item; }
    std::string m_text;
};

class Journal {
public:
    using Sink = std::function<void(const JournalEntry&)>;

    void Call(uint64_t tMs, const std::string& fn, const ArgList& args);
    void Log(uint64_t tMs, unsigned long long mask, const std::string& text);

    std::vector<JournalEntry> Entries() const;
    // The calls of one platform function, in order.
    std::vector<JournalEntry> Calls(const std::string& fn) const;
    size_t CountCalls(const std::string& fn) const { return Calls(fn).size(); }
    // Whether a log line containing the text was written.
    bool HasLog(const std::string& text) const;
    void Clear();
    // Sees every entry as it is written (factory-sim's trace and console).
    void SetSink(Sink sink);
    // Keeps only about the newest entries, and of them only about `bytes` of text
    // (factory-sim, whose trace holds them all: a client may send long lines);
    // 0, the default, keeps everything.
    void SetWindow(size_t entries, size_t bytes = 0);

private:
    void Add(JournalEntry entry);
    static size_t Size(const JournalEntry& entry);

    mutable std::mutex m_mutex;
    std::vector<JournalEntry> m_entries;
    size_t m_window = 0;
    size_t m_byteWindow = 0;
    size_t m_bytes = 0;  // the text of m_entries
    Sink m_sink;
};

}  // namespace sim
