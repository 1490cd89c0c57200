#include "Commands.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <future>
#include <sstream>
#include <thread>

#include "EventHelp.h"
#include "FactoryManager.h"
#include "MEvtHandle.h"
#include "Names.h"
#include "Notes.h"
#include "SimSet.h"

namespace factorysim {

namespace {

// The text after the first n words, as typed (values may hold blanks).
std::string After(const std::string& line, size_t n) {
    size_t pos = 0;
    for (size_t i = 0; i < n; ++i) {
        pos = line.find_first_not_of(" \t", pos);
        pos = line.find_first_of(" \t", pos);
        if (pos == std::string::npos) {
            return "";
        }
    }
    const auto first = line.find_first_not_of(" \t", pos);
    if (first == std::string::npos) {
        return "";
    }
    const auto last = line.find_last_not_of(" \t\r");
    return line.substr(first, last - first + 1);
}

std::string Unquote(const std::string& text) {
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
        return text.substr(1, text.size() - 2);
    }
    return text;
}

std::string Hex(unsigned long value) {
    char buf[24];
    std::snprintf(buf, sizeof(buf), "0x%lX", value);
    return buf;
}

std::atomic<bool> g_interrupted{false};

}  // namespace

void Commands::Interrupt() { g_interrupted = true; }

Commands::Commands(const SetFields& fields, FactoryManager* manager)
    : m_fields(fields), m_manager(manager) {}

const std::vector<Commands::Command>& Commands::Table() {
    static const std::vector<Command> table = {
        {"help", "help [command]",
         "lists the commands, or explains one; help event <id or name> says what its "
         "parameters mean",
         &Commands::Help},
        {"event", "event <id or name> [p1 [p2 [p3]]]",
         "posts a factory event (names: 'events'; ids decimal or 0x hex); events 43 and 45 "
         "carry a record built from the set, changed by field=value words (help event 43)",
         &Commands::Event},
        {"events", "events", "lists the factory events by id and name, marking unbuilt handlers",
         &Commands::EventList},
        {"key", "key <name or code>",
         "passes a key to the factory key dispatcher (names: 'help key')", &Commands::Key},
        {"at", "at <request>", "sends an AT request of the serial fixture (names: 'help at')",
         &Commands::At},
        {"set", "set <field> <value>", "changes the simulated set (fields: 'help set')",
         &Commands::SetField},
        {"get", "get <field>", "reads the simulated set", &Commands::GetField},
        {"wait", "wait <ms>", "lets the set's clock run on", &Commands::Wait},
        {"journal", "journal [text]",
         "prints the journal of platform calls and log lines (those containing text)",
         &Commands::Journal},
        {"expect", "expect <cmd> [data]",
         "checks that the page was sent cmd (with data) after the previous expect's match;\n"
         "      consumes it and what came before it (real time: waits for it)",
         &Commands::Expect},
        {"service", "service <command> [address]",
         "a service command, event 200 (step-up, step-down, step-up4, step-down4, e-d-mode, "
         "s-mode, rdrv, bdrv, read-bdrv, read-rdrv, show)",
         &Commands::Service},
        {"expect-none", "expect-none <cmd> [data]",
         "checks that nothing with cmd (and data) was sent after the previous match",
         &Commands::ExpectNone},
        {"quit", "quit", "leaves factory-sim", &Commands::Quit},
    };
    return table;
}

void Commands::OnEventThread(const std::function<void()>& work) {
    std::promise<void> done;
    std::future<void> finished = done.get_future();
    sim::Set::Instance().Loop().Invoke([&work, &done] {
        work();
        done.set_value();
    });
    finished.wait();
}

Outcome Commands::Execute(const std::string& line) {
    const Words words = SplitWords(line);
    if (words.empty() || words[0][0] == '#') {
        return {};
    }
    const Command* command = nullptr;
    for (const auto& c : Table()) {
        if (words[0] == c.name) {
            command = &c;
        }
    }
    if (command == nullptr) {
        return {false, "unknown command: " + words[0] + " (try: help)", false};
    }
    std::unique_lock<std::mutex> lock(m_mutex, std::defer_lock);
    // A real-time wait must not hold the other command sources back.
    const bool realWait = command->run == &Commands::Wait &&
                          sim::Set::Instance().GetClock().Mode() == sim::TimeMode::Real;
    if (!realWait) {
        lock.lock();
    }
    Outcome outcome;
    const std::string error = (this->*command->run)(words, After(line, 1), outcome.output);
    if (!error.empty()) {
        return {false, error, false};
    }
    outcome.quit = command->run == &Commands::Quit;
    return outcome;
}

std::string Commands::Help(const Words& w, const std::string&, std::string& out) {
    std::ostringstream text;
    if (w.size() == 1) {
        for (const auto& c : Table()) {
            text << "  " << c.usage << "\n      " << c.help << "\n";
        }
    } else if (w[1] == "key") {
        text << "keys:";
        for (const auto& k : Keys()) {
            text << " " << k.name << "=" << Hex(k.code);
        }
        text << "\n";
    } else if (w[1] == "at") {
        for (const auto& r : AtRequests()) {
            text << "  " << r.name << "  event " << r.event << ", " << r.meaning << "\n";
        }
    } else if (w[1] == "set" || w[1] == "get") {
        for (const auto& f : m_fields.All()) {
            text << "  " << f.name << (f.arg ? std::string("[<") + f.arg + ">]" : "") << "\n      "
                 << f.help << "\n";
        }
    } else if ((w[1] == "event" || w[1] == "events") && w.size() == 2) {
        return EventList(w, "", out);
    } else if (w[1] == "event") {
        return EventHelpText(w[2], out);
    } else {
        for (const auto& c : Table()) {
            if (w[1] == c.name) {
                text << "  " << c.usage << "\n      " << c.help << "\n";
            }
        }
        if (text.str().empty()) {
            return "no such command: " + w[1];
        }
    }
    out = text.str();
    return "";
}

std::string Commands::EventList(const Words&, const std::string&, std::string& out) {
    std::ostringstream text;
    for (const auto& e : Events()) {
        text << e.id << " " << e.shortName << "\n";
    }
    out = text.str();
    return "";
}

std::string Commands::EventHelpText(const std::string& word, std::string& out) {
    const auto id = FindEvent(word);
    if (!id) {
        return "unknown event: " + word + " (try: events)";
    }
    const EventName* event = nullptr;
    for (const auto& e : Events()) {
        if (e.id == *id) {
            event = &e;
        }
    }
    if (event == nullptr) {
        out = "event " + std::to_string(*id) + " has no handler: the framework's default answer\n";
        return "";
    }
    const std::string params = ParameterHelp(*id);
    out = "event " + std::to_string(*id) + " " + event->shortName + ", handler " + event->handler +
          "\n      " + (params.empty() ? "reads no parameter" : params) + "\n";
    return "";
}

void Commands::Post(unsigned int id, uintptr_t p1, uintptr_t p2, uintptr_t p3) {
    sim::Set::Instance().PostFactoryEvent(id, p1, p2, p3);
    // The event is queued behind what the loop already has: wait until it is handled.
    OnEventThread([] {});
}

std::string Commands::Event(const Words& w, const std::string&, std::string& out) {
    if (w.size() < 2 || w.size() > 5) {
        return "usage: event <id or name> [p1 [p2 [p3]]]";
    }
    const auto id = FindEvent(w[1]);
    if (!id) {
        return "unknown event: " + w[1] + " (try: events)";
    }
    uintptr_t p[3] = {0, 0, 0};
    if (EventRecord::Carries(*id)) {
        // Lives until Post returns, which is after the handler has read it.
        EventRecord record;
        std::string error;
        OnEventThread([&] { error = record.Build(*id, Words(w.begin() + 2, w.end())); });
        if (!error.empty()) {
            return error;
        }
        Post(*id, 0, record.Pointer(), 0);
        out = "event " + EventLabel(*id) + " delivered";
        return "";
    }
    for (size_t i = 2; i < w.size(); ++i) {
        const auto value = ParseNumber(w[i]);
        if (!value) {
            return "parameter " + std::to_string(i - 1) + " is not a number: " + w[i];
        }
        p[i - 2] = static_cast<uintptr_t>(*value);
    }
    Post(*id, p[0], p[1], p[2]);
    // Message 24 is a timer tick: its handler is the timer's, named by p2.
    out = *id == MEvtHandle::kTimerMessage ? TimerLabel(p[1]) + " delivered"
                                           : "event " + EventLabel(*id) + " delivered";
    return "";
}

std::string Commands::Key(const Words& w, const std::string&, std::string& out) {
    if (w.size() != 2) {
        return "usage: key <name or code>";
    }
    const auto code = FindKey(w[1]);
    if (!code) {
        return "unknown key: " + w[1] + " (try: help key)";
    }
    MAPI_BOOL consumed = 0;
    OnEventThread([&] { consumed = m_manager->FactoryDoKeyAction(*code); });
    out = "key " + w[1] + " (" + Hex(*code) + "): " + (consumed ? "consumed" : "not consumed");
    return "";
}

std::string Commands::At(const Words& w, const std::string&, std::string& out) {
    if (w.size() != 2) {
        return "usage: at <request> (try: help at)";
    }
    const AtRequest* request = FindAt(w[1]);
    if (request == nullptr) {
        return "unknown AT request: " + w[1] + " (try: help at)";
    }
    Post(request->event, 0, request->p2, 0);
    out = "at " + w[1] + ": event " + EventLabel(request->event) + " delivered";
    return "";
}

std::string Commands::SetField(const Words& w, const std::string& rest, std::string& out) {
    if (w.size() < 2) {
        return "usage: set <field> <value>";
    }
    // An empty value is a value: an empty file, an empty version string. Quotes are
    // taken off as expect takes them off, so `set F ""` is the empty text it expects.
    const std::string value = Unquote(After(rest, 1));
    std::string error;
    OnEventThread([&] { error = m_fields.Set(w[1], value); });
    if (error.empty()) {
        out = w[1] + " = " + value;
    }
    return error;
}

std::string Commands::GetField(const Words& w, const std::string&, std::string& out) {
    if (w.size() != 2) {
        return "usage: get <field>";
    }
    std::string value;
    std::string error;
    OnEventThread([&] { error = m_fields.Get(w[1], value); });
    if (error.empty()) {
        out = w[1] + " = " + value;
    }
    return error;
}

std::string Commands::Wait(const Words& w, const std::string&, std::string& out) {
    const auto ms = w.size() == 2 ? ParseNumber(w[1]) : std::nullopt;
    if (!ms || *ms > 7ULL * 24 * 3600 * 1000) {
        return "usage: wait <ms> (at most a week)";
    }
    sim::Set& set = sim::Set::Instance();
    if (set.GetClock().Mode() == sim::TimeMode::Virtual) {
        OnEventThread([&] { set.Advance(*ms); });
    } else {
        const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(*ms);
        while (!g_interrupted && std::chrono::steady_clock::now() < until) {
            std::this_thread::sleep_for(std::min<std::chrono::steady_clock::duration>(
                std::chrono::milliseconds(20), until - std::chrono::steady_clock::now()));
        }
    }
    out = "t = " + std::to_string(set.NowMs()) + " ms";
    return "";
}

std::string Commands::Journal(const Words&, const std::string& rest, std::string& out) {
    std::ostringstream text;
    for (const auto& e : sim::Set::Instance().GetJournal().Entries()) {
        const std::string line = e.kind == "call" ? e.fn + " " + e.args : e.args;
        if (!rest.empty() && line.find(rest) == std::string::npos) {
            continue;
        }
        text << e.tMs << " " << e.kind << " " << line << "\n";
    }
    out = text.str();
    return "";
}

namespace {

struct Expected {
    std::string cmd;
    bool anyData = true;
    std::string data;
    bool Matches(const Note& n) const { return n.cmd == cmd && (anyData || n.data == data); }
    std::string Text() const { return cmd + (anyData ? "" : " = " + data); }
};

std::string Describe(const std::vector<Note>& notes) {
    constexpr size_t kShown = 20;
    std::string seen;
    for (size_t i = 0; i < notes.size() && i < kShown; ++i) {
        seen += (seen.empty() ? "" : ", ") + notes[i].cmd + "=" + notes[i].data;
    }
    if (notes.size() > kShown) {
        seen += ", ... (" + std::to_string(notes.size() - kShown) + " more)";
    }
    return seen.empty() ? "nothing" : seen;
}

}  // namespace

std::string Commands::Expect(const Words& w, const std::string& rest, std::string& out) {
    if (w.size() < 2) {
        return "usage: expect <cmd> [data]";
    }
    const Expected expected{w[1], w.size() == 2, Unquote(After(rest, 1))};
    const bool realTime = sim::Set::Instance().GetClock().Mode() == sim::TimeMode::Real;
    const auto deadline = std::chrono::steady_clock::now() +
                          std::chrono::milliseconds(realTime ? m_expectTimeoutMs : 0);
    for (;;) {
        // A piece of work on the event thread ends with the page settled: every
        // notification sent so far is queued.
        OnEventThread([] {});
        if (auto found = Notes::TakeFirst([&](const Note& n) { return expected.Matches(n); })) {
            out = "seen " + found->cmd + " = " + found->data;
            return "";
        }
        const auto now = std::chrono::steady_clock::now();
        if (now >= deadline || g_interrupted) {
            break;
        }
        Notes::WaitForNew(std::min(deadline, now + std::chrono::milliseconds(100)));
    }
    return "expected " + expected.Text() +
           ", sent since the previous match: " + Describe(Notes::Pending());
}

std::string Commands::ExpectNone(const Words& w, const std::string& rest, std::string& out) {
    if (w.size() < 2) {
        return "usage: expect-none <cmd> [data]";
    }
    const Expected unwanted{w[1], w.size() == 2, Unquote(After(rest, 1))};
    OnEventThread([] {});
    for (const auto& n : Notes::Pending()) {
        if (unwanted.Matches(n)) {
            return "expected no " + unwanted.Text() + ", but " + n.cmd + " = " + n.data +
                   " was sent";
        }
    }
    out = "no " + unwanted.Text();
    return "";
}

std::string Commands::Quit(const Words&, const std::string&, std::string&) { return ""; }

}  // namespace factorysim
