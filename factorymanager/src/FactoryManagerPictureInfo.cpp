// The picture information pages: the colour temperature (white balance) and the PQ
// settings, each for the web page and for the serial console.
#include <iostream>

#include "DemodLabels.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_Control_common.h"
#include "MSrv_System_Database.h"
#include "PictureManager.h"
#include "SerialLogTable.h"
#include "TVManager.h"

namespace {
// The eighteen white-balance rows, in the page's order.
using ColorGetter = int (FactoryManager::*)();
struct ColorRow {
    const char* key;
    ColorGetter getter;
};
const ColorRow kColorRows[] = {
    {"Color-Warm-RGain", &FactoryManager::GetColorWarmRGain},
    {"Color-Warm-GGain", &FactoryManager::GetColorWarmGGain},
    {"Color-Warm-BGain", &FactoryManager::GetColorWarmBGain},
    {"Color-Warm-ROffset", &FactoryManager::GetColorWarmROffset},
    {"Color-Warm-GOffset", &FactoryManager::GetColorWarmGOffset},
    {"Color-Warm-BOffset", &FactoryManager::GetColorWarmBOffset},
    {"Color-Medium-RGain", &FactoryManager::GetColorMediumRGain},
    {"Color-Medium-GGain", &FactoryManager::GetColorMediumGGain},
    {"Color-Medium-BGain", &FactoryManager::GetColorMediumBGain},
    {"Color-Medium-ROffset", &FactoryManager::GetColorMediumROffset},
    {"Color-Medium-GOffset", &FactoryManager::GetColorMediumGOffset},
    {"Color-Medium-BOffset", &FactoryManager::GetColorMediumBOffset},
    {"Color-Cool-RGain", &FactoryManager::GetColorCoolRGain},
    {"Color-Cool-GGain", &FactoryManager::GetColorCoolGGain},
    {"Color-Cool-BGain", &FactoryManager::GetColorCoolBGain},
    {"Color-Cool-ROffset", &FactoryManager::GetColorCoolROffset},
    {"Color-Cool-GOffset", &FactoryManager::GetColorCoolGOffset},
    {"Color-Cool-BOffset", &FactoryManager::GetColorCoolBOffset},
};
constexpr size_t kColorFields = 6;  // per temperature
const char* const kColorFieldLabels[kColorFields] = {"R Gain",   "G Gain",   "B Gain",
                                                     "R Offset", "G Offset", "B Offset"};

// What the PQ page shows, read once for the web page and the console alike.
struct PqValues {
    int contrast, backlight, dynaLight, brightness, colour, tint, sharpness, cinema;
    long blackWhite, dynamicNR, mpegNR, aspect;
    bool aspectRead;
};

PqValues ReadPq(PictureManager& pm) {
    PqValues v{};
    v.contrast = pm.getContrast();
    v.backlight = pm.getBacklight();
    v.dynaLight = pm.getDynamicLight();
    v.brightness = pm.getBrightness();
    v.colour = pm.getColour();
    v.tint = pm.getIint();
    v.sharpness = pm.getSharpness();
    v.blackWhite = pm.getBlackWhiteLevel();
    v.cinema = pm.getCinemaMode();
    MAPI_U8 dnr = 4;  // automatic, should the read fail
    pm.getDynamicNR(dnr);
    v.dynamicNR = dnr;
    v.mpegNR = pm.getMpegNR();
    MAPI_U8 aspect = 0;
    v.aspectRead = pm.getAspectRatio(aspect) != 0;
    v.aspect = aspect;
    return v;
}
}  // namespace

// ---- Colour temperature --------------------------------------------------------------

MAPI_BOOL FactoryManager::GetColorTemp(EN_ZYT_COLOR_TEMP ct, ST_ZYT_PQL_COLOR_TEMP_DATA* out) {
    MSrv_Control* control = MSrv_Control::GetInstance();
    MSrv_System_Database* db = control->GetMSrvSystemDatabase();
    const MAPI_INPUT_SOURCE_TYPE source = control->GetCurrentInputSource();
    if (db == nullptr || out == nullptr) {
        return 0;
    }
    ST_VIDEO video{};
    db->GetVideoSetting(&video, source);
    static_assert(
        sizeof(ST_ZYT_PQL_COLOR_TEMP_DATA) == sizeof(mapi_pql_datatype::MAPI_PQL_COLOR_TEMP_DATA),
        "the library's record is the platform's");
    return db->GetColorTempBySourceAndPictureMode(
        reinterpret_cast<mapi_pql_datatype::MAPI_PQL_COLOR_TEMP_DATA*>(out),
        static_cast<MSrv_Picture::EN_MS_COLOR_TEMP>(ct), source, video.ePicture);
}

int FactoryManager::ColorTempByte(EN_ZYT_COLOR_TEMP ct, unsigned int offset) {
    ST_ZYT_PQL_COLOR_TEMP_DATA record{};
    GetColorTemp(ct, &record);
    return record.u8Data[offset];
}

// Bytes 3-5 are the red, green and blue gains, 6-8 the offsets.
int FactoryManager::GetColorWarmRGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_WARM, 3); }
int FactoryManager::GetColorWarmGGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_WARM, 4); }
int FactoryManager::GetColorWarmBGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_WARM, 5); }
int FactoryManager::GetColorWarmROffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_WARM, 6); }
int FactoryManager::GetColorWarmGOffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_WARM, 7); }
int FactoryManager::GetColorWarmBOffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_WARM, 8); }
int FactoryManager::GetColorMediumRGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_MEDIUM, 3); }
int FactoryManager::GetColorMediumGGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_MEDIUM, 4); }
int FactoryManager::GetColorMediumBGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_MEDIUM, 5); }
int FactoryManager::GetColorMediumROffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_MEDIUM, 6); }
int FactoryManager::GetColorMediumGOffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_MEDIUM, 7); }
int FactoryManager::GetColorMediumBOffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_MEDIUM, 8); }
int FactoryManager::GetColorCoolRGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_COOL, 3); }
int FactoryManager::GetColorCoolGGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_COOL, 4); }
int FactoryManager::GetColorCoolBGain() { return ColorTempByte(E_ZYT_COLOR_TEMP_COOL, 5); }
int FactoryManager::GetColorCoolROffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_COOL, 6); }
int FactoryManager::GetColorCoolGOffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_COOL, 7); }
int FactoryManager::GetColorCoolBOffset() { return ColorTempByte(E_ZYT_COLOR_TEMP_COOL, 8); }

void FactoryManager::ShowColorTemperature() {
    NotifyUI(0, "HideAllUIExcept", "ColorTemperature");
    for (const ColorRow& row : kColorRows) {
        NotifyUI(0, row.key, (this->*row.getter)());
    }
    NotifyUI(0, "ColorTemperature", 1L);
    StartSerialLog();
}

// ---- PQ ------------------------------------------------------------------------------

void FactoryManager::ShowPQ() {
    PictureManager* pm = TVManager::GetInstance()->getPictureManager();
    if (pm == nullptr) {
        return;
    }
    NotifyUI(0, "HideAllUIExcept", "PQ");
    const char* pqVersion = FactoryGetPQVersion();
    if (pqVersion != nullptr) {
        NotifyUI(0, "PQ-Version", pqVersion);
    }
    const PqValues v = ReadPq(*pm);
    NotifyUI(0, "PQ-Contrast", v.contrast);
    NotifyUI(0, "PQ-Backlight", v.backlight);
    NotifyUI(0, "PQ-DynaLight", v.dynaLight);
    NotifyUI(0, "PQ-Brightness", v.brightness);
    NotifyUI(0, "PQ-Color", v.colour);
    NotifyUI(0, "PQ-Tint", v.tint);
    NotifyUI(0, "PQ-Sharpness", v.sharpness);
    if (const char* text = LabelOf(PictureLabels::DynamicContrast, v.blackWhite)) {
        NotifyUI(0, "PQ-Dynamic-Contrast", text);
    }
    NotifyUI(0, "PQ-Cinema-Mode", v.cinema);
    NotifyUI(0, "PQ-Cable-Clear", LabelOf(PictureLabels::CableClear, v.dynamicNR));
    NotifyUI(0, "PQ-MPEG-NR", LabelOf(PictureLabels::MpegNR, v.mpegNR));
    if (v.aspectRead) {
        if (const char* text = LabelOf(PictureLabels::PictureSize, v.aspect)) {
            NotifyUI(0, "PQ-Picture-Size", text);
        }
        NotifyUI(0, "PQ-Auto-Aspect-Ratio", PictureLabels::AutoAspectRatio(v.aspect));
    }
    NotifyUI(0, "PQ", 1L);
    StartSerialLog();
}

// ---- Serial console ------------------------------------------------------------------

void FactoryManager::SerialLogVersionsColorTemperature() {
    int values[sizeof(kColorRows) / sizeof(kColorRows[0])] = {};
    int* value = values;
    for (const ColorRow& row : kColorRows) {
        *value++ = (this->*row.getter)();
    }
    SerialLogTable t(std::cout);
    t.Cell(" ").Cell("Warm").Cell("Medium").Cell("Cool").EndRow();
    for (size_t field = 0; field < kColorFields; ++field) {
        t.Cell(kColorFieldLabels[field]);
        for (size_t temp = 0; temp < 3; ++temp) {
            t.Cell(values[temp * kColorFields + field]);
        }
        t.EndRow();
    }
}

void FactoryManager::SerialLogVersionsPQ() {
    PictureManager* pm = TVManager::GetInstance()->getPictureManager();
    if (pm == nullptr) {
        return;
    }
    const char* pqVersion = FactoryGetPQVersion();
    const PqValues v = ReadPq(*pm);
    const char* size = v.aspectRead ? LabelOf(PictureLabels::PictureSize, v.aspect) : nullptr;
    const char* autoAspect = v.aspectRead ? PictureLabels::AutoAspectRatio(v.aspect) : nullptr;
    SerialLogTable t(std::cout);
    t.Pair("PQ Version", pqVersion)
        .Cell("Contrast")
        .Cell(v.contrast)
        .Pair("MPEG NR", LabelOf(PictureLabels::MpegNRConsole, v.mpegNR))
        .EndRow();
    t.Cell("Backlight").Cell(v.backlight).Pair("Picture Size", size).Cell("DynaLight");
    t.Cell(v.dynaLight).EndRow();
    t.Pair("Auto Aspect Ratio", autoAspect).Cell("Brightness").Cell(v.brightness).Cell("Color");
    t.Cell(v.colour).EndRow();
    t.Cell("Tint").Cell(v.tint).Cell("Sharpness").Cell(v.sharpness);
    t.Pair("Dynamic Contrast", LabelOf(PictureLabels::DynamicContrastConsole, v.blackWhite));
    t.EndRow();
    t.Cell("Cinema Mode").Cell(v.cinema);
    t.Pair("Cable Clear / DNR", LabelOf(PictureLabels::CableClearConsole, v.dynamicNR)).EndRow();
}
