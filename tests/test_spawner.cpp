// The wave spawner: release and done frames and kinds per wave, the timer
// carried over between waves, spawn tiles for given random numbers (the
// game's sequence seeded with VXSeedRand, its values read back
// independently), and the removal of dead monsters.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <typeinfo>
#include <vector>

#include "BeachGoblin.h"
#include "BeachGoblinKing.h"
#include "Goblin.h"
#include "GoblinKing.h"
#include "Level.h"
#include "SpiderBoss.h"
#include "Spiderling.h"
#include "TestSupport.h"
#include "VXSystem.h"
#include "Tile.h"
#include "WaveSpawner.h"
#include "WraithBoss.h"
#include "Yeti.h"

namespace {

class Spawner : public ::testing::Test {
  protected:
    void SetUp() override { TestEngineStart(); }
    void TearDown() override {
        gWaveSpawner.Clear();
        FreeBoard();
        TestEngineStop();
    }
    // A fresh spawner and board, the timer at 0.
    static void Start(int level, unsigned wave) {
        gWaveSpawner.Clear();
        gWaveSpawner.spawnTimer = 0.0f;
        FreeBoard();
        BuildBoard(BoardLayoutForLevel(level));
        gCurrentLevel = level;
        gWaveNumber = wave;
        gWaveSpawner.SetupWave();
    }
    static int TileOf(const Monster& m) {
        for (const auto& t : tileList)
            if (t->posX == m.posX && t->posY == m.posY) return t->tileIndex;
        return -1;
    }
};

} // namespace

// One release every 300 updates from a timer at 0; isDone is set by the
// check at the start of the update after the last release (at once for the
// tutorial's empty third wave). Kind, tier and tile for all eighteen waves.
TEST_F(Spawner, WaveContentsReleaseAndDoneFrames) {
    const std::vector<int> tutorial = {5}, level2 = {5, 90, 99}, level3 = {1, 9, 90, 99},
                           level6 = {3, 7, 50, 59, 92, 97}, boss = {5}, wraith = {10};
    struct Case {
        int level;
        unsigned wave;
        int count;
        const std::type_info& kind;
        int tier;
        const std::vector<int>& tiles; // where a release may stand
    } cases[] = {
        {1, 1, 3, typeid(Goblin), 1, tutorial},      {1, 2, 3, typeid(Goblin), 1, tutorial},
        {1, 3, 0, typeid(Goblin), 0, tutorial},      {2, 1, 5, typeid(Goblin), 1, level2},
        {2, 2, 5, typeid(Goblin), 1, level2},        {2, 3, 1, typeid(GoblinKing), 2, boss},
        {3, 1, 5, typeid(BeachGoblin), 1, level3},   {3, 2, 5, typeid(BeachGoblin), 1, level3},
        {3, 3, 1, typeid(BeachGoblinKing), 2, boss}, {4, 1, 7, typeid(Spiderling), 1, level3},
        {4, 2, 7, typeid(Spiderling), 1, level3},    {4, 3, 1, typeid(SpiderBoss), 2, boss},
        {5, 1, 8, typeid(Yeti), 1, level2},          {5, 2, 8, typeid(Yeti), 1, level2},
        {5, 3, 1, typeid(WraithBoss), 2, wraith},    {6, 1, 11, typeid(Yeti), 1, level6},
        {6, 2, 11, typeid(Yeti), 1, level6},         {6, 3, 1, typeid(WraithBoss), 2, wraith},
    };
    for (const Case& c : cases) {
        const std::string name =
            "level " + std::to_string(c.level) + " wave " + std::to_string(c.wave);
        Start(c.level, c.wave);
        std::vector<int> at, want;
        int done = 0;
        for (int u = 1; u <= 300 * c.count + 600; ++u) {
            const size_t before = gWaveSpawner.monsterList.size();
            gWaveSpawner.Update();
            if (gWaveSpawner.monsterList.size() > before) at.push_back(u);
            if (gWaveSpawner.isDone && !done) done = u;
        }
        for (int i = 1; i <= c.count; ++i) want.push_back(300 * i);
        EXPECT_EQ(at, want) << name;
        EXPECT_EQ(done, 300 * c.count + 1) << name;
        for (const auto& m : gWaveSpawner.monsterList) {
            EXPECT_EQ(typeid(*m), c.kind) << name;
            EXPECT_EQ(m->tier, c.tier) << name;
            EXPECT_NE(m->pMesh, nullptr) << name;
            EXPECT_FLOAT_EQ(m->transform.m[0][2], m->posX) << name;
            EXPECT_NE(std::find(c.tiles.begin(), c.tiles.end(), TileOf(*m)), c.tiles.end())
                << name << ": released on tile " << TileOf(*m);
        }
    }
}

// The timer is reset only by a release: a pause of 500 updates between
// waves makes the next wave's first release immediate; without a board
// the timer stands still.
TEST_F(Spawner, TimerCarriesOverBetweenWaves) {
    Start(1, 1);
    for (int u = 1; u <= 900 + 500; ++u) gWaveSpawner.Update();
    EXPECT_FLOAT_EQ(gWaveSpawner.spawnTimer, 500.0f);
    gWaveNumber = 2;
    gWaveSpawner.SetupWave();
    EXPECT_FLOAT_EQ(gWaveSpawner.spawnTimer, 500.0f) << "SetupWave leaves the timer";
    EXPECT_FALSE(gWaveSpawner.isDone) << "a new wave is not done";
    gWaveSpawner.Update();
    EXPECT_EQ(gWaveSpawner.monsterList.size(), 4u) << "first release of wave 2 at once";
    FreeBoard();
    gWaveSpawner.Update();
    EXPECT_FLOAT_EQ(gWaveSpawner.spawnTimer, 0.0f) << "no board, no counting";
}

// Bands of the draw r = 0..100 per level, from the design's tables.
TEST(SpawnTiles, BandsPerLevel) {
    struct Case {
        int level, r, tile;
    } cases[] = {
        {1, 0, 5},    {1, 99, 5},   {2, 0, 5},   {2, 39, 5},   {2, 40, 90}, {2, 74, 90},
        {2, 75, 99},  {2, 100, 99}, {3, 24, 1},  {3, 25, 9},   {3, 49, 9},  {3, 50, 90},
        {3, 74, 90},  {3, 75, 99},  {4, 0, 1},   {4, 100, 99}, {5, 39, 5},  {5, 40, 90},
        {5, 75, 99},  {6, 0, 3},    {6, 13, 3},  {6, 14, 7},   {6, 28, 7},  {6, 29, 50},
        {6, 43, 50},  {6, 44, 59},  {6, 58, 59}, {6, 59, 92},  {6, 73, 92}, {6, 74, 97},
        {6, 100, 97},
    };
    for (const Case& c : cases)
        EXPECT_EQ(WaveRegularSpawnTile(c.level, c.r), c.tile)
            << "level " << c.level << ", r = " << c.r;
}

// Levels 2, 3 and 5 draw once per release; levels 4 and 6 draw on every
// update while regular monsters remain, so release k (on update 300 k)
// uses the (300 k)th value of the sequence. Seed 4002 makes the first draw
// 13107, and 13107 / 32767 x 100 = 40.0006 gives r = 40, the first r of
// tile 90 in level 2 (a draw scaled by anything short of 100 gives tile 5).
TEST_F(Spawner, RandomTilesFollowTheSequence) {
    for (int level : {2, 3, 4, 5, 6}) {
        const bool drawsEveryUpdate = level == 4 || level == 6;
        for (unsigned seed : {1u, 7u, 2026u, 4002u}) {
            VXSeedRand(seed);
            std::vector<int> r;
            for (int i = 0; i < 900; ++i) r.push_back(VXRand() * 100 / 32767);
            Start(level, 1);
            VXSeedRand(seed);
            for (int u = 1; u <= 900; ++u) gWaveSpawner.Update();
            ASSERT_EQ(gWaveSpawner.monsterList.size(), 3u) << "level " << level;
            for (int k = 0; k < 3; ++k) {
                const int draw = drawsEveryUpdate ? 300 * (k + 1) - 1 : k;
                EXPECT_EQ(TileOf(*gWaveSpawner.monsterList[k]),
                          WaveRegularSpawnTile(level, r[draw]))
                    << "level " << level << ", seed " << seed << ", release " << k;
            }
        }
    }
    Start(2, 1);
    VXSeedRand(4002);
    for (int u = 1; u <= 300; ++u) gWaveSpawner.Update();
    EXPECT_EQ(TileOf(*gWaveSpawner.monsterList.at(0)), 90) << "seed 4002, level 2";
}

// Every dead monster goes in the same update; the living keep their order.
TEST_F(Spawner, DeadMonstersAreRemoved) {
    Start(1, 3); // nothing to release
    for (unsigned health : {0u, 5u, 0u, 1u}) {
        gWaveSpawner.monsterList.push_back(std::make_unique<Goblin>());
        gWaveSpawner.monsterList.back()->health = health;
    }
    Monster* second = gWaveSpawner.monsterList[1].get();
    Monster* fourth = gWaveSpawner.monsterList[3].get();
    gWaveSpawner.Update();
    ASSERT_EQ(gWaveSpawner.monsterList.size(), 2u);
    EXPECT_EQ(gWaveSpawner.monsterList[0].get(), second);
    EXPECT_EQ(gWaveSpawner.monsterList[1].get(), fourth);
    fourth->health -= 1; // a hit after this frame's update
    EXPECT_EQ(gWaveSpawner.monsterList.size(), 2u);
    gWaveSpawner.Update();
    EXPECT_EQ(gWaveSpawner.monsterList.size(), 1u) << "removed at the next update";
}
