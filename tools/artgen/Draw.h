// Draw: the shared brushes of the picture generator. One storybook look for
// every picture: soft vertical gradients, dark warm outlines, lettering in
// one bold serif face with a dark rim.
//
// Depends on: Cairo (vector drawing, PNG writing) and fontconfig through
// Cairo's text API. Limits: single-threaded per canvas; every random choice
// comes from the seeded Rng below so two runs give identical files.
#pragma once

#include <cairo.h>
#include <cstdint>
#include <string>

struct Rgb {
    double r, g, b;
};

// The house palette.
namespace Pal {
inline constexpr Rgb kInk{0.16, 0.10, 0.07};       // outlines and lettering rim
inline constexpr Rgb kParchment{0.97, 0.90, 0.74}; // panels
inline constexpr Rgb kParchmentDark{0.85, 0.70, 0.48};
inline constexpr Rgb kWood{0.58, 0.37, 0.19};
inline constexpr Rgb kWoodDark{0.36, 0.22, 0.11};
inline constexpr Rgb kGold{0.98, 0.78, 0.30};
inline constexpr Rgb kGoldDark{0.78, 0.50, 0.12};
inline constexpr Rgb kCream{1.0, 0.97, 0.88};
inline constexpr Rgb kLeaf{0.42, 0.70, 0.25};
inline constexpr Rgb kLeafDark{0.20, 0.45, 0.15};
inline constexpr Rgb kCrystal{0.35, 0.80, 1.0};
inline constexpr Rgb kCrystalDark{0.10, 0.35, 0.75};
inline constexpr Rgb kRed{0.85, 0.22, 0.18};
} // namespace Pal

// The font every lettering uses (DejaVu, found through fontconfig).
inline constexpr const char* kDisplayFont = "DejaVu Serif";

// A colour from 0xRRGGBB.
Rgb Hex(uint32_t rgb);
// Linear mix of two colours, t = 0 gives a.
Rgb Mix(Rgb a, Rgb b, double t);
// Darker (f < 1) or lighter towards white (f > 1).
Rgb Shade(Rgb c, double f);
// Sets the source colour.
void SetRgb(cairo_t* cr, Rgb c, double alpha = 1.0);

// A fresh transparent ARGB canvas; the caller destroys it.
cairo_surface_t* NewCanvas(int width, int height);
// Writes the canvas as DIR/NAME; prints and returns false on failure.
bool SaveCanvas(cairo_surface_t* s, const std::string& dir, const char* name);

// Paths.
void RoundRect(cairo_t* cr, double x, double y, double w, double h, double r);
void Ellipse(cairo_t* cr, double cx, double cy, double rx, double ry);
void StarPath(cairo_t* cr, double cx, double cy, double rOuter, double rInner, int points,
              double rotation);

// Fills the current path with a top-to-bottom gradient between y0 and y1 and
// strokes it with the ink outline; the path is consumed.
void FillOutlined(cairo_t* cr, Rgb top, Rgb bottom, double y0, double y1, double outline,
                  Rgb ink = Pal::kInk);
// Same, but for a path of overlapping shapes: only the outer edge is inked.
void FillUnionOutlined(cairo_t* cr, Rgb top, Rgb bottom, double y0, double y1, double outline,
                       Rgb ink = Pal::kInk);
// Same with a flat fill.
void FillFlat(cairo_t* cr, Rgb fill, double outline, Rgb ink = Pal::kInk);
// A soft radial glow disc.
void Glow(cairo_t* cr, double cx, double cy, double radius, Rgb c, double alpha);

// Centred lettering with a dark rim; returns the drawn width.
double Letter(cairo_t* cr, const char* text, double cx, double cy, double size, Rgb fill,
              double rim = -1, Rgb ink = Pal::kInk);
// Left-aligned lettering (baseline-centred on cy) without a rim.
void LetterLeft(cairo_t* cr, const char* text, double x, double cy, double size, Rgb fill,
                bool bold = true);
// Width of a lettering at a size.
double LetterWidth(cairo_t* cr, const char* text, double size, bool bold = true);

// A parchment panel with a wooden rim, the frame of every dialog and sign.
void Panel(cairo_t* cr, double x, double y, double w, double h, double radius, double rim);

// Rings everything at least half opaque on an image canvas with ink RADIUS
// pixels wide: a figure keeps a solid edge against any ground when it is
// drawn small and sampled without smoothing.
void InkSilhouette(cairo_surface_t* s, double radius, Rgb ink = Pal::kInk);

// Deterministic random numbers for scattering grass, stars and stones.
struct Rng {
    uint32_t state;
    explicit Rng(uint32_t seed) : state(seed * 2654435761u + 12345u) {}
    // Uniform in [0, 1).
    double Next() {
        state = state * 1664525u + 1013904223u;
        return (state >> 8) / 16777216.0;
    }
    // Uniform in [a, b).
    double Range(double a, double b) { return a + (b - a) * Next(); }
};
