// Backgrounds: the five level grounds (meadow for levels 1-2, beach, volcano,
// snow, storm). The tiles are drawn pale and see-through over the ground, so
// the ground right around the board stays dark and calm: a tile's edge must
// stand out at least 3:1 against it, and the monsters walk on the tiles. The
// scene that gives each level its place lives in the space the board leaves
// free (corners, edges, the empty triangles of the narrow boards), clear of
// the wave banner (top left), the pause button (top right) and the health
// bar (right edge).
//
// Depends on: Art, Draw. Limits: drawn in screen units (800 x 600, y down) at
// two pixels a unit; no per-pixel noise, so the files stay small. The row
// runs below repeat the game's board layouts that these grounds frame.
#include "Art.h"

#include <cmath>
#include <functional>

namespace {

// The on-board columns (first, last) of each of the ten rows of a board.
// Level 1's narrow board (layout 3) lies inside level 2's (layout 5), so the
// meadow frames the larger.
struct Board {
    int first[10], last[10];
};
const Board kLayout4{{3, 2, 2, 1, 1, 0, 1, 1, 2, 2}, {7, 7, 8, 8, 9, 9, 9, 8, 8, 7}};
const Board kLayout5{{5, 4, 4, 3, 3, 2, 2, 1, 1, 0}, {5, 5, 6, 6, 7, 7, 8, 8, 9, 9}};
const Board kLayout6{{0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, {9, 9, 9, 9, 9, 9, 9, 9, 9, 9}};

// A tile's centre in screen units: 60 apart in a row, rows 50 apart, even
// rows half a tile to the left.
void TileCentre(int row, int col, double& x, double& y) {
    x = 60.0 * col - 250 - (row % 2 == 0 ? 30 : 0) + 400;
    y = 300 - (200 - 50.0 * row);
}

// Roughly how far a point lies outside the board: the distance to the
// nearest tile centre less the tile's reach (a hexagon 52 wide, 60 tall).
double FromBoard(const Board& b, double x, double y) {
    double best = 1e9;
    for (int row = 0; row < 10; ++row)
        for (int col = b.first[row]; col <= b.last[row]; ++col) {
            double tx, ty;
            TileCentre(row, col, tx, ty);
            best = std::fmin(best, std::hypot(x - tx, (y - ty) * 0.87));
        }
    return best - 27;
}

// Scenery keeps this far from the board: the ground it leaves there is what
// a tile's edge is seen against.
constexpr double kClear = 18;

// The ground's top-to-bottom colour.
void Base(cairo_t* cr, Rgb top, Rgb bottom) {
    cairo_rectangle(cr, 0, 0, 800, 600);
    FillOutlined(cr, top, bottom, 0, 600, 0);
}

// Soft large patches of lighter and darker ground, for a painted look. They
// are painted at an eighth of the size and stretched smoothly: the same soft
// look at a fraction of the cost of full-size gradients.
void Patches(cairo_t* cr, Rng& rng, Rgb light, Rgb dark, int count, double alpha = 0.35) {
    cairo_surface_t* small = NewCanvas(100, 75);
    cairo_t* sc = cairo_create(small);
    cairo_scale(sc, 0.125, 0.125);
    for (int i = 0; i < count; ++i) {
        double x = rng.Range(0, 800), y = rng.Range(0, 600), r = rng.Range(60, 160);
        Glow(sc, x, y, r, i % 2 ? light : dark, alpha);
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

// Scatters small marks: full strength in the scenery, faint on and around
// the board.
void Scatter(cairo_t* cr, Rng& rng, const Board& b, int count, double faint,
             const std::function<void(cairo_t*, double, double, double)>& mark) {
    for (int i = 0; i < count; ++i) {
        double x = rng.Range(0, 800), y = rng.Range(0, 600);
        mark(cr, x, y, FromBoard(b, x, y) > kClear ? 1.0 : faint);
    }
}

// Darkened edges that draw the eye to the board.
void Vignette(cairo_t* cr, double strength) {
    cairo_pattern_t* p = cairo_pattern_create_radial(400, 320, 260, 400, 320, 580);
    cairo_pattern_add_color_stop_rgba(p, 0, 0, 0, 0, 0);
    cairo_pattern_add_color_stop_rgba(p, 1, 0.02, 0.01, 0.03, strength);
    cairo_set_source(cr, p);
    cairo_paint(cr);
    cairo_pattern_destroy(p);
}

// A soft-edged land shape (snow bank, sand) covering what lies outside the
// board by more than `gap`, its shore wobbling gently.
void Shore(cairo_t* cr, const Board& b, double gap, double wobble, Rgb land, Rgb landDark,
           Rgb edge) {
    // The shore is traced on a coarse grid as a mask, smoothed by scaling.
    cairo_surface_t* mask = cairo_image_surface_create(CAIRO_FORMAT_A8, 200, 150);
    unsigned char* d = cairo_image_surface_get_data(mask);
    const int stride = cairo_image_surface_get_stride(mask);
    for (int y = 0; y < 150; ++y)
        for (int x = 0; x < 200; ++x) {
            double sx = x * 4 + 2, sy = y * 4 + 2;
            double w = wobble * (std::sin(sx * 0.045) + std::sin(sy * 0.06 + sx * 0.01));
            double f = FromBoard(b, sx, sy) - gap - w;
            d[y * stride + x] = (unsigned char)std::lround(255 * std::fmin(1, std::fmax(0, f / 6)));
        }
    cairo_surface_mark_dirty(mask);
    cairo_save(cr);
    cairo_pattern_t* shade = cairo_pattern_create_linear(0, 0, 0, 600);
    cairo_pattern_add_color_stop_rgb(shade, 0, land.r, land.g, land.b);
    cairo_pattern_add_color_stop_rgb(shade, 1, landDark.r, landDark.g, landDark.b);
    // The shore's rim first, a little wider, then the land.
    for (int pass = 0; pass < 2; ++pass) {
        cairo_save(cr);
        cairo_scale(cr, 4, 4);
        if (pass == 0) {
            cairo_translate(cr, 0, 0.6);
            SetRgb(cr, edge, 0.9);
        } else {
            cairo_set_source(cr, shade);
            cairo_matrix_t m;
            cairo_matrix_init_scale(&m, 4, 4);
            cairo_pattern_set_matrix(shade, &m);
        }
        cairo_pattern_t* mp = cairo_pattern_create_for_surface(mask);
        cairo_pattern_set_filter(mp, CAIRO_FILTER_BILINEAR);
        cairo_pattern_set_extend(mp, CAIRO_EXTEND_PAD);
        cairo_mask(cr, mp);
        cairo_pattern_destroy(mp);
        cairo_restore(cr);
    }
    cairo_pattern_destroy(shade);
    cairo_restore(cr);
    cairo_surface_destroy(mask);
}

// A leafy round tree seen from above and a little to the side.
void Tree(cairo_t* cr, double x, double y, double r, Rgb leaf) {
    Ellipse(cr, x + r * 0.2, y + r * 0.8, r * 0.9, r * 0.35);
    SetRgb(cr, {0, 0, 0}, 0.3);
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
    Ellipse(cr, x + h * 0.12, y + h * 0.02, h * 0.3, h * 0.08);
    SetRgb(cr, {0, 0, 0.1}, 0.3);
    cairo_fill(cr);
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

// A rounded boulder with a lit top.
void Boulder(cairo_t* cr, double x, double y, double r, Rgb top, Rgb bottom) {
    Ellipse(cr, x + r * 0.2, y + r * 0.45, r * 1.1, r * 0.4);
    SetRgb(cr, {0, 0, 0}, 0.3);
    cairo_fill(cr);
    cairo_move_to(cr, x - r, y + r * 0.5);
    cairo_curve_to(cr, x - r * 1.1, y - r * 0.4, x - r * 0.4, y - r * 0.9, x + r * 0.2,
                   y - r * 0.8);
    cairo_curve_to(cr, x + r * 0.9, y - r * 0.7, x + r * 1.1, y, x + r, y + r * 0.5);
    cairo_close_path(cr);
    FillOutlined(cr, top, bottom, y - r, y + r * 0.5, 2.5);
    Ellipse(cr, x - r * 0.3, y - r * 0.45, r * 0.35, r * 0.15);
    SetRgb(cr, {1, 1, 1}, 0.22);
    cairo_fill(cr);
}

// A gnarled leafless tree seen from above: a trunk and forking branches.
void DeadTree(cairo_t* cr, Rng& rng, double x, double y, double size, double lean) {
    std::function<void(double, double, double, double, int)> branch = [&](double bx, double by,
                                                                          double ang, double len,
                                                                          int depth) {
        double ex = bx + len * std::cos(ang), ey = by + len * std::sin(ang);
        cairo_move_to(cr, bx, by);
        cairo_curve_to(cr, bx + len * 0.4 * std::cos(ang + 0.3),
                       by + len * 0.4 * std::sin(ang + 0.3), ex - len * 0.3 * std::cos(ang - 0.3),
                       ey - len * 0.3 * std::sin(ang - 0.3), ex, ey);
        InkStroke(cr, 1.2 + depth * 1.6, Hex(0x4a3c38), 1.4);
        if (depth == 0) return;
        for (int k = -1; k <= 1; k += 2)
            branch(ex, ey, ang + k * rng.Range(0.35, 0.7), len * rng.Range(0.55, 0.75), depth - 1);
    };
    Ellipse(cr, x + size * 0.3, y + 4, size * 0.5, size * 0.12);
    SetRgb(cr, {0, 0, 0}, 0.3);
    cairo_fill(cr);
    branch(x, y, -M_PI / 2 + lean, size * 0.45, 3);
}

// Levels 1 and 2: the board lies in a dark mossy clearing; the forest, a
// pond and the trail the goblins come down fill the corners.
void Meadow(cairo_t* cr) {
    const Board& b = kLayout5;
    Rng rng(101);
    Base(cr, Hex(0x2f5a2a), Hex(0x264c25));
    Patches(cr, rng, Hex(0x3f6e34), Hex(0x1c3a1c), 24, 0.3);
    // Sunlit meadow where the board leaves room.
    Shore(cr, b, 26, 6, Hex(0x6aa048), Hex(0x4f8a36), Hex(0x2a4a22));
    // The trail from the top edge down to the top tile.
    cairo_move_to(cr, 470, -10);
    cairo_curve_to(cr, 450, 20, 400, 30, 420, 70);
    cairo_path_t* trail = cairo_copy_path(cr);
    SetRgb(cr, Hex(0x3a2e1c));
    cairo_set_line_width(cr, 30);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_stroke(cr);
    cairo_append_path(cr, trail);
    SetRgb(cr, Hex(0x5a4630), 0.8);
    cairo_set_line_width(cr, 20);
    cairo_stroke(cr);
    cairo_path_destroy(trail);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
    // A pond with lilies in the free top-right, reeds on its rim.
    Ellipse(cr, 620, 150, 56, 30);
    FillOutlined(cr, Hex(0x3a86a8), Hex(0x205878), 120, 180, 3.5, Hex(0x2a4020));
    for (int i = 0; i < 4; ++i) {
        double x = 592 + i * 20, y = 142 + (i % 2) * 12;
        Ellipse(cr, x, y, 7, 4.5);
        FillFlat(cr, Hex(0x6fbf4a), 1.2);
        if (i == 1) {
            Ellipse(cr, x, y - 2, 2.6, 2.6);
            FillFlat(cr, Hex(0xffd0e0), 0.8);
        }
    }
    for (int i = 0; i < 6; ++i) {
        double x = 568 + i * 4, y = 170 + (i % 2) * 3;
        InkLine(cr, x, y, x - 2 + i, y - 18, 1.6, Hex(0x5a8a3a), 0.6);
    }
    // Grass and flowers over the sunlit ground, faint on the dark.
    Scatter(cr, rng, b, 520, 0.15, [](cairo_t* c, double x, double y, double a) {
        for (int i = -1; i <= 1; ++i) {
            cairo_move_to(c, x + i * 2, y);
            cairo_line_to(c, x + i * 3.5, y - 6 - (i == 0 ? 3 : 0));
        }
        SetRgb(c, Hex(0x9fd070), a * 0.5);
        cairo_set_line_width(c, 1.3);
        cairo_stroke(c);
    });
    Scatter(cr, rng, b, 160, 0.0, [](cairo_t* c, double x, double y, double a) {
        if (a <= 0) return;
        Rgb petal = (int(x * 7 + y) % 3 == 0) ? Hex(0xfff2f0) : Hex(0xffe060);
        for (int i = 0; i < 5; ++i)
            Ellipse(c, x + 2.2 * std::cos(i * 1.257), y + 2.2 * std::sin(i * 1.257), 1.6, 1.6);
        SetRgb(c, petal, a);
        cairo_fill(c);
        Ellipse(c, x, y, 1.1, 1.1);
        SetRgb(c, Hex(0xe08a20), a);
        cairo_fill(c);
    });
    // Stones and mushrooms along the clearing's rim.
    const double stones[][3] = {{300, 70, 9}, {250, 150, 12}, {578, 218, 9}, {210, 220, 8}};
    for (auto& s : stones) Boulder(cr, s[0], s[1], s[2], Hex(0xa8a498), Hex(0x5e5a52));
    for (int i = 0; i < 3; ++i) {
        double x = 622 + i * 9, y = 268 - (i % 2) * 6;
        InkLine(cr, x, y, x, y - 6, 2.4, Hex(0xf0e6d0), 0.8);
        Ellipse(cr, x, y - 7, 5, 3.2);
        FillFlat(cr, Pal::kRed, 1.2);
    }
    // The forest: canopies crowding the top corners and the edges.
    const double trees[][3] = {
        {30, 40, 44},   {110, 20, 40}, {200, 10, 34},  {20, 150, 42},  {90, 110, 30}, {40, 260, 36},
        {150, 190, 26}, {10, 370, 34}, {610, 20, 38},  {690, 110, 40}, {540, 30, 28}, {770, 60, 30},
        {770, 470, 32}, {30, 470, 30}, {700, 240, 26}, {790, 560, 28}, {15, 570, 26}};
    for (auto& t : trees)
        Tree(cr, t[0], t[1], t[2], Mix(Hex(0x3f8a30), Hex(0x5a9a36), std::fmod(t[0] * 0.37, 1)));
    Vignette(cr, 0.45);
}

// Level 3: the board stands in a sheltered lagoon; sand, the open sea, palms
// and shells fill the edges around it.
void Beach(cairo_t* cr) {
    const Board& b = kLayout6;
    Rng rng(202);
    // The lagoon under the board.
    Base(cr, Hex(0x1d5c68), Hex(0x174c5a));
    Patches(cr, rng, Hex(0x24707c), Hex(0x113e4a), 22, 0.35);
    // Light dancing on the lagoon's floor, faint.
    for (int i = 0; i < 90; ++i) {
        double x = rng.Range(0, 800), y = rng.Range(0, 600);
        cairo_move_to(cr, x, y);
        cairo_curve_to(cr, x + 6, y - 4, x + 12, y + 4, x + 18, y);
        SetRgb(cr, Hex(0x7fd8e0), 0.12);
        cairo_set_line_width(cr, 1.6);
        cairo_stroke(cr);
    }
    // Sand around the lagoon, its wet rim darker.
    Shore(cr, b, 22, 5, Hex(0xf0d89c), Hex(0xdcbc78), Hex(0x9a7a48));
    // The open sea beyond a sandbar on the left, surf on its edge.
    auto coast = [](double y) { return 46 + 8 * std::sin(y * 0.03) + 5 * std::sin(y * 0.011); };
    for (int pass = 0; pass < 2; ++pass) {
        cairo_move_to(cr, coast(-10), -10);
        for (int y = 0; y <= 610; y += 10) cairo_line_to(cr, coast(y), y);
        if (pass == 0) {
            cairo_line_to(cr, -10, 610);
            cairo_line_to(cr, -10, -10);
            cairo_close_path(cr);
            FillOutlined(cr, Hex(0x2a78a8), Hex(0x1a5888), 0, 600, 0);
        } else {
            SetRgb(cr, {1, 1, 1}, 0.85);
            cairo_set_line_width(cr, 4);
            cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
            cairo_stroke(cr);
        }
    }
    for (int i = 0; i < 14; ++i) {
        double y = 20 + i * 42;
        cairo_move_to(cr, 6 + (i % 3) * 7, y);
        cairo_curve_to(cr, 14, y - 4, 22, y + 4, 30, y);
        SetRgb(cr, {1, 1, 1}, 0.45);
        cairo_set_line_width(cr, 2);
        cairo_stroke(cr);
    }
    // Shells and starfish on the sand.
    Scatter(cr, rng, b, 140, 0.0, [&](cairo_t* c, double x, double y, double a) {
        if (a <= 0 || x < coast(y) + 8 || FromBoard(b, x, y) < 30) return;
        if (int(x + y) % 2) {
            StarPath(c, x, y, 6, 2.6, 5, x * 0.1);
            FillFlat(c, Hex(0xf07a5a), 1.2);
        } else {
            Ellipse(c, x, y, 4, 3);
            FillFlat(c, Hex(0xfff6ea), 1.0, Hex(0xb89060));
        }
    });
    // Palms leaning over the corners, their shadows on the sand.
    auto palm = [&](double x, double y, double lean, double size) {
        double tx = x + lean * size, ty = y - size;
        Ellipse(cr, tx + 14, ty + size * 0.9 + 10, size * 0.5, size * 0.12);
        SetRgb(cr, {0, 0, 0}, 0.2);
        cairo_fill(cr);
        cairo_move_to(cr, x, y);
        cairo_curve_to(cr, x + lean * size * 0.2, y - size * 0.5, tx - lean * 10, ty + 20, tx, ty);
        InkStroke(cr, size * 0.12, Hex(0xa8763e), 2);
        for (int i = 0; i < 7; ++i) {
            double a = i * 2 * M_PI / 7 + 0.3;
            cairo_move_to(cr, tx, ty);
            cairo_curve_to(cr, tx + size * 0.4 * std::cos(a), ty + size * 0.4 * std::sin(a) - 8,
                           tx + size * 0.7 * std::cos(a), ty + size * 0.7 * std::sin(a),
                           tx + size * 0.8 * std::cos(a), ty + size * 0.8 * std::sin(a) + 8);
            InkStroke(cr, size * 0.09, Hex(0x4fa03a), 2);
        }
        Ellipse(cr, tx, ty, 6, 6);
        FillFlat(cr, Hex(0x7a5020), 1.5);
    };
    palm(805, 612, -0.25, 62);
    palm(790, 130, -0.6, 70);
    palm(330, 40, 0.4, 40);
    Boulder(cr, 740, 470, 12, Hex(0xb0a89a), Hex(0x6a6258));
    Boulder(cr, 600, 26, 9, Hex(0xb0a89a), Hex(0x6a6258));
    Vignette(cr, 0.3);
}

// Level 4: the board lies on cooled black rock; a lava river runs down the
// left edge into a molten lake, vents smoke and embers drift.
void Volcano(cairo_t* cr) {
    const Board& b = kLayout6;
    Rng rng(303);
    Base(cr, Hex(0x332a28), Hex(0x221a19));
    Patches(cr, rng, Hex(0x46393a), Hex(0x160f0e), 24, 0.35);
    // Faint old cracks across the rock.
    for (int i = 0; i < 30; ++i) {
        double x = rng.Range(0, 800), y = rng.Range(0, 600);
        // A glowing crack anywhere near the board would outshine a tile's edge.
        bool near = FromBoard(b, x, y) < kClear;
        cairo_move_to(cr, x, y);
        double ang = rng.Range(0, 2 * M_PI);
        for (int k = 0; k < 5; ++k) {
            ang += rng.Range(-0.8, 0.8);
            x += 12 * std::cos(ang);
            y += 12 * std::sin(ang);
            cairo_line_to(cr, x, y);
            near = near || FromBoard(b, x, y) < kClear;
        }
        SetRgb(cr, near ? Hex(0x120a08) : Hex(0xff7a2a), near ? 0.6 : 0.7);
        cairo_set_line_width(cr, near ? 2 : 2.4);
        cairo_stroke(cr);
    }
    // The lava: molten rock showing between drifting plates of dark crust.
    auto river = [](double y) {
        return 34 + 10 * std::sin(y * 0.02) + (y > 470 ? (y - 470) * 0.35 : 0);
    };
    cairo_save(cr);
    cairo_move_to(cr, -10, -10);
    for (int y = -10; y <= 610; y += 10) cairo_line_to(cr, river(y), y);
    cairo_line_to(cr, -10, 610);
    cairo_close_path(cr);
    cairo_clip_preserve(cr);
    FillOutlined(cr, Hex(0xffb030), Hex(0xff5a10), 0, 600, 0);
    for (int i = 0; i < 26; ++i) {
        double cx = rng.Range(-10, 80), cy = i * 24 + rng.Range(-6, 6), r = rng.Range(9, 15);
        cairo_new_sub_path(cr);
        for (int k = 0; k < 6; ++k) {
            double a = k * M_PI / 3 + rng.Range(-0.3, 0.3), rr = r * rng.Range(0.75, 1.1);
            if (k == 0)
                cairo_move_to(cr, cx + rr * std::cos(a), cy + rr * std::sin(a));
            else
                cairo_line_to(cr, cx + rr * std::cos(a), cy + rr * std::sin(a));
        }
        cairo_close_path(cr);
        FillOutlined(cr, Hex(0x4a3430), Hex(0x2a1a16), cy - r, cy + r, 1.5, Hex(0xffd060));
    }
    cairo_restore(cr);
    cairo_move_to(cr, river(-10), -10);
    for (int y = 0; y <= 610; y += 10) cairo_line_to(cr, river(y), y);
    InkStroke(cr, 3, Hex(0x1a1010), 1);
    Glow(cr, 20, 560, 90, Hex(0xff6a10), 0.35);
    // Smoking vents in the free corners.
    auto vent = [&](double x, double y, double r) {
        Glow(cr, x, y, r * 2.4, Hex(0xff7020), 0.45);
        Ellipse(cr, x, y, r, r * 0.6);
        FillOutlined(cr, Hex(0xffd060), Hex(0xff6010), y - r, y + r, 2.5, Hex(0x1a1010));
        for (int i = 0; i < 3; ++i) {
            Ellipse(cr, x - 6 + i * 6, y - r - 8 - i * 12, r * (0.6 + i * 0.2),
                    r * (0.4 + i * 0.1));
            SetRgb(cr, Hex(0x8a8088), 0.45 - i * 0.1);
            cairo_fill(cr);
        }
    };
    vent(770, 520, 12);
    vent(620, 26, 9);
    // Jagged black rocks along the free edges.
    const double rocks[][3] = {{760, 110, 14}, {785, 460, 10}, {300, 22, 11}, {740, 585, 12},
                               {110, 590, 10}, {520, 590, 9},  {420, 18, 8}};
    for (auto& r : rocks) Boulder(cr, r[0], r[1], r[2], Hex(0x5a4e4c), Hex(0x1e1614));
    // Drifting embers, faint over the board.
    Scatter(cr, rng, b, 110, 0.25,
            [](cairo_t* c, double x, double y, double a) { Glow(c, x, y, 3, Hex(0xffa040), a); });
    Vignette(cr, 0.45);
}

// Level 5: the board lies on a frozen lake under the night; snowy banks
// with pines and boulders fill the two empty triangles above the board.
void Snow(cairo_t* cr) {
    const Board& b = kLayout5;
    Rng rng(404);
    Base(cr, Hex(0x22365a), Hex(0x1a2a48));
    Patches(cr, rng, Hex(0x2e4a72), Hex(0x142038), 24, 0.35);
    // Cracks and frost in the ice.
    for (int i = 0; i < 24; ++i) {
        double x = rng.Range(0, 800), y = rng.Range(0, 600);
        cairo_move_to(cr, x, y);
        double ang = rng.Range(0, 2 * M_PI);
        for (int k = 0; k < 4; ++k) {
            ang += rng.Range(-0.6, 0.6);
            x += 16 * std::cos(ang);
            y += 16 * std::sin(ang);
            cairo_line_to(cr, x, y);
        }
        SetRgb(cr, Hex(0x6a9ad0), 0.3);
        cairo_set_line_width(cr, 1.4);
        cairo_stroke(cr);
    }
    // Snowy banks where the board leaves room, blue in their shade.
    Shore(cr, b, 24, 7, Hex(0xeef4fc), Hex(0xc8d6ec), Hex(0x8aa4cc));
    for (int i = 0; i < 10; ++i) {
        double x = rng.Range(0, 800), y = rng.Range(0, 320);
        if (FromBoard(b, x, y) < 70) continue;
        Ellipse(cr, x, y, rng.Range(30, 60), rng.Range(8, 14));
        SetRgb(cr, Hex(0xa8bcdc), 0.35);
        cairo_fill(cr);
    }
    // Pines and snowy boulders on the banks.
    const double pines[][3] = {{40, 110, 62},  {110, 60, 54},  {30, 250, 66},  {170, 150, 48},
                               {100, 200, 44}, {640, 40, 56},  {700, 160, 60}, {560, 90, 46},
                               {770, 100, 50}, {620, 250, 50}, {180, 40, 40}};
    for (auto& p : pines) Pine(cr, p[0], p[1], p[2], Hex(0x2f6a4a), true);
    Boulder(cr, 250, 140, 12, Hex(0xf4f8ff), Hex(0x9aaccc));
    Boulder(cr, 520, 160, 10, Hex(0xf4f8ff), Hex(0x9aaccc));
    Boulder(cr, 60, 330, 11, Hex(0xf4f8ff), Hex(0x9aaccc));
    // Falling snow: bright over the banks, faint over the ice.
    Scatter(cr, rng, b, 260, 0.3, [](cairo_t* c, double x, double y, double a) {
        StarPath(c, x, y, 2.6, 0.8, 4, 0);
        SetRgb(c, {1, 1, 1}, a * 0.9);
        cairo_fill(c);
    });
    Vignette(cr, 0.35);
}

// Level 6: the board lies on dark wet ground in the rain; a bolt strikes a
// dead tree in the top-left corner, the other corners hold dead trees,
// graves and pools that catch the light.
void Storm(cairo_t* cr) {
    const Board& b = kLayout4;
    Rng rng(505);
    Base(cr, Hex(0x2c3040), Hex(0x20232f));
    Patches(cr, rng, Hex(0x3a3e52), Hex(0x161822), 22, 0.35);
    // Puddles with a cold sheen, on and off the board.
    for (int i = 0; i < 12; ++i) {
        double x = rng.Range(40, 760), y = rng.Range(40, 580);
        bool near = FromBoard(b, x, y) < kClear;
        Ellipse(cr, x, y, rng.Range(18, 40), rng.Range(7, 13));
        FillOutlined(cr, near ? Hex(0x363c54) : Hex(0x5a6890), near ? Hex(0x24283a) : Hex(0x2f3856),
                     y - 12, y + 12, 0);
    }
    // Dead trees and gravestones in the free corners.
    const double trees[][3] = {
        {690, 150, 70}, {740, 470, 60}, {90, 520, 64}, {560, 560, 40}, {250, 40, 36}};
    for (auto& t : trees) DeadTree(cr, rng, t[0], t[1], t[2], rng.Range(-0.3, 0.3));
    auto grave = [&](double x, double y, double s) {
        Ellipse(cr, x + 3, y + 2, s * 0.7, s * 0.2);
        SetRgb(cr, {0, 0, 0}, 0.35);
        cairo_fill(cr);
        cairo_move_to(cr, x - s * 0.4, y);
        cairo_line_to(cr, x - s * 0.4, y - s * 0.7);
        cairo_arc(cr, x, y - s * 0.7, s * 0.4, M_PI, 0);
        cairo_line_to(cr, x + s * 0.4, y);
        cairo_close_path(cr);
        FillOutlined(cr, Hex(0x8a8a98), Hex(0x4a4a58), y - s * 1.1, y, 2);
    };
    grave(610, 100, 22);
    grave(645, 90, 18);
    grave(150, 560, 20);
    grave(660, 530, 18);
    // The strike: a forked bolt from the top edge into a dead tree, the
    // ground lit around it.
    Glow(cr, 120, 230, 110, Hex(0xc8d8ff), 0.45);
    Glow(cr, 120, 230, 40, Hex(0xffffff), 0.5);
    DeadTree(cr, rng, 120, 240, 70, 0.15);
    auto bolt = [&](double x0, double y0, double x1, double y1, double w, int forks) {
        const int n = 7;
        double px = x0, py = y0;
        cairo_move_to(cr, px, py);
        for (int i = 1; i <= n; ++i) {
            double t = double(i) / n;
            double x = x0 + (x1 - x0) * t + (i < n ? rng.Range(-14, 14) : 0);
            double y = y0 + (y1 - y0) * t;
            cairo_line_to(cr, x, y);
            if (forks > 0 && (i == 2 || i == 4)) {
                cairo_path_t* p = cairo_copy_path(cr);
                cairo_new_path(cr);
                double fx = x + rng.Range(20, 40) * (i == 2 ? -1 : 1), fy = y + rng.Range(20, 40);
                cairo_move_to(cr, x, y);
                cairo_line_to(cr, (x + fx) / 2 + rng.Range(-6, 6), (y + fy) / 2);
                cairo_line_to(cr, fx, fy);
                SetRgb(cr, Hex(0xa8c0ff), 0.7);
                cairo_set_line_width(cr, w * 1.8);
                cairo_stroke_preserve(cr);
                SetRgb(cr, {1, 1, 1});
                cairo_set_line_width(cr, w * 0.5);
                cairo_stroke(cr);
                cairo_append_path(cr, p);
                cairo_path_destroy(p);
            }
        }
        cairo_path_t* p = cairo_copy_path(cr);
        cairo_set_line_join(cr, CAIRO_LINE_JOIN_MITER);
        SetRgb(cr, Hex(0x8aa8ff), 0.5);
        cairo_set_line_width(cr, w * 4);
        cairo_stroke(cr);
        cairo_append_path(cr, p);
        SetRgb(cr, Hex(0xd8e4ff));
        cairo_set_line_width(cr, w * 1.6);
        cairo_stroke(cr);
        cairo_append_path(cr, p);
        SetRgb(cr, {1, 1, 1});
        cairo_set_line_width(cr, w * 0.7);
        cairo_stroke(cr);
        cairo_path_destroy(p);
        cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
    };
    bolt(60, -5, 118, 196, 3, 2);
    // Rain: thin slanted streaks everywhere, faint over the board.
    Scatter(cr, rng, b, 700, 0.3, [](cairo_t* c, double x, double y, double a) {
        cairo_move_to(c, x, y);
        cairo_line_to(c, x - 5, y + 14);
        SetRgb(c, Hex(0xc8d4ff), a * 0.4);
        cairo_set_line_width(c, 1.2);
        cairo_stroke(c);
    });
    Vignette(cr, 0.4);
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
