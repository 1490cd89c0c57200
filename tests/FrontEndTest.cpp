// The simulated front end as one state behind both record forms the platform offers,
// and the tuner rows asking for the demodulator only where they read it.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "FactoryManager.h"
#include "MSrv_DTV_Player_DVBS.h"
#include "MapiInputSource.h"
#include "SetFixture.h"
#include "SimFrontEnd.h"
#include "SimPlayers.h"

namespace {

class FrontEndTest : public HostTest {
protected:
    sim::FrontEndState& FrontEnd() { return Tv().Get<sim::FrontEndState>(); }
    // The demo set's route 2 is a satellite route.
    MSrv_DTV_Player_DVBS& SatellitePlayer() {
        FrontEnd().route = 2;
        auto* dvbs = dynamic_cast<MSrv_DTV_Player_DVBS*>(sim::CurrentDtvPlayer());
        EXPECT_NE(dvbs, nullptr);
        return *dvbs;
    }
};

TEST_F(FrontEndTest, BothRecordFormsOfTheSatelliteTheTransponderAndTheMuxReadOneState) {
    FrontEnd().satellites[1].transponders[0] = {12603000, 29900, 0};  // vertical
    FrontEnd().satellites[1].lnbNumber = 4;
    FrontEnd().currentSatellite = 1;
    FrontEnd().currentTransponder = 0;
    MSrv_DTV_Player_DVBS& dvbs = SatellitePlayer();

    ST_TRANSPONDER_INFO st{};
    ASSERT_EQ(dvbs.GetTransponderInfo(MAPI_U8{1}, MAPI_U16{0}, &st), 1);
    EXPECT_EQ(st.u32Frequency, 12603u);
    EXPECT_EQ(st.u32SymbolRate, 29900u);
    EXPECT_EQ(st.u8Polarity, E_DVBS_POLARITY_V);
    MS_TP_INFO ms{};
    ASSERT_TRUE(dvbs.GetTransponderInfo(1UL, 0UL, ms));
    EXPECT_EQ(ms.u32Frequency, 12603000u);
    EXPECT_EQ(ms.u8Polarity, 0);

    _DVB_MUXINFO mux{};
    ASSERT_EQ(dvbs.GetCurrentMuxInfo(mux), 1);
    EXPECT_EQ(mux.u32FrequencyKHz, 12603000u);
    EXPECT_EQ(mux.u16SymbolRate, 29900);
    EXPECT_EQ(mux.u8Polarity, 0);
    ST_DTV_MUX_INFO dtvMux{};
    ASSERT_EQ(dvbs.GetCurrentMuxInfo(&dtvMux), 1);
    EXPECT_EQ(dtvMux.u32Frequency, 12603000u);

    ST_DVBS_DEMOD_INFO demod{};
    ASSERT_EQ(dvbs.GetCurrProgramDemodInfo(&demod), 1);
    EXPECT_EQ(demod.s32Frequency, 12603 - 9750);
    EXPECT_EQ(demod.s32SymbolRate, 29900);

    ST_SATELLITE_INFO sat{};
    ASSERT_EQ(dvbs.GetSatelliteInfoByID(1, &sat), 1);
    EXPECT_EQ(sat.u8LNBNumber, 4);
    FrontEnd().unreadableSatellite = 1;
    MS_SAT_INFO named{};
    EXPECT_EQ(dvbs.GetSatelliteInfoByID(1, &sat), 0);
    EXPECT_FALSE(dvbs.GetSatelliteInfo(1UL, named));

    // The polarisation test writes the record; the ST_ form reads it back.
    ms.u8Polarity = 1;
    ASSERT_TRUE(dvbs.UpdateTransponderInfo(1UL, 0UL, ms));
    ASSERT_EQ(dvbs.GetTransponderInfo(MAPI_U8{1}, MAPI_U16{0}, &st), 1);
    EXPECT_EQ(st.u8Polarity, E_DVBS_POLARITY_H);
}

TEST_F(FrontEndTest, AMuxThatCannotBeReadFailsInEitherFormAndTheRfRecordStillReads) {
    FrontEnd().muxReadable = false;
    MSrv_DTV_Player_DVBS& dvbs = SatellitePlayer();
    _DVB_MUXINFO mux{};
    ST_DTV_MUX_INFO dtvMux{};
    EXPECT_EQ(dvbs.GetCurrentMuxInfo(mux), 0);
    EXPECT_EQ(dvbs.GetCurrentMuxInfo(&dtvMux), 0);
    ST_DTV_RF_INFO rf{};
    ASSERT_EQ(dvbs.GetCurrentRFInfo(&rf), 1);
    EXPECT_EQ(rf.u32Frequency, 11494000u);
}

// Which rows ask the player for its demodulator: only those that read it, and only on
// the branch that reads it. The tuner page redraws every second.
struct FetchCase {
    const char* name;
    MAPI_U8 routeSystem;  // 0: the analogue source
    const char* (FactoryManager::*row)();
    unsigned long fetches;
};

class DemodulatorFetchTest : public FrontEndTest, public testing::WithParamInterface<FetchCase> {};

TEST_P(DemodulatorFetchTest, OnlyARowThatReadsTheDemodulatorAsksForIt) {
    const FetchCase c = GetParam();
    if (c.routeSystem == 0) {
        Tv().Get<sim::PlayerState>().currentSource = MAPI_INPUT_SOURCE_ATV;
    } else {
        FrontEnd().routeTypes[FrontEnd().route] = c.routeSystem;
    }
    Fm();
    FrontEnd().demodulatorFetches = 0;
    (Fm().*c.row)();
    EXPECT_EQ(FrontEnd().demodulatorFetches, c.fetches);
}

using F = FactoryManager;
INSTANTIATE_TEST_SUITE_P(
    Rows, DemodulatorFetchTest,
    testing::Values(FetchCase{"TerrestrialSnr", 0x20, &F::GetTunerSNR, 1},
                    FetchCase{"TerrestrialBandwidth", 0x20, &F::GetBandwidth, 0},
                    FetchCase{"TerrestrialPower", 0x20, &F::GetTunerSignalPower, 0},
                    FetchCase{"TerrestrialSymbolRate", 0x20, &F::GetTunerSymbolRate, 0},
                    FetchCase{"SatelliteSnr", 0x40, &F::GetTunerSNR, 1},
                    FetchCase{"SatelliteBandwidth", 0x40, &F::GetBandwidth, 1},
                    FetchCase{"SatelliteSymbolRate", 0x40, &F::GetTunerSymbolRate, 0},
                    FetchCase{"SatelliteLnbNumber", 0x40, &F::GetTunerLNBNumber, 0},
                    FetchCase{"SatelliteLnbPolarity", 0x40, &F::GetTunerLNBPolarity, 0},
                    FetchCase{"AnalogueSnr", 0, &F::GetTunerSNR, 0},
                    FetchCase{"AnalogueModulation", 0, &F::GetTunerModulation, 0}),
    [](const testing::TestParamInfo<FetchCase>& info) { return std::string(info.param.name); });

TEST_F(FrontEndTest, TheCodeRateAsksForTheDemodulatorOnlyOnADigitalSource) {
    const char* hp = nullptr;
    const char* lp = nullptr;
    Tv().Get<sim::PlayerState>().currentSource = MAPI_INPUT_SOURCE_ATV;
    Fm();
    FrontEnd().demodulatorFetches = 0;
    ASSERT_EQ(Fm().GetTunerCodeRate(hp, lp), 1);
    EXPECT_STREQ(hp, "");
    EXPECT_EQ(FrontEnd().demodulatorFetches, 0u);
    Tv().Get<sim::PlayerState>().currentSource = MAPI_INPUT_SOURCE_DTV;
    ASSERT_EQ(Fm().GetTunerCodeRate(hp, lp), 1);
    EXPECT_EQ(FrontEnd().demodulatorFetches, 1u);
}

}  // namespace
