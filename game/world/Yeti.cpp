// Yeti: the kind's constants and pictures.
//
// Depends on: Monster (shared rules, sheet mesh). Limits: none of its own.
#include "Yeti.h"

namespace {
const MonsterKind kYeti = {4.0f,
                           2.0f,
                           5,
                           0.5f,
                           30.0f,
                           "./Resources/YetiWalk.png",
                           "./Resources/YetiAttack.png",
                           false,
                           "Yeti::SetMesh",
                           "Yeti",
                           85};
} // namespace

// Stats and pictures of the kind.
Yeti::Yeti() {
    ApplyKind(kYeti);
}

// One frame of the sheet on the monster quad.
void Yeti::SetMesh() {
    BuildSheetMesh(kYeti);
}
