// Signal adjustment tests of the line: ADC calibration on the current analogue
// input (the station feeds the reference signal and reports the result) and the
// writing of the PC input's EDID into its EEPROM.
#include <cstdint>
#include <cstdio>

#include "FactoryEventIds.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Factory_Default.h"
#include "MSrv_Player.h"
#include "MsOS.h"
#include "mapi_interface.h"
#include "mapi_vd.h"

namespace {

constexpr unsigned long kADCTimer = FactoryTimer::FactoryADCAdjustment;
constexpr unsigned long kEDIDTimer = FactoryTimer::FactoryWriteVGA_EDID_EEPRPOM;
constexpr unsigned short kItemVGAEdid = 87;

// Input sources of the adjustment.
constexpr int kSourceVGA = 0;
constexpr int kSourceCVBSFirst = 2;
constexpr int kSourceCVBSLast = 9;
constexpr int kSourceYPbPr = 16;
constexpr int kSourceYPbPrLast = 18;

enum SignalKind { kKindNone = -1, kKindRGB, kKindCOMP, kKindPAL, kKindNTSC };

struct KindLines {
    const char* ok;
    const char* ng;
};
// The kind only chooses the line the M-mode log shows.
constexpr KindLines kKindLines[] = {
    {"(FACTORY:) AD RGB OK ", "(FACTORY:) AD RGB NG "},
    {"(FACTORY:) AD COMP OK ", "(FACTORY:) AD COMP NG "},
    {"(FACTORY:) AD PAL OK ", "(FACTORY:) AD PAL NG "},
    {"(FACTORY:) AD NTSC OK ", "(FACTORY:) AD NTSC NG "},
};

MAPI_U8 VideoStandard() { return mapi_interface::Get_mapi_vd()->GetVideoStandard(); }

SignalKind KindOf(int source) {
    if (source == kSourceVGA) {
        return kKindRGB;
    }
    if (source == kSourceYPbPr) {
        return kKindCOMP;
    }
    if (source == 2 || source == 3) {
        switch (VideoStandard()) {
            case 0:
            case 2:
            case 4:
            case 5:
                return kKindPAL;
            case 1:
            case 3:
            case 6:
                return kKindNTSC;
            default:
                return kKindNone;
        }
    }
    return kKindNone;
}

// Vertical frequency in tenths of a hertz, strictly inside the 60 Hz window.
bool Is60Hz(const ST_MAPI_TIMING_INFO& t) { return t.u16VFreq > 580 && t.u16VFreq < 620; }

// The station's console names the event handler, not the helper that does its checks.
constexpr const char* kAdcHandler = "OnEvent_FactoryADCAdjustment";

}  // namespace

MAPI_BOOL FactoryManager::ADCInputReady(int source) {
    MSrv_Player* player =
        MSrv_Control::GetInstance()->GetMSrvPlayer(static_cast<MAPI_INPUT_SOURCE_TYPE>(source));
    if (player == nullptr || !player->IsSignalStable()) {
        printf("\033[1;32mDetect Video signal  --> NG%s(%d)\033[m\n", kAdcHandler, __LINE__);
        return 0;
    }
    bool ok = false;
    ST_MAPI_TIMING_INFO timing{};
    if (source == kSourceVGA) {
        ok = player->GetTimingInfo(&timing) && timing.u16Width == 640 && timing.u16Height == 480 &&
             Is60Hz(timing);
    } else if (source >= kSourceYPbPr && source <= kSourceYPbPrLast) {
        ok = player->GetTimingInfo(&timing) && timing.u16Width == 1920 &&
             timing.u16Height == 1080 && Is60Hz(timing);
        if (!ok) {
            printf("\033[1;32mDetect signal format --> NG%s(%d) \033[m\n", kAdcHandler, __LINE__);
            return 0;
        }
    } else if (source >= kSourceCVBSFirst && source <= kSourceCVBSLast) {
        const MAPI_U8 standard = VideoStandard();
        ok = standard == 0 || standard == 1 || standard == 4 || standard == 5;
    }
    if (!ok) {
        printf("\033[1;32mDetect signal format --> NG%s(%d)\033[m\n", kAdcHandler, __LINE__);
    }
    return ok ? 1 : 0;
}

MAPI_BOOL FactoryManager::OnEvent_FactoryADCAdjustment(void*, void* p2, void*) {
    const uintptr_t phase = reinterpret_cast<uintptr_t>(p2);
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_FactoryADCAdjustment");
    ResetState();
    m_bIsADCAdjustmentTesting = 1;
    m_pFactoryCmd->SetFactoryOSDStatus(1);
    InfoZYTAppMgr(1);
    InfoWebAppMgrHideShowPage(1, 1);
    const int source = MSrv_Control::GetInstance()->GetCurrentInputSource();
    const SignalKind kind = KindOf(source);
    NotifyUI(0, "HideAllUIExcept", "ADCAdjustment");
    if (phase == 1 || phase == 2) {
        const bool ok = phase == 1;
        if (m_pFactoryCmd->GetFactoryMmodeStatus() && kind != kKindNone) {
            const char* line = ok ? kKindLines[kind].ok : kKindLines[kind].ng;
            FACTORY_LOG(FACTORY_LOG_INFO, "%s", line);
            printf("\n%s \n", line);
        }
        m_u8ADCResult = ok ? 1 : 0;
        NotifyUI(0, "ADC-Adjustment", ok ? 1L : 2L);
    } else if (phase == 0) {
        // Without signal or in a wrong format the adjustment does not start and the
        // page stays up until the next ADC event or an exit key.
        if (!ADCInputReady(source)) {
            return 1;
        }
        FACTORY_LOG(FACTORY_LOG_INFO, "ADC adjusting ");
        NotifyUI(0, "ADC-Adjustment", 0L);
        m_pFactoryCmd->SetADC();
    }
    KillTimer(kADCTimer);
    SetTimer(3000, kADCTimer, E_TIMER_ONESHOT);
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_FactoryADCAdjustment(void*, void*, void*) {
    m_bIsADCAdjustmentTesting = 0;
    m_pFactoryCmd->SetFactoryOSDStatus(0);
    NotifyUI(0, m_u8ADCResult == 1 ? "ADC-Adjustment-OK-Show" : "ADC-Adjustment-NG-Show", 0L);
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
    return 1;
}

MAPI_BOOL FactoryManager::OnEvent_FactoryWriteVGA_EDID_EEPRPOM(void*, void*, void*) {
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_FactoryWriteVGA_EDID_EEPRPOM");
    ResetState();
    m_bIsVGAEDIDWriting = 1;
    m_pFactoryCmd->SetFactoryOSDStatus(1);
    InfoZYTAppMgr(1);
    InfoWebAppMgrHideShowPage(1, 1);
    NotifyUI(0, "HideAllUIExcept", "VGA_EDID_EEPROM");
    if (m_pFactoryCmd->IsUARTEnableUI() == 1) {
        NotifyUI(0, "WriteVGA_EDID_EEPRPOM", 0L);
    }
    m_pFactoryDefault->SetVGA_EDID_Data();
    // The EEPROM needs the time to settle before it reads back.
    MsOS_DelayTask(200);
    unsigned char result = 0;
    m_pFactoryDefault->GetVGA_EDID_Data(&result);
    // The byte read back is what the EDID readers show: 1 is a good EDID.
    const bool ok = result == 1;
    if (m_pFactoryCmd->GetFactoryMmodeStatus()) {
        FACTORY_LOG(FACTORY_LOG_INFO, ok ? "(FACTORY:) VGA EDID OK " : " (FACTORY:) VGA EDID NG ");
        printf(ok ? "\n(FACTORY:) VGA EDID OK  \n" : "\n(FACTORY:) VGA EDID NG  \n");
    }
    if (m_pFactoryCmd->IsUARTEnableUI() == 1) {
        NotifyUI(0, "WriteVGA_EDID_EEPRPOM", ok ? 1L : 2L);
    }
    // A failed check is stored too: the readers show what was read back.
    m_pFactoryDefault->SetFactoryData(kItemVGAEdid, result);
    m_pFactoryCmd->SetUARTExecutingResult(ok ? 1 : 0);
    KillTimer(kEDIDTimer);
    SetTimer(3000, kEDIDTimer, E_TIMER_ONESHOT);
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_FactoryWriteVGA_EDID_EEPRPOM(void*, void*, void*) {
    m_bIsVGAEDIDWriting = 0;
    m_pFactoryCmd->SetFactoryOSDStatus(0);
    NotifyUI(0, "WriteVGA_EDID_EEPRPOM-Show", 0L);
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
    return 1;
}
