// What factory-sim's runner hands a line station: the run's steps (Station), its
// record and JUnit report, the golden trace and the comparison with one. The
// runner calls in here at a few points; everything else lives behind them.
#pragma once

#include <functional>
#include <string>

#include "Compare.h"
#include "Options.h"
#include "Station.h"

class FactoryManager;

namespace factorysim {

class Output;

class StationRun {
public:
    explicit StationRun(const Options& options) : m_options(options) {}

    // Whether the run needs the trace's lines (a record, a report or a golden trace):
    // building them costs time on every tick of a long run.
    bool WantsTrace() const {
        return !m_options.record.empty() || !m_options.junit.empty() ||
               !m_options.compare.empty() || !m_options.goldenWrite.empty();
    }
    // Every trace line, from whatever thread traces it.
    void OnTraceLine(const std::string& kind, const std::string& line);
    // The run's root folder and ports, which a golden trace leaves out.
    void SetRules(const std::string& rootFolder, int uiPort, int controlPort);
    // The script starts; writeNative copies the native layer's picture to a path.
    void Begin(const std::string& scriptText,
               std::function<bool(const std::string& path)> writeNative);
    // "no phase" for a line that is not `phase NAME`; empty for a phase begun;
    // else why the phase line is wrong.
    std::string Phase(int line, const std::string& text);
    void BeginStep(int line, const std::string& text);
    void EndStep(bool ok, const std::string& output);
    void Stopped();
    // On the event thread, once the run is over.
    void ReadIdentity(FactoryManager* manager);
    // Writes the record, the JUnit report and the golden trace, and compares with
    // the golden one; a non-zero status when the comparison fails or a file cannot
    // be written. status: the run's own.
    int Finish(int status, Output& output);

    // What the page shows of a running script: {"running", "script", "phase", "line",
    // "text", "passed", "failed", "nowMs", "wait": {"elapsedMs", "remainingMs"} or null}.
    std::string ProgressJson() const;

private:
    std::string RecordPath();
    void WriteAttachments(int line);

    const Options& m_options;
    Station m_station;
    GoldenTrace m_golden;
    bool m_begun = false;
    std::string m_recordPath;
    std::function<bool(const std::string&)> m_writeNative;
};

}  // namespace factorysim
