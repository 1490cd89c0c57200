// NotifyUI to WebSocket clients on loopback: notifications per second for a burst,
// and the latency from the call to receipt at each client, paced.
//
//   vq27_ui_bench                                  both measurements, built-in clients
//   vq27_ui_bench --serve PORT CLIENTS COUNT [TEXT]  the library's server for any client
//   vq27_ui_bench --client PORT CLIENTS COUNT       a client for any broadcast server
#include <poll.h>

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

Result Measure(int clientCount) {
    sim::Options options;
    options.port = 0;
    sim::Set::Instance().Reset(options);
    sim::Set::Instance().Get<sim::WebAppState>().pageConnects = false;
    FactoryManager::SetFactoryModeState(1);
    FactoryManager& fm = *TVManager::GetInstance()->getFactoryManager();
    fm.CheckFactoryUiIsReady();  // starts the server
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
// when every page has closed (a client closes once it has them all) or 30 s later.
int Serve(int port, int clientCount, int count, const char* text) {
    sim::Options options;
    options.port = port;
    sim::Set::Instance().Reset(options);
    sim::Set::Instance().Get<sim::WebAppState>().pageConnects = false;
    FactoryManager::SetFactoryModeState(1);
    FactoryManager& fm = *TVManager::GetInstance()->getFactoryManager();
    fm.setFactoryEventListener(CountClosed);
    fm.CheckFactoryUiIsReady();  // starts the server
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
        if (text != nullptr) {
            fm.NotifyUI(0, "Bench", text);
        } else {
            fm.NotifyUI(0, "Bench", static_cast<long>(i));
        }
        if (i % 1000 == 999) {
            sim::Set::Instance().GetJournal().Clear();  // the set's log is not the subject
        }
    }
    const auto sent = Clock::now();
    const auto bound = sent + std::chrono::seconds(30);
    while (g_closedPages < clientCount && Clock::now() < bound) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    const auto end = Clock::now();
    std::printf("sent %d notifications in %.3f s; %d of %d pages done after %.3f s\n", count,
                std::chrono::duration<double>(sent - start).count(), g_closedPages.load(),
                clientCount, std::chrono::duration<double>(end - start).count());
    sim::Set::Instance().Shutdown();
    return g_closedPages >= clientCount ? 0 : 1;
}

// CLIENTS pages on "factorymode-0", read on one thread; each counts COUNT text frames
// other than the greeting and then closes. Reports the notifications per second from
// the first frame to the last, and each page's time.
int Client(int port, int clientCount, int count) {
    std::vector<std::unique_ptr<wstest::Client>> clients;
    std::vector<int> got(static_cast<size_t>(clientCount), 0);
    for (int c = 0; c < clientCount; ++c) {
        clients.push_back(std::make_unique<wstest::Client>());
        if (!clients.back()->Connect(port, "factorymode-0")) {
            std::fprintf(stderr, "client %d: no connection\n", c);
            return 1;
        }
    }
    Clock::time_point first{};
    Clock::time_point last{};
    int done = 0;
    const auto bound = Clock::now() + std::chrono::minutes(5);
    while (done < clientCount && Clock::now() < bound) {
        for (int c = 0; c < clientCount; ++c) {
            if (got[static_cast<size_t>(c)] >= count) {
                continue;
            }
            for (;;) {
                auto text = clients[static_cast<size_t>(c)]->Receive(0);
                if (!text) {
                    break;
                }
                if (*text == "{\"cmd\":\"established\"}") {
                    continue;
                }
                const auto now = Clock::now();
                if (first == Clock::time_point{}) {
                    first = now;
                }
                last = now;
                if (++got[static_cast<size_t>(c)] == count) {
                    clients[static_cast<size_t>(c)]->Close();
                    ++done;
                    break;
                }
            }
        }
        std::vector<pollfd> fds;
        for (int c = 0; c < clientCount; ++c) {
            if (got[static_cast<size_t>(c)] < count) {
                fds.push_back(pollfd{clients[static_cast<size_t>(c)]->Fd(), POLLIN, 0});
            }
        }
        poll(fds.data(), fds.size(), 100);
    }
    const double seconds = std::chrono::duration<double>(last - first).count();
    std::printf("%d pages, %d of %d notifications each: %.3f s, %.0f notifications/s\n",
                clientCount, count, count, seconds, seconds > 0 ? count / seconds : 0.0);
    return done == clientCount ? 0 : 1;
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
    if (argc > 1) {
        std::fprintf(
            stderr, "usage: %s [--serve PORT CLIENTS COUNT [TEXT] | --client PORT CLIENTS COUNT]\n",
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
