// Overlays: the whole-screen pictures laid over a level or the menu: pause,
// confirmation, options, win and lose, and the next-level screen. Each frames
// the buttons the game draws over it and carries its own title; outside the
// frame the screen is only dimmed, so the frozen board shows through.
//
// Depends on: Art, Draw. Limits: drawn in screen units (800 x 600, y down) at
// two pixels a unit; button boxes are the game's (centre +- 60 x +- 30).
#include "Art.h"

#include <cmath>

namespace {

// Darkens whatever lies under the overlay.
void Dim(cairo_t* cr, double alpha) {
    cairo_rectangle(cr, 0, 0, 800, 600);
    SetRgb(cr, {0.05, 0.03, 0.08}, alpha);
    cairo_fill(cr);
}

// A title ribbon across the top of a panel.
void TitleRibbon(cairo_t* cr, double cx, double cy, double w, const char* text, Rgb ribbon) {
    for (int side = -1; side <= 1; side += 2) {
        double x = cx + side * w / 2;
        cairo_move_to(cr, x - side * 20, cy - 10);
        cairo_line_to(cr, x + side * 24, cy - 10);
        cairo_line_to(cr, x + side * 12, cy + 8);
        cairo_line_to(cr, x + side * 24, cy + 26);
        cairo_line_to(cr, x - side * 20, cy + 26);
        cairo_close_path(cr);
        FillOutlined(cr, Shade(ribbon, 0.7), Shade(ribbon, 0.5), cy - 10, cy + 26, 3);
    }
    cairo_move_to(cr, cx - w / 2, cy - 22);
    cairo_curve_to(cr, cx - w / 6, cy - 28, cx + w / 6, cy - 28, cx + w / 2, cy - 22);
    cairo_line_to(cr, cx + w / 2, cy + 18);
    cairo_curve_to(cr, cx + w / 6, cy + 12, cx - w / 6, cy + 12, cx - w / 2, cy + 18);
    cairo_close_path(cr);
    FillOutlined(cr, Shade(ribbon, 1.2), ribbon, cy - 28, cy + 18, 3.5);
    double size = 34;
    while (size > 16 && LetterWidth(cr, text, size) > w - 40) size -= 1;
    Letter(cr, text, cx, cy - 4, size, Pal::kCream, 4);
}

// Starts a screen-sized canvas in screen units.
cairo_t* Begin(cairo_surface_t* s) {
    cairo_t* cr = cairo_create(s);
    cairo_scale(cr, 2, 2);
    return cr;
}

// Saves a screen canvas.
bool Finish(cairo_t* cr, cairo_surface_t* s, const std::string& dir, const char* name) {
    cairo_destroy(cr);
    return SaveArt(s, dir, name);
}

// The pause menu's frame and the board behind options and help.
bool Pause(const std::string& dir) {
    cairo_surface_t* s = CanvasFor("pauseM.png");
    if (!s) return false;
    cairo_t* cr = Begin(s);
    Dim(cr, 0.55);
    // Resume, restart and quit stand at screen y 280, 345, 410 (x 340..460).
    Panel(cr, 270, 170, 260, 310, 24, 14);
    TitleRibbon(cr, 400, 180, 230, "Paused", Hex(0x3f7fd0));
    LetterLeft(cr, "Esc resumes", 352, 458, 14, Hex(0x7a5a3a), false);
    // A small board behind options and help (screen 700, 120 and 180).
    RoundRect(cr, 626, 76, 148, 146, 16);
    FillOutlined(cr, Pal::kWood, Pal::kWoodDark, 76, 222, 3);
    return Finish(cr, s, dir, "pauseM.png");
}

// A dialog over the pause menu or the main menu: buttons at screen
// (325, 325) and (475, 325).
bool Dialog(const std::string& dir, const char* name, const char* title, const char* line,
            Rgb ribbon) {
    cairo_surface_t* s = CanvasFor(name);
    if (!s) return false;
    cairo_t* cr = Begin(s);
    Dim(cr, 0.45);
    // Over the pause menu this dialog's ribbon lies exactly over the menu's
    // own (same height, a unit higher, wider), so no sliver of the menu's
    // ribbon shows behind it; the menu's panel shows below, a dialog behind
    // this one, and a shadow sets this one in front.
    RoundRect(cr, 226, 188, 360, 210, 24);
    SetRgb(cr, {0, 0, 0}, 0.35);
    cairo_fill(cr);
    Panel(cr, 220, 180, 360, 210, 24, 14);
    TitleRibbon(cr, 400, 179, 280, title, ribbon);
    double size = 20;
    while (size > 12 && LetterWidth(cr, line, size, false) > 300) size -= 1;
    double w = LetterWidth(cr, line, size, false);
    LetterLeft(cr, line, 400 - w / 2, 240, size, Hex(0x5a3418), false);
    return Finish(cr, s, dir, name);
}

// The win screen: rays, title, laurels around the stars.
bool Win(const std::string& dir) {
    cairo_surface_t* s = CanvasFor("WinScreen.png");
    if (!s) return false;
    cairo_t* cr = Begin(s);
    Dim(cr, 0.45);
    // Sun rays behind the panel.
    for (int i = 0; i < 16; ++i) {
        double a = i * M_PI / 8;
        cairo_move_to(cr, 400, 300);
        cairo_line_to(cr, 400 + 420 * std::cos(a - 0.08), 300 + 420 * std::sin(a - 0.08));
        cairo_line_to(cr, 400 + 420 * std::cos(a + 0.08), 300 + 420 * std::sin(a + 0.08));
        cairo_close_path(cr);
        SetRgb(cr, Pal::kGold, 0.16);
        cairo_fill(cr);
    }
    // Stars at screen (410, 350) 260 x 120; buttons at y 455.
    Panel(cr, 190, 140, 420, 360, 28, 16);
    TitleRibbon(cr, 400, 150, 300, "Victory!", Hex(0x3f9f5a));
    Letter(cr, "The crystal is safe!", 400, 220, 24, Hex(0x6a3a18), 0);
    // Laurel sprigs either side of the stars.
    for (int side = -1; side <= 1; side += 2) {
        for (int i = 0; i < 5; ++i) {
            double t = i / 4.0;
            double x = 400 + side * (150 + 28 * std::sin(t * 2.4)), y = 400 - t * 120;
            cairo_save(cr);
            cairo_translate(cr, x, y);
            cairo_rotate(cr, side * (0.6 + t * 0.5));
            Ellipse(cr, 0, 0, 6, 13);
            FillOutlined(cr, Hex(0x8fcf5a), Hex(0x3f8a2a), -13, 13, 2);
            cairo_restore(cr);
        }
    }
    return Finish(cr, s, dir, "WinScreen.png");
}

// The lose screen: title and crystal shards.
bool Lose(const std::string& dir) {
    cairo_surface_t* s = CanvasFor("LoseScreen.png");
    if (!s) return false;
    cairo_t* cr = Begin(s);
    Dim(cr, 0.6);
    // Buttons at screen y 325.
    Panel(cr, 200, 140, 400, 250, 24, 14);
    TitleRibbon(cr, 400, 150, 280, "Defeat", Hex(0xa8302a));
    Letter(cr, "The crystal has shattered...", 400, 208, 21, Hex(0x5a2a18), 0);
    // Crystal shards scattered on the panel.
    for (int i = 0; i < 3; ++i) {
        cairo_save(cr);
        cairo_translate(cr, 362 + i * 38, 250);
        cairo_rotate(cr, -0.5 + i * 0.5);
        DrawCrystalGem(cr, 0, 0, 14 - (i == 1 ? -2 : 0));
        cairo_restore(cr);
    }
    return Finish(cr, s, dir, "LoseScreen.png");
}

// The screen between levels: the crystal on a hill at dusk.
bool Next(const std::string& dir) {
    cairo_surface_t* s = CanvasFor("NextScreen.png");
    if (!s) return false;
    cairo_t* cr = Begin(s);
    // Dusk sky over a hill with the crystal shining on top.
    cairo_rectangle(cr, 0, 0, 800, 600);
    FillOutlined(cr, Hex(0x1f2a5a), Hex(0xe08a5a), 0, 600, 0);
    Rng rng(9);
    for (int i = 0; i < 70; ++i) {
        double x = rng.Range(0, 800), y = rng.Range(0, 300);
        StarPath(cr, x, y, rng.Range(1.5, 3.5), 0.7, 4, 0);
        SetRgb(cr, {1, 1, 0.9}, rng.Range(0.4, 0.9));
        cairo_fill(cr);
    }
    cairo_move_to(cr, 0, 600);
    cairo_curve_to(cr, 150, 430, 650, 430, 800, 600);
    cairo_close_path(cr);
    FillOutlined(cr, Hex(0x4f8a3a), Hex(0x1f3a1a), 440, 600, 4);
    Glow(cr, 400, 420, 140, Hex(0x8fe8ff), 0.6);
    DrawCrystalGem(cr, 400, 420, 50);
    Letter(cr, "Get Ready!", 400, 170, 84, Pal::kGold, 9);
    // The same picture shows before every level and before the closing
    // credits, so its words suit both.
    Letter(cr, "The crystal shines on.", 400, 250, 28, Pal::kCream, 3.5);
    return Finish(cr, s, dir, "NextScreen.png");
}

} // namespace

// Every overlay.
bool DrawOverlays(const std::string& dir) {
    bool ok = Pause(dir);
    ok &= Dialog(dir, "cfmBG.png", "Leave?", "Are you sure you want to leave?", Hex(0xc0662a));
    ok &= Dialog(dir, "optionBG.png", "Options", "Sound and music", Hex(0x3f7fd0));
    ok &= Win(dir);
    ok &= Lose(dir);
    ok &= Next(dir);
    return ok;
}
