// The simulated set behind the ATV player, the ATV database and the channel manager.
#include "SimAtvTuner.h"

#include <cstdlib>
#include <cstring>

#include "MEvtHandle.h"
#include "MSrv_ATV_Database.h"
#include "MSrv_ATV_Player.h"
#include "MSrv_ChannelManager.h"
#include "MSrv_Control.h"
#include "MW_TTX.h"
#include "SimPlayers.h"
#include "SimProgramInfo.h"

using sim::ArgList;
using sim::AtvTunerState;
using sim::Set;

namespace {
AtvTunerState& Tuner() { return Set::Instance().Get<AtvTunerState>(); }
void Record(const char* fn, const ArgList& args) { Set::Instance().RecordCall(fn, args); }
constexpr unsigned long kSweepTimer = 1;
constexpr unsigned int kScanInfoEvent = 43;
}  // namespace

namespace sim {

// Moves the tuner on at every tick of its own timer; the library's journal stays
// clean of these timers because they are armed on the loop directly.
class AtvSweeper : public MEvtHandle {
public:
    void Arm(unsigned long periodMs) {
        Set::Instance().Loop().SetTimer(this, periodMs, kSweepTimer, E_TIMER_REPEAT,
                                        "sim ATV tuner sweep");
    }
    void Disarm() { Set::Instance().Loop().KillTimer(this, kSweepTimer); }
    MAPI_BOOL DefEventProc(unsigned int message, void*, void*, void*) override {
        if (message == kTimerMessage) {
            Step();
        }
        return 1;
    }

private:
    void Step() {
        AtvTunerState& t = Tuner();
        if (!t.Sweeping()) {
            Disarm();
            return;
        }
        const bool up = t.manualMode == 0;
        const uint32_t from = t.frequencyKHz;
        const uint32_t edge = up ? AtvTunerState::kBandHighKHz : AtvTunerState::kBandLowKHz;
        uint32_t to = up ? from + t.stepKHz : (from > t.stepKHz ? from - t.stepKHz : 0);
        bool ended = false;
        // The nearest station passed in this step locks the tuner.
        const uint32_t* lock = nullptr;
        for (const uint32_t& s : t.stations) {
            const bool passed = up ? (s > from && s <= to) : (s < from && s >= to);
            if (passed && (lock == nullptr || (up ? s < *lock : s > *lock))) {
                lock = &s;
            }
        }
        if (lock != nullptr) {
            to = *lock;
            ended = true;
        } else if (up ? to >= edge : to <= edge) {
            to = edge;
            ended = true;
        }
        t.frequencyKHz = to;
        ST_ATV_SCAN_INFO info{};
        info.u32FrequencyKHz = to;
        if (ended) {
            info.u8Percent = 100;
        } else {
            const uint64_t span = up ? edge - t.sweepStartKHz : t.sweepStartKHz - edge;
            const uint64_t done = up ? to - t.sweepStartKHz : t.sweepStartKHz - to;
            const uint64_t percent = span == 0 ? 99 : done * 100 / span;
            info.u8Percent = static_cast<MAPI_U8>(percent > 99 ? 99 : percent);
        }
        Record("sim::AtvTuner::ScanInfo", ArgList(info.u8Percent, info.u32FrequencyKHz));
        MSrv* atv = MSrv_Control::GetInstance()->GetMSrvAtv();
        for (MEvtHandle* recipient : Set::Instance().Recipients(atv)) {
            recipient->OnEvent(kScanInfoEvent, nullptr, &info, nullptr);
        }
        if (ended) {
            // The tuner stops by itself at a lock or the band's edge.
            Tuner().Stop();
        }
    }
};

AtvTunerState::AtvTunerState() {
    // A handful of stations of both plans: C-3, S-6, C-6, C-10, S-21, C-21, C-30, C-45.
    stations = {55250, 140250, 182250, 210250, 303250, 471250, 543250, 663250};
    const struct {
        MAPI_U16 number;
        uint32_t khz;
        const char* name;
        MAPI_U8 flags;
    } demo[] = {
        {1, 55250, "C-03 ", 0x00},
        {2, 140250, "S-06 ", 0x20},
        {3, 182250, "C-06 ", 0x00},
        {4, 471250, "C-21 ", 0x00},
    };
    for (const auto& d : demo) {
        AtvProgram p;
        p.pll = PllOfFrequency(d.khz);
        p.name = d.name;
        p.misc.u16Video = 8 << 6;
        p.misc.u8AudioStandard = 4;  // B/G: the search's sound system 2
        p.misc.u8Flags = d.flags;
        programs[d.number] = p;
    }
    currentProgram = 1;
    frequencyKHz = 55250;
}

AtvTunerState::~AtvTunerState() = default;

bool AtvTunerState::StationAt(uint32_t khz) const {
    for (uint32_t s : stations) {
        if (khz + 500 >= s && khz <= s + 500) {
            return true;
        }
    }
    return false;
}

void AtvTunerState::Start(uint32_t fromKHz, int way) {
    if (!sweeper) {
        sweeper = std::make_unique<AtvSweeper>();
    }
    frequencyKHz = fromKHz;
    sweepStartKHz = fromKHz;
    manualMode = way;
    sweeper->Arm(periodMs);
}

void AtvTunerState::Stop() {
    manualMode = 2;
    if (sweeper) {
        sweeper->Disarm();
    }
}

}  // namespace sim

// ---- ATV player --------------------------------------------------------------------

EN_CHANNEL_SEARCH_TYPE MSrv_ATV_Player::GetChannelSearchType() {
    Record("MSrv_ATV_Player::GetChannelSearchType", ArgList());
    return static_cast<EN_CHANNEL_SEARCH_TYPE>(Tuner().searchType);
}

MAPI_BOOL MSrv_ATV_Player::SetChannelSearchType(EN_CHANNEL_SEARCH_TYPE type) {
    Record("MSrv_ATV_Player::SetChannelSearchType", ArgList(type));
    Tuner().searchType = type;
    return 1;
}

MAPI_BOOL MSrv_ATV_Player::ZYT_SetManualTuningStart(
    unsigned long eventInterval, unsigned long frequencyKHz, eAtvManualTuneMode way,
    EN_MSRV_UI_SOUND_SYSTEM sound, EN_MSRV_UI_COLOR_SYSTEM colour, unsigned char aftOffset) {
    Record("MSrv_ATV_Player::ZYT_SetManualTuningStart",
           ArgList(eventInterval, frequencyKHz, way, sound, colour, aftOffset));
    if (way != 0 && way != 1) {
        return 0;
    }
    Tuner().Start(static_cast<uint32_t>(frequencyKHz), way);
    return 1;
}

eAtvManualTuneMode MSrv_ATV_Player::GetManualTuneMode() {
    Record("MSrv_ATV_Player::GetManualTuneMode", ArgList());
    return static_cast<eAtvManualTuneMode>(Tuner().manualMode);
}

MAPI_BOOL MSrv_ATV_Player::ZYT_GetAftOffset(unsigned char* offset) {
    Record("MSrv_ATV_Player::ZYT_GetAftOffset", ArgList());
    *offset = Tuner().aftOffset;
    return 1;
}

short MSrv_ATV_Player::ZYT_GetFineTuneOffset(short program) {
    Record("MSrv_ATV_Player::ZYT_GetFineTuneOffset", ArgList(program));
    return Tuner().fineTuneKHz;
}

unsigned long MSrv_ATV_Player::ZYT_ConvertFreqKhzToPLL(unsigned long frequencyKHz) {
    Record("MSrv_ATV_Player::ZYT_ConvertFreqKhzToPLL", ArgList(frequencyKHz));
    return frequencyKHz * 16 / 1000;
}

MAPI_BOOL MSrv_ATV_Player::IsATVSignalLock() {
    Record("MSrv_ATV_Player::IsATVSignalLock", ArgList());
    const AtvTunerState& t = Tuner();
    return !t.Sweeping() && t.StationAt(t.frequencyKHz) ? 1 : 0;
}

MAPI_BOOL MSrv_ATV_Player::StopManualTuning() {
    Record("MSrv_ATV_Player::StopManualTuning", ArgList());
    Tuner().Stop();
    return 1;
}

MAPI_BOOL MSrv_ATV_Player::GetCurrentFrequency(MAPI_U32* frequencyKHz) {
    Record("MSrv_ATV_Player::GetCurrentFrequency", ArgList());
    *frequencyKHz = Tuner().frequencyKHz;
    return 1;
}

MAPI_BOOL MSrv_ATV_Player::GetCurrentProgramNumber(MAPI_U16* program) {
    Record("MSrv_ATV_Player::GetCurrentProgramNumber", ArgList());
    *program = Tuner().currentProgram;
    return 1;
}

MAPI_BOOL MSrv_ATV_Player::ChangeProgram(MAPI_U16 program, MAPI_U8 reason) {
    Record("MSrv_ATV_Player::ChangeProgram", ArgList(program, reason));
    AtvTunerState& t = Tuner();
    t.Stop();
    t.currentProgram = program;
    auto it = t.programs.find(program);
    if (it != t.programs.end()) {
        t.frequencyKHz = AtvTunerState::FrequencyOfPll(it->second.pll);
    }
    return 1;
}

// ---- ATV database ----------------------------------------------------------------

MAPI_BOOL MSrv_ATV_Database::GetProgramInfo(EN_GET_PROGRAM_INFO request, MAPI_U16 program,
                                            MAPI_U16 param, void* record) {
    Record("MSrv_ATV_Database::GetProgramInfo", ArgList(request, program, param));
    const AtvTunerState& t = Tuner();
    auto it = t.programs.find(program);
    if (request != E_GET_MISC || it == t.programs.end() || record == nullptr) {
        return 0;
    }
    std::memcpy(record, &it->second.misc, sizeof(ST_ATV_MISC));
    return 1;
}

MAPI_BOOL MSrv_ATV_Database::SetProgramInfo(EN_SET_PROGRAM_INFO request, MAPI_U16 program,
                                            MAPI_U16 value, void* record) {
    sim::AtvProgram& p = Tuner().programs[program];
    switch (request) {
        case E_SET_PLL:
            p.pll = value;
            break;
        case E_SET_AFT_OFFSET:
            p.aftOffset = value;
            break;
        case E_SET_SKIP:
            p.skip = value;
            break;
        case E_SET_MISC:
            if (record == nullptr) {
                return 0;
            }
            std::memcpy(&p.misc, record, sizeof(ST_ATV_MISC));
            Record("MSrv_ATV_Database::SetProgramInfo",
                   ArgList(request, program, value, p.misc.u16Video, p.misc.u8AudioStandard,
                           p.misc.u8Flags));
            return 1;
        default:
            Record("MSrv_ATV_Database::SetProgramInfo", ArgList(request, program, value));
            return 0;
    }
    Record("MSrv_ATV_Database::SetProgramInfo", ArgList(request, program, value));
    return 1;
}

MAPI_BOOL MSrv_ATV_Database::ATVSetChannelName(unsigned char program, unsigned char* name) {
    const std::string text =
        name ? std::string(reinterpret_cast<char*>(name), strnlen(reinterpret_cast<char*>(name), 5))
             : "";
    Record("MSrv_ATV_Database::ATVSetChannelName", ArgList(program, text));
    Tuner().programs[program].name = text;
    return 1;
}

MAPI_BOOL MSrv_ATV_Database::ATVSetFineTune(unsigned char program, signed char fineTune) {
    Record("MSrv_ATV_Database::ATVSetFineTune", ArgList(program, fineTune));
    Tuner().programs[program].fineTune = fineTune;
    return 1;
}

MSrv_ATV_Database* MSrv_Control::GetMSrvAtvDatabase() {
    static MSrv_ATV_Database database;
    return &database;
}

MW_TTX* MW_TTX::GetInstance() {
    static MW_TTX ttx;
    return &ttx;
}

MAPI_BOOL MW_TTX::Reset() {
    Record("MW_TTX::Reset", ArgList());
    ++Tuner().teletextResets;
    return 1;
}

// ---- Control and channel manager ---------------------------------------------------

MAPI_BOOL MSrv_Control::SetATVManualTuneFinishChannel(unsigned char channel) {
    Record("MSrv_Control::SetATVManualTuneFinishChannel", ArgList(channel));
    Tuner().finishChannel = channel;
    return 1;
}

MSrv_ChannelManager* MSrv_Control::GetMSrvChannelManager() {
    static MSrv_ChannelManager manager;
    return &manager;
}

MAPI_BOOL MSrv_ChannelManager::GetAtvServiceCount(MAPI_U32* count) {
    Record("MSrv_ChannelManager::GetAtvServiceCount", ArgList());
    *count = static_cast<MAPI_U32>(Tuner().programs.size());
    return 1;
}

MAPI_BOOL MSrv_ChannelManager::GetCurrentProgram(ST_CURRENT_PROGRAM* program) {
    Record("MSrv_ChannelManager::GetCurrentProgram", ArgList());
    *program = ST_CURRENT_PROGRAM{};
    if (Set::Instance().Get<sim::PlayerState>().currentSource == MAPI_INPUT_SOURCE_ATV) {
        const AtvTunerState& t = Tuner();
        auto it = t.programs.find(t.currentProgram);
        if (it == t.programs.end()) {
            return 0;
        }
        program->u16Number = t.currentProgram;
        std::strncpy(program->szName, it->second.name.c_str(), sizeof(program->szName) - 1);
        return 1;
    }
    const sim::ProgramInfoState& dtv = Set::Instance().Get<sim::ProgramInfoState>();
    if (!dtv.programKnown) {
        return 0;
    }
    program->u16Number = dtv.number;
    std::strncpy(program->szName, dtv.name.c_str(), sizeof(program->szName) - 1);
    return 1;
}

MAPI_BOOL MSrv_ChannelManager::PlayCurrentProgram(MAPI_U8 mode, MAPI_U8 reason) {
    Record("MSrv_ChannelManager::PlayCurrentProgram", ArgList(mode, reason));
    return 1;
}
