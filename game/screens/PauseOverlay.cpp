// The pause overlay. Its buttons come with the overlay screens; the flags are
// already read by the main loop.
#include "PauseOverlay.h"

bool gPaused = false;
bool gConfirmOpen = false;
bool gOptionsOpen = false;
bool gHelpShown = false;

void RunPauseOverlay(void) {
}
