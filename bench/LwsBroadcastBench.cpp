// A bare libwebsockets broadcast server, the yardstick for the library's own: the
// same protocol name and message texts, one frame per writeable callback as the
// library's minimal examples do it, nothing else.
//
//   vq27_lws_broadcast_bench PORT CLIENTS COUNT [TEXT]
#include <libwebsockets.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

struct State {
    int clients = 0;
    int wanted = 0;
    int count = 0;
    int closed = 0;
    const char* text = nullptr;
    std::vector<std::string> messages;  // made when every page is there
};
State g_state;

struct Session {
    size_t next;
};

int Callback(lws* wsi, lws_callback_reasons reason, void* user, void*, size_t) {
    Session* session = static_cast<Session*>(user);
    switch (reason) {
        case LWS_CALLBACK_ESTABLISHED:
            session->next = 0;
            if (++g_state.clients == g_state.wanted) {
                char buffer[256];
                for (int i = 0; i < g_state.count; ++i) {
                    if (g_state.text != nullptr) {
                        std::snprintf(buffer, sizeof(buffer),
                                      "{ \"cmd\": \"Bench\", \"data\": \"%s\" }", g_state.text);
                    } else {
                        std::snprintf(buffer, sizeof(buffer),
                                      "{ \"cmd\": \"Bench\", \"data\": %d }", i);
                    }
                    g_state.messages.emplace_back(buffer);
                }
                lws_callback_on_writable_all_protocol(lws_get_context(wsi), lws_get_protocol(wsi));
            }
            return 0;
        case LWS_CALLBACK_SERVER_WRITEABLE: {
            if (session->next >= g_state.messages.size()) {
                return 0;
            }
            const std::string& message = g_state.messages[session->next++];
            std::vector<unsigned char> frame(LWS_PRE + message.size());
            std::memcpy(frame.data() + LWS_PRE, message.data(), message.size());
            if (lws_write(wsi, frame.data() + LWS_PRE, message.size(), LWS_WRITE_TEXT) <
                static_cast<int>(message.size())) {
                return -1;
            }
            if (session->next < g_state.messages.size()) {
                lws_callback_on_writable(wsi);
            }
            return 0;
        }
        case LWS_CALLBACK_CLOSED:
            ++g_state.closed;
            return 0;
        default:
            return 0;
    }
}

lws_protocols kProtocols[] = {
    {"http-only", lws_callback_http_dummy, 0, 0, 0, nullptr, 0},
    {"factorymode-0", Callback, sizeof(Session), 0, 0, nullptr, 0},
    {nullptr, nullptr, 0, 0, 0, nullptr, 0},
};

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fprintf(stderr, "usage: %s PORT CLIENTS COUNT [TEXT]\n", argv[0]);
        return 2;
    }
    g_state.wanted = std::atoi(argv[2]);
    g_state.count = std::atoi(argv[3]);
    g_state.text = argc >= 5 ? argv[4] : nullptr;
    lws_set_log_level(LLL_ERR, nullptr);
    lws_context_creation_info info;
    std::memset(&info, 0, sizeof(info));
    info.port = std::atoi(argv[1]);
    info.iface = "127.0.0.1";
    info.protocols = kProtocols;
    info.gid = -1;
    info.uid = -1;
    lws_context* context = lws_create_context(&info);
    if (context == nullptr) {
        std::fprintf(stderr, "no context\n");
        return 1;
    }
    std::printf("serving on port %s: waiting for %d pages\n", argv[1], g_state.wanted);
    std::fflush(stdout);
    using Clock = std::chrono::steady_clock;
    Clock::time_point allDone{};
    while (g_state.closed < g_state.wanted) {
        lws_service(context, 0);
        if (!g_state.messages.empty() && allDone == Clock::time_point{}) {
            allDone = Clock::now() + std::chrono::seconds(30);
        }
        if (allDone != Clock::time_point{} && Clock::now() > allDone) {
            break;
        }
    }
    lws_context_destroy(context);
    return g_state.closed >= g_state.wanted ? 0 : 1;
}
