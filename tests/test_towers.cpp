// Towers: fire counts of both tiers (frames to the first shot worked out by
// hand in single precision), reach, the arrow sound, the projectiles a
// tower keeps or drops, and the dragged tower that holds its fire.
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
    // A tower of the tier at (0, 0), set up the way the level places one.
    static std::unique_ptr<Tower> MakeTower(int tier) {
        std::unique_ptr<Tower> tower;
        if (tier == 1)
            tower = std::make_unique<ArcherTower_Tier1>();
        else
            tower = std::make_unique<ArcherTower_Tier2>();
        tower->SetTransform(0.0f, 0.0f, tower->size);
        tower->SetMesh();
        return tower;
    }
    void AddMonster(float x, float y) {
        auto monster = std::make_unique<Monster>();
        monster->posX = x;
        monster->posY = y;
        monster->health = 5;
        monster->tier = 1;
        monster->boundingBox = {x - 10.0f, y - 10.0f, x + 10.0f, y + 10.0f};
        monsters.push_back(std::move(monster));
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

TEST_F(Towers, FireCountsOfBothTiers) {
    // 0.1f added up in single precision reaches 18 on the 180th addition;
    // after 60 additions it is 5.9999967, so 6 needs the 61st. Monsters in
    // reach each add 0.1 per frame: three make 180 additions in 60 frames
    // and 61 additions in frame 21 (the first of its three), after which
    // the other two leave the count at 0.2.
    struct Case {
        const char* name;
        int tier;
        int inReach, outOfReach;
        int firstShot;
        float timerAfter;
    } cases[] = {
        {"tier 1, one monster", 1, 1, 0, 180, 0.0f},
        {"tier 1, three monsters", 1, 3, 0, 60, 0.0f},
        {"tier 1, one of three in reach", 1, 1, 2, 180, 0.0f},
        {"tier 2, one monster", 2, 1, 0, 61, 0.0f},
        {"tier 2, three monsters", 2, 3, 0, 21, 0.2f},
    };
    for (const Case& c : cases) {
        monsters.clear();
        // Far enough away that no arrow lands before the count is checked.
        for (int i = 0; i < c.inReach; ++i) AddMonster(0.0f, 170.0f);
        for (int i = 0; i < c.outOfReach; ++i) AddMonster(-300.0f, 0.0f);
        auto tower = MakeTower(c.tier);
        EXPECT_EQ(c.firstShot, FramesToFirstShot(*tower, 400)) << c.name;
        EXPECT_EQ(1u, tower->projectiles.size()) << c.name;
        EXPECT_FLOAT_EQ(c.timerAfter, tower->fireTimer) << c.name;
    }
}

TEST_F(Towers, ReachEndsJustBelowThirtyThousandSquaredUnits) {
    struct Case {
        const char* name;
        float x, y;
        int firstShot;
    } cases[] = {
        // 100^2 + 141.421356^2 rounds to exactly 30000 in single precision.
        {"exactly 30000 is out of reach", 100.0f, 141.421356f, 0},
        {"29999.996 is in reach", 100.0f, 141.421341f, 180},
        {"monster on the tower", 0.0f, 0.0f, 180},
        {"far away", 0.0f, 174.0f, 0},
    };
    for (const Case& c : cases) {
        monsters.clear();
        AddMonster(c.x, c.y);
        auto tower = MakeTower(1);
        EXPECT_EQ(c.firstShot, FramesToFirstShot(*tower, 200)) << c.name;
    }
}

TEST_F(Towers, ShotPlaysTheArrowAtMasterVolumeAndAimsAtTheFirstMonster) {
    AddMonster(-400.0f, 0.0f); // first in the list, far out of reach
    AddMonster(0.0f, 100.0f);
    AddMonster(0.0f, 100.0f);
    gMasterVolume = 0.0f;
    auto tower = MakeTower(1);
    ASSERT_EQ(90, FramesToFirstShot(*tower, 200));
    bool playing = false;
    ChannelIsPlaying(gChannelArrow, &playing);
    EXPECT_TRUE(playing);
    float volume = -1.0f;
    ChannelGetVolume(gChannelArrow, &volume);
    EXPECT_EQ(0.0f, volume);
    for (int i = 0; i < 10; ++i) Step(*tower);
    const Projectile& shot = *tower->projectiles.front();
    EXPECT_NEAR(-55.0f, shot.posX, 1e-3f) << "11 moves of 5 units towards the first monster";
    EXPECT_NEAR(0.0f, shot.posY, 1e-3f);
    EXPECT_EQ(20.0f, tower->transform.m[0][0]);
}

TEST_F(Towers, DraggedTowerHoldsItsCountButItsArrowsFlyOn) {
    AddMonster(0.0f, 150.0f);
    auto tower = MakeTower(2);
    ASSERT_EQ(61, FramesToFirstShot(*tower, 100));
    for (int i = 0; i < 5; ++i) Step(*tower);
    const float timer = tower->fireTimer;
    const float shotY = tower->projectiles.front()->posY;
    tower->tintColor[3] = 0.5f;
    for (int i = 0; i < 4; ++i) Step(*tower);
    EXPECT_EQ(timer, tower->fireTimer);
    ASSERT_EQ(1u, tower->projectiles.size());
    EXPECT_NEAR(shotY + 20.0f, tower->projectiles.front()->posY, 1e-3f);
    // Moving the tower keeps its count: only a shot resets it.
    tower->tintColor[3] = 1.0f;
    tower->posX = 30.0f;
    Step(*tower);
    EXPECT_FLOAT_EQ(timer + 0.1f, tower->fireTimer);
}

TEST_F(Towers, NoMonstersMeansNoCountAndNoArrows) {
    AddMonster(0.0f, 170.0f);
    auto tower = MakeTower(2);
    ASSERT_EQ(61, FramesToFirstShot(*tower, 100));
    for (int i = 0; i < 3; ++i) Step(*tower);
    ASSERT_EQ(1u, tower->projectiles.size());
    const float timer = tower->fireTimer;
    monsters.clear();
    Step(*tower);
    EXPECT_TRUE(tower->projectiles.empty());
    EXPECT_EQ(timer, tower->fireTimer);
}
