// The two ways factory-sim takes lines: a line-station script, step by step, and the
// operator's console.
#include "ScriptRunner.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <sstream>

namespace factorysim {

std::atomic<bool> g_stop{false};
int g_wakePipe[2] = {-1, -1};

// Each line is a step of the station's run; `phase NAME` lines group them.
int RunScript(const std::string& path, const std::string& text, const Runner& run, Output& output,
              StationRun& station) {
    std::istringstream in(text);
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (g_stop) {
            output.Error(path + ":" + std::to_string(number) + ": stopped by a signal");
            station.Stopped();
            return 1;
        }
        // Blank lines and comments are no steps.
        const auto first = line.find_first_not_of(" \t\r");
        if (first == std::string::npos || line[first] == '#') {
            continue;
        }
        if (const std::string error = station.Phase(number, line); error != "no phase") {
            if (!error.empty()) {
                output.Error(path + ":" + std::to_string(number) + ": " + error);
                return 1;
            }
            continue;
        }
        station.BeginStep(number, line);
        const Outcome outcome = run(line);
        // A signal cuts a wait short: that step did not run to its end.
        station.EndStep(outcome.ok && !g_stop, g_stop ? "stopped by a signal" : outcome.output);
        if (!outcome.output.empty()) {
            output.Print(outcome.output);
        }
        if (!outcome.ok) {
            output.Error(path + ":" + std::to_string(number) + ": " + outcome.output);
            return 1;
        }
        if (outcome.quit) {
            break;
        }
    }
    if (g_stop) {
        output.Error(path + ": stopped by a signal");
        station.Stopped();
        return 1;
    }
    output.Print("factory-sim: script " + path + " passed");
    return 0;
}

namespace {

// One line of standard input, or false at its end or on a signal.
bool ReadLine(std::string& pending, std::string& line) {
    for (;;) {
        const auto nl = pending.find('\n');
        if (nl != std::string::npos) {
            line = pending.substr(0, nl);
            pending.erase(0, nl + 1);
            return true;
        }
        pollfd p[2] = {{0, POLLIN, 0}, {g_wakePipe[0], POLLIN, 0}};
        if (::poll(p, 2, -1) < 0) {
            if (errno == EINTR) {
                continue;
            }
            return false;
        }
        if (g_stop || (p[1].revents & POLLIN) != 0) {
            return false;
        }
        char buf[4096];
        const ssize_t n = ::read(0, buf, sizeof(buf));
        if (n <= 0) {
            line.swap(pending);
            pending.clear();
            return !line.empty();
        }
        pending.append(buf, static_cast<size_t>(n));
    }
}

}  // namespace

void RunConsole(const Runner& run, Output& output) {
    const bool tty = isatty(0);
    std::string pending;
    std::string line;
    for (;;) {
        if (tty) {
            output.Print("factory> ");
        }
        if (!ReadLine(pending, line)) {
            break;
        }
        const Outcome outcome = run(line);
        if (!outcome.ok) {
            output.Error("error: " + outcome.output);
        } else if (!outcome.output.empty()) {
            output.Print(outcome.output);
        }
        if (outcome.quit) {
            break;
        }
    }
}

}  // namespace factorysim
