// VXSeam: the engine's test seams. Tools and tests (never the game) use them
// to run the real game loop on a virtual clock, to inject input through the
// same event pump the game reads, and to capture the presented picture.
//
// Depends on: VXPlatform, VXGraphics, VXImage.
#pragma once

#include <vector>

// Every frame then lasts exactly 1/60 s of simulated time and nothing waits.
// (The virtual counter ticks 60 times a second; the busy wait advances it.)
void VXSeamUseVirtualClock(bool on);

// Called once per presented frame, after the picture is finished and before
// it is shown and before the frame's window messages are pumped; frame counts
// every presented frame since the process started (loading pictures too).
// Events injected from the hook are seen by the next frame's input sample;
// a capture made from it returns that frame's picture.
typedef void (*VXSeamFrameHook)(unsigned long frame, void* user);
void VXSeamSetFrameHook(VXSeamFrameHook hook, void* user);
unsigned long VXSeamFramesPresented(void);

// Input, in logical window pixels for the cursor: in full screen it lands
// on a screen pixel that the engine reads back as exactly that logical
// pixel, as a real mouse there would report it. From the first injected
// cursor on, the real pointer no longer moves the game's cursor (windows of
// other programs on the same display would otherwise send it theirs).
void VXSeamInjectCursor(int x, int y);
void VXSeamInjectKey(unsigned char vk, bool down);
void VXSeamInjectClose(void);

// The draw log: while recording, every mesh drawn is noted with the picture
// bound for it, the render mode, its transform's scale and position and its
// tint, in drawing order. The log restarts at every frame start; read it in
// a frame hook to see exactly what that frame drew.
struct VXSeamDraw {
    char picture[256]; // file of the bound picture; "" for none
    int pictureWidth;  // its size in texels (8 x 8: the placeholder of a
    int pictureHeight; // missing or damaged file); 0 for none
    int renderMode;    // VX_GFX_RENDER_COLOR or VX_GFX_RENDER_TEXTURE
    float x, y;        // translation of the transform
    float sx, sy;      // its diagonal: the scale
    float tint[4];     // the tint colour last set
};
void VXSeamRecordDraws(bool on);
const std::vector<VXSeamDraw>& VXSeamDrawsThisFrame(void);

// Reads the picture being presented (the back buffer) as RGBA rows, top row
// first, at the drawable's real size. Valid only inside a frame hook or
// between drawing and VXGfxEnd.
bool VXSeamCaptureFrame(std::vector<unsigned char>& rgba, int& width, int& height);
bool VXSeamCaptureFramePNG(const char* path);
