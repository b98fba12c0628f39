// The crystal: strikes by touching monsters (5 for a regular monster, 10
// for a boss), the strike rhythm, the lose flag, the health bar read back
// from the screen, the warning fade and the shards.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "Crystal.h"
#include "Goblin.h"
#include "GoblinKing.h"
#include "Healthbar.h"
#include "TestSupport.h"
#include "VXSystem.h"
#include "WaveSpawner.h"

namespace {

// The fill's pure green is read from well inside it and the black from well
// outside, so any nearby value will do.
constexpr TestTolerance kFillTolerance = {"inside or outside the fill", 8};
constexpr BoundingBox kOnTheCrystal = {40.0f, -60.0f, 60.0f, -40.0f};
constexpr BoundingBox kAway = {100.0f, 100.0f, 120.0f, 120.0f};

class CrystalTest : public ::testing::Test {
  protected:
    void SetUp() override {
        TestEngineStart();
        gLevelLost = false;
        crystal = std::make_unique<Crystal>();
        crystal->SetPosition(50.0f, -50.0f);
        crystal->SetTransform(50.0f, -50.0f, crystal->size);
        crystal->SetMesh();
        CreateHealthbars(crystal->health);
    }
    void TearDown() override {
        gWaveSpawner.Clear();
        FreeHealthbars();
        crystal.reset();
        gLevelLost = false;
        TestEngineStop();
    }
    // A monster placed by hand (its own update would set its box).
    Monster* Add(bool boss, BoundingBox box = kOnTheCrystal) {
        std::unique_ptr<Monster> m;
        if (boss)
            m = std::make_unique<GoblinKing>();
        else
            m = std::make_unique<Goblin>();
        m->tier = boss ? 2 : 1;
        m->boundingBox = box;
        gWaveSpawner.monsterList.push_back(std::move(m));
        return gWaveSpawner.monsterList.back().get();
    }
    // Strikes with a ready monster.
    void Strike(Monster* m, int strikes) {
        for (int i = 0; i < strikes; ++i) {
            m->attackTimer = 1.0f;
            crystal->Update();
            EXPECT_EQ(m->attackTimer, 0.0f);
        }
    }
    std::unique_ptr<Crystal> crystal;
};

} // namespace

// The lose flag comes with the strike that leaves health below 1; the
// fill keeps its bottom at -100: scale y = health at y = health - 100.
TEST_F(CrystalTest, StrikesAndTheLoseFlag) {
    struct Case {
        const char* name;
        bool boss;
        int startHealth, strikes, health;
        bool lost;
    } cases[] = {
        {"ten regular strikes", false, 100, 10, 50, false},
        {"five boss strikes", true, 100, 5, 50, false},
        {"nineteen regular strikes", false, 100, 19, 5, false},
        {"the twentieth regular strike", false, 100, 20, 0, true},
        {"a boss strike at 5 leaves -5", true, 5, 1, -5, true},
    };
    for (const Case& c : cases) {
        gWaveSpawner.Clear();
        gLevelLost = false;
        crystal->health = c.startHealth;
        Monster* m = Add(c.boss);
        Strike(m, c.strikes);
        EXPECT_EQ(crystal->health, c.health) << c.name;
        EXPECT_EQ(gLevelLost, c.lost) << c.name;
        EXPECT_TRUE(m->isAttacking) << c.name;
        EXPECT_FLOAT_EQ(healthbarList[0]->transform.m[1][1], (float)c.health) << c.name;
        EXPECT_FLOAT_EQ(healthbarList[0]->transform.m[1][2], (float)c.health - 100.0f) << c.name;
    }
}

// A monster in contact strikes at once, then each time its timer has
// climbed back to 1.0: 101 steps of 0.01 in float, so every 102nd update.
// One not in contact neither strikes nor recharges; two ready monsters
// strike in the same update.
TEST_F(CrystalTest, StrikeRhythmInContact) {
    Monster* m = Add(false);
    Monster* away = Add(false, kAway);
    away->attackTimer = 0.5f;
    std::vector<int> strikes;
    for (int update = 1; update <= 300; ++update) {
        const int before = crystal->health;
        crystal->Update();
        if (crystal->health != before) strikes.push_back(update);
    }
    EXPECT_EQ(strikes, (std::vector<int>{1, 103, 205}));
    EXPECT_TRUE(m->isAttacking);
    EXPECT_FALSE(away->isAttacking);
    EXPECT_FLOAT_EQ(away->attackTimer, 0.5f);
    m->attackTimer = 1.0f;
    Add(true);
    const int before = crystal->health;
    crystal->Update();
    EXPECT_EQ(crystal->health, before - 15);
}

// The warning flashes to full on a strike and fades 0.01 an update (the
// strike's own update included); a strike while it shows does not reset it.
TEST_F(CrystalTest, WarningFlashAndFade) {
    Monster* m = Add(false);
    Healthbar& warning = *healthbarList[2];
    EXPECT_FLOAT_EQ(warning.tintColor[3], 0.0f);
    crystal->Update();
    EXPECT_NEAR(warning.tintColor[3], 0.99f, 1e-6);
    for (int i = 0; i < 49; ++i) crystal->Update();
    EXPECT_NEAR(warning.tintColor[3], 0.50f, 1e-4);
    m->attackTimer = 1.0f;
    crystal->Update();
    EXPECT_NEAR(warning.tintColor[3], 0.49f, 1e-4) << "no reset while visible";
    for (int i = 0; i < 60; ++i) crystal->Update();
    EXPECT_FLOAT_EQ(warning.tintColor[3], 0.0f) << "never below 0";
}

// The green fill read back from the screen: x 340..360, y from -100 to
// 2h - 100 (100 at full health; -20 at 40).
TEST_F(CrystalTest, FillGeometryOnScreen) {
    crystal->Update(); // the fill turns green
    Monster* m = Add(false, kAway);
    for (auto [health, top] : {std::pair{100, 100.0f}, {40, -20.0f}}) {
        m->boundingBox = kOnTheCrystal;
        Strike(m, (100 - health) / 5);
        VXSysFrameStart();
        ObjectList context;
        context.DrawObject(*healthbarList[0], 1, 1);
        int w = 0, h = 0;
        std::vector<unsigned char> frame = TestReadFrame(w, h);
        VXSysFrameEnd();
        const TestRgba green = {0, 255, 0, 255}, black = {0, 0, 0, 255};
        const float mid = 0.5f * (top - 100.0f);
        struct Probe {
            float x, y;
            TestRgba want;
            const char* where;
        } probes[] = {
            {350.0f, -98.0f, green, "just above the bottom"},
            {350.0f, -102.0f, black, "just below the bottom"},
            {350.0f, top - 2.0f, green, "just below the top"},
            {350.0f, top + 2.0f, black, "just above the top"},
            {342.0f, mid, green, "inside the left edge"},
            {338.0f, mid, black, "outside the left edge"},
            {358.0f, mid, green, "inside the right edge"},
            {362.0f, mid, black, "outside the right edge"},
        };
        for (const Probe& p : probes)
            EXPECT_TRUE(
                TestPixelNear(TestPixelAtWorld(frame, w, h, p.x, p.y), p.want, kFillTolerance))
                << "health " << health << ", " << p.where;
    }
}

// At rest the shards shimmer within a unit of the centre, each at most 12
// across; a strike throws the resting ones up and sideways (x velocity in
// [-1.5, 1.5], y in [0, 4]) and they are pulled down 0.5 an update while
// the burst lasts.
TEST_F(CrystalTest, ShardsIdleAndBurst) {
    VXSeedRand(5);
    for (int i = 0; i < 200; ++i) crystal->Update();
    for (int i = 0; i < CRYSTAL_SHARD_COUNT; ++i) {
        EXPECT_LE(std::fabs(crystal->shardPos[i].x - 50.0f), 1.0f) << "shard " << i;
        EXPECT_LE(std::fabs(crystal->shardPos[i].y + 50.0f), 1.0f) << "shard " << i;
        EXPECT_GT(crystal->shardScale[i].x, 0.0f) << "shard " << i;
        EXPECT_LE(crystal->shardScale[i].x, 12.0f) << "shard " << i;
        EXPECT_FLOAT_EQ(crystal->shardTransform[i].m[0][0], crystal->shardScale[i].x);
        EXPECT_FLOAT_EQ(crystal->shardTransform[i].m[1][2], crystal->shardPos[i].y);
    }
    Add(false);
    crystal->Update();
    EXPECT_TRUE(crystal->isBursting);
    int rising = 0;
    for (int i = 0; i < CRYSTAL_SHARD_COUNT; ++i) {
        EXPECT_LE(std::fabs(crystal->shardVel[i].x), 1.5f) << "shard " << i;
        EXPECT_LE(crystal->shardVel[i].y, 4.0f - 0.5f) << "shard " << i;
        rising += crystal->shardVel[i].y > 0.0f;
    }
    EXPECT_GT(rising, 10);
    crystal->Update();
    EXPECT_FALSE(crystal->isBursting) << "the monster's next update recharges it";
}

// One shard alone (the other 49 at size 0), a disc of radius 20 over a grey
// of 51: seed 2026 draws a = 6654/32767 (alpha), then g = 26038/32767;
// the tint (0, g, 1, a) adds nothing to red, 255 g a = 41.15 to green and
// 255 a = 51.78 to blue.
TEST_F(CrystalTest, OneShardAddsItsBlueGreenGlow) {
    for (int i = 0; i < CRYSTAL_SHARD_COUNT; ++i) VXMtx33Scale(&crystal->shardTransform[i], 0, 0);
    VXMtx33Scale(&crystal->shardTransform[0], 40.0f, 40.0f);
    VXMtx33TransApply(&crystal->shardTransform[0], &crystal->shardTransform[0], -100.0f, 50.0f);
    VXGfxSetBackgroundColor(0.2f, 0.2f, 0.2f);
    int w = 0, h = 0;
    std::vector<unsigned char> frame = TestDrawFrame(
        [&] {
            VXSeedRand(2026);
            crystal->DrawShards();
        },
        w, h);
    const TestRgba glow = {51, 92, 103, 255}, grey = {51, 51, 51, 255};
    EXPECT_TRUE(TestPixelNear(TestPixelAtWorld(frame, w, h, -100.0f, 50.0f), glow, kTestRounding))
        << "the shard's centre";
    EXPECT_TRUE(TestPixelNear(TestPixelAtWorld(frame, w, h, -86.0f, 46.0f), glow, kTestRounding))
        << "inside the disc's last slice (330 to 360 degrees)";
    EXPECT_TRUE(TestPixelNear(TestPixelAtWorld(frame, w, h, -100.0f, 75.0f), grey, kTestExact))
        << "beyond its rim";
}
