// Tower: the player's only weapon. A tower stands on one board tile, counts
// up 0.1 per frame for every monster within reach, and when its count is
// full plays the arrow sound and launches a homing projectile. It owns the
// projectiles it has launched: it updates, moves and removes them. The two
// archer tiers (ArcherTower_Tier1.h, ArcherTower_Tier2.h) differ only in
// picture and fire interval.
//
// Depends on: GameObject, Projectile, Monster (the monster list), Crystal,
// Audio (the arrow sound into gChannelArrow), VXGraphics.
// Limits: reach is tested on monster positions, not boxes; a dragged tower
// (tint alpha below 1) neither counts nor fires.
#pragma once

#include <memory>
#include <vector>

#include "Audio.h"
#include "Crystal.h"
#include "GameObject.h"
#include "Monster.h"
#include "Projectile.h"

// A monster counts for a tower below this squared distance (about 173.2 units).
constexpr float TOWER_REACH_SQUARED = 30000.0f;

class Tower : public GameObject {
  public:
    // Deletes every projectile and releases the picture (the base frees the mesh).
    ~Tower() override;
    // The base tower has no quad of its own; each tier builds one.
    void SetMesh() override {}
    // One frame: count and fire, then the projectiles' update, move and removal.
    virtual void Update(MonsterArray& monsters, Sound arrowSound, SoundSystem* soundSystem,
                        Crystal* crystal);

    ProjectileArray projectiles;
    float posX = 0.0f;
    float posY = 0.0f;
    float size = 20.0f;
    float fireInterval = 0.0f;
    float fireTimer = 0.0f;

  protected:
    // Only the tiers are ever built.
    Tower() = default;
    // The quad shows the first (top-left) frame of a columns x rows picture;
    // a failed mesh ends the program under the tier's names.
    void BuildFirstFrameMesh(float columns, float rows, const char* func, const char* file,
                             int line);

  private:
    // Plays the arrow and launches a projectile from the tower's centre.
    void Fire(Sound arrowSound, SoundSystem* soundSystem);
};

// Owning list of the level's towers in creation order; a tower's index is
// its id, held by the tile it stands on.
using TowerArray = std::vector<std::unique_ptr<Tower>>;
extern TowerArray towerList;

// Range-checked lookup: an id outside towerList is a programming error that
// ends the program with a message.
Tower& TowerAt(int id);
