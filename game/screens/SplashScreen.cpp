// The SplashScreen state (GS_SPLASH_SCREEN), the first screen of every run:
// on black, the maker's logo fades in and out, then the developers' logo,
// and after eight seconds the main menu follows. Holding the left button or
// the space bar skips it at once.
//
// It draws with the engine directly, one whole-screen quad per logo, not
// with game objects; the main loop draws no cursor over it.
//
// Depends on: VXGraphics (meshes, pictures, render state), VXInput (the held
// skip keys), GameMain (gFrameTime), GameObject (the mesh failure report),
// GameStateManager. Limits: runs once per run; its timer and fades start at
// zero with the program and are never reset.
#include "GameMain.h"
#include "GameObject.h"
#include "GameStateManager.h"
#include "GameStates.h"
#include "VXGraphics.h"
#include "VXInput.h"

namespace {

// The fades move 0.02 a frame, each inside its one-second window of the
// timer; the menu follows after eight seconds.
constexpr float kFadeStep = 0.02f;
constexpr float kSplashSeconds = 8.0f;

VXGfxMesh* sLogoMesh1 = nullptr;
VXGfxTexture* sLogoTexture1 = nullptr;
VXGfxMesh* sLogoMesh2 = nullptr;
VXGfxTexture* sLogoTexture2 = nullptr;
float sTimer = 0.0f; // seconds since the splash started, summed frame by frame
float sAlpha1 = 0.0f;
float sAlpha2 = 0.0f;
bool sSecondLogoStarted = false; // from then on the developers' logo is drawn

// A unit quad (-0.5 .. 0.5) showing the whole picture. Without it the splash
// has nothing to show, so a failure ends the program under the logo's name.
VXGfxMesh* BuildLogoMesh(unsigned color, const char* name, int line) {
    VXGfxTriAdd(-0.5f, -0.5f, color, 0.0f, 1.0f, 0.5f, -0.5f, color, 1.0f, 1.0f, -0.5f, 0.5f, color,
                0.0f, 0.0f);
    VXGfxTriAdd(0.5f, -0.5f, color, 1.0f, 1.0f, 0.5f, 0.5f, color, 1.0f, 0.0f, -0.5f, 0.5f, color,
                0.0f, 0.0f);
    VXGfxMesh* mesh = VXGfxMeshEnd();
    if (!mesh) GameObjectMeshFailed("GameStateSplashScreenLoad", "SplashScreen", line, name);
    return mesh;
}

// One logo over the whole screen, brightened or darkened through the tint
// alone: no blend mode is set, and none has been switched on before the
// program's first screen, so a logo at alpha 0 or below is black and one
// above 1 is simply at full brightness.
void DrawLogo(VXGfxMesh* mesh, VXGfxTexture* texture, float alpha) {
    float world[3][3] = {{800.0f, 0.0f, 0.0f}, {0.0f, 600.0f, 0.0f}, {0.0f, 0.0f, 1.0f}};
    VXGfxSetRenderMode(VX_GFX_RENDER_TEXTURE);
    VXGfxTextureSet(texture, 0.0f, 0.0f);
    VXGfxSetTintColor(alpha, alpha, alpha, alpha);
    VXGfxSetTransform(world);
    VXGfxMeshDraw(mesh, VX_GFX_DRAW_TRIANGLES);
}

} // namespace

void GameStateSplashScreenLoad(void) {
    // The vertex colours make no difference: the quads are drawn textured.
    sLogoMesh1 = BuildLogoMesh(0xFF00FFFF, "TolvernLogo", __LINE__);
    sLogoTexture1 = VXGfxTextureLoad("Resources/TolvernSG_Logo_CMYK-RED.png");
    VXGfxSetBackgroundColor(0.0f, 0.0f, 0.0f);
    sLogoMesh2 = BuildLogoMesh(0xFFFFFFFF, "MosswickLogo", __LINE__);
    sLogoTexture2 = VXGfxTextureLoad("Resources/MosswickLogo.png");
}

void GameStateSplashScreenInit(void) {
    VXGfxSetCamPosition(0.0f, 0.0f);
}

// The fades step per frame but their windows are timed in seconds, so a
// frame longer than a window (the window being dragged) skips that fade.
void GameStateSplashScreenUpdate(void) {
    sTimer += gFrameTime;
    if (sTimer > 0.5f && sTimer < 1.5f && sAlpha1 < 1.0f) sAlpha1 += kFadeStep;
    if (sTimer > 3.0f && sTimer < 4.0f && sAlpha1 > 0.0f) sAlpha1 -= kFadeStep;
    if (sTimer > 4.5f && sTimer < 5.5f && sAlpha2 < 1.0f) {
        sAlpha2 += kFadeStep;
        sSecondLogoStarted = true;
    }
    if (sTimer > 7.0f && sTimer < 8.0f && sAlpha2 > 0.0f) sAlpha2 -= kFadeStep;
    // Held, not only newly pressed: a player who keeps the button down from
    // the start is let through at the first frame.
    if (sTimer > kSplashSeconds || VXInputCheckCurr(VX_KEY_LBUTTON) ||
        VXInputCheckCurr(VX_KEY_SPACE))
        gGameStateNext = GS_MAIN_MENU;
}

void GameStateSplashScreenDraw(void) {
    if (!sSecondLogoStarted)
        DrawLogo(sLogoMesh1, sLogoTexture1, sAlpha1);
    else
        DrawLogo(sLogoMesh2, sLogoTexture2, sAlpha2);
}

void GameStateSplashScreenUnload(void) {
    VXGfxMeshFree(sLogoMesh1);
    VXGfxTextureUnload(sLogoTexture1);
    VXGfxMeshFree(sLogoMesh2);
    VXGfxTextureUnload(sLogoTexture2);
    sLogoMesh1 = sLogoMesh2 = nullptr;
    sLogoTexture1 = sLogoTexture2 = nullptr;
}
