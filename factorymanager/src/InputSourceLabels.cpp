#include "InputSourceLabels.h"

namespace {
// Both composite inputs read "Composite": the line labels them by their socket.
const InputSourceLabel kLabels[] = {
    {0x81, "ID_INPUT_SOURCE_81_SCART", "SCART 1"},
    {0x82, "ID_INPUT_SOURCE_82_AV2", "Composite"},
    {0x83, "ID_INPUT_SOURCE_83_COMPONENT", "Component"},
    {0x84, "ID_INPUT_SOURCE_84_AV", "Composite"},
    {0x85, "ID_INPUT_SOURCE_85_HDMI", "HDMI 1"},
    {0x86, "ID_INPUT_SOURCE_86_HDMI2", "HDMI 2"},
    {0x87, "ID_INPUT_SOURCE_87_HDMI3", "HDMI 3"},
    {0x88, "ID_INPUT_SOURCE_88_HDMI4", "HDMI 4"},
    {0x89, "ID_INPUT_SOURCE_89_PC", "PC"},
};
}  // namespace

const InputSourceLabel* FindInputSourceLabel(unsigned long param) {
    for (const InputSourceLabel& row : kLabels) {
        if (row.param == param) {
            return &row;
        }
    }
    return nullptr;
}
