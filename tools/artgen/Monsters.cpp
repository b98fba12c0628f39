// Monsters: the walk and attack sheets of the eight monster kinds.
//
// Each cell is a complete pose drawn in a 100 x 100 box, facing left (the game
// mirrors a monster that walks right). The game shows step k of its clock in
// cell (k mod columns, k mod rows) and may jump between steps, so each pose is
// a gentle variation of the last: a bob, a stride, a swing.
//
// Depends on: Art, Draw. Limits: poses are phases of one cycle, not key frames.
#include "Art.h"

#include <cmath>
#include <functional>

namespace {

constexpr double kTau = 2 * M_PI;

// Width of the ink ring around every pose, in sheet pixels (two a unit).
constexpr double kSilhouettePx = 3;

// How a goblin-like kind looks.
struct GoblinLook {
    Rgb skin, cloth, trim;
    int hat;    // 0 none, 1 gold crown, 2 straw hat, 3 shell crown
    int weapon; // 0 club, 1 trident
    bool cape;
    double bulk; // 1 for regulars, more for kings
};

// Draws one goblin pose; swing is the weapon angle in radians (0 = resting).
void Goblin(cairo_t* cr, const GoblinLook& g, double phase, double swing) {
    const double s = std::sin(kTau * phase);
    const double bob = -3.0 * std::fabs(std::cos(kTau * phase));
    const double rim = 2.6;
    const Rgb skinDark = Shade(g.skin, 0.7);
    const Rgb clothDark = Shade(g.cloth, 0.65);
    const double b = g.bulk;

    // Soft ground shadow.
    Ellipse(cr, 50, 94, 24 * b, 4);
    SetRgb(cr, {0, 0, 0}, 0.25);
    cairo_fill(cr);

    // Cape behind everything.
    if (g.cape) {
        cairo_move_to(cr, 48, 44 + bob);
        cairo_curve_to(cr, 70, 46 + bob, 80 + 3 * s, 70, 78 + 4 * s, 88);
        cairo_line_to(cr, 52, 86);
        cairo_close_path(cr);
        FillOutlined(cr, Pal::kRed, Shade(Pal::kRed, 0.55), 44, 88, rim);
    }

    // Legs: back leg first, stride opposite to the front one.
    for (int leg = 0; leg < 2; ++leg) {
        double a = (leg == 0 ? -1 : 1) * 0.45 * s;
        double hx = 50 + (leg == 0 ? 4 : -3), hy = 70 + bob;
        double fx = hx + 18 * std::sin(a), fy = hy + 18 * std::cos(a);
        Rgb c = leg == 0 ? clothDark : Shade(g.cloth, 0.8);
        InkLine(cr, hx, hy, fx, fy, 8 * b, c, rim);
        Ellipse(cr, fx - 3, fy + 2, 6.5, 3.8);
        FillFlat(cr, Pal::kWoodDark, rim * 0.8);
    }

    // Back arm swings against the front leg.
    InkLine(cr, 58, 52 + bob, 62 - 8 * s, 68 + bob, 6 * b, skinDark, rim);

    // Body: a round tunic with a belt.
    Ellipse(cr, 52, 60 + bob, 15 * b, 15);
    FillOutlined(cr, Shade(g.cloth, 1.15), clothDark, 45 + bob, 75 + bob, rim);
    cairo_rectangle(cr, 52 - 14 * b, 63 + bob, 28 * b, 4.5);
    FillFlat(cr, Pal::kWoodDark, 1.2);
    Ellipse(cr, 46, 65 + bob, 3, 2.6);
    FillFlat(cr, g.trim, 1.0);

    // Front arm with the weapon; raised high, it swings behind the head.
    auto weaponArm = [&]() {
        cairo_save(cr);
        cairo_translate(cr, 48, 54 + bob);
        cairo_rotate(cr, -swing + 0.12 * s);
        if (g.weapon == 0) {
            // Knobbly club held out in front, below the face.
            cairo_move_to(cr, -14, 12);
            cairo_line_to(cr, -30, -2);
            cairo_curve_to(cr, -42, -8, -36, -22, -26, -12);
            cairo_line_to(cr, -10, 8);
            cairo_close_path(cr);
            FillOutlined(cr, Hex(0xb07a45), Pal::kWoodDark, -20, 12, rim);
        } else {
            // Trident, held upright ahead of the face.
            cairo_save(cr);
            cairo_translate(cr, -16, 6);
            InkLine(cr, -10, 14, -14, -26, 3.2, Hex(0xa87444), rim * 0.8);
            cairo_move_to(cr, -22, -24);
            cairo_curve_to(cr, -22, -32, -20, -34, -20, -36);
            cairo_move_to(cr, -14, -26);
            cairo_line_to(cr, -14, -40);
            cairo_move_to(cr, -6, -28);
            cairo_curve_to(cr, -6, -32, -8, -34, -8, -38);
            cairo_move_to(cr, -22, -24);
            cairo_curve_to(cr, -18, -28, -10, -28, -6, -28);
            InkStroke(cr, 2.6, Hex(0xd8e4ea), rim * 0.7);
            cairo_restore(cr);
        }
        InkLine(cr, 0, 0, -12, 10, 6.5 * b, g.skin, rim);
        Ellipse(cr, -12, 10, 4.2, 4.2);
        FillFlat(cr, g.skin, rim * 0.8);
        cairo_restore(cr);
    };
    const bool raised = swing < -0.3;
    if (raised) weaponArm();
    // Head: big round face, pointed ears, long nose to the left.
    const double hx = 42, hy = 34 + bob;
    // Back ear.
    cairo_move_to(cr, hx + 12, hy - 4);
    cairo_line_to(cr, hx + 32, hy - 14 + s);
    cairo_line_to(cr, hx + 15, hy + 6);
    cairo_close_path(cr);
    FillOutlined(cr, g.skin, skinDark, hy - 14, hy + 6, rim);
    Ellipse(cr, hx, hy, 17, 15);
    FillOutlined(cr, Shade(g.skin, 1.2), skinDark, hy - 15, hy + 15, rim);
    // Front ear.
    cairo_move_to(cr, hx - 6, hy - 8);
    cairo_line_to(cr, hx - 16, hy - 24 - s);
    cairo_line_to(cr, hx + 2, hy - 12);
    cairo_close_path(cr);
    FillOutlined(cr, g.skin, skinDark, hy - 24, hy - 8, rim);
    // Nose.
    cairo_move_to(cr, hx - 10, hy - 2);
    cairo_curve_to(cr, hx - 22, hy, hx - 24, hy + 5, hx - 20, hy + 6);
    cairo_curve_to(cr, hx - 16, hy + 6, hx - 12, hy + 4, hx - 9, hy + 3);
    FillOutlined(cr, g.skin, skinDark, hy - 2, hy + 6, rim * 0.8);
    // Eye with a bright pupil looking ahead.
    Ellipse(cr, hx - 5, hy - 4, 4.6, 5);
    FillFlat(cr, Pal::kCream, 1.6);
    Ellipse(cr, hx - 7, hy - 4, 2.2, 2.8);
    FillFlat(cr, Pal::kInk, 0);
    // Grin with one tooth.
    cairo_move_to(cr, hx - 12, hy + 8);
    cairo_curve_to(cr, hx - 8, hy + 12, hx, hy + 12, hx + 4, hy + 8);
    SetRgb(cr, Pal::kInk);
    cairo_set_line_width(cr, 1.8);
    cairo_stroke(cr);
    cairo_move_to(cr, hx - 6, hy + 10);
    cairo_line_to(cr, hx - 4, hy + 14);
    cairo_line_to(cr, hx - 2, hy + 10.5);
    FillFlat(cr, Pal::kCream, 1.0);

    // Headgear.
    if (g.hat == 1 || g.hat == 3) {
        Rgb c = g.hat == 1 ? Pal::kGold : Hex(0xf4c7b0);
        cairo_move_to(cr, hx - 12, hy - 10);
        for (int i = 0; i <= 4; ++i) {
            double x = hx - 12 + i * 6;
            cairo_line_to(cr, x, hy - (i % 2 == 0 ? 26 : 18));
        }
        cairo_line_to(cr, hx + 12, hy - 10);
        cairo_close_path(cr);
        FillOutlined(cr, Shade(c, 1.2), Shade(c, 0.7), hy - 26, hy - 10, rim);
        Ellipse(cr, hx, hy - 14, 2.4, 2.4);
        FillFlat(cr, g.hat == 1 ? Pal::kRed : Pal::kCrystal, 0.8);
    } else if (g.hat == 2) {
        Ellipse(cr, hx + 2, hy - 11, 22, 5);
        FillOutlined(cr, Hex(0xf2d98a), Hex(0xc9a24e), hy - 16, hy - 6, rim);
        Ellipse(cr, hx + 2, hy - 16, 11, 8);
        FillOutlined(cr, Hex(0xf2d98a), Hex(0xc9a24e), hy - 24, hy - 10, rim);
        cairo_rectangle(cr, hx - 8, hy - 15, 20, 3);
        FillFlat(cr, g.trim, 0);
    }

    if (!raised) weaponArm();
}

// A spider leg from the body out to a foot on the ground, bending at a high
// knee: the foot lands well outside the knee, so the leg arches like a
// spider's rather than standing straight under the body.
void SpiderLeg(cairo_t* cr, double bx, double by, double fx, double fy, double lift, double width,
               Rgb colour, double rim) {
    const double kx = bx + (fx - bx) * 0.42, ky = std::fmin(by, fy) - lift;
    cairo_move_to(cr, bx, by);
    cairo_curve_to(cr, bx + (kx - bx) * 0.5, ky - lift * 0.2, kx, ky, kx, ky);
    cairo_curve_to(cr, kx + (fx - kx) * 0.45, ky - lift * 0.1, fx, fy - lift * 0.3, fx, fy);
    InkStroke(cr, width, colour, rim);
}

// How a spider kind looks.
struct SpiderLook {
    Rgb body, lit, mark;
    double scale; // share of the cell the spider spans
    bool brood;   // the boss: egg sacs, spines and a crown
};

const SpiderLook kSpiderling{Hex(0x3b3350), Hex(0x7a6c9c), Hex(0xd9c3f0), 0.72, false};
const SpiderLook kBrood{Hex(0x2a0e14), Hex(0xa0243a), Hex(0xff9a2a), 1.0, true};

// One walking spider, seen from the side and a little above, facing left:
// four legs a side splayed wide, the far ones darker and higher.
void Spider(cairo_t* cr, const SpiderLook& k, double phase) {
    const double s = std::sin(kTau * phase);
    const double rim = 2.6;
    cairo_save(cr);
    cairo_translate(cr, 50, 92);
    cairo_scale(cr, k.scale, k.scale);
    cairo_translate(cr, -50, -92);
    const double legW = k.brood ? 5.2 : 4.0;

    Ellipse(cr, 52, 90, 40, 6);
    SetRgb(cr, {0, 0, 0}, 0.25);
    cairo_fill(cr);

    // Where the legs meet the body, front to back, and where their feet land.
    const double attach[4] = {40, 45, 50, 55};
    const double footNear[4] = {10, 28, 70, 90}, footFar[4] = {18, 35, 64, 82};
    for (int side = 0; side < 2; ++side) {
        Rgb c = side == 0 ? Shade(k.body, 0.75) : k.body;
        for (int i = 0; i < 4; ++i) {
            // Alternate legs step together: a foot slides and lifts in turn.
            double step = ((i + side) % 2 == 0 ? 1 : -1) * s;
            double fx = (side == 0 ? footFar[i] : footNear[i]) + 4 * step;
            double fy = (side == 0 ? 76 : 90) - (step > 0 ? 4 * step : 0);
            double lift = side == 0 ? 20 : 26;
            SpiderLeg(cr, attach[i], side == 0 ? 58 : 62, fx, fy, lift, legW, c, rim);
            if (k.brood && side == 1) {
                // Bristles on the near legs.
                double kx = attach[i] + (fx - attach[i]) * 0.42;
                InkLine(cr, kx, 60 - lift, kx + (i < 2 ? -4 : 4), 53 - lift, 1.6, k.body, 0.8);
            }
        }
    }

    // Abdomen behind, then the head and its eyes.
    const double bob = 1.5 * s;
    const double ax = 64, ay = 52 + bob, arx = k.brood ? 30 : 22, ary = k.brood ? 26 : 18;
    if (k.brood) {
        // Egg sacs clinging to the abdomen's back.
        for (int i = 0; i < 3; ++i) {
            Ellipse(cr, 60 + i * 13, 28 + bob + (i == 1 ? -4 : 0), 7, 6);
            FillOutlined(cr, Hex(0xfff2dc), Hex(0xc8b08a), 22, 36, rim * 0.8);
        }
    }
    Ellipse(cr, ax, ay, arx, ary);
    FillOutlined(cr, k.lit, Shade(k.body, 0.8), ay - ary, ay + ary, rim);
    if (k.brood) {
        // An hourglass of embers and a row of spines along the back.
        cairo_move_to(cr, ax - 8, ay - 12);
        cairo_line_to(cr, ax + 8, ay - 12);
        cairo_line_to(cr, ax + 2, ay);
        cairo_line_to(cr, ax + 8, ay + 12);
        cairo_line_to(cr, ax - 8, ay + 12);
        cairo_line_to(cr, ax - 2, ay);
        cairo_close_path(cr);
        FillFlat(cr, k.mark, 1.6);
        for (int i = 0; i < 5; ++i) {
            double a = M_PI * (1.1 + i * 0.2);
            double x = ax + arx * std::cos(a), y = ay + ary * std::sin(a);
            cairo_move_to(cr, x - 3, y + 2);
            cairo_line_to(cr, x + 9 * std::cos(a), y + 9 * std::sin(a));
            cairo_line_to(cr, x + 3, y + 2);
            FillFlat(cr, Hex(0xf4e6c8), 1.4);
        }
    } else {
        Ellipse(cr, ax - 4, ay - 7, 8, 4.5);
        SetRgb(cr, {1, 1, 1}, 0.3);
        cairo_fill(cr);
        Ellipse(cr, ax + 2, ay + 3, 4, 4);
        SetRgb(cr, k.mark, 0.8);
        cairo_fill(cr);
    }
    const double hx = 36, hy = 60 + bob * 0.5, hr = k.brood ? 15 : 12;
    Ellipse(cr, hx, hy, hr, hr * 0.85);
    FillOutlined(cr, k.lit, Shade(k.body, 0.8), hy - hr, hy + hr, rim);
    if (k.brood) {
        // A crown of three horns.
        for (int i = 0; i < 3; ++i) {
            double x = hx - 8 + i * 8;
            cairo_move_to(cr, x - 3, hy - hr + 4);
            cairo_line_to(cr, x, hy - hr - 9 - (i == 1 ? 3 : 0));
            cairo_line_to(cr, x + 3, hy - hr + 4);
            FillFlat(cr, Pal::kGold, 1.4);
        }
    }
    // Eyes looking ahead: the brood's glow like embers.
    const int eyes = k.brood ? 6 : 4;
    for (int i = 0; i < eyes; ++i) {
        double ex = hx - 8 + (i % 3) * 5 * (k.brood ? 1 : 1.4), ey = hy - 3 + (i / 3) * 5;
        if (!k.brood) ex = hx - 8 + (i % 2) * 6, ey = hy - 3 + (i / 2) * 5;
        Ellipse(cr, ex, ey, 2.4, 2.4);
        FillFlat(cr, k.brood ? Hex(0xffd040) : Hex(0xff4a3a), 0.8);
    }
    // Fangs.
    for (int f = 0; f < 2; ++f) {
        cairo_move_to(cr, hx - 10 + f * 6, hy + hr * 0.6);
        cairo_line_to(cr, hx - 12 + f * 6, hy + hr * 0.6 + 7);
        cairo_line_to(cr, hx - 6 + f * 6, hy + hr * 0.6 + 1);
        FillFlat(cr, Pal::kCream, 1.2);
    }
    cairo_restore(cr);
}

// A shaggy oval: fur tufts all around an ellipse.
void ShaggyOval(cairo_t* cr, double cx, double cy, double rx, double ry, int tufts) {
    cairo_new_sub_path(cr);
    for (int i = 0; i <= tufts * 2; ++i) {
        double a = M_PI * i / tufts;
        double r = (i % 2) ? 1.0 : 1.1;
        double x = cx + rx * r * std::cos(a), y = cy + ry * r * std::sin(a);
        if (i == 0)
            cairo_move_to(cr, x, y);
        else
            cairo_line_to(cr, x, y);
    }
    cairo_close_path(cr);
}

// One walking yeti pose: a big shaggy body with a blue face.
void Yeti(cairo_t* cr, double phase) {
    const double s = std::sin(kTau * phase);
    const double bob = -2.5 * std::fabs(std::cos(kTau * phase));
    const double rim = 2.6;
    const Rgb fur{0.95, 0.97, 1.0};
    const Rgb furShade{0.62, 0.72, 0.88};
    const Rgb face{0.42, 0.56, 0.82};

    Ellipse(cr, 52, 94, 30, 4.5);
    SetRgb(cr, {0, 0, 0}, 0.25);
    cairo_fill(cr);
    // Stubby legs, stepping in turn.
    for (int leg = 0; leg < 2; ++leg) {
        double x = 44 + leg * 18 + (leg == 0 ? 4 : -4) * s;
        double lift = (leg == 0 ? 1 : -1) * s > 0 ? 3 * std::fabs(s) : 0;
        RoundRect(cr, x - 8, 74 + bob, 16, 16 - lift, 6);
        FillOutlined(cr, leg == 0 ? furShade : fur, furShade, 74, 90, rim);
        Ellipse(cr, x - 2, 90 - lift, 10, 4.5);
        FillFlat(cr, face, rim * 0.8);
    }
    // Back arm behind the body.
    double bx = 74 - 4 * s, by = 76 + bob;
    InkLine(cr, 66, 46 + bob, bx, by, 12, furShade, rim);
    Ellipse(cr, bx, by, 7, 7);
    FillOutlined(cr, face, Shade(face, 0.8), by - 7, by + 7, rim);
    // Body.
    ShaggyOval(cr, 54, 52 + bob, 28, 32, 14);
    FillUnionOutlined(cr, fur, furShade, 20 + bob, 86 + bob, rim);
    // Horns.
    for (int h = 0; h < 2; ++h) {
        double x = 44 + h * 20, y = 26 + bob;
        cairo_move_to(cr, x - 4, y + 2);
        cairo_curve_to(cr, x - 6, y - 10, x + 2, y - 16, x + 8, y - 14);
        cairo_curve_to(cr, x + 2, y - 10, x + 2, y - 4, x + 4, y + 2);
        cairo_close_path(cr);
        FillOutlined(cr, Hex(0xf4ead0), Hex(0xb8a070), y - 16, y + 2, rim * 0.8);
    }
    // Face on the left of the body: brows, eyes, a fanged grin.
    const double fx = 38, fy = 44 + bob;
    Ellipse(cr, fx, fy, 14, 13);
    FillOutlined(cr, Shade(face, 1.2), Shade(face, 0.85), fy - 13, fy + 13, rim);
    for (int e = 0; e < 2; ++e) {
        double ex = fx - 6 + e * 9, ey = fy - 4;
        Ellipse(cr, ex, ey, 3.2, 3.6);
        FillFlat(cr, Pal::kCream, 1.2);
        Ellipse(cr, ex - 1, ey + 0.5, 1.6, 2);
        FillFlat(cr, Pal::kInk, 0);
        InkLine(cr, ex - 4, ey - 5 - e, ex + 3, ey - 6 + e, 1.6, Shade(face, 0.6), 0.6);
    }
    cairo_move_to(cr, fx - 10, fy + 5);
    cairo_curve_to(cr, fx - 4, fy + 10, fx + 4, fy + 10, fx + 8, fy + 5);
    cairo_close_path(cr);
    FillFlat(cr, Hex(0x2a1030), 1.4);
    for (int t = 0; t < 2; ++t) {
        double tx = fx - 6 + t * 10;
        cairo_move_to(cr, tx - 2, fy + 5.5);
        cairo_line_to(cr, tx, fy + 9);
        cairo_line_to(cr, tx + 2, fy + 5.5);
        FillFlat(cr, Pal::kCream, 0);
    }
    // Front arm, swinging with the stride.
    double ax = 30 + 6 * s, ay = 78 + bob;
    InkLine(cr, 42, 60 + bob, ax, ay, 13, fur, rim);
    Ellipse(cr, ax, ay, 8, 8);
    FillOutlined(cr, Shade(face, 1.1), face, ay - 8, ay + 8, rim);
}

// One wraith pose: a hooded cloak that never touches the ground.
void Wraith(cairo_t* cr, double phase) {
    const double s = std::sin(kTau * phase);
    const double c = std::cos(kTau * phase);
    const double rim = 2.2;
    const double fy = -4 * s; // float bob
    // Kept a little small so the glow and hem never reach the cell's edge.
    cairo_translate(cr, 4, 2);
    cairo_scale(cr, 0.92, 0.92);
    Glow(cr, 50, 52 + fy, 42, Hex(0x7be0d0), 0.35);

    // Cloak with a tattered hem that ripples with the phase.
    cairo_move_to(cr, 44, 14 + fy);
    cairo_curve_to(cr, 66, 10 + fy, 76, 34 + fy, 80, 60 + fy);
    for (int i = 0; i < 6; ++i) {
        double x = 82 - i * 8;
        double y = 88 + fy + ((i % 2) ? -6 : 4) + 3 * std::sin(kTau * phase + i);
        cairo_line_to(cr, x, y);
    }
    cairo_curve_to(cr, 30, 70 + fy, 26, 40 + fy, 44, 14 + fy);
    FillOutlined(cr, Hex(0x6a5a9a), Hex(0x1f1a3a), 10 + fy, 90 + fy, rim);
    // Inner fold light.
    cairo_move_to(cr, 56, 30 + fy);
    cairo_curve_to(cr, 66, 44 + fy, 66, 64 + fy, 60, 80 + fy);
    SetRgb(cr, Hex(0xa99ad8), 0.6);
    cairo_set_line_width(cr, 2.5);
    cairo_stroke(cr);
    // Hood opening, dark with two glowing eyes.
    Ellipse(cr, 40, 32 + fy, 11, 13);
    FillFlat(cr, Hex(0x0c0a18), rim);
    for (int e = 0; e < 2; ++e) {
        double ex = 35 + e * 7, ey = 31 + fy;
        Glow(cr, ex, ey, 6, Hex(0x9ff7ea), 0.9);
        Ellipse(cr, ex, ey, 1.8, 2.4);
        FillFlat(cr, {0.9, 1, 1}, 0);
    }
    // Bony hands reaching for the crystal.
    for (int h = 0; h < 2; ++h) {
        double hx = 22 - 4 * c + h * 6, hy = 52 + fy + h * 8;
        InkLine(cr, 42 + h * 4, 46 + fy + h * 6, hx, hy, 6, Hex(0x5a4a8a), rim);
        for (int f = 0; f < 3; ++f)
            InkLine(cr, hx, hy, hx - 7, hy - 4 + f * 4, 1.8, Hex(0xe8e2d0), 1.2);
    }
    // Wisps trailing behind.
    for (int w = 0; w < 3; ++w) {
        double y = 40 + w * 16 + fy;
        cairo_move_to(cr, 80, y);
        cairo_curve_to(cr, 88, y - 4 + 3 * s, 92, y + 4, 98, y - 2 + 3 * c);
        SetRgb(cr, Hex(0x9ff7ea), 0.5);
        cairo_set_line_width(cr, 2);
        cairo_stroke(cr);
    }
}

// The strike poses face the player: a monster strikes from the crystal's
// very centre, so the crystal's slim gem (drawn after it) stands in front of
// its belly and everything that strikes (head, arms, weapon, raised legs)
// reaches out above and beside the gem. The game mirrors a monster by the
// way it last stepped, which flips back and forth at the crystal, so the
// poses are symmetric. h runs from 1 (raised) to 0 (the blow lands).
double StrikeHeight(double phase) {
    return 0.5 + 0.5 * std::cos(kTau * phase);
}

// A goblin slamming its club down on the crystal's tip with both hands,
// legs, arms and ears spread wide so they show either side of the gem.
void GoblinStrike(cairo_t* cr, const GoblinLook& g, double phase) {
    const double h = StrikeHeight(phase);
    const double rim = 2.6;
    const Rgb skinDark = Shade(g.skin, 0.7);
    Ellipse(cr, 50, 91, 38, 4);
    SetRgb(cr, {0, 0, 0}, 0.25);
    cairo_fill(cr);
    for (int side = -1; side <= 1; side += 2) {
        InkLine(cr, 50 + side * 9, 64, 50 + side * 30, 84, 8, Shade(g.cloth, 0.8), rim);
        Ellipse(cr, 50 + side * 33, 86, 7.5, 4.2);
        FillFlat(cr, Pal::kWoodDark, rim * 0.8);
    }
    Ellipse(cr, 50, 60, 20, 16);
    FillOutlined(cr, Shade(g.cloth, 1.15), Shade(g.cloth, 0.65), 44, 76, rim);
    cairo_rectangle(cr, 31, 62, 38, 4.5);
    FillFlat(cr, Pal::kWoodDark, 1.2);
    // Arms from the shoulders out and up to the club's ends.
    const double clubY = 13 + (1 - h) * 17;
    for (int side = -1; side <= 1; side += 2)
        InkLine(cr, 50 + side * 16, 50, 50 + side * 31, clubY + 3, 6.5, g.skin, rim);
    // Ears and head.
    const double hy = 32;
    for (int side = -1; side <= 1; side += 2) {
        cairo_move_to(cr, 50 + side * 10, hy - 6);
        cairo_line_to(cr, 50 + side * 40, hy - 12 + 3 * h);
        cairo_line_to(cr, 50 + side * 12, hy + 4);
        cairo_close_path(cr);
        FillOutlined(cr, g.skin, skinDark, hy - 12, hy + 4, rim);
    }
    Ellipse(cr, 50, hy, 15, 14);
    FillOutlined(cr, Shade(g.skin, 1.2), skinDark, hy - 14, hy + 14, rim);
    for (int side = -1; side <= 1; side += 2) {
        Ellipse(cr, 50 + side * 7, hy - 3, 3.8, 4.2);
        FillFlat(cr, Pal::kCream, 1.4);
        Ellipse(cr, 50 + side * 6.5, hy - 2, 1.9, 2.3);
        FillFlat(cr, Pal::kInk, 0);
        InkLine(cr, 50 + side * 3, hy - 8, 50 + side * 12, hy - 11, 1.8, skinDark, 0.6);
    }
    // The club, held across in both fists: high overhead, then down on the tip.
    cairo_move_to(cr, 12, clubY + 1);
    cairo_curve_to(cr, 36, clubY - 1, 62, clubY - 3, 76, clubY - 5);
    cairo_curve_to(cr, 90, clubY - 9, 92, clubY + 9, 78, clubY + 7);
    cairo_curve_to(cr, 62, clubY + 6, 36, clubY + 7, 12, clubY + 6);
    cairo_close_path(cr);
    FillOutlined(cr, Hex(0xc8945a), Pal::kWoodDark, clubY - 8, clubY + 8, rim);
    for (int k = 0; k < 3; ++k) {
        Ellipse(cr, 66 + k * 8, clubY - 1 + (k == 1 ? -2 : 1), 1.6, 1.6);
        FillFlat(cr, Hex(0xd8d8d0), 0.8);
    }
    for (int side = -1; side <= 1; side += 2) {
        Ellipse(cr, 50 + side * 31, clubY + 3, 4.6, 4.6);
        FillFlat(cr, g.skin, rim * 0.8);
    }
}

// A spider rearing over the crystal, its front legs stabbing at the tip.
void SpiderStrike(cairo_t* cr, const SpiderLook& k, double phase) {
    const double h = StrikeHeight(phase);
    const double rim = 2.6;
    cairo_save(cr);
    cairo_translate(cr, 50, 92);
    cairo_scale(cr, 0.86, 0.86);
    cairo_translate(cr, -50, -92);
    Ellipse(cr, 50, 90, 44, 6);
    SetRgb(cr, {0, 0, 0}, 0.25);
    cairo_fill(cr);
    // Six legs on the ground, splayed wide either side.
    for (int side = -1; side <= 1; side += 2)
        for (int i = 0; i < 3; ++i) {
            double fx = 50 + side * (26 + i * 9), fy = 92 - i * 7;
            SpiderLeg(cr, 50 + side * 6, 56, fx, fy, 16, 4.2, i == 2 ? Shade(k.body, 0.8) : k.body,
                      rim);
        }
    // Abdomen rising behind the head.
    Ellipse(cr, 50, 20, 22, 15);
    FillOutlined(cr, k.lit, Shade(k.body, 0.8), 5, 35, rim);
    Ellipse(cr, 50, 15, 8, 4);
    SetRgb(cr, {1, 1, 1}, 0.3);
    cairo_fill(cr);
    // The head, its eyes above the crystal's tip.
    Ellipse(cr, 50, 38, 15, 13);
    FillOutlined(cr, k.lit, Shade(k.body, 0.8), 25, 51, rim);
    for (int i = 0; i < 4; ++i) {
        Ellipse(cr, 50 + (i - 1.5) * 6, 32 + (i == 1 || i == 2 ? -2 : 0), 2.6, 2.6);
        FillFlat(cr, Hex(0xff4a3a), 0.8);
    }
    // Front legs: raised high and crooked, then stabbing down at the tip.
    for (int side = -1; side <= 1; side += 2) {
        double kx = 50 + side * 36, ky = 20 - 8 * h;
        double tx = 50 + side * (12 + 14 * h), ty = 40 - 30 * h;
        cairo_move_to(cr, 50 + side * 10, 44);
        cairo_line_to(cr, kx, ky);
        cairo_line_to(cr, tx, ty);
        InkStroke(cr, 4.4, k.body, rim);
    }
    cairo_restore(cr);
}

// A yeti hammering both fists down either side of the crystal.
void YetiStrike(cairo_t* cr, double phase) {
    const double h = StrikeHeight(phase);
    const double rim = 2.6;
    const Rgb fur{0.93, 0.95, 1.0};
    const Rgb furShade{0.56, 0.64, 0.84};
    const Rgb face{0.42, 0.56, 0.82};
    Ellipse(cr, 50, 93, 38, 4.5);
    SetRgb(cr, {0, 0, 0}, 0.25);
    cairo_fill(cr);
    for (int side = -1; side <= 1; side += 2) {
        RoundRect(cr, 50 + side * 20 - 8, 74, 16, 16, 6);
        FillOutlined(cr, fur, furShade, 74, 90, rim);
        Ellipse(cr, 50 + side * 22, 90, 10, 4.5);
        FillFlat(cr, face, rim * 0.8);
    }
    ShaggyOval(cr, 50, 58, 29, 27, 14);
    FillUnionOutlined(cr, fur, furShade, 31, 85, rim);
    // Arms swing on arcs outside the crystal: fists from overhead to the ground.
    for (int side = -1; side <= 1; side += 2) {
        const double down = 1 - h, sx = 50 + side * 20, sy = 46;
        double fx = sx + side * (2 + 8 * down * down + 8 * std::sin(M_PI * down));
        double fy = sy - 30 * h + 28 * down;
        InkLine(cr, sx, sy, fx, fy, 12, fur, rim);
        Ellipse(cr, fx, fy, 8, 8);
        FillOutlined(cr, Shade(face, 1.1), face, fy - 8, fy + 8, rim);
    }
    // Head with horns, brows and a roar.
    for (int side = -1; side <= 1; side += 2) {
        cairo_move_to(cr, 50 + side * 8, 24);
        cairo_curve_to(cr, 50 + side * 16, 10, 50 + side * 26, 8, 50 + side * 30, 14);
        cairo_curve_to(cr, 50 + side * 22, 14, 50 + side * 18, 20, 50 + side * 16, 28);
        cairo_close_path(cr);
        FillOutlined(cr, Hex(0xf4ead0), Hex(0xb8a070), 8, 28, rim * 0.8);
    }
    ShaggyOval(cr, 50, 30, 17, 15, 10);
    FillUnionOutlined(cr, fur, furShade, 15, 45, rim);
    Ellipse(cr, 50, 32, 12, 10);
    FillOutlined(cr, Shade(face, 1.2), Shade(face, 0.85), 22, 42, rim);
    for (int side = -1; side <= 1; side += 2) {
        Ellipse(cr, 50 + side * 5, 29, 2.8, 3.2);
        FillFlat(cr, Pal::kCream, 1.2);
        Ellipse(cr, 50 + side * 4.5, 29.5, 1.4, 1.8);
        FillFlat(cr, Pal::kInk, 0);
        InkLine(cr, 50 + side * 2, 25, 50 + side * 9, 23, 1.6, Shade(face, 0.6), 0.6);
    }
    Ellipse(cr, 50, 37, 5, 3 + 2 * (1 - h));
    FillFlat(cr, Hex(0x2a1030), 1.2);
}

// Draws a sheet: for every cell, the pose of the clock step that shows it.
// Each cell is painted on its own canvas and then ringed in ink (see
// InkSilhouette): at the drawn size a monster's own outline is about one
// screen pixel, too thin to hold against pale tiles. fit shrinks the
// 100 x 100 pose box about its centre, leaving room for the ring.
bool Sheet(const std::string& dir, const char* name, double fit,
           const std::function<void(cairo_t*, double)>& pose) {
    const ArtEntry* e = ArtFind(name);
    cairo_surface_t* s = CanvasFor(name);
    if (!e || !s) return false;
    cairo_t* cr = cairo_create(s);
    const int cols = e->columns, rows = e->rows;
    const int cw = e->width / cols, ch = e->height / rows;
    // The clock visits cells (k mod cols, k mod rows); steps repeat with this period.
    int period = 1;
    while (period < 10 && !(period % cols == 0 && period % rows == 0)) ++period;
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < cols; ++c) {
            int step = -1;
            for (int k = 0; k < period; ++k)
                if (k % cols == c && k % rows == r) step = k;
            // Cells the clock never reaches still get a pose between steps.
            double phase =
                step >= 0 ? double(step) / period : (double(c + r * cols) + 0.5) / (cols * rows);
            cairo_surface_t* cell = NewCanvas(cw, ch);
            cairo_t* cc = cairo_create(cell);
            cairo_scale(cc, cw / 100.0, ch / 100.0);
            cairo_translate(cc, 50, 50);
            cairo_scale(cc, fit, fit);
            cairo_translate(cc, -50, -50);
            pose(cc, phase);
            cairo_destroy(cc);
            InkSilhouette(cell, kSilhouettePx);
            cairo_set_source_surface(cr, cell, c * cw, r * ch);
            cairo_paint(cr);
            cairo_surface_destroy(cell);
        }
    }
    cairo_destroy(cr);
    return SaveArt(s, dir, name);
}

const GoblinLook kGoblin{Hex(0x7fbf4a), Hex(0x8a5a33), Pal::kGold, 0, 0, false, 1.0};
const GoblinLook kGoblinKing{Hex(0x6fae3c), Hex(0x7a3d8f), Pal::kGold, 1, 0, true, 1.2};
const GoblinLook kBeachGoblin{Hex(0x5cc0a8), Hex(0x3d7fd0), Hex(0xffffff), 2, 1, false, 1.0};
const GoblinLook kBeachKing{Hex(0x48a894), Hex(0x2a5db0), Hex(0xffd24a), 3, 1, true, 1.2};

} // namespace

// A goblin in a 100 x 100 box, for the loading screen and how-to-play pages.
void DrawGoblinFigure(cairo_t* cr, double phase) {
    Goblin(cr, kGoblin, phase, 0);
}

// All monster sheets. Goblins' side poses reach nearly across their box and
// are drawn a little smaller; the strike poses are laid out inside it.
bool DrawMonsters(const std::string& dir) {
    bool ok = true;
    auto walk = [](const GoblinLook& g) {
        return [g](cairo_t* cr, double p) { Goblin(cr, g, p, 0.15 * std::sin(kTau * p)); };
    };
    ok &= Sheet(dir, "GoblinWalking.png", 0.9, walk(kGoblin));
    ok &= Sheet(dir, "GoblinAttack.png", 1.0,
                [](cairo_t* cr, double p) { GoblinStrike(cr, kGoblin, p); });
    ok &= Sheet(dir, "GoblinBossWalk.png", 0.9, walk(kGoblinKing));
    ok &= Sheet(dir, "BeachGoblinWalking.png", 0.9, walk(kBeachGoblin));
    ok &= Sheet(dir, "BeachGoblinBossWalk.png", 0.9, walk(kBeachKing));
    ok &= Sheet(dir, "SpiderWalk.png", 1.0,
                [](cairo_t* cr, double p) { Spider(cr, kSpiderling, p); });
    ok &= Sheet(dir, "SpiderAttack.png", 1.0,
                [](cairo_t* cr, double p) { SpiderStrike(cr, kSpiderling, p); });
    ok &= Sheet(dir, "BroodWalk.png", 0.9, [](cairo_t* cr, double p) { Spider(cr, kBrood, p); });
    ok &= Sheet(dir, "YetiWalk.png", 0.92, [](cairo_t* cr, double p) { Yeti(cr, p); });
    ok &= Sheet(dir, "YetiAttack.png", 1.0, [](cairo_t* cr, double p) { YetiStrike(cr, p); });
    ok &= Sheet(dir, "WraithWalk.png", 1.0, [](cairo_t* cr, double p) { Wraith(cr, p); });
    return ok;
}
