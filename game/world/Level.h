// The level state: the board, its monsters, towers and crystal, frame by frame.
#pragma once

// 1 to 6; 7 after continuing from the last level.
extern int gCurrentLevel;
