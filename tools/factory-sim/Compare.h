// Regression against a known-good run: this run's trace against a golden one.
// A golden trace is the trace with what legitimately differs between runs made
// neutral (the set's root folder, the ports) and without log lines, which are the
// library's diagnostics rather than what the set does.
#pragma once

#include <mutex>
#include <string>
#include <vector>

namespace factorysim {

class GoldenTrace {
public:
    // The run's own values that a golden must not depend on.
    void SetRules(const std::string& rootFolder, const std::vector<int>& ports);
    // A trace line as the golden keeps it; empty for a line it leaves out.
    std::string Normalize(const std::string& kind, const std::string& line) const;
    // Called for each trace line, from any thread.
    void Add(const std::string& kind, const std::string& line);
    std::vector<std::string> Lines() const;

private:
    mutable std::mutex m_mutex;
    std::string m_root;
    std::vector<int> m_ports;
    std::vector<std::string> m_lines;
};

// Notifications, listener codes and console lines reach the trace from different
// threads: between two calls, those of one virtual time are put in that kind order
// (each kind keeping its own), so that two runs of the same behaviour compare equal.
std::vector<std::string> Canonical(std::vector<std::string> lines);

bool ReadLines(const std::string& path, std::vector<std::string>& lines);
bool WriteLines(const std::string& path, const std::vector<std::string>& lines);

// Empty when the two traces are the same; else the first diverging event with
// `context` events on each side, then a summary by kind.
std::string CompareTraces(const std::vector<std::string>& golden,
                          const std::vector<std::string>& run, size_t context = 3);

}  // namespace factorysim
