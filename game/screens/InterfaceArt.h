// InterfaceArt: the pictures and button groups shared by the overlays of
// every screen (pause menu, options, confirmation dialog, win and lose
// screens), made once at start-up and destroyed at shutdown, and the cursor
// sprite drawn over every frame but the splash screen's.
//
// Depends on: Background, Buttons, GameObject (the overlays' draw context
// gOverlayObjects). Limits: nothing else makes or destroys these objects,
// so the looks they were last given persist from frame to frame.
#pragma once

#include <memory>

#include "Background.h"
#include "Buttons.h"

// Shared pictures, made in this order.
extern std::unique_ptr<Background> gPauseBackdrop;   // "./Resources/pauseM.png"
extern std::unique_ptr<Background> gConfirmBackdrop; // "./Resources/cfmBG.png"
extern std::unique_ptr<Background> gCursorPicture;   // "./Resources/cursor.png"
extern std::unique_ptr<Background> gOptionsBackdrop; // "./Resources/optionBG.png"
extern std::unique_ptr<Background> gWinScreen;       // "./Resources/WinScreen.png"
extern std::unique_ptr<Background> gLoseScreen;      // "./Resources/LoseScreen.png"
extern std::unique_ptr<Background> gHelpPicture;     // "./Resources/howtoplayPause.png"
extern std::unique_ptr<Background> gStarDisplay;     // set by the win overlay

// Shared button groups (ordinary buttons, kind = index).
extern ButtonGroup gPauseButtons;   // resume, restart, quit, options, help
extern ButtonGroup gConfirmButtons; // yes, no
extern ButtonGroup gWinButtons;     // continue, back
extern ButtonGroup gLoseButtons;    // restart, back
extern ButtonGroup gOptionsButtons; // sound, back

// Makes the shared pictures and the five groups (once, at start-up).
void LoadInterfaceArt(void);
// Destroys the five groups, the shared pictures and the look pictures
// (once, after the last state has ended).
void FreeInterfaceArt(void);
// The cursor sprite, centred on the mouse point, over everything drawn.
void DrawCursor(void);
