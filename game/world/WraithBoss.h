// WraithBoss: the boss of levels 5 and 6. It ignores the path search and the
// board's shape: it flies straight at the crystal, strikes it, and is thrown
// back to a tile picked by its remaining health, from where it flies in
// again.
//
// Depends on: Monster (blink, cell, movement, facing). Limits: its small
// box (±0.5) makes "arrived" mean the crystal tile's box holds its centre.
#pragma once

#include "Monster.h"

class WraithBoss : public Monster {
  public:
    WraithBoss();
    void SetMesh() override;
    // Blink (no low-health pulse), box, cell, flight to tile 55, teleport
    // after a strike.
    void Update(const TileArray& tiles, int layoutId) override;
};
