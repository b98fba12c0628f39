// The sound generator's building blocks against answers worked out by
// hand: the filters and the small-speaker curve against Butterworth
// responses, the loop join, the limiter, the loudness meter against
// reference tones, the final mix of each family, the envelopes.
#include "../tools/soundgen/Mastering.cpp"
#include "../tools/soundgen/SoundManifest.h"
#include "../tools/soundgen/Synth.cpp"

#include <gtest/gtest.h>

#include <cmath>

namespace {

// A buffer of `seconds` with the same sample(i) in both channels.
template <class F> Buffer Signal(double seconds, F sample) {
    Buffer b = MakeBuffer(Frames(seconds));
    for (std::size_t i = 0; i < b.left.size(); ++i) b.left[i] = b.right[i] = float(sample(i));
    return b;
}

double Sine(double frequency, std::size_t i) {
    return std::sin(2 * M_PI * frequency * double(i) / 44100.0);
}

} // namespace

// Filters against the analytic response of a second-order Butterworth under
// the bilinear transform, with r = tan(pi f / rate) / tan(pi fc / rate): the
// 1 kHz low-pass 1 / (1 + r^4) in power (-0.26 dB at 500 Hz, -3.01 at the
// cutoff, -24.55 at 4 kHz, -43.32 at 10 kHz); the small-speaker curve, two
// high-passes at 150 Hz, r^4 / (1 + r^4) squared: two octaves below
// -48.2 dB, one below -24.6, at the corner -6.02, an octave above -0.53,
// 1 kHz -0.004. Measured with sines over the second second.
TEST(SoundSynth, LowPassAndSmallSpeakerFollowButterworth) {
    struct Case {
        bool smallSpeaker;
        double frequency, expectedDb, toleranceDb;
    };
    const Case cases[] = {{false, 100, -0.0004, 0.05},   {false, 500, -0.262, 0.05},
                          {false, 1000, -3.010, 0.05},   {false, 4000, -24.548, 0.05},
                          {false, 10000, -43.316, 0.05}, {true, 37.5, -48.2, 0.2},
                          {true, 75, -24.61, 0.05},      {true, 150, -6.02, 0.05},
                          {true, 300, -0.53, 0.05},      {true, 1000, -0.004, 0.02}};
    for (const Case& c : cases) {
        Buffer in = Signal(2.0, [&](std::size_t i) { return Sine(c.frequency, i); });
        Buffer out = in;
        if (c.smallSpeaker) {
            out = SmallSpeaker(in);
        } else {
            Svf filter;
            for (float& v : out.left) v = filter.Low(v, 1000, 0.7071068);
        }
        double before = 0, after = 0;
        for (std::size_t i = Frames(1.0); i < out.left.size(); ++i) {
            before += double(in.left[i]) * in.left[i];
            after += double(out.left[i]) * out.left[i];
        }
        double measured = 10 * std::log10(after / before);
        EXPECT_NEAR(measured, c.expectedDb, c.toleranceDb)
            << (c.smallSpeaker ? "small speaker" : "low-pass") << " at " << c.frequency
            << " Hz: expected " << c.expectedDb << " dB, got " << measured;
    }
}

// Joining a rising ramp (sample i holds i) of 1000 + 100 samples into a
// 1000-sample loop: the end is untouched (999), the first sample almost all
// the ramp's continuation (1000 cos(pi / 400) = 999.97), sample 50 at fade
// position 0.505 is 50 sin(0.505 pi / 2) + 1050 cos(0.505 pi / 2) = 772.2.
TEST(SoundSynth, LoopJoinContinuesTheTail) {
    Buffer b = MakeBuffer(1100);
    for (int i = 0; i < 1100; ++i) b.left[i] = b.right[i] = float(i);
    MakeSeamlessLoop(b, 1000, 100);
    ASSERT_EQ(b.left.size(), 1000u);
    EXPECT_FLOAT_EQ(b.left[999], 999.0f);
    EXPECT_NEAR(b.left[0], 999.97, 0.01);
    EXPECT_NEAR(b.left[50], 772.2, 0.2);
    EXPECT_FLOAT_EQ(b.left[100], 100.0f);
}

// The limiter holds a lone spike under the ceiling and leaves samples far
// from it alone; for a loop it also eases the far end, which plays right
// before the spike, while a one-shot's far end is untouched.
TEST(SoundSynth, LimiterHoldsCeilingAndWraps) {
    for (bool circular : {true, false}) {
        Buffer b = Signal(1.0, [](std::size_t i) { return i == 0 ? 1.0 : 0.05; });
        Limit(b, -6.0, circular);
        EXPECT_LE(b.left[0], 0.5012f) << circular;
        EXPECT_FLOAT_EQ(b.left[22050], 0.05f) << circular << ": far from the spike";
        EXPECT_EQ(b.left[44099] < 0.05f, circular) << circular << ": " << b.left[44099];
    }
}

// Mastering brings very different sounds to their family's loudness under
// the -2 dBFS ceiling: quiet noise with loud clicks as an ambience, a
// full-scale sine as music, a short burst in silence as an effect, judged by
// its loudest moment. A loop is limited round its seam: a spike on its first
// sample eases the gain of its last samples too (a quiet 1 kHz square wave
// shows the gain on every sample); music's end is left alone.
TEST(SoundSynth, MasterLevelsEachFamilyAndLimitsLoopsRoundTheSeam) {
    struct Case {
        const char* name;
        SoundKind kind;
        double loudness;
    };
    const Case cases[] = {{"noise with clicks", SoundKind::Loop, -23.0},
                          {"loud sine", SoundKind::Music, -18.0},
                          {"short burst", SoundKind::OneShot, -14.0}};
    for (const Case& c : cases) {
        Rng rng(3);
        Buffer b = Signal(1.0, [&](std::size_t i) -> double {
            if (c.kind == SoundKind::Loop) return 0.01f * rng.White() + (i % 5000 ? 0.0f : 0.9f);
            if (c.kind == SoundKind::Music) return Sine(440, i);
            return i >= 10000 && i < 14410 ? 0.3f * rng.White() : 0.0f;
        });
        Master(b, c.kind);
        EXPECT_LE(PeakDb(b), -2.0 + 1e-4) << c.name;
        EXPECT_NEAR(LoudnessOf(b, c.kind), c.loudness, 0.5) << c.name;
        if (c.kind == SoundKind::OneShot) continue;
        Buffer in = Signal(1.0, [](std::size_t i) {
            return i == 0 ? 1.0 : (i / 22) % 2 ? 0.05 : -0.05;
        });
        Buffer out = in;
        Master(out, c.kind);
        double middle = out.left[22050] / in.left[22050], end = out.left[44099] / in.left[44099];
        EXPECT_EQ(end < 0.99 * middle, c.kind == SoundKind::Loop)
            << c.name << ": gain " << end << " at the end, " << middle << " in the middle";
    }
    // Silence stays exactly zero: a gain worked out from no loudness at all
    // would turn it into NaN, which a peak reading would not show.
    Buffer silence = MakeBuffer(44100);
    Master(silence, SoundKind::Loop);
    for (float v : silence.left) ASSERT_EQ(v, 0.0f) << "silence came out as " << v;
}

// The meter against tones whose loudness follows from the standard's
// calibration: a 997 Hz sine peaking at 0.1 (-20 dBFS) in both channels
// reads -20.0 LUFS, in one channel 3 dB less; a 0.2 s burst of it fills half
// of the loudest 400 ms window (-23.0).
TEST(SoundSynth, MeterReadsReferenceTones) {
    struct Case {
        const char* name;
        bool bothChannels;
        double from, to; // seconds of tone in five of silence
        double integrated, loudestMomentary;
    };
    const Case cases[] = {
        {"steady, both channels", true, 0.0, 5.0, -20.0, -20.0},
        {"steady, left only", false, 0.0, 5.0, -23.01, -23.01},
        {"0.2 s burst, both channels", true, 1.0, 1.2, NAN, -23.01},
    };
    for (const Case& c : cases) {
        Buffer b = MakeBuffer(Frames(5.0));
        for (std::size_t i = Frames(c.from); i < Frames(c.to); ++i) {
            b.left[i] = float(0.1 * Sine(997, i));
            if (c.bothChannels) b.right[i] = b.left[i];
        }
        if (!std::isnan(c.integrated)) {
            EXPECT_NEAR(IntegratedLoudness(b), c.integrated, 0.05) << c.name;
        }
        EXPECT_NEAR(LoudestMomentaryLoudness(b), c.loudestMomentary, 0.05) << c.name;
    }
}

// Envelope shapes at the points that define them: full at the end of the
// attack, 60 dB down one decay time later, a bell full in its middle.
TEST(SoundSynth, EnvelopeLandmarks) {
    EXPECT_DOUBLE_EQ(AttackDecay(-0.1, 0.01, 1.0), 0.0);
    EXPECT_NEAR(AttackDecay(0.01, 0.01, 1.0), 1.0, 1e-9);
    EXPECT_NEAR(AttackDecay(1.01, 0.01, 1.0), 0.001, 1e-6);
    EXPECT_NEAR(Bell(0.5, 1.0), 1.0, 1e-12);
    EXPECT_NEAR(Bell(0.25, 1.0), 0.5, 1e-12);
    EXPECT_DOUBLE_EQ(Bell(1.0, 1.0), 0.0);
}
