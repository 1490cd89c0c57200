// The platform's demodulator: readings of the channel being received. The DVB-T and
// DVB-C calls read the terrestrial/cable demodulator, GetDVBT2_ the T2 layer (after
// GetDemodInfo), GetDVBS_ the satellite one (after GetDemodInfoForDVBS).
#pragma once

#include "MTypes.h"

enum EN_DEMODULATOR_TYPE {
    E_DEMODULATOR_TYPE_DVBT = 1,
    E_DEMODULATOR_TYPE_DVBC = 2,
    E_DEMODULATOR_TYPE_DVBT2 = 11,
};

// Extended commands.
enum {
    E_DEMOD_EXTEND_CMD_T2_FEF_INFO = 131,  // ST_DEMOD_FEF_INFO
    E_DEMOD_EXTEND_CMD_FREQ_OFFSET = 132,  // float, kHz
};

// Future-extension frames of a T2 signal.
struct ST_DEMOD_FEF_INFO {
    MAPI_U8 bPresent;
    MAPI_U32 u32Length;
};

class mapi_demodulator {
public:
    MAPI_U8 GetCurrentDemodulatorType();
    MAPI_BOOL GetDemodInfo();
    MAPI_BOOL ExtendCmd(MAPI_U8 command, MAPI_U32 p1, MAPI_U32 p2, void* data);

    MAPI_BOOL DTV_GetLockStatus();
    float DTV_GetSNR_Debug();
    double DTV_GetPostBER();
    MAPI_U16 DTV_GetPacketErr();
    MAPI_U8 DTV_GetSignalQuality();
    MAPI_U8 DTV_GetSignalStrength();
    MAPI_U8 DTV_DVB_T_GetSignalModulation();
    MAPI_U8 DTV_DVB_C_GetSignalModulation();
    MAPI_U8 DTV_DVB_T_GetSignalFFTValue();
    MAPI_U8 DTV_DVB_T_GetSignalCodeRate();
    MAPI_U8 DTV_DVB_T_GetSignalCodeRate_LP();
    MAPI_U8 DTV_DVB_T_GetSignalGuardInterval();
    MAPI_U16 DTV_DVB_C_GetCurrentSymbolRate();

    MAPI_U8 GetDVBT2_Demod_s1_siso_miso();
    MAPI_U8 GetDVBT2_Demod_plp_number();
    MAPI_U8 GetDVBT2_Demod_plp_id();
    MAPI_U8 GetDVBT2_Demod_constellation_l1();
    MAPI_U8 GetDVBT2_Demod_coderate_l1();
    MAPI_U8 GetDVBT2_Demod_plp_constellation();
    MAPI_U8 GetDVBT2_Demod_plp_coderate();
    MAPI_U8 GetDVBT2_Demod_plp_fec();
    MAPI_U8 GetDVBT2_Demod_pilot_pattern();
    MAPI_U8 GetDVBT2_Demod_mode_carrier();
    MAPI_U8 GetDVBT2_Demod_fef_type();
    MAPI_U8 GetDVBT2_Demod_papr();
    MAPI_U8 GetDVBT2_Demod_guard_interval();

    MAPI_BOOL GetDemodInfoForDVBS();
    MAPI_S16 GetDVBS_Demod_FreqOffset();
    MAPI_U32 GetDVBS_Demod_SymbolRate();  // symbols per second / 1000 (kS/s)
    MAPI_U32 GetDVBS_Demod_RollOff();
    MAPI_U32 GetDVBS_Demod_Lock();
    float GetDVBS_Demod_SNR();
    MAPI_S16 GetDVBS_Demod_SignalLevel();
    MAPI_U32 GetDVBS_Demod_SignalQuality();
    MAPI_U32 GetDVBS_Demod_SignalStrength();
    MAPI_U32 GetDVBS_Demod_TSpacketError();
    MAPI_U32 GetDVBS_Demod_Constellation();
    MAPI_U32 GetDVBS_Demod_CodeRate();
    long GetDVBS_Demod_Frequency();
    MAPI_U32 GetDVBS_Demod_22kOn();
    double DTV_DVBS_GetPostBER();
};
