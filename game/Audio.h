// The sound bank: sound systems, the sounds of the game and the six channel
// slots (arrow, ambience, final wave, menu, lose, win).
#pragma once

// The main loop's own sound system object (created at start-up, released at
// shutdown). A failure to create it ends the program with status -1.
void AudioMainSystemCreate(void);
void AudioMainSystemRelease(void);
// Pauses or resumes the six channel slots (the main loop's pause rule).
void AudioChannelsSetPaused(bool paused);
