#include "PeqStore.h"

namespace peq {

namespace {

const char* const kLabels16[] = {
    "0 (TV stand)", "1 (TV stand)", "2 (TV stand)", "3 (TV stand)", "4 (TV stand)", "5 (TV stand)",
    "6 (TV stand)", "7 (TV stand)", "0 (TV wall)",  "1 (TV wall)",  "2 (TV wall)",  "3 (TV wall)",
    "4 (TV wall)",  "5 (TV wall)",  "6 (TV wall)",  "7 (TV wall)",
};

const char* const kLabels28[] = {
    "0 (TV table)", "1 (TV table)", "2 (TV table)",  "3 (TV table)",  "4 (TV table)",
    "5 (TV table)", "6 (TV table)", nullptr,         "7 (LOW table)", "7 (HIGH table)",
    "0 (SKYPE)",    "1 (SKYPE)",    "2 (SKYPE)",     "3 (SKYPE)",     "4 (SKYPE)",
    "5 (SKYPE)",    "6 (SKYPE)",    "7 (SKYPE)",     "0 (TV wall)",   "1 (TV wall)",
    "2 (TV wall)",  "3 (TV wall)",  "4 (TV wall)",   "5 (TV wall)",   "6 (TV wall)",
    nullptr,        "7 (LOW wall)", "7 (HIGH wall)",
};

const char* const kFilterModes[] = {"PEQ", "LPF", "HPF", "ByPASS"};

constexpr unsigned kBands16 = sizeof(kLabels16) / sizeof(kLabels16[0]);
constexpr unsigned kBands28 = sizeof(kLabels28) / sizeof(kLabels28[0]);

// Which value of the sound setting's LOW/HIGH byte lets a band 7 variant through.
struct VariantBand {
    unsigned band;
    MAPI_U8 lowHigh;
};
constexpr VariantBand kVariants[] = {{8, 1}, {9, 2}, {26, 1}, {27, 2}};

MAPI_U32 InRange(MAPI_U32 value, MAPI_U32 max) { return value <= max ? value : 0; }

}  // namespace

unsigned BandCount(bool audyssey) { return audyssey ? kBands28 : kBands16; }

MAPI_U16 AreaSize(bool audyssey) {
    return static_cast<MAPI_U16>(BandCount(audyssey) * kRecordSize);
}

MAPI_U16 Address(unsigned band, unsigned offset) {
    return static_cast<MAPI_U16>(kAreaAddress + kRecordSize * band + offset);
}

unsigned QWord(const MAPI_U8* area, unsigned band) {
    const MAPI_U8* record = area + kRecordSize * band;
    return record[kQHigh] * 256u + record[kQLow];
}

Band Decode(const MAPI_U8* area, unsigned band) {
    const MAPI_U8* record = area + kRecordSize * band;
    Band out;
    out.f0Index = InRange(record[kF0], kMaxF0Index);
    out.f0Div100 = static_cast<MAPI_U8>(InRange(record[kF0Div100], kMaxF0Div100));
    const unsigned word = QWord(area, band);
    out.qIndex = word < kQWordBias ? 0 : InRange(word - kQWordBias, kMaxQIndex);
    out.gainIndex = InRange(record[kGain], kMaxGainIndex);
    out.filterMode = static_cast<MAPI_U8>(InRange(record[kFilter], kMaxFilterMode));
    return out;
}

size_t Encode(MAPI_U8* area, unsigned band, Offset field, const Band& value,
              unsigned (&offsets)[2]) {
    MAPI_U8* record = area + kRecordSize * band;
    switch (field) {
        case kF0:
            record[kF0] = static_cast<MAPI_U8>(value.f0Index);
            break;
        case kF0Div100:
            record[kF0Div100] = value.f0Div100;
            break;
        case kQHigh:
        case kQLow: {
            const unsigned word = value.qIndex + kQWordBias;
            record[kQLow] = static_cast<MAPI_U8>(word & 0xFF);
            record[kQHigh] = static_cast<MAPI_U8>((word >> 8) & 0xFF);
            offsets[0] = kQLow;
            offsets[1] = kQHigh;
            return 2;
        }
        case kGain:
            record[kGain] = static_cast<MAPI_U8>(value.gainIndex);
            break;
        case kFilter:
            record[kFilter] = value.filterMode;
            break;
    }
    offsets[0] = field;
    return 1;
}

const char* BandLabel(bool audyssey, unsigned band) {
    if (band >= BandCount(audyssey)) {
        return nullptr;
    }
    return audyssey ? kLabels28[band] : kLabels16[band];
}

const char* FilterModeName(MAPI_U8 mode) {
    return mode <= kMaxFilterMode ? kFilterModes[mode] : "";
}

bool Applied(bool audyssey, unsigned band, MAPI_U8 lowHigh) {
    if (!audyssey) {
        return true;
    }
    for (const VariantBand& v : kVariants) {
        if (v.band == band) {
            return v.lowHigh == lowHigh;
        }
    }
    // TV table and TV wall; the SKYPE bands 10 to 17 are stored only.
    return (band <= 6) || (band >= 18 && band <= 24);
}

}  // namespace peq
