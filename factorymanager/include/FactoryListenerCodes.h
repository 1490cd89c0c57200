// Codes the library calls the host listener with.
#pragma once

namespace FactoryListener {
constexpr unsigned long UiSocketClosed = 0x12001;
constexpr unsigned long GetHostUi = 0x12002;
constexpr unsigned long KillHostUi = 0x12003;
constexpr unsigned long IrBlasterTest = 0x12004;
constexpr unsigned long OsdLanguageToEnglish = 0x12005;  // E_ZYT_FACTORY_CHANGE_OSD_LANG_2_ENG
constexpr unsigned long ShipoutDone = 0x12006;           // E_ZYT_FACTORY_SHIPOUT_DONE
constexpr unsigned long LocalDimmingOn = 0x12007;
constexpr unsigned long LocalDimmingOff = 0x12008;
}  // namespace FactoryListener
