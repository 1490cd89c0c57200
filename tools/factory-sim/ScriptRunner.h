// The two ways factory-sim takes lines: a line-station script, step by step, and the
// operator's console.
#pragma once

#include <atomic>
#include <functional>
#include <string>

#include "Commands.h"
#include "Output.h"
#include "StationRun.h"

namespace factorysim {

using Runner = std::function<Outcome(const std::string&)>;

// SIGINT and SIGTERM end the run cleanly: the signal thread sets g_stop and wakes the
// console through the pipe; the set is then shut down as after quit.
extern std::atomic<bool> g_stop;
extern int g_wakePipe[2];

// 0 when every step passed; 1 at the first that failed, or on a signal.
int RunScript(const std::string& path, const std::string& text, const Runner& run, Output& output,
              StationRun& station);
// Until the end of standard input, quit or a signal.
void RunConsole(const Runner& run, Output& output);

}  // namespace factorysim
