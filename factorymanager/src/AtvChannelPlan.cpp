#include "AtvChannelPlan.h"

#include <array>

namespace AtvChannelPlan {

namespace {

// One band of equally spaced channels: rows first..last, carriers from firstCarrier
// on by step, bounds at carrier -/+ halfWidth.
struct Band {
    size_t first;
    size_t last;
    uint32_t firstCarrierHz;
    uint32_t stepHz;
    uint32_t halfWidthHz;
};

// A bound that the band rule does not give (a band edge met by another band).
struct Exception {
    size_t row;
    bool upper;
    uint32_t boundHz;
};

template <size_t N>
std::array<Row, N> Build(std::initializer_list<Band> bands,
                         std::initializer_list<Exception> fixes) {
    std::array<Row, N> rows{};
    for (const Band& b : bands) {
        for (size_t r = b.first; r <= b.last; ++r) {
            const uint32_t carrier =
                b.firstCarrierHz + b.stepHz * static_cast<uint32_t>(r - b.first);
            rows[r] = {carrier, carrier - b.halfWidthHz, carrier + b.halfWidthHz};
        }
    }
    for (const Exception& e : fixes) {
        (e.upper ? rows[e.row].upperHz : rows[e.row].lowerHz) = e.boundHz;
    }
    return rows;
}

const std::array<Row, kCRows> kC = Build<kCRows>(
    {
        {2, 4, 48250000, 7000000, 3500000},
        {5, 12, 175250000, 7000000, 3500000},
        {21, 69, 471250000, 8000000, 4000000},
    },
    {
        {2, false, 45750000},
        {69, true, 859000000},
    });

const std::array<Row, kSRows> kS = Build<kSRows>(
    {
        {1, 10, 105250000, 7000000, 3500000},
        {11, 20, 231250000, 7000000, 3500000},
        {21, 41, 303250000, 8000000, 4000000},
        {51, 55, 69250000, 7000000, 3500000},
    },
    {
        {1, false, 101250000},
        {20, true, 298750000},
        {21, false, 298750000},
        {55, true, 101250000},
    });

}  // namespace

const Row* CTable() { return kC.data(); }
const Row* STable() { return kS.data(); }

const Row* Rows(uint8_t table, size_t& count) {
    switch (table) {
        case C:
            count = kC.size();
            return kC.data();
        case S:
            count = kS.size();
            return kS.data();
        default:
            count = 0;
            return nullptr;
    }
}

int FindRow(uint8_t table, uint32_t frequencyHz) {
    size_t count = 0;
    const Row* rows = Rows(table, count);
    for (size_t r = 0; r < count; ++r) {
        if (rows[r].lowerHz <= frequencyHz && frequencyHz <= rows[r].upperHz) {
            return static_cast<int>(r);
        }
    }
    return -1;
}

bool IsUsed(uint8_t table, uint16_t channel) {
    size_t count = 0;
    const Row* rows = Rows(table, count);
    return channel < count && rows[channel].carrierHz != 0;
}

uint32_t LowestKHz() { return kC[2].lowerHz / 1000; }
uint32_t HighestKHz() { return kC[69].upperHz / 1000; }

}  // namespace AtvChannelPlan
