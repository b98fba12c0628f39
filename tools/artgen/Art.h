// Art: the picture families of the generator and the canvas helpers they
// share. Each family draws its pictures into the output folder.
//
// Depends on: Draw (brushes), ArtManifest (names and sizes). Limits: every
// family must draw only pictures listed in the manifest, at their listed size.
#pragma once

#include "ArtManifest.h"
#include "Draw.h"

#include <string>

// A canvas of the size the manifest gives NAME; null (with a message) for an
// unknown name. The caller saves it with SaveArt.
cairo_surface_t* CanvasFor(const char* name);
// Saves and destroys a canvas made by CanvasFor; false on a write failure.
bool SaveArt(cairo_surface_t* s, const std::string& dir, const char* name);

// A thick limb or stroke with the ink rim: ink first, colour over it.
void InkLine(cairo_t* cr, double x0, double y0, double x1, double y1, double width, Rgb colour,
             double rim);
// The same along the current path (consumed).
void InkStroke(cairo_t* cr, double width, Rgb colour, double rim);

// The families.
bool DrawMonsters(const std::string& dir);
bool DrawTowersAndCrystal(const std::string& dir);
bool DrawIcon(const std::string& dir);
// The icon at every size as DIR/NxN/apps/<theme icon name>.png.
bool DrawThemeIcons(const std::string& dir);
bool DrawButtons(const std::string& dir);
bool DrawSigns(const std::string& dir);
bool DrawBackgrounds(const std::string& dir);
bool DrawMenuArt(const std::string& dir);
bool DrawOverlays(const std::string& dir);
bool DrawPages(const std::string& dir);
bool DrawLogos(const std::string& dir);

// Shared pieces other families reuse.
// The crystal gem centred at (cx, cy) with the given half height.
void DrawCrystalGem(cairo_t* cr, double cx, double cy, double half);
// A first- or second-tier archer tower standing in a 100 x 100 box at the origin.
void DrawArcherTower(cairo_t* cr, int tier);
// A goblin in a 100 x 100 box at the origin, facing left, at walk phase 0..1.
void DrawGoblinFigure(cairo_t* cr, double phase);
