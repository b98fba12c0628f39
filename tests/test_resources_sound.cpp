// CTest label: tools
// The generated sound set: every file the game opens decodes as 44.1 kHz
// stereo Vorbis of a fitting length, loops without a click, peaks below
// -1 dBFS, sits at its family's loudness on large and small speakers, leaves
// the arrow clear over every ambience, and comes out byte for byte the same
// from two runs of the generator. Loudness is read with libebur128 directly,
// not through the generator's meter; the generator's small-speaker curve and
// filters (checked in test_sound_synth) stand in for a laptop's speakers.
#include "../tools/soundgen/SoundManifest.h"
#include "../tools/soundgen/Synth.cpp"
#include "../tools/soundgen/Mastering.cpp"
#include "TestSupport.h"

#include <ebur128.h>
#include <gtest/gtest.h>
#include <vorbis/vorbisfile.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace {

// A decoded file: its samples (a Buffer, for the small-speaker curve) and
// what its header says.
struct Decoded : Buffer {
    bool ok = false;
    long rate = 0;
    int channels = 0;
};

// Decodes a whole file of Resources with libvorbisfile.
Decoded Decode(const std::string& file) {
    Decoded d;
    OggVorbis_File vf;
    if (ov_fopen((TestResourcesDir() + "/" + file).c_str(), &vf) != 0) return d;
    d.rate = ov_info(&vf, -1)->rate;
    d.channels = ov_info(&vf, -1)->channels;
    d.left.reserve(std::size_t(std::max<ogg_int64_t>(ov_pcm_total(&vf, -1), 0)));
    d.right.reserve(d.left.capacity());
    int section = 0;
    float** pcm = nullptr;
    long n;
    while ((n = ov_read_float(&vf, &pcm, 4096, &section)) > 0)
        for (long i = 0; i < n; ++i) {
            d.left.push_back(pcm[0][i]);
            d.right.push_back(pcm[d.channels > 1 ? 1 : 0][i]);
        }
    ov_clear(&vf);
    d.ok = n == 0;
    return d;
}

// Loudness of a stretch of a file, straight from libebur128: integrated,
// the loudest momentary (400 ms), and the short-term (3 s) every 100 ms once
// a full window has passed.
struct Loudness {
    double integrated = -HUGE_VAL, loudestMomentary = -HUGE_VAL;
    std::vector<double> shortTerm;
};

Loudness Measure(const Buffer& d, double fromSeconds = 0, double toSeconds = 1e9) {
    Loudness out;
    ebur128_state* meter = ebur128_init(2, kSoundRate, EBUR128_MODE_I | EBUR128_MODE_S);
    std::size_t from = std::size_t(fromSeconds * kSoundRate);
    std::size_t to = std::min(d.left.size(), std::size_t(toSeconds * kSoundRate));
    std::vector<float> frames;
    for (std::size_t at = from; at < to; at += kSoundRate / 10) {
        std::size_t end = std::min(at + kSoundRate / 10, to);
        frames.clear();
        for (std::size_t i = at; i < end; ++i) {
            frames.push_back(d.left[i]);
            frames.push_back(d.right[i]);
        }
        ebur128_add_frames_float(meter, frames.data(), end - at);
        double m, st;
        ebur128_loudness_momentary(meter, &m);
        out.loudestMomentary = std::max(out.loudestMomentary, m);
        if (end - from >= 3 * std::size_t(kSoundRate) &&
            ebur128_loudness_shortterm(meter, &st) == EBUR128_SUCCESS)
            out.shortTerm.push_back(st);
    }
    ebur128_loudness_global(meter, &out.integrated);
    ebur128_destroy(&meter);
    return out;
}

// The p-th fraction (0..1) of the sorted values.
double Percentile(std::vector<double> values, double p) {
    if (values.empty()) return -HUGE_VAL;
    std::sort(values.begin(), values.end());
    return values[std::size_t(p * double(values.size() - 1))];
}

const char* const kRain = "35 - RAIN, THUNDER HEAVY RAIN WITH THUNDER RUMBLE AND CLAPS.ogg";

// Seconds into the loop at which thunder breaks. Rain has next to nothing
// below 200 Hz, thunder's rumble most of its weight: in 100 ms blocks, a
// thunder starts where the low band rises 10 dB above its median and has
// been back under 4 dB above it since the last one. The loop is filtered
// twice round so the filters have settled, and scanned from its quietest block.
std::vector<double> ThunderOnsets(const Decoded& d) {
    const std::size_t block = kSoundRate / 10, blocks = d.left.size() / block;
    std::vector<double> level(blocks);
    Svf l1, l2, r1, r2;
    for (int round = 0; round < 2; ++round)
        for (std::size_t k = 0; k < blocks; ++k) {
            double sum = 1e-20;
            for (std::size_t i = k * block; i < (k + 1) * block; ++i) {
                float l = l2.Low(l1.Low(d.left[i], 200), 200);
                float r = r2.Low(r1.Low(d.right[i], 200), 200);
                sum += double(l) * l + double(r) * r;
            }
            level[k] = 10.0 * std::log10(sum / double(block));
        }
    double median = Percentile(level, 0.5);
    std::size_t quietest = std::min_element(level.begin(), level.end()) - level.begin();
    std::vector<double> onsets;
    bool thundering = false;
    for (std::size_t j = 0; j < blocks; ++j) {
        std::size_t k = (quietest + j) % blocks;
        if (!thundering && level[k] > median + 10.0) onsets.push_back(double(k) * 0.1);
        thundering = level[k] > median + 10.0 || (thundering && level[k] >= median + 4.0);
    }
    std::sort(onsets.begin(), onsets.end());
    return onsets;
}

// The step from the last sample back to the first against the 99.9th
// percentile of the sample-to-sample steps in half a second either side of
// the seam: above 1 is a click the ear would catch.
double SeamJumpRatio(const std::vector<float>& x) {
    std::size_t n = x.size(), span = std::min<std::size_t>(22050, n / 2 - 1);
    std::vector<float> steps;
    for (std::size_t i = 0; i < span; ++i) {
        steps.push_back(std::fabs(x[i + 1] - x[i]));
        steps.push_back(std::fabs(x[n - 1 - i] - x[n - 2 - i]));
    }
    std::size_t k = steps.size() * 999 / 1000;
    std::nth_element(steps.begin(), steps.begin() + long(k), steps.end());
    return std::fabs(double(x[0]) - double(x[n - 1])) / std::max(double(steps[k]), 1e-6);
}

// The change of level across the seam against the largest between
// neighbouring 50 ms blocks inside (changes under half a decibel do not
// count): above 1, the loop fades, stops or swells at its ends.
double SeamLevelRatio(const std::vector<float>& x) {
    const std::size_t block = 2205;
    auto level = [&](std::size_t start) {
        double sum = 1e-12;
        for (std::size_t i = start; i < start + block; ++i) sum += double(x[i]) * x[i];
        return 10.0 * std::log10(sum / double(block));
    };
    double largest = 0.5;
    for (std::size_t start = block; start + block <= x.size(); start += block)
        largest = std::max(largest, std::fabs(level(start) - level(start - block)));
    return std::fabs(level(0) - level(x.size() - block)) / largest;
}

} // namespace

// The seam checks on loops whose answers are known: a sine of whole periods
// joins perfectly; cut a quarter period short it jumps; white noise is as
// rough at the seam as anywhere; a sine fading out over its last 100 ms
// joins without a step but not in level.
TEST(SoundSeamCheck, KnownLoops) {
    struct Case {
        const char* name;
        std::size_t frames;
        bool noise, fadeOut, smoothStep, steadyLevel;
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

// Every sound the game opens decodes at the game's rate, in stereo, with
// the length the list gives it and the length the game relies on (the
// arrow short enough for rapid fire, the final wave as long as a boss
// fight, the end pieces worth restarting, the storm long enough to keep its
// thunder off a 40-second beat); no peak at or above -1 dBFS; each family
// at its loudness (ambiences -23, music -18 LUFS as a whole, the arrow -14
// at its loudest moment, within 1 LU); loops join without a click or a
// change of level after the codec.
TEST(SoundResources, EveryFileDecodesAtItsLengthPeakAndLoudness) {
    const std::map<std::string, std::pair<double, double>> needed = {
        {"24 - Arrow Swoosh.ogg", {0.05, 0.5}},
        {"53 - Ice Man.ogg", {120.0, 1e9}},
        {"18 - Symphony No 1 in C Major, III Presto.ogg", {30.0, 1e9}},
        {"06 - Gypsy Songs for Violin and Orchestra.ogg", {30.0, 1e9}},
        {kRain, {60.0, 90.0}},
    };
    int checked = 0;
    for (const SoundEntry& e : kSoundSet) {
        SCOPED_TRACE(e.file);
        Decoded d = Decode(e.file);
        ASSERT_TRUE(d.ok) << "missing or does not decode";
        EXPECT_EQ(d.rate, 44100);
        EXPECT_EQ(d.channels, 2);
        double seconds = double(d.left.size()) / 44100;
        EXPECT_GE(seconds, e.minSeconds);
        EXPECT_LE(seconds, e.maxSeconds);
        if (auto it = needed.find(e.file); it != needed.end()) {
            EXPECT_GE(seconds, it->second.first);
            EXPECT_LT(seconds, it->second.second);
            ++checked;
        }
        float peak = 0;
        for (std::size_t i = 0; i < d.left.size(); ++i)
            peak = std::max({peak, std::fabs(d.left[i]), std::fabs(d.right[i])});
        EXPECT_LT(20 * std::log10(peak), -1.0) << "peak " << 20 * std::log10(peak) << " dBFS";
        Loudness l = Measure(d);
        double level = e.kind == SoundKind::OneShot ? l.loudestMomentary : l.integrated;
        const double target = e.kind == SoundKind::Loop    ? -23
                              : e.kind == SoundKind::Music ? -18
                                                           : -14;
        EXPECT_NEAR(level, target, 1.0) << "loudness " << level << " LUFS";
        if (e.kind != SoundKind::Loop) continue;
        for (const std::vector<float>* ch : {&d.left, &d.right}) {
            double step = SeamJumpRatio(*ch), levels = SeamLevelRatio(*ch);
            EXPECT_LE(step, 1.0) << "seam step is " << step << " x the usual";
            EXPECT_LE(levels, 1.0)
                << "level change at the seam is " << levels << " x the largest inside";
        }
    }
    EXPECT_EQ(checked, 5);
}

// The six ambiences (the five levels' and the menu's forest) sound equally
// loud, within 2 LU of one another, on full-range speakers and on small ones
// that give nothing below 150 Hz (a volcano all rumble or a sea with no surf
// would drop out of the second reading). The arrow's loudest moment stands
// at least 8 LU above every one of them on both: a swoosh 6 to 10 LU over a
// steady bed of similar spectrum stands apart; 8 leaves the families' 9 LU
// spacing its tolerance.
TEST(SoundResources, AmbiencesLevelAndTheArrowClearsThemOnLargeAndSmallSpeakers) {
    Decoded arrow = Decode("24 - Arrow Swoosh.ogg");
    ASSERT_TRUE(arrow.ok);
    const double arrowOn[2] = {Measure(arrow).loudestMomentary,
                               Measure(SmallSpeaker(arrow)).loudestMomentary};
    double lowest[2] = {HUGE_VAL, HUGE_VAL}, highest[2] = {-HUGE_VAL, -HUGE_VAL};
    std::string report[2];
    int ambiences = 0;
    for (const SoundEntry& e : kSoundSet) {
        if (e.kind != SoundKind::Loop) continue;
        Decoded d = Decode(e.file);
        ASSERT_TRUE(d.ok) << e.file;
        ++ambiences;
        for (int small = 0; small < 2; ++small) {
            double level = Measure(small ? SmallSpeaker(d) : Buffer(d)).integrated;
            lowest[small] = std::min(lowest[small], level);
            highest[small] = std::max(highest[small], level);
            report[small] += "\n  " + std::to_string(level) + " LUFS  " + e.file;
            EXPECT_GE(arrowOn[small] - level, 8.0)
                << e.file << ": arrow " << arrowOn[small] << ", ambience " << level << " LUFS on "
                << (small ? "small" : "full-range") << " speakers";
        }
    }
    EXPECT_EQ(ambiences, 6);
    EXPECT_LE(highest[0] - lowest[0], 2.0) << "full-range speakers:" << report[0];
    EXPECT_LE(highest[1] - lowest[1], 2.0) << "small speakers:" << report[1];
}

// The ambiences' big moments still stand out after levelling and limiting,
// even on small speakers: the loudest 400 ms at least 5 LU above the whole.
TEST(SoundResources, EventsStandOutOnSmallSpeakers) {
    const std::pair<const char*, const char*> cases[] = {
        {"the eruptions' crack", "91 - VOLCANO LARGE VOLCANO ERUPTING, EXPLODING, RUMBLE.ogg"},
        {"the breaking surf", "12 - WATER OCEAN WAVES COMING IN, LIGHT.ogg"},
        {"the thunderclaps", kRain},
    };
    for (const auto& [event, file] : cases) {
        Decoded d = Decode(file);
        ASSERT_TRUE(d.ok) << file;
        Loudness l = Measure(SmallSpeaker(d));
        EXPECT_GE(l.loudestMomentary - l.integrated, 5.0)
            << event << ": loudest " << l.loudestMomentary << ", whole " << l.integrated;
    }
}

// The final-wave music starts as the boss arrives and the ambience stops:
// its first 14 seconds are no more than 2 LU below the rest of the piece.
TEST(SoundResources, FinalWaveOpensAtFullStrength) {
    Decoded d = Decode("53 - Ice Man.ogg");
    ASSERT_TRUE(d.ok);
    double opening = Measure(d, 0, 14).integrated, rest = Measure(d, 14).integrated;
    EXPECT_GE(opening, rest - 2.0) << "opening " << opening << ", rest " << rest << " LUFS";
}

// The storm keeps no beat. Heard round and round, no thunder falls 40 s
// after another (counting round the loop, so a 40-second loop would thunder
// at the same second of every pass), and no two gaps between thunders are
// alike. Between thunders the rain carries the storm: its quietest tenth
// stays within 3 LU of the whole.
TEST(SoundResources, RainStormKeepsNoBeat) {
    Decoded d = Decode(kRain);
    ASSERT_TRUE(d.ok);
    double loop = double(d.left.size()) / kSoundRate;
    std::vector<double> onsets = ThunderOnsets(d);
    std::string heard;
    for (double t : onsets) heard += " " + std::to_string(t);
    ASSERT_GE(onsets.size(), 4u) << "thunder at" << heard;
    std::vector<double> gaps;
    for (std::size_t i = 0; i < onsets.size(); ++i) {
        gaps.push_back(i + 1 < onsets.size() ? onsets[i + 1] - onsets[i]
                                             : onsets[0] + loop - onsets[i]);
        for (double u : onsets) {
            double later = std::fmod(u - onsets[i] + 2 * loop, loop); // 0 for the same thunder
            for (double pass : {0.0, loop, 2 * loop})
                EXPECT_GT(std::fabs(later + pass - 40.0), 1.5)
                    << "thunder at " << onsets[i] << " s comes again 40 s later; thunder at"
                    << heard;
        }
    }
    std::sort(gaps.begin(), gaps.end());
    for (std::size_t i = 1; i < gaps.size(); ++i)
        EXPECT_GT(gaps[i] - gaps[i - 1], 1.0)
            << "two gaps of about " << gaps[i] << " s; thunder at" << heard;
    Loudness l = Measure(d);
    double bed = Percentile(l.shortTerm, 0.1);
    EXPECT_GE(bed, l.integrated - 3.0) << "rain bed " << bed << ", whole " << l.integrated;
}

#ifdef QUARROW_SOUNDGEN
// Two runs of the generator into fresh folders write identical bytes.
TEST(SoundGenerator, TwoRunsGiveIdenticalFiles) {
    char pattern[] = "/tmp/quarrow-sounds-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    const std::string root = pattern;
    std::string output;
    for (const char* run : {"/a", "/b"})
        ASSERT_EQ(
            TestRunCommand(std::string("'") + QUARROW_SOUNDGEN + "' '" + root + run + "'", output),
            0)
            << output;
    for (const SoundEntry& e : kSoundSet) {
        std::string a = TestReadFile(root + "/a/" + e.file),
                    b = TestReadFile(root + "/b/" + e.file);
        EXPECT_FALSE(a.empty()) << e.file;
        EXPECT_TRUE(a == b) << e.file << " differs between runs (" << a.size() << " and "
                            << b.size() << " bytes)";
    }
    std::filesystem::remove_all(root);
}

// A missing SoundFont or a wrong command line ends the generator with an
// error message and a failure status, not a crash.
TEST(SoundGenerator, BadInputFailsCleanly) {
    for (const char* arguments : {"--soundfont /nonexistent/none.sf2 /tmp/quarrow-never",
                                  "" /* no output folder */, "--spectrograms" /* no folders */}) {
        std::string output;
        int status = TestRunCommand(std::string("'") + QUARROW_SOUNDGEN + "' " + arguments, output);
        EXPECT_TRUE(status == 1 || status == 2) << "'" << arguments << "': status " << status;
        EXPECT_NE(output.find("soundgen"), std::string::npos)
            << "'" << arguments << "': " << output;
    }
}
#endif
