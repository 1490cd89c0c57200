// The two analogue channel plans the factory search classifies a frequency by: the
// "C" table (VHF/UHF) and the "S" table (cable specials). The row number is the
// channel number; a row of zeros is a number the plan does not use.
#pragma once

#include <cstddef>
#include <cstdint>

namespace AtvChannelPlan {

struct Row {
    uint32_t carrierHz;
    uint32_t lowerHz;
    uint32_t upperHz;
};

constexpr size_t kCRows = 71;
constexpr size_t kSRows = 56;

enum Table : uint8_t { C = 0, S = 1 };

const Row* CTable();
const Row* STable();
// The rows of table C or S; null and a count of 0 for any other table.
const Row* Rows(uint8_t table, size_t& count);

// The first row (from row 0 up) whose bounds hold the frequency, both inclusive, so that
// on a shared bound the lower row wins; -1 when none does.
int FindRow(uint8_t table, uint32_t frequencyHz);

// Whether the channel number is a used row of the table.
bool IsUsed(uint8_t table, uint16_t channel);

// The tuner's usable range, in kHz: C row 2's lower and C row 69's upper bound.
uint32_t LowestKHz();
uint32_t HighestKHz();

}  // namespace AtvChannelPlan
