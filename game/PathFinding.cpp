// Path-finding: the monsters' per-frame search over the board grid.
//
// Depends on: Tile (layouts, tiles). Limits: see PathFinding.h.
//
// The search runs for every walking monster on every frame, so its lists
// are small fixed arrays rather than lists of shared nodes: nodes live in a
// pool indexed by number, the closed and open membership of each cell is a
// table lookup instead of a linear scan, and the open list holds packed
// (fCost, node) keys. The open list is still heap-sorted with
// std::make_heap/std::sort_heap under the same ordering after every
// expansion: those two calls decide the order among equal costs, and with
// it which route is walked, so the packed keys compare on fCost alone and go
// through exactly the same permutation the node pointers would. Shared nodes
// are built only for the cells of the resulting path.
#include "PathFinding.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace {

constexpr int kCells = BOARD_TILE_COUNT;
constexpr int kGoalIndex = PATH_GOAL_ROW * BOARD_COLUMNS + PATH_GOAL_COL;
// Bits of a packed open-list key that hold the node's pool number.
constexpr int kNodeBits = 7;
constexpr uint32_t kNodeMask = (1u << kNodeBits) - 1u;

struct Grids {
    int cells[4][kCells];
};

// The four walk grids, made once from the board's layout table.
const Grids& WalkGrids() {
    static const Grids grids = [] {
        Grids g{};
        for (int layout = 3; layout <= 6; ++layout)
            for (int i = 0; i < kCells; ++i)
                g.cells[layout - 3][i] = IsTileOnBoard(layout, i) ? 0 : 1;
        return g;
    }();
    return grids;
}

struct PoolNode {
    int row, col, gCost, hCost, fCost;
    int parent; // pool number, -1 for the start
};

// Larger fCost first, so the cheapest node ends up last.
inline bool KeyBefore(uint32_t a, uint32_t b) {
    return (a >> kNodeBits) > (b >> kNodeBits);
}

// Neighbour offsets per direction: row change, column change for even rows,
// column change for odd rows (odd rows sit half a tile to the right).
constexpr int kDirRow[6] = {-1, -1, 0, 0, 1, 1};
constexpr int kDirColEven[6] = {-1, 0, -1, 1, -1, 0};
constexpr int kDirColOdd[6] = {0, 1, -1, 1, 0, 1};
constexpr int kDirCost[6] = {45, 60, 45, 60, 45, 60};

} // namespace

// Grids are indexed by layout 3..6.
const int* PathWalkGrid(int layoutId) {
    if (layoutId < 3 || layoutId > 6) return nullptr;
    return WalkGrids().cells[layoutId - 3];
}

// Level 2's boss keeps to the narrow diamond of layout 3 although the board
// is the wider layout 5.
int PathLayoutFor(int level, int tier) {
    if (level == 2 && tier == 2) return 3;
    return BoardLayoutForLevel(level);
}

// See the file header for how the lists are held.
void FindPathOnBoard(int startRow, int startCol, const TileArray& tiles, int layoutId,
                     NodePath& path) {
    path.clear();

    // Private copy of the walk grid with every occupied tile blocked, except
    // the crystal's cell, which ends every path.
    unsigned char grid[kCells];
    const int* walk = PathWalkGrid(layoutId);
    for (int i = 0; i < kCells; ++i) grid[i] = walk ? (unsigned char)walk[i] : 1;
    for (const auto& tile : tiles) {
        const int index = tile->tileIndex;
        if (tile->moveCost != 0 && index >= 0 && index < kCells && index != kGoalIndex)
            grid[index] = 1;
    }

    PoolNode pool[kCells + 1];
    int poolCount = 0;
    int closed[kCells + 1];
    int closedCount = 0;
    bool isClosed[kCells] = {};
    int openPos[kCells]; // position of the cell's node in the open list, -1 when none
    std::fill(openPos, openPos + kCells, -1);
    uint32_t open[kCells];
    int openCount = 0;

    pool[poolCount++] = {startRow, startCol, 0, 0, 0, -1};
    closed[closedCount++] = 0;
    const bool startOnGrid = startRow >= 0 && startRow < 10 && startCol >= 0 && startCol < 10;
    if (startOnGrid) isClosed[startRow * BOARD_COLUMNS + startCol] = true;
    int current = 0;

    for (;;) {
        const PoolNode cur = pool[current];
        if (cur.row == PATH_GOAL_ROW && cur.col == PATH_GOAL_COL) break;

        const int* dirCol = (cur.row % 2 == 0) ? kDirColEven : kDirColOdd;
        for (int d = 0; d < 6; ++d) {
            const int r = cur.row + kDirRow[d];
            const int c = cur.col + dirCol[d];
            if (r < 0 || r > 9 || c < 0 || c > 9) continue;
            const int cell = r * BOARD_COLUMNS + c;
            if (grid[cell] != 0 || isClosed[cell]) continue;
            const int g = cur.gCost + kDirCost[d];
            const int h = (std::abs(r - PATH_GOAL_ROW) + std::abs(c - PATH_GOAL_COL)) * 60;
            const int f = g + h;
            const int pos = openPos[cell];
            if (pos >= 0) {
                // A cheaper way to a cell already waiting takes its node's
                // place; nothing points at an unexpanded node, so the pool
                // entry is simply rewritten.
                const int n = (int)(open[pos] & kNodeMask);
                if (pool[n].fCost > f) {
                    pool[n] = {r, c, g, h, f, current};
                    open[pos] = ((uint32_t)f << kNodeBits) | (uint32_t)n;
                }
            } else {
                const int n = poolCount++;
                pool[n] = {r, c, g, h, f, current};
                openPos[cell] = openCount;
                open[openCount++] = ((uint32_t)f << kNodeBits) | (uint32_t)n;
            }
        }

        if (openCount >= 2) {
            std::make_heap(open, open + openCount, KeyBefore);
            std::sort_heap(open, open + openCount, KeyBefore);
            for (int i = 0; i < openCount; ++i) {
                const PoolNode& n = pool[open[i] & kNodeMask];
                openPos[n.row * BOARD_COLUMNS + n.col] = i;
            }
        }
        if (openCount > 0) {
            const int n = (int)(open[--openCount] & kNodeMask);
            openPos[pool[n].row * BOARD_COLUMNS + pool[n].col] = -1;
            isClosed[pool[n].row * BOARD_COLUMNS + pool[n].col] = true;
            closed[closedCount++] = n;
        }
        current = closed[closedCount - 1];
        if (openCount == 0) break;
    }

    // Chain from the last node taken back to the start; shared nodes are
    // made from the start outwards so each can point at its parent.
    int chain[kCells + 1];
    int chainCount = 0;
    for (int n = closed[closedCount - 1]; n > 0; n = pool[n].parent) chain[chainCount++] = n;
    chain[chainCount++] = 0;

    path.resize(chainCount == 1 ? 2 : (size_t)chainCount);
    std::shared_ptr<Nodes> parent;
    for (int i = chainCount - 1; i >= 0; --i) {
        const PoolNode& p = pool[chain[i]];
        auto node = std::make_shared<Nodes>();
        node->row = p.row;
        node->col = p.col;
        node->gCost = p.gCost;
        node->hCost = p.hCost;
        node->fCost = p.fCost;
        node->parent = parent;
        path[i] = node;
        parent = std::move(node);
    }
    // The start alone: the path is [start, start], the same node twice.
    if (chainCount == 1) path[1] = path[0];
}
