// Crystal: what the player defends. It stands on tile 55 with 100 health;
// every monster touching it strikes once its attackTimer is full (5 health
// for a regular monster, 10 for a boss), which throws up a fountain of 50
// glowing shards, flashes the warning bar and shortens the green fill. At
// no health left the level is lost. The whole contact rule between monsters
// and the crystal lives here.
//
// Depends on: GameObject (base quad, RectsOverlap), WaveSpawner (monster
// list), Healthbar (healthbarList), VXGraphics, VXSystem (VXRand).
// Limits: 50 shards; the shard animation consumes the game's shared random
// sequence.
#pragma once

#include "GameObject.h"

constexpr int CRYSTAL_SHARD_COUNT = 50;

class Crystal : public GameObject {
  public:
    // 100 health, size 30, "./Resources/crystal.png", the shard disc mesh.
    Crystal();
    // Releases the picture and the shard mesh.
    ~Crystal() override;
    // Centre at (x, y); every shard gathered there at rest.
    void SetPosition(float x, float y);
    // One frame: strikes by touching monsters, warning fade, shard motion.
    void Update();
    // The 50 shards, additive, each in a flickering blue-green.
    void DrawShards();

    bool isBursting = false;
    int health = 100;
    float posX = 0.0f;
    float posY = 0.0f;
    float size = 30.0f;
    VXMtx33 shardTransform[CRYSTAL_SHARD_COUNT] = {};
    VXVec2 shardScale[CRYSTAL_SHARD_COUNT] = {};
    VXVec2 shardPos[CRYSTAL_SHARD_COUNT] = {};
    VXVec2 shardVel[CRYSTAL_SHARD_COUNT] = {};
    VXGfxMesh* pShardMesh = nullptr;
};

// Set by the crystal when its health is gone; cleared by the lose screen.
extern bool gLevelLost;
