// Projectile: sparks, homing, the hit and the boss rating.
//
// Depends on: GameObject, Monster, Crystal, Scores, Level, VXGraphics,
// VXMtx33, VXSystem (VXRand). Limits: see Projectile.h.
#include "Projectile.h"

#include <cmath>
#include <cstdlib>

#include "Level.h"
#include "Scores.h"
#include "VXSystem.h"

bool gBossKilled = false;

namespace {

// A spark's size and placement multiply the draw rand() / 32767.0 in double
// precision before rounding to float: 15 x r rounds differently from 15 x
// the single-precision draw for a quarter of all values.
double Rand01Double() {
    return VXRand() / 32767.0;
}

} // namespace

// Every projectile carries its own picture and spark disc: a disc of radius
// 0.5 in twelve triangles, scaled per spark.
Projectile::Projectile() {
    pTexture = VXGfxTextureLoad("./Resources/crystal.png");
    UpdateBox();
    sparkMesh = BuildDiscMesh((float)M_PI);
}

// The picture and the spark disc are the projectile's own.
Projectile::~Projectile() {
    if (pTexture) VXGfxTextureUnload(pTexture);
    pTexture = nullptr;
    if (sparkMesh) VXGfxMeshFree(sparkMesh);
    sparkMesh = nullptr;
}

// Four draws in a fixed order: width, height, then y and x of the placement.
void Projectile::SeedSpark(int i, float x, float y) {
    const double r1 = Rand01Double();
    const double r2 = Rand01Double();
    const double r3 = Rand01Double();
    const double r4 = Rand01Double();
    sparkSize[i].x = (float)(15.0 * r1);
    sparkSize[i].y = (float)(15.0 * r2);
    VXMtx33Trans(&sparkLocal[i], (float)(x - 5.0f + 10.0 * r4), (float)(y - 5.0f + 10.0 * r3));
}

// The hit box is half the sprite: the arrow must really reach the monster.
void Projectile::UpdateBox() {
    boundingBox.minX = posX - size / 2.0f;
    boundingBox.minY = posY - size / 2.0f;
    boundingBox.maxX = posX + size / 2.0f;
    boundingBox.maxY = posY + size / 2.0f;
}

// The launch point is the tower's centre; the sparks start around it.
void Projectile::Launch(float x, float y) {
    posX = x;
    posY = y;
    for (int i = 0; i < PROJECTILE_SPARK_COUNT; ++i) SeedSpark(i, x, y);
}

// Sparks stay where they were seeded and shrink; the ones that vanish are
// seeded again around the moving projectile, which draws the trail.
void Projectile::Update(MonsterArray& monsters, Crystal* crystal) {
    UpdateBox();
    for (int i = 0; i < PROJECTILE_SPARK_COUNT; ++i) {
        const float w = sparkSize[i].x;
        const float h = sparkSize[i].y;
        sparkSize[i].x = w - 0.5f;
        sparkSize[i].y = h - 0.5f;
        if (sparkSize[i].x <= 0.0f || sparkSize[i].y <= 0.0f) SeedSpark(i, posX, posY);
        VXMtx33 scale;
        VXMtx33Scale(&scale, w, h);
        VXMtx33Concat(&sparkWorld[i], &sparkLocal[i], &scale);
    }
    if (monsters.empty()) return;
    Monster& target = *monsters.front();
    targetX = target.posX;
    targetY = target.posY;
    const VXVec2 still = {0.0f, 0.0f};
    if (target.health == 0) {
        life = 0.0f; // the target died before this arrow arrived
    } else if (RectsOverlap(target.boundingBox, still, boundingBox, still)) {
        life = 0.0f;
        target.health -= 1;
    }
    // The boss's death fixes the level's stars from the crystal's health
    // at that moment; a later, weaker crystal cannot lower them.
    if (target.tier == 2 && target.health == 0) {
        const int stars = StarsForCrystalHealth(crystal ? crystal->health : 0);
        if (stars > 0) gStarsEarned = stars;
        RaiseLevelRating(gCurrentLevel, gStarsEarned);
        gBossKilled = true;
    }
}

// Straight at the last aim, so the flight curves after a moving target.
void Projectile::Move() {
    life -= 1.0f;
    if (life < 0.0f) life = 0.0f;
    const float dx = targetX - posX;
    const float dy = targetY - posY;
    const float angle = (float)atan2((double)dy, (double)dx);
    posX += (float)(cos((double)angle) * 0.5) * speed;
    posY += (float)(sin((double)angle) * 0.5) * speed;
    SetTransform(posX, posY, size);
}

// A new random colour and transparency for every spark in every frame.
void Projectile::DrawSparks() {
    if (!sparkMesh) return;
    for (int i = 0; i < PROJECTILE_SPARK_COUNT; ++i) {
        const float q1 = VXRandFloat();
        const float q2 = VXRandFloat();
        const float q3 = VXRandFloat();
        DrawGlowDot(sparkMesh, sparkWorld[i], 1.0f, q3, q2, q1);
    }
}
