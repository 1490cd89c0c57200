// The simulated set behind the factory store and the factory-command service's
// identity data.
#include "SimFactoryStore.h"

#include "MSrv_Factory_Cmd.h"
#include "MSrv_Factory_Default.h"

using sim::ArgList;

namespace sim {

FactoryStoreState::FactoryStoreState() {
    Set(69, 1);        // DLNA check passed
    SetU32(79, 1234);  // POT counter
    SetU32(83, 87);    // AST counter
    Set(87, 1);        // VGA EDID written, version 01
    Set(94, 1);        // write protected
    Set(134, 0x03);    // model identifier bytes
    Set(135, 0x21);
    Set(136, 0x10);
    Set(137, 0x07);
    for (MAPI_U16 item = 300; item <= 303; ++item) {
        Set(item, 1);  // ADC adjustment RGB, COMP, PAL, NTSC passed
    }
}

MAPI_U8 FactoryStoreState::Get(MAPI_U16 item) const {
    auto it = items.find(item);
    return it == items.end() ? 0 : it->second;
}

void FactoryStoreState::SetU32(MAPI_U16 firstItem, MAPI_U32 value) {
    for (MAPI_U16 i = 0; i < 4; ++i) {
        Set(static_cast<MAPI_U16>(firstItem + i), static_cast<MAPI_U8>(value >> (8 * i)));
    }
}

void FactoryIdentityState::SetSerial(const std::string& text) {
    serial.fill(0);
    for (size_t i = 0; i < text.size() && i < serial.size(); ++i) {
        serial[i] = static_cast<MAPI_U8>(text[i]);
    }
}

}  // namespace sim

MAPI_BOOL MSrv_Factory_Default::GetFactoryData(unsigned short id, unsigned char* value) {
    sim::Set& set = sim::Set::Instance();
    const MAPI_U8 stored = set.Get<sim::FactoryStoreState>().Get(id);
    set.RecordCall("MSrv_Factory_Default::GetFactoryData", ArgList(id));
    if (value == nullptr) {
        return 0;
    }
    *value = stored;
    return 1;
}

MAPI_BOOL MSrv_Factory_Default::SetFactoryData(unsigned short id, unsigned char value) {
    sim::Set& set = sim::Set::Instance();
    set.RecordCall("MSrv_Factory_Default::SetFactoryData", ArgList(id, value));
    set.Get<sim::FactoryStoreState>().Set(id, value);
    return 1;
}

MAPI_BOOL MSrv_Factory_Cmd::ReadSerialNum(unsigned char* serial) {
    sim::Set& set = sim::Set::Instance();
    set.RecordCall("MSrv_Factory_Cmd::ReadSerialNum", ArgList());
    if (serial == nullptr) {
        return 0;
    }
    const auto& stored = set.Get<sim::FactoryIdentityState>().serial;
    for (size_t i = 0; i < stored.size(); ++i) {
        serial[i] = stored[i];
    }
    return 1;
}

MAPI_U32 MSrv_Factory_Cmd::EDIDCheckSum(MAPI_U8 port) {
    sim::Set& set = sim::Set::Instance();
    set.RecordCall("MSrv_Factory_Cmd::EDIDCheckSum", ArgList(port));
    const auto& sums = set.Get<sim::FactoryIdentityState>().edidCheckSum;
    return port < sums.size() ? sums[port] : 0;
}
