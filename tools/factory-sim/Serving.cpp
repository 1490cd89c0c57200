// The factory UI server's port check and the page as factory-sim serves it.
#include "Serving.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace factorysim {

std::string CheckServerPort(const std::string& address, int port) {
    sockaddr_storage storage{};
    socklen_t size = 0;
    const bool v6 = address.find(':') != std::string::npos;
    if (v6) {
        auto* a = reinterpret_cast<sockaddr_in6*>(&storage);
        a->sin6_family = AF_INET6;
        a->sin6_port = htons(static_cast<uint16_t>(port));
        inet_pton(AF_INET6, address.c_str(), &a->sin6_addr);
        size = sizeof(*a);
    } else {
        auto* a = reinterpret_cast<sockaddr_in*>(&storage);
        a->sin_family = AF_INET;
        a->sin_port = htons(static_cast<uint16_t>(port));
        inet_pton(AF_INET, address.c_str(), &a->sin_addr);
        size = sizeof(*a);
    }
    const int fd = ::socket(v6 ? AF_INET6 : AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (fd < 0) {
        return std::strerror(errno);
    }
    const int yes = 1;
    ::setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes));
    std::string error;
    if (::bind(fd, reinterpret_cast<sockaddr*>(&storage), size) != 0 || ::listen(fd, 1) != 0) {
        error = std::strerror(errno);
    }
    ::close(fd);
    return error;
}

std::string WithControlUrl(const std::string& page, const std::string& url) {
    const std::string meta = "<meta name=\"factory-control\" content=\"" + url + "\">\n";
    const auto head = page.find("<head>");
    if (head == std::string::npos) {
        return page;
    }
    return page.substr(0, head + 6) + "\n" + meta + page.substr(head + 6);
}

std::string HostForUrl(const std::string& address) {
    if (address == "0.0.0.0" || address == "::" || address.empty()) {
        return "127.0.0.1";
    }
    return address.find(':') != std::string::npos ? "[" + address + "]" : address;
}

}  // namespace factorysim
