// VXFrameRateController: caps the game at a fixed frame rate by spinning on
// the high-resolution counter until the frame has lasted its minimum time.
//
// Depends on: VXPlatform's clock table (real or the virtual clock of VXSeam).
#pragma once

extern "C" {

void VXFrameRateControllerInit(unsigned frameRate);
void VXFrameRateControllerReset(void);
void VXFrameRateControllerStart(void);
void VXFrameRateControllerEnd(void);
double VXFrameRateControllerGetFrameTime(void);
double VXFrameRateControllerGetFrameRate(void);
unsigned VXFrameRateControllerGetFrameCount(void);

} // extern "C"
