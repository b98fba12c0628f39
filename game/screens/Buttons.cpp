// Buttons: looks, shapes, hit boxes, and the mouse rule of every screen.
//
// Depends on: GameObject, Looks, VXInput. Limits: see Buttons.h.
#include "Buttons.h"

#include "Looks.h"
#include "VXInput.h"

namespace {

// The hit box of an ordinary button reaches 1.7 x size to each side, less
// than the 60 units the picture is drawn: a click on the picture's rim
// misses. The factor is single precision: 1.7f x 30 is exactly 51.
constexpr float kOrdinaryHitWidth = 1.7f;

// Look tables: entry n - 1 is look n. In every family the file ending in U
// is the normal look and the one ending in H the highlighted one.
const char* const kMenuLooks[] = {
    "./Resources/btnResumeU.png",  "./Resources/btnResumeH.png",    "./Resources/btnRestartU.png",
    "./Resources/btnRestartH.png", "./Resources/btnExitU.png",      "./Resources/btnExitH.png",
    "./Resources/btnHelpU.png",    "./Resources/btnHelpH.png",      "./Resources/btnCreditsU.png",
    "./Resources/btnCreditsH.png", "./Resources/btnMuteU.png",      "./Resources/btnMuteH.png",
    "./Resources/btnUnmuteU.png",  "./Resources/btnUnmuteH.png",    "./Resources/btnOptionU.png",
    "./Resources/btnOptionH.png",  "./Resources/button-pauseU.png", "./Resources/button-pauseH.png",
    "./Resources/btnQuitU.png",    "./Resources/btnQuitH.png",
};
const char* const kYesNoLooks[] = {
    "./Resources/btnYesU.png",
    "./Resources/btnYesH.png",
    "./Resources/btnNoU.png",
    "./Resources/btnNoH.png",
};
const char* const kBackContinueLooks[] = {
    "./Resources/btnBackU.png",
    "./Resources/btnBackH.png",
    "./Resources/btnContinueU.png",
    "./Resources/btnContinueH.png",
};
const char* const kBackRestartLooks[] = {
    "./Resources/btnBackU.png",
    "./Resources/btnBackH.png",
    "./Resources/btnRestartU.png",
    "./Resources/btnRestartH.png",
};
// Level n: normal look 2n - 1, highlighted look 2n; 13 is the lock.
const char* const kLevelLooks[] = {
    "./Resources/btn1U.png",   "./Resources/btn1H.png", "./Resources/btn2U.png",
    "./Resources/btn2H.png",   "./Resources/btn3U.png", "./Resources/btn3H.png",
    "./Resources/btn4U.png",   "./Resources/btn4H.png", "./Resources/btn5U.png",
    "./Resources/btn5H.png",   "./Resources/btn6U.png", "./Resources/btn6H.png",
    "./Resources/btnLock.png",
};
const char* const kLeafLooks[] = {
    "./Resources/LeafColoured.png",
    "./Resources/LeafBG.png",
};

// The transform of a shape: ordinary buttons are drawn wider than high.
void PlaceButton(Buttons& button, ButtonShape shape, float x, float y) {
    button.size = 30.0f;
    button.posX = x;
    button.posY = y;
    button.shape = shape;
    if (shape == ButtonShape::Ordinary)
        button.SetTransform(x, y, 60.0f, 30.0f);
    else
        button.SetTransform(x, y, button.size);
}

// The box of the ordinary shape: narrower than the picture.
BoundingBox OrdinaryBox(const Buttons& b) {
    const float half = kOrdinaryHitWidth * b.size;
    return {b.posX - half, b.posY - b.size, b.posX + half, b.posY + b.size};
}

} // namespace

// The picture belongs to the looks; only the mesh is the button's.
Buttons::~Buttons() {
    pTexture = nullptr;
}

void Buttons::SetMenuTexture(int n) {
    pTexture = LookFor(kMenuLooks, n);
}
void Buttons::SetYesNoTexture(int n) {
    pTexture = LookFor(kYesNoLooks, n);
}
void Buttons::SetBackContinueTexture(int n) {
    pTexture = LookFor(kBackContinueLooks, n);
}
void Buttons::SetBackRestartTexture(int n) {
    pTexture = LookFor(kBackRestartLooks, n);
}
void Buttons::SetLevelTexture(int n) {
    pTexture = LookFor(kLevelLooks, n);
}
void Buttons::SetLeafTexture(int n) {
    pTexture = LookFor(kLeafLooks, n);
}

// Ordinary and level boxes follow the button; the pause button's was fixed
// when it was made.
void Buttons::UpdateBox() {
    if (shape == ButtonShape::Ordinary)
        boundingBox = OrdinaryBox(*this);
    else if (shape == ButtonShape::Level)
        boundingBox = {posX - size, posY - size, posX + size, posY + size};
}

// The mouse is a box of no size; touching an edge counts.
bool Buttons::IsUnderMouse(float mouseX, float mouseY) const {
    const VXVec2 still = {0.0f, 0.0f};
    const BoundingBox mouse = {mouseX, mouseY, mouseX, mouseY};
    return RectsOverlap(boundingBox, still, mouse, still);
}

Buttons& CreateButton(ButtonGroup& group, ButtonShape shape, float x, float y) {
    group.push_back(std::make_unique<Buttons>());
    Buttons& button = *group.back();
    button.kind = (int)group.size() - 1;
    PlaceButton(button, shape, x, y);
    button.SetMesh();
    if (shape == ButtonShape::Pause) button.boundingBox = OrdinaryBox(button);
    return button;
}

Buttons& CreateButton(std::unique_ptr<Buttons>& slot, ButtonShape shape, float x, float y) {
    slot = std::make_unique<Buttons>();
    PlaceButton(*slot, shape, x, y);
    slot->SetMesh();
    if (shape == ButtonShape::Pause) slot->boundingBox = OrdinaryBox(*slot);
    return *slot;
}

bool MouseClicked(void) {
    return VXInputCheckTriggered(VX_KEY_LBUTTON);
}

bool BackButtonClicked(Buttons& back, float mouseX, float mouseY) {
    back.UpdateBox();
    const bool hover = back.IsUnderMouse(mouseX, mouseY);
    back.SetBackContinueTexture(hover ? 2 : 1);
    return hover && MouseClicked();
}
