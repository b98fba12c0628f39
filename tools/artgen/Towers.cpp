// Towers: the two archer towers, the crystal (also the projectile), the
// crystal's health-bar frame and warning flash, the window icon and the
// desktop's icons.
//
// Depends on: Art, Draw, Cairo's PNG stream writer. Limits: the health-bar
// window is cut at whole pixels, so the frame's pixel size must stay twice
// its world size (192 x 520 for 96 x 260 units).
#include "Art.h"

#include <cmath>
#include <cstdio>
#include <sys/stat.h>
#include <vector>

namespace {

// The tower's stones or planks, in a 100 x 100 box.
void TowerBody(cairo_t* cr, int tier, double flagPhase) {
    const double rim = 2.8;
    const bool stone = tier == 2;
    const Rgb wall = stone ? Hex(0xc9c2b4) : Hex(0xb57a45);
    const Rgb wallDark = stone ? Hex(0x8a8276) : Hex(0x7a4b24);
    const Rgb roof = stone ? Hex(0x3f6fd0) : Hex(0xc8473a);

    Ellipse(cr, 50, 94, 30, 5);
    SetRgb(cr, {0, 0, 0}, 0.3);
    cairo_fill(cr);
    // Tapering shaft.
    cairo_move_to(cr, 30, 94);
    cairo_line_to(cr, 36, 46);
    cairo_line_to(cr, 64, 46);
    cairo_line_to(cr, 70, 94);
    cairo_close_path(cr);
    FillOutlined(cr, Shade(wall, 1.1), wallDark, 46, 94, rim);
    // Courses of stone or planks.
    SetRgb(cr, wallDark);
    cairo_set_line_width(cr, 1.4);
    for (int i = 1; i < 5; ++i) {
        double y = 46 + i * 9.6;
        double inset = 6 * (94 - y) / 48;
        cairo_move_to(cr, 30 + inset + 1, y);
        cairo_line_to(cr, 70 - inset - 1, y);
    }
    cairo_stroke(cr);
    if (stone) {
        for (int i = 0; i < 5; ++i) {
            double y = 46 + i * 9.6;
            double x = 44 + (i % 2) * 10;
            cairo_move_to(cr, x, y);
            cairo_line_to(cr, x, y + 9.6);
        }
        cairo_stroke(cr);
    }
    // Door.
    cairo_move_to(cr, 44, 94);
    cairo_line_to(cr, 44, 82);
    cairo_arc(cr, 50, 82, 6, M_PI, 0);
    cairo_line_to(cr, 56, 94);
    FillFlat(cr, Hex(0x3a2414), 2);
    // Platform with crenellations.
    cairo_rectangle(cr, 26, 40, 48, 9);
    FillOutlined(cr, Shade(wall, 1.15), wallDark, 40, 49, rim);
    for (int i = 0; i < 4; ++i) {
        cairo_rectangle(cr, 27 + i * 12.6, 33, 8, 8);
        FillOutlined(cr, Shade(wall, 1.15), wall, 33, 41, rim * 0.8);
    }
    // Archer peeking over the wall: hood, face, bow.
    Ellipse(cr, 48, 30, 7.5, 7.5);
    FillOutlined(cr, stone ? Hex(0x3a8a4a) : Hex(0x4f8a3a), Hex(0x27501e), 22, 38, rim);
    Ellipse(cr, 46, 31, 4.2, 4.2);
    FillFlat(cr, Hex(0xf1c79a), 1.2);
    cairo_arc(cr, 38, 31, 11, M_PI * 0.6, M_PI * 1.4);
    InkStroke(cr, 2.2, Hex(0x9a6a34), 1.2);
    // Roof over the platform on stilts.
    InkLine(cr, 28, 34, 28, 20, 2.4, Pal::kWoodDark, 1.2);
    InkLine(cr, 72, 34, 72, 20, 2.4, Pal::kWoodDark, 1.2);
    cairo_move_to(cr, 20, 22);
    cairo_line_to(cr, 50, 4);
    cairo_line_to(cr, 80, 22);
    cairo_close_path(cr);
    FillOutlined(cr, Shade(roof, 1.2), Shade(roof, 0.65), 4, 22, rim);
    if (stone) {
        cairo_move_to(cr, 20, 22);
        cairo_line_to(cr, 80, 22);
        InkStroke(cr, 2.2, Pal::kGold, 1.0);
    }
    // Pennant on the roof tip.
    const double w = 2.5 * std::sin(2 * M_PI * flagPhase);
    InkLine(cr, 50, 4, 50, -6, 1.6, Pal::kWoodDark, 0.8);
    cairo_move_to(cr, 50, -6);
    cairo_curve_to(cr, 56, -6 + w, 60, -4 - w, 66, -3 + w);
    cairo_line_to(cr, 50, 1);
    cairo_close_path(cr);
    FillFlat(cr, stone ? Pal::kGold : Hex(0xf0e0b0), 1.2);
    // A second tier wears two chevrons on its wall.
    if (stone) {
        for (int i = 0; i < 2; ++i) {
            double y = 58 + i * 8;
            cairo_move_to(cr, 42, y);
            cairo_line_to(cr, 50, y + 5);
            cairo_line_to(cr, 58, y);
            InkStroke(cr, 2.6, Pal::kGold, 1.0);
        }
    }
}

// Draws a tower sheet: the top-left cell is the picture the game shows; the
// others hold the same tower with its pennant at other moments.
bool TowerSheet(const std::string& dir, const char* name, int tier) {
    const ArtEntry* e = ArtFind(name);
    cairo_surface_t* s = CanvasFor(name);
    if (!e || !s) return false;
    cairo_t* cr = cairo_create(s);
    const double cw = double(e->width) / e->columns, ch = double(e->height) / e->rows;
    for (int r = 0; r < e->rows; ++r)
        for (int c = 0; c < e->columns; ++c) {
            cairo_save(cr);
            cairo_rectangle(cr, c * cw, r * ch, cw, ch);
            cairo_clip(cr);
            cairo_translate(cr, c * cw, r * ch);
            cairo_scale(cr, cw / 100.0, ch / 100.0);
            // Shrink a little so the pennant stays inside the cell.
            cairo_translate(cr, 8, 12);
            cairo_scale(cr, 0.84, 0.84);
            TowerBody(cr, tier, (c + r * e->columns) / 8.0);
            cairo_restore(cr);
        }
    cairo_destroy(cr);
    return SaveArt(s, dir, name);
}

// The health-bar frame geometry in pixels, from the world: the frame quad
// spans x 312..408, y -130..130 and the green fill x 340..360, y -100..100,
// at two pixels a unit (y grows downward in the picture).
constexpr int kWinX0 = (340 - 312) * 2, kWinX1 = (360 - 312) * 2;
constexpr int kWinY0 = (130 - 100) * 2, kWinY1 = (130 + 100) * 2;

// The frame around the window: a carved wooden post with crystal caps.
void BarFrame(cairo_t* cr, bool warning) {
    const double x0 = kWinX0 - 18, x1 = kWinX1 + 18;
    const double y0 = kWinY0 - 20, y1 = kWinY1 + 20;
    if (warning) {
        // A hot red halo around the whole post.
        for (int i = 0; i < 4; ++i) {
            RoundRect(cr, x0 - 14 + i * 3, y0 - 30 + i * 3, x1 - x0 + 28 - i * 6,
                      y1 - y0 + 60 - i * 6, 22);
            SetRgb(cr, Hex(0xff3a20), 0.2 + 0.15 * i);
            cairo_fill(cr);
        }
        RoundRect(cr, x0, y0, x1 - x0, y1 - y0, 14);
        FillOutlined(cr, Hex(0xff6a3a), Hex(0xc01a10), y0, y1, 4);
    } else {
        RoundRect(cr, x0, y0, x1 - x0, y1 - y0, 14);
        FillOutlined(cr, Pal::kWood, Pal::kWoodDark, y0, y1, 4);
        // Grain lines.
        SetRgb(cr, Pal::kWoodDark, 0.6);
        cairo_set_line_width(cr, 1.5);
        for (int i = 0; i < 3; ++i) {
            double x = x0 + 6 + i * 4;
            cairo_move_to(cr, x, y0 + 16);
            cairo_curve_to(cr, x + 3, y0 + 160, x - 3, y1 - 160, x, y1 - 16);
            cairo_move_to(cr, x1 - 6 - i * 4, y0 + 16);
            cairo_curve_to(cr, x1 - 3 - i * 4, y0 + 200, x1 - 9 - i * 4, y1 - 120, x1 - 6 - i * 4,
                           y1 - 16);
        }
        cairo_stroke(cr);
    }
    // Dark groove just outside the window.
    cairo_rectangle(cr, kWinX0 - 5, kWinY0 - 5, kWinX1 - kWinX0 + 10, kWinY1 - kWinY0 + 10);
    SetRgb(cr, Pal::kInk);
    cairo_fill(cr);
    // Crystal cap on top and a small one at the foot.
    DrawCrystalGem(cr, (x0 + x1) / 2, y0 - 4, 26);
    DrawCrystalGem(cr, (x0 + x1) / 2, y1 + 2, 14);
    if (warning) Letter(cr, "!", (x0 + x1) / 2, y0 - 4, 30, {1, 1, 1});
    // The window itself: exactly where the fill shows, fully clear.
    cairo_set_operator(cr, CAIRO_OPERATOR_CLEAR);
    cairo_rectangle(cr, kWinX0, kWinY0, kWinX1 - kWinX0, kWinY1 - kWinY0);
    cairo_fill(cr);
    cairo_set_operator(cr, CAIRO_OPERATOR_OVER);
}

// Draws one of the two bar pictures.
bool HealthBar(const std::string& dir, const char* name, bool warning) {
    cairo_surface_t* s = CanvasFor(name);
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    BarFrame(cr, warning);
    cairo_destroy(cr);
    return SaveArt(s, dir, name);
}

} // namespace

// The crystal: a tall faceted gem, bright enough to read at 10 units wide.
void DrawCrystalGem(cairo_t* cr, double cx, double cy, double half) {
    const double w = half * 0.62, shoulder = half * 0.35;
    const double rim = std::fmax(half * 0.07, 1.0);
    // The gem's outline, pointed at top and bottom, half-width `width`.
    auto gem = [&](double width) {
        cairo_move_to(cr, cx, cy - half);
        cairo_line_to(cr, cx - width, cy - shoulder);
        cairo_line_to(cr, cx - width, cy + shoulder);
        cairo_line_to(cr, cx, cy + half);
        cairo_line_to(cr, cx + width, cy + shoulder);
        cairo_line_to(cr, cx + width, cy - shoulder);
        cairo_close_path(cr);
    };
    // Left and right facets, then the bright middle one.
    gem(w);
    FillOutlined(cr, Pal::kCrystal, Pal::kCrystalDark, cy - half, cy + half, rim * 2);
    gem(w * 0.45);
    FillOutlined(cr, Hex(0xcff6ff), Hex(0x52b8f0), cy - half, cy + half, 0);
    cairo_move_to(cr, cx + w, cy - shoulder);
    cairo_line_to(cr, cx + w * 0.45, cy - shoulder);
    cairo_line_to(cr, cx + w * 0.45, cy + shoulder);
    cairo_line_to(cr, cx + w, cy + shoulder);
    cairo_close_path(cr);
    SetRgb(cr, Pal::kCrystalDark, 0.55);
    cairo_fill(cr);
    // Sparkle.
    StarPath(cr, cx - w * 0.2, cy - half * 0.45, half * 0.22, half * 0.05, 4, 0);
    SetRgb(cr, {1, 1, 1}, 0.95);
    cairo_fill(cr);
    // Re-ink the silhouette on top so it stays crisp when small.
    gem(w);
    SetRgb(cr, Pal::kInk);
    cairo_set_line_width(cr, rim * 2);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
    cairo_stroke(cr);
}

// A tower in a 100 x 100 box, for the how-to-play pages.
void DrawArcherTower(cairo_t* cr, int tier) {
    TowerBody(cr, tier, 0);
}

// Both tower sheets, the crystal and the bar pictures.
bool DrawTowersAndCrystal(const std::string& dir) {
    bool ok = TowerSheet(dir, "ArcherT1.png", 1);
    ok &= TowerSheet(dir, "ArcherT2.png", 2);
    cairo_surface_t* s = CanvasFor("crystal.png");
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    Glow(cr, 60, 60, 60, Hex(0x8fe8ff), 0.55);
    DrawCrystalGem(cr, 60, 60, 52);
    cairo_destroy(cr);
    ok &= SaveArt(s, dir, "crystal.png");
    ok &= HealthBar(dir, "Layer 24.png", false);
    ok &= HealthBar(dir, "Layer 23.png", true);
    return ok;
}

namespace {

// The icon's picture at n x n pixels, as PNG bytes: the crystal, scaled
// with its size so that every size shows the same gem.
std::vector<unsigned char> IconPng(int n) {
    cairo_surface_t* s = NewCanvas(n, n);
    cairo_t* cr = cairo_create(s);
    DrawCrystalGem(cr, n / 2.0, n / 2.0, n * 0.46);
    cairo_destroy(cr);
    std::vector<unsigned char> png;
    cairo_surface_write_to_png_stream(
        s,
        [](void* closure, const unsigned char* data, unsigned int len) {
            auto* v = static_cast<std::vector<unsigned char>*>(closure);
            v->insert(v->end(), data, data + len);
            return CAIRO_STATUS_SUCCESS;
        },
        &png);
    cairo_surface_destroy(s);
    return png;
}

bool WriteFile(const std::string& path, const std::vector<unsigned char>& bytes) {
    FILE* f = std::fopen(path.c_str(), "wb");
    if (!f || std::fwrite(bytes.data(), 1, bytes.size(), f) != bytes.size()) {
        std::printf("artgen: cannot write %s\n", path.c_str());
        if (f) std::fclose(f);
        return false;
    }
    return std::fclose(f) == 0;
}

void Le16(std::vector<unsigned char>& out, unsigned v) {
    out.insert(out.end(), {(unsigned char)(v & 255), (unsigned char)(v >> 8)});
}
void Le32(std::vector<unsigned char>& out, unsigned v) {
    Le16(out, v & 0xffff);
    Le16(out, v >> 16);
}

} // namespace

// The window icon: a .ico file with one PNG entry for every icon size, the
// 32 x 32 one the window loads among them.
bool DrawIcon(const std::string& dir) {
    std::vector<std::vector<unsigned char>> pngs;
    for (int n : kArtIconSizes) pngs.push_back(IconPng(n));
    // Directory: reserved 0, type 1 (icon), the entry count; each entry gives
    // its size (0 stands for 256), 32 bits per pixel, and where its PNG starts.
    std::vector<unsigned char> ico;
    Le16(ico, 0), Le16(ico, 1), Le16(ico, kArtIconSizeCount);
    unsigned offset = 6 + 16 * kArtIconSizeCount;
    for (int i = 0; i < kArtIconSizeCount; ++i) {
        const unsigned char side = (unsigned char)(kArtIconSizes[i] & 255);
        ico.insert(ico.end(), {side, side, 0, 0});
        Le16(ico, 1), Le16(ico, 32), Le32(ico, (unsigned)pngs[i].size()), Le32(ico, offset);
        offset += (unsigned)pngs[i].size();
    }
    for (const auto& png : pngs) ico.insert(ico.end(), png.begin(), png.end());
    return WriteFile(dir + "/" + kArtIconName, ico);
}

// The desktop's icons: DIR/NxN/apps/quarrow.png for every icon size, the
// same pictures as the entries of the window icon.
bool DrawThemeIcons(const std::string& dir) {
    bool ok = true;
    for (int n : kArtIconSizes) {
        std::string folder = dir + "/" + std::to_string(n) + "x" + std::to_string(n);
        mkdir(folder.c_str(), 0755);
        folder += "/apps";
        mkdir(folder.c_str(), 0755);
        ok &= WriteFile(folder + "/" + kArtThemeIconName + ".png", IconPng(n));
    }
    return ok;
}
