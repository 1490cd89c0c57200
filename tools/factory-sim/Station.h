// A line station's view of a script run: each script line is a step with its
// outcome and the events (notifications, calls, listener codes, console lines) that
// happened while it ran; `phase NAME` lines group steps. The record (Record.cpp),
// the JUnit report (Junit.cpp) and the progress query are all read from here.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace factorysim {

enum class StepOutcome { Pass, Fail, Error };
const char* OutcomeName(StepOutcome outcome);

struct Attachment {
    std::string name;  // "native-layer", "last-notifications"
    std::string path;  // as written, absolute
    std::string type;  // media type
};

struct Step {
    int line = 0;
    std::string text;
    std::string phase;  // empty outside any phase
    StepOutcome outcome = StepOutcome::Pass;
    uint64_t startMs = 0;
    uint64_t endMs = 0;
    std::string output;    // what the command printed, or why it failed
    std::string expected;  // a failing expect: what it waited for
    std::string received;  // ... and what arrived instead
    // Trace events, each a JSON object as the trace writes it, by kind.
    std::vector<std::string> notifications;
    std::vector<std::string> calls;
    std::vector<std::string> listener;
    std::vector<std::string> console;
    std::vector<Attachment> attachments;
};

struct Phase {
    std::string name;
    int line = 0;
    bool reached = false;
    uint64_t startMs = 0;
    uint64_t endMs = 0;
    // Pass unless one of its steps failed; a phase never reached is "SKIPPED".
    std::optional<StepOutcome> outcome;
};

struct SetIdentity {
    std::string model;
    std::string serial;
    std::string mac;
    bool read = false;
};

// What a page may show while the script runs.
struct Progress {
    bool running = false;
    std::string script;
    std::string phase;
    int line = 0;
    std::string text;
    int passed = 0;
    int failed = 0;
    uint64_t nowMs = 0;
    // A wait in progress: its start and end on the set's clock.
    std::optional<std::pair<uint64_t, uint64_t>> wait;
};

class Station {
public:
    // The phase named on a script line ("phase NAME"), or nullopt for any other line.
    static std::optional<std::string> PhaseName(const std::string& line);

    void Begin(const std::string& stationName, const std::string& scriptPath,
               const std::string& scriptText, uint64_t nowMs);
    void BeginPhase(int line, const std::string& name, uint64_t nowMs);
    void BeginStep(int line, const std::string& text, uint64_t nowMs);
    // A trace line (one JSON object) produced while the current step runs.
    void OnTraceLine(const std::string& kind, const std::string& json);
    // ok: the command succeeded; output: its output or the reason it failed.
    void EndStep(bool ok, const std::string& output, uint64_t nowMs);
    // The run could not start or was stopped: the outcome is ERROR with this reason.
    void Abort(const std::string& reason, uint64_t nowMs);
    void End(uint64_t nowMs);
    void SetIdentityRead(SetIdentity identity);
    void AddAttachment(const Attachment& attachment);
    // The notifications of the whole run so far, newest last (at most `count`).
    std::vector<std::string> LastNotifications(size_t count) const;

    StepOutcome Outcome() const;
    Progress CurrentProgress(uint64_t nowMs) const;

    // The record: one JSON document (Record.cpp).
    std::string RecordJson() const;
    // The JUnit XML report: one testsuite, one testcase per phase (Junit.cpp).
    std::string JunitXml() const;

private:
    Phase* FindPhase(const std::string& name);

    mutable std::mutex m_mutex;
    std::string m_station;
    std::string m_script;
    std::string m_startWall;
    std::string m_endWall;
    uint64_t m_startMs = 0;
    uint64_t m_endMs = 0;
    bool m_running = false;
    bool m_inStep = false;
    std::string m_error;  // an ERROR outcome's reason
    std::string m_phase;  // the current phase's name
    std::vector<Phase> m_phases;
    std::vector<Step> m_steps;
    std::vector<std::string> m_recentNotes;  // the run's last notifications
    SetIdentity m_identity;
};

// A wall-clock time as ISO 8601 UTC with milliseconds.
std::string WallClockNow();

}  // namespace factorysim
