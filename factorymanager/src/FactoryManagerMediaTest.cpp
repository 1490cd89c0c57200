// The USB media test: the set switches to the media source, plays the first file of
// drive 0 and pauses it; on exit it goes back to digital TV.
#include <cstdio>
#include <cstdlib>

#include "FactoryAssert.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_ChannelManager.h"
#include "MSrv_Control.h"
#include "MSrv_DTV_Player_DVB.h"
#include "MSrv_Factory_Cmd.h"
#include "MediaInitRecord.h"
#include "MediaManager.h"
#include "TVManager.h"

namespace {

constexpr MAPI_U32 kNoDrive = 0xFFFFFFFFu;
constexpr MAPI_U8 kDevice = 0;
constexpr MAPI_U8 kMediaType = 0;
constexpr MAPI_U32 kSetPlayFileFromPlayList = 52;
constexpr MAPI_U8 kPlayMode = 1;
constexpr MAPI_U8 kRouteCount = 4;
// Route types of the digital routes.
constexpr MAPI_U8 kDigitalRouteTypes[] = {1, 32};
// Service staff find the assertion by the line of the set's own build.
constexpr int kServiceCountAssertLine = 18411;

void Log(const char* text) { FACTORY_LOG(FACTORY_LOG_INFO, "%s", text); }

// Gives up the browser after a failure, so that the next start finds it free.
void ReleaseBrowser(MediaManager& browser) {
    browser.unsetOnMediaEventListener(E_ZYT_MM_EVENT_ALL);
    browser.Deinit();
}

[[noreturn]] void AssertFail(const char* function) {
    FactoryAssert::Fail(FactoryAssert::kManagerStem, function, kServiceCountAssertLine);
}

}  // namespace

MAPI_BOOL FactoryManager::OnEvent_MediaPlayer(void*, void*, void*) {
    ResetState();
    m_bMediaPlayerMode = 1;
    m_pFactoryCmd->SetFactoryOSDStatus(1);
    InfoZYTAppMgr(1);
    InfoWebAppMgrHideShowPage(1, 1);
    if (m_pFactoryCmd->GetFactoryMmodeStatus()) {
        Log("(FACTORY:) M-Player On");
        printf("\n(FACTORY:) M-Player On \n");
    }
    MediaPlay();
    return 1;
}

MAPI_BOOL FactoryManager::MediaPlay() {
    TVManager::GetInstance()->setInputSource(E_ZYT_INPUT_SOURCE_STORAGE, 0);
    FACTORY_LOG(FACTORY_LOG_INFO, "EventTestClient::OpenMMBrowser_Init  eMediaType = %d",
                kMediaType);
    ST_ZYT_MEDIA_BROWSER_INIT setup;
    media::FillBrowserInit(setup);
    MediaManager* browser = MediaManager::GetInstance();
    if (browser == nullptr) {
        return 0;
    }
    if (browser->init(&setup) != 0) {
        Log("Init->fail ");
        ReleaseBrowser(*browser);
        return 0;
    }
    Log("Init->ok ");
    const MAPI_U32 drives = browser->getTotalDriveNum();
    if (drives != kNoDrive) {
        Log("Select Default Drive 0");
        browser->changeDrive(kDevice, 0);
    } else {
        Log("Select Default Drive 0 Error");
    }
    FACTORY_LOG(FACTORY_LOG_INFO, "GetTotalDriveNum [%d] ", static_cast<int>(drives));
    FACTORY_LOG(FACTORY_LOG_INFO, "Choose Media Type eMediaType=%d", kMediaType);
    if (browser->setCurrentMediaType(kMediaType) != 0) {
        Log("SetCurrentMediaType fail");
    }
    browser->clearPlayList();
    Log("Run");
    if (browser->run() != 0) {
        Log("Run fail");
    }
    FACTORY_LOG(FACTORY_LOG_INFO, "CurrentDriveIndex [%d] ",
                static_cast<int>(browser->getCurrentDriveIndex()));
    Log("Select File");
    // The folder's sub-folders come first; starting after them selects only files.
    for (MAPI_U32 i = browser->getCurrentFolderNumer(); i < browser->getTotalFileNumber(); ++i) {
        if (browser->setFileSelected(kDevice, kMediaType, i) == 0) {
            FACTORY_LOG(FACTORY_LOG_INFO, "Add to PlayList:%d", static_cast<int>(i));
        } else {
            FACTORY_LOG(FACTORY_LOG_INFO, "Cannot add to PlayList:%d", static_cast<int>(i));
        }
    }
    if (browser->executeCommand(kDevice, kSetPlayFileFromPlayList, 0, 0, 0) != 0) {
        Log("Cannot Set Play File from PlayList");
    }
    if (browser->setPlayMode(kDevice, kMediaType, kPlayMode) != 0) {
        Log("Cannot SetPlayMode!!");
    }
    const int played = browser->play(kDevice, kMediaType);
    Log(played == 0 ? "MMPlay ->ok " : "MMPlay ->fail ");
    // Paused, the first picture stands for the operator to judge.
    browser->pause(kDevice, kMediaType);
    if (played != 0) {
        ReleaseBrowser(*browser);
        return 0;
    }
    return 1;
}

MAPI_BOOL FactoryManager::OnEvent_MediaPlayerStop(void*, void*, void*) {
    ResetState();
    MediaStop();
    return 1;
}

MAPI_BOOL FactoryManager::MediaStop() {
    Log("~~ [FactoryManager::MediaStop]");
    Log("~~ 2 [FactoryManager::MediaStop]");
    FACTORY_LOG(FACTORY_LOG_INFO, "EventTestClient::OpenMMBrowser_Init  eMediaType = %d",
                kMediaType);
    ST_ZYT_MEDIA_BROWSER_INIT setup;
    media::FillBrowserInit(setup);
    Log("~~ 3[FactoryManager::MediaStop]");
    MediaManager* browser = MediaManager::GetInstance();
    // The browser is set up again so that it can be stopped whatever state it is in.
    const int initialised = browser != nullptr ? browser->init(&setup) : 1;
    Log("~~ 4[FactoryManager::MediaStop]");
    if (initialised != 0) {
        Log("Init->fail ");
    }
    Log("~~ 5[FactoryManager::MediaStop]");
    if (browser != nullptr) {
        browser->stop(kDevice, kMediaType);
        Log("~~ 5[FactoryManager::MediaStop]");
        browser->Deinit();
    }
    Log("~~ 7[FactoryManager::MediaStop]");

    TVManager::GetInstance()->setInputSource(E_ZYT_INPUT_SOURCE_DTV, 0);
    Log("~~ 8[FactoryManager::MediaStop]");
    MSrv_Control* control = MSrv_Control::GetInstance();
    control->SetInputSource(MAPI_INPUT_SOURCE_DTV, 1, 0, 0);
    const ST_MAPI_TV_INFO info = control->GetTVInfo();
    for (MAPI_U8 route = 0; route < kRouteCount; ++route) {
        for (MAPI_U8 type : kDigitalRouteTypes) {
            if (info.u8RouteType[route] == type) {
                control->SwitchMSrvDtvRoute(route);
            }
        }
    }

    long services = 0;
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ 1 DTV m_nServiceNum = %ld", services);
    MSrv_ChannelManager* channels = control->GetMSrvChannelManager();
    if (channels == nullptr || !channels->GetDtvServiceCount(&services)) {
        AssertFail(__PRETTY_FUNCTION__);
    }
    FACTORY_LOG(FACTORY_LOG_INFO, "~~ 2 DTV m_nServiceNum = %ld", services);
    if (services != 0) {
        MSrv_DTV_Player_DVB* player = control->GetMSrvDtv();
        if (player != nullptr) {
            player->PlayCurrentProgram(0);
        }
    }
    return 1;
}
