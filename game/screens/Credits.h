// Credits: the credits screen (GS_CREDITS). Its state operations are
// declared in GameStates.h; this header names what the screen shows, for
// the tests that watch it scroll and fade.
//
// Depends on: Background. Limits: both change only inside the screen's own
// operations, on the game thread.
#pragma once

#include <memory>

#include "Background.h"

// The tall credits picture, 800 x 8000 units, made anew at every entry.
extern std::unique_ptr<Background> gCreditsPicture;
// The height of the picture's centre: -3400 at entry, then 3 up a frame.
extern int gCreditsScroll;
