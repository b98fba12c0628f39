// SpiderBoss: the kind's constants and pictures.
//
// Depends on: Monster (shared rules, sheet mesh). Limits: none of its own.
#include "SpiderBoss.h"

namespace {
const MonsterKind kSpiderBoss = {2.0f,         2.0f,  30,
                                 1.0f,         30.0f, "./Resources/BroodWalk.png",
                                 nullptr,      false, "SpiderBoss::SetMesh",
                                 "SpiderBoss", 64};
} // namespace

// Stats and pictures of the kind.
SpiderBoss::SpiderBoss() {
    ApplyKind(kSpiderBoss);
}

// One frame of the sheet on the monster quad.
void SpiderBoss::SetMesh() {
    BuildSheetMesh(kSpiderBoss);
}
