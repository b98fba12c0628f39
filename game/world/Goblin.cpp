// Goblin: the kind's constants and pictures.
//
// Depends on: Monster (shared rules, sheet mesh). Limits: none of its own.
#include "Goblin.h"

namespace {
const MonsterKind kGoblin = {5.0f,
                             2.0f,
                             5,
                             0.5f,
                             20.0f,
                             "./Resources/GoblinWalking.png",
                             "./Resources/GoblinAttack.png",
                             false,
                             "Goblin::SetMesh",
                             "Goblin",
                             86};
} // namespace

// Stats and pictures of the kind.
Goblin::Goblin() {
    ApplyKind(kGoblin);
}

// One frame of the sheet on the monster quad.
void Goblin::SetMesh() {
    BuildSheetMesh(kGoblin);
}
