// CTest label: tools
// The pictures in Resources: every name the game opens exists and decodes,
// sizes and sprite-sheet grids fit how the game draws them, the cursor's tip
// and the health bar's window sit where the game needs them, the generator
// is deterministic, and the whole folder stays small.
#include "TestSupport.h"
#include "VXImage.h"

#include "../tools/artgen/ArtManifest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::string ResourcePath(const std::string& name) {
    return TestResourcesDir() + "/" + name;
}

struct Picture {
    std::vector<unsigned char> rgba;
    int width = 0, height = 0;
    int Alpha(int x, int y) const { return rgba[(size_t(y) * width + x) * 4 + 3]; }
};

bool Load(const std::string& name, Picture& p) {
    return VXImageDecodePNGFile(ResourcePath(name).c_str(), p.rgba, p.width, p.height);
}

// How the game draws each picture: the world size of one shown cell (the
// sprite's quad, or one frame of a sheet) and the sheet's grid. Worked out
// from the objects' scales: a quad of scale (sx, sy) is 2sx x 2sy units.
struct DrawnAs {
    double worldW, worldH;
    int columns, rows;
    const char* names; // '|'-separated
};

const DrawnAs kDrawnAs[] = {
    // Goblin kinds: size 20 -> 40 units, 5 x 2 frames; kings size 30.
    {40, 40, 5, 2, "GoblinWalking.png|GoblinAttack.png|BeachGoblinWalking.png"},
    {60, 60, 5, 2, "GoblinBossWalk.png|BeachGoblinBossWalk.png"},
    // Spiders size 30, 2 x 2; yeti size 30, 4 x 2; wraith size 50, 4 x 2.
    {60, 60, 2, 2, "SpiderWalk.png|SpiderAttack.png|BroodWalk.png"},
    {60, 60, 4, 2, "YetiWalk.png|YetiAttack.png"},
    {100, 100, 4, 2, "WraithWalk.png"},
    // Towers: size 20, sheet of 4 x 2 of which the top-left cell shows.
    {40, 40, 4, 2, "ArcherT1.png|ArcherT2.png"},
    // Crystal: size 30 (the projectile draws the same picture at 10 units).
    {60, 60, 1, 1, "crystal.png"},
    // Health-bar frame and flash: scale (48, 100 + 30).
    {96, 260, 1, 1, "Layer 24.png|Layer 23.png"},
    // Whole-screen pictures: scale (400, 300).
    {800, 600, 1, 1,
     "BG.png|BG3.png|BG4.png|BG5.png|BG6.png|MenuBG.png|pauseM.png|cfmBG.png|optionBG.png|"
     "WinScreen.png|LoseScreen.png|NextScreen.png|howtoplay.png|TolvernSG_Logo_CMYK-RED.png|"
     "MosswickLogo.png"},
    {700, 500, 1, 1, "howtoplayPause.png"},
    {800, 8000, 1, 1, "Credit.png"},
    // Level signs: tutorial (140, 40), countdown (100, 150), banner (100, 30).
    {280, 80, 1, 1, "tutorial1.png|tutorial2.png|tutorial3.png|t1help.png|t2help.png"},
    {200, 300, 1, 1, "1.png|2.png|3.png|s.png"},
    {200, 60, 1, 1, "wave1.png|wave2.png|wave3.png|lvl1wave1.png|lvl1wave2.png"},
    // Ordinary buttons: scale (60, 30).
    {120, 60, 1, 1,
     "btnResumeU.png|btnResumeH.png|btnRestartU.png|btnRestartH.png|btnExitU.png|btnExitH.png|"
     "btnHelpU.png|btnHelpH.png|btnCreditsU.png|btnCreditsH.png|btnMuteU.png|btnMuteH.png|"
     "btnUnmuteU.png|btnUnmuteH.png|btnOptionU.png|btnOptionH.png|btnQuitU.png|btnQuitH.png|"
     "btnYesU.png|btnYesH.png|btnNoU.png|btnNoH.png|btnBackU.png|btnBackH.png|"
     "btnContinueU.png|btnContinueH.png"},
    // Square buttons and leaves: scale (30, 30).
    {60, 60, 1, 1,
     "button-pauseU.png|button-pauseH.png|btn1U.png|btn1H.png|btn2U.png|btn2H.png|btn3U.png|"
     "btn3H.png|btn4U.png|btn4H.png|btn5U.png|btn5H.png|btn6U.png|btn6H.png|btnLock.png|"
     "LeafColoured.png|LeafBG.png"},
    // Clouds (100, 50), stars (130, 60), star panel (135, 65), cursor (10, 20).
    {200, 100, 1, 1, "cloud1.png|cloud2.png|cloud3.png"},
    {260, 120, 1, 1, "1star.png|2star.png|3star.png"},
    {270, 130, 1, 1, "lvlStarBG.png"},
    {20, 40, 1, 1, "cursor.png"},
    // Loading strip: scale (100, 30) showing one of 10 frames.
    {200, 60, 10, 1, "loading.png"},
};

std::vector<std::string> Split(const char* names) {
    std::vector<std::string> out;
    std::stringstream ss(names);
    std::string item;
    while (std::getline(ss, item, '|')) out.push_back(item);
    return out;
}

} // namespace

// The list covers exactly the pictures the game draws, once each.
TEST(ArtManifest, NamesEveryDrawnPictureOnce) {
    std::set<std::string> listed, described;
    for (const ArtEntry& e : kArtManifest) EXPECT_TRUE(listed.insert(e.name).second) << e.name;
    for (const DrawnAs& d : kDrawnAs)
        for (const std::string& n : Split(d.names)) described.insert(n);
    EXPECT_EQ(kArtManifestCount, 99);
    EXPECT_EQ(listed, described);
}

// Every picture name written in the game's code is one the generator makes.
TEST(ArtManifest, CoversEveryNameInTheGameCode) {
    std::regex literal(R"re("(?:\./)?Resources/([^"]+\.(?:png|ico))")re");
    int found = 0;
    for (const auto& entry : fs::directory_iterator(TestSourceDir() + "/game")) {
        if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h") continue;
        std::string text = TestReadFile(entry.path().string());
        for (std::sregex_iterator it(text.begin(), text.end(), literal), end; it != end; ++it) {
            std::string name = (*it)[1];
            ++found;
            EXPECT_TRUE(name == kArtIconName || ArtFind(name.c_str()) != nullptr)
                << entry.path().filename() << " opens " << name << ", which no generator makes";
        }
    }
    RecordProperty("names_found", found);
}

// Sizes: about twice the drawn world size, square pixels, whole cells.
TEST(ArtManifest, SizesFollowHowTheGameDrawsEachPicture) {
    for (const DrawnAs& d : kDrawnAs) {
        for (const std::string& n : Split(d.names)) {
            SCOPED_TRACE(n);
            const ArtEntry* e = ArtFind(n.c_str());
            ASSERT_NE(e, nullptr);
            EXPECT_EQ(e->columns, d.columns);
            EXPECT_EQ(e->rows, d.rows);
            EXPECT_EQ(e->width % e->columns, 0);
            EXPECT_EQ(e->height % e->rows, 0);
            double sx = double(e->width) / e->columns / d.worldW;
            double sy = double(e->height) / e->rows / d.worldH;
            EXPECT_NEAR(sx, sy, 0.02 * sx) << "pixels are not square when drawn";
            // Two pixels a unit, except where the 8192-pixel limit forbids it.
            bool tooBig = d.worldW * 2 * d.columns > 8192 || d.worldH * 2 * d.rows > 8192;
            double wanted = tooBig ? 1.0 : 2.0;
            EXPECT_NEAR(sx, wanted, 0.25);
            EXPECT_LE(e->width, 8192);
            EXPECT_LE(e->height, 8192);
        }
    }
}

// Every picture exists, decodes at its listed size, and no cell is empty.
TEST(Pictures, EveryPictureDecodesWithEveryCellDrawn) {
    for (const ArtEntry& e : kArtManifest) {
        SCOPED_TRACE(e.name);
        Picture p;
        ASSERT_TRUE(Load(e.name, p)) << "missing or undecodable";
        ASSERT_EQ(p.width, e.width);
        ASSERT_EQ(p.height, e.height);
        const int cw = p.width / e.columns, ch = p.height / e.rows;
        for (int r = 0; r < e.rows; ++r)
            for (int c = 0; c < e.columns; ++c) {
                long inked = 0;
                for (int y = r * ch; y < (r + 1) * ch; ++y)
                    for (int x = c * cw; x < (c + 1) * cw; ++x) inked += p.Alpha(x, y) > 0;
                // A pose or picture covers well over 5 % of its cell.
                EXPECT_GT(inked, long(cw) * ch / 20) << "cell " << c << "," << r << " is empty";
            }
    }
}

// The window icon holds the crystal at every size a desktop asks for, each
// entry the very picture of the desktop's icon of that size; the window
// loads the 32 x 32 one from among them.
TEST(Pictures, IconHoldsEverySizeOfTheDesktopsIcons) {
    for (int side : {16, 32, 48, 64, 128, 256}) {
        SCOPED_TRACE(std::to_string(side) + " x " + std::to_string(side));
        std::vector<unsigned char> entry;
        ASSERT_TRUE(VXImageDecodeIcoFile(ResourcePath(kArtIconName).c_str(), side, entry));
        const std::string n = std::to_string(side);
        Picture themed;
        const std::string path = TestBinaryDir() + "/icons/" + n + "x" + n + "/apps/quarrow.png";
        ASSERT_TRUE(VXImageDecodePNGFile(path.c_str(), themed.rgba, themed.width, themed.height));
        EXPECT_EQ(themed.width, side);
        EXPECT_EQ(themed.height, side);
        EXPECT_TRUE(entry == themed.rgba) << "the icon's entry differs from " << path;
        int opaque = 0;
        for (size_t i = 3; i < entry.size(); i += 4) opaque += entry[i] > 200;
        EXPECT_GT(opaque, side * side / 4) << "the icon is mostly empty";
    }
    std::vector<unsigned char> rgba;
    EXPECT_FALSE(VXImageDecodeIcoFile(ResourcePath(kArtIconName).c_str(), 24, rgba))
        << "no 24 x 24 entry was drawn";
}

// The cursor is drawn centred on the mouse point, so its tip is the centre:
// the pixel just right of and below the centre is inked, and nothing lies
// above or left of the centre.
TEST(Pictures, CursorTipIsThePictureCentre) {
    Picture p;
    ASSERT_TRUE(Load("cursor.png", p));
    const int cx = p.width / 2, cy = p.height / 2;
    EXPECT_GT(p.Alpha(cx, cy), 200) << "tip pixel (" << cx << ", " << cy << ") is not inked";
    int stray = 0;
    for (int y = 0; y < p.height; ++y)
        for (int x = 0; x < p.width; ++x)
            if ((x < cx || y < cy) && p.Alpha(x, y) > 0) ++stray;
    EXPECT_EQ(stray, 0) << "pixels above or left of the tip";
}

// The bar's frame is drawn over the green fill: frame quad x 312..408,
// y -130..130; fill x 340..360, y -100..100 at full health. The picture must
// be clear exactly over the fill and solid in a ring around it.
TEST(Pictures, HealthBarWindowIsClearExactlyOverTheFill) {
    for (const char* name : {"Layer 24.png", "Layer 23.png"}) {
        SCOPED_TRACE(name);
        Picture p;
        ASSERT_TRUE(Load(name, p));
        const double unitsPerPx = 96.0 / p.width;
        ASSERT_NEAR(260.0 / p.height, unitsPerPx, 1e-9);
        int wrongInside = 0, wrongRing = 0, inside = 0, ring = 0;
        for (int y = 0; y < p.height; ++y)
            for (int x = 0; x < p.width; ++x) {
                // World point at the pixel's centre (picture rows run downward).
                double wx = 312 + (x + 0.5) * unitsPerPx;
                double wy = 130 - (y + 0.5) * unitsPerPx;
                bool inFill = wx > 340 && wx < 360 && wy > -100 && wy < 100;
                bool inRing = !inFill && wx > 338 && wx < 362 && wy > -102 && wy < 102;
                if (inFill) ++inside, wrongInside += p.Alpha(x, y) != 0;
                if (inRing) ++ring, wrongRing += p.Alpha(x, y) != 255;
            }
        EXPECT_EQ(inside, 40 * 400);
        EXPECT_EQ(wrongInside, 0) << "pixels over the fill are not clear";
        EXPECT_GT(ring, 0);
        EXPECT_EQ(wrongRing, 0) << "the frame around the fill is not solid";
    }
}

// Pictures that cover the whole screen on their own must have no holes:
// the clear colour would show through.
TEST(Pictures, WholeScreenPicturesAreOpaque) {
    for (const char* name :
         {"BG.png", "BG3.png", "BG4.png", "BG5.png", "BG6.png", "MenuBG.png", "NextScreen.png",
          "howtoplay.png", "Credit.png", "TolvernSG_Logo_CMYK-RED.png", "MosswickLogo.png"}) {
        SCOPED_TRACE(name);
        Picture p;
        ASSERT_TRUE(Load(name, p));
        long holes = 0;
        for (int y = 0; y < p.height; ++y)
            for (int x = 0; x < p.width; ++x) holes += p.Alpha(x, y) != 255;
        EXPECT_EQ(holes, 0);
    }
}

// The splash logos sit on black: the corners are opaque black.
TEST(Pictures, LogosStandOnBlack) {
    for (const char* name : {"TolvernSG_Logo_CMYK-RED.png", "MosswickLogo.png"}) {
        SCOPED_TRACE(name);
        Picture p;
        ASSERT_TRUE(Load(name, p));
        for (int y : {0, p.height - 1})
            for (int x : {0, p.width - 1}) {
                const unsigned char* px = &p.rgba[(size_t(y) * p.width + x) * 4];
                EXPECT_EQ(px[0] + px[1] + px[2], 0) << "corner " << x << "," << y;
                EXPECT_EQ(px[3], 255);
            }
    }
}

// An overlay dims the frozen screen under it (its corners are see-through)
// and frames its buttons (solid under each button's centre). Button centres
// are the game's world positions; the overlay covers the whole 800 x 600.
TEST(Pictures, OverlaysDimTheScreenAndFrameTheirButtons) {
    struct Overlay {
        const char* name;
        std::vector<std::pair<double, double>> buttons;
    };
    const Overlay overlays[] = {
        {"pauseM.png", {{0, 20}, {0, -45}, {0, -110}, {300, 180}, {300, 120}}},
        {"cfmBG.png", {{-75, -25}, {75, -25}}},
        {"optionBG.png", {{-75, -25}, {75, -25}}},
        {"WinScreen.png", {{-75, -155}, {75, -155}, {10, -50}}},
        {"LoseScreen.png", {{-75, -25}, {75, -25}}},
    };
    for (const Overlay& o : overlays) {
        SCOPED_TRACE(o.name);
        Picture p;
        ASSERT_TRUE(Load(o.name, p));
        const double pxPerUnit = p.width / 800.0;
        for (auto [x, y] : o.buttons) {
            int px = int((x + 400) * pxPerUnit), py = int((300 - y) * pxPerUnit);
            EXPECT_EQ(p.Alpha(px, py), 255) << "no frame under the button at " << x << "," << y;
        }
        for (int y : {2, p.height - 3})
            for (int x : {2, p.width - 3}) {
                EXPECT_GT(p.Alpha(x, y), 0) << "corner not dimmed";
                EXPECT_LT(p.Alpha(x, y), 255) << "corner hides the screen";
            }
    }
}

// Every button's highlighted look has the normal look's size but differs.
TEST(Pictures, HighlightedLooksDifferFromNormalLooks) {
    int pairs = 0;
    for (const ArtEntry& e : kArtManifest) {
        std::string u = e.name;
        if (u.size() < 6 || u.compare(u.size() - 5, 5, "U.png") != 0) continue;
        std::string h = u.substr(0, u.size() - 5) + "H.png";
        SCOPED_TRACE(u);
        const ArtEntry* he = ArtFind(h.c_str());
        ASSERT_NE(he, nullptr) << "no highlighted look";
        EXPECT_EQ(he->width, e.width);
        EXPECT_EQ(he->height, e.height);
        Picture a, b;
        ASSERT_TRUE(Load(u, a));
        ASSERT_TRUE(Load(h, b));
        EXPECT_TRUE(a.rgba != b.rgba) << "both looks are the same picture";
        ++pairs;
    }
    // 13 word buttons, the pause button and six level buttons.
    EXPECT_EQ(pairs, 20);
}

// Sheet poses stay inside their cells (nearest sampling at a cell's edge
// would show a sliver of the neighbour), and a walk is not one frozen pose.
TEST(Pictures, SheetPosesStayInsideTheirCellsAndMove) {
    for (const ArtEntry& e : kArtManifest) {
        if (e.columns * e.rows == 1) continue;
        SCOPED_TRACE(e.name);
        Picture p;
        ASSERT_TRUE(Load(e.name, p));
        const int cw = p.width / e.columns, ch = p.height / e.rows;
        std::set<std::vector<unsigned char>> poses;
        for (int r = 0; r < e.rows; ++r)
            for (int c = 0; c < e.columns; ++c) {
                int edge = 0;
                std::vector<unsigned char> cell;
                for (int y = r * ch; y < (r + 1) * ch; ++y) {
                    for (int x = c * cw; x < (c + 1) * cw; ++x) {
                        bool border = x == c * cw || x == (c + 1) * cw - 1 || y == r * ch ||
                                      y == (r + 1) * ch - 1;
                        if (border && p.Alpha(x, y) != 0) ++edge;
                    }
                    auto row = p.rgba.begin() + (size_t(y) * p.width + c * cw) * 4;
                    cell.insert(cell.end(), row, row + cw * 4);
                }
                EXPECT_EQ(edge, 0) << "cell " << c << "," << r << " touches its edge";
                poses.insert(cell);
            }
        EXPECT_GT(poses.size(), 1u) << "every cell holds the same pose";
    }
}

namespace {

// A level as the player sees it: its ground and the on-board run (first and
// last column) of each of the board's ten rows.
struct LevelGround {
    int level;
    const char* ground;
    int first[10], last[10];
};

const LevelGround kLevelGrounds[] = {
    {1, "BG.png", {5, 4, 4, 3, 3, 2, 3, 3, 4, 4}, {5, 5, 6, 6, 7, 7, 7, 6, 6, 5}},
    {2, "BG.png", {5, 4, 4, 3, 3, 2, 2, 1, 1, 0}, {5, 5, 6, 6, 7, 7, 8, 8, 9, 9}},
    {3, "BG3.png", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, {9, 9, 9, 9, 9, 9, 9, 9, 9, 9}},
    {4, "BG4.png", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, {9, 9, 9, 9, 9, 9, 9, 9, 9, 9}},
    {5, "BG5.png", {5, 4, 4, 3, 3, 2, 2, 1, 1, 0}, {5, 5, 6, 6, 7, 7, 8, 8, 9, 9}},
    {6, "BG6.png", {3, 2, 2, 1, 1, 0, 1, 1, 2, 2}, {7, 7, 8, 8, 9, 9, 9, 8, 8, 7}},
};

bool OnBoard(const LevelGround& g, int row, int col) {
    return row >= 0 && row < 10 && col >= g.first[row] && col <= g.last[row];
}

// A tile's centre on the 800 x 600 screen (y down): 60 apart in a row, rows
// 50 apart from y = 100, even rows half a tile left, tile 0 at x = 120.
void TileCentre(int row, int col, double& x, double& y) {
    x = 60.0 * col + 150 - (row % 2 == 0 ? 30 : 0);
    y = 100 + 50.0 * row;
}

struct Rgb3 {
    double r, g, b; // 0..255
};

// The ground's colour under screen point (x, y): grounds are drawn over the
// whole 800 x 600 screen.
Rgb3 GroundAt(const Picture& p, double x, double y) {
    int px = std::min(p.width - 1, std::max(0, int(x * p.width / 800)));
    int py = std::min(p.height - 1, std::max(0, int(y * p.height / 600)));
    const unsigned char* c = &p.rgba[(size_t(py) * p.width + px) * 4];
    return {double(c[0]), double(c[1]), double(c[2])};
}

// A tile over the ground: grey 0xEE at alpha 0xEE/255 times the 0.7 tint.
Rgb3 TileOver(Rgb3 ground) {
    const double a = 238.0 / 255 * 0.7;
    return {238 * a + ground.r * (1 - a), 238 * a + ground.g * (1 - a),
            238 * a + ground.b * (1 - a)};
}

double Luminance(Rgb3 c) {
    auto lin = [](double v) {
        v /= 255;
        return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * lin(c.r) + 0.7152 * lin(c.g) + 0.0722 * lin(c.b);
}

// The WCAG contrast ratio of two colours, 1 to 21.
double Contrast(Rgb3 a, Rgb3 b) {
    double la = Luminance(a), lb = Luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

// What a player needs to read the board and the monsters on it.
constexpr double kMinContrast = 3.0;

} // namespace

// Where the board ends, a tile's edge stands out from the ground beyond it:
// three units inside every edge that faces an off-board neighbour against
// the ground four units beyond it.
TEST(Contrast, TileEdgesStandOutFromTheGroundAroundTheBoard) {
    for (const LevelGround& g : kLevelGrounds) {
        SCOPED_TRACE("level " + std::to_string(g.level));
        Picture ground;
        ASSERT_TRUE(Load(g.ground, ground));
        int edges = 0;
        for (int row = 0; row < 10; ++row)
            for (int col = g.first[row]; col <= g.last[row]; ++col) {
                double cx, cy;
                TileCentre(row, col, cx, cy);
                // The six neighbours: the rows above and below sit half a
                // tile across, so their columns depend on the row's parity.
                const int shift = row % 2 == 0 ? -1 : 0;
                const int nb[6][2] = {{0, -1},         {0, 1},     {-1, shift},
                                      {-1, shift + 1}, {1, shift}, {1, shift + 1}};
                for (auto& n : nb) {
                    if (OnBoard(g, row + n[0], col + n[1])) continue;
                    double nx, ny;
                    TileCentre(row + n[0], col + n[1], nx, ny);
                    const double dx = (nx - cx) / std::hypot(nx - cx, ny - cy);
                    const double dy = (ny - cy) / std::hypot(nx - cx, ny - cy);
                    const double apothem = 26; // half the tile's 52-unit width
                    double ix = cx + dx * (apothem - 3), iy = cy + dy * (apothem - 3);
                    double ox = cx + dx * (apothem + 4), oy = cy + dy * (apothem + 4);
                    if (ox < 0 || ox >= 800 || oy < 0 || oy >= 600) continue;
                    Rgb3 tile = TileOver(GroundAt(ground, ix, iy)),
                         beyond = GroundAt(ground, ox, oy);
                    double ratio = Contrast(tile, beyond);
                    EXPECT_GE(ratio, kMinContrast)
                        << "tile (" << row << ", " << col << ") edge at (" << ox << ", " << oy
                        << "): expected at least kMinContrast " << kMinContrast << ", actual "
                        << ratio;
                    ++edges;
                }
            }
        EXPECT_GT(edges, 20) << "the board's rim was not found";
    }
}

// Every monster's outline stands out from the tiles it walks on. The rim of
// a pose is its opaque pixels (alpha at least half) with a see-through
// neighbour; as the sheet is drawn at half size without smoothing, a rim
// pixel holds when it or an opaque pixel next to it stands out against the
// lightest and the darkest tile of every level.
TEST(Contrast, MonsterOutlinesStandOutFromTheTiles) {
    std::vector<Rgb3> tiles;
    for (const LevelGround& g : kLevelGrounds) {
        Picture ground;
        ASSERT_TRUE(Load(g.ground, ground));
        for (int row = 0; row < 10; ++row)
            for (int col = g.first[row]; col <= g.last[row]; ++col) {
                double cx, cy;
                TileCentre(row, col, cx, cy);
                tiles.push_back(TileOver(GroundAt(ground, cx, cy)));
            }
    }
    auto byLuminance = [](Rgb3 a, Rgb3 b) { return Luminance(a) < Luminance(b); };
    const Rgb3 extremes[2] = {*std::min_element(tiles.begin(), tiles.end(), byLuminance),
                              *std::max_element(tiles.begin(), tiles.end(), byLuminance)};
    // Where two strokes meet a rim pixel may blend into the tile; few may.
    const double kRimShareBelow = 0.05;
    for (const char* name :
         {"GoblinWalking.png", "GoblinAttack.png", "GoblinBossWalk.png", "BeachGoblinWalking.png",
          "BeachGoblinBossWalk.png", "SpiderWalk.png", "SpiderAttack.png", "BroodWalk.png",
          "YetiWalk.png", "YetiAttack.png", "WraithWalk.png"}) {
        SCOPED_TRACE(name);
        const ArtEntry* e = ArtFind(name);
        ASSERT_NE(e, nullptr);
        Picture p;
        ASSERT_TRUE(Load(name, p));
        const int cw = p.width / e->columns, ch = p.height / e->rows;
        for (int cell = 0; cell < e->columns * e->rows; ++cell) {
            const int x0 = (cell % e->columns) * cw, y0 = (cell / e->columns) * ch;
            for (const Rgb3& tile : extremes) {
                int rim = 0, low = 0;
                for (int y = y0 + 1; y < y0 + ch - 1; ++y)
                    for (int x = x0 + 1; x < x0 + cw - 1; ++x) {
                        if (p.Alpha(x, y) < 128) continue;
                        if (p.Alpha(x - 1, y) >= 128 && p.Alpha(x + 1, y) >= 128 &&
                            p.Alpha(x, y - 1) >= 128 && p.Alpha(x, y + 1) >= 128)
                            continue;
                        double best = 1;
                        for (int ny = y - 1; ny <= y + 1; ++ny)
                            for (int nx = x - 1; nx <= x + 1; ++nx) {
                                if (p.Alpha(nx, ny) < 128) continue;
                                const unsigned char* c = &p.rgba[(size_t(ny) * p.width + nx) * 4];
                                const double a = c[3] / 255.0;
                                Rgb3 seen{c[0] * a + tile.r * (1 - a), c[1] * a + tile.g * (1 - a),
                                          c[2] * a + tile.b * (1 - a)};
                                best = std::max(best, Contrast(seen, tile));
                            }
                        ++rim;
                        low += best < kMinContrast;
                    }
                ASSERT_GT(rim, 0) << "cell " << cell << " is empty";
                EXPECT_LE(double(low) / rim, kRimShareBelow)
                    << "cell " << cell << ": expected at most kRimShareBelow " << kRimShareBelow
                    << " of the rim below " << kMinContrast << ":1 against tile luminance "
                    << Luminance(tile) << ", actual " << low << " of " << rim;
            }
        }
    }
}

// The credits picture is exactly as wide as the screen, so a line wider
// than its text column is cut off at both sides: the outermost columns stay
// the plain night sky from top to bottom.
TEST(Pictures, CreditLinesFitTheScreensWidth) {
    Picture p;
    ASSERT_TRUE(Load("Credit.png", p));
    const int kEdgePx = 16;       // outermost columns with nothing but sky
    const int kSkyChannel = 0x50; // the sky's gradient stays darker than this
    int lit = 0, firstY = -1;
    for (int y = 0; y < p.height; ++y)
        for (int x = 0; x < p.width; ++x) {
            if (x >= kEdgePx && x < p.width - kEdgePx) continue;
            const unsigned char* c = &p.rgba[(size_t(y) * p.width + x) * 4];
            if (std::max({c[0], c[1], c[2]}) <= kSkyChannel) continue;
            if (firstY < 0) firstY = y;
            ++lit;
        }
    EXPECT_EQ(lit, 0) << "expected no pixel brighter than kSkyChannel " << kSkyChannel
                      << " within kEdgePx " << kEdgePx << " of the sides, actual " << lit
                      << " (first in row " << firstY << ")";
}

// The rating art is drawn off the axis it belongs to, so the pictures make
// up for it: the stars (drawn centred at x 410) centre on the win screen's
// axis, x 400; the star panel (drawn centred at x 315) centres on the row of
// leaves in front of it (x 260, 330, 400: centre 330).
TEST(Pictures, RatingArtCentresOnWhatItBelongsTo) {
    struct Case {
        const char* name;
        double drawnCentre, drawnWidth, axis; // screen units
    };
    const Case cases[] = {{"1star.png", 410, 260, 400},
                          {"2star.png", 410, 260, 400},
                          {"3star.png", 410, 260, 400},
                          {"lvlStarBG.png", 315, 270, 330}};
    const double kCentreTolerance = 2; // units
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Picture p;
        ASSERT_TRUE(Load(c.name, p));
        int left = p.width, right = -1;
        for (int y = 0; y < p.height; ++y)
            for (int x = 0; x < p.width; ++x)
                if (p.Alpha(x, y) >= 128) {
                    left = std::min(left, x);
                    right = std::max(right, x);
                }
        ASSERT_GE(right, left) << "nothing drawn";
        const double unitsPerPx = c.drawnWidth / p.width;
        const double centre =
            c.drawnCentre - c.drawnWidth / 2 + (left + right + 1) / 2.0 * unitsPerPx;
        EXPECT_NEAR(centre, c.axis, kCentreTolerance)
            << "expected the opaque art centred at x " << c.axis << " within kCentreTolerance "
            << kCentreTolerance << ", actual " << centre;
    }
}

// The options and confirmation dialogs open over the pause menu: whatever
// the menu draws opaque round its title ribbon, the dialog covers.
TEST(Pictures, DialogsHideThePauseMenusRibbon) {
    Picture pause;
    ASSERT_TRUE(Load("pauseM.png", pause));
    // Round the pause menu's ribbon, in pixels: screen x 250..550, y 140..215.
    const int x0 = 500, x1 = 1100, y0 = 280, y1 = 430;
    const int kOpaque = 200, kCovering = 250; // alpha
    for (const char* name : {"optionBG.png", "cfmBG.png"}) {
        SCOPED_TRACE(name);
        Picture dialog;
        ASSERT_TRUE(Load(name, dialog));
        ASSERT_EQ(dialog.width, pause.width);
        int menu = 0, shows = 0, firstX = -1, firstY = -1;
        for (int y = y0; y < y1; ++y)
            for (int x = x0; x < x1; ++x) {
                if (pause.Alpha(x, y) < kOpaque) continue;
                ++menu;
                if (dialog.Alpha(x, y) >= kCovering) continue;
                if (shows++ == 0) firstX = x, firstY = y;
            }
        ASSERT_GT(menu, 1000) << "the pause menu's ribbon is not where it was looked for";
        EXPECT_EQ(shows, 0) << "expected every opaque pause-menu pixel (alpha >= kOpaque "
                            << kOpaque << ") under dialog alpha >= kCovering " << kCovering
                            << ", actual " << shows << " showing, first at (" << firstX << ", "
                            << firstY << ")";
    }
}

// The loading screen's clock moves on two cells every half second, so a
// player sees every other cell of the strip: 1, 3, 5, 7, 9 or 0, 2, 4, 6, 8.
// Along either sequence the lit gem (the tallest one) steps evenly to the
// right.
TEST(Pictures, LoadingLightStepsEvenlyAlongEitherShownSequence) {
    const ArtEntry* e = ArtFind("loading.png");
    ASSERT_NE(e, nullptr);
    Picture p;
    ASSERT_TRUE(Load("loading.png", p));
    const int cw = p.width / e->columns;
    // Where in its cell the tallest opaque column stands, right of the word
    // (which ends before 64% of the cell).
    auto litX = [&](int cell) {
        int best = -1, bestH = 0;
        for (int x = cw * 64 / 100; x < cw; ++x) {
            int h = 0;
            for (int y = 0; y < p.height; ++y) h += p.Alpha(cell * cw + x, y) >= 128;
            if (h > bestH) bestH = h, best = x;
        }
        return best;
    };
    const int kStepTolerancePx = 2;
    for (int start = 0; start < 2; ++start) {
        SCOPED_TRACE("cells from " + std::to_string(start));
        std::vector<int> xs;
        for (int k = start; k < 10; k += 2) xs.push_back(litX(k));
        const int step = xs[1] - xs[0];
        EXPECT_GT(step, 0) << "the light does not move right";
        for (size_t i = 1; i < xs.size(); ++i)
            EXPECT_NEAR(xs[i] - xs[i - 1], step, kStepTolerancePx)
                << "step " << i << ": expected " << step << " px (kStepTolerancePx "
                << kStepTolerancePx << "), actual " << xs[i] - xs[i - 1];
    }
}

// A monster strikes the crystal from right on top of it (centres within a
// few units) and the crystal is drawn after it: in every strike pose most
// of the monster still shows round the gem, mirrored or not.
TEST(Pictures, StrikesShowAroundTheCrystal) {
    Picture crystal;
    ASSERT_TRUE(Load("crystal.png", crystal));
    const double kCrystalUnits = 60;
    const double kMinVisibleShare = 0.5; // of the pose's opaque area
    struct Striker {
        const char* sheet;
        double units; // drawn size of one cell
    };
    // Goblins and yetis strike with their attack sheets; the other kinds
    // strike in their walking poses.
    const Striker strikers[] = {{"GoblinAttack.png", 40},   {"BeachGoblinWalking.png", 40},
                                {"GoblinBossWalk.png", 60}, {"BeachGoblinBossWalk.png", 60},
                                {"SpiderAttack.png", 60},   {"BroodWalk.png", 60},
                                {"YetiAttack.png", 60}};
    for (const Striker& k : strikers) {
        SCOPED_TRACE(k.sheet);
        const ArtEntry* e = ArtFind(k.sheet);
        ASSERT_NE(e, nullptr);
        Picture p;
        ASSERT_TRUE(Load(k.sheet, p));
        const int cw = p.width / e->columns, ch = p.height / e->rows;
        for (int cell = 0; cell < e->columns * e->rows; ++cell) {
            const int x0 = (cell % e->columns) * cw, y0 = (cell / e->columns) * ch;
            int opaque = 0, visible = 0;
            // Sample the pose at a quarter unit, centred on the crystal.
            for (double v = 0.125; v < k.units; v += 0.25)
                for (double u = 0.125; u < k.units; u += 0.25) {
                    int px = x0 + int(u / k.units * cw), py = y0 + int(v / k.units * ch);
                    if (p.Alpha(px, py) < 128) continue;
                    ++opaque;
                    double cu = u - k.units / 2 + kCrystalUnits / 2;
                    double cv = v - k.units / 2 + kCrystalUnits / 2;
                    bool hidden = cu >= 0 && cu < kCrystalUnits && cv >= 0 && cv < kCrystalUnits &&
                                  crystal.Alpha(int(cu / kCrystalUnits * crystal.width),
                                                int(cv / kCrystalUnits * crystal.height)) >= 128;
                    visible += !hidden;
                }
            ASSERT_GT(opaque, 0) << "cell " << cell << " is empty";
            EXPECT_GE(double(visible) / opaque, kMinVisibleShare)
                << "cell " << cell << ": expected at least kMinVisibleShare " << kMinVisibleShare
                << " of the pose in view, actual " << double(visible) / opaque;
        }
    }
}

// All of Resources, pictures and sounds together, stays under 30 MB.
TEST(Resources, WholeFolderIsUnder30MB) {
    uintmax_t total = 0;
    for (const auto& entry : fs::recursive_directory_iterator(TestResourcesDir()))
        if (entry.is_regular_file()) total += entry.file_size();
    EXPECT_LT(total, 30u * 1024u * 1024u) << "Resources holds " << total << " bytes";
}

#ifdef QUARROW_ARTGEN
// Two runs of the generator give the same bytes, and the same bytes as the
// build's own Resources (so those are up to date).
TEST(Generator, TwoRunsGiveIdenticalFiles) {
    fs::path base = fs::temp_directory_path() / ("artgen-" + std::to_string(getpid()));
    fs::create_directories(base);
    std::string out;
    for (const char* run : {"a", "b"}) {
        std::string cmd = std::string("'") + QUARROW_ARTGEN + "' '" + (base / run).string() + "'";
        ASSERT_EQ(TestRunCommand(cmd, out), 0) << out;
    }
    std::vector<std::string> names = {kArtIconName};
    for (const ArtEntry& e : kArtManifest) names.push_back(e.name);
    for (const std::string& n : names) {
        SCOPED_TRACE(n);
        std::string a = TestReadFile((base / "a" / n).string());
        std::string b = TestReadFile((base / "b" / n).string());
        ASSERT_FALSE(a.empty());
        EXPECT_TRUE(a == b) << "runs differ";
        EXPECT_TRUE(a == TestReadFile(ResourcePath(n))) << "Resources holds an older picture";
    }
    // The desktop's icons too.
    for (const char* run : {"a", "b"}) {
        std::string cmd = std::string("'") + QUARROW_ARTGEN + "' --icons '" +
                          (base / run / "icons").string() + "'";
        ASSERT_EQ(TestRunCommand(cmd, out), 0) << out;
    }
    for (int side : kArtIconSizes) {
        const std::string n =
            "/" + std::to_string(side) + "x" + std::to_string(side) + "/apps/quarrow.png";
        SCOPED_TRACE(n);
        std::string a = TestReadFile((base / "a" / "icons").string() + n);
        ASSERT_FALSE(a.empty());
        EXPECT_TRUE(a == TestReadFile((base / "b" / "icons").string() + n)) << "runs differ";
        EXPECT_TRUE(a == TestReadFile(TestBinaryDir() + "/icons" + n))
            << "the build holds an older icon";
    }
    fs::remove_all(base);
}

// The contact sheet shows the whole set in one picture.
TEST(Generator, ContactSheetShowsTheWholeSet) {
    fs::path sheet = fs::temp_directory_path() / ("sheet-" + std::to_string(getpid()) + ".png");
    std::string out;
    std::string cmd = std::string("'") + QUARROW_ARTGEN + "' --contact-sheet '" + sheet.string() +
                      "' '" + TestResourcesDir() + "'";
    ASSERT_EQ(TestRunCommand(cmd, out), 0) << out;
    std::vector<unsigned char> rgba;
    int w = 0, h = 0;
    ASSERT_TRUE(VXImageDecodePNGFile(sheet.string().c_str(), rgba, w, h));
    // Ten cells of 260 x 210 across, one cell per picture and the icon.
    EXPECT_EQ(w, 2600);
    EXPECT_EQ(h, 210 * ((kArtManifestCount + 1 + 9) / 10));
    fs::remove(sheet);
}
#endif
