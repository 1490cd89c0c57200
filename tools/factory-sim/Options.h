// factory-sim's command line.
#pragma once

#include <optional>
#include <string>

namespace factorysim {

struct Options {
    std::string setFile;  // empty: the built-in demo set
    std::string root;     // empty: a fresh temporary folder
    std::string listen = "127.0.0.1";
    int port = 7233;
    int controlPort = 7234;  // 0: a free port
    bool control = true;
    std::string script;
    std::string trace;
    std::string station;      // empty: the host name
    std::string record;       // a file, or a folder that gets one record per run
    std::string junit;        // JUnit XML report
    std::string compare;      // golden trace to compare the run with
    std::string goldenWrite;  // write the run's golden trace here
    std::string uiFile;       // empty: the page installed beside the binary
    std::optional<bool> realTime;
    unsigned long expectTimeoutMs = 5000;  // real time: how long expect waits
    bool verbose = false;
    bool help = false;
    bool version = false;
};

// Fills options from argv; the error is empty on success.
std::string ParseOptions(int argc, char** argv, Options& options);
// What the named files and folders must be before the set starts: --set and
// --script readable files, --trace not a folder nor the script itself, --root
// absent, empty or one of ours. The error is empty when all is well.
std::string CheckPaths(const Options& options);
// Marks a root folder as factory-sim's, so that a later run may use it again.
extern const char kRootMarker[];
const char* Usage();
// "factory-sim VERSION", the version of the build.
std::string VersionLine();

}  // namespace factorysim
