// The frame-rate controller's arithmetic and cap, on a scripted clock, and
// the engine's clock and random numbers.
#include <gtest/gtest.h>

#include <cstdint>

#include "VXFrameRateController.h"
#include "VXPlatform.h"
#include "VXSeam.h"
#include "VXSystem.h"

namespace {

// A clock the test moves by hand; every turn of the busy wait adds `step`.
uint64_t gNow = 0;
uint64_t gStep = 1;
uint64_t gFrequency = 1000000; // microseconds
uint64_t FakeCounter() {
    return gNow;
}
uint64_t FakeFrequency() {
    return gFrequency;
}
void FakeSpin() {
    gNow += gStep;
}

class FrameRate : public ::testing::Test {
  protected:
    void SetUp() override {
        gNow = 5000000;
        gStep = 1;
        gFrequency = 1000000;
        gVXPlatformClock = VXPlatformClock{FakeCounter, FakeFrequency, FakeSpin};
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

TEST_F(FrameRate, ShortFramesAreStretchedToOneSixtiethLongOnesKeptWhole) {
    VXFrameRateControllerInit(60);
    struct Case {
        const char* name;
        uint64_t work;  // microseconds of work in the frame
        double minimum; // the frame time must be at least this
        double maximum; // and at most this
    } cases[] = {
        // 1/60 s is 16666.67 us: the wait ends on the first whole microsecond past it.
        {"no work", 0, 0.016667, 0.016667},
        {"half a frame", 8000, 0.016667, 0.016667},
        {"exactly one frame", 16667, 0.016667, 0.016667},
        {"a stall of 0.1 s", 100000, 0.1, 0.1},
        {"a stall of 2 s", 2000000, 2.0, 2.0},
    };
    for (const Case& c : cases) {
        double t = Frame(c.work);
        EXPECT_GE(t, c.minimum - 1e-9) << c.name;
        EXPECT_LE(t, c.maximum + 1e-9) << c.name;
        EXPECT_GE(t, 1.0 / 60.0) << c.name;
        EXPECT_NEAR(VXFrameRateControllerGetFrameRate(), 1.0 / t, 1e-9) << c.name;
    }
}

TEST_F(FrameRate, ZeroMaximumMeansNoCap) {
    VXFrameRateControllerInit(0);
    EXPECT_EQ(VXFrameRateControllerGetFrameTime(), 0.0);
    EXPECT_DOUBLE_EQ(Frame(4000), 0.004);
    EXPECT_DOUBLE_EQ(Frame(0), 0.0);
}

TEST_F(FrameRate, TheCounterFrequencyIsReadAtEveryFrameStart) {
    VXFrameRateControllerInit(0);
    gFrequency = 1000;
    EXPECT_DOUBLE_EQ(Frame(500), 0.5);
    gFrequency = 2000;
    EXPECT_DOUBLE_EQ(Frame(500), 0.25);
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
