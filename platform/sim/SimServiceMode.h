// Simulated service mode: the factory-command service's service fields (address,
// command codes, range flags), each service item's range in the factory store, the
// S/D mode and the panel's factory control step.
#pragma once

#include <map>
#include <utility>

#include "MSrv_Factory_Cmd.h"
#include "MTypes.h"
#include "SimSet.h"

namespace sim {

struct ServiceModeState : Area {
    // The service fields live on the factory-command service itself, where the
    // library reads them; a fresh area puts them back to a fresh set's values. Every
    // simulated call of service mode makes the area first, so a set never starts
    // with fields a previous set moved.
    ServiceModeState();

    static MSrv_Factory_Cmd& Cmd();

    using Range = std::pair<MAPI_U8, MAPI_U8>;  // inclusive min, max
    // Items without a range of their own take the byte's full range.
    Range RangeOf(MAPI_U16 addr) const;
    std::map<MAPI_U16, Range> ranges;

    // What the library last told the service.
    MAPI_U8 sdMode = 0;
    // The panel's factory control step: enabled and the step shown.
    bool controlEnabled = false;
    MAPI_U8 controlStep = 0;
};

// First and last service address; the restore-default groups of the store.
constexpr MAPI_U16 kServiceFirstAddr = 0x800;
constexpr MAPI_U16 kServiceLastAddr = 0xD83;
// What a restore puts back: white balance mid-scale, everything else 0.
MAPI_U8 ServiceDefaultValue(MAPI_U16 addr);

}  // namespace sim
