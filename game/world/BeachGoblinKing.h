// BeachGoblinKing: the boss of level 3. Only its constants and pictures differ from the
// other kinds; the rules are Monster's.
//
// Depends on: Monster. Limits: none of its own.
#pragma once

#include "Monster.h"

class BeachGoblinKing : public Monster {
  public:
    BeachGoblinKing();
    void SetMesh() override;
};
