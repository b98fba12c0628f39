// The loud ambiences: light ocean waves (level 3), the rumbling, erupting
// volcano (level 4), each a 40-second seamless loop, and heavy rain with
// thunder (level 6), an 80-second one. Depends on Synth.h and Ambience.cpp's
// loop finish. Limits: all events are placed by a fixed seed or by hand;
// each loop has the same waves, eruptions and thunder every time it comes
// round.
#include "Sounds.h"

#include <cmath>
#include <vector>

namespace {

const double kLoopSeconds = 40.0;
const double kRainLoopSeconds = 80.0;
const double kFadeSeconds = 4.0;
const double kWarmSeconds = 2.0;

// One wave: the swell rises and brightens, breaks, then the foam washes up
// the beach and hisses away as it drains.
void AddWave(Buffer& out, std::size_t start, double size, double pan, std::uint64_t seed) {
    PinkNoise bodyL(seed), bodyR(seed + 1);
    Rng foam(seed + 2);
    Svf fl, fr, foamL, foamR;
    Drift fizz(seed + 3, 0.03, 0.2, 1.0);
    const double rise = 2.2 * size, length = 8.0;
    std::size_t n = Frames(length);
    double spread = 0.5 + 0.25 * pan, left = std::sqrt(1 - spread), right = std::sqrt(spread);
    for (std::size_t i = 0; i < n && start + i < out.left.size(); ++i) {
        double t = double(i) / kRate;
        double level, cutoff;
        if (t < rise) {
            double u = t / rise;
            level = u * u;
            cutoff = 250 + 1800 * u * u;
        } else {
            double u = t - rise;
            level = std::exp(-u / 1.6);
            cutoff = 600 + 3400 * std::exp(-u / 1.1);
        }
        // Fade the tail right out so the event ends at silence.
        level *= std::min(1.0, (length - t) / 1.0) * size;
        double foamLevel = t < rise ? 0
                                    : (1 - std::exp(-(t - rise) / 0.4)) *
                                          std::exp(-(t - rise) / 2.4) * fizz.Next();
        foamLevel *= std::min(1.0, (length - t) / 1.0) * size;
        float l = fl.Low(bodyL.Next(), cutoff, 0.6) * float(level);
        float r = fr.Low(bodyR.Next(), cutoff * 1.05, 0.6) * float(level);
        // The foam's hiss is what carries the surf on small speakers.
        l += foamL.High(foam.White(), 3500) * float(0.35 * foamLevel);
        r += foamR.High(foam.White(), 3800) * float(0.35 * foamLevel);
        out.left[start + i] += float(l * left * 1.4);
        out.right[start + i] += float(r * right * 1.4);
    }
}

// One eruption: a few overlapping blasts, each opening with a sharp crack
// and a roar whose brightness falls fast, then falling rocks crackling and
// a long hiss of steam. The blasts' low boom is driven into saturation so
// its overtones carry it on speakers that play no bass.
void AddEruption(Buffer& out, std::size_t start, double size, std::uint64_t seed) {
    Rng rng(seed);
    const double length = 9.0;
    std::size_t n = Frames(length);
    int blasts = 2 + int(rng.Uniform() * 3);
    double at[5], gain[5];
    for (int b = 0; b < blasts; ++b) {
        at[b] = b == 0 ? 0.0 : rng.Range(0.15, 1.2);
        gain[b] = b == 0 ? 1.0 : rng.Range(0.4, 0.8);
    }
    BrownNoise boomL(seed + 1), boomR(seed + 2);
    PinkNoise roarL(seed + 4), roarR(seed + 5);
    Rng white(seed + 3);
    Svf bl, br, gl, gr, roarFilterL, roarFilterR, crackL, crackR, steamL, steamR, rockL, rockR;
    double rockLevel = 0;
    for (std::size_t i = 0; i < n && start + i < out.left.size(); ++i) {
        double t = double(i) / kRate;
        double env = 0, bright = 0, crack = 0;
        for (int b = 0; b < blasts; ++b) {
            env += gain[b] * AttackDecay(t - at[b], 0.03, 3.5);
            bright = std::max(bright, gain[b] * AttackDecay(t - at[b], 0.01, 0.6));
            crack += gain[b] * AttackDecay(t - at[b], 0.001, 0.18);
        }
        double cutoff = 90 + 1600 * bright;
        double fadeOut = std::min(1.0, (length - t) / 1.5);
        float w = white.White();
        float l = bl.Low(boomL.Next() + 0.3f * w, cutoff, 0.8) * float(env * 0.3);
        float r = br.Low(boomR.Next() + 0.3f * w, cutoff * 1.1, 0.8) * float(env * 0.3);
        // The boom's overtones: saturation, with the bass it came from cut.
        l += gl.High(float(std::tanh(4.0 * l)), 160) * 0.35f;
        r += gr.High(float(std::tanh(4.0 * r)), 160) * 0.35f;
        // The roar of the blast itself, a broad mid band that darkens.
        double roarCentre = 300 + 900 * bright;
        l += roarFilterL.Band(roarL.Next(), roarCentre, 0.7) * float(env);
        r += roarFilterR.Band(roarR.Next(), roarCentre * 1.1, 0.7) * float(env);
        // The crack: a hard broadband snap as the vent blows.
        l += crackL.High(w, 250) * float(0.9 * crack);
        r += crackR.High(w, 250) * float(0.9 * crack);
        // Rocks: sparse clicks, dense after the blast, thinning out.
        double rockRate = 60.0 * std::exp(-t / 2.5) * (t > 0.3 ? 1 : 0);
        if (white.Uniform() < rockRate / kRate) rockLevel = white.Range(0.2, 1.0);
        rockLevel *= 0.9965;
        float rock = float(rockLevel) * white.White();
        l += rockL.Band(rock, 2200, 1.2) * 0.7f;
        r += rockR.Band(rock, 1700, 1.2) * 0.7f;
        double steam = 0.03 * Bell(t - 0.8, 7.0);
        l += steamL.High(white.White(), 2500) * float(steam);
        r += steamR.High(white.White(), 2700) * float(steam);
        out.left[start + i] += float(l * size * fadeOut);
        out.right[start + i] += float(r * size * fadeOut);
    }
}

// One thunderclap: optional sharp cracks, then a rolling rumble made of
// several swells that fade over many seconds. The roll's upper part, a
// darkening mid band, is what small speakers give of the rumble.
void AddThunder(Buffer& out, std::size_t start, double size, bool clap, std::uint64_t seed) {
    Rng rng(seed);
    const double length = 10.0;
    std::size_t n = Frames(length);
    double swellAt[6], swellLen[6], swellGain[6];
    for (int k = 0; k < 6; ++k) {
        swellAt[k] = rng.Range(0.1, 4.5);
        swellLen[k] = rng.Range(1.5, 4.0);
        swellGain[k] = rng.Range(0.4, 1.0);
    }
    double crackAt[3] = {0.0, rng.Range(0.05, 0.15), rng.Range(0.2, 0.4)};
    BrownNoise rumbleL(seed + 1), rumbleR(seed + 2);
    PinkNoise rollL(seed + 4), rollR(seed + 5);
    Rng white(seed + 3);
    Svf rl, rr, ml, mr, cl, cr;
    for (std::size_t i = 0; i < n && start + i < out.left.size(); ++i) {
        double t = double(i) / kRate;
        double swell = 0;
        for (int k = 0; k < 6; ++k) swell += swellGain[k] * Bell(t - swellAt[k], swellLen[k]);
        double tail = std::min(1.0, (length - t) / 2.0);
        double rumble = 0.9 * swell * std::exp(-t / 5.0) * tail;
        double cutoff = 70 + 220 * std::exp(-t / 2.0);
        float l = rl.Low(rumbleL.Next(), cutoff, 0.9) * float(rumble);
        float r = rr.Low(rumbleR.Next(), cutoff * 1.15, 0.9) * float(rumble);
        double roll = 1.2 * swell * std::exp(-t / 3.0) * tail, centre = 300 + 400 * std::exp(-t);
        l += ml.Band(rollL.Next(), centre, 0.7) * float(roll);
        r += mr.Band(rollR.Next(), centre * 1.1, 0.7) * float(roll);
        if (clap) {
            double crack = 0;
            for (int k = 0; k < 3; ++k) crack += AttackDecay(t - crackAt[k], 0.002, 0.9) / (k + 1);
            float w = white.White();
            l += cl.High(w, 300) * float(1.6 * crack);
            r += cr.High(w, 300) * float(1.6 * crack);
        }
        out.left[start + i] += float(l * size * 0.3);
        out.right[start + i] += float(r * size * 0.3);
    }
}

} // namespace

// Ocean: a low steady surf far out, and waves coming in every six to nine
// seconds from slightly different places along the beach.
Buffer MakeOcean() {
    std::size_t warm = Frames(kWarmSeconds), loop = Frames(kLoopSeconds);
    std::size_t fade = Frames(kFadeSeconds), n = warm + loop + fade;
    Buffer out = MakeBuffer(n);
    BrownNoise farL(31), farR(32);
    Svf fl, fr;
    Drift swell(33, 5.0, 0.5, 1.0);
    for (std::size_t i = 0; i < n; ++i) {
        float s = float(0.1 * swell.Next());
        out.left[i] = fl.Low(farL.Next(), 350, 0.6) * s;
        out.right[i] = fr.Low(farR.Next(), 380, 0.6) * s;
    }
    Rng rng(34);
    std::uint64_t seed = 100;
    for (double t = 0; t < double(n) / kRate - 1.0; t += rng.Range(6.0, 9.0), seed += 10)
        AddWave(out, Frames(t), rng.Range(0.6, 1.0), rng.Range(-0.5, 0.5), seed);
    Reverb shore(0.5, 0.7);
    shore.Apply(out, 0.35);
    FinishAmbienceLoop(out, warm, loop, fade);
    return out;
}

// Volcano: a deep rumble that never stops with the mountain's growl and
// roar above it, lava crackling, and large eruptions every ten seconds or
// so echoing off the mountainside. Most of a rumble's energy lies below
// what small speakers play, so the growl (the rumble's own overtones) and
// the roar carry it there.
Buffer MakeVolcano() {
    std::size_t warm = Frames(kWarmSeconds), loop = Frames(kLoopSeconds);
    std::size_t fade = Frames(kFadeSeconds), n = warm + loop + fade;
    Buffer out = MakeBuffer(n);
    BrownNoise deepL(41), deepR(42);
    PinkNoise roarL(48), roarR(49);
    Rng crackle(43);
    Svf dl, dr, gl, gr, ghl, ghr, rl, rr, cl, cr;
    Drift level(44, 1.4, 0.35, 1.0), cutoff(45, 2.0, 50, 120), sub(46, 3.0, 0.5, 1.0);
    Drift roarCentre(40, 2.3, 220, 520);
    double pop = 0;
    for (std::size_t i = 0; i < n; ++i) {
        double t = double(i) / kRate, lv = level.Next(), c = cutoff.Next(), rc = roarCentre.Next();
        double tone =
            0.03 * sub.Next() * (std::sin(2 * kPi * 33 * t) + 0.6 * std::sin(2 * kPi * 49 * t));
        float l = dl.Low(deepL.Next(), c, 0.8) * float(0.15 * lv) + float(tone);
        float r = dr.Low(deepR.Next(), c * 1.1, 0.8) * float(0.15 * lv) + float(tone);
        // The growl: the rumble's own overtones, by saturation, with the
        // rumble itself and the saturation's fizz filtered away.
        l += gl.High(ghl.Low(float(std::tanh(8.0 * l)), 1200), 150) * 0.5f;
        r += gr.High(ghr.Low(float(std::tanh(8.0 * r)), 1200), 150) * 0.5f;
        // The roar: a wandering mid band that swells with the rumble.
        l += rl.Band(roarL.Next(), rc, 0.8) * float(2.0 * lv);
        r += rr.Band(roarR.Next(), rc * 1.08, 0.8) * float(2.0 * lv);
        // Lava pops: little bursts, a few a second.
        if (crackle.Uniform() < 9.0 / kRate) pop = crackle.Range(0.1, 0.5);
        pop *= 0.997;
        float p = float(pop) * crackle.White();
        out.left[i] = l + cl.Band(p, 1400, 1.5) * 0.5f;
        out.right[i] = r + cr.Band(p, 1100, 1.5) * 0.5f;
    }
    Rng rng(47);
    std::uint64_t seed = 200;
    for (double t = 1.0; t < double(n) / kRate - 3.0; t += rng.Range(8.5, 12.0), seed += 10)
        AddEruption(out, Frames(t), rng.Range(0.7, 1.0), seed);
    Reverb mountain(0.85, 0.6);
    mountain.Apply(out, 0.45);
    FinishAmbienceLoop(out, warm, loop, fade);
    return out;
}

// Heavy rain: a dense hiss that comes in heavier and lighter spells,
// thousands of single drops, and thunder. The rain loop runs twice as long
// as the others and its six thunders, close claps and far-off rolls, fall
// at uneven gaps, so the ear finds no beat to the storm.
Buffer MakeRainThunder() {
    std::size_t warm = Frames(kWarmSeconds), loop = Frames(kRainLoopSeconds);
    std::size_t fade = Frames(kFadeSeconds), n = warm + loop + fade;
    Buffer out = MakeBuffer(n);
    Rng noise(51);
    PinkNoise bodyL(52), bodyR(53);
    Svf hl, hr, ll, lr, bl, br;
    Drift spell(54, 7.5, 0.6, 1.0), flurry(56, 1.3, 0.85, 1.0);
    std::vector<float> intensity(n);
    for (std::size_t i = 0; i < n; ++i) {
        double k = spell.Next() * flurry.Next();
        intensity[i] = float(k);
        float l = ll.Low(hl.High(noise.White(), 500), 7000) * float(0.22 * k);
        float r = lr.Low(hr.High(noise.White(), 500), 7500) * float(0.22 * k);
        l += bl.Band(bodyL.Next(), 900, 0.5) * float(0.3 * k);
        r += br.Band(bodyR.Next(), 1000, 0.5) * float(0.3 * k);
        out.left[i] = l;
        out.right[i] = r;
    }
    // Drops: short ringing plinks on leaves, puddles and roofs, thicker in
    // the heavy spells.
    Rng drops(55);
    double perSecond = 450;
    for (double t = 0; t < double(n) / kRate; t += -std::log(1.0 - drops.Uniform()) / perSecond) {
        double f = drops.Range(1500, 6500), decay = drops.Range(0.002, 0.008);
        double amp = 0.12 * std::pow(drops.Uniform(), 2.0), pan = drops.Range(-1, 1);
        std::size_t at = Frames(t), len = Frames(decay * 5);
        if (at >= n || drops.Uniform() > intensity[at]) continue;
        for (std::size_t i = 0; i < len; ++i) {
            double u = double(i) / kRate;
            AddPanned(out, at + i, float(amp * std::exp(-u / decay) * std::sin(2 * kPi * f * u)),
                      pan);
        }
    }
    // Thunder, at seconds into the loop: the gaps between strikes (12, 6.5,
    // 17, 9.5, 20.5 and, round the loop, 14.5 s) all differ, and no strike
    // falls 40 s after another. The last has died away by the end of the
    // render, so the loop join never cuts a rumble short.
    struct Strike {
        double at, size;
        bool clap;
    };
    const Strike strikes[] = {{4.0, 1.0, true},    {16.0, 0.5, false}, {22.5, 0.8, true},
                              {39.5, 0.45, false}, {49.0, 0.9, true},  {69.5, 0.65, true}};
    Buffer thunder = MakeBuffer(n);
    std::uint64_t seed = 300;
    for (const Strike& s : strikes)
        AddThunder(thunder, warm + Frames(s.at), s.size, s.clap, seed += 10);
    Reverb sky(0.9, 0.5);
    sky.Apply(thunder, 0.6);
    for (std::size_t i = 0; i < n; ++i) {
        out.left[i] += thunder.left[i];
        out.right[i] += thunder.right[i];
    }
    FinishAmbienceLoop(out, warm, loop, fade);
    return out;
}
