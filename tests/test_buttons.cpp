// Buttons and pictures of the screens: the hit box of every button shape at
// its edges, the look families' files, and the picture objects' recipe
// (frames of a strip, level backgrounds that never replace a picture).
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "Background.h"
#include "Buttons.h"
#include "Level.h"
#include "Looks.h"
#include "TestSupport.h"

namespace {

class Screens : public ::testing::Test {
  protected:
    void SetUp() override { TestEngineStart(); }
    void TearDown() override {
        LooksFree();
        TestEngineStop();
    }
};

std::string FileOf(const GameObject& object) {
    return object.pTexture ? object.pTexture->fileName : "(none)";
}

} // namespace

TEST_F(Screens, HitBoxEdgesOfEveryShape) {
    ButtonGroup group;
    Buttons& ordinary = CreateButton(group, ButtonShape::Ordinary, 0.0f, 20.0f);
    Buttons& level = CreateButton(group, ButtonShape::Level, -350.0f, 50.0f);
    std::unique_ptr<Buttons> pauseSlot;
    Buttons& pause = CreateButton(pauseSlot, ButtonShape::Pause, 330.0f, 250.0f);
    EXPECT_EQ(1, level.kind) << "a button's kind is its place in its group";
    struct Case {
        const char* name;
        Buttons& button;
        float x, y;
        bool under;
    } cases[] = {
        // Ordinary: 0 +- 51 by 20 +- 30 (drawn 60 to each side).
        {"ordinary right edge", ordinary, 51.0f, 20.0f, true},
        {"ordinary left edge", ordinary, -51.0f, 20.0f, true},
        {"ordinary past the right edge", ordinary, 52.0f, 20.0f, false},
        {"ordinary, on the picture's rim only", ordinary, 55.0f, 20.0f, false},
        {"ordinary top edge", ordinary, 0.0f, 50.0f, true},
        {"ordinary above", ordinary, 0.0f, 51.0f, false},
        {"ordinary bottom corner", ordinary, -51.0f, -10.0f, true},
        // Level buttons: -350 +- 30 by 50 +- 30, no widening.
        {"level corner", level, -320.0f, 80.0f, true},
        {"level opposite corner", level, -380.0f, 20.0f, true},
        {"level past its side", level, -319.0f, 50.0f, false},
        {"level below", level, -350.0f, 19.0f, false},
        // The pause button: drawn 60 x 60, hit like an ordinary button.
        {"pause right edge", pause, 381.0f, 250.0f, true},
        {"pause left edge", pause, 279.0f, 250.0f, true},
        {"pause past the right edge", pause, 382.0f, 250.0f, false},
        {"pause past the left edge", pause, 278.0f, 250.0f, false},
        {"pause top corner", pause, 381.0f, 280.0f, true},
        {"pause below", pause, 330.0f, 219.0f, false},
    };
    for (const Case& c : cases) {
        c.button.UpdateBox();
        EXPECT_EQ(c.under, c.button.IsUnderMouse(c.x, c.y)) << c.name;
    }
    // The pause button's box was fixed when it was made: moving it later
    // does not move the box.
    pause.posX = 0.0f;
    pause.UpdateBox();
    EXPECT_TRUE(pause.IsUnderMouse(381.0f, 250.0f));
    // Drawn sizes: ordinary 120 x 60, the others 60 x 60.
    EXPECT_EQ(60.0f, ordinary.transform.m[0][0]);
    EXPECT_EQ(30.0f, ordinary.transform.m[1][1]);
    EXPECT_EQ(30.0f, level.transform.m[0][0]);
    EXPECT_EQ(30.0f, pause.transform.m[1][1]);
}

TEST_F(Screens, LookFamiliesNameTheirFiles) {
    ButtonGroup group;
    Buttons& b = CreateButton(group, ButtonShape::Ordinary, 0.0f, 0.0f);
    std::unique_ptr<Background> slot;
    Background& p = CreateBackground(slot, nullptr, 10.0f, 10.0f, 0.0f, 0.0f);
    struct Case {
        const char* name;
        std::function<void()> set;
        GameObject& object;
        const char* file; // null: no picture
    } cases[] = {
        {"menu 1", [&] { b.SetMenuTexture(1); }, b, "./Resources/btnResumeU.png"},
        {"menu 8", [&] { b.SetMenuTexture(8); }, b, "./Resources/btnHelpH.png"},
        {"menu 14", [&] { b.SetMenuTexture(14); }, b, "./Resources/btnUnmuteH.png"},
        {"menu 15", [&] { b.SetMenuTexture(15); }, b, "./Resources/btnOptionU.png"},
        {"menu 18", [&] { b.SetMenuTexture(18); }, b, "./Resources/button-pauseH.png"},
        {"menu 20", [&] { b.SetMenuTexture(20); }, b, "./Resources/btnQuitH.png"},
        {"menu 21", [&] { b.SetMenuTexture(21); }, b, nullptr},
        {"menu 0", [&] { b.SetMenuTexture(0); }, b, nullptr},
        {"yes/no 3", [&] { b.SetYesNoTexture(3); }, b, "./Resources/btnNoU.png"},
        {"back/continue 4", [&] { b.SetBackContinueTexture(4); }, b,
         "./Resources/btnContinueH.png"},
        {"back/restart 3", [&] { b.SetBackRestartTexture(3); }, b, "./Resources/btnRestartU.png"},
        {"back/restart 5", [&] { b.SetBackRestartTexture(5); }, b, nullptr},
        {"level 1", [&] { b.SetLevelTexture(1); }, b, "./Resources/btn1U.png"},
        {"level 12", [&] { b.SetLevelTexture(12); }, b, "./Resources/btn6H.png"},
        {"level 13", [&] { b.SetLevelTexture(13); }, b, "./Resources/btnLock.png"},
        {"leaf 2", [&] { b.SetLeafTexture(2); }, b, "./Resources/LeafBG.png"},
        {"tutorial 5", [&] { p.SetTutorialTexture(5); }, p, "./Resources/t2help.png"},
        {"wave 4", [&] { p.SetWaveTexture(4); }, p, "./Resources/lvl1wave1.png"},
        {"cloud 3", [&] { p.SetCloudTexture(3); }, p, "./Resources/cloud3.png"},
        {"star 4", [&] { p.SetStarTexture(4); }, p, "./Resources/lvlStarBG.png"},
        {"star 2", [&] { p.SetStarTexture(2); }, p, "./Resources/2star.png"},
    };
    for (const Case& c : cases) {
        c.set();
        EXPECT_EQ(c.file ? c.file : "(none)", FileOf(c.object)) << c.name;
    }
    // The countdown picture follows the level's digit; 4 is the start sign.
    for (auto [digit, file] : {std::pair{3, "./Resources/3.png"},
                               {1, "./Resources/1.png"},
                               {4, "./Resources/s.png"},
                               {0, "(none)"}}) {
        gCountdownDigit = digit;
        p.SetCountdownTexture();
        EXPECT_EQ(file, FileOf(p)) << "digit " << digit;
    }
    // A look is decoded once and shared: setting it every frame reads no file.
    b.SetMenuTexture(1);
    VXGfxTexture* first = b.pTexture;
    b.SetMenuTexture(2);
    const int held = LooksHeldCount();
    b.SetMenuTexture(1);
    b.SetMenuTexture(2);
    b.SetMenuTexture(1);
    EXPECT_EQ(first, b.pTexture);
    EXPECT_EQ(held, LooksHeldCount());
}

TEST_F(Screens, PicturesKeepWhatTheyHaveAndShowOneFrameOfAStrip) {
    std::unique_ptr<Background> slot;
    Background& level = CreateBackground(slot, nullptr, 400.0f, 300.0f, 0.0f, 0.0f);
    level.SetBG4Texture();
    EXPECT_EQ("./Resources/BG4.png", FileOf(level));
    level.SetBG6Texture(); // never replaces a picture it has
    EXPECT_EQ("./Resources/BG4.png", FileOf(level));
    // A strip of ten frames: the quad's u runs to a tenth, v to the bottom.
    Background& strip =
        CreateBackground(slot, "./Resources/loading.png", 100.0f, 30.0f, 250.0f, -220.0f, 10.0f);
    EXPECT_EQ(10.0f, strip.columns);
    EXPECT_EQ(1.0f, strip.rows);
    EXPECT_EQ("./Resources/loading.png", FileOf(strip));
    EXPECT_EQ(250.0f, strip.transform.m[0][2]);
    EXPECT_EQ(30.0f, strip.transform.m[1][1]);
}
