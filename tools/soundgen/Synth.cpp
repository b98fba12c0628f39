// Building blocks of the sound generator (see Synth.h): noise, filters,
// envelopes, reverb and loop joins. Depends on the standard library.
#include "Synth.h"

#include <algorithm>
#include <cmath>

// Makes a silent buffer of the given length in samples.
Buffer MakeBuffer(std::size_t frames) {
    Buffer b;
    b.left.assign(frames, 0.0f);
    b.right.assign(frames, 0.0f);
    return b;
}

// Number of samples in seconds, rounded.
std::size_t Frames(double seconds) {
    return std::size_t(std::lround(seconds * kRate));
}

// Next raw 64-bit value (splitmix64).
std::uint64_t Rng::Next() {
    std::uint64_t z = (state += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

// Uniform in [0, 1) from the top 53 bits.
double Rng::Uniform() {
    return double(Next() >> 11) * (1.0 / 9007199254740992.0);
}

// Next pink sample (Kellett's refined filter over white noise).
float PinkNoise::Next() {
    float w = rng.White();
    b0 = 0.99886f * b0 + w * 0.0555179f;
    b1 = 0.99332f * b1 + w * 0.0750759f;
    b2 = 0.96900f * b2 + w * 0.1538520f;
    b3 = 0.86650f * b3 + w * 0.3104856f;
    b4 = 0.55000f * b4 + w * 0.5329522f;
    b5 = -0.7616f * b5 - w * 0.0168980f;
    float pink = b0 + b1 + b2 + b3 + b4 + b5 + b6 + w * 0.5362f;
    b6 = w * 0.115926f;
    return pink * 0.11f;
}

// Next brown sample: a leak keeps the integral from wandering off.
float BrownNoise::Next() {
    y = 0.998f * y + 0.05f * rng.White();
    return y * 2.5f;
}

// One sample of the trapezoidal state-variable filter (Simper's form). The
// coefficients are worked out again only when the cutoff or resonance has
// moved by more than a tenth of a percent: tan() per sample would dominate
// the cost of the ambiences, and so small a step is inaudible.
Svf::Out Svf::Process(float x, double cutoff, double q) {
    cutoff = std::clamp(cutoff, 10.0, kRate * 0.45);
    if (std::fabs(cutoff - lastCutoff) > 0.001 * cutoff || q != lastQ) {
        lastCutoff = cutoff;
        lastQ = q;
        double g = std::tan(kPi * cutoff / kRate);
        k = 1.0 / std::max(q, 0.05);
        a1 = 1.0 / (1.0 + g * (g + k));
        a2 = g * a1;
        a3 = g * a2;
    }
    double v3 = x - ic2;
    double v1 = a1 * ic1 + a2 * v3;
    double v2 = ic2 + a2 * ic1 + a3 * v3;
    ic1 = 2.0 * v1 - ic1;
    ic2 = 2.0 * v2 - ic2;
    return {float(v2), float(v1), float(x - k * v1 - v2)};
}

// One sample of the one-pole low-pass.
float OnePole::Low(float x, double cutoff) {
    if (cutoff != lastCutoff) {
        lastCutoff = cutoff;
        a = 1.0 - std::exp(-2.0 * kPi * cutoff / kRate);
    }
    y += a * (x - y);
    return float(y);
}

// Starts a glide between random targets in [lo, hi].
Drift::Drift(std::uint64_t seed, double periodSeconds, double lo_, double hi_)
    : rng(seed), lo(lo_), hi(hi_), period(std::max<std::size_t>(1, Frames(periodSeconds))) {
    from = rng.Range(lo, hi);
    to = rng.Range(lo, hi);
}

// Value for the next sample: cosine glide from the last target to the next.
double Drift::Next() {
    if (pos == period) {
        pos = 0;
        from = to;
        to = rng.Range(lo, hi);
    }
    double t = double(pos++) / double(period);
    double w = 0.5 - 0.5 * std::cos(kPi * t);
    return from + (to - from) * w;
}

// Attack-then-exponential-decay shape.
double AttackDecay(double t, double attack, double decay) {
    if (t < 0) return 0;
    if (t < attack) return std::sin(0.5 * kPi * t / attack);
    return std::exp(-6.907755 * (t - attack) / decay);
}

// Raised-cosine bell over [0, length].
double Bell(double t, double length) {
    if (t <= 0 || t >= length) return 0;
    return 0.5 - 0.5 * std::cos(2.0 * kPi * t / length);
}

// Sets up the comb and all-pass lines; the right side is spread by 23
// samples so the tail is wide rather than centred.
Reverb::Reverb(double room, double damping) {
    static const int combTune[8] = {1116, 1188, 1277, 1356, 1422, 1491, 1557, 1617};
    static const int passTune[4] = {556, 441, 341, 225};
    for (int side = 0; side < 2; ++side) {
        int spread = side * 23;
        for (int i = 0; i < 8; ++i) combs[side][i].line.assign(combTune[i] + spread, 0.0f);
        for (int i = 0; i < 4; ++i) passes[side][i].line.assign(passTune[i] + spread, 0.0f);
    }
    feedback = float(0.7 + 0.28 * std::clamp(room, 0.0, 1.0));
    damp = float(0.4 * std::clamp(damping, 0.0, 1.0));
}

// Adds the reverberated signal, fed from the mono sum, to both sides.
void Reverb::Apply(Buffer& buffer, double wet) {
    const float inputGain = 0.015f;
    std::size_t n = buffer.left.size();
    for (std::size_t i = 0; i < n; ++i) {
        float in = (buffer.left[i] + buffer.right[i]) * inputGain;
        float out[2];
        for (int side = 0; side < 2; ++side) {
            float acc = 0;
            for (Comb& c : combs[side]) {
                float y = c.line[c.pos];
                c.store = y * (1.0f - damp) + c.store * damp;
                c.line[c.pos] = in + c.store * feedback;
                if (++c.pos == c.line.size()) c.pos = 0;
                acc += y;
            }
            for (AllPass& a : passes[side]) {
                float buf = a.line[a.pos];
                float y = buf - acc;
                a.line[a.pos] = acc + buf * 0.5f;
                if (++a.pos == a.line.size()) a.pos = 0;
                acc = y;
            }
            out[side] = acc;
        }
        buffer.left[i] += float(wet) * out[0];
        buffer.right[i] += float(wet) * out[1];
    }
}

// Constant-power pan of one mono sample into the buffer.
void AddPanned(Buffer& buffer, std::size_t frame, float sample, double pan) {
    if (frame >= buffer.left.size()) return;
    double angle = (std::clamp(pan, -1.0, 1.0) + 1.0) * 0.25 * kPi;
    buffer.left[frame] += float(sample * std::cos(angle));
    buffer.right[frame] += float(sample * std::sin(angle));
}

// Cross-fades the render's tail into its head (equal power, since the two
// stretches of noise are unrelated); the result ends exactly where the
// tail continued, which is the new first sample.
void MakeSeamlessLoop(Buffer& buffer, std::size_t loopFrames, std::size_t fadeFrames) {
    for (std::vector<float>* ch : {&buffer.left, &buffer.right}) {
        std::vector<float>& s = *ch;
        for (std::size_t i = 0; i < fadeFrames; ++i) {
            double t = (double(i) + 0.5) / double(fadeFrames);
            double in = std::sin(0.5 * kPi * t);
            double out = std::cos(0.5 * kPi * t);
            s[i] = float(s[i] * in + s[loopFrames + i] * out);
        }
        s.resize(loopFrames);
    }
}

// Removes the first samples.
void DropHead(Buffer& buffer, std::size_t frames) {
    frames = std::min(frames, buffer.left.size());
    buffer.left.erase(buffer.left.begin(), buffer.left.begin() + long(frames));
    buffer.right.erase(buffer.right.begin(), buffer.right.begin() + long(frames));
}

// Linear fades at both ends.
void FadeEdges(Buffer& buffer, std::size_t fadeInFrames, std::size_t fadeOutFrames) {
    std::size_t n = buffer.left.size();
    for (std::size_t i = 0; i < n; ++i) {
        double g = 1.0;
        if (i < fadeInFrames) g = double(i) / double(fadeInFrames);
        if (n - i <= fadeOutFrames) g = std::min(g, double(n - 1 - i) / double(fadeOutFrames));
        buffer.left[i] *= float(g);
        buffer.right[i] *= float(g);
    }
}

// Subtracts each channel's mean.
void RemoveDc(Buffer& buffer) {
    for (std::vector<float>* ch : {&buffer.left, &buffer.right}) {
        if (ch->empty()) continue;
        double sum = 0;
        for (float v : *ch) sum += v;
        float mean = float(sum / double(ch->size()));
        for (float& v : *ch) v -= mean;
    }
}
