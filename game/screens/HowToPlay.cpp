// The HowToPlay state (GS_HOW_TO_PLAY), reached from the main menu's help
// button: one whole-screen picture that explains the game, and a back
// button to the menu. It never leaves by itself.
//
// Depends on: Background, Buttons, GameStateManager. Limits: its objects
// live until the next entry replaces them or the program ends.
#include "Background.h"
#include "Buttons.h"
#include "GameStateManager.h"
#include "GameStates.h"

namespace {

std::unique_ptr<Background> sHowToPlayPicture;
std::unique_ptr<Buttons> sBackButton;

} // namespace

void GameStateHowToPlayInit(void) {
    CreateBackground(sHowToPlayPicture, "./Resources/howtoplay.png", 400.0f, 300.0f, 0.0f, 0.0f);
    CreateButton(sBackButton, ButtonShape::Ordinary, 180.0f, -200.0f);
}

void GameStateHowToPlayUpdate(void) {
    float mx, my;
    MousePoint(&mx, &my);
    if (BackButtonClicked(*sBackButton, mx, my)) gGameStateNext = GS_MAIN_MENU;
}

void GameStateHowToPlayDraw(void) {
    DrawPicture(gHowToPlayObjects, sHowToPlayPicture);
    if (sBackButton) gHowToPlayObjects.DrawObject(*sBackButton, 1.0f, 1.0f);
}

void HowToPlayFreeObjects(void) {
    sHowToPlayPicture.reset();
    sBackButton.reset();
}
