// Bitmap-font text and the debug primitives, read back from real frames:
// glyphs land at the raster position in the requested colour, a text that
// starts off-screen shows its visible part, the skip rule's four boundaries,
// and the renderer's state is restored afterwards.
#include <gtest/gtest.h>

#include <GL/glew.h>

#include <cmath>
#include <string>

#include "TestSupport.h"
#include "VXGraphics.h"
#include "VXSystem.h"

namespace {

// The world rectangle covered by lit pixels of a frame.
struct Ink {
    int count = 0;
    float minX = 1e9f, maxX = -1e9f, minY = 1e9f, maxY = -1e9f;
    bool allNear = true; // every lit pixel within tolerance of the expected colour
};

class Text : public ::testing::Test {
  protected:
    void SetUp() override {
        TestEngineStart();
        VXSysFrameStart();
        VXGfxSetRenderMode(VX_GFX_RENDER_COLOR);
    }
    void TearDown() override {
        VXSysFrameEnd();
        TestEngineStop();
    }
    // Reads the frame so far and starts a fresh one for the next case.
    Ink Read(TestRgba expected = {255, 255, 255, 0}) {
        int w = 0, h = 0;
        std::vector<unsigned char> rgba = TestReadFrame(w, h);
        VXSysFrameEnd();
        VXSysFrameStart();
        VXGfxSetRenderMode(VX_GFX_RENDER_COLOR);
        Ink ink;
        for (int py = 0; py < h; ++py)
            for (int px = 0; px < w; ++px) {
                const unsigned char* p = &rgba[(static_cast<size_t>(py) * w + px) * 4];
                if (p[0] < 40 && p[1] < 40 && p[2] < 40) continue;
                float x = px - 400 + 0.5f, y = 300 - py - 0.5f;
                ++ink.count;
                ink.minX = std::fmin(ink.minX, x);
                ink.maxX = std::fmax(ink.maxX, x);
                ink.minY = std::fmin(ink.minY, y);
                ink.maxY = std::fmax(ink.maxY, y);
                if (!TestPixelNear({p[0], p[1], p[2], p[3]}, expected, kTestTwoRoundings))
                    ink.allNear = false;
            }
        return ink;
    }
};

} // namespace

TEST_F(Text, GlyphsSitOnTheRasterPositionInTheRequestedColour) {
    unsigned font = VXGfxCreateFont("DejaVu Sans", 40, true, false);
    ASSERT_NE(font, 0u);
    struct Case {
        const char* name;
        int x, y;
        float r, g, b;
        TestRgba expected;
    } cases[] = {
        {"red left of centre", -100, 50, 1, 0, 0, {255, 0, 0, 0}},
        {"green below centre", 30, -120, 0, 1, 0, {0, 255, 0, 0}},
        {"mixed colour at the top right", 300, 200, 0.2f, 0.4f, 1, {51, 102, 255, 0}},
    };
    for (const auto& c : cases) {
        VXGfxPrint(font, "H", c.x, c.y, c.r, c.g, c.b);
        Ink ink = Read(c.expected);
        ASSERT_GT(ink.count, 100) << c.name;
        EXPECT_TRUE(ink.allNear) << c.name << ": a glyph pixel is not " << TestDescribe(c.expected);
        // "H" starts a small bearing right of the origin, stands on the
        // baseline and is about three quarters of the height tall.
        EXPECT_GE(ink.minX, c.x) << c.name;
        EXPECT_LE(ink.minX, c.x + 8) << c.name;
        EXPECT_NEAR(ink.minY, c.y + 0.5f, 1.0f) << c.name;
        EXPECT_GE(ink.maxY, c.y + 25) << c.name;
        EXPECT_LE(ink.maxY, c.y + 40) << c.name;
    }
    // A longer text advances: twice the letters, about twice the width.
    VXGfxPrint(font, "HH", 0, 0, 1, 1, 1);
    float one = Read().maxX;
    VXGfxPrint(font, "HHHH", 0, 0, 1, 1, 1);
    EXPECT_NEAR(Read().maxX, 2 * one, 8);
    // A text that starts off-screen shows its visible part.
    VXGfxPrint(font, "HHHHHHHH", -450, 0, 1, 1, 1);
    Ink ink = Read();
    EXPECT_GT(ink.count, 200);
    EXPECT_LT(ink.minX, -395) << "the part left of the screen is cut, not moved";
    // Far left, still within a window's width of the screen: a long text reaches in.
    VXGfxPrint(font, std::string(60, 'H').c_str(), -1150, 0, 1, 1, 1);
    EXPECT_GT(Read().count, 200);
    VXGfxDestroyFont(font);
}

TEST_F(Text, TextsAreCutAfter255Characters) {
    unsigned font = VXGfxCreateFont("DejaVu Sans", 12, false, false);
    VXGfxPrint(font, "H", 0, 0, 1, 1, 1);
    float plain = Read().minX;
    VXGfxPrint(font, " H", 0, 0, 1, 1, 1);
    int space = static_cast<int>(std::lround(Read().minX - plain));
    ASSERT_GT(space, 0);
    // Spaces push an "H" to the same place on screen: as character 255 it is
    // drawn, as character 256 it is cut.
    int x = 300 - 254 * space;
    VXGfxPrint(font, (std::string(254, ' ') + "H").c_str(), x, 0, 1, 1, 1);
    EXPECT_GT(Read().count, 10) << "character 255";
    VXGfxPrint(font, (std::string(255, ' ') + "H").c_str(), x - space, 0, 1, 1, 1);
    EXPECT_EQ(Read().count, 0) << "character 256";
    VXGfxDestroyFont(font);
}

TEST_F(Text, SkipRuleBoundaries) {
    // A very tall font makes every boundary visible: 'H' is wide and tall, 'j'
    // reaches left of its origin, 'p' hangs below its baseline.
    unsigned font = VXGfxCreateFont("DejaVu Sans", 900, false, false);
    ASSERT_NE(font, 0u);
    auto check = [&](const char* name, const char* text, int x, int y, bool drawn) {
        VXGfxPrint(font, text, x, y, 1, 1, 1);
        const int count = Read().count;
        EXPECT_EQ(count > 0, drawn) << name << ": " << count << " pixels";
    };
    check("x at the left limit (-1199)", "HH", -1199, 0, true);
    check("x one past the left limit", "HH", -1200, 0, false);
    check("y at the lower limit (-899)", "H", 0, -899, true);
    check("y one past the lower limit", "H", 0, -900, false);
    check("x at the right limit (399)", "j", 399, 0, true);
    check("x one past the right limit", "j", 400, 0, false);
    check("y at the upper limit (299)", "p", -200, 299, true);
    check("y one past the upper limit", "p", -200, 300, false);
    // The skip rule follows the camera.
    VXGfxSetCamPosition(1000, 0);
    VXGfxSetRenderMode(VX_GFX_RENDER_NONE);
    VXGfxSetRenderMode(VX_GFX_RENDER_COLOR);
    check("x = camera - 1199", "HH", -199, 0, true);
    check("x = camera - 1200", "HH", -200, 0, false);
    VXGfxSetCamPosition(0, 0);
    VXGfxDestroyFont(font);
}

TEST_F(Text, PrintingLeavesTheRendererAsItWas) {
    unsigned font = VXGfxCreateFont("DejaVu Sans", 20, false, false);
    VXGfxPrint(font, "state", -300, 200, 1, 0, 0);
    // A white square drawn afterwards is white (blend colour back to none)
    // and where the ordinary camera puts it (viewport and view restored).
    VXGfxTriAdd(100, -50, 0xFFFFFFFF, 0, 0, 200, -50, 0xFFFFFFFF, 0, 0, 100, 50, 0xFFFFFFFF, 0, 0);
    VXGfxTriAdd(200, -50, 0xFFFFFFFF, 0, 0, 200, 50, 0xFFFFFFFF, 0, 0, 100, 50, 0xFFFFFFFF, 0, 0);
    VXGfxMesh* square = VXGfxMeshEnd();
    float identity[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    VXGfxSetTransform(identity);
    VXGfxMeshDraw(square, VX_GFX_DRAW_TRIANGLES);
    int w = 0, h = 0;
    std::vector<unsigned char> rgba = TestReadFrame(w, h);
    for (float x : {95.0f, 150.0f, 205.0f})
        EXPECT_TRUE(TestPixelNear(TestPixelAtWorld(rgba, w, h, x, 0),
                                  x == 150 ? TestRgba{255, 255, 255, 0} : TestRgba{0, 0, 0, 0},
                                  kTestTwoRoundings))
            << "x = " << x;
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[0], 0);
    EXPECT_EQ(viewport[2], 800);
    VXGfxMeshFree(square);
    VXGfxDestroyFont(font);
}

TEST_F(Text, FontsFallBackAndFreeTheirLists) {
    auto check = [&](const char* name, const char* face, bool bold, bool italic) {
        unsigned font = VXGfxCreateFont(face, 30, bold, italic);
        ASSERT_NE(font, 0u) << name;
        EXPECT_TRUE(glIsList(font) && glIsList(font + 95)) << name;
        VXGfxPrint(font, "Ag", 0, 0, 1, 1, 1);
        EXPECT_GT(Read().count, 50) << name;
        VXGfxDestroyFont(font);
        EXPECT_FALSE(glIsList(font)) << name;
    };
    check("face not installed", "No Such Face Anywhere", false, false);
    check("metric-compatible name", "Arial", true, false);
    check("italic", "DejaVu Sans", false, true);
    check("null face", nullptr, true, true);
    VXGfxPrint(0, "no font", 0, 0, 1, 1, 1); // draws nothing, no error
    VXGfxPrint(0, nullptr, 0, 0, 1, 1, 1);
    EXPECT_EQ(Read().count, 0);
}

TEST_F(Text, LinesDrawOnlyWithTheColourProgram) {
    VXGfxSetPosition(0, 0);
    VXGfxLine(-300, -200, 0, 1, 0, 0, 1, 300, -200, 0, 1, 0, 0, 1);
    Ink ink = Read({255, 0, 0, 0});
    EXPECT_GT(ink.count, 500);
    EXPECT_TRUE(ink.allNear);
    EXPECT_NEAR(ink.minY, -200, 1.5f);
    EXPECT_NEAR(ink.maxY, -200, 1.5f);
    VXGfxSetRenderMode(VX_GFX_RENDER_TEXTURE);
    VXGfxLine(-300, -200, 0, 1, 0, 0, 1, 300, -200, 0, 1, 0, 0, 1);
    VXGfxAxis(100); // shapes that draw nothing must not disturb anything either
    VXGfxSphere(0, 0, 0, 10, 0, 0, 8);
    EXPECT_EQ(Read().count, 0);
}

TEST(TextColours, ColInterp) {
    struct Case {
        const char* name;
        unsigned c0, c1;
        float t;
        unsigned want;
    } cases[] = {
        {"black to white halfway", 0xFF000000u, 0xFFFFFFFFu, 0.5f, 0xFF7F7F7Fu},
        {"white to black halfway truncates", 0xFFFFFFFFu, 0xFF000000u, 0.5f, 0xFF7F7F7Fu},
        {"below 0 gives c0", 0x11223344u, 0xAABBCCDDu, -1, 0x11223344u},
        {"above 1 gives c1", 0x11223344u, 0xAABBCCDDu, 2, 0xAABBCCDDu},
        {"each channel a quarter", 0x00000000u, 0x80402010u, 0.25f, 0x20100804u},
        {"NaN counts as 0", 0x01020304u, 0xFFFFFFFFu, NAN, 0x01020304u},
    };
    for (const auto& c : cases)
        EXPECT_EQ(VXGfxColInterp(c.c0, c.c1, c.t), c.want) << c.name << std::hex;
}
