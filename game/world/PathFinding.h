// Path-finding: the best-first search monsters run every frame over the
// board's 10 x 10 offset-row grid towards the crystal's cell (5, 5).
//
// The search's rules are the game's: neighbour order, step costs (45 for the
// even directions, 60 for the odd ones), the Manhattan heuristic x 60, a
// closed list that starts with the start cell, an open list where a cheaper
// node replaces a dearer one for the same cell, and a full heap sort of the
// open list after every expansion (std::make_heap/std::sort_heap, larger
// fCost first) whose order among equal costs picks which of several equally
// cheap routes is walked and where a walled-in search ends.
//
// Depends on: Tile (board constants, tile moveCost). Limits: 100 cells; the
// path's nodes are shared, reference-counted objects.
#pragma once

#include <memory>
#include <vector>

#include "Tile.h"

// One search node; held through shared ownership because nodes point to
// their parents and several lists hold the same node.
struct Nodes {
    int row = 0;
    int col = 0;
    int fCost = 0;
    int gCost = 0;
    int hCost = 0;
    std::shared_ptr<Nodes> parent;

    // A copy of the parent pointer (empty for the start node).
    std::shared_ptr<Nodes> GetParent() const { return parent; }
};

using NodePath = std::vector<std::shared_ptr<Nodes>>;

// The goal cell of every search: the crystal's tile.
constexpr int PATH_GOAL_ROW = 5;
constexpr int PATH_GOAL_COL = 5;

// The layout's walk grid, 100 ints row-major, 0 open and 1 blocked; null for
// a layout other than 3, 4, 5, 6. Derived from the board's own layout table.
const int* PathWalkGrid(int layoutId);

// The layout a monster of the given tier (1 regular, 2 boss) searches on in
// a level 1..6: the board's layout, except level 2's boss, which searches
// on layout 3.
int PathLayoutFor(int level, int tier);

// The search: replaces path with the route from the start towards (5, 5),
// far end first and the start last; [start, start] when the start is the
// goal or has no open neighbour. Tiles whose moveCost is not 0 are blocked,
// except the goal cell.
void FindPathOnBoard(int startRow, int startCol, const TileArray& tiles, int layoutId,
                     NodePath& path);
