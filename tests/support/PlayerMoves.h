// PlayerMoves: what a player does with the mouse, for test scripts that play
// the real game (GamePlay): point and click on the menus, drag towers, and
// the road every fault test plays, from the splash into level 1 and through
// its first wave.
#pragma once

#include <functional>
#include <initializer_list>

#include "GamePlay.h"

// A window of another test appearing on the shared display makes the window
// system report its own pointer for a frame: the pointer is brought back.
void PlayerHoverAt(GameScript& s, float x, float y);
// The pointer rests on the point, the button goes down there; the game then
// stands after the frame of the click.
void PlayerClickAt(GameScript& s, float x, float y);
// Drags with the left button from one tile to another: press over the
// tower, carry it over the target, release there.
void PlayerDragTile(GameScript& s, int from, int to);
// The tile the tower stands on (-1 when it stands on none).
int PlayerTileOfTower(int id);
// The first of the tiles that is free (-1 when none is).
int PlayerFirstFreeTile(std::initializer_list<int> tiles);

// Holds the space bar through the splash and waits out the menu's loading
// screen. Returns false when the game ended or stood still on the way.
bool PlayerSkipSplashToMenu(GameScript& s);
// Once level 1's first wave has started: both first towers merge beside the
// goblins' road, the wave's own tower stands on its other side, as the
// tutorial asks. The towers then beat both waves.
bool PlayerPlaceTutorialTowers(GameScript& s);
// Once monsters come: the first is carried next to the crystal, whose
// health drops to 5, until the level is lost. False if it is not.
bool PlayerLoseLevel(GameScript& s);
// The road every fault test plays: the splash skipped, level 1 picked in
// the menu, its towers placed, until its second wave starts.
bool PlayerIntoFirstWave(GameScript& s);
