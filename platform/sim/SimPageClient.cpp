#include "SimPageClient.h"

#include <libwebsockets.h>

#include <cstring>
#include <vector>

namespace sim {

const char kSettleConnect[] = "{\"cmd\":\"connect\",\"settle\":true}";

namespace {

constexpr char kGreeting[] = "{\"cmd\":\"established\"}";
constexpr char kConnect[] = "{\"cmd\":\"connect\"}";
constexpr auto kRetryDelay = std::chrono::milliseconds(20);

int ClientCallback(lws* wsi, lws_callback_reasons reason, void*, void* in, size_t len) {
    auto* client = static_cast<PageClient*>(lws_context_user(lws_get_context(wsi)));
    return client ? client->Handle(wsi, reason, in, len) : 0;
}

// One table for every client; the server's protocol name travels with each connection.
lws_protocols kClientProtocols[] = {
    {"sim-page", ClientCallback, 0, 0, 0, nullptr, 0},
    {nullptr, nullptr, 0, 0, 0, nullptr, 0},
};

}  // namespace

PageClient::PageClient(std::string address, int port, std::string protocol,
                       std::function<void(const std::string&)> onText)
    : m_address(address.empty() ? "127.0.0.1" : std::move(address)),
      m_port(port),
      m_protocol(std::move(protocol)),
      m_onText(std::move(onText)) {
    lws_set_log_level(LLL_ERR | LLL_WARN, nullptr);
    lws_context_creation_info info;
    std::memset(&info, 0, sizeof(info));
    info.port = CONTEXT_PORT_NO_LISTEN;
    info.protocols = kClientProtocols;
    info.gid = -1;
    info.uid = -1;
    info.user = this;
    m_context = lws_create_context(&info);
    if (m_context != nullptr) {
        m_thread = std::thread([this] {
            for (;;) {
                {
                    std::lock_guard<std::mutex> lock(m_mutex);
                    if (m_stop) {
                        return;
                    }
                }
                if (lws_service(m_context, 0) < 0) {
                    return;
                }
            }
        });
    }
}

PageClient::~PageClient() {
    if (m_context == nullptr) {
        return;
    }
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_stop = true;
    }
    lws_cancel_service(m_context);
    m_thread.join();
    lws_context_destroy(m_context);
}

void PageClient::Wake() {
    if (m_context != nullptr) {
        lws_cancel_service(m_context);
    }
}

void PageClient::QueueConnectLocked(const char* text) {
    m_out.emplace_back(text);
    ++m_connectsSent;
}

bool PageClient::Open(std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!(m_state == State::Open && m_greeted)) {
        const auto now = std::chrono::steady_clock::now();
        if (now >= deadline || m_context == nullptr) {
            return false;
        }
        if (m_state == State::Idle && !m_wantConnect && now - m_lastAttempt >= kRetryDelay) {
            m_wantConnect = true;
            m_lastAttempt = now;
            lock.unlock();
            Wake();
            lock.lock();
            continue;
        }
        m_changed.wait_until(lock, std::min(deadline, now + kRetryDelay));
    }
    return true;
}

bool PageClient::Greeted() const {
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_state == State::Open && m_greeted;
}

bool PageClient::Settle(std::chrono::milliseconds timeout) {
    std::unique_lock<std::mutex> lock(m_mutex);
    if (!(m_state == State::Open && m_greeted)) {
        return false;
    }
    QueueConnectLocked(kSettleConnect);
    const uint64_t target = m_connectsSent;
    lock.unlock();
    Wake();
    lock.lock();
    return m_changed.wait_for(lock, timeout, [&] {
        return m_echoes >= target || m_state != State::Open;
    }) && m_echoes >= target;
}

void PageClient::Close(std::chrono::milliseconds timeout) {
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_state == State::Idle) {
        return;
    }
    m_wantClose = true;
    lock.unlock();
    Wake();
    lock.lock();
    m_changed.wait_for(lock, timeout, [&] { return m_state == State::Idle; });
}

int PageClient::Handle(lws* wsi, int reason, void* in, size_t len) {
    switch (reason) {
        case LWS_CALLBACK_EVENT_WAIT_CANCELLED: {
            bool connect = false;
            {
                std::lock_guard<std::mutex> lock(m_mutex);
                if (m_wantConnect && m_state == State::Idle) {
                    connect = true;
                    m_state = State::Connecting;
                }
                m_wantConnect = false;
                if (m_wsi != nullptr && m_state == State::Open && (!m_out.empty() || m_wantClose)) {
                    lws_callback_on_writable(m_wsi);
                }
            }
            if (connect) {
                lws_client_connect_info ci;
                std::memset(&ci, 0, sizeof(ci));
                ci.context = m_context;
                ci.address = m_address.c_str();
                ci.port = m_port;
                ci.path = "/";
                ci.host = m_address.c_str();
                ci.origin = m_address.c_str();
                ci.protocol = m_protocol.c_str();
                ci.local_protocol_name = kClientProtocols[0].name;
                lws* pending = lws_client_connect_via_info(&ci);
                std::lock_guard<std::mutex> lock(m_mutex);
                if (pending == nullptr) {
                    m_state = State::Idle;
                    m_changed.notify_all();
                }
            }
            return 0;
        }
        case LWS_CALLBACK_CLIENT_ESTABLISHED: {
            std::lock_guard<std::mutex> lock(m_mutex);
            m_state = State::Open;
            m_wsi = wsi;
            m_greeted = false;
            m_rx.clear();
            m_changed.notify_all();
            return 0;
        }
        case LWS_CALLBACK_CLIENT_RECEIVE: {
            std::string text;
            {
                std::lock_guard<std::mutex> lock(m_mutex);
                m_rx.append(static_cast<const char*>(in), len);
                if (!lws_is_final_fragment(wsi)) {
                    return 0;
                }
                text.swap(m_rx);
                if (text == kGreeting) {
                    // The page says "connect" as soon as it is greeted.
                    m_greeted = true;
                    QueueConnectLocked(kConnect);
                    lws_callback_on_writable(wsi);
                    m_changed.notify_all();
                    return 0;
                }
                if (text == "connect") {
                    ++m_echoes;
                    m_changed.notify_all();
                    return 0;
                }
            }
            if (m_onText) {
                m_onText(text);
            }
            return 0;
        }
        case LWS_CALLBACK_CLIENT_WRITEABLE: {
            std::string frame;
            bool more = false;
            {
                std::lock_guard<std::mutex> lock(m_mutex);
                if (m_wantClose) {
                    return -1;
                }
                if (m_out.empty()) {
                    return 0;
                }
                frame = std::move(m_out.front());
                m_out.pop_front();
                more = !m_out.empty();
            }
            std::vector<unsigned char> buffer(LWS_PRE + frame.size());
            std::memcpy(buffer.data() + LWS_PRE, frame.data(), frame.size());
            if (lws_write(wsi, buffer.data() + LWS_PRE, frame.size(), LWS_WRITE_TEXT) <
                static_cast<int>(frame.size())) {
                return -1;
            }
            if (more) {
                lws_callback_on_writable(wsi);
            }
            return 0;
        }
        case LWS_CALLBACK_CLIENT_CONNECTION_ERROR:
        case LWS_CALLBACK_CLIENT_CLOSED: {
            std::lock_guard<std::mutex> lock(m_mutex);
            m_state = State::Idle;
            m_wsi = nullptr;
            m_greeted = false;
            m_wantClose = false;
            m_out.clear();
            m_echoes = m_connectsSent;  // nothing more will come back
            m_changed.notify_all();
            return 0;
        }
        default:
            return 0;
    }
}

}  // namespace sim
