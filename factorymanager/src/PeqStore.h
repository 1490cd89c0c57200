// The PEQ area of the factory store: one 6-byte record per equaliser band from item
// 3468 on, 16 bands, or 28 laid out by speaker placement on sets with the
// advanced-sound option. The only place that knows the record's bytes.
#pragma once

#include <cstddef>

#include "MTypes.h"

namespace peq {

constexpr MAPI_U16 kAreaAddress = 3468;
constexpr unsigned kRecordSize = 6;
// Byte offsets within a band's record.
enum Offset : unsigned { kF0 = 0, kF0Div100 = 1, kQHigh = 2, kQLow = 3, kGain = 4, kFilter = 5 };
// The Q word is stored with this added, big-endian.
constexpr unsigned kQWordBias = 50;
constexpr MAPI_U32 kMaxF0Index = 200;
constexpr MAPI_U8 kMaxF0Div100 = 99;
constexpr MAPI_U32 kMaxQIndex = 1551;
constexpr MAPI_U32 kMaxGainIndex = 240;
constexpr MAPI_U32 kGainZeroDb = 120;
constexpr MAPI_U8 kMaxFilterMode = 3;

enum FilterMode : MAPI_U8 { kPeq = 0, kLpf = 1, kHpf = 2, kBypass = 3 };

// One band as the editor holds it; a stored byte out of range loads as 0.
struct Band {
    MAPI_U32 f0Index = 0;
    MAPI_U8 f0Div100 = 0;
    MAPI_U32 qIndex = 0;  // the stored word minus the bias
    MAPI_U32 gainIndex = 0;
    MAPI_U8 filterMode = 0;
};

unsigned BandCount(bool audyssey);
// Bytes of the whole area.
MAPI_U16 AreaSize(bool audyssey);
// Item number of one byte of a band's record.
MAPI_U16 Address(unsigned band, unsigned offset);

Band Decode(const MAPI_U8* area, unsigned band);
// The stored Q word of a band (bias included).
unsigned QWord(const MAPI_U8* area, unsigned band);

// Puts one field of `value` into the band's record and lists the offsets to write,
// in the order they go to the store (Q: low byte first). Returns how many.
size_t Encode(MAPI_U8* area, unsigned band, Offset field, const Band& value,
              unsigned (&offsets)[2]);

// "PEQ-Band" label; null for a band that is never shown (7 and 25 of the 28-band layout).
const char* BandLabel(bool audyssey, unsigned band);
const char* FilterModeName(MAPI_U8 mode);

// Whether a change of this band reaches the sound processor: the SKYPE bands never
// do, the two variants of band 7 only when the sound setting chose them.
bool Applied(bool audyssey, unsigned band, MAPI_U8 lowHigh);

}  // namespace peq
