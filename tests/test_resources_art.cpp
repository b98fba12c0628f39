// CTest label: tools
// The pictures in Resources: every name the game opens exists and decodes,
// sizes and sprite-sheet grids fit how the game draws them, the cursor's tip
// and the health bar's window sit where the game needs them, the generator
// is deterministic, and the whole folder stays small.
#include "TestSupport.h"
#include "VXImage.h"

#include "../tools/artgen/ArtManifest.h"

#include <gtest/gtest.h>

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

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
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
        std::string text = ReadFile(entry.path().string());
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
        std::string a = ReadFile((base / "a" / n).string());
        std::string b = ReadFile((base / "b" / n).string());
        ASSERT_FALSE(a.empty());
        EXPECT_TRUE(a == b) << "runs differ";
        EXPECT_TRUE(a == ReadFile(ResourcePath(n))) << "Resources holds an older picture";
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
        std::string a = ReadFile((base / "a" / "icons").string() + n);
        ASSERT_FALSE(a.empty());
        EXPECT_TRUE(a == ReadFile((base / "b" / "icons").string() + n)) << "runs differ";
        EXPECT_TRUE(a == ReadFile(TestBinaryDir() + "/icons" + n))
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
