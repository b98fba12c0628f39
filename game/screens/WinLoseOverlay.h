// The win and lose overlays drawn over a finished level: the win screen
// with one to three stars and the buttons continue and back, the lose
// screen with restart and back. The level's draw calls them every frame
// while the level is won or lost; the board stands still beneath.
//
// Depends on: InterfaceArt (the shared pictures and groups), Buttons,
// Level (gLevelWon, gCurrentLevel), Crystal (gLevelLost), Scores
// (gStarsEarned), GameStateManager. Limits: no state of their own.
#pragma once

// Draws and handles the win screen for a rating of stars (1 to 3); nothing
// unless the level is won.
void RunWinOverlay(int stars);
// Draws and handles the lose screen; nothing unless the level is lost.
void RunLoseOverlay(void);
