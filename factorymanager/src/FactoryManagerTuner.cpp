// The tuner pages (terrestrial/cable, satellite, ATSC) and their refresh timer. The
// formatters that turn each demodulator reading into a row's text are in
// FactoryManagerTunerValues.cpp.
#include <cstdio>
#include <cstring>
#include <string>

#include "FactoryEventIds.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_DTV_Player_DVBS.h"
#include "MapiInputSource.h"
#include "MsOS.h"
#include "TunerSource.h"

using TunerSource::Satellite;
using TunerSource::SatellitePlayer;

namespace {
constexpr unsigned long kTunerInfoTimer = FactoryTimer::TunerInfo;
constexpr unsigned long kSerialLogTimer = FactoryTimer::SerialLog;
}  // namespace

// ---- Source and satellite record -----------------------------------------------------

MAPI_U32 FactoryManager::GetTVSource() {
    const MAPI_INPUT_SOURCE_TYPE input = MSrv_Control::GetInstance()->GetCurrentInputSource();
    if (input == MAPI_INPUT_SOURCE_ATV) {
        return TunerSource::kAnalogue;
    }
    if (input != MAPI_INPUT_SOURCE_DTV) {
        return 0;
    }
    const MAPI_U32 route = MSrv_Control::GetInstance()->GetCurrentDtvRoute() & 0xFF;
    const ST_MAPI_TV_INFO info = MSrv_Control::GetInstance()->GetTVInfo();
    if (route >= sizeof(info.u8RouteType)) {
        return 0;
    }
    switch (info.u8RouteType[route]) {
        case 0x40:
            return 5;
        case 4:
            return 4;
        case 1:
            return 1;
        case 0x20:
            return 2;
        case 2:
            return TunerSource::kCable;
        case 8:
            return 9;
        default:
            return 0;
    }
}

void FactoryManager::GetDVBS_DemodInfo() {
    std::memset(&m_stDVBSDemodInfo, 0, sizeof(m_stDVBSDemodInfo));
    MSrv_DTV_Player_DVBS* dvbs = SatellitePlayer();
    if (dvbs == nullptr) {
        printf("\033[0;31m  %s ERROR!!! Invalid use: %d  \033[0m \n", "GetDVBS_DemodInfo",
               __LINE__);
        return;
    }
    dvbs->GetCurrProgramDemodInfo(&m_stDVBSDemodInfo);
}

// ---- Layouts -------------------------------------------------------------------------

struct FactoryManager::TunerRow {
    const char* cmd;
    const char* (FactoryManager::*format)();
};

struct FactoryManager::TunerTextRow {
    const char* cmd;
    MAPI_U8 (FactoryManager::*format)(std::string&);
};

void FactoryManager::SendTunerRows(const TunerRow* rows, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        if (const char* text = (this->*rows[i].format)()) {
            NotifyUI(0, rows[i].cmd, text);
        }
    }
}

void FactoryManager::SendTunerTextRows(const TunerTextRow* rows, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        std::string text;
        if ((this->*rows[i].format)(text) == 1) {
            NotifyUI(0, rows[i].cmd, text.c_str());
        }
    }
}

void FactoryManager::BeginTunerLayout(const char* layout, unsigned int waitMs) {
    NotifyUI(0, "HideAllUIExcept", layout);
    // Lets the demodulator settle; nothing else is handled meanwhile.
    MsOS_DelayTask(waitMs);
}

void FactoryManager::EndTunerLayout(const char* layout) {
    NotifyUI(0, layout, 1L);
    KillTimer(kTunerInfoTimer);
    SetTimer(1000, kTunerInfoTimer, E_TIMER_REPEAT);
    // Each redraw also goes to the serial console, as every information page does.
    KillTimer(kSerialLogTimer);
    SetTimer(300, kSerialLogTimer, E_TIMER_ONESHOT);
}

void FactoryManager::ShowTunerPage() {
    const MAPI_U32 source = GetTVSource();
    if (Satellite(source)) {
        GetDVBS_DemodInfo();
        const ST_DVBS_DEMOD_INFO& r = m_stDVBSDemodInfo;
        printf(
            "~~ BER=%f, dBm=%d, freq=%ld, CN=%f, FEC=%ld, Mod=%ld, modType=%ld, Symb=%ld, "
            "Pack=%ld, \n",
            r.fBER, r.s32dBm, static_cast<long>(r.s32Frequency), r.fCN, static_cast<long>(r.s32FEC),
            static_cast<long>(r.s32Modulation), static_cast<long>(r.s32ModType),
            static_cast<long>(r.s32SymbolRate), static_cast<long>(r.s32PacketCount));
        ShowTunerDVBS();
    } else {
        ShowTuner();
    }
}

MAPI_BOOL FactoryManager::OnTimer_TunerInfo(void*, void*, void*) {
    ShowTunerPage();
    return 1;
}

void FactoryManager::ShowTuner() {
    using F = FactoryManager;
    static const TunerRow kReception[] = {
        {"Tuner-Modulation-System", &F::GetTunerModulationSystem},
        {"Tuner-Frequency", &F::GetTunerFrequency},
        {"Tuner-Frequency-Offset", &F::GetFrequencyOffset},
        {"Tuner-Bandwidth", &F::GetBandwidth},
        {"Tuner-Lock-Status", &F::GetLockStatus},
        {"Tuner-SNR", &F::GetTunerSNR},
        {"Tuner-Signal-Power", &F::GetTunerSignalPower},
        {"Tuner-Signal-Quality-Index", &F::GetTunerSignalQualityIndex},
        {"Tuner-Signal-Strength-Index", &F::GetTunerSignalStrengthIndex},
        {"Tuner-Bit-Error-Rate", &F::GetTunerGetBitErrorRate},
        {"Tuner-Uncorrected-Error", &F::GetTunerGetUncorrectedError},
        {"Tuner-Modulation", &F::GetTunerModulation},
        {"Tuner-Mode", &F::GetTunerMode},
    };
    static const TunerRow kGuard[] = {{"Tuner-Guard-Interval", &F::GetTunerGuardInterval}};
    static const TunerTextRow kT2[] = {
        {"Tuner-MISO-SISO", &F::GetTunerMISOSISO},
        {"Tuner-Number-of-PLPs", &F::GetTunerNumberOfPLPs},
        {"Tuner-Current-PLP-ID", &F::GetTunerCurrentPLPID},
        {"Tuner-L1-Modulation", &F::GetTunerL1Modulation},
        {"Tuner-L1-Code-Rate", &F::GetTunerL1CodeRate},
        {"Tuner-CPLP-Modulation", &F::GetTunerCPLPModulation},
        {"Tuner-CPLP-Code-Rate", &F::GetTunerCPLPCodeRate},
        {"Tuner-FEC-Type", &F::GetTunerFECType},
        {"Tuner-PILOT", &F::GetTunerPILOT},
    };
    // The FFT row deliberately repeats the mode formatter, as the T2 guard and the
    // cable modulation rows repeat theirs.
    static const TunerRow kModeFFT[] = {{"Tuner-Mode-FFT", &F::GetTunerMode}};
    static const TunerTextRow kFrames[] = {{"Tuner-FEF", &F::GetTunerFEF},
                                           {"Tuner-PAPR", &F::GetTunerPAPR}};
    static const TunerRow kRepeats[] = {{"Tuner-Guard-Interval-T2", &F::GetTunerGuardInterval},
                                        {"Tuner-Modulation-DVBC", &F::GetTunerModulation}};
    static const TunerTextRow kSymbolRate[] = {
        {"Tuner-SymbolRate-DVBC", &F::GetTunerSymbolRateDVBC}};

    BeginTunerLayout("Tuner", 3000);
    SendTunerRows(kReception, sizeof(kReception) / sizeof(kReception[0]));
    NotifyUI(0, "Tuner-Hierarchy-Alpha", 0L);
    const char* highPriority = nullptr;
    const char* lowPriority = nullptr;
    if (GetTunerCodeRate(highPriority, lowPriority)) {
        NotifyUI(0, "Tuner-Code-Rate", highPriority);
        NotifyUI(0, "Tuner-Code-Rate-LP", lowPriority);
    }
    SendTunerRows(kGuard, 1);
    SendTunerTextRows(kT2, sizeof(kT2) / sizeof(kT2[0]));
    SendTunerRows(kModeFFT, 1);
    SendTunerTextRows(kFrames, 2);
    SendTunerRows(kRepeats, 2);
    SendTunerTextRows(kSymbolRate, 1);
    EndTunerLayout("Tuner");
}

void FactoryManager::ShowTunerDVBS() {
    using F = FactoryManager;
    static const TunerRow kReception[] = {
        {"Tuner-Modulation-System-DVBS", &F::GetTunerModulationSystem},
        {"Tuner-Frequency-DVBS", &F::GetTunerFrequency},
        {"Tuner-2nd-IF-Frequency-DVBS", &F::GetTuner2ndIFFrequency},
        {"Tuner-Frequency-Offset-DVBS", &F::GetFrequencyOffset},
        {"Tuner-Bandwidth-DVBS", &F::GetBandwidth},
        {"Tuner-Lock-Status-DVBS", &F::GetLockStatus},
        {"Tuner-SNR-DVBS", &F::GetTunerSNR},
        {"Tuner-Signal-Power-DVBS", &F::GetTunerSignalPower},
        {"Tuner-Signal-Quality-Index-DVBS", &F::GetTunerSignalQualityIndex},
        {"Tuner-Signal-Strength-Index-DVBS", &F::GetTunerSignalStrengthIndex},
        {"Tuner-Bit-Error-Rate-DVBS", &F::GetTunerGetBitErrorRate},
        {"Tuner-Uncorrected-Error-DVBS", &F::GetTunerGetUncorrectedError},
        {"Tuner-Modulation-DVBS", &F::GetTunerModulation},
    };
    static const TunerRow kFrontEnd[] = {
        {"Tuner-Symbol-Rate-DVBS", &F::GetTunerSymbolRate},
        {"Tuner-Roll-Off-DVBS", &F::GetTunerRollOff},
        {"Tuner-LNB-Power-DVBS", &F::GetTunerLNBPower},
        {"Tuner-LNB-System-DVBS", &F::GetTunerLNBSystem},
        {"Tuner-LNB-Number-DVBS", &F::GetTunerLNBNumber},
        {"Tuner-LNB-Band-DVBS", &F::GetTunerLNBBand},
        {"Tuner-LNB-Polarity-DVBS", &F::GetTunerLNBPolarity},
        {"Tuner-LNB-Ant-Error-DVBS", &F::GetTunerLNBAntError},
    };
    NotifyUI(0, "HideAllUIExcept", "TunerDVBS");
    m_bVersionMode = 1;
    MsOS_DelayTask(500);
    SendTunerRows(kReception, sizeof(kReception) / sizeof(kReception[0]));
    const char* highPriority = nullptr;
    const char* lowPriority = nullptr;
    if (GetTunerCodeRate(highPriority, lowPriority)) {
        NotifyUI(0, "Tuner-Code-Rate-DVBS", highPriority);
    }
    SendTunerRows(kFrontEnd, sizeof(kFrontEnd) / sizeof(kFrontEnd[0]));
    EndTunerLayout("TunerDVBS");
}

// Kept for ATSC products; no page of this set draws it.
void FactoryManager::ShowTuner_ATSC() {
    using F = FactoryManager;
    static const TunerRow kRows[] = {
        {"Tuner-Modulation-System-ATSC", &F::GetTunerModulation},
        {"Tuner-Frequency-Offset-ATSC", &F::GetFrequencyOffset},
        {"Tuner-Bandwidth-ATSC", &F::GetBandwidth},
        {"Tuner-Lock-Status-ATSC", &F::GetLockStatus},
        {"Tuner-SNR-ATSC", &F::GetTunerSNR},
        {"Tuner-Signal-Power-ATSC", &F::GetTunerSignalPower},
        {"Tuner-Signal-Quality-Index-ATSC", &F::GetTunerSignalQualityIndex},
        {"Tuner-Bit-Error-Rate-ATSC", &F::GetTunerGetBitErrorRate},
        {"Tuner-Uncorrected-Error-ATSC", &F::GetTunerGetUncorrectedError},
    };
    BeginTunerLayout("TunerATSC", 3000);
    SendTunerRows(kRows, sizeof(kRows) / sizeof(kRows[0]));
    EndTunerLayout("TunerATSC");
}
