// NotifyUI to WebSocket clients on loopback: notifications per second for a burst,
// and the latency from the call to receipt at each client, paced.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
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

}  // namespace

int main() {
    std::printf("%-8s %16s %12s %12s\n", "clients", "notifications/s", "p50 (us)", "p99 (us)");
    for (int clients : {1, 8}) {
        const Result r = Measure(clients);
        std::printf("%-8d %16.0f %12.1f %12.1f\n", clients, r.perSecond, r.p50Us, r.p99Us);
    }
    return 0;
}
