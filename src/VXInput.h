// VXInput: one snapshot of keys, mouse buttons and cursor per frame, with the
// previous snapshot beside it. Keys and buttons share one table indexed by
// desktop virtual-key codes (1 left button, 2 right, 4 middle, 27 Escape...).
//
// Depends on: VXPlatform (live key table and cursor), VXSystem (scale factors).
#pragma once

// Virtual-key codes the engine maps from the platform's events.
enum {
    VX_KEY_LBUTTON = 1,
    VX_KEY_RBUTTON = 2,
    VX_KEY_MBUTTON = 4,
    VX_KEY_BACK = 8,
    VX_KEY_TAB = 9,
    VX_KEY_RETURN = 13,
    VX_KEY_SHIFT = 16,
    VX_KEY_CONTROL = 17,
    VX_KEY_MENU = 18,
    VX_KEY_ESCAPE = 27,
    VX_KEY_SPACE = 32,
    VX_KEY_LEFT = 37,
    VX_KEY_UP = 38,
    VX_KEY_RIGHT = 39,
    VX_KEY_DOWN = 40,
    VX_KEY_F1 = 112, // F1..F12 are 112..123
};

extern "C" {

extern unsigned char gVXInputKeyCurr[256];
extern unsigned char gVXInputKeyPrev[256];
extern int gVXInputCursorX;
extern int gVXInputCursorY;
extern int gVXInputCursorDeltaX;
extern int gVXInputCursorDeltaY;

int VXInputInit(void);
void VXInputReset(void);
void VXInputUpdate(void);
void VXInputExit(void);

bool VXInputCheckCurr(unsigned char key);
bool VXInputCheckPrev(unsigned char key);
bool VXInputCheckTriggered(unsigned char key);
bool VXInputCheckReleased(unsigned char key);
void VXInputGetCursorPosition(int* x, int* y);
void VXInputGetCursorPositionDelta(int* dx, int* dy);
int VXInputShowCursor(int show);

} // extern "C"
