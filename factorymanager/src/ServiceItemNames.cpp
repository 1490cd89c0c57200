// The service item table, generated from its group rules into fixed storage when
// the library loads. The set's own table has a few irregular slots (cut names, a
// repeated name, underscores, a name in the wrong group); technicians' sheets name
// those slots as the set shows them, so they are reproduced here on purpose.
#include "ServiceItemNames.h"

#include <cstdio>
#include <cstring>
#include <initializer_list>

namespace ServiceItems {

namespace {

// A picture source and the sets of picture-source suffixes it takes part in.
enum : unsigned char { kSetA = 1, kSetB = 2, kSetC = 4, k3D = 8, kPcMode = 16 };
struct PictureSource {
    const char* name;
    unsigned char sets;
};
// HDMI sources have a PC picture mode; the 4K input has no 3D; set C splits DTV into
// SD and HD, set A has no DTV HD and no 3D half at all.
constexpr PictureSource kSources[] = {
    {"VIDEO", kSetA | kSetB | kSetC | k3D},
    {"YPBPR HD", kSetA | kSetB | kSetC | k3D},
    {"YPBPR SD", kSetA | kSetB | kSetC | k3D},
    {"HDMI PC", kSetA | kSetB | kSetC | k3D | kPcMode},
    {"HDMI 4K", kSetB | kPcMode},
    {"HDMI HD", kSetA | kSetB | kSetC | k3D | kPcMode},
    {"HDMI SD", kSetA | kSetB | kSetC | k3D | kPcMode},
    {"ATV", kSetA | kSetB | kSetC | k3D},
    {"DTV", kSetA | kSetB | k3D},
    {"DTV SD", kSetC | k3D},
    {"DTV HD", kSetB | kSetC | k3D},
};
constexpr const char* kPictureModes[] = {"DYNAMIC", "STANDARD", "MOVIE", "PC"};

struct LockInput {
    const char* name;
    const char* const* timings;
    size_t count;
};
constexpr const char* kCvbsTimings[] = {"NTSC 480i", "PAL/SECAM 576i"};
constexpr const char* kHdmiTimings[] = {"720x480i 60",
                                        "1440x480i 60",
                                        "720x480p 60",
                                        "1440x480p 60",
                                        "1920x1080i 60",
                                        "1920x1080p 60",
                                        "1280x720p 60",
                                        "640x480p 60",
                                        "800x600p 60",
                                        "1024x768p 60",
                                        "1280x768p 60",
                                        "1360x768p 60",
                                        "1280x1024p 60",
                                        "720x576i 50",
                                        "720x576p 50",
                                        "1280x720p 50",
                                        "1920x1080i 50",
                                        "1920x1080p 50",
                                        "1920x1080p 30",
                                        "1920x1080p 25",
                                        "1920x1080p 24",
                                        "1440x576p 50",
                                        "640x480p 72",
                                        "640x480p 75",
                                        "800x600p 56",
                                        "800x600p 72",
                                        "800x600p 75",
                                        "1024x768p 70",
                                        "1024x768p 75",
                                        "1280x1024p 75",
                                        "1280x768p 75",
                                        "1920x1080p FramePacking 24",
                                        "1920x1080p FramePacking 30",
                                        "1280x720p FramePacking 60",
                                        "1280x720p FramePacking 50"};
constexpr const char* kVgaTimings[] = {
    "640x480p 60",   "640x480p 72",   "640x480p 75",  "800x600p 56",  "800x600p 60",
    "800x600p 72",   "800x600p 75",   "1024x768p 60", "1024x768p 70", "1024x768p 75",
    "1280x1024p 60", "1280x1024p 75", "1280x768p 60", "1280x768p 75", "1360x768p 60",
    "1280x800p 60",  "1280x800p 75",  "1920x1080p 60"};
constexpr const char* kCompTimings[] = {
    "720x576i 50",  "720x576p 50",   "720x480i 60",   "720x480p 60",   "1280x720p 50",
    "1280x720p 60", "1920x1080i 50", "1920x1080p 50", "1920x1080i 60", "1920x1080p 60"};
#define LOCK_INPUT(name, list) \
    { name, list, sizeof(list) / sizeof(list[0]) }
constexpr LockInput kLockInputs[] = {
    LOCK_INPUT("CVBS", kCvbsTimings),
    LOCK_INPUT("HDMI", kHdmiTimings),
    LOCK_INPUT("VGA", kVgaTimings),
    LOCK_INPUT("COMP", kCompTimings),
};
#undef LOCK_INPUT

// An audio parameter and the variants it has, '|'-separated; an empty variant is the
// base name itself (so "|M|C|V" gives X, XM, XC, XV and "M|C|V" only XM, XC, XV).
struct AudioItem {
    const char* base;
    const char* variants;
};
constexpr const char* kMCV = "|M|C|V";
constexpr AudioItem kAudioGroup1[] = {
    {"VOLDA", ""},
    {"TRUE BGAIN", ""},
    {"PRES", ""},
    {"V100", ""},
    {"V75", ""},
    {"V50", ""},
    {"V25", ""},
    {"V01", ""},
    {"VOFFSET", ""},
    {"VMUSIC", ""},
    {"VMOVIE", ""},
    {"VVOICE", ""},
    {"HPSHT", ""},
    {"EQ1C", ""},
    {"EQ2C", ""},
    {"EQ3C", ""},
    {"EQ4C", ""},
    {"EQ5C", ""},
    {"MHPF", ""},
    {"DRCCL", ""},
    {"DTS ENABLE", ""},
    {"DTS INGAIN", ""},
    {"DTS OUTGAIN", ""},
    {"DTS BYPASSGAIN", ""},
    {"DTS HEADGAIN", ""},
    {"DTS PATH", ""},
    {"TVOL ENABLE", "M|C|V"},
    {"TVOL INGAIN", kMCV},
    {"TVOL OUTGAIN", kMCV},
    {"TVOL BYPASSGAIN", kMCV},
    {"TVOL REFLEVEL", kMCV},
    {"TVOL MAXGAIN", kMCV},
    {"TVOL NORMTHRE", kMCV},
    {"TVOL MODE", kMCV},
    {"TVOL N ENABLE", kMCV},
    {"CS INGAIN", "|M"},
    {"CS MODE", "|M"},
    {"CS LR OUTGAIN", "|M"},
    {"CS LSRS OUTGAIN", "|M"},
    {"CS C OUTGAIN", "|M"},
    {"DL ENABLE", kMCV},
    {"DL INGAIN", kMCV},
    {"DL OUTGAIN", kMCV},
    {"DL BYPASSGAIN", kMCV},
    {"DL CLGAIN", kMCV},
    {"DL PROC GAIN", kMCV},
    {"TSHD ENABLE", "M|C|V"},
    {"TS ENABLE", "M|C|V"},
    {"TS DEF ENABLE", "M|C|V"},
    {"TS DLCL ENABLE", "M|C|V"},
    {"TS INGAIN", kMCV},
    {"TS OUTGAIN", kMCV},
    {"TS LEVEL", kMCV},
    {"TS DEF", kMCV},
    {"TS DCLARIFY", kMCV},
    {"CC3D BOOST ENABLE", "|M"},
    {"CC3D MIX ENABLE", "|M"},
    {"CC3D FADE ENABLE", "|M"},
    {"CC3D INGAIN", "|M"},
    {"CC3D OUTGAIN", "|M"},
    {"CC3D BYPASSGAIN", "|M"},
    {"CC3D FADE", "|M"},
    // The M variant of this one sits in group 2.
    {"TBHD ENABLE", "|C"},
    {"TBHD INGAIN", "|M|C"},
    {"TBHD BLEVEL", "|M|C"},
    {"TBHD DYNAMICS", "|M|C"},
    {"TBHD SPSIZE", "|M|C"},
    {"TBHD MODE", "|M|C"},
    {"TBHD HPO", "|M|C"},
    {"DGEQ ENABLE", ""},
    {"DGEQ INGAIN", kMCV},
};
// After the five graphic-EQ bands of every variant.
constexpr const char* kAudioGroup1Tail[] = {
    "DGEQ RANGE",  "DHL ENABLE",   "DHL INGAIN",   "DHL OUTGAIN",    "DHL BYPASSGAIN",
    "DHL LIMIT",   "DHL DELAYLEN", "DHL BOOST",    "DHPF ENABLE",    "DHPF F",
    "DAEQ ENABLE", "DAEQ INGAIN",  "DAEQ OUTGAIN", "DAEQ BYPASSGAIN"};
constexpr const char* kAudioGroup2Head[] = {"TBHD ENABLEM", "CC3D ENABLE"};
constexpr const char* kAudioGroup2[] = {"OUTPUT",
                                        "BASN",
                                        "BASC",
                                        "BASX",
                                        "BASW",
                                        "BASE",
                                        "BASBL",
                                        "BASBH",
                                        "WB50",
                                        "WB75",
                                        "WB100",
                                        "TREN",
                                        "TREC",
                                        "TREX",
                                        "TREW",
                                        "TREE",
                                        "TREBL",
                                        "TREBH",
                                        "WT50",
                                        "WT75",
                                        "WT100",
                                        "VDC",
                                        "VBBL",
                                        "VBBH",
                                        "AVCAT",
                                        "AVCRT",
                                        "AVCCL",
                                        "SKYPE LIMITER",
                                        "GWET LOW",
                                        "GDRY LOW",
                                        "FILSET LOW",
                                        "GWET HIGH",
                                        "GDRY HIGH",
                                        "FILSET HIGH",
                                        "DYNA VOL GC DAY",
                                        "DYNA VOL GC NIGHT",
                                        "DYNA VOL SILENCE",
                                        "DYNA VOL SETTING",
                                        "DYNA VOL EQOFFSET",
                                        "DYNA AGAIN",
                                        "DYNA BGAIN",
                                        "DYNA VXT2 MODE",
                                        "DYNA VXT2 IN GAIN",
                                        "DYNA VXT2 OUT GAIN",
                                        "DYNA VXT2 MVC FLAG",
                                        "DYNA VXT2 PEAK_L",
                                        "DYNA VXT2 PEAK_M",
                                        "DYNA VXT2 PEAK_H",
                                        "AUDIO EQ3CS",
                                        "AUDIO EQ4CS",
                                        "AUDIO EQ5CS",
                                        "AUDIO BASCS",
                                        "AUDIO TRECS",
                                        "AUDIO KGAIN",
                                        "AUDIO S-HPF_F",
                                        "AUDIO AGAIN",
                                        "AUDIO DELAY",
                                        "AUDIO BGAIN",
                                        "EBAS",
                                        "BBASH",
                                        "ETRE",
                                        "DYNA VOL GC"};

constexpr const char* kWhiteBalance[] = {"RCUT", "GCUT", "BCUT", "RDRV", "GDRV", "BDRV"};
constexpr const char* kRgb[] = {"R", "G", "B"};
constexpr const char* kTemperatures[] = {"COOL", "NATURAL", "WARM"};
constexpr const char* kContrastMax[] = {"CNTX VIDEO",
                                        "CNTX YPBPR HD",
                                        "CNTX YPBPR SD",
                                        "CNTX HDMI PC",
                                        "CNTX HDMI PC PC",
                                        "CNTX HDMI HD",
                                        "CNTX HDMI HD PC",
                                        "CNTX HDMI SD",
                                        "CNTX HDMI SD PC",
                                        "CNTX ATV",
                                        "CNTX DTV",
                                        "CNTX HDMI PC STANDARD",
                                        "CNTX HDMI SD DYNAMIC",
                                        "CNTX HDMI SD STANDARD",
                                        "CNTX HDMI SD MOVIE"};
constexpr const char* kPictureLimits[] = {"CNTC", "CNTN", "BRTX", "BRTN", "COLX",
                                          "COLN", "TNTX", "TNTN", "SHPX", "SHPN"};
constexpr const char* kBacklight[] = {"Reso+", "BLX", "BLX 3D", "BL70", "BL30", "BLN"};
constexpr const char* kAutoLevel[] = {
    "AVEM-L",    "APLH_AL_H", "APLH_AL_L", "APLM_AL_H", "APLM_AL_L", "APLS_AL_H",
    "APLS_AL_L", "APLB_AL_H", "APLB_AL_L", "KDIFU-AL",  "KDIFD-AL",  "AVEM-H",
    "APLH_AH_H", "APLH_AH_L", "APLM_AH_H", "APLM_AH_L", "APLS_AH_H", "APLS_AH_L",
    "APLB_AH_H", "APLB_AH_L", "KDIFU-AH",  "KDIFD-AH"};
constexpr const char* kBacklightModes[] = {"BL_MPLUS_DYNAMIC", "BL_MPLUS_STANDARD",
                                           "BL_MPLUS_MOVIE",   "BL_MPLUS_GAME",
                                           "BL_MPLUS_PC",      "BL_MPLUS_AUTOVIEW"};
constexpr const char* kOsTimings[] = {"OSINTM", "OSINCT", "OSJGHS", "OSJGTM", "OSACTM"};
constexpr const char* kBacklightControl[] = {"BL_MOTION_JUDGE_TH1",
                                             "BL_MOTION_JUDGE_TH2",
                                             "BL_MOTION_JUDGE_TH3",
                                             "BL_MOTION_JUDGE_HYST_X",
                                             "BL_MOTION_JUDGE_STILL",
                                             "BL_MOTION_HIS_TH",
                                             "BL_APL_JUDGE_TH1",
                                             "BL_APL_JUDGE_TH2",
                                             "BL_APL_JUDGE_HYST_X",
                                             "BL_PWM_HOLD_TIME",
                                             "BL_STEP_LD",
                                             "BL_STEP_LM",
                                             "BL_STEP_LB",
                                             "BL_STEP_MD",
                                             "BL_STEP_MM",
                                             "BL_STEP_MB",
                                             "BL_STEP_HD",
                                             "BL_STEP_HM",
                                             "BL_STEP_HB",
                                             "BL_STEP_TIME",
                                             "BL_POLARITY",
                                             "BL_LO_LMT_DYNAMIC",
                                             "BL_LO_LMT_STANDARD",
                                             "BL_LO_LMT_MOVIE1",
                                             "BL_LO_LMT_MOVIE2",
                                             "BL_LO_LMT_GAME",
                                             "BL_BACK_STEP",
                                             "BL_WHITE_DET_TH",
                                             "BL_WHITE_DET_JUDGE_X"};
constexpr const char* kSocHead[] = {"SOC RCUT", "SOC GCUT", "SOC BCUT", "SOC RDRV", "SOC GDRV",
                                    "SOC BDRV", "SOC CNTX", "SOC BRTC", "SOC COLC", "SOC UVTT"};
constexpr const char* kSocTail[] = {"SOC SHPX", "SOC SHPN", "SOC RESO PLUS"};
constexpr const char* kIdentity[] = {"SETID", "EEPVER", "HTLID"};

// Slots whose names the set's table cuts short with a small formatted copy.
constexpr unsigned int kColcVideoDynamic = 86;  // 16-byte copy: 15 characters kept
constexpr unsigned int kWhiteDetJudge = 315;    // 13-byte copy: 12 characters kept
// This slot's entry falls through into the next one's, so both show the next name.
constexpr unsigned int kShpcHdmiHdStandard = 158;

class Table {
public:
    Table() { Build(); }
    const char* Name(unsigned int index) const { return index < kCount ? m_names[index] : ""; }

private:
    template <size_t N>
    void Add(const char* const (&names)[N], const char* prefix = "") {
        for (const char* name : names) {
            Add(prefix, name);
        }
    }
    void Add(const char* prefix, const char* name, const char* suffix = "") {
        if (m_next < kCount) {
            // Cut at 63 characters, as the set's 64-byte name buffer does.
            char* out = m_names[m_next];
            size_t length = 0;
            for (const char* part : {prefix, name, suffix}) {
                for (; *part != '\0' && length + 1 < kNameSize; ++part) {
                    out[length++] = *part;
                }
            }
            out[length] = '\0';
        }
        ++m_next;
    }
    // prefix + first .. last + suffix
    void AddNumbered(const char* prefix, unsigned int first, unsigned int last,
                     const char* suffix = "") {
        for (unsigned int n = first; n <= last; ++n) {
            char number[12];
            std::snprintf(number, sizeof(number), "%u", n);
            Add(prefix, number, suffix);
        }
    }
    void Skip(unsigned int count) { m_next += count; }

    // Every picture source of a set, with its modes; the 3D half repeats the list.
    void AddPictureSet(const char* prefix, unsigned char set, bool with3D) {
        for (const char* half : {"", "3D "}) {
            if (*half != '\0' && !with3D) {
                break;
            }
            for (const PictureSource& source : kSources) {
                if ((source.sets & set) == 0 || (*half != '\0' && (source.sets & k3D) == 0)) {
                    continue;
                }
                const size_t modes = (source.sets & kPcMode) != 0 ? 4 : 3;
                for (size_t m = 0; m < modes; ++m) {
                    char name[kNameSize];
                    std::snprintf(name, sizeof(name), "%s%s %s", half, source.name,
                                  kPictureModes[m]);
                    Add(prefix, name);
                }
            }
        }
    }

    void AddAudio(const AudioItem& item) {
        const char* variant = item.variants;
        for (;;) {
            const char* end = std::strchr(variant, '|');
            const size_t length =
                end != nullptr ? static_cast<size_t>(end - variant) : std::strlen(variant);
            char suffix[8] = {};
            std::memcpy(suffix, variant, length < sizeof(suffix) ? length : sizeof(suffix) - 1);
            Add("AUD ", item.base, suffix);
            if (end == nullptr) {
                break;
            }
            variant = end + 1;
        }
    }

    void Cut(unsigned int index, size_t length) { m_names[index][length] = '\0'; }

    void Build() {
        Add(kWhiteBalance);
        for (const char* kind : {"C", "D"}) {
            for (const char* colour : kRgb) {
                for (const char* temperature : kTemperatures) {
                    char name[kNameSize];
                    std::snprintf(name, sizeof(name), "OS%s%s %s", colour, kind, temperature);
                    Add("", name);
                }
            }
        }
        for (const char* colour : kRgb) {
            for (const char* temperature : kTemperatures) {
                char name[kNameSize];
                std::snprintf(name, sizeof(name), "OS%sD 3D %s", colour, temperature);
                Add("", name);
            }
        }
        AddNumbered("OPT", 1, 8);
        Add("", "VOLUX");
        AddNumbered("DBG SELECT", 0, 1);
        Add(kContrastMax);
        AddPictureSet("BRTC ", kSetA, false);
        AddPictureSet("COLC ", kSetA, false);
        AddPictureSet("UVTT ", kSetA, false);
        AddPictureSet("SHPC ", kSetB, true);
        Add(kPictureLimits);
        Add(kBacklight);
        Add(kAutoLevel);
        AddNumbered("KBH", 0, 31);
        Add("", "ABCO");
        Add("", "ABCG");
        Add(kBacklightModes);
        Add(kOsTimings);
        Add(kBacklightControl);
        Add(kSocHead);
        AddPictureSet("SOC SHPC ", kSetC, true);
        Add(kSocTail);
        for (const LockInput& input : kLockInputs) {
            for (size_t t = 0; t < input.count; ++t) {
                for (const char* level : {" L", " H"}) {
                    char name[kNameSize];
                    std::snprintf(name, sizeof(name), "LOCK %s %s%s", input.name, input.timings[t],
                                  level);
                    Add("", name);
                }
            }
        }
        for (const AudioItem& item : kAudioGroup1) {
            AddAudio(item);
        }
        for (const char* variant : {"", "M", "C", "V"}) {
            for (unsigned int band = 0; band <= 4; ++band) {
                char name[kNameSize];
                std::snprintf(name, sizeof(name), "AUD DGEQ%uC%s", band, variant);
                Add("", name);
            }
        }
        Add(kAudioGroup1Tail, "AUD ");
        Add("", "AUD_CC3D_DEPTH_ENABLEM");
        Add("", "AUD_CC3D_DEPTH_ENABLE");
        Add(kAudioGroup2Head, "AUD ");
        AddNumbered("AUD AUDIO DTS TBD", 20, 25);
        Add(kAudioGroup2, "AUD ");
        Skip(kLastReadOnly - kFirstReadOnly + 1);
        AddNumbered("AUD AUDIO DTS TBD", 1, 17);
        Skip(913 - 831 + 1);
        Add("", "EEPROM ID");
        Skip(1);
        Add("", "TVOP");
        AddNumbered("NAME", 1, 8);
        Add(kIdentity);
        for (unsigned int n = 1; n <= 121; ++n) {
            char prefix[kNameSize];
            std::snprintf(prefix, sizeof(prefix), "AUD DAEQ PARA%u_", n);
            AddNumbered(prefix, 1, 4);
        }

        Cut(kColcVideoDynamic, 15);
        Cut(kWhiteDetJudge, 12);
        std::memcpy(m_names[kShpcHdmiHdStandard], m_names[kShpcHdmiHdStandard + 1], kNameSize);
    }

    char m_names[kCount][kNameSize] = {};
    unsigned int m_next = 0;
};

// Built while the library loads; nothing reads it before then.
const Table s_table;

}  // namespace

const char* Name(unsigned int index) { return s_table.Name(index); }

}  // namespace ServiceItems
