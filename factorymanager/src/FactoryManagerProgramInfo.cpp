// Program information banner: shown for five seconds after a direct channel change.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "BannerTime.h"
#include "FactoryEventIds.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "GenreTables.h"
#include "MSrv_ChannelManager.h"
#include "MSrv_Control.h"
#include "MSrv_DTV_Player_DVBS.h"
#include "MSrv_Factory_Default.h"
#include "MSrv_SSSound.h"
#include "MSrv_System_Database.h"
#include "SatelliteNames.h"
#include "SystemInfo.h"

namespace {

constexpr unsigned long kBannerMs = 5000;
constexpr MAPI_U8 kUnnamedServiceRoute = 2;

const char* SoundModeText(MAPI_U8 mode) {
    switch (mode) {
        case 3:
        case 4:
        case 11:
            return "Stereo";
        case 7:
        case 8:
        case 10:
        case 12:
        case 13:
            return "Dual";
        default:
            return "Mono";
    }
}

MAPI_U8 CurrentRouteType() {
    MSrv_Control* control = MSrv_Control::GetInstance();
    const MAPI_U8 route = control->GetCurrentDtvRoute();
    return route < 4 ? control->GetTVInfo().u8RouteType[route] : 0;
}

}  // namespace

MAPI_BOOL FactoryManager::OnEvent_DirectCH(void*, void*, void*) {
    FACTORY_LOG(FACTORY_LOG_INFO, "OnEvent_DirectCH");
    NotifyUI(0, "HideAllUIExcept", "ProgramInfo");
    Updatechannelname();
    KillTimer(FactoryTimer::ProgramInfoIdle);
    SetTimer(kBannerMs, FactoryTimer::ProgramInfoIdle, E_TIMER_ONESHOT);
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_ProgramInfoIdle(void*, void*, void*) {
    NotifyUI(0, "ProgramInfo-Show", 0);
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
    return 1;
}

bool FactoryManager::IsSatelliteRoute() {
    const MAPI_U8 type = CurrentRouteType();
    return type == 4 || type == 64;
}

unsigned char FactoryManager::GenreType_Color_Setup(unsigned char genre) {
    const bool satellite = IsSatelliteRoute();
    MSrv_System_Database* db = MSrv_Control::GetInstance()->GetMSrvSystemDatabase();
    const MAPI_U8 country = db->GetSystemCountry();
    MAPI_U32 colour = 0;
    db->GetEpgGenreColors(genre, &colour);
    return GenreTables::Normalise(genre, {satellite, country});
}

void FactoryManager::Updatechannelname() {
    MSrv_Control* control = MSrv_Control::GetInstance();
    const MAPI_INPUT_SOURCE_TYPE source = control->GetCurrentInputSource();
    ST_CURRENT_PROGRAM program{};
    if (!control->GetMSrvChannelManager()->GetCurrentProgram(&program)) {
        return;
    }
    program.szName[sizeof(program.szName) - 1] = '\0';
    const std::string number = std::to_string(program.u16Number);

    if (source == MAPI_INPUT_SOURCE_ATV) {
        // The numbering variant is read and tested, yet both variants show the same.
        unsigned char numbering = 0;
        m_pFactoryDefault->GetFactoryData(3564, &numbering);
        NotifyUI(0, "ProgramInfo-ChannelNum", numbering == 153 ? number.c_str() : number.c_str());
        NotifyUI(0, "ProgramInfo-ChannelName", program.szName);
        NotifyUI(0, "ProgramInfo-Audio",
                 SoundModeText(control->GetMSrvSSSound()->GetSifSoundMode()));
        return;
    }
    if (source != MAPI_INPUT_SOURCE_DTV) {
        return;
    }

    MSrv_DTV_Player_DVB* dtv = control->GetMSrvDtv();
    ST_EIT_PRESENT_INFO eit{};
    const bool present = dtv != nullptr && dtv->GetEITInfo(&eit) == 1;
    NotifyUI(0, "ProgramInfo-DTVChannelNum", program.u16Number);
    const bool unnamed = program.szName[0] == '\0' && CurrentRouteType() == kUnnamedServiceRoute;
    NotifyUI(0, "ProgramInfo-DTVChannelName", unnamed ? "New Program" : program.szName);

    const bool hasDvbs = SystemInfo::GetInstance()->IsDVBSEnable() != 0;
    // Only a set with DVB-S asks for the route.
    const bool satellite = hasDvbs && IsSatelliteRoute();
    if (satellite) {
        auto* dvbs = dynamic_cast<MSrv_DTV_Player_DVBS*>(dtv);
        if (dvbs == nullptr) {
            printf("ASSERT FAIL: %s %s %d\n", "./factorymanager/src/FactoryManager",
                   __PRETTY_FUNCTION__, 15184);
            fflush(stdout);
            abort();
        }
        MS_SAT_INFO sat{};
        if (dvbs->GetSatelliteInfo(dvbs->GetCurrentSateliteNo(), sat)) {
            sat.aSatName[sizeof(sat.aSatName) - 1] = '\0';
            NotifyUI(0, "ProgramInfo-SatelliteName", SatelliteNames::DisplayName(sat.aSatName));
        }
    }

    const char* genre = "";
    if (hasDvbs) {
        const MAPI_U8 g = GenreType_Color_Setup(eit.u8GenreClass);
        const MAPI_U8 country = control->GetMSrvSystemDatabase()->GetSystemCountry();
        genre = GenreTables::Label(g, {satellite, country});
    }
    NotifyUI(0, "ProgramInfo-DTV_GENRE", genre);

    if (!present) {
        NotifyUI(0, "ProgramInfo-TimeInfo", "");
        return;
    }
    const std::string span =
        BannerTime::Span(eit.u8StartHour, eit.u8StartMinute, eit.u8EndHour, eit.u8EndMinute);
    NotifyUI(0, "ProgramInfo-TimeInfo", span.c_str());
    const unsigned minutes =
        BannerTime::MinutesLeft(eit.u32StartTime, eit.u32Duration, control->RTCGetCLK());
    NotifyUI(0, "ProgramInfo-TimeInfo", BannerTime::MinutesLeftText(minutes).c_str());
}
