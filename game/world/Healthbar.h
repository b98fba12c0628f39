// Healthbar: the crystal's health display at the right edge of the screen,
// three plain game objects: the green fill (bar 0, untextured), its frame
// (bar 1) and a warning overlay that flashes on each strike (bar 2). The
// crystal rescales the fill and flashes the overlay; the bars themselves
// have no behaviour.
//
// Depends on: GameObject, VXGraphics (textures). Limits: exactly three bars
// in healthbarList once created, in the order fill, frame, warning.
#pragma once

#include <memory>
#include <vector>

#include "GameObject.h"

class Healthbar : public GameObject {
  public:
    // picture may be null: the bar is then drawn in its tint alone.
    explicit Healthbar(const char* picture = nullptr);
    // Releases its picture, if any.
    ~Healthbar() override;
};

// Owning list of the level's health bars; removing an entry deletes it.
using HealthbarArray = std::vector<std::unique_ptr<Healthbar>>;
extern HealthbarArray healthbarList;

// Appends the three bars for a crystal with the given health h: the fill
// at scale (10, h) at (350, 0), the frame "./Resources/Layer 24.png" and the
// warning "./Resources/Layer 23.png" (invisible) at scale (48, h + 30) at
// (360, 0).
void CreateHealthbars(int crystalHealth);
// Deletes every bar and empties healthbarList.
void FreeHealthbars();
