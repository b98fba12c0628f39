// VXImage: picture files. PNG decoding into straight-alpha RGBA rows (top row
// first), PNG writing, and the one entry of a Windows .ico file.
//
// Depends on: libpng. Limits: a decoded side is at most 16384 pixels.
#pragma once

#include <cstddef>
#include <vector>

// Decodes a PNG file or buffer into width x height x 4 bytes, RGBA, top row
// first, straight alpha. Returns false (and leaves out untouched) on any
// missing, truncated or corrupt input.
bool VXImageDecodePNGFile(const char* path, std::vector<unsigned char>& out, int& width,
                          int& height);
bool VXImageDecodePNG(const unsigned char* data, size_t size, std::vector<unsigned char>& out,
                      int& width, int& height);
// Writes RGBA rows (top row first) as an 8-bit RGBA PNG. Returns false on failure.
bool VXImageWritePNGFile(const char* path, const unsigned char* rgba, int width, int height);
// Reads the entry of an .ico file whose width and height are both size
// pixels; PNG-compressed and 32/24-bit bitmap entries are understood.
bool VXImageDecodeIcoFile(const char* path, int size, std::vector<unsigned char>& out);
