// Background: picture objects, their looks and the recipe that makes them.
//
// Depends on: GameObject, Looks, Level, VXGraphics. Limits: see Background.h.
#include "Background.h"

#include "Level.h"
#include "Looks.h"

namespace {

// Entry n - 1 of each table is look n.
const char* const kTutorialLooks[] = {
    "./Resources/tutorial1.png", "./Resources/tutorial2.png", "./Resources/tutorial3.png",
    "./Resources/t1help.png",    "./Resources/t2help.png",
};
const char* const kCountdownLooks[] = {
    "./Resources/1.png",
    "./Resources/2.png",
    "./Resources/3.png",
    "./Resources/s.png",
};
const char* const kWaveLooks[] = {
    "./Resources/wave1.png",     "./Resources/wave2.png",     "./Resources/wave3.png",
    "./Resources/lvl1wave1.png", "./Resources/lvl1wave2.png",
};
const char* const kCloudLooks[] = {
    "./Resources/cloud1.png",
    "./Resources/cloud2.png",
    "./Resources/cloud3.png",
};
const char* const kStarLooks[] = {
    "./Resources/1star.png",
    "./Resources/2star.png",
    "./Resources/3star.png",
    "./Resources/lvlStarBG.png",
};

} // namespace

Background::~Background() {
    if (ownsPicture && pTexture) VXGfxTextureUnload(pTexture);
    pTexture = nullptr;
}

void Background::SetMesh() {
    BuildFrameQuad(1.0f / columns, 1.0f / rows, "Background::SetMesh", "Background", 412);
}

void Background::LoadPicture(const char* file) {
    if (pTexture) return;
    pTexture = VXGfxTextureLoad(file);
    ownsPicture = pTexture != nullptr;
}

void Background::ShowLook(VXGfxTexture* look) {
    if (ownsPicture && pTexture) VXGfxTextureUnload(pTexture);
    ownsPicture = false;
    pTexture = look;
}

void Background::SetTutorialTexture(int n) {
    ShowLook(LookFor(kTutorialLooks, n));
}
void Background::SetCountdownTexture(void) {
    ShowLook(LookFor(kCountdownLooks, gCountdownDigit));
}
void Background::SetWaveTexture(int n) {
    ShowLook(LookFor(kWaveLooks, n));
}
void Background::SetCloudTexture(int n) {
    ShowLook(LookFor(kCloudLooks, n));
}
void Background::SetStarTexture(int n) {
    ShowLook(LookFor(kStarLooks, n));
}

void Background::SetBGTexture(void) {
    LoadPicture("./Resources/BG.png");
}
void Background::SetBG3Texture(void) {
    LoadPicture("./Resources/BG3.png");
}
void Background::SetBG4Texture(void) {
    LoadPicture("./Resources/BG4.png");
}
void Background::SetBG5Texture(void) {
    LoadPicture("./Resources/BG5.png");
}
void Background::SetBG6Texture(void) {
    LoadPicture("./Resources/BG6.png");
}

Background& CreateBackground(std::unique_ptr<Background>& slot, const char* picture, float sx,
                             float sy, float x, float y, float columns) {
    slot = std::make_unique<Background>();
    Background& object = *slot;
    object.columns = columns;
    if (picture) object.LoadPicture(picture);
    object.SetTransform(x, y, sx, sy);
    object.SetMesh();
    return object;
}

void DrawPicture(ObjectList& context, const std::unique_ptr<Background>& picture) {
    if (picture) context.DrawObject(*picture, 1.0f, 1.0f);
}
