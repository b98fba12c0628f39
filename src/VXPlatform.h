// VXPlatform: the engine's only door to the operating system. One backend
// (VXPlatformSDL.cpp, on SDL2) implements these functions; nothing else in
// the engine or the game calls SDL.
//
// The backend keeps the desktop meaning the engine relies on: a live table of
// 256 virtual-key states filled from the event queue as it is pumped (so an
// injected event counts exactly like a real one), the cursor in client
// pixels, a window that "no longer exists" once the user closed it, and a
// monotonic counter with its frequency.
#pragma once

#include <cstdint>

#include "VXSystem.h"

// The clock as a table, so that tests can swap in the virtual clock of VXSeam.
// spin() is called by the frame-rate controller's busy wait on every turn
// that finds the frame too short: the real clock does nothing there, the
// virtual clock advances itself.
struct VXPlatformClock {
    uint64_t (*counter)(void);
    uint64_t (*frequency)(void);
    void (*spin)(void);
};
extern VXPlatformClock gVXPlatformClock;
extern const VXPlatformClock gVXPlatformRealClock;

// Window and context. Create returns false when no window or no OpenGL 2.0
// context (RGBA 32, depth 24, stencil 8, double buffered) can be had.
bool VXPlatformInit(void);
bool VXPlatformWindowCreate(const char* title, int x, int y, int width, int height);
bool VXPlatformContextCreate(void);
void VXPlatformContextDestroy(void);
void VXPlatformWindowDestroy(void);
void VXPlatformExit(void);
void* VXPlatformWindowHandle(void);
void VXPlatformSetTitle(const char* text);
bool VXPlatformSetIcon(const unsigned char* rgba, int width, int height);
void VXPlatformScreenSize(int* width, int* height);
// Full screen covers the whole primary screen; leaving it gives a client
// area of width x height at (x, y).
void VXPlatformSetFullScreen(bool on, int x, int y, int width, int height);
void VXPlatformSwap(void);
int VXPlatformShowCursor(int show);

// Events. Pump removes every waiting event without blocking, updates the live
// key table and cursor, and reports window messages to proc. It returns true
// when the player asked to switch between full screen and the window (F11,
// or Enter with Alt held; a held key's repeats do not count) an odd number
// of times: two presses in one frame cancel out.
bool VXPlatformPump(VXSysWindowProc proc);
void VXPlatformGetKeyboardState(unsigned char out[256]);
void VXPlatformGetCursorPos(int* x, int* y);
// Reads where the system pointer really is, in client pixels of the window,
// into the cursor: after the window has been moved or resized under a
// pointer that stood still, no motion event says so.
void VXPlatformRefreshCursor(void);
void VXPlatformResetInputState(void);

// Pushes synthetic events into the same queue the pump reads.
void VXPlatformPushKey(unsigned char vk, bool down);
void VXPlatformPushCursor(int x, int y);
void VXPlatformPushClose(void);
// The virtual key a script or tool names ("escape", "space", "a", "f1"...);
// 0 for a name the engine does not map.
unsigned char VXPlatformVirtualKeyFromName(const char* name);
