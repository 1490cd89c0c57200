// Simulated factory store (item number -> one byte) and the factory-command
// service's identity data: serial number and HDMI EDID checks. Starts as the demo
// set, a set that has passed the production line.
#pragma once

#include <array>
#include <map>
#include <string>

#include "MTypes.h"
#include "SimSet.h"

namespace sim {

struct FactoryStoreState : Area {
    FactoryStoreState();

    // An item never written reads 0.
    MAPI_U8 Get(MAPI_U16 item) const;
    void Set(MAPI_U16 item, MAPI_U8 value) { items[item] = value; }
    // A little-endian 32-bit value over four consecutive items.
    void SetU32(MAPI_U16 firstItem, MAPI_U32 value);

    std::map<MAPI_U16, MAPI_U8> items;
};

struct FactoryIdentityState : Area {
    FactoryIdentityState() { SetSerial("VQ2611A0004812"); }

    // Up to 15 characters; shorter texts are zero-padded.
    void SetSerial(const std::string& text);
    // A set whose serial was never written: the area reads all 0xFF.
    void EraseSerial() { serial.fill(0xFF); }

    std::array<MAPI_U8, 15> serial{};
    // EDIDCheckSum result per HDMI port 1..4 (index 0 unused).
    std::array<MAPI_U32, 5> edidCheckSum{{0, 1, 1, 1, 1}};
};

}  // namespace sim
