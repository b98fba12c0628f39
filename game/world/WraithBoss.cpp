// WraithBoss: the kind's constants and its own flight.
//
// Depends on: Monster, Tile, GameObject (RectsOverlap). Limits: none of its own.
#include "WraithBoss.h"

namespace {
const MonsterKind kWraithBoss = {4.0f,         2.0f,  35,
                                 3.0f,         50.0f, "./Resources/WraithWalk.png",
                                 nullptr,      true,  "WraithBoss::SetMesh",
                                 "WraithBoss", 68};
} // namespace

// Stats and picture of the kind; it never follows a path.
WraithBoss::WraithBoss() {
    ApplyKind(kWraithBoss);
}

// One frame of the sheet on the monster quad.
void WraithBoss::SetMesh() {
    BuildSheetMesh(kWraithBoss);
}

// The strike itself is the crystal's (it sets isAttacking); the wraith only
// reacts when it has just arrived on the crystal's tile.
void WraithBoss::Update(const TileArray& tiles, int /*layoutId*/) {
    UpdateBlinkStart();
    UpdateBlink();

    const float half = size * 0.01f;
    boundingBox = {posX - half, posY - half, posX + half, posY + half};
    UpdateCell(tiles);

    if (tiles.empty()) return;
    const Tile& goal = BoardTile(tiles, BOARD_GOAL_TILE);
    const VXVec2 still = {0.0f, 0.0f};
    const bool arrived = RectsOverlap(goal.boundingBox, still, boundingBox, still);
    if (arrived) {
        posX = goal.posX;
        posY = goal.posY;
    } else {
        StepTowards(goal.posX, goal.posY);
    }
    FaceTowards(goal.posX);

    if (isAttacking && arrived) {
        // Odd health sends it to the far rows (capped at the last tile),
        // even health to the tile of that number: where it reappears
        // depends on how hurt it is.
        isAttacking = false;
        unsigned t = health;
        if (t % 2 == 1) t += 70;
        if (t > 99) t = 99;
        const Tile& back = BoardTile(tiles, (int)t);
        posX = back.posX;
        posY = back.posY;
    }
}
