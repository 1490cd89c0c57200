// A WebSocket client of the simulated set's browser: one connection on one
// protocol, served by a libwebsockets client context on a thread of its own.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

struct lws;
struct lws_context;

namespace sim {

// What Settle sends: a "connect" as the page's own, marked so that a log reader can
// tell the barrier from the page's greeting reply.
extern const char kSettleConnect[];

class PageClient {
public:
    // onText sees every text frame except the greeting and the "connect" echo.
    PageClient(std::string address, int port, std::string protocol,
               std::function<void(const std::string&)> onText);
    ~PageClient();
    PageClient(const PageClient&) = delete;
    PageClient& operator=(const PageClient&) = delete;

    // Connects, retrying while the server comes up, sends {"cmd":"connect"} once
    // greeted, and waits for the greeting. False when none came in time.
    bool Open(std::chrono::milliseconds timeout);
    bool Greeted() const;
    // Sends kSettleConnect and waits for its echo, behind everything the server
    // queued for this page before.
    bool Settle(std::chrono::milliseconds timeout);
    void Close(std::chrono::milliseconds timeout);

    // The client context's callback, on the service thread.
    int Handle(lws* wsi, int reason, void* in, size_t len);

private:
    enum class State { Idle, Connecting, Open };
    void Wake();
    void QueueConnectLocked(const char* text);

    std::string m_address;
    int m_port;
    std::string m_protocol;
    std::function<void(const std::string&)> m_onText;

    lws_context* m_context = nullptr;
    std::thread m_thread;
    bool m_stop = false;

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    State m_state = State::Idle;
    lws* m_wsi = nullptr;
    bool m_wantConnect = false;
    bool m_wantClose = false;
    bool m_greeted = false;
    std::deque<std::string> m_out;
    uint64_t m_connectsSent = 0;
    uint64_t m_echoes = 0;
    std::string m_rx;
    std::chrono::steady_clock::time_point m_lastAttempt{};
};

}  // namespace sim
