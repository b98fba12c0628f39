// The win and lose overlays.
//
// Depends on: see WinLoseOverlay.h.
#include "WinLoseOverlay.h"

#include "Crystal.h"
#include "GameStateManager.h"
#include "InterfaceArt.h"
#include "Level.h"
#include "Scores.h"

namespace {

enum { WIN_CONTINUE = 0, WIN_BACK = 1 };
enum { LOSE_RESTART = 0, LOSE_BACK = 1 };

} // namespace

void RunWinOverlay(int stars) {
    if (!gLevelWon) return;
    float mx, my;
    MousePoint(&mx, &my);
    DrawPicture(gOverlayObjects, gWinScreen);
    if (stars >= 1 && stars <= 3 && gStarDisplay) {
        gStarDisplay->SetStarTexture(stars);
        gOverlayObjects.DrawObject(*gStarDisplay, 1.0f, 1.0f);
    }
    for (auto& button : gWinButtons) {
        button->UpdateBox();
        const bool hover = button->IsUnderMouse(mx, my);
        // Continue has looks 3 / 4 of its family, back 1 / 2.
        const int normal = button->kind == WIN_CONTINUE ? 3 : 1;
        button->SetBackContinueTexture(hover ? normal + 1 : normal);
        gOverlayObjects.DrawObject(*button, 1.0f, 1.0f);
    }
    if (!MouseClicked()) return;
    for (auto& button : gWinButtons) {
        if (!button->IsUnderMouse(mx, my)) continue;
        // The level stops calling the overlay from the next frame on.
        gStarsEarned = 0;
        if (button->kind == WIN_CONTINUE) {
            gCurrentLevel += 1;
            gGameStateNext = GS_NEXT_SCREEN;
        } else if (button->kind == WIN_BACK) {
            gGameStateNext = GS_MAIN_MENU;
        }
    }
}

void RunLoseOverlay(void) {
    if (!gLevelLost) return;
    float mx, my;
    MousePoint(&mx, &my);
    DrawPicture(gOverlayObjects, gLoseScreen);
    for (auto& button : gLoseButtons) {
        button->UpdateBox();
        const bool hover = button->IsUnderMouse(mx, my);
        // Restart has looks 3 / 4 of its family, back 1 / 2.
        const int normal = button->kind == LOSE_RESTART ? 3 : 1;
        button->SetBackRestartTexture(hover ? normal + 1 : normal);
        gOverlayObjects.DrawObject(*button, 1.0f, 1.0f);
    }
    if (!MouseClicked()) return;
    for (auto& button : gLoseButtons) {
        if (!button->IsUnderMouse(mx, my)) continue;
        // Restart plays the same level again through the next-level screen.
        if (button->kind == LOSE_RESTART) gGameStateNext = GS_NEXT_SCREEN;
        if (button->kind == LOSE_BACK) gGameStateNext = GS_MAIN_MENU;
        gLevelLost = false;
    }
}
