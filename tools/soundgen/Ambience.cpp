// The menu's mystical forest (wind, leaves, birds, a faint drone) and the
// cold wind in the trees of level 5, both as 40-second seamless loops.
// Depends on Synth.h and Mastering.h. Limits: birds are simple sine voices
// with sweeps and trills, not recordings; they read as birds at ambience
// level.
#include "Sounds.h"
#include "Mastering.h"

#include <cmath>

namespace {

const double kLoopSeconds = 40.0;
const double kFadeSeconds = 4.0;
const double kWarmSeconds = 2.0;

// One sine voice whose pitch and loudness follow functions of its own time;
// the phase is integrated so pitch sweeps stay smooth.
template <typename Pitch, typename Level>
void AddVoice(Buffer& out, std::size_t start, double seconds, double pan, Pitch pitch, Level level,
              double second) {
    std::size_t n = Frames(seconds);
    double phase = 0;
    for (std::size_t i = 0; i < n; ++i) {
        double t = double(i) / kRate;
        double f = pitch(t);
        phase += 2.0 * kPi * f / kRate;
        // A touch of the second harmonic keeps the whistle from sounding electronic.
        double s = std::sin(phase) + second * std::sin(2.0 * phase);
        AddPanned(out, start + i, float(s * level(t)), pan);
    }
}

// A burst of two to five quick chirps sliding downwards (a small songbird).
void AddChirps(Buffer& out, Rng& rng, std::size_t start, double pan, double gain) {
    int count = 2 + int(rng.Uniform() * 4);
    double top = rng.Range(3200, 5200);
    double drop = rng.Range(600, 1600);
    double length = rng.Range(0.04, 0.09);
    double gap = rng.Range(0.06, 0.12);
    for (int c = 0; c < count; ++c) {
        std::size_t at = start + Frames(c * (length + gap));
        double f0 = top * rng.Range(0.96, 1.04);
        AddVoice(
            out, at, length, pan, [&](double t) { return f0 - drop * t / length; },
            [&](double t) { return gain * std::pow(std::sin(kPi * t / length), 2.0); }, 0.15);
    }
}

// A fast warbling trill (a wren-like bird).
void AddTrill(Buffer& out, Rng& rng, std::size_t start, double pan, double gain) {
    double length = rng.Range(0.5, 1.3);
    double centre = rng.Range(4000, 6000);
    double rate = rng.Range(18, 28);
    double depth = rng.Range(300, 700);
    AddVoice(
        out, start, length, pan,
        [&](double t) { return centre + depth * std::sin(2 * kPi * rate * t) - 400 * t; },
        [&](double t) {
            double flutter = 0.6 + 0.4 * std::sin(2 * kPi * rate * t);
            return gain * 0.8 * Bell(t, length) * flutter;
        },
        0.1);
}

// A short melodic phrase of three or four whistled notes (a thrush).
void AddSong(Buffer& out, Rng& rng, std::size_t start, double pan, double gain) {
    static const double steps[] = {1.0, 1.122, 1.26, 1.335, 1.498, 1.682};
    double base = rng.Range(1900, 2700);
    int notes = 3 + int(rng.Uniform() * 2);
    double at = 0;
    for (int k = 0; k < notes; ++k) {
        double f = base * steps[int(rng.Uniform() * 6)];
        double len = rng.Range(0.12, 0.26);
        double bend = rng.Range(-0.08, 0.12) * f;
        AddVoice(
            out, start + Frames(at), len, pan,
            [&](double t) { return f + bend * t / len + 25 * std::sin(2 * kPi * 7 * t); },
            [&](double t) { return gain * 0.7 * std::pow(std::sin(kPi * t / len), 1.5); }, 0.2);
        at += len + rng.Range(0.03, 0.09);
    }
}

// A soft far-off dove: "coo-coo" low and round.
void AddDove(Buffer& out, Rng& rng, std::size_t start, double pan, double gain) {
    double f = rng.Range(480, 620);
    for (int k = 0; k < 2; ++k) {
        double len = k == 0 ? 0.28 : 0.45;
        std::size_t at = start + Frames(k * 0.42);
        AddVoice(
            out, at, len, pan, [&](double t) { return f * (1.0 + 0.06 * std::sin(kPi * t / len)); },
            [&](double t) { return gain * 0.5 * std::pow(std::sin(kPi * t / len), 2.0); }, 0.05);
    }
}

} // namespace

// Drops the warm-up, joins the loop and masters it as a loop.
void FinishAmbienceLoop(Buffer& buffer, std::size_t warmUp, std::size_t loop, std::size_t fade) {
    DropHead(buffer, warmUp);
    RemoveDc(buffer);
    MakeSeamlessLoop(buffer, loop, fade);
    Master(buffer, SoundKind::Loop);
}

// Forest: a breathing wind bed, leaves that rustle with the gusts, a faint
// open-fifth drone for the fantasy mood, and birds all around in a glade.
Buffer MakeForest() {
    std::size_t warm = Frames(kWarmSeconds), loop = Frames(kLoopSeconds);
    std::size_t fade = Frames(kFadeSeconds), n = warm + loop + fade;
    Buffer out = MakeBuffer(n);

    PinkNoise windL(11), windR(12);
    Rng leafRng(13);
    Svf windFilterL, windFilterR, leafFilterL, leafFilterR;
    Drift gust(14, 3.0, 0.25, 1.0), cutoff(15, 4.0, 250, 800), flutter(16, 0.12, 0.3, 1.0);
    Drift padLevel(17, 6.0, 0.3, 1.0);
    const double pad[] = {146.83, 220.0, 329.63, 293.66};
    for (std::size_t i = 0; i < n; ++i) {
        double g = gust.Next(), c = cutoff.Next(), fl = flutter.Next();
        float l = windFilterL.Low(windL.Next(), c, 0.6) * float(0.5 * g);
        float r = windFilterR.Low(windR.Next(), c * 1.1, 0.6) * float(0.5 * g);
        double leafLevel = 0.10 * g * g * fl;
        l += leafFilterL.Band(leafRng.White(), 4200, 0.8) * float(leafLevel);
        r += leafFilterR.Band(leafRng.White(), 3800, 0.8) * float(leafLevel);
        double t = double(i) / kRate, pl = padLevel.Next(), drone = 0;
        for (int k = 0; k < 4; ++k) drone += std::sin(2 * kPi * pad[k] * t * (1.0 + 0.0007 * k));
        float d = float(0.012 * pl * drone);
        out.left[i] = l + d;
        out.right[i] = r + d;
    }

    // Birds in their own layer so the glade's reverb can be generous.
    Buffer birds = MakeBuffer(n);
    Rng rng(18);
    for (double t = 0.3; t < double(n) / kRate - 2.0; t += rng.Range(0.4, 1.6)) {
        double pan = rng.Range(-0.9, 0.9);
        double gain = rng.Range(0.04, 0.14);
        std::size_t at = Frames(t);
        double kind = rng.Uniform();
        if (kind < 0.4)
            AddChirps(birds, rng, at, pan, gain);
        else if (kind < 0.65)
            AddSong(birds, rng, at, pan, gain);
        else if (kind < 0.85)
            AddTrill(birds, rng, at, pan, gain);
        else
            AddDove(birds, rng, at, pan, gain * 1.4);
    }
    Reverb glade(0.75, 0.5);
    glade.Apply(birds, 0.9);
    for (std::size_t i = 0; i < n; ++i) {
        out.left[i] += birds.left[i];
        out.right[i] += birds.right[i];
    }
    FinishAmbienceLoop(out, warm, loop, fade);
    return out;
}

// Cold wind: gusts howl through resonant gaps (narrow filters whose pitch
// drifts with the gust), a broad airy body, and branches hissing at the top.
Buffer MakeColdWind() {
    std::size_t warm = Frames(kWarmSeconds), loop = Frames(kLoopSeconds);
    std::size_t fade = Frames(kFadeSeconds), n = warm + loop + fade;
    Buffer out = MakeBuffer(n);

    PinkNoise srcL(21), srcR(22);
    Rng hiss(23);
    Drift gust(24, 2.6, 0.3, 1.0), gustLag(25, 2.6, 0.3, 1.0);
    Drift howl1(26, 3.3, 380, 760), howl2(27, 2.7, 600, 1100), body(28, 3.7, 600, 2200);
    Drift flutter(29, 0.09, 0.2, 1.0);
    Svf howlL1, howlR1, howlL2, howlR2, bodyL, bodyR, treeL, treeR, lowCutL, lowCutR;
    for (std::size_t i = 0; i < n; ++i) {
        // The right side trails the left a little, as a gust crosses the trees.
        double g = gust.Next(), gl = 0.6 * g + 0.4 * gustLag.Next();
        double h1 = howl1.Next() * (0.85 + 0.3 * g), h2 = howl2.Next() * (0.9 + 0.2 * g);
        double b = body.Next(), fl = flutter.Next();
        float nl = srcL.Next(), nr = srcR.Next();
        float l = howlL1.Band(nl, h1, 14) * float(0.9 * g * g) +
                  howlL2.Band(nl, h2, 10) * float(0.5 * g * g * g);
        float r = howlR1.Band(nr, h1 * 1.03, 14) * float(0.9 * gl * gl) +
                  howlR2.Band(nr, h2 * 0.97, 10) * float(0.5 * gl * gl * gl);
        l += bodyL.Low(nl, b * (0.5 + g), 0.7) * float(0.35 * g);
        r += bodyR.Low(nr, b * (0.5 + gl), 0.7) * float(0.35 * gl);
        double tree = 0.07 * std::pow(g, 1.5) * fl;
        l += treeL.Band(hiss.White(), 5200, 0.7) * float(tree);
        r += treeR.Band(hiss.White(), 4700, 0.7) * float(tree);
        // Cold wind has little weight: cut the deep rumble.
        out.left[i] = lowCutL.High(l, 140);
        out.right[i] = lowCutR.High(r, 140);
    }
    Reverb valley(0.6, 0.6);
    valley.Apply(out, 0.5);
    FinishAmbienceLoop(out, warm, loop, fade);
    return out;
}
