#include "Options.h"

#include <arpa/inet.h>
#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <map>

#include "Names.h"

namespace factorysim {

namespace {

std::string ParsePort(const std::string& text, int& port, bool zeroAllowed) {
    const auto n = ParseNumber(text);
    if (!n || *n > 65535 || (*n == 0 && !zeroAllowed)) {
        return "not a port number: " + text;
    }
    port = static_cast<int>(*n);
    return "";
}

}  // namespace

const char* Usage() {
    return R"(usage: factory-sim [options]
Runs the factory library on a simulated set and serves the factory UI.

  --set FILE          describe the simulated set ("field = value" lines)
  --root DIR          the set's root folder (default: a fresh temporary one)
  --listen ADDR       address of the factory UI server (default 127.0.0.1;
                      0.0.0.0 for every interface)
  --port N            port of the factory UI server (default 7233, 0 picks a free
                      one; the ports in use are printed as "factory-sim: ports ...")
  --control-port N    loopback port of the page's control endpoint (default 7234,
                      0 picks a free one)
  --no-control        no control endpoint
  --script FILE       run the commands of FILE and exit (virtual time by default)
  --trace FILE        write every notification, call, listener code, console and
                      log line to FILE as JSON Lines
  --record FILE|DIR   write the run's record (JSON) to FILE, or a new file in DIR
  --station NAME      the station named in the record (default: the host name)
  --junit FILE        write a JUnit XML report of the script's phases to FILE
  --compare GOLDEN    fail when the run's trace differs from the golden trace
  --golden-write FILE write the run's trace as a golden trace to FILE
  --ui FILE           the factory UI page to serve (default: the installed one)
  --real-time         the set's clock follows the wall clock (console default)
  --virtual-time      the set's clock moves only with 'wait' (script default)
  --expect-timeout MS in real time, how long 'expect' waits (default 5000)
  --verbose           copy every log line of the library to standard error
  --help              this text
)";
}

std::string ParseOptions(int argc, char** argv, Options& o) {
    using Setter = std::function<std::string(const std::string&)>;
    const std::map<std::string, Setter> withValue = {
        {"--set", [&](const std::string& v) { return o.setFile = v, std::string(); }},
        {"--root", [&](const std::string& v) { return o.root = v, std::string(); }},
        {"--listen", [&](const std::string& v) { return o.listen = v, std::string(); }},
        {"--port", [&](const std::string& v) { return ParsePort(v, o.port, true); }},
        {"--control-port", [&](const std::string& v) { return ParsePort(v, o.controlPort, true); }},
        {"--script", [&](const std::string& v) { return o.script = v, std::string(); }},
        {"--trace", [&](const std::string& v) { return o.trace = v, std::string(); }},
        {"--station", [&](const std::string& v) { return o.station = v, std::string(); }},
        {"--record", [&](const std::string& v) { return o.record = v, std::string(); }},
        {"--junit", [&](const std::string& v) { return o.junit = v, std::string(); }},
        {"--compare", [&](const std::string& v) { return o.compare = v, std::string(); }},
        {"--golden-write", [&](const std::string& v) { return o.goldenWrite = v, std::string(); }},
        {"--ui", [&](const std::string& v) { return o.uiFile = v, std::string(); }},
        {"--expect-timeout",
         [&](const std::string& v) {
             const auto n = ParseNumber(v);
             if (!n || *n > 3600000) {
                 return "not a time in ms (at most an hour): " + v;
             }
             o.expectTimeoutMs = static_cast<unsigned long>(*n);
             return std::string();
         }},
    };
    const std::map<std::string, std::function<void()>> flags = {
        {"--real-time", [&] { o.realTime = true; }},
        {"--virtual-time", [&] { o.realTime = false; }},
        {"--no-control", [&] { o.control = false; }},
        {"--verbose", [&] { o.verbose = true; }},
        {"--help", [&] { o.help = true; }},
        {"-h", [&] { o.help = true; }},
    };
    for (int i = 1; i < argc; ++i) {
        std::string arg = argv[i];
        std::string value;
        bool hasValue = false;
        const auto eq = arg.find('=');
        if (arg.rfind("--", 0) == 0 && eq != std::string::npos) {
            value = arg.substr(eq + 1);
            arg = arg.substr(0, eq);
            hasValue = true;
        }
        if (auto f = flags.find(arg); f != flags.end() && !hasValue) {
            f->second();
            continue;
        }
        auto s = withValue.find(arg);
        if (s == withValue.end()) {
            return "unknown option: " + std::string(argv[i]);
        }
        if (!hasValue) {
            if (i + 1 >= argc) {
                return "option " + arg + " needs a value";
            }
            value = argv[++i];
        }
        if (value.empty()) {
            return "option " + arg + " needs a value";
        }
        const std::string error = s->second(value);
        if (!error.empty()) {
            return "option " + arg + ": " + error;
        }
    }
    return "";
}

const char kRootMarker[] = ".factory-sim-root";

namespace {

namespace fs = std::filesystem;

std::string CheckReadable(const std::string& option, const std::string& path) {
    if (path.empty()) {
        return "";
    }
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0) {
        return option + " " + path + ": no such file";
    }
    if (!S_ISREG(st.st_mode)) {
        return option + " " + path + ": not a regular file";
    }
    return "";
}

std::string CheckRoot(const std::string& root) {
    std::error_code ec;
    const fs::file_status status = fs::status(root, ec);
    if (!fs::exists(status)) {
        return "";
    }
    if (!fs::is_directory(status)) {
        return "--root " + root + ": not a folder";
    }
    if (fs::exists(fs::path(root) / kRootMarker, ec)) {
        return "";
    }
    // The set removes and rewrites files under its root: only an empty folder, or
    // one factory-sim made, is handed to it (never /, a home folder or a project).
    if (!fs::is_empty(root, ec) || ec) {
        return "--root " + root + ": a folder with files in it that factory-sim did not make (" +
               "give an empty or new folder)";
    }
    return "";
}

}  // namespace

std::string CheckPaths(const Options& o) {
    for (const auto& check : {CheckReadable("--set", o.setFile),
                              CheckReadable("--script", o.script), CheckRoot(o.root)}) {
        if (!check.empty()) {
            return check;
        }
    }
    if (!o.trace.empty()) {
        std::error_code ec;
        if (fs::is_directory(o.trace, ec)) {
            return "--trace " + o.trace + ": a folder";
        }
        if (!o.script.empty() && fs::exists(o.trace, ec) && fs::equivalent(o.trace, o.script, ec)) {
            return "--trace " + o.trace + ": the script itself";
        }
    }
    if (const std::string error = CheckReadable("--compare", o.compare); !error.empty()) {
        return error;
    }
    if ((!o.record.empty() || !o.junit.empty()) && o.script.empty()) {
        return std::string(o.record.empty() ? "--junit" : "--record") + " needs --script";
    }
    // The files a run writes never replace its own inputs.
    for (const auto& [option, path] :
         {std::make_pair("--junit", o.junit), std::make_pair("--golden-write", o.goldenWrite),
          std::make_pair("--record", o.record)}) {
        std::error_code ec;
        if (path.empty()) {
            continue;
        }
        if (option != std::string("--record") && fs::is_directory(path, ec)) {
            return std::string(option) + " " + path + ": a folder";
        }
        for (const std::string& input : {o.script, o.setFile, o.compare}) {
            if (!input.empty() && fs::exists(path, ec) && fs::equivalent(path, input, ec)) {
                return std::string(option) + " " + path + ": one of the run's own inputs";
            }
        }
    }
    in_addr v4{};
    in6_addr v6{};
    if (inet_pton(AF_INET, o.listen.c_str(), &v4) != 1 &&
        inet_pton(AF_INET6, o.listen.c_str(), &v6) != 1) {
        return "--listen " + o.listen + ": not an IP address";
    }
    return "";
}

}  // namespace factorysim
