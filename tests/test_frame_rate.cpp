// The frame-rate controller's arithmetic and cap, on a scripted clock, and
// the engine's clock and random numbers.
#include <gtest/gtest.h>

#include <cstdint>

#include "VXFrameRateController.h"
#include "VXPlatform.h"
#include "VXSeam.h"
#include "VXSystem.h"

namespace {

// A clock the test moves by hand; every turn of the busy wait adds a tick.
uint64_t gNow = 0;
uint64_t gFrequency = 1000000; // microseconds

class FrameRate : public ::testing::Test {
  protected:
    void SetUp() override {
        gNow = 5000000;
        gFrequency = 1000000;
        gVXPlatformClock =
            VXPlatformClock{[] { return gNow; }, [] { return gFrequency; }, [] { ++gNow; }};
    }
    void TearDown() override { gVXPlatformClock = gVXPlatformRealClock; }
    // One frame whose work takes `workTicks` microseconds.
    double Frame(uint64_t workTicks) {
        VXFrameRateControllerStart();
        gNow += workTicks;
        VXFrameRateControllerEnd();
        return VXFrameRateControllerGetFrameTime();
    }
};

TEST_F(FrameRate, InitAndResetStartAtTheMinimumFrameTime) {
    VXFrameRateControllerInit(60);
    EXPECT_DOUBLE_EQ(VXFrameRateControllerGetFrameTime(), 1.0 / 60.0);
    EXPECT_EQ(VXFrameRateControllerGetFrameCount(), 0u);
    Frame(40000);
    Frame(40000);
    EXPECT_EQ(VXFrameRateControllerGetFrameCount(), 2u);
    VXFrameRateControllerReset();
    EXPECT_DOUBLE_EQ(VXFrameRateControllerGetFrameTime(), 1.0 / 60.0);
    EXPECT_DOUBLE_EQ(VXFrameRateControllerGetFrameRate(), 60.0);
    EXPECT_EQ(VXFrameRateControllerGetFrameCount(), 0u);
}

// 1/60 s is 16666.67 us: the wait ends on the first whole microsecond past
// it; a longer frame is kept whole. Without a cap the frame is its work; the
// counter's frequency is read at every frame start.
TEST_F(FrameRate, ShortFramesAreStretchedToOneSixtiethLongOnesKeptWhole) {
    struct Case {
        const char* name;
        unsigned cap;
        uint64_t frequency, work; // ticks of work in the frame
        double frameTime;
    } cases[] = {
        {"no work", 60, 1000000, 0, 0.016667},
        {"half a frame", 60, 1000000, 8000, 0.016667},
        {"exactly one frame", 60, 1000000, 16667, 0.016667},
        {"a stall of 0.1 s", 60, 1000000, 100000, 0.1},
        {"a stall of 2 s", 60, 1000000, 2000000, 2.0},
        {"no cap", 0, 1000000, 4000, 0.004},
        {"no cap, no work", 0, 1000000, 0, 0.0},
        {"no cap, 1 kHz counter", 0, 1000, 500, 0.5},
        {"no cap, 2 kHz counter", 0, 2000, 500, 0.25},
    };
    for (const Case& c : cases) {
        VXFrameRateControllerInit(c.cap);
        gFrequency = c.frequency;
        const double t = Frame(c.work);
        EXPECT_NEAR(t, c.frameTime, 1e-9) << c.name;
        if (t > 0) {
            EXPECT_NEAR(VXFrameRateControllerGetFrameRate(), 1.0 / t, 1e-9) << c.name;
        }
    }
}

TEST_F(FrameRate, EngineClockSplitsWholeSecondsExactly) {
    gFrequency = 3;
    gNow = 10; // 3 whole seconds and one third
    double stored = 0.0;
    EXPECT_DOUBLE_EQ(VXGetTime(&stored), 10.0 / 3.0);
    EXPECT_DOUBLE_EQ(stored, 10.0 / 3.0);
    EXPECT_DOUBLE_EQ(VXGetTime(nullptr), 10.0 / 3.0);
    // A counter far past 2^53 ticks still gives its fraction of a second.
    // (Dividing the whole count as a double would be off by up to 0.128 s here.)
    gFrequency = 1000;
    gNow = (uint64_t(1) << 50) * 1000 + 250;
    EXPECT_EQ(VXGetTime(nullptr), 1125899906842624.25);
}

TEST(VirtualClock, EveryFrameLastsExactlyOneSixtiethAndNothingWaits) {
    VXSeamUseVirtualClock(true);
    VXFrameRateControllerInit(60);
    for (int i = 0; i < 1000; ++i) {
        VXFrameRateControllerStart();
        VXFrameRateControllerEnd();
        ASSERT_EQ((float)VXFrameRateControllerGetFrameTime(), 1.0f / 60.0f) << "frame " << i;
    }
    EXPECT_EQ(VXFrameRateControllerGetFrameCount(), 1000u);
    VXSeamUseVirtualClock(false);
}

TEST(RandomNumbers, FollowTheDesktopRuntimesSequenceAndRange) {
    // The first draws after seeding with 1, as the desktop runtime gives them.
    VXSeedRand(1);
    const int expected[] = {41, 18467, 6334, 26500, 19169, 15724, 11478, 29358};
    for (int e : expected) EXPECT_EQ(VXRand(), e);
    // Both ends of VXRandFloat's range come up.
    bool sawZero = false, sawOne = false;
    VXSeedRand(12345);
    for (int i = 0; i < 2000000 && !(sawZero && sawOne); ++i) {
        float f = VXRandFloat();
        ASSERT_GE(f, 0.0f);
        ASSERT_LE(f, 1.0f);
        sawZero = sawZero || f == 0.0f;
        sawOne = sawOne || f == 1.0f;
    }
    EXPECT_TRUE(sawZero);
    EXPECT_TRUE(sawOne);
}

} // namespace
