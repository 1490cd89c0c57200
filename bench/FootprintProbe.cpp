// What the library costs a host process: resident memory it adds after construction,
// after the UI page connected and after many notifications, and how often its threads
// wake while the server idles. bench/footprint.sh runs it per architecture.
//   vq27_footprint [NOTIFICATIONS] [IDLE_SECONDS]     defaults: 100000 60
#include <dirent.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <set>
#include <string>
#include <thread>

#include "FactoryManager.h"
#include "SimSet.h"
#include "SimWebApp.h"
#include "TVManager.h"
#include "WsTestClient.h"

namespace {

long StatusField(const std::string& path, const std::string& field) {
    std::ifstream in(path);
    std::string line;
    while (std::getline(in, line)) {
        if (line.compare(0, field.size(), field) == 0) {
            return std::atol(line.c_str() + field.size());
        }
    }
    return 0;
}

long RssKiB() { return StatusField("/proc/self/status", "VmRSS:"); }

std::set<std::string> Threads() {
    std::set<std::string> ids;
    if (DIR* dir = opendir("/proc/self/task")) {
        while (dirent* e = readdir(dir)) {
            if (e->d_name[0] != '.') {
                ids.insert(e->d_name);
            }
        }
        closedir(dir);
    }
    return ids;
}

// Context switches of the given threads: each one a wake-up of a thread that slept.
long Switches(const std::set<std::string>& ids) {
    long total = 0;
    for (const auto& id : ids) {
        const std::string path = "/proc/self/task/" + id + "/status";
        total += StatusField(path, "voluntary_ctxt_switches:") +
                 StatusField(path, "nonvoluntary_ctxt_switches:");
    }
    return total;
}

}  // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : 100000;
    const int idleSeconds = argc > 2 ? std::atoi(argv[2]) : 60;

    sim::Options options;
    options.port = 0;
    sim::Set::Instance().Reset(options);
    sim::Set::Instance().Get<sim::WebAppState>().pageConnects = false;
    FactoryManager::SetFactoryModeState(1);
    const std::set<std::string> before = Threads();
    const long base = RssKiB();

    FactoryManager& fm = *TVManager::GetInstance()->getFactoryManager();
    const long constructed = RssKiB();

    fm.CheckFactoryUiIsReady();  // starts the server
    wstest::Client page;
    if (!page.Connect(sim::Set::Instance().Config().port, "factorymode-0") || !page.Receive()) {
        std::fprintf(stderr, "the page did not connect\n");
        return 1;
    }
    const long connected = RssKiB();

    for (int i = 0; i < count; ++i) {
        fm.NotifyUI(0, "Footprint", i);
        if (!page.Receive(10000)) {
            std::fprintf(stderr, "notification %d never arrived\n", i);
            return 1;
        }
        if (i % 1000 == 0) {
            sim::Set::Instance().GetJournal().Clear();  // the sim's log is not the subject
        }
    }
    const long notified = RssKiB();

    std::set<std::string> library;
    for (const auto& id : Threads()) {
        if (before.count(id) == 0) {
            library.insert(id);
        }
    }
    const long switches = Switches(library);
    std::this_thread::sleep_for(std::chrono::seconds(idleSeconds));
    const long idle = Switches(library) - switches;

    std::printf("rss_base_kib %ld\n", base);
    std::printf("rss_constructed_kib %ld\n", constructed - base);
    std::printf("rss_connected_kib %ld\n", connected - base);
    std::printf("rss_notified_kib %ld\n", notified - base);
    std::printf("library_threads %zu:", library.size());
    for (const auto& id : library) {
        std::ifstream comm("/proc/self/task/" + id + "/comm");
        std::string name;
        std::getline(comm, name);
        std::printf(" %s", name.c_str());
    }
    std::printf("\n");
    std::printf("idle_wakeups %ld in %d s\n", idle, idleSeconds);
    sim::Set::Instance().Shutdown();
    return 0;
}
