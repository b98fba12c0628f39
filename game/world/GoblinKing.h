// GoblinKing: the boss of level 2. Only its constants and pictures differ from the
// other kinds; the rules are Monster's.
//
// Depends on: Monster. Limits: none of its own.
#pragma once

#include "Monster.h"

class GoblinKing : public Monster {
  public:
    GoblinKing();
    void SetMesh() override;
};
