// VXFrameRateController: caps the frame rate by spinning on the counter until
// the frame has lasted its minimum time. A spin rather than a sleep: exact
// pacing is worth one busy core. A long frame keeps its whole measured time.
//
// Depends on: VXPlatform's clock table (real, or the virtual clock of VXSeam).
#include "VXFrameRateController.h"

#include "VXPlatform.h"

namespace {

double sMaxFrameRate = 0.0;
double sFrameRate = 0.0;
double sMinFrameTime = 0.0;
double sFrameTime = 0.0;
unsigned sFrameCount = 0;
uint64_t sFrameStart = 0;
uint64_t sFrameEnd = 0;
uint64_t sFrequency = 1;
double sSecondsPerTick = 1.0;

double MinFrameTimeFor(double maxFrameRate) {
    return maxFrameRate > 0.0 ? 1.0 / maxFrameRate : 0.0;
}

} // namespace

void VXFrameRateControllerInit(unsigned frameRate) {
    sFrameCount = 0;
    sMaxFrameRate = (double)frameRate;
    sFrameRate = sMaxFrameRate;
    sMinFrameTime = MinFrameTimeFor(sMaxFrameRate);
    sFrameTime = sMinFrameTime;
    sFrameStart = gVXPlatformClock.counter();
}

void VXFrameRateControllerReset(void) {
    sFrameCount = 0;
    sFrameRate = sMaxFrameRate;
    sMinFrameTime = MinFrameTimeFor(sMaxFrameRate);
    sFrameTime = sMinFrameTime;
}

void VXFrameRateControllerStart(void) {
    sFrequency = gVXPlatformClock.frequency();
    sSecondsPerTick = 1.0 / (double)sFrequency;
    sFrameStart = gVXPlatformClock.counter();
}

void VXFrameRateControllerEnd(void) {
    for (;;) {
        sFrameEnd = gVXPlatformClock.counter();
        sFrameTime = (double)(sFrameEnd - sFrameStart) * sSecondsPerTick;
        if (sFrameTime >= sMinFrameTime) break;
        gVXPlatformClock.spin();
    }
    sFrameRate = 1.0 / sFrameTime;
    ++sFrameCount;
}

double VXFrameRateControllerGetFrameTime(void) {
    return sFrameTime;
}
double VXFrameRateControllerGetFrameRate(void) {
    return sFrameRate;
}
unsigned VXFrameRateControllerGetFrameCount(void) {
    return sFrameCount;
}
