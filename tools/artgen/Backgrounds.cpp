// Backgrounds: the five level grounds (meadow for levels 1-2, beach, volcano,
// snow, storm). The board covers nearly the whole view, so the ground stays
// calm and low in contrast there; the livelier details sit along the left
// edge and in the bottom corners, away from the wave banner (top left), the
// pause button (top right) and the health bar (right edge).
//
// Depends on: Art, Draw. Limits: drawn in screen units (800 x 600, y down) at
// two pixels a unit; no per-pixel noise, so the files stay small.
#include "Art.h"

#include <cmath>
#include <functional>

namespace {

// The board's area in screen units (tile centres +- 30), kept calm.
bool InBoard(double x, double y) {
    return x > 85 && x < 725 && y > 65 && y < 585;
}

// The corners that carry the game's own pictures, kept plain.
bool InCalmCorner(double x, double y) {
    return (y < 90 && (x < 260 || x > 680)) || (x > 700 && y > 160 && y < 440);
}

// A leafy round tree seen from above and a little to the side.
void Tree(cairo_t* cr, double x, double y, double r, Rgb leaf) {
    Ellipse(cr, x + r * 0.2, y + r * 0.8, r * 0.9, r * 0.35);
    SetRgb(cr, {0, 0, 0}, 0.25);
    cairo_fill(cr);
    InkLine(cr, x, y + r * 0.3, x, y + r * 0.9, r * 0.22, Pal::kWood, 1.5);
    for (int i = 0; i < 3; ++i) {
        double a = i * 2.1;
        cairo_new_sub_path(cr);
        cairo_arc(cr, x + std::cos(a) * r * 0.35, y - r * 0.1 + std::sin(a) * r * 0.3, r * 0.62, 0,
                  2 * M_PI);
    }
    FillUnionOutlined(cr, Shade(leaf, 1.25), Shade(leaf, 0.7), y - r, y + r * 0.5, 2.5);
    Ellipse(cr, x - r * 0.25, y - r * 0.45, r * 0.25, r * 0.15);
    SetRgb(cr, {1, 1, 0.8}, 0.3);
    cairo_fill(cr);
}

// A pine, optionally capped with snow.
void Pine(cairo_t* cr, double x, double y, double h, Rgb green, bool snow) {
    InkLine(cr, x, y, x, y - h * 0.2, h * 0.08, Pal::kWoodDark, 1.2);
    for (int i = 0; i < 3; ++i) {
        double top = y - h + i * h * 0.25, w = h * (0.22 + i * 0.1);
        cairo_move_to(cr, x, top);
        cairo_line_to(cr, x + w, top + h * 0.42);
        cairo_line_to(cr, x - w, top + h * 0.42);
        cairo_close_path(cr);
        FillOutlined(cr, Shade(green, 1.2), Shade(green, 0.7), top, top + h * 0.42, 2.2);
        if (snow) {
            cairo_move_to(cr, x, top);
            cairo_line_to(cr, x + w * 0.55, top + h * 0.22);
            cairo_curve_to(cr, x, top + h * 0.16, x, top + h * 0.28, x - w * 0.55, top + h * 0.22);
            cairo_close_path(cr);
            SetRgb(cr, {0.97, 0.99, 1});
            cairo_fill(cr);
        }
    }
}

// Soft large patches of lighter and darker ground, for a painted look. They
// are painted at an eighth of the size and stretched smoothly: the same soft
// look at a fraction of the cost of full-size gradients.
void Patches(cairo_t* cr, Rng& rng, Rgb light, Rgb dark, int count) {
    cairo_surface_t* small = NewCanvas(100, 75);
    cairo_t* sc = cairo_create(small);
    cairo_scale(sc, 0.125, 0.125);
    for (int i = 0; i < count; ++i) {
        double x = rng.Range(0, 800), y = rng.Range(0, 600), r = rng.Range(60, 160);
        Glow(sc, x, y, r, i % 2 ? light : dark, 0.35);
    }
    cairo_destroy(sc);
    cairo_save(cr);
    cairo_scale(cr, 8, 8);
    cairo_set_source_surface(cr, small, 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_BILINEAR);
    cairo_pattern_set_extend(cairo_get_source(cr), CAIRO_EXTEND_PAD);
    cairo_paint(cr);
    cairo_restore(cr);
    cairo_surface_destroy(small);
}

// Scatters small marks, keeping them faint over the board.
void Scatter(cairo_t* cr, Rng& rng, int count,
             const std::function<void(cairo_t*, double, double, double)>& mark) {
    for (int i = 0; i < count; ++i) {
        double x = rng.Range(0, 800), y = rng.Range(0, 600);
        if (InCalmCorner(x, y)) continue;
        mark(cr, x, y, InBoard(x, y) ? 0.35 : 0.9);
    }
}

// Darkened edges that draw the eye to the crystal.
void Vignette(cairo_t* cr, double strength) {
    cairo_pattern_t* p = cairo_pattern_create_radial(400, 320, 200, 400, 320, 560);
    cairo_pattern_add_color_stop_rgba(p, 0, 0, 0, 0, 0);
    cairo_pattern_add_color_stop_rgba(p, 1, 0.05, 0.02, 0, strength);
    cairo_set_source(cr, p);
    cairo_paint(cr);
    cairo_pattern_destroy(p);
}

// The ground's top-to-bottom colour.
void Base(cairo_t* cr, Rgb top, Rgb bottom) {
    cairo_rectangle(cr, 0, 0, 800, 600);
    FillOutlined(cr, top, bottom, 0, 600, 0);
}

// Levels 1 and 2: grass, flowers, trees along the left edge.
void Meadow(cairo_t* cr) {
    Rng rng(101);
    Base(cr, Hex(0x94cf5e), Hex(0x5f9f3a));
    Patches(cr, rng, Hex(0xb8e07a), Hex(0x4f8a2f), 22);
    Scatter(cr, rng, 420, [](cairo_t* c, double x, double y, double a) {
        for (int i = -1; i <= 1; ++i) {
            cairo_move_to(c, x + i * 2, y);
            cairo_line_to(c, x + i * 3.5, y - 6 - (i == 0 ? 3 : 0));
        }
        SetRgb(c, Hex(0x3f7a26), a * 0.7);
        cairo_set_line_width(c, 1.3);
        cairo_stroke(c);
    });
    Scatter(cr, rng, 120, [](cairo_t* c, double x, double y, double a) {
        Rgb petal = (int(x * 7 + y) % 3 == 0) ? Hex(0xfff2f0) : Hex(0xffe060);
        for (int i = 0; i < 5; ++i) {
            Ellipse(c, x + 2.2 * std::cos(i * 1.257), y + 2.2 * std::sin(i * 1.257), 1.6, 1.6);
        }
        SetRgb(c, petal, a);
        cairo_fill(c);
        Ellipse(c, x, y, 1.1, 1.1);
        SetRgb(c, Hex(0xe08a20), a);
        cairo_fill(c);
    });
    // Trees along the left edge and in the bottom corners.
    const double trees[][3] = {{30, 120, 34}, {52, 230, 40},  {24, 330, 30},  {48, 440, 38},
                               {30, 560, 34}, {110, 590, 30}, {770, 540, 34}, {700, 600, 28}};
    for (auto& t : trees) Tree(cr, t[0], t[1], t[2], Hex(0x4f9a34));
    Vignette(cr, 0.35);
}

// Level 3: sand, the sea along the left edge, shells, a palm.
void Beach(cairo_t* cr) {
    Rng rng(202);
    Base(cr, Hex(0xe6c988), Hex(0xcfa865));
    Patches(cr, rng, Hex(0xf2dca0), Hex(0xbf9450), 18);
    // Sea along the left edge and the bottom-left corner, with foam.
    auto coast = [](double y) {
        return 72 + 14 * std::sin(y * 0.026) + (y > 420 ? (y - 420) * 0.9 : 0);
    };
    for (int pass = 0; pass < 2; ++pass) {
        cairo_move_to(cr, coast(0), 0);
        for (int y = 10; y <= 600; y += 10) cairo_line_to(cr, coast(y), y);
        if (pass == 0) {
            cairo_line_to(cr, 0, 600);
            cairo_line_to(cr, 0, 0);
            cairo_close_path(cr);
            FillOutlined(cr, Hex(0x4fc0d8), Hex(0x2a7fb8), 0, 600, 0);
        } else {
            SetRgb(cr, {1, 1, 1}, 0.85);
            cairo_set_line_width(cr, 6);
            cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
            cairo_stroke(cr);
        }
    }
    for (int i = 0; i < 14; ++i) {
        double y = 30 + i * 42;
        cairo_move_to(cr, 14 + (i % 3) * 8, y);
        cairo_curve_to(cr, 24, y - 5, 34, y + 5, 44, y);
        SetRgb(cr, {1, 1, 1}, 0.5);
        cairo_set_line_width(cr, 2);
        cairo_stroke(cr);
    }
    // Shells and starfish on the sand.
    Scatter(cr, rng, 60, [&](cairo_t* c, double x, double y, double a) {
        if (x < coast(y) + 12) return;
        if (int(x + y) % 2) {
            StarPath(c, x, y, 6, 2.6, 5, x * 0.1);
            SetRgb(c, Hex(0xf07a5a), a);
        } else {
            Ellipse(c, x, y, 4, 3);
            SetRgb(c, Hex(0xfff6ea), a);
        }
        cairo_fill(c);
    });
    Scatter(cr, rng, 260, [&](cairo_t* c, double x, double y, double a) {
        if (x < coast(y) + 6) return;
        Ellipse(c, x, y, 1.2, 1.0);
        SetRgb(c, Hex(0xb89258), a * 0.6);
        cairo_fill(c);
    });
    // A palm in the bottom-right corner.
    cairo_move_to(cr, 760, 600);
    cairo_curve_to(cr, 752, 560, 740, 530, 744, 500);
    InkStroke(cr, 10, Hex(0xa8763e), 2);
    for (int i = 0; i < 5; ++i) {
        double a = -2.6 + i * 0.55;
        cairo_move_to(cr, 744, 500);
        cairo_curve_to(cr, 744 + 30 * std::cos(a), 490 + 30 * std::sin(a), 744 + 50 * std::cos(a),
                       500 + 50 * std::sin(a) + 10, 744 + 56 * std::cos(a),
                       506 + 56 * std::sin(a) + 14);
        InkStroke(cr, 7, Hex(0x4fa03a), 2);
    }
    Vignette(cr, 0.25);
}

// Level 4: dark rock, glowing cracks, a lava pool, boulders.
void Volcano(cairo_t* cr) {
    Rng rng(303);
    Base(cr, Hex(0x5a4640), Hex(0x2e2220));
    Patches(cr, rng, Hex(0x6e5a50), Hex(0x221816), 20);
    // Glowing cracks, strongest near the edges.
    for (int i = 0; i < 26; ++i) {
        double x = rng.Range(0, 800), y = rng.Range(0, 600);
        if (InCalmCorner(x, y)) continue;
        double a = InBoard(x, y) ? 0.35 : 0.95;
        cairo_move_to(cr, x, y);
        double ang = rng.Range(0, 2 * M_PI);
        for (int k = 0; k < 4; ++k) {
            ang += rng.Range(-0.8, 0.8);
            x += 14 * std::cos(ang);
            y += 14 * std::sin(ang);
            cairo_line_to(cr, x, y);
        }
        cairo_path_t* p = cairo_copy_path(cr);
        SetRgb(cr, Hex(0xff6a1a), a * 0.45);
        cairo_set_line_width(cr, 7);
        cairo_stroke(cr);
        cairo_append_path(cr, p);
        SetRgb(cr, Hex(0xffd04a), a);
        cairo_set_line_width(cr, 2);
        cairo_stroke(cr);
        cairo_path_destroy(p);
    }
    // A lava pool in the bottom-left corner, rocks along the left edge.
    Glow(cr, 40, 570, 140, Hex(0xff5a10), 0.6);
    Ellipse(cr, 40, 575, 95, 55);
    FillOutlined(cr, Hex(0xffd04a), Hex(0xe0400a), 520, 630, 4);
    for (int i = 0; i < 4; ++i) {
        Ellipse(cr, 20 + i * 26, 540 + (i % 2) * 12, 14, 8);
        SetRgb(cr, Hex(0x5a2a10), 0.55);
        cairo_fill(cr);
    }
    for (int i = 0; i < 6; ++i) {
        double y = 60 + i * 80, x = 30 + (i % 2) * 18, r = 16 + (i % 3) * 5;
        cairo_move_to(cr, x - r, y + r * 0.5);
        cairo_curve_to(cr, x - r * 1.1, y - r * 0.4, x - r * 0.4, y - r * 0.9, x + r * 0.2,
                       y - r * 0.8);
        cairo_curve_to(cr, x + r * 0.9, y - r * 0.7, x + r * 1.1, y, x + r, y + r * 0.5);
        cairo_close_path(cr);
        FillOutlined(cr, Hex(0x7a6a66), Hex(0x2a2222), y - r, y + r * 0.5, 2.5);
        Ellipse(cr, x - r * 0.3, y - r * 0.45, r * 0.35, r * 0.15);
        SetRgb(cr, {1, 0.8, 0.6}, 0.25);
        cairo_fill(cr);
    }
    Scatter(cr, rng, 90,
            [](cairo_t* c, double x, double y, double a) { Glow(c, x, y, 3, Hex(0xffa040), a); });
    Vignette(cr, 0.5);
}

// Snow and sand are kept a shade darker than life: the board's tiles are
// pale and must stand out against the ground.
void Snow(cairo_t* cr) {
    Rng rng(404);
    Base(cr, Hex(0xc9d9ec), Hex(0x9fb5d2));
    Patches(cr, rng, Hex(0xe4eef9), Hex(0x8aa3c6), 24);
    // Pale ice sheets.
    for (int i = 0; i < 5; ++i) {
        double x = rng.Range(120, 680), y = rng.Range(120, 540);
        Ellipse(cr, x, y, rng.Range(40, 80), rng.Range(16, 30));
        SetRgb(cr, Hex(0xa8d4f0), 0.25);
        cairo_fill(cr);
    }
    Scatter(cr, rng, 160, [](cairo_t* c, double x, double y, double a) {
        StarPath(c, x, y, 3, 0.8, 4, 0);
        SetRgb(c, {1, 1, 1}, a);
        cairo_fill(c);
    });
    // Snowy pines on the left edge and bottom corners.
    const double pines[][3] = {{36, 110, 70}, {20, 220, 60},  {54, 320, 76},  {26, 430, 64},
                               {60, 540, 72}, {130, 600, 56}, {780, 590, 64}, {740, 600, 48}};
    for (auto& p : pines) Pine(cr, p[0], p[1], p[2], Hex(0x3f7a5a), true);
    Vignette(cr, 0.2);
}

// Level 6: wet dark ground, puddles, dead trees, rain.
void Storm(cairo_t* cr) {
    Rng rng(505);
    Base(cr, Hex(0x55566e), Hex(0x2b2c3e));
    Patches(cr, rng, Hex(0x6e7090), Hex(0x1e1f2e), 22);
    // Puddles with a cold sheen.
    for (int i = 0; i < 9; ++i) {
        double x = rng.Range(40, 760), y = rng.Range(40, 580);
        if (InCalmCorner(x, y)) continue;
        Ellipse(cr, x, y, rng.Range(20, 44), rng.Range(8, 14));
        FillOutlined(cr, Hex(0x6a78a0), Hex(0x2f3856), y - 14, y + 14, 0);
    }
    // Dead trees along the left edge.
    for (int i = 0; i < 5; ++i) {
        double x = 30 + (i % 2) * 20, y = 130 + i * 110;
        cairo_move_to(cr, x, y);
        cairo_line_to(cr, x + 2, y - 50);
        cairo_move_to(cr, x + 1, y - 30);
        cairo_line_to(cr, x + 16, y - 46);
        cairo_move_to(cr, x + 1, y - 22);
        cairo_line_to(cr, x - 14, y - 36);
        InkStroke(cr, 4, Hex(0x4a3a36), 1.5);
    }
    // A distant flash in the bottom-right corner.
    Glow(cr, 760, 580, 120, Hex(0xd8e0ff), 0.35);
    cairo_move_to(cr, 770, 470);
    cairo_line_to(cr, 748, 520);
    cairo_line_to(cr, 764, 520);
    cairo_line_to(cr, 740, 580);
    InkStroke(cr, 3, Hex(0xfff8c0), 1.5);
    // Rain: thin slanted streaks everywhere, faint over the board.
    Scatter(cr, rng, 600, [](cairo_t* c, double x, double y, double a) {
        cairo_move_to(c, x, y);
        cairo_line_to(c, x - 5, y + 14);
        SetRgb(c, Hex(0xc8d4ff), a * 0.45);
        cairo_set_line_width(c, 1.2);
        cairo_stroke(c);
    });
    Vignette(cr, 0.55);
}

// Paints one ground in screen units and saves it.
bool Ground(const std::string& dir, const char* name, void (*paint)(cairo_t*)) {
    cairo_surface_t* s = CanvasFor(name);
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    cairo_scale(cr, 2, 2);
    paint(cr);
    cairo_destroy(cr);
    return SaveArt(s, dir, name);
}

} // namespace

// The five level grounds.
bool DrawBackgrounds(const std::string& dir) {
    bool ok = Ground(dir, "BG.png", Meadow);
    ok &= Ground(dir, "BG3.png", Beach);
    ok &= Ground(dir, "BG4.png", Volcano);
    ok &= Ground(dir, "BG5.png", Snow);
    ok &= Ground(dir, "BG6.png", Storm);
    return ok;
}
