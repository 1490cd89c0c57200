#include "FactoryConfigTable.h"

namespace {
using D = MSrv_Factory_Default;
using K = FactoryConfigKind;

// 204 shows the set-up page with the tuning row and the preset texts: the web UI
// draws it that way.
const FactoryConfigRow kRows[] = {
    {132, K::Tuning, true, "FactoryTuning", "Factory-Tuning", "Factory Tuning : Writing",
     "Factory Tuning : Finished", false, &D::SetDLTVFactorySignalATVTable2ProgramTable, 0, false,
     "Factory-Tuning-Show", false},
    {204, K::Tuning, false, "FactorySetup", "Factory-Tuning", "CH Preset Writing", "CH Preset OK",
     false, &D::SetTCompanySignalATVTable2ProgramTable, 3, false, "Factory-Tuning-Show", false},
    {133, K::Setup, false, "FactorySetup", "Factory-Setup", "Factory Setup : Writing",
     "Factory Setup : Finished", true, nullptr, 0, false, "Factory-Setup-Show", false},
    {5, K::ChannelPreset, false, "CHPreset", "CHPresetData", "CH Preset Writing", "CH Preset OK",
     true, &D::SetOxbrindFactorySignalATVTable2ProgramTable, 1, true, "CHPreset", true},
    {6, K::ChannelPreset, false, "CHPreset", "CHPresetData", "CH Preset Writing", "CH Preset OK",
     true, &D::SetDLTVFactorySignalATVTable2ProgramTable, 2, true, "CHPreset", false},
};
}  // namespace

const FactoryConfigRow* FindFactoryConfig(unsigned long subCode) {
    for (const FactoryConfigRow& row : kRows) {
        if (row.subCode == subCode) {
            return &row;
        }
    }
    return nullptr;
}
