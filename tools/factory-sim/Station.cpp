#include "Station.h"

#include <chrono>
#include <ctime>
#include <sstream>

#include "Names.h"

namespace factorysim {

namespace {

// The run keeps this many of its notifications for a failing step's attachment.
constexpr size_t kRecentNotes = 50;

}  // namespace

const char* OutcomeName(StepOutcome outcome) {
    switch (outcome) {
        case StepOutcome::Pass:
            return "PASS";
        case StepOutcome::Fail:
            return "FAIL";
        case StepOutcome::Error:
            return "ERROR";
    }
    return "ERROR";
}

std::string WallClockNow() {
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    const auto ms =
        std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() %
        1000;
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    char text[40];
    std::strftime(text, sizeof(text), "%Y-%m-%dT%H:%M:%S", &utc);
    char withMs[48];
    std::snprintf(withMs, sizeof(withMs), "%s.%03dZ", text, static_cast<int>(ms));
    return withMs;
}

std::optional<std::string> Station::PhaseName(const std::string& line) {
    const std::string text = Trim(line);
    if (text.rfind("phase", 0) != 0 || (text.size() > 5 && text[5] != ' ' && text[5] != '\t')) {
        return std::nullopt;
    }
    return Trim(text.substr(5));
}

void Station::Begin(const std::string& stationName, const std::string& scriptPath,
                    const std::string& scriptText, uint64_t nowMs) {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_station = stationName;
    m_script = scriptPath;
    m_startWall = WallClockNow();
    m_startMs = nowMs;
    m_endMs = nowMs;
    m_running = true;
    // Every phase is listed from the start, so that one never reached shows as skipped.
    std::istringstream in(scriptText);
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (auto name = PhaseName(line); name && !name->empty()) {
            Phase phase;
            phase.name = *name;
            phase.line = number;
            m_phases.push_back(phase);
        }
    }
}

Phase* Station::FindPhase(const std::string& name) {
    for (Phase& phase : m_phases) {
        if (phase.name == name && !phase.reached) {
            return &phase;
        }
    }
    return nullptr;
}

void Station::BeginPhase(int line, const std::string& name, uint64_t nowMs) {
    std::lock_guard<std::mutex> lock(m_mutex);
    for (Phase& phase : m_phases) {
        if (phase.reached && phase.name == m_phase && !phase.outcome) {
            phase.outcome = StepOutcome::Pass;
        }
    }
    Phase* phase = nullptr;
    for (Phase& p : m_phases) {
        if (p.line == line) {
            phase = &p;
        }
    }
    if (phase == nullptr) {
        phase = FindPhase(name);
    }
    if (phase == nullptr) {
        Phase added;
        added.name = name;
        added.line = line;
        m_phases.push_back(added);
        phase = &m_phases.back();
    }
    phase->reached = true;
    phase->startMs = nowMs;
    phase->endMs = nowMs;
    m_phase = name;
}

void Station::BeginStep(int line, const std::string& text, uint64_t nowMs) {
    std::lock_guard<std::mutex> lock(m_mutex);
    Step step;
    step.line = line;
    step.text = Trim(text);
    step.phase = m_phase;
    step.startMs = nowMs;
    step.endMs = nowMs;
    m_steps.push_back(std::move(step));
    m_inStep = true;
}

void Station::OnTraceLine(const std::string& kind, const std::string& json) {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (kind == "notify") {
        m_recentNotes.push_back(json);
        if (m_recentNotes.size() > kRecentNotes) {
            m_recentNotes.erase(m_recentNotes.begin());
        }
    }
    if (!m_inStep || m_steps.empty()) {
        return;
    }
    Step& step = m_steps.back();
    if (kind == "notify") {
        step.notifications.push_back(json);
    } else if (kind == "call") {
        step.calls.push_back(json);
    } else if (kind == "listener") {
        step.listener.push_back(json);
    } else if (kind == "console") {
        step.console.push_back(json);
    }
}

void Station::EndStep(bool ok, const std::string& output, uint64_t nowMs) {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_steps.empty()) {
        return;
    }
    m_inStep = false;
    Step& step = m_steps.back();
    step.endMs = nowMs;
    step.output = output;
    const std::vector<std::string> words = SplitWords(step.text);
    const bool isExpect = !words.empty() && (words[0] == "expect" || words[0] == "expect-none");
    if (ok) {
        step.outcome = StepOutcome::Pass;
    } else if (isExpect) {
        // A station's check that did not hold is a failure; anything else that went
        // wrong (a mistyped line, an unknown event) means the script could not run.
        step.outcome = StepOutcome::Fail;
        // "expected X, sent since the previous match: Y" or "expected no X, but Y was sent".
        const std::string since = ", sent since the previous match: ";
        const std::string but = ", but ";
        const std::string lead = "expected ";
        const size_t from = output.rfind(lead, 0) == 0 ? lead.size() : 0;
        if (const auto at = output.find(since); at != std::string::npos) {
            step.expected = output.substr(from, at - from);
            step.received = output.substr(at + since.size());
        } else if (const auto b = output.find(but); b != std::string::npos) {
            step.expected = output.substr(from, b - from);
            step.received = output.substr(b + but.size());
            const std::string sent = " was sent";
            if (step.received.size() > sent.size() &&
                step.received.compare(step.received.size() - sent.size(), sent.size(), sent) == 0) {
                step.received.resize(step.received.size() - sent.size());
            }
        } else {
            step.expected = Trim(step.text.substr(words[0].size()));
            step.received = output;
        }
    } else {
        step.outcome = StepOutcome::Error;
        m_error = "line " + std::to_string(step.line) + ": " + output;
    }
    for (Phase& phase : m_phases) {
        if (phase.reached && phase.name == m_phase) {
            phase.endMs = nowMs;
            if (step.outcome != StepOutcome::Pass &&
                (!phase.outcome || *phase.outcome == StepOutcome::Pass)) {
                phase.outcome = step.outcome;
            }
        }
    }
}

void Station::Abort(const std::string& reason, uint64_t nowMs) {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_error.empty()) {
        m_error = reason;
    }
    m_endMs = nowMs;
}

void Station::End(uint64_t nowMs) {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_endWall = WallClockNow();
    m_endMs = nowMs;
    m_running = false;
    m_inStep = false;
    for (Phase& phase : m_phases) {
        if (phase.reached && !phase.outcome) {
            phase.outcome =
                m_error.empty() || phase.name != m_phase ? StepOutcome::Pass : StepOutcome::Error;
        }
    }
}

void Station::SetIdentityRead(SetIdentity identity) {
    std::lock_guard<std::mutex> lock(m_mutex);
    m_identity = std::move(identity);
}

void Station::AddAttachment(const Attachment& attachment) {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_steps.empty()) {
        m_steps.back().attachments.push_back(attachment);
    }
}

std::vector<std::string> Station::LastNotifications(size_t count) const {
    std::lock_guard<std::mutex> lock(m_mutex);
    const size_t from = m_recentNotes.size() > count ? m_recentNotes.size() - count : 0;
    return {m_recentNotes.begin() + static_cast<long>(from), m_recentNotes.end()};
}

StepOutcome Station::Outcome() const {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_error.empty()) {
        return StepOutcome::Error;
    }
    for (const Step& step : m_steps) {
        if (step.outcome != StepOutcome::Pass) {
            return step.outcome;
        }
    }
    return StepOutcome::Pass;
}

Progress Station::CurrentProgress(uint64_t nowMs) const {
    std::lock_guard<std::mutex> lock(m_mutex);
    Progress p;
    p.running = m_running;
    p.script = m_script;
    p.phase = m_phase;
    p.nowMs = nowMs;
    for (const Step& step : m_steps) {
        if (&step == &m_steps.back() && m_inStep) {
            break;
        }
        (step.outcome == StepOutcome::Pass ? p.passed : p.failed) += 1;
    }
    if (!m_steps.empty()) {
        const Step& step = m_steps.back();
        p.line = step.line;
        p.text = step.text;
        const std::vector<std::string> words = SplitWords(step.text);
        if (m_inStep && words.size() >= 2 && words[0] == "wait") {
            if (const auto ms = ParseNumber(words[1])) {
                p.wait = std::make_pair(step.startMs, step.startMs + *ms);
            }
        }
    }
    return p;
}

}  // namespace factorysim
