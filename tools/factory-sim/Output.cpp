#include "Output.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>

namespace factorysim {

Output::Output() = default;

Output::~Output() { Release(); }

void Output::WriteAll(int fd, const std::string& text) {
    size_t done = 0;
    while (done < text.size()) {
        const ssize_t n = ::write(fd, text.data() + done, text.size() - done);
        if (n <= 0) {
            return;
        }
        done += static_cast<size_t>(n);
    }
}

void Output::FlushRepeatsLocked() {
    if (m_repeats == 0) {
        return;
    }
    WriteAll(m_realOut, m_repeats == 1
                            ? m_repeated + "\n"
                            : m_repeated + " \u00d7 " + std::to_string(m_repeats) + "\n");
    m_repeats = 0;
    m_repeated.clear();
}

void Output::FlushRepeats() {
    std::lock_guard<std::mutex> lock(m_mutex);
    FlushRepeatsLocked();
}

void Output::CollapseRepeats(bool on) {
    std::lock_guard<std::mutex> lock(m_mutex);
    FlushRepeatsLocked();
    m_collapse = on;
}

void Output::PrintRepeatable(const std::string& text) {
    std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_collapse) {
        WriteAll(m_realOut, text + "\n");
        return;
    }
    if (m_repeats != 0 && text == m_repeated) {
        ++m_repeats;
        return;
    }
    FlushRepeatsLocked();
    m_repeated = text;
    m_repeats = 1;
}

void Output::Print(const std::string& text) {
    std::lock_guard<std::mutex> lock(m_mutex);
    FlushRepeatsLocked();
    WriteAll(m_realOut, text.empty() || text.back() != '\n' ? text + "\n" : text);
}

void Output::Error(const std::string& text) {
    std::fflush(stdout);
    FlushRepeats();
    WriteAll(2, text.empty() || text.back() != '\n' ? text + "\n" : text);
}

bool Output::CaptureStdout(std::function<void(const std::string&)> onLine) {
    int fds[2];
    if (::pipe(fds) != 0) {
        return false;
    }
    std::fflush(stdout);
    m_realOut = ::dup(1);
    if (m_realOut < 0 || ::dup2(fds[1], 1) < 0) {
        ::close(fds[0]);
        ::close(fds[1]);
        m_realOut = 1;
        return false;
    }
    ::close(fds[1]);
    m_pipeRead = fds[0];
    // A pipe would make stdio buffer whole blocks; the serial console is per line.
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    m_onLine = std::move(onLine);
    m_reader = std::thread([this] { ReadLoop(); });
    return true;
}

void Output::ReadLoop() {
    std::string pending;
    char buf[4096];
    for (;;) {
        pollfd p{m_pipeRead, POLLIN, 0};
        if (::poll(&p, 1, -1) < 0) {
            continue;
        }
        ++m_written;  // busy from here until the chunk is passed on
        const ssize_t n = ::read(m_pipeRead, buf, sizeof(buf));
        if (n <= 0) {
            ++m_passed;
            break;
        }
        pending.append(buf, static_cast<size_t>(n));
        size_t start = 0;
        for (size_t nl; (nl = pending.find('\n', start)) != std::string::npos; start = nl + 1) {
            const std::string line = pending.substr(start, nl - start);
            if (m_onLine) {
                m_onLine(line);
            }
            std::lock_guard<std::mutex> lock(m_mutex);
            FlushRepeatsLocked();
            WriteAll(m_realOut, line + "\n");
        }
        pending.erase(0, start);
        {
            std::lock_guard<std::mutex> lock(m_passedMutex);
            ++m_passed;
        }
        m_passedChanged.notify_all();
    }
    if (!pending.empty()) {
        if (m_onLine) {
            m_onLine(pending);
        }
        std::lock_guard<std::mutex> lock(m_mutex);
        FlushRepeatsLocked();
        WriteAll(m_realOut, pending + "\n");
    }
}

void Output::Drain() {
    std::fflush(stdout);
    if (m_pipeRead < 0) {
        return;
    }
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    std::unique_lock<std::mutex> lock(m_passedMutex);
    while (std::chrono::steady_clock::now() < limit) {
        int queued = 0;
        ::ioctl(m_pipeRead, FIONREAD, &queued);
        if (queued == 0 && m_written.load() == m_passed.load()) {
            return;
        }
        // The reader says when it has passed a chunk on; the timeout covers the
        // moment between its poll and its count.
        m_passedChanged.wait_for(lock, std::chrono::microseconds(200));
    }
}

void Output::Release() {
    FlushRepeats();
    if (m_pipeRead < 0) {
        return;
    }
    std::fflush(stdout);
    // Giving fd 1 back closes the pipe's last write end: the reader ends.
    ::dup2(m_realOut, 1);
    m_reader.join();
    ::close(m_pipeRead);
    m_pipeRead = -1;
    ::close(m_realOut);
    m_realOut = 1;
}

}  // namespace factorysim
