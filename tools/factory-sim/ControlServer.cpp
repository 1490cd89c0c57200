#include "ControlServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <strings.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sstream>

namespace factorysim {

namespace {

constexpr size_t kMaxRequest = 64 * 1024;

// The page is served by the library on another port, so every answer allows it.
const char* const kCors =
    "Access-Control-Allow-Origin: *\r\n"
    "Access-Control-Allow-Methods: POST, OPTIONS\r\n"
    "Access-Control-Allow-Headers: Content-Type\r\n";

void SendAll(int fd, const std::string& text) {
    size_t done = 0;
    while (done < text.size()) {
        const ssize_t n = ::send(fd, text.data() + done, text.size() - done, MSG_NOSIGNAL);
        if (n <= 0) {
            return;
        }
        done += static_cast<size_t>(n);
    }
}

void Reply(int fd, const std::string& status, const std::string& body) {
    std::ostringstream out;
    out << "HTTP/1.1 " << status << "\r\n"
        << kCors << "Content-Type: text/plain; charset=utf-8\r\n"
        << "Cache-Control: no-store\r\nConnection: close\r\n"
        << "Content-Length: " << body.size() << "\r\n\r\n"
        << body;
    SendAll(fd, out.str());
}

}  // namespace

ControlServer::~ControlServer() { Stop(); }

std::string ControlServer::Start(int port, Handler handler) {
    m_handler = std::move(handler);
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
        return "control port " + std::to_string(port) + ": " + error;
    }
    socklen_t len = sizeof(addr);
    ::getsockname(m_listen, reinterpret_cast<sockaddr*>(&addr), &len);
    m_port = ntohs(addr.sin_port);
    m_stop = false;
    m_thread = std::thread([this] { Serve(); });
    return "";
}

void ControlServer::Stop() {
    m_stop = true;
    if (m_thread.joinable()) {
        m_thread.join();
    }
    if (m_listen >= 0) {
        ::close(m_listen);
        m_listen = -1;
    }
}

void ControlServer::Serve() {
    while (!m_stop) {
        pollfd p{m_listen, POLLIN, 0};
        if (::poll(&p, 1, 200) <= 0) {
            continue;
        }
        const int client = ::accept4(m_listen, nullptr, nullptr, SOCK_CLOEXEC);
        if (client >= 0) {
            Answer(client);
            ::close(client);
        }
    }
}

void ControlServer::Answer(int client) {
    std::string request;
    size_t headerEnd = std::string::npos;
    size_t length = 0;
    char buf[4096];
    for (;;) {
        pollfd p{client, POLLIN, 0};
        if (::poll(&p, 1, 2000) <= 0) {
            return;  // a client that says nothing gets nothing
        }
        const ssize_t n = ::recv(client, buf, sizeof(buf), 0);
        if (n <= 0) {
            return;
        }
        request.append(buf, static_cast<size_t>(n));
        if (request.size() > kMaxRequest) {
            Reply(client, "413 Payload Too Large", "request too large\n");
            return;
        }
        if (headerEnd == std::string::npos) {
            headerEnd = request.find("\r\n\r\n");
            if (headerEnd == std::string::npos) {
                continue;
            }
            std::istringstream headers(request.substr(0, headerEnd));
            for (std::string line; std::getline(headers, line);) {
                if (strncasecmp(line.c_str(), "content-length:", 15) == 0) {
                    length = std::strtoul(line.c_str() + 15, nullptr, 10);
                }
            }
        }
        if (request.size() >= headerEnd + 4 + length) {
            break;
        }
    }
    const std::string method = request.substr(0, request.find(' '));
    if (method == "OPTIONS") {
        Reply(client, "204 No Content", "");
        return;
    }
    if (method != "POST") {
        Reply(client, "405 Method Not Allowed", "POST a console command line\n");
        return;
    }
    std::istringstream body(request.substr(headerEnd + 4, length));
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
    Reply(client, ok ? "200 OK" : "400 Bad Request", answer);
}

}  // namespace factorysim
