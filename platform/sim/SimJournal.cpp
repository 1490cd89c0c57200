#include "SimJournal.h"

#include <cstdio>

namespace sim {

std::string JsonQuote(const std::string& text) {
    std::string out = "\"";
    for (unsigned char c : text) {
        switch (c) {
            case '"':
                out += "\\\"";
                break;
            case '\\':
                out += "\\\\";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            case '\t':
                out += "\\t";
                break;
            default:
                if (c < 0x20) {
                    char buf[8];
                    std::snprintf(buf, sizeof(buf), "\\u%04x", c);
                    out += buf;
                } else {
                    out += static_cast<char>(c);
                }
        }
    }
    return out + "\"";
}

void Journal::Call(uint64_t tMs, const std::string& fn, const ArgList& args) {
    Add({tMs, "call", fn, args.Json(), 0});
}

void Journal::Log(uint64_t tMs, unsigned long long mask, const std::string& text) {
    Add({tMs, "log", "", text, mask});
}

size_t Journal::Size(const JournalEntry& entry) {
    return sizeof entry + entry.kind.size() + entry.fn.size() + entry.args.size();
}

void Journal::Add(JournalEntry entry) {
    Sink sink;
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_bytes += Size(entry);
        m_entries.push_back(entry);
        // Trimmed in halves, so that a long run pays for it once per window.
        const bool overEntries = m_window != 0 && m_entries.size() > 2 * m_window;
        const bool overBytes = m_byteWindow != 0 && m_bytes > 2 * m_byteWindow;
        if (overEntries || overBytes) {
            auto keep = m_entries.begin();
            while (keep != m_entries.end() &&
                   ((m_window != 0 && static_cast<size_t>(m_entries.end() - keep) > m_window) ||
                    (m_byteWindow != 0 && m_bytes > m_byteWindow))) {
                m_bytes -= Size(*keep);
                ++keep;
            }
            m_entries.erase(m_entries.begin(), keep);
        }
        sink = m_sink;
    }
    if (sink) {
        sink(entry);
    }
}

std::vector<JournalEntry> Journal::Entries() const {
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_entries;
}

std::vector<JournalEntry> Journal::Calls(const std::string& fn) const {
    std::lock_guard<std::mutex> lock(m_mutex);
    std::vector<JournalEntry> out;
    for (const auto& e : m_entries) {
        if (e.kind == "call" && e.fn == fn) {
            out.push_back(e);
        }
    }
    return out;
}

bool Journal::HasLog(const std::string& text) const {
    std::lock_guard<std::mutex> lock(m_mutex);
    for (const auto& e : m_entries) {
        if (e.kind == "log" && e.args.find(text) != std::string::npos) {
            return true;
        }
    }
    return false;
}

void Journal::Clear() {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_entries.clear();
    m_bytes = 0;
}

void Journal::SetWindow(size_t entries, size_t bytes) {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_window = entries;
    m_byteWindow = bytes;
}

void Journal::SetSink(Sink sink) {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_sink = std::move(sink);
}

}  // namespace sim
