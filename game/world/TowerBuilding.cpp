// Tower building and upgrading: CreateTowers, HandleTowerDrag, MergeTowers.
//
// A tower's id is its index in towerList and the tile under it holds that id
// in occupant; removing towers renumbers the tiles so the two stay in step.
// Depends on: Tile, Tower, ArcherTower_Tier1, ArcherTower_Tier2, GameObject,
// VXInput, VXSystem (VXRand). Limits: see TowerBuilding.h.
#include "TowerBuilding.h"

#include "ArcherTower_Tier1.h"
#include "ArcherTower_Tier2.h"
#include "Tile.h"
#include "Tower.h"
#include "VXInput.h"
#include "VXSystem.h"

// No drag is running until the first press on a tower.
int gDragTower = -1;
unsigned gDragFromTile = 0;
unsigned gDragToTile = 0;
unsigned gDragMoveCost = 0;
bool gDropBlocked = false;
bool gMergePending = false;
bool gTutorialMoved = false;
bool gTutorialMergeSeen = false;
float gLevelCursorX = 0.0f;
float gLevelCursorY = 0.0f;

namespace {

// Puts a new tower on a tile's centre and gives it its quad.
void PlaceTower(Tower& tower, const Tile& tile) {
    tower.posX = tile.posX;
    tower.posY = tile.posY;
    tower.SetTransform(tower.posX, tower.posY, tower.size);
    tower.SetMesh();
}

// The cursor point is a box of no size: hovered means inside the hover box.
bool IsHovered(const Tile& tile, const BoundingBox& cursor) {
    const VXVec2 still = {0.0f, 0.0f};
    return RectsOverlap(cursor, still, tile.boundingBox, still);
}

} // namespace

// Draws tiles until a free one turns up; a taken tile simply draws again.
void CreateTowers(int count) {
    if (tileList.empty()) return;
    int freeTiles = 0;
    for (const auto& tile : tileList)
        if (tile->moveCost == 0) ++freeTiles;
    if (count > freeTiles) count = freeTiles;
    int r = VXRand() % 100;
    const int firstId = (int)towerList.size();
    for (int i = 0; i < count; ++i) {
        while (r >= (int)tileList.size() || tileList[r]->moveCost != 0) r = VXRand() % 100;
        Tile& tile = *tileList[r];
        towerList.push_back(std::make_unique<ArcherTower_Tier1>());
        PlaceTower(*towerList.back(), tile);
        tile.moveCost = ARCHER_TIER1_MOVE_COST;
        tile.occupant = firstId + i;
    }
}

// Hover and tints every frame, then the press, hold and release of the
// left button: pick up, carry, and drop, merge or send back.
void HandleTowerDrag(void) {
    MousePoint(&gLevelCursorX, &gLevelCursorY);
    const float x = gLevelCursorX, y = gLevelCursorY;
    const BoundingBox cursor = {x, y, x, y};

    // Hover boxes (monsters find their cells through them too) and the
    // magenta of the hovered tile.
    for (auto& tile : tileList) {
        tile->SetHoverBox();
        tile->tintColor[1] = IsHovered(*tile, cursor) ? 0.0f : 1.0f;
    }

    if (VXInputCheckTriggered(VX_KEY_LBUTTON)) {
        // A refused drop belongs to the drag that crossed the blocked tile;
        // every press starts clean, so a press on empty ground (which starts
        // no drag but still sweeps the board while held) never spoils the
        // player's next real drag.
        gDropBlocked = false;
        gMergePending = false;
        for (auto& tile : tileList) {
            if (tile->occupant < 0 || !IsHovered(*tile, cursor)) continue;
            tile->tintColor[2] = 0.0f;
            gDragFromTile = gDragToTile = (unsigned)tile->tileIndex;
            gDragMoveCost = tile->moveCost;
            if (tile->moveCost != 0) gDragTower = tile->occupant;
        }
    }

    if (VXInputCheckCurr(VX_KEY_LBUTTON)) {
        // Half transparent while carried: the tower does not fire meanwhile.
        if (gDragTower >= 0) TowerAt(gDragTower).tintColor[3] = 0.5f;
        for (auto& tile : tileList) {
            if (!IsHovered(*tile, cursor)) {
                tile->tintColor[0] = 1.0f;
                continue;
            }
            if ((unsigned)tile->tileIndex == gDragFromTile) continue;
            if (tile->moveCost == 0) {
                // Leaving a merge partner for a free tile refuses the drop:
                // the player has not clearly chosen where the tower goes.
                if (gMergePending) gDropBlocked = true;
                gMergePending = false;
                gDragToTile = (unsigned)tile->tileIndex;
                if (gDragTower >= 0) {
                    Tower& tower = TowerAt(gDragTower);
                    tower.posX = tile->posX;
                    tower.posY = tile->posY;
                }
            } else if (tile->moveCost == gDragMoveCost && gDragMoveCost < 3) {
                gMergePending = true;
                gTutorialMergeSeen = true;
                gDragToTile = (unsigned)tile->tileIndex;
            } else {
                gDropBlocked = true;
                tile->tintColor[0] = 1.0f;
                tile->tintColor[1] = 0.0f;
                tile->tintColor[2] = 0.0f;
            }
        }
    }

    if (VXInputCheckReleased(VX_KEY_LBUTTON)) {
        if (gDragTower >= 0) {
            Tower& tower = TowerAt(gDragTower);
            tower.tintColor[3] = 1.0f;
            Tile& from = BoardTile(tileList, (int)gDragFromTile);
            if (gDropBlocked) {
                gDropBlocked = false;
                tower.posX = from.posX;
                tower.posY = from.posY;
                from.occupant = gDragTower;
                from.moveCost = gDragMoveCost;
            } else if (gMergePending) {
                gMergePending = false;
                MergeTowers();
            } else if (gDragToTile != gDragFromTile) {
                Tile& to = BoardTile(tileList, (int)gDragToTile);
                to.occupant = gDragTower;
                to.moveCost = gDragMoveCost;
                from.occupant = -1;
                from.moveCost = 0;
                gTutorialMoved = true;
            }
        }
        gDragTower = -1;
        for (auto& tile : tileList)
            tile->tintColor[0] = tile->tintColor[1] = tile->tintColor[2] = 1.0f;
    }
}

// Two first-tier towers become one second-tier tower on the tile dropped
// onto; the start tile is freed.
void MergeTowers(void) {
    Tile& onto = BoardTile(tileList, (int)gDragToTile);
    Tile& from = BoardTile(tileList, (int)gDragFromTile);
    const int a = onto.occupant;
    const int b = from.occupant;
    if (a == b) return;
    const int lo = a < b ? a : b;
    const int hi = a < b ? b : a;
    TowerAt(hi); // both ids must name towers before anything is removed
    TowerAt(lo);
    // The higher id goes first so the lower one still names its tower.
    towerList.erase(towerList.begin() + hi);
    towerList.erase(towerList.begin() + lo);
    for (auto& tile : tileList) {
        if (tile.get() == &onto || tile.get() == &from) continue;
        if (tile->occupant > hi)
            tile->occupant -= 2;
        else if (tile->occupant > lo && tile->occupant < hi)
            tile->occupant -= 1;
    }
    onto.moveCost = from.moveCost = 0;
    onto.occupant = from.occupant = -1;
    if (gDragMoveCost == ARCHER_TIER1_MOVE_COST) {
        towerList.push_back(std::make_unique<ArcherTower_Tier2>());
        PlaceTower(*towerList.back(), onto);
        onto.moveCost = ARCHER_TIER2_MOVE_COST;
        onto.occupant = (int)towerList.size() - 1;
    }
}
