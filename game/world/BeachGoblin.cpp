// BeachGoblin: the kind's constants and pictures.
//
// Depends on: Monster (shared rules, sheet mesh). Limits: none of its own.
#include "BeachGoblin.h"

namespace {
const MonsterKind kBeachGoblin = {5.0f,          2.0f,  5,
                                  0.5f,          20.0f, "./Resources/BeachGoblinWalking.png",
                                  nullptr,       false, "BeachGoblin::SetMesh",
                                  "BeachGoblin", 73};
} // namespace

// Stats and pictures of the kind.
BeachGoblin::BeachGoblin() {
    ApplyKind(kBeachGoblin);
}

// One frame of the sheet on the monster quad.
void BeachGoblin::SetMesh() {
    BuildSheetMesh(kBeachGoblin);
}
