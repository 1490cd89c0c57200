// NotifyUI to WebSocket clients on loopback: notifications per second for a burst,
// and the latency from the call to receipt at each client, paced.
//
//   vq27_ui_bench                                  both measurements, built-in clients
//   vq27_ui_bench --serve PORT CLIENTS COUNT [TEXT]  the library's server for any client
//   vq27_ui_bench --client PORT CLIENTS COUNT       a client for any broadcast server
//   vq27_ui_bench --burst PAGES COUNT              a burst to reading pages beside one
//                                                  that never reads
#include <poll.h>
#include <sys/resource.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "FactoryManager.h"
#include "SimSet.h"
#include "SimWebApp.h"
#include "TVManager.h"
#include "WsTestClient.h"

namespace {

using Clock = std::chrono::steady_clock;

struct Result {
    double perSecond;
    double p50Us;
    double p99Us;
};

// Sends `count` notifications, `gapUs` apart (0: as fast as possible), and waits
// until every client has them all. Returns per-message latencies across clients.
std::vector<double> Run(FactoryManager& fm, std::vector<std::unique_ptr<wstest::Client>>& clients,
                        int count, int gapUs, double& seconds) {
    std::vector<Clock::time_point> sent(static_cast<size_t>(count));
    std::vector<std::vector<Clock::time_point>> received(
        clients.size(), std::vector<Clock::time_point>(sent.size()));
    std::atomic<int> ready{0};
    std::vector<std::thread> readers;
    for (size_t c = 0; c < clients.size(); ++c) {
        readers.emplace_back([&, c] {
            ready++;
            for (int got = 0; got < count;) {
                auto text = clients[c]->Receive(10000);
                if (!text) {
                    std::fprintf(stderr, "client %zu stalled after %d\n", c, got);
                    return;
                }
                const size_t at = text->find("\"data\": ");
                const int i = std::stoi(text->substr(at + 8));
                received[c][static_cast<size_t>(i)] = Clock::now();
                ++got;
            }
        });
    }
    while (ready < static_cast<int>(clients.size())) {
        std::this_thread::yield();
    }
    const auto start = Clock::now();
    for (int i = 0; i < count; ++i) {
        if (gapUs > 0) {
            const auto due = start + std::chrono::microseconds(static_cast<long>(i) * gapUs);
            std::this_thread::sleep_until(due);  // no spinning: the server needs the core
        }
        sent[static_cast<size_t>(i)] = Clock::now();
        fm.NotifyUI(0, "Bench", i);
    }
    for (auto& reader : readers) {
        reader.join();
    }
    Clock::time_point last = start;
    std::vector<double> latencies;
    for (const auto& client : received) {
        for (size_t i = 0; i < sent.size(); ++i) {
            last = std::max(last, client[i]);
            latencies.push_back(
                std::chrono::duration<double, std::micro>(client[i] - sent[i]).count());
        }
    }
    seconds = std::chrono::duration<double>(last - start).count();
    return latencies;
}

double Percentile(std::vector<double> values, double p) {
    std::sort(values.begin(), values.end());
    return values[static_cast<size_t>(p * static_cast<double>(values.size() - 1))];
}

// A fresh set in factory mode, no built-in page, the library's server on the port
// (0: a free one).
FactoryManager& StartServer(EventListener listener = nullptr, int port = 0) {
    sim::Options options;
    options.port = port;
    sim::Set::Instance().Reset(options);
    sim::Set::Instance().Get<sim::WebAppState>().pageConnects = false;
    FactoryManager::SetFactoryModeState(1);
    FactoryManager& fm = *TVManager::GetInstance()->getFactoryManager();
    if (listener != nullptr) {
        fm.setFactoryEventListener(listener);
    }
    fm.CheckFactoryUiIsReady();  // starts the server
    return fm;
}

Result Measure(int clientCount) {
    FactoryManager& fm = StartServer();
    std::vector<std::unique_ptr<wstest::Client>> clients;
    for (int c = 0; c < clientCount; ++c) {
        clients.push_back(std::make_unique<wstest::Client>());
        clients.back()->Connect(sim::Set::Instance().Config().port, "factorymode-0");
        clients.back()->Receive();  // the greeting
    }
    double seconds = 0;
    Run(fm, clients, 20000, 0, seconds);
    const double perSecond = 20000 / seconds;
    sim::Set::Instance().GetJournal().Clear();
    // Paced well below the burst rate, so latency is the path, not the queue.
    const auto latencies = Run(fm, clients, 5000, 200, seconds);
    sim::Set::Instance().GetJournal().Clear();
    Result result{perSecond, Percentile(latencies, 0.5), Percentile(latencies, 0.99)};
    clients.clear();
    sim::Set::Instance().Shutdown();
    return result;
}

unsigned char CountClosed(unsigned long code, void*, void*);
std::atomic<int> g_closedPages{0};
unsigned char CountClosed(unsigned long code, void*, void*) {
    if (code == 0x12001) {
        g_closedPages++;
    }
    return 0;
}

size_t CountLogs(const char* text) {
    size_t n = 0;
    for (const auto& e : sim::Set::Instance().GetJournal().Entries()) {
        n += e.kind == "log" && e.args.find(text) != std::string::npos ? 1 : 0;
    }
    return n;
}

// The library's own server on the simulated set, for a client of the caller's
// choice: waits for CLIENTS pages on "factorymode-0", sends COUNT notifications
// ({"cmd":"Bench","data":i}, or TEXT as the data) as fast as NotifyUI goes, and ends
// when every page has closed or 30 s later. A page that has them all says "done"
// before it closes: only those count; a page closed before that is a failure.
int Serve(int port, int clientCount, int count, const char* text) {
    FactoryManager& fm = StartServer(CountClosed, port);
    std::printf("serving on port %d: waiting for %d pages\n", sim::Set::Instance().Config().port,
                clientCount);
    std::fflush(stdout);
    const auto waitUntil = Clock::now() + std::chrono::minutes(5);
    while (CountLogs("callback_factory: LWS_CALLBACK_ESTABLISHED") <
           static_cast<size_t>(clientCount)) {
        if (Clock::now() > waitUntil) {
            std::fprintf(stderr, "pages did not come\n");
            sim::Set::Instance().Shutdown();
            return 1;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    sim::Set::Instance().GetJournal().Clear();
    const auto start = Clock::now();
    for (int i = 0; i < count; ++i) {
        // Before the send: after the last one the pages' "done" lines must stay.
        if (i % 1000 == 999) {
            sim::Set::Instance().GetJournal().Clear();  // the set's log is not the subject
        }
        if (text != nullptr) {
            fm.NotifyUI(0, "Bench", text);
        } else {
            fm.NotifyUI(0, "Bench", static_cast<long>(i));
        }
    }
    const auto sent = Clock::now();
    const auto bound = sent + std::chrono::seconds(30);
    while (g_closedPages < clientCount && Clock::now() < bound) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    const auto end = Clock::now();
    const int done = static_cast<int>(CountLogs("cmd: done, unknown"));
    std::printf(
        "sent %d notifications in %.3f s; %d of %d pages received everything after "
        "%.3f s; %d closed early\n",
        count, std::chrono::duration<double>(sent - start).count(), done, clientCount,
        std::chrono::duration<double>(end - start).count(),
        std::max(0, g_closedPages.load() - done));
    sim::Set::Instance().Shutdown();
    return done == clientCount ? 0 : 1;
}

struct PageRead {
    std::vector<int> got;      // notifications each page received
    std::vector<bool> closed;  // closed by the server before it had them all
    Clock::time_point first{}, last{};
};

// Reads COUNT notifications (text frames other than the greeting) on every page, on
// one thread. A page that has them all says "done" and, with closeWhenDone, closes.
// Ends when every page has them all or is closed, or nothing comes for stallMs.
PageRead ReadPages(std::vector<std::unique_ptr<wstest::Client>>& pages, int count,
                   bool closeWhenDone, int stallMs = 10000) {
    PageRead r;
    r.got.assign(pages.size(), 0);
    r.closed.assign(pages.size(), false);
    auto heard = Clock::now();
    for (;;) {
        std::vector<pollfd> fds;
        for (size_t c = 0; c < pages.size(); ++c) {
            wstest::Client& page = *pages[c];
            while (r.got[c] < count && !r.closed[c]) {
                auto text = page.Receive(0);
                if (!text) {
                    r.closed[c] = page.Closed();
                    break;
                }
                heard = Clock::now();
                if (*text == "{\"cmd\":\"established\"}") {
                    continue;
                }
                if (r.first == Clock::time_point{}) {
                    r.first = heard;
                }
                r.last = heard;
                if (++r.got[c] == count) {
                    page.SendText("{\"cmd\":\"done\"}");
                    if (closeWhenDone) {
                        page.Close();
                    }
                }
            }
            if (r.got[c] < count && !r.closed[c]) {
                fds.push_back(pollfd{page.Fd(), POLLIN, 0});
            }
        }
        if (fds.empty() || Clock::now() - heard > std::chrono::milliseconds(stallMs)) {
            return r;
        }
        poll(fds.data(), fds.size(), 100);
    }
}

// Prints what each page that did not get everything received; true if all did.
bool Report(const PageRead& r, int count) {
    bool all = true;
    for (size_t c = 0; c < r.got.size(); ++c) {
        if (r.got[c] != count) {
            std::printf("page %zu: %d of %d notifications%s\n", c, r.got[c], count,
                        r.closed[c] ? ", closed by the server" : ", stalled");
            all = false;
        }
    }
    return all;
}

// CLIENTS pages on "factorymode-0"; each counts COUNT notifications and then closes.
// Reports the notifications per second from the first frame to the last; exits
// non-zero, with what each page received, when the server closes a page or stalls.
int Client(int port, int clientCount, int count) {
    std::vector<std::unique_ptr<wstest::Client>> clients;
    for (int c = 0; c < clientCount; ++c) {
        clients.push_back(std::make_unique<wstest::Client>());
        if (!clients.back()->Connect(port, "factorymode-0")) {
            std::fprintf(stderr, "client %d: no connection\n", c);
            return 1;
        }
    }
    const PageRead r = ReadPages(clients, count, true);
    const double seconds = std::chrono::duration<double>(r.last - r.first).count();
    const bool all = Report(r, count);
    std::printf("%d pages, %d notifications each: %s, %.3f s, %.0f notifications/s\n", clientCount,
                count, all ? "all received" : "NOT all received", seconds,
                seconds > 0 ? count / seconds : 0.0);
    return all ? 0 : 1;
}

long PeakRssKiB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

// PAGES reading pages and one that never reads (a small receive buffer, as a hung
// browser) on the library's server in this process; COUNT notifications as fast as
// NotifyUI goes. Holds when every reading page gets them all, none is closed, and the
// page that never reads is closed. The peak RSS covers the pages' clients too.
int Burst(int pageCount, int count) {
    FactoryManager& fm = StartServer(CountClosed);
    // The set's log is not the subject: it keeps a window, as in factory-sim.
    sim::Set::Instance().GetJournal().SetWindow(20000, 4 * 1024 * 1024);
    const int port = sim::Set::Instance().Config().port;
    wstest::Client stuck;
    std::vector<std::unique_ptr<wstest::Client>> pages;
    bool connected = stuck.Connect(port, "factorymode-0", 4096);
    for (int c = 0; c < pageCount && connected; ++c) {
        pages.push_back(std::make_unique<wstest::Client>());
        connected = pages.back()->Connect(port, "factorymode-0");
    }
    if (!connected) {
        std::fprintf(stderr, "a page could not connect\n");
        return 1;
    }
    const long rssBefore = PeakRssKiB();
    const auto start = Clock::now();
    std::thread sender([&] {
        for (int i = 0; i < count; ++i) {
            fm.NotifyUI(0, "Bench", static_cast<long>(i));
        }
    });
    const PageRead r = ReadPages(pages, count, false);
    sender.join();
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    // The page that never reads goes once it has made no progress for a few seconds.
    const auto bound = Clock::now() + std::chrono::seconds(15);
    while (g_closedPages == 0 && Clock::now() < bound) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    long lost = 0;
    int closedEarly = 0;
    for (size_t c = 0; c < r.got.size(); ++c) {
        lost += count - r.got[c];
        closedEarly += r.closed[c] ? 1 : 0;
    }
    Report(r, count);
    const bool stuckClosed = g_closedPages == 1;
    std::printf(
        "%d reading pages, %d notifications: %ld lost, %d closed, %.3f s; the page that "
        "never reads %s; peak RSS %ld MiB (%ld MiB before the burst)\n",
        pageCount, count, lost, closedEarly, seconds, stuckClosed ? "was closed" : "was NOT closed",
        PeakRssKiB() / 1024, rssBefore / 1024);
    pages.clear();
    sim::Set::Instance().Shutdown();
    return lost == 0 && closedEarly == 0 && stuckClosed ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc >= 5 && std::strcmp(argv[1], "--serve") == 0) {
        return Serve(std::atoi(argv[2]), std::atoi(argv[3]), std::atoi(argv[4]),
                     argc >= 6 ? argv[5] : nullptr);
    }
    if (argc >= 5 && std::strcmp(argv[1], "--client") == 0) {
        return Client(std::atoi(argv[2]), std::atoi(argv[3]), std::atoi(argv[4]));
    }
    if (argc >= 4 && std::strcmp(argv[1], "--burst") == 0) {
        return Burst(std::atoi(argv[2]), std::atoi(argv[3]));
    }
    if (argc > 1) {
        std::fprintf(stderr,
                     "usage: %s [--serve PORT CLIENTS COUNT [TEXT] | --client PORT CLIENTS COUNT | "
                     "--burst PAGES COUNT]\n",
                     argv[0]);
        return 2;
    }
    std::printf("%-8s %16s %12s %12s\n", "clients", "notifications/s", "p50 (us)", "p99 (us)");
    for (int clients : {1, 8}) {
        const Result r = Measure(clients);
        std::printf("%-8d %16.0f %12.1f %12.1f\n", clients, r.perSecond, r.p50Us, r.p99Us);
    }
    return 0;
}
