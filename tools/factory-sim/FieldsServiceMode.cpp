// The set's fields of the service-mode editor: the factory-command service's service
// fields (which the platform fills before it raises event 200) and the items' ranges.
// Item values are the factory store's own bytes: factory[<address>].
#include <cstdio>
#include <sstream>

#include "AreaFields.h"
#include "FieldMakers.h"
#include "MSrv_Factory_Cmd.h"
#include "SimServiceMode.h"

namespace factorysim {

namespace {

using sim::ServiceModeState;

// The area puts the fields back to a fresh set's values when it is made, so every
// access goes through it first.
MSrv_Factory_Cmd& Cmd() {
    AreaOf<ServiceModeState>();
    return ServiceModeState::Cmd();
}

template <class T>
Field CmdNumber(const char* name, const char* help, T MSrv_Factory_Cmd::*member,
                unsigned long long max) {
    return {name, nullptr, help,
            [member](const std::string&, std::string& value) {
                value = std::to_string(static_cast<unsigned long long>(Cmd().*member));
                return std::string();
            },
            [member, max](const std::string&, const std::string& value) {
                const auto n = ParseNumber(value);
                if (!n || *n > max) {
                    return "not a number from 0 to " + std::to_string(max) + ": " + value;
                }
                Cmd().*member = static_cast<T>(*n);
                return std::string();
            }};
}

Field CmdFlag(const char* name, const char* help, MAPI_U8 MSrv_Factory_Cmd::*member) {
    return {name, nullptr, help,
            [member](const std::string&, std::string& value) {
                value = Cmd().*member ? "1" : "0";
                return std::string();
            },
            [member](const std::string&, const std::string& value) {
                bool flag = false;
                std::string error = ParseFlag(value, flag);
                if (error.empty()) {
                    Cmd().*member = flag ? 1 : 0;
                }
                return error;
            }};
}

struct WbName {
    const char* name;
    MAPI_U8 code;
};
constexpr WbName kWbNames[] = {
    {"none", 0}, {"rdrv", '3'}, {"bdrv", '4'}, {"read-bdrv", '5'}, {"read-rdrv", '6'}};

Field WhiteBalance() {
    return {"service-wb", nullptr,
            "the white-balance command: none, rdrv, bdrv, read-bdrv, read-rdrv or a code",
            [](const std::string&, std::string& value) {
                const MAPI_U8 code = Cmd().g_u8WhiteBalanceCmd;
                value = std::to_string(code);
                for (const WbName& wb : kWbNames) {
                    if (wb.code == code) {
                        value = wb.name;
                    }
                }
                return std::string();
            },
            [](const std::string&, const std::string& value) {
                for (const WbName& wb : kWbNames) {
                    if (value == wb.name) {
                        Cmd().g_u8WhiteBalanceCmd = wb.code;
                        return std::string();
                    }
                }
                unsigned char code = 0;
                std::string error = ParseByte(value, code);
                if (!error.empty()) {
                    return "not a white-balance command (none, rdrv, bdrv, read-bdrv, "
                           "read-rdrv or 0-255): " +
                           value;
                }
                Cmd().g_u8WhiteBalanceCmd = code;
                return std::string();
            }};
}

std::string ParseAddress(const std::string& text, MAPI_U16& addr) {
    const auto n = ParseNumber(text);
    if (!n || *n > 0xFFFF) {
        return "not a service address (0-0xFFFF): " + text;
    }
    addr = static_cast<MAPI_U16>(*n);
    return "";
}

Field Range() {
    return {"service-range", "address", "an item's inclusive range, \"min max\" (default 0 255)",
            [](const std::string& arg, std::string& value) {
                MAPI_U16 addr = 0;
                std::string error = ParseAddress(arg, addr);
                if (error.empty()) {
                    const auto range = AreaOf<ServiceModeState>().RangeOf(addr);
                    value = std::to_string(range.first) + " " + std::to_string(range.second);
                }
                return error;
            },
            [](const std::string& arg, const std::string& value) {
                MAPI_U16 addr = 0;
                std::string error = ParseAddress(arg, addr);
                if (!error.empty()) {
                    return error;
                }
                std::istringstream in(value);
                std::string minText, maxText, extra;
                in >> minText >> maxText >> extra;
                unsigned char min = 0, max = 0;
                if (maxText.empty() || !extra.empty() || !ParseByte(minText, min).empty() ||
                    !ParseByte(maxText, max).empty() || min > max) {
                    return "not a range \"min max\" of bytes with min <= max: " + value;
                }
                AreaOf<ServiceModeState>().ranges[addr] = {min, max};
                return std::string();
            }};
}

}  // namespace

std::vector<Field> ServiceModeFields() {
    using C = MSrv_Factory_Cmd;
    return {
        CmdNumber("service-addr", "the current service item's address (item n at 0x800 + n)",
                  &C::g_u16ServiceModeAddr, 0xFFFF),
        CmdNumber("service-step",
                  "the service step command: 28/29 one step up/down, 30/31 four steps, else none",
                  &C::g_u8ServiceStepCmd, 255),
        CmdNumber("service-mode-select", "the service mode selector: 254 E/D mode, 195 S mode",
                  &C::g_u8ServiceModeSelect, 255),
        WhiteBalance(),
        CmdFlag("service-nav-lock", "1: the next/previous item keys do nothing",
                &C::g_bServiceNavLock),
        CmdFlag("service-short-range", "1: the items move inside the white balance (0x800-0x820)",
                &C::g_bServiceShortRange),
        CmdFlag("service-dmode-open",
                "1: the items move from 0x800 to 0xAD9 and digits 1-8 toggle bits 0-7",
                &C::g_bDModeOpen),
        Range(),
    };
}

}  // namespace factorysim
