// CTest label: tools
// The generated sound set: every file the game opens exists after a build,
// decodes as 44.1 kHz stereo Vorbis, has a fitting length, loops without a
// click, peaks below -1 dBFS, sits at its family's loudness on large and
// small speakers alike, leaves the arrow clear over every ambience, and
// comes out byte for byte the same from two runs of the generator. The
// final-wave music opens at full strength and the storm's thunder keeps no
// beat. Loudness is read with libebur128 directly, not through the
// generator's own meter; the generator's small-speaker curve and filters
// (checked in test_sound_synth) stand in for a laptop's speakers and pick
// out the thunder.
#include "../tools/soundgen/SoundManifest.h"
#include "../tools/soundgen/Synth.cpp"
#include "../tools/soundgen/Mastering.cpp"
#include "TestSupport.h"

#include <ebur128.h>
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

// A decoded file: its samples (a Buffer, so the generator's small-speaker
// curve can take it) and what its header says.
struct Decoded : Buffer {
    bool ok = false;
    long rate = 0;
    int channels = 0;
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

// Loudness readings of a stretch of a file, straight from libebur128: the
// integrated loudness, the loudest momentary (400 ms) loudness, and the
// short-term (3 s) loudness every 100 ms once a full window has passed.
struct Loudness {
    double integrated = -HUGE_VAL, loudestMomentary = -HUGE_VAL;
    std::vector<double> shortTerm;
};

Loudness Measure(const Buffer& d, double fromSeconds = 0, double toSeconds = 1e9) {
    Loudness out;
    ebur128_state* meter = ebur128_init(2, kSoundRate, EBUR128_MODE_I | EBUR128_MODE_S);
    std::size_t from = std::size_t(fromSeconds * kSoundRate);
    std::size_t to = std::min(d.left.size(), std::size_t(toSeconds * kSoundRate));
    const std::size_t hop = kSoundRate / 10;
    std::vector<float> frames;
    for (std::size_t at = from; at < to; at += hop) {
        std::size_t end = std::min(at + hop, to);
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

// The loudness a file of this kind is judged by: the arrow by its loudest
// moment, everything else as a whole.
double FamilyLoudness(const Loudness& l, SoundKind kind) {
    return kind == SoundKind::OneShot ? l.loudestMomentary : l.integrated;
}

// The p-th fraction (0..1) of the sorted values.
double Percentile(std::vector<double> values, double p) {
    if (values.empty()) return -HUGE_VAL;
    std::sort(values.begin(), values.end());
    return values[std::size_t(p * double(values.size() - 1))];
}

const char* const kArrow = "24 - Arrow Swoosh.ogg";
const char* const kFinalWave = "53 - Ice Man.ogg";
const char* const kRain = "35 - RAIN, THUNDER HEAVY RAIN WITH THUNDER RUMBLE AND CLAPS.ogg";

Decoded DecodeFile(const char* file) {
    return Decode(TestResourcesDir() + "/" + file);
}

// Seconds into the loop at which thunder breaks. Rain has next to nothing
// below 200 Hz, thunder's rumble has most of its weight there: in 100 ms
// blocks, a thunder starts where the low band rises 10 dB above its median
// and has been back under 4 dB above it since the last one. The loop is
// filtered twice round so the filters have settled, and scanned from its
// quietest block.
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
    std::size_t quietest =
        std::size_t(std::min_element(level.begin(), level.end()) - level.begin());
    std::vector<double> onsets;
    bool thundering = false;
    for (std::size_t j = 0; j < blocks; ++j) {
        std::size_t k = (quietest + j) % blocks;
        if (!thundering && level[k] > median + 10.0) {
            thundering = true;
            onsets.push_back(double(k) * 0.1);
        }
        if (thundering && level[k] < median + 4.0) thundering = false;
    }
    std::sort(onsets.begin(), onsets.end());
    return onsets;
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
// worth restarting, the storm is long enough to keep its thunder off a
// 40-second beat.
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
        {kRain, 60.0, 90.0},
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

// Every family at its own loudness (ambiences -23, music -18 LUFS as a
// whole, the arrow -14 LUFS at its loudest moment, each within 1 LU), and
// no peak at or above -1 dBFS after decoding.
TEST(SoundResources, PeaksAndFamilyLoudness) {
    for (const SoundEntry& e : kSoundSet) {
        Decoded d = Decode(PathOf(e));
        ASSERT_TRUE(d.ok) << e.file;
        float peak = 0;
        for (float v : d.left) peak = std::max(peak, std::fabs(v));
        for (float v : d.right) peak = std::max(peak, std::fabs(v));
        EXPECT_LT(ToDb(peak), -1.0) << e.file << ": peak " << ToDb(peak) << " dBFS";
        double level = FamilyLoudness(Measure(d), e.kind);
        EXPECT_NEAR(level, LoudnessTarget(e.kind), kLoudnessToleranceLu)
            << e.file << ": loudness " << level << " LUFS";
    }
}

// The six ambiences (the five levels' and the menu's forest) sound equally
// loud, within 2 LU of one another, on full-range speakers and on small ones
// that give nothing below 150 Hz: a volcano whose weight is all rumble, or
// a sea with no surf, would drop out of the second reading.
TEST(SoundResources, AmbiencesLevelOnLargeAndSmallSpeakers) {
    struct Reading {
        const char* speakers;
        bool small;
    };
    for (const Reading& r : {Reading{"full-range", false}, Reading{"small", true}}) {
        double lowest = HUGE_VAL, highest = -HUGE_VAL;
        std::string report;
        for (const SoundEntry& e : kSoundSet) {
            if (e.kind != SoundKind::Loop) continue;
            Decoded d = Decode(PathOf(e));
            ASSERT_TRUE(d.ok) << e.file;
            double level = Measure(r.small ? SmallSpeaker(d) : Buffer(d)).integrated;
            lowest = std::min(lowest, level);
            highest = std::max(highest, level);
            report += "\n  " + std::to_string(level) + " LUFS  " + e.file;
        }
        EXPECT_LE(highest - lowest, 2.0) << r.speakers << " speakers:" << report;
    }
}

// The arrow is heard clearly over every ambience: its loudest moment stands
// at least 8 LU above the ambience's loudness, on full-range and small
// speakers. A short sound some 6 to 10 LU over a steady bed of similar
// spectrum stands apart from it; much less and a swoosh merges into rain,
// surf or wind. 8 LU leaves the families' 9 LU spacing its tolerance.
TEST(SoundResources, ArrowClearOverEveryAmbience) {
    const double margin = 8.0;
    Decoded arrow = DecodeFile(kArrow);
    ASSERT_TRUE(arrow.ok);
    double arrowFull = Measure(arrow).loudestMomentary;
    double arrowSmall = Measure(SmallSpeaker(arrow)).loudestMomentary;
    for (const SoundEntry& e : kSoundSet) {
        if (e.kind != SoundKind::Loop) continue;
        Decoded d = Decode(PathOf(e));
        ASSERT_TRUE(d.ok) << e.file;
        double full = Measure(d).integrated, small = Measure(SmallSpeaker(d)).integrated;
        EXPECT_GE(arrowFull - full, margin) << e.file << ": arrow " << arrowFull << ", ambience "
                                            << full << " LUFS on full-range speakers";
        EXPECT_GE(arrowSmall - small, margin) << e.file << ": arrow " << arrowSmall << ", ambience "
                                              << small << " LUFS on small ones";
    }
}

// The ambiences' big moments still stand out after levelling and limiting,
// even on small speakers: the loudest 400 ms at least 5 LU above the whole.
TEST(SoundResources, EventsStandOutOnSmallSpeakers) {
    struct Case {
        const char* event;
        const char* file;
    };
    const Case cases[] = {
        {"the eruptions' crack", "91 - VOLCANO LARGE VOLCANO ERUPTING, EXPLODING, RUMBLE.ogg"},
        {"the breaking surf", "12 - WATER OCEAN WAVES COMING IN, LIGHT.ogg"},
        {"the thunderclaps", kRain},
    };
    for (const Case& c : cases) {
        Decoded d = DecodeFile(c.file);
        ASSERT_TRUE(d.ok) << c.file;
        Loudness l = Measure(SmallSpeaker(d));
        EXPECT_GE(l.loudestMomentary - l.integrated, 5.0)
            << c.event << ": loudest " << l.loudestMomentary << ", whole " << l.integrated;
    }
}

// The final-wave music starts as the boss arrives and the ambience stops:
// its first 14 seconds are no more than 2 LU below the rest of the piece.
TEST(SoundResources, FinalWaveOpensAtFullStrength) {
    Decoded d = DecodeFile(kFinalWave);
    ASSERT_TRUE(d.ok);
    double opening = Measure(d, 0, 14).integrated, rest = Measure(d, 14).integrated;
    EXPECT_GE(opening, rest - 2.0) << "opening " << opening << ", rest " << rest << " LUFS";
}

// The storm keeps no beat. Heard round and round, no thunder falls 40 s
// after another (counting round the loop, so a 40-second loop would thunder
// at the same second of every pass), and no two gaps between thunders are
// alike. Between thunders the rain itself carries the storm: its quietest
// tenth stays within 3 LU of the whole.
TEST(SoundResources, RainStormKeepsNoBeat) {
    Decoded d = DecodeFile(kRain);
    ASSERT_TRUE(d.ok);
    double loop = double(d.left.size()) / kSoundRate;
    std::vector<double> onsets = ThunderOnsets(d);
    std::string heard;
    for (double t : onsets) heard += " " + std::to_string(t);
    EXPECT_GE(onsets.size(), 4u) << "thunder at" << heard;
    if (onsets.empty()) return;
    for (double t : onsets)
        for (double u : onsets) {
            double later = std::fmod(u - t + 2 * loop, loop); // 0 for the same thunder
            for (double pass : {0.0, loop, 2 * loop})
                EXPECT_GT(std::fabs(later + pass - 40.0), 1.5)
                    << "thunder at " << t << " s comes again 40 s later; thunder at" << heard;
        }
    std::vector<double> gaps;
    for (std::size_t i = 0; i < onsets.size(); ++i)
        gaps.push_back(i + 1 < onsets.size() ? onsets[i + 1] - onsets[i]
                                             : onsets[0] + loop - onsets[i]);
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
