// MenuArt: the main menu's painted map. Its six level spots lie exactly under
// the level buttons' centres, a dotted road joins them in order, and each
// spot sits in its level's land: meadow and forest (1, 2), beach (3),
// volcano (4), snowy peaks (5), storm (6). A signboard on the right holds the
// four menu buttons; the title stands on a sign bottom left, below the
// clouds' lanes.
//
// Depends on: Art, Draw. Limits: drawn in screen units (800 x 600, y down)
// at two pixels a unit; button positions are the game's world positions
// turned into screen units (x + 400, 300 - y).
#include "Art.h"

#include <cmath>

namespace {

// Level spots in screen units.
const double kSpots[6][2] = {{50, 250}, {125, 375}, {350, 525}, {400, 200}, {475, 90}, {730, 220}};

// True within r units of a level spot.
bool NearSpot(double x, double y, double r) {
    for (auto& s : kSpots)
        if (std::hypot(x - s[0], y - s[1]) < r) return true;
    return false;
}

// Grass over the whole map and the bay at the bottom.
void Land(cairo_t* cr) {
    cairo_rectangle(cr, 0, 0, 800, 600);
    FillOutlined(cr, Hex(0x9fd068), Hex(0x6fae48), 0, 600, 0);
    // A bay at the bottom: sand, then the sea with a foam edge.
    Ellipse(cr, 400, 650, 260, 120);
    FillOutlined(cr, Hex(0xf7e4aa), Hex(0xe3c283), 530, 650, 3);
    Ellipse(cr, 410, 665, 220, 95);
    FillOutlined(cr, Hex(0x5fb8d8), Hex(0x2a78b0), 570, 660, 0);
    Ellipse(cr, 410, 665, 220, 95);
    SetRgb(cr, {1, 1, 1}, 0.85);
    cairo_set_line_width(cr, 3);
    cairo_stroke(cr);
    for (int i = 0; i < 3; ++i) {
        cairo_move_to(cr, 330 + i * 60, 588);
        cairo_curve_to(cr, 340 + i * 60, 582, 355 + i * 60, 594, 370 + i * 60, 586);
        SetRgb(cr, {1, 1, 1}, 0.7);
        cairo_set_line_width(cr, 2.5);
        cairo_stroke(cr);
    }
}

// The dark storm over level 6.
void StormLand(cairo_t* cr) {
    // The east darkens under a storm.
    cairo_pattern_t* p = cairo_pattern_create_radial(730, 200, 30, 730, 200, 210);
    cairo_pattern_add_color_stop_rgba(p, 0, 0.22, 0.2, 0.35, 0.85);
    cairo_pattern_add_color_stop_rgba(p, 1, 0.22, 0.2, 0.35, 0);
    cairo_set_source(cr, p);
    cairo_rectangle(cr, 500, 0, 300, 420);
    cairo_fill(cr);
    cairo_pattern_destroy(p);
    for (int i = 0; i < 3; ++i) {
        double x = 650 + i * 55, y = 120 + (i % 2) * 20;
        for (int k = 0; k < 3; ++k) {
            cairo_new_sub_path(cr);
            cairo_arc(cr, x - 16 + k * 16, y - (k == 1 ? 8 : 0), 16, 0, 2 * M_PI);
        }
        FillUnionOutlined(cr, Hex(0x8a88a8), Hex(0x4a4868), y - 24, y + 16, 2.5);
    }
    cairo_move_to(cr, 690, 150);
    cairo_line_to(cr, 676, 180);
    cairo_line_to(cr, 688, 180);
    cairo_line_to(cr, 672, 214);
    InkStroke(cr, 3, Hex(0xfff4a0), 1.5);
}

// Snowy peaks for level 5 and the volcano for level 4.
void Mountains(cairo_t* cr) {
    // Snowy peaks along the top middle.
    const double peaks[][3] = {{515, 80, 70}, {600, 100, 50}};
    for (auto& m : peaks) {
        double x = m[0], base = m[1] + 30, h = m[2] + 30;
        cairo_move_to(cr, x - h * 0.8, base);
        cairo_line_to(cr, x, base - h);
        cairo_line_to(cr, x + h * 0.8, base);
        cairo_close_path(cr);
        FillOutlined(cr, Hex(0x9aa8c0), Hex(0x5a6680), base - h, base, 3);
        cairo_move_to(cr, x - h * 0.28, base - h * 0.65);
        cairo_line_to(cr, x, base - h);
        cairo_line_to(cr, x + h * 0.28, base - h * 0.65);
        cairo_line_to(cr, x + h * 0.1, base - h * 0.58);
        cairo_line_to(cr, x - h * 0.08, base - h * 0.68);
        cairo_close_path(cr);
        FillFlat(cr, {0.98, 0.99, 1}, 2);
    }
    // The volcano behind level 4, with its glow and smoke.
    Glow(cr, 395, 120, 60, Hex(0xff7a2a), 0.6);
    cairo_move_to(cr, 320, 215);
    cairo_line_to(cr, 380, 125);
    cairo_line_to(cr, 410, 125);
    cairo_line_to(cr, 470, 215);
    cairo_close_path(cr);
    FillOutlined(cr, Hex(0x8a5a48), Hex(0x4a2e28), 125, 215, 3);
    cairo_move_to(cr, 380, 125);
    cairo_line_to(cr, 388, 150);
    cairo_line_to(cr, 396, 135);
    cairo_line_to(cr, 402, 155);
    cairo_line_to(cr, 410, 125);
    cairo_close_path(cr);
    FillFlat(cr, Hex(0xff8a2a), 2);
    for (int i = 0; i < 3; ++i) {
        Ellipse(cr, 398 + i * 10, 108 - i * 16, 10 + i * 3, 7 + i * 2);
        SetRgb(cr, Hex(0x6a6470), 0.6);
        cairo_fill(cr);
    }
}

// The forest around levels 1 and 2.
void Forest(cairo_t* cr) {
    Rng rng(77);
    for (int i = 0; i < 150; ++i) {
        double x = rng.Range(0, 330), y = rng.Range(110, 560);
        if (NearSpot(x, y, 52)) continue;
        if (y > 500 && x > 180) continue;
        double r = rng.Range(10, 16);
        Ellipse(cr, x + 2, y + r * 0.8, r * 0.8, r * 0.3);
        SetRgb(cr, {0, 0, 0}, 0.2);
        cairo_fill(cr);
        cairo_arc(cr, x, y, r, 0, 2 * M_PI);
        Rgb g = Mix(Hex(0x3f8a30), Hex(0x5fae3c), rng.Next());
        FillOutlined(cr, Shade(g, 1.2), Shade(g, 0.7), y - r, y + r, 2);
    }
}

// The dotted road from level to level.
void Road(cairo_t* cr) {
    cairo_move_to(cr, kSpots[0][0], kSpots[0][1]);
    cairo_curve_to(cr, 60, 320, 90, 360, kSpots[1][0], kSpots[1][1]);
    cairo_curve_to(cr, 190, 420, 270, 520, kSpots[2][0], kSpots[2][1]);
    cairo_curve_to(cr, 440, 520, 300, 300, kSpots[3][0], kSpots[3][1]);
    cairo_curve_to(cr, 480, 190, 420, 120, kSpots[4][0], kSpots[4][1]);
    cairo_curve_to(cr, 560, 70, 640, 250, kSpots[5][0], kSpots[5][1]);
    cairo_path_t* p = cairo_copy_path(cr);
    SetRgb(cr, Hex(0xe8d3a0), 0.9);
    cairo_set_line_width(cr, 12);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_stroke(cr);
    cairo_append_path(cr, p);
    double dash[] = {2, 12};
    cairo_set_dash(cr, dash, 2, 0);
    SetRgb(cr, Hex(0x7a4a22));
    cairo_set_line_width(cr, 4);
    cairo_stroke(cr);
    cairo_set_dash(cr, nullptr, 0, 0);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
    cairo_path_destroy(p);
}

// Stone circles under the level buttons.
void Spots(cairo_t* cr) {
    for (auto& s : kSpots) {
        cairo_arc(cr, s[0] + 2, s[1] + 4, 38, 0, 2 * M_PI);
        SetRgb(cr, {0, 0, 0}, 0.3);
        cairo_fill(cr);
        cairo_arc(cr, s[0], s[1], 37, 0, 2 * M_PI);
        FillOutlined(cr, Hex(0xd8d0c0), Hex(0x8a8070), s[1] - 37, s[1] + 37, 3);
        cairo_arc(cr, s[0], s[1], 31, 0, 2 * M_PI);
        SetRgb(cr, Hex(0x5a5040));
        cairo_fill(cr);
    }
}

// The board behind the four menu buttons.
void Signboard(cairo_t* cr) {
    // Posts, then the board behind the four menu buttons (x 640..760, y 305..560).
    InkLine(cr, 650, 560, 650, 598, 10, Pal::kWoodDark, 2);
    InkLine(cr, 750, 560, 750, 598, 10, Pal::kWoodDark, 2);
    RoundRect(cr, 624, 286, 152, 290, 16);
    FillOutlined(cr, Pal::kWood, Pal::kWoodDark, 286, 576, 4);
    SetRgb(cr, Pal::kWoodDark, 0.6);
    cairo_set_line_width(cr, 1.5);
    for (int i = 1; i < 6; ++i) {
        cairo_move_to(cr, 630, 286 + i * 48);
        cairo_line_to(cr, 770, 286 + i * 48);
    }
    cairo_stroke(cr);
}

// The game's name on a sign in the bottom-left corner. The clouds drift
// along the top third (their lanes reach down to y 180) in front of the map,
// so a title up there would vanish behind one for a third of every cycle.
void Title(cairo_t* cr) {
    const double x = 14, y = 500, w = 290, h = 88;
    InkLine(cr, x + 40, y + h - 6, x + 40, 598, 9, Pal::kWoodDark, 2);
    InkLine(cr, x + w - 40, y + h - 6, x + w - 40, 598, 9, Pal::kWoodDark, 2);
    Panel(cr, x, y, w, h, 18, 8);
    Letter(cr, "Quarrow", x + w / 2, y + 36, 50, Hex(0x3f8a30), 5);
    const char* motto = "Guard the crystal";
    LetterLeft(cr, motto, x + (w - LetterWidth(cr, motto, 15, false)) / 2, y + 72, 15,
               Hex(0x6a3a18), false);
}

} // namespace

// The whole menu map.
bool DrawMenuArt(const std::string& dir) {
    cairo_surface_t* s = CanvasFor("MenuBG.png");
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    cairo_scale(cr, 2, 2);
    Land(cr);
    StormLand(cr);
    Mountains(cr);
    Forest(cr);
    Road(cr);
    Spots(cr);
    // The crystal's home in the middle of the land.
    Glow(cr, 250, 230, 40, Hex(0x8fe8ff), 0.7);
    DrawCrystalGem(cr, 250, 230, 22);
    Signboard(cr);
    Title(cr);
    cairo_destroy(cr);
    return SaveArt(s, dir, "MenuBG.png");
}
