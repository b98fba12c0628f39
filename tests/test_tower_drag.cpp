// Tower building: towers handed out on free tiles, and the drag-and-merge
// matrix on the level-1 board (layout 3) with the mouse driven frame by
// frame, the tile tints, and the ids that must keep naming the right tower.
#include "ArcherTower_Tier1.h"
#include "ArcherTower_Tier2.h"
#include "TestSupport.h"
#include "Tile.h"
#include "TowerBuilding.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "VXInput.h"
#include "VXSystem.h"

namespace {

// "44:1 53:2": tile 44 holds a first-tier tower, 53 a second-tier one.
std::vector<std::pair<int, int>> TilesAndTiers(const char* text) {
    std::istringstream in(text);
    std::vector<std::pair<int, int>> out;
    int tile = 0, tier = 0;
    for (char colon; in >> tile >> colon >> tier;) out.push_back({tile, tier});
    return out;
}

class TowerDrag : public ::testing::Test {
  protected:
    void SetUp() override {
        TestEngineStart();
        std::memset(gVXInputKeyCurr, 0, 256);
        std::memset(gVXInputKeyPrev, 0, 256);
    }
    void TearDown() override {
        towerList.clear();
        FreeBoard();
        TestEngineStop();
    }
    // A fresh board of the layout with the crystal and the given towers.
    static void NewBoard(const char* towers, int layout = 3) {
        towerList.clear();
        FreeBoard();
        BuildBoard(layout);
        tileList[55]->moveCost = 1;
        gDragTower = -1;
        gDragMoveCost = 0;
        gDropBlocked = gMergePending = gTutorialMoved = gTutorialMergeSeen = false;
        for (auto [index, tier] : TilesAndTiers(towers)) {
            Tile& tile = *tileList[index];
            if (tier == 1)
                towerList.push_back(std::make_unique<ArcherTower_Tier1>());
            else
                towerList.push_back(std::make_unique<ArcherTower_Tier2>());
            towerList.back()->posX = tile.posX;
            towerList.back()->posY = tile.posY;
            tile.moveCost = tier == 1 ? 2 : 3;
            tile.occupant = (int)towerList.size() - 1;
        }
    }
    // A logical pixel p as the platform reports the cursor: in full screen the
    // first screen pixel past p x scale, which the engine truncates back to p.
    static int ScreenPixel(int p, float scale) {
        return scale == 1.0f ? p : (int)std::ceil((float)p * scale + 0.01f);
    }
    // One frame of the mouse over a tile's centre.
    static void Mouse(bool down, int tileIndex) {
        std::memcpy(gVXInputKeyPrev, gVXInputKeyCurr, 256);
        gVXInputKeyCurr[VX_KEY_LBUTTON] = down ? 0x80 : 0;
        gVXInputCursorX = ScreenPixel((int)tileList[tileIndex]->posX + 400, gVXWinScaleX);
        gVXInputCursorY = ScreenPixel(300 - (int)tileList[tileIndex]->posY, gVXWinScaleY);
        HandleTowerDrag();
    }
    // Press on the first tile, hold over the others, release on the last.
    static void Drag(const std::vector<int>& path) {
        for (int index : path) Mouse(true, index);
        Mouse(false, path.back());
    }
    // The tier standing on a tile, 0 for none; negative when the tile's id
    // does not name a tower of its tier standing on that very tile.
    static int TierOn(int index) {
        const Tile& tile = *tileList[index];
        if (tile.occupant < 0) return tile.moveCost == 2 || tile.moveCost == 3 ? -1 : 0;
        if ((size_t)tile.occupant >= towerList.size()) return -2;
        const Tower& tower = *towerList[tile.occupant];
        if (tower.posX != tile.posX || tower.posY != tile.posY) return -3;
        const int tier = dynamic_cast<const ArcherTower_Tier2*>(&tower) ? 3 : 2;
        return tier == (int)tile.moveCost ? tier - 1 : -4;
    }
    // Every tower is named by exactly one tile.
    static void ExpectEveryTowerNamedOnce(const std::string& name) {
        std::vector<int> named(towerList.size(), 0);
        for (const auto& tile : tileList)
            if (tile->occupant >= 0 && (size_t)tile->occupant < named.size())
                named[tile->occupant]++;
        for (size_t id = 0; id < named.size(); ++id)
            EXPECT_EQ(1, named[id]) << name << ": tower " << id;
    }
};

} // namespace

// Layout 3: row 4 holds tiles 43-47, row 5 tiles 52-57 (55: the crystal);
// tile 42 is off the board. In the window and in full screen (the test
// display is 1280 x 1024: scales 1.6 and 1.7066...), where the game starts
// and the cursor comes in screen pixels.
TEST_F(TowerDrag, DragAndMergeMatrix) {
    struct Case {
        const char* name;
        const char* towers;
        std::vector<int> path;
        const char* expected; // tile:tier afterwards, 0 for none
        size_t towerCount;
        bool moved;
    } cases[] = {
        {"to a free tile", "44:1", {44, 45}, "44:0 45:1", 1, true},
        {"press and release in place", "44:1", {44}, "44:1", 1, false},
        {"back over the start keeps the last free tile",
         "44:1",
         {44, 45, 44},
         "44:0 45:1",
         1,
         true},
        {"over a second tier, then free: goes back",
         "44:1 53:2",
         {44, 53, 45},
         "44:1 45:0 53:2",
         2,
         false},
        {"onto a second tier: refused", "44:1 53:2", {44, 53}, "44:1 53:2", 2, false},
        {"over the crystal: goes back", "44:1", {44, 55, 45}, "44:1 45:0", 1, false},
        {"over a tile off the board: goes back", "43:1", {43, 42, 44}, "43:1 44:0", 1, false},
        {"onto a partner: merged there", "44:1 46:1", {44, 45, 46}, "44:0 45:0 46:2", 1, false},
        {"partner, then free: refused", "44:1 46:1", {44, 46, 45}, "44:1 45:0 46:1", 2, false},
        {"partner, then back over the start: merged",
         "44:1 46:1",
         {44, 46, 44},
         "44:0 46:2",
         1,
         false},
        {"second tier onto second tier: refused", "53:2 57:2", {53, 57}, "53:2 57:2", 2, false},
        {"second tier to a free tile", "53:2", {53, 54}, "53:0 54:2", 1, true},
    };
    for (const char* screen : {"window", "full screen"}) {
        VXToogleFullScreen(screen[0] == 'f');
        for (const Case& c : cases) {
            const std::string name = std::string(c.name) + ", " + screen;
            NewBoard(c.towers);
            Drag(c.path);
            for (auto [index, tier] : TilesAndTiers(c.expected))
                EXPECT_EQ(tier, TierOn(index)) << name << ", tile " << index;
            EXPECT_EQ(c.towerCount, towerList.size()) << name;
            EXPECT_EQ(c.moved, gTutorialMoved) << name;
            EXPECT_EQ(-1, gDragTower) << name;
            EXPECT_FALSE(gDropBlocked) << name;
            EXPECT_FALSE(gMergePending) << name;
            ExpectEveryTowerNamedOnce(name);
            for (const auto& tower : towerList) EXPECT_EQ(1.0f, tower->tintColor[3]) << name;
        }
    }
    VXToogleFullScreen(false);
}

// Five towers with ids 0-4 on tiles 43-47; the merged pair leaves three,
// renumbered 0-2 in their old order, and the new tower takes id 3.
TEST_F(TowerDrag, MergeRenumbersTheOtherTowers) {
    struct Case {
        const char* name;
        int from, onto;
        int ids[5]; // occupant of tiles 43..47 afterwards
    } cases[] = {
        {"id 1 onto id 3", 44, 46, {0, -1, 1, 3, 2}},
        {"id 3 onto id 1", 46, 44, {0, 3, 1, -1, 2}},
        {"id 0 onto id 4", 43, 47, {-1, 0, 1, 2, 3}},
        {"neighbours 2 onto 3", 45, 46, {0, 1, -1, 3, 2}},
    };
    for (const Case& c : cases) {
        NewBoard("43:1 44:1 45:1 46:1 47:1");
        Drag({c.from, c.onto}); // over the partner only: tiles between would move the tower
        ASSERT_EQ(4u, towerList.size()) << c.name;
        for (int i = 0; i < 5; ++i)
            EXPECT_EQ(c.ids[i], tileList[43 + i]->occupant) << c.name << ", tile " << 43 + i;
        EXPECT_EQ(2, TierOn(c.onto)) << c.name;
        EXPECT_TRUE(gTutorialMergeSeen) << c.name;
        ExpectEveryTowerNamedOnce(c.name);
        EXPECT_EQ(0.0f, towerList.back()->fireTimer) << c.name;
    }
}

TEST_F(TowerDrag, TintsFollowTheCursorAndTheDraggedTowerFades) {
    NewBoard("44:1");
    Mouse(true, 44);
    EXPECT_EQ(0.5f, towerList[0]->tintColor[3]);
    EXPECT_EQ(0.0f, tileList[44]->tintColor[1]) << "hovered: green off";
    EXPECT_EQ(0.0f, tileList[44]->tintColor[2]) << "start tile: blue off";
    Mouse(true, 55);
    const float* crystalTile = tileList[55]->tintColor;
    EXPECT_EQ(1.0f, crystalTile[0]);
    EXPECT_EQ(0.0f, crystalTile[1]);
    EXPECT_EQ(0.0f, crystalTile[2]) << "blocked under the cursor: pure red";
    Mouse(true, 45);
    EXPECT_EQ(1.0f, crystalTile[0]);
    EXPECT_EQ(1.0f, crystalTile[1]);
    EXPECT_EQ(0.0f, crystalTile[2]) << "crossed blocked tile: yellow";
    EXPECT_EQ(tileList[45]->posX, towerList[0]->posX) << "the tower follows to free tiles";
    Mouse(false, 45);
    for (const auto& tile : tileList)
        for (int k = 0; k < 3; ++k)
            EXPECT_EQ(1.0f, tile->tintColor[k]) << "tile " << tile->tileIndex;
    EXPECT_EQ(1.0f, towerList[0]->tintColor[3]);
    EXPECT_EQ(1, TierOn(44)) << "refused: back on the start tile";
}

TEST_F(TowerDrag, PressOffATowerStartsNoDragAndSpoilsNoLaterDrag) {
    NewBoard("44:1");
    // Pressed on a free tile and swept over the crystal: no tower moves.
    Mouse(true, 45);
    EXPECT_EQ(-1, gDragTower);
    Mouse(true, 55);
    Mouse(false, 46);
    EXPECT_EQ(1, TierOn(44));
    // The next real drag starts clean and lands.
    Drag({44, 46});
    EXPECT_EQ(0, TierOn(44));
    EXPECT_EQ(1, TierOn(46));
    // A press on the crystal or outside the board picks nothing up either.
    Drag({55, 45});
    Drag({42, 45});
    EXPECT_EQ(1, TierOn(46));
    EXPECT_EQ(0, TierOn(45));
}

// On a full layout-6 board filled from the top until the wanted number of
// tiles is free: at most as many first-tier towers as free tiles.
TEST_F(TowerDrag, HandedOutTowersLandOnFreeTiles) {
    struct Case {
        const char* name;
        int freeTiles, asked, made;
    } cases[] = {
        {"two on an open board", 99, 2, 2},
        {"two with one free tile", 1, 2, 1},
        {"one with none free", 0, 1, 0},
    };
    for (const Case& c : cases) {
        NewBoard("", 6);
        int toFill = 99 - c.freeTiles;
        for (auto& tile : tileList)
            if (toFill > 0 && tile->moveCost == 0) tile->moveCost = 1000, --toFill;
        VXSeedRand(5);
        CreateTowers(c.asked);
        EXPECT_EQ((size_t)c.made, towerList.size()) << c.name;
        for (const auto& tile : tileList)
            if (tile->occupant >= 0) {
                EXPECT_EQ(1, TierOn(tile->tileIndex)) << c.name;
            }
        ExpectEveryTowerNamedOnce(c.name);
    }
    // A later hand-out numbers on from the towers already there.
    NewBoard("");
    CreateTowers(2);
    CreateTowers(1);
    EXPECT_EQ(3u, towerList.size());
    ExpectEveryTowerNamedOnce("hand-out at a wave start");
    FreeBoard();
    CreateTowers(1); // no board: nothing
    EXPECT_EQ(3u, towerList.size());
}
