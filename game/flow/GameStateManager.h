// The game state manager: state ids, the state table and the six bound
// operations of the running state.
#pragma once

enum {
    GS_SPLASH_SCREEN = 0,
    GS_MAIN_MENU = 1,
    GS_LEVEL = 2,
    GS_RESTART = 4,
    GS_CREDITS = 5,
    GS_HOW_TO_PLAY = 6,
    GS_NEXT_SCREEN = 7,
    GS_QUIT = 8,
};

typedef void (*GameStateFn)(void);

// The six operations of one screen.
struct GameStateOps {
    GameStateFn load, init, update, draw, free, unload;
};

extern int gGameStateCurr;
extern int gGameStatePrev;
extern int gGameStateNext;
extern GameStateFn GameStateLoad, GameStateInit, GameStateUpdate, GameStateDraw, GameStateFree,
    GameStateUnload;

// Indexed by state id. Ids 3, GS_RESTART and GS_QUIT have no entry (all null).
// Tests may replace entries to watch the loop; the game never writes it.
extern GameStateOps gGameStateTable[GS_QUIT + 1];

void GameStateManagerBind(void);
