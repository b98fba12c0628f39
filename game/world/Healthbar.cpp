// Healthbar: the three bars of the crystal's health display.
//
// Depends on: GameObject, VXGraphics. Limits: see Healthbar.h.
#include "Healthbar.h"

HealthbarArray healthbarList;

// Loads the bar's picture when it has one.
Healthbar::Healthbar(const char* picture) {
    if (picture) pTexture = VXGfxTextureLoad(picture);
}

// The picture is the bar's own; the mesh goes with the base.
Healthbar::~Healthbar() {
    if (pTexture) VXGfxTextureUnload(pTexture);
    pTexture = nullptr;
}

// Scales are set directly: the bars are not square.
void CreateHealthbars(int crystalHealth) {
    const float h = (float)crystalHealth;
    const struct {
        const char* picture;
        float scaleX, scaleY, x;
        float alpha;
    } bars[3] = {
        {nullptr, 10.0f, h, 350.0f, 1.0f},
        {"./Resources/Layer 24.png", 48.0f, h + 30.0f, 360.0f, 1.0f},
        {"./Resources/Layer 23.png", 48.0f, h + 30.0f, 360.0f, 0.0f},
    };
    for (const auto& b : bars) {
        auto bar = std::make_unique<Healthbar>(b.picture);
        bar->SetTransform(b.x, 0.0f, b.scaleX, b.scaleY);
        bar->tintColor[3] = b.alpha;
        bar->SetMesh();
        healthbarList.push_back(std::move(bar));
    }
}

// Bars are deleted through their virtual destructor.
void FreeHealthbars() {
    healthbarList.clear();
}
