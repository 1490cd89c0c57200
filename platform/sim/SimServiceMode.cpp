// The simulated platform calls of service mode: the service-data writes and ranges of
// the factory-command service, the S/D mode, the service events it passes on, the
// restore-default calls of the factory store and the panel's control step. Each call
// is journalled; values live in FactoryStoreState, the rest in ServiceModeState.
#include "SimServiceMode.h"

#include "MSrv_Control.h"
#include "MSrv_Factory_Default.h"
#include "SimFactoryStore.h"

using sim::ArgList;
using sim::Set;

namespace sim {

namespace {
// Item indexes of the restore groups; the old memory data (791-813) is never restored.
constexpr unsigned kColorLast = 32;
constexpr unsigned kOldMemoryFirst = 791;
constexpr unsigned kOldMemoryLast = 813;
bool IsAudio(unsigned index) {
    return (index >= 519 && index <= 790) || (index >= 814 && index <= 830) || index >= 928;
}
enum class Group { Color, Audio, Data, None };
Group GroupOf(MAPI_U16 addr) {
    const unsigned index = addr - kServiceFirstAddr;
    if (index <= kColorLast) {
        return Group::Color;
    }
    if (index >= kOldMemoryFirst && index <= kOldMemoryLast) {
        return Group::None;
    }
    return IsAudio(index) ? Group::Audio : Group::Data;
}

ServiceModeState& State() { return Set::Instance().Get<ServiceModeState>(); }

MAPI_BOOL Restore(const char* fn, unsigned char reserved, Group group) {
    Set& set = Set::Instance();
    State();
    set.RecordCall(fn, ArgList(reserved));
    auto& store = set.Get<FactoryStoreState>();
    for (unsigned addr = kServiceFirstAddr; addr <= kServiceLastAddr; ++addr) {
        if (GroupOf(static_cast<MAPI_U16>(addr)) == group) {
            store.Set(static_cast<MAPI_U16>(addr),
                      ServiceDefaultValue(static_cast<MAPI_U16>(addr)));
        }
    }
    return 1;
}
}  // namespace

ServiceModeState::ServiceModeState() {
    MSrv_Factory_Cmd& cmd = Cmd();
    cmd.g_u16ServiceModeAddr = kServiceFirstAddr;
    cmd.g_u8ServiceStepCmd = 0;
    cmd.g_u8ServiceModeSelect = 0;
    cmd.g_u8WhiteBalanceCmd = 0;
    cmd.g_bServiceNavLock = 0;
    cmd.g_bServiceShortRange = 0;
    cmd.g_bDModeOpen = 0;
}

MSrv_Factory_Cmd& ServiceModeState::Cmd() {
    return *MSrv_Control::GetInstance()->GetMSrvFactoryCmd();
}

ServiceModeState::Range ServiceModeState::RangeOf(MAPI_U16 addr) const {
    auto it = ranges.find(addr);
    return it == ranges.end() ? Range{0, 0xFF} : it->second;
}

MAPI_U8 ServiceDefaultValue(MAPI_U16 addr) {
    return addr >= kServiceFirstAddr && addr <= kServiceFirstAddr + kColorLast ? 0x80 : 0x00;
}

}  // namespace sim

MAPI_BOOL MSrv_Factory_Cmd::ProcessServiceData(unsigned short addr, unsigned char value) {
    Set& set = Set::Instance();
    sim::State();
    set.RecordCall("MSrv_Factory_Cmd::ProcessServiceData", ArgList(addr, value));
    set.Get<sim::FactoryStoreState>().Set(addr, value);
    return 1;
}

MAPI_BOOL MSrv_Factory_Cmd::ServiceModeCheckRange(unsigned short addr, unsigned char* min,
                                                  unsigned char* max) {
    const auto range = sim::State().RangeOf(addr);
    Set::Instance().RecordCall("MSrv_Factory_Cmd::ServiceModeCheckRange", ArgList(addr));
    if (min == nullptr || max == nullptr) {
        return 0;
    }
    *min = range.first;
    *max = range.second;
    return 1;
}

MAPI_BOOL MSrv_Factory_Cmd::Set_S_D_Mode(unsigned char on) {
    sim::State().sdMode = on;
    Set::Instance().RecordCall("MSrv_Factory_Cmd::Set_S_D_Mode", ArgList(on));
    return 1;
}

MAPI_BOOL MSrv_Factory_Default::RestoreDefaultServiceData(unsigned char reserved) {
    return sim::Restore("MSrv_Factory_Default::RestoreDefaultServiceData", reserved,
                        sim::Group::Data);
}

MAPI_BOOL MSrv_Factory_Default::RestoreDefaultServiceColor(unsigned char reserved) {
    return sim::Restore("MSrv_Factory_Default::RestoreDefaultServiceColor", reserved,
                        sim::Group::Color);
}

MAPI_BOOL MSrv_Factory_Default::RestoreDefaultServiceAudio(unsigned char reserved) {
    return sim::Restore("MSrv_Factory_Default::RestoreDefaultServiceAudio", reserved,
                        sim::Group::Audio);
}

MAPI_BOOL MSrv_Factory_Default::RestoreDefaultServiceEDID() {
    Set& set = Set::Instance();
    sim::State();
    set.RecordCall("MSrv_Factory_Default::RestoreDefaultServiceEDID", ArgList());
    // Every HDMI port's EDID is the default one again, so its checksum is good.
    auto& sums = set.Get<sim::FactoryIdentityState>().edidCheckSum;
    for (size_t port = 1; port < sums.size(); ++port) {
        sums[port] = 1;
    }
    return 1;
}

MAPI_BOOL MSrv_Control::SetFactoryControlStep(MAPI_BOOL enable, MAPI_U8 step, MAPI_U8 reserved,
                                              MAPI_U8 level) {
    auto& state = sim::State();
    Set::Instance().RecordCall("MSrv_Control::SetFactoryControlStep",
                               ArgList(enable, step, reserved, level));
    state.controlEnabled = enable != 0;
    state.controlStep = step;
    return 1;
}
