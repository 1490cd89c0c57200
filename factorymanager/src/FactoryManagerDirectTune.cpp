// Direct tuning: the fixture tunes to a test channel or starts a cable or satellite
// tuning run; the panel says which, and closes on a timer or at the scan's end.
#include <cstdint>
#include <cstdio>
#include <string>

#include "DirectTuneTable.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_Control.h"
#include "MSrv_DTV_Player_DVB.h"
#include "MSrv_Factory_Cmd.h"

namespace {
constexpr MAPI_U8 kServiceTypeTv = 1;
}

MAPI_BOOL FactoryManager::OnEvent_DirectTune(void*, void* p2, void*) {
    FACTORY_TRACE();
    m_u8DirectTuneSubCode = static_cast<MAPI_U8>(reinterpret_cast<uintptr_t>(p2));
    ResetState();
    m_bDVBCScanWatch = 1;
    const DirectTuneRow* row = FindDirectTune(m_u8DirectTuneSubCode);
    if (row == nullptr) {
        return 0;
    }
    NotifyUI(0, "HideAllUIExcept", row->page);
    NotifyUI(0, row->cmd, row->data);
    if (row->startsCableRun) {
        m_pFactoryCmd->FT_DVBC_Manual_Tuning_ZYT();
    }
    // The scan monitor sees the player's scan stop through this registration.
    MSrv_DTV_Player_DVB* dtv = MSrv_Control::GetInstance()->GetMSrvDtv();
    if (dtv != nullptr) {
        dtv->AddEventRecipient(this);
    }
    if (row->timer != 0) {
        puts(row->delayLine);
        KillTimer(row->timer);
        SetTimer(row->delayMs, row->timer, E_TIMER_ONESHOT);
    }
    return 1;
}

MAPI_BOOL FactoryManager::OnTimer_DirectTune(void*, void*, void*) {
    const DirectTuneRow* row = FindDirectTune(m_u8DirectTuneSubCode);
    if (row == nullptr) {
        return 0;
    }
    NotifyUI(0, (std::string(row->cmd) + "-Show").c_str(), 0);
    // A failed query leaves the panel state to the host.
    if (row->playsProgram && !PlayFirstProgram("~~ Play Program 1")) {
        return 0;
    }
    InfoZYTAppMgr(0);
    InfoWebAppMgrHideShowPage(0, 1);
    return 1;
}

MAPI_BOOL FactoryManager::PlayFirstProgram(const char* line) {
    MSrv_DTV_Player_DVB* dtv = MSrv_Control::GetInstance()->GetMSrvDtv();
    ST_DTV_PROGRAM_INFO program{};
    program.u32Number = 1;
    if (dtv == nullptr || !dtv->GetProgramInfo(kServiceTypeTv, &program)) {
        puts("~~~ CM Query fail *****");
        return 0;
    }
    puts(line);
    dtv->ProgramSel(program.u32Number, program.u8ServiceType, 1, 0);
    return 1;
}
