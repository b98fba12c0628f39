// The program: start-up, the state loop with its fixed frame order, and the
// orderly shutdown.
#include "GameMain.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "Audio.h"
#include "GameStateManager.h"
#include "GameStates.h"
#include "InterfaceArt.h"
#include "Level.h"
#include "PauseOverlay.h"
#include "VXFrameRateController.h"
#include "VXGraphics.h"
#include "VXInput.h"
#include "VXSystem.h"

float gFrameTime = 0.0f;

namespace {

// One frame of the running state, in the order the game relies on: the
// update sees this frame's input; the overlay and the cursor are drawn over
// the state's picture; a requested change happens after the frame is shown.
void RunFrame(void) {
    VXSysFrameStart();
    VXInputUpdate();
    if (!gPaused) {
        AudioChannelsSetPaused(false);
        GameStateUpdate();
    }
    GameStateDraw();
    if (gPaused || gConfirmOpen || gOptionsOpen) {
        // Music and effects stand still while an overlay is up.
        AudioChannelsSetPaused(true);
        RunPauseOverlay();
    }
    if (gGameStateCurr != GS_SPLASH_SCREEN) DrawCursor();
    VXSysFrameEnd();
    if (!VXSysDoesWindowExist()) gGameStateNext = GS_QUIT;
    if (gGameStateCurr == GS_LEVEL && VXInputCheckTriggered(VX_KEY_ESCAPE)) {
        gHelpShown = false;
        gPaused = !gPaused;
    }
    gFrameTime = (float)VXFrameRateControllerGetFrameTime();
}

} // namespace

void GameStartup(void) {
    VXSeedRand((unsigned)std::time(nullptr));
    VXSysInit(nullptr, 0, 800, 600, 0, 60, nullptr);
    VXSysSetWindowTitle("Quarrow!");
    VXSysSetWindowIcon("./Resources/crystal.ico", 32);
    VXGfxSetBackgroundColor(0.0f, 0.0f, 0.0f);
    gGameStatePrev = gGameStateNext = gGameStateCurr = GS_SPLASH_SCREEN;
    GameStateManagerBind();
    AudioMainSystemCreate();
    gMasterVolume = 1.0f;
    LoadInterfaceArt();
    VXInputShowCursor(0); // the game draws its own cursor sprite
    VXToogleFullScreen(true);
    gCurrentLevel = 1;
}

void GameStateLoop(void) {
    while (gGameStateCurr != GS_QUIT) {
        VXSysReset();
        if (gGameStateCurr == GS_RESTART) {
            // A restart keeps what the state's load built.
            gGameStateCurr = gGameStateNext = gGameStatePrev;
        } else {
            GameStateManagerBind();
            GameStateLoad();
        }
        GameStateInit();
        while (gGameStateCurr == gGameStateNext) RunFrame();
        GameStateFree();
        if (gGameStateNext != GS_RESTART) GameStateUnload();
        gGameStatePrev = gGameStateCurr;
        gGameStateCurr = gGameStateNext;
    }
}

void GameShutdown(void) {
    AudioMainSystemRelease();
    FreeInterfaceArt();
    GameStatesFreeObjects();
    VXSysExit();
}

void GameFatalExit(int status, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::vprintf(format, arguments);
    va_end(arguments);
    std::fflush(stdout);
    std::exit(status);
}

int GameMain(void) {
    GameStartup();
    GameStateLoop();
    GameShutdown();
    return 0;
}
