// Crystal: strikes, the lose flag, the shard fountain and the health bar
// updates. Its draws rand() / 32767.0 rounded to float are VXRandFloat's
// values for every draw (the double quotient rounds to the same float).
//
// Depends on: GameObject, WaveSpawner, Healthbar, VXGraphics, VXSystem (VXRand).
// Limits: see Crystal.h.
#include "Crystal.h"

#include <cmath>

#include "Healthbar.h"
#include "VXSystem.h"
#include "WaveSpawner.h"

bool gLevelLost = false;

// A disc of radius 0.5 in twelve slices, drawn once per shard.
Crystal::Crystal() {
    pTexture = VXGfxTextureLoad("./Resources/crystal.png");
    pShardMesh = BuildDiscMesh(3.1415925f);
}

// Picture and shard disc are the crystal's own; the sprite mesh goes with the base.
Crystal::~Crystal() {
    if (pTexture) VXGfxTextureUnload(pTexture);
    pTexture = nullptr;
    if (pShardMesh) VXGfxMeshFree(pShardMesh);
    pShardMesh = nullptr;
}

// Shards start collapsed on the centre, at rest.
void Crystal::SetPosition(float x, float y) {
    posX = x;
    posY = y;
    for (int i = 0; i < CRYSTAL_SHARD_COUNT; ++i) {
        shardPos[i] = {x, y};
        shardVel[i] = {0.0f, 0.0f};
    }
}

// The crystal's box is tiny (±1.5): a monster strikes only once it has
// walked onto the crystal itself, not when it enters the tile.
void Crystal::Update() {
    const MonsterArray& monsters = gWaveSpawner.monsterList;
    const float half = size * 0.05f;
    boundingBox = {posX - half, posY - half, posX + half, posY + half};

    if (!healthbarList.empty()) {
        healthbarList[0]->tintColor[0] = 0.0f;
        healthbarList[0]->tintColor[1] = 1.0f;
        healthbarList[0]->tintColor[2] = 0.0f;
    }

    const VXVec2 still = {0.0f, 0.0f};
    for (const auto& monster : monsters) {
        const bool contact = RectsOverlap(monster->boundingBox, still, boundingBox, still);
        if (contact && monster->attackTimer >= 1.0f) {
            monster->isAttacking = true;
            monster->attackTimer = 0.0f;
            if (health > 0) {
                isBursting = true;
                health -= (monster->tier == 1) ? 5 : 10;
                // Only shards at rest or falling are thrown up again.
                for (int i = 0; i < CRYSTAL_SHARD_COUNT; ++i) {
                    if (shardVel[i].y <= 0.0f) {
                        shardVel[i].x = VXRandFloat() * 3.0f - 1.5f;
                        shardVel[i].y = VXRandFloat() * 4.0f;
                    }
                }
                // The fill keeps its bottom at y = -100 and loses its top.
                if (!healthbarList.empty()) {
                    Healthbar& fill = *healthbarList[0];
                    fill.SetTransform(350.0f, (float)health - 100.0f, 10.0f, (float)health);
                }
                if (healthbarList.size() > 2 && healthbarList[2]->tintColor[3] <= 0.0f)
                    healthbarList[2]->tintColor[3] = 1.0f;
            }
            if (health < 1) gLevelLost = true;
        } else if (contact && monster->attackTimer != 1.0f) {
            isBursting = false;
            monster->attackTimer += 0.01f;
        }
    }

    if (healthbarList.size() > 2) {
        float& warning = healthbarList[2]->tintColor[3];
        warning -= 0.01f;
        if (warning < 0.0f) warning = 0.0f;
    }

    for (int i = 0; i < CRYSTAL_SHARD_COUNT; ++i) {
        if (isBursting) shardVel[i].y -= 0.5f;
        shardPos[i].x += shardVel[i].x * VXRandFloat();
        shardPos[i].y += shardVel[i].y * VXRandFloat();
        shardScale[i].x -= 0.1f;
        shardScale[i].y -= 0.1f;
        // A shrunk shard reappears near the centre with a new size, at rest:
        // the idle shimmer.
        if (shardScale[i].x <= 0.0f) {
            const float s = VXRandFloat() * 12.0f;
            shardScale[i] = {s, s};
            shardPos[i].x = VXRandFloat() * 2.0f - 1.0f + posX;
            shardPos[i].y = VXRandFloat() * 2.0f - 1.0f + posY;
            shardVel[i] = {0.0f, 0.0f};
        }
    }

    for (int i = 0; i < CRYSTAL_SHARD_COUNT; ++i) {
        VXMtx33& m = shardTransform[i];
        m = {};
        m.m[0][0] = shardScale[i].x;
        m.m[1][1] = shardScale[i].y;
        m.m[0][2] = shardPos[i].x;
        m.m[1][2] = shardPos[i].y;
        m.m[2][2] = 1.0f;
    }
}

// Additive blending makes overlapping shards glow; the next textured sprite
// sets its own blending again.
void Crystal::DrawShards() {
    if (!pShardMesh) return;
    for (int i = 0; i < CRYSTAL_SHARD_COUNT; ++i) {
        const float a = VXRandFloat();
        const float g = VXRandFloat();
        DrawGlowDot(pShardMesh, shardTransform[i], 0.0f, g, 1.0f, a);
    }
}
