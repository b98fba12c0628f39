// Monster: the shared rules of every monster kind, frame by frame.
//
// Depends on: GameObject (RectsOverlap, mesh report), Tile, PathFinding,
// VXGraphics. Limits: one path search per monster per frame, no caching.
#include "Monster.h"

#include <cmath>

// Kinds set their constants after this.
Monster::Monster() {
}

// The kind's pictures are released here for every kind alike; the path's
// nodes go with the vector and the mesh with the base.
Monster::~Monster() {
    if (pTexture) VXGfxTextureUnload(pTexture);
    if (pTextureAlt) VXGfxTextureUnload(pTextureAlt);
    pTexture = nullptr;
    pTextureAlt = nullptr;
}

// Stats and pictures of a kind; health starts full.
void Monster::ApplyKind(const MonsterKind& kind) {
    framesU = kind.framesU;
    framesV = kind.framesV;
    health = kind.health;
    maxHealth = kind.health;
    speed = kind.speed;
    size = kind.size;
    ignoresPath = kind.ignoresPath;
    pTexture = VXGfxTextureLoad(kind.walkPicture);
    if (kind.attackPicture) pTextureAlt = VXGfxTextureLoad(kind.attackPicture);
}

// Texture coordinates span one frame; the draw routine's offset of
// frame / framesU picks the sheet cell, the texture repeating.
void Monster::BuildSheetMesh(const MonsterKind& kind) {
    BuildFrameQuad(1.0f / kind.framesU, 1.0f / kind.framesV, kind.meshFunc, kind.meshFile,
                   kind.meshLine);
}

// Regular kinds start at 5 health with lastHealth 0, and 5 is exempt, so a
// fresh regular monster does not blink on release; a fresh boss does.
void Monster::UpdateBlinkStart() {
    if (lastHealth != health && health != 5) {
        lastHealth = health;
        isBlinking = true;
        blinkCount = 0;
    }
}

// Ten frames per fade, three fades per hit.
void Monster::UpdateBlink() {
    if (!isBlinking) return;
    tintColor[3] -= 0.1f;
    if (tintColor[3] <= 0.0f) {
        ++blinkCount;
        tintColor[3] = 1.0f;
    }
    if (blinkCount == 3) isBlinking = false;
}

// Tiles are tested in index order and the last hit wins, so a monster
// straddling two rows counts as being on the lower one.
void Monster::UpdateCell(const TileArray& tiles) {
    const VXVec2 still = {0.0f, 0.0f};
    for (const auto& tile : tiles) {
        if (RectsOverlap(tile->boundingBox, still, boundingBox, still)) {
            cellRow = (float)(tile->tileIndex / BOARD_COLUMNS);
            cellCol = (float)(tile->tileIndex % BOARD_COLUMNS);
        }
    }
}

// Direction in double precision, position kept in single precision.
void Monster::StepTowards(float tx, float ty) {
    const double angle = atan2((double)(ty - posY), (double)(tx - posX));
    posX = (float)(posX + cos(angle) * 0.5 * speed);
    posY = (float)(posY + sin(angle) * 0.5 * speed);
}

// The pictures face left: heading right (or straight up or down) mirrors them.
void Monster::FaceTowards(float tx) {
    SetTransform(posX, posY, size);
    transform.m[0][0] = (posX <= tx) ? -size : size;
}

// The search writes the monster's own path.
void Monster::FindPath(int startRow, int startCol, const TileArray& tiles, int layoutId) {
    FindPathOnBoard(startRow, startCol, tiles, layoutId, path);
}

// See the file header of Monster.h for the frame's steps.
void Monster::Update(const TileArray& tiles, int layoutId) {
    // Below half health the tint runs from red back towards white, over and over.
    if ((float)health < 0.5f * (float)maxHealth) {
        tintColor[1] += 0.01f;
        tintColor[2] += 0.01f;
        if (tintColor[1] >= 1.0f) {
            tintColor[1] = 0.5f;
            tintColor[2] = 0.5f;
        }
    }
    UpdateBlinkStart();
    UpdateBlink();

    boundingBox = {posX - size / 2.0f, posY - size / 2.0f, posX + size / 2.0f, posY + size / 2.0f};
    UpdateCell(tiles);

    if (needsPath || path.empty()) {
        needsPath = false;
        FindPath((int)cellRow, (int)cellCol, tiles, layoutId);
        lastCellIndex = path.back()->row * BOARD_COLUMNS + path.back()->col;
        path.pop_back();
    }

    if (tiles.empty()) return;
    int target = path.back()->row * BOARD_COLUMNS + path.back()->col;
    if (target == lastCellIndex)
        ++stuckCount;
    else
        stuckCount = 0;
    needsPath = true;
    // No way out for two seconds: walk straight at the crystal over anything.
    if (stuckCount >= 120) target = BOARD_GOAL_TILE;

    const Tile& goal = BoardTile(tiles, target);
    StepTowards(goal.posX, goal.posY);
    FaceTowards(goal.posX);
}
