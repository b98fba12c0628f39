// MainMenu: the main menu and level select (GS_MAIN_MENU). Its six state
// operations are declared in GameStates.h; this header names what the menu
// shows, for the tests and the benchmark that watch it.
//
// Depends on: Buttons. Limits: the lists change only inside the menu's own
// operations, on the game thread.
#pragma once

#include "Buttons.h"

// The two debug keys of the level select: one opens every level with three
// stars, the other takes every rating back to none. Neither writes the
// score file. Function keys no player presses by accident in a menu.
enum { MENU_KEY_ALL_RATINGS = 118 /* F7 */, MENU_KEY_NO_RATINGS = 119 /* F8 */ };

// The six level buttons (kind = level - 1), made by the menu's init.
extern ButtonGroup gMenuLevelButtons;
// Help, credits, exit, mute (kind 0 to 3), made by the menu's init.
extern ButtonGroup gMenuButtons;
// The rating leaves under the star panel: none, or three while an open
// level is under the mouse.
extern ButtonGroup gMenuRatingLeaves;
// The star panel is drawn: an open level is under the mouse.
extern bool gMenuPanelShown;
