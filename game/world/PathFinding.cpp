// Path-finding: the monsters' per-frame search over the board grid.
//
// Depends on: Tile (layouts, tiles). Limits: see PathFinding.h.
//
// The search runs for every walking monster on every frame, so its lists
// are small fixed arrays rather than lists of shared nodes: nodes live in a
// pool indexed by number, closed cells are marked in the private grid and
// open ones in a per-cell table (lookups instead of linear scans), and the
// open list holds packed (fCost, node) keys. The open list is still
// heap-sorted with std::make_heap/std::sort_heap under the same ordering
// after every expansion: those two calls decide the order among equal
// costs, and with it which route is walked, so the packed keys compare on
// fCost alone and go through exactly the permutation the node pointers
// would. Shared nodes are built only for the cells of the resulting path.
#include "PathFinding.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

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

// Larger fCost first, so the cheapest node ends up last. A function object,
// so the heap algorithms inline the comparison.
struct KeyBefore {
    bool operator()(uint32_t a, uint32_t b) const { return (a >> kNodeBits) > (b >> kNodeBits); }
};

// Neighbour offsets per direction: row change, column change for even rows,
// column change for odd rows (odd rows sit half a tile to the right).
constexpr int kDirRow[6] = {-1, -1, 0, 0, 1, 1};
constexpr int kDirColEven[6] = {-1, 0, -1, 1, -1, 0};
constexpr int kDirColOdd[6] = {0, 1, -1, 1, 0, 1};
constexpr int kDirCost[6] = {45, 60, 45, 60, 45, 60};

// Per cell: its six neighbours in direction order (-1 off the grid) and its
// heuristic cost to the goal, worked out once.
struct CellTables {
    signed char neighbour[kCells][6];
    int heuristic[kCells];
};

// The cell tables, made on first use.
const CellTables& Cells() {
    static const CellTables tables = [] {
        CellTables t{};
        for (int cell = 0; cell < kCells; ++cell) {
            const int row = cell / BOARD_COLUMNS, col = cell % BOARD_COLUMNS;
            for (int d = 0; d < 6; ++d) {
                const int r = row + kDirRow[d];
                const int c = col + (row % 2 == 0 ? kDirColEven[d] : kDirColOdd[d]);
                const bool inside = r >= 0 && r <= 9 && c >= 0 && c <= 9;
                t.neighbour[cell][d] = (signed char)(inside ? r * BOARD_COLUMNS + c : -1);
            }
            t.heuristic[cell] =
                (std::abs(row - PATH_GOAL_ROW) + std::abs(col - PATH_GOAL_COL)) * 60;
        }
        return t;
    }();
    return tables;
}

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
    const CellTables& cells = Cells();

    // Private copy of the walk grid with every occupied tile blocked, except
    // the crystal's cell, which ends every path. Closed cells are marked in
    // it too: the search skips them exactly like blocked ones.
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
    int lastClosed = 0;           // the closed list matters only through its last node
    signed char cellNode[kCells]; // pool number of the cell's open node, -1 when none
    std::memset(cellNode, -1, sizeof cellNode);
    uint32_t open[kCells];
    int openCount = 0;

    pool[poolCount++] = {startRow, startCol, 0, 0, 0, -1};
    const bool startOnGrid = startRow >= 0 && startRow < 10 && startCol >= 0 && startCol < 10;
    if (startOnGrid) grid[startRow * BOARD_COLUMNS + startCol] = 2;
    int current = 0;

    for (;;) {
        const PoolNode cur = pool[current];
        if (cur.row == PATH_GOAL_ROW && cur.col == PATH_GOAL_COL) break;

        // A start outside the grid has no neighbours on it.
        const signed char* next = (current != 0 || startOnGrid)
                                      ? cells.neighbour[cur.row * BOARD_COLUMNS + cur.col]
                                      : nullptr;
        for (int d = 0; next && d < 6; ++d) {
            const int cell = next[d];
            if (cell < 0 || grid[cell] != 0) continue;
            const int g = cur.gCost + kDirCost[d];
            const int h = cells.heuristic[cell];
            const int f = g + h;
            const int r = cell / BOARD_COLUMNS, c = cell % BOARD_COLUMNS;
            const int n = cellNode[cell];
            if (n >= 0) {
                // A cheaper way to a cell already waiting takes its node's
                // place in the open list; nothing points at an unexpanded
                // node, so the pool entry is simply rewritten.
                if (pool[n].fCost > f) {
                    pool[n] = {r, c, g, h, f, current};
                    for (int i = 0; i < openCount; ++i)
                        if ((open[i] & kNodeMask) == (uint32_t)n)
                            open[i] = ((uint32_t)f << kNodeBits) | (uint32_t)n;
                }
            } else {
                const int fresh = poolCount++;
                pool[fresh] = {r, c, g, h, f, current};
                cellNode[cell] = (signed char)fresh;
                open[openCount++] = ((uint32_t)f << kNodeBits) | (uint32_t)fresh;
            }
        }

        if (openCount >= 2) {
            std::make_heap(open, open + openCount, KeyBefore());
            // sort_heap's first step moves the heap's top to the back, where
            // it stays: when that is the crystal's node the search ends on
            // it, and the order of the rest is never looked at again.
            const int top = (int)(open[0] & kNodeMask);
            if (pool[top].row == PATH_GOAL_ROW && pool[top].col == PATH_GOAL_COL) {
                lastClosed = top;
                break;
            }
            std::sort_heap(open, open + openCount, KeyBefore());
        }
        if (openCount > 0) {
            const int n = (int)(open[--openCount] & kNodeMask);
            const int cell = pool[n].row * BOARD_COLUMNS + pool[n].col;
            cellNode[cell] = -1;
            grid[cell] = 2;
            lastClosed = n;
        }
        current = lastClosed;
        if (openCount == 0) break;
    }

    // Chain from the last node taken back to the start; shared nodes are
    // made from the start outwards so each can point at its parent.
    int chain[kCells + 1];
    int chainCount = 0;
    for (int n = lastClosed; n > 0; n = pool[n].parent) chain[chainCount++] = n;
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
