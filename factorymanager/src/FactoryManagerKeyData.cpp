// Key data readers: which key files the factory wrote under /ciplus and whose
// device they belong to, shown by a short public identifier, never by key bytes.
#include <cstdio>
#include <cstring>
#include <new>

#include "FactoryManager.h"
#include "FactoryProductData.h"
#include "MSrv_Control.h"
#include "MSrv_DTV_Player_DVB.h"
#include "MSrv_PreSharedKey.h"
#include "SystemInfo.h"
#include "TvHost.h"

namespace {

// Every reader reads at most this much of a key file.
constexpr size_t kKeyBlockSize = 8192;
const char kMissing[] = "--";

const char kHdcp2KeyFile[] = "/ciplus/hdcp2_key.bin";
const char kWidevineKeyFile[] = "/ciplus/widevine_key.bin";
const char kNetflixKeyFile[] = "/ciplus/nfxkey_key.bin";

// Bytes read from the start of the file into the block; -1 if it cannot be opened.
long ReadKeyFile(const char* tvPath, unsigned char* block) {
    std::FILE* file = std::fopen(TvHost_Path(tvPath).c_str(), "r");
    if (file == nullptr) {
        return -1;
    }
    // A directory opens but reads nothing, which leaves it an empty file.
    const size_t got = std::fread(block, 1, kKeyBlockSize, file);
    std::fclose(file);
    return static_cast<long>(got);
}

bool KeyFilePresent(const char* tvPath) {
    std::FILE* file = std::fopen(TvHost_Path(tvPath).c_str(), "r");
    if (file == nullptr) {
        return false;
    }
    std::fclose(file);
    return true;
}

// IEEE 802.3 CRC-32, bitwise: small, and only sixteen bytes are ever fed to it.
unsigned long Crc32(const unsigned char* data, size_t length) {
    unsigned long crc = 0xFFFFFFFFUL;
    for (size_t i = 0; i < length; ++i) {
        crc ^= data[i];
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 1) ? (crc >> 1) ^ 0xEDB88320UL : crc >> 1;
        }
    }
    return ~crc & 0xFFFFFFFFUL;
}

}  // namespace

// Where a key file keeps its public identifier and how it is shown.
struct FactoryKeyIdentifier {
    enum Format { Hex, Chars };
    const char* gateFile;  // must exist for the identifier to be shown; null if none
    const char* dataFile;
    size_t offset;
    size_t length;
    Format format;
    // The receiver identifier is cut at the last byte read and formatted on a
    // 32-byte stack copy first.
    bool viaStackCopy;
    // The DTCP-IP reader gives its buffer back when the block cannot be had,
    // so that the next call starts afresh.
    bool releaseOnNoMemory;
};

namespace {

using Source = FactoryKeyIdentifier;

// clang-format off
const Source kCIPlusSerial   {nullptr, "/ciplus/ci_plus.bin", 68, 4, Source::Hex, false, false};
const Source kCIPlusHostID   {nullptr, "/ciplus/ci_plus.bin", 72, 8, Source::Hex, false, false};
const Source kHDCP20KeyID    {nullptr, "/ciplus/hdcp2.bin", 71, 5, Source::Hex, false, false};
const Source kHDCP20Receiver {nullptr, "/ciplus/hdcp2.bin", 90, 5, Source::Hex, true, false};
const Source kWidevineID     {kWidevineKeyFile, "/ciplus/widevine.bin", 76, 16, Source::Chars, false, false};
const Source kNetflixESN     {kNetflixKeyFile, "/ciplus/nfxkey.bin", 76, 16, Source::Chars, false, false};
// The Widevine key file gates DTCP-IP too: both are written in one factory step.
const Source kDTCPIPDeviceID {kWidevineKeyFile, "/ciplus/dipkey.bin", 60, 5, Source::Hex, false, true};
// clang-format on

}  // namespace

const char* FactoryManager::ReadKeyIdentifier(char*& buffer, size_t size,
                                              const FactoryKeyIdentifier& source) {
    if (ReaderBuffer(buffer, static_cast<unsigned int>(size)) == nullptr) {
        return nullptr;
    }
    unsigned char* block = new (std::nothrow) unsigned char[kKeyBlockSize];
    if (block == nullptr) {
        if (source.releaseOnNoMemory) {
            delete[] buffer;
            buffer = nullptr;
        }
        return nullptr;
    }
    std::memset(block, 0, kKeyBlockSize);

    char text[64] = {};
    long got = 0;
    if (source.gateFile == nullptr || KeyFilePresent(source.gateFile)) {
        got = ReadKeyFile(source.dataFile, block);
    }
    if (got <= 0) {
        std::snprintf(text, sizeof(text), "%s", kMissing);
    } else {
        if (source.viaStackCopy) {
            block[got - 1] = 0;
        }
        // A short file still yields an identifier: the bytes it lacks read as zero.
        for (size_t i = 0; i < source.length; ++i) {
            const unsigned char byte = block[source.offset + i];
            if (source.format == Source::Hex) {
                std::snprintf(text + 2 * i, 3, "%02X", byte);
            } else {
                // Copied as they are, unprintable bytes included.
                text[i] = static_cast<char>(byte);
            }
        }
    }
    delete[] block;

    if (source.viaStackCopy) {
        text[31] = '\0';
        std::snprintf(buffer, size, "%s", text);
    } else {
        const size_t length =
            source.format == Source::Chars && got > 0 ? source.length : std::strlen(text);
        std::memcpy(buffer, text, length < size ? length : size - 1);
    }
    return buffer;
}

void FactoryManager::FreeKeyDataBuffers() {
    for (char** buffer :
         {&m_pszCIPlusSerialNumber, &m_pszCIPlusHostID, &m_pszHDCP20, &m_pszHDCP20ReceiveID,
          &m_pszWidevineDeviceID, &m_pszNetflixESN, &m_pszDevIDDTCPIP, &m_pszPVR, &m_pszVudu}) {
        delete[] * buffer;
        *buffer = nullptr;
    }
}

MAPI_BOOL FactoryManager::FactoryLoadKeyRawData() {
    struct Check {
        const char* path;
        MAPI_U8& flag;
    };
    const Check checks[] = {{kHdcp2KeyFile, m_u8Hdcp2KeyHmacOk},
                            {kWidevineKeyFile, m_u8WidevineKeyHmacOk},
                            {kNetflixKeyFile, m_u8NetflixKeyHmacOk}};
    std::FILE* files[3] = {};
    for (size_t i = 0; i < 3; ++i) {
        checks[i].flag = 0;
        files[i] = std::fopen(TvHost_Path(checks[i].path).c_str(), "r");
    }
    for (size_t i = 0; i < 3; ++i) {
        if (files[i] == nullptr) {
            continue;
        }
        // The platform verifies the key itself; it is handed the path only.
        MSrv_PreSharedKey* psk = MSrv_Control::GetInstance()->GetMSrvPreSharedKey();
        if (psk != nullptr) {
            checks[i].flag = psk->CheckHmac(checks[i].path);
        }
        std::fclose(files[i]);
    }
    return 1;
}

const char* FactoryManager::FactoryGetCIPlusSerialNumber() {
    return ReadKeyIdentifier(m_pszCIPlusSerialNumber, 9, kCIPlusSerial);
}
const char* FactoryManager::FactoryGetCIPlusHostID() {
    return ReadKeyIdentifier(m_pszCIPlusHostID, 17, kCIPlusHostID);
}
const char* FactoryManager::FactoryGetHDCP20() {
    return ReadKeyIdentifier(m_pszHDCP20, 17, kHDCP20KeyID);
}
const char* FactoryManager::FactoryGetHDCP20_ReceiveID() {
    return ReadKeyIdentifier(m_pszHDCP20ReceiveID, 17, kHDCP20Receiver);
}
const char* FactoryManager::FactoryGetWidevineDeviceID() {
    return ReadKeyIdentifier(m_pszWidevineDeviceID, 33, kWidevineID);
}
const char* FactoryManager::FactoryGetNetflixESN() {
    return ReadKeyIdentifier(m_pszNetflixESN, 33, kNetflixESN);
}
// Ten hex digits and the terminator.
const char* FactoryManager::FactoryGetDevID_DTCPIP() {
    return ReadKeyIdentifier(m_pszDevIDDTCPIP, 11, kDTCPIPDeviceID);
}

const char* FactoryManager::FactoryGetPVR() {
    if (ReaderBuffer(m_pszPVR, 129) == nullptr) {
        return nullptr;
    }
    unsigned char* block = new (std::nothrow) unsigned char[kKeyBlockSize];
    if (block == nullptr) {
        return nullptr;
    }
    std::memset(block, 0, kKeyBlockSize);
    const long got = ReadKeyFile("/ciplus/pvrkey.bin", block);
    constexpr size_t kKeyLength = 16;
    bool blank = true;
    for (size_t i = 0; i < kKeyLength; ++i) {
        blank = blank && block[i] == 0;
    }
    // An empty file is a missing key, like for every other key file; "NG" is
    // kept for a key that was written blank.
    if (got <= 0) {
        std::snprintf(m_pszPVR, 129, "%s", kMissing);
    } else if (blank) {
        std::snprintf(m_pszPVR, 129, "NG");
    } else {
        // A fingerprint lets the line compare keys without showing them.
        std::snprintf(m_pszPVR, 129, "OK %lx", Crc32(block, kKeyLength));
    }
    delete[] block;
    return m_pszPVR;
}

// The chassis code of the model; a model without one reads empty.
const char* FactoryManager::FactoryGetVudu() {
    if (ReaderBuffer(m_pszVudu, 13) == nullptr) {
        return nullptr;
    }
    SystemInfo* info = SystemInfo::GetInstance();
    const char* chassis = info != nullptr ? FactoryProductVuduChassis(info->GetModelId()) : nullptr;
    if (chassis != nullptr) {
        std::snprintf(m_pszVudu, 13, "%s", chassis);
    }
    return m_pszVudu;
}

MAPI_BOOL FactoryManager::FactoryGetCIPlusURILicense(std::string& text) {
    MSrv_DTV_Player_DVB* dvb = MSrv_Control::GetInstance()->GetMSrvDtv();
    if (dvb == nullptr) {
        return 0;
    }
    ST_CIPLUS_URI_LICENSE uri;
    std::memset(&uri, 0, sizeof(uri));
    const MAPI_BOOL result = dvb->GetCCUriLicense(&uri);
    if (result == 1) {
        // Bit positions of the CI+ URI message.
        unsigned long high = static_cast<unsigned long>(uri.u8ProtocolVersion) << 24;
        high |= static_cast<unsigned long>(uri.u8APS & 0x3) << 22;
        high |= static_cast<unsigned long>(uri.u8EMI & 0x3) << 20;
        high |= static_cast<unsigned long>(uri.u8ICT & 0x1) << 19;
        if ((uri.u8EMI & 0x3) == 0) {
            high |= static_cast<unsigned long>(uri.u8RCT & 0x1) << 18;
        }
        if ((uri.u8EMI & 0x3) == 3) {
            high |= static_cast<unsigned long>(uri.u8DOT & 0x1) << 17;
            high |= static_cast<unsigned long>(uri.u8RL) << 9;
        }
        const unsigned long low = 0;
        char packed[32];
        std::snprintf(packed, sizeof(packed), "0x%04lX_%04lX_%04lX_%04lX", high >> 16,
                      high & 0xFFFF, low >> 16, low & 0xFFFF);
        text = packed;
    }
    return result;
}
