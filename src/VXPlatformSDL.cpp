// VXPlatformSDL: the engine's platform backend on SDL2. The only file of the
// engine that includes SDL.
//
// It keeps the desktop meaning the rest of the engine relies on:
// - keys and mouse buttons land in a live table of 256 virtual-key states as
//   the events are pumped, so input injected into SDL's queue counts exactly
//   like real input (SDL's own polled state ignores pushed events);
// - the cursor is in window pixels wherever it is, as the desktop reports
//   it: from motion events inside the window, and from the system pointer
//   whenever that moves (outside the window SDL sends no motion at all and
//   clamps the last position it sent to the window's edge);
// - closing the window hides it and reports "destroy"; the window object
//   itself lives until exit so the GL context stays valid for the orderly
//   shutdown that follows;
// - the clock is SDL's performance counter.
//
// Depends on: SDL2. Limits: one window, one OpenGL context.
#include "VXPlatform.h"

#include <SDL.h>

#include <cstring>

#include "VXInput.h"

namespace {

SDL_Window* sWindow = nullptr;
SDL_GLContext sContext = nullptr;
unsigned char sKeys[256];
int sCursorX = 0;
int sCursorY = 0;
// Cursor motion pushed by the input seam carries this mouse id. Once such
// motion has arrived the seam drives the cursor for good: the real pointer
// (of a display other windows share, under tests) no longer moves it.
constexpr Uint32 kSeamMouse = 0x5EA3;
bool sSeamDrivesCursor = false;
int sPointerX = 0; // the system pointer on the screen when it was last looked at
int sPointerY = 0;
int sCursorShowCount = 0; // the desktop's display counter: shown while >= 0

uint64_t RealCounter(void) {
    return SDL_GetPerformanceCounter();
}
uint64_t RealFrequency(void) {
    return SDL_GetPerformanceFrequency();
}
void RealSpin(void) {
}

// The virtual-key code for an SDL key; 0 when the game has no use for it.
unsigned char VirtualKeyFromSDL(SDL_Keycode key) {
    if (key >= SDLK_a && key <= SDLK_z) return (unsigned char)('A' + (key - SDLK_a));
    if (key >= SDLK_0 && key <= SDLK_9) return (unsigned char)('0' + (key - SDLK_0));
    if (key >= SDLK_F1 && key <= SDLK_F12) return (unsigned char)(112 + (key - SDLK_F1));
    switch (key) {
    case SDLK_ESCAPE:
        return 27;
    case SDLK_SPACE:
        return 32;
    case SDLK_RETURN:
    case SDLK_KP_ENTER:
        return 13;
    case SDLK_TAB:
        return 9;
    case SDLK_BACKSPACE:
        return 8;
    case SDLK_LEFT:
        return 37;
    case SDLK_UP:
        return 38;
    case SDLK_RIGHT:
        return 39;
    case SDLK_DOWN:
        return 40;
    case SDLK_LSHIFT:
    case SDLK_RSHIFT:
        return 16;
    case SDLK_LCTRL:
    case SDLK_RCTRL:
        return 17;
    case SDLK_LALT:
    case SDLK_RALT:
        return 18;
    default:
        return 0;
    }
}

// The SDL key for a virtual-key code (the inverse of the table above).
SDL_Keycode SDLKeyFromVirtual(unsigned char vk) {
    if (vk >= 'A' && vk <= 'Z') return SDLK_a + (vk - 'A');
    if (vk >= '0' && vk <= '9') return SDLK_0 + (vk - '0');
    if (vk >= 112 && vk <= 123) return SDLK_F1 + (vk - 112);
    switch (vk) {
    case 27:
        return SDLK_ESCAPE;
    case 32:
        return SDLK_SPACE;
    case 13:
        return SDLK_RETURN;
    case 9:
        return SDLK_TAB;
    case 8:
        return SDLK_BACKSPACE;
    case 37:
        return SDLK_LEFT;
    case 38:
        return SDLK_UP;
    case 39:
        return SDLK_RIGHT;
    case 40:
        return SDLK_DOWN;
    case 16:
        return SDLK_LSHIFT;
    case 17:
        return SDLK_LCTRL;
    case 18:
        return SDLK_LALT;
    default:
        return SDLK_UNKNOWN;
    }
}

unsigned char VirtualKeyFromButton(Uint8 button) {
    switch (button) {
    case SDL_BUTTON_LEFT:
        return 1;
    case SDL_BUTTON_RIGHT:
        return 2;
    case SDL_BUTTON_MIDDLE:
        return 4;
    default:
        return 0;
    }
}

Uint8 ButtonFromVirtualKey(unsigned char vk) {
    switch (vk) {
    case 1:
        return SDL_BUTTON_LEFT;
    case 2:
        return SDL_BUTTON_RIGHT;
    case 4:
        return SDL_BUTTON_MIDDLE;
    default:
        return 0;
    }
}

Uint32 WindowId(void) {
    return sWindow ? SDL_GetWindowID(sWindow) : 0;
}

// Takes the system pointer's position relative to the client area when the
// pointer has moved since it was last looked at, or always when the window
// has moved under it. Injected motion does not move the system pointer, so
// an injected position stands until a real mouse (or the window) moves;
// once the seam drives the cursor, the system pointer is not looked at.
void FollowSystemPointer(bool always) {
    if (!sWindow || sSeamDrivesCursor) return;
    int x = 0, y = 0;
    SDL_GetGlobalMouseState(&x, &y);
    if (!always && x == sPointerX && y == sPointerY) return;
    sPointerX = x;
    sPointerY = y;
    int left = 0, top = 0;
    SDL_GetWindowPosition(sWindow, &left, &top);
    sCursorX = x - left;
    sCursorY = y - top;
}

} // namespace

const VXPlatformClock gVXPlatformRealClock = {RealCounter, RealFrequency, RealSpin};
VXPlatformClock gVXPlatformClock = gVXPlatformRealClock;

// Starts SDL's video and timer parts once.
bool VXPlatformInit(void) {
    if (SDL_WasInit(SDL_INIT_VIDEO)) return true;
    // The game draws its own cursor and reads keys as plain key states.
    SDL_SetHint(SDL_HINT_VIDEO_MINIMIZE_ON_FOCUS_LOSS, "0");
    if (SDL_Init(SDL_INIT_VIDEO | SDL_INIT_TIMER | SDL_INIT_EVENTS) != 0) return false;
    SDL_StopTextInput();
    std::memset(sKeys, 0, sizeof sKeys);
    return true;
}

// Opens a window whose client area is width x height at (x, y), not yet
// showing a picture: the GL context comes next.
bool VXPlatformWindowCreate(const char* title, int x, int y, int width, int height) {
    if (!VXPlatformInit()) return false;
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 2);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 0);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    SDL_GL_SetAttribute(SDL_GL_RED_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_GREEN_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_BLUE_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_ALPHA_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
    SDL_GL_SetAttribute(SDL_GL_STENCIL_SIZE, 8);
    sWindow = SDL_CreateWindow(title, x, y, width, height, SDL_WINDOW_OPENGL | SDL_WINDOW_SHOWN);
    // Where the pointer is now is the start: only its moves count.
    SDL_GetGlobalMouseState(&sPointerX, &sPointerY);
    return sWindow != nullptr;
}

// Creates the OpenGL context on the window and makes it current.
bool VXPlatformContextCreate(void) {
    if (!sWindow) return false;
    sContext = SDL_GL_CreateContext(sWindow);
    if (!sContext) return false;
    SDL_GL_MakeCurrent(sWindow, sContext);
    SDL_GL_SetSwapInterval(0); // the frame-rate controller paces the game
    return true;
}

void VXPlatformContextDestroy(void) {
    if (sContext) SDL_GL_DeleteContext(sContext);
    sContext = nullptr;
}

void VXPlatformWindowDestroy(void) {
    if (sWindow) SDL_DestroyWindow(sWindow);
    sWindow = nullptr;
}

// Leaves SDL; the next VXPlatformInit starts it afresh.
void VXPlatformExit(void) {
    VXPlatformContextDestroy();
    VXPlatformWindowDestroy();
    SDL_Quit();
}

void* VXPlatformWindowHandle(void) {
    return sWindow;
}

void VXPlatformSetTitle(const char* text) {
    if (sWindow && text) SDL_SetWindowTitle(sWindow, text);
}

// Installs an RGBA picture (top row first) as the window's icon.
bool VXPlatformSetIcon(const unsigned char* rgba, int width, int height) {
    if (!sWindow || !rgba) return false;
    SDL_Surface* surface = SDL_CreateRGBSurfaceWithFormatFrom(
        const_cast<unsigned char*>(rgba), width, height, 32, width * 4, SDL_PIXELFORMAT_RGBA32);
    if (!surface) return false;
    SDL_SetWindowIcon(sWindow, surface);
    SDL_FreeSurface(surface);
    return true;
}

// The primary screen's size in pixels.
void VXPlatformScreenSize(int* width, int* height) {
    SDL_DisplayMode mode;
    if (SDL_GetDesktopDisplayMode(0, &mode) != 0) {
        mode.w = 800;
        mode.h = 600;
    }
    if (width) *width = mode.w;
    if (height) *height = mode.h;
}

// Full screen the way the desktop game always did it: a borderless, topmost
// window placed over the whole primary screen (SDL's own full-screen modes
// leave the X window at its old size when no window manager runs).
// The X server resizes asynchronously: wait (at most a second) until the
// window has its new size so the next frame fills it. Events stay queued for
// the engine's own pump.
void VXPlatformSetFullScreen(bool on, int x, int y, int width, int height) {
    if (!sWindow) return;
    SDL_SetWindowBordered(sWindow, on ? SDL_FALSE : SDL_TRUE);
    if (on) SDL_SetWindowAlwaysOnTop(sWindow, SDL_TRUE); // leaving keeps it topmost, as before
    SDL_SetWindowPosition(sWindow, x, y);
    SDL_SetWindowSize(sWindow, width, height);
    SDL_ShowWindow(sWindow);
    for (Uint32 start = SDL_GetTicks(); SDL_GetTicks() - start < 1000;) {
        SDL_PumpEvents();
        int w = 0, h = 0;
        SDL_GL_GetDrawableSize(sWindow, &w, &h);
        if (w == width && h == height) break;
        SDL_Delay(1);
    }
    // Mesa's software renderer learns a window's new size at a buffer swap:
    // swap once now so the next frame is drawn over the whole window.
    if (sContext) SDL_GL_SwapWindow(sWindow);
}

void VXPlatformSwap(void) {
    if (sWindow) SDL_GL_SwapWindow(sWindow);
}

// Shows or hides the system pointer with the desktop's display counter.
int VXPlatformShowCursor(int show) {
    sCursorShowCount += show ? 1 : -1;
    if (SDL_WasInit(SDL_INIT_VIDEO))
        SDL_ShowCursor(sCursorShowCount >= 0 ? SDL_ENABLE : SDL_DISABLE);
    return sCursorShowCount;
}

// Empties the event queue without waiting.
bool VXPlatformPump(VXSysWindowProc proc) {
    bool switchScreenMode = false;
    SDL_Event e;
    while (SDL_PollEvent(&e)) {
        switch (e.type) {
        case SDL_KEYDOWN:
        case SDL_KEYUP: {
            unsigned char vk = VirtualKeyFromSDL(e.key.keysym.sym);
            if (e.type == SDL_KEYDOWN && !e.key.repeat) {
                // Alt is read from the live table as well as from SDL's own
                // modifier state, which injected events do not carry.
                const bool alt = (sKeys[VX_KEY_MENU] & 0x80) || (e.key.keysym.mod & KMOD_ALT);
                if (vk == VX_KEY_F1 + 10 || (vk == VX_KEY_RETURN && alt))
                    switchScreenMode = !switchScreenMode;
            }
            if (vk) sKeys[vk] = e.type == SDL_KEYDOWN ? 0x80 : 0;
            break;
        }
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP: {
            unsigned char vk = VirtualKeyFromButton(e.button.button);
            if (vk) sKeys[vk] = e.type == SDL_MOUSEBUTTONDOWN ? 0x80 : 0;
            break;
        }
        case SDL_MOUSEMOTION:
            if (e.motion.which == kSeamMouse)
                sSeamDrivesCursor = true;
            else if (sSeamDrivesCursor)
                break;
            sCursorX = e.motion.x;
            sCursorY = e.motion.y;
            break;
        case SDL_QUIT:
            // The window's close box: the window goes away at once, the game
            // finishes its frame and shuts down in order.
            if (sWindow) SDL_HideWindow(sWindow);
            if (proc) proc(VX_SYS_MSG_DESTROY, 0);
            break;
        case SDL_WINDOWEVENT:
            if (e.window.windowID != WindowId()) break;
            switch (e.window.event) {
            case SDL_WINDOWEVENT_MOVED:
                if (proc) proc(VX_SYS_MSG_MOVE, 0);
                break;
            case SDL_WINDOWEVENT_FOCUS_GAINED:
                if (proc) proc(VX_SYS_MSG_ACTIVATE, 1);
                break;
            case SDL_WINDOWEVENT_FOCUS_LOST:
                if (proc) proc(VX_SYS_MSG_ACTIVATE, 0);
                break;
            case SDL_WINDOWEVENT_EXPOSED:
                if (proc) proc(VX_SYS_MSG_PAINT, 0);
                break;
            default:
                break;
            }
            break;
        default:
            break;
        }
    }
    FollowSystemPointer(false);
    return switchScreenMode;
}

void VXPlatformGetKeyboardState(unsigned char out[256]) {
    std::memcpy(out, sKeys, 256);
}

void VXPlatformGetCursorPos(int* x, int* y) {
    if (x) *x = sCursorX;
    if (y) *y = sCursorY;
}

void VXPlatformRefreshCursor(void) {
    FollowSystemPointer(true);
}

// Forgets every key and the cursor (a new process or a fresh engine start).
void VXPlatformResetInputState(void) {
    std::memset(sKeys, 0, sizeof sKeys);
    sCursorX = sCursorY = 0;
}

void VXPlatformPushKey(unsigned char vk, bool down) {
    SDL_Event e;
    std::memset(&e, 0, sizeof e);
    if (Uint8 button = ButtonFromVirtualKey(vk)) {
        e.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
        e.button.windowID = WindowId();
        e.button.button = button;
        e.button.state = down ? SDL_PRESSED : SDL_RELEASED;
        e.button.clicks = 1;
        e.button.x = sCursorX;
        e.button.y = sCursorY;
    } else {
        SDL_Keycode key = SDLKeyFromVirtual(vk);
        if (key == SDLK_UNKNOWN) return;
        e.type = down ? SDL_KEYDOWN : SDL_KEYUP;
        e.key.windowID = WindowId();
        e.key.state = down ? SDL_PRESSED : SDL_RELEASED;
        e.key.keysym.sym = key;
        e.key.keysym.scancode = SDL_GetScancodeFromKey(key);
    }
    SDL_PushEvent(&e);
}

void VXPlatformPushCursor(int x, int y) {
    SDL_Event e;
    std::memset(&e, 0, sizeof e);
    e.type = SDL_MOUSEMOTION;
    e.motion.which = kSeamMouse;
    e.motion.windowID = WindowId();
    e.motion.x = x;
    e.motion.y = y;
    SDL_PushEvent(&e);
}

void VXPlatformPushClose(void) {
    SDL_Event e;
    std::memset(&e, 0, sizeof e);
    e.type = SDL_QUIT;
    SDL_PushEvent(&e);
}

// The one table of key names that scripts and tools use, named after the
// desktop's virtual keys: "lbutton", "rbutton", "mbutton" are the mouse
// buttons and "left", "up", "right", "down" the arrow keys; also "escape"
// (or "esc"), "space", "enter" (or "return"), "tab", "backspace", "shift",
// "ctrl" (or "control"), "alt", "f1".."f12", one letter or one digit. Case
// does not matter.
unsigned char VXPlatformVirtualKeyFromName(const char* name) {
    static const struct {
        const char* name;
        unsigned char vk;
    } kNames[] = {
        {"lbutton", 1}, {"rbutton", 2}, {"mbutton", 4}, {"backspace", 8}, {"tab", 9},
        {"enter", 13},  {"return", 13}, {"shift", 16},  {"ctrl", 17},     {"control", 17},
        {"alt", 18},    {"escape", 27}, {"esc", 27},    {"space", 32},    {"left", 37},
        {"up", 38},     {"right", 39},  {"down", 40},   {"f1", 112},      {"f2", 113},
        {"f3", 114},    {"f4", 115},    {"f5", 116},    {"f6", 117},      {"f7", 118},
        {"f8", 119},    {"f9", 120},    {"f10", 121},   {"f11", 122},     {"f12", 123},
    };
    if (!name || !*name) return 0;
    if (!name[1]) {
        char c = name[0];
        if (c >= 'a' && c <= 'z') return (unsigned char)(c - 'a' + 'A');
        if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) return (unsigned char)c;
        return 0;
    }
    for (const auto& k : kNames)
        if (SDL_strcasecmp(k.name, name) == 0) return k.vk;
    return 0;
}
