#include "SimSet.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <set>

#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Cmd.h"

namespace sim {

namespace {
// A port nobody listens on now, from the system's ephemeral range, so that sets
// of parallel test processes never share one.
int PickFreeLoopbackPort() {
    const int fd = socket(AF_INET, SOCK_STREAM, 0);
    if (fd < 0) {
        return 0;
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = 0;
    socklen_t size = sizeof(address);
    int port = 0;
    if (bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0 &&
        getsockname(fd, reinterpret_cast<sockaddr*>(&address), &size) == 0) {
        port = ntohs(address.sin_port);
    }
    close(fd);
    return port;
}
}  // namespace

std::string ListenInterface(const std::string& address, std::string& error) {
    error.clear();
    if (address.empty() || address == "0.0.0.0" || address == "::") {
        return "";
    }
    in_addr v4{};
    in6_addr v6{};
    if (inet_pton(AF_INET6, address.c_str(), &v6) == 1) {
        return address;
    }
    if (inet_pton(AF_INET, address.c_str(), &v4) != 1) {
        error = "not an IP address: " + address;
        return address;
    }
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) != 0) {
        error = "cannot list the network interfaces";
        return address;
    }
    std::string name;
    std::set<std::string> seen;  // interfaces whose first IPv4 address was passed
    for (ifaddrs* a = list; a != nullptr; a = a->ifa_next) {
        if (a->ifa_addr == nullptr || a->ifa_addr->sa_family != AF_INET || a->ifa_name == nullptr) {
            continue;
        }
        const bool first = seen.insert(a->ifa_name).second;
        if (reinterpret_cast<sockaddr_in*>(a->ifa_addr)->sin_addr.s_addr == v4.s_addr) {
            name = a->ifa_name;
            if (!first) {
                error = address + " is not the first IPv4 address of " + name +
                        ", which the server cannot listen on alone";
            }
            break;
        }
    }
    freeifaddrs(list);
    if (name.empty()) {
        error = "no interface has the address " + address;
        return address;
    }
    return name;
}

Set& Set::Instance() {
    static Set set;
    return set;
}

Set::Set() { Reset(); }

Set::~Set() { Shutdown(); }

void Set::DestroyManager() {
    if (m_manager != nullptr) {
        // Stop delivering before the object goes, as the host must.
        m_recipients.clear();
        delete m_manager;
        m_manager = nullptr;
    }
}

void Set::Reset(const Options& options) {
    Shutdown();
    m_options = options;
    std::string listenError;
    m_serverInterface = ListenInterface(options.listenAddress, listenError);
    if (m_options.port == 0) {
        m_options.port = PickFreeLoopbackPort();
    }
    m_recipients.clear();
    m_journal.Clear();
    m_clock = std::make_unique<Clock>(options.time);
    m_loop = std::make_unique<EventLoop>(*m_clock);
    m_root = std::make_unique<Root>(options.rootFolder);
    // A fresh set is a freshly loaded library: its process-wide values start over.
    g_pFactoryListener = nullptr;
    FactoryManager::m_bIsFactoryEnabled = 0;
    FactoryManager::m_isFactoryUiLoaded = 0;
    FactoryManager::m_stContext = nullptr;
    FactoryManager::u16Times = 0;
    if (options.time == TimeMode::Real) {
        m_loop->Start();
    }
}

void Set::Shutdown() {
    // The event thread stops first, so nothing is delivered to a manager being destroyed.
    if (m_loop) {
        m_loop->Stop();
    }
    DestroyManager();
    {
        std::lock_guard<std::mutex> lock(m_areaMutex);
        m_areas.clear();
    }
    if (m_root) {
        m_root->Remove();
    }
}

FactoryManager* Set::Manager() {
    if (m_manager == nullptr) {
        m_manager = new FactoryManager();
    }
    return m_manager;
}

void Set::PostFactoryEvent(unsigned int id, uintptr_t p1, uintptr_t p2, uintptr_t p3) {
    // The recipients are read on the event thread, where they are registered.
    m_loop->Invoke([this, id, p1, p2, p3] {
        MSrv* service = MSrv_Control::GetInstance()->GetMSrvFactoryCmd();
        for (MEvtHandle* recipient : Recipients(service)) {
            recipient->OnEvent(id, reinterpret_cast<void*>(p1), reinterpret_cast<void*>(p2),
                               reinterpret_cast<void*>(p3));
        }
    });
}

// A recipient registered twice still receives each event once, as on the set.
void Set::AddRecipient(MSrv* service, MEvtHandle* recipient) {
    // A recipient is on a service's list once, however often it asks.
    std::vector<MEvtHandle*>& list = m_recipients[service];
    if (std::find(list.begin(), list.end(), recipient) == list.end()) {
        list.push_back(recipient);
    }
}

void Set::RemoveRecipient(MSrv* service, MEvtHandle* recipient) {
    auto it = m_recipients.find(service);
    if (it != m_recipients.end()) {
        it->second.erase(std::remove(it->second.begin(), it->second.end(), recipient),
                         it->second.end());
    }
}

std::vector<MEvtHandle*> Set::Recipients(MSrv* service) const {
    auto it = m_recipients.find(service);
    return it == m_recipients.end() ? std::vector<MEvtHandle*>{} : it->second;
}

}  // namespace sim
