// The board's layouts and tile placement, and the monsters' path search:
// routes worked out by hand on layout 3, walled-in starts, towers that
// remove cells, equal-cost ties, and a cell-for-cell comparison with a
// plain transcription of the search (shared nodes, linear list scans) on
// every layout from every cell with random towers.
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

// A board of tile records without meshes (no graphics needed): on-board
// tiles free, the rest off the board, towers where asked, the crystal on 55.
TileArray MakeBoard(int layoutId, const std::vector<int>& towers) {
    TileArray tiles;
    for (int i = 0; i < 100; ++i) {
        auto t = std::make_unique<Tile>();
        t->tileIndex = i;
        t->moveCost = IsTileOnBoard(layoutId, i) ? 0u : 1000u;
        tiles.push_back(std::move(t));
    }
    tiles[55]->moveCost = 1;
    for (int t : towers) tiles[t]->moveCost = 2;
    return tiles;
}

// The search as the game describes it, written plainly: shared nodes, the
// closed and open lists as arrays scanned linearly, the open list
// heap-sorted after every expansion.
NodePath ReferenceSearch(int startRow, int startCol, const TileArray& tiles, int layoutId) {
    using NodePtr = std::shared_ptr<Nodes>;
    std::vector<int> grid(PathWalkGrid(layoutId), PathWalkGrid(layoutId) + 100);
    for (const auto& t : tiles)
        if (t->moveCost != 0 && t->tileIndex != 55) grid[t->tileIndex] = 1;
    auto start = std::make_shared<Nodes>();
    start->row = startRow;
    start->col = startCol;
    std::vector<NodePtr> closed{start}, open;
    NodePtr current = start;
    static const int dr[6] = {-1, -1, 0, 0, 1, 1};
    static const int dcEven[6] = {-1, 0, -1, 1, -1, 0};
    static const int dcOdd[6] = {0, 1, -1, 1, 0, 1};
    while (!(current->row == 5 && current->col == 5)) {
        for (int d = 0; d < 6; ++d) {
            int r = current->row + dr[d];
            int c = current->col + (current->row % 2 == 0 ? dcEven[d] : dcOdd[d]);
            if (r < 0 || r > 9 || c < 0 || c > 9 || grid[r * 10 + c] != 0) continue;
            auto n = std::make_shared<Nodes>();
            n->row = r;
            n->col = c;
            n->gCost = current->gCost + (d % 2 == 0 ? 45 : 60);
            n->hCost = (std::abs(r - 5) + std::abs(c - 5)) * 60;
            n->fCost = n->gCost + n->hCost;
            n->parent = current;
            auto same = [&](const NodePtr& o) { return o->row == r && o->col == c; };
            if (std::any_of(closed.begin(), closed.end(), same)) continue;
            if (std::any_of(open.begin(), open.end(), same)) {
                for (auto& o : open)
                    if (same(o) && o->fCost > n->fCost) o = n;
                continue;
            }
            open.push_back(n);
        }
        auto greater = [](const NodePtr& a, const NodePtr& b) { return a->fCost > b->fCost; };
        if (open.size() >= 2) {
            std::make_heap(open.begin(), open.end(), greater);
            std::sort_heap(open.begin(), open.end(), greater);
        }
        if (!open.empty()) {
            closed.push_back(open.back());
            open.pop_back();
        }
        current = closed.back();
        if (open.empty()) break;
    }
    NodePath path{closed.back()};
    for (NodePtr p = closed.back()->GetParent(); p && p != start; p = p->GetParent())
        path.push_back(p);
    path.push_back(start);
    return path;
}

} // namespace

// Hand-counted on-board tiles per layout: the row runs of each shape summed.
TEST(Board, LayoutShapes) {
    struct Case {
        const char* name;
        int layout;
        int onBoard;
        std::vector<int> on, off;
    } cases[] = {
        {"layout 3: narrow diamond", 3, 35, {5, 14, 15, 24, 52, 57, 94, 95}, {4, 6, 13, 51, 96}},
        {"layout 4: broad hexagon", 4, 75, {3, 7, 12, 50, 59, 92, 97}, {2, 8, 11, 91, 98}},
        {"layout 5: diamond top, wide bottom", 5, 55, {5, 62, 68, 90, 99}, {4, 61, 69, 10}},
        {"layout 6: full rectangle", 6, 100, {0, 9, 10, 90, 99}, {}},
        {"unknown layout: nothing", 7, 0, {}, {0, 55}},
    };
    for (const Case& c : cases) {
        int count = 0;
        for (int i = 0; i < 100; ++i) count += IsTileOnBoard(c.layout, i);
        EXPECT_EQ(count, c.onBoard) << c.name;
        for (int i : c.on) EXPECT_TRUE(IsTileOnBoard(c.layout, i)) << c.name << " tile " << i;
        for (int i : c.off) EXPECT_FALSE(IsTileOnBoard(c.layout, i)) << c.name << " tile " << i;
        const int* grid = PathWalkGrid(c.layout);
        if (!grid) continue;
        for (int i = 0; i < 100; ++i)
            EXPECT_EQ(grid[i], IsTileOnBoard(c.layout, i) ? 0 : 1) << c.name << " cell " << i;
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
        TileArray tiles = MakeBoard(c.layout, c.towers);
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
    TileArray tiles = MakeBoard(6, {54});
    NodePath path;
    FindPathOnBoard(5, 3, tiles, 6, path);
    EXPECT_EQ(Route(path)[path.size() - 2], 64);
}

// Every layout, every on-board start, with no towers, 5, 10, 25 towers or
// half the board at random free tiles (half the board cuts it into walled
// pockets), and with the crystal walled in: the game's search and the plain
// transcription agree cell for cell and cost for cost.
TEST(PathSearch, MatchesPlainSearchEverywhere) {
    srand(20261123);
    int compared = 0;
    for (int layout = 3; layout <= 6; ++layout) {
        // -1: the crystal ringed by six towers, so every search exhausts the board.
        int onBoard = 0;
        for (int i = 0; i < 100; ++i) onBoard += IsTileOnBoard(layout, i);
        for (int towerCount : {0, 5, 10, 25, onBoard / 2, -1}) {
            for (int round = 0; round < 10; ++round) {
                std::vector<int> towers;
                if (towerCount < 0) towers = {45, 46, 54, 56, 65, 66};
                while ((int)towers.size() < towerCount) {
                    int t = rand() % 100;
                    if (t != 55 && IsTileOnBoard(layout, t) &&
                        std::find(towers.begin(), towers.end(), t) == towers.end())
                        towers.push_back(t);
                }
                TileArray tiles = MakeBoard(layout, towers);
                for (int start = 0; start < 100; ++start) {
                    if (!IsTileOnBoard(layout, start)) continue;
                    NodePath got, want = ReferenceSearch(start / 10, start % 10, tiles, layout);
                    FindPathOnBoard(start / 10, start % 10, tiles, layout, got);
                    ASSERT_EQ(Route(got), Route(want))
                        << "layout " << layout << " towers " << towerCount << " round " << round
                        << " start " << start;
                    for (size_t i = 0; i < got.size(); ++i)
                        ASSERT_EQ(got[i]->fCost, want[i]->fCost) << "start " << start;
                    ++compared;
                }
                if (towerCount <= 0) break;
            }
        }
    }
    EXPECT_GT(compared, 800);
}
