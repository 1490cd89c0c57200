// A host set for the aging, pattern, tuning and configuration pages: the panel's
// rasters and the platform calls of interest in order, with their times.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "SetFixture.h"
#include "SimPlayers.h"
#include "SimProductionTests2.h"
#include "UiNotes.h"

class ProductionTest2 : public HostTest {
protected:
    sim::PanelState& Panel() { return Tv().Get<sim::PanelState>(); }
    sim::FactoryLineState& Line() { return Tv().Get<sim::FactoryLineState>(); }
    sim::DtvTuningState& Dtv() { return Tv().Get<sim::DtvTuningState>(); }

    // "fn[args]" of every call to one of the functions, in order.
    std::vector<std::string> Seq(std::initializer_list<const char*> fns) {
        std::vector<std::string> out;
        for (const auto& e : Journal().Entries()) {
            for (const char* fn : fns) {
                if (e.kind == "call" && e.fn == fn) {
                    out.push_back(e.fn.substr(e.fn.rfind(':') + 1) + e.args);
                }
            }
        }
        return out;
    }
    // "colour@ms" of every raster call.
    std::vector<std::string> Rasters() {
        std::vector<std::string> out;
        for (const auto& e : Journal().Entries()) {
            const auto at = e.fn.find("Raster");
            if (e.kind == "call" && at != std::string::npos &&
                e.fn.rfind("MSrv_Factory_Cmd", 0) == 0) {
                out.push_back(e.fn.substr(18, at - 18) + "@" + std::to_string(e.tMs));
            }
        }
        return out;
    }
    MAPI_BOOL Key(unsigned long key) { return Fm().FactoryDoKeyAction(key); }
    MAPI_BOOL Call(MAPI_BOOL (FactoryManager::*handler)(void*, void*, void*), uintptr_t p2) {
        return (Fm().*handler)(nullptr, reinterpret_cast<void*>(p2), nullptr);
    }
};
