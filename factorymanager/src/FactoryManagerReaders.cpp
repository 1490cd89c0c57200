// Version and identity readers: each turns one piece of platform or factory data
// into one short display text (in a buffer of its own, reused from call to call)
// or one status number, for the version pages, the serial log and the AT record.
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <new>

#include "DatabaseManager.h"
#include "FactoryManager.h"
#include "FactoryProductData.h"
#include "MSrv_Control.h"
#include "MSrv_DTV_Player_DVB.h"
#include "MSrv_Factory_Cmd.h"
#include "MSrv_Factory_Default.h"
#include "MSrv_Network.h"
#include "MSrv_Player.h"
#include "MSrv_SSSound.h"
#include "SystemInfo.h"
#include "TVManager.h"

namespace {

// Factory store items read here.
constexpr unsigned short kItemDLNACheck = 69;
constexpr unsigned short kItemPOTCounter = 79;  // four bytes, lowest first
constexpr unsigned short kItemASTCounter = 83;  // four bytes, lowest first
constexpr unsigned short kItemVGAEdid = 87;
constexpr unsigned short kItemWriteProtect = 94;
constexpr unsigned short kItemModelId134 = 134;
constexpr unsigned short kItemModelId135 = 135;
constexpr unsigned short kItemModelId136 = 136;
constexpr unsigned short kItemModelId137 = 137;
constexpr unsigned short kItemADCRGB = 300;
constexpr unsigned short kItemADCCOMP = 301;
constexpr unsigned short kItemADCPAL = 302;
constexpr unsigned short kItemADCNTSC = 303;

// Model ids from this one up have no name on any product.
constexpr MAPI_U8 kFirstUnnamedModelId = 79;
constexpr unsigned int kVersionFieldSize = sizeof(ST_ZYT_VERSION_INFO::szDPDDVersion);
constexpr unsigned int kSerialAreaSize = 15;

const char kNoModelName[] = "NO_Name";
const char kAppVersionPrefix[] = "7.1.21.0.0.1";
const char kSWVersion[] = "Jan 12 2012 - 443156";
const char kNoData[] = "--";

// Copies at most size - 1 characters, so a long platform text is cut rather than
// written past the buffer. `to` is already zeroed.
void CopyCut(char* to, unsigned int size, const char* text, size_t textLimit) {
    if (text != nullptr) {
        size_t n = strnlen(text, textLimit);
        if (n > size - 1) {
            n = size - 1;
        }
        std::memcpy(to, text, n);
    }
}

// Formats into a reader buffer; a text longer than the buffer is cut.
__attribute__((format(printf, 3, 4))) void FormatCut(char* to, size_t size, const char* format,
                                                     ...) {
    va_list args;
    va_start(args, format);
    vsnprintf(to, size, format, args);
    va_end(args);
}

}  // namespace

const char* FactoryProductModelName(MAPI_U8 modelId) {
    for (size_t i = 0; i < g_nFactoryModelNames; ++i) {
        if (g_stFactoryModelNames[i].u8ModelId == modelId) {
            return g_stFactoryModelNames[i].szName;
        }
    }
    return nullptr;
}

const char* FactoryProductVuduChassis(MAPI_U32 modelId) {
    if (modelId == 0) {
        return nullptr;  // 0 marks an unused slot of a row
    }
    for (size_t i = 0; i < g_nFactoryVuduChassis; ++i) {
        for (MAPI_U32 id : g_stFactoryVuduChassis[i].u32ModelIds) {
            if (id == modelId) {
                return g_stFactoryVuduChassis[i].szChassis;
            }
        }
    }
    return nullptr;
}

// ---- Buffers -------------------------------------------------------------------------

char* FactoryManager::*const FactoryManager::s_versionReaderBuffers[] = {
    &FactoryManager::m_pszTVModel,
    &FactoryManager::m_pszTVModelId,
    &FactoryManager::m_pszZYTAppVersion,
    &FactoryManager::m_pszSWVersion,
    &FactoryManager::m_pszMbootVersion,
    &FactoryManager::m_pszPQVersion,
    &FactoryManager::m_pszPQ2Version,
    &FactoryManager::m_pszPQ3Version,
    &FactoryManager::m_pszPQ4Version,
    &FactoryManager::m_pszFRCVersion,
    &FactoryManager::m_pszDPDDDIALVersion,
    &FactoryManager::m_pszNeuSoftVersion,
    &FactoryManager::m_pszCESIVersion,
    &FactoryManager::m_pszIPRCVersion,
    &FactoryManager::m_pszIRBlasterDB,
    &FactoryManager::m_pszASFVersion,
    &FactoryManager::m_pszChDBVersion,
    &FactoryManager::m_pszMainBoardTemp,
    &FactoryManager::m_pszODTable,
    &FactoryManager::m_pszSerialNo,
    &FactoryManager::m_pszMACAddress,
    &FactoryManager::m_pszWLANMACAddress,
    &FactoryManager::m_pszPOT,
    &FactoryManager::m_pszAST,
    &FactoryManager::m_pszDLNACheck,
    &FactoryManager::m_pszMainFormat,
};

char* FactoryManager::ReaderBuffer(char*& buffer, unsigned int size) {
    if (buffer == nullptr) {
        buffer = new (std::nothrow) char[size];
    }
    if (buffer != nullptr) {
        std::memset(buffer, 0, size);
    }
    return buffer;
}

void FactoryManager::FreeVersionReaderBuffers() {
    for (char* FactoryManager::*member : s_versionReaderBuffers) {
        if (this->*member != nullptr) {
            delete[](this->*member);
            this->*member = nullptr;
        }
    }
}

const char* FactoryManager::ReaderCopy(char*& buffer, unsigned int size, const char* text) {
    char* out = ReaderBuffer(buffer, size);
    if (out != nullptr) {
        CopyCut(out, size, text, size);
    }
    return out;
}

const char* FactoryManager::ReaderVersionRecordField(char*& buffer, unsigned int size,
                                                     unsigned int offset) {
    char* out = ReaderBuffer(buffer, size);
    if (out == nullptr) {
        return nullptr;
    }
    ST_ZYT_VERSION_INFO info;
    std::memset(&info, 0, sizeof(info));
    DatabaseManager* database = TVManager::GetInstance()->getDatabaseManager();
    if (database != nullptr) {
        database->GetVersionInformation(info);
    }
    // A field may fill all its 32 bytes with no terminator.
    CopyCut(out, size, reinterpret_cast<const char*>(&info) + offset, kVersionFieldSize);
    return out;
}

MAPI_U8 FactoryManager::ReaderFactoryData(unsigned short item) {
    unsigned char value = 0;
    if (m_pFactoryDefault != nullptr) {
        m_pFactoryDefault->GetFactoryData(item, &value);
    }
    return value;
}

const char* FactoryManager::ReaderCounter(char*& buffer, unsigned short firstItem) {
    char* out = ReaderBuffer(buffer, 21);
    if (out == nullptr) {
        return nullptr;
    }
    MAPI_U32 value = 0;
    for (unsigned short i = 0; i < 4; ++i) {
        value |=
            static_cast<MAPI_U32>(ReaderFactoryData(static_cast<unsigned short>(firstItem + i)))
            << (8 * i);
    }
    // Signed 32-bit as on the set, whatever the width of long on this host.
    FormatCut(out, 21, "%ld", static_cast<long>(static_cast<MAPI_S32>(value)));
    return out;
}

// ---- Identity and version texts --------------------------------------------------------

const char* FactoryManager::FactoryGetTVModel() {
    char* out = ReaderBuffer(m_pszTVModel, 21);
    if (out == nullptr) {
        return nullptr;
    }
    const MAPI_U8 id = static_cast<MAPI_U8>(SystemInfo::GetInstance()->GetModelId() & 0xFF);
    const char* name = nullptr;
    if (id != 0 && id < kFirstUnnamedModelId) {
        name = FactoryProductModelName(id);
    }
    CopyCut(out, 21, name != nullptr ? name : kNoModelName, 21);
    return out;
}

const char* FactoryManager::FactoryGetTVModelId() {
    char* out = ReaderBuffer(m_pszTVModelId, 21);
    if (out == nullptr) {
        return nullptr;
    }
    const MAPI_U32 id = SystemInfo::GetInstance()->GetModelId();
    const MAPI_U8 b134 = ReaderFactoryData(kItemModelId134);
    const MAPI_U8 b135 = ReaderFactoryData(kItemModelId135);
    // Deliberately 137 before 136, read and printed.
    const MAPI_U8 b137 = ReaderFactoryData(kItemModelId137);
    const MAPI_U8 b136 = ReaderFactoryData(kItemModelId136);
    FormatCut(out, 21, "%02X %02X %02X %02X %02X", id, b134, b135, b137, b136);
    return out;
}

const char* FactoryManager::FactoryGetZYTAppVersion() {
    char* out = ReaderBuffer(m_pszZYTAppVersion, 21);
    if (out == nullptr) {
        return nullptr;
    }
    // A set without a digital tuner has no OAD version: the text stays empty.
    MSrv_DTV_Player_DVB* dtv = MSrv_Control::GetInstance()->GetMSrvDtv();
    if (dtv != nullptr) {
        FormatCut(out, 21, "%s.%lx", kAppVersionPrefix,
                  static_cast<unsigned long>(dtv->OADGetTVversion()));
    }
    return out;
}

const char* FactoryManager::FactoryGetSWVersion() {
    return ReaderCopy(m_pszSWVersion, 33, kSWVersion);
}

const char* FactoryManager::FactoryGetMbootVersion() {
    char* out = ReaderBuffer(m_pszMbootVersion, 21);
    if (out == nullptr) {
        return nullptr;
    }
    SystemInfo* info = SystemInfo::GetInstance();
    const char* version = info->GetMbootVersion();
    if (version == nullptr) {
        version = "";
    }
    if (info->IsSoCSecured() == 1) {
        FormatCut(out, 21, "%s (Secured)", version);
    } else {
        CopyCut(out, 21, version, 21);
    }
    return out;
}

const char* FactoryManager::FactoryGetPQVersion() {
    return ReaderCopy(m_pszPQVersion, 21, SystemInfo::GetInstance()->GetPQVersion());
}

const char* FactoryManager::FactoryGetPQ2Version() {
    return ReaderCopy(m_pszPQ2Version, 65, SystemInfo::GetInstance()->GetQmapVersion(0));
}

const char* FactoryManager::FactoryGetPQ3Version() {
    return ReaderCopy(m_pszPQ3Version, 65, SystemInfo::GetInstance()->GetQmapVersion(2));
}

const char* FactoryManager::FactoryGetPQ4Version() {
    // Deliberately the main map again, in a larger buffer.
    return ReaderCopy(m_pszPQ4Version, 129, SystemInfo::GetInstance()->GetQmapVersion(0));
}

const char* FactoryManager::FactoryGetFRCVersion() {
    char* out = ReaderBuffer(m_pszFRCVersion, 21);
    if (out != nullptr) {
        TVManager::GetInstance()->getFRCVersion(out);
    }
    return out;
}

// DPDD and DIAL share one buffer: use the DPDD text before reading DIAL.
const char* FactoryManager::FactoryGetDPDDVersion() {
    return ReaderVersionRecordField(m_pszDPDDDIALVersion, 51,
                                    offsetof(ST_ZYT_VERSION_INFO, szDPDDVersion));
}

const char* FactoryManager::FactoryGetNeuSoftVersion() {
    return ReaderVersionRecordField(m_pszNeuSoftVersion, 41,
                                    offsetof(ST_ZYT_VERSION_INFO, szNeuSoftVersion));
}

const char* FactoryManager::FactoryGetCESIVersion() {
    return ReaderVersionRecordField(m_pszCESIVersion, 21,
                                    offsetof(ST_ZYT_VERSION_INFO, szCESIVersion));
}

const char* FactoryManager::FactoryGetIPRCVersion() {
    return ReaderVersionRecordField(m_pszIPRCVersion, 21,
                                    offsetof(ST_ZYT_VERSION_INFO, szIPRCVersion));
}

const char* FactoryManager::FactoryGetIRBlasterDB() {
    return ReaderVersionRecordField(m_pszIRBlasterDB, 21,
                                    offsetof(ST_ZYT_VERSION_INFO, szIRBlasterDBVersion));
}

const char* FactoryManager::FactoryGetDIALVersion() {
    return ReaderVersionRecordField(m_pszDPDDDIALVersion, 51,
                                    offsetof(ST_ZYT_VERSION_INFO, szDIALVersion));
}

MAPI_U32 FactoryManager::ASF_GetVersion() {
    MSrv_SSSound* sound = MSrv_Control::GetInstance()->GetMSrvSSSound();
    return sound != nullptr ? sound->ASF_GetParam(0) : 0;
}

const char* FactoryManager::FactoryGetASF_Version() {
    char* out = ReaderBuffer(m_pszASFVersion, 21);
    if (out == nullptr) {
        return nullptr;
    }
    const MAPI_U32 v = ASF_GetVersion();
    // Deliberately unmasked: with the high bytes set the fields overlap, so
    // 00 01 02 03 reads "ver. 1.102.10203".
    FormatCut(out, 21, "ver. %X.%X.%X", v >> 16, v >> 8, v);
    return out;
}

// Not kept on this product; the rows stay so that every product shows the same page.
const char* FactoryManager::FactoryGetChDBVersion() { return ReaderBuffer(m_pszChDBVersion, 21); }
const char* FactoryManager::FactoryGetMainBoardTemp() {
    return ReaderBuffer(m_pszMainBoardTemp, 13);
}
const char* FactoryManager::FactoryGetODTable() { return ReaderBuffer(m_pszODTable, 13); }

const char* FactoryManager::FactoryGetSerialNo() {
    char* out = ReaderBuffer(m_pszSerialNo, 16);
    if (out == nullptr) {
        return nullptr;
    }
    unsigned char area[kSerialAreaSize] = {};
    m_pFactoryCmd->ReadSerialNum(area);
    if (area[4] == 0xFF && area[5] == 0xFF) {
        // Never written: a single blank rather than an empty text.
        out[0] = ' ';
    } else {
        // The 16th byte stays the terminator of a full 15-character serial.
        std::memcpy(out, area, kSerialAreaSize);
    }
    return out;
}

const char* FactoryManager::FactoryGetMACAddress() {
    char* out = ReaderBuffer(m_pszMACAddress, 21);
    if (out == nullptr) {
        return nullptr;
    }
    msrv_network_mac_s mac = {};
    MSrv_Network* network = MSrv_Control::GetInstance()->GetMSrvNetwork();
    if (network != nullptr) {
        network->GetEthernetMACAddress(&mac);
    }
    FormatCut(out, 21, "%02x:%02x:%02x:%02x:%02x:%02x", mac.mac[0], mac.mac[1], mac.mac[2],
              mac.mac[3], mac.mac[4], mac.mac[5]);
    return out;
}

const char* FactoryManager::FactoryGetWLANMACAddress() {
    char* out = ReaderBuffer(m_pszWLANMACAddress, 21);
    if (out == nullptr) {
        return nullptr;
    }
    msrv_network_mac_s mac = {};
    MSrv_Network* network = MSrv_Control::GetInstance()->GetMSrvNetwork();
    if (network != nullptr) {
        network->GetWiFiMACAddress(&mac);
    }
    // Deliberately upper case, unlike the wired address.
    FormatCut(out, 21, "%2.2X:%2.2X:%2.2X:%2.2X:%2.2X:%2.2X", mac.mac[0], mac.mac[1], mac.mac[2],
              mac.mac[3], mac.mac[4], mac.mac[5]);
    return out;
}

const char* FactoryManager::FactoryGetPOT() { return ReaderCounter(m_pszPOT, kItemPOTCounter); }

const char* FactoryManager::FactoryGetAST() { return ReaderCounter(m_pszAST, kItemASTCounter); }

const char* FactoryManager::FactoryGetDLNACheck() {
    char* out = ReaderBuffer(m_pszDLNACheck, 13);
    if (out != nullptr) {
        FormatCut(out, 13, "%d", ReaderFactoryData(kItemDLNACheck));
    }
    return out;
}

const char* FactoryManager::FactoryGetMainFormat() {
    char* out = ReaderBuffer(m_pszMainFormat, 21);
    if (out == nullptr) {
        return nullptr;
    }
    MSrv_Control* control = MSrv_Control::GetInstance();
    MSrv_Player* player = control->GetMSrvPlayer(control->GetCurrentInputSource());
    if (player == nullptr) {
        return nullptr;
    }
    ST_VIDEO_INFO info;
    std::memset(&info, 0, sizeof(info));
    player->GetVideoInfo(&info);
    if (info.u16VResolution == 0) {
        CopyCut(out, 21, kNoData, 21);
    } else {
        FormatCut(out, 21, "%d%c %d", info.u16VResolution, info.bInterlace == 1 ? 'i' : 'p',
                  info.u16FrameRate / 100);
    }
    return out;
}

// ---- Status readers -------------------------------------------------------------------

MAPI_U8 FactoryManager::FactoryGetADAdjustPALStatus() {
    return ReaderFactoryData(kItemADCPAL) == 1 ? 1 : 0;
}

MAPI_U8 FactoryManager::FactoryGetADAdjustNTSCStatus() {
    return ReaderFactoryData(kItemADCNTSC) == 1 ? 1 : 0;
}

MAPI_U8 FactoryManager::FactoryGetADAdjustCOMPStatus() {
    return ReaderFactoryData(kItemADCCOMP) == 1 ? 1 : 0;
}

MAPI_U8 FactoryManager::FactoryGetADAdjustRGBStatus() {
    return ReaderFactoryData(kItemADCRGB) == 1 ? 1 : 0;
}

MAPI_U8 FactoryManager::FactoryGetADAdjustCVBSStatus() {
    // Both are read, whatever the first says.
    const MAPI_U8 pal = FactoryGetADAdjustPALStatus();
    const MAPI_U8 ntsc = FactoryGetADAdjustNTSCStatus();
    return (pal == 1 || ntsc == 1) ? 1 : 0;
}

MAPI_U8 FactoryManager::FactoryGetEDIDVGA() {
    const MAPI_U8 state = ReaderFactoryData(kItemVGAEdid);
    return state <= 1 ? state : 2;  // 2: written, version unknown
}

MAPI_U8 FactoryManager::ReaderHdmiEdid(MAPI_U8 port) {
    return static_cast<MAPI_U8>(m_pFactoryCmd->EDIDCheckSum(port) & 0xFF);
}

MAPI_U8 FactoryManager::FactoryGetEDIDHDMI1() { return ReaderHdmiEdid(1); }
MAPI_U8 FactoryManager::FactoryGetEDIDHDMI2() { return ReaderHdmiEdid(2); }
MAPI_U8 FactoryManager::FactoryGetEDIDHDMI3() { return ReaderHdmiEdid(3); }
MAPI_U8 FactoryManager::FactoryGetEDIDHDMI4() { return ReaderHdmiEdid(4); }

MAPI_U8 FactoryManager::FactoryGetWriteProtect() {
    return ReaderFactoryData(kItemWriteProtect) == 1 ? 1 : 0;
}

MAPI_U8 FactoryManager::has4KDemoData() { return 0; }

// ---- Four-panel products ----------------------------------------------------------------

const char* FactoryManager::FourPanelStub(const char* reader) {
    std::memset(m_szFourPanelStub, 0, sizeof(m_szFourPanelStub));
    printf("\n~~ [%s] is for 4k2k project. ", reader);
    return m_szFourPanelStub;
}

const char* FactoryManager::FactoryGetREVICVersion() {
    return FourPanelStub("FactoryGetREVICVersion");
}
const char* FactoryManager::FactoryGetARMVersion() { return FourPanelStub("FactoryGetARMVersion"); }
const char* FactoryManager::FactoryGetCRISCVersion() {
    return FourPanelStub("FactoryGetCRISCVersion");
}
const char* FactoryManager::FactoryGetBRISCVersion() {
    return FourPanelStub("FactoryGetBRISCVersion");
}
const char* FactoryManager::FactoryGetFPGAVersion() {
    return FourPanelStub("FactoryGetFPGAVersion");
}
const char* FactoryManager::FactoryGetBootLoaderVersion() {
    return FourPanelStub("FactoryGetBootLoaderVersion");
}
const char* FactoryManager::FactoryGetUSBConnect() { return FourPanelStub("FactoryGetUSBConnect"); }
const char* FactoryManager::FactoryGetRevicMemory() {
    return FourPanelStub("FactoryGetRevicMemory");
}
// These six share the body of the reader above, so they print its line.
const char* FactoryManager::FactoryGetRevicCtrl() { return FactoryGetRevicMemory(); }
const char* FactoryManager::FactoryGetRevicPQVersion() { return FactoryGetRevicMemory(); }
const char* FactoryManager::FactoryGetInformation() { return FactoryGetRevicMemory(); }
const char* FactoryManager::FactoryGetGPIOConnect() { return FactoryGetRevicMemory(); }
const char* FactoryManager::FactoryGetUniformityData() { return FactoryGetRevicMemory(); }
const char* FactoryManager::FactoryGetRevicLD_DATA() { return FactoryGetRevicMemory(); }
