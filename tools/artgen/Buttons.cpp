// Buttons: every clickable picture in its normal (U) and highlighted (H)
// look: the word buttons, the pause button, the six level badges and their
// lock, and the rating leaves.
//
// Depends on: Art, Draw. Limits: the word buttons are 120 x 60 units with a
// hit box of only +-51 units across, so the plaque keeps its word well inside.
#include "Art.h"

#include <cmath>
#include <string>

namespace {

// A word plaque: parchment on wood, or gilded and glowing when highlighted.
bool WordButton(const std::string& dir, const std::string& word, bool hot) {
    std::string name =
        "btn" + std::string(word == "Option" ? "Option" : word) + (hot ? "H" : "U") + ".png";
    cairo_surface_t* s = CanvasFor(name.c_str());
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    const double x = 10, y = 10, w = 220, h = 98, r = 30;
    if (hot) {
        for (int i = 0; i < 3; ++i) {
            RoundRect(cr, x - 8 + i * 3, y - 7 + i * 3, w + 16 - i * 6, h + 14 - i * 6, r + 6);
            SetRgb(cr, Pal::kGold, 0.18 + 0.12 * i);
            cairo_fill(cr);
        }
    }
    RoundRect(cr, x + 2, y + 6, w, h, r);
    SetRgb(cr, {0, 0, 0}, 0.35);
    cairo_fill(cr);
    RoundRect(cr, x, y, w, h, r);
    FillOutlined(cr, hot ? Pal::kGold : Pal::kWood, hot ? Pal::kGoldDark : Pal::kWoodDark, y, y + h,
                 5);
    RoundRect(cr, x + 9, y + 9, w - 18, h - 18, r - 9);
    FillOutlined(cr, hot ? Hex(0xfff4c8) : Pal::kParchment,
                 hot ? Hex(0xffd36a) : Pal::kParchmentDark, y + 9, y + h - 9, 3);
    // Shine across the upper half.
    RoundRect(cr, x + 16, y + 13, w - 32, 18, 9);
    SetRgb(cr, {1, 1, 1}, hot ? 0.45 : 0.3);
    cairo_fill(cr);
    std::string label = word == "Option" ? "Options" : word;
    double size = label.size() > 7 ? 34 : 40;
    Letter(cr, label.c_str(), x + w / 2, y + h / 2 + 1, size, hot ? Hex(0xb8321f) : Hex(0x5a3418),
           hot ? 5 : 0, hot ? Pal::kInk : Pal::kInk);
    cairo_destroy(cr);
    return SaveArt(s, dir, name.c_str());
}

// A round badge: rim, face gradient, optional glow; used by the pause button
// and the level badges.
void Badge(cairo_t* cr, Rgb face, bool hot) {
    if (hot) Glow(cr, 60, 60, 60, Pal::kGold, 0.8);
    cairo_arc(cr, 62, 64, 48, 0, 2 * M_PI);
    SetRgb(cr, {0, 0, 0}, 0.35);
    cairo_fill(cr);
    cairo_arc(cr, 60, 60, 48, 0, 2 * M_PI);
    FillOutlined(cr, hot ? Pal::kGold : Pal::kWood, hot ? Pal::kGoldDark : Pal::kWoodDark, 12, 108,
                 5);
    cairo_arc(cr, 60, 60, 38, 0, 2 * M_PI);
    FillOutlined(cr, Shade(face, hot ? 1.35 : 1.15), Shade(face, hot ? 0.95 : 0.75), 22, 98, 3);
    Ellipse(cr, 60, 38, 24, 10);
    SetRgb(cr, {1, 1, 1}, 0.35);
    cairo_fill(cr);
}

// The level's pause button: two bars on a badge.
bool PauseButton(const std::string& dir, bool hot) {
    const char* name = hot ? "button-pauseH.png" : "button-pauseU.png";
    cairo_surface_t* s = CanvasFor(name);
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    Badge(cr, Pal::kParchment, hot);
    for (int i = 0; i < 2; ++i) {
        RoundRect(cr, 44 + i * 22, 40, 11, 40, 4);
        FillOutlined(cr, hot ? Hex(0xd8452e) : Hex(0x6a3f1c), hot ? Hex(0x8a1f12) : Pal::kInk, 40,
                     80, 2.5);
    }
    cairo_destroy(cr);
    return SaveArt(s, dir, name);
}

// The colour of each level's badge, after its land.
const Rgb kLevelFace[6] = {Hex(0x6fbf4a), Hex(0x4f9f3a), Hex(0xe9c77a),
                           Hex(0xe0623a), Hex(0x9fd0f0), Hex(0x7a6ab8)};

// A level badge with its number, in the colour of its land.
bool LevelButton(const std::string& dir, int level, bool hot) {
    std::string name = "btn" + std::to_string(level) + (hot ? "H" : "U") + ".png";
    cairo_surface_t* s = CanvasFor(name.c_str());
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    Badge(cr, kLevelFace[level - 1], hot);
    std::string digit = std::to_string(level);
    Letter(cr, digit.c_str(), 60, 62, 50, hot ? Pal::kCream : Pal::kCream, 7);
    cairo_destroy(cr);
    return SaveArt(s, dir, name.c_str());
}

// The badge a locked level shows under the mouse.
bool LockButton(const std::string& dir) {
    cairo_surface_t* s = CanvasFor("btnLock.png");
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    Badge(cr, Hex(0x8a8a8a), false);
    // Padlock: shackle then body with a keyhole.
    cairo_arc(cr, 60, 52, 13, M_PI, 0);
    InkStroke(cr, 6, Hex(0xc8c8c8), 2.5);
    RoundRect(cr, 42, 50, 36, 30, 6);
    FillOutlined(cr, Pal::kGold, Pal::kGoldDark, 50, 80, 3);
    cairo_arc(cr, 60, 62, 4, 0, 2 * M_PI);
    cairo_move_to(cr, 58, 64);
    cairo_line_to(cr, 57, 73);
    cairo_line_to(cr, 63, 73);
    cairo_line_to(cr, 62, 64);
    FillFlat(cr, Pal::kInk, 0);
    cairo_destroy(cr);
    return SaveArt(s, dir, "btnLock.png");
}

// A leaf of the rating panel: fresh green, or a grey shadow of one.
bool Leaf(const std::string& dir, const char* name, bool coloured) {
    cairo_surface_t* s = CanvasFor(name);
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    cairo_translate(cr, 60, 60);
    cairo_rotate(cr, -0.6);
    cairo_move_to(cr, 0, -48);
    cairo_curve_to(cr, 34, -30, 34, 22, 0, 44);
    cairo_curve_to(cr, -34, 22, -34, -30, 0, -48);
    if (coloured)
        FillOutlined(cr, Hex(0x9be05a), Hex(0x3f8a2a), -48, 44, 5);
    else
        FillOutlined(cr, Hex(0x9a9a94), Hex(0x5e5e5a), -48, 44, 5);
    cairo_move_to(cr, 0, -40);
    cairo_line_to(cr, 0, 54);
    for (int i = 0; i < 3; ++i) {
        double y = -22 + i * 18;
        cairo_move_to(cr, 0, y + 8);
        cairo_line_to(cr, 16, y - 4);
        cairo_move_to(cr, 0, y + 8);
        cairo_line_to(cr, -16, y - 4);
    }
    SetRgb(cr, coloured ? Hex(0x2a5a1a) : Hex(0x44443f));
    cairo_set_line_width(cr, 3);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_stroke(cr);
    if (coloured) {
        Ellipse(cr, -10, -16, 6, 12);
        SetRgb(cr, {1, 1, 0.8}, 0.35);
        cairo_fill(cr);
    }
    cairo_destroy(cr);
    return SaveArt(s, dir, name);
}

} // namespace

// Every button look.
bool DrawButtons(const std::string& dir) {
    bool ok = true;
    const char* words[] = {"Resume", "Restart", "Exit", "Help", "Credits", "Mute",    "Unmute",
                           "Option", "Quit",    "Yes",  "No",   "Back",    "Continue"};
    for (const char* w : words)
        for (int hot = 0; hot < 2; ++hot) ok &= WordButton(dir, w, hot);
    ok &= PauseButton(dir, false);
    ok &= PauseButton(dir, true);
    for (int level = 1; level <= 6; ++level)
        for (int hot = 0; hot < 2; ++hot) ok &= LevelButton(dir, level, hot);
    ok &= LockButton(dir);
    ok &= Leaf(dir, "LeafColoured.png", true);
    ok &= Leaf(dir, "LeafBG.png", false);
    return ok;
}
