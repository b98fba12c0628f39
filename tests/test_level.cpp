// CTest label: integration
// The level played in the real game: countdown, waves and towers on their
// frames, level 1 won by dragging towers, a boss's death fixing the stars, a
// loss, and every overlay a player meets in a level.
//
// Frames count from a level's first frame (0). The countdown adds 1/60 s as
// a float each frame; in single precision it shows 3 in frames 0-60, 2 in
// 61-120, 1 in 121-179, and the wave starts in frame 180 (sum 3.0166645).
// The next-level screen fades 0.005 a frame from 1.0 to 0.5 three times:
// 101 frames each, 303 in all.
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <string>

#include "Audio.h"
#include "Crystal.h"
#include "GamePlay.h"
#include "GameStateManager.h"
#include "Level.h"
#include "PauseOverlay.h"
#include "PlayerMoves.h"
#include "Scores.h"
#include "TestSupport.h"
#include "Tile.h"
#include "Tower.h"
#include "VXInput.h"
#include "VXSeam.h"
#include "WaveSpawner.h"

namespace {

constexpr int kNextScreenFrames = 303;
constexpr int kWaveStartFrame = 180;

// Whether the frame just finished drew the picture (named without folder).
bool WasDrawn(const std::string& picture) {
    for (const VXSeamDraw& d : VXSeamDrawsThisFrame())
        if (TestFileName(d.picture) == picture) return true;
    return false;
}
// Which countdown digit the frame showed: "3.png", "2.png", "1.png" or "".
std::string CountdownShown() {
    for (const char* digit : {"1.png", "2.png", "3.png", "s.png"})
        if (WasDrawn(digit)) return digit;
    return "";
}

// The board's hexagons drawn in the frame (untextured, 60 units).
int TilesDrawn() {
    int n = 0;
    for (const VXSeamDraw& d : VXSeamDrawsThisFrame())
        n += d.renderMode == VX_GFX_RENDER_COLOR && d.sx == 60.0f && d.sy == 60.0f;
    return n;
}

// Lets frames pass into the level from the next-level screen and checks
// that screen's length (counting the frames of it already drawn).
void EnterLevel(GameScript& s) {
    const int drawn = gGameStateCurr == GS_NEXT_SCREEN ? (int)s.FramesInState() - 1 : 0;
    ASSERT_EQ(kNextScreenFrames, drawn + s.Until([] { return gGameStateCurr == GS_LEVEL; }))
        << "frames of the next-level screen";
}

// Lets frames pass until the condition, killing every monster as it comes
// (the spawner removes it next update): waves go by without the towers.
int FastForwardUntil(GameScript& s, const std::function<bool()>& condition) {
    return s.Until([&] {
        for (auto& monster : gWaveSpawner.monsterList) monster->health = 0;
        return condition();
    });
}

void BackToTheMenu(GameScript& s, float y) {
    s.ClickWorld(75, y);
    ASSERT_GE(s.Until([] { return gGameStateCurr == GS_MAIN_MENU; }, 10), 0);
}

class Level : public ::testing::Test {
  protected:
    void SetUp() override { VXSeamRecordDraws(true); }
    void TearDown() override { VXSeamRecordDraws(false); }
    GamePlay play;
};

} // namespace

TEST_F(Level, CountdownWavesAndTowersOnTheirFrames) {
    play.Run(
        GS_NEXT_SCREEN, 2, 7,
        [](GameScript& s) {
            EnterLevel(s);
            for (int frame = 0; frame <= kWaveStartFrame; ++frame) {
                const std::string expected = frame <= 60    ? "3.png"
                                             : frame <= 120 ? "2.png"
                                             : frame < 180  ? "1.png"
                                                            : "";
                ASSERT_EQ(expected, CountdownShown()) << "level frame " << frame;
                const bool started = frame == kWaveStartFrame;
                ASSERT_EQ(started ? 1u : 0u, gWaveNumber) << "level frame " << frame;
                ASSERT_EQ(started ? 3u : 2u, towerList.size()) << "level frame " << frame;
                ASSERT_EQ(started, WasDrawn("wave1.png")) << "level frame " << frame;
                if (frame < kWaveStartFrame) s.Frames(1);
            }
            // The countdown restarts in the frame a wave is cleared, counts
            // 3, 2, 1 again, and 181 frames later the next wave brings a tower.
            for (unsigned wave = 2; wave <= 3; ++wave) {
                ASSERT_GE(FastForwardUntil(s, [] { return gCountdownActive; }), 0);
                const unsigned long cleared = s.FramesPresented();
                s.Frames(1);
                EXPECT_EQ("3.png", CountdownShown()) << "first frame of countdown " << wave;
                ASSERT_GE(FastForwardUntil(s, [&] { return gWaveNumber == wave; }), 0);
                EXPECT_EQ(181u, s.FramesPresented() - cleared) << "countdown before wave " << wave;
                EXPECT_EQ(2u + wave, towerList.size()) << "towers at wave " << wave;
                EXPECT_FALSE(gCountdownActive);
            }
            EXPECT_TRUE(WasDrawn("wave3.png"));
            EXPECT_TRUE(gAmbienceReleased) << "the ambience stops when the boss's wave starts";
            EXPECT_TRUE(TestChannelPlaying(gChannelFinalWave)) << "the final-wave music starts";
            // Every wave done with the boss gone without an arrow: no win.
            ASSERT_GE(FastForwardUntil(s, [] { return gAllWavesDone; }), 0);
            EXPECT_EQ(1u, gWaveSpawner.bossSpawned);
            s.Frames(2);
            EXPECT_FALSE(gLevelWon) << "no boss killed by an arrow, no win";
        },
        true);
}

TEST_F(Level, TutorialWonByDraggingTowersOntoTheGoblinsRoute) {
    play.Run(
        GS_NEXT_SCREEN, 1, 11,
        [](GameScript& s) {
            EnterLevel(s);
            ASSERT_EQ(kWaveStartFrame, s.Until([] { return gWaveNumber == 1; }));
            EXPECT_TRUE(WasDrawn("lvl1wave1.png")) << "level 1 has banners of its own";
            s.Frames(1);
            EXPECT_TRUE(WasDrawn("tutorial1.png") && WasDrawn("t1help.png"));
            EXPECT_FALSE(WasDrawn("t2help.png"));
            // The goblins come down the middle from tile 5 (15, 25, 35, 45):
            // the first tower goes beside the route at row 2.
            const int free = PlayerFirstFreeTile({24, 26, 34, 36});
            ASSERT_GE(free, 0);
            PlayerDragTile(s, PlayerTileOfTower(0), free);
            EXPECT_EQ(0, tileList[free]->occupant);
            EXPECT_TRUE(WasDrawn("tutorial2.png"));
            // The second tower onto the first: a second-tier tower there.
            PlayerDragTile(s, PlayerTileOfTower(1), free);
            EXPECT_EQ(3u, tileList[free]->moveCost) << "a second-tier tower on the drop tile";
            EXPECT_TRUE(WasDrawn("tutorial3.png") && WasDrawn("t2help.png"));
            // The wave's own tower beside the route on the other side.
            int third = -1;
            for (auto& tile : tileList)
                if (tile->moveCost == 2) third = tile->tileIndex;
            const int other = PlayerFirstFreeTile({36, 34, 26, 24, 46, 44});
            ASSERT_GE(third, 0);
            PlayerDragTile(s, third, other);
            EXPECT_EQ(2u, tileList[other]->moveCost);

            ASSERT_GE(s.Until([] { return gWaveNumber == 2; }), 0) << "wave 1 is beaten";
            EXPECT_TRUE(WasDrawn("lvl1wave2.png"));
            ASSERT_GE(s.Until([] { return gCountdownActive; }), 0) << "wave 2 is beaten";
            s.Frames(1);
            EXPECT_EQ("", CountdownShown()) << "no countdown before the empty third wave";
            // The empty third wave starts, is done and wins in one frame, 181
            // frames after the countdown began.
            EXPECT_EQ(180, s.Until([] { return gLevelWon; }));
            EXPECT_EQ(3, gStarsEarned);
            EXPECT_EQ(3, gLevelRatings[0]);
            EXPECT_TRUE(LevelCrystal()->health > 0);
            s.Frames(1);
            EXPECT_TRUE(WasDrawn("WinScreen.png") && WasDrawn("3star.png"));
            BackToTheMenu(s, -155);
        },
        true);
    EXPECT_EQ("Level1:3\nLevel2:0\nLevel3:0\nLevel4:0\nLevel5:0\nLevel6:0\n",
              TestReadFile(play.ScoreFile()));
}

// Continue from the win overlay starts the next level with a clean slate.
TEST_F(Level, BossDeathWinsWithTheStarsOfThatMomentAndContinueGoesOn) {
    play.Run(
        GS_NEXT_SCREEN, 3, 5,
        [](GameScript& s) {
            EnterLevel(s);
            ASSERT_GE(FastForwardUntil(s, [] { return gWaveNumber == 2; }), 0);
            ASSERT_GE(FastForwardUntil(s, [] { return gCountdownActive; }), 0);
            // A tower next to the crystal (tile 44), where the boss must pass.
            if (tileList[44]->occupant < 0) PlayerDragTile(s, PlayerTileOfTower(0), 44);
            ASSERT_GE(tileList[44]->occupant, 0);
            ASSERT_GE(s.Until([] { return !gWaveSpawner.monsterList.empty(); }, 800), 0);
            Monster& boss = *gWaveSpawner.monsterList.front();
            ASSERT_EQ(2, boss.tier);
            boss.health = 1; // one arrow kills it
            LevelCrystal()->health = 59;
            ASSERT_GE(s.Until([] { return gBossKilled; }, 1500), 0);
            EXPECT_FALSE(gLevelWon) << "the dead boss leaves the list only at the next update";
            s.Frames(1);
            EXPECT_TRUE(gLevelWon) << "the boss was the last monster: its death wins";
            EXPECT_EQ(2, gStarsEarned) << "59 health at the boss's death";
            EXPECT_EQ(2, gLevelRatings[2]);
            s.Frames(1);
            EXPECT_TRUE(WasDrawn("WinScreen.png") && WasDrawn("2star.png"));
            s.ClickWorld(-75, -155); // continue
            s.Frames(1);
            EXPECT_EQ(4, gCurrentLevel);
            EXPECT_EQ(0, gStarsEarned);
            EnterLevel(s);
            EXPECT_FALSE(gLevelWon) << "the next-level screen clears the win";
        },
        true);
    EXPECT_NE(std::string::npos, TestReadFile(play.ScoreFile()).find("Level3:2\n"));
}

TEST_F(Level, LostLevelStandsStillUnderTheLoseScreenAndRestarts) {
    play.Run(
        GS_NEXT_SCREEN, 1, 3,
        [](GameScript& s) {
            for (int attempt = 1; attempt <= 2; ++attempt) {
                EnterLevel(s);
                ASSERT_EQ(1, gCurrentLevel);
                ASSERT_FALSE(gLevelLost);
                ASSERT_TRUE(PlayerLoseLevel(s));
                s.Frames(1);
                const Monster& goblin = *gWaveSpawner.monsterList.front();
                const float x = goblin.posX, y = goblin.posY, time = gCountdownTime;
                const int health = LevelCrystal()->health;
                s.Frames(30);
                EXPECT_EQ(x, goblin.posX) << "monsters stand still";
                EXPECT_EQ(y, goblin.posY);
                EXPECT_EQ(health, LevelCrystal()->health);
                EXPECT_EQ(time, gCountdownTime);
                EXPECT_TRUE(WasDrawn("LoseScreen.png") && WasDrawn("GoblinAttack.png"))
                    << "the board is drawn beneath the lose screen";
                EXPECT_TRUE(gAmbienceReleased);
                EXPECT_TRUE(TestChannelPlaying(gChannelLose)) << "the lose music plays";
                if (attempt == 2) return BackToTheMenu(s, -25);
                s.ClickWorld(-75, -25); // restart
                s.Frames(1);
                EXPECT_EQ(GS_NEXT_SCREEN, gGameStateCurr);
            }
        },
        true);
}

TEST_F(Level, PauseMenuOverlaysAndTheirButtons) {
    play.Run(
        GS_NEXT_SCREEN, 2, 13,
        [](GameScript& s) {
            EnterLevel(s);
            s.MoveWorld(-350, -250); // away from every button
            s.Frames(10);
            const auto stillFor = [&](int frames) {
                const float time = gCountdownTime;
                s.Frames(frames);
                return time == gCountdownTime;
            };

            // Escape toggles at the end of the frame that sees the press: the
            // next frame is the first without an update.
            s.Tap(VX_KEY_ESCAPE);
            EXPECT_FALSE(gPaused);
            EXPECT_FALSE(WasDrawn("pauseM.png"));
            float before = gCountdownTime;
            s.Frames(1);
            EXPECT_TRUE(gPaused);
            EXPECT_EQ(before, gCountdownTime) << "no update in the first paused frame";
            EXPECT_TRUE(WasDrawn("pauseM.png") && WasDrawn("btnResumeU.png"));
            EXPECT_TRUE(stillFor(20)) << "the countdown stands still while paused";
            EXPECT_TRUE(WasDrawn("3.png")) << "the countdown is still drawn";
            EXPECT_EQ(55, TilesDrawn()) << "the board (layout 5) is still drawn";
            EXPECT_TRUE(TestChannelPaused(gChannelAmbience)) << "the ambience holds";
            EXPECT_FALSE(WasDrawn("button-pauseU.png") || WasDrawn("button-pauseH.png"));
            s.Tap(VX_KEY_ESCAPE);
            s.Frames(1);
            EXPECT_FALSE(gPaused);
            EXPECT_FALSE(stillFor(1));
            EXPECT_FALSE(TestChannelPaused(gChannelAmbience));

            // The pause button's press is taken in the draw, after this
            // frame's update; the menu shows in the same frame.
            s.MoveWorld(330, 250);
            s.Frames(1);
            EXPECT_TRUE(WasDrawn("button-pauseH.png"));
            before = gCountdownTime;
            s.Press(VX_KEY_LBUTTON);
            s.Frames(1);
            EXPECT_TRUE(gPaused);
            EXPECT_NE(before, gCountdownTime) << "this frame's update ran";
            EXPECT_TRUE(WasDrawn("pauseM.png"));
            s.Release(VX_KEY_LBUTTON);
            EXPECT_TRUE(stillFor(5));

            // Help covers the menu and hides the options button; the other
            // buttons wait until it is put away.
            s.ClickWorld(300, 120);
            EXPECT_TRUE(gHelpShown);
            EXPECT_TRUE(WasDrawn("howtoplayPause.png")) << "shown in the frame of the click";
            s.Frames(1);
            EXPECT_FALSE(WasDrawn("btnOptionU.png") || WasDrawn("btnOptionH.png"));
            s.ClickWorld(0, 20); // resume, under the help picture
            EXPECT_TRUE(gPaused);
            s.ClickWorld(300, 120);
            EXPECT_FALSE(gHelpShown);
            s.Frames(1);
            EXPECT_TRUE(WasDrawn("btnOptionU.png"));

            // Options: mute reaches all six channel slots.
            s.OnGameThread([&] {
                for (const TestSoundSlot& entry : kTestSoundSlots)
                    AudioPlayIntoSlot(gLevelSoundSystem, gSoundArrow, entry.slot, true);
            });
            s.ClickWorld(300, 180);
            EXPECT_TRUE(gOptionsOpen && WasDrawn("optionBG.png") && WasDrawn("btnMuteU.png"));
            s.ClickWorld(-75, -25);
            EXPECT_TRUE(gMuted);
            for (const TestSoundSlot& entry : kTestSoundSlots)
                EXPECT_EQ(0.0f, TestChannelVolume(*entry.slot)) << entry.name << " muted";
            s.Frames(1);
            EXPECT_TRUE(WasDrawn("btnUnmuteH.png")) << "the sound button now offers unmute";
            s.ClickWorld(-75, -25);
            EXPECT_FALSE(gMuted);
            s.ClickWorld(75, -25); // back
            EXPECT_FALSE(gOptionsOpen);
            EXPECT_TRUE(gPaused);

            // Restart goes through the next-level screen to the same level,
            // its countdown from the start.
            s.ClickWorld(0, -45);
            s.Frames(1);
            EXPECT_EQ(GS_NEXT_SCREEN, gGameStateCurr);
            EnterLevel(s);
            EXPECT_EQ(2, gCurrentLevel);
            EXPECT_FALSE(gPaused);
            EXPECT_EQ(kWaveStartFrame, s.Until([] { return gWaveNumber == 1; }));

            // Quit asks first: no keeps the pause menu, yes leaves the level.
            s.Tap(VX_KEY_ESCAPE);
            s.Frames(1);
            s.ClickWorld(0, -110);
            EXPECT_TRUE(gConfirmOpen && WasDrawn("cfmBG.png")) << "the dialog shows at once";
            s.ClickWorld(75, -25); // no
            EXPECT_FALSE(gConfirmOpen);
            EXPECT_TRUE(gPaused);
            EXPECT_EQ(GS_LEVEL, gGameStateCurr);
            s.ClickWorld(0, -110);
            s.ClickWorld(-75, -25); // yes
            ASSERT_GE(s.Until([] { return gGameStateCurr == GS_MAIN_MENU; }, 10), 0);
            EXPECT_FALSE(gPaused || gConfirmOpen);
            EXPECT_TRUE(tileList.empty()) << "the level was unloaded";
        },
        true);
}

TEST_F(Level, PauseButtonEdgeInFullScreen) {
    // Full screen: the cursor arrives in screen pixels. The pause button's
    // hit box is 330 +- 51 by 250 +- 30.
    play.Run(GS_NEXT_SCREEN, 1, 1, [](GameScript& s) {
        EnterLevel(s);
        for (VXVec2 outside : {VXVec2{382, 250}, VXVec2{278, 250}, VXVec2{330, 219}}) {
            s.ClickWorld(outside.x, outside.y);
            s.Frames(1);
            EXPECT_FALSE(gPaused) << outside.x << ", " << outside.y;
        }
        s.ClickWorld(381, 280);
        EXPECT_TRUE(gPaused) << "the corner (381, 280) is on the button";
    });
}

TEST_F(Level, NextScreenAfterTheLastLevelRollsTheCredits) {
    // Continuing from level 6 makes the current level 7.
    play.Run(
        GS_NEXT_SCREEN, 7, 1,
        [](GameScript& s) {
            EXPECT_EQ(kNextScreenFrames, s.Until([] { return gGameStateCurr != GS_NEXT_SCREEN; }));
            EXPECT_EQ(GS_CREDITS, gGameStateCurr);
        },
        true);
}

// Closing the window anywhere in a level's life ends the game in order with
// the ratings held on disk: the level's end writes them once a level was
// entered, and a win on screen is among them. Level 1 comes in rated 1 and
// level 2 rated 2.
TEST(LevelClosed, TheWindowClosedInEveryStateKeepsTheRatingsOnDisk) {
    const char* const before = "Level1:1\nLevel2:2\nLevel3:0\nLevel4:0\nLevel5:0\nLevel6:0\n";
    const char* const won = "Level1:3\nLevel2:2\nLevel3:0\nLevel4:0\nLevel5:0\nLevel6:0\n";
    const auto paused = [](GameScript& s) {
        s.Tap(VX_KEY_ESCAPE);
        s.Frames(2);
        EXPECT_TRUE(gPaused);
    };
    const struct {
        const char* where;
        std::function<void(GameScript&)> reach; // from the level's first frame
        const char* onDisk;
    } cases[] = {
        {"the next-level screen", nullptr, before},
        {"the countdown", [](GameScript& s) { s.Frames(60); }, before},
        {"a wave", [](GameScript& s) { s.Until([] { return !gWaveSpawner.monsterList.empty(); }); },
         before},
        {"the pause menu", paused, before},
        {"the confirmation dialog",
         [&](GameScript& s) {
             paused(s);
             s.ClickWorld(0, -110); // quit
             s.Frames(1);
             EXPECT_TRUE(gConfirmOpen);
         },
         before},
        {"the win screen",
         [](GameScript& s) {
             FastForwardUntil(s, [] { return gLevelWon; });
             s.Frames(1);
             EXPECT_TRUE(WasDrawn("WinScreen.png"));
         },
         won},
        {"the lose screen",
         [](GameScript& s) {
             EXPECT_TRUE(PlayerLoseLevel(s));
             s.Frames(1);
             EXPECT_TRUE(WasDrawn("LoseScreen.png"));
         },
         before},
    };
    VXSeamRecordDraws(true);
    for (const auto& c : cases) {
        GamePlay play;
        std::ofstream(play.ScoreFile()) << before;
        play.Run(
            GS_NEXT_SCREEN, 1, 7,
            [&](GameScript& s) {
                s.OnGameThread(LoadScores); // what the menu did before
                if (c.reach) {
                    EnterLevel(s);
                    c.reach(s);
                } else {
                    s.Frames(50);
                }
                ASSERT_FALSE(s.GameOver()) << c.where;
                s.Close();
                EXPECT_FALSE(s.Frames(1)) << c.where << ": the game goes on after the close";
            },
            true);
        EXPECT_EQ(c.onDisk, TestReadFile(play.ScoreFile())) << "closed in " << c.where;
        std::string held;
        for (int n = 0; n < 6; n++)
            held += "Level" + std::to_string(n + 1) + ":" + std::to_string(gLevelRatings[n]) + "\n";
        EXPECT_EQ(held, TestReadFile(play.ScoreFile())) << "closed in " << c.where;
    }
    VXSeamRecordDraws(false);
}
