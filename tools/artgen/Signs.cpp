// Signs: the small pictures laid over a level or the menu: tutorial and help
// notes, countdown digits and the start sign, wave banners, clouds, the star
// display and its panel, the cursor and the loading strip.
//
// Depends on: Art, Draw. Limits: tutorial notes hold two short lines; longer
// advice belongs on the how-to-play pages.
#include "Art.h"

#include <cmath>
#include <string>

namespace {

// Icons drawn at the left end of a note, in a 120 x 120 box at the origin.
enum class NoteIcon { Drag, Merge, Fast, Crystal, Pair };

// Draws the icon of a note.
void DrawNoteIcon(cairo_t* cr, NoteIcon icon) {
    switch (icon) {
    case NoteIcon::Drag: {
        cairo_save(cr);
        cairo_translate(cr, 4, 14);
        cairo_scale(cr, 0.75, 0.75);
        DrawArcherTower(cr, 1);
        cairo_restore(cr);
        // Curved arrow from the tower to a free spot.
        cairo_move_to(cr, 50, 40);
        cairo_curve_to(cr, 80, 10, 108, 30, 104, 70);
        InkStroke(cr, 6, Pal::kGold, 2.5);
        cairo_move_to(cr, 94, 62);
        cairo_line_to(cr, 104, 82);
        cairo_line_to(cr, 114, 62);
        cairo_close_path(cr);
        FillFlat(cr, Pal::kGold, 2.5);
        break;
    }
    case NoteIcon::Merge:
    case NoteIcon::Pair:
        for (int i = 0; i < 2; ++i) {
            cairo_save(cr);
            cairo_translate(cr, -4 + i * 44, 30);
            cairo_scale(cr, 0.55, 0.55);
            DrawArcherTower(cr, 1);
            cairo_restore(cr);
        }
        Letter(cr, "+", 46, 66, 30, Pal::kCream, 4);
        break;
    case NoteIcon::Fast:
        cairo_save(cr);
        cairo_translate(cr, 10, 10);
        cairo_scale(cr, 0.95, 0.95);
        DrawArcherTower(cr, 2);
        cairo_restore(cr);
        break;
    case NoteIcon::Crystal:
        Glow(cr, 60, 60, 58, Hex(0x8fe8ff), 0.6);
        DrawCrystalGem(cr, 60, 60, 48);
        break;
    }
}

// A parchment note with an icon and two lines of advice.
bool Note(const std::string& dir, const char* name, NoteIcon icon, const char* line1,
          const char* line2) {
    cairo_surface_t* s = CanvasFor(name);
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    Panel(cr, 24, 8, 528, 144, 26, 12);
    cairo_save(cr);
    cairo_translate(cr, 34, 20);
    DrawNoteIcon(cr, icon);
    cairo_restore(cr);
    const Rgb ink = Hex(0x4a2a12);
    const double textX = 162, maxW = 370;
    double size = 28;
    while (size > 16 &&
           (LetterWidth(cr, line1, size) > maxW || LetterWidth(cr, line2, size) > maxW))
        size -= 1;
    LetterLeft(cr, line1, textX, 58, size, ink);
    LetterLeft(cr, line2, textX, 100, size, Hex(0x7a2a1a));
    cairo_destroy(cr);
    return SaveArt(s, dir, name);
}

// A countdown card: the big glowing word or digit.
bool Countdown(const std::string& dir, const char* name, const char* text, Rgb colour) {
    cairo_surface_t* s = CanvasFor(name);
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    Glow(cr, 200, 300, 200, colour, 0.45);
    double size = std::string(text).size() > 1 ? 150 : 330;
    Letter(cr, text, 200, 300, size, colour, size * 0.09);
    cairo_destroy(cr);
    return SaveArt(s, dir, name);
}

// A ribbon banner with folded tails.
bool Banner(const std::string& dir, const char* name, const char* text, Rgb ribbon) {
    cairo_surface_t* s = CanvasFor(name);
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    const Rgb dark = Shade(ribbon, 0.6);
    for (int side = 0; side < 2; ++side) {
        double x = side == 0 ? 8 : 392;
        double d = side == 0 ? 1 : -1;
        cairo_move_to(cr, x, 40);
        cairo_line_to(cr, x + d * 60, 40);
        cairo_line_to(cr, x + d * 60, 108);
        cairo_line_to(cr, x, 108);
        cairo_line_to(cr, x + d * 20, 74);
        cairo_close_path(cr);
        FillOutlined(cr, dark, Shade(dark, 0.7), 40, 108, 4);
    }
    cairo_move_to(cr, 44, 16);
    cairo_curve_to(cr, 150, 6, 250, 6, 356, 16);
    cairo_line_to(cr, 356, 94);
    cairo_curve_to(cr, 250, 84, 150, 84, 44, 94);
    cairo_close_path(cr);
    FillOutlined(cr, Shade(ribbon, 1.2), ribbon, 8, 94, 4.5);
    double size = 44;
    while (size > 20 && LetterWidth(cr, text, size) > 290) size -= 1;
    Letter(cr, text, 200, 51, size, Pal::kCream, 5);
    cairo_destroy(cr);
    return SaveArt(s, dir, name);
}

// A fluffy cloud made of overlapping puffs.
bool Cloud(const std::string& dir, const char* name, int seed) {
    cairo_surface_t* s = CanvasFor(name);
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    Rng rng(seed);
    double puffs[7][3];
    for (int i = 0; i < 7; ++i) {
        puffs[i][0] = 80 + i * 40 + rng.Range(-10, 10);
        puffs[i][1] = 118 - std::sin(M_PI * i / 6.0) * rng.Range(30, 50);
        puffs[i][2] = 36 + std::sin(M_PI * i / 6.0) * rng.Range(14, 30);
    }
    // Ink silhouette, then the body, then a lit top.
    for (int pass = 0; pass < 3; ++pass) {
        for (auto& p : puffs) {
            double grow = pass == 0 ? 4 : 0;
            double dy = pass == 2 ? -8 : 0;
            double shrink = pass == 2 ? 0.72 : 1;
            cairo_new_sub_path(cr);
            cairo_arc(cr, p[0], p[1] + dy, p[2] * shrink + grow, 0, 2 * M_PI);
        }
        // The flat base belongs to the silhouette and body, not the lit top.
        if (pass < 2)
            RoundRect(cr, 70 - (pass == 0 ? 4 : 0), 110 - (pass == 0 ? 4 : 0),
                      260 + (pass == 0 ? 8 : 0), 46 + (pass == 0 ? 8 : 0), 22);
        if (pass == 0)
            SetRgb(cr, Hex(0x5a6a8a), 0.9);
        else if (pass == 1)
            SetRgb(cr, Hex(0xdfe9f7));
        else
            SetRgb(cr, {1, 1, 1});
        cairo_fill(cr);
    }
    cairo_destroy(cr);
    return SaveArt(s, dir, name);
}

// The win screen's stars: filled gold for each star earned, empty slots for the rest.
bool Stars(const std::string& dir, const char* name, int earned) {
    cairo_surface_t* s = CanvasFor(name);
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    // The game draws this picture centred 10 units right of the win
    // screen's axis (x 410 of 800): the stars centre on the picture's x 240
    // of 520 pixels, which is the axis.
    const double xs[3] = {84, 240, 396}, ys[3] = {138, 108, 138}, rs[3] = {70, 92, 70};
    for (int i = 0; i < 3; ++i) {
        bool gold = i < earned;
        if (gold) Glow(cr, xs[i], ys[i], rs[i] * 1.15, Pal::kGold, 0.55);
        StarPath(cr, xs[i], ys[i], rs[i], rs[i] * 0.48, 5, 0);
        if (gold)
            FillOutlined(cr, Hex(0xfff2a0), Hex(0xf0a020), ys[i] - rs[i], ys[i] + rs[i], 7);
        else
            FillOutlined(cr, Hex(0x6a5a4a), Hex(0x3a2e24), ys[i] - rs[i], ys[i] + rs[i], 7);
        if (gold) {
            StarPath(cr, xs[i] - rs[i] * 0.2, ys[i] - rs[i] * 0.3, rs[i] * 0.18, rs[i] * 0.05, 4,
                     0);
            SetRgb(cr, {1, 1, 1}, 0.9);
            cairo_fill(cr);
        }
    }
    cairo_destroy(cr);
    return SaveArt(s, dir, name);
}

// The panel behind the rating leaves; the leaves sit in its lower half.
// The picture spans screen x 180..450 but the leaves' row is centred on
// x 330, so the panel and its title centre there: picture pixel 300.
bool StarPanel(const std::string& dir) {
    cairo_surface_t* s = CanvasFor("lvlStarBG.png");
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    Panel(cr, 66, 6, 468, 248, 30, 14);
    Letter(cr, "Best rating", 300, 64, 42, Hex(0x6a3a18), 0);
    cairo_move_to(cr, 120, 100);
    cairo_line_to(cr, 480, 100);
    SetRgb(cr, Hex(0x9a6a3a), 0.7);
    cairo_set_line_width(cr, 3);
    cairo_stroke(cr);
    cairo_destroy(cr);
    return SaveArt(s, dir, "lvlStarBG.png");
}

// The cursor: an arrow whose tip sits exactly on the picture's centre.
bool Cursor(const std::string& dir) {
    cairo_surface_t* s = CanvasFor("cursor.png");
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    // Tip at pixel corner (20, 40): the arrow fills the lower-right quarter.
    cairo_move_to(cr, 20, 40);
    cairo_line_to(cr, 20, 72);
    cairo_line_to(cr, 27, 65);
    cairo_line_to(cr, 32, 77);
    cairo_line_to(cr, 37, 75);
    cairo_line_to(cr, 32, 63);
    cairo_line_to(cr, 40, 63);
    cairo_close_path(cr);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_MITER);
    // Icy white-blue: gold would melt into the gold hover looks and locks.
    SetRgb(cr, Hex(0xe8f8ff));
    cairo_fill_preserve(cr);
    SetRgb(cr, Pal::kInk);
    cairo_set_line_width(cr, 3);
    cairo_stroke(cr);
    // The outline's stroke would spill past the tip; keep the quarter above
    // and left of the mouse point clear, and ink the tip pixel itself.
    cairo_set_operator(cr, CAIRO_OPERATOR_CLEAR);
    cairo_rectangle(cr, 0, 0, 40, 40);
    cairo_rectangle(cr, 0, 40, 20, 40);
    cairo_fill(cr);
    cairo_set_operator(cr, CAIRO_OPERATOR_OVER);
    cairo_rectangle(cr, 20, 40, 2, 2);
    SetRgb(cr, Pal::kInk);
    cairo_fill(cr);
    cairo_destroy(cr);
    return SaveArt(s, dir, "cursor.png");
}

// The loading strip: ten cells, a row of five gems lighting up in turn.
// The loading screen draws the strip and then the goblin through one clock,
// and both advance it: every half second the clock moves on two cells, so
// only every other cell shows (1, 3, 5, 7, 9 or 0, 2, 4, 6, 8, depending on
// where the clock stood). Cells 2j and 2j + 1 light gem j, so either
// sequence walks the light along the five gems one by one.
bool Loading(const std::string& dir) {
    const ArtEntry* e = ArtFind("loading.png");
    cairo_surface_t* s = CanvasFor("loading.png");
    if (!e || !s) return false;
    cairo_t* cr = cairo_create(s);
    const double cw = double(e->width) / e->columns;
    for (int k = 0; k < e->columns; ++k) {
        cairo_save(cr);
        cairo_translate(cr, k * cw, 0);
        Letter(cr, "Loading", 140, 60, 52, Pal::kCream, 6);
        for (int i = 0; i < 5; ++i) {
            bool lit = k / 2 == i;
            double x = 268 + i * 25;
            if (lit) Glow(cr, x, 66, 20, Hex(0x8fe8ff), 0.8);
            DrawCrystalGem(cr, x, 66, lit ? 15 : 10);
        }
        cairo_restore(cr);
    }
    cairo_destroy(cr);
    return SaveArt(s, dir, "loading.png");
}

} // namespace

// Every sign, banner, cloud, star, the cursor and the loading strip.
bool DrawSigns(const std::string& dir) {
    bool ok = true;
    ok &= Note(dir, "tutorial1.png", NoteIcon::Drag, "Drag a tower to a free tile",
               "to block the monsters' path.");
    ok &= Note(dir, "tutorial2.png", NoteIcon::Merge, "Drop a tower onto a tower",
               "like it to merge the two.");
    ok &=
        Note(dir, "tutorial3.png", NoteIcon::Fast, "A merged tower shoots", "three times as fast!");
    ok &= Note(dir, "t1help.png", NoteIcon::Crystal, "Guard the crystal!", "Monsters march on it.");
    ok &= Note(dir, "t2help.png", NoteIcon::Pair, "Two first-tier towers",
               "merge into a stronger one.");
    ok &= Countdown(dir, "3.png", "3", Hex(0xffd24a));
    ok &= Countdown(dir, "2.png", "2", Hex(0xffb03a));
    ok &= Countdown(dir, "1.png", "1", Hex(0xff7a3a));
    ok &= Countdown(dir, "s.png", "GO!", Hex(0x9be05a));
    ok &= Banner(dir, "wave1.png", "Wave 1", Hex(0x3f7fd0));
    ok &= Banner(dir, "wave2.png", "Wave 2", Hex(0x3f7fd0));
    ok &= Banner(dir, "wave3.png", "Final Wave", Hex(0xc8373a));
    ok &= Banner(dir, "lvl1wave1.png", "Wave 1 of 2", Hex(0x3f9f5a));
    ok &= Banner(dir, "lvl1wave2.png", "Wave 2 of 2", Hex(0x3f9f5a));
    ok &= Cloud(dir, "cloud1.png", 11);
    ok &= Cloud(dir, "cloud2.png", 23);
    ok &= Cloud(dir, "cloud3.png", 37);
    ok &= Stars(dir, "1star.png", 1);
    ok &= Stars(dir, "2star.png", 2);
    ok &= Stars(dir, "3star.png", 3);
    ok &= StarPanel(dir);
    ok &= Cursor(dir);
    ok &= Loading(dir);
    return ok;
}
