// The game object base: the draw contexts' animation clock driven through
// real frames, sprite-sheet frames read back from the screen, texture choice
// for attacking monsters, the overlap test, and the mesh failure report.
#include <gtest/gtest.h>

#include <unistd.h>

#include <vector>

#include "GameMain.h"
#include "GameObject.h"
#include "Goblin.h"
#include "TestSupport.h"
#include "VXFrameRateController.h"
#include "VXSystem.h"

namespace {

// One picture cell per colour: a sheet of 5 x 2 frames, one pixel each.
// Column c of row r gets red 40 c + 20, green 100 r + 50, blue 200.
VXGfxTexture* Sheet5x2() {
    std::vector<unsigned char> px;
    for (int r = 0; r < 2; ++r)
        for (int c = 0; c < 5; ++c)
            px.insert(px.end(),
                      {(unsigned char)(40 * c + 20), (unsigned char)(100 * r + 50), 200, 255});
    return VXGfxTextureLoadFromMemory(px.data(), 5, 2);
}

VXGfxTexture* Solid(unsigned char r, unsigned char g, unsigned char b) {
    const unsigned char px[4] = {r, g, b, 255};
    return VXGfxTextureLoadFromMemory(px, 1, 1);
}

class Drawing : public ::testing::Test {
  protected:
    void SetUp() override { TestEngineStart(); }
    void TearDown() override { TestEngineStop(); }
    // The centre pixel of a frame the clock does not step in (not a
    // multiple of 30) that draws the object with the clock at animFrame.
    TestRgba Drawn(GameObject& object, int animFrame, int framesU = 1, int framesV = 1) {
        VXSysFrameStart();
        VXSysFrameEnd();
        VXSysFrameStart();
        ObjectList context;
        context.animFrame = animFrame;
        context.DrawObject(object, framesU, framesV);
        int w = 0, h = 0;
        std::vector<unsigned char> frame = TestReadFrame(w, h);
        VXSysFrameEnd();
        return TestPixelAtWorld(frame, w, h, 0.0f, 0.0f);
    }
};

// A plain object with the base quad and the given picture (not owned).
struct Sprite : GameObject {
    explicit Sprite(VXGfxTexture* picture) {
        pTexture = picture;
        SetTransform(0.0f, 0.0f, 50.0f);
        SetMesh();
    }
};

} // namespace

// The clock steps on frames 0, 30, 60 and 90 of the first hundred, once per
// textured draw, so eleven draws in such a frame wrap it once; untextured
// objects and objects without a mesh leave it.
TEST_F(Drawing, ClockStepsOnEveryThirtiethFrame) {
    VXGfxTexture* picture = Solid(255, 255, 255);
    Sprite textured(picture), plain(nullptr), meshless(picture);
    VXGfxMeshFree(meshless.pMesh);
    meshless.pMesh = nullptr;
    ObjectList context;
    std::vector<unsigned> steps;
    for (int frame = 0; frame < 100; ++frame) {
        VXSysFrameStart();
        const int before = context.animFrame;
        context.DrawObject(plain, 1, 1);
        context.DrawObject(meshless, 1, 1);
        EXPECT_EQ(context.animFrame, before) << "frame " << frame;
        context.DrawObject(textured, 1, 1);
        if (context.animFrame != before) steps.push_back(VXFrameRateControllerGetFrameCount());
        VXSysFrameEnd();
    }
    EXPECT_EQ(steps, (std::vector<unsigned>{0, 30, 60, 90}));
    EXPECT_EQ(context.animFrame, 4);
    EXPECT_EQ(gLevelObjects.animFrame, 0) << "another screen's clock is its own";
    // Eleven textured draws in frame 120 step it eleven times: 5..9, wrap, 0..5.
    while (VXFrameRateControllerGetFrameCount() < 120) {
        VXSysFrameStart();
        VXSysFrameEnd();
    }
    VXSysFrameStart();
    for (int i = 0; i < 11; ++i) context.DrawObject(textured, 1, 1);
    VXSysFrameEnd();
    EXPECT_EQ(context.animFrame, 5);
    VXGfxTextureUnload(picture);
}

// Frame k of a 5 x 2 sheet is column k mod 5, row k mod 2: the quad spans
// one cell and the offset k/5, k/2 wraps around the repeating texture.
TEST_F(Drawing, SheetFrameShowsItsCell) {
    Goblin goblin; // 5 x 2 sheet quad
    VXGfxTextureUnload(goblin.pTexture);
    goblin.pTexture = Sheet5x2();
    goblin.SetTransform(0.0f, 0.0f, 50.0f);
    goblin.SetMesh();
    const int cases[][3] = {{0, 0, 0}, {7, 2, 1}, {4, 4, 0}, {9, 4, 1}}; // frame, column, row
    for (const auto& c : cases) {
        const TestRgba want = {40 * c[1] + 20, 100 * c[2] + 50, 200, 255};
        EXPECT_TRUE(TestPixelNear(Drawn(goblin, c[0], goblin.framesU, goblin.framesV), want,
                                  kTestTwoRoundings))
            << "frame " << c[0];
    }
}

// Whole-number offsets leave a static picture as it is; an attacking
// object without a second picture shows its first; with one, the second.
TEST_F(Drawing, TextureChoice) {
    VXGfxTexture* red = Solid(255, 0, 0);
    VXGfxTexture* blue = Solid(0, 0, 255);
    auto check = [&](const char* name, int animFrame, bool attacking, VXGfxTexture* alt,
                     TestRgba want) {
        Sprite s(red);
        s.isAttacking = attacking;
        s.pTextureAlt = alt;
        EXPECT_TRUE(TestPixelNear(Drawn(s, animFrame), want, kTestTwoRoundings)) << name;
    };
    check("static picture at clock 7", 7, false, nullptr, {255, 0, 0, 255});
    check("attacking, no attack picture", 3, true, nullptr, {255, 0, 0, 255});
    check("attacking, attack picture", 3, true, blue, {0, 0, 255, 255});
    check("attack picture but not attacking", 3, false, blue, {255, 0, 0, 255});
    VXGfxTextureUnload(red);
    VXGfxTextureUnload(blue);
}

// The tint's alpha fades a textured sprite over what lies below (a dragged
// tower at 0.5, a blinking monster, the warning bar): a yellow texel over the
// clear colour (0, 102, 204) mixes as alpha x texel + (1 - alpha) x below.
TEST_F(Drawing, TintAlphaFadesATexturedSprite) {
    VXGfxTexture* yellow = Solid(255, 255, 0);
    struct Case {
        const char* name;
        float alpha;
        TestRgba want;
    } cases[] = {
        {"opaque", 1.0f, {255, 255, 0, 255}},
        {"half, a dragged tower", 0.5f, {128, 179, 102, 255}},     // 127.5, 178.5, 102
        {"a quarter, a fading blink", 0.25f, {64, 140, 153, 255}}, // 63.75, 140.25, 153
        {"gone", 0.0f, {0, 102, 204, 255}},
    };
    VXGfxSetBackgroundColor(0.0f, 0.4f, 0.8f);
    for (const Case& c : cases) {
        Sprite s(yellow);
        s.tintColor[3] = c.alpha;
        EXPECT_TRUE(TestPixelNear(Drawn(s, 0), c.want, kTestRounding)) << c.name;
    }
    VXGfxTextureUnload(yellow);
}

// Static cases from the box edges; swept cases at 60 frames a second, the
// gap closing in 1/120 s (inside the frame) or 1/30 s (too late).
TEST(Overlap, BoxesAndSweeps) {
    gFrameTime = 1.0f / 60.0f;
    const VXVec2 still = {0, 0}, left120 = {-120, 0};
    const BoundingBox unit = {0, 0, 1, 1}, gap1 = {2, 0, 3, 1}, below = {0, -2, 1, -1.5f};
    auto check = [&](const char* name, BoundingBox a, BoundingBox b, VXVec2 va, VXVec2 vb,
                     bool overlap) { EXPECT_EQ(RectsOverlap(a, va, b, vb), overlap) << name; };
    check("shared vertical edge", unit, {1, 0, 2, 1}, still, still, true);
    check("shared horizontal edge", unit, {0, 1, 1, 2}, still, still, true);
    check("shared corner", unit, {1, 1, 2, 2}, still, still, true);
    check("0.001 apart in x", unit, {1.001f, 0, 2, 1}, still, still, false);
    check("0.001 apart in y", unit, {0, -1, 1, -0.001f}, still, still, false);
    check("one inside the other", {0, 0, 10, 10}, {4, 4, 5, 5}, still, still, true);
    check("zero-size point on an edge", unit, {0.5f, 1, 0.5f, 1}, still, still, true);
    check("gap of 1 closed at 120 units/s", unit, gap1, still, left120, true);
    check("gap of 1 at 30 units/s: too slow", unit, gap1, still, {-30, 0}, false);
    check("a moving the other way", unit, gap1, left120, still, false);
    check("closing in x but apart in y", unit, {2, 5, 3, 6}, still, left120, false);
    check("gap of 1.5 below closed at 120 up", unit, below, still, {0, 120}, true);
    check("gap of 1.5 below at 60 up: too slow", unit, below, still, {0, 60}, false);
}

// The report of a mesh that cannot be built, then exit status 1.
TEST(MeshFailure, ReportAndExitStatus) {
    // A fresh process: nothing else this program did can add to its exit.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            dup2(2, 1); // the report goes to standard output
            GameObjectMeshFailed("Tile::SetMesh", "Tile", 86);
        },
        ::testing::ExitedWithCode(1),
        "VX_ASSERT_MESG: pMesh\nLine: 86\nFunc: Tile::SetMesh\nFile: Tile\nMesg: fail to create "
        "object!!\n");
}
