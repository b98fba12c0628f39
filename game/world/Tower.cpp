// Tower: counting, firing and the care of its projectiles.
//
// Depends on: Projectile, Monster, Crystal, Audio, VXGraphics.
// Limits: see Tower.h.
#include "Tower.h"

#include <cstdio>
#include <cstdlib>

#include "GameMain.h"

TowerArray towerList;

// Projectiles go with their tower; the picture is the tier's, loaded once.
Tower::~Tower() {
    projectiles.clear();
    if (pTexture) VXGfxTextureUnload(pTexture);
    pTexture = nullptr;
}

// The quad spans one picture cell: the top-left one.
void Tower::BuildFirstFrameMesh(float columns, float rows, const char* func, const char* file,
                                int line) {
    BuildFrameQuad(1.0f / columns, 1.0f / rows, func, file, line);
}

// Every shot sounds on a free channel so overlapping arrows all play; the
// arrow slot names the newest one.
void Tower::Fire(Sound arrowSound, SoundSystem* soundSystem) {
    AudioPlayIntoSlot(soundSystem, arrowSound, &gChannelArrow, false);
    fireTimer = 0.0f;
    projectiles.push_back(std::make_unique<Projectile>());
    Projectile& shot = *projectiles.back();
    shot.Launch(posX, posY);
    shot.SetTransform(posX, posY, shot.size);
    shot.SetMesh();
}

// Count, fire, then let the arrows fly on even while the tower is dragged.
void Tower::Update(MonsterArray& monsters, Sound arrowSound, SoundSystem* soundSystem,
                   Crystal* crystal) {
    if (!monsters.empty()) {
        if (tintColor[3] >= 1.0f) {
            for (size_t i = 0; i < monsters.size(); ++i) {
                const float dx = monsters[i]->posX - posX;
                const float dy = monsters[i]->posY - posY;
                if (dx * dx + dy * dy < TOWER_REACH_SQUARED) {
                    fireTimer += 0.1f;
                    if (fireTimer >= fireInterval) Fire(arrowSound, soundSystem);
                }
            }
        }
        for (auto& shot : projectiles) shot->Update(monsters, crystal);
    }
    for (auto& shot : projectiles) shot->Move();
    // With no monster left nothing is worth flying at: every arrow goes.
    const bool clearAll = monsters.empty();
    std::erase_if(projectiles, [clearAll](const std::unique_ptr<Projectile>& shot) {
        return clearAll || shot->life <= 0.0f;
    });
    SetTransform(posX, posY, size);
}

// Tower ids are kept in step with the tiles; a bad one is a bug, not play.
Tower& TowerAt(int id) {
    if (id < 0 || (size_t)id >= towerList.size() || !towerList[id]) {
        GameFatalExit(1, "VX_FATAL_ERROR: tower %d does not exist!!\n", id);
    }
    return *towerList[id];
}
