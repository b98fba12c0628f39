// The sound bank. Silent until the sound systems are built.
#include "Audio.h"

void AudioMainSystemCreate(void) {}
void AudioMainSystemRelease(void) {}
void AudioChannelsSetPaused(bool) {}
