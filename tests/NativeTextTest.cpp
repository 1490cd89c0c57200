// Native on-screen text: what the DirectFB window shows after each drawing routine,
// read back from the simulated display.
#include <gtest/gtest.h>

#include <filesystem>

#include "FactoryKeyCodes.h"
#include "SetFixture.h"
#include "SimDisplay.h"
#include "SimMMode.h"

namespace {

constexpr uint32_t kTransparent = 0x00000000;
constexpr uint32_t kGrey = 0xFFC0C0C0;

class NativeTextTest : public SetTest {
protected:
    sim::DisplayState& Display() { return Tv().Get<sim::DisplayState>(); }

    // Pixels of the frame inside the rectangle that satisfy the test.
    template <class Pred>
    int Count(const sim::Frame& f, int x0, int y0, int w, int h, Pred pred) {
        int n = 0;
        for (int y = y0; y < y0 + h; ++y) {
            for (int x = x0; x < x0 + w; ++x) {
                n += pred(f.At(x, y)) ? 1 : 0;
            }
        }
        return n;
    }
    static bool Opaque(uint32_t px) { return (px >> 24) == 0xFF; }
    static bool Red(uint32_t px) { return px == 0xFFFF0000; }
    static bool Dark(uint32_t px) {
        return Opaque(px) && ((px >> 16) & 0xFF) < 0x40 && ((px >> 8) & 0xFF) < 0x40 &&
               (px & 0xFF) < 0x40;
    }
    int Visible(const sim::Frame& f) {
        return Count(f, 0, 0, f.width, f.height, [](uint32_t px) { return px != kTransparent; });
    }
};

TEST_F(NativeTextTest, MModeMarkIsRedTextInsideItsBoxOnAnOtherwiseEmptyWindow) {
    Fm().ShowMModeIcon(1);
    const sim::Frame f = Display().NativeFrame();
    ASSERT_EQ(f.width, 1280);
    ASSERT_EQ(f.height, 720);
    const int inBox = Count(f, 1200, 10, 50, 50, Red);
    EXPECT_GT(inBox, 50) << "the M is drawn in red at 1200,10";
    EXPECT_EQ(Visible(f), Count(f, 1200, 10, 50, 50, [](uint32_t px) { return px != 0; }))
        << "nothing outside the M box";
    EXPECT_EQ(Display().NativeOpacity(), 255);
    EXPECT_TRUE(Journal().HasLog("CreateWindow"));
}

TEST_F(NativeTextTest, KeyWritingLinesAreDarkTextOnTheFixedGreyBox) {
    Fm().ShowKeyWritingIcon(1, 0);
    sim::Frame f = Display().NativeFrame();
    const int box = 800 * 80;
    EXPECT_EQ(f.At(40, 40), kGrey);
    EXPECT_EQ(f.At(839, 119), kGrey);
    EXPECT_EQ(f.At(840, 120), kTransparent) << "the box ends at 40+800, 40+80";
    const int dark = Count(f, 40, 40, 800, 80, Dark);
    EXPECT_GT(dark, 300) << "black text in the box";
    EXPECT_EQ(Count(f, 40, 40, 800, 80, Opaque), box) << "text and box fill the box";
    EXPECT_EQ(Visible(f), box);

    // The box does not follow the caller's position; the text does.
    Fm().ClearFactoryUiNative();
    Fm().DrawTextForKeywriting({300, 400, 10, 10}, reinterpret_cast<const unsigned char*>("X"),
                               0xFF000000, kGrey, 30);
    f = Display().NativeFrame();
    EXPECT_EQ(f.At(41, 41), kGrey);
    EXPECT_GT(Count(f, 300, 400, 40, 40, Dark), 20);
}

TEST_F(NativeTextTest, ClearingEmptiesBothBuffersAndHidesTheWindow) {
    Fm().ShowKeyWritingIcon(1, 2);
    ASSERT_GT(Visible(Display().NativeFrame()), 0);
    Fm().ClearFactoryUiNative();
    EXPECT_EQ(Visible(Display().NativeFrame()), 0);
    EXPECT_EQ(Display().NativeOpacity(), 0);
    EXPECT_TRUE(Journal().HasLog("WidgetManager::clear - SetOpacity[0x00]"));
    // The next drawing shows the window again and starts from empty.
    Fm().ShowOomAlertMessage();
    const sim::Frame f = Display().NativeFrame();
    EXPECT_EQ(Display().NativeOpacity(), 255);
    EXPECT_EQ(Visible(f), Count(f, 250, 300, 900, 60, [](uint32_t px) { return px != 0; }));
    EXPECT_GT(Count(f, 250, 300, 900, 60, Red), 200);
}

TEST_F(NativeTextTest, ClearingBeforeAnyDrawingOnlyLogs) {
    Fm().ClearFactoryUiNative();
    EXPECT_TRUE(Journal().HasLog("WidgetManager::clear - m_DFBWindow NULL"));
    EXPECT_FALSE(Display().HasNativeWindow());
}

struct KeyWritingCase {
    MAPI_BOOL on;
    MAPI_U16 status;
    bool resultShownAfter;  // the exit key then closes the result
    bool drawn;
};

class KeyWritingIconTest : public NativeTextTest,
                           public testing::WithParamInterface<KeyWritingCase> {};

TEST_P(KeyWritingIconTest, StatusSetsTheResultMarkAndDrawsItsLine) {
    const KeyWritingCase c = GetParam();
    Fm().ShowKeyWritingIcon(1, 1);  // an earlier result is marked
    Fm().ClearFactoryUiNative();
    testing::internal::CaptureStdout();
    Fm().ShowKeyWritingIcon(c.on, c.status);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "~~ [MSrv_Factory_Cmd::ShowKeyWritingIcon ] \n ");
    EXPECT_EQ(Display().NativeFrame().At(40, 40) == kGrey, c.drawn);
    EXPECT_TRUE(
        Journal().HasLog("void FactoryManager::ShowKeyWritingIcon(MAPI_BOOL, MAPI_U16)[1615]"));

    Journal().Clear();
    Fm().FactoryDoKeyAction(FactoryKey::Exit);
    EXPECT_EQ(Journal().HasLog("Factory don't process the key."), !c.resultShownAfter);
}

INSTANTIATE_TEST_SUITE_P(Statuses, KeyWritingIconTest,
                         testing::Values(KeyWritingCase{1, 0, false, true},
                                         KeyWritingCase{1, 1, true, true},
                                         KeyWritingCase{1, 2, true, true},
                                         KeyWritingCase{1, 3, true, false},  // nothing, mark kept
                                         KeyWritingCase{0, 3, false, false}));

TEST_F(NativeTextTest, EndingKeyWritingInMModeLeavesTheRedMark) {
    Tv().Get<sim::MModeState>().mMode = true;
    Fm().ShowKeyWritingIcon(1, 1);
    Fm().ShowKeyWritingIcon(0, 3);
    const sim::Frame f = Display().NativeFrame();
    EXPECT_GT(Count(f, 1200, 10, 50, 50, Red), 50);
    EXPECT_EQ(f.At(40, 40), kTransparent) << "the key-writing line is gone";
    EXPECT_EQ(Display().NativeOpacity(), 255);
}

TEST_F(NativeTextTest, AMissingFontOrDirectFBIsLoggedAndNothingIsDrawn) {
    Fm();  // the set has started, font in place
    std::filesystem::remove(Tv().GetRoot().Map(sim::DisplayState::kFontPath));
    Fm().ShowOomAlertMessage();
    EXPECT_TRUE(Journal().HasLog("create font fail. /applications/rc/rc/DejaVuSans.ttf : "));
    EXPECT_EQ(Visible(Display().NativeFrame()), 0);

    Tv().Reset();
    Display().present = false;
    Fm().ShowMModeIcon(1);
    EXPECT_TRUE(Journal().HasLog("IDirectFB::GetDisplayLayer() failed "));
    EXPECT_FALSE(Display().HasNativeWindow());
}

TEST_F(NativeTextTest, TheWindowIsWrittenAsPngAndPpmUnderTheRoot) {
    EXPECT_FALSE(Display().WritePng("/tmp/native.png")) << "no window yet";
    Fm().ShowMModeIcon(1);
    ASSERT_TRUE(Display().DumpPpm("/tmp/native.ppm"));
    EXPECT_EQ(Tv().GetRoot().ReadFile("/tmp/native.ppm").size(), 16 + 1280 * 720 * 3);

    ASSERT_TRUE(Display().WritePngIfChanged("/tmp/native.png"));
    EXPECT_FALSE(Display().WritePngIfChanged("/tmp/native.png")) << "unchanged picture";
    const std::string png = Tv().GetRoot().ReadFile("/tmp/native.png");
    EXPECT_EQ(png.compare(0, 8, "\x89PNG\r\n\x1a\n"), 0);
    EXPECT_EQ(png.compare(png.size() - 8, 4, "IEND"), 0);
    Fm().ClearFactoryUiNative();
    EXPECT_TRUE(Display().WritePngIfChanged("/tmp/native.png"));
}

}  // namespace
