// GoblinKing: the kind's constants and pictures.
//
// Depends on: Monster (shared rules, sheet mesh). Limits: none of its own.
#include "GoblinKing.h"

namespace {
const MonsterKind kGoblinKing = {5.0f,         2.0f,  30,
                                 1.0f,         30.0f, "./Resources/GoblinBossWalk.png",
                                 nullptr,      false, "GoblinKing::SetMesh",
                                 "GoblinKing", 65};
} // namespace

// Stats and pictures of the kind.
GoblinKing::GoblinKing() {
    ApplyKind(kGoblinKing);
}

// One frame of the sheet on the monster quad.
void GoblinKing::SetMesh() {
    BuildSheetMesh(kGoblinKing);
}
