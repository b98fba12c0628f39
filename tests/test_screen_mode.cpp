// CTest label: integration
// Switching between full screen and the 800 x 600 window while playing: F11
// and Alt+Enter act in every state, and afterwards a click at a button's
// very edge still hits it, in the window and in full screen.
//
// The test screen is 1280 x 1024. Expected scales, window sizes and the
// screen pixels the clicks land on are worked out here from those numbers,
// never read from the engine, so a switch that forgot to update one of
// them is caught.
#include <SDL.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "GamePlay.h"
#include "GameStateManager.h"
#include "Level.h"
#include "PauseOverlay.h"
#include "VXInput.h"
#include "VXPlatform.h"
#include "VXSeam.h"
#include "VXSystem.h"

namespace {

constexpr unsigned char kF11 = VX_KEY_F1 + 10;

struct Mode {
    const char* name;
    bool fullScreen;
    float scaleX, scaleY;
    int width, height; // the window's client area in screen pixels
};
const Mode kWindow = {"the window", false, 1.0f, 1.0f, 800, 600};
const Mode kFullScreen = {"full screen", true, 1280.0f / 800.0f, 1024.0f / 600.0f, 1280, 1024};

void SwitchWithAltEnter(GameScript& s) {
    s.Press(VX_KEY_MENU);
    s.Tap(VX_KEY_RETURN);
    s.Release(VX_KEY_MENU);
}

// The game, the engine and the real window agree on the mode.
void ExpectMode(GameScript& s, const Mode& mode, const std::string& where) {
    EXPECT_EQ(mode.fullScreen, gVXFullScreen) << where << ": " << mode.name;
    EXPECT_FLOAT_EQ(mode.scaleX, gVXWinScaleX) << where << ": " << mode.name;
    EXPECT_FLOAT_EQ(mode.scaleY, gVXWinScaleY) << where << ": " << mode.name;
    int w = 0, h = 0;
    s.OnGameThread([&] { SDL_GetWindowSize((SDL_Window*)VXSysGetWindowHandle(), &w, &h); });
    EXPECT_EQ(mode.width, w) << where << ": " << mode.name << ", window width";
    EXPECT_EQ(mode.height, h) << where << ": " << mode.name << ", window height";
}

// The first screen pixel that a mouse reports as logical pixel p at this
// scale (the input divides by the scale in single precision and truncates).
int ScreenPixel(int p, float scale) {
    int pixel = (int)((float)p * scale) - 1;
    while ((int)((float)pixel / scale) < p) ++pixel;
    return pixel;
}

struct Point {
    float x, y;
};

// A click at world point (x, y) as the mouse reports it in this mode.
void ClickWorld(GameScript& s, const Mode& mode, float x, float y) {
    const int lx = (int)(x + 400.0f), ly = (int)(300.0f - y);
    // Another test's window appearing on the shared display makes the window
    // system report its own pointer for a frame: the cursor is brought back.
    for (int tries = 0; tries < 5; ++tries) {
        VXPlatformPushCursor(ScreenPixel(lx, mode.scaleX), ScreenPixel(ly, mode.scaleY));
        s.Frames(1);
        int cx, cy;
        VXInputGetCursorPosition(&cx, &cy);
        if (cx == lx && cy == ly) break;
    }
    s.Press(VX_KEY_LBUTTON);
    s.Frames(1);
    s.Release(VX_KEY_LBUTTON);
    s.Frames(1);
}

TEST(ScreenMode, AButtonsEdgeIsHitInTheWindowAndInFullScreenInALevel) {
    GamePlay play;
    play.Run(GS_NEXT_SCREEN, 1, 1, [](GameScript& s) {
        ASSERT_GE(s.Until([] { return gGameStateCurr == GS_LEVEL; }), 0);
        ExpectMode(s, kFullScreen, "the level starts");

        s.Tap(kF11);
        ExpectMode(s, kWindow, "after F11");
        // The pause button's hit box: 330 +- 51 by 250 +- 30.
        for (Point outside : {Point{382, 250}, Point{278, 250}, Point{330, 219}, Point{330, 281}}) {
            ClickWorld(s, kWindow, outside.x, outside.y);
            EXPECT_FALSE(gPaused) << "(" << outside.x << ", " << outside.y << ") is off the button";
        }
        ClickWorld(s, kWindow, 381, 280);
        ASSERT_TRUE(gPaused) << "the corner (381, 280) is on the pause button";

        SwitchWithAltEnter(s);
        ExpectMode(s, kFullScreen, "after Alt+Enter, paused");
        // Resume: 0 +- 51 by 20 +- 30.
        for (Point outside : {Point{52, 20}, Point{-52, 20}, Point{0, 51}}) {
            ClickWorld(s, kFullScreen, outside.x, outside.y);
            EXPECT_TRUE(gPaused) << "(" << outside.x << ", " << outside.y << ") is off resume";
        }
        ClickWorld(s, kFullScreen, -51, -10);
        EXPECT_FALSE(gPaused) << "the corner (-51, -10) is on resume";
    });
}

// Every other state switches, in the frame after the keys, and back again
// (the level, paused or not, and the menu are switched in the tests around).
struct StateCase {
    const char* name;
    int state;
};

class EveryState : public ::testing::TestWithParam<StateCase> {};

TEST_P(EveryState, F11AndAltEnterSwitchAndSwitchBack) {
    const StateCase c = GetParam();
    GamePlay play;
    play.Run(c.state, 1, 1, [&](GameScript& s) {
        s.Frames(2);
        ExpectMode(s, kFullScreen, c.name);
        s.Tap(kF11);
        ExpectMode(s, kWindow, std::string(c.name) + ", after F11");
        SwitchWithAltEnter(s);
        ExpectMode(s, kFullScreen, std::string(c.name) + ", after Alt+Enter");
        EXPECT_EQ(c.state, gGameStateCurr) << "the switch leaves the state alone";
    });
}

INSTANTIATE_TEST_SUITE_P(ScreenMode, EveryState,
                         ::testing::Values(StateCase{"splash", GS_SPLASH_SCREEN},
                                           StateCase{"next_level", GS_NEXT_SCREEN},
                                           StateCase{"credits", GS_CREDITS},
                                           StateCase{"how_to_play", GS_HOW_TO_PLAY}),
                         [](const auto& info) { return std::string(info.param.name); });

// Whether the frame just drawn showed this picture (the draw log records
// every picture a frame draws).
bool Drew(const char* picture) {
    for (const VXSeamDraw& d : VXSeamDrawsThisFrame())
        if (std::filesystem::path(d.picture).filename() == picture) return true;
    return false;
}

// The level select, switched while its loading screen runs (those frames
// sample no input): level 1's button covers exactly (-350, 50) +- 30, with
// none of the ordinary buttons' widening.
struct MenuCase {
    const char* name;
    bool altEnterToo; // F11 alone leaves the window; Alt+Enter after it, full screen
    const Mode* mode;
};

class LevelSelect : public ::testing::TestWithParam<MenuCase> {};

TEST_P(LevelSelect, ALevelButtonsCornerIsHitAfterASwitchDuringTheLoadingScreen) {
    const MenuCase c = GetParam();
    VXSeamRecordDraws(true);
    GamePlay play;
    play.Run(GS_MAIN_MENU, 1, 1, [&](GameScript& s) {
        s.Frames(1);
        ASSERT_TRUE(Drew("loading.png")) << "the menu opens on its loading screen";
        s.Tap(kF11);
        if (c.altEnterToo) SwitchWithAltEnter(s);
        EXPECT_TRUE(Drew("loading.png")) << "the loading screen is still up";
        ExpectMode(s, *c.mode, "the loading screen");
        ASSERT_GE(s.Until([] { return Drew("MenuBG.png"); }), 0);
        for (Point outside : {Point{-319, 80}, Point{-320, 81}, Point{-381, 50}, Point{-350, 19}}) {
            ClickWorld(s, *c.mode, outside.x, outside.y);
            EXPECT_EQ(GS_MAIN_MENU, gGameStateNext)
                << "(" << outside.x << ", " << outside.y << ") is off level 1";
        }
        ClickWorld(s, *c.mode, -320, 80);
        EXPECT_TRUE(gGameStateCurr == GS_NEXT_SCREEN || gGameStateNext == GS_NEXT_SCREEN)
            << "the corner (-320, 80) is on level 1";
        EXPECT_EQ(1, gCurrentLevel);
    });
    VXSeamRecordDraws(false);
}

INSTANTIATE_TEST_SUITE_P(ScreenMode, LevelSelect,
                         ::testing::Values(MenuCase{"window", false, &kWindow},
                                           MenuCase{"full_screen_again", true, &kFullScreen}),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
