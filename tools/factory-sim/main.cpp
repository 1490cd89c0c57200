// factory-sim: the factory library on a simulated set, with the factory UI served to
// a browser, an operator console, line-station scripts and a trace of everything.
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <sstream>
#include <thread>

#include "Commands.h"
#include "ControlServer.h"
#include "FactoryManager.h"
#include "Names.h"
#include "Notes.h"
#include "Options.h"
#include "Output.h"
#include "SetFields.h"
#include "SimDisplay.h"
#include "SimSet.h"
#include "TVManager.h"
#include "Trace.h"

namespace fs = std::filesystem;
using namespace factorysim;

namespace {

constexpr unsigned long long kLevelMask = 0xFFFFFFFFULL;
constexpr unsigned long long kFailureLevel = 2;

// The host listener is a plain function pointer: it reaches the running program
// through this one pointer, set while the set runs.
struct Running {
    Output* output;
    Trace* trace;
};
Running* g_running = nullptr;

unsigned char HostListener(unsigned long code, void*, void*) {
    if (g_running != nullptr) {
        g_running->trace->Listener(sim::Set::Instance().NowMs(), code);
        char hex[16];
        std::snprintf(hex, sizeof(hex), "0x%lX", code);
        g_running->output->Print(std::string("<- listener ") + hex + ": " + ListenerMeaning(code));
    }
    return 0;
}

bool ReadFile(const std::string& path, std::string& text) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        return false;
    }
    std::ostringstream out;
    out << in.rdbuf();
    text = out.str();
    return true;
}

// The page: --ui, else the copy installed beside the binary, else the source tree's.
std::string FindUiFile(const Options& options) {
    if (!options.uiFile.empty()) {
        return options.uiFile;
    }
    std::error_code ec;
    const fs::path beside =
        fs::read_symlink("/proc/self/exe", ec).parent_path() / "factory-ui.html";
    if (!ec && fs::exists(beside, ec)) {
        return beside.string();
    }
    return FACTORY_SIM_UI_SOURCE;
}

constexpr const char* kNativeDump = "/native.png";

// DirectFB's flips are not seen by the set: after every step, and every quarter of a
// second in real time, the native layer is written out when its picture changed.
void DumpNative(Output& output) {
    bool written = false;
    Commands::OnEventThread([&] {
        written = sim::Set::Instance().Get<sim::DisplayState>().WritePngIfChanged(kNativeDump);
    });
    if (written) {
        output.Print("factory-sim: native layer written to " +
                     sim::Set::Instance().GetRoot().Map(kNativeDump));
    }
}

using Runner = std::function<Outcome(const std::string&)>;

int RunScript(const std::string& path, const std::string& text, const Runner& run, Output& output) {
    std::istringstream in(text);
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (line.find_first_not_of(" \t\r") == std::string::npos) {
            continue;
        }
        const Outcome outcome = run(line);
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
    output.Print("factory-sim: script " + path + " passed");
    return 0;
}

void RunConsole(const Runner& run, Output& output) {
    const bool tty = isatty(0);
    std::string line;
    for (;;) {
        if (tty) {
            output.Print("factory> ");
        }
        if (!std::getline(std::cin, line)) {
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

}  // namespace

int main(int argc, char** argv) {
    Options options;
    const std::string optionError = ParseOptions(argc, argv, options);
    if (!optionError.empty()) {
        std::fprintf(stderr, "factory-sim: %s\n%s", optionError.c_str(), Usage());
        return 2;
    }
    if (options.help) {
        std::fputs(Usage(), stdout);
        return 0;
    }
    std::string setText = SetFields::DemoSet();
    std::string setOrigin = "demo set";
    if (!options.setFile.empty() && !ReadFile(options.setFile, setText)) {
        std::fprintf(stderr, "factory-sim: cannot read the set file %s\n", options.setFile.c_str());
        return 2;
    }
    if (!options.setFile.empty()) {
        setOrigin = options.setFile;
    }
    std::string scriptText;
    if (!options.script.empty() && !ReadFile(options.script, scriptText)) {
        std::fprintf(stderr, "factory-sim: cannot read the script %s\n", options.script.c_str());
        return 2;
    }
    Trace trace;
    if (!options.trace.empty() && !trace.Open(options.trace)) {
        std::fprintf(stderr, "factory-sim: cannot write the trace %s\n", options.trace.c_str());
        return 2;
    }

    const bool realTime = options.realTime.value_or(options.script.empty());
    sim::Options setOptions;
    setOptions.time = realTime ? sim::TimeMode::Real : sim::TimeMode::Virtual;
    setOptions.rootFolder = options.root;
    setOptions.listenAddress = options.listen;
    setOptions.port = options.port;

    Output output;
    Running running{&output, &trace};
    g_running = &running;

    sim::Set& set = sim::Set::Instance();
    try {
        set.Reset(setOptions);
    } catch (const std::exception& e) {
        output.Error(std::string("factory-sim: cannot prepare the set: ") + e.what());
        return 2;
    }
    // Only now: the reader stamps lines with the set's clock, which Reset replaces.
    output.CaptureStdout(
        [&trace](const std::string& line) { trace.Console(sim::Set::Instance().NowMs(), line); });
    set.GetJournal().SetSink([&](const sim::JournalEntry& e) {
        if (e.kind == "call") {
            trace.Call(e.tMs, e.fn, e.args);
            return;
        }
        trace.Log(e.tMs, e.mask, e.args);
        if (options.verbose || (e.mask & kLevelMask) == kFailureLevel) {
            output.Error("[log " + std::to_string(e.mask & kLevelMask) + "] " + e.args);
        }
    });
    Notes::Watch([&](const Note& n) {
        trace.Notify(sim::Set::Instance().NowMs(), n.channel, n.cmd, n.data, n.numeric);
        output.Print("<- " + n.cmd + " = " + (n.numeric ? n.data : "\"" + n.data + "\""));
    });

    SetFields fields;
    int status = 0;
    std::string setError;
    Commands::OnEventThread([&] { setError = fields.LoadText(setText, setOrigin); });
    if (!setError.empty()) {
        output.Error("factory-sim: " + setError);
        status = 2;
    }

    const std::string uiFile = FindUiFile(options);
    std::string page;
    if (status == 0 && ReadFile(uiFile, page)) {
        set.GetRoot().WriteFile("/test.html", page);
        set.GetRoot().WriteFile("/applications/factory/factory-ui.html", page);
    } else if (status == 0) {
        output.Error("factory-sim: no factory UI page at " + uiFile + "; the set runs without it");
    }

    FactoryManager* manager = nullptr;
    if (status == 0) {
        // The host's start sequence, on the event thread as on the set.
        Commands::OnEventThread([&] {
            manager = TVManager::GetInstance()->getFactoryManager();
            manager->setFactoryEventListener(HostListener);
            manager->InitKeyEventListener();
            FactoryManager::SetFactoryModeState(1);
            // The page is up before anything is sent to it, so that a browser opened
            // on the banner's address finds the server.
            manager->CheckFactoryUiIsReady();
        });
    }

    ControlServer control;
    if (status == 0) {
        Commands commands(fields, manager);
        const Runner run = [&](const std::string& line) {
            const Outcome outcome = commands.Execute(line);
            output.Drain();
            DumpNative(output);
            return outcome;
        };
        const std::string host = options.listen.empty() ? "127.0.0.1" : options.listen;
        output.Print("factory-sim: set root " + set.GetRoot().Folder().string() +
                     (set.GetRoot().IsTemporary() ? " (temporary, removed on exit)" : ""));
        output.Print("factory-sim: factory UI at http://" + host + ":" +
                     std::to_string(options.port) + "/");
        if (options.control) {
            const std::string error =
                control.Start(options.controlPort, [&run](const std::string& line) -> Outcome {
                    std::string first;
                    std::istringstream(line) >> first;
                    if (first == "quit") {
                        return {false, "quit is for the console", false};
                    }
                    return run(line);
                });
            if (error.empty()) {
                output.Print("factory-sim: control endpoint at http://127.0.0.1:" +
                             std::to_string(control.Port()) + "/ (POST a command line)");
            } else {
                output.Error("factory-sim: no control endpoint: " + error);
            }
        }
        output.Print(std::string("factory-sim: ") + (realTime ? "real" : "virtual") +
                     " time; type 'help' for the commands");
        std::atomic<bool> stopPoll{false};
        std::thread poll;
        if (realTime) {
            poll = std::thread([&] {
                while (!stopPoll) {
                    std::this_thread::sleep_for(std::chrono::milliseconds(250));
                    DumpNative(output);
                }
            });
        }
        if (!options.script.empty()) {
            status = RunScript(options.script, scriptText, run, output);
        } else {
            RunConsole(run, output);
        }
        control.Stop();
        stopPoll = true;
        if (poll.joinable()) {
            poll.join();
        }
    }
    output.Drain();
    set.GetJournal().SetSink(nullptr);
    set.Shutdown();
    g_running = nullptr;
    output.Release();
    return status;
}
