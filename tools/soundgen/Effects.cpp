// The arrow sound played at every tower shot: the bowstring's thump and a
// swoosh of air passing by. Depends on Synth.h and Mastering.h. Limits:
// 0.42 s long so that rapid fire from second-tier towers does not smear
// into a hiss.
#include "Mastering.h"
#include "Sounds.h"

#include <cmath>

// Arrow: a short low string thump with a click of release, then noise
// through a band that sweeps up and down as the arrow passes (the pitch
// rise and fall of something flying by) with a thin fletching whistle,
// panning from left to right.
Buffer MakeArrowSwoosh() {
    const double length = 0.42;
    std::size_t n = Frames(length);
    Buffer out = MakeBuffer(n);
    Rng rng(61);
    Svf band, whistle, click;
    const double start = 0.025, span = 0.37;
    for (std::size_t i = 0; i < n; ++i) {
        double t = double(i) / kRate;
        // Bowstring: a damped low note with a few harmonics.
        double string = 0;
        for (int h = 1; h <= 4; ++h)
            string += std::sin(2 * kPi * 105.0 * h * t) * std::exp(-t * (25.0 + 12 * h)) / h;
        float w = rng.White();
        double releaseClick = click.Band(w, 1800, 1.0) * std::exp(-t / 0.006);
        double sample = 0.45 * string + 0.8 * releaseClick;
        double pan = -0.5;
        double u = (t - start) / span;
        if (u > 0 && u < 1) {
            // Loudest and highest just before the middle of the pass.
            double peak = 0.4;
            double shape = u < peak ? std::pow(u / peak, 2.0)
                                    : std::exp(-(u - peak) / 0.18) * (1 - std::pow(u, 8.0));
            double centre = 500 + 2600 * std::exp(-std::pow((u - peak) / 0.25, 2.0));
            double air = band.Band(w, centre, 1.6) * shape;
            double fletch = whistle.Band(w, centre * 2.1, 9.0) * shape;
            sample += 1.4 * air + 0.6 * fletch;
            pan = -0.6 + 1.2 * u;
        }
        AddPanned(out, i, float(sample), pan);
    }
    FadeEdges(out, Frames(0.001), Frames(0.03));
    Master(out, SoundKind::OneShot);
    return out;
}
