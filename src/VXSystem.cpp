// VXSystem: the application window, the frame bracket, full screen, the
// engine clock and random numbers.
//
// Depends on: VXPlatform (the SDL backend), VXGraphics, VXFrameRateController,
// VXInput, VXImage (the window icon). Limits: one window; the game thread only.
#include "VXSystem.h"

#include <cstdio>
#include <vector>

#include "VXFrameRateController.h"
#include "VXGraphics.h"
#include "VXImage.h"
#include "VXInput.h"
#include "VXPlatform.h"

int gVXSysAppActive = 0;
bool gVXFullScreen = false;
float gVXWinScaleX = 1.0f;
float gVXWinScaleY = 1.0f;

namespace {

void* sInstance = nullptr;
int sWindowExists = 0;
VXSysWindowProc sWindowProc = nullptr;

// The engine's own window procedure: it only records facts for the loop.
void EngineWindowProc(int message, int param) {
    switch (message) {
    case VX_SYS_MSG_DESTROY:
        sWindowExists = 0;
        break;
    case VX_SYS_MSG_ACTIVATE:
        gVXSysAppActive = param != 0 ? 1 : 0;
        break;
    default:
        break; // create, move and paint need nothing: the renderer repaints every frame
    }
}

// The centred position of a width x height client area on the primary screen.
void CentredPosition(int width, int height, int* x, int* y) {
    int sw, sh;
    VXPlatformScreenSize(&sw, &sh);
    *x = sw / 2 - width / 2;
    *y = sh / 2 - height / 2;
}

} // namespace

int VXSysInit(void* instance, int showCommand, int width, int height, int createConsole,
              unsigned frameRate, VXSysWindowProc windowProc) {
    (void)showCommand;
    (void)createConsole; // standard output already is the console on this desktop
    sInstance = instance;
    std::printf("Vexa Engine version: %2.2f\n\n", VX_ENGINE_VERSION);

    sWindowProc = windowProc ? windowProc : EngineWindowProc;
    gVXFullScreen = false;
    gVXWinScaleX = gVXWinScaleY = 1.0f;
    int x, y;
    if (!VXPlatformInit()) return 0;
    CentredPosition(width, height, &x, &y);
    if (!VXPlatformWindowCreate("Vexa Engine", x, y, width, height)) return 0;
    sWindowExists = 1;
    gVXSysAppActive = 1;
    sWindowProc(VX_SYS_MSG_CREATE, 0);
    VXPlatformResetInputState();

    if (!VXGfxInit(width, height)) return 0;
    VXFrameRateControllerInit(frameRate);
    return 1;
}

void VXSysReset(void) {
    VXFrameRateControllerReset();
    VXInputReset();
}

void VXSysFrameStart(void) {
    VXFrameRateControllerStart();
    VXGfxStart();
}

void VXSysFrameEnd(void) {
    VXGfxEnd();
    VXFrameRateControllerEnd();
    VXSysUpdate();
}

// The screen-mode keys are acted on here, where every frame ends by pumping
// the window's messages, and not in the game's loop: some frames (the menu's
// loading screen) are drawn inside a state's load and never sample input,
// and the player may switch at any moment. The switch lands between two
// frames, so the next frame is drawn and its cursor read at the new scale.
void VXSysUpdate(void) {
    if (!VXPlatformPump(sWindowProc) || !sWindowExists) return;
    VXToogleFullScreen(!gVXFullScreen);
    // The pointer did not move, the window did: read it again.
    VXPlatformRefreshCursor();
}

void VXSysExit(void) {
    VXGfxExit();
    VXPlatformExit();
    sWindowExists = 0;
    sInstance = nullptr;
}

void* VXSysGetWindowHandle(void) {
    return VXPlatformWindowHandle();
}

void VXSysSetWindowTitle(const char* text) {
    VXPlatformSetTitle(text);
}

int VXSysDoesWindowExist(void) {
    return sWindowExists;
}

int VXSysSetWindowIcon(const char* icoPath, int size) {
    std::vector<unsigned char> rgba;
    if (!VXImageDecodeIcoFile(icoPath, size, rgba)) return 0;
    return VXPlatformSetIcon(rgba.data(), size, size) ? 1 : 0;
}

void VXToogleFullScreen(bool on) {
    gVXFullScreen = on;
    int sw, sh;
    VXPlatformScreenSize(&sw, &sh);
    int w = VXGetWindowWidth(), h = VXGetWindowHeight();
    if (on) {
        gVXWinScaleX = (float)sw / (float)w;
        gVXWinScaleY = (float)sh / (float)h;
        VXPlatformSetFullScreen(true, 0, 0, sw, sh);
    } else {
        gVXWinScaleX = gVXWinScaleY = 1.0f;
        int x, y;
        CentredPosition(w, h, &x, &y);
        VXPlatformSetFullScreen(false, x, y, w, h);
    }
}

double VXGetTime(double* out) {
    uint64_t frequency = gVXPlatformClock.frequency();
    uint64_t counter = gVXPlatformClock.counter();
    // Whole seconds by integer division so large counter values keep their precision.
    double seconds =
        (double)(counter / frequency) + (double)(counter % frequency) / (double)frequency;
    if (out) *out = seconds;
    return seconds;
}

namespace {
uint32_t sRandState = 1; // unseeded, the runtime starts from 1
} // namespace

void VXSeedRand(unsigned seed) {
    sRandState = seed;
}

int VXRand(void) {
    sRandState = sRandState * 214013u + 2531011u;
    return (int)((sRandState >> 16) & 0x7FFF);
}

float VXRandFloat(void) {
    return (float)VXRand() / 32767.0f;
}
