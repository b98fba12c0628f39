// SpiderBoss: the brood mother, boss of level 4. Only its constants and pictures differ from the
// other kinds; the rules are Monster's.
//
// Depends on: Monster. Limits: none of its own.
#pragma once

#include "Monster.h"

class SpiderBoss : public Monster {
  public:
    SpiderBoss();
    void SetMesh() override;
};
