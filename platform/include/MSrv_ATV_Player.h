// The platform's analogue TV player.
#pragma once

#include "MSrv_Player.h"
#include "MTypes.h"

// Who runs a channel search: 0 a downward and 1 an upward factory run, 2 nobody.
enum EN_CHANNEL_SEARCH_TYPE : int {
    E_CHANNEL_SEARCH_DOWN = 0,
    E_CHANNEL_SEARCH_UP = 1,
    E_CHANNEL_SEARCH_IDLE = 2,
};
// Direction of a manual tuning run; any other value while none runs.
enum eAtvManualTuneMode : int {
    E_MANUAL_TUNE_MODE_SEARCH_ONE_TO_UP = 0,
    E_MANUAL_TUNE_MODE_SEARCH_ONE_TO_DOWN = 1,
    E_MANUAL_TUNE_MODE_UNDEFINE = 2,
};
enum EN_MSRV_UI_SOUND_SYSTEM : int {};
enum EN_MSRV_UI_COLOR_SYSTEM : int {};

// Data of the ATV player's scan-info event (platform event 43).
struct ST_ATV_SCAN_INFO {
    MAPI_U8 u8Percent;  // 100: the run has ended
    MAPI_U8 u8Reserved[3];
    MAPI_U32 u32FrequencyKHz;
};
static_assert(sizeof(ST_ATV_SCAN_INFO) == 8, "progress in byte 0, frequency in bytes 4 to 7");

class MSrv_ATV_Player : public MSrv_Player {
public:
    // Stores the channel found by the factory search as program number n.
    MAPI_BOOL ATVSaveProgram(unsigned char program);

    EN_CHANNEL_SEARCH_TYPE GetChannelSearchType();
    MAPI_BOOL SetChannelSearchType(EN_CHANNEL_SEARCH_TYPE type);
    // Sweeps from the frequency in the given way until the tuner locks or the band ends;
    // progress comes as scan-info events.
    MAPI_BOOL ZYT_SetManualTuningStart(unsigned long eventInterval, unsigned long frequencyKHz,
                                       eAtvManualTuneMode way, EN_MSRV_UI_SOUND_SYSTEM sound,
                                       EN_MSRV_UI_COLOR_SYSTEM colour, unsigned char aftOffset);
    eAtvManualTuneMode GetManualTuneMode();
    MAPI_BOOL ZYT_GetAftOffset(unsigned char* offset);
    short ZYT_GetFineTuneOffset(short program);
    unsigned long ZYT_ConvertFreqKhzToPLL(unsigned long frequencyKHz);
    MAPI_BOOL IsATVSignalLock();
    virtual MAPI_BOOL StopManualTuning();
    virtual MAPI_BOOL GetCurrentFrequency(MAPI_U32* frequencyKHz);
    virtual MAPI_BOOL GetCurrentProgramNumber(MAPI_U16* program);
    virtual MAPI_BOOL ChangeProgram(MAPI_U16 program, MAPI_U8 reason);
};
