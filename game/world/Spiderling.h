// Spiderling: the regular monster of level 4, with an attack sheet. Only its constants and pictures
// differ from the other kinds; the rules are Monster's.
//
// Depends on: Monster. Limits: none of its own.
#pragma once

#include "Monster.h"

class Spiderling : public Monster {
  public:
    Spiderling();
    void SetMesh() override;
};
