// BeachGoblinKing: the kind's constants and pictures.
//
// Depends on: Monster (shared rules, sheet mesh). Limits: none of its own.
#include "BeachGoblinKing.h"

namespace {
const MonsterKind kBeachGoblinKing = {5.0f,
                                      2.0f,
                                      30,
                                      1.0f,
                                      30.0f,
                                      "./Resources/BeachGoblinBossWalk.png",
                                      nullptr,
                                      false,
                                      "BeachGoblinKing::SetMesh",
                                      "BeachGoblinKing",
                                      65};
} // namespace

// Stats and pictures of the kind.
BeachGoblinKing::BeachGoblinKing() {
    ApplyKind(kBeachGoblinKing);
}

// One frame of the sheet on the monster quad.
void BeachGoblinKing::SetMesh() {
    BuildSheetMesh(kBeachGoblinKing);
}
