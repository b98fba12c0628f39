// VXInput: one snapshot of the keys, buttons and cursor per frame, beside the
// previous one, so "triggered" and "released" are the same all frame long.
//
// Depends on: VXPlatform (live key table and cursor), VXSystem (scale factors).
#include "VXInput.h"

#include <cstring>

#include "VXPlatform.h"
#include "VXSystem.h"

unsigned char gVXInputKeyCurr[256];
unsigned char gVXInputKeyPrev[256];
int gVXInputCursorX = 0;
int gVXInputCursorY = 0;
int gVXInputCursorDeltaX = 0;
int gVXInputCursorDeltaY = 0;

int VXInputInit(void) {
    return 1;
}

void VXInputReset(void) {
    std::memset(gVXInputKeyCurr, 0, sizeof gVXInputKeyCurr);
    std::memset(gVXInputKeyPrev, 0, sizeof gVXInputKeyPrev);
    gVXInputCursorX = gVXInputCursorY = 0;
    gVXInputCursorDeltaX = gVXInputCursorDeltaY = 0;
}

void VXInputUpdate(void) {
    std::memcpy(gVXInputKeyPrev, gVXInputKeyCurr, sizeof gVXInputKeyCurr);
    VXPlatformGetKeyboardState(gVXInputKeyCurr);
    int x, y;
    VXPlatformGetCursorPos(&x, &y);
    gVXInputCursorDeltaX = x - gVXInputCursorX;
    gVXInputCursorDeltaY = y - gVXInputCursorY;
    gVXInputCursorX = x;
    gVXInputCursorY = y;
}

void VXInputExit(void) {
}

bool VXInputCheckCurr(unsigned char key) {
    return (gVXInputKeyCurr[key] & 0x80) != 0;
}
bool VXInputCheckPrev(unsigned char key) {
    return (gVXInputKeyPrev[key] & 0x80) != 0;
}
bool VXInputCheckTriggered(unsigned char key) {
    return VXInputCheckCurr(key) && !VXInputCheckPrev(key);
}
bool VXInputCheckReleased(unsigned char key) {
    return !VXInputCheckCurr(key) && VXInputCheckPrev(key);
}

// Screen pixels back to logical window pixels; truncation toward zero, so a
// cursor left of or above the window reads negative, unclamped.
void VXInputGetCursorPosition(int* x, int* y) {
    if (x) *x = (int)((float)gVXInputCursorX / gVXWinScaleX);
    if (y) *y = (int)((float)gVXInputCursorY / gVXWinScaleY);
}

void VXInputGetCursorPositionDelta(int* dx, int* dy) {
    if (dx) *dx = (int)((float)gVXInputCursorDeltaX / gVXWinScaleX);
    if (dy) *dy = (int)((float)gVXInputCursorDeltaY / gVXWinScaleY);
}

int VXInputShowCursor(int show) {
    return VXPlatformShowCursor(show);
}
