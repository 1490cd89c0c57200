// Native on-screen text: the few marks drawn straight into a DirectFB window of our
// own, above the picture, when the web UI is absent or must not be disturbed.
#include <cstdio>

#include "FactoryDirectFB.h"
#include "FactoryLog.h"
#include "FactoryManager.h"
#include "MSrv_Factory_Cmd.h"
#include "TVManager.h"
#include "TvHost.h"

namespace {

constexpr const char* kFontPath = "/applications/rc/rc/DejaVuSans.ttf";
constexpr int kScreenWidth = 1280;
constexpr int kScreenHeight = 720;
// The key-writing line always sits in this box, whatever position the caller gives.
constexpr ST_WIDGET_POSITION kKeyWritingBox = {40, 40, 800, 80};
constexpr unsigned long kKeyWritingText = 0xFF000000;
constexpr unsigned long kKeyWritingBoxColour = 0xFFC0C0C0;
constexpr unsigned short kKeyWritingSize = 30;

// Key-writing lines by status; the index is the status.
constexpr const char* kKeyWritingLines[] = {
    "MAC/CI/PVR/WDV/HC2/NFX Key Writing ...",
    "MAC/CI/PVR/WDV/HC2/NFX Key Success",
    "MAC/CI/PVR/WDV/HC2/NFX Key Fail",
};

DFBResult SetArgb(IDirectFBSurface* surface, unsigned long argb) {
    return surface->SetColor(surface, (argb >> 16) & 0xFF, (argb >> 8) & 0xFF, argb & 0xFF,
                             (argb >> 24) & 0xFF);
}

}  // namespace

IDirectFBSurface* FactoryManager::GetDFBSurface() {
    IDirectFBDisplayLayer* layer = nullptr;
    if (m_pDfb == nullptr || m_pDfb->GetDisplayLayer(m_pDfb, DLID_PRIMARY, &layer) != DFB_OK) {
        FACTORY_LOG(FACTORY_LOG_INFO, "IDirectFB::GetDisplayLayer() failed ");
        return nullptr;
    }
    bool created = false;
    if (m_pDfbWindow == nullptr) {
        DFBWindowDescription desc{};
        desc.flags = static_cast<DFBWindowDescriptionFlags>(
            DWDESC_CAPS | DWDESC_WIDTH | DWDESC_HEIGHT | DWDESC_PIXELFORMAT | DWDESC_POSX |
            DWDESC_POSY | DWDESC_SURFACE_CAPS);
        desc.caps = DWCAPS_ALPHACHANNEL;
        desc.width = kScreenWidth;
        desc.height = kScreenHeight;
        desc.pixelformat = DSPF_ARGB;
        desc.posx = 0;
        desc.posy = 0;
        desc.surface_caps = DSCAPS_DOUBLE;
        if (layer->CreateWindow(layer, &desc, &m_pDfbWindow) != DFB_OK) {
            m_pDfbWindow = nullptr;
            layer->Release(layer);
            FACTORY_LOG(FACTORY_LOG_INFO, "CreateWindow failed ");
            return nullptr;
        }
        FACTORY_LOG(FACTORY_LOG_INFO, "CreateWindow");
        created = true;
    }
    layer->Release(layer);  // the window stays on the layer without our reference

    IDirectFBSurface* surface = nullptr;
    if (m_pDfbWindow->GetSurface(m_pDfbWindow, &surface) != DFB_OK) {
        return nullptr;
    }
    if (created) {
        // A new window's buffers hold whatever memory they were given: start both
        // transparent, or old pixels would show around the first mark.
        surface->Clear(surface, 0, 0, 0, 0);
        surface->Flip(surface, nullptr, DSFLIP_NONE);
        surface->Clear(surface, 0, 0, 0, 0);
    }
    m_pDfbWindow->SetOpacity(m_pDfbWindow, 0xFF);
    // Upper stacking class: the marks stay above the video and the host's windows.
    m_pDfbWindow->SetStackingClass(m_pDfbWindow, DWSC_UPPER);
    return surface;
}

void FactoryManager::DrawNativeText(ST_WIDGET_POSITION pos, const unsigned char* text,
                                    unsigned long colour, const unsigned long* boxColour,
                                    unsigned short size) {
    DFBFontDescription desc{};
    desc.flags = DFDESC_HEIGHT;
    desc.height = size;
    IDirectFBFont* font = nullptr;
    const std::string fontPath = TvHost_Path(kFontPath);
    // A set without the DirectFB interface cannot make a font either.
    const DFBResult made =
        m_pDfb == nullptr ? DFB_NOIMPL : m_pDfb->CreateFont(m_pDfb, fontPath.c_str(), &desc, &font);
    IDirectFBSurface* surface = GetDFBSurface();
    if (made != DFB_OK) {
        FACTORY_LOG(FACTORY_LOG_INFO, "create font fail. %s : %s", kFontPath,
                    DirectFBErrorString(made));
        if (surface != nullptr) {
            surface->Release(surface);
        }
        return;
    }
    // No surface: GetDFBSurface has said why; nothing to draw on.
    if (surface == nullptr) {
        font->Release(font);
        return;
    }

    const char* failure = nullptr;
    if (surface->SetFont(surface, font) != DFB_OK) {
        failure = "set font fail.";
    } else if (boxColour != nullptr &&
               (SetArgb(surface, *boxColour) != DFB_OK ||
                surface->DrawRectangle(surface, kKeyWritingBox.x, kKeyWritingBox.y,
                                       kKeyWritingBox.width, kKeyWritingBox.height) != DFB_OK ||
                surface->FillRectangle(surface, kKeyWritingBox.x, kKeyWritingBox.y,
                                       kKeyWritingBox.width, kKeyWritingBox.height) != DFB_OK)) {
        failure = "set color fail.";
    } else if (SetArgb(surface, colour) != DFB_OK) {
        failure = "set color fail.";
    } else if (surface->DrawString(surface, reinterpret_cast<const char*>(text), -1, pos.x, pos.y,
                                   DSTF_TOPLEFT) != DFB_OK) {
        failure = "draw string fail.";
    }
    if (failure != nullptr) {
        FACTORY_LOG(FACTORY_LOG_INFO, "%s", failure);
    } else {
        surface->Flip(surface, nullptr, DSFLIP_WAITFORSYNC);
    }
    font->Release(font);
    surface->Release(surface);
}

void FactoryManager::DrawText(ST_WIDGET_POSITION pos, const unsigned char* text,
                              unsigned long colour, unsigned short size) {
    DrawNativeText(pos, text, colour, nullptr, size);
}

void FactoryManager::DrawTextForKeywriting(ST_WIDGET_POSITION pos, const unsigned char* text,
                                           unsigned long textColour, unsigned long boxColour,
                                           unsigned short size) {
    DrawNativeText(pos, text, textColour, &boxColour, size);
}

void FactoryManager::ClearFactoryUiNative() {
    if (m_pDfbWindow == nullptr) {
        FACTORY_LOG(FACTORY_LOG_ERROR, "WidgetManager::clear - m_DFBWindow NULL");
        return;
    }
    FACTORY_LOG(FACTORY_LOG_INFO, "WidgetManager::clear - SetOpacity[0x00]");
    m_pDfbWindow->SetOpacity(m_pDfbWindow, 0x00);
    IDirectFBSurface* surface = nullptr;
    if (m_pDfbWindow->GetSurface(m_pDfbWindow, &surface) != DFB_OK) {
        return;
    }
    // Clear both buffers, so the next drawing starts from an empty window.
    surface->Clear(surface, 0, 0, 0, 0);
    surface->Flip(surface, nullptr, DSFLIP_WAITFORSYNC);
    surface->Clear(surface, 0, 0, 0, 0);
    surface->Release(surface);
}

void FactoryManager::ShowKeyWritingIcon(MAPI_BOOL on, MAPI_U16 status) {
    FACTORY_TRACE();
    printf("~~ [MSrv_Factory_Cmd::ShowKeyWritingIcon ] \n ");
    if (!on) {
        m_bKeyWritingResult = 0;
        ClearFactoryUiNative();
        // Ending key writing must not take the M-mode mark off the line's screen.
        if (m_pFactoryCmd->GetFactoryMmodeStatus()) {
            TVManager::GetInstance()->getFactoryManager()->ShowMModeIcon(1);
        }
        return;
    }
    if (status >= sizeof(kKeyWritingLines) / sizeof(kKeyWritingLines[0])) {
        return;
    }
    m_bKeyWritingResult = status == 0 ? 0 : 1;
    DrawTextForKeywriting(kKeyWritingBox,
                          reinterpret_cast<const unsigned char*>(kKeyWritingLines[status]),
                          kKeyWritingText, kKeyWritingBoxColour, kKeyWritingSize);
}

void FactoryManager::ShowOomAlertMessage() {
    const ST_WIDGET_POSITION pos = {250, 300, 900, 500};
    DrawText(pos, reinterpret_cast<const unsigned char*>(" The system has run out of memory."),
             0xFFFF0000, 40);
}
