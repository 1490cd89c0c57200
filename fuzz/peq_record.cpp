// The PEQ record codec over any stored area: every band decodes to values in range,
// and a decoded band encodes back to the bytes that decode to it again.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "PeqStore.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) {
        return 0;
    }
    const bool audyssey = data[0] & 1;
    std::vector<MAPI_U8> area(peq::AreaSize(audyssey), 0);
    for (size_t i = 1; i < size && i - 1 < area.size(); ++i) {
        area[i - 1] = data[i];
    }
    for (unsigned band = 0; band < peq::BandCount(audyssey); ++band) {
        const peq::Band b = peq::Decode(area.data(), band);
        if (b.f0Index > peq::kMaxF0Index || b.f0Div100 > peq::kMaxF0Div100 ||
            b.qIndex > peq::kMaxQIndex || b.gainIndex > peq::kMaxGainIndex ||
            b.filterMode > peq::kMaxFilterMode) {
            __builtin_trap();
        }
        std::vector<MAPI_U8> copy(area);
        unsigned offsets[2];
        for (auto field : {peq::kF0, peq::kF0Div100, peq::kQHigh, peq::kGain, peq::kFilter}) {
            peq::Encode(copy.data(), band, field, b, offsets);
        }
        const peq::Band again = peq::Decode(copy.data(), band);
        if (again.f0Index != b.f0Index || again.f0Div100 != b.f0Div100 ||
            again.qIndex != b.qIndex || again.gainIndex != b.gainIndex ||
            again.filterMode != b.filterMode) {
            __builtin_trap();
        }
        peq::QWord(area.data(), band);
        peq::BandLabel(audyssey, band);
        peq::FilterModeName(area[band * peq::kRecordSize + peq::kFilter]);
        peq::Applied(audyssey, band, data[0] >> 1);
    }
    return 0;
}
