// The simulated set behind the information pages: picture manager, colour
// temperatures, network type, the Wi-Fi dongle and the service's event raising.
#include "SimInfoPages.h"

#include "MSrv_Control.h"
#include "MSrv_Control_common.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Network.h"
#include "MSrv_System_Database.h"
#include "PictureManager.h"
#include "SimMMode.h"
#include "TVManager.h"

using sim::ArgList;
using sim::Set;

namespace {
sim::PictureState& Picture() { return Set::Instance().Get<sim::PictureState>(); }
sim::WifiDongleState& Dongle() { return Set::Instance().Get<sim::WifiDongleState>(); }
void Record(const char* fn, const ArgList& args) { Set::Instance().RecordCall(fn, args); }

// Event raised for the version key of CMD_HandleEvent.
constexpr unsigned int kVersionKeyCode = 171;
constexpr unsigned int kFactoryVersionEvent = 188;
}  // namespace

// ---- Picture manager -------------------------------------------------------------------

PictureManager* TVManager::getPictureManager() {
    static PictureManager manager;
    return Picture().present ? &manager : nullptr;
}

MAPI_U8 PictureManager::getContrast() { return Picture().contrast; }
MAPI_U8 PictureManager::getBacklight() { return Picture().backlight; }
MAPI_U8 PictureManager::getDynamicLight() { return Picture().dynamicLight; }
MAPI_U8 PictureManager::getBrightness() { return Picture().brightness; }
MAPI_U8 PictureManager::getColour() { return Picture().colour; }
MAPI_S8 PictureManager::getIint() { return Picture().tint; }
MAPI_U8 PictureManager::getSharpness() { return Picture().sharpness; }
MAPI_U8 PictureManager::getBlackWhiteLevel() { return Picture().blackWhiteLevel; }
MAPI_U8 PictureManager::getCinemaMode() { return Picture().cinemaMode; }
MAPI_U8 PictureManager::getMpegNR() { return Picture().mpegNR; }

MAPI_BOOL PictureManager::getDynamicNR(MAPI_U8& level) {
    // A failed read leaves the caller's value as it was.
    if (!Picture().dynamicNRReadable) {
        return 0;
    }
    level = Picture().dynamicNR;
    return 1;
}

MAPI_BOOL PictureManager::getAspectRatio(MAPI_U8& ratio) {
    if (!Picture().aspectRatioReadable) {
        return 0;
    }
    ratio = Picture().aspectRatio;
    return 1;
}

// ---- System database: picture mode and colour temperatures -----------------------------

MAPI_BOOL MSrv_System_Database::GetVideoSetting(ST_VIDEO* setting, MAPI_INPUT_SOURCE_TYPE source) {
    Record("MSrv_System_Database::GetVideoSetting", ArgList(source));
    if (setting == nullptr) {
        return 0;
    }
    setting->ePicture = Picture().pictureMode;
    return 1;
}

MAPI_BOOL MSrv_System_Database::GetColorTempBySourceAndPictureMode(
    mapi_pql_datatype::MAPI_PQL_COLOR_TEMP_DATA* out, MSrv_Picture::EN_MS_COLOR_TEMP colorTemp,
    MAPI_INPUT_SOURCE_TYPE source, MAPI_U8 pictureMode) {
    Record("MSrv_System_Database::GetColorTempBySourceAndPictureMode",
           ArgList(colorTemp, source, pictureMode));
    if (out == nullptr || colorTemp < 0 || colorTemp > 2) {
        return 0;
    }
    *out = Set::Instance().Get<sim::ColorTempState>().At(source, pictureMode)[colorTemp];
    return 1;
}

// ---- Network type and the Wi-Fi dongle ------------------------------------------------

MAPI_U8 MSrv_Network::GetNetworkType() {
    Record("MSrv_Network::GetNetworkType", ArgList());
    return Dongle().networkType;
}

MAPI_BOOL MSrv_Factory_Cmd::StartWifiDongleThreadStart() {
    Record("MSrv_Factory_Cmd::StartWifiDongleThreadStart", ArgList());
    sim::WifiDongleState& d = Dongle();
    d.starting = true;
    d.startedAtMs = Set::Instance().NowMs();
    return 1;
}

MAPI_U8 MSrv_Factory_Cmd::GetWifiDongleInitStatus() {
    sim::WifiDongleState& d = Dongle();
    if (d.starting && d.readyAfterMs >= 0 &&
        Set::Instance().NowMs() >= d.startedAtMs + static_cast<uint64_t>(d.readyAfterMs)) {
        d.starting = false;
        d.initStatus = 1;
    }
    return d.initStatus;
}

MAPI_BOOL MSrv_Factory_Cmd::SetWifiDongleInitStatus(MAPI_U8 status) {
    Record("MSrv_Factory_Cmd::SetWifiDongleInitStatus", ArgList(status));
    // The caller has stopped waiting: a dongle still coming up no longer reports.
    Dongle().starting = false;
    Dongle().initStatus = status;
    return 1;
}

MAPI_BOOL MSrv_Control_common::EnableWiFiDongle(MAPI_BOOL enable, MAPI_BOOL wait) {
    Record("MSrv_Control_common::EnableWiFiDongle", ArgList(enable, wait));
    Set::Instance().Get<sim::MModeState>().wifiDongle = enable != 0;
    return 1;
}

MAPI_BOOL MSrv_Factory_Cmd::CMD_HandleEvent(MAPI_U32 type, MAPI_U32 group, MAPI_U32 code,
                                            MAPI_U32 p1, MAPI_U32 p2) {
    Record("MSrv_Factory_Cmd::CMD_HandleEvent", ArgList(type, group, code, p1, p2));
    // The service answers the version key with the version event, after the caller.
    if (code == kVersionKeyCode) {
        Set::Instance().PostFactoryEvent(kFactoryVersionEvent);
    }
    return 1;
}
