// Key codes the factory pages act on (the platform's key values).
#pragma once

namespace FactoryKey {
constexpr unsigned long Exit = 0xF062;
constexpr unsigned long PanelExit = 0xF557;
constexpr unsigned long Menu = 0xF012;
constexpr unsigned long PanelMenu = 0xF555;
constexpr unsigned long Power = 0xF00F;
constexpr unsigned long PanelPower = 0xF550;
constexpr unsigned long PanelDown = 0xF553;
constexpr unsigned long PanelUp = 0xF554;
constexpr unsigned long PanelFunction = 0xF556;
constexpr unsigned long Up = 0xF002;
constexpr unsigned long Down = 0xF003;
constexpr unsigned long AtvStore = 0xF042;
constexpr unsigned long Select = 0x0D;
}  // namespace FactoryKey
