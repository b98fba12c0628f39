// Buttons: a clickable picture that shows its normal look, or its
// highlighted look while the mouse is over it, and acts on the press of the
// left button. Every screen and overlay is built from these and from
// Background pictures. This file also holds the rule every screen follows
// to see the mouse: the mouse point in world units, the hover test and the
// click.
//
// Depends on: GameObject (quad, draw, RectsOverlap), Looks (the pictures),
// VXInput (cursor, left button). Limits: a button's picture always comes
// from the look families below; a button never owns a picture.
#pragma once

#include <memory>
#include <vector>

#include "GameObject.h"

// The three kinds of button the screens use.
enum class ButtonShape {
    // Menus, overlays, credits, how-to-play: drawn 120 x 60, hit box only
    // 1.7 x size to each side (102 x 60).
    Ordinary,
    // Level buttons and rating leaves: drawn and hit 2 size x 2 size.
    Level,
    // The pause button of a level: drawn 2 size x 2 size, hit like an
    // ordinary button; its box is fixed when it is made.
    Pause,
};

class Buttons : public GameObject {
  public:
    // Drops the picture (the looks keep it), then the base frees the mesh.
    ~Buttons() override;

    // Look families: each sets the picture of look n of its table; a number
    // outside the table leaves the button without a picture (a white quad).
    void SetMenuTexture(int n);
    void SetYesNoTexture(int n);
    void SetBackContinueTexture(int n);
    void SetBackRestartTexture(int n);
    void SetLevelTexture(int n);
    void SetLeafTexture(int n);

    // Recomputes the hit box of the button's shape (the pause button keeps
    // the one it was made with).
    void UpdateBox();
    // True when the mouse point lies in the hit box, edges included.
    bool IsUnderMouse(float mouseX, float mouseY) const;

    float posX = 0.0f;
    float posY = 0.0f;
    float size = 30.0f; // half-height of the hit box
    int kind = 0;       // index within its group: chooses its looks and action
    ButtonShape shape = ButtonShape::Ordinary;
};

// An owning list of buttons; destroying the list destroys each button.
using ButtonGroup = std::vector<std::unique_ptr<Buttons>>;

// Makes a button of the shape at (x, y), appends it to the group with kind
// = its index, sets its transform and mesh. It has no picture until its
// first look is set.
Buttons& CreateButton(ButtonGroup& group, ButtonShape shape, float x, float y);
// Makes a button of the shape at (x, y) into a single owning slot,
// destroying the button the slot held.
Buttons& CreateButton(std::unique_ptr<Buttons>& slot, ButtonShape shape, float x, float y);

// The left button went down in this frame: buttons act on the press.
bool MouseClicked(void);

// The back button of the credits and how-to-play screens, an ordinary
// button with the back looks: recomputes its box, lights it under the mouse
// point, and tells whether it was clicked in this frame.
bool BackButtonClicked(Buttons& back, float mouseX, float mouseY);
