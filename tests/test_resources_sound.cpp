// CTest label: tools
// The generated sound set: every file the game opens exists after a build,
// decodes as 44.1 kHz stereo Vorbis, has a fitting length, loops without a
// click, peaks below -1 dBFS, sits at the common loudness, and comes out
// byte for byte the same from two runs of the generator. The generator's
// building blocks (filters, loop join, limiter, envelopes) are compiled in
// here too and checked against answers worked out by hand.
#include "../tools/soundgen/SoundManifest.h"
#include "../tools/soundgen/Synth.cpp"
#include "TestSupport.h"

#include <gtest/gtest.h>
#include <vorbis/vorbisfile.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

struct Decoded {
    bool ok = false;
    long rate = 0;
    int channels = 0;
    std::vector<float> left, right;
};

// Decodes a whole file with libvorbisfile.
Decoded Decode(const std::string& path) {
    Decoded d;
    OggVorbis_File vf;
    if (ov_fopen(path.c_str(), &vf) != 0) return d;
    vorbis_info* info = ov_info(&vf, -1);
    d.rate = info->rate;
    d.channels = info->channels;
    ogg_int64_t total = ov_pcm_total(&vf, -1);
    if (total > 0) {
        d.left.reserve(std::size_t(total));
        d.right.reserve(std::size_t(total));
    }
    int section = 0;
    for (;;) {
        float** pcm = nullptr;
        long n = ov_read_float(&vf, &pcm, 4096, &section);
        if (n < 0) {
            ov_clear(&vf);
            return d;
        }
        if (n == 0) break;
        for (long i = 0; i < n; ++i) {
            d.left.push_back(pcm[0][i]);
            d.right.push_back(pcm[d.channels > 1 ? 1 : 0][i]);
        }
    }
    ov_clear(&vf);
    d.ok = true;
    return d;
}

struct Header {
    bool ok = false;
    long rate = 0;
    int channels = 0;
    double seconds = 0;
};

// Reads rate, channels and exact length without decoding the audio.
Header ReadHeader(const std::string& path) {
    Header h;
    OggVorbis_File vf;
    if (ov_fopen(path.c_str(), &vf) != 0) return h;
    vorbis_info* info = ov_info(&vf, -1);
    ogg_int64_t frames = ov_pcm_total(&vf, -1);
    h.ok = info && frames > 0;
    if (h.ok) {
        h.rate = info->rate;
        h.channels = info->channels;
        h.seconds = double(frames) / double(info->rate);
    }
    ov_clear(&vf);
    return h;
}

std::string PathOf(const SoundEntry& e) {
    return TestResourcesDir() + "/" + e.file;
}

double ToDb(double linear) {
    return 20.0 * std::log10(std::max(linear, 1e-12));
}

// RMS over the whole of both channels, in dBFS.
double WholeRmsDb(const Decoded& d) {
    double sum = 0;
    for (std::size_t i = 0; i < d.left.size(); ++i)
        sum += double(d.left[i]) * d.left[i] + double(d.right[i]) * d.right[i];
    return ToDb(std::sqrt(sum / (2.0 * double(d.left.size()))));
}

// Loudest RMS of any window of the given length, in dBFS.
double LoudestWindowDb(const Decoded& d, std::size_t window) {
    double best = 0;
    for (std::size_t start = 0; start + window <= d.left.size(); start += window / 8) {
        double sum = 0;
        for (std::size_t i = start; i < start + window; ++i)
            sum += double(d.left[i]) * d.left[i] + double(d.right[i]) * d.right[i];
        best = std::max(best, sum / (2.0 * double(window)));
    }
    return ToDb(std::sqrt(best));
}

// How the step from the last sample back to the first compares with the
// signal's own steps near the seam: the 99.9th percentile of the
// sample-to-sample changes in half a second on either side. Above 1 is a
// click the ear would catch.
double SeamJumpRatio(const std::vector<float>& x) {
    std::size_t n = x.size(), span = std::min<std::size_t>(22050, n / 2 - 1);
    std::vector<float> steps;
    for (std::size_t i = 0; i < span; ++i) {
        steps.push_back(std::fabs(x[i + 1] - x[i]));
        steps.push_back(std::fabs(x[n - 1 - i] - x[n - 2 - i]));
    }
    std::size_t k = steps.size() * 999 / 1000;
    std::nth_element(steps.begin(), steps.begin() + long(k), steps.end());
    double typical = std::max(double(steps[k]), 1e-6);
    return std::fabs(double(x[0]) - double(x[n - 1])) / typical;
}

// How the change of level across the seam compares with the changes
// between neighbouring 50 ms blocks inside the sound: above 1 means the
// loop fades, stops or swells at its ends in a way it never does inside.
double SeamLevelRatio(const std::vector<float>& x) {
    const std::size_t block = 2205;
    auto level = [&](std::size_t start) {
        double sum = 1e-12;
        for (std::size_t i = start; i < start + block; ++i) sum += double(x[i]) * x[i];
        return 10.0 * std::log10(sum / double(block));
    };
    double largest = 0.5; // level changes below half a decibel do not count
    for (std::size_t start = block; start + block <= x.size(); start += block)
        largest = std::max(largest, std::fabs(level(start) - level(start - block)));
    return std::fabs(level(0) - level(x.size() - block)) / largest;
}

std::vector<char> ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::vector<char>(std::istreambuf_iterator<char>(in), {});
}

} // namespace

// The seam checks themselves, on loops whose answers are known: a sine of
// a whole number of periods joins perfectly; cut a quarter period short it
// jumps; white noise is as rough at the seam as anywhere else; a sine that
// fades out over its last 100 ms joins without a step but not in level.
TEST(SoundSeamCheck, KnownLoops) {
    struct Case {
        const char* name;
        std::size_t frames;
        bool noise, fadeOut;
        bool smoothStep, steadyLevel;
    };
    const Case cases[] = {
        {"sine of 441 whole periods", 44100, false, false, true, true},
        {"sine cut a quarter period short", 44100 - 25, false, false, false, true},
        {"white noise", 44100, true, false, true, true},
        {"sine fading out at the end", 44100, false, true, true, false},
    };
    std::srand(7);
    for (const Case& c : cases) {
        std::vector<float> x;
        for (std::size_t i = 0; i < c.frames; ++i) {
            double v = c.noise ? double(std::rand()) / RAND_MAX - 0.5
                               : 0.5 * std::sin(2 * M_PI * 441 * double(i) / 44100.0);
            if (c.fadeOut && c.frames - i < 4410) v *= double(c.frames - i) / 4410.0;
            x.push_back(float(v));
        }
        double step = SeamJumpRatio(x), levels = SeamLevelRatio(x);
        EXPECT_EQ(step <= 1.0, c.smoothStep) << c.name << ": step ratio " << step;
        EXPECT_EQ(levels <= 1.0, c.steadyLevel) << c.name << ": level ratio " << levels;
    }
}

// Every sound the game opens is there and decodes at the game's rate, in
// stereo, with a length fit for how it is played.
TEST(SoundResources, EveryFileDecodesWithItsLength) {
    for (const SoundEntry& e : kSoundSet) {
        Decoded d = Decode(PathOf(e));
        ASSERT_TRUE(d.ok) << e.file << " is missing or does not decode";
        EXPECT_EQ(d.rate, kSoundRate) << e.file;
        EXPECT_EQ(d.channels, kSoundChannels) << e.file;
        double seconds = double(d.left.size()) / kSoundRate;
        EXPECT_GE(seconds, e.minSeconds) << e.file;
        EXPECT_LE(seconds, e.maxSeconds) << e.file;
    }
}

// The lengths the game relies on, spelt out: the arrow is short enough for
// rapid fire, the final-wave music lasts a boss fight, the end pieces are
// worth restarting.
TEST(SoundResources, LengthsTheGameNeeds) {
    struct Case {
        const char* file;
        double atLeast, below;
    };
    const Case cases[] = {
        {"24 - Arrow Swoosh.ogg", 0.05, 0.5},
        {"53 - Ice Man.ogg", 120.0, 1e9},
        {"18 - Symphony No 1 in C Major, III Presto.ogg", 30.0, 1e9},
        {"06 - Gypsy Songs for Violin and Orchestra.ogg", 30.0, 1e9},
    };
    for (const Case& c : cases) {
        Header h = ReadHeader(TestResourcesDir() + "/" + c.file);
        ASSERT_TRUE(h.ok) << c.file;
        EXPECT_EQ(h.rate, 44100) << c.file;
        EXPECT_GE(h.seconds, c.atLeast) << c.file;
        EXPECT_LT(h.seconds, c.below) << c.file;
    }
}

// Looped sounds join without a click after the codec: the step across the
// seam is no bigger than the sound's ordinary steps, and the level changes
// across the seam no more than it does anywhere inside the sound.
TEST(SoundResources, LoopsAreSeamless) {
    for (const SoundEntry& e : kSoundSet) {
        if (e.kind != SoundKind::Loop) continue;
        Decoded d = Decode(PathOf(e));
        ASSERT_TRUE(d.ok) << e.file;
        for (const std::vector<float>* ch : {&d.left, &d.right}) {
            double step = SeamJumpRatio(*ch), levels = SeamLevelRatio(*ch);
            EXPECT_LE(step, 1.0) << e.file << ": seam step is " << step << " x the usual";
            EXPECT_LE(levels, 1.0)
                << e.file << ": level change at the seam is " << levels << " x the largest inside";
        }
    }
}

// One loudness for the set (-20 dBFS RMS, +-2.5 dB; loops and music over
// the whole file, the arrow over its loudest 100 ms) and no peak at or
// above -1 dBFS after decoding.
TEST(SoundResources, PeaksAndLoudness) {
    for (const SoundEntry& e : kSoundSet) {
        Decoded d = Decode(PathOf(e));
        ASSERT_TRUE(d.ok) << e.file;
        float peak = 0;
        for (float v : d.left) peak = std::max(peak, std::fabs(v));
        for (float v : d.right) peak = std::max(peak, std::fabs(v));
        EXPECT_LT(ToDb(peak), -1.0) << e.file << ": peak " << ToDb(peak) << " dBFS";
        double level = e.kind == SoundKind::OneShot
                           ? LoudestWindowDb(d, std::size_t(0.1 * kSoundRate))
                           : WholeRmsDb(d);
        EXPECT_NEAR(level, -20.0, 2.5) << e.file << ": loudness " << level << " dBFS";
    }
}

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

// Mastering brings very different sounds to the same level under the same
// ceiling: quiet noise with loud clicks, a full-scale sine, and a short
// burst in silence measured over its loudest 100 ms.
TEST(SoundSynth, MasterLevelsAndCeiling) {
    struct Case {
        const char* name;
        int kind;
        bool oneShot;
    };
    const Case cases[] = {
        {"noise with clicks", 0, false}, {"loud sine", 1, false}, {"short burst", 2, true}};
    for (const Case& c : cases) {
        Buffer b = MakeBuffer(44100);
        Rng rng(3);
        for (int i = 0; i < 44100; ++i) {
            float v = 0;
            if (c.kind == 0) v = 0.01f * rng.White() + (i % 5000 == 0 ? 0.9f : 0.0f);
            if (c.kind == 1) v = float(std::sin(2 * M_PI * 440 * i / 44100.0));
            if (c.kind == 2 && i >= 10000 && i < 14410) v = 0.3f * rng.White();
            b.left[i] = b.right[i] = v;
        }
        Master(b, !c.oneShot, c.oneShot);
        double level = c.oneShot ? PeakWindowRmsDb(b, 4410) : RmsDb(b);
        EXPECT_LE(PeakDb(b), -2.0 + 1e-4) << c.name;
        EXPECT_NEAR(level, -20.0, 1.0) << c.name;
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

#ifdef QUARROW_SOUNDGEN
// Two runs of the generator into fresh folders write identical bytes.
TEST(SoundGenerator, TwoRunsGiveIdenticalFiles) {
    namespace fs = std::filesystem;
    char pattern[] = "/tmp/quarrow-sounds-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    fs::path root = pattern;
    std::string output;
    for (const char* run : {"a", "b"}) {
        int status = TestRunCommand(
            std::string("'") + QUARROW_SOUNDGEN + "' '" + (root / run).string() + "'", output);
        ASSERT_EQ(status, 0) << output;
    }
    for (const SoundEntry& e : kSoundSet) {
        std::vector<char> a = ReadBytes((root / "a" / e.file).string());
        std::vector<char> b = ReadBytes((root / "b" / e.file).string());
        EXPECT_FALSE(a.empty()) << e.file;
        EXPECT_TRUE(a == b) << e.file << " differs between runs (" << a.size() << " and "
                            << b.size() << " bytes)";
    }
    fs::remove_all(root);
}

// A missing SoundFont or a wrong command line ends the generator with an
// error message and a failure status, not a crash.
TEST(SoundGenerator, BadInputFailsCleanly) {
    struct Case {
        const char* name;
        std::string arguments;
    };
    const Case cases[] = {
        {"missing SoundFont", "--soundfont /nonexistent/none.sf2 /tmp/quarrow-never"},
        {"no output folder", ""},
        {"spectrograms without folders", "--spectrograms"},
    };
    for (const Case& c : cases) {
        std::string output;
        int status =
            TestRunCommand(std::string("'") + QUARROW_SOUNDGEN + "' " + c.arguments, output);
        EXPECT_TRUE(status == 1 || status == 2) << c.name << ": status " << status;
        EXPECT_NE(output.find("soundgen"), std::string::npos) << c.name << ": " << output;
    }
}
#endif
