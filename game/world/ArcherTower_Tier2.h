// ArcherTower_Tier2: the second-tier archer tower: made by merging two first-tier towers, fires
// on a count of 6 (61 counts of 0.1 in single precision: after 60 the
// count is still just below 6), about three times as often. It cannot be
// merged further.
//
// Depends on: Tower, VXGraphics (picture "./Resources/ArcherT2.png", 4 x 2 frames).
// Limits: shows only the first frame of its picture.
#pragma once

#include "Tower.h"

// The tile moveCost while a tower of this tier stands there.
constexpr unsigned ARCHER_TIER2_MOVE_COST = 3;

class ArcherTower_Tier2 : public Tower {
  public:
    // Size 20, fire interval 6, the tier's picture.
    ArcherTower_Tier2();
    // The first frame of the 4 x 2 picture on a 2 x 2 quad.
    void SetMesh() override;

    float columns = 4.0f;
    float rows = 2.0f;
};
