// The sound generator's building blocks against answers worked out by
// hand: the filters and the small-speaker curve against Butterworth
// responses, the loop join, the limiter, the loudness meter against
// reference tones, the final mix of each family, the envelopes.
#include "../tools/soundgen/Mastering.cpp"
#include "../tools/soundgen/SoundManifest.h"
#include "../tools/soundgen/Synth.cpp"

#include <gtest/gtest.h>

#include <cmath>

// The low-pass filter against the analytic response of a second-order
// Butterworth under the bilinear transform, 1 / sqrt(1 + (w / wc)^4) with
// w = tan(pi f / rate): DC passes, the cutoff is 3 dB down, a decade above
// is about 40 dB down. Measured with a sine after the filter has settled.
TEST(SoundSynth, LowPassFollowsButterworth) {
    struct Case {
        const char* name;
        double frequency;
    };
    const Case cases[] = {{"well below", 100},
                          {"half the cutoff", 500},
                          {"at the cutoff", 1000},
                          {"two octaves above", 4000},
                          {"a decade above", 10000}};
    const double cutoff = 1000, rate = 44100;
    for (const Case& c : cases) {
        Svf filter;
        double sum = 0;
        const int n = 44100, settle = 22050;
        for (int i = 0; i < n; ++i) {
            float y =
                filter.Low(float(std::sin(2 * M_PI * c.frequency * i / rate)), cutoff, 0.7071068);
            if (i >= settle) sum += double(y) * y;
        }
        double measured = 10 * std::log10(sum / (n - settle) / 0.5);
        double ratio = std::tan(M_PI * c.frequency / rate) / std::tan(M_PI * cutoff / rate);
        double expected = -10 * std::log10(1 + std::pow(ratio, 4));
        EXPECT_NEAR(measured, expected, 0.05) << c.name;
    }
}

// Joining a rising ramp (sample i holds i) of 1000 + 100 samples into a
// 1000-sample loop: the end is untouched (999) and the first sample is
// almost entirely the ramp's continuation (1000 * cos(pi / 400) = 999.97),
// so the loop steps from 999 to about 1000 like every other sample.
TEST(SoundSynth, LoopJoinContinuesTheTail) {
    Buffer b = MakeBuffer(1100);
    for (int i = 0; i < 1100; ++i) b.left[i] = b.right[i] = float(i);
    MakeSeamlessLoop(b, 1000, 100);
    ASSERT_EQ(b.left.size(), 1000u);
    EXPECT_FLOAT_EQ(b.left[999], 999.0f);
    EXPECT_NEAR(b.left[0], 999.97, 0.01);
    // Sample 50 sits at fade position 0.505: weights sin(0.505 pi / 2) =
    // 0.7127 on the head and cos(0.505 pi / 2) = 0.7015 on the tail, so
    // 50 * 0.7127 + 1050 * 0.7015 = 772.2.
    EXPECT_NEAR(b.left[50], 772.2, 0.2);
    EXPECT_FLOAT_EQ(b.left[100], 100.0f);
}

// The limiter holds a lone spike under the ceiling; treating the sound as
// a loop it also eases the gain at the far end, which plays right before
// the spike, while a one-shot leaves its far end alone.
TEST(SoundSynth, LimiterHoldsCeilingAndWraps) {
    struct Case {
        const char* name;
        bool circular;
        bool endTouched;
    };
    const Case cases[] = {{"loop", true, true}, {"one-shot", false, false}};
    for (const Case& c : cases) {
        Buffer b = MakeBuffer(44100);
        for (int i = 0; i < 44100; ++i) b.left[i] = b.right[i] = 0.05f;
        b.left[0] = 1.0f;
        Limit(b, -6.0, c.circular);
        EXPECT_LE(b.left[0], 0.5012f) << c.name;
        EXPECT_FLOAT_EQ(b.left[22050], 0.05f) << c.name << ": far from the spike";
        EXPECT_EQ(b.left[44099] < 0.05f, c.endTouched) << c.name << ": " << b.left[44099];
    }
}

// Mastering brings very different sounds to their family's loudness under
// the same ceiling: quiet noise with loud clicks as an ambience, a
// full-scale sine as music, and a short burst in silence as an effect,
// judged by its loudest moment. Silence stays silence.
TEST(SoundSynth, MasterLevelsEachFamilyUnderTheCeiling) {
    struct Case {
        const char* name;
        int signal;
        SoundKind kind;
        double loudness;
    };
    const Case cases[] = {{"noise with clicks", 0, SoundKind::Loop, -23.0},
                          {"loud sine", 1, SoundKind::Music, -18.0},
                          {"short burst", 2, SoundKind::OneShot, -14.0}};
    for (const Case& c : cases) {
        Buffer b = MakeBuffer(44100);
        Rng rng(3);
        for (int i = 0; i < 44100; ++i) {
            float v = 0;
            if (c.signal == 0) v = 0.01f * rng.White() + (i % 5000 == 0 ? 0.9f : 0.0f);
            if (c.signal == 1) v = float(std::sin(2 * M_PI * 440 * i / 44100.0));
            if (c.signal == 2 && i >= 10000 && i < 14410) v = 0.3f * rng.White();
            b.left[i] = b.right[i] = v;
        }
        Master(b, c.kind);
        EXPECT_LE(PeakDb(b), -2.0 + 1e-4) << c.name;
        EXPECT_NEAR(LoudnessOf(b, c.kind), c.loudness, 0.5) << c.name;
    }
    Buffer silence = MakeBuffer(44100);
    Master(silence, SoundKind::Loop);
    // Every sample exactly zero: a gain worked out from no loudness at all
    // would turn them into NaN, which a peak reading would not show.
    for (float v : silence.left) ASSERT_EQ(v, 0.0f) << "silence came out as " << v;
}

// A loop is mastered round its seam: a spike on its first sample eases the
// gain of its last samples too, which play just before it; the end of a
// piece of music is left alone. A quiet 1 kHz square wave shows the gain
// on every sample.
TEST(SoundSynth, MasterLimitsLoopsRoundTheSeam) {
    struct Case {
        const char* name;
        SoundKind kind;
        bool endEased;
    };
    const Case cases[] = {{"ambience loop", SoundKind::Loop, true},
                          {"music", SoundKind::Music, false}};
    for (const Case& c : cases) {
        Buffer in = MakeBuffer(44100);
        for (int i = 0; i < 44100; ++i) in.left[i] = in.right[i] = (i / 22) % 2 ? 0.05f : -0.05f;
        in.left[0] = in.right[0] = 1.0f;
        Buffer out = in;
        Master(out, c.kind);
        double middle = out.left[22050] / in.left[22050], end = out.left[44099] / in.left[44099];
        EXPECT_EQ(end < 0.99 * middle, c.endEased)
            << c.name << ": gain " << end << " at the end, " << middle << " in the middle";
    }
}

// The generator's meter against tones whose loudness follows from the
// standard's calibration by hand: a 997 Hz sine peaking at 0.1 (-20 dBFS)
// in both channels reads -20.0 LUFS, in one channel 3 dB less (-23.0); a
// 0.2 s burst of it fills half of the loudest 400 ms window (-23.0).
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
            b.left[i] = float(0.1 * std::sin(2 * M_PI * 997 * double(i) / 44100.0));
            if (c.bothChannels) b.right[i] = b.left[i];
        }
        if (!std::isnan(c.integrated)) {
            EXPECT_NEAR(IntegratedLoudness(b), c.integrated, 0.05) << c.name;
        }
        EXPECT_NEAR(LoudestMomentaryLoudness(b), c.loudestMomentary, 0.05) << c.name;
    }
}

// The small-speaker curve: two second-order Butterworth high-passes at
// 150 Hz give r^4 / (1 + r^4) with r the bilinear-warped frequency ratio,
// worked out here for each row: two octaves below -48.2 dB, one octave
// below -24.6 dB, at the corner -6.02 dB, an octave above -0.53 dB,
// 1 kHz -0.004 dB.
TEST(SoundSynth, SmallSpeakerCurve) {
    struct Case {
        double frequency, expectedDb, toleranceDb;
    };
    const Case cases[] = {{37.5, -48.2, 0.2},
                          {75, -24.61, 0.05},
                          {150, -6.02, 0.05},
                          {300, -0.53, 0.05},
                          {1000, -0.004, 0.02}};
    for (const Case& c : cases) {
        Buffer b = MakeBuffer(Frames(2.0));
        for (std::size_t i = 0; i < b.left.size(); ++i)
            b.left[i] = b.right[i] = float(std::sin(2 * M_PI * c.frequency * double(i) / 44100.0));
        Buffer out = SmallSpeaker(b);
        double in = 0, got = 0;
        for (std::size_t i = Frames(1.0); i < out.left.size(); ++i) {
            in += double(b.left[i]) * b.left[i];
            got += double(out.left[i]) * out.left[i];
        }
        double measured = 10 * std::log10(got / in);
        EXPECT_NEAR(measured, c.expectedDb, c.toleranceDb)
            << c.frequency << " Hz: expected " << c.expectedDb << " dB, got " << measured;
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
