// CTest label: long
// The whole game through the driver: the splash, level 1 lost, restarted
// and won, every level chosen as it opens and won by dragging towers, a
// pause with options and help, after level 6 the credits and the menu. After
// every level the menu's report gives the ratings and the score file, and a
// click on the next locked level must leave the menu where it is. Two runs
// of the script give the same play state every 60 frames, and so does a
// third in the plain build: no rule may lean on undefined behaviour or on
// how the build lays out memory.
//
// tests/scripts/whole_game.txt is recorded by the adaptive player below when
// the rules change (one command line):
//   . tests/test-env.sh && xvfb-run -a build-test/tests/test_whole_game
//       --gtest_filter=WholeGame.DISABLED_RecordTheScript --gtest_also_run_disabled_tests
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "Crystal.h"
#include "GamePlay.h"
#include "GameStateManager.h"
#include "Level.h"
#include "MainMenu.h"
#include "PlayerMoves.h"
#include "Scores.h"
#include "TestSupport.h"
#include "Tile.h"
#include "VXInput.h"
#include "WaveSpawner.h"

namespace {

constexpr unsigned kSeed = 20261123;
const VXVec2 kLevelButtons[6] = {{-350, 50}, {-275, -75}, {-50, -225},
                                 {0, 100},   {75, 210},   {330, 80}};

std::string ScriptPath() {
    return TestSourceDir() + "/tests/scripts/whole_game.txt";
}

bool In(int state) {
    return gGameStateCurr == state;
}

// Every first-tier tower goes beside the crystal, where every monster ends,
// and two first-tier towers there merge.
void Defend(GameScript& s, const std::vector<int>& home) {
    const auto isHome = [&](int tile) {
        for (int h : home)
            if (h == tile) return true;
        return false;
    };
    for (int guard = 0; guard < 8; ++guard) {
        int stray = -1, target = -1;
        for (auto& tile : tileList)
            if (tile->moveCost == 2 && !isHome(tile->tileIndex)) stray = tile->tileIndex;
        for (int h : home)
            if (target < 0 && tileList[h]->moveCost == 2 && h != stray) target = h;
        for (int h : home)
            if (target < 0 && tileList[h]->moveCost == 0) target = h;
        if (stray >= 0 && target >= 0) {
            PlayerDragTile(s, stray, target);
            continue;
        }
        std::vector<int> ones;
        for (int h : home)
            if (tileList[h]->moveCost == 2) ones.push_back(h);
        if (ones.size() < 2) return;
        PlayerDragTile(s, ones[1], ones[0]);
    }
}

// Plays the level until it is won or lost, placing the towers at every wave.
void PlayLevel(GameScript& s, const std::vector<int>& home, bool pauseOnce) {
    unsigned wave = 99;
    while (!gLevelWon && !gLevelLost && !s.GameOver()) {
        if (gWaveNumber != wave) {
            wave = gWaveNumber;
            Defend(s, home);
        }
        if (pauseOnce && wave == 1 && gWaveSpawner.monsterList.size() == 2) {
            pauseOnce = false;
            s.Note("# a pause: options (sound off and on again), help, resume");
            s.Tap(VX_KEY_ESCAPE);
            s.Frames(2);
            s.ClickWorld(300, 180); // options
            s.ClickWorld(-75, -25); // sound off
            s.ClickWorld(-75, -25); // sound on
            s.ClickWorld(75, -25);  // back
            s.ClickWorld(300, 120); // help
            s.Frames(30);
            s.ClickWorld(300, 120); // help away
            s.ClickWorld(0, 20);    // resume
            s.MoveWorld(-390, -290);
        }
        s.Frames(1);
    }
    s.Frames(2);
}

// Waits for the menu after its loading screen, reports, and tries the first
// locked level (which must leave the menu where it is).
void AtMenu(GameScript& s, int locked) {
    s.Until([] { return In(GS_MAIN_MENU) && !gMenuLevelButtons.empty(); });
    s.Frames(1);
    s.Note("report");
    if (locked <= 6) {
        s.Note("# level " + std::to_string(locked) + " is locked: a click does nothing");
        s.ClickWorld(kLevelButtons[locked - 1].x, kLevelButtons[locked - 1].y);
        s.Frames(3);
        s.Note("report");
    }
}

void ChooseLevel(GameScript& s, int level) {
    s.Note("# level " + std::to_string(level) + " from the level select");
    s.ClickWorld(kLevelButtons[level - 1].x, kLevelButtons[level - 1].y);
    s.Until([] { return In(GS_LEVEL); });
    s.MoveWorld(-390, -290);
    s.Frames(2);
}

const std::vector<int> kAroundTheCrystal = {45, 56, 54, 66, 65, 46};

void PlayTheWholeGame(GameScript& s) {
    s.MoveWorld(0, 0);
    s.Frames(20);
    s.Note("# the splash, skipped with the space bar");
    s.Tap(VX_KEY_SPACE);
    AtMenu(s, 2);

    // Level 1, lost: both towers carried to the board's bottom tip, out of
    // reach of the goblins' road and of the crystal.
    ChooseLevel(s, 1);
    s.Note("# level 1 lost on purpose: the towers stand out of reach");
    PlayLevel(s, {94, 95}, false);
    s.Note("# restart from the lose screen");
    s.ClickWorld(-75, -25);
    s.Until([] { return In(GS_NEXT_SCREEN); });
    s.Until([] { return In(GS_LEVEL); });
    s.MoveWorld(-390, -290);
    PlayLevel(s, kAroundTheCrystal, false);

    for (int level = 2; level <= 6; ++level) {
        s.Note("# back to the menu");
        s.ClickWorld(75, -155);
        AtMenu(s, level + 1);
        ChooseLevel(s, level);
        PlayLevel(s, kAroundTheCrystal, level == 2);
    }
    s.Note("# continue after level 6: the credits, then the menu by itself");
    s.ClickWorld(-75, -155);
    s.Until([] { return In(GS_CREDITS); });
    AtMenu(s, 7);
    s.Frames(10);
    s.Close();
    s.Frames(2);
}

struct Report {
    int state = -1, level = 0;
    int ratings[6] = {};
    std::string scores;
};

struct DriverRun {
    int status = -1;
    std::string output;
    std::vector<Report> reports;
    std::vector<std::string> hashes;
};

void Parse(DriverRun& run) {
    std::istringstream lines(run.output);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("hash ", 0) == 0) run.hashes.push_back(line);
        if (line.rfind("report ", 0) != 0) continue;
        Report r;
        unsigned long frame = 0;
        char scores[512] = "";
        std::sscanf(line.c_str(),
                    "report %lu state=%d level=%d ratings=%d,%d,%d,%d,%d,%d scores=%511s", &frame,
                    &r.state, &r.level, &r.ratings[0], &r.ratings[1], &r.ratings[2], &r.ratings[3],
                    &r.ratings[4], &r.ratings[5], scores);
        r.scores = scores;
        run.reports.push_back(r);
    }
}

// The score file a player with these ratings has on disk.
std::string ScoreLines(const int ratings[6]) {
    std::string text;
    for (int n = 0; n < 6; ++n)
        text += (n ? "|" : "") + std::string("Level") + std::to_string(n + 1) + ":" +
                std::to_string(ratings[n]);
    return text;
}

DriverRun PlayThroughTheDriver(const std::string& driver, const std::string& folder) {
    DriverRun run;
    run.status = TestRunDriverAlone(
        folder, "--seed " + std::to_string(kSeed) + " --hash-every 60 " + ScriptPath(), run.output,
        driver);
    Parse(run);
    return run;
}

} // namespace

TEST(WholeGame, DISABLED_RecordTheScript) {
    GamePlay play;
    play.Run(
        GS_SPLASH_SCREEN, 1, kSeed,
        [](GameScript& s) {
            ASSERT_TRUE(s.RecordTo(ScriptPath()));
            s.Note("# The whole game, recorded by tests/test_whole_game.cpp with seed " +
                   std::to_string(kSeed) + ". Replay: quarrow-driver --seed " +
                   std::to_string(kSeed) + " whole_game.txt");
            PlayTheWholeGame(s);
        },
        true); // windowed is quicker; the cursor lands on the same logical pixels either way
}

TEST(WholeGame, FromTheSplashToTheCreditsTheSameInEveryRunAndBuild) {
    // Side by side, each in a folder of its own without a score file: twice
    // the sanitized build, and its plain twin when it is built.
    std::vector<std::string> drivers = {TestDriverPath(), TestDriverPath()};
#ifdef QUARROW_PLAIN_DRIVER
    drivers.push_back(QUARROW_PLAIN_DRIVER);
#endif
    std::vector<std::string> folders;
    std::vector<DriverRun> runs(drivers.size());
    std::vector<std::thread> players;
    for (size_t i = 0; i < drivers.size(); ++i) {
        folders.push_back(TestScratchGameFolder());
        players.emplace_back([&, i] { runs[i] = PlayThroughTheDriver(drivers[i], folders[i]); });
    }
    for (std::thread& player : players) player.join();
    for (const std::string& folder : folders) std::filesystem::remove_all(folder);

    const DriverRun& run = runs[0];
    ASSERT_EQ(0, run.status) << run.output;
    EXPECT_EQ(std::string::npos, run.output.find("were not run")) << "the game ended early";
    // Reports: the first menu and the click on level 2 there; after each of
    // levels 1 to 4 the menu and the click on the next locked level; after
    // level 5 the menu (every level is open); after the credits the menu.
    const int wonBefore[] = {0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 6};
    ASSERT_EQ(std::size(wonBefore), run.reports.size()) << run.output;
    for (size_t i = 0; i < run.reports.size(); ++i) {
        const Report& r = run.reports[i];
        EXPECT_EQ(GS_MAIN_MENU, r.state) << "report " << i << ": a locked level starts nothing";
        for (int n = 0; n < 6; ++n)
            EXPECT_EQ((n < wonBefore[i]), (r.ratings[n] > 0))
                << "report " << i << ", level " << n + 1;
        if (wonBefore[i] > 0) {
            EXPECT_EQ(3, r.ratings[0]) << "level 1 is always worth three stars";
        }
        // The score file on disk holds what the menu has in memory; there is
        // none before a level has been left.
        EXPECT_EQ(wonBefore[i] == 0 ? "" : ScoreLines(r.ratings), r.scores) << "report " << i;
    }
    EXPECT_EQ(7, run.reports.back().level) << "the credits came after level 6";

    // The other runs: the same play state every 60 frames.
    ASSERT_GT(run.hashes.size(), 500u);
    for (size_t k = 1; k < runs.size(); ++k) {
        const std::string which = drivers[k] == drivers[0] ? "the second run" : "the plain build";
        ASSERT_EQ(0, runs[k].status) << which << "\n" << runs[k].output;
        ASSERT_EQ(run.hashes.size(), runs[k].hashes.size()) << which;
        for (size_t i = 0; i < run.hashes.size(); ++i)
            ASSERT_EQ(run.hashes[i], runs[k].hashes[i]) << which << ": first difference";
    }
}
