// The MainMenu state (GS_MAIN_MENU): a forest backdrop with three drifting
// clouds, six level buttons placed over the picture, help, credits, exit
// and mute buttons on the right, and, while the mouse rests on an open
// level, a star panel whose three leaves show that level's best rating.
// Levels open in order: level 1 always, level n once level n - 1 has been
// won. Every entry first shows a loading screen for a fixed 300 frames,
// reading the score file meanwhile, and the forest ambience loops while the
// menu shows.
//
// Depends on: Background, Buttons, Goblin (the loading screen's runner),
// PauseOverlay (the exit dialog), Audio, Scores, Level (gCurrentLevel), the
// engine's frame bracket for the loading frames. Limits: the pictures stay
// alive from one entry to the next, until the next load replaces them.
#include "MainMenu.h"

#include <memory>

#include "Audio.h"
#include "Background.h"
#include "GameStateManager.h"
#include "GameStates.h"
#include "Goblin.h"
#include "Level.h"
#include "PauseOverlay.h"
#include "Scores.h"
#include "VXFrameRateController.h"
#include "VXGraphics.h"
#include "VXInput.h"
#include "VXSystem.h"

ButtonGroup gMenuLevelButtons;
ButtonGroup gMenuButtons;
ButtonGroup gMenuRatingLeaves;
bool gMenuPanelShown = false;

namespace {

// Five seconds at sixty frames, whatever the loading takes.
constexpr int kLoadingFrames = 300;
constexpr int kLevels = 6;
// Clouds drift right a unit a frame and jump back once past the right edge.
constexpr int kCloudWrapX = 450;
constexpr int kCloudStartX[3] = {-900, -650, -450};
constexpr float kCloudY[3] = {250.0f, 150.0f, 200.0f};
// The leaves sit in a row on the star panel.
constexpr float kLeafFirstX = -140.0f;
constexpr float kLeafSpacing = 70.0f;
constexpr float kLeafY = -95.0f;
// Look 13 of the level family: the lock shown over a closed level.
constexpr int kLockLook = 13;
enum { LEAF_COLOURED = 1, LEAF_GREY = 2 };

enum { MENU_HELP, MENU_CREDITS, MENU_EXIT, MENU_MUTE };

struct Centre {
    float x, y;
};
const Centre kLevelCentres[kLevels] = {{-350, 50}, {-275, -75}, {-50, -225},
                                       {0, 100},   {75, 210},   {330, 80}};
const Centre kMenuCentres[] = {{300, -100}, {300, -165}, {300, -230}, {300, -35}};

std::unique_ptr<Background> sLoadingPicture;
std::unique_ptr<Goblin> sLoadingGoblin;
std::unique_ptr<Background> sMenuBackdrop;
std::unique_ptr<Background> sStarPanel;
std::unique_ptr<Background> sClouds[3];
int sCloudX[3] = {-900, -650, -450};
bool sHoverSeen = false; // an open level under the mouse was handled this frame
bool sAmbienceReleased = false;

// One whole frame of the loading screen, inside the load: the strip and the
// goblin step on the menu's one clock, so they move together.
void RunLoadingFrame(float stripFramesU, float goblinFramesU, float goblinFramesV) {
    VXSysFrameStart();
    if (sLoadingPicture) gMainMenuObjects.DrawObject(*sLoadingPicture, stripFramesU, 1.0f);
    if (sLoadingGoblin) gMainMenuObjects.DrawObject(*sLoadingGoblin, goblinFramesU, goblinFramesV);
    VXGfxEnd();
    VXFrameRateControllerEnd();
    VXSysUpdate();
}

// Level n (1 to 6) is open once the level before it has any rating; a
// value outside 0 to 3 read from the file counts as won.
bool LevelOpen(int level) {
    return level == 1 || gLevelRatings[level - 2] != 0;
}

// Leaf i of three for a level rated `rating`: coloured from the left, one
// per star. A rating outside 0 to 3 shows three coloured leaves.
int LeafLook(int rating, int i) {
    const int grey = 3 - rating;
    if (grey < 1 || grey > 3) return LEAF_COLOURED;
    return i >= 3 - grey ? LEAF_GREY : LEAF_COLOURED;
}

// Normal and highlighted looks of a menu button; the sound button offers
// to unmute while muted.
void SetMenuButtonLook(Buttons& button, bool hover) {
    static const int kNormal[] = {7, 9, 5, 11};
    int normal = kNormal[button.kind];
    if (button.kind == MENU_MUTE && gMuted) normal = 13;
    button.SetMenuTexture(hover ? normal + 1 : normal);
}

void MenuButtonAction(const Buttons& button) {
    switch (button.kind) {
    case MENU_HELP:
        gGameStateNext = GS_HOW_TO_PLAY;
        break;
    case MENU_CREDITS:
        gGameStateNext = GS_CREDITS;
        break;
    case MENU_EXIT:
        // The forest falls silent while the player decides.
        gMasterVolume = 0.0f;
        ChannelSetVolume(gChannelMenu, 0.0f);
        gConfirmOpen = true;
        break;
    case MENU_MUTE:
        AudioToggleMute();
        break;
    default:
        break;
    }
}

void UpdateClouds(void) {
    for (int i = 0; i < 3; ++i) {
        if (sCloudX[i] < kCloudWrapX)
            sCloudX[i] += 1;
        else
            sCloudX[i] = kCloudStartX[i];
        if (sClouds[i]) sClouds[i]->SetTransform((float)sCloudX[i], kCloudY[i], 100.0f, 50.0f);
    }
}

// The debug keys change the ratings in memory only.
void UpdateDebugRatings(void) {
    int value = -1;
    if (VXInputCheckTriggered(MENU_KEY_ALL_RATINGS)) value = 3;
    if (VXInputCheckTriggered(MENU_KEY_NO_RATINGS)) value = 0;
    if (value < 0) return;
    for (int& rating : gLevelRatings) rating = value;
}

// Fills the empty panel with the three leaves of a level's rating.
void ShowRatingLeaves(int rating) {
    int created = 0;
    for (int i = 0; i < 3; ++i) {
        if (gMenuRatingLeaves.size() < 3) {
            Buttons& leaf = CreateButton(gMenuRatingLeaves, ButtonShape::Level,
                                         kLeafFirstX + kLeafSpacing * (float)created, kLeafY);
            leaf.SetLeafTexture(LeafLook(rating, i));
            ++created;
        }
        sHoverSeen = true;
        gMenuPanelShown = true;
    }
}

// The level buttons in order of level. A button the mouse is not on goes
// back to normal and takes the panel away, unless an open level before it
// is the one under the mouse; a closed level under the mouse shows the lock
// and ends the pass.
void UpdateLevelButtons(float mx, float my) {
    for (auto& button : gMenuLevelButtons) {
        const int level = button->kind + 1;
        button->UpdateBox();
        if (!button->IsUnderMouse(mx, my)) {
            if (!sHoverSeen) {
                gMenuPanelShown = false;
                button->SetLevelTexture(2 * level - 1);
                gMenuRatingLeaves.clear();
            }
            continue;
        }
        if (!LevelOpen(level)) {
            button->SetLevelTexture(kLockLook);
            return;
        }
        button->SetLevelTexture(2 * level);
        ShowRatingLeaves(gLevelRatings[level - 1]);
    }
}

// A click on an open level plays it, through the next-level screen.
void ChooseLevel(float mx, float my) {
    for (auto& button : gMenuLevelButtons) {
        const int level = button->kind + 1;
        if (!button->IsUnderMouse(mx, my) || !LevelOpen(level)) continue;
        gCurrentLevel = level;
        gGameStateNext = GS_NEXT_SCREEN;
    }
}

} // namespace

void GameStateMainMenuLoad(void) {
    // The strip holds ten pictures side by side; its quad shows one.
    CreateBackground(sLoadingPicture, "./Resources/loading.png", 100.0f, 30.0f, 250.0f, -220.0f,
                     10.0f);
    // A goblin running the other way: mirrored by the negative x scale.
    sLoadingGoblin = std::make_unique<Goblin>();
    sLoadingGoblin->SetTransform(100.0f, -210.0f, -50.0f, 40.0f);
    sLoadingGoblin->SetMesh();

    RunLoadingFrame(1.0f, 1.0f, 1.0f);
    LoadScores();
    // A player who closes the window while the menu loads wants the game
    // gone, not four more seconds of a hidden loading screen: the frames
    // stop, the menu is built as always, and the main loop, seeing no
    // window after the menu's first frame, shuts the game down in order.
    for (int frame = 1; frame < kLoadingFrames && VXSysDoesWindowExist(); ++frame)
        RunLoadingFrame(10.0f, 2.5f, 0.5f);

    CreateBackground(sMenuBackdrop, "./Resources/MenuBG.png", 400.0f, 300.0f, 0.0f, 0.0f);
    CreateBackground(sStarPanel, nullptr, 135.0f, 65.0f, -85.0f, -70.0f);
    sStarPanel->SetStarTexture(4);
    for (int i = 0; i < 3; ++i) {
        sCloudX[i] = kCloudStartX[i];
        CreateBackground(sClouds[i], nullptr, 100.0f, 50.0f, (float)sCloudX[i], kCloudY[i]);
        sClouds[i]->SetCloudTexture(i + 1);
    }

    SoundCreate(gMenuSoundSystem, "Resources/47 - FOREST, FANTASY MYSTICAL FOREST AMBIENCE.ogg",
                &gSoundMenuAmbience);
    AudioPlayIntoSlot(gMenuSoundSystem, gSoundMenuAmbience, &gChannelMenu, true);
}

void GameStateMainMenuInit(void) {
    sAmbienceReleased = false;
    gMenuPanelShown = false;
    gMenuLevelButtons.clear();
    gMenuButtons.clear();
    // Boxes from the start: a button skipped by a pass (after a locked one)
    // still answers the click where it stands.
    for (const Centre& c : kLevelCentres)
        CreateButton(gMenuLevelButtons, ButtonShape::Level, c.x, c.y).UpdateBox();
    for (const Centre& c : kMenuCentres)
        CreateButton(gMenuButtons, ButtonShape::Ordinary, c.x, c.y).UpdateBox();
}

void GameStateMainMenuUpdate(void) {
    UpdateClouds();
    UpdateDebugRatings();
    // The exit dialog has the mouse: nothing under it reacts.
    if (gConfirmOpen) return;

    sHoverSeen = false;
    float mx, my;
    MousePoint(&mx, &my);
    for (auto& button : gMenuButtons) {
        button->UpdateBox();
        SetMenuButtonLook(*button, button->IsUnderMouse(mx, my));
    }
    const bool clicked = MouseClicked();
    if (clicked)
        for (auto& button : gMenuButtons)
            if (button->IsUnderMouse(mx, my)) MenuButtonAction(*button);

    UpdateLevelButtons(mx, my);
    if (clicked) ChooseLevel(mx, my);
}

void GameStateMainMenuDraw(void) {
    DrawPicture(gMainMenuObjects, sMenuBackdrop);
    for (auto& cloud : sClouds) DrawPicture(gMainMenuObjects, cloud);
    for (auto& button : gMenuLevelButtons) gMainMenuObjects.DrawObject(*button, 1.0f, 1.0f);
    for (auto& button : gMenuButtons) gMainMenuObjects.DrawObject(*button, 1.0f, 1.0f);
    if (gMenuPanelShown) DrawPicture(gMainMenuObjects, sStarPanel);
    for (auto& leaf : gMenuRatingLeaves) gMainMenuObjects.DrawObject(*leaf, 1.0f, 1.0f);
    if (gConfirmOpen) RunConfirmDialog(CONFIRM_LEAVE_GAME);
}

void GameStateMainMenuFree(void) {
    if (sAmbienceReleased) return;
    SoundRelease(gSoundMenuAmbience);
    sAmbienceReleased = true;
}

// The pictures stay for the next entry's load to replace.
void GameStateMainMenuUnload(void) {
    gMenuLevelButtons.clear();
    gMenuRatingLeaves.clear();
    gMenuButtons.clear();
}

void MainMenuFreeObjects(void) {
    GameStateMainMenuUnload();
    sLoadingPicture.reset();
    sLoadingGoblin.reset();
    sMenuBackdrop.reset();
    sStarPanel.reset();
    for (auto& cloud : sClouds) cloud.reset();
}
