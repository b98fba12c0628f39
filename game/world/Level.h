// Level: the game state of a level being played (GS_LEVEL). It owns the
// board, the monsters through the wave spawner, the towers, the crystal and
// its health bars, the level's pictures and sounds, and runs one level from
// its three-second countdown through three waves to a win or a loss. Level 1
// is the tutorial: two waves of goblins, no boss, notes that follow the
// player's first moves, and always three stars. Levels 2 to 6 end with a
// boss, and only its death wins them.
//
// Depends on: the world (Tile, WaveSpawner, Monster, Crystal, Healthbar,
// Tower, TowerBuilding, Projectile), the screens (Background, Buttons and
// the win, lose and pause overlays), Audio, Scores.
// Limits: levels 1 to 6.
#pragma once

class Crystal;

// 1 to 6; 7 after continuing from the last level.
extern int gCurrentLevel;

// The countdown before each wave: runs while active, counting frame time.
extern bool gCountdownActive;
extern float gCountdownTime;
// 3 - the countdown's whole seconds: the digit on screen.
extern int gCountdownDigit;
// The third wave has started, released everything, and no monster is left.
extern bool gAllWavesDone;
// The ambience and the final-wave music have been released in this level.
extern bool gAmbienceReleased;
extern bool gFinalMusicReleased;
// Set when the level is won; the next-level screen clears it.
extern bool gLevelWon;

// The level's crystal while a level is running; null otherwise.
Crystal* LevelCrystal(void);
// The ambience file of a level 1..6.
const char* LevelAmbienceFile(int level);
