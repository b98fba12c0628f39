// Monster: the attackers. Every kind is this one class with its own
// constants and pictures; they re-plan their route with the path search
// every frame, walk at a fixed speed per frame towards the next cell, blink
// when hit, pulse red below half health, and fall back on walking straight
// at the crystal after 120 frames without a way out. The wraith boss has its
// own flight (WraithBoss.h).
//
// Depends on: GameObject, Tile (board), PathFinding (FindPath), VXGraphics
// (textures). Limits: movement is per frame, not scaled by frame time.
#pragma once

#include <memory>
#include <vector>

#include "GameObject.h"
#include "PathFinding.h"
#include "Tile.h"

// The constants that make a kind: its sheet, stats, pictures, and the names
// its mesh failure report carries.
struct MonsterKind {
    float framesU;
    float framesV;
    unsigned health;
    float speed;
    float size;
    const char* walkPicture;
    const char* attackPicture; // null when the kind has no attack sheet
    bool ignoresPath;
    const char* meshFunc;
    const char* meshFile;
    int meshLine;
};

class Monster : public GameObject {
  public:
    Monster();
    // Releases the kind's pictures and every path node.
    ~Monster() override;
    // One frame: pulse, blink, box, cell, re-plan, move.
    virtual void Update(const TileArray& tiles, int layoutId);
    // Replaces path with the search from (startRow, startCol) towards the crystal.
    void FindPath(int startRow, int startCol, const TileArray& tiles, int layoutId);

    bool isBlinking = false;
    int tier = 0; // 1 regular, 2 boss; set by the spawner
    float framesU = 1.0f;
    float framesV = 1.0f;
    unsigned health = 0;
    unsigned maxHealth = 0;
    unsigned lastHealth = 0;
    unsigned blinkCount = 0;
    float speed = 0.0f;       // moves 0.5 x speed world units a frame
    float attackTimer = 1.0f; // readiness to strike the crystal (Crystal::Update)
    float posX = 0.0f;
    float posY = 0.0f;
    float cellRow = 0.0f;
    float cellCol = 0.0f;
    float size = 20.0f;
    bool needsPath = false;
    bool ignoresPath = false;
    int stuckCount = 0;
    int lastCellIndex = 0;
    NodePath path; // far end first, next step last

  protected:
    // Sets the kind's constants and loads its pictures.
    void ApplyKind(const MonsterKind& kind);
    // One sprite-sheet frame on a 2 x 2 quad; reports a failed mesh under
    // the kind's names.
    void BuildSheetMesh(const MonsterKind& kind);
    // Restarts the blink when health changed since the last one.
    void UpdateBlinkStart();
    // Steps the running blink: three fades of the tint alpha.
    void UpdateBlink();
    // The last board tile whose box overlaps the monster's becomes its cell.
    void UpdateCell(const TileArray& tiles);
    // One step of 0.5 x speed straight at (tx, ty).
    void StepTowards(float tx, float ty);
    // Scale size, mirrored when heading right (picture faces left), at the position.
    void FaceTowards(float tx);
};

// Owning list of monsters in spawn order; removing an entry deletes it.
using MonsterArray = std::vector<std::unique_ptr<Monster>>;
