// The pause menu of a level (resume, restart, quit, options, help), its
// options overlay (mute and back) and the confirmation dialog (yes and no)
// that guards leaving a level and, from the main menu, leaving the game.
// The main loop runs the pause overlay after the state's draw in every
// frame in which the game is paused or a dialog is open.
//
// Depends on: InterfaceArt (the shared pictures and groups), Buttons, Audio
// (mute), GameStateManager. Limits: one overlay at a time over the pause
// menu: the confirmation dialog or the options overlay.
#pragma once

extern bool gPaused;      // the level is paused: the pause menu shows
extern bool gConfirmOpen; // the confirmation dialog is open
extern bool gOptionsOpen; // the options overlay is open
extern bool gHelpShown;   // the help picture covers the pause menu

// What the confirmation dialog's yes leaves.
enum { CONFIRM_LEAVE_LEVEL = 1, CONFIRM_LEAVE_GAME = 2 };

// Draws and handles the pause menu and, from it, the dialog and the options.
void RunPauseOverlay(void);
// Draws and handles the confirmation dialog while it is open.
void RunConfirmDialog(int context);
// Draws and handles the options overlay while it is open.
void RunOptionsOverlay(void);
