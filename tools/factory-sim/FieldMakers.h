// Field makers over one member of a sim area: what each page family's field file
// uses to list its fields in one line each.
#pragma once

#include <array>
#include <cstdio>
#include <sstream>
#include <string>

#include "MTypes.h"
#include "Names.h"
#include "SetFields.h"
#include "SimSet.h"

namespace factorysim {

template <class A>
inline A& AreaOf() {
    return sim::Set::Instance().Get<A>();
}

template <class A>
inline Field Text(const char* name, const char* help, std::string A::*member) {
    return {name, nullptr, help,
            [member](const std::string&, std::string& value) {
                value = AreaOf<A>().*member;
                return std::string();
            },
            [member](const std::string&, const std::string& value) {
                AreaOf<A>().*member = value;
                return std::string();
            }};
}

// A number field of any integer type; max bounds what the set can hold.
template <class A, class T>
inline Field Number(const char* name, const char* help, T A::*member, unsigned long long max) {
    return {name, nullptr, help,
            [member](const std::string&, std::string& value) {
                value = std::to_string(static_cast<long long>(AreaOf<A>().*member));
                return std::string();
            },
            [member, max](const std::string&, const std::string& value) {
                const auto n = ParseNumber(value);
                if (!n || *n > max) {
                    return "not a number from 0 to " + std::to_string(max) + ": " + value;
                }
                AreaOf<A>().*member = static_cast<T>(*n);
                return std::string();
            }};
}

template <class A>
inline Field Flag(const char* name, const char* help, bool A::*member) {
    return {name, nullptr, help,
            [member](const std::string&, std::string& value) {
                value = AreaOf<A>().*member ? "1" : "0";
                return std::string();
            },
            [member](const std::string&, const std::string& value) {
                bool flag = false;
                std::string error = ParseFlag(value, flag);
                if (error.empty()) {
                    AreaOf<A>().*member = flag;
                }
                return error;
            }};
}

template <class A>
inline Field Mac(const char* name, const char* help, std::array<MAPI_U8, 6> A::*member) {
    return {name, nullptr, help,
            [member](const std::string&, std::string& value) {
                const auto& m = AreaOf<A>().*member;
                char text[18];
                std::snprintf(text, sizeof(text), "%02x:%02x:%02x:%02x:%02x:%02x", m[0], m[1], m[2],
                              m[3], m[4], m[5]);
                value = text;
                return std::string();
            },
            [member](const std::string&, const std::string& value) {
                std::array<MAPI_U8, 6> mac{};
                std::istringstream in(value);
                std::string part;
                size_t i = 0;
                for (; i < 7 && std::getline(in, part, ':'); ++i) {
                    const auto byte = part.size() == 2 ? ParseNumber("0x" + part) : std::nullopt;
                    if (i == 6 || !byte) {
                        return "not a MAC address (aa:bb:cc:dd:ee:ff): " + value;
                    }
                    mac[i] = static_cast<MAPI_U8>(*byte);
                }
                if (i != 6) {
                    return "not a MAC address (aa:bb:cc:dd:ee:ff): " + value;
                }
                AreaOf<A>().*member = mac;
                return std::string();
            }};
}

}  // namespace factorysim
