// Tile and the board: layouts, tile placement, hexagon mesh.
//
// Depends on: GameObject, VXGraphics. Limits: the layout table below is the
// one home of the board shapes; the path search's walk grids are derived
// from it, so the two can never disagree.
#include "Tile.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "GameMain.h"

TileArray tileList;

namespace {

// First and last on-board column of each row, per layout (each row's run is
// contiguous).
struct RowRun {
    int first, last;
};
constexpr RowRun kLayout3[10] = {{5, 5}, {4, 5}, {4, 6}, {3, 6}, {3, 7},
                                 {2, 7}, {3, 7}, {3, 6}, {4, 6}, {4, 5}};
constexpr RowRun kLayout4[10] = {{3, 7}, {2, 7}, {2, 8}, {1, 8}, {1, 9},
                                 {0, 9}, {1, 9}, {1, 8}, {2, 8}, {2, 7}};
constexpr RowRun kLayout5[10] = {{5, 5}, {4, 5}, {4, 6}, {3, 6}, {3, 7},
                                 {2, 7}, {2, 8}, {1, 8}, {1, 9}, {0, 9}};
constexpr RowRun kLayout6[10] = {{0, 9}, {0, 9}, {0, 9}, {0, 9}, {0, 9},
                                 {0, 9}, {0, 9}, {0, 9}, {0, 9}, {0, 9}};

// The row runs of a layout, or null for an unknown layout.
const RowRun* LayoutRuns(int layoutId) {
    switch (layoutId) {
    case 3:
        return kLayout3;
    case 4:
        return kLayout4;
    case 5:
        return kLayout5;
    case 6:
        return kLayout6;
    default:
        return nullptr;
    }
}

} // namespace

// A tile starts free, 60 units across, with its box around the origin until
// the board places it.
Tile::Tile() {
    boundingBox = {-30.0f, -30.0f, 30.0f, 30.0f};
}

// Six triangles around the centre; every vertex the same light grey so the
// tint alone decides the tile's colour.
void Tile::SetMesh() {
    // 0.5 x cos 30 degrees.
    const float a = (float)(std::sqrt(3.0) / 4.0);
    const float b = 0.25f;
    const unsigned c = 0xEEEEEEEE;
    VXGfxTriAdd(0, 0, c, 0, 0, a, b, c, 0, 0, a, -b, c, 0, 0);
    VXGfxTriAdd(0, 0, c, 0, 0, a, b, c, 0, 0, 0, 0.5f, c, 0, 0);
    VXGfxTriAdd(0, 0, c, 0, 0, -a, b, c, 0, 0, 0, 0.5f, c, 0, 0);
    VXGfxTriAdd(0, 0, c, 0, 0, -a, b, c, 0, 0, -a, -b, c, 0, 0);
    VXGfxTriAdd(0, 0, c, 0, 0, 0, -0.5f, c, 0, 0, -a, -b, c, 0, 0);
    VXGfxTriAdd(0, 0, c, 0, 0, 0, -0.5f, c, 0, 0, a, -b, c, 0, 0);
    pMesh = VXGfxMeshEnd();
    if (!pMesh) GameObjectMeshFailed("Tile::SetMesh", "Tile", 86);
}

// The hover box is smaller than the hexagon so that a point is never in two
// tiles' boxes at once.
void Tile::SetHoverBox() {
    boundingBox = {posX - 0.4f * size, posY - 0.4f * size, posX + 0.4f * size, posY + 0.4f * size};
}

// Offset rows: even rows sit half a tile to the left of odd rows.
void BuildBoard(int layoutId) {
    for (int i = 0; i < BOARD_TILE_COUNT; ++i) {
        tileList.push_back(std::make_unique<Tile>());
        Tile& tile = *tileList.back();
        tile.tileIndex = i;
        const int col = i % BOARD_COLUMNS;
        const int row = i / BOARD_COLUMNS;
        float x = (float)col * tile.size - 250.0f;
        const float y = 200.0f - (tile.size - 10.0f) * (float)row;
        if (row % 2 == 0) x -= tile.size / 2.0f;
        tile.posX = x;
        tile.posY = y;
        tile.SetTransform(x, y, tile.size);
        if (IsTileOnBoard(layoutId, i))
            tile.SetMesh();
        else
            tile.moveCost = TILE_OFF_BOARD;
    }
}

// Tiles are deleted through their virtual destructor, which frees the mesh.
void FreeBoard() {
    tileList.clear();
}

// Looks the tile up in the layout's row runs.
bool IsTileOnBoard(int layoutId, int tileIndex) {
    const RowRun* runs = LayoutRuns(layoutId);
    if (!runs || tileIndex < 0 || tileIndex >= BOARD_TILE_COUNT) return false;
    const RowRun& run = runs[tileIndex / BOARD_COLUMNS];
    const int col = tileIndex % BOARD_COLUMNS;
    return col >= run.first && col <= run.last;
}

// Levels 1-6 are played on layouts 3, 5, 6, 6, 5, 4.
int BoardLayoutForLevel(int level) {
    static const int kLayouts[6] = {3, 5, 6, 6, 5, 4};
    if (level < 1 || level > 6) return 3;
    return kLayouts[level - 1];
}

// Every index the game computes is on the 100-tile board; anything else is
// a bug that must not read past the list.
Tile& BoardTile(const TileArray& tiles, int tileIndex) {
    if (tileIndex < 0 || (size_t)tileIndex >= tiles.size() || !tiles[tileIndex]) {
        GameFatalExit(1, "VX_FATAL_ERROR: tile %d is not on the board!!\n", tileIndex);
    }
    return *tiles[tileIndex];
}
