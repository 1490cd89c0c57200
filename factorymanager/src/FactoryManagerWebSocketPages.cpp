// The page side of the factory UI's WebSocket server: a connection's greeting,
// its "connect" echo, the frames queued for it and what it sends. The greeting
// and the echo are queued in the same order as notifications, so a page that sends
// "connect" and sees the echo knows every earlier notification has arrived.
#include <json-c/json.h>
#include <libwebsockets.h>

#include <cstdint>
#include <cstring>
#include <mutex>
#include <string>
#include <vector>

#include "FactoryListenerCodes.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "FactoryWebSocketState.h"

using factory_ws::Channel;
using factory_ws::Connection;
using factory_ws::kMaxMessageBytes;
using factory_ws::OwnFrame;
using factory_ws::Server;
using factory_ws::SteadyClock;
using factory_ws::TheServer;

namespace {

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
