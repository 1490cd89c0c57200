// The simulated set behind the program banner.
#include "SimProgramInfo.h"

#include "MSrv_Control.h"
#include "MSrv_DTV_Player_DVB.h"
#include "MSrv_SSSound.h"
#include "MSrv_System_Database.h"

using sim::ArgList;
using sim::ProgramInfoState;
using sim::Set;

namespace {
ProgramInfoState& Info() { return Set::Instance().Get<ProgramInfoState>(); }
void Record(const char* fn, const ArgList& args) { Set::Instance().RecordCall(fn, args); }
}  // namespace

MAPI_BOOL MSrv_DTV_Player_DVB::GetEITInfo(ST_EIT_PRESENT_INFO* present) {
    Record("MSrv_DTV_Player_DVB::GetEITInfo", ArgList());
    const ProgramInfoState& s = Info();
    if (!s.eitPresent || present == nullptr) {
        return 0;
    }
    present->u8StartHour = s.startHour;
    present->u8StartMinute = s.startMinute;
    present->u8EndHour = s.endHour;
    present->u8EndMinute = s.endMinute;
    present->u32StartTime = static_cast<MAPI_U32>(s.eitStart);
    present->u32Duration = s.eitDuration;
    present->u8GenreClass = s.genre;
    return 1;
}

MAPI_U8 MSrv_System_Database::GetSystemCountry() {
    Record("MSrv_System_Database::GetSystemCountry", ArgList());
    return Info().country;
}

MAPI_BOOL MSrv_System_Database::GetEpgGenreColors(MAPI_U8 genre, MAPI_U32* colour) {
    Record("MSrv_System_Database::GetEpgGenreColors", ArgList(genre));
    *colour = 0xFF808080u;
    return 1;
}

MAPI_U32 MSrv_Control::RTCGetCLK() {
    Record("MSrv_Control::RTCGetCLK", ArgList());
    return static_cast<MAPI_U32>(Info().RtcNow());
}

MAPI_U8 MSrv_SSSound::GetSifSoundMode() {
    Record("MSrv_SSSound::GetSifSoundMode", ArgList());
    return Info().sifSoundMode;
}
