// VXImage: picture files through libpng's simplified interface, which turns
// every PNG colour type into 8-bit straight-alpha RGBA rows, top row first,
// and the one entry of a Windows .ico file (PNG-compressed or bitmap).
//
// The .ico reader is ours: no Debian library reads icons without pulling in
// a whole toolkit, and the format is a 6-byte header, a directory and either
// a PNG or a headerless bitmap.
//
// Depends on: libpng. Limits: sides up to 16384 pixels.
#include "VXImage.h"

#include <png.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

const int kMaxSide = 16384;

// Finishes a simplified-API read into out.
bool FinishRead(png_image& image, std::vector<unsigned char>& out, int& width, int& height) {
    if (image.width == 0 || image.height == 0 || image.width > (png_uint_32)kMaxSide ||
        image.height > (png_uint_32)kMaxSide) {
        png_image_free(&image);
        return false;
    }
    image.format = PNG_FORMAT_RGBA;
    std::vector<unsigned char> pixels(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) {
        png_image_free(&image);
        return false;
    }
    width = (int)image.width;
    height = (int)image.height;
    out.swap(pixels);
    return true;
}

bool ReadFile(const char* path, std::vector<unsigned char>& data) {
    FILE* f = path ? std::fopen(path, "rb") : nullptr;
    if (!f) return false;
    unsigned char buffer[65536];
    size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, f)) > 0)
        data.insert(data.end(), buffer, buffer + n);
    std::fclose(f);
    return true;
}

uint32_t Le16(const unsigned char* p) {
    return (uint32_t)p[0] | (uint32_t)p[1] << 8;
}
uint32_t Le32(const unsigned char* p) {
    return Le16(p) | Le16(p + 2) << 16;
}

// A headerless bitmap icon entry: a 40-byte info header, bottom-up rows of
// 32 or 24 bits, then a 1-bit transparency mask.
bool DecodeIconBitmap(const unsigned char* p, size_t size, int side,
                      std::vector<unsigned char>& out) {
    if (size < 40 || Le32(p) < 40) return false;
    int32_t width = (int32_t)Le32(p + 4);
    int32_t height = (int32_t)Le32(p + 8) / 2; // colour rows and mask rows
    uint32_t bits = Le16(p + 14);
    if (width != side || height != side || Le32(p + 16) != 0 || (bits != 32 && bits != 24))
        return false;
    size_t headerSize = Le32(p);
    size_t colorStride = ((size_t)side * bits / 8 + 3) & ~(size_t)3;
    size_t maskStride = (((size_t)side + 31) / 32) * 4;
    if (headerSize + colorStride * side + (bits == 24 ? maskStride * side : 0) > size) return false;
    const unsigned char* colors = p + headerSize;
    const unsigned char* mask = colors + colorStride * side;
    bool hasMask = headerSize + colorStride * side + maskStride * side <= size;
    bool anyAlpha = false;
    out.assign((size_t)side * side * 4, 0);
    for (int y = 0; y < side; ++y) {
        const unsigned char* row = colors + colorStride * (side - 1 - y);
        for (int x = 0; x < side; ++x) {
            const unsigned char* s = row + x * (bits / 8);
            unsigned char* d = &out[((size_t)y * side + x) * 4];
            d[0] = s[2];
            d[1] = s[1];
            d[2] = s[0];
            d[3] = bits == 32 ? s[3] : 255;
            anyAlpha = anyAlpha || (bits == 32 && s[3] != 0);
        }
    }
    // Old-style icons carry their transparency in the mask only.
    if ((bits == 24 || !anyAlpha) && hasMask) {
        for (int y = 0; y < side; ++y) {
            const unsigned char* row = mask + maskStride * (side - 1 - y);
            for (int x = 0; x < side; ++x) {
                bool transparent = (row[x / 8] >> (7 - x % 8)) & 1;
                out[((size_t)y * side + x) * 4 + 3] = transparent ? 0 : 255;
            }
        }
    }
    return true;
}

} // namespace

bool VXImageDecodePNGFile(const char* path, std::vector<unsigned char>& out, int& width,
                          int& height) {
    if (!path) return false;
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path)) {
        png_image_free(&image);
        return false;
    }
    return FinishRead(image, out, width, height);
}

bool VXImageDecodePNG(const unsigned char* data, size_t size, std::vector<unsigned char>& out,
                      int& width, int& height) {
    if (!data || size < 8) return false;
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&image, data, size)) {
        png_image_free(&image);
        return false;
    }
    return FinishRead(image, out, width, height);
}

bool VXImageWritePNGFile(const char* path, const unsigned char* rgba, int width, int height) {
    if (!path || !rgba || width <= 0 || height <= 0) return false;
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    image.width = (png_uint_32)width;
    image.height = (png_uint_32)height;
    image.format = PNG_FORMAT_RGBA;
    bool ok = png_image_write_to_file(&image, path, 0, rgba, 0, nullptr) != 0;
    png_image_free(&image);
    return ok;
}

bool VXImageDecodeIcoFile(const char* path, int size, std::vector<unsigned char>& out) {
    std::vector<unsigned char> data;
    if (!ReadFile(path, data) || data.size() < 6) return false;
    if (Le16(&data[0]) != 0 || Le16(&data[2]) != 1) return false;
    size_t count = Le16(&data[4]);
    for (size_t i = 0; i < count; ++i) {
        size_t entry = 6 + i * 16;
        if (entry + 16 > data.size()) return false;
        int w = data[entry] ? data[entry] : 256;
        int h = data[entry + 1] ? data[entry + 1] : 256;
        if (w != size || h != size) continue;
        size_t bytes = Le32(&data[entry + 8]);
        size_t offset = Le32(&data[entry + 12]);
        if (offset > data.size() || bytes > data.size() - offset) return false;
        const unsigned char* p = &data[offset];
        static const unsigned char kPngSignature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
        if (bytes >= 8 && std::memcmp(p, kPngSignature, 8) == 0) {
            std::vector<unsigned char> pixels;
            int pw = 0, ph = 0;
            if (!VXImageDecodePNG(p, bytes, pixels, pw, ph) || pw != size || ph != size)
                return false;
            out.swap(pixels);
            return true;
        }
        return DecodeIconBitmap(p, bytes, size, out);
    }
    return false;
}
