// The crystal: strikes by touching monsters (5 for a regular monster, 10
// for a boss), the strike rhythm of a monster that stays in contact, the
// lose flag, the health bars' geometry read back from the screen, the
// warning fade and the shards.
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
    // A monster standing on the crystal (its box is set by its own update;
    // here it is placed by hand).
    Monster* Touching(bool boss) {
        std::unique_ptr<Monster> m;
        if (boss)
            m = std::make_unique<GoblinKing>();
        else
            m = std::make_unique<Goblin>();
        m->tier = boss ? 2 : 1;
        m->boundingBox = {40.0f, -60.0f, 60.0f, -40.0f};
        gWaveSpawner.monsterList.push_back(std::move(m));
        return gWaveSpawner.monsterList.back().get();
    }
    std::unique_ptr<Crystal> crystal;
};

} // namespace

// Each strike with a ready monster: regular 5, boss 10; the lose flag comes
// with the strike that leaves health below 1.
TEST_F(CrystalTest, StrikesAndTheLoseFlag) {
    struct Case {
        const char* name;
        bool boss;
        int startHealth, strikes, health;
        bool lost;
    } cases[] = {
        {"ten regular strikes", false, 100, 10, 50, false},
        {"five boss strikes", true, 100, 5, 50, false},
        {"the twentieth regular strike", false, 100, 20, 0, true},
        {"nineteen regular strikes", false, 100, 19, 5, false},
        {"a boss strike at 5 leaves -5", true, 5, 1, -5, true},
    };
    for (const Case& c : cases) {
        gWaveSpawner.Clear();
        gLevelLost = false;
        crystal->health = c.startHealth;
        Monster* m = Touching(c.boss);
        for (int i = 0; i < c.strikes; ++i) {
            m->attackTimer = 1.0f;
            crystal->Update();
            EXPECT_EQ(m->attackTimer, 0.0f) << c.name;
        }
        EXPECT_EQ(crystal->health, c.health) << c.name;
        EXPECT_EQ(gLevelLost, c.lost) << c.name;
        EXPECT_TRUE(m->isAttacking) << c.name;
        // The fill keeps its bottom at -100: scale y = health at y = health - 100.
        EXPECT_FLOAT_EQ(healthbarList[0]->transform.m[1][1], (float)c.health) << c.name;
        EXPECT_FLOAT_EQ(healthbarList[0]->transform.m[1][2], (float)c.health - 100.0f) << c.name;
    }
}

// A monster that stays in contact strikes at once, then each time its
// timer has climbed back to 1.0: 101 steps of 0.01 in float, so every
// 102nd update. A monster not in contact neither strikes nor recharges;
// two ready monsters strike in the same update.
TEST_F(CrystalTest, StrikeRhythmInContact) {
    Monster* m = Touching(false);
    Monster* away = Touching(false);
    away->boundingBox = {100.0f, 100.0f, 120.0f, 120.0f};
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
    // Two ready monsters in contact strike in the same update, in order.
    m->attackTimer = 1.0f;
    Touching(true);
    const int before = crystal->health;
    crystal->Update();
    EXPECT_EQ(crystal->health, before - 15);
}

// The warning flashes to full on a strike and fades 0.01 an update (the
// strike's own update included); a strike while it shows does not reset it.
TEST_F(CrystalTest, WarningFlashAndFade) {
    Monster* m = Touching(false);
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
    EXPECT_FLOAT_EQ(healthbarList[0]->tintColor[1], 1.0f);
    EXPECT_FLOAT_EQ(healthbarList[0]->tintColor[0], 0.0f);
}

// The green fill read back from the screen: x 340..360, y from -100 to
// 2h - 100 (100 at full health; -20 at 40).
TEST_F(CrystalTest, FillGeometryOnScreen) {
    crystal->Update(); // the fill turns green
    struct Case {
        const char* name;
        int health;
        float top;
    } cases[] = {{"full health", 100, 100.0f}, {"40 health", 40, -20.0f}};
    Monster* m = Touching(false);
    m->boundingBox = {100.0f, 100.0f, 120.0f, 120.0f}; // not yet in contact
    for (const Case& c : cases) {
        if (c.health < crystal->health) {
            m->boundingBox = {40.0f, -60.0f, 60.0f, -40.0f};
            while (crystal->health > c.health) {
                m->attackTimer = 1.0f;
                crystal->Update();
            }
        }
        VXSysFrameStart();
        ObjectList context;
        context.DrawObject(*healthbarList[0], 1, 1);
        int w = 0, h = 0;
        std::vector<unsigned char> frame = TestReadFrame(w, h);
        VXSysFrameEnd();
        const TestRgba green = {0, 255, 0, 255}, black = {0, 0, 0, 255};
        struct Probe {
            float x, y;
            TestRgba want;
            const char* where;
        } probes[] = {
            {350.0f, -98.0f, green, "just above the bottom"},
            {350.0f, -102.0f, black, "just below the bottom"},
            {350.0f, c.top - 2.0f, green, "just below the top"},
            {350.0f, c.top + 2.0f, black, "just above the top"},
            {342.0f, 0.5f * (c.top - 100.0f), green, "inside the left edge"},
            {338.0f, 0.5f * (c.top - 100.0f), black, "outside the left edge"},
            {358.0f, 0.5f * (c.top - 100.0f), green, "inside the right edge"},
            {362.0f, 0.5f * (c.top - 100.0f), black, "outside the right edge"},
        };
        for (const Probe& p : probes) {
            const TestRgba got = TestPixelAtWorld(frame, w, h, p.x, p.y);
            EXPECT_TRUE(TestPixelNear(got, p.want, kFillTolerance)) << c.name << ", " << p.where;
        }
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
    Touching(false);
    crystal->Update();
    EXPECT_TRUE(crystal->isBursting);
    int rising = 0;
    for (int i = 0; i < CRYSTAL_SHARD_COUNT; ++i) {
        EXPECT_LE(std::fabs(crystal->shardVel[i].x), 1.5f) << "shard " << i;
        EXPECT_LE(crystal->shardVel[i].y, 4.0f - 0.5f) << "shard " << i;
        rising += crystal->shardVel[i].y > 0.0f;
    }
    EXPECT_GT(rising, 10);
    // The monster's next update in contact recharges it and ends the burst.
    crystal->Update();
    EXPECT_FALSE(crystal->isBursting);
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
    EXPECT_TRUE(TestPixelNear(TestPixelAtWorld(frame, w, h, -100.0f, 50.0f),
                              TestRgba{51, 92, 103, 255}, kTestRounding))
        << "the shard's centre";
    EXPECT_TRUE(TestPixelNear(TestPixelAtWorld(frame, w, h, -100.0f + 14.0f, 50.0f - 4.0f),
                              TestRgba{51, 92, 103, 255}, kTestRounding))
        << "inside the disc's last slice (330 to 360 degrees)";
    EXPECT_TRUE(TestPixelNear(TestPixelAtWorld(frame, w, h, -100.0f, 75.0f),
                              TestRgba{51, 51, 51, 255}, kTestExact))
        << "beyond its rim";
}
