#include "Options.h"

#include <arpa/inet.h>
#include <sys/stat.h>

#include <CLI/CLI.hpp>
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

// An option whose value goes through a check of ours, so that a bad value is named
// the way the rest of factory-sim names it.
using Check = std::function<std::string(const std::string&)>;

void AddChecked(CLI::App& app, const std::string& name, const Check& check) {
    app.add_option_function<std::string>(name, [name, check](const std::string& value) {
        if (value.empty()) {
            throw CLI::ValidationError("option " + name + " needs a value");
        }
        const std::string error = check(value);
        if (!error.empty()) {
            throw CLI::ValidationError("option " + name + ": " + error);
        }
    });
}

Check Into(std::string& field) {
    return [&field](const std::string& value) { return field = value, std::string(); };
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
  --version           factory-sim's version
  --help              this text
)";
}

std::string ParseOptions(int argc, char** argv, Options& o) {
    CLI::App app("factory-sim");
    app.set_help_flag();  // ours: Usage() is the text the README shows
    app.allow_extras();
    // As with most tools, the last of a repeated option counts.
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    AddChecked(app, "--set", Into(o.setFile));
    AddChecked(app, "--root", Into(o.root));
    AddChecked(app, "--listen", Into(o.listen));
    AddChecked(app, "--port", [&o](const std::string& v) { return ParsePort(v, o.port, true); });
    AddChecked(app, "--control-port",
               [&o](const std::string& v) { return ParsePort(v, o.controlPort, true); });
    AddChecked(app, "--script", Into(o.script));
    AddChecked(app, "--trace", Into(o.trace));
    AddChecked(app, "--station", Into(o.station));
    AddChecked(app, "--record", Into(o.record));
    AddChecked(app, "--junit", Into(o.junit));
    AddChecked(app, "--compare", Into(o.compare));
    AddChecked(app, "--golden-write", Into(o.goldenWrite));
    AddChecked(app, "--ui", Into(o.uiFile));
    AddChecked(app, "--expect-timeout", [&o](const std::string& v) {
        const auto n = ParseNumber(v);
        if (!n || *n > 3600000) {
            return "not a time in ms (at most an hour): " + v;
        }
        o.expectTimeoutMs = static_cast<unsigned long>(*n);
        return std::string();
    });
    CLI::Option* real = app.add_flag_callback("--real-time", [&o] { o.realTime = true; });
    CLI::Option* virt = app.add_flag_callback("--virtual-time", [&o] { o.realTime = false; });
    real->excludes(virt);
    app.add_flag_callback("--no-control", [&o] { o.control = false; });
    app.add_flag_callback("--verbose", [&o] { o.verbose = true; });
    app.add_flag_callback("--version", [&o] { o.version = true; });
    app.add_flag_callback("-h,--help", [&o] { o.help = true; });
    try {
        app.parse(argc, argv);
    } catch (const CLI::ArgumentMismatch& e) {
        // "--port: 1 required TEXT missing": the option is the part before the colon.
        const std::string what = e.what();
        return "option " + what.substr(0, what.find(':')) + " needs a value";
    } catch (const CLI::ParseError& e) {
        return e.what();
    }
    if (!app.remaining().empty()) {
        return "unknown option: " + app.remaining().front();
    }
    return "";
}

std::string VersionLine() { return std::string("factory-sim ") + FACTORY_SIM_VERSION; }

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
