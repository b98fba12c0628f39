// Tile and the board: 100 hexagonal tiles in 10 offset rows of 10, one of
// four island shapes (layouts 3, 4, 5, 6) on board, the rest kept as records
// that are never drawn and never walked. The board is the game's spatial
// index: monsters find their cell on it, the path search walks it, towers
// stand on it and the crystal holds its centre tile 55.
//
// Depends on: GameObject (base record, mesh failure report), VXGraphics.
// Limits: exactly 100 tiles per board; layouts other than 3-6 have no
// on-board tile.
#pragma once

#include <memory>
#include <vector>

#include "GameObject.h"

constexpr int BOARD_TILE_COUNT = 100;
constexpr int BOARD_COLUMNS = 10;
// The crystal's tile (row 5, column 5): the goal of every path.
constexpr int BOARD_GOAL_TILE = 55;
// moveCost of a tile that is not part of the board.
constexpr unsigned TILE_OFF_BOARD = 1000;

class Tile : public GameObject {
  public:
    Tile();
    // Pointy-top hexagon of six triangles around the centre.
    void SetMesh() override;
    // The ±0.4 x size square around the centre that the cursor and monsters
    // are tested against (±24 for the 60-unit tiles).
    void SetHoverBox();

    int tileIndex = 0;
    // 0 free, 1 crystal, 2 first-tier tower, 3 second-tier tower, 1000 off board.
    unsigned moveCost = 0;
    float posX = 0.0f;
    float posY = 0.0f;
    float size = 60.0f;
    // -1, or the index in towerList of the tower standing here.
    int occupant = -1;
};

// Owning array of tiles in index order; removing an entry deletes the tile.
using TileArray = std::vector<std::unique_ptr<Tile>>;
extern TileArray tileList;

// Appends the 100 tiles of a layout to tileList, in index order.
void BuildBoard(int layoutId);
// Deletes every tile and empties tileList.
void FreeBoard();
// Whether tile index 0..99 is on the board in the layout.
bool IsTileOnBoard(int layoutId, int tileIndex);
// The board layout a level (1..6) is played on; 3 for anything else.
int BoardLayoutForLevel(int level);
// Range-checked lookup: an index outside the list is a programming error
// that ends the program with a message.
Tile& BoardTile(const TileArray& tiles, int tileIndex);
