// The factory UI's WebSocket server: the protocol table, the server thread and its
// service loop, the channels' logs, and the callback that serves the test page over
// plain HTTP. What each page connection sends and receives is in
// FactoryManagerWebSocketPages.cpp.
//
// Current libwebsockets can neither fork a service loop nor broadcast from another
// thread, so NotifyUI appends to a log per channel and wakes the loop with
// lws_cancel_service; each connection keeps its place in the log and the loop sends
// when the connection is writeable.
#include <libwebsockets.h>

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <mutex>

#include "FactoryLog.h"
#include "FactoryManager.h"
#include "FactoryWebSocketServer.h"
#include "FactoryWebSocketState.h"
#include "TVManager.h"
#include "TvHost.h"

namespace {
int callback_http(lws* wsi, lws_callback_reasons reason, void* user, void* in, size_t len);
}  // namespace

// Entry 1 and 2 are chosen by NotifyUI's channel; the order is fixed.
lws_protocols protocols[] = {
    {"http-only", callback_http, 0, 0, 0, nullptr, 0},
    {"factorymode-0", callback_factory, sizeof(uint32_t), 0, 0, nullptr, 0},
    {"factorymode-1", callback_factory, sizeof(uint32_t), 0, 0, nullptr, 0},
    {nullptr, nullptr, 0, 0, 0, nullptr, 0},
};

namespace factory_ws {

// Never destroyed: a host that exits with the manager alive leaves the service
// thread running through the exit handlers, and it must still find its server.
Server& TheServer() {
    static Server* server = new Server;
    return *server;
}

// Under the server's lock, like the two below.
void CheckStall(Connection& connection, Channel& channel, SteadyClock::time_point now) {
    const uint64_t waiting = channel.bytesEnd - connection.nextOffset;
    const bool stalled = waiting > kStalledBytes && now - connection.progress >= kStallTime;
    if (connection.choked || (!stalled && waiting <= kCeilingBytes)) {
        return;
    }
    // The service thread closes it (RequestWriteable); its place no longer holds the log.
    connection.choked = true;
    connection.own.clear();
    connection.next = channel.End();
    connection.nextOffset = channel.bytesEnd;
}

// Drops what every page of the channel has taken.
void Trim(Server& server, int protocol) {
    Channel& channel = server.channels[protocol];
    uint64_t keep = channel.End();
    for (const auto& entry : server.connections) {
        if (entry.second.protocol == protocol) {
            keep = std::min(keep, entry.second.next);
        }
    }
    while (channel.first < keep) {
        channel.texts.pop_front();
        ++channel.first;
    }
}

void SkipQueued(Server& server, Connection& connection) {
    Channel& channel = server.channels[connection.protocol];
    connection.own.clear();
    connection.next = channel.End();
    connection.nextOffset = channel.bytesEnd;
    Trim(server, connection.protocol);
}

}  // namespace factory_ws

using factory_ws::Channel;
using factory_ws::Connection;
using factory_ws::RequestWriteable;
using factory_ws::Server;
using factory_ws::SteadyClock;
using factory_ws::TheServer;
using factory_ws::Trim;

namespace {

// A page that stops reading while nothing new comes is found all the same. The
// check runs only while something waits for a page, so an idle set is never woken.
void StallCheck(lws_sorted_usec_list_t*) {
    {
        std::lock_guard<std::mutex> lock(TheServer().mutex);
        TheServer().stallCheckArmed = false;
    }
    RequestWriteable();
}

void ServiceLoop() {
    Server& server = TheServer();
    lws_context* context = nullptr;
    {
        std::lock_guard<std::mutex> lock(server.mutex);
        context = server.context;
    }
    if (context != nullptr) {
        for (;;) {
            {
                std::lock_guard<std::mutex> lock(server.mutex);
                if (server.stop) {
                    lws_sul_cancel(&server.stallCheck);
                    server.stallCheckArmed = false;
                    return;
                }
            }
            if (lws_service(context, 0) < 0) {
                FACTORY_LOG(FACTORY_LOG_ERROR, "websocket service loop failed");
                break;
            }
        }
    }
    // No server: idle until the manager goes (a stop-aware wait, not the set's
    // clock, so an idle thread never moves a simulated set's time on).
    std::unique_lock<std::mutex> lock(server.mutex);
    server.stopped.wait(lock, [&] { return server.stop; });
}

}  // namespace

void factory_ws::RequestWriteable() {
    Server& server = TheServer();
    std::lock_guard<std::mutex> lock(server.mutex);
    if (server.context == nullptr) {
        return;
    }
    bool pending[3] = {false, false, false};
    const auto now = SteadyClock::now();
    for (auto& entry : server.connections) {
        Connection& connection = entry.second;
        CheckStall(connection, server.channels[connection.protocol], now);
        if (connection.choked && !connection.closing) {
            connection.closing = true;
            FACTORY_LOG(FACTORY_LOG_INFO, "ERROR writing to socket");
            // Its socket is full: close without waiting to flush what it holds.
            lws_set_timeout(entry.first, PENDING_TIMEOUT_USER_OK, LWS_TO_KILL_ASYNC);
        }
        if (!connection.own.empty() ||
            connection.next < server.channels[connection.protocol].End()) {
            pending[connection.protocol] = true;
        }
    }
    for (int p = 1; p <= 2; ++p) {
        Trim(server, p);
    }
    if ((pending[1] || pending[2]) && !server.stallCheckArmed) {
        server.stallCheckArmed = true;
        lws_sul_schedule(server.context, 0, &server.stallCheck, StallCheck, LWS_US_PER_SEC);
    }
    for (int p = 1; p <= 2; ++p) {
        if (pending[p]) {
            lws_callback_on_writable_all_protocol(server.context, &protocols[p]);
        }
    }
}

namespace {

int callback_http(lws* wsi, lws_callback_reasons reason, void* user, void* in, size_t len) {
    switch (reason) {
        case LWS_CALLBACK_HTTP: {
            const char* uri = static_cast<const char*>(in);
            FACTORY_LOG(FACTORY_LOG_INFO, "serving HTTP URI %s", uri ? uri : "(null)");
            const bool favicon = uri != nullptr && std::strcmp(uri, "/favicon.ico") == 0;
            const std::string file = TvHost_Path(favicon ? "/favicon.ico" : "/test.html");
            // libwebsockets answers a missing file with a 404 but no error, so look first.
            const bool readable = access(file.c_str(), R_OK) == 0;
            const int n =
                readable ? lws_serve_http_file(wsi, file.c_str(),
                                               favicon ? "image/x-icon" : "text/html", nullptr, 0)
                         : -1;
            if (n < 0) {
                FACTORY_LOG(FACTORY_LOG_INFO,
                            favicon ? "Failed to send favicon" : "Failed to send HTTP file");
                if (!readable) {
                    lws_return_http_status(wsi, HTTP_STATUS_NOT_FOUND, nullptr);
                }
                // Close rather than leave the client waiting.
                return -1;
            }
            if (n > 0 && lws_http_transaction_completed(wsi)) {
                return -1;
            }
            return 0;
        }
        case LWS_CALLBACK_FILTER_NETWORK_CONNECTION: {
            // The peer is not looked up: both names stay empty.
            char name[128] = {};
            char address[128] = {};
            FACTORY_LOG(FACTORY_LOG_INFO, "Received network connect from %s (%s)", name, address);
            return 0;
        }
        case LWS_CALLBACK_EVENT_WAIT_CANCELLED:
            RequestWriteable();
            return 0;
        default:
            return lws_callback_http_dummy(wsi, reason, user, in, len);
    }
}

}  // namespace

void* threadInitFactoryWebsocketServer(void*) {
    FactoryManager* manager = nullptr;
    for (int left = 5; left > 0; --left) {
        manager = TVManager::GetInstance()->getFactoryManager();
        if (manager != nullptr) {
            break;
        }
        FACTORY_LOG(FACTORY_LOG_ERROR, "[%s] FactoryManager not intialized, retry: %d",
                    __PRETTY_FUNCTION__, left);
        TvHost_Sleep(1);
    }
    if (manager != nullptr) {
        manager->InitWebSocketServer();
    } else {
        FACTORY_LOG(FACTORY_LOG_ERROR, "[%s] FactoryManager not intialized", __PRETTY_FUNCTION__);
    }
    ServiceLoop();
    return nullptr;
}

void FactoryManager::InitWebSocketServer() {
    FACTORY_TRACE();
    lws_set_log_level(LLL_ERR | LLL_WARN, nullptr);
    lws_context_creation_info info;
    std::memset(&info, 0, sizeof(info));
    info.port = TvHost_WebSocketPort();
    info.iface = TvHost_WebSocketInterface();
    info.protocols = protocols;
    // No extensions: notifications leave as ready-made frames (SendQueued), which a
    // negotiated compression would have to rewrite.
    info.extensions = nullptr;
    info.gid = -1;
    info.uid = -1;
    info.options = 0;
    lws_context* context = lws_create_context(&info);
    if (context == nullptr) {
        FACTORY_LOG(FACTORY_LOG_INFO, "libwebsocket init failed");
        return;
    }
    Server& server = TheServer();
    {
        std::lock_guard<std::mutex> lock(server.mutex);
        server.context = context;
    }
    m_stContext = context;
    FACTORY_LOG(FACTORY_LOG_INFO, "websocket server initialized");
}

void FactoryManager::StopWebSocketServer() {
    if (!m_bWebSocketThreadStarted) {
        return;
    }
    factory_ws::RequestStop();
    pthread_join(m_hWebSocketThread, nullptr);
    m_bWebSocketThreadStarted = 0;
}

namespace factory_ws {

void PrepareStart() {
    Server& server = TheServer();
    std::lock_guard<std::mutex> lock(server.mutex);
    server.stop = false;
}

void Broadcast(int protocolIndex, const std::string& text) {
    Server& server = TheServer();
    std::lock_guard<std::mutex> lock(server.mutex);
    if (protocolIndex < 1 || protocolIndex > 2) {
        return;
    }
    Channel& channel = server.channels[protocolIndex];
    const auto now = SteadyClock::now();
    bool heard = false;
    for (auto& entry : server.connections) {
        Connection& connection = entry.second;
        if (connection.protocol != protocolIndex || connection.choked) {
            continue;
        }
        heard = true;
        if (connection.next == channel.End() && connection.own.empty()) {
            connection.progress = now;  // it waits from now on
        }
    }
    if (!heard) {
        return;
    }
    channel.texts.push_back(text);
    channel.bytesEnd += text.size();
    for (auto& entry : server.connections) {
        if (entry.second.protocol == protocolIndex) {
            // The service thread closes a stalled page (RequestWriteable), woken below.
            CheckStall(entry.second, channel, now);
        }
    }
    Trim(server, protocolIndex);
    // Under the lock, so the context cannot be destroyed meanwhile.
    if (server.context != nullptr) {
        lws_cancel_service(server.context);
    }
}

void RequestStop() {
    Server& server = TheServer();
    std::lock_guard<std::mutex> lock(server.mutex);
    server.stop = true;
    if (server.context != nullptr) {
        lws_cancel_service(server.context);
    }
    server.stopped.notify_all();
}

void DestroyContext(lws_context* context) {
    Server& server = TheServer();
    {
        std::lock_guard<std::mutex> lock(server.mutex);
        if (server.context == context) {
            server.context = nullptr;
        }
        server.destroying = true;
    }
    lws_context_destroy(context);
    std::lock_guard<std::mutex> lock(server.mutex);
    server.stallCheckArmed = false;
    server.connections.clear();
    for (Channel& channel : server.channels) {
        channel.first = channel.End();
        channel.texts.clear();
    }
    server.destroying = false;
}

}  // namespace factory_ws
