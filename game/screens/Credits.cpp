// The Credits state (GS_CREDITS), reached from the main menu and after the
// last level has been won: a tall picture scrolls up through the screen,
// then fades out, and the menu returns by itself; the back button returns
// at once. Every entry starts again from the top, fully opaque.
//
// Depends on: Background, Buttons, GameStateManager. Limits: its objects
// live until the next entry replaces them or the program ends.
#include "Credits.h"

#include "Buttons.h"
#include "GameStateManager.h"
#include "GameStates.h"

std::unique_ptr<Background> gCreditsPicture;
int gCreditsScroll = 0;

namespace {

// The picture's centre rises from 3400 below the screen's centre to just
// past 3400 above it (2267 frames), then the picture fades a hundredth a
// frame (101 frames in single precision): 2368 frames, about 40 seconds.
constexpr int kScrollStart = -3400;
constexpr int kScrollEnd = 3400;
constexpr int kScrollStep = 3;
constexpr float kFadeStep = 0.01f;

std::unique_ptr<Buttons> sBackButton;

} // namespace

void GameStateCreditsInit(void) {
    gCreditsScroll = kScrollStart;
    CreateBackground(gCreditsPicture, "./Resources/Credit.png", 400.0f, 4000.0f, 0.0f,
                     (float)gCreditsScroll);
    CreateButton(sBackButton, ButtonShape::Ordinary, 180.0f, -200.0f);
}

void GameStateCreditsUpdate(void) {
    float mx, my;
    MousePoint(&mx, &my);
    float& alpha = gCreditsPicture->tintColor[3];
    if (gCreditsScroll > kScrollEnd)
        alpha -= kFadeStep;
    else
        gCreditsScroll += kScrollStep;
    gCreditsPicture->SetTransform(0.0f, (float)gCreditsScroll, 400.0f, 4000.0f);
    if (alpha <= 0.0f) gGameStateNext = GS_MAIN_MENU;
    if (BackButtonClicked(*sBackButton, mx, my)) gGameStateNext = GS_MAIN_MENU;
}

void GameStateCreditsDraw(void) {
    DrawPicture(gCreditsObjects, gCreditsPicture);
    if (sBackButton) gCreditsObjects.DrawObject(*sBackButton, 1.0f, 1.0f);
}

void CreditsFreeObjects(void) {
    gCreditsPicture.reset();
    sBackButton.reset();
}
