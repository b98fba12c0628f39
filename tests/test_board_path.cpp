// The board's layouts, the layout each level plays and searches on, tile
// placement, and the monsters' path search on routes worked out by hand.
#include <gtest/gtest.h>

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
// column of the row's (contiguous) run of on-board tiles.
TEST(Board, LayoutShapesRowByRow) {
    struct Case {
        int layout;
        int runs[10][2];
    } cases[] = {
        {3, {{5, 5}, {4, 5}, {4, 6}, {3, 6}, {3, 7}, {2, 7}, {3, 7}, {3, 6}, {4, 6}, {4, 5}}},
        {4, {{3, 7}, {2, 7}, {2, 8}, {1, 8}, {1, 9}, {0, 9}, {1, 9}, {1, 8}, {2, 8}, {2, 7}}},
        {5, {{5, 5}, {4, 5}, {4, 6}, {3, 6}, {3, 7}, {2, 7}, {2, 8}, {1, 8}, {1, 9}, {0, 9}}},
        {6, {{0, 9}, {0, 9}, {0, 9}, {0, 9}, {0, 9}, {0, 9}, {0, 9}, {0, 9}, {0, 9}, {0, 9}}},
    };
    for (const Case& c : cases) {
        const int* grid = PathWalkGrid(c.layout);
        ASSERT_NE(grid, nullptr) << "layout " << c.layout;
        for (int i = 0; i < 100; ++i) {
            const bool on = i % 10 >= c.runs[i / 10][0] && i % 10 <= c.runs[i / 10][1];
            EXPECT_EQ(IsTileOnBoard(c.layout, i), on) << "layout " << c.layout << ", tile " << i;
            EXPECT_EQ(grid[i], on ? 0 : 1) << "layout " << c.layout << ", walk grid cell " << i;
        }
    }
    for (int i = 0; i < 100; ++i) EXPECT_FALSE(IsTileOnBoard(7, i)) << "unknown layout, tile " << i;
    EXPECT_EQ(PathWalkGrid(7), nullptr);
}

// The board each level is played on, and the grid each tier searches: the
// bosses of level 2 search layout 3 on a layout-5 board.
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
        EXPECT_TRUE(tileList.empty()) << c.name;
    }
    TestEngineStop();
}

// Routes worked out by hand from the step costs (45 even directions, 60 odd)
// and the heuristic 60 x (|row - 5| + |col - 5|): cells far end first, and
// the far end's gCost.
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
        if (c.path[0] == c.start) {
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
