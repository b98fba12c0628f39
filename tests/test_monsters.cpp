// Monsters frame by frame: a goblin's walk to the crystal on level 1's
// board, blink and low-health pulse timing, mirroring, the fall-back walk
// of a walled-in monster, and the wraith's flight and teleport.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "Crystal.h"
#include "Goblin.h"
#include "GoblinKing.h"
#include "TestSupport.h"
#include "Tile.h"
#include "WaveSpawner.h"
#include "WraithBoss.h"

namespace {

class Monsters : public ::testing::Test {
  protected:
    void SetUp() override { TestEngineStart(); }
    void TearDown() override {
        gWaveSpawner.Clear();
        FreeBoard();
        TestEngineStop();
    }
    // The level's board as it stands during play: hover boxes set, crystal tile taken.
    static void Board(int layout) {
        BuildBoard(layout);
        for (auto& t : tileList) t->SetHoverBox();
        tileList[55]->moveCost = 1;
    }
    // A monster released on a tile, as the spawner does it.
    template <class Kind> static Kind* Release(int tile, int tier) {
        auto m = std::make_unique<Kind>();
        m->posX = tileList[tile]->posX;
        m->posY = tileList[tile]->posY;
        m->SetTransform(m->posX, m->posY, m->size);
        m->SetMesh();
        m->tier = tier;
        Kind* raw = m.get();
        gWaveSpawner.monsterList.push_back(std::move(m));
        return raw;
    }
    static Monster* Release(bool boss) {
        if (boss) return Release<GoblinKing>(5, 2);
        return Release<Goblin>(5, 1);
    }
};

} // namespace

// From tile 5 straight down the middle of the diamond; the crystal's box is
// ±1.5 around (50, -50) and the goblin's ±10. A float32 simulation of the
// walk (0.25 units a frame towards the next cell's centre, the cell
// switching to the lower row as soon as the goblin's box touches that
// row's tile box) gives the first strike in frame 992.
TEST_F(Monsters, GoblinWalksDownTheMiddleToTheCrystal) {
    Board(3);
    Crystal crystal;
    crystal.SetPosition(50.0f, -50.0f);
    Goblin* goblin = Release<Goblin>(5, 1);
    std::vector<std::string> cells;
    int firstStrike = -1;
    for (int frame = 1; frame <= 1500 && firstStrike < 0; ++frame) {
        goblin->Update(tileList, 3);
        crystal.Update();
        std::string cell =
            std::to_string((int)goblin->cellRow) + "," + std::to_string((int)goblin->cellCol);
        if (cells.empty() || cells.back() != cell) cells.push_back(cell);
        if (crystal.health < 100) firstStrike = frame;
    }
    EXPECT_EQ(cells, (std::vector<std::string>{"0,5", "1,5", "2,5", "3,5", "4,5", "5,5"}));
    EXPECT_EQ(firstStrike, 992);
    EXPECT_EQ(crystal.health, 95);
    EXPECT_TRUE(goblin->isAttacking);
}

// A fade is ten frames of -0.1 alpha (ten float steps of 0.1 take 1.0 to
// just below 0), three fades a hit; health 5 is exempt from starting one.
TEST_F(Monsters, BlinkStartsAndTiming) {
    Board(3);
    struct Case {
        const char* name;
        bool boss;
        unsigned lastHealth, health;
        bool blinks;
    } cases[] = {
        {"fresh regular monster (0 -> 5)", false, 0, 5, false},
        {"fresh boss (0 -> 30)", true, 0, 30, true},
        {"hit from 6 to 5", false, 6, 5, false},
        {"hit from 5 to 4", false, 5, 4, true},
        {"no change", false, 4, 4, false},
    };
    for (const Case& c : cases) {
        Monster* m = Release(c.boss);
        m->lastHealth = c.lastHealth;
        m->health = c.health;
        m->maxHealth = c.boss ? 30 : 5;
        m->Update(tileList, 3);
        EXPECT_EQ(m->isBlinking, c.blinks) << c.name;
        if (!c.blinks) continue;
        EXPECT_NEAR(m->tintColor[3], 0.9f, 1e-6) << c.name;
        int frame = 1;
        for (; m->blinkCount == 0; ++frame) m->Update(tileList, 3);
        EXPECT_EQ(frame, 10) << c.name << ": first fade ends on frame 10";
        for (; m->isBlinking; ++frame) m->Update(tileList, 3);
        EXPECT_EQ(frame, 30) << c.name << ": the blink lasts 30 frames";
        EXPECT_FLOAT_EQ(m->tintColor[3], 1.0f) << c.name;
    }
}

// Below half health green and blue climb by 0.01 a frame from 0.5; the
// first frame takes green from 1.0 to 1.01, which resets it to 0.5; from 0.5
// the float sum first reaches 1.0 on the 51st step.
TEST_F(Monsters, LowHealthPulse) {
    Board(3);
    struct Case {
        const char* name;
        bool boss;
        unsigned health;
        bool pulses;
    } cases[] = {
        {"regular at 2 of 5", false, 2, true},
        {"regular at 3 of 5 (not below 2.5)", false, 3, false},
        {"boss at 14 of 30", true, 14, true},
        {"boss at 15 of 30", true, 15, false},
    };
    for (const Case& c : cases) {
        Monster* m = Release(c.boss);
        m->health = c.health;
        m->Update(tileList, 3);
        EXPECT_FLOAT_EQ(m->tintColor[1], c.pulses ? 0.5f : 1.0f) << c.name;
        if (!c.pulses) continue;
        EXPECT_FLOAT_EQ(m->tintColor[2], 0.5f) << c.name;
        int frames = 0;
        do {
            m->Update(tileList, 3);
            ++frames;
        } while (m->tintColor[1] != 0.5f && frames < 200);
        EXPECT_EQ(frames, 51) << c.name;
        EXPECT_FLOAT_EQ(m->tintColor[0], 1.0f) << c.name << ": red stays";
    }
}

// The pictures face left: heading right, or straight down at equal x,
// mirrors them.
TEST_F(Monsters, MirroredWhenHeadingRightOrStraight) {
    Board(3);
    struct Case {
        const char* name;
        float x, y;
        float expectedScaleX;
    } cases[] = {
        {"on the crystal's tile, target right below at equal x", 50.0f, -20.0f, -20.0f},
        {"left of the crystal's tile centre, heading right", 40.0f, -50.0f, -20.0f},
        {"right of the crystal's tile centre, heading left", 60.0f, -50.0f, 20.0f},
    };
    for (const Case& c : cases) {
        Goblin* g = Release<Goblin>(55, 1);
        g->posX = c.x;
        g->posY = c.y;
        g->Update(tileList, 3);
        EXPECT_EQ((int)g->cellRow * 10 + (int)g->cellCol, 55) << c.name;
        EXPECT_FLOAT_EQ(g->transform.m[0][0], c.expectedScaleX) << c.name;
        EXPECT_FLOAT_EQ(g->transform.m[1][1], 20.0f) << c.name;
    }
}

// Towers on both row-1 cells wall in a goblin on tile 5: its next step is
// its own cell, stuckCount counts the frames, and from the 120th it heads
// for the crystal over the towers, until a search from its new cell finds
// a way again.
TEST_F(Monsters, WalledInMonsterFallsBackToTheCrystal) {
    Board(3);
    tileList[14]->moveCost = 2;
    tileList[15]->moveCost = 2;
    Goblin* g = Release<Goblin>(5, 1);
    for (int frame = 1; frame <= 119; ++frame) {
        g->Update(tileList, 3);
        ASSERT_EQ(g->stuckCount, frame);
        ASSERT_NEAR(g->posY, 200.0f, 0.3f) << "frame " << frame << " stays on its tile";
    }
    g->Update(tileList, 3);
    EXPECT_EQ(g->stuckCount, 120);
    EXPECT_LT(g->posY, 199.8f) << "the 120th frame heads down to the crystal";
    for (int frame = 120; g->stuckCount != 0 && frame < 600; ++frame) g->Update(tileList, 3);
    EXPECT_EQ(g->stuckCount, 0);
    EXPECT_GE((int)g->cellRow, 1) << "it found a way once off its walled-in cell";
}

// Arrived on the crystal's tile with the strike flag set, the wraith jumps
// to tile health (+70 when odd, at most 99); without the flag it stays.
TEST_F(Monsters, WraithTeleportTile) {
    Board(4);
    struct Case {
        const char* name;
        unsigned health;
        bool struck;
        int tile;
    } cases[] = {
        {"35 health: 35 + 70 capped at 99", 35, true, 99},
        {"34 health: tile 34", 34, true, 34},
        {"1 health: 71", 1, true, 71},
        {"no strike: stays on the crystal", 34, false, 55},
    };
    for (const Case& c : cases) {
        WraithBoss* w = Release<WraithBoss>(55, 2);
        w->posX += 3.0f; // within the tile's box: arrives and snaps to the centre
        w->health = c.health;
        w->isAttacking = c.struck;
        w->Update(tileList, 4);
        EXPECT_FLOAT_EQ(w->posX, tileList[c.tile]->posX) << c.name;
        EXPECT_FLOAT_EQ(w->posY, tileList[c.tile]->posY) << c.name;
        EXPECT_FALSE(w->isAttacking && c.struck) << c.name << ": the strike flag is used up";
    }
}

// Released on tile 10 (off layout 4), the wraith flies straight at the
// crystal 1.5 units a frame: from (-250, 150) to (50, -50), 360.6 units;
// the tile's ±24 box catches it (and it snaps to the centre) in frame 222,
// and the crystal meets its box, taken before the move, in frame 223 (a
// float32 simulation of the flight).
TEST_F(Monsters, WraithFliesInFromOffTheBoard) {
    Board(4);
    Crystal crystal;
    crystal.SetPosition(50.0f, -50.0f);
    WraithBoss* w = Release<WraithBoss>(10, 2);
    int frame = 0;
    for (; crystal.health == 100 && frame < 400; ++frame) {
        w->Update(tileList, 4);
        crystal.Update();
    }
    EXPECT_EQ(frame, 223);
    EXPECT_EQ(crystal.health, 90) << "a boss strikes for 10";
    w->Update(tileList, 4);
    EXPECT_FLOAT_EQ(w->posX, tileList[99]->posX) << "35 health sends it to tile 99";
}
