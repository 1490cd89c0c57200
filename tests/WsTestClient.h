// A small blocking WebSocket and HTTP client over plain sockets, to talk to the
// factory UI server the way a browser on the line would.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace wstest {

// A receive buffer size of 0 keeps the system's.
inline int ConnectTcp(int port, int timeoutMs = 5000, int receiveBuffer = 0) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    do {
        const int fd = socket(AF_INET, SOCK_STREAM, 0);
        if (receiveBuffer > 0) {
            setsockopt(fd, SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof(receiveBuffer));
        }
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0) {
            int one = 1;
            setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof(one));
            return fd;
        }
        close(fd);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    } while (std::chrono::steady_clock::now() < deadline);
    return -1;
}

enum class ReadResult { Data, Timeout, Closed };

// Appends what arrives within the timeout. A timeout is not a close: only the peer's
// end of stream (or a socket error) is.
inline ReadResult Read(int fd, std::string& into, int timeoutMs) {
    pollfd p{fd, POLLIN, 0};
    const int ready = poll(&p, 1, timeoutMs < 0 ? 0 : timeoutMs);
    if (ready == 0) {
        return ReadResult::Timeout;
    }
    if (ready < 0) {
        return ReadResult::Closed;
    }
    char buffer[65536];
    const ssize_t n = recv(fd, buffer, sizeof(buffer), 0);
    if (n <= 0) {
        return ReadResult::Closed;
    }
    into.append(buffer, static_cast<size_t>(n));
    return ReadResult::Data;
}

// Whether something arrived within the timeout.
inline bool ReadSome(int fd, std::string& into, int timeoutMs) {
    return Read(fd, into, timeoutMs) == ReadResult::Data;
}

// One HTTP/1.0 GET; the whole answer, headers included.
inline std::string HttpGet(int port, const std::string& path) {
    const int fd = ConnectTcp(port);
    if (fd < 0) {
        return "";
    }
    const std::string request = "GET " + path + " HTTP/1.0\r\nHost: localhost\r\n\r\n";
    send(fd, request.data(), request.size(), MSG_NOSIGNAL);
    std::string answer;
    while (ReadSome(fd, answer, 3000)) {
    }
    close(fd);
    return answer;
}

class Client {
public:
    Client() = default;
    ~Client() { Close(); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    // Connects and upgrades with the given subprotocol; false if refused. A small
    // receive buffer makes a page that stops reading choke quickly.
    bool Connect(int port, const std::string& protocol, int receiveBuffer = 0) {
        m_fd = ConnectTcp(port, 5000, receiveBuffer);
        if (m_fd < 0) {
            return false;
        }
        const std::string request =
            "GET / HTTP/1.1\r\nHost: 127.0.0.1\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
            "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\nSec-WebSocket-Version: 13\r\n"
            "Origin: http://127.0.0.1\r\nSec-WebSocket-Protocol: " +
            protocol + "\r\n\r\n";
        send(m_fd, request.data(), request.size(), MSG_NOSIGNAL);
        while (m_buffer.find("\r\n\r\n") == std::string::npos) {
            if (!ReadSome(m_fd, m_buffer, 3000)) {
                return false;
            }
        }
        const size_t end = m_buffer.find("\r\n\r\n") + 4;
        const bool upgraded = m_buffer.compare(0, 12, "HTTP/1.1 101") == 0;
        m_buffer.erase(0, end);
        return upgraded;
    }

    // One masked frame as a browser sends it: `opcode` 1 text, 2 binary, 0 continuation.
    bool SendFrame(int opcode, const std::string& payload, bool fin = true) {
        std::string frame;
        frame += static_cast<char>((fin ? 0x80 : 0) | opcode);
        const uint8_t mask[4] = {0x12, 0x34, 0x56, 0x78};
        if (payload.size() < 126) {
            frame += static_cast<char>(0x80 | payload.size());
        } else if (payload.size() < 65536) {
            frame += static_cast<char>(0x80 | 126);
            frame += static_cast<char>(payload.size() >> 8);
            frame += static_cast<char>(payload.size() & 0xFF);
        } else {
            frame += static_cast<char>(0x80 | 127);
            for (int i = 7; i >= 0; --i) {
                frame +=
                    static_cast<char>((static_cast<uint64_t>(payload.size()) >> (8 * i)) & 0xFF);
            }
        }
        frame.append(reinterpret_cast<const char*>(mask), 4);
        for (size_t i = 0; i < payload.size(); ++i) {
            frame += static_cast<char>(payload[i] ^ mask[i % 4]);
        }
        return SendRaw(frame);
    }
    bool SendText(const std::string& text) { return SendFrame(0x1, text); }
    // Bytes as they stand; false once the server has gone.
    bool SendRaw(const std::string& bytes) {
        return send(m_fd, bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
               static_cast<ssize_t>(bytes.size());
    }

    // Takes over a connected socket whose handshake is done (or not needed).
    void Adopt(int fd) {
        Close();
        m_fd = fd;
    }
    // Whether the server closed the connection (a close frame or the end of the stream)
    // as far as this client has read.
    bool Closed() const { return m_closed; }
    int Fd() const { return m_fd; }

    // Reads and drops frames until the server closes, within the timeout.
    bool WaitClosed(int timeoutMs = 3000) {
        const auto deadline =
            std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
        while (!m_closed && std::chrono::steady_clock::now() < deadline) {
            Receive(static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(
                                         deadline - std::chrono::steady_clock::now())
                                         .count()));
        }
        return m_closed;
    }

    // The next text frame's payload, or nothing within the timeout (or at close).
    std::optional<std::string> Receive(int timeoutMs = 3000) {
        const auto deadline =
            std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
        for (;;) {
            std::optional<std::string> text;
            if (TakeFrame(text)) {
                if (text) {
                    return text;
                }
                continue;  // a control frame
            }
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
                                  deadline - std::chrono::steady_clock::now())
                                  .count();
            if (m_closed) {
                return std::nullopt;
            }
            // Past the deadline, what has already arrived is still taken.
            const ReadResult read = Read(m_fd, m_buffer, left > 0 ? static_cast<int>(left) : 0);
            if (read == ReadResult::Closed) {
                m_closed = true;
            }
            if (read != ReadResult::Data) {
                return std::nullopt;  // a timeout leaves the connection as it was
            }
        }
    }

    // Whether the server still keeps the connection: a ping is answered.
    bool IsOpen() {
        const char ping[] = {static_cast<char>(0x89), static_cast<char>(0x80), 0, 0, 0, 0};
        if (send(m_fd, ping, sizeof(ping), MSG_NOSIGNAL) != sizeof(ping)) {
            return false;
        }
        m_pong = false;
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(3);
        while (!m_pong && std::chrono::steady_clock::now() < deadline) {
            std::optional<std::string> text;
            if (TakeFrame(text)) {
                if (text) {
                    m_early.push_back(*text);
                }
                continue;
            }
            if (!ReadSome(m_fd, m_buffer, 3000)) {
                return false;
            }
        }
        return m_pong;
    }

    void Close() {
        if (m_fd >= 0) {
            close(m_fd);
            m_fd = -1;
        }
    }

private:
    // Takes one whole frame from the buffer; text frames fill `text`.
    bool TakeFrame(std::optional<std::string>& text) {
        if (!m_early.empty()) {
            text = m_early.front();
            m_early.erase(m_early.begin());
            return true;
        }
        // Frames are taken from m_start on; the consumed front is dropped in bulk.
        const std::string& b = m_buffer;
        const size_t avail = b.size() - m_start;
        if (avail < 2) {
            return false;
        }
        const uint8_t op = static_cast<uint8_t>(b[m_start]) & 0x0F;
        uint64_t length = static_cast<uint8_t>(b[m_start + 1]) & 0x7F;
        size_t header = 2;
        if (length == 126) {
            if (avail < 4) return false;
            length =
                (static_cast<uint8_t>(b[m_start + 2]) << 8) | static_cast<uint8_t>(b[m_start + 3]);
            header = 4;
        } else if (length == 127) {
            if (avail < 10) return false;
            length = 0;
            for (size_t i = 2; i < 10; ++i) {
                length = (length << 8) | static_cast<uint8_t>(b[m_start + i]);
            }
            header = 10;
        }
        if (avail < header + length) {
            return false;
        }
        std::string payload = b.substr(m_start + header, length);
        m_start += header + length;
        if (m_start == m_buffer.size() || m_start > 65536) {
            m_buffer.erase(0, m_start);
            m_start = 0;
        }
        if (op == 0x1) {
            text = payload;
        } else if (op == 0xA) {
            m_pong = true;
        } else if (op == 0x8) {
            m_closed = true;
        }
        return true;
    }

    int m_fd = -1;
    std::string m_buffer;
    size_t m_start = 0;
    std::vector<std::string> m_early;
    bool m_closed = false;
    bool m_pong = false;
};

}  // namespace wstest
