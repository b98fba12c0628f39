// InterfaceArt: the shared overlay art and the cursor sprite.
//
// Depends on: Background, Buttons, Looks, GameObject. Limits: see InterfaceArt.h.
#include "InterfaceArt.h"

#include "Looks.h"

std::unique_ptr<Background> gPauseBackdrop;
std::unique_ptr<Background> gConfirmBackdrop;
std::unique_ptr<Background> gCursorPicture;
std::unique_ptr<Background> gOptionsBackdrop;
std::unique_ptr<Background> gWinScreen;
std::unique_ptr<Background> gLoseScreen;
std::unique_ptr<Background> gHelpPicture;
std::unique_ptr<Background> gStarDisplay;

ButtonGroup gPauseButtons;
ButtonGroup gConfirmButtons;
ButtonGroup gWinButtons;
ButtonGroup gLoseButtons;
ButtonGroup gOptionsButtons;

namespace {

// A group of ordinary buttons at the given centres, kind = index.
void MakeGroup(ButtonGroup& group, std::initializer_list<VXVec2> centres) {
    group.clear();
    for (const VXVec2& c : centres) CreateButton(group, ButtonShape::Ordinary, c.x, c.y);
}

} // namespace

void LoadInterfaceArt(void) {
    CreateBackground(gPauseBackdrop, "./Resources/pauseM.png", 400.0f, 300.0f, 0.0f, 0.0f);
    CreateBackground(gConfirmBackdrop, "./Resources/cfmBG.png", 400.0f, 300.0f, 0.0f, 0.0f);
    // The cursor's transform follows the mouse in DrawCursor.
    CreateBackground(gCursorPicture, "./Resources/cursor.png", 1.0f, 1.0f, 0.0f, 0.0f);
    CreateBackground(gOptionsBackdrop, "./Resources/optionBG.png", 400.0f, 300.0f, 0.0f, 0.0f);
    CreateBackground(gWinScreen, "./Resources/WinScreen.png", 400.0f, 300.0f, 0.0f, 0.0f);
    CreateBackground(gLoseScreen, "./Resources/LoseScreen.png", 400.0f, 300.0f, 0.0f, 0.0f);
    CreateBackground(gHelpPicture, "./Resources/howtoplayPause.png", 350.0f, 250.0f, 0.0f, 0.0f);
    CreateBackground(gStarDisplay, nullptr, 130.0f, 60.0f, 10.0f, -50.0f);

    MakeGroup(gPauseButtons, {{0, 20}, {0, -45}, {0, -110}, {300, 180}, {300, 120}});
    MakeGroup(gConfirmButtons, {{-75, -25}, {75, -25}});
    MakeGroup(gWinButtons, {{-75, -155}, {75, -155}});
    MakeGroup(gLoseButtons, {{-75, -25}, {75, -25}});
    MakeGroup(gOptionsButtons, {{-75, -25}, {75, -25}});
}

// The shared pictures go here too, not when the program's globals die: by
// then the renderer is shut down and could not release them.
void FreeInterfaceArt(void) {
    gPauseButtons.clear();
    gConfirmButtons.clear();
    gWinButtons.clear();
    gLoseButtons.clear();
    gOptionsButtons.clear();
    for (auto* slot : {&gPauseBackdrop, &gConfirmBackdrop, &gCursorPicture, &gOptionsBackdrop,
                       &gWinScreen, &gLoseScreen, &gHelpPicture, &gStarDisplay})
        slot->reset();
    LooksFree();
}

// The picture's centre sits on the mouse point; 20 x 40 units.
void DrawCursor(void) {
    if (!gCursorPicture) return;
    float x, y;
    MousePoint(&x, &y);
    gCursorPicture->SetTransform(x, y, 10.0f, 20.0f);
    gOverlayObjects.DrawObject(*gCursorPicture, 1.0f, 1.0f);
}
