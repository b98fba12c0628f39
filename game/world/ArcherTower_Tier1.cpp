// ArcherTower_Tier1: constants and quad of the tier; the behaviour is Tower's.
//
// Depends on: Tower, VXGraphics. Limits: see ArcherTower_Tier1.h.
#include "ArcherTower_Tier1.h"

// The tier's constants and picture.
ArcherTower_Tier1::ArcherTower_Tier1() {
    size = 20.0f;
    fireInterval = 18.0f;
    pTexture = VXGfxTextureLoad("./Resources/ArcherT1.png");
}

// Only the top-left cell of the picture is shown.
void ArcherTower_Tier1::SetMesh() {
    BuildFirstFrameMesh(columns, rows, "ArcherTower_Tier1::SetMesh", "ArcherTower_Tier1", __LINE__);
}
