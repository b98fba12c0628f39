// Building blocks of the sound generator: a stereo buffer, a seeded noise
// source, filters whose cutoff may move every sample, envelopes, slow random
// movement, a room reverb and seamless loop joins; the final loudness and
// peak treatment are in Mastering.h. Depends only on the standard library.
// Everything is deterministic: the same seed gives the same samples on every
// run. Limits: 44.1 kHz stereo float only, no resampling.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

inline constexpr double kPi = 3.14159265358979323846;
inline constexpr double kRate = 44100.0;

// A stereo sound in two float channels of equal length.
struct Buffer {
    std::vector<float> left;
    std::vector<float> right;
};

// Makes a silent buffer of the given length in samples.
Buffer MakeBuffer(std::size_t frames);
// Number of samples in seconds, rounded.
std::size_t Frames(double seconds);

// Small fast random generator with a fixed seed (splitmix64).
class Rng {
  public:
    explicit Rng(std::uint64_t seed) : state(seed) {}
    // Next raw 64-bit value.
    std::uint64_t Next();
    // Uniform in [0, 1).
    double Uniform();
    // Uniform in [lo, hi).
    double Range(double lo, double hi) { return lo + (hi - lo) * Uniform(); }
    // Uniform in [-1, 1): white noise.
    float White() { return float(2.0 * Uniform() - 1.0); }

  private:
    std::uint64_t state;
};

// Pink noise (about -3 dB per octave) from white noise, Kellett's filter.
class PinkNoise {
  public:
    explicit PinkNoise(std::uint64_t seed) : rng(seed) {}
    // Next sample, roughly within [-1, 1].
    float Next();

  private:
    Rng rng;
    float b0 = 0, b1 = 0, b2 = 0, b3 = 0, b4 = 0, b5 = 0, b6 = 0;
};

// Brown noise (-6 dB per octave): leaky integrated white noise.
class BrownNoise {
  public:
    explicit BrownNoise(std::uint64_t seed) : rng(seed) {}
    // Next sample, roughly within [-1, 1].
    float Next();

  private:
    Rng rng;
    float y = 0;
};

// State-variable filter (trapezoidal form) that stays stable while its
// cutoff and resonance change every sample, which the wind and waves need.
class Svf {
  public:
    struct Out {
        float low, band, high;
    };
    // Filters one sample at cutoff (Hz) and quality q (0.5 smooth .. 20 ringing).
    Out Process(float x, double cutoff, double q);
    // Convenience forms.
    float Low(float x, double cutoff, double q = 0.707) { return Process(x, cutoff, q).low; }
    float Band(float x, double cutoff, double q) { return Process(x, cutoff, q).band; }
    float High(float x, double cutoff, double q = 0.707) { return Process(x, cutoff, q).high; }

  private:
    double ic1 = 0, ic2 = 0;
    double lastCutoff = -1, lastQ = -1, k = 0, a1 = 0, a2 = 0, a3 = 0;
};

// One-pole low-pass for gentle smoothing.
class OnePole {
  public:
    // Filters one sample with the given cutoff (Hz).
    float Low(float x, double cutoff);

  private:
    double y = 0, a = 0, lastCutoff = -1;
};

// Random value that glides smoothly between new random targets spaced
// `period` seconds apart: slow gusts, swells, drifting cutoffs.
class Drift {
  public:
    Drift(std::uint64_t seed, double periodSeconds, double lo, double hi);
    // Value for the next sample.
    double Next();

  private:
    Rng rng;
    double lo, hi;
    std::size_t period, pos = 0;
    double from, to;
};

// Attack-then-exponential-decay shape at time t (s): rises over `attack`
// with a smooth curve, then falls by 60 dB over `decay`.
double AttackDecay(double t, double attack, double decay);
// Smooth bell from 0 to 1 and back over [0, length] (raised cosine).
double Bell(double t, double length);

// Stereo room reverb: eight parallel damped combs and four all-passes per
// side with a spread between sides (Schroeder-Moorer design).
class Reverb {
  public:
    // room 0..1 (tail length), damping 0..1 (darkness of the tail).
    Reverb(double room, double damping);
    // Adds the reverberated signal of the buffer, scaled by wet, to it.
    void Apply(Buffer& buffer, double wet);

  private:
    struct Comb {
        std::vector<float> line;
        std::size_t pos = 0;
        float store = 0;
    };
    struct AllPass {
        std::vector<float> line;
        std::size_t pos = 0;
    };
    Comb combs[2][8];
    AllPass passes[2][4];
    float feedback, damp;
};

// Pans a mono sample into the buffer at `frame` with constant power
// (pan -1 left .. 1 right). Samples past the end are dropped.
void AddPanned(Buffer& buffer, std::size_t frame, float sample, double pan);

// Turns a render of loopFrames + fadeFrames samples into a seamless loop of
// loopFrames: the extra tail is cross-faded into the head with equal power,
// so the last sample leads straight back into the first.
void MakeSeamlessLoop(Buffer& buffer, std::size_t loopFrames, std::size_t fadeFrames);

// Removes the first `frames` samples (a warm-up so filters and reverb are
// settled when the sound begins).
void DropHead(Buffer& buffer, std::size_t frames);

// Fades the first and last samples to silence (one-shots and music ends).
void FadeEdges(Buffer& buffer, std::size_t fadeInFrames, std::size_t fadeOutFrames);

// Removes any constant offset (low-frequency drift) from both channels.
void RemoveDc(Buffer& buffer);
