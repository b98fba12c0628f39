// The pause menu, the options overlay and the confirmation dialog.
//
// Depends on: see PauseOverlay.h.
#include "PauseOverlay.h"

#include "Audio.h"
#include "GameStateManager.h"
#include "InterfaceArt.h"

bool gPaused = false;
bool gConfirmOpen = false;
bool gOptionsOpen = false;
bool gHelpShown = false;

namespace {

enum { PAUSE_RESUME, PAUSE_RESTART, PAUSE_QUIT, PAUSE_OPTIONS, PAUSE_HELP };
enum { CONFIRM_YES, CONFIRM_NO };
enum { OPTIONS_SOUND, OPTIONS_BACK };

// The pause button looks (SetMenuTexture), normal then highlighted.
struct LookPair {
    int normal, hover;
};
const LookPair kPauseLooks[] = {{1, 2}, {3, 4}, {19, 20}, {15, 16}, {7, 7}};

// The look of a pause button. The help button stays lit while the help
// picture shows, and turns plain under the mouse, ready to put it away.
int PauseLook(const Buttons& button, bool hover) {
    if (button.kind == PAUSE_HELP) return hover ? 7 : (gHelpShown ? 8 : 7);
    const LookPair& pair = kPauseLooks[button.kind];
    return hover ? pair.hover : pair.normal;
}

// Acts for one pause button. While the help picture shows only the help
// button answers.
void PauseAction(const Buttons& button) {
    if (button.kind == PAUSE_HELP) {
        gHelpShown = !gHelpShown;
        return;
    }
    if (gHelpShown) return;
    switch (button.kind) {
    case PAUSE_RESUME:
        gPaused = false;
        break;
    case PAUSE_RESTART:
        gGameStateNext = GS_NEXT_SCREEN;
        gPaused = false;
        break;
    case PAUSE_QUIT:
        gConfirmOpen = true;
        break;
    case PAUSE_OPTIONS:
        gOptionsOpen = true;
        break;
    default:
        break;
    }
}

} // namespace

void RunPauseOverlay(void) {
    if (gPaused) {
        float mx, my;
        MousePoint(&mx, &my);
        DrawPicture(gOverlayObjects, gPauseBackdrop);
        for (auto& button : gPauseButtons) {
            // The help picture covers the options button: it is not shown.
            if (gHelpShown && button->kind == PAUSE_OPTIONS) continue;
            button->UpdateBox();
            button->SetMenuTexture(PauseLook(*button, button->IsUnderMouse(mx, my)));
            gOverlayObjects.DrawObject(*button, 1.0f, 1.0f);
        }
        if (gOptionsOpen) {
            // The pause buttons wait while a dialog is over them.
            if (gConfirmOpen) RunConfirmDialog(CONFIRM_LEAVE_LEVEL);
            RunOptionsOverlay();
        } else if (gConfirmOpen) {
            RunConfirmDialog(CONFIRM_LEAVE_LEVEL);
        } else {
            if (MouseClicked())
                for (auto& button : gPauseButtons)
                    if (button->IsUnderMouse(mx, my)) PauseAction(*button);
            // A dialog opened by this click shows in this very frame.
            if (gConfirmOpen) RunConfirmDialog(CONFIRM_LEAVE_LEVEL);
            if (gOptionsOpen) RunOptionsOverlay();
        }
        if (gHelpShown) DrawPicture(gOverlayObjects, gHelpPicture);
        if (gPaused) return;
    }
    // Resumed, restarted or left: nothing stays open over the level. The
    // main menu's exit dialog is its own and stays.
    if (gGameStateCurr != GS_MAIN_MENU) {
        gHelpShown = false;
        gOptionsOpen = false;
        gConfirmOpen = false;
    }
}

void RunConfirmDialog(int context) {
    if (!gConfirmOpen) return;
    float mx, my;
    MousePoint(&mx, &my);
    DrawPicture(gOverlayObjects, gConfirmBackdrop);
    for (auto& button : gConfirmButtons) {
        button->UpdateBox();
        const bool hover = button->IsUnderMouse(mx, my);
        // Yes has looks 1 / 2, no 3 / 4.
        const int normal = button->kind == CONFIRM_YES ? 1 : 3;
        button->SetYesNoTexture(hover ? normal + 1 : normal);
        gOverlayObjects.DrawObject(*button, 1.0f, 1.0f);
    }
    if (!MouseClicked()) return;
    for (auto& button : gConfirmButtons) {
        if (!button->IsUnderMouse(mx, my)) continue;
        if (button->kind == CONFIRM_YES) {
            gGameStateNext = context == CONFIRM_LEAVE_GAME ? GS_QUIT : GS_MAIN_MENU;
            gPaused = false;
        } else if (button->kind == CONFIRM_NO && context == CONFIRM_LEAVE_LEVEL) {
            gPaused = true; // back to the pause menu
        } else if (button->kind == CONFIRM_NO && context == CONFIRM_LEAVE_GAME) {
            // The menu's exit button silenced the forest for the question;
            // a player who stays wants it back as loud as the mute setting
            // says, not silent with the button still offering to mute.
            gMasterVolume = gMuted ? 0.0f : 1.0f;
            ChannelSetVolume(gChannelMenu, gMasterVolume);
        }
        gConfirmOpen = false;
    }
}

void RunOptionsOverlay(void) {
    if (!gOptionsOpen) return;
    float mx, my;
    MousePoint(&mx, &my);
    DrawPicture(gOverlayObjects, gOptionsBackdrop);
    for (auto& button : gOptionsButtons) {
        button->UpdateBox();
        const bool hover = button->IsUnderMouse(mx, my);
        if (button->kind == OPTIONS_SOUND) {
            // Mute 11 / 12 while the sound is on, unmute 13 / 14 while muted.
            const int normal = gMuted ? 13 : 11;
            button->SetMenuTexture(hover ? normal + 1 : normal);
        } else {
            button->SetBackContinueTexture(hover ? 2 : 1);
        }
        gOverlayObjects.DrawObject(*button, 1.0f, 1.0f);
    }
    if (!MouseClicked()) return;
    for (auto& button : gOptionsButtons) {
        if (!button->IsUnderMouse(mx, my)) continue;
        if (button->kind == OPTIONS_SOUND) AudioToggleMute();
        if (button->kind == OPTIONS_BACK) gOptionsOpen = false;
    }
}
