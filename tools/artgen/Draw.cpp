// Draw: the shared brushes of the picture generator (see Draw.h).
//
// Depends on: Cairo. Limits: lettering uses Cairo's simple text API, which is
// enough for single lines of Latin text.
#include "Draw.h"

#include <cmath>
#include <cstdio>
#include <vector>

// A colour from 0xRRGGBB.
Rgb Hex(uint32_t rgb) {
    return {((rgb >> 16) & 255) / 255.0, ((rgb >> 8) & 255) / 255.0, (rgb & 255) / 255.0};
}

// Linear mix of two colours.
Rgb Mix(Rgb a, Rgb b, double t) {
    return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
}

// Darker below 1, lighter towards white above 1.
Rgb Shade(Rgb c, double f) {
    if (f <= 1.0) return {c.r * f, c.g * f, c.b * f};
    return Mix(c, {1, 1, 1}, f - 1.0);
}

// Sets the source colour.
void SetRgb(cairo_t* cr, Rgb c, double alpha) {
    cairo_set_source_rgba(cr, c.r, c.g, c.b, alpha);
}

// A fresh transparent canvas.
cairo_surface_t* NewCanvas(int width, int height) {
    return cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
}

// Writes the canvas as a PNG.
bool SaveCanvas(cairo_surface_t* s, const std::string& dir, const char* name) {
    std::string path = dir + "/" + name;
    cairo_surface_flush(s);
    cairo_status_t st = cairo_surface_write_to_png(s, path.c_str());
    if (st != CAIRO_STATUS_SUCCESS) {
        std::printf("artgen: cannot write %s: %s\n", path.c_str(), cairo_status_to_string(st));
        return false;
    }
    return true;
}

// Rounded rectangle path.
void RoundRect(cairo_t* cr, double x, double y, double w, double h, double r) {
    cairo_new_sub_path(cr);
    cairo_arc(cr, x + w - r, y + r, r, -M_PI / 2, 0);
    cairo_arc(cr, x + w - r, y + h - r, r, 0, M_PI / 2);
    cairo_arc(cr, x + r, y + h - r, r, M_PI / 2, M_PI);
    cairo_arc(cr, x + r, y + r, r, M_PI, 1.5 * M_PI);
    cairo_close_path(cr);
}

// Ellipse path.
void Ellipse(cairo_t* cr, double cx, double cy, double rx, double ry) {
    cairo_save(cr);
    cairo_translate(cr, cx, cy);
    cairo_scale(cr, rx, ry);
    cairo_new_sub_path(cr);
    cairo_arc(cr, 0, 0, 1, 0, 2 * M_PI);
    cairo_restore(cr);
}

// Star path with the first point at the given rotation (0 = straight up).
void StarPath(cairo_t* cr, double cx, double cy, double rOuter, double rInner, int points,
              double rotation) {
    cairo_new_sub_path(cr);
    for (int i = 0; i < points * 2; ++i) {
        double r = (i % 2 == 0) ? rOuter : rInner;
        double a = rotation - M_PI / 2 + i * M_PI / points;
        if (i == 0)
            cairo_move_to(cr, cx + r * std::cos(a), cy + r * std::sin(a));
        else
            cairo_line_to(cr, cx + r * std::cos(a), cy + r * std::sin(a));
    }
    cairo_close_path(cr);
}

// Fills the current path with the current source, then, when outline is
// above 0, strokes it in ink with round joins.
static void FillThenInk(cairo_t* cr, double outline, Rgb ink) {
    if (outline > 0) {
        cairo_fill_preserve(cr);
        SetRgb(cr, ink);
        cairo_set_line_width(cr, outline);
        cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
        cairo_stroke(cr);
    } else {
        cairo_fill(cr);
    }
}

// Gradient fill plus ink outline.
void FillOutlined(cairo_t* cr, Rgb top, Rgb bottom, double y0, double y1, double outline, Rgb ink) {
    cairo_pattern_t* p = cairo_pattern_create_linear(0, y0, 0, y1);
    cairo_pattern_add_color_stop_rgb(p, 0, top.r, top.g, top.b);
    cairo_pattern_add_color_stop_rgb(p, 1, bottom.r, bottom.g, bottom.b);
    cairo_set_source(cr, p);
    FillThenInk(cr, outline, ink);
    cairo_pattern_destroy(p);
}

// Ink under the fill: the fill covers the inner halves of every stroke, so
// overlapping shapes read as one outlined blob.
void FillUnionOutlined(cairo_t* cr, Rgb top, Rgb bottom, double y0, double y1, double outline,
                       Rgb ink) {
    cairo_path_t* path = cairo_copy_path(cr);
    SetRgb(cr, ink);
    cairo_set_line_width(cr, outline * 2);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
    cairo_stroke(cr);
    cairo_append_path(cr, path);
    cairo_path_destroy(path);
    cairo_set_fill_rule(cr, CAIRO_FILL_RULE_WINDING);
    FillOutlined(cr, top, bottom, y0, y1, 0);
}

// Flat fill plus ink outline.
void FillFlat(cairo_t* cr, Rgb fill, double outline, Rgb ink) {
    SetRgb(cr, fill);
    FillThenInk(cr, outline, ink);
}

// Radial glow fading to nothing at the radius.
void Glow(cairo_t* cr, double cx, double cy, double radius, Rgb c, double alpha) {
    cairo_pattern_t* p = cairo_pattern_create_radial(cx, cy, 0, cx, cy, radius);
    cairo_pattern_add_color_stop_rgba(p, 0, c.r, c.g, c.b, alpha);
    cairo_pattern_add_color_stop_rgba(p, 1, c.r, c.g, c.b, 0);
    cairo_set_source(cr, p);
    cairo_arc(cr, cx, cy, radius, 0, 2 * M_PI);
    cairo_fill(cr);
    cairo_pattern_destroy(p);
}

// Selects the display face.
static void SelectFace(cairo_t* cr, double size, bool bold) {
    cairo_select_font_face(cr, kDisplayFont, CAIRO_FONT_SLANT_NORMAL,
                           bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cr, size);
}

// Width of a lettering.
double LetterWidth(cairo_t* cr, const char* text, double size, bool bold) {
    SelectFace(cr, size, bold);
    cairo_text_extents_t ext;
    cairo_text_extents(cr, text, &ext);
    return ext.x_advance;
}

// Centred lettering with a dark rim (rim < 0 picks one from the size).
double Letter(cairo_t* cr, const char* text, double cx, double cy, double size, Rgb fill,
              double rim, Rgb ink) {
    SelectFace(cr, size, true);
    cairo_text_extents_t ext;
    cairo_text_extents(cr, text, &ext);
    // Centre on the ink box so capitals and digits sit in the middle.
    double x = cx - ext.x_bearing - ext.width / 2;
    double y = cy - ext.y_bearing - ext.height / 2;
    if (rim < 0) rim = size * 0.12;
    cairo_new_path(cr);
    cairo_move_to(cr, x, y);
    cairo_text_path(cr, text);
    if (rim > 0) {
        SetRgb(cr, ink);
        cairo_set_line_width(cr, rim);
        cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
        cairo_stroke_preserve(cr);
    }
    cairo_pattern_t* p = cairo_pattern_create_linear(0, y + ext.y_bearing, 0, y);
    Rgb lit = Shade(fill, 1.25);
    cairo_pattern_add_color_stop_rgb(p, 0, lit.r, lit.g, lit.b);
    cairo_pattern_add_color_stop_rgb(p, 1, fill.r, fill.g, fill.b);
    cairo_set_source(cr, p);
    cairo_fill(cr);
    cairo_pattern_destroy(p);
    return ext.width;
}

// Left-aligned plain lettering, vertically centred on cy by the font's
// capital height so lines of mixed text line up.
void LetterLeft(cairo_t* cr, const char* text, double x, double cy, double size, Rgb fill,
                bool bold) {
    SelectFace(cr, size, bold);
    SetRgb(cr, fill);
    cairo_move_to(cr, x, cy + size * 0.36);
    cairo_show_text(cr, text);
    cairo_new_path(cr);
}

// Parchment panel with a wooden rim.
void Panel(cairo_t* cr, double x, double y, double w, double h, double radius, double rim) {
    // Drop shadow first, so the panel floats a little.
    RoundRect(cr, x + rim * 0.4, y + rim * 0.6, w, h, radius);
    SetRgb(cr, {0, 0, 0}, 0.35);
    cairo_fill(cr);
    RoundRect(cr, x, y, w, h, radius);
    FillOutlined(cr, Pal::kWood, Pal::kWoodDark, y, y + h, rim * 0.25);
    RoundRect(cr, x + rim, y + rim, w - 2 * rim, h - 2 * rim, std::fmax(radius - rim, 2));
    FillOutlined(cr, Pal::kParchment, Pal::kParchmentDark, y + rim, y + h - rim, rim * 0.2);
    // A warm highlight along the top of the rim, kept inside the rounded
    // outline: on its own the band would run straight past the corners.
    cairo_save(cr);
    RoundRect(cr, x, y, w, h, radius);
    cairo_clip(cr);
    RoundRect(cr, x + rim * 0.35, y + rim * 0.25, w - rim * 0.7, rim * 0.35, rim * 0.17);
    SetRgb(cr, {1, 0.9, 0.7}, 0.35);
    cairo_fill(cr);
    cairo_restore(cr);
}

// Ink ring around everything at least half opaque: each pixel outside gets
// ink by how far it lies inside the ring (a one-pixel soft edge), painted
// over what is there, so soft shadows and glows stay under the ring.
void InkSilhouette(cairo_surface_t* s, double radius, Rgb ink) {
    cairo_surface_flush(s);
    const int w = cairo_image_surface_get_width(s), h = cairo_image_surface_get_height(s);
    const int stride = cairo_image_surface_get_stride(s);
    unsigned char* data = cairo_image_surface_get_data(s);
    auto px = [&](int x, int y) { return reinterpret_cast<uint32_t*>(data + y * stride) + x; };
    std::vector<unsigned char> solid(size_t(w) * h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) solid[size_t(y) * w + x] = (*px(x, y) >> 24) >= 128;
    const int reach = int(std::ceil(radius + 0.5));
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            if (solid[size_t(y) * w + x]) continue;
            double best = 1e9;
            for (int dy = -reach; dy <= reach; ++dy) {
                int yy = y + dy;
                if (yy < 0 || yy >= h) continue;
                for (int dx = -reach; dx <= reach; ++dx) {
                    int xx = x + dx;
                    if (xx < 0 || xx >= w || !solid[size_t(yy) * w + xx]) continue;
                    best = std::fmin(best, std::sqrt(double(dx * dx + dy * dy)));
                }
            }
            double cover = std::fmin(1.0, std::fmax(0.0, radius + 0.5 - best));
            if (cover <= 0) continue;
            uint32_t d = *px(x, y);
            auto mixc = [&](int shift, double c) {
                double under = ((d >> shift) & 255) / 255.0;
                return uint32_t(std::lround((c * cover + under * (1 - cover)) * 255)) << shift;
            };
            *px(x, y) = mixc(24, 1.0) | mixc(16, ink.r) | mixc(8, ink.g) | mixc(0, ink.b);
        }
    cairo_surface_mark_dirty(s);
}
