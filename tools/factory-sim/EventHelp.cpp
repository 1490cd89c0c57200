// What each factory event's parameters mean where the library reads them, and which
// handlers are still placeholders, for 'events' and 'help event'.
#include "EventHelp.h"

#include <algorithm>
#include <cstring>

namespace factorysim {

namespace {

struct ParamHelp {
    unsigned int id;
    const char* text;
};

// The events whose handlers read a parameter; every other handler reads none.
const ParamHelp kParams[] = {
    {192, "p2 (low byte): the channel-preset phase"},
    {196, "p2: 0 MHL overcurrent, 1 USB overcurrent, 2 closes the page"},
    {203, "p3: the volume stored outside M-mode (in M-mode the factory volume is used)"},
    {226, "p2 (low byte): the clone-copy code"},
    {227, "p2: 10 sets H, 11 sets V, anything else toggles the polarisation"},
    {230, "p2 (low byte): the satellite sub-code"},
    {232, "p2: the phase: 0 starts the adjustment, 1 the station reports OK, 2 NG"},
    {234, "p2: 1 shows the page and arms the timer, 0 lets the next tick close it"},
    {236, "p2: the input to show, 0x81-0x89"},
    {240, "p2 (low byte): the direct-tune sub-code"},
    {243, "p2 (low byte): the search direction"},
    {247, "p2 (low byte): the configuration sub-code"},
    {250, "p2: the wake-on-WLAN test phase"},
    {251, "p2: the WLAN test phase"},
    {256, "p2: the local-dimming pattern (1 shows the page)"},
    {257, "p2: 10 switches the nine-point pattern off, anything else on"},
    {258, "p2: 0x99 enables HDMI ARC, 0xD3 disables it"},
    {261, "p2: 0 WP COMPLETE, 1 WP ERROR, anything else the page only"},
    {363, "p2: non-zero switches teletext on, 0 off"},
};

}  // namespace

std::string ParameterHelp(unsigned int id) {
    for (const auto& p : kParams) {
        if (p.id == id) {
            return p.text;
        }
    }
    return "";
}

}  // namespace factorysim
