// Background: a picture object of the screens: whole-screen backdrops and
// overlays, the clouds, banners, the countdown digits, the star display,
// the tutorial notes and the mouse cursor. Its quad can show one frame of a
// strip of pictures (the loading strip); every other picture shows whole.
//
// Depends on: GameObject (quad, draw), Looks (look pictures), Level (the
// countdown digit), VXGraphics (pictures it loads itself).
// Limits: a picture loaded for the object is its own and unloaded with it;
// a look picture is borrowed from the looks.
#pragma once

#include <memory>

#include "GameObject.h"

class Background : public GameObject {
  public:
    // Releases its own picture, then the base frees the mesh.
    ~Background() override;
    // The quad shows one frame: u from 0 to 1/columns, v from 0 (top) to
    // 1/rows (bottom).
    void SetMesh() override;

    // Loads the picture as the object's own, unless it already has one.
    void LoadPicture(const char* file);

    // Look families: each sets look n of its table; a number outside the
    // table leaves the object without a picture.
    void SetTutorialTexture(int n);
    // Reads the level's countdown digit: 1, 2, 3, or 4 for the start sign.
    void SetCountdownTexture(void);
    void SetWaveTexture(int n);
    void SetCloudTexture(int n);
    void SetStarTexture(int n);
    // The level backgrounds: each loads its picture only while the object
    // has none, and never replaces one it has.
    void SetBGTexture(void);
    void SetBG3Texture(void);
    void SetBG4Texture(void);
    void SetBG5Texture(void);
    void SetBG6Texture(void);

    float columns = 1.0f;
    float rows = 1.0f;

  private:
    // Shows a borrowed look picture (or none), releasing a picture of its own.
    void ShowLook(VXGfxTexture* look);
    bool ownsPicture = false;
};

// The one way a picture object is made: a fresh object in the slot (the
// old one is destroyed), its picture loaded when one is named, scale
// (sx, sy) at (x, y), its frame quad for columns frames across.
Background& CreateBackground(std::unique_ptr<Background>& slot, const char* picture, float sx,
                             float sy, float x, float y, float columns = 1.0f);
// Draws the object through the context when it exists (frames 1 x 1).
void DrawPicture(ObjectList& context, const std::unique_ptr<Background>& picture);
