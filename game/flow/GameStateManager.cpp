// The game state manager: binds the six operations of the running state
// from the state table.
#include "GameStateManager.h"

#include <cstdio>
#include <cstdlib>

#include "GameMain.h"
#include "GameStates.h"

int gGameStateCurr = GS_SPLASH_SCREEN;
int gGameStatePrev = GS_SPLASH_SCREEN;
int gGameStateNext = GS_SPLASH_SCREEN;
GameStateFn GameStateLoad = nullptr, GameStateInit = nullptr, GameStateUpdate = nullptr,
            GameStateDraw = nullptr, GameStateFree = nullptr, GameStateUnload = nullptr;

namespace {
// An empty operation, for the screens that need none.
void NoOp(void) {
}
} // namespace

GameStateOps gGameStateTable[GS_QUIT + 1] = {
    /* GS_SPLASH_SCREEN */ {GameStateSplashScreenLoad, GameStateSplashScreenInit,
                            GameStateSplashScreenUpdate, GameStateSplashScreenDraw, NoOp,
                            GameStateSplashScreenUnload},
    /* GS_MAIN_MENU */
    {GameStateMainMenuLoad, GameStateMainMenuInit, GameStateMainMenuUpdate, GameStateMainMenuDraw,
     GameStateMainMenuFree, GameStateMainMenuUnload},
    /* GS_LEVEL */
    {GameStateLevelLoad, GameStateLevelInit, GameStateLevelUpdate, GameStateLevelDraw,
     GameStateLevelFree, GameStateLevelUnload},
    /* 3: no state */ {},
    /* GS_RESTART */ {},
    /* GS_CREDITS */
    {NoOp, GameStateCreditsInit, GameStateCreditsUpdate, GameStateCreditsDraw, NoOp, NoOp},
    /* GS_HOW_TO_PLAY */
    {NoOp, GameStateHowToPlayInit, GameStateHowToPlayUpdate, GameStateHowToPlayDraw, NoOp, NoOp},
    /* GS_NEXT_SCREEN */
    {NoOp, GameStateNextScreenInit, GameStateNextScreenUpdate, GameStateNextScreenDraw, NoOp, NoOp},
    /* GS_QUIT */ {},
};

void GameStateManagerBind(void) {
    if (gGameStateCurr == GS_RESTART || gGameStateCurr == GS_QUIT) return;
    if (gGameStateCurr < 0 || gGameStateCurr > GS_QUIT ||
        gGameStateTable[gGameStateCurr].load == nullptr) {
        GameFatalExit(1, "VX_FATAL_ERROR: invalid state!!");
    }
    const GameStateOps& ops = gGameStateTable[gGameStateCurr];
    GameStateLoad = ops.load;
    GameStateInit = ops.init;
    GameStateUpdate = ops.update;
    GameStateDraw = ops.draw;
    GameStateFree = ops.free;
    GameStateUnload = ops.unload;
}

void GameStatesFreeObjects(void) {
    MainMenuFreeObjects();
    CreditsFreeObjects();
    HowToPlayFreeObjects();
    NextScreenFreeObjects();
}
