// What each factory event's parameters mean where the library reads them, for
// 'help event', and the records of the events whose p2 points to one.
#include "EventHelp.h"

#include <algorithm>
#include <cstring>

#include "FieldMakers.h"
#include "Names.h"
#include "SimAtvTuner.h"
#include "SimProductionTests2.h"

namespace factorysim {

namespace {

struct ParamHelp {
    unsigned int id;
    const char* text;
};

// The events whose handlers read a parameter; every other handler reads none.
const ParamHelp kParams[] = {
    {43,
     "p2: a scan-info record, from the analogue tuner (percent 100 unless a sweep runs, "
     "khz = atv-frequency); name=value words override it: percent=0-255 khz=0-4294967295"},
    {45,
     "p2: a scan-status record, from the digital tuning run (status 10, the run stopped; "
     "tv radio data = scan-result); name=value words override it: status=0-4294967295 "
     "tv= radio= data= (0-65535)"},
    {192,
     "p2 (low byte): the channel-preset phase: 0 shows \"CH Preset Writing\" (with uart-ui 1) "
     "and checks every 2 s, 1 the station reports OK (\"CH Preset OK\"; the next check "
     "closes the page), anything else nothing"},
    {196, "p2: 0 MHL overcurrent, 1 USB overcurrent, 2 closes the page"},
    {203, "p3: the volume stored outside M-mode (in M-mode the factory volume is used)"},
    {226, "p2 (low byte): the clone-copy code"},
    {227, "p2: 10 sets H, 11 sets V, anything else toggles the polarisation"},
    {230, "p2 (low byte): the satellite sub-code"},
    {232, "p2: the phase: 0 starts the adjustment, 1 the station reports OK, 2 NG"},
    {234, "p2: 1 shows the page and arms the timer, 0 lets the next tick close it"},
    {236, "p2: the input to show, 0x81-0x89"},
    {240, "p2 (low byte): the direct-tune sub-code"},
    {243,
     "p2 (low byte): the search direction: 0 up, 1 down (while a search runs the other way, "
     "it stops that search; a second event starts this way), anything else no search"},
    {247, "p2 (low byte): the configuration sub-code"},
    {250, "p2: the wake-on-WLAN test phase"},
    {251, "p2: the WLAN test phase"},
    {256, "p2: the local-dimming pattern (1 shows the page)"},
    {257, "p2: 10 switches the nine-point pattern off, anything else on"},
    {258, "p2: 0x99 enables HDMI ARC, 0xD3 disables it"},
    {261, "p2: 0 WP COMPLETE, 1 WP ERROR, anything else the page only"},
    {363, "p2: non-zero switches teletext on, 0 off"},
};

struct RecordField {
    unsigned int event;
    const char* name;
    unsigned long long max;
    void (*store)(ST_ATV_SCAN_INFO& atv, ST_DTV_SCAN_STATUS& dtv, unsigned long long value);
};

const RecordField kRecordFields[] = {
    {43, "percent", 0xFF,
     [](ST_ATV_SCAN_INFO& atv, ST_DTV_SCAN_STATUS&, unsigned long long v) {
         atv.u8Percent = static_cast<MAPI_U8>(v);
     }},
    {43, "khz", 0xFFFFFFFF,
     [](ST_ATV_SCAN_INFO& atv, ST_DTV_SCAN_STATUS&, unsigned long long v) {
         atv.u32FrequencyKHz = static_cast<MAPI_U32>(v);
     }},
    {45, "status", 0xFFFFFFFF,
     [](ST_ATV_SCAN_INFO&, ST_DTV_SCAN_STATUS& dtv, unsigned long long v) {
         dtv.enScanStatus = static_cast<MAPI_U32>(v);
     }},
    {45, "tv", 0xFFFF,
     [](ST_ATV_SCAN_INFO&, ST_DTV_SCAN_STATUS& dtv, unsigned long long v) {
         dtv.u16TVNum = static_cast<MAPI_U16>(v);
     }},
    {45, "radio", 0xFFFF,
     [](ST_ATV_SCAN_INFO&, ST_DTV_SCAN_STATUS& dtv, unsigned long long v) {
         dtv.u16RadioNum = static_cast<MAPI_U16>(v);
     }},
    {45, "data", 0xFFFF,
     [](ST_ATV_SCAN_INFO&, ST_DTV_SCAN_STATUS& dtv, unsigned long long v) {
         dtv.u16DataNum = static_cast<MAPI_U16>(v);
     }},
};

}  // namespace

bool EventRecord::Carries(unsigned int id) { return id == 43 || id == 45; }

std::string EventRecord::Build(unsigned int id, const std::vector<std::string>& words) {
    m_id = id;
    if (id == 43) {
        const auto& t = AreaOf<sim::AtvTunerState>();
        m_atv = ST_ATV_SCAN_INFO{};
        m_atv.u8Percent = t.Sweeping() ? 0 : 100;
        m_atv.u32FrequencyKHz = t.frequencyKHz;
    } else {
        const auto& d = AreaOf<sim::DtvTuningState>();
        m_dtv = ST_DTV_SCAN_STATUS{10, 0, d.scanTv, d.scanRadio, d.scanData};
    }
    const std::string usage = " (event " + std::to_string(id) +
                              " carries a record in p2; help event " + std::to_string(id) + ")";
    for (const std::string& word : words) {
        const size_t eq = word.find('=');
        const RecordField* field = nullptr;
        for (const auto& f : kRecordFields) {
            if (f.event == id && eq != std::string::npos && word.compare(0, eq, f.name) == 0 &&
                std::strlen(f.name) == eq) {
                field = &f;
            }
        }
        if (field == nullptr) {
            return "not a field of the record: " + word + usage;
        }
        const auto value = ParseNumber(word.substr(eq + 1));
        if (!value || *value > field->max) {
            return std::string(field->name) + " is 0-" + std::to_string(field->max) + ": " + word +
                   usage;
        }
        field->store(m_atv, m_dtv, *value);
    }
    return "";
}

uintptr_t EventRecord::Pointer() const {
    return m_id == 43 ? reinterpret_cast<uintptr_t>(&m_atv) : reinterpret_cast<uintptr_t>(&m_dtv);
}

std::string ParameterHelp(unsigned int id) {
    for (const auto& p : kParams) {
        if (p.id == id) {
            return p.text;
        }
    }
    return "";
}

}  // namespace factorysim
