// ArtManifest: the one list of every picture the game reads, with its pixel
// size and its sprite-sheet grid. The generator draws exactly these files and
// the resource tests check them; the build reads the names for its outputs.
//
// Depends on: nothing. Limits: names must stay plain literals, one entry per
// line, because the build scans this file for them.
#pragma once

struct ArtEntry {
    const char* name; // file name under Resources, exactly as the game opens it
    int width;        // pixels
    int height;       // pixels
    int columns;      // sprite-sheet cells across (1 for a single picture)
    int rows;         // sprite-sheet cells down
};

// Pictures are drawn at about twice the world units the game shows them at.
inline constexpr ArtEntry kArtManifest[] = {
    // Monsters: walk and attack sheets, facing left.
    {"GoblinWalking.png", 400, 160, 5, 2},
    {"GoblinAttack.png", 400, 160, 5, 2},
    {"GoblinBossWalk.png", 600, 240, 5, 2},
    {"BeachGoblinWalking.png", 400, 160, 5, 2},
    {"BeachGoblinBossWalk.png", 600, 240, 5, 2},
    {"SpiderWalk.png", 240, 240, 2, 2},
    {"SpiderAttack.png", 240, 240, 2, 2},
    {"BroodWalk.png", 240, 240, 2, 2},
    {"YetiWalk.png", 480, 240, 4, 2},
    {"YetiAttack.png", 480, 240, 4, 2},
    {"WraithWalk.png", 800, 400, 4, 2},
    // Towers (only the top-left cell is shown), the crystal and its bar.
    {"ArcherT1.png", 320, 160, 4, 2},
    {"ArcherT2.png", 320, 160, 4, 2},
    {"crystal.png", 120, 120, 1, 1},
    {"Layer 24.png", 192, 520, 1, 1},
    {"Layer 23.png", 192, 520, 1, 1},
    // Level backgrounds.
    {"BG.png", 1600, 1200, 1, 1},
    {"BG3.png", 1600, 1200, 1, 1},
    {"BG4.png", 1600, 1200, 1, 1},
    {"BG5.png", 1600, 1200, 1, 1},
    {"BG6.png", 1600, 1200, 1, 1},
    // Level signs: tutorial, countdown, wave banners.
    {"tutorial1.png", 560, 160, 1, 1},
    {"tutorial2.png", 560, 160, 1, 1},
    {"tutorial3.png", 560, 160, 1, 1},
    {"t1help.png", 560, 160, 1, 1},
    {"t2help.png", 560, 160, 1, 1},
    {"1.png", 400, 600, 1, 1},
    {"2.png", 400, 600, 1, 1},
    {"3.png", 400, 600, 1, 1},
    {"s.png", 400, 600, 1, 1},
    {"wave1.png", 400, 120, 1, 1},
    {"wave2.png", 400, 120, 1, 1},
    {"wave3.png", 400, 120, 1, 1},
    {"lvl1wave1.png", 400, 120, 1, 1},
    {"lvl1wave2.png", 400, 120, 1, 1},
    // Buttons: normal (U) and highlighted (H) looks.
    {"btnResumeU.png", 240, 120, 1, 1},
    {"btnResumeH.png", 240, 120, 1, 1},
    {"btnRestartU.png", 240, 120, 1, 1},
    {"btnRestartH.png", 240, 120, 1, 1},
    {"btnExitU.png", 240, 120, 1, 1},
    {"btnExitH.png", 240, 120, 1, 1},
    {"btnHelpU.png", 240, 120, 1, 1},
    {"btnHelpH.png", 240, 120, 1, 1},
    {"btnCreditsU.png", 240, 120, 1, 1},
    {"btnCreditsH.png", 240, 120, 1, 1},
    {"btnMuteU.png", 240, 120, 1, 1},
    {"btnMuteH.png", 240, 120, 1, 1},
    {"btnUnmuteU.png", 240, 120, 1, 1},
    {"btnUnmuteH.png", 240, 120, 1, 1},
    {"btnOptionU.png", 240, 120, 1, 1},
    {"btnOptionH.png", 240, 120, 1, 1},
    {"btnQuitU.png", 240, 120, 1, 1},
    {"btnQuitH.png", 240, 120, 1, 1},
    {"btnYesU.png", 240, 120, 1, 1},
    {"btnYesH.png", 240, 120, 1, 1},
    {"btnNoU.png", 240, 120, 1, 1},
    {"btnNoH.png", 240, 120, 1, 1},
    {"btnBackU.png", 240, 120, 1, 1},
    {"btnBackH.png", 240, 120, 1, 1},
    {"btnContinueU.png", 240, 120, 1, 1},
    {"btnContinueH.png", 240, 120, 1, 1},
    {"button-pauseU.png", 120, 120, 1, 1},
    {"button-pauseH.png", 120, 120, 1, 1},
    {"btn1U.png", 120, 120, 1, 1},
    {"btn1H.png", 120, 120, 1, 1},
    {"btn2U.png", 120, 120, 1, 1},
    {"btn2H.png", 120, 120, 1, 1},
    {"btn3U.png", 120, 120, 1, 1},
    {"btn3H.png", 120, 120, 1, 1},
    {"btn4U.png", 120, 120, 1, 1},
    {"btn4H.png", 120, 120, 1, 1},
    {"btn5U.png", 120, 120, 1, 1},
    {"btn5H.png", 120, 120, 1, 1},
    {"btn6U.png", 120, 120, 1, 1},
    {"btn6H.png", 120, 120, 1, 1},
    {"btnLock.png", 120, 120, 1, 1},
    {"LeafColoured.png", 120, 120, 1, 1},
    {"LeafBG.png", 120, 120, 1, 1},
    // Menu decorations, stars and the cursor.
    {"cloud1.png", 400, 200, 1, 1},
    {"cloud2.png", 400, 200, 1, 1},
    {"cloud3.png", 400, 200, 1, 1},
    {"1star.png", 520, 240, 1, 1},
    {"2star.png", 520, 240, 1, 1},
    {"3star.png", 520, 240, 1, 1},
    {"lvlStarBG.png", 540, 260, 1, 1},
    {"cursor.png", 40, 80, 1, 1},
    {"loading.png", 4000, 120, 10, 1},
    // Whole-screen pictures and overlays.
    {"MenuBG.png", 1600, 1200, 1, 1},
    {"pauseM.png", 1600, 1200, 1, 1},
    {"cfmBG.png", 1600, 1200, 1, 1},
    {"optionBG.png", 1600, 1200, 1, 1},
    {"WinScreen.png", 1600, 1200, 1, 1},
    {"LoseScreen.png", 1600, 1200, 1, 1},
    {"NextScreen.png", 1600, 1200, 1, 1},
    {"howtoplay.png", 1600, 1200, 1, 1},
    {"howtoplayPause.png", 1400, 1000, 1, 1},
    {"TolvernSG_Logo_CMYK-RED.png", 1600, 1200, 1, 1},
    {"MosswickLogo.png", 1600, 1200, 1, 1},
    // The credits scroll is 800 x 8000 units: one pixel a unit keeps it
    // inside the 8192-pixel texture limit.
    {"Credit.png", 800, 8000, 1, 1},
};

inline constexpr int kArtManifestCount = sizeof(kArtManifest) / sizeof(kArtManifest[0]);

// The window icon: one PNG-compressed entry for each of the icon sizes; the
// window loads the 32 x 32 one. The desktop's icon theme gets the same
// pictures as kArtThemeIconName.png in a folder per size.
inline constexpr const char* kArtIconName = "crystal.ico";
inline constexpr int kArtIconSize = 32;
inline constexpr int kArtIconSizes[] = {16, 32, 48, 64, 128, 256};
inline constexpr int kArtIconSizeCount = sizeof(kArtIconSizes) / sizeof(kArtIconSizes[0]);
inline constexpr const char* kArtThemeIconName = "quarrow";

// Looks up an entry by file name; null when the name is not in the list.
inline const ArtEntry* ArtFind(const char* name) {
    for (const ArtEntry& e : kArtManifest) {
        const char* a = e.name;
        const char* b = name;
        while (*a && *a == *b) ++a, ++b;
        if (*a == 0 && *b == 0) return &e;
    }
    return nullptr;
}
