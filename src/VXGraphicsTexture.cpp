// VXGraphicsTexture: pictures uploaded as textures, bound with a scrolling
// offset. A missing or undecodable file still gives a valid texture: a small
// magenta-and-black checker that owners can bind and unload like any other,
// and that shows a maintainer at a glance which picture is missing.
//
// Depends on: VXImage (PNG decoding), VXGraphics core (program, error check).
// Limits: no mipmaps; wrapping left at repeat; paths up to 255 characters.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "VXGraphics.h"
#include "VXGraphicsInternal.h"
#include "VXImage.h"

namespace {

const int kPlaceholderSide = 8;
int sLiveTextures = 0;

std::vector<unsigned char> PlaceholderPixels(void) {
    std::vector<unsigned char> px(kPlaceholderSide * kPlaceholderSide * 4);
    for (int y = 0; y < kPlaceholderSide; ++y)
        for (int x = 0; x < kPlaceholderSide; ++x) {
            bool magenta = ((x / 2) + (y / 2)) % 2 == 0;
            unsigned char* p = &px[(y * kPlaceholderSide + x) * 4];
            p[0] = magenta ? 255 : 0;
            p[1] = 0;
            p[2] = magenta ? 255 : 0;
            p[3] = 255;
        }
    return px;
}

VXGfxTexture* NewRecord(void) {
    VXGfxTexture* texture = (VXGfxTexture*)std::calloc(1, sizeof(VXGfxTexture));
    if (!texture) return nullptr;
    texture->pTextureName = (unsigned*)std::calloc(1, sizeof(unsigned));
    if (!texture->pTextureName) {
        std::free(texture);
        return nullptr;
    }
    ++sLiveTextures;
    return texture;
}

// Creates the GL texture from RGBA rows, top row first (v = 0 is the top).
void UploadRGBA(VXGfxTexture* texture, const unsigned char* pixels, int width, int height) {
    glGenTextures(1, texture->pTextureName);
    glBindTexture(GL_TEXTURE_2D, *texture->pTextureName);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
    glBindTexture(GL_TEXTURE_2D, 0);
}

} // namespace

VXGfxTexture* VXGfxTextureLoad(const char* path) {
    if (!path || std::strlen(path) > 255) return nullptr;
    VXGfxTexture* texture = NewRecord();
    if (!texture) return nullptr;
    std::memcpy(texture->fileName, path, std::strlen(path) + 1);
    std::vector<unsigned char> pixels;
    int width = 0, height = 0;
    if (!VXImageDecodePNGFile(path, pixels, width, height)) {
        pixels = PlaceholderPixels();
        width = height = kPlaceholderSide;
    }
    UploadRGBA(texture, pixels.data(), width, height);
    return texture;
}

VXGfxTexture* VXGfxTextureLoadFromMemory(const unsigned char* pixels, int width, int height) {
    VXGfxTexture* texture = NewRecord();
    if (!texture) return nullptr;
    if (!pixels || width <= 0 || height <= 0) {
        std::vector<unsigned char> placeholder = PlaceholderPixels();
        UploadRGBA(texture, placeholder.data(), kPlaceholderSide, kPlaceholderSide);
    } else {
        UploadRGBA(texture, pixels, width, height);
    }
    return texture;
}

void VXGfxTextureSet(VXGfxTexture* texture, float offsetU, float offsetV) {
    if (!texture) {
        glBindTexture(GL_TEXTURE_2D, 0);
        VXSeamNoteTexture(texture);
        return;
    }
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, texture->pTextureName ? *texture->pTextureName : 0);
    VXSeamNoteTexture(texture);
    GLint sampler = VXGfxUniform("uTexture");
    if (sampler != -1) glUniform1i(sampler, 0);
    VX_GFX_CHECK("VXGfxTextureSet");
    while (offsetU > 1.0f) offsetU -= 1.0f;
    while (offsetV > 1.0f) offsetV -= 1.0f;
    GLint offset = VXGfxUniform("uTextureOffset");
    if (offset != -1) glUniform2f(offset, offsetU, offsetV);
    VX_GFX_CHECK("VXGfxTextureSet");
}

void VXGfxSetTextureMode(int mode) {
    GLint filter;
    if (mode == VX_GFX_TEXTURE_NEAREST)
        filter = GL_NEAREST;
    else if (mode == VX_GFX_TEXTURE_LINEAR)
        filter = GL_LINEAR;
    else {
        std::printf("Unsupported texture mode!\n");
        return;
    }
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
}

void VXGfxTextureUnload(VXGfxTexture* texture) {
    if (!texture) return;
    if (texture->pTextureName) glDeleteTextures(1, texture->pTextureName);
    std::free(texture->pTextureName);
    std::free(texture);
    --sLiveTextures;
}

int VXGfxTextureLiveCount(void) {
    return sLiveTextures;
}

void VXGfxSaveTextureToFile(VXGfxTexture* texture, const char* path) {
    if (texture && path)
        std::printf(
            "VXGfxSaveTextureToFile not supported in the OpenGL version of the Vexa Engine!\n");
}

void VXGfxTextureInitialize(VXGfxTexture* texture) {
    if (!texture) return;
    texture->pTextureName = (unsigned*)std::calloc(1, sizeof(unsigned));
}
