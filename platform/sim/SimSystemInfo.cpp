// The simulated set behind SystemInfo, the database's version record and
// TVManager's version texts.
#include "SimSystemInfo.h"

#include <cstring>

#include "DatabaseManager.h"
#include "SystemInfo.h"
#include "TVManager.h"

using sim::ArgList;
using sim::Set;

namespace {

sim::SystemInfoState& State() { return Set::Instance().Get<sim::SystemInfoState>(); }

// The platform's contract for a caller's buffer: at most `limit` characters and a
// terminator.
void WriteText(char* out, const std::string& text, size_t limit) {
    if (out == nullptr) {
        return;
    }
    const size_t n = text.size() < limit ? text.size() : limit;
    std::memcpy(out, text.data(), n);
    out[n] = '\0';
}

void Field(char (&field)[32], const std::string& text) {
    std::memset(field, 0, sizeof(field));
    std::memcpy(field, text.data(), text.size() < sizeof(field) ? text.size() : sizeof(field));
}

}  // namespace

SystemInfo* SystemInfo::GetInstance() {
    static SystemInfo info;
    return &info;
}

MAPI_U32 SystemInfo::GetModelId() {
    Set::Instance().RecordCall("SystemInfo::GetModelId", ArgList());
    return State().modelId;
}

const char* SystemInfo::GetMbootVersion() {
    Set::Instance().RecordCall("SystemInfo::GetMbootVersion", ArgList());
    return State().mbootVersion.c_str();
}

MAPI_BOOL SystemInfo::IsSoCSecured() {
    Set::Instance().RecordCall("SystemInfo::IsSoCSecured", ArgList());
    return State().socSecured;
}

const char* SystemInfo::GetPQVersion() {
    Set::Instance().RecordCall("SystemInfo::GetPQVersion", ArgList());
    return State().pqVersion.c_str();
}

const char* SystemInfo::GetQmapVersion(int type) {
    Set::Instance().RecordCall("SystemInfo::GetQmapVersion", ArgList(type));
    auto& versions = State().qmapVersions;
    auto it = versions.find(type);
    return it == versions.end() ? "" : it->second.c_str();
}

DatabaseManager* TVManager::getDatabaseManager() {
    static DatabaseManager manager;
    return &manager;
}

MAPI_BOOL DatabaseManager::GetVersionInformation(ST_ZYT_VERSION_INFO& info) {
    Set::Instance().RecordCall("DatabaseManager::GetVersionInformation", ArgList());
    const sim::SystemInfoState& s = State();
    Field(info.szDPDDVersion, s.dpddVersion);
    Field(info.szNeuSoftVersion, s.neuSoftVersion);
    Field(info.szCESIVersion, s.cesiVersion);
    Field(info.szIPRCVersion, s.iprcVersion);
    Field(info.szIRBlasterDBVersion, s.irBlasterDBVersion);
    Field(info.szDIALVersion, s.dialVersion);
    return 1;
}

void TVManager::getFRCVersion(char* version) {
    Set::Instance().RecordCall("TVManager::getFRCVersion", ArgList());
    WriteText(version, State().frcVersion, 20);
}

void TVManager::GetSoCRealSWVersion(char* version) {
    Set::Instance().RecordCall("TVManager::GetSoCRealSWVersion", ArgList());
    WriteText(version, State().socRealSWVersion, 29);
}

void TVManager::GetSoCFWVersion(char* version) {
    Set::Instance().RecordCall("TVManager::GetSoCFWVersion", ArgList());
    WriteText(version, State().socFWVersion, 29);
}
