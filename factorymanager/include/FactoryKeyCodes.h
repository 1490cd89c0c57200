// Key codes the factory pages act on (the platform's key values).
#pragma once

namespace FactoryKey {
constexpr unsigned long Exit = 0xF062;       // closes the current test page
constexpr unsigned long PanelExit = 0xF557;  // the panel's exit: same as Exit
constexpr unsigned long Menu = 0xF012;       // leaves the ATV search
constexpr unsigned long PanelMenu = 0xF555;
constexpr unsigned long Power = 0xF00F;  // closes the version page
constexpr unsigned long PanelPower = 0xF550;
constexpr unsigned long PanelDown = 0xF553;
constexpr unsigned long PanelUp = 0xF554;
constexpr unsigned long PanelFunction = 0xF556;
constexpr unsigned long Up = 0xF002;  // the version page's two keys
constexpr unsigned long Down = 0xF003;
constexpr unsigned long AtvStore = 0xF042;
constexpr unsigned long Select = 0x0D;

inline bool IsExit(unsigned long key) { return key == Exit || key == PanelExit; }
}  // namespace FactoryKey

// Panel keys that M-mode turns into actions for the web UI.
struct MModeKey {
    unsigned long key;
    unsigned char action;
};
constexpr MModeKey kMModeKeys[] = {
    {FactoryKey::PanelFunction, 0},
    {FactoryKey::PanelDown, 1},
    {FactoryKey::PanelUp, 2},
    {FactoryKey::PanelPower, 3},
};

// Codes of the factory remote controller that the library runs itself.
namespace FactoryRemoteCode {
constexpr unsigned short DirectTuneDvbc = 61046;
constexpr unsigned short ConfigurationA = 61060;
constexpr unsigned short ConfigurationB = 61061;
constexpr unsigned short ShipoutA = 49129;
constexpr unsigned short ShipoutB = 49130;
constexpr unsigned short ShipoutC = 61049;
constexpr unsigned short ShipoutD = 61056;
constexpr unsigned short ShipoutE = 61057;
}  // namespace FactoryRemoteCode
