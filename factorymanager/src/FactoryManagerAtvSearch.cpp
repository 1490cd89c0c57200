// ATV tuning search: the operator sweeps up or down to the next analogue station,
// sees its class and number in the C and S channel plans and stores it with OK.
#include <cstdint>
#include <cstdio>

#include "AtvChannelPlan.h"
#include "FactoryEventIds.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_ATV_Database.h"
#include "MSrv_ATV_Player.h"
#include "MSrv_ChannelManager.h"
#include "MSrv_Control.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Factory_Default.h"
#include "MSrv_System_Database.h"
#include "MW_TTX.h"

namespace {

constexpr unsigned short kNumberingItem = 3564;  // factory byte: numbering variant
constexpr unsigned char kNumberFromZero = 153;   // 0x99: programs count from 0
constexpr unsigned long kTuningEventInterval = 800000;
constexpr unsigned long kFallbackStartKHz = 855250;
constexpr double kLowestStartKHz = 43250.0;
constexpr double kHighestStartKHz = 859000.0;
constexpr unsigned long kSaveLabelMs = 500;
constexpr MAPI_U8 kScanEnded = 100;

MSrv_ATV_Player* Atv() { return MSrv_Control::GetInstance()->GetMSrvAtv(); }
MSrv_ATV_Database* AtvDb() { return MSrv_Control::GetInstance()->GetMSrvAtvDatabase(); }

// Audio standard stored with a program -> the tuner's UI sound system, and back.
MAPI_U8 SoundSystemOf(MAPI_U8 audioStandard) {
    switch (audioStandard & 0x0F) {
        case 3:
            return 1;
        case 4:
        case 5:
        case 6:
        case 7:
        case 8:
            return 2;
        case 9:
            return 4;
        default:
            return 0;
    }
}

MAPI_U8 AudioStandardOf(MAPI_U8 soundSystem) {
    switch (soundSystem) {
        case 2:
            return 4;
        case 4:
            return 9;
        case 1:
            return 3;
        default:
            return 0;
    }
}

MAPI_U16 ColourFieldOf(MAPI_U8 colourSystem) {
    switch (colourSystem) {
        case 1:
            return 0;
        case 2:
            return 2;
        case 3:
            return 3;
        case 4:
            return 1;
        default:
            return 8;
    }
}

constexpr MAPI_U16 kColourMask = 0x0F << 6;

void SetColourField(ST_ATV_MISC& misc, MAPI_U16 value) {
    misc.u16Video = static_cast<MAPI_U16>((misc.u16Video & ~kColourMask) | (value << 6));
}

}  // namespace

// What differs between the upward and the downward run.
struct FactoryManager::AtvSearchWay {
    const char* page;
    const char* showCmd;
    EN_CHANNEL_SEARCH_TYPE own;
    EN_CHANNEL_SEARCH_TYPE opposite;
    eAtvManualTuneMode mode;
    bool fallbackByChannel;  // fallback row: the channel number (down) or the table flag (up)
    const char* soundLog;    // null: none
    const char* frequencyLog;
    const char* startLog;
    const char* fallbackLog;
    const char* runLog;
    int invalidLine;
};

MAPI_BOOL FactoryManager::OnEvent_OnATVTuningSearch(void*, void* p2, void*) {
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_OnATVTuningSearch");
    ResetStateWithoutKeyWriting();
    InfoZYTAppMgrForVersion(1);
    ATVTuningSearchInit();
    switch (static_cast<MAPI_U8>(reinterpret_cast<uintptr_t>(p2))) {
        case 0:
            ATVTuningSearchUp();
            break;
        case 1:
            ATVTuningSearchDown();
            break;
        default:
            Atv()->RemoveEventRecipient(this);
            return 0;
    }
    m_bATVTuningSearchMode = 1;
    m_pFactoryCmd->SetFactoryOSDStatus(1);
    return 1;
}

void FactoryManager::ATVTuningSearchInit() {
    FACTORY_LOG(FACTORY_LOG_INFO, "ATVTuningSearchInit");
    MSrv_Control* control = MSrv_Control::GetInstance();
    MSrv_ATV_Player* atv = Atv();
    atv->AddEventRecipient(this);
    unsigned char numbering = 0;
    m_pFactoryDefault->GetFactoryData(kNumberingItem, &numbering);
    m_u8VideoSystem = 8;
    if (control->GetCurrentInputSource() != MAPI_INPUT_SOURCE_ATV) {
        control->SetInputSource(MAPI_INPUT_SOURCE_ATV, 1, 0, 0);
    }
    atv->SetChannelSearchType(E_CHANNEL_SEARCH_IDLE);
    atv->GetCurrentProgramNumber(&m_u16CurrentChannelNum);
    atv->GetCurrentFrequency(&u32FrequencyKHz);
    m_u16PreviousChannelNum = m_u16CurrentChannelNum;
    printf("~~ [ATVTuningSearchInit] ch no=%d, freq.= %ld \n", m_u16CurrentChannelNum,
           static_cast<long>(u32FrequencyKHz));
    if (numbering != kNumberFromZero) {
        ++m_u16CurrentChannelNum;
    }
    FACTORY_LOG(FACTORY_LOG_INFO, "m_u16CurrentChannelNum = %d", m_u16CurrentChannelNum);
    m_u8ColorSystem = 0;
    control->GetMSrvChannelManager()->GetAtvServiceCount(&m_nServiceNum);
    if (m_u16CurrentChannelNum > m_nServiceNum) {
        m_u16CurrentChannelNum = numbering == kNumberFromZero ? 0 : 1;
    }
    m_bATVSearchReady = 1;
}

void FactoryManager::ATVTuningSearchUp() {
    static const AtvSearchWay up = {
        "ATVTuningUpSearch",
        "ATV-Tunning-Up-Search-Show",
        E_CHANNEL_SEARCH_UP,
        E_CHANNEL_SEARCH_DOWN,
        E_MANUAL_TUNE_MODE_SEARCH_ONE_TO_UP,
        false,
        nullptr,
        "~~ [Up] u32FrequencyKHz = %ld",
        "~~ 6 freq=%ld, Video=%d, Sound=%d, offset=%d",
        "~~ 5 freq=%ld, Video=%d, Sound=%d, offset=%d",
        "~~ 2 [UP] Freq= %ld, way= %d, Sound= %d, Color= %d, offset= %d ",
        19838};
    ATVTuningSearchRun(up);
}

void FactoryManager::ATVTuningSearchDown() {
    static const AtvSearchWay down = {
        "ATVTuningDownSearch",
        "ATV-Tunning-Down-Search-Show",
        E_CHANNEL_SEARCH_DOWN,
        E_CHANNEL_SEARCH_UP,
        E_MANUAL_TUNE_MODE_SEARCH_ONE_TO_DOWN,
        true,
        "~~ <DOWN> (sound, color)-(%d, %d) ",
        "~~ [Donw] u32FrequencyKHz = %ld",
        "~~ 8 freq=%ld, Sound=%d, Video=%d, offset=%d",
        "~~ 7 freq=%ld, Sound=%d, Video=%d, offset=%d",
        "~~ 2 [DOWN] Freq= %ld, way= %d, Sound= %d, Color= %d, offset= %d ",
        19927};
    ATVTuningSearchRun(down);
}

void FactoryManager::ATVTuningSearchRun(const AtvSearchWay& way) {
    NotifyUI(0, "HideAllUIExcept", way.page);
    NotifyUI(0, way.showCmd, 1);
    MSrv_ATV_Player* atv = Atv();
    const EN_CHANNEL_SEARCH_TYPE running = atv->GetChannelSearchType();
    if (running == way.opposite) {
        // The other key stops the run; a second press starts this way.
        atv->StopManualTuning();
        m_bManualTuning = 0;
        return;
    }
    if (running != E_CHANNEL_SEARCH_IDLE) {
        return;
    }
    atv->SetChannelSearchType(way.own);
    LoadSoundSystemForFactory();
    if (way.soundLog != nullptr) {
        FACTORY_LOG(FACTORY_LOG_INFO, way.soundLog, m_u8SoundSystem, m_u8ColorSystem);
    }
    atv->GetCurrentFrequency(&u32FrequencyKHz);
    if (u32FrequencyKHz < AtvChannelPlan::LowestKHz() ||
        u32FrequencyKHz > AtvChannelPlan::HighestKHz()) {
        // The two ways index the plan differently; both are kept. A row past the plan's
        // end (a high program number going down) counts as an unused row.
        const size_t row = way.fallbackByChannel ? m_u16CurrentChannelNum : m_u8ChannelTable;
        size_t count = 0;
        const AtvChannelPlan::Row* rows = AtvChannelPlan::Rows(m_u8ChannelTable, count);
        u32FrequencyKHz = row < count ? rows[row].carrierHz / 1000 : 0;
    }
    FACTORY_LOG(FACTORY_LOG_INFO, way.frequencyLog, static_cast<long>(u32FrequencyKHz));
    if (u32FrequencyKHz != 0) {
        atv->ZYT_GetAftOffset(&m_s8AftOffset);
        FACTORY_LOG(FACTORY_LOG_INFO, way.startLog, static_cast<long>(u32FrequencyKHz),
                    m_u8SoundSystem, m_u8VideoSystem, static_cast<signed char>(m_s8AftOffset));
    } else {
        u32FrequencyKHz = kFallbackStartKHz;
        m_s8AftOffset = 0;
        FACTORY_LOG(FACTORY_LOG_INFO, way.fallbackLog, static_cast<long>(u32FrequencyKHz),
                    m_u8SoundSystem, m_u8VideoSystem, 0);
    }
    atv->ZYT_GetAftOffset(&m_s8AftOffset);
    const double start = u32FrequencyKHz;
    if (start < kLowestStartKHz || start > kHighestStartKHz) {
        FACTORY_LOG(FACTORY_LOG_INFO, "===>Invalid Freq=%ld, line=%d",
                    static_cast<long>(u32FrequencyKHz), way.invalidLine);
        return;
    }
    if (m_bManualTuning) {
        atv->StopManualTuning();
    }
    FACTORY_LOG(FACTORY_LOG_INFO, way.runLog, static_cast<long>(u32FrequencyKHz),
                static_cast<int>(way.mode), m_u8SoundSystem, m_u8ColorSystem,
                static_cast<signed char>(m_s8AftOffset));
    atv->ZYT_SetManualTuningStart(kTuningEventInterval, u32FrequencyKHz, way.mode,
                                  static_cast<EN_MSRV_UI_SOUND_SYSTEM>(m_u8SoundSystem),
                                  static_cast<EN_MSRV_UI_COLOR_SYSTEM>(m_u8ColorSystem),
                                  m_s8AftOffset);
    m_bManualTuning = 1;
}

void FactoryManager::LoadSoundSystemForFactory() {
    FACTORY_LOG(FACTORY_LOG_INFO, "LoadSoundSystemForFactory");
    Atv()->ZYT_GetAftOffset(&m_s8AftOffset);
    if (m_nServiceNum == 0) {
        m_u8SoundSystem = 0;
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ ServiceNum = 0, m_u8SoundSystem = %d ", m_u8SoundSystem);
        return;
    }
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ m_nServiceNum != 0");
    FACTORY_LOG(FACTORY_LOG_INFO, "m_u16CurrentChannelNum is %d ", m_u16CurrentChannelNum);
    ST_ATV_MISC misc{};
    if (AtvDb()->GetProgramInfo(E_GET_MISC, m_u16CurrentChannelNum, 0, &misc) == 1) {
        m_u8SoundSystem = SoundSystemOf(misc.u8AudioStandard);
        FACTORY_LOG(FACTORY_LOG_INFO, "~~ m_u8SoundSystem = %d", m_u8SoundSystem);
    }
}

MAPI_BOOL FactoryManager::OnEvent_AtvScanInfo(void*, void* p2, void*) {
    const auto* info = static_cast<const ST_ATV_SCAN_INFO*>(p2);
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_AtvScanInfo");
    if (info == nullptr) {
        return 1;  // a record-less event carries nothing to show
    }
    const uint64_t hz = static_cast<uint64_t>(info->u32FrequencyKHz) * 1000;
    const uint32_t f = hz > UINT32_MAX ? UINT32_MAX : static_cast<uint32_t>(hz);
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ u32TempFrequencyKHz=%ld ", static_cast<long>(f));
    FACTORY_LOG(FACTORY_LOG_INFO, "~~~~~~~ 1 (t, t1, t2)-(%d, %d, %d) ",
                static_cast<int>(AtvChannelPlan::kCRows),
                static_cast<int>(AtvChannelPlan::kCRows * sizeof(AtvChannelPlan::Row)),
                static_cast<int>(sizeof(AtvChannelPlan::Row)));
    int lastRow = 0;
    // The player is asked for the run's direction only while a manual run is going.
    const eAtvManualTuneMode mode =
        m_bManualTuning ? Atv()->GetManualTuneMode() : E_MANUAL_TUNE_MODE_UNDEFINE;
    if (m_bManualTuning && (mode == E_MANUAL_TUNE_MODE_SEARCH_ONE_TO_UP ||
                            mode == E_MANUAL_TUNE_MODE_SEARCH_ONE_TO_DOWN)) {
        const bool down = mode == E_MANUAL_TUNE_MODE_SEARCH_ONE_TO_DOWN;
        const char* classCmd =
            down ? "ATV-Tunning-Down-Search-SignalClass" : "ATV-Tunning-Up-Search-SignalClass";
        const char* channelCmd = down ? "ATV-Tunning-Down-Search-CurrentChannel"
                                      : "ATV-Tunning-Up-Search-CurrentChannel";
        int row = AtvChannelPlan::FindRow(AtvChannelPlan::C, f);
        lastRow = row < 0 ? static_cast<int>(AtvChannelPlan::kCRows) : row;
        if (row >= 0) {
            FACTORY_LOG(FACTORY_LOG_INFO, "~~ C table[%d]=%ld ", row,
                        static_cast<long>(AtvChannelPlan::CTable()[row].carrierHz));
            m_u8ChannelTable = AtvChannelPlan::C;
            m_u16CurrentChannelNum = static_cast<MAPI_U16>(row);
            m_bATVSearchDown = down ? 1 : 0;
            NotifyUI(0, classCmd, "C");
            NotifyUI(0, channelCmd, row);
        } else {
            FACTORY_LOG(FACTORY_LOG_INFO, "~~~~~~~ 2 (t, t1, t2)-(%d, %d, %d) ",
                        static_cast<int>(AtvChannelPlan::kSRows),
                        static_cast<int>(AtvChannelPlan::kSRows * sizeof(AtvChannelPlan::Row)),
                        static_cast<int>(sizeof(AtvChannelPlan::Row)));
            row = AtvChannelPlan::FindRow(AtvChannelPlan::S, f);
            lastRow = row < 0 ? static_cast<int>(AtvChannelPlan::kSRows) : row;
            if (row >= 0) {
                FACTORY_LOG(FACTORY_LOG_INFO, "~~ S table[%d]=%ld ", row,
                            static_cast<long>(AtvChannelPlan::STable()[row].carrierHz));
                m_u8ChannelTable = AtvChannelPlan::S;
                m_u16CurrentChannelNum = static_cast<MAPI_U16>(row);
                m_bATVSearchDown = down ? 1 : 0;
                NotifyUI(0, classCmd, "S");
                NotifyUI(0, channelCmd, row);
                // Only a downward S hit tells the platform where the run finished.
                if (down) {
                    FACTORY_LOG(FACTORY_LOG_INFO, "Tunning finish: %d  ", row);
                    MSrv_Control::GetInstance()->SetATVManualTuneFinishChannel(
                        static_cast<unsigned char>(row));
                }
            }
        }
    }
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ i=%d  ", lastRow);
    if (m_bATVSearchReady != 1) {
        return 1;
    }
    u32FrequencyKHz = info->u32FrequencyKHz;
    if (info->u8Percent < kScanEnded) {
        return 1;
    }
    MSrv_ATV_Player* atv = Atv();
    atv->SetChannelSearchType(E_CHANNEL_SEARCH_IDLE);
    atv->StopManualTuning();
    m_bManualTuning = 0;
    atv->GetCurrentFrequency(&u32FrequencyKHz);
    return 1;
}

MAPI_BOOL FactoryManager::ATVTuningSearchSelect() {
    FACTORY_LOG(FACTORY_LOG_INFO, "ATVTuningSearchSelect");
    printf("~~ Previous Ch no = %d, Current Ch no = %d\n", m_u16PreviousChannelNum,
           m_u16CurrentChannelNum);
    if (CheckChannelValid(m_u8ChannelTable, m_u16CurrentChannelNum)) {
        ZYT_SaveProgram(m_u16PreviousChannelNum);
    } else {
        FACTORY_LOG(FACTORY_LOG_INFO, "CheckChannelValid failed");
    }
    return 1;
}

unsigned char FactoryManager::CheckChannelValid(unsigned char table, unsigned short channel) {
    return AtvChannelPlan::IsUsed(table, channel) ? 1 : 0;
}

unsigned char FactoryManager::ZYT_SaveProgram(unsigned short program) {
    FACTORY_LOG(FACTORY_LOG_INFO, "ZYT_SaveProgram");
    MSrv_ATV_Player* atv = Atv();
    MSrv_ATV_Database* db = AtvDb();
    const MAPI_U16 row = m_u16CurrentChannelNum;
    ST_ATV_MISC misc{};
    db->GetProgramInfo(E_GET_MISC, program, 0, &misc);
    misc.u8Flags = static_cast<MAPI_U8>((misc.u8Flags & ~0x20) | ((m_u8ChannelTable & 1) << 5));
    misc.u8AudioStandard =
        static_cast<MAPI_U8>((misc.u8AudioStandard & 0xF0) | AudioStandardOf(m_u8SoundSystem));
    SetColourField(misc, ColourFieldOf(m_u8ColorSystem));

    atv->GetCurrentFrequency(&u32FrequencyKHz);
    const MAPI_U16 pll = static_cast<MAPI_U16>(
        atv->ZYT_ConvertFreqKhzToPLL(u32FrequencyKHz - atv->ZYT_GetFineTuneOffset(0)));
    db->SetProgramInfo(E_SET_PLL, program, pll, nullptr);
    atv->ZYT_GetAftOffset(&m_s8AftOffset);
    db->SetProgramInfo(E_SET_AFT_OFFSET, program, m_s8AftOffset, nullptr);
    db->SetProgramInfo(E_SET_SKIP, program, 0, nullptr);
    MW_TTX::GetInstance()->Reset();
    // The stored colour system is always "auto", whatever was chosen above.
    SetColourField(misc, 8);

    unsigned char name[6] = {static_cast<unsigned char>(m_u8ChannelTable ? 'S' : 'C'),
                             '-',
                             static_cast<unsigned char>('0' + row / 10),
                             static_cast<unsigned char>('0' + row % 10),
                             ' ',
                             '\0'};
    // Tuning data went to the program that was on; the name and the plan to the row's
    // own program number.
    db->ATVSetChannelName(static_cast<unsigned char>(row), name);
    db->SetProgramInfo(E_SET_MISC, row, 0, &misc);
    db->ATVSetFineTune(static_cast<unsigned char>(row), 0);

    FACTORY_LOG(FACTORY_LOG_INFO,
                m_bATVSearchDown != 1 ? "ATV tuning up save" : "ATV tuning down save");
    NotifyUI(0, AtvSaveCmd(), "Save OK");
    SetTimer(kSaveLabelMs, FactoryTimer::OnATVTuningSearch, E_TIMER_ONESHOT);
    return 1;
}

const char* FactoryManager::AtvSaveCmd() const {
    return m_bATVSearchDown != 1 ? "ATV-Tunning-Up-Search-SaveOK" : "ATV-Tunning-Down-Search-Save";
}

MAPI_BOOL FactoryManager::OnTimer_OnATVTuningSearch(void*, void*, void*) {
    NotifyUI(0, AtvSaveCmd(), "");
    return 1;
}

MAPI_BOOL FactoryManager::ExitATVTuningSearch() {
    MSrv_ATV_Player* atv = Atv();
    if (m_bManualTuning) {
        atv->StopManualTuning();
        m_bManualTuning = 0;
    }
    printf("~~ Previous Ch no = %d\n", m_u16PreviousChannelNum);
    atv->ChangeProgram(m_u16PreviousChannelNum, 1);
    atv->GetCurrentFrequency(&u32FrequencyKHz);
    if (atv->GetChannelSearchType() != E_CHANNEL_SEARCH_IDLE) {
        atv->SetChannelSearchType(E_CHANNEL_SEARCH_IDLE);
        atv->StopManualTuning();
    }
    if (m_pFactoryCmd->GetFactoryMmodeStatus() == 0) {
        // Outside M-mode a set left without signal shows the blue screen.
        MSrv_System_Database* db = MSrv_Control::GetInstance()->GetMSrvSystemDatabase();
        ST_USER_SYSTEM_SETTING setting{};
        db->GetUserSystemSetting(&setting);
        if (setting.bBlueScreen == 0 && atv->IsATVSignalLock() == 0) {
            setting.bBlueScreen = 1;
            MSrv_Control::GetInstance()->SetBlueScreenEnable(1);
            db->SetUserSystemSetting(&setting);
        }
    }
    atv->RemoveEventRecipient(this);
    NotifyUI(0,
             m_bATVSearchDown != 1 ? "ATV-Tunning-Up-Search-Show" : "ATV-Tunning-Down-Search-Show",
             0);
    return 1;
}
