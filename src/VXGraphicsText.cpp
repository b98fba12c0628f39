// VXGraphicsText: bitmap-font text and the debug primitives of the renderer.
//
// A font is 96 consecutive OpenGL display lists, one glBitmap glyph for each
// character code 32 to 127. Fontconfig picks the installed face closest to
// the requested name, height, weight and slant (a missing face falls back to
// a metric-compatible or the default sans face); FreeType renders the glyphs
// one bit per pixel, which is what glBitmap draws. Printing draws through the
// current shader program, whose blend colour paints every glyph pixel.
//
// Depends on: OpenGL (display lists, glBitmap, raster position), fontconfig,
// FreeType, VXGraphics (camera, view upload, uniforms), VXSystem (scale).
// Limits: codes 32..127 only (others are skipped); 255 characters a call;
// point, triangle, quad, box, sphere and cone draw nothing.
#include "VXGraphics.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include FT_SYNTHESIS_H

#include <cstring>
#include <string>
#include <vector>

#include "VXGraphicsInternal.h"
#include "VXSystem.h"

namespace {

const int kFirstChar = 32;
const int kCharCount = 96;
// A text is cut to this many characters, as a 256-character buffer holds.
const size_t kMaxText = 255;
// Synthetic slant for faces without an italic style (about 12 degrees).
const int kObliqueShear = 0x0366A;

// The face fontconfig matches for the request: file and index in it.
struct FaceChoice {
    std::string file;
    int index = 0;
};

// Asks fontconfig for the best installed face. Its own rules turn an absent
// family into a metric-compatible one or the default sans face; an empty or
// null name asks for "sans-serif" directly.
bool ChooseFace(const char* face, int height, bool bold, bool italic, FaceChoice* out) {
    if (!FcInit()) return false;
    FcPattern* pattern = FcPatternCreate();
    if (!pattern) return false;
    const char* family = (face && face[0]) ? face : "sans-serif";
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family));
    FcPatternAddDouble(pattern, FC_PIXEL_SIZE, height > 0 ? height : 1);
    // The desktop weights: 700 for bold, 100 (thin) otherwise.
    FcPatternAddInteger(pattern, FC_WEIGHT, FcWeightFromOpenType(bold ? 700 : 100));
    FcPatternAddInteger(pattern, FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
    FcResult result = FcResultNoMatch;
    FcPattern* match = FcFontMatch(nullptr, pattern, &result);
    FcPatternDestroy(pattern);
    if (!match) return false;
    FcChar8* file = nullptr;
    bool ok = FcPatternGetString(match, FC_FILE, 0, &file) == FcResultMatch && file;
    if (ok) {
        out->file = reinterpret_cast<const char*>(file);
        if (FcPatternGetInteger(match, FC_INDEX, 0, &out->index) != FcResultMatch) out->index = 0;
    }
    FcPatternDestroy(match);
    return ok;
}

// Compiles one glyph into a display list. glBitmap wants rows bottom-up and
// its origin measured from the bitmap's lower-left corner.
void CompileGlyph(GLuint list, FT_GlyphSlot slot) {
    const FT_Bitmap& bm = slot->bitmap;
    int width = static_cast<int>(bm.width), rows = static_cast<int>(bm.rows);
    int rowBytes = (width + 7) / 8;
    std::vector<GLubyte> bits(static_cast<size_t>(rowBytes) * (rows > 0 ? rows : 1), 0);
    if (bm.pixel_mode == FT_PIXEL_MODE_MONO && bm.buffer) {
        for (int r = 0; r < rows; ++r) {
            const unsigned char* src = bm.buffer + static_cast<ptrdiff_t>(r) * bm.pitch;
            std::memcpy(&bits[static_cast<size_t>(rows - 1 - r) * rowBytes], src, rowBytes);
        }
    } else {
        width = rows = 0;
    }
    glNewList(list, GL_COMPILE);
    glBitmap(width, rows, static_cast<GLfloat>(-slot->bitmap_left),
             static_cast<GLfloat>(rows - slot->bitmap_top),
             static_cast<GLfloat>(slot->advance.x) / 64.0f, 0.0f, bits.data());
    glEndList();
}

// Fills the lists from the face; a glyph FreeType cannot give stays an empty
// bitmap that still advances by half the height.
void BuildGlyphs(GLuint base, FT_Face face, int height, bool bold, bool italic) {
    bool fakeBold = bold && !(face->style_flags & FT_STYLE_FLAG_BOLD);
    bool fakeItalic = italic && !(face->style_flags & FT_STYLE_FLAG_ITALIC);
    for (int i = 0; i < kCharCount; ++i) {
        GLuint list = base + static_cast<GLuint>(i);
        FT_UInt index = FT_Get_Char_Index(face, static_cast<FT_ULong>(kFirstChar + i));
        bool ok = FT_Load_Glyph(face, index, FT_LOAD_DEFAULT | FT_LOAD_TARGET_MONO) == 0;
        if (ok && face->glyph->format == FT_GLYPH_FORMAT_OUTLINE) {
            if (fakeBold) FT_GlyphSlot_Embolden(face->glyph);
            if (fakeItalic) {
                FT_Matrix shear = {0x10000, kObliqueShear, 0, 0x10000};
                FT_Outline_Transform(&face->glyph->outline, &shear);
            }
        }
        if (ok) ok = FT_Render_Glyph(face->glyph, FT_RENDER_MODE_MONO) == 0;
        if (ok) {
            CompileGlyph(list, face->glyph);
        } else {
            glNewList(list, GL_COMPILE);
            glBitmap(0, 0, 0, 0, static_cast<GLfloat>(height / 2), 0, nullptr);
            glEndList();
        }
    }
}

// Fills the lists with empty glyphs when no face could be loaded at all, so
// the font is still a valid handle that prints nothing.
void BuildBlankGlyphs(GLuint base, int height) {
    for (int i = 0; i < kCharCount; ++i) {
        glNewList(base + static_cast<GLuint>(i), GL_COMPILE);
        glBitmap(0, 0, 0, 0, static_cast<GLfloat>(height / 2), 0, nullptr);
        glEndList();
    }
}

// Sets a generic vertex attribute's current value on the current program, so
// the raster position runs through the vertex stage with known inputs.
void SetCurrentAttribute(const char* name, float a, float b, float c, float d) {
    if (gVXGfxCurrentProgram == 0) return;
    GLint location = glGetAttribLocation(gVXGfxPrograms[gVXGfxCurrentProgram], name);
    if (location >= 0) glVertexAttrib4f(static_cast<GLuint>(location), a, b, c, d);
}

} // namespace

// Builds the 96 glyph lists of the closest installed face; returns the first.
unsigned VXGfxCreateFont(const char* face, int height, bool bold, bool italic) {
    GLuint base = glGenLists(kCharCount);
    if (base == 0) return 0;
    if (height < 1) height = 1;

    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    glPixelStorei(GL_UNPACK_LSB_FIRST, GL_FALSE);

    FaceChoice choice;
    FT_Library library = nullptr;
    FT_Face ftFace = nullptr;
    bool loaded = ChooseFace(face, height, bold, italic, &choice) &&
                  FT_Init_FreeType(&library) == 0 &&
                  FT_New_Face(library, choice.file.c_str(), choice.index, &ftFace) == 0 &&
                  FT_Set_Pixel_Sizes(ftFace, 0, static_cast<FT_UInt>(height)) == 0;
    if (loaded)
        BuildGlyphs(base, ftFace, height, bold, italic);
    else
        BuildBlankGlyphs(base, height);
    if (ftFace) FT_Done_Face(ftFace);
    if (library) FT_Done_FreeType(library);

    glPopClientAttrib();
    return base;
}

// Deletes the font's 96 lists.
void VXGfxDestroyFont(unsigned font) {
    if (font != 0) glDeleteLists(font, kCharCount);
}

// The viewport is three windows wide and high, shifted by one window, so a
// raster position up to a window left of or below the screen stays valid and
// a text starting off-screen still shows its visible part; the view is scaled
// by a third to keep world units where they were.
void VXGfxPrint(unsigned font, const char* text, int x, int y, float r, float g, float b) {
    if (!text || font == 0) return;
    int w = VXGetWindowWidth(), h = VXGetWindowHeight();
    float camX = 0.0f, camY = 0.0f;
    VXGfxGetCamPosition(&camX, &camY);
    int halfW = w / 2, halfH = h / 2;
    if (x < static_cast<int>(camX - halfW + 1) - w || x > static_cast<int>(camX + halfW - 1) ||
        y < static_cast<int>(camY - halfH + 1) - h || y > static_cast<int>(camY + halfH - 1))
        return;
    // Without a program nothing would place or colour the glyphs.
    if (VXGfxGetRenderMode() == VX_GFX_RENDER_NONE) VXGfxSetRenderMode(VX_GFX_RENDER_COLOR);

    float sx = gVXWinScaleX, sy = gVXWinScaleY;
    glViewport(static_cast<GLint>(-w * sx), static_cast<GLint>(-h * sy),
               static_cast<GLsizei>(3 * w * sx), static_cast<GLsizei>(3 * h * sy));
    VXGfxSetPosition(0.0f, 0.0f);
    VXGfxUploadView(sx / 3.0f, sy / 3.0f);
    VXGfxSetBlendColor(r, g, b, 1.0f);

    SetCurrentAttribute("aPosition", static_cast<float>(x), static_cast<float>(y), 0.0f, 1.0f);
    SetCurrentAttribute("aColor", r, g, b, 1.0f);
    glRasterPos2i(x, y);

    // Only codes with a glyph list are drawn: any other code would call a
    // list of some other font or none at all.
    char buffer[kMaxText + 1];
    size_t n = 0;
    for (const char* p = text; *p && n < kMaxText; ++p) {
        unsigned char c = static_cast<unsigned char>(*p);
        if (c >= kFirstChar && c < kFirstChar + kCharCount) buffer[n++] = static_cast<char>(c);
    }
    glPushAttrib(GL_LIST_BIT);
    glListBase(font - kFirstChar);
    glCallLists(static_cast<GLsizei>(n), GL_UNSIGNED_BYTE, buffer);
    glPopAttrib();

    VXGfxSetBlendColor(0.0f, 0.0f, 0.0f, 0.0f);
    glViewport(0, 0, static_cast<GLsizei>(w * sx), static_cast<GLsizei>(h * sy));
    VXGfxUploadView(sx, sy);
}

// Draws from two client-side arrays, with the colour program only (the
// texture program has no colour input).
void VXGfxLine(float x0, float y0, float z0, float r0, float g0, float b0, float a0, float x1,
               float y1, float z1, float r1, float g1, float b1, float a1) {
    if (gVXGfxCurrentProgram != VX_GFX_RENDER_COLOR) return;
    GLuint program = gVXGfxPrograms[VX_GFX_RENDER_COLOR];
    GLint pos = glGetAttribLocation(program, "aPosition");
    GLint col = glGetAttribLocation(program, "aColor");
    if (pos < 0 || col < 0) return;
    const GLfloat positions[6] = {x0, y0, z0, x1, y1, z1};
    const GLfloat colors[8] = {r0, g0, b0, a0, r1, g1, b1, a1};
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glVertexAttribPointer(static_cast<GLuint>(pos), 3, GL_FLOAT, GL_FALSE, 0, positions);
    glVertexAttribPointer(static_cast<GLuint>(col), 4, GL_FLOAT, GL_FALSE, 0, colors);
    glEnableVertexAttribArray(static_cast<GLuint>(pos));
    glEnableVertexAttribArray(static_cast<GLuint>(col));
    glDrawArrays(GL_LINES, 0, 2);
    glDisableVertexAttribArray(static_cast<GLuint>(col));
    glDisableVertexAttribArray(static_cast<GLuint>(pos));
}

// Red x, green y and blue z axes of length 0.8 scale from the origin.
void VXGfxAxis(float scale) {
    float l = 0.8f * scale;
    VXGfxLine(0, 0, 0, 1, 0, 0, 1, l, 0, 0, 1, 0, 0, 1);
    VXGfxLine(0, 0, 0, 0, 1, 0, 1, 0, l, 0, 0, 1, 0, 1);
    VXGfxLine(0, 0, 0, 0, 0, 1, 1, 0, 0, l, 0, 0, 1, 1);
    VXGfxSphere(0, 0, 0, 0.1f * scale, 0xFFFFFFFFu, 0xFFFFFFFFu, 8);
}

// Channel by channel, t clamped to [0, 1] (a NaN t counts as 0), each result
// truncated and kept within 0..255.
unsigned VXGfxColInterp(unsigned c0, unsigned c1, float t) {
    if (!(t >= 0.0f)) t = 0.0f;
    if (t > 1.0f) t = 1.0f;
    unsigned result = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        float a = static_cast<float>((c0 >> shift) & 0xFFu);
        float b = static_cast<float>((c1 >> shift) & 0xFFu);
        int v = static_cast<int>(a + (b - a) * t);
        v = v < 0 ? 0 : (v > 255 ? 255 : v);
        result |= static_cast<unsigned>(v) << shift;
    }
    return result;
}

// The remaining debug shapes are part of the interface but draw nothing in
// this engine, and leave every state as it was.
void VXGfxPoint(float, float, float, unsigned) {
}
void VXGfxTri(float, float, float, unsigned, float, float, float, unsigned, float, float, float,
              unsigned) {
}
void VXGfxQuad(float, float, float, unsigned, float, float, float, unsigned, float, float, float,
               unsigned, float, float, float, unsigned) {
}
void VXGfxBox(float, float, float, float, float, float, unsigned) {
}
void VXGfxSphere(float, float, float, float, unsigned, unsigned, unsigned) {
}
void VXGfxCone(void) {
}
