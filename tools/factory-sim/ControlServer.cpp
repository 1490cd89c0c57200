#include "ControlServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <strings.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <map>
#include <sstream>

#include "Names.h"

namespace factorysim {

const char kControlHeader[] = "X-Factory-Control";

namespace {

constexpr size_t kMaxRequest = 64 * 1024;
constexpr size_t kMaxWorkers = 8;
constexpr auto kRequestDeadline = std::chrono::seconds(3);

void SendAll(int fd, const std::string& text) {
    size_t done = 0;
    while (done < text.size()) {
        const ssize_t n = ::send(fd, text.data() + done, text.size() - done, MSG_NOSIGNAL);
        if (n <= 0) {
            return;  // includes the send timeout: a client that does not read loses its answer
        }
        done += static_cast<size_t>(n);
    }
}

struct Request {
    std::string method;
    std::string target;
    std::map<std::string, std::string> headers;  // names in lower case
    std::string body;
};

std::string Lower(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return text;
}

// A Content-Length is decimal digits only, and fits.
bool ParseLength(const std::string& text, size_t& length) {
    if (text.empty() || text.size() > 12 ||
        text.find_first_not_of("0123456789") != std::string::npos) {
        return false;
    }
    length = static_cast<size_t>(std::strtoull(text.c_str(), nullptr, 10));
    return true;
}

// Reads one request whole by the deadline; false for anything else.
bool ReadRequest(int client, Request& request, std::string& refusal) {
    const auto deadline = std::chrono::steady_clock::now() + kRequestDeadline;
    std::string raw;
    size_t headerEnd = std::string::npos;
    size_t length = 0;
    char buf[4096];
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
                              deadline - std::chrono::steady_clock::now())
                              .count();
        pollfd p{client, POLLIN, 0};
        if (left <= 0 || ::poll(&p, 1, static_cast<int>(left)) <= 0) {
            refusal = "408 Request Timeout";
            return false;
        }
        const ssize_t n = ::recv(client, buf, sizeof(buf), 0);
        if (n <= 0) {
            return false;
        }
        raw.append(buf, static_cast<size_t>(n));
        if (raw.size() > kMaxRequest) {
            refusal = "413 Payload Too Large";
            return false;
        }
        if (headerEnd == std::string::npos) {
            headerEnd = raw.find("\r\n\r\n");
            if (headerEnd == std::string::npos) {
                continue;
            }
            std::istringstream head(raw.substr(0, headerEnd));
            std::string line;
            std::getline(head, line);
            std::istringstream first(line);
            first >> request.method >> request.target;
            while (std::getline(head, line)) {
                const auto colon = line.find(':');
                if (colon != std::string::npos) {
                    request.headers[Lower(Trim(line.substr(0, colon)))] =
                        Trim(line.substr(colon + 1));
                }
            }
            // Commands come in a body of a stated length only: a chunked body, or a
            // POST without its length, would otherwise run as no command at all.
            if (request.headers.count("transfer-encoding") != 0) {
                refusal = "411 Length Required";
                return false;
            }
            const auto stated = request.headers.find("content-length");
            if (stated == request.headers.end()) {
                if (request.method == "POST") {
                    refusal = "411 Length Required";
                    return false;
                }
            } else if (!ParseLength(stated->second, length)) {
                refusal = "400 Bad Request";
                return false;
            }
            if (length > kMaxRequest) {
                refusal = "413 Payload Too Large";
                return false;
            }
        }
        if (raw.size() >= headerEnd + 4 + length) {
            request.body = raw.substr(headerEnd + 4, length);
            return true;
        }
    }
}

}  // namespace

ControlServer::~ControlServer() { Stop(); }

std::string ControlServer::Bind(int port) {
    m_listen = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (m_listen < 0) {
        return std::string("socket: ") + std::strerror(errno);
    }
    const int yes = 1;
    ::setsockopt(m_listen, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes));
    sockaddr_in addr{};
    addr.sin_family = AF_INET;
    addr.sin_port = htons(static_cast<uint16_t>(port));
    addr.sin_addr.s_addr = htonl(INADDR_LOOPBACK);  // the set's controls stay on this host
    if (::bind(m_listen, reinterpret_cast<sockaddr*>(&addr), sizeof(addr)) != 0 ||
        ::listen(m_listen, 16) != 0) {
        const std::string error = std::strerror(errno);
        ::close(m_listen);
        m_listen = -1;
        return "control port " + std::to_string(port) + " on 127.0.0.1: " + error;
    }
    socklen_t len = sizeof(addr);
    ::getsockname(m_listen, reinterpret_cast<sockaddr*>(&addr), &len);
    m_port = ntohs(addr.sin_port);
    return "";
}

void ControlServer::Start(Handler handler, NativeSource native) {
    m_handler = std::move(handler);
    m_native = std::move(native);
    m_stop = false;
    m_thread = std::thread([this] { Serve(); });
}

void ControlServer::Stop() {
    m_stop = true;
    if (m_thread.joinable()) {
        m_thread.join();
    }
    ReapWorkers(true);
    if (m_listen >= 0) {
        ::close(m_listen);
        m_listen = -1;
    }
}

void ControlServer::ReapWorkers(bool all) {
    for (auto it = m_workers.begin(); it != m_workers.end();) {
        if (all || it->done) {
            it->thread.join();
            it = m_workers.erase(it);
        } else {
            ++it;
        }
    }
}

void ControlServer::Serve() {
    while (!m_stop) {
        ReapWorkers(false);
        pollfd p{m_listen, POLLIN, 0};
        if (::poll(&p, 1, 100) <= 0) {
            continue;
        }
        const int client = ::accept4(m_listen, nullptr, nullptr, SOCK_CLOEXEC);
        if (client < 0) {
            continue;
        }
        const timeval sendLimit{3, 0};
        ::setsockopt(client, SOL_SOCKET, SO_SNDTIMEO, &sendLimit, sizeof(sendLimit));
        if (m_workers.size() >= kMaxWorkers) {
            SendAll(client,
                    "HTTP/1.1 503 Service Unavailable\r\nContent-Length: 0\r\n"
                    "Connection: close\r\n\r\n");
            ::close(client);
            continue;
        }
        m_workers.emplace_back();
        Worker& worker = m_workers.back();
        worker.thread = std::thread([this, client, &worker] {
            Answer(client);
            ::close(client);
            worker.done = true;
        });
    }
}

void ControlServer::Answer(int client) {
    Request request;
    std::string refusal;
    const auto reply = [client](const std::string& status, const std::string& allowOrigin,
                                const std::string& type, const std::string& extra,
                                const std::string& body) {
        std::ostringstream out;
        out << "HTTP/1.1 " << status << "\r\n";
        if (!allowOrigin.empty()) {
            out << "Access-Control-Allow-Origin: " << allowOrigin << "\r\n"
                << "Vary: Origin\r\n"
                << "Access-Control-Allow-Methods: GET, POST, OPTIONS\r\n"
                << "Access-Control-Allow-Headers: " << kControlHeader << ", Content-Type\r\n"
                << "Access-Control-Expose-Headers: X-Native-Version\r\n";
        }
        out << "Content-Type: " << type << "\r\n"
            << extra << "Cache-Control: no-store\r\nConnection: close\r\n"
            << "Content-Length: " << body.size() << "\r\n\r\n"
            << body;
        SendAll(client, out.str());
    };
    const std::string text = "text/plain; charset=utf-8";
    if (!ReadRequest(client, request, refusal)) {
        if (!refusal.empty()) {
            reply(refusal, "", text, "", "");
        }
        return;
    }
    // A request without Origin comes from a tool on this host (curl); one with an
    // Origin comes from a web page, which must be the factory UI.
    const auto origin = request.headers.find("origin");
    const bool hasOrigin = origin != request.headers.end();
    if (hasOrigin && m_origins.count(origin->second) == 0) {
        reply("403 Forbidden", "", text, "", "not the factory UI's origin\n");
        return;
    }
    const std::string allow = hasOrigin ? origin->second : "";
    if (request.method == "OPTIONS") {
        reply("204 No Content", allow, text, "", "");
        return;
    }
    // A page cannot add this header without the preflight above, which only the
    // factory UI's origin passes.
    if (request.headers.count(Lower(kControlHeader)) == 0) {
        reply("403 Forbidden", allow, text, "",
              std::string("a request needs the ") + kControlHeader + " header\n");
        return;
    }
    if (request.method == "GET" && request.target.rfind("/native.png", 0) == 0) {
        const auto [version, png] = m_native ? m_native() : std::make_pair(uint64_t{0}, "");
        const auto since = request.target.find("since=");
        const bool same = since != std::string::npos &&
                          std::strtoull(request.target.c_str() + since + 6, nullptr, 10) == version;
        const std::string tag = "X-Native-Version: " + std::to_string(version) + "\r\n";
        // 204: nothing new. An empty 200: the layer is hidden now.
        if (version == 0 || same) {
            reply("204 No Content", allow, "image/png", tag, "");
        } else {
            reply("200 OK", allow, "image/png", tag, png);
        }
        return;
    }
    if (request.method == "GET" && request.target.rfind("/progress", 0) == 0) {
        reply("200 OK", allow, "application/json", "",
              m_progress ? m_progress() : "{\"running\":false}");
        return;
    }
    if (request.method != "POST") {
        reply("405 Method Not Allowed", allow, text, "", "POST a console command line\n");
        return;
    }
    std::istringstream body(request.body);
    std::string answer;
    bool ok = true;
    // Several lines run in order; the first that fails ends the request.
    for (std::string line; ok && std::getline(body, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        const Outcome outcome = m_handler(line);
        ok = outcome.ok;
        if (!outcome.output.empty()) {
            answer += outcome.output + (outcome.output.back() == '\n' ? "" : "\n");
        }
    }
    reply(ok ? "200 OK" : "400 Bad Request", allow, text, "", answer);
}

}  // namespace factorysim
