// ArcherTower_Tier2: constants and quad of the tier; the behaviour is Tower's.
//
// Depends on: Tower, VXGraphics. Limits: see ArcherTower_Tier2.h.
#include "ArcherTower_Tier2.h"

// The tier's constants and picture.
ArcherTower_Tier2::ArcherTower_Tier2() {
    size = 20.0f;
    fireInterval = 6.0f;
    pTexture = VXGfxTextureLoad("./Resources/ArcherT2.png");
}

// Only the top-left cell of the picture is shown.
void ArcherTower_Tier2::SetMesh() {
    BuildFirstFrameMesh(columns, rows, "ArcherTower_Tier2::SetMesh", "ArcherTower_Tier2", __LINE__);
}
