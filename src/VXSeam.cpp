// VXSeam: the engine's test seams. The virtual clock, input injected through
// the platform's own event queue, and reading back the finished picture.
// Nothing in the game uses these; the driver tool and the tests do.
//
// Depends on: VXPlatform (clock table, event queue), VXGraphics, VXImage.
#include "VXSeam.h"

#include <GL/glew.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>

#include "VXGraphics.h"
#include "VXGraphicsInternal.h"
#include "VXImage.h"
#include "VXPlatform.h"
#include "VXSystem.h"

namespace {

// The virtual counter ticks 60 times a second, so one tick is one frame:
// the frame-rate controller's wait advances it by exactly one frame.
uint64_t sVirtualNow = 1;
uint64_t VirtualCounter(void) {
    return sVirtualNow;
}
uint64_t VirtualFrequency(void) {
    return 60;
}
void VirtualSpin(void) {
    ++sVirtualNow;
}
const VXPlatformClock kVirtualClock = {VirtualCounter, VirtualFrequency, VirtualSpin};

bool sRecording = false;
std::vector<VXSeamDraw> sDraws;
VXSeamDraw sPending = {};

VXSeamFrameHook sHook = nullptr;
void* sHookUser = nullptr;
unsigned long sFramesPresented = 0;

} // namespace

void VXSeamUseVirtualClock(bool on) {
    gVXPlatformClock = on ? kVirtualClock : gVXPlatformRealClock;
}

void VXSeamSetFrameHook(VXSeamFrameHook hook, void* user) {
    sHook = hook;
    sHookUser = user;
}

unsigned long VXSeamFramesPresented(void) {
    return sFramesPresented;
}

void VXSeamRecordDraws(bool on) {
    sRecording = on;
    sDraws.clear();
}

const std::vector<VXSeamDraw>& VXSeamDrawsThisFrame(void) {
    return sDraws;
}

void VXSeamNoteFrameStart(void) {
    if (sRecording) sDraws.clear();
}

void VXSeamNoteTexture(const VXGfxTexture* texture) {
    if (!sRecording) return;
    std::snprintf(sPending.picture, sizeof sPending.picture, "%s",
                  texture ? texture->fileName : "");
    // The texture is bound by now: its size tells the placeholder apart.
    GLint width = 0, height = 0;
    if (texture) {
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &height);
    }
    sPending.pictureWidth = width;
    sPending.pictureHeight = height;
}

void VXSeamNoteTransform(const float m[3][3]) {
    if (!sRecording) return;
    sPending.sx = m[0][0];
    sPending.sy = m[1][1];
    sPending.x = m[0][2];
    sPending.y = m[1][2];
}

void VXSeamNoteTint(float r, float g, float b, float a) {
    if (!sRecording) return;
    sPending.tint[0] = r, sPending.tint[1] = g, sPending.tint[2] = b, sPending.tint[3] = a;
}

void VXSeamNoteDraw(void) {
    if (!sRecording) return;
    VXSeamDraw draw = sPending;
    draw.renderMode = VXGfxGetRenderMode();
    if (draw.renderMode != VX_GFX_RENDER_TEXTURE) draw.picture[0] = '\0';
    sDraws.push_back(draw);
}

void VXSeamFrameFinished(void) {
    if (sHook) sHook(sFramesPresented, sHookUser);
    ++sFramesPresented;
}

namespace {

// The screen pixel that the engine reads back as logical pixel p: the input
// divides by the scale and truncates, so plain p x scale can land one
// logical pixel short (279 x 1.6 = 446.4 reads back as 278).
int ScreenPixelFor(int p, float scale) {
    const int guess = (int)((float)p * scale);
    for (int s : {guess, guess + 1, guess - 1, guess + 2, guess - 2})
        if ((int)((float)s / scale) == p) return s;
    return guess;
}

} // namespace

void VXSeamInjectCursor(int x, int y) {
    VXPlatformPushCursor(ScreenPixelFor(x, gVXWinScaleX), ScreenPixelFor(y, gVXWinScaleY));
}

void VXSeamInjectKey(unsigned char vk, bool down) {
    VXPlatformPushKey(vk, down);
}

void VXSeamInjectClose(void) {
    VXPlatformPushClose();
}

bool VXSeamCaptureFrame(std::vector<unsigned char>& rgba, int& width, int& height) {
    // The whole drawable: the logical window scaled to the screen in full screen.
    width = (int)((float)VXGetWindowWidth() * gVXWinScaleX);
    height = (int)((float)VXGetWindowHeight() * gVXWinScaleY);
    if (width <= 0 || height <= 0) return false;
    std::vector<unsigned char> bottomUp((size_t)width * height * 4);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadBuffer(GL_BACK);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, bottomUp.data());
    rgba.resize(bottomUp.size());
    size_t stride = (size_t)width * 4;
    for (int y = 0; y < height; ++y)
        std::copy_n(&bottomUp[(size_t)(height - 1 - y) * stride], stride,
                    &rgba[(size_t)y * stride]);
    // The screen shows no transparency: whatever a draw left in the frame's
    // alpha (the splash fades its logos through the tint with blending off)
    // is not part of the picture, so captures are opaque.
    for (size_t i = 3; i < rgba.size(); i += 4) rgba[i] = 255;
    return glGetError() == GL_NO_ERROR;
}

bool VXSeamCaptureFramePNG(const char* path) {
    std::vector<unsigned char> rgba;
    int width, height;
    if (!VXSeamCaptureFrame(rgba, width, height)) return false;
    return VXImageWritePNGFile(path, rgba.data(), width, height);
}
