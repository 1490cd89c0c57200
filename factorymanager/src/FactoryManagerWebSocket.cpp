// The factory UI's WebSocket server: the protocol table, the server thread and its
// service loop, and the callbacks that greet the page, answer "connect", relay
// notifications and serve the test page over plain HTTP.
//
// Current libwebsockets can neither fork a service loop nor broadcast from another
// thread, so NotifyUI appends to a log per channel and wakes the loop with
// lws_cancel_service; each connection keeps its place in the log and the loop sends
// when the connection is writeable. The greeting and the "connect" echo are queued in
// the same order, so a page that sends "connect" and sees the echo knows every
// earlier notification has arrived.
#include <json-c/json.h>
#include <libwebsockets.h>

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstring>
#include <deque>
#include <map>
#include <mutex>
#include <vector>

#include "FactoryListenerCodes.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "FactoryWebSocketServer.h"
#include "TVManager.h"
#include "TvHost.h"

// The protocol table (below); its entries 1 and 2 are the factory channels.
extern lws_protocols protocols[];

namespace {

int callback_http(lws* wsi, lws_callback_reasons reason, void* user, void* in, size_t len);

constexpr char kGreeting[] = "{\"cmd\":\"established\"}";

// The callback's traces name it by the signature it has on the set, whose
// libwebsockets passes the context and older type names; log readers match on it.
constexpr char kCallbackFactoryName[] =
    "int callback_factory(libwebsocket_context*, libwebsocket*, libwebsocket_callback_reasons, "
    "void*, void*, size_t)";

// Header names of the handshake dump, with the token each one reads; the last one
// has no token in this libwebsockets and is never present.
struct HandshakeHeader {
    const char* name;
    int token;
};
const HandshakeHeader kHandshakeHeaders[] = {
    {"GET URI", WSI_TOKEN_GET_URI},
    {"Host", WSI_TOKEN_HOST},
    {"Connection", WSI_TOKEN_CONNECTION},
    {"key 1", WSI_TOKEN_KEY1},
    {"key 2", WSI_TOKEN_KEY2},
    {"Protocol", WSI_TOKEN_PROTOCOL},
    {"Upgrade", WSI_TOKEN_UPGRADE},
    {"Origin", WSI_TOKEN_ORIGIN},
    {"Draft", WSI_TOKEN_DRAFT},
    {"Challenge", WSI_TOKEN_CHALLENGE},
    {"Key", WSI_TOKEN_KEY},
    {"Version", WSI_TOKEN_VERSION},
    {"Sworigin", WSI_TOKEN_SWORIGIN},
    {"Extensions", WSI_TOKEN_EXTENSIONS},
    {"Accept", WSI_TOKEN_ACCEPT},
    {"Nonce", WSI_TOKEN_NONCE},
    {"Http", WSI_TOKEN_HTTP},
    {"MuxURL", -1},
};

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
Server& TheServer() {
    static Server* server = new Server;
    return *server;
}

// Under the server's lock, like the three below.
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

void RequestWriteable();

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

// The service thread asks to be called back writeable for every connection with
// something queued, and closes the ones that stopped reading.
void RequestWriteable() {
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

// The greeting goes first; the echo after every notification sent before it.
void Enqueue(lws* wsi, std::string text, bool front = false) {
    Server& server = TheServer();
    std::lock_guard<std::mutex> lock(server.mutex);
    auto it = server.connections.find(wsi);
    if (it == server.connections.end() || it->second.choked) {
        return;
    }
    Connection& connection = it->second;
    if (front) {
        connection.own.push_front(OwnFrame{connection.next, std::move(text)});
    } else {
        const uint64_t end = server.channels[connection.protocol].End();
        connection.own.push_back(OwnFrame{end, std::move(text)});
    }
    lws_callback_on_writable(wsi);
}

// Appends one unmasked server-to-page text frame (RFC 6455) to the buffer.
void AppendTextFrame(std::vector<unsigned char>& out, const std::string& text) {
    const uint64_t size = text.size();
    out.push_back(0x81);  // FIN, text
    if (size < 126) {
        out.push_back(static_cast<unsigned char>(size));
    } else if (size < 65536) {
        out.push_back(126);
        out.push_back(static_cast<unsigned char>(size >> 8));
        out.push_back(static_cast<unsigned char>(size));
    } else {
        out.push_back(127);
        for (int shift = 56; shift >= 0; shift -= 8) {
            out.push_back(static_cast<unsigned char>(size >> shift));
        }
    }
    out.insert(out.end(), text.begin(), text.end());
}

// Sends what is queued for a connection. Frames waiting together go out in one
// write (each still its own frame), so a burst of notifications to several pages
// costs one system call per page rather than one per message.
int SendQueued(lws* wsi) {
    constexpr size_t kBytesPerTurn = 64 * 1024;
    Server& server = TheServer();
    struct Frame {
        std::string text;
        bool broadcast;  // a notification, as opposed to the greeting or the echo
    };
    std::vector<Frame> frames;
    {
        std::lock_guard<std::mutex> lock(server.mutex);
        auto it = server.connections.find(wsi);
        if (it == server.connections.end() || it->second.choked) {
            return 0;
        }
        Connection& connection = it->second;
        Channel& channel = server.channels[connection.protocol];
        size_t bytes = 0;
        while (frames.empty() || bytes < kBytesPerTurn) {
            if (!connection.own.empty() && connection.own.front().before <= connection.next) {
                frames.push_back(Frame{std::move(connection.own.front().text), false});
                connection.own.pop_front();
            } else if (connection.next < channel.End()) {
                const std::string& text = channel.texts[connection.next - channel.first];
                frames.push_back(Frame{text, true});
                ++connection.next;
                connection.nextOffset += text.size();
            } else {
                break;
            }
            bytes += frames.back().text.size();
        }
        if (!frames.empty()) {
            // Writeable again: the page has taken what was written before.
            connection.progress = SteadyClock::now();
            Trim(server, connection.protocol);
        }
        if (!connection.own.empty() || connection.next < channel.End()) {
            lws_callback_on_writable(wsi);
        }
    }
    if (frames.empty()) {
        return 0;
    }
    bool broadcast = false;
    server.tx.assign(LWS_PRE, 0);
    for (const Frame& frame : frames) {
        if (frame.broadcast) {
            broadcast = true;
            FACTORY_LOG(FACTORY_LOG_INFO, "broadcast: %s, tx len: %d", frame.text.c_str(),
                        static_cast<int>(frame.text.size()));
        }
        AppendTextFrame(server.tx, frame.text);
    }
    const size_t size = server.tx.size() - LWS_PRE;
    // The frames are complete, so they go out as they stand; libwebsockets keeps
    // whatever the socket does not take at once and sends it before anything else.
    const int written = lws_write(wsi, server.tx.data() + LWS_PRE, size, LWS_WRITE_RAW);
    if (written < static_cast<int>(size) && broadcast) {
        FACTORY_LOG(FACTORY_LOG_INFO, "ERROR writing to socket");
        return 1;
    }
    return 0;
}

void HandleReceive(const char* fn, lws* wsi, const std::string& text) {
    FACTORY_LOG(FACTORY_LOG_INFO, "[%s] callback receive: %s, rx len: %d", fn, text.c_str(),
                static_cast<int>(text.size()));
    json_tokener_error error = json_tokener_success;
    json_object* root = json_tokener_parse_verbose(text.c_str(), &error);
    if (error != json_tokener_success) {
        FACTORY_LOG(FACTORY_LOG_INFO, "[%s] Parse input json error: %s", fn,
                    json_tokener_error_desc(error));
        return;
    }
    if (json_object_get_type(root) == json_type_object) {
        // A "cmd" of null is no cmd at all, as json-c's plain getter has it.
        json_object* cmd = json_object_object_get(root, "cmd");
        if (cmd == nullptr) {
            FACTORY_LOG(FACTORY_LOG_INFO, "[%s] Invalid input data!", fn);
        } else if (json_object_get_type(cmd) == json_type_string) {
            const char* name = json_object_get_string(cmd);
            FACTORY_LOG(FACTORY_LOG_INFO, "[%s] cmd: %s", fn, name);
            if (std::strcmp(name, "connect") == 0) {
                Enqueue(wsi, name);
            } else {
                FACTORY_LOG(FACTORY_LOG_INFO, "[%s] cmd: %s, unknown.", fn, name);
            }
        }
    }
    json_object_put(root);
}

// The context keeps its own copy of the table: find the entry by name.
int ProtocolIndex(lws* wsi) {
    const lws_protocols* protocol = lws_get_protocol(wsi);
    for (int p = 1; p <= 2; ++p) {
        if (protocol != nullptr && std::strcmp(protocol->name, protocols[p].name) == 0) {
            return p;
        }
    }
    return 0;
}

void DumpHandshake(lws* wsi) {
    std::vector<char> value;
    for (const HandshakeHeader& header : kHandshakeHeaders) {
        if (header.token < 0) {
            continue;
        }
        const auto token = static_cast<lws_token_indexes>(header.token);
        const int length = lws_hdr_total_length(wsi, token);
        if (length <= 0) {
            continue;
        }
        value.assign(static_cast<size_t>(length) + 1, '\0');
        if (lws_hdr_copy(wsi, value.data(), length + 1, token) >= 0) {
            FACTORY_LOG(FACTORY_LOG_INFO, "    %s = %s", header.name, value.data());
        }
    }
}

}  // namespace

int callback_factory(lws* wsi, lws_callback_reasons reason, void* user, void* in, size_t len);

// Entry 1 and 2 are chosen by NotifyUI's channel; the order is fixed.
lws_protocols protocols[] = {
    {"http-only", callback_http, 0, 0, 0, nullptr, 0},
    {"factorymode-0", callback_factory, sizeof(uint32_t), 0, 0, nullptr, 0},
    {"factorymode-1", callback_factory, sizeof(uint32_t), 0, 0, nullptr, 0},
    {nullptr, nullptr, 0, 0, 0, nullptr, 0},
};

int callback_factory(lws* wsi, lws_callback_reasons reason, void* user, void* in, size_t len) {
    // Named and numbered as in the set's own logs.
    FACTORY_LOG(FACTORY_LOG_WS, "%s[%d]", kCallbackFactoryName, 645);
    Server& server = TheServer();
    // The registry follows the transport whatever the mode, so that a connection
    // made while factory mode was off still hears notifications once it is on.
    if (reason == LWS_CALLBACK_ESTABLISHED) {
        std::lock_guard<std::mutex> lock(server.mutex);
        Connection& connection = server.connections[wsi];
        connection.protocol = ProtocolIndex(wsi);
        connection.progress = SteadyClock::now();
        SkipQueued(server, connection);
    }
    bool teardown = false;
    if (reason == LWS_CALLBACK_CLOSED) {
        std::lock_guard<std::mutex> lock(server.mutex);
        auto it = server.connections.find(wsi);
        if (it != server.connections.end()) {
            const int protocol = it->second.protocol;
            server.connections.erase(it);
            Trim(server, protocol);
        }
        teardown = server.destroying;
    }
    // The mode flag itself: its getter would trace every callback a second time.
    if (!FactoryManager::m_bIsFactoryEnabled) {
        if (reason == LWS_CALLBACK_SERVER_WRITEABLE) {
            // What was queued is ignored, like any traffic while the mode is off.
            std::lock_guard<std::mutex> lock(server.mutex);
            auto it = server.connections.find(wsi);
            if (it != server.connections.end()) {
                SkipQueued(server, it->second);
            }
        }
        return 0;
    }
    switch (reason) {
        case LWS_CALLBACK_ESTABLISHED:
            FACTORY_LOG(FACTORY_LOG_INFO, "callback_factory: LWS_CALLBACK_ESTABLISHED");
            FactoryManager::m_isFactoryUiLoaded = 1;
            if (user != nullptr) {
                *static_cast<uint32_t*>(user) = 0;
            }
            Enqueue(wsi, kGreeting, true);
            return 0;
        case LWS_CALLBACK_CLOSED: {
            FACTORY_LOG(FACTORY_LOG_INFO, "callback_factory: LWS_CALLBACK_CLOSED\n");
            // The context being destroyed with the manager is not the page closing.
            EventListener listener = g_pFactoryListener.load();
            if (listener != nullptr && !teardown) {
                listener(FactoryListener::UiSocketClosed, nullptr, nullptr);
            }
            return 0;
        }
        case LWS_CALLBACK_RECEIVE: {
            std::string text;
            {
                std::lock_guard<std::mutex> lock(server.mutex);
                auto it = server.connections.find(wsi);
                if (it == server.connections.end() || in == nullptr) {
                    return 0;
                }
                std::string& rx = it->second.rx;
                if (rx.size() + len > kMaxMessageBytes) {
                    const size_t sofar = rx.size() + len;
                    std::string().swap(rx);
                    FACTORY_LOG(FACTORY_LOG_ERROR,
                                "[%s] message of %zu bytes or more, over %zu: connection closed",
                                kCallbackFactoryName, sofar, kMaxMessageBytes);
                    return -1;
                }
                rx.append(static_cast<const char*>(in), len);
                if (!lws_is_final_fragment(wsi)) {
                    return 0;
                }
                text.swap(it->second.rx);
            }
            HandleReceive(kCallbackFactoryName, wsi, text);
            return 0;
        }
        case LWS_CALLBACK_SERVER_WRITEABLE:
            return SendQueued(wsi);
        case LWS_CALLBACK_FILTER_PROTOCOL_CONNECTION:
            DumpHandshake(wsi);
            return 0;
        default:
            return 0;
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
