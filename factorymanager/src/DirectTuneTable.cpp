#include "DirectTuneTable.h"

#include "FactoryEventIds.h"

namespace {
constexpr unsigned long kShort = FactoryTimer::DirectTune;     // 39
constexpr unsigned long kLong = FactoryTimer::DirectTuneLong;  // 58
constexpr const char* kZytDelay = "~~ ZYT delay 2s ";

// The satellite page is "VBSTuning" while its row is "DVBS-Tuning": the web UI
// matches both as they are. Sub-code 9 logs 4 s and waits 6 s; the fixture's
// timing was measured against that pair.
const DirectTuneRow kRows[] = {
    {9, "VBSTuning", "DVBS-Tuning", "DVB-S Tuning", false, kLong, 6000, "~~ Oxbrin delay 4s ",
     true},
    {212, "VBSTuning", "DVBS-Tuning", "DVB-S Tuning", false, kShort, 2000, kZytDelay, false},
    {55, "Channel37", "Channel-37", "Tuning CH37", false, 0, 0, nullptr, false},
    {69, "Channel45", "Channel-45", "Tuning CH45", false, kShort, 2000, kZytDelay, false},
    {99, "Channel63", "Channel-63", "Tuning CH63", false, kShort, 2000, kZytDelay, false},
    {103, "Channel67", "Channel-67", "Tuning CH67", false, kShort, 2000, kZytDelay, false},
    {110, "DVBCTuning", "DVB-C-Tuning", "DVB-C Tuning", false, kShort, 2000, kZytDelay, false},
    {118, "DVBCDirectTuning", "DVB-C-Direct-Tuning", "DVB-C Tuning", true, 0, 0, nullptr, false},
};
}  // namespace

const DirectTuneRow* FindDirectTune(unsigned long subCode) {
    for (const DirectTuneRow& row : kRows) {
        if (row.subCode == subCode) {
            return &row;
        }
    }
    return nullptr;
}
