// Picture files: PNG decoding byte for byte in every colour type the encoder
// writes, refusal of damaged files, and both kinds of icon entry.
#include <gtest/gtest.h>
#include <png.h>

#include <cstdio>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "VXImage.h"

namespace {

using Bytes = std::vector<unsigned char>;

std::string Temp(const std::string& name) {
    return testing::TempDir() + name;
}

// Writes a PNG with libpng's full interface so the colour type is ours to choose.
void WritePng(const std::string& path, int w, int h, int colorType, int depth, const Bytes& rows,
              const png_color* palette = nullptr, int paletteSize = 0,
              const unsigned char* trns = nullptr, int trnsSize = 0, double gamma = 0.0) {
    FILE* f = std::fopen(path.c_str(), "wb");
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, f);
    png_set_IHDR(png, info, w, h, depth, colorType, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (palette) png_set_PLTE(png, info, palette, paletteSize);
    if (trns) png_set_tRNS(png, info, trns, trnsSize, nullptr);
    if (gamma > 0.0) png_set_gAMA(png, info, gamma);
    png_write_info(png, info);
    size_t stride = rows.size() / h;
    for (int y = 0; y < h; ++y) png_write_row(png, &rows[y * stride]);
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    std::fclose(f);
}

Bytes Decode(const std::string& path, int& w, int& h) {
    Bytes out;
    w = h = -1;
    if (!VXImageDecodePNGFile(path.c_str(), out, w, h)) out.clear();
    return out;
}

// Writes the rows as a w x h PNG of that type and depth, and decodes it.
void ExpectDecoded(const char* name, int w, int h, int colorType, int depth, const Bytes& file,
                   const Bytes& expected, double gamma = 0.0) {
    WritePng(Temp("in.png"), w, h, colorType, depth, file, nullptr, 0, nullptr, 0, gamma);
    int gotW, gotH;
    EXPECT_EQ(Decode(Temp("in.png"), gotW, gotH), expected) << name;
    EXPECT_EQ(gotW, w) << name;
    EXPECT_EQ(gotH, h) << name;
}

// Every colour type decodes to straight RGBA (half-transparent pixels keep
// their colour), top row first, with the bytes of the file whatever it says
// about light: a 16-bit sample reads as its high byte (0x3C3C is 0x3C, not a
// brightened 0x84), a declared linear gamma changes nothing, and grey of 1
// and 4 bits is stretched to the full range.
TEST(Png, EveryColourTypeAndDepthGivesTheFilesBytes) {
    const Bytes rgba = {255, 0,  0,  255, 0,  255, 0,  128, 0,   0,   255, 0,
                        10,  20, 30, 255, 40, 50,  60, 1,   255, 255, 255, 255};
    ExpectDecoded("RGBA", 3, 2, PNG_COLOR_TYPE_RGBA, 8, rgba, rgba);
    ExpectDecoded("RGB", 2, 2, PNG_COLOR_TYPE_RGB, 8, {255, 0, 0, 0, 255, 0, 0, 0, 255, 1, 2, 3},
                  {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 1, 2, 3, 255});
    ExpectDecoded("grey", 2, 2, PNG_COLOR_TYPE_GRAY, 8, {0, 77, 200, 255},
                  {0, 0, 0, 255, 77, 77, 77, 255, 200, 200, 200, 255, 255, 255, 255, 255});
    ExpectDecoded("16-bit grey", 2, 1, PNG_COLOR_TYPE_GRAY, 16, {0x3C, 0x3C, 0xFF, 0x01},
                  {0x3C, 0x3C, 0x3C, 255, 0xFF, 0xFF, 0xFF, 255});
    ExpectDecoded("16-bit RGB", 2, 1, PNG_COLOR_TYPE_RGB, 16,
                  {0x12, 0x34, 0xAB, 0xCD, 0x00, 0xFF, 0x80, 0x7F, 0x01, 0x00, 0xFE, 0xFF},
                  {0x12, 0xAB, 0x00, 255, 0x80, 0x01, 0xFE, 255});
    ExpectDecoded(
        "16-bit RGBA", 2, 1, PNG_COLOR_TYPE_RGBA, 16,
        {0x3C, 0x3C, 0x3C, 0x3C, 0x3C, 0x3C, 0x80, 0, 0x11, 0x11, 0x22, 0x22, 0x33, 0x33, 0, 0xFF},
        {0x3C, 0x3C, 0x3C, 0x80, 0x11, 0x22, 0x33, 0x00});
    ExpectDecoded("16-bit grey with alpha", 2, 1, PNG_COLOR_TYPE_GRAY_ALPHA, 16,
                  {0x3C, 0x3C, 0xC0, 0x00, 0x01, 0x02, 0x03, 0x04},
                  {0x3C, 0x3C, 0x3C, 0xC0, 0x01, 0x01, 0x01, 0x03});
    ExpectDecoded("RGB declaring linear gamma", 2, 1, PNG_COLOR_TYPE_RGB, 8,
                  {0x3C, 0x80, 0x10, 0x20, 0x40, 0x60},
                  {0x3C, 0x80, 0x10, 255, 0x20, 0x40, 0x60, 255}, 1.0);
    ExpectDecoded("1-bit grey", 2, 1, PNG_COLOR_TYPE_GRAY, 1, {0x40},
                  {0, 0, 0, 255, 255, 255, 255, 255});
    ExpectDecoded("4-bit grey", 2, 1, PNG_COLOR_TYPE_GRAY, 4, {0x3F},
                  {0x33, 0x33, 0x33, 255, 255, 255, 255, 255});

    const png_color palette[] = {{9, 8, 7}, {200, 100, 50}};
    const unsigned char trns[] = {0, 255};
    WritePng(Temp("palette.png"), 2, 1, PNG_COLOR_TYPE_PALETTE, 8, {1, 0}, palette, 2, trns, 2);
    int w, h;
    EXPECT_EQ(Decode(Temp("palette.png"), w, h), (Bytes{200, 100, 50, 255, 9, 8, 7, 0}));
}

// A frame the engine writes reads back exactly; cut or replaced, it is refused.
TEST(Png, WrittenFramesReadBackAndDamagedFilesAreRefused) {
    Bytes rgba(17 * 5 * 4);
    for (size_t i = 0; i < rgba.size(); ++i) rgba[i] = (unsigned char)(i * 37 + 11);
    ASSERT_TRUE(VXImageWritePNGFile(Temp("frame.png").c_str(), rgba.data(), 17, 5));
    int w, h;
    EXPECT_EQ(Decode(Temp("frame.png"), w, h), rgba);
    EXPECT_EQ(w, 17);
    EXPECT_EQ(h, 5);
    const std::string file = TestReadFile(Temp("frame.png"));
    const Bytes bytes(file.begin(), file.end());
    struct Case {
        const char* name;
        Bytes data;
    } cases[] = {
        {"empty", {}},
        {"signature only", {bytes.begin(), bytes.begin() + 8}},
        {"cut in the header", {bytes.begin(), bytes.begin() + 20}},
        {"cut in the data", {bytes.begin(), bytes.end() - 20}},
        {"text", {'h', 'e', 'l', 'l', 'o', ' ', 'w', 'o', 'r', 'l', 'd', '!'}},
    };
    for (const Case& c : cases) {
        Bytes out;
        int w = 0, h = 0;
        EXPECT_FALSE(VXImageDecodePNG(c.data.data(), c.data.size(), out, w, h)) << c.name;
        EXPECT_TRUE(out.empty()) << c.name;
    }
    Bytes out;
    EXPECT_FALSE(VXImageDecodePNGFile(Temp("missing.png").c_str(), out, w, h));
    EXPECT_FALSE(VXImageDecodePNGFile(nullptr, out, w, h));
}

void Le16(Bytes& v, unsigned x) {
    v.insert(v.end(), {(unsigned char)x, (unsigned char)(x >> 8)});
}
void Le32(Bytes& v, unsigned x) {
    Le16(v, x & 0xFFFF), Le16(v, x >> 16);
}

// The header of a 2 x 2 bitmap entry (its height counts the mask too).
Bytes BitmapHeader(unsigned bits) {
    Bytes v;
    Le32(v, 40), Le32(v, 2), Le32(v, 4), Le16(v, 1), Le16(v, bits);
    for (int i = 0; i < 6; ++i) Le32(v, 0);
    return v;
}

// An icon file with one entry per (side, payload).
std::string WriteIco(const std::string& name, const std::vector<std::pair<int, Bytes>>& entries) {
    Bytes file;
    Le16(file, 0), Le16(file, 1), Le16(file, (unsigned)entries.size());
    unsigned offset = 6 + 16 * (unsigned)entries.size();
    for (const auto& e : entries) {
        file.insert(file.end(), {(unsigned char)e.first, (unsigned char)e.first, 0, 0});
        Le16(file, 1), Le16(file, 32), Le32(file, (unsigned)e.second.size()), Le32(file, offset);
        offset += (unsigned)e.second.size();
    }
    for (const auto& e : entries) file.insert(file.end(), e.second.begin(), e.second.end());
    std::string path = Temp(name);
    FILE* f = std::fopen(path.c_str(), "wb");
    std::fwrite(file.data(), 1, file.size(), f);
    std::fclose(f);
    return path;
}

TEST(Icon, PngAndBitmapEntriesOfTheAskedSize) {
    // A PNG entry: the 32 x 32 one is picked from beside a 16 x 16 one.
    Bytes rgba(32 * 32 * 4);
    for (size_t i = 0; i < rgba.size(); ++i) rgba[i] = (unsigned char)(i % 251);
    VXImageWritePNGFile(Temp("icon32.png").c_str(), rgba.data(), 32, 32);
    const std::string file = TestReadFile(Temp("icon32.png"));
    const Bytes png(file.begin(), file.end());
    Bytes small(8, 0);
    std::string path = WriteIco("png.ico", {{16, small}, {32, png}});
    Bytes out;
    ASSERT_TRUE(VXImageDecodeIcoFile(path.c_str(), 32, out));
    EXPECT_EQ(out, rgba);
    EXPECT_FALSE(VXImageDecodeIcoFile(path.c_str(), 48, out));

    // A 32-bit bitmap entry: bottom row first, blue-green-red-alpha.
    Bytes bmp = BitmapHeader(32);
    bmp.insert(bmp.end(), {1, 2, 3, 255, 4, 5, 6, 128});  // bottom row
    bmp.insert(bmp.end(), {7, 8, 9, 255, 10, 11, 12, 0}); // top row
    bmp.insert(bmp.end(), 8, 0);                          // the mask, unused
    path = WriteIco("bmp.ico", {{2, bmp}});
    ASSERT_TRUE(VXImageDecodeIcoFile(path.c_str(), 2, out));
    EXPECT_EQ(out, (Bytes{9, 8, 7, 255, 12, 11, 10, 0, 3, 2, 1, 255, 6, 5, 4, 128}));

    // Old-style entries carry their transparency in the 1-bit mask (rows
    // bottom-up, leftmost pixel in the top bit, 1 = transparent): a 24-bit
    // entry, and a 32-bit one whose alpha is zero throughout. The masks are
    // asymmetric: bottom row 10 (left clear), top row 01 (right clear).
    struct MaskCase {
        const char* name;
        unsigned bits;
    } maskCases[] = {{"24-bit entry with a mask", 24}, {"32-bit entry, alpha all zero", 32}};
    for (const MaskCase& c : maskCases) {
        Bytes old = BitmapHeader(c.bits);
        if (c.bits == 24) {
            old.insert(old.end(), {1, 2, 3, 4, 5, 6, 0, 0});    // bottom row, padded to 8
            old.insert(old.end(), {7, 8, 9, 10, 11, 12, 0, 0}); // top row
        } else {
            old.insert(old.end(), {1, 2, 3, 0, 4, 5, 6, 0});
            old.insert(old.end(), {7, 8, 9, 0, 10, 11, 12, 0});
        }
        old.insert(old.end(), {0x80, 0, 0, 0}); // bottom row mask: left clear
        old.insert(old.end(), {0x40, 0, 0, 0}); // top row mask: right clear
        path = WriteIco("old.ico", {{2, old}});
        ASSERT_TRUE(VXImageDecodeIcoFile(path.c_str(), 2, out)) << c.name;
        EXPECT_EQ(out, (Bytes{9, 8, 7, 255, 12, 11, 10, 0, 3, 2, 1, 0, 6, 5, 4, 255})) << c.name;
    }

    // Damaged icons are refused.
    EXPECT_FALSE(VXImageDecodeIcoFile(Temp("no.ico").c_str(), 32, out));
    path = WriteIco("cut.ico", {{32, {png.begin(), png.begin() + 40}}});
    EXPECT_FALSE(VXImageDecodeIcoFile(path.c_str(), 32, out));
    path = WriteIco("short.ico", {{2, {bmp.begin(), bmp.begin() + 44}}});
    EXPECT_FALSE(VXImageDecodeIcoFile(path.c_str(), 2, out));
}

} // namespace
