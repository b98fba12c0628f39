// Loudness, the small-speaker curve, the limiter and the final mix (see
// Mastering.h). Depends on Synth.h, SoundManifest.h and libebur128, which
// measures loudness the way R128 specifies (K-weighting, 400 ms blocks,
// gating); writing that by hand would only copy it.
#include "Mastering.h"

#include <ebur128.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <memory>

namespace {

// Frames handed to the meter at a time: 10 ms, the step at which the
// loudest momentary loudness is looked for.
const std::size_t kMeterHop = 441;

using Meter = std::unique_ptr<ebur128_state, void (*)(ebur128_state*)>;

// A stereo meter in the given R128 modes.
Meter OpenMeter(int mode) {
    return Meter(ebur128_init(2, kSoundRate, mode),
                 [](ebur128_state* st) { ebur128_destroy(&st); });
}

// Hands frames [from, to) of the buffer to the meter, interleaved.
void Feed(ebur128_state* meter, const Buffer& buffer, std::size_t from, std::size_t to) {
    std::vector<float> frames;
    frames.reserve(2 * kMeterHop * 16);
    while (from < to) {
        std::size_t count = std::min(to - from, kMeterHop * 16);
        frames.clear();
        for (std::size_t i = from; i < from + count; ++i) {
            frames.push_back(buffer.left[i]);
            frames.push_back(buffer.right[i]);
        }
        ebur128_add_frames_float(meter, frames.data(), count);
        from += count;
    }
}

} // namespace

// Integrated loudness over the whole buffer.
double IntegratedLoudness(const Buffer& buffer) {
    Meter meter = OpenMeter(EBUR128_MODE_I);
    double loudness = -HUGE_VAL;
    if (!meter) return loudness;
    Feed(meter.get(), buffer, 0, buffer.left.size());
    ebur128_loudness_global(meter.get(), &loudness);
    return loudness;
}

// Loudest momentary loudness, read every 10 ms.
double LoudestMomentaryLoudness(const Buffer& buffer) {
    Meter meter = OpenMeter(EBUR128_MODE_M);
    double loudest = -HUGE_VAL;
    if (!meter) return loudest;
    for (std::size_t at = 0; at < buffer.left.size(); at += kMeterHop) {
        Feed(meter.get(), buffer, at, std::min(at + kMeterHop, buffer.left.size()));
        double momentary = -HUGE_VAL;
        if (ebur128_loudness_momentary(meter.get(), &momentary) == EBUR128_SUCCESS)
            loudest = std::max(loudest, momentary);
    }
    return loudest;
}

// Integrated for sounds heard as a whole, the loudest moment for a shot.
double LoudnessOf(const Buffer& buffer, SoundKind kind) {
    return kind == SoundKind::OneShot ? LoudestMomentaryLoudness(buffer)
                                      : IntegratedLoudness(buffer);
}

// Two cascaded Butterworth high-pass sections per side.
Buffer SmallSpeaker(const Buffer& buffer) {
    Buffer out = buffer;
    for (std::vector<float>* ch : {&out.left, &out.right}) {
        Svf first, second;
        for (float& v : *ch) v = second.High(first.High(v, kSmallSpeakerHz), kSmallSpeakerHz);
    }
    return out;
}

// Absolute peak.
double PeakDb(const Buffer& buffer) {
    float peak = 0;
    for (std::size_t i = 0; i < buffer.left.size(); ++i)
        peak = std::max({peak, std::fabs(buffer.left[i]), std::fabs(buffer.right[i])});
    return 20.0 * std::log10(std::max(double(peak), 1e-10));
}

// Look-ahead limiter: the gain each sample needs is spread by a sliding
// minimum over +-radius and then averaged over +-radius, so the gain never
// exceeds what any nearby sample needs yet changes without steps.
static void Limit(Buffer& buffer, double ceilingDb, bool circular) {
    std::size_t n = buffer.left.size();
    if (n == 0) return;
    const long radius = long(Frames(0.008));
    const double ceiling = std::pow(10.0, ceilingDb / 20.0);
    long len = long(n) + 4 * radius;
    auto sampleAt = [&](long j) -> double {
        if (circular)
            j = ((j % long(n)) + long(n)) % long(n);
        else if (j < 0 || j >= long(n))
            return 1.0;
        double a = std::max(std::fabs(buffer.left[j]), std::fabs(buffer.right[j]));
        return a > ceiling ? ceiling / a : 1.0;
    };
    // need[k] is the gain for index k - 2 * radius.
    std::vector<double> need(std::size_t(len), 1.0), low(std::size_t(len), 1.0);
    for (long k = 0; k < len; ++k) need[k] = sampleAt(k - 2 * radius);
    std::deque<long> window;
    for (long k = 0; k < len + radius; ++k) {
        if (k < len) {
            while (!window.empty() && need[window.back()] >= need[k]) window.pop_back();
            window.push_back(k);
        }
        long centre = k - radius;
        if (centre < 0) continue;
        while (window.front() < centre - radius) window.pop_front();
        low[centre] = need[window.front()];
    }
    std::vector<double> prefix(std::size_t(len) + 1, 0.0);
    for (long k = 0; k < len; ++k) prefix[k + 1] = prefix[k] + low[k];
    for (long i = 0; i < long(n); ++i) {
        long k = i + 2 * radius;
        double g = (prefix[k + radius + 1] - prefix[k - radius]) / double(2 * radius + 1);
        // Rounding in the average may leave a hair above the ceiling.
        g = std::min(g, need[k]);
        buffer.left[i] *= float(g);
        buffer.right[i] *= float(g);
    }
}

// Scales to the family's loudness and limits peaks, three times over,
// since limiting lowers the loudness a little.
void Master(Buffer& buffer, SoundKind kind) {
    for (int pass = 0; pass < 3; ++pass) {
        double level = LoudnessOf(buffer, kind);
        if (!std::isfinite(level)) return; // silence stays silence
        double gain = std::pow(10.0, (LoudnessTarget(kind) - level) / 20.0);
        for (float& v : buffer.left) v *= float(gain);
        for (float& v : buffer.right) v *= float(gain);
        Limit(buffer, kPeakCeilingDb, kind == SoundKind::Loop);
    }
}
