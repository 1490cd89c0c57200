// factory-sim: the factory library on a simulated set, with the factory UI served to
// a browser, an operator console, line-station scripts and a trace of everything.
#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <mutex>
#include <set>
#include <sstream>
#include <thread>

#include "Commands.h"
#include "ControlServer.h"
#include "FactoryManager.h"
#include "Names.h"
#include "Notes.h"
#include "Options.h"
#include "Output.h"
#include "ScriptRunner.h"
#include "Serving.h"
#include "SetFields.h"
#include "SimDisplay.h"
#include "SimPageClient.h"
#include "SimSet.h"
#include "SimWebApp.h"
#include "StationRun.h"
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
    std::function<void()> settle;  // inside a piece of work: everything sent before is out
};
Running* g_running = nullptr;

unsigned char HostListener(unsigned long code, void*, void*) {
    if (g_running != nullptr) {
        // Notifications and console lines the library produced before this code come
        // first, as they did on the set.
        if (sim::EventLoop::InWork() && g_running->settle) {
            g_running->settle();
        }
        g_running->trace->Listener(sim::Set::Instance().NowMs(), code);
        char hex[16];
        std::snprintf(hex, sizeof(hex), "0x%lX", code);
        g_running->output->Print(std::string("<- listener ") + hex + ": " + ListenerMeaning(code));
    }
    return 0;
}

// The lines the library's server thread logs for the page's settling "connect": the
// callback traces while a settle waits for its echo, the marked "connect" received and
// the "cmd: connect" right after it. They are factory-sim's machinery, not the set's
// behaviour, and would be most of a long run's trace.
bool IsSettleTraffic(const sim::WebAppState& web, unsigned long long mask,
                     const std::string& text) {
    constexpr unsigned long long kCallbackTrace = 8;
    thread_local bool afterSettleConnect = false;
    const bool cmdLine = afterSettleConnect && text.size() >= 14 &&
                         text.compare(text.size() - 14, 14, "] cmd: connect") == 0;
    afterSettleConnect = false;
    if (cmdLine) {
        return true;
    }
    if (text.find(std::string("callback receive: ") + sim::kSettleConnect) != std::string::npos) {
        afterSettleConnect = true;
        return true;
    }
    return web.SettleInFlight() && (mask & kLevelMask) == kCallbackTrace;
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

// The page: --ui, else the one beside the binary (the build tree assembles it there),
// else the installed one under share/, else the build tree's (a binary copied away).
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
    const fs::path installed = beside.parent_path() / FACTORY_SIM_UI_INSTALLED;
    if (!ec && fs::exists(installed, ec)) {
        return installed.string();
    }
    return FACTORY_SIM_UI_SOURCE;
}

constexpr const char* kNativeDump = "/native.png";

// DirectFB's flips are not seen by the set: after every step, and every quarter of a
// second in real time, the native layer is written out when its picture changed.
bool DumpNative(Output& output) {
    bool written = false;
    Commands::OnEventThread([&] {
        written = sim::Set::Instance().Get<sim::DisplayState>().WritePngIfChanged(kNativeDump);
    });
    if (written) {
        output.Print("factory-sim: native layer written to " +
                     sim::Set::Instance().GetRoot().Map(kNativeDump));
    }
    return written;
}

// The control endpoint's waits are bounded: a page must not hold the set.
constexpr unsigned long long kControlWaitLimitMs = 10000;

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
    if (options.version) {
        std::printf("%s\n", VersionLine().c_str());
        return 0;
    }
    if (const std::string error = CheckPaths(options); !error.empty()) {
        std::fprintf(stderr, "factory-sim: %s\n", error.c_str());
        return 2;
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
    std::string listenError;
    sim::ListenInterface(options.listen, listenError);
    if (!listenError.empty()) {
        std::fprintf(stderr, "factory-sim: --listen %s: %s\n", options.listen.c_str(),
                     listenError.c_str());
        return 2;
    }
    if (const std::string error = CheckServerPort(options.listen, options.port); !error.empty()) {
        std::fprintf(stderr, "factory-sim: factory UI port %d on %s: %s\n", options.port,
                     options.listen.c_str(), error.c_str());
        return 2;
    }
    ControlServer control;
    if (options.control) {
        if (const std::string error = control.Bind(options.controlPort); !error.empty()) {
            std::fprintf(stderr, "factory-sim: %s\n", error.c_str());
            return 2;
        }
    }
    Trace trace;
    if (!options.trace.empty() && !trace.Open(options.trace)) {
        std::fprintf(stderr, "factory-sim: cannot write the trace %s\n", options.trace.c_str());
        return 2;
    }
    StationRun station(options);
    if (station.WantsTrace()) {
        trace.SetObserver([&station](const std::string& kind, const std::string& line) {
            station.OnTraceLine(kind, line);
        });
    }

    // Every thread started from here on leaves SIGINT and SIGTERM to the signal thread.
    sigset_t stopSignals;
    sigemptyset(&stopSignals);
    sigaddset(&stopSignals, SIGINT);
    sigaddset(&stopSignals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stopSignals, nullptr);
    if (::pipe2(g_wakePipe, O_CLOEXEC) != 0) {
        std::perror("factory-sim: pipe");
        return 2;
    }
    // SIGUSR2 only ends the signal thread itself, at the end of main.
    sigset_t waited = stopSignals;
    sigaddset(&waited, SIGUSR2);
    pthread_sigmask(SIG_BLOCK, &waited, nullptr);
    std::thread signals([waited] {
        int signal = 0;
        while (sigwait(&waited, &signal) == 0 && signal != SIGUSR2) {
            g_stop = true;
            Commands::Interrupt();
            const char wake = 1;
            if (::write(g_wakePipe[1], &wake, 1) < 0) {
                return;
            }
        }
    });

    const bool realTime = options.realTime.value_or(options.script.empty());
    sim::Options setOptions;
    setOptions.time = realTime ? sim::TimeMode::Real : sim::TimeMode::Virtual;
    setOptions.rootFolder = options.root;
    setOptions.listenAddress = options.listen;
    setOptions.port = options.port;

    Output output;
    Running running{&output, &trace, nullptr};
    g_running = &running;

    sim::Set& set = sim::Set::Instance();
    int status = 0;
    try {
        set.Reset(setOptions);
        set.GetRoot().WriteFile(std::string("/") + kRootMarker,
                                "made by factory-sim; it may use this folder again\n");
    } catch (const std::exception& e) {
        output.Error(std::string("factory-sim: cannot prepare the set: ") + e.what());
        status = 2;
    }
    // --port 0: the set picked the factory UI's port.
    options.port = set.Config().port;
    // The journal and the notes keep a window; the trace file holds everything.
    set.GetJournal().SetWindow(20000, 4 * 1024 * 1024);
    sim::WebAppState& web = set.Get<sim::WebAppState>();
    web.SetNoteWindow(20000);
    // A notification is traced when the page receives it; waiting for the page to
    // have everything before each call, log line, listener code, console line and
    // clock move puts it at the time and in the place where the library sent it. The
    // wait is a round trip to the page, so it is made only when something may be on
    // its way: the library logs on the event thread before every notification it
    // sends (NotifyUI checks the page first), so work that logged nothing sent nothing.
    std::mutex pageMutex;
    bool pageMayLag = true;  // under pageMutex
    bool pageUp = true;      // false once the set shuts down
    const auto settlePage = [&web, &pageMutex, &pageMayLag, &pageUp] {
        std::lock_guard<std::mutex> lock(pageMutex);
        if (pageMayLag && pageUp) {
            web.Settle();
            pageMayLag = false;
        }
    };
    const auto mayHaveSent = [&pageMutex, &pageMayLag] {
        std::lock_guard<std::mutex> lock(pageMutex);
        pageMayLag = true;
    };
    const auto settle = [&settlePage, &output] {
        settlePage();
        output.Drain();
    };
    // Only now: the reader stamps lines with the set's clock, which Reset replaces. A
    // console line comes after the notifications sent before it: the event thread
    // cannot have sent one since (that needs a log line, whose settle waits for this
    // reader), so the page's round trip brings exactly those.
    output.CaptureStdout([&trace, &settlePage](const std::string& line) {
        settlePage();
        trace.Console(sim::Set::Instance().NowMs(), line);
    });
    running.settle = settle;
    set.GetJournal().SetSink([&](const sim::JournalEntry& e) {
        const bool inWork = sim::EventLoop::InWork();
        if (inWork) {
            settle();
        }
        if (e.kind == "call") {
            trace.Call(e.tMs, e.fn, e.args);
            return;
        }
        if (inWork) {
            mayHaveSent();
        } else if (IsSettleTraffic(web, e.mask, e.args)) {
            return;
        }
        trace.Log(e.tMs, e.mask, e.args);
        if (options.verbose || (e.mask & kLevelMask) == kFailureLevel) {
            output.Error("[log " + std::to_string(e.mask & kLevelMask) + "] " + e.args);
        }
    });
    set.Loop().SetAfterWork(settle);
    set.Loop().SetOnTick([&output](MEvtHandle*, unsigned long id, const char* owner) {
        output.PrintRepeatable(owner != nullptr ? "timer " + std::to_string(id) + " " + owner
                                                : TimerLabel(id));
    });
    output.CollapseRepeats(!realTime);
    trace.FlushEveryLine(realTime);
    Notes::Watch([&](const Note& n) {
        trace.Notify(sim::Set::Instance().NowMs(), n.channel, n.cmd, n.data, n.numeric);
        output.Print("<- " + n.cmd + " = " + (n.numeric ? n.data : "\"" + n.data + "\""));
    });

    SetFields fields;
    std::string setError;
    if (status == 0) {
        Commands::OnEventThread([&] { setError = fields.LoadText(setText, setOrigin); });
    }
    if (!setError.empty()) {
        output.Error("factory-sim: " + setError);
        status = 2;
    }

    const std::string uiHost = HostForUrl(options.listen);
    const std::string controlUrl =
        options.control ? "http://127.0.0.1:" + std::to_string(control.Port()) + "/" : "";
    const std::string uiFile = FindUiFile(options);
    std::string page;
    if (status == 0 && ReadFile(uiFile, page)) {
        page = WithControlUrl(page, controlUrl);
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
            // A set switched off during burn-in resumes it when the host starts
            // (`aging-mode` 3 or 4 in the set file).
            manager->DoAgingModeAction();
        });
        if (FactoryManager::m_stContext.load() == nullptr) {
            output.Error("factory-sim: factory UI port " + std::to_string(options.port) + " on " +
                         options.listen + ": the server could not listen there");
            status = 2;
        }
    }

    if (status == 0) {
        Commands commands(fields, manager);
        commands.SetExpectTimeout(options.expectTimeoutMs);
        // The page shows the native layer as the set's screen does: the picture while
        // the window is visible, nothing while it is hidden.
        std::mutex nativeMutex;
        uint64_t nativeVersion = 0;
        std::string nativePng;
        bool nativeVisible = false;
        // Reading the picture costs milliseconds: while the layer is visible it is read
        // at most every tenth of a second (and once more at the end), so that a long
        // script in M-mode is not slowed down by it.
        std::chrono::steady_clock::time_point nativeRead{};
        std::mutex dumpMutex;  // the poll thread and the command sources
        const auto dumpNative = [&](bool force) {
            std::lock_guard<std::mutex> dumping(dumpMutex);
            bool visible = false;
            Commands::OnEventThread([&] {
                visible = sim::Set::Instance().Get<sim::DisplayState>().NativeOpacity() > 0;
            });
            const auto now = std::chrono::steady_clock::now();
            if (!force && visible && visible == nativeVisible &&
                now - nativeRead < std::chrono::milliseconds(100)) {
                return;
            }
            nativeRead = now;
            const bool written = DumpNative(output);
            if (written || visible != nativeVisible) {
                std::lock_guard<std::mutex> lock(nativeMutex);
                nativePng = visible ? set.GetRoot().ReadFile(kNativeDump) : std::string();
                nativeVisible = visible;
                ++nativeVersion;
            }
        };
        const Runner run = [&](const std::string& line) {
            const Outcome outcome = commands.Execute(line);
            output.Drain();
            output.FlushRepeats();
            dumpNative(false);
            trace.Flush();
            return outcome;
        };
        output.Print("factory-sim: set root " + set.GetRoot().Folder().string() +
                     (set.GetRoot().IsTemporary() ? " (temporary, removed on exit)" : ""));
        output.Print("factory-sim: factory UI at http://" + uiHost + ":" +
                     std::to_string(options.port) + "/");
        if (options.control) {
            std::set<std::string> origins;
            for (const std::string& host : {uiHost, std::string("127.0.0.1"),
                                            std::string("localhost"), std::string("[::1]")}) {
                origins.insert("http://" + host + ":" + std::to_string(options.port));
            }
            control.AllowOrigins(origins);
            control.SetProgress([&station] { return station.ProgressJson(); });
            control.Start(
                [&run](const std::string& line) -> Outcome {
                    std::istringstream in(line);
                    std::string first;
                    std::string value;
                    in >> first >> value;
                    if (first == "quit") {
                        return {false, "quit is for the console", false};
                    }
                    if (first == "screen" && value.empty()) {
                        // A page that joins late draws what the set shows: the
                        // notifications since the last "HideAllUIExcept", once
                        // everything sent so far has reached the set's own page.
                        Commands::OnEventThread([] {});
                        return {true, Notes::ScreenJson(), false};
                    }
                    const auto ms = ParseNumber(value);
                    if (first == "wait" && ms && *ms > kControlWaitLimitMs) {
                        return {false,
                                "wait: at most " + std::to_string(kControlWaitLimitMs) +
                                    " ms from the control endpoint",
                                false};
                    }
                    return run(line);
                },
                [&] {
                    std::lock_guard<std::mutex> lock(nativeMutex);
                    return std::make_pair(nativeVersion, nativePng);
                });
            output.Print("factory-sim: control endpoint at " + controlUrl +
                         " (POST a command line)");
        }
        // One line for the tools that start stations on free ports.
        output.Print("factory-sim: ports ui=" + std::to_string(options.port) + " control=" +
                     (options.control ? std::to_string(control.Port()) : std::string("none")));
        station.SetRules(set.GetRoot().Folder().string(), options.port,
                         options.control ? control.Port() : 0);
        output.Print(std::string("factory-sim: ") + (realTime ? "real" : "virtual") +
                     " time; type 'help' for the commands");
        std::atomic<bool> stopPoll{false};
        std::thread poll;
        if (realTime) {
            poll = std::thread([&] {
                while (!stopPoll) {
                    std::this_thread::sleep_for(std::chrono::milliseconds(250));
                    dumpNative(true);
                    trace.Flush();
                }
            });
        }
        if (!options.script.empty()) {
            station.Begin(scriptText, [&](const std::string& picture) {
                dumpNative(true);
                std::error_code ec;
                fs::copy_file(set.GetRoot().Map(kNativeDump), picture,
                              fs::copy_options::overwrite_existing, ec);
                return !ec;
            });
            status = RunScript(options.script, scriptText, run, output, station);
        } else {
            RunConsole(run, output);
        }
        control.Stop();
        stopPoll = true;
        if (poll.joinable()) {
            poll.join();
        }
        dumpNative(true);
        // Whatever the set sent before the end reaches the page, the console and the
        // trace: one more piece of work on the event thread ends settled.
        Commands::OnEventThread([] {});
        if (g_stop) {
            output.Print("factory-sim: stopped by a signal");
        }
    }
    output.Drain();
    output.FlushRepeats();
    trace.Flush();
    {
        std::lock_guard<std::mutex> lock(pageMutex);
        pageUp = false;
    }
    set.GetJournal().SetSink(nullptr);
    set.Loop().SetAfterWork(nullptr);
    set.Loop().SetOnTick(nullptr);
    // The set's identity is read after the trace has ended, so that reading it adds
    // nothing to the run; a station writes serial and MAC during the run.
    if (manager != nullptr && !options.script.empty()) {
        Commands::OnEventThread([&] { station.ReadIdentity(manager); });
    }
    if (const int finished = station.Finish(status, output); finished != 0 && status == 0) {
        status = finished;
    }
    set.Shutdown();
    g_running = nullptr;
    output.Release();
    pthread_kill(signals.native_handle(), SIGUSR2);
    signals.join();
    return status;
}
