// The splash, menu, credits and how-to-play screens played on the real game
// as a player plays them. Frame numbers come from an independent float32
// simulation (python, struct 'f'): the splash's first frame adds 0 s, every
// later one float(1/60), its fades step 0.02; the credits fade 0.01 from 1.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <string>

#include "Audio.h"
#include "Credits.h"
#include "GamePlay.h"
#include "GameStateManager.h"
#include "InterfaceArt.h"
#include "Level.h"
#include "MainMenu.h"
#include "PlayerMoves.h"
#include "Scores.h"
#include "TestSupport.h"
#include "VXImage.h"
#include "VXInput.h"

namespace {

std::string Look(const GameObject& o) {
    return o.pTexture ? TestFileName(o.pTexture->fileName) : "none";
}
// The leaves on the star panel, left to right: x, then C coloured or G grey.
std::string Leaves() {
    std::string row;
    for (auto& leaf : gMenuRatingLeaves)
        row += std::to_string((int)leaf->posX) + (Look(*leaf) == "LeafBG.png" ? "G " : "C ");
    return row;
}
void FrameAt(GameScript& s, unsigned frame) {
    s.Frames((int)(frame - s.FramesInState()));
}
// Waits for the menu's first frame; returns the loading frames before it.
int LoadingFrames(GameScript& s) {
    s.Until([] { return !gMenuLevelButtons.empty(); });
    return (int)s.FramesInState() - 1;
}

class FrontEnd : public ::testing::Test {
  protected:
    void WriteScores(const std::string& text) { std::ofstream(play.ScoreFile()) << text; }
    void Play(int state, const std::function<void(GameScript&)>& script) {
        play.Run(state, 1, 7, script, true);
    }
    GamePlay play;
};

TEST_F(FrontEnd, SplashFadesEachLogoThroughItsTintAndEndsAtFrame481) {
    const char* files[2] = {"TolvernSG_Logo_CMYK-RED.png", "MosswickLogo.png"};
    const float sampleY[2] = {100.0f, 20.0f}; // the castle's wall, the candle
    std::vector<unsigned char> logo[2];
    int w[2], h[2];
    for (int i = 0; i < 2; ++i)
        ASSERT_TRUE(VXImageDecodePNGFile((TestResourcesDir() + "/" + files[i]).c_str(), logo[i],
                                         w[i], h[i]));
    // Blending is off: the tint alone scales the picture, and the frame
    // buffer clips it (1.02 brightens, -0.02 is black).
    const struct {
        unsigned frame;
        int logo;
        float alpha;
    } shots[] = {{60, 0, 0.6f},   {82, 0, 1.02f},  {250, 0, 0.0f}, {300, 1, 0.6f},
                 {360, 1, 1.02f}, {440, 1, 0.62f}, {480, 1, 0.0f}};
    // The picture is scaled to the screen and tinted: filtering and rounding.
    const TestTolerance kScaledAndTinted = {"scaled and tinted", 3};
    Play(GS_SPLASH_SCREEN, [&](GameScript& s) {
        for (const auto& shot : shots) {
            FrameAt(s, shot.frame);
            std::vector<unsigned char> frame;
            int fw = 0, fh = 0;
            s.OnGameThread([&] { frame = TestReadFrame(fw, fh); });
            const int i = shot.logo, ty = (int)((300.0f - sampleY[i]) / 600.0f * (float)h[i]);
            const unsigned char* t = &logo[i][((size_t)ty * w[i] + w[i] / 2) * 4];
            auto lit = [&](int c) { return std::min(255, (int)std::lround(t[c] * shot.alpha)); };
            const TestRgba want = {lit(0), lit(1), lit(2), 0};
            const TestRgba got = TestPixelAtWorld(frame, fw, fh, 0.0f, sampleY[i]);
            EXPECT_TRUE(TestPixelNear(got, want, kScaledAndTinted)) << "frame " << shot.frame;
        }
        EXPECT_EQ(gGameStateNext, GS_SPLASH_SCREEN) << "frame 480: 7.98 s";
        FrameAt(s, 481);
        EXPECT_EQ(gGameStateNext, GS_MAIN_MENU) << "frame 481: 8.00005 s";
    });
}

TEST_F(FrontEnd, LoadingLasts300FramesAndRereadsTheScoreFileAfterItsFirstAtEveryEntry) {
    WriteScores("Level1:2\nLevel2:1\nLevel3:0\nLevel4:0\nLevel5:0\nLevel6:0\n");
    Play(GS_MAIN_MENU, [&](GameScript& s) {
        EXPECT_EQ(gLevelRatings[0], 0) << "read after the first loading frame, not before";
        s.Frames(1);
        EXPECT_EQ(gLevelRatings[0], 2);
        EXPECT_EQ(LoadingFrames(s), 300);

        WriteScores("Level1:3\nLevel2:3\nLevel3:1\nLevel4:0\nLevel5:0\nLevel6:0\n");
        PlayerClickAt(s, 300.0f, -100.0f); // help
        s.Until([] { return gGameStateCurr == GS_HOW_TO_PLAY; });
        PlayerClickAt(s, 180.0f, -200.0f); // back
        s.Until([] { return gGameStateCurr == GS_MAIN_MENU; });
        EXPECT_EQ(gLevelRatings[2], 0) << "loading frame " << s.FramesInState();
        s.Frames(1);
        EXPECT_EQ(gLevelRatings[2], 1);
        EXPECT_EQ(LoadingFrames(s), 300);
    });
}

TEST_F(FrontEnd, LevelButtonsShowLocksAndLeavesByTheRatingsUpToTheirCorners) {
    const struct {
        const char* name;
        int ratings[6];
        float x, y;
        int level;
        const char* look;
        const char* leaves;
    } cases[] = {
        {"nothing won: 2 locked", {0, 0, 0, 0, 0, 0}, -275, -75, 2, "btnLock.png", ""},
        {"nothing won: 1 open", {0, 0, 0, 0, 0, 0}, -350, 50, 1, "btn1H.png", "-140G -70G 0G "},
        {"1 won: 2 open", {3, 0, 0, 0, 0, 0}, -275, -75, 2, "btn2H.png", "-140G -70G 0G "},
        {"1 won: 3 locked", {3, 0, 0, 0, 0, 0}, -50, -225, 3, "btnLock.png", ""},
        {"1 rated 2", {2, 0, 0, 0, 0, 0}, -350, 50, 1, "btn1H.png", "-140C -70C 0G "},
        {"3 rated 1", {3, 3, 1, 0, 0, 0}, -50, -225, 3, "btn3H.png", "-140C -70G 0G "},
        {"4 open, unrated", {3, 3, 1, 0, 0, 0}, 0, 100, 4, "btn4H.png", "-140G -70G 0G "},
        {"1 rated 5", {5, 0, 0, 0, 0, 0}, -350, 50, 1, "btn1H.png", "-140C -70C 0C "},
        {"after a 5: 2 open", {5, 0, 0, 0, 0, 0}, -275, -75, 2, "btn2H.png", "-140G -70G 0G "},
        // Level 6 at (330, 80): 30 each way, no widening.
        {"corner", {3, 3, 3, 3, 3, 0}, 300, 50, 6, "btn6H.png", "-140G -70G 0G "},
        {"corner", {3, 3, 3, 3, 3, 0}, 360, 110, 6, "btn6H.png", "-140G -70G 0G "},
        {"right", {3, 3, 3, 3, 3, 0}, 361, 80, 6, "btn6U.png", ""},
        {"below", {3, 3, 3, 3, 3, 0}, 330, 49, 6, "btn6U.png", ""},
    };
    Play(GS_MAIN_MENU, [&](GameScript& s) {
        LoadingFrames(s);
        for (const auto& c : cases) {
            PlayerHoverAt(s, -150.0f, 150.0f); // on no button: the panel goes
            s.OnGameThread([&] { std::copy(c.ratings, c.ratings + 6, gLevelRatings); });
            PlayerHoverAt(s, c.x, c.y);
            const std::string where = std::string(c.name) + " (" + std::to_string((int)c.x) + ", " +
                                      std::to_string((int)c.y) + ")";
            EXPECT_EQ(Look(*gMenuLevelButtons[c.level - 1]), c.look) << where;
            EXPECT_EQ(Leaves(), c.leaves) << where;
            EXPECT_EQ(gMenuPanelShown, *c.leaves != '\0') << where;
        }
        PlayerClickAt(s, 361.0f, 80.0f);
        EXPECT_EQ(gGameStateNext, GS_MAIN_MENU);
        s.Tap(MENU_KEY_NO_RATINGS);
        PlayerClickAt(s, -275.0f, -75.0f);
        EXPECT_EQ(gGameStateNext, GS_MAIN_MENU) << "level 2 locked by the debug key";
        s.Tap(MENU_KEY_ALL_RATINGS);
        PlayerClickAt(s, 360.0f, 110.0f);
        EXPECT_EQ(gGameStateNext, GS_NEXT_SCREEN);
        EXPECT_EQ(gCurrentLevel, 6);
    });
}

TEST_F(FrontEnd, ExitDialogSilencesTheForestAndNoRestoresItMuteCarriesIntoTheLevel) {
    Play(GS_MAIN_MENU, [&](GameScript& s) {
        LoadingFrames(s);
        for (bool muted : {false, true}) {
            // Mute reaching all six slots is the level's test (only the
            // forest plays here).
            if (muted) PlayerClickAt(s, 300.0f, -35.0f); // mute
            PlayerClickAt(s, 300.0f, -230.0f);           // exit
            EXPECT_TRUE(TestChannelPaused(gChannelMenu) && TestChannelVolume(gChannelMenu) == 0.0f)
                << "muted " << muted;
            PlayerClickAt(s, 75.0f, -25.0f); // no
            EXPECT_EQ(gMasterVolume, muted ? 0.0f : 1.0f) << "muted " << muted;
            EXPECT_EQ(TestChannelVolume(gChannelMenu), muted ? 0.0f : 1.0f) << "muted " << muted;
        }
        PlayerHoverAt(s, -150.0f, 150.0f);
        EXPECT_EQ(Look(*gMenuButtons[3]), "btnUnmuteU.png");

        PlayerClickAt(s, -350.0f, 50.0f); // level 1
        s.Until([] { return gGameStateCurr == GS_LEVEL; });
        EXPECT_EQ(TestChannelVolume(gChannelAmbience), 0.0f);
        s.Tap(VX_KEY_ESCAPE);
        PlayerClickAt(s, 300.0f, 180.0f); // options
        EXPECT_EQ(Look(*gOptionsButtons[0]), "btnUnmuteU.png");
    });
}

// 2267 frames of 3 units from -3400 (to 3401), then 101 fading.
TEST_F(FrontEnd, CreditsReturnToTheMenu2368FramesAfterEntryAndStartAfreshNextTime) {
    Play(GS_CREDITS, [&](GameScript& s) {
        EXPECT_EQ(gCreditsScroll, -3397);
        FrameAt(s, 2267);
        EXPECT_EQ(gCreditsPicture->transform.m[1][2], 3401.0f);
        EXPECT_EQ(gCreditsPicture->tintColor[3], 1.0f);
        FrameAt(s, 2367);
        EXPECT_EQ(gGameStateNext, GS_CREDITS);
        FrameAt(s, 2368);
        EXPECT_EQ(gGameStateNext, GS_MAIN_MENU);

        LoadingFrames(s);
        PlayerClickAt(s, 300.0f, -165.0f); // credits
        s.Until([] { return gGameStateCurr == GS_CREDITS; });
        EXPECT_EQ(gCreditsScroll, -3397);
        EXPECT_EQ(gCreditsPicture->tintColor[3], 1.0f);
    });
}

// The back button's box reaches 1.7 x 30 = 51 units each side of x = 180
// (the picture 60) and 30 above and below y = -200.
TEST(FrontEndBack, CreditsAndHowToPlayBackButtonsHitTheirOrdinaryBox) {
    for (int screen : {GS_CREDITS, GS_HOW_TO_PLAY}) {
        GamePlay play;
        play.Run(
            screen, 1, 7,
            [&](GameScript& s) {
                for (auto [x, y] :
                     {std::pair{235, -200}, {232, -200}, {128, -200}, {180, -231}, {180, -169}}) {
                    PlayerClickAt(s, (float)x, (float)y);
                    EXPECT_EQ(gGameStateNext, screen) << "click at (" << x << ", " << y << ")";
                }
                PlayerClickAt(s, 231.0f, -200.0f);
                EXPECT_EQ(gGameStateNext, GS_MAIN_MENU) << "screen " << screen;
            },
            true);
    }
}

// The game run by the driver in the scratch folder, on a display of its own
// (its clicks must not meet other tests' windows), ending with status 0
// after an exact count of presented frames (frame 0 the first). An event at
// frame n is seen in frame n + 1; space at 1 ends the splash in frame 2,
// loading runs frames 3 to 302, and the menu's first frame is 303. Every
// script closes the window in the end, so a game that fails to leave ends.
TEST_F(FrontEnd, TheDriverSkipsTheSplashLeavesByTheDialogAndClosesOnEveryScreen) {
    const struct {
        const char* what;
        const char* script;
        int frames;
    } cases[] = {
        {"close in the splash", "10 close\n", 11},
        // Seen in frame 101, the held key ends the splash there; the close
        // at 102 then falls in the loading screen: its frames stop, the
        // menu draws once (103) and the game ends.
        {"space skips the splash", "100 press space\n102 close\n", 104},
        {"the left button skips it", "100 press lbutton\n102 close\n", 104},
        {"close in the loading", "1 tap space\n50 close\n", 52},
        {"close in the menu", "1 tap space\n400 close\n", 401},
        {"exit, no, exit, yes",
         "1 tap space\n310 click 700 530\n312 click 475 325\n"
         "314 click 700 530\n316 click 325 325\n1000 close\n",
         318},
        {"close in the credits", "1 tap space\n350 click 700 465\n400 close\n", 401},
        {"close in how-to-play", "1 tap space\n350 click 700 400\n400 close\n", 401},
    };
    for (const auto& c : cases) {
        const std::string& folder = play.Folder();
        const std::string script = folder + "/script.txt";
        std::ofstream(script) << c.script;
        std::string output;
        const int status = TestRunDriverAlone(folder, script, output);
        EXPECT_EQ(status, 0) << c.what << "\n" << output;
        EXPECT_NE(output.find("driver: " + std::to_string(c.frames) + " frames presented"),
                  std::string::npos)
            << c.what << "\n"
            << output;
    }
}

} // namespace
