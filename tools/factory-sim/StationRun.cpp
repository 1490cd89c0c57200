#include "StationRun.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "FactoryManager.h"
#include "Output.h"
#include "SimJournal.h"
#include "SimSet.h"

namespace factorysim {

namespace fs = std::filesystem;

namespace {

uint64_t Now() { return sim::Set::Instance().NowMs(); }

std::string HostName() {
    char name[256] = {};
    if (::gethostname(name, sizeof(name) - 1) != 0 || name[0] == '\0') {
        return "localhost";
    }
    return name;
}

bool WriteText(const std::string& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    out.flush();
    return static_cast<bool>(out);
}

std::string Trimmed(const char* text) {
    if (text == nullptr) {
        return "";
    }
    std::string s = text;
    const auto first = s.find_first_not_of(' ');
    return first == std::string::npos ? "" : s.substr(first, s.find_last_not_of(' ') - first + 1);
}

}  // namespace

void StationRun::OnTraceLine(const std::string& kind, const std::string& line) {
    m_station.OnTraceLine(kind, line);
    if (!m_options.compare.empty() || !m_options.goldenWrite.empty()) {
        m_golden.Add(kind, line);
    }
}

void StationRun::SetRules(const std::string& rootFolder, int uiPort, int controlPort) {
    std::vector<int> ports = {uiPort};
    if (controlPort != 0) {
        ports.push_back(controlPort);
    }
    m_golden.SetRules(rootFolder, ports);
}

std::string StationRun::RecordPath() {
    std::error_code ec;
    if (!fs::is_directory(m_options.record, ec)) {
        return m_options.record;
    }
    // One new file per run in a folder: the script's name, the start and the process.
    std::string stamp = WallClockNow();
    for (char& c : stamp) {
        c = (c == ':' || c == '.') ? '-' : c;
    }
    return (fs::path(m_options.record) / (fs::path(m_options.script).stem().string() + "-" + stamp +
                                          "-" + std::to_string(::getpid()) + ".json"))
        .string();
}

void StationRun::Begin(const std::string& scriptText,
                       std::function<bool(const std::string& path)> writeNative) {
    m_writeNative = std::move(writeNative);
    if (!m_options.record.empty()) {
        m_recordPath = RecordPath();
    }
    m_station.Begin(m_options.station.empty() ? HostName() : m_options.station, m_options.script,
                    scriptText, Now());
    m_begun = true;
}

std::string StationRun::Phase(int line, const std::string& text) {
    const auto name = Station::PhaseName(text);
    if (!name) {
        return "no phase";
    }
    if (name->empty()) {
        const std::string error = "usage: phase <name>";
        m_station.BeginStep(line, text, Now());
        m_station.EndStep(false, error, Now());
        return error;
    }
    m_station.BeginPhase(line, *name, Now());
    return "";
}

void StationRun::BeginStep(int line, const std::string& text) {
    m_station.BeginStep(line, text, Now());
}

void StationRun::EndStep(bool ok, const std::string& output) {
    m_station.EndStep(ok, output, Now());
    if (!ok) {
        WriteAttachments(m_station.CurrentProgress(Now()).line);
    }
}

void StationRun::Stopped() { m_station.Abort("stopped by a signal", Now()); }

// Next to the record: what the screen showed and what the page was sent last.
void StationRun::WriteAttachments(int line) {
    if (m_recordPath.empty()) {
        return;
    }
    std::string base = m_recordPath;
    if (base.size() > 5 && base.compare(base.size() - 5, 5, ".json") == 0) {
        base.resize(base.size() - 5);
    }
    base += ".line" + std::to_string(line);
    const std::string picture = base + ".native.png";
    if (m_writeNative && m_writeNative(picture)) {
        m_station.AddAttachment({"native-layer", fs::absolute(picture).string(), "image/png"});
    }
    const std::string notes = base + ".notifications.jsonl";
    std::string text;
    for (const std::string& n : m_station.LastNotifications(20)) {
        text += n + "\n";
    }
    if (WriteText(notes, text)) {
        m_station.AddAttachment(
            {"last-notifications", fs::absolute(notes).string(), "application/jsonl"});
    }
}

std::string StationRun::ProgressJson() const {
    const uint64_t now = Now();
    const Progress p = m_station.CurrentProgress(now);
    std::string wait = "null";
    if (p.wait) {
        const uint64_t end = p.wait->second;
        const uint64_t elapsed = now > p.wait->first ? now - p.wait->first : 0;
        wait = "{\"elapsedMs\":" + std::to_string(std::min(elapsed, end - p.wait->first)) +
               ",\"remainingMs\":" + std::to_string(end > now ? end - now : 0) +
               ",\"totalMs\":" + std::to_string(end - p.wait->first) + "}";
    }
    using sim::JsonQuote;
    return std::string("{\"running\":") + (p.running ? "true" : "false") +
           ",\"script\":" + (p.script.empty() ? "null" : JsonQuote(p.script)) +
           ",\"phase\":" + (p.phase.empty() ? "null" : JsonQuote(p.phase)) +
           ",\"line\":" + std::to_string(p.line) + ",\"text\":" + JsonQuote(p.text) +
           ",\"passed\":" + std::to_string(p.passed) + ",\"failed\":" + std::to_string(p.failed) +
           ",\"nowMs\":" + std::to_string(now) + ",\"wait\":" + wait + "}";
}

void StationRun::ReadIdentity(FactoryManager* manager) {
    SetIdentity identity;
    identity.model = Trimmed(manager->FactoryGetTVModel());
    identity.serial = Trimmed(manager->FactoryGetSerialNo());
    identity.mac = Trimmed(manager->FactoryGetMACAddress());
    identity.read = true;
    m_station.SetIdentityRead(identity);
}

int StationRun::Finish(int status, Output& output) {
    if (m_options.script.empty()) {
        return 0;
    }
    if (!m_begun) {
        m_station.Begin(m_options.station.empty() ? HostName() : m_options.station,
                        m_options.script, "", Now());
        if (!m_options.record.empty()) {
            m_recordPath = RecordPath();
        }
    }
    if (status != 0 && m_station.Outcome() == StepOutcome::Pass) {
        m_station.Abort("the set could not start", Now());
    }
    m_station.End(Now());
    int result = 0;
    if (!m_recordPath.empty()) {
        if (WriteText(m_recordPath, m_station.RecordJson())) {
            output.Print("factory-sim: record written to " + m_recordPath);
        } else {
            output.Error("factory-sim: cannot write the record " + m_recordPath);
            result = 2;
        }
    }
    if (!m_options.junit.empty() && !WriteText(m_options.junit, m_station.JunitXml())) {
        output.Error("factory-sim: cannot write the JUnit report " + m_options.junit);
        result = 2;
    }
    const std::vector<std::string> lines = m_golden.Lines();
    // A golden trace is a known-good run's: a run that failed writes none.
    if (!m_options.goldenWrite.empty() && status != 0) {
        output.Error("factory-sim: the golden trace " + m_options.goldenWrite +
                     " is not written: the run failed");
    } else if (!m_options.goldenWrite.empty() && !WriteLines(m_options.goldenWrite, lines)) {
        output.Error("factory-sim: cannot write the golden trace " + m_options.goldenWrite);
        result = 2;
    }
    if (!m_options.compare.empty() && status == 0) {
        std::vector<std::string> golden;
        if (!ReadLines(m_options.compare, golden)) {
            output.Error("factory-sim: cannot read the golden trace " + m_options.compare);
            return 2;
        }
        const std::string difference = CompareTraces(Canonical(golden), lines);
        if (!difference.empty()) {
            output.Error("factory-sim: " + m_options.compare + ": " + difference);
            return 1;
        }
        output.Print("factory-sim: the trace matches " + m_options.compare);
    }
    return result;
}

}  // namespace factorysim
