// factory-sim's control endpoint for the page's remote control, event list and
// native layer: plain HTTP on loopback, POST a command line, the answer is the
// command's output. It is ours, not the library's: the factory UI protocol is not
// extended.
//
// Only the factory UI may drive the set: a request must carry kControlHeader (a
// header a web page can only send after a CORS preflight) and its Origin, when
// present, must be one of the page's own. A request has an overall deadline and
// each runs on a worker of its own, so a slow client holds nothing but its worker.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <list>
#include <mutex>
#include <set>
#include <string>
#include <thread>

#include "Commands.h"

namespace factorysim {

extern const char kControlHeader[];

class ControlServer {
public:
    using Handler = std::function<Outcome(const std::string& line)>;
    // The native layer's version and PNG bytes; version 0 while there is none.
    using NativeSource = std::function<std::pair<uint64_t, std::string>()>;
    // A running script's progress as JSON (GET /progress).
    using ProgressSource = std::function<std::string()>;

    ~ControlServer();
    // Binds the loopback port (0 picks a free one); the error is empty on success.
    std::string Bind(int port);
    // Origins allowed besides none (e.g. "http://127.0.0.1:7233").
    void AllowOrigins(std::set<std::string> origins) { m_origins = std::move(origins); }
    void Start(Handler handler, NativeSource native);
    void SetProgress(ProgressSource progress) { m_progress = std::move(progress); }
    void Stop();
    int Port() const { return m_port; }

private:
    struct Worker {
        std::thread thread;
        std::atomic<bool> done{false};
    };
    void Serve();
    void Answer(int client);
    void ReapWorkers(bool all);

    Handler m_handler;
    NativeSource m_native;
    ProgressSource m_progress;
    std::set<std::string> m_origins;
    int m_listen = -1;
    int m_port = 0;
    std::atomic<bool> m_stop{false};
    std::thread m_thread;
    std::list<Worker> m_workers;
};

}  // namespace factorysim
