// The WebSocket server's shared state: the channels' logs, the connections and
// the server they belong to, and the routines on them that the server loop
// (FactoryManagerWebSocket.cpp) and the page connections
// (FactoryManagerWebSocketPages.cpp) both use. Everything here is under the
// server's mutex unless it says otherwise.
#pragma once

#include <libwebsockets.h>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <vector>

// The protocol table; its entries 1 and 2 are the factory channels.
extern lws_protocols protocols[];

int callback_factory(lws* wsi, lws_callback_reasons reason, void* user, void* in, size_t len);

namespace factory_ws {

using SteadyClock = std::chrono::steady_clock;

// A page that stops reading leaves its socket full, and libwebsockets then never
// asks for more. Such a page is dropped, like a page whose write failed, once this
// much waits for it and nothing has been written to it for kStallTime. A page that
// reads, however slowly, is never dropped by a burst below kCeilingBytes, far above
// anything the library sends (a page redraw is a few kilobytes).
constexpr size_t kStalledBytes = 1024 * 1024;
constexpr auto kStallTime = std::chrono::seconds(3);
constexpr size_t kCeilingBytes = 64 * 1024 * 1024;

// A channel's notifications, kept once however many pages hear them; what every
// page of the channel has taken is dropped.
struct Channel {
    std::deque<std::string> texts;
    uint64_t first = 0;     // number of texts.front()
    uint64_t bytesEnd = 0;  // bytes ever appended
    uint64_t End() const { return first + texts.size(); }
};

// The greeting or the "connect" echo: goes out before notification `before`.
struct OwnFrame {
    uint64_t before;
    std::string text;
};

// The page's requests are a few dozen bytes. On a set the server listens on the
// factory network, so a longer message (all its fragments together) is not collected:
// the connection is closed instead, and nothing a client sends grows the process.
constexpr size_t kMaxMessageBytes = 4096;

struct Connection {
    int protocol = 0;         // entry of the protocol table
    uint64_t next = 0;        // the channel's next notification for it
    uint64_t nextOffset = 0;  // the channel's bytes before `next`
    std::deque<OwnFrame> own;
    SteadyClock::time_point progress;  // it last took something, or began to wait
    bool choked = false;               // stopped reading: to be closed, takes nothing more
    bool closing = false;              // the service thread has asked libwebsockets to close it
    std::string rx;                    // a message arriving in fragments
};

// Process-wide, like the context it serves. The mutex guards everything but the
// transmit buffer, which only the service thread touches.
struct Server {
    std::mutex mutex;
    std::condition_variable stopped;
    lws_context* context = nullptr;
    std::map<lws*, Connection> connections;
    Channel channels[3];  // by protocol table entry
    lws_sorted_usec_list_t stallCheck{};
    bool stallCheckArmed = false;  // only while some page has something waiting
    bool stop = false;
    bool destroying = false;
    std::vector<unsigned char> tx;
};

// Never destroyed: a host that exits with the manager alive leaves the service
// thread running through the exit handlers, and it must still find its server.
Server& TheServer();

// A connection's place no longer holds the log once it stops reading.
void CheckStall(Connection& connection, Channel& channel, SteadyClock::time_point now);
// Drops what every page of the channel has taken.
void Trim(Server& server, int protocol);
// A connection takes nothing that was queued before it.
void SkipQueued(Server& server, Connection& connection);
// Not under the lock: the service thread asks to be called back writeable for every
// connection with something queued, and closes the ones that stopped reading.
void RequestWriteable();

}  // namespace factory_ws
