// The board's layouts, the layout each level plays on and searches on, and
// tile placement; the monsters' path search: routes worked out by hand on
// layout 3, walled-in starts, towers that remove cells, equal-cost ties.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

#include "PathFinding.h"
#include "TestSupport.h"
#include "Tile.h"

namespace {

// A path as cell indices (row x 10 + col), far end first.
std::vector<int> Route(const NodePath& path) {
    std::vector<int> cells;
    for (const auto& n : path) cells.push_back(n->row * 10 + n->col);
    return cells;
}

} // namespace

// Every row of every layout as the design draws it: the first and last
// column of the row's run of on-board tiles (runs are contiguous).
TEST(Board, LayoutShapesRowByRow) {
    struct Case {
        const char* name;
        int layout;
        int runs[10][2]; // first and last column per row
    } cases[] = {
        {"layout 3: narrow diamond",
         3,
         {{5, 5}, {4, 5}, {4, 6}, {3, 6}, {3, 7}, {2, 7}, {3, 7}, {3, 6}, {4, 6}, {4, 5}}},
        {"layout 4: broad hexagon",
         4,
         {{3, 7}, {2, 7}, {2, 8}, {1, 8}, {1, 9}, {0, 9}, {1, 9}, {1, 8}, {2, 8}, {2, 7}}},
        {"layout 5: diamond top, wide bottom",
         5,
         {{5, 5}, {4, 5}, {4, 6}, {3, 6}, {3, 7}, {2, 7}, {2, 8}, {1, 8}, {1, 9}, {0, 9}}},
        {"layout 6: the whole rectangle",
         6,
         {{0, 9}, {0, 9}, {0, 9}, {0, 9}, {0, 9}, {0, 9}, {0, 9}, {0, 9}, {0, 9}, {0, 9}}},
    };
    for (const Case& c : cases) {
        const int* grid = PathWalkGrid(c.layout);
        ASSERT_NE(grid, nullptr) << c.name;
        for (int i = 0; i < 100; ++i) {
            const int row = i / 10, col = i % 10;
            const bool on = col >= c.runs[row][0] && col <= c.runs[row][1];
            EXPECT_EQ(IsTileOnBoard(c.layout, i), on) << c.name << ", tile " << i;
            EXPECT_EQ(grid[i], on ? 0 : 1) << c.name << ", walk grid cell " << i;
        }
    }
    for (int i = 0; i < 100; ++i) EXPECT_FALSE(IsTileOnBoard(7, i)) << "unknown layout, tile " << i;
    EXPECT_EQ(PathWalkGrid(7), nullptr);
}

// The board each level is played on, and the grid each kind of monster
// searches: the bosses of level 2 search layout 3 on a layout-5 board.
TEST(Board, LayoutsOfEachLevelAndTier) {
    struct Case {
        int level, board, regular, boss;
    } cases[] = {
        {1, 3, 3, 3}, {2, 5, 5, 3}, {3, 6, 6, 6}, {4, 6, 6, 6}, {5, 5, 5, 5}, {6, 4, 4, 4},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(BoardLayoutForLevel(c.level), c.board) << "level " << c.level;
        EXPECT_EQ(PathLayoutFor(c.level, 1), c.regular) << "level " << c.level << ", tier 1";
        EXPECT_EQ(PathLayoutFor(c.level, 2), c.boss) << "level " << c.level << ", tier 2";
    }
}

// Built for real (hexagon meshes need the renderer).
TEST(Board, BuildPlacesTilesAndMeshes) {
    TestEngineStart();
    struct Case {
        const char* name;
        int layout, tile;
        float x, y;
        bool onBoard;
    } cases[] = {
        {"row 0 column 5, even row shifted left", 3, 5, 20.0f, 200.0f, true},
        {"row 0 column 4, off the diamond", 3, 4, -40.0f, 200.0f, false},
        {"crystal tile 55, odd row", 3, 55, 50.0f, -50.0f, true},
        {"tile 54 beside it", 3, 54, -10.0f, -50.0f, true},
        {"tile 10 off layout 3", 3, 10, -250.0f, 150.0f, false},
        {"first tile, layout 6", 6, 0, -280.0f, 200.0f, true},
        {"last tile, layout 6", 6, 99, 290.0f, -250.0f, true},
    };
    for (const Case& c : cases) {
        BuildBoard(c.layout);
        ASSERT_EQ(tileList.size(), 100u) << c.name;
        const Tile& t = *tileList[c.tile];
        EXPECT_FLOAT_EQ(t.posX, c.x) << c.name;
        EXPECT_FLOAT_EQ(t.posY, c.y) << c.name;
        EXPECT_FLOAT_EQ(t.transform.m[0][2], c.x) << c.name;
        EXPECT_EQ(t.pMesh != nullptr, c.onBoard) << c.name;
        EXPECT_EQ(t.moveCost, c.onBoard ? 0u : 1000u) << c.name;
        FreeBoard();
    }
    // Without a free in between a second board is appended.
    BuildBoard(6);
    BuildBoard(6);
    EXPECT_EQ(tileList.size(), 200u);
    EXPECT_EQ(std::count_if(tileList.begin(), tileList.end(),
                            [](const auto& t) { return t->moveCost == 1000; }),
              0);
    FreeBoard();
    EXPECT_TRUE(tileList.empty());
    TestEngineStop();
}

// Routes worked out by hand from the step costs (45 even directions, 60 odd)
// and the heuristic 60 x (|row - 5| + |col - 5|); paths as cell indices, far
// end first, with the far end's gCost.
TEST(PathSearch, HandWorkedRoutes) {
    struct Case {
        const char* name;
        int layout;
        std::vector<int> towers;
        int start;
        std::vector<int> path;
        int farEndG;
    } cases[] = {
        {"layout 3, top tip, down the middle", 3, {}, 5, {55, 45, 35, 25, 15, 5}, 270},
        {"one step from (4, 5)", 3, {}, 45, {55, 45}, 60},
        {"start on the crystal's cell", 3, {}, 55, {55, 55}, 0},
        {"tower on (2, 5): round it on the left", 3, {25}, 5, {55, 45, 34, 24, 14, 5}, 270},
        {"walled in: both row-1 cells taken", 3, {14, 15}, 5, {5, 5}, 0},
        {"row 2 walled: ends on the last cell taken", 3, {24, 25, 26}, 5, {14, 5}, 45},
        {"row 2 walled, from (1, 4)", 3, {24, 25, 26}, 14, {5, 14}, 60},
        {"layout 6 along row 5", 6, {}, 53, {55, 54, 53}, 120},
        {"corner (0, 0): only directions 3 and 5 exist", 6, {1, 10}, 0, {0, 0}, 0},
    };
    for (const Case& c : cases) {
        TileArray tiles = TestBoardRecords(c.layout, c.towers);
        NodePath path;
        FindPathOnBoard(c.start / 10, c.start % 10, tiles, c.layout, path);
        ASSERT_EQ(Route(path), c.path) << c.name;
        EXPECT_EQ(path.front()->gCost, c.farEndG) << c.name;
        EXPECT_FALSE(path.back()->GetParent()) << c.name << ": the start is last";
        for (size_t i = 0; i + 2 < path.size(); ++i)
            EXPECT_EQ(path[i]->GetParent(), path[i + 1]) << c.name << " link " << i;
        // A start alone is the same node twice, not two equal cells.
        if (c.path == std::vector<int>{c.start, c.start}) {
            EXPECT_EQ(path[0], path[1]) << c.name;
        }
    }
}

// Equal costs follow the heap sort: with a tower on (5, 4), (4, 4) and
// (6, 4) both cost 180 from (5, 3); std::make_heap and std::sort_heap of the
// open list [(4,3) 225, (4,4) 180, (5,2) 225, (6,3) 225, (6,4) 180] leave
// (6, 4) last, so the monster passes below the tower.
TEST(PathSearch, EqualCostTieGoesBelowTower) {
    TileArray tiles = TestBoardRecords(6, {54});
    NodePath path;
    FindPathOnBoard(5, 3, tiles, 6, path);
    EXPECT_EQ(Route(path)[path.size() - 2], 64);
}
