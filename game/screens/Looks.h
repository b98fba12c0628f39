// Looks: the decoded pictures behind the numbered look families of buttons
// and pictures (a button's normal and highlighted picture, the countdown
// digits, the wave banners...). The screens set every button's look once a
// frame; the pictures come from here, decoded on first use and kept by file
// name for the rest of the run, so a frame never reads a file and a look
// always shows the picture its file names.
//
// Depends on: VXGraphics (texture loading). Limits: holds each look picture
// once, for the whole run (about a hundred small pictures); whole-screen
// pictures are loaded by their owners and do not come through here.
#pragma once

#include "VXGraphics.h"

// The picture of a look file, decoded on the first request. The looks own
// it: callers borrow it and never unload it.
VXGfxTexture* LookPicture(const char* file);
// The picture of look n of a family of count looks whose entry n - 1 is the
// file of look n; a number outside the table gives no picture.
VXGfxTexture* LookInTable(const char* const* table, int count, int n);
template <int N> VXGfxTexture* LookFor(const char* const (&table)[N], int n) {
    return LookInTable(table, N, n);
}
// Unloads every look picture (at shutdown, while the renderer still runs).
void LooksFree(void);
// How many look pictures are held now.
int LooksHeldCount(void);
