// VXImage: picture files through libpng, and the one entry of a Windows .ico
// file (PNG-compressed or bitmap).
//
// Decoding gives the bytes of the file as 8-bit straight-alpha RGBA rows,
// top row first: palettes and grey expanded, missing alpha opaque, 16-bit
// samples cut to their high byte, and no gamma or colour-space conversion
// (libpng's simplified reader treats 16-bit samples as linear light and
// converts them, which changes their brightness, so the full reader is used).
//
// The .ico reader is ours: no Debian library reads icons without pulling in
// a whole toolkit, and the format is a 6-byte header, a directory and either
// a PNG or a headerless bitmap.
//
// Depends on: libpng. Limits: sides up to 16384 pixels, and no more pixels
// than the file's bytes can hold compressed.
#include "VXImage.h"

#include <png.h>

#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

const int kMaxSide = 16384;

struct MemoryReader {
    const unsigned char* data;
    size_t size;
    size_t position;
};

void ReadFromMemory(png_structp png, png_bytep out, png_size_t count) {
    MemoryReader* reader = (MemoryReader*)png_get_io_ptr(png);
    if (count > reader->size - reader->position) png_error(png, "truncated");
    std::memcpy(out, reader->data + reader->position, count);
    reader->position += count;
}

// A damaged file is refused through the error jump; warnings about a file
// that still decodes (an odd colour profile, say) are nobody's business.
void OnError(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}
void OnWarning(png_structp, png_const_charp) {
}

// The decode proper, between libpng's error jump and its clean-up. Writes
// only through the pointers, which are set before the jump point.
bool ReadPixels(png_structp png, png_infop info, MemoryReader* reader,
                std::vector<unsigned char>* pixels, int* width, int* height) {
    std::vector<png_bytep>* rows = new std::vector<png_bytep>();
    if (setjmp(png_jmpbuf(png))) {
        delete rows;
        return false;
    }
    png_set_read_fn(png, reader, ReadFromMemory);
    png_read_info(png, info);
    const png_uint_32 w = png_get_image_width(png, info);
    const png_uint_32 h = png_get_image_height(png, info);
    if (w == 0 || h == 0 || w > (png_uint_32)kMaxSide || h > (png_uint_32)kMaxSide)
        png_error(png, "size");
    // Deflate packs at most 1032 bytes into one, so a file can hold only so
    // many rows: a header claiming more is a damaged file, refused before
    // the picture's memory is taken (a 16384 x 16384 claim is 1 GiB).
    const size_t storedBytes = (size_t)h * (png_get_rowbytes(png, info) + 1);
    if (storedBytes / 1032 > reader->size) png_error(png, "size");
    png_set_expand(png);   // palette to RGB, grey below 8 bits to 8, tRNS to alpha
    png_set_strip_16(png); // the high byte of every 16-bit sample
    png_set_gray_to_rgb(png);
    png_set_add_alpha(png, 0xFF, PNG_FILLER_AFTER);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    if (png_get_rowbytes(png, info) != (size_t)w * 4) png_error(png, "layout");
    pixels->assign((size_t)w * h * 4, 0);
    rows->resize(h);
    for (png_uint_32 y = 0; y < h; ++y) (*rows)[y] = pixels->data() + (size_t)y * w * 4;
    png_read_image(png, rows->data());
    png_read_end(png, nullptr); // a file cut after its pixels is refused too
    *width = (int)w;
    *height = (int)h;
    delete rows;
    return true;
}

bool DecodeMemory(const unsigned char* data, size_t size, std::vector<unsigned char>& out,
                  int& width, int& height) {
    if (!data || size < 8 || png_sig_cmp(data, 0, 8) != 0) return false;
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, OnError, OnWarning);
    if (!png) return false;
    // libpng's own limits too: no side above ours, and no ancillary chunk
    // (text, colour profile) that would take more than 1 MiB to hold.
    png_set_user_limits(png, kMaxSide, kMaxSide);
    png_set_chunk_malloc_max(png, 1 << 20);
    png_infop info = png_create_info_struct(png);
    if (!info) {
        png_destroy_read_struct(&png, nullptr, nullptr);
        return false;
    }
    MemoryReader reader = {data, size, 0};
    std::vector<unsigned char> pixels;
    int w = 0, h = 0;
    const bool ok = ReadPixels(png, info, &reader, &pixels, &w, &h);
    png_destroy_read_struct(&png, &info, nullptr);
    if (!ok) return false;
    out.swap(pixels);
    width = w;
    height = h;
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
    std::vector<unsigned char> data;
    if (!ReadFile(path, data)) return false;
    return DecodeMemory(data.data(), data.size(), out, width, height);
}

bool VXImageDecodePNG(const unsigned char* data, size_t size, std::vector<unsigned char>& out,
                      int& width, int& height) {
    return DecodeMemory(data, size, out, width, height);
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
