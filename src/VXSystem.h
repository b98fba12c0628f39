// VXSystem: the one application window, the per-frame bracket, full screen,
// the engine clock and random numbers.
//
// Depends on: VXPlatform (SDL2 backend), VXGraphics, VXFrameRateController, VXInput.
// Limits: one window per process; everything runs on the game thread.
#pragma once

#include <cstdint>

#define VX_ENGINE_VERSION 3.05

// Messages the engine's window procedure receives from the platform backend.
// They carry the meaning of their Win32 counterparts: create, destroy (the
// user closed the window), move, activate (param non-zero = active), paint.
enum {
    VX_SYS_MSG_CREATE = 1,
    VX_SYS_MSG_DESTROY,
    VX_SYS_MSG_MOVE,
    VX_SYS_MSG_ACTIVATE,
    VX_SYS_MSG_PAINT,
};
typedef void (*VXSysWindowProc)(int message, int param);

extern "C" {

extern int gVXSysAppActive;
extern bool gVXFullScreen;
extern float gVXWinScaleX;
extern float gVXWinScaleY;

// Opens the window (client area width x height, centred), starts the
// graphics and the frame-rate controller. Returns 1, or 0 when no OpenGL
// context could be had. instance and showCommand are kept for symmetry with
// the desktop API; windowProc may be null (the engine's own is used).
int VXSysInit(void* instance, int showCommand, int width, int height, int createConsole,
              unsigned frameRate, VXSysWindowProc windowProc);
void VXSysReset(void);
void VXSysFrameStart(void);
void VXSysFrameEnd(void);
// Dispatches the waiting window messages. F11, or Enter with Alt held,
// switches between full screen and the window here, in whatever state.
void VXSysUpdate(void);
void VXSysExit(void);

void* VXSysGetWindowHandle(void);
void VXSysSetWindowTitle(const char* text);
int VXSysDoesWindowExist(void);
// Loads a .ico file and installs its size x size entry as the window icon.
// Returns 1 on success; a missing or corrupt file changes nothing.
int VXSysSetWindowIcon(const char* icoPath, int size);
void VXToogleFullScreen(bool on);

double VXGetTime(double* out);
// The game's random numbers: the desktop runtime's generator, 0 to 32767,
// so every draw (and every level's spawn sequence) has the range the game's
// tables were made for. The C library's rand() here returns 31 bits.
void VXSeedRand(unsigned seed);
int VXRand(void);
// VXRand() / 32767 in single precision: 0.0 and 1.0 both possible.
float VXRandFloat(void);

} // extern "C"
