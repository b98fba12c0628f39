// The last step of every sound: how loud it is to a listener (EBU R128
// loudness through libebur128), how it comes over a laptop's small
// speakers, and the mix to its family's loudness under a peak ceiling.
// Depends on Synth.h (Buffer), SoundManifest.h (targets) and libebur128.
// Limits: the limiter is a simple look-ahead gain rider, not a true-peak
// meter; the codec can overshoot a little, hence a ceiling below the limit.
#pragma once

#include "SoundManifest.h"
#include "Synth.h"

// Integrated loudness of the whole buffer in LUFS (gated, as R128 defines
// it, so pauses between events do not pull a sound's loudness down).
double IntegratedLoudness(const Buffer& buffer);
// Loudest momentary loudness (any 400 ms) in LUFS: how loud a short effect
// sounds when it plays.
double LoudestMomentaryLoudness(const Buffer& buffer);
// The loudness a sound of this kind is levelled by: integrated for loops
// and music, the loudest moment for a one-shot effect.
double LoudnessOf(const Buffer& buffer, SoundKind kind);

// The buffer as small speakers play it: everything below kSmallSpeakerHz
// cut at 24 dB per octave (two Butterworth sections, 6 dB down at the
// corner).
Buffer SmallSpeaker(const Buffer& buffer);

// Absolute peak in dBFS.
double PeakDb(const Buffer& buffer);

// Mixes the sound to its family's loudness and holds its peaks under the
// ceiling with a look-ahead limiter whose gain moves smoothly. Loops are
// limited as loops, so the gain matches across the seam.
void Master(Buffer& buffer, SoundKind kind);
