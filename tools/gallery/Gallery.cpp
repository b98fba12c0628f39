// quarrow-gallery: plays the real game once through every screen and
// overlay and saves one picture of each, to look at the game as a player
// sees it (and to show it before anyone installs it).
//
//   quarrow-gallery [--full-screen] OUTDIR
//
// One session on the virtual clock: the two logos, the loading screen, the
// menu with a level's rating leaves, the exit dialog, how-to-play, the
// credits, the next-level screen, level 1's countdown and tutorial, the
// pause menu with its help, options and confirmation, the lose and win
// screens, and every level's board mid-wave and with its boss. To get there
// quickly it takes shortcuts no player has (it hurries the spawner, kills
// monsters, sets the crystal's health); every picture is the game's own
// drawing. Windowed (800 x 600) by default; --full-screen keeps the game's
// full screen at the display's size.
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "Crystal.h"
#include "GamePlay.h"
#include "GameStateManager.h"
#include "Level.h"
#include "MainMenu.h"
#include "Projectile.h"
#include "Scores.h"
#include "Tile.h"
#include "VXInput.h"
#include "WaveSpawner.h"

namespace {

std::string sOut;
int sSaved = 0, sFailed = 0;

void Save(GameScript& s, const std::string& name) {
    const std::string path = sOut + "/" + name + ".png";
    if (s.CapturePNG(path)) {
        ++sSaved;
        std::printf("gallery: %s\n", path.c_str());
    } else {
        ++sFailed;
        std::fprintf(stderr, "gallery: could not write %s\n", path.c_str());
    }
}

bool In(int state) {
    return gGameStateCurr == state;
}

// Every monster on the board dies, and the next one comes at once.
void Hurry() {
    for (auto& monster : gWaveSpawner.monsterList) monster->health = 0;
    gWaveSpawner.spawnTimer = gWaveSpawner.spawnInterval - 1.0f;
}

// The menu's first frame after its loading screen, the mouse on the map.
void ToMenu(GameScript& s) {
    s.Until([] { return In(GS_MAIN_MENU) && !gMenuLevelButtons.empty(); });
    s.MoveWorld(-200, 250);
    s.Frames(2);
}

// A level's board mid-wave and its boss on the way; then the level is won
// as if an arrow had killed the boss with the crystal at half health.
void LevelPictures(GameScript& s, int level) {
    s.Until([] { return In(GS_LEVEL); });
    s.MoveWorld(-390, -290);
    s.Until([] { return gWaveSpawner.monsterList.size() >= 3; });
    s.Frames(240);
    Save(s, "level" + std::to_string(level) + "-wave");
    s.Until([] {
        if (gWaveNumber == 3 && !gWaveSpawner.monsterList.empty()) return true;
        Hurry();
        return false;
    });
    s.Frames(level >= 5 ? 150 : 300);
    Save(s, "level" + std::to_string(level) + "-boss");
    gBossKilled = true;
    gStarsEarned = 2;
    s.Until([] {
        Hurry();
        return gLevelWon;
    });
}

void Tour(GameScript& s) {
    // The logos at their brightest; the space bar skips the rest.
    s.Frames(100);
    Save(s, "splash-maker");
    s.Frames(240);
    Save(s, "splash-developers");
    s.Tap(VX_KEY_SPACE);
    s.Until([] { return In(GS_MAIN_MENU); });
    s.Frames(100);
    Save(s, "loading");

    ToMenu(s);
    Save(s, "menu");
    s.MoveWorld(-50, -225); // level 3, rated one star
    s.Frames(2);
    Save(s, "menu-rating");
    s.ClickWorld(300, -230); // exit
    s.Frames(1);
    Save(s, "menu-exit-dialog");
    s.ClickWorld(75, -25);   // no
    s.ClickWorld(300, -100); // help
    s.Until([] { return In(GS_HOW_TO_PLAY); });
    s.Frames(2);
    Save(s, "how-to-play");
    s.ClickWorld(180, -200);
    ToMenu(s);
    s.ClickWorld(300, -165); // credits
    s.Until([] { return In(GS_CREDITS); });
    s.Frames(700);
    Save(s, "credits");
    s.ClickWorld(180, -200);
    ToMenu(s);

    // Level 1: the next-level screen, the countdown, the tutorial.
    s.ClickWorld(-350, 50);
    s.Frames(40);
    Save(s, "next-level");
    s.Until([] { return In(GS_LEVEL); });
    s.MoveWorld(-390, -290);
    s.Frames(30);
    Save(s, "level1-countdown");
    s.Until([] { return gWaveSpawner.monsterList.size() >= 2; });
    s.Frames(200);
    Save(s, "level1-wave");

    // The pause menu and what opens from it.
    s.Tap(VX_KEY_ESCAPE);
    s.Frames(2);
    Save(s, "pause");
    s.ClickWorld(300, 120);
    s.Frames(1);
    Save(s, "pause-help");
    s.ClickWorld(300, 120);
    s.ClickWorld(300, 180);
    s.Frames(1);
    Save(s, "pause-options");
    s.ClickWorld(75, -25);
    s.ClickWorld(0, -110);
    s.Frames(1);
    Save(s, "pause-confirm");
    s.ClickWorld(75, -25);
    s.Tap(VX_KEY_ESCAPE);

    // A goblin at the crystal's side, the crystal nearly spent: lost.
    Monster& goblin = *gWaveSpawner.monsterList.front();
    goblin.posX = tileList[45]->posX;
    goblin.posY = tileList[45]->posY;
    LevelCrystal()->health = 5;
    s.Until([] { return gLevelLost; });
    s.Frames(3);
    Save(s, "lose");
    s.ClickWorld(-75, -25); // restart
    s.Until([] { return In(GS_LEVEL); });
    s.Until([] {
        Hurry();
        return gLevelWon;
    });
    s.Frames(3);
    Save(s, "win");

    // The other levels, each reached by continue.
    for (int level = 2; level <= 6; ++level) {
        s.ClickWorld(-75, -155);
        LevelPictures(s, level);
    }
}

} // namespace

int main(int argc, char** argv) {
    bool fullScreen = false;
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--full-screen"))
            fullScreen = true;
        else
            sOut = argv[i];
    }
    if (sOut.empty()) {
        std::fprintf(stderr, "usage: quarrow-gallery [--full-screen] OUTDIR\n");
        return 2;
    }
    // The game plays in a folder of its own: the pictures go where asked.
    std::error_code error;
    std::filesystem::create_directories(sOut, error);
    sOut = std::filesystem::absolute(sOut).string();
    GamePlay play;
    // Three levels won: the menu shows open levels, a lock and rated leaves.
    std::ofstream(play.ScoreFile())
        << "Level1:3\nLevel2:2\nLevel3:1\nLevel4:0\nLevel5:0\nLevel6:0\n";
    play.Run(GS_SPLASH_SCREEN, 1, 2026, Tour, !fullScreen);
    std::printf("gallery: %d pictures in %s\n", sSaved, sOut.c_str());
    return sFailed ? 1 : 0;
}
