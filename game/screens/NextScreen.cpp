// The NextScreen state (GS_NEXT_SCREEN): shown before every start of a
// level, whether chosen in the menu, continued after a win or restarted. A
// whole-screen picture blinks three times, then the level gCurrentLevel
// starts, or the credits roll once the last level has been won.
//
// Depends on: Background, Level (gCurrentLevel, gLevelWon), Crystal
// (gLevelLost), GameStateManager. Limits: reads no input.
#include "Background.h"
#include "Crystal.h"
#include "GameStateManager.h"
#include "GameStates.h"
#include "Level.h"

namespace {

// Each blink fades the picture from full alpha to half in steps of 0.005
// (101 frames in single precision); three blinks, a little over 5 seconds.
constexpr float kBlinkStep = 0.005f;
constexpr int kBlinks = 3;
// gCurrentLevel after continuing from the last level.
constexpr int kAfterLastLevel = 7;

std::unique_ptr<Background> sNextPicture;
int sBlinkCount = 0;

} // namespace

void GameStateNextScreenInit(void) {
    CreateBackground(sNextPicture, "./Resources/NextScreen.png", 400.0f, 300.0f, 0.0f, 0.0f);
}

void GameStateNextScreenUpdate(void) {
    float& alpha = sNextPicture->tintColor[3];
    alpha -= kBlinkStep;
    if (alpha <= 0.5f) {
        sBlinkCount += 1;
        alpha = 1.0f;
    }
    if (sBlinkCount >= kBlinks) {
        alpha = 1.0f;
        sBlinkCount = 0;
        gGameStateNext = gCurrentLevel == kAfterLastLevel ? GS_CREDITS : GS_LEVEL;
        gLevelWon = false;
        gLevelLost = false;
    }
}

void GameStateNextScreenDraw(void) {
    DrawPicture(gNextScreenObjects, sNextPicture);
}

void NextScreenFreeObjects(void) {
    sNextPicture.reset();
}
