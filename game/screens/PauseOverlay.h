// The pause menu, the options panel and the confirmation dialog drawn over a
// screen's picture.
#pragma once

extern bool gPaused;
extern bool gConfirmOpen;
extern bool gOptionsOpen;
extern bool gHelpShown;

void RunPauseOverlay(void);
