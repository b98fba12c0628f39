// Spiderling: the kind's constants and pictures.
//
// Depends on: Monster (shared rules, sheet mesh). Limits: none of its own.
#include "Spiderling.h"

namespace {
const MonsterKind kSpiderling = {2.0f,
                                 2.0f,
                                 5,
                                 0.5f,
                                 30.0f,
                                 "./Resources/SpiderWalk.png",
                                 "./Resources/SpiderAttack.png",
                                 false,
                                 "Spiderling::SetMesh",
                                 "Spiderling",
                                 79};
} // namespace

// Stats and pictures of the kind.
Spiderling::Spiderling() {
    ApplyKind(kSpiderling);
}

// One frame of the sheet on the monster quad.
void Spiderling::SetMesh() {
    BuildSheetMesh(kSpiderling);
}
