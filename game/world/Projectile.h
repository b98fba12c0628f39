// Projectile: the homing missile a tower launches. It flies 5 units a frame
// at the first monster of the level's list, takes one health point on
// contact and is spent; it is also spent when that monster has no health
// left or after 300 frames. A cloud of 50 sparks, re-seeded around it as
// they shrink, leaves a glowing trail. When the first monster is a boss with
// no health left, the projectile rates the level from the crystal's health.
//
// Depends on: GameObject, Monster (the monster list), Crystal (health),
// Scores (star rule, stored ratings), Level (gCurrentLevel), VXGraphics,
// VXMtx33, VXSystem (VXRand).
// Limits: always aims at the first monster, whichever made its tower fire.
#pragma once

#include <memory>
#include <vector>

#include "Crystal.h"
#include "GameObject.h"
#include "Monster.h"

constexpr int PROJECTILE_SPARK_COUNT = 50;

class Projectile : public GameObject {
  public:
    // size 5, speed 10, life 300, "./Resources/crystal.png", the spark disc.
    Projectile();
    // Releases the picture and the spark disc (the base frees the sprite mesh).
    ~Projectile() override;
    // One frame of logic: box, sparks, aim, hit, boss rating.
    virtual void Update(MonsterArray& monsters, Crystal* crystal);
    // One frame of motion towards the last aim.
    virtual void Move();
    // Places the projectile at (x, y) and seeds every spark around it.
    void Launch(float x, float y);
    // The 50 sparks, additive, each in a fresh random colour with full red.
    void DrawSparks();

    VXGfxMesh* sparkMesh = nullptr;
    VXMtx33 sparkWorld[PROJECTILE_SPARK_COUNT] = {};
    VXMtx33 sparkLocal[PROJECTILE_SPARK_COUNT] = {};
    VXVec2 sparkSize[PROJECTILE_SPARK_COUNT] = {};
    float posX = 0.0f;
    float posY = 0.0f;
    float size = 5.0f;
    float speed = 10.0f; // advances 0.5 x speed units a frame
    float life = 300.0f; // frames left; 0 or less means spent
    float targetX = 0.0f;
    float targetY = 0.0f;

  private:
    // New size (up to 15) and placement (within 5 units of (x, y)) for spark i.
    void SeedSpark(int i, float x, float y);
    // The hit box: half side size / 2 around the centre.
    void UpdateBox();
};

// Owning list of a tower's projectiles; removing an entry deletes it.
using ProjectileArray = std::vector<std::unique_ptr<Projectile>>;

// Set by a projectile that finds the boss dead; the level reads it to win.
extern bool gBossKilled;
