// WaveSpawner: owns the live monsters of a level and brings them onto the
// board, one every 300 updates: regular monsters in waves 1 and 2, the
// level's boss in wave 3, each kind and spawn tile depending on the level
// (and on a random draw for the regular spawn tile). It also removes
// monsters whose health has reached 0.
//
// Depends on: Monster and the eight kinds, Tile (tileList), Level
// (gCurrentLevel), VXSystem (VXRand, VXRandFloat: the game's one random
// sequence).
// Limits: levels 1-6; the spawn timer carries over between waves and levels.
#pragma once

#include "Monster.h"

class WaveSpawner {
  public:
    // Resets the wave's counts and sets them for wave gWaveNumber of
    // gCurrentLevel; the timer and the monster list are left alone.
    void SetupWave();
    // One frame: done check, timer, at most one release, dead-monster removal.
    void Update();
    // Deletes every monster.
    void Clear() { monsterList.clear(); }

    bool isDone = false;
    MonsterArray monsterList; // live monsters in spawn order
    float spawnTimer = 0.0f;  // frames since the last release
    float spawnInterval = 300.0f;
    unsigned regularTotal = 0;
    unsigned regularSpawned = 0;
    unsigned bossTotal = 0;
    unsigned bossSpawned = 0;
};

// The one spawner of the game.
extern WaveSpawner gWaveSpawner;
// Waves started so far in this level: 0 before the first, then 1, 2, 3.
extern unsigned gWaveNumber;

// The regular spawn tile of a level for a draw r = 0..100 (the last band of
// each level takes r = 100).
int WaveRegularSpawnTile(int level, int r);
