// Towers: fire counts of both tiers (frames to the first shot worked out by
// hand in single precision), reach, the arrow sound, and the projectiles a
// tower keeps or drops, dragged or not.
#include "ArcherTower_Tier1.h"
#include "ArcherTower_Tier2.h"
#include "TestSupport.h"
#include "TestTone.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <unistd.h>

namespace {

class Towers : public ::testing::Test {
  protected:
    void SetUp() override {
        TestEngineStart();
        crystal = std::make_unique<Crystal>();
        char pattern[] = "/tmp/quarrow-towers-XXXXXX";
        ASSERT_NE(nullptr, mkdtemp(pattern));
        const std::string tone = std::string(pattern) + "/arrow.ogg";
        ASSERT_TRUE(WriteToneOgg(tone, 1.0f, 1, 0.5f));
        ASSERT_EQ(SOUND_OK, SoundCreate(gLevelSoundSystem, tone.c_str(), &arrow));
        std::filesystem::remove_all(pattern);
        gMasterVolume = 1.0f;
    }
    void TearDown() override {
        SoundRelease(arrow);
        monsters.clear();
        crystal.reset();
        TestEngineStop();
    }
    // A tower of the tier at (0, 0), set up the way the level places one,
    // with monsters at the given points.
    std::unique_ptr<Tower> MakeTower(int tier, std::vector<std::pair<float, float>> at) {
        monsters.clear();
        for (auto [x, y] : at) {
            monsters.push_back(std::make_unique<Monster>());
            Monster& m = *monsters.back();
            m.posX = x, m.posY = y, m.health = 5, m.tier = 1;
            m.boundingBox = {x - 10.0f, y - 10.0f, x + 10.0f, y + 10.0f};
        }
        std::unique_ptr<Tower> tower;
        if (tier == 1)
            tower = std::make_unique<ArcherTower_Tier1>();
        else
            tower = std::make_unique<ArcherTower_Tier2>();
        tower->SetTransform(0.0f, 0.0f, tower->size);
        tower->SetMesh();
        return tower;
    }
    void Step(Tower& tower) { tower.Update(monsters, arrow, gLevelSoundSystem, crystal.get()); }
    // Frames until the tower's first shot (0: never), told by the arrow
    // sound: an arrow that hits at once is gone again within its frame.
    int FramesToFirstShot(Tower& tower, int limit) {
        const unsigned before = gChannelArrow.id;
        for (int frame = 1; frame <= limit; ++frame) {
            Step(tower);
            if (gChannelArrow.id != before) return frame;
        }
        return 0;
    }

    MonsterArray monsters;
    std::unique_ptr<Crystal> crystal;
    Sound arrow;
};

} // namespace

TEST_F(Towers, FireCountsAndReach) {
    // 0.1f added up in single precision reaches 18 on the 180th addition;
    // after 60 additions it is 5.9999967, so 6 needs the 61st. Every monster
    // in reach adds 0.1 a frame: three make 180 additions in 60 frames and
    // 61 in frame 21 (the first of its three), after which the other two
    // leave the count at 0.2. 100^2 + 141.421356^2 rounds to exactly 30000
    // in single precision, 100^2 + 141.421341^2 to 29999.996.
    const float in = 170.0f;
    struct Case {
        const char* name;
        int tier;
        std::vector<std::pair<float, float>> at;
        int firstShot;
        float timerAfter;
    } cases[] = {
        {"tier 1, one monster", 1, {{0, in}}, 180, 0.0f},
        {"tier 1, three monsters", 1, {{0, in}, {0, in}, {0, in}}, 60, 0.0f},
        {"tier 1, one of three in reach", 1, {{0, in}, {-300, 0}, {-300, 0}}, 180, 0.0f},
        {"tier 2, one monster", 2, {{0, in}}, 61, 0.0f},
        {"tier 2, three monsters", 2, {{0, in}, {0, in}, {0, in}}, 21, 0.2f},
        {"exactly 30000 is out of reach", 1, {{100.0f, 141.421356f}}, 0, 0.0f},
        {"29999.996 is in reach", 1, {{100.0f, 141.421341f}}, 180, 0.0f},
        {"far away", 1, {{0, 174}}, 0, 0.0f},
    };
    for (const Case& c : cases) {
        auto tower = MakeTower(c.tier, c.at);
        EXPECT_EQ(c.firstShot, FramesToFirstShot(*tower, 200)) << c.name;
        EXPECT_EQ(c.firstShot ? 1u : 0u, tower->projectiles.size()) << c.name;
        EXPECT_FLOAT_EQ(c.timerAfter, tower->fireTimer) << c.name;
    }
}

TEST_F(Towers, ShotPlaysTheArrowAtMasterVolumeAndAimsAtTheFirstMonster) {
    // The first monster in the list is far out of reach.
    auto tower = MakeTower(1, {{-400.0f, 0.0f}, {0.0f, 100.0f}, {0.0f, 100.0f}});
    gMasterVolume = 0.0f;
    ASSERT_EQ(90, FramesToFirstShot(*tower, 200));
    EXPECT_TRUE(TestChannelPlaying(gChannelArrow));
    EXPECT_EQ(0.0f, TestChannelVolume(gChannelArrow));
    for (int i = 0; i < 10; ++i) Step(*tower);
    const Projectile& shot = *tower->projectiles.front();
    EXPECT_NEAR(-55.0f, shot.posX, 1e-3f) << "11 moves of 5 units towards the first monster";
    EXPECT_NEAR(0.0f, shot.posY, 1e-3f);
    EXPECT_EQ(20.0f, tower->transform.m[0][0]);
}

// A dragged tower (half transparent) holds its count while its arrows fly
// on; moving it keeps the count; with no monster left every arrow goes.
TEST_F(Towers, DraggedTowerHoldsItsCountButItsArrowsFlyOn) {
    auto tower = MakeTower(2, {{0.0f, 150.0f}});
    ASSERT_EQ(61, FramesToFirstShot(*tower, 100));
    for (int i = 0; i < 5; ++i) Step(*tower);
    const float timer = tower->fireTimer;
    const float shotY = tower->projectiles.front()->posY;
    tower->tintColor[3] = 0.5f;
    for (int i = 0; i < 4; ++i) Step(*tower);
    EXPECT_EQ(timer, tower->fireTimer);
    ASSERT_EQ(1u, tower->projectiles.size());
    EXPECT_NEAR(shotY + 20.0f, tower->projectiles.front()->posY, 1e-3f);
    tower->tintColor[3] = 1.0f;
    tower->posX = 30.0f;
    Step(*tower);
    EXPECT_FLOAT_EQ(timer + 0.1f, tower->fireTimer);
    monsters.clear();
    Step(*tower);
    EXPECT_TRUE(tower->projectiles.empty());
    EXPECT_FLOAT_EQ(timer + 0.1f, tower->fireTimer) << "no monsters, no count";
}
