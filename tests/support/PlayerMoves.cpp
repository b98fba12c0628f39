// PlayerMoves: a player's mouse on the real game.
#include "PlayerMoves.h"

#include "Crystal.h"
#include "GameStateManager.h"
#include "Level.h"
#include "MainMenu.h"
#include "Tile.h"
#include "TowerBuilding.h"
#include "VXInput.h"
#include "WaveSpawner.h"

namespace {
// True when the game's cursor stands on the world point.
bool PlayerMouseAt(float x, float y) {
    float mx, my;
    MousePoint(&mx, &my);
    return mx == x && my == y;
}
} // namespace

void PlayerHoverAt(GameScript& s, float x, float y) {
    for (int tries = 0; tries < 5 && (tries == 0 || !PlayerMouseAt(x, y)); ++tries)
        s.MoveWorld(x, y), s.Frames(1);
}

void PlayerClickAt(GameScript& s, float x, float y) {
    for (int tries = 0; tries < 5 && (tries == 0 || !PlayerMouseAt(x, y)); ++tries) {
        PlayerHoverAt(s, x, y);
        s.Press(VX_KEY_LBUTTON);
        s.Frames(1);
        s.Release(VX_KEY_LBUTTON);
    }
}

void PlayerDragTile(GameScript& s, int from, int to) {
    s.MoveWorld(tileList[from]->posX, tileList[from]->posY);
    s.Frames(1);
    s.Press(VX_KEY_LBUTTON);
    s.Frames(1);
    s.MoveWorld(tileList[to]->posX, tileList[to]->posY);
    s.Frames(1);
    s.Release(VX_KEY_LBUTTON);
    s.Frames(1);
}

int PlayerTileOfTower(int id) {
    for (auto& tile : tileList)
        if (tile->occupant == id) return tile->tileIndex;
    return -1;
}

int PlayerFirstFreeTile(std::initializer_list<int> tiles) {
    for (int index : tiles)
        if (tileList[index]->moveCost == 0) return index;
    return -1;
}

bool PlayerSkipSplashToMenu(GameScript& s) {
    s.Press(VX_KEY_SPACE);
    if (s.Until([] { return gGameStateCurr == GS_MAIN_MENU; }, 60) < 0) return false;
    s.Release(VX_KEY_SPACE);
    return s.Until([] { return !gMenuLevelButtons.empty(); }, 600) >= 0;
}

bool PlayerPlaceTutorialTowers(GameScript& s) {
    // The goblins come down the middle, by row 2.
    const int merged = PlayerFirstFreeTile({24, 26, 34, 36});
    if (merged < 0) return false;
    PlayerDragTile(s, PlayerTileOfTower(0), merged);
    PlayerDragTile(s, PlayerTileOfTower(1), merged);
    int third = -1;
    for (auto& tile : tileList)
        if (tile->moveCost == 2) third = tile->tileIndex;
    const int other = PlayerFirstFreeTile({36, 34, 26, 24, 46, 44});
    if (third >= 0 && other >= 0) PlayerDragTile(s, third, other);
    return true;
}

bool PlayerLoseLevel(GameScript& s) {
    if (s.Until([] { return gGameStateCurr == GS_LEVEL && !gWaveSpawner.monsterList.empty(); },
                1200) < 0)
        return false;
    s.OnGameThread([] {
        Monster& monster = *gWaveSpawner.monsterList.front();
        monster.posX = tileList[45]->posX;
        monster.posY = tileList[45]->posY;
        LevelCrystal()->health = 5;
    });
    return s.Until([] { return gLevelLost; }, 600) >= 0;
}

bool PlayerIntoFirstWave(GameScript& s) {
    if (!PlayerSkipSplashToMenu(s)) return false;
    PlayerClickAt(s, -350.0f, 50.0f); // level 1
    if (s.Until([] { return gGameStateCurr == GS_LEVEL && gWaveNumber == 1; }, 900) < 0)
        return false;
    return PlayerPlaceTutorialTowers(s) && s.Until([] { return gWaveNumber == 2; }, 60 * 60) >= 0;
}
