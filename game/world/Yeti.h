// Yeti: the regular monster of levels 5 and 6, with an attack sheet. Only its constants and
// pictures differ from the other kinds; the rules are Monster's.
//
// Depends on: Monster. Limits: none of its own.
#pragma once

#include "Monster.h"

class Yeti : public Monster {
  public:
    Yeti();
    void SetMesh() override;
};
