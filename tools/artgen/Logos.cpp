// Logos: the two splash-screen pictures, each a logo on black: the maker,
// Tolvern Studio (a red keep in a shield), and the developers, Mosswick (a
// candle whose flame is a moss-green leaf).
//
// Depends on: Art, Draw. Limits: the splash draws them with blending off and
// fades them through the tint, so the black must be opaque black.
#include "Art.h"

#include <cmath>

namespace {

// Fills the canvas with opaque black.
void Black(cairo_t* cr) {
    cairo_set_source_rgb(cr, 0, 0, 0);
    cairo_paint(cr);
}

// The maker's logo.
bool Tolvern(const std::string& dir) {
    const char* name = "TolvernSG_Logo_CMYK-RED.png";
    cairo_surface_t* s = CanvasFor(name);
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    Black(cr);
    cairo_scale(cr, 2, 2);
    const Rgb red = Hex(0xd8262a), redDark = Hex(0x8a1014);
    // Shield.
    cairo_move_to(cr, 400, 90);
    cairo_curve_to(cr, 450, 110, 490, 110, 510, 100);
    cairo_curve_to(cr, 512, 220, 470, 290, 400, 330);
    cairo_curve_to(cr, 330, 290, 288, 220, 290, 100);
    cairo_curve_to(cr, 310, 110, 350, 110, 400, 90);
    cairo_close_path(cr);
    FillOutlined(cr, red, redDark, 90, 330, 6, Hex(0xf4f0e8));
    // A keep with three towers, cut out in cream.
    cairo_set_source_rgb(cr, 0.96, 0.94, 0.9);
    cairo_rectangle(cr, 345, 170, 110, 100);
    for (int i = 0; i < 3; ++i) {
        double x = 340 + i * 48, top = i == 1 ? 130 : 150;
        cairo_rectangle(cr, x, top, 24, 272 - top);
        for (int k = 0; k < 3; ++k) cairo_rectangle(cr, x + k * 9 - 1, top - 10, 6, 12);
    }
    cairo_fill(cr);
    cairo_move_to(cr, 388, 272);
    cairo_line_to(cr, 388, 242);
    cairo_arc(cr, 400, 242, 12, M_PI, 0);
    cairo_line_to(cr, 412, 272);
    SetRgb(cr, red);
    cairo_fill(cr);
    Letter(cr, "TOLVERN", 400, 400, 76, red, 0);
    Letter(cr, "S T U D I O", 400, 460, 30, Hex(0xf4f0e8), 0);
    cairo_destroy(cr);
    return SaveArt(s, dir, name);
}

// The developers' logo.
bool Mosswick(const std::string& dir) {
    cairo_surface_t* s = CanvasFor("MosswickLogo.png");
    if (!s) return false;
    cairo_t* cr = cairo_create(s);
    Black(cr);
    cairo_scale(cr, 2, 2);
    // Candle with a mossy drip.
    Glow(cr, 400, 150, 120, Hex(0x9be05a), 0.35);
    RoundRect(cr, 365, 190, 70, 140, 10);
    FillOutlined(cr, Hex(0xf4ecd8), Hex(0xc8b890), 190, 330, 4, Hex(0x3a3020));
    cairo_move_to(cr, 365, 200);
    cairo_curve_to(cr, 380, 196, 390, 230, 398, 206);
    cairo_curve_to(cr, 406, 196, 414, 240, 424, 204);
    cairo_curve_to(cr, 430, 196, 435, 200, 435, 200);
    cairo_line_to(cr, 435, 190);
    cairo_line_to(cr, 365, 190);
    cairo_close_path(cr);
    FillOutlined(cr, Hex(0x7fc04a), Hex(0x3f7a2a), 190, 240, 3, Hex(0x1a2a10));
    InkLine(cr, 400, 190, 400, 172, 3, Hex(0x3a3020), 1);
    // The flame is a leaf.
    cairo_move_to(cr, 400, 92);
    cairo_curve_to(cr, 430, 115, 428, 160, 400, 172);
    cairo_curve_to(cr, 372, 160, 370, 115, 400, 92);
    FillOutlined(cr, Hex(0xc8f08a), Hex(0x4fa03a), 92, 172, 3, Hex(0x1a2a10));
    cairo_move_to(cr, 400, 104);
    cairo_line_to(cr, 400, 168);
    SetRgb(cr, Hex(0x2a5a1a));
    cairo_set_line_width(cr, 2);
    cairo_stroke(cr);
    Letter(cr, "Mosswick", 400, 400, 80, Hex(0x8fd05a), 0);
    Letter(cr, "game developers", 400, 456, 26, Hex(0xe8e0c8), 0);
    cairo_destroy(cr);
    return SaveArt(s, dir, "MosswickLogo.png");
}

} // namespace

// Both splash logos.
bool DrawLogos(const std::string& dir) {
    bool ok = Tolvern(dir);
    ok &= Mosswick(dir);
    return ok;
}
