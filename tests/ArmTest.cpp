// What differs between the PC and a set's 32-bit ARM userland (armhf: 32-bit long,
// unsigned char, 32-bit time_t) and must not change what the set does. These run in
// both builds; each fails on one architecture if the code assumes the other's widths.
#include <gtest/gtest.h>
#include <sys/types.h>

#include "FactoryManager.h"
#include "MTypes.h"
#include "SetFixture.h"
#include "SimWebApp.h"
#include "UiNotes.h"

namespace {

// A 32-bit program whose calls reach a 64-bit kernel directly (qemu-user) gets 64-bit
// folder offsets and inode numbers; with a 32-bit off_t readdir fails with EOVERFLOW
// and a wipe of /OAD/* would see an empty folder.
static_assert(sizeof(off_t) == 8, "build with _FILE_OFFSET_BITS=64 (CMakeLists.txt)");
static_assert(sizeof(ino_t) == 8, "build with _FILE_OFFSET_BITS=64 (CMakeLists.txt)");

class ArmTest : public SetTest {
protected:
    void SetUp() override {
        SetTest::SetUp();
        FactoryManager::SetFactoryModeState(1);
    }
    sim::WebAppState& WebApp() { return Tv().Get<sim::WebAppState>(); }
};

// Every integer type the pages are sent goes out with its value, whatever the
// width of long: a MAPI_U32 over 2^31 stays positive on armhf, a MAPI_S8 negative.
TEST_F(ArmTest, IntegersReachThePageWithTheirValueWhateverTheWidthOfLong) {
    Fm().NotifyUI(0, "U32", static_cast<MAPI_U32>(0xFFFFFFFFu));
    Fm().NotifyUI(0, "UL", 0x80000000UL);
    Fm().NotifyUI(0, "S8", static_cast<MAPI_S8>(-128));
    Fm().NotifyUI(0, "U8", static_cast<MAPI_U8>(0xFF));
    Fm().NotifyUI(0, "L", -1L);
    Fm().NotifyUI(0, "U64", static_cast<MAPI_U64>(1) << 40);
    EXPECT_EQ(UiNotes(),
              (NoteList{Num("U32", 4294967295LL), Num("UL", 2147483648LL), Num("S8", -128),
                        Num("U8", 255), Num("L", -1), Num("U64", 1LL << 40)}));
    EXPECT_EQ(WebApp().Notes().at(0).text, "{ \"cmd\": \"U32\", \"data\": 4294967295 }");
}

}  // namespace
