// factory-sim's control endpoint for the page's remote control and event list:
// plain HTTP on loopback, POST a command line, the answer is the command's output.
// It is ours, not the library's: the factory UI protocol is not extended.
#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <thread>

#include "Commands.h"

namespace factorysim {

class ControlServer {
public:
    using Handler = std::function<Outcome(const std::string& line)>;

    ~ControlServer();
    // Port 0 picks a free one. The error is empty on success.
    std::string Start(int port, Handler handler);
    void Stop();
    int Port() const { return m_port; }

private:
    void Serve();
    void Answer(int client);

    Handler m_handler;
    int m_listen = -1;
    int m_port = 0;
    std::atomic<bool> m_stop{false};
    std::thread m_thread;
};

}  // namespace factorysim
