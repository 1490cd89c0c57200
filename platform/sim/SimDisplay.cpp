#include "SimDisplay.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>

#include "MSystem.h"
#include "SimDirectFB.h"

namespace sim {

namespace {

constexpr const char* kHostFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

// DirectFB lives once per process: creating and tearing it down per set is slow and
// not what a set does. The windows of a set are destroyed when the next set starts.
class Display {
public:
    static Display& Instance() {
        static Display* display = new Display();  // never torn down: DirectFB outlives us
        return *display;
    }

    IDirectFB* Dfb() {
        std::lock_guard<std::mutex> lock(m_mutex);
        return m_dfb;
    }

    // Every window made since the last probe; the library is the only maker.
    IDirectFBWindow* NewestWindow() {
        std::lock_guard<std::mutex> lock(m_mutex);
        Probe();
        return m_windows.empty() ? nullptr : m_windows.back();
    }

    void DropWindows() {
        std::lock_guard<std::mutex> lock(m_mutex);
        Probe();
        for (IDirectFBWindow* window : m_windows) {
            window->Destroy(window);
            window->Release(window);
        }
        m_windows.clear();
    }

private:
    Display() {
        // Headless, and no touching of the host's terminals, devices or signals. The
        // options go in through DFBARGS, and DirectFB gets an argument list of its own:
        // without one it reads and echoes the host program's command line.
        setenv("DFBARGS", "system=dummy,no-vt,quiet,no-sighandler,no-cursor", 0);
        static char name[] = "factory-set";
        static char* args[] = {name, nullptr};
        int argc = 1;
        char** argv = args;
        if (DirectFBInit(&argc, &argv) != DFB_OK) {
            return;
        }
        for (const char* option : {"no-vt", "quiet", "no-sighandler", "no-cursor"}) {
            DirectFBSetOption(option, nullptr);
        }
        DirectFBSetOption("system", "dummy");
        // The OMAP graphics driver (ARM builds) probes for its device on any system and
        // crashes on the dummy one, which has none.
        DirectFBSetOption("disable-module", "omap");
        if (DirectFBCreate(&m_dfb) != DFB_OK) {
            std::fprintf(stderr, "sim: DirectFB cannot start; native text is off\n");
            m_dfb = nullptr;
            return;
        }
        if (m_dfb->GetDisplayLayer(m_dfb, DLID_PRIMARY, &m_layer) != DFB_OK) {
            m_layer = nullptr;
        }
    }

    void Probe() {
        if (m_layer == nullptr) {
            return;
        }
        for (;;) {
            IDirectFBWindow* window = nullptr;
            if (m_layer->GetWindow(m_layer, m_lastId + 1, &window) != DFB_OK) {
                return;
            }
            ++m_lastId;
            m_windows.push_back(window);
        }
    }

    std::mutex m_mutex;
    IDirectFB* m_dfb = nullptr;
    IDirectFBDisplayLayer* m_layer = nullptr;
    DFBWindowID m_lastId = 0;
    std::vector<IDirectFBWindow*> m_windows;
};

uint64_t Hash(const Frame& frame) {
    uint64_t h = 1469598103934665603ULL;
    for (uint32_t px : frame.argb) {
        h = (h ^ px) * 1099511628211ULL;
    }
    return h;
}

bool WriteHostFile(const std::string& tvPath, const std::string& bytes) {
    const std::filesystem::path host = Set::Instance().GetRoot().Map(tvPath);
    std::error_code ec;
    std::filesystem::create_directories(host.parent_path(), ec);
    std::ofstream out(host, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out);
}

}  // namespace

uint32_t Frame::At(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height) {
        return 0;
    }
    return argb[static_cast<size_t>(y) * width + x];
}

DisplayState::DisplayState() {
    Display::Instance().DropWindows();
    std::error_code ec;
    const std::filesystem::path font = Set::Instance().GetRoot().Map(kFontPath);
    std::filesystem::create_directories(font.parent_path(), ec);
    std::filesystem::copy_file(kHostFont, font, std::filesystem::copy_options::overwrite_existing,
                               ec);
}

IDirectFB* DisplayState::Dfb() { return present ? Display::Instance().Dfb() : nullptr; }

IDirectFBWindow* DisplayState::NativeWindow() { return Display::Instance().NewestWindow(); }

bool DisplayState::HasNativeWindow() { return NativeWindow() != nullptr; }

int DisplayState::NativeOpacity() {
    IDirectFBWindow* window = NativeWindow();
    u8 opacity = 0;
    if (window == nullptr || window->GetOpacity(window, &opacity) != DFB_OK) {
        return -1;
    }
    return opacity;
}

Frame DisplayState::NativeFrame() {
    Frame frame;
    IDirectFBWindow* window = NativeWindow();
    IDirectFBSurface* surface = nullptr;
    if (window == nullptr || window->GetSurface(window, &surface) != DFB_OK) {
        return frame;
    }
    void* data = nullptr;
    int pitch = 0;
    surface->GetSize(surface, &frame.width, &frame.height);
    if (surface->Lock(surface, DSLF_READ, &data, &pitch) == DFB_OK) {
        frame.argb.resize(static_cast<size_t>(frame.width) * frame.height);
        for (int y = 0; y < frame.height; ++y) {
            const auto* row = reinterpret_cast<const uint32_t*>(static_cast<const char*>(data) +
                                                                static_cast<size_t>(y) * pitch);
            std::copy(row, row + frame.width,
                      frame.argb.begin() + static_cast<size_t>(y) * frame.width);
        }
        surface->Unlock(surface);
    } else {
        frame = Frame();
    }
    surface->Release(surface);
    return frame;
}

bool DisplayState::DumpPpm(const std::string& tvPath) {
    const Frame frame = NativeFrame();
    if (frame.Empty()) {
        return false;
    }
    std::string bytes =
        "P6\n" + std::to_string(frame.width) + " " + std::to_string(frame.height) + "\n255\n";
    bytes.reserve(bytes.size() + frame.argb.size() * 3);
    for (uint32_t px : frame.argb) {
        bytes += static_cast<char>(px >> 16);
        bytes += static_cast<char>(px >> 8);
        bytes += static_cast<char>(px);
    }
    return WriteHostFile(tvPath, bytes);
}

bool DisplayState::WritePng(const std::string& tvPath) {
    const std::string png = EncodePng(NativeFrame());
    return !png.empty() && WriteHostFile(tvPath, png);
}

bool DisplayState::WritePngIfChanged(const std::string& tvPath) {
    const Frame frame = NativeFrame();
    if (frame.Empty()) {
        return false;
    }
    const uint64_t hash = Hash(frame);
    if (m_written && hash == m_lastWrittenHash) {
        return false;
    }
    const std::string png = EncodePng(frame);
    if (png.empty() || !WriteHostFile(tvPath, png)) {
        return false;
    }
    m_written = true;
    m_lastWrittenHash = hash;
    return true;
}

}  // namespace sim

IDirectFB* MSystem::GetDirectFB() { return sim::Set::Instance().Get<sim::DisplayState>().Dfb(); }
