// The console's "service" command: what the remote's service protocol does on a set,
// the factory-command service's fields prepared and event 200 raised, in one line.
#include <sstream>

#include "Commands.h"
#include "FieldMakers.h"
#include "MSrv_Factory_Cmd.h"
#include "Names.h"
#include "SimFactoryStore.h"
#include "SimServiceMode.h"

namespace factorysim {

namespace {

constexpr unsigned int kServiceEvent = 200;

struct ServiceCommandName {
    const char* name;
    MAPI_U8 step, mode, wb;
};
// Each prepares one command and clears the others, so the editor sees only it.
constexpr ServiceCommandName kServiceCommands[] = {
    {"step-up", 28, 0, 0},    {"step-down", 29, 0, 0}, {"step-up4", 30, 0, 0},
    {"step-down4", 31, 0, 0}, {"e-d-mode", 0, 254, 0}, {"s-mode", 0, 195, 0},
    {"rdrv", 0, 0, '3'},      {"bdrv", 0, 0, '4'},     {"read-bdrv", 0, 0, '5'},
    {"read-rdrv", 0, 0, '6'}, {"show", 0, 0, 0},
};

std::string CommandNames() {
    std::string names;
    for (const auto& c : kServiceCommands) {
        names += (names.empty() ? "" : ", ") + std::string(c.name);
    }
    return names;
}

}  // namespace

std::string Commands::Service(const Words& w, const std::string&, std::string& out) {
    if (w.size() < 2 || w.size() > 3) {
        return "usage: service <command> [address] (commands: " + CommandNames() + ")";
    }
    const ServiceCommandName* command = nullptr;
    for (const auto& c : kServiceCommands) {
        if (w[1] == c.name) {
            command = &c;
        }
    }
    if (command == nullptr) {
        return "unknown service command: " + w[1] + " (commands: " + CommandNames() + ")";
    }
    std::optional<unsigned long long> addr;
    if (w.size() == 3) {
        addr = ParseNumber(w[2]);
        if (!addr || *addr > 0xFFFF) {
            return "not a service address (0-0xFFFF): " + w[2];
        }
    }
    OnEventThread([&] {
        AreaOf<sim::ServiceModeState>();
        MSrv_Factory_Cmd& cmd = sim::ServiceModeState::Cmd();
        if (addr) {
            cmd.g_u16ServiceModeAddr = static_cast<MAPI_U16>(*addr);
        }
        cmd.g_u8ServiceStepCmd = command->step;
        cmd.g_u8ServiceModeSelect = command->mode;
        cmd.g_u8WhiteBalanceCmd = command->wb;
    });
    Post(kServiceEvent, 0, 0, 0);
    std::ostringstream text;
    OnEventThread([&] {
        const MAPI_U16 at = sim::ServiceModeState::Cmd().g_u16ServiceModeAddr;
        char hex[8];
        std::snprintf(hex, sizeof(hex), "0x%03X", at);
        text << "service " << w[1] << ": event " << EventLabel(kServiceEvent) << " delivered; item "
             << hex << " = " << static_cast<unsigned>(AreaOf<sim::FactoryStoreState>().Get(at));
    });
    out = text.str();
    return "";
}

}  // namespace factorysim
