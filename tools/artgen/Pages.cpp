// Pages: the how-to-play page (menu and pause versions) and the credits
// scroll.
//
// Depends on: Art, Draw. Limits: the credits picture is one pixel a unit
// (800 x 8000), and the game shows only the band from 300 units below its
// top to 300 units above its bottom, so every line sits inside that band.
#include "Art.h"

#include <cmath>
#include <vector>

namespace {

// One lesson: a picture on the left and up to three lines beside it.
struct Lesson {
    int icon; // 0 crystal, 1 monsters, 2 drag, 3 merge, 4 waves, 5 stars
    const char* title;
    const char* lines[2];
};

// Short lines in one size: the page is drawn at half its pixels without
// smoothing, and small type loses strokes there.
const Lesson kLessons[] = {
    {0, "Guard the crystal", {"Monsters march on it;", "if it breaks, you lose."}},
    {1, "Know your foes", {"They walk round towers.", "Bosses hit twice as hard."}},
    {2, "Move your towers", {"Drag one to a free tile", "to block their road."}},
    {3, "Merge them", {"Drop a tower on its twin", "for one three times faster."}},
    {4, "Three waves", {"Each wave adds a tower.", "The last brings the boss."}},
    {5, "Earn stars", {"A healthy crystal earns", "up to three stars."}},
};

// Type sizes in page units (drawn at half the pixels, one a screen pixel at
// 800 x 600): lesson headings, and lesson lines shrinking no further than
// the least that still keeps its strokes.
constexpr double kHeadSize = 21, kBodySize = 17, kBodyMin = 15;
const Rgb kBodyInk = Hex(0x4a2a12);

// The picture of one lesson.
void LessonIcon(cairo_t* cr, int icon) {
    // A 100 x 100 box at the origin.
    switch (icon) {
    case 0:
        Glow(cr, 50, 50, 50, Hex(0x8fe8ff), 0.6);
        DrawCrystalGem(cr, 50, 50, 40);
        break;
    case 1:
        DrawGoblinFigure(cr, 0.2);
        break;
    case 2:
    case 3:
        cairo_save(cr);
        cairo_translate(cr, icon == 2 ? 0 : -8, 14);
        cairo_scale(cr, 0.6, 0.6);
        DrawArcherTower(cr, 1);
        cairo_restore(cr);
        if (icon == 3) {
            // Two first-tier towers make one second-tier tower.
            cairo_save(cr);
            cairo_translate(cr, 26, 14);
            cairo_scale(cr, 0.6, 0.6);
            DrawArcherTower(cr, 1);
            cairo_restore(cr);
            Letter(cr, "+", 30, 52, 24, Pal::kCream, 4);
            Letter(cr, "=", 68, 52, 24, Pal::kCream, 4);
            cairo_save(cr);
            cairo_translate(cr, 62, 16);
            cairo_scale(cr, 0.5, 0.5);
            DrawArcherTower(cr, 2);
            cairo_restore(cr);
        } else {
            cairo_move_to(cr, 52, 40);
            cairo_curve_to(cr, 70, 10, 96, 30, 92, 66);
            InkStroke(cr, 5, Pal::kGold, 2);
            cairo_move_to(cr, 84, 60);
            cairo_line_to(cr, 92, 78);
            cairo_line_to(cr, 100, 60);
            cairo_close_path(cr);
            FillFlat(cr, Pal::kGold, 2);
        }
        break;
    case 4:
        for (int i = 0; i < 3; ++i) {
            cairo_save(cr);
            cairo_translate(cr, 4 + i * 26, 20 - i * 6);
            cairo_scale(cr, 0.55 + i * 0.1, 0.55 + i * 0.1);
            DrawGoblinFigure(cr, i * 0.3);
            cairo_restore(cr);
        }
        break;
    default:
        for (int i = 0; i < 3; ++i) {
            StarPath(cr, 20 + i * 30, 50 - (i == 1 ? 10 : 0), 17, 8, 5, 0);
            FillOutlined(cr, Hex(0xfff2a0), Hex(0xf0a020), 30, 70, 3);
        }
        break;
    }
}

// The page: a parchment sheet with a title and the six lessons in two
// columns; returns after drawing in the canvas's own units (w x h).
void HowToPlay(cairo_t* cr, double w, double h, bool pauseVersion) {
    Panel(cr, 8, 8, w - 16, h - 16, 30, 18);
    Letter(cr, "How to Play", w / 2, 62, 46, Hex(0x3f8a30), 5);
    const double colW = (w - 80) / 2, top = pauseVersion ? 150 : 116;
    const double rowH = (h - top - (pauseVersion ? 40 : 100)) / 3;
    const double iconW = 72, maxW = colW - iconW - 20;
    // One size for every lesson's lines: the largest that fits them all.
    double size = kBodySize;
    for (const Lesson& l : kLessons)
        for (const char* line : l.lines)
            while (size > kBodyMin && LetterWidth(cr, line, size, false) > maxW) size -= 0.5;
    for (int i = 0; i < 6; ++i) {
        double x = 40 + (i % 2) * colW, y = top + (i / 2) * rowH;
        cairo_save(cr);
        cairo_translate(cr, x, y + 8);
        cairo_scale(cr, 0.66, 0.66);
        LessonIcon(cr, kLessons[i].icon);
        cairo_restore(cr);
        double tx = x + iconW + 8;
        LetterLeft(cr, kLessons[i].title, tx, y + 20, kHeadSize, Hex(0x7a2a1a));
        LetterLeft(cr, kLessons[i].lines[0], tx, y + 20 + kHeadSize * 1.35, size, kBodyInk, false);
        LetterLeft(cr, kLessons[i].lines[1], tx, y + 20 + kHeadSize * 1.35 + size * 1.3, size,
                   kBodyInk, false);
    }
    if (pauseVersion) {
        // Leave the help button (top right) in view: it closes this page.
        // It stands at world (300, 120); this page is centred, 700 x 500.
        double cx = 300 + w / 2, cy = h / 2 - 120;
        cairo_set_operator(cr, CAIRO_OPERATOR_CLEAR);
        RoundRect(cr, cx - 66, cy - 34, 132, 68, 18);
        cairo_fill(cr);
        cairo_set_operator(cr, CAIRO_OPERATOR_OVER);
        RoundRect(cr, cx - 66, cy - 34, 132, 68, 18);
        SetRgb(cr, Pal::kWoodDark);
        cairo_set_line_width(cr, 4);
        cairo_stroke(cr);
    }
    const char* note = pauseVersion ? "Press Help again to close this page."
                                    : "Esc pauses a level. Back returns to the map.";
    LetterLeft(cr, note, (w - LetterWidth(cr, note, size, false)) / 2, h - (pauseVersion ? 46 : 58),
               size, Hex(0x7a4a22), false);
}

// One how-to-play picture.
bool Page(const std::string& dir, const char* name, bool pauseVersion) {
    const ArtEntry* e = ArtFind(name);
    cairo_surface_t* s = CanvasFor(name);
    if (!e || !s) return false;
    cairo_t* cr = cairo_create(s);
    // Units: the full screen page is 800 x 600, the pause page 700 x 500.
    cairo_scale(cr, 2, 2);
    if (!pauseVersion) {
        cairo_rectangle(cr, 0, 0, 800, 600);
        FillOutlined(cr, Hex(0x4f6a3a), Hex(0x2a3a20), 0, 600, 0);
    }
    HowToPlay(cr, e->width / 2.0, e->height / 2.0, pauseVersion);
    cairo_destroy(cr);
    return SaveArt(s, dir, name);
}

// One line of the credits: kind 0 title, 1 heading, 2 text, 3 small, 4 gap.
struct CreditLine {
    int kind;
    const char* text;
};

const CreditLine kCredits[] = {
    {0, "Quarrow"},
    {3, "A tale of towers, monsters and one crystal"},
    {4, ""},
    {1, "A game by"},
    {2, "Tolvern Studio"},
    {4, ""},
    {1, "Developed by"},
    {2, "Mosswick"},
    {4, ""},
    {1, "Design, code, art and sound"},
    {2, "The Mosswick team"},
    {4, ""},
    {1, "Engine"},
    {2, "The Vexa Engine"},
    {4, ""},
    {1, "Built with"},
    {2, "SDL2"},
    {3, "zlib licence"},
    {2, "GLEW"},
    {3, "Modified BSD and MIT licences"},
    {2, "libpng"},
    {3, "libpng licence"},
    {2, "OpenAL Soft"},
    {3, "GNU LGPL"},
    {2, "libogg and libvorbis"},
    {3, "BSD licence"},
    {2, "FreeType"},
    {3, "FreeType Licence (FTL)"},
    {2, "Fontconfig"},
    {3, "MIT-style licence"},
    {2, "Cairo"},
    {3, "GNU LGPL or Mozilla Public Licence"},
    {2, "FluidSynth"},
    {3, "GNU LGPL"},
    {2, "Fluid (R3) Mono GM SoundFont"},
    {3, "MIT licence, by Frank Wen, Michael Cowgill and contributors"},
    {2, "DejaVu fonts"},
    {3, "Bitstream Vera and DejaVu font licence"},
    {2, "GoogleTest"},
    {3, "BSD licence"},
    {4, ""},
    {1, "Every picture and sound"},
    {2, "drawn and composed"},
    {2, "by the game's own tools"},
    {4, ""},
    {4, ""},
    {1, "Thank you for playing!"},
};

// The credits' plain night at both sides, and the margin every line keeps.
constexpr double kSkyMargin = 24, kTextMargin = 48;

// The credits scroll.
bool Credits(const std::string& dir) {
    const ArtEntry* e = ArtFind("Credit.png");
    cairo_surface_t* s = CanvasFor("Credit.png");
    if (!e || !s) return false;
    cairo_t* cr = cairo_create(s);
    const double w = e->width, h = e->height;
    // Night-blue scroll with a parchment column down the middle.
    cairo_rectangle(cr, 0, 0, w, h);
    FillOutlined(cr, Hex(0x1a2040), Hex(0x0c1020), 0, h, 0);
    Rng rng(31);
    for (int i = 0; i < 500; ++i) {
        // Stars keep off the outermost columns too: those stay plain night,
        // so a line too wide for the screen would show there.
        double x = rng.Range(kSkyMargin, w - kSkyMargin), y = rng.Range(0, h);
        if (x > 150 && x < 650) continue;
        StarPath(cr, x, y, rng.Range(1, 3), 0.6, 4, 0);
        SetRgb(cr, {1, 1, 0.9}, rng.Range(0.3, 0.8));
        cairo_fill(cr);
    }
    // Lines are spaced to fill the band the game shows (300 .. h - 300),
    // starting low enough that the title appears in the first view.
    const int n = sizeof(kCredits) / sizeof(kCredits[0]);
    // Each kind of line takes its own share of the height: gaps part the
    // groups, a heading sits close to its names.
    auto share = [](int kind) {
        const double shares[] = {3.0, 1.0, 0.8, 0.6, 2.0};
        return shares[kind];
    };
    double weights = 0;
    for (const CreditLine& l : kCredits) weights += share(l.kind);
    const double y0 = 480, y1 = h - 960;
    const double unit = (y1 - y0) / weights;
    double y = y0;
    Glow(cr, w / 2, y0 - 60, 100, Hex(0x8fe8ff), 0.5);
    DrawCrystalGem(cr, w / 2, y0 - 60, 50);
    for (int i = 0; i < n; ++i) {
        const CreditLine& l = kCredits[i];
        double step = share(l.kind);
        double cy = y + unit * step / 2;
        // The picture is exactly as wide as the screen: every line keeps a
        // margin inside it, shrinking if it must.
        auto fit = [&](double size, bool bold) {
            while (size > 12 && LetterWidth(cr, l.text, size, bold) > w - 2 * kTextMargin)
                size -= 1;
            return size;
        };
        switch (l.kind) {
        case 0:
            Letter(cr, l.text, w / 2, cy, fit(110, true), Pal::kGold, 10);
            break;
        case 1:
            Letter(cr, l.text, w / 2, cy, fit(34, true), Hex(0x9be05a), 4);
            break;
        case 2:
            Letter(cr, l.text, w / 2, cy, fit(40, true), Pal::kCream, 4);
            break;
        case 3: {
            double size = fit(24, false);
            double tw = LetterWidth(cr, l.text, size, false);
            LetterLeft(cr, l.text, w / 2 - tw / 2, cy, size, Hex(0xc8d0e8), false);
            break;
        }
        default:
            break;
        }
        y += unit * step;
    }
    // The closing crystal, in the last band the game shows.
    Glow(cr, w / 2, h - 560, 140, Hex(0x8fe8ff), 0.5);
    DrawCrystalGem(cr, w / 2, h - 560, 90);
    Letter(cr, "Quarrow", w / 2, h - 400, 60, Pal::kGold, 6);
    cairo_destroy(cr);
    return SaveArt(s, dir, "Credit.png");
}

} // namespace

// Both how-to-play pictures and the credits.
bool DrawPages(const std::string& dir) {
    bool ok = Page(dir, "howtoplay.png", false);
    ok &= Page(dir, "howtoplayPause.png", true);
    ok &= Credits(dir);
    return ok;
}
