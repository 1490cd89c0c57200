// The simulated set's display: one DirectFB (dummy system, headless) per process,
// shared by every set, and a read-back of the library's native text window.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "SimSet.h"

struct _IDirectFB;
typedef struct _IDirectFB IDirectFB;
struct _IDirectFBWindow;
typedef struct _IDirectFBWindow IDirectFBWindow;

namespace sim {

// One ARGB frame (0xAARRGGBB per pixel, row by row).
struct Frame {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> argb;

    bool Empty() const { return argb.empty(); }
    // Outside the frame reads as transparent black.
    uint32_t At(int x, int y) const;
};

struct DisplayState : Area {
    // Where the library finds its font: Debian's DejaVuSans is copied there.
    static constexpr const char* kFontPath = "/applications/rc/rc/DejaVuSans.ttf";

    // A fresh set: the windows of earlier sets are gone and the font is in place.
    DisplayState();

    // Test control: a set whose DirectFB interface is absent.
    bool present = true;

    // The DirectFB main interface the platform hands out; null when absent.
    IDirectFB* Dfb();

    // The library's native window of this set, as last drawn; empty when none exists.
    Frame NativeFrame();
    bool HasNativeWindow();
    // The window's opacity (0 hidden, 255 shown); -1 when there is no window.
    int NativeOpacity();
    uint32_t Pixel(int x, int y) { return NativeFrame().At(x, y); }

    // Writes the native window under the set's root (TV paths): a binary PPM of the
    // colour channels, or an RGBA PNG. False when there is no window or no file.
    bool DumpPpm(const std::string& tvPath);
    bool WritePng(const std::string& tvPath);
    // The set cannot see DirectFB's flips; a host that wants a picture per flip
    // polls this after each step. Writes only when the picture changed.
    bool WritePngIfChanged(const std::string& tvPath);

private:
    IDirectFBWindow* NativeWindow();
    uint64_t m_lastWrittenHash = 0;
    bool m_written = false;
};

// Encodes an ARGB frame as an RGBA PNG (libpng); empty for an empty frame or when
// libpng fails.
std::string EncodePng(const Frame& frame);

}  // namespace sim
