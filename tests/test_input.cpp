// Input through the real event pump: triggered and released semantics, the
// reset at a state change, the virtual-key mapping of the platform's keys and
// buttons, the cursor in logical pixels in and out of full screen, and the
// keys that switch between full screen and the window.
#include <SDL.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "VXInput.h"
#include "VXPlatform.h"
#include "VXSeam.h"
#include "VXSystem.h"

namespace {

// Moving the real pointer would disturb every other test's window on a
// shared display: such a test runs itself again in a child on a display of
// its own, and goes on only there.
bool OnOwnDisplay() {
    if (std::getenv("QUARROW_OWN_DISPLAY")) return true;
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string output;
    const int status = TestRunThisProgram(std::string("Input.") + test->name(),
                                          "QUARROW_OWN_DISPLAY=1", output, true);
    EXPECT_EQ(status, 0) << output;
    EXPECT_NE(output.find("[  PASSED  ] 1 test"), std::string::npos) << output;
    return false;
}

// One frame as the menu's loading screen runs it: the frame bracket alone,
// with no input sample between two frames.
void BareFrame() {
    VXSysFrameStart();
    VXSysFrameEnd();
}

SDL_Event KeyEvent(SDL_Keycode key, bool down, bool repeat = false, Uint16 mod = KMOD_NONE) {
    SDL_Event e{};
    e.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    e.key.keysym.sym = key;
    e.key.keysym.mod = mod;
    e.key.repeat = repeat;
    return e;
}

void Push(SDL_Event e) {
    SDL_PushEvent(&e);
}

class Input : public ::testing::Test {
  protected:
    void SetUp() override {
        TestEngineStart();
        VXInputReset();
    }
    void TearDown() override { TestEngineStop(); }
    // The end of one frame (the pump) and the start of the next (the sample).
    void NextFrame() {
        VXSysUpdate();
        VXInputUpdate();
    }
};

TEST_F(Input, AHeldKeyIsTriggeredOnceAndReleasedOnce) {
    const unsigned char keys[] = {VX_KEY_LBUTTON, VX_KEY_RBUTTON, VX_KEY_ESCAPE, VX_KEY_SPACE, 'Q'};
    for (unsigned char key : keys) {
        std::vector<int> triggered, released;
        int down = 0;
        for (int frame = 0; frame < 12; ++frame) {
            if (frame == 2) VXSeamInjectKey(key, true);
            if (frame == 8) VXSeamInjectKey(key, false);
            NextFrame();
            if (VXInputCheckTriggered(key)) triggered.push_back(frame);
            if (VXInputCheckReleased(key)) released.push_back(frame);
            down += VXInputCheckCurr(key);
        }
        EXPECT_EQ(triggered, std::vector<int>{2}) << "key " << int(key);
        EXPECT_EQ(released, std::vector<int>{8}) << "key " << int(key);
        EXPECT_EQ(down, 6) << "key " << int(key);
    }
}

TEST_F(Input, APressAndReleaseBetweenTwoSamplesIsNeverSeen) {
    VXSeamInjectKey(VX_KEY_SPACE, true);
    VXSeamInjectKey(VX_KEY_SPACE, false);
    NextFrame();
    EXPECT_FALSE(VXInputCheckCurr(VX_KEY_SPACE));
    EXPECT_FALSE(VXInputCheckTriggered(VX_KEY_SPACE));
    EXPECT_FALSE(VXInputCheckReleased(VX_KEY_SPACE));
}

TEST_F(Input, AKeyHeldAcrossAResetIsTriggeredAgain) {
    VXSeamInjectKey(VX_KEY_LBUTTON, true);
    NextFrame();
    NextFrame();
    EXPECT_TRUE(VXInputCheckCurr(VX_KEY_LBUTTON));
    EXPECT_FALSE(VXInputCheckTriggered(VX_KEY_LBUTTON));
    VXSysReset(); // a state change
    for (int i = 0; i < 256; ++i) ASSERT_EQ(gVXInputKeyCurr[i] | gVXInputKeyPrev[i], 0) << i;
    EXPECT_EQ(gVXInputCursorX, 0);
    NextFrame();
    EXPECT_TRUE(VXInputCheckTriggered(VX_KEY_LBUTTON));
}

TEST_F(Input, PlatformKeysAndButtonsLandOnTheirVirtualKeys) {
    struct Case {
        SDL_Keycode key;
        unsigned char vk;
    } keys[] = {{SDLK_a, 65},        {SDLK_m, 77},      {SDLK_z, 90},        {SDLK_0, 48},
                {SDLK_9, 57},        {SDLK_ESCAPE, 27}, {SDLK_SPACE, 32},    {SDLK_RETURN, 13},
                {SDLK_KP_ENTER, 13}, {SDLK_TAB, 9},     {SDLK_BACKSPACE, 8}, {SDLK_LEFT, 37},
                {SDLK_UP, 38},       {SDLK_RIGHT, 39},  {SDLK_DOWN, 40},     {SDLK_LSHIFT, 16},
                {SDLK_RSHIFT, 16},   {SDLK_LCTRL, 17},  {SDLK_RCTRL, 17},    {SDLK_LALT, 18},
                {SDLK_RALT, 18},     {SDLK_F1, 112},    {SDLK_F12, 123}};
    for (const Case& c : keys) {
        Push(KeyEvent(c.key, true));
        NextFrame();
        EXPECT_TRUE(VXInputCheckTriggered(c.vk)) << SDL_GetKeyName(c.key);
        Push(KeyEvent(c.key, false));
        NextFrame();
        EXPECT_TRUE(VXInputCheckReleased(c.vk)) << SDL_GetKeyName(c.key);
        int down = 0;
        for (int i = 0; i < 256; ++i) down += VXInputCheckCurr((unsigned char)i);
        EXPECT_EQ(down, 0) << SDL_GetKeyName(c.key);
    }
    struct Button {
        Uint8 button;
        unsigned char vk;
    } buttons[] = {{SDL_BUTTON_LEFT, 1}, {SDL_BUTTON_RIGHT, 2}, {SDL_BUTTON_MIDDLE, 4}};
    for (const Button& b : buttons) {
        SDL_Event e{};
        e.type = SDL_MOUSEBUTTONDOWN;
        e.button.button = b.button;
        SDL_PushEvent(&e);
        NextFrame();
        EXPECT_TRUE(VXInputCheckTriggered(b.vk)) << "button " << int(b.button);
        e.type = SDL_MOUSEBUTTONUP;
        SDL_PushEvent(&e);
        NextFrame();
        EXPECT_TRUE(VXInputCheckReleased(b.vk)) << "button " << int(b.button);
    }
}

TEST_F(Input, CursorReadsInLogicalPixelsAndItsDeltaSinceTheLastSample) {
    VXSeamInjectCursor(400, 300);
    NextFrame();
    int x, y, dx, dy;
    VXInputGetCursorPosition(&x, &y);
    VXInputGetCursorPositionDelta(&dx, &dy);
    EXPECT_EQ(x, 400);
    EXPECT_EQ(y, 300);
    // The first delta of a state is the whole distance from the client origin.
    EXPECT_EQ(dx, 400);
    EXPECT_EQ(dy, 300);
    VXSeamInjectCursor(-7, 650); // outside the window: nothing clamps it
    NextFrame();
    VXInputGetCursorPosition(&x, &y);
    VXInputGetCursorPositionDelta(&dx, &dy);
    EXPECT_EQ(x, -7);
    EXPECT_EQ(y, 650);
    EXPECT_EQ(dx, -407);
    EXPECT_EQ(dy, 350);
}

TEST_F(Input, FullScreenMapsScreenPixelsBackOntoTheLogicalWindow) {
    VXToogleFullScreen(true); // the test screen is 1280 x 1024
    EXPECT_FLOAT_EQ(gVXWinScaleX, 1.6f);
    EXPECT_FLOAT_EQ(gVXWinScaleY, 1024.0f / 600.0f);
    struct Case {
        int screenX, screenY; // where the mouse is on the screen
        int x, y;             // what the game reads
    } cases[] = {{640, 512, 400, 300}, {0, 0, 0, 0}, {1279, 1023, 799, 599},
                 {-5, -5, -3, -2},     {1, 1, 0, 0}, {1600, 2000, 1000, 1171}};
    for (const Case& c : cases) {
        SDL_Event e{};
        e.type = SDL_MOUSEMOTION;
        e.motion.x = c.screenX;
        e.motion.y = c.screenY;
        Push(e);
        NextFrame();
        int x, y;
        VXInputGetCursorPosition(&x, &y);
        EXPECT_EQ(x, c.x) << "screen " << c.screenX << "," << c.screenY;
        EXPECT_EQ(y, c.y) << "screen " << c.screenX << "," << c.screenY;
    }
}

// The one table of key names (scripts and tools): every name the driver's
// scripts may use, worked out from the desktop's virtual-key codes.
TEST(KeyNames, NamesMapToTheirVirtualKeys) {
    struct Case {
        const char* name;
        int vk; // 0: not a key name
    } cases[] = {
        {"f1", 112},      {"f2", 113},    {"f3", 114},   {"f4", 115},   {"f5", 116},
        {"f6", 117},      {"f7", 118},    {"f8", 119},   {"f9", 120},   {"f10", 121},
        {"f11", 122},     {"f12", 123},   {"F12", 123},  {"a", 65},     {"q", 81},
        {"z", 90},        {"M", 77},      {"0", 48},     {"9", 57},     {"escape", 27},
        {"esc", 27},      {"return", 13}, {"enter", 13}, {"space", 32}, {"tab", 9},
        {"backspace", 8}, {"shift", 16},  {"ctrl", 17},  {"alt", 18},   {"lbutton", 1},
        {"rbutton", 2},   {"mbutton", 4}, {"left", 37},  {"up", 38},    {"right", 39},
        {"down", 40},     {"f0", 0},      {"f13", 0},    {"f1x", 0},    {"f", 70},
        {"nokey", 0},     {"", 0},        {"aa", 0},     {"%", 0},      {"escape ", 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(VXPlatformVirtualKeyFromName(c.name), c.vk) << "\"" << c.name << "\"";
    EXPECT_EQ(VXPlatformVirtualKeyFromName(nullptr), 0);
}

// The system pointer is followed wherever it goes, as the desktop reports
// it: outside the client area the reading is negative or beyond 799 x 599,
// unclamped.
TEST_F(Input, TheSystemPointerIsFollowedOutsideTheWindow) {
    if (!OnOwnDisplay()) return;
    // The window's client area is centred on the 1280 x 1024 screen.
    const int left = 1280 / 2 - 800 / 2, top = 1024 / 2 - 600 / 2;
    struct Case {
        const char* name;
        int x, y; // client pixels the pointer is moved to
    } cases[] = {
        {"inside", 100, 50},
        {"left of and above the window", -30, -20},
        {"right of and below the window", 850, 650},
        {"the client origin", 0, 0},
        {"the screen's far corner", 1279 - left, 1023 - top},
    };
    for (const Case& c : cases) {
        SDL_WarpMouseGlobal(left + c.x, top + c.y);
        NextFrame();
        NextFrame();
        int x = 0, y = 0;
        VXInputGetCursorPosition(&x, &y);
        EXPECT_EQ(x, c.x) << c.name;
        EXPECT_EQ(y, c.y) << c.name;
    }
    // An injected position stands while the real pointer stays put.
    VXSeamInjectCursor(5, 6);
    NextFrame();
    NextFrame();
    int x = 0, y = 0;
    VXInputGetCursorPosition(&x, &y);
    EXPECT_EQ(x, 5);
    EXPECT_EQ(y, 6);
    // From the first injected position on, the seam drives the cursor: a
    // real pointer moving (another window on a shared display) is ignored.
    SDL_WarpMouseGlobal(left + 300, top + 200);
    NextFrame();
    NextFrame();
    VXInputGetCursorPosition(&x, &y);
    EXPECT_EQ(x, 5) << "the real pointer moved after an injected one";
    EXPECT_EQ(y, 6);
}

TEST_F(Input, F11AndAltEnterSwitchTheScreenModeAtTheFrameEnd) {
    // The events all arrive within one frame.
    auto check = [](const char* name, std::initializer_list<SDL_Event> events, bool switches) {
        const bool before = gVXFullScreen;
        for (SDL_Event e : events) Push(e);
        BareFrame();
        EXPECT_EQ(gVXFullScreen, before != switches) << name;
        // Letting go of every key switches nothing.
        for (SDL_Keycode key : {SDLK_F11, SDLK_LALT, SDLK_RALT, SDLK_RETURN, SDLK_KP_ENTER})
            Push(KeyEvent(key, false));
        BareFrame();
        EXPECT_EQ(gVXFullScreen, before != switches) << name << ", keys let go";
    };
    check("F11", {KeyEvent(SDLK_F11, true)}, true);
    check("F11 held down: a repeat", {KeyEvent(SDLK_F11, true, true)}, false);
    check("left Alt, Enter", {KeyEvent(SDLK_LALT, true), KeyEvent(SDLK_RETURN, true)}, true);
    check("right Alt, keypad Enter", {KeyEvent(SDLK_RALT, true), KeyEvent(SDLK_KP_ENTER, true)},
          true);
    check("Enter alone", {KeyEvent(SDLK_RETURN, true)}, false);
    check("Alt released before Enter",
          {KeyEvent(SDLK_LALT, true), KeyEvent(SDLK_LALT, false), KeyEvent(SDLK_RETURN, true)},
          false);
    check("Enter with Alt held since before the window had focus",
          {KeyEvent(SDLK_RETURN, true, false, KMOD_LALT)}, true);
    check("F11 twice in one frame",
          {KeyEvent(SDLK_F11, true), KeyEvent(SDLK_F11, false), KeyEvent(SDLK_F11, true)}, false);
}

TEST_F(Input, TheSwitchBringsTheScaleTheWindowAndThePointerAlong) {
    if (!OnOwnDisplay()) return;
    // The test screen is 1280 x 1024; the 800 x 600 window sits centred at
    // (240, 212). The pointer stands still at screen pixel (1000, 800).
    SDL_Window* window = (SDL_Window*)VXSysGetWindowHandle();
    SDL_WarpMouseGlobal(1000, 800);
    BareFrame();
    BareFrame();
    struct Step {
        bool fullScreen;
        float scaleX, scaleY;
        int x, y, w, h; // the window on the screen
        int cursorX, cursorY;
    } steps[] = {
        // 1000 / 1.6 = 625; 800 / (1024 / 600) = 468.75, truncated.
        {true, 1.6f, 1024.0f / 600.0f, 0, 0, 1280, 1024, 625, 468},
        // 1000 - 240 and 800 - 212, one window pixel per logical pixel.
        {false, 1.0f, 1.0f, 240, 212, 800, 600, 760, 588},
        {true, 1.6f, 1024.0f / 600.0f, 0, 0, 1280, 1024, 625, 468},
    };
    for (const Step& step : steps) {
        Push(KeyEvent(SDLK_F11, true));
        BareFrame();
        Push(KeyEvent(SDLK_F11, false));
        BareFrame();
        VXInputUpdate();
        const char* mode = step.fullScreen ? "full screen" : "window";
        ASSERT_EQ(gVXFullScreen, step.fullScreen) << mode;
        EXPECT_FLOAT_EQ(gVXWinScaleX, step.scaleX) << mode;
        EXPECT_FLOAT_EQ(gVXWinScaleY, step.scaleY) << mode;
        int x, y, w, h;
        SDL_GetWindowPosition(window, &x, &y);
        SDL_GetWindowSize(window, &w, &h);
        EXPECT_EQ((std::array<int, 4>{x, y, w, h}),
                  (std::array<int, 4>{step.x, step.y, step.w, step.h}))
            << mode << ": the window's place and size on the screen";
        VXInputGetCursorPosition(&x, &y);
        EXPECT_EQ(x, step.cursorX) << mode << ": the cursor under the pointer";
        EXPECT_EQ(y, step.cursorY) << mode << ": the cursor under the pointer";
    }
}

} // namespace
