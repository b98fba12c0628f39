// ArcherTower_Tier1: the first-tier archer tower: handed out by the level, fires on a count of 18
// (180 counts of 0.1 in single precision). Two of them merge into a
// second-tier tower.
//
// Depends on: Tower, VXGraphics (picture "./Resources/ArcherT1.png", 4 x 2 frames).
// Limits: shows only the first frame of its picture.
#pragma once

#include "Tower.h"

// The tile moveCost while a tower of this tier stands there.
constexpr unsigned ARCHER_TIER1_MOVE_COST = 2;

class ArcherTower_Tier1 : public Tower {
  public:
    // Size 20, fire interval 18, the tier's picture.
    ArcherTower_Tier1();
    // The first frame of the 4 x 2 picture on a 2 x 2 quad.
    void SetMesh() override;

    float columns = 4.0f;
    float rows = 2.0f;
};
