// WaveSpawner: wave contents, release timing and spawn tiles per level.
//
// Depends on: Monster kinds, Tile, Level, VXSystem (VXRand, VXRandFloat).
// Limits: see WaveSpawner.h.
#include "WaveSpawner.h"

#include <algorithm>

#include "BeachGoblin.h"
#include "BeachGoblinKing.h"
#include "Goblin.h"
#include "GoblinKing.h"
#include "Level.h"
#include "SpiderBoss.h"
#include "Spiderling.h"
#include "VXSystem.h"
#include "WraithBoss.h"
#include "Yeti.h"

WaveSpawner gWaveSpawner;
unsigned gWaveNumber = 0;

namespace {

// Regular monsters in each of waves 1 and 2, per level; wave 3 holds one
// boss in levels 2-6 and nothing in the tutorial.
constexpr unsigned kRegularPerWave[6] = {3, 5, 5, 7, 8, 11};

// Levels with waves: 1 to 6.
bool IsLevel(int level) {
    return level >= 1 && level <= 6;
}

// The level's regular kind.
std::unique_ptr<Monster> MakeRegular(int level) {
    switch (level) {
    case 1:
    case 2:
        return std::make_unique<Goblin>();
    case 3:
        return std::make_unique<BeachGoblin>();
    case 4:
        return std::make_unique<Spiderling>();
    default:
        return std::make_unique<Yeti>();
    }
}

// The level's boss; the tutorial has none.
std::unique_ptr<Monster> MakeBoss(int level) {
    switch (level) {
    case 2:
        return std::make_unique<GoblinKing>();
    case 3:
        return std::make_unique<BeachGoblinKing>();
    case 4:
        return std::make_unique<SpiderBoss>();
    case 5:
    case 6:
        return std::make_unique<WraithBoss>();
    default:
        return nullptr;
    }
}

// Bosses of levels 5 and 6 start on tile 10, off their boards: the wraith
// flies in from outside.
int BossTile(int level) {
    return level >= 5 ? 10 : 5;
}

// 0..100: the integer part of 100 x a draw in [0, 1]. Level 2's draw,
// rand() / 32767 rounded to float, is VXRandFloat's value for every draw,
// so all levels draw alike.
int DrawPercent() {
    return (int)(100.0f * VXRandFloat());
}

} // namespace

// Per level, bands of r in ascending order.
int WaveRegularSpawnTile(int level, int r) {
    switch (level) {
    case 1:
        return 5;
    case 2:
    case 5:
        return r < 40 ? 5 : r < 75 ? 90 : 99;
    case 3:
    case 4:
        return r < 25 ? 1 : r < 50 ? 9 : r < 75 ? 90 : 99;
    case 6:
        return r < 14 ? 3 : r < 29 ? 7 : r < 44 ? 50 : r < 59 ? 59 : r < 74 ? 92 : 97;
    default:
        return 5;
    }
}

// Counts for the wave; isDone waits for the next update's check.
void WaveSpawner::SetupWave() {
    regularTotal = regularSpawned = bossTotal = bossSpawned = 0;
    isDone = false;
    if (!IsLevel(gCurrentLevel)) return;
    if (gWaveNumber == 1 || gWaveNumber == 2)
        regularTotal = kRegularPerWave[gCurrentLevel - 1];
    else if (gWaveNumber == 3 && gCurrentLevel >= 2)
        bossTotal = 1;
}

// Places a fresh monster on its spawn tile and hands it to the list.
static void Release(MonsterArray& list, std::unique_ptr<Monster> monster, int tileIndex, int tier) {
    const Tile& tile = BoardTile(tileList, tileIndex);
    monster->posX = tile.posX;
    monster->posY = tile.posY;
    monster->SetTransform(monster->posX, monster->posY, monster->size);
    monster->SetMesh();
    monster->tier = tier;
    list.push_back(std::move(monster));
}

// Levels 4 and 6 draw their spawn number on every update while regular
// monsters remain, the others only when one is released: this keeps each
// level's run of random numbers, and so its spawn pattern for a given seed.
void WaveSpawner::Update() {
    if (gWaveNumber == 1 || gWaveNumber == 2) {
        if (regularSpawned == regularTotal) isDone = true;
    } else if (gWaveNumber == 3) {
        if (bossSpawned == bossTotal && regularSpawned == regularTotal) isDone = true;
    }

    const int level = gCurrentLevel;
    if (!tileList.empty()) {
        spawnTimer += 1.0f;
        if (regularSpawned < regularTotal) {
            const bool drawsEveryUpdate = (level == 4 || level == 6);
            int r = drawsEveryUpdate ? DrawPercent() : 0;
            if (spawnTimer >= spawnInterval) {
                if (!drawsEveryUpdate) r = DrawPercent();
                spawnTimer = 0.0f;
                Release(monsterList, MakeRegular(level), WaveRegularSpawnTile(level, r), 1);
                ++regularSpawned;
            }
        }
        if (bossSpawned < bossTotal && spawnTimer >= spawnInterval) {
            if (auto boss = MakeBoss(level)) {
                spawnTimer = 0.0f;
                Release(monsterList, std::move(boss), BossTile(level), 2);
                ++bossSpawned;
            }
        }
    }

    monsterList.erase(
        std::remove_if(monsterList.begin(), monsterList.end(),
                       [](const std::unique_ptr<Monster>& m) { return m->health == 0; }),
        monsterList.end());
}
