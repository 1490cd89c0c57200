// Simulated system information: model id, boot, picture-quality and firmware
// versions, and the database's version record. Starts as the demo set.
#pragma once

#include <map>
#include <string>

#include "MTypes.h"
#include "SimSet.h"

namespace sim {

struct SystemInfoState : Area {
    MAPI_U32 modelId = 0x31;
    std::string mbootVersion = "MB1.06.114";
    MAPI_BOOL socSecured = 1;
    std::string pqVersion = "PQ_V27.0.12";
    std::map<int, std::string> qmapVersions = {{0, "QMAP_Main_27.03_20260115"},
                                               {2, "QMAP_Sub_27.01"}};
    // TVManager's version texts.
    std::string frcVersion = "FRC_R1.4.2";
    std::string socRealSWVersion = "VQ27.00.1143.21";
    std::string socFWVersion = "FW-27.2.0116";
    // Fields of the database's version record; a 32-character text fills its
    // field with no terminator, as the platform allows.
    std::string dpddVersion = "DPDD 4.2.1";
    std::string neuSoftVersion = "NS-SDK 3.0.8";
    std::string cesiVersion = "CESI_2.1";
    std::string iprcVersion = "IPRC 1.0.3";
    std::string irBlasterDBVersion = "IRB_DB_2026_03";
    std::string dialVersion = "DIAL 1.7.2";
};

}  // namespace sim
