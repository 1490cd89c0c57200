#include "Compare.h"

#include <json-c/json.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <map>
#include <sstream>

namespace factorysim {

void GoldenTrace::SetRules(const std::string& rootFolder, const std::vector<int>& ports) {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_root = rootFolder;
    m_ports = ports;
}

std::string GoldenTrace::Normalize(const std::string& kind, const std::string& line) const {
    if (kind == "log") {
        return "";
    }
    std::string out = line;
    const auto replaceAll = [&out](const std::string& from, const std::string& to) {
        if (from.empty()) {
            return;
        }
        for (size_t at = out.find(from); at != std::string::npos;
             at = out.find(from, at + to.size())) {
            out.replace(at, from.size(), to);
        }
    };
    replaceAll(m_root, "<root>");
    for (const int port : m_ports) {
        // Only as a URL's or an address's port: the same digits elsewhere are data.
        for (size_t at = out.find(":" + std::to_string(port)); at != std::string::npos;
             at = out.find(":" + std::to_string(port), at + 1)) {
            const size_t end = at + 1 + std::to_string(port).size();
            if (end >= out.size() || !std::isdigit(static_cast<unsigned char>(out[end]))) {
                out.replace(at, end - at, ":<port>");
            }
        }
    }
    return out;
}

void GoldenTrace::Add(const std::string& kind, const std::string& line) {
    std::lock_guard<std::mutex> lock(m_mutex);
    // Made neutral at the end: the set's root and ports are known only once it runs,
    // after its first lines.
    if (kind != "log") {
        m_lines.push_back(line);
    }
}

std::vector<std::string> GoldenTrace::Lines() const {
    std::lock_guard<std::mutex> lock(m_mutex);
    std::vector<std::string> lines;
    lines.reserve(m_lines.size());
    for (const std::string& line : m_lines) {
        lines.push_back(Normalize("", line));
    }
    return Canonical(std::move(lines));
}

namespace {

// The trace writes "t" and "kind" first; anything else sorts as a call would.
int Rank(const std::string& line, std::string& t) {
    const std::string tKey = "{\"t\":";
    const std::string kindKey = ",\"kind\":\"";
    if (line.rfind(tKey, 0) != 0) {
        return -1;
    }
    const auto kindAt = line.find(kindKey);
    if (kindAt == std::string::npos) {
        return -1;
    }
    t = line.substr(tKey.size(), kindAt - tKey.size());
    const std::string rest = line.substr(kindAt + kindKey.size());
    for (const auto& [kind, rank] : {std::make_pair("notify\"", 0), std::make_pair("listener\"", 1),
                                     std::make_pair("console\"", 2)}) {
        if (rest.rfind(kind, 0) == 0) {
            return rank;
        }
    }
    return -1;
}

}  // namespace

std::vector<std::string> Canonical(std::vector<std::string> lines) {
    size_t i = 0;
    while (i < lines.size()) {
        std::string t;
        if (Rank(lines[i], t) < 0) {
            ++i;
            continue;
        }
        size_t end = i + 1;
        std::string next;
        while (end < lines.size() && Rank(lines[end], next) >= 0 && next == t) {
            ++end;
        }
        std::stable_sort(lines.begin() + static_cast<long>(i),
                         lines.begin() + static_cast<long>(end),
                         [](const std::string& a, const std::string& b) {
                             std::string ta;
                             std::string tb;
                             return Rank(a, ta) < Rank(b, tb);
                         });
        i = end;
    }
    return lines;
}

bool ReadLines(const std::string& path, std::vector<std::string>& lines) {
    std::ifstream in(path);
    if (!in) {
        return false;
    }
    for (std::string line; std::getline(in, line);) {
        if (!line.empty()) {
            lines.push_back(line);
        }
    }
    return true;
}

bool WriteLines(const std::string& path, const std::vector<std::string>& lines) {
    std::ofstream out(path, std::ios::trunc);
    for (const std::string& line : lines) {
        out << line << "\n";
    }
    out.flush();
    return static_cast<bool>(out);
}

namespace {

// One event's parts that the summary groups by.
struct Event {
    std::string kind;
    std::string key;    // notification: cmd; call: fn; others: the kind
    std::string value;  // what must match: data or args, and the time
    std::string shown;  // for the reader
};

std::string Field(json_object* obj, const char* name) {
    json_object* v = nullptr;
    if (!json_object_object_get_ex(obj, name, &v)) {
        return "";
    }
    return json_object_to_json_string_ext(v,
                                          JSON_C_TO_STRING_PLAIN | JSON_C_TO_STRING_NOSLASHESCAPE);
}

Event Parse(const std::string& line) {
    Event e;
    json_object* obj = json_tokener_parse(line.c_str());
    if (obj == nullptr || !json_object_is_type(obj, json_type_object)) {
        if (obj != nullptr) {
            json_object_put(obj);
        }
        e.kind = e.key = "unreadable";
        e.value = e.shown = line;
        return e;
    }
    json_object* kind = nullptr;
    json_object_object_get_ex(obj, "kind", &kind);
    e.kind = kind != nullptr ? json_object_get_string(kind) : "";
    const std::string t = Field(obj, "t");
    if (e.kind == "notify") {
        json_object* cmd = nullptr;
        json_object_object_get_ex(obj, "cmd", &cmd);
        e.key = cmd != nullptr ? json_object_get_string(cmd) : "";
        e.value = Field(obj, "data") + " at " + t + " ms";
    } else if (e.kind == "call") {
        json_object* fn = nullptr;
        json_object_object_get_ex(obj, "fn", &fn);
        e.key = fn != nullptr ? json_object_get_string(fn) : "";
        e.value = Field(obj, "args") + " at " + t + " ms";
    } else {
        e.key = e.kind;
        e.value = line;
    }
    e.shown = e.key + " " + e.value;
    json_object_put(obj);
    return e;
}

struct Tally {
    size_t changed = 0;
    size_t missing = 0;
    size_t extra = 0;
    std::vector<std::string> details;
};

std::string Ordinal(size_t n) {
    const size_t tens = n % 100;
    const char* suffix = (tens >= 11 && tens <= 13) ? "th"
                         : n % 10 == 1              ? "st"
                         : n % 10 == 2              ? "nd"
                         : n % 10 == 3              ? "rd"
                                                    : "th";
    return std::to_string(n) + suffix;
}

// The n-th event of a key in the golden against the n-th of the same key in the run.
void TallyKind(const std::vector<Event>& golden, const std::vector<Event>& run,
               const std::string& kind, const std::string& noun, Tally& tally) {
    std::map<std::string, std::pair<std::vector<std::string>, std::vector<std::string>>> byKey;
    std::vector<std::string> order;
    const auto collect = [&](const std::vector<Event>& events, bool isGolden) {
        for (const Event& e : events) {
            if (e.kind != kind) {
                continue;
            }
            auto& slot = byKey[e.key];
            if (slot.first.empty() && slot.second.empty()) {
                order.push_back(e.key);
            }
            (isGolden ? slot.first : slot.second).push_back(e.value);
        }
    };
    collect(golden, true);
    collect(run, false);
    constexpr size_t kDetails = 10;
    const auto detail = [&tally](const std::string& text) {
        if (tally.details.size() < kDetails) {
            tally.details.push_back(text);
        }
    };
    for (const std::string& key : order) {
        const auto& [g, r] = byKey[key];
        for (size_t i = 0; i < std::max(g.size(), r.size()); ++i) {
            const std::string which = noun + " " + key + " (" + Ordinal(i + 1) + ")";
            if (i >= r.size()) {
                ++tally.missing;
                detail("missing " + which + ": " + g[i]);
            } else if (i >= g.size()) {
                ++tally.extra;
                detail("extra " + which + ": " + r[i]);
            } else if (g[i] != r[i]) {
                ++tally.changed;
                detail("changed " + which + ": golden " + g[i] + ", this run " + r[i]);
            }
        }
    }
}

size_t CountDiffering(const std::vector<Event>& golden, const std::vector<Event>& run,
                      const std::string& kind) {
    std::vector<std::string> g;
    std::vector<std::string> r;
    for (const Event& e : golden) {
        if (e.kind == kind) g.push_back(e.value);
    }
    for (const Event& e : run) {
        if (e.kind == kind) r.push_back(e.value);
    }
    size_t differ = g.size() > r.size() ? g.size() - r.size() : r.size() - g.size();
    for (size_t i = 0; i < std::min(g.size(), r.size()); ++i) {
        differ += g[i] != r[i] ? 1 : 0;
    }
    return differ;
}

void Context(std::ostringstream& out, const std::vector<std::string>& lines, size_t at,
             size_t context) {
    const size_t from = at > context ? at - context : 0;
    const size_t to = std::min(lines.size(), at + context + 1);
    for (size_t i = from; i < to; ++i) {
        out << (i == at ? "  > " : "    ") << (i + 1) << "  " << lines[i] << "\n";
    }
    if (at >= lines.size()) {
        out << "  > " << (at + 1) << "  (end of trace)\n";
    }
}

}  // namespace

std::string CompareTraces(const std::vector<std::string>& golden,
                          const std::vector<std::string>& run, size_t context) {
    size_t at = 0;
    while (at < golden.size() && at < run.size() && golden[at] == run[at]) {
        ++at;
    }
    if (at == golden.size() && at == run.size()) {
        return "";
    }
    std::ostringstream out;
    out << "the trace differs from the golden one at event " << (at + 1) << " (golden "
        << golden.size() << " events, this run " << run.size() << "):\n"
        << "  golden:\n";
    Context(out, golden, at, context);
    out << "  this run:\n";
    Context(out, run, at, context);

    std::vector<Event> g;
    std::vector<Event> r;
    for (const std::string& line : golden) g.push_back(Parse(line));
    for (const std::string& line : run) r.push_back(Parse(line));
    Tally notes;
    Tally calls;
    TallyKind(g, r, "notify", "notification", notes);
    TallyKind(g, r, "call", "call", calls);
    out << "summary: notifications " << notes.missing << " missing, " << notes.extra << " extra, "
        << notes.changed << " changed; calls " << calls.missing << " missing, " << calls.extra
        << " extra, " << calls.changed << " changed; listener codes "
        << CountDiffering(g, r, "listener") << " differ; console lines "
        << CountDiffering(g, r, "console") << " differ\n";
    for (const Tally* tally : {&notes, &calls}) {
        for (const std::string& d : tally->details) {
            out << "  " << d << "\n";
        }
    }
    return out.str();
}

}  // namespace factorysim
