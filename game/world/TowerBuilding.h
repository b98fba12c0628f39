// Tower building and upgrading: the level hands out first-tier towers on
// random free tiles; the player drags them with the left mouse button to
// other free tiles, and drops one first-tier tower onto another to merge
// the two into a second-tier tower. The tiles' tints give the feedback: the
// hovered tile loses its green, the start tile and every blocked tile
// crossed lose their blue, the blocked tile under the cursor is pure red.
//
// Depends on: Tile (tileList), Tower and the archer tiers (towerList),
// GameObject (RectsOverlap, MousePoint), VXInput, VXSystem (VXRand).
// Limits: only the first 100 tiles can receive a handed-out tower.
#pragma once

// Drag state of the level.
extern int gDragTower;          // id of the dragged tower, -1 for none
extern unsigned gDragFromTile;  // tile the drag started on
extern unsigned gDragToTile;    // tile chosen as the drop target
extern unsigned gDragMoveCost;  // moveCost of the start tile: the dragged tier
extern bool gDropBlocked;       // the drop will be refused: the tower goes back
extern bool gMergePending;      // the drop will merge with the tower under the cursor
extern bool gTutorialMoved;     // a tower has been moved at least once
extern bool gTutorialMergeSeen; // a merge partner has been hovered at least once

// Creates up to count first-tier towers on random free tiles.
void CreateTowers(int count);
// One frame of the mouse: hover boxes and tints, press, hold, release.
void HandleTowerDrag(void);
// Replaces the towers on gDragFromTile and gDragToTile with one tower of
// the next tier on gDragToTile and renumbers the others.
void MergeTowers(void);
// The cursor's world point as the level last computed it: at its init and
// in every frame of the drag handling (the pause button is tested against it).
extern float gLevelCursorX;
extern float gLevelCursorY;
