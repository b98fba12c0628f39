// CTest label: tools
// The pictures in Resources: every name the game opens is drawn at the size
// and grid the game shows it in, the pictures sit where the game needs them
// (cursor tip, health-bar window, overlays, rating art), board and monsters
// stand out on every level, the generator is deterministic, the folder small.
#include "TestSupport.h"
#include "VXImage.h"

#include "../tools/artgen/ArtManifest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <regex>
#include <set>
#include <cstring>
#include <string>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

struct Picture {
    std::vector<unsigned char> rgba;
    int width = 0, height = 0;
    int columns = 1, rows = 1, cw = 0, ch = 0; // the sheet's grid and cell size
    const unsigned char* At(int x, int y) const { return &rgba[(size_t(y) * width + x) * 4]; }
    int Alpha(int x, int y) const { return At(x, y)[3]; }
};

// Loads a picture of Resources with its grid from the list.
testing::AssertionResult Load(const std::string& name, Picture& p) {
    if (!VXImageDecodePNGFile((TestResourcesDir() + "/" + name).c_str(), p.rgba, p.width, p.height))
        return testing::AssertionFailure() << name << " is missing or undecodable";
    if (const ArtEntry* e = ArtFind(name.c_str())) p.columns = e->columns, p.rows = e->rows;
    p.cw = p.width / p.columns, p.ch = p.height / p.rows;
    return testing::AssertionSuccess();
}

// How the game draws each picture: the world size of one shown cell and the
// sheet's grid, from the objects' scales (a quad of scale (sx, sy) is 2sx x 2sy),
// for the pictures named by a pattern (less ".png").
struct DrawnAs {
    double worldW, worldH;
    int columns, rows;
    const char* names;
};

const DrawnAs kDrawnAs[] = {
    // Goblins size 20, kings 30; spiders and yeti 30, wraith 50; towers 20
    // (top-left cell shown); crystal 30; health-bar frame (48, 130).
    {40, 40, 5, 2, "(Beach)?GoblinWalking|GoblinAttack"},
    {60, 60, 5, 2, "(Beach)?GoblinBossWalk"},
    {60, 60, 2, 2, "Spider(Walk|Attack)|BroodWalk"},
    {60, 60, 4, 2, "Yeti(Walk|Attack)"},
    {100, 100, 4, 2, "WraithWalk"},
    {40, 40, 4, 2, "ArcherT[12]"},
    {60, 60, 1, 1, "crystal"},
    {96, 260, 1, 1, "Layer 2[34]"},
    // Whole-screen pictures (400, 300), the pause help, the credits scroll.
    {800, 600, 1, 1,
     "BG[3-6]?|MenuBG|pauseM|cfmBG|optionBG|WinScreen|LoseScreen|NextScreen|"
     "howtoplay|TolvernSG_Logo_CMYK-RED|MosswickLogo"},
    {700, 500, 1, 1, "howtoplayPause"},
    {800, 8000, 1, 1, "Credit"},
    // Signs: tutorial (140, 40), countdown (100, 150), banner (100, 30).
    {280, 80, 1, 1, "tutorial[123]|t[12]help"},
    {200, 300, 1, 1, "[123s]"},
    {200, 60, 1, 1, "wave[123]|lvl1wave[12]"},
    // Buttons (60, 30); square buttons and leaves (30, 30).
    {120, 60, 1, 1,
     "btn(Resume|Restart|Exit|Help|Credits|Mute|Unmute|Option|Quit|Yes|No|Back|Continue)[UH]"},
    {60, 60, 1, 1, "(button-pause|btn[1-6])[UH]|btnLock|Leaf(Coloured|BG)"},
    // Clouds (100, 50), stars (130, 60), star panel (135, 65), cursor (10,
    // 20), loading strip (100, 30) showing one of 10 frames.
    {200, 100, 1, 1, "cloud[123]"},
    {260, 120, 1, 1, "[123]star"},
    {270, 130, 1, 1, "lvlStarBG"},
    {20, 40, 1, 1, "cursor"},
    {200, 60, 10, 1, "loading"},
};

const char* const kMonsterSheets[] = {
    "GoblinWalking.png",      "GoblinAttack.png",        "GoblinBossWalk.png",
    "BeachGoblinWalking.png", "BeachGoblinBossWalk.png", "SpiderWalk.png",
    "SpiderAttack.png",       "BroodWalk.png",           "YetiWalk.png",
    "YetiAttack.png",         "WraithWalk.png"};

} // namespace

// The list names exactly the pictures the game draws, once each, at about
// two pixels a unit (one where the 8192-pixel limit forbids two), square
// pixels and whole cells.
TEST(ArtManifest, NamesEveryDrawnPictureOnceAtItsDrawnSize) {
    std::set<std::string> listed;
    std::vector<std::regex> patterns;
    for (const DrawnAs& g : kDrawnAs) patterns.emplace_back(g.names);
    for (const ArtEntry& e : kArtManifest) {
        SCOPED_TRACE(e.name);
        EXPECT_TRUE(listed.insert(e.name).second) << "listed twice";
        const std::string stem = std::string(e.name).substr(0, std::strlen(e.name) - 4);
        const DrawnAs* d = nullptr;
        for (const DrawnAs& g : kDrawnAs)
            if (std::regex_match(stem, patterns[&g - kDrawnAs])) {
                EXPECT_EQ(d, nullptr) << "drawn two ways";
                d = &g;
            }
        ASSERT_NE(d, nullptr) << "the game does not draw it";
        EXPECT_EQ(e.columns, d->columns);
        EXPECT_EQ(e.rows, d->rows);
        EXPECT_EQ(e.width % e.columns, 0);
        EXPECT_EQ(e.height % e.rows, 0);
        double sx = double(e.width) / e.columns / d->worldW;
        double sy = double(e.height) / e.rows / d->worldH;
        EXPECT_NEAR(sx, sy, 0.02 * sx) << "pixels are not square when drawn";
        bool tooBig = d->worldW * 2 * d->columns > 8192 || d->worldH * 2 * d->rows > 8192;
        EXPECT_NEAR(sx, tooBig ? 1.0 : 2.0, 0.25);
        EXPECT_LE(std::max(e.width, e.height), 8192);
    }
    EXPECT_EQ(kArtManifestCount, 99);
}

// Every picture name written in the game's code is one the generator makes.
TEST(ArtManifest, CoversEveryNameInTheGameCode) {
    std::regex literal(R"re("(?:\./)?Resources/([^"]+\.(?:png|ico))")re");
    for (const auto& entry : fs::directory_iterator(TestSourceDir() + "/game")) {
        if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h") continue;
        std::string text = TestReadFile(entry.path().string());
        for (std::sregex_iterator it(text.begin(), text.end(), literal), end; it != end; ++it)
            EXPECT_TRUE((*it)[1] == kArtIconName || ArtFind((*it)[1].str().c_str()))
                << entry.path().filename() << " opens " << (*it)[1] << ", which no generator makes";
    }
}

// Every picture decodes at its listed size with every cell over 5 % inked;
// sheet poses keep off their cells' edges (nearest sampling would show a
// sliver of the neighbour) and a sheet is not one frozen pose; every
// button's highlighted look has the normal look's size but differs.
TEST(Pictures, EveryCellDrawnInsideItsEdgesAndEveryButtonLit) {
    int pairs = 0;
    for (const ArtEntry& e : kArtManifest) {
        SCOPED_TRACE(e.name);
        Picture p;
        ASSERT_TRUE(Load(e.name, p));
        ASSERT_EQ(p.width, e.width);
        ASSERT_EQ(p.height, e.height);
        std::set<std::vector<unsigned char>> poses;
        for (int r = 0; r < e.rows; ++r)
            for (int c = 0; c < e.columns; ++c) {
                long inked = 0, edge = 0;
                std::vector<unsigned char> cell;
                for (int y = r * p.ch; y < (r + 1) * p.ch; ++y) {
                    for (int x = c * p.cw; x < (c + 1) * p.cw; ++x) {
                        inked += p.Alpha(x, y) > 0;
                        edge += p.Alpha(x, y) > 0 && (x % p.cw == 0 || x % p.cw == p.cw - 1 ||
                                                      y % p.ch == 0 || y % p.ch == p.ch - 1);
                    }
                    cell.insert(cell.end(), p.At(c * p.cw, y), p.At(c * p.cw, y) + p.cw * 4);
                }
                EXPECT_GT(inked, long(p.cw) * p.ch / 20) << "cell " << c << "," << r << " is empty";
                EXPECT_TRUE(e.columns * e.rows == 1 || edge == 0)
                    << "cell " << c << "," << r << " touches its edge in " << edge << " pixels";
                poses.insert(cell);
            }
        EXPECT_TRUE(e.columns * e.rows == 1 || poses.size() > 1) << "every cell the same pose";
        std::string h = e.name;
        if (h.size() < 6 || h.compare(h.size() - 5, 5, "U.png") != 0) continue;
        h.replace(h.size() - 5, 1, "H");
        Picture lit;
        ASSERT_TRUE(Load(h, lit)) << "no highlighted look";
        EXPECT_EQ(lit.width, p.width);
        EXPECT_EQ(lit.height, p.height);
        EXPECT_TRUE(lit.rgba != p.rgba) << "both looks are the same picture";
        ++pairs;
    }
    EXPECT_EQ(pairs, 20); // 13 word buttons, the pause button, six level buttons
}

// The window icon holds the crystal at every size a desktop asks for, each
// entry the very picture of the desktop's icon of that size, and no other.
TEST(Pictures, IconHoldsEverySizeOfTheDesktopsIcons) {
    const std::string ico = TestResourcesDir() + "/" + kArtIconName;
    for (int side : {16, 32, 48, 64, 128, 256}) {
        const std::string n = std::to_string(side);
        SCOPED_TRACE(n + " x " + n);
        std::vector<unsigned char> entry;
        ASSERT_TRUE(VXImageDecodeIcoFile(ico.c_str(), side, entry));
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
    EXPECT_FALSE(VXImageDecodeIcoFile(ico.c_str(), 24, rgba)) << "no 24 x 24 entry was drawn";
}

// The cursor is drawn centred on the mouse point, so its tip is the centre:
// that pixel is inked and nothing lies above or left of it.
TEST(Pictures, CursorTipIsThePictureCentre) {
    Picture p;
    ASSERT_TRUE(Load("cursor.png", p));
    const int cx = p.width / 2, cy = p.height / 2;
    EXPECT_GT(p.Alpha(cx, cy), 200) << "tip pixel (" << cx << ", " << cy << ") is not inked";
    int stray = 0;
    for (int y = 0; y < p.height; ++y)
        for (int x = 0; x < p.width; ++x) stray += (x < cx || y < cy) && p.Alpha(x, y) > 0;
    EXPECT_EQ(stray, 0) << "pixels above or left of the tip";
}

// The bar's frame (quad x 312..408, y -130..130) is drawn over the green
// fill (x 340..360, y -100..100 at full health): clear exactly over the
// fill, solid in a two-unit ring around it.
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
                double wx = 312 + (x + 0.5) * unitsPerPx, wy = 130 - (y + 0.5) * unitsPerPx;
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

// Pictures that cover the whole screen alone have no holes for the clear
// colour to show through; the splash logos stand on black corners.
TEST(Pictures, WholeScreenPicturesAreOpaqueAndLogosStandOnBlack) {
    for (const std::string name :
         {"BG.png", "BG3.png", "BG4.png", "BG5.png", "BG6.png", "MenuBG.png", "NextScreen.png",
          "howtoplay.png", "Credit.png", "TolvernSG_Logo_CMYK-RED.png", "MosswickLogo.png"}) {
        SCOPED_TRACE(name);
        Picture p;
        ASSERT_TRUE(Load(name, p));
        long holes = 0;
        for (size_t i = 3; i < p.rgba.size(); i += 4) holes += p.rgba[i] != 255;
        EXPECT_EQ(holes, 0);
        if (name.find("Logo") == std::string::npos) continue;
        for (int y : {0, p.height - 1})
            for (int x : {0, p.width - 1})
                EXPECT_EQ(p.At(x, y)[0] + p.At(x, y)[1] + p.At(x, y)[2], 0)
                    << "corner " << x << "," << y;
    }
}

// An overlay dims the frozen screen under it (corners see-through but not
// clear) and frames its buttons (solid under each button's world centre).
TEST(Pictures, OverlaysDimTheScreenAndFrameTheirButtons) {
    const std::pair<const char*, std::vector<std::pair<double, double>>> overlays[] = {
        {"pauseM.png", {{0, 20}, {0, -45}, {0, -110}, {300, 180}, {300, 120}}},
        {"cfmBG.png", {{-75, -25}, {75, -25}}},
        {"optionBG.png", {{-75, -25}, {75, -25}}},
        {"WinScreen.png", {{-75, -155}, {75, -155}, {10, -50}}},
        {"LoseScreen.png", {{-75, -25}, {75, -25}}},
    };
    for (const auto& [name, buttons] : overlays) {
        SCOPED_TRACE(name);
        Picture p;
        ASSERT_TRUE(Load(name, p));
        const double pxPerUnit = p.width / 800.0;
        for (auto [x, y] : buttons)
            EXPECT_EQ(p.Alpha(int((x + 400) * pxPerUnit), int((300 - y) * pxPerUnit)), 255)
                << "no frame under the button at " << x << "," << y;
        for (int y : {2, p.height - 3})
            for (int x : {2, p.width - 3}) {
                EXPECT_GT(p.Alpha(x, y), 0) << "corner not dimmed";
                EXPECT_LT(p.Alpha(x, y), 255) << "corner hides the screen";
            }
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

// Colour c at alpha a (0..1) over colour under.
Rgb3 Over(Rgb3 c, double a, Rgb3 under) {
    return {c.r * a + under.r * (1 - a), c.g * a + under.g * (1 - a), c.b * a + under.b * (1 - a)};
}

// The ground under screen point (x, y): grounds fill the 800 x 600 screen.
Rgb3 GroundAt(const Picture& p, double x, double y) {
    const unsigned char* c = p.At(std::clamp(int(x * p.width / 800), 0, p.width - 1),
                                  std::clamp(int(y * p.height / 600), 0, p.height - 1));
    return {double(c[0]), double(c[1]), double(c[2])};
}

// A tile over the ground: grey 0xEE at alpha 0xEE/255 times the 0.7 tint.
Rgb3 TileOver(Rgb3 ground) {
    return Over({238, 238, 238}, 238.0 / 255 * 0.7, ground);
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
                double cx, cy, nx, ny;
                TileCentre(row, col, cx, cy);
                // The rows above and below sit half a tile across.
                const int shift = row % 2 == 0 ? -1 : 0;
                const int nb[6][2] = {{0, -1},         {0, 1},     {-1, shift},
                                      {-1, shift + 1}, {1, shift}, {1, shift + 1}};
                for (auto& n : nb) {
                    if (OnBoard(g, row + n[0], col + n[1])) continue;
                    TileCentre(row + n[0], col + n[1], nx, ny);
                    const double dx = (nx - cx) / std::hypot(nx - cx, ny - cy);
                    const double dy = (ny - cy) / std::hypot(nx - cx, ny - cy);
                    const double apothem = 26; // half the tile's 52-unit width
                    double ox = cx + dx * (apothem + 4), oy = cy + dy * (apothem + 4);
                    if (ox < 0 || ox >= 800 || oy < 0 || oy >= 600) continue;
                    Rgb3 tile = TileOver(
                        GroundAt(ground, cx + dx * (apothem - 3), cy + dy * (apothem - 3)));
                    double ratio = Contrast(tile, GroundAt(ground, ox, oy));
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
    for (const char* name : kMonsterSheets) {
        SCOPED_TRACE(name);
        Picture p;
        ASSERT_TRUE(Load(name, p));
        auto opaque = [&](int x, int y) { return p.Alpha(x, y) >= 128; };
        for (int cell = 0; cell < p.columns * p.rows; ++cell) {
            const int x0 = (cell % p.columns) * p.cw, y0 = (cell / p.columns) * p.ch;
            for (const Rgb3& tile : extremes) {
                int rim = 0, low = 0;
                for (int y = y0 + 1; y < y0 + p.ch - 1; ++y)
                    for (int x = x0 + 1; x < x0 + p.cw - 1; ++x) {
                        if (!opaque(x, y) || (opaque(x - 1, y) && opaque(x + 1, y) &&
                                              opaque(x, y - 1) && opaque(x, y + 1)))
                            continue;
                        double best = 1;
                        for (int ny = y - 1; ny <= y + 1; ++ny)
                            for (int nx = x - 1; nx <= x + 1; ++nx) {
                                if (!opaque(nx, ny)) continue;
                                const unsigned char* c = p.At(nx, ny);
                                Rgb3 seen = Over({double(c[0]), double(c[1]), double(c[2])},
                                                 c[3] / 255.0, tile);
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
            if (std::max({p.At(x, y)[0], p.At(x, y)[1], p.At(x, y)[2]}) <= kSkyChannel) continue;
            if (lit++ == 0) firstY = y;
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
                if (p.Alpha(x, y) >= 128) left = std::min(left, x), right = std::max(right, x);
        ASSERT_GE(right, left) << "nothing drawn";
        const double centre =
            c.drawnCentre - c.drawnWidth / 2 + (left + right + 1) / 2.0 * c.drawnWidth / p.width;
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
                if (dialog.Alpha(x, y) < kCovering && shows++ == 0) firstX = x, firstY = y;
            }
        ASSERT_GT(menu, 1000) << "the pause menu's ribbon is not where it was looked for";
        EXPECT_EQ(shows, 0) << "expected every opaque pause-menu pixel (alpha >= kOpaque "
                            << kOpaque << ") under dialog alpha >= kCovering " << kCovering
                            << ", actual " << shows << " showing, first at (" << firstX << ", "
                            << firstY << ")";
    }
}

// The loading screen's clock moves on two cells every half second, so a
// player sees cells 1, 3, 5, 7, 9 or 0, 2, 4, 6, 8. Along either the lit gem
// (the tallest opaque column right of the word, which ends before 64 % of
// the cell) steps evenly to the right.
TEST(Pictures, LoadingLightStepsEvenlyAlongEitherShownSequence) {
    Picture p;
    ASSERT_TRUE(Load("loading.png", p));
    auto litX = [&](int cell) {
        int best = -1, bestH = 0;
        for (int x = p.cw * 64 / 100; x < p.cw; ++x) {
            int h = 0;
            for (int y = 0; y < p.height; ++y) h += p.Alpha(cell * p.cw + x, y) >= 128;
            if (h > bestH) bestH = h, best = x;
        }
        return best;
    };
    const int kStepTolerancePx = 2;
    for (int start = 0; start < 2; ++start) {
        SCOPED_TRACE("cells from " + std::to_string(start));
        const int step = litX(start + 2) - litX(start);
        EXPECT_GT(step, 0) << "the light does not move right";
        for (int k = start + 4; k < 10; k += 2)
            EXPECT_NEAR(litX(k) - litX(k - 2), step, kStepTolerancePx)
                << "cell " << k << ": expected a step of " << step << " px (kStepTolerancePx "
                << kStepTolerancePx << "), actual " << litX(k) - litX(k - 2);
    }
}

// A monster strikes the crystal from right on top of it (centres within a
// few units) and the crystal is drawn after it: in every strike pose most
// of the monster still shows round the gem. Goblins and yetis strike with
// their attack sheets, the other kinds in their walking poses.
TEST(Pictures, StrikesShowAroundTheCrystal) {
    Picture crystal;
    ASSERT_TRUE(Load("crystal.png", crystal));
    const double kCrystalUnits = 60;
    const double kMinVisibleShare = 0.5; // of the pose's opaque area
    const std::pair<const char*, double> strikers[] = {
        // sheet, drawn size of one cell
        {"GoblinAttack.png", 40},        {"BeachGoblinWalking.png", 40}, {"GoblinBossWalk.png", 60},
        {"BeachGoblinBossWalk.png", 60}, {"SpiderAttack.png", 60},       {"BroodWalk.png", 60},
        {"YetiAttack.png", 60}};
    for (const auto& [sheet, units] : strikers) {
        SCOPED_TRACE(sheet);
        Picture p;
        ASSERT_TRUE(Load(sheet, p));
        for (int cell = 0; cell < p.columns * p.rows; ++cell) {
            const int x0 = (cell % p.columns) * p.cw, y0 = (cell / p.columns) * p.ch;
            int opaque = 0, visible = 0;
            // Sample the pose at a quarter unit, centred on the crystal.
            for (double v = 0.125; v < units; v += 0.25)
                for (double u = 0.125; u < units; u += 0.25) {
                    if (p.Alpha(x0 + int(u / units * p.cw), y0 + int(v / units * p.ch)) < 128)
                        continue;
                    ++opaque;
                    double cu = u - units / 2 + kCrystalUnits / 2;
                    double cv = v - units / 2 + kCrystalUnits / 2;
                    visible += !(cu >= 0 && cu < kCrystalUnits && cv >= 0 && cv < kCrystalUnits &&
                                 crystal.Alpha(int(cu / kCrystalUnits * crystal.width),
                                               int(cv / kCrystalUnits * crystal.height)) >= 128);
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
// build's own Resources and icons (so those are up to date); its contact
// sheet shows the whole set, ten 260 x 210 cells across.
TEST(Generator, TwoRunsGiveIdenticalFilesAndTheContactSheetShowsThemAll) {
    const fs::path base = fs::temp_directory_path() / ("artgen-" + std::to_string(getpid()));
    const std::string artgen = std::string("'") + QUARROW_ARTGEN + "' ";
    fs::create_directories(base);
    std::string out;
    for (const char* run : {"a", "b"}) {
        const std::string dir = "'" + (base / run).string();
        ASSERT_EQ(
            TestRunCommand(artgen + dir + "' && " + artgen + "--icons " + dir + "/icons'", out), 0)
            << out;
    }
    std::vector<std::pair<std::string, std::string>> files = {
        {kArtIconName, TestResourcesDir() + "/" + kArtIconName}};
    for (const ArtEntry& e : kArtManifest)
        files.push_back({e.name, TestResourcesDir() + "/" + e.name});
    for (int side : kArtIconSizes) {
        const std::string n =
            "icons/" + std::to_string(side) + "x" + std::to_string(side) + "/apps/quarrow.png";
        files.push_back({n, TestBinaryDir() + "/" + n});
    }
    for (const auto& [name, built] : files) {
        SCOPED_TRACE(name);
        std::string a = TestReadFile((base / "a" / name).string());
        ASSERT_FALSE(a.empty());
        EXPECT_TRUE(a == TestReadFile((base / "b" / name).string())) << "runs differ";
        EXPECT_TRUE(a == TestReadFile(built)) << "the build holds an older picture";
    }
    const std::string sheet = (base / "sheet.png").string();
    ASSERT_EQ(TestRunCommand(
                  artgen + "--contact-sheet '" + sheet + "' '" + TestResourcesDir() + "'", out),
              0)
        << out;
    Picture p;
    ASSERT_TRUE(VXImageDecodePNGFile(sheet.c_str(), p.rgba, p.width, p.height));
    EXPECT_EQ(p.width, 2600);
    EXPECT_EQ(p.height, 210 * ((kArtManifestCount + 1 + 9) / 10));
    fs::remove_all(base);
}
#endif
