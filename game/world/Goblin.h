// Goblin: the regular monster of levels 1 and 2: a walking goblin with an attack sheet. Only its
// constants and pictures differ from the other kinds; the rules are Monster's.
//
// Depends on: Monster. Limits: none of its own.
#pragma once

#include "Monster.h"

class Goblin : public Monster {
  public:
    Goblin();
    void SetMesh() override;
};
