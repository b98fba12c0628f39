// artgen: draws every picture the game reads, and the window icon.
//
//   artgen DIR                          writes all pictures into DIR
//   artgen --icons DIR                  writes the desktop's icons into DIR,
//                                       one folder per size (DIR/32x32/apps)
//   artgen --contact-sheet OUT.png DIR  one PNG showing every picture of DIR
//                                       on a grid with its name
//
// Depends on: Cairo, the picture families (Art.h). Limits: output is fully
// deterministic (no clock, no random seeds); the families run on two threads.
#include "Art.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>
#include <thread>

// Canvas sized from the manifest.
cairo_surface_t* CanvasFor(const char* name) {
    const ArtEntry* e = ArtFind(name);
    if (!e) {
        std::printf("artgen: %s is not in the manifest\n", name);
        return nullptr;
    }
    return NewCanvas(e->width, e->height);
}

// Saves and destroys a manifest canvas.
bool SaveArt(cairo_surface_t* s, const std::string& dir, const char* name) {
    bool ok = SaveCanvas(s, dir, name);
    cairo_surface_destroy(s);
    return ok;
}

// Thick line with an ink rim.
void InkLine(cairo_t* cr, double x0, double y0, double x1, double y1, double width, Rgb colour,
             double rim) {
    cairo_move_to(cr, x0, y0);
    cairo_line_to(cr, x1, y1);
    InkStroke(cr, width, colour, rim);
}

// Strokes the current path twice: ink, then colour.
void InkStroke(cairo_t* cr, double width, Rgb colour, double rim) {
    cairo_path_t* path = cairo_copy_path(cr);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
    SetRgb(cr, Pal::kInk);
    cairo_set_line_width(cr, width + 2 * rim);
    cairo_stroke(cr);
    cairo_append_path(cr, path);
    SetRgb(cr, colour);
    cairo_set_line_width(cr, width);
    cairo_stroke(cr);
    cairo_path_destroy(path);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
}

// The icon's picture: the PNG of its entry of the window's size, found in
// the icon's directory. Null when the file is missing or has no such entry.
static cairo_surface_t* IconEntry(const std::string& path) {
    FILE* f = std::fopen(path.c_str(), "rb");
    if (!f) return nullptr;
    unsigned char head[6], entry[16];
    long offset = -1;
    if (std::fread(head, 1, 6, f) == 6)
        for (int i = 0; i < head[4] + 256 * head[5] && std::fread(entry, 1, 16, f) == 16; ++i)
            if (entry[0] == kArtIconSize)
                offset = entry[12] | entry[13] << 8 | entry[14] << 16 | (long)entry[15] << 24;
    if (offset < 0 || std::fseek(f, offset, SEEK_SET) != 0) {
        std::fclose(f);
        return nullptr;
    }
    cairo_surface_t* pic = cairo_image_surface_create_from_png_stream(
        [](void* c, unsigned char* d, unsigned int n) {
            return std::fread(d, 1, n, static_cast<FILE*>(c)) == n ? CAIRO_STATUS_SUCCESS
                                                                   : CAIRO_STATUS_READ_ERROR;
        },
        f);
    std::fclose(f);
    return pic;
}

// One grid of every picture with its name under it.
static int ContactSheet(const char* out, const std::string& dir) {
    const int cellW = 260, cellH = 210, cols = 10;
    const int rows = (kArtManifestCount + 1 + cols - 1) / cols;
    cairo_surface_t* sheet = NewCanvas(cols * cellW, rows * cellH);
    cairo_t* cr = cairo_create(sheet);
    SetRgb(cr, Hex(0x3a3f4a));
    cairo_paint(cr);
    int missing = 0;
    for (int i = 0; i <= kArtManifestCount; ++i) {
        const char* name = i < kArtManifestCount ? kArtManifest[i].name : "crystal.ico";
        double x = (i % cols) * cellW, y = (i / cols) * cellH;
        // A checkerboard shows transparency.
        for (int cy = 0; cy < 18; ++cy)
            for (int cx = 0; cx < 25; ++cx) {
                SetRgb(cr, (cx + cy) % 2 ? Hex(0x8a8f99) : Hex(0x6a6f79));
                cairo_rectangle(cr, x + 5 + cx * 10, y + 5 + cy * 10, 10, 10);
                cairo_fill(cr);
            }
        std::string path = dir + "/" + name;
        cairo_surface_t* pic = i < kArtManifestCount
                                   ? cairo_image_surface_create_from_png(path.c_str())
                                   : IconEntry(path);
        if (!pic || cairo_surface_status(pic) != CAIRO_STATUS_SUCCESS) {
            ++missing;
            Letter(cr, "MISSING", x + cellW / 2.0, y + 95, 28, Pal::kRed);
        } else {
            int w = cairo_image_surface_get_width(pic), h = cairo_image_surface_get_height(pic);
            double sc = std::fmin(250.0 / w, 180.0 / h);
            cairo_save(cr);
            cairo_translate(cr, x + 5 + (250 - w * sc) / 2, y + 5 + (180 - h * sc) / 2);
            cairo_scale(cr, sc, sc);
            cairo_set_source_surface(cr, pic, 0, 0);
            cairo_paint(cr);
            cairo_restore(cr);
        }
        if (pic) cairo_surface_destroy(pic);
        LetterLeft(cr, name, x + 6, y + 198, 13, {1, 1, 1}, false);
    }
    cairo_destroy(cr);
    cairo_surface_flush(sheet);
    bool ok = cairo_surface_write_to_png(sheet, out) == CAIRO_STATUS_SUCCESS;
    if (!ok) std::printf("artgen: cannot write %s\n", out);
    cairo_surface_destroy(sheet);
    if (missing) std::printf("artgen: %d pictures missing or unreadable\n", missing);
    return ok && missing == 0 ? 0 : 1;
}

// Draws the whole set, or the contact sheet.
int main(int argc, char** argv) {
    if (argc == 4 && std::strcmp(argv[1], "--contact-sheet") == 0)
        return ContactSheet(argv[2], argv[3]);
    if (argc == 3 && std::strcmp(argv[1], "--icons") == 0) {
        mkdir(argv[2], 0755);
        return DrawThemeIcons(argv[2]) ? 0 : 1;
    }
    if (argc != 2) {
        std::printf(
            "usage: artgen DIR | artgen --icons DIR | artgen --contact-sheet OUT.png DIR\n");
        return 2;
    }
    std::string dir = argv[1];
    mkdir(dir.c_str(), 0755);
    // Two threads, each with half of the families; each family owns its
    // canvases, and Cairo's text API is safe across threads.
    bool okA = true, okB = true;
    std::thread other([&] {
        okB &= DrawBackgrounds(dir);
        okB &= DrawMenuArt(dir);
        okB &= DrawLogos(dir);
    });
    okA &= DrawMonsters(dir);
    okA &= DrawTowersAndCrystal(dir);
    okA &= DrawIcon(dir);
    okA &= DrawButtons(dir);
    okA &= DrawSigns(dir);
    okA &= DrawOverlays(dir);
    okA &= DrawPages(dir);
    other.join();
    return okA && okB ? 0 : 1;
}
