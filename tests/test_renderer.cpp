// The renderer, read back from real frames: the colour formulas of both
// programs, alpha and additive blending, per-program values, the camera's
// mapping of world corners to the screen in and out of full screen, upright
// pictures, texture scrolling, mesh colours and the texture loader's rules.
#include <GL/glew.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "TestSupport.h"
#include "VXGraphics.h"
#include "VXSystem.h"

namespace {

float gIdentity[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
const TestRgba kRed{255, 0, 0, 0}, kGreen{0, 255, 0, 0}, kBlue{0, 0, 255, 0},
    kWhite{255, 255, 255, 0}, kBlack{0, 0, 0, 0};

// A rectangle from (x0, y0) to (x1, y1), picture upright: v = 0 at the top.
VXGfxMesh* Rect(float x0, float y0, float x1, float y1, unsigned color) {
    VXGfxTriAdd(x0, y0, color, 0, 1, x1, y0, color, 1, 1, x0, y1, color, 0, 0);
    VXGfxTriAdd(x1, y0, color, 1, 1, x1, y1, color, 1, 0, x0, y1, color, 0, 0);
    return VXGfxMeshEnd();
}

VXGfxTexture* Texel(unsigned char r, unsigned char g, unsigned char b) {
    const unsigned char px[] = {r, g, b, 255};
    return VXGfxTextureLoadFromMemory(px, 1, 1);
}

// A 2 x 2 picture: red, green on top; blue, white below.
VXGfxTexture* Quadrants() {
    const unsigned char px[] = {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255, 255, 255, 255};
    return VXGfxTextureLoadFromMemory(px, 2, 2);
}

struct Look {
    float tint[4];
    float transparency;
    float blend[4];
};
const Look kPlain = {{1, 1, 1, 1}, 1.0f, {0, 0, 0, 0}};

// Switches to the program, gives it the look and no transform.
void Use(int mode, const Look& l = kPlain) {
    VXGfxSetRenderMode(mode);
    VXGfxSetTintColor(l.tint[0], l.tint[1], l.tint[2], l.tint[3]);
    VXGfxSetTransparency(l.transparency);
    VXGfxSetBlendColor(l.blend[0], l.blend[1], l.blend[2], l.blend[3]);
    VXGfxSetTransform(gIdentity);
}

class Renderer : public ::testing::Test {
  protected:
    void SetUp() override { TestEngineStart(); }
    void TearDown() override { TestEngineStop(); }
    // Reads the frame drawn so far and ends it.
    void EndFrame() {
        frame = TestReadFrame(width, height);
        VXSysFrameEnd();
    }
    TestRgba At(float x, float y) { return TestPixelAtWorld(frame, width, height, x, y); }
    std::vector<unsigned char> frame;
    int width = 0, height = 0;
};

TEST_F(Renderer, BothProgramsMixTheBlendColourAndMultiplyByTheTint) {
    struct Case {
        const char* name;
        Look look;
        TestRgba expected; // for the colour (0x33, 0x66, 0x99)
    } cases[] = {
        {"plain", kPlain, {0x33, 0x66, 0x99, 0}},
        {"tint", {{0.5f, 1, 0, 1}, 1, {0, 0, 0, 0}}, {26, 0x66, 0, 0}},
        {"blend red full", {{1, 1, 1, 1}, 1, {1, 0, 0, 1}}, {255, 0, 0, 0}},
        {"blend red times tint", {{0.5f, 1, 1, 1}, 1, {1, 0, 0, 1}}, {128, 0, 0, 0}},
        {"blend white half", {{1, 1, 1, 1}, 1, {1, 1, 1, 0.5f}}, {153, 179, 204, 0}},
        {"blend colour without weight", {{1, 1, 1, 1}, 1, {0, 1, 0, 0}}, {0x33, 0x66, 0x99, 0}},
    };
    VXGfxTexture* texture = Texel(0x33, 0x66, 0x99);
    VXGfxMesh* left = Rect(-300, -100, -100, 100, 0xFF336699);
    VXGfxMesh* right = Rect(100, -100, 300, 100, 0xFFFFFFFF);
    for (const Case& c : cases) {
        VXSysFrameStart();
        VXGfxSetBlendMode(VX_GFX_BLEND_NONE);
        Use(VX_GFX_RENDER_COLOR, c.look);
        VXGfxMeshDraw(left, VX_GFX_DRAW_TRIANGLES);
        Use(VX_GFX_RENDER_TEXTURE, c.look);
        VXGfxTextureSet(texture, 0, 0);
        VXGfxMeshDraw(right, VX_GFX_DRAW_TRIANGLES);
        EndFrame();
        EXPECT_TRUE(TestPixelNear(At(-200, 0), c.expected, kTestRounding)) << c.name << ", colour";
        EXPECT_TRUE(TestPixelNear(At(200, 0), c.expected, kTestRounding)) << c.name << ", texture";
    }
    VXGfxMeshFree(left);
    VXGfxMeshFree(right);
    VXGfxTextureUnload(texture);
}

TEST_F(Renderer, AlphaAndAdditiveBlendingOverABackground) {
    const int kAlpha = VX_GFX_BLEND_ALPHA, kAdd = VX_GFX_BLEND_ADDITIVE;
    struct Case {
        const char* name;
        int mode;
        unsigned background, color;
        float transparency, tintAlpha;
        TestRgba expected;
    } cases[] = {
        {"vertex alpha 128/255", kAlpha, 0xFFFFFFFF, 0x80FF0000, 1, 1, {255, 127, 127, 0}},
        {"transparency 0.5", kAlpha, 0xFFFFFFFF, 0xFFFF0000, 0.5f, 1, {255, 128, 128, 0}},
        {"tint alpha 0.25", kAlpha, 0xFFFFFFFF, 0xFFFF0000, 1, 0.25f, {255, 191, 191, 0}},
        {"alpha over black", kAlpha, 0xFF000000, 0x80FF0000, 1, 1, {128, 0, 0, 0}},
        {"additive, alpha 0.5", kAdd, 0xFF000080, 0xFFFF0000, 0.5f, 1, {128, 0, 128, 0}},
        {"additive saturates", kAdd, 0xFFC00000, 0xFFFF00FF, 1, 1, {255, 0, 255, 0}},
        {"none ignores alpha", VX_GFX_BLEND_NONE, 0xFFFFFFFF, 0x20FF0000, 0.5f, 1, kRed},
        {"unpacked cyan", VX_GFX_BLEND_NONE, 0xFF000000, 0xFF00FFFF, 1, 1, {0, 255, 255, 0}},
    };
    for (const Case& c : cases) {
        VXGfxMesh* back = Rect(-400, -300, 400, 300, c.background);
        VXGfxMesh* front = Rect(-50, -50, 50, 50, c.color);
        VXSysFrameStart();
        Use(VX_GFX_RENDER_COLOR);
        VXGfxSetBlendMode(VX_GFX_BLEND_NONE);
        VXGfxMeshDraw(back, VX_GFX_DRAW_TRIANGLES);
        VXGfxSetBlendMode(c.mode);
        VXGfxSetTransparency(c.transparency);
        VXGfxSetTintColor(1, 1, 1, c.tintAlpha);
        VXGfxMeshDraw(front, VX_GFX_DRAW_TRIANGLES);
        EndFrame();
        EXPECT_TRUE(TestPixelNear(At(0, 0), c.expected, kTestRounding)) << c.name;
        VXGfxMeshFree(back);
        VXGfxMeshFree(front);
    }
    VXGfxSetBlendMode(VX_GFX_BLEND_NONE);
}

TEST_F(Renderer, EachProgramKeepsItsOwnValuesAndIgnoresSettersWithNoProgram) {
    VXGfxMesh* rect = Rect(-50, -50, 50, 50, 0xFFFFFFFF);
    VXSysFrameStart();
    Use(VX_GFX_RENDER_COLOR);
    Use(VX_GFX_RENDER_TEXTURE);
    VXGfxSetTintColor(0, 0, 0, 1); // the texture program's tint only
    VXGfxSetRenderMode(VX_GFX_RENDER_COLOR);
    VXGfxMeshDraw(rect, VX_GFX_DRAW_TRIANGLES);
    EndFrame();
    EXPECT_TRUE(TestPixelNear(At(0, 0), kWhite, kTestExact)) << "the other program's tint";
    // Every frame ends with no program: a tint set before the first mode is lost.
    VXSysFrameStart();
    VXGfxSetTintColor(1, 0, 0, 1);
    VXGfxSetRenderMode(VX_GFX_RENDER_COLOR);
    VXGfxSetTransform(gIdentity);
    VXGfxMeshDraw(rect, VX_GFX_DRAW_TRIANGLES);
    EndFrame();
    EXPECT_TRUE(TestPixelNear(At(0, 0), kWhite, kTestExact)) << "a tint set with no program";
    EXPECT_EQ(VXGfxGetRenderMode(), VX_GFX_RENDER_NONE);
    VXGfxMeshFree(rect);
}

TEST_F(Renderer, TheWorldRectangleFillsTheScreenInWindowAndFullScreen) {
    // A ten-unit square of its own colour at each corner of the world.
    const struct {
        float x, y;
        unsigned color;
    } corners[] = {{-400, 300, 0xFFFF0000},
                   {390, 300, 0xFF00FF00},
                   {-400, -290, 0xFF0000FF},
                   {390, -290, 0xFFFFFFFF}};
    for (bool full : {false, true}) {
        VXToogleFullScreen(full);
        VXSysFrameStart();
        Use(VX_GFX_RENDER_COLOR);
        VXGfxSetBlendMode(VX_GFX_BLEND_NONE);
        for (const auto& c : corners) {
            VXGfxMesh* m = Rect(c.x, c.y - 10, c.x + 10, c.y, c.color);
            VXGfxMeshDraw(m, VX_GFX_DRAW_TRIANGLES);
            VXGfxMeshFree(m);
        }
        EndFrame();
        SCOPED_TRACE(full ? "full screen" : "window");
        EXPECT_EQ(width, full ? 1280 : 800);
        EXPECT_EQ(height, full ? 1024 : 600);
        auto px = [&](int x, int y) {
            const unsigned char* p = &frame[((size_t)y * width + x) * 4];
            return TestRgba{p[0], p[1], p[2], p[3]};
        };
        EXPECT_TRUE(TestPixelNear(px(0, 0), kRed, kTestExact));
        EXPECT_TRUE(TestPixelNear(px(width - 1, 0), kGreen, kTestExact));
        EXPECT_TRUE(TestPixelNear(px(0, height - 1), kBlue, kTestExact));
        EXPECT_TRUE(TestPixelNear(px(width - 1, height - 1), kWhite, kTestExact));
        // Ten world units are 10 x scale pixels: the squares end there.
        int sx = full ? 16 : 10, sy = full ? 17 : 10;
        EXPECT_TRUE(TestPixelNear(px(sx - 1, sy - 1), kRed, kTestExact));
        EXPECT_TRUE(TestPixelNear(px(sx + 1, sy + 1), kBlack, kTestExact));
        EXPECT_TRUE(TestPixelNear(px(width / 2, height / 2), kBlack, kTestExact));
    }
}

TEST_F(Renderer, PicturesStandUprightAndScrollWithTheirOffset) {
    VXGfxTexture* texture = Quadrants();
    VXGfxMesh* rect = Rect(-200, -150, 200, 150, 0xFFFFFFFF);
    struct Case {
        const char* name;
        float u, v;
        TestRgba topLeft, topRight, bottomLeft, bottomRight;
    } cases[] = {
        {"no offset", 0, 0, kRed, kGreen, kBlue, kWhite},
        {"half across", 0.5f, 0, kGreen, kRed, kWhite, kBlue},
        {"half down", 0, 0.5f, kBlue, kWhite, kRed, kGreen},
        {"minus half across (the picture repeats)", -0.5f, 0, kGreen, kRed, kWhite, kBlue},
        {"one whole picture", 1.0f, 1.0f, kRed, kGreen, kBlue, kWhite},
    };
    for (const Case& c : cases) {
        VXSysFrameStart();
        Use(VX_GFX_RENDER_TEXTURE);
        VXGfxSetBlendMode(VX_GFX_BLEND_NONE);
        VXGfxTextureSet(texture, c.u, c.v);
        VXGfxMeshDraw(rect, VX_GFX_DRAW_TRIANGLES);
        EndFrame();
        EXPECT_TRUE(TestPixelNear(At(-120, 90), c.topLeft, kTestExact)) << c.name;
        EXPECT_TRUE(TestPixelNear(At(120, 90), c.topRight, kTestExact)) << c.name;
        EXPECT_TRUE(TestPixelNear(At(-120, -90), c.bottomLeft, kTestExact)) << c.name;
        EXPECT_TRUE(TestPixelNear(At(120, -90), c.bottomRight, kTestExact)) << c.name;
    }
    // A transform scales and places the unit quad.
    VXGfxMesh* unit = Rect(-1, -1, 1, 1, 0xFFFFFFFF);
    float m[3][3] = {{50, 0, 100}, {0, 50, -60}, {0, 0, 1}};
    VXSysFrameStart();
    Use(VX_GFX_RENDER_TEXTURE);
    VXGfxTextureSet(texture, 0, 0);
    VXGfxSetTransform(m);
    VXGfxMeshDraw(unit, VX_GFX_DRAW_TRIANGLES);
    EndFrame();
    EXPECT_TRUE(TestPixelNear(At(75, -35), kRed, kTestExact));
    EXPECT_TRUE(TestPixelNear(At(125, -85), kWhite, kTestExact));
    EXPECT_TRUE(TestPixelNear(At(155, -60), kBlack, kTestExact));
    VXGfxMeshFree(unit);
    VXGfxMeshFree(rect);
    VXGfxTextureUnload(texture);
}

TEST_F(Renderer, MeshesTakeTheWholeStagingListOnce) {
    VXGfxTriAdd(0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0);
    VXGfxTriAdd(0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0);
    VXGfxMesh* six = VXGfxMeshEnd();
    VXGfxMesh* none = VXGfxMeshEnd();
    ASSERT_TRUE(six && none);
    EXPECT_EQ(six->vertexCount, 6u);
    EXPECT_EQ(none->vertexCount, 0u);
    VXSysFrameStart();
    VXGfxSetRenderMode(VX_GFX_RENDER_COLOR);
    VXGfxMeshDraw(none, VX_GFX_DRAW_TRIANGLES); // draws nothing, and no error
    testing::internal::CaptureStdout();
    VXGfxMeshDraw(six, 7);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Mesh Draw Mode 7 is invalid!\n");
    EndFrame();
    VXGfxMeshFree(six);
    VXGfxMeshFree(none);
}

// A draw leaves the vertex arrays as it found them (off) and no buffer
// bound, so whatever anyone draws in between, the next mesh still draws:
// here the engine's own lines, which switch arrays on and off themselves.
TEST_F(Renderer, AMeshDrawsAfterLinesAndLeavesNoArrayOnOrBufferBound) {
    VXGfxMesh* left = Rect(-300, -100, -100, 100, 0xFF00FF00);
    VXGfxMesh* right = Rect(100, -100, 300, 100, 0xFF0000FF);
    VXGfxTexture* red = Texel(255, 0, 0);
    for (int mode : {VX_GFX_RENDER_COLOR, VX_GFX_RENDER_TEXTURE}) {
        const char* name = mode == VX_GFX_RENDER_COLOR ? "colour program" : "texture program";
        VXSysFrameStart();
        VXGfxSetBlendMode(VX_GFX_BLEND_NONE);
        Use(VX_GFX_RENDER_COLOR);
        VXGfxMeshDraw(left, VX_GFX_DRAW_TRIANGLES);
        VXGfxLine(-300, 200, 0, 1, 1, 1, 1, 300, 200, 0, 1, 1, 1, 1);
        VXGfxAxis(50);
        Use(mode);
        VXGfxTextureSet(red, 0, 0);
        VXGfxMeshDraw(right, VX_GFX_DRAW_TRIANGLES);
        GLint bound = -1, maxAttributes = 0;
        glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &bound);
        glGetIntegerv(GL_MAX_VERTEX_ATTRIBS, &maxAttributes);
        EXPECT_EQ(bound, 0) << name;
        for (GLint i = 0; i < maxAttributes; ++i) {
            GLint on = -1;
            glGetVertexAttribiv((GLuint)i, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &on);
            EXPECT_EQ(on, GL_FALSE) << name << ": array " << i << " left on";
        }
        EndFrame();
        EXPECT_TRUE(TestPixelNear(At(-200, 0), kGreen, kTestExact)) << name << ", before the lines";
        EXPECT_TRUE(
            TestPixelNear(At(200, 0), mode == VX_GFX_RENDER_COLOR ? kBlue : kRed, kTestExact))
            << name << ", the mesh drawn after the lines";
    }
    VXGfxMeshFree(left);
    VXGfxMeshFree(right);
    VXGfxTextureUnload(red);
}

TEST_F(Renderer, MissingCorruptAndOverlongPicturesNeverFail) {
    std::string junk = testing::TempDir() + "junk.png";
    FILE* f = std::fopen(junk.c_str(), "wb");
    std::fputs("\x89PNG\r\n\x1a\n this is not a picture", f);
    std::fclose(f);
    std::string dir(250, 'd');
    struct Case {
        const char* name;
        std::string path;
        bool record;
    } cases[] = {
        {"missing", "./Resources/no such picture.png", true},
        {"corrupt", junk, true},
        {"255 characters", "/" + dir + "/x.p", true},
        {"256 characters", "/" + dir + "/x.pn", false},
    };
    ASSERT_EQ(cases[2].path.size(), 255u);
    VXGfxMesh* rect = Rect(-80, -80, 80, 80, 0xFFFFFFFF);
    for (const Case& c : cases) {
        VXGfxTexture* t = VXGfxTextureLoad(c.path.c_str());
        EXPECT_EQ(t != nullptr, c.record) << c.name;
        if (!t) continue;
        EXPECT_EQ(std::string(t->fileName), c.path) << c.name;
        VXSysFrameStart();
        Use(VX_GFX_RENDER_TEXTURE);
        VXGfxTextureSet(t, 0, 0);
        VXGfxMeshDraw(rect, VX_GFX_DRAW_TRIANGLES);
        EndFrame();
        // The placeholder's top-left texel is magenta.
        EXPECT_TRUE(TestPixelNear(At(-75, 75), TestRgba{255, 0, 255, 0}, kTestExact)) << c.name;
        VXGfxTextureUnload(t);
    }
    VXGfxTextureUnload(nullptr);
    VXGfxMeshFree(rect);
}

} // namespace
