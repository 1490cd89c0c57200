// The simulated TV: one observable state behind every platform declaration, and
// the control API through which tests and factory-sim drive and inspect it.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <typeindex>
#include <vector>

#include "SimClock.h"
#include "SimEventLoop.h"
#include "SimJournal.h"
#include "SimRoot.h"

class FactoryManager;
class MEvtHandle;
class MSrv;

namespace sim {

struct Options {
    TimeMode time = TimeMode::Virtual;
    std::string rootFolder;                   // empty: a fresh temporary folder
    std::string listenAddress = "127.0.0.1";  // empty: every interface
    int port = 7233;                          // 0: a free loopback port, chosen at Reset
};

// How to make Debian's libwebsockets (built with IPv6) listen on one address only:
// it reads an IPv4 address given as its interface into the wrong half of an IPv6
// socket address and listens everywhere, but an interface *name* binds the
// IPv4-mapped form of that interface's first IPv4 address. So an IPv4 address is
// handed over as the name of the interface that has it first; IPv6 addresses go as
// they are; "" and 0.0.0.0 mean every interface. The error is set when the address
// cannot be listened on alone.
std::string ListenInterface(const std::string& address, std::string& error);

// One piece of simulated state (the factory store, the web-application manager,
// the display...). Each lives in its own file, is made on first use and is
// dropped when the set is reset.
class Area {
public:
    virtual ~Area() = default;
};

class Set {
public:
    static Set& Instance();

    // A fresh set: new clock, loop, journal and root; the previous manager is
    // destroyed and the process-wide values of the library are as after loading.
    void Reset(const Options& options = Options());
    // Destroys the manager and stops the set; the temporary root is removed.
    void Shutdown();

    const Options& Config() const { return m_options; }
    // What the library's server is told to bind to (empty: every interface). See
    // ListenInterface below.
    const std::string& ServerInterface() const { return m_serverInterface; }
    Clock& GetClock() { return *m_clock; }
    EventLoop& Loop() { return *m_loop; }
    Journal& GetJournal() { return m_journal; }
    Root& GetRoot() { return *m_root; }
    uint64_t NowMs() const { return m_clock->NowMs(); }

    // What TVManager::getFactoryManager() returns; made on first call.
    FactoryManager* Manager();
    bool HasManager() const { return m_manager != nullptr; }

    // Delivers a factory event from the factory-command service to its recipients.
    void PostFactoryEvent(unsigned int id, uintptr_t p1 = 0, uintptr_t p2 = 0, uintptr_t p3 = 0);
    // Virtual time: moves the set's clock on, delivering every tick due.
    void Advance(uint64_t ms) { m_loop->Advance(ms); }

    void AddRecipient(MSrv* service, MEvtHandle* recipient);
    void RemoveRecipient(MSrv* service, MEvtHandle* recipient);
    std::vector<MEvtHandle*> Recipients(MSrv* service) const;

    // Records a platform call in the journal at the set's time.
    void RecordCall(const std::string& fn, const ArgList& args) {
        m_journal.Call(NowMs(), fn, args);
    }

    template <class T>
    T& Get() {
        std::lock_guard<std::mutex> lock(m_areaMutex);
        auto& slot = m_areas[std::type_index(typeid(T))];
        if (!slot) {
            slot = std::make_unique<T>();
        }
        return static_cast<T&>(*slot);
    }

private:
    Set();
    ~Set();
    void DestroyManager();

    Options m_options;
    std::string m_serverInterface;
    std::unique_ptr<Clock> m_clock;
    std::unique_ptr<EventLoop> m_loop;
    std::unique_ptr<Root> m_root;
    Journal m_journal;
    FactoryManager* m_manager = nullptr;
    std::map<MSrv*, std::vector<MEvtHandle*>> m_recipients;
    std::mutex m_areaMutex;
    std::map<std::type_index, std::unique_ptr<Area>> m_areas;
};

}  // namespace sim
