// CTest label: package
// The Debian package as a player's computer meets it: its files, the
// desktop's validators and lintian, and its launcher run from a copy unpacked
// into a scratch root with scratch homes, the game replaced by a stub that
// records how it was started and then runs the driver (one case runs the
// packaged game itself). The package_build fixture builds the package.
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "../tools/artgen/ArtManifest.h"
#include "../tools/soundgen/SoundManifest.h"
#include "TestSupport.h"
#include "VXImage.h"

namespace fs = std::filesystem;

namespace {

std::string Quote(const std::string& s) {
    std::string q = "'";
    for (char c : s) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

void WriteFile(const fs::path& path, const std::string& text, bool executable = false) {
    std::ofstream(path, std::ios::binary) << text;
    if (executable) fs::permissions(path, fs::perms::owner_all, fs::perm_options::add);
}

// The package this build makes, built here when the fixture has not run.
std::string Deb() {
    const fs::path dir = TestBinaryDir() + "/package";
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (fs::is_directory(dir))
            for (const auto& entry : fs::directory_iterator(dir))
                if (entry.path().extension() == ".deb") return entry.path().string();
        std::string out;
        TestRunCommand("cd " + Quote(TestBinaryDir()) + " && cpack -B package", out);
    }
    ADD_FAILURE() << "no package in " << dir;
    return "";
}

// A scratch folder, removed with everything in it.
struct Scratch {
    fs::path dir;
    Scratch() {
        char pattern[] = "/tmp/quarrow-package-XXXXXX";
        dir = mkdtemp(pattern) ? pattern : "";
    }
    ~Scratch() { fs::remove_all(dir); }
};

// Unpacks the package into a scratch root.
void Unpack(const fs::path& root) {
    std::string out;
    ASSERT_EQ(0, TestRunCommand("dpkg-deb -x " + Quote(Deb()) + " " + Quote(root.string()), out))
        << out;
}

TEST(Package, InstallsTheGameItsFilesAndTheDesktopsEntries) {
    const std::string deb = Deb();
    std::string out;
    ASSERT_EQ(0, TestRunCommand("dpkg-deb -c " + Quote(deb), out)) << out;
    // "-rw-r--r-- root/root 1234 2026-11-23 12:00 ./usr/games/quarrow"
    std::map<std::string, std::string> files; // path -> mode, plain files only
    std::istringstream lines(out);
    const std::regex entry(R"(^(\S+) (\S+) +\d+ \S+ \S+ \./(.*)$)");
    for (std::string line; std::getline(lines, line);) {
        std::smatch m;
        ASSERT_TRUE(std::regex_match(line, m, entry)) << line;
        EXPECT_EQ("root/root", m[2].str()) << line;
        if (m[1].str()[0] == '-') files[m[3]] = m[1];
    }
    const std::string x = "-rwxr-xr-x", r = "-rw-r--r--";
    std::map<std::string, std::string> expected = {
        {"usr/games/quarrow", x},
        {"usr/lib/games/quarrow/quarrow", x},
        {"usr/share/applications/quarrow.desktop", r},
        {"usr/share/man/man6/quarrow.6.gz", r},
        {"usr/share/doc/quarrow/copyright", r},
        {"usr/share/doc/quarrow/changelog.Debian.gz", r},
        {"usr/share/lintian/overrides/quarrow", r},
        {"usr/share/games/quarrow/Resources/" + std::string(kArtIconName), r},
    };
    for (const ArtEntry& e : kArtManifest)
        expected["usr/share/games/quarrow/Resources/" + std::string(e.name)] = r;
    for (const SoundEntry& e : kSoundSet)
        expected["usr/share/games/quarrow/Resources/" + std::string(e.file)] = r;
    for (const std::string n : {"16", "32", "48", "64", "128", "256"})
        expected["usr/share/icons/hicolor/" + n + "x" + n + "/apps/quarrow.png"] = r;
    // Besides those, the metainfo alone: no score file, no build stamps.
    int metainfo = 0;
    for (const auto& [path, mode] : files)
        if (std::regex_match(path, std::regex(R"(usr/share/metainfo/[^/]+\.metainfo\.xml)")))
            expected[path] = r, ++metainfo;
    EXPECT_EQ(metainfo, 1);
    for (const auto& [path, mode] : expected)
        EXPECT_EQ(mode, files.count(path) ? files[path] : "not in the package") << path;
    for (const auto& [path, mode] : files)
        EXPECT_TRUE(expected.count(path)) << "unexpected " << path;

    ASSERT_EQ(0, TestRunCommand("dpkg-deb -f " + Quote(deb) + " Section Depends", out)) << out;
    EXPECT_NE(std::string::npos, out.find("Section: games")) << out;
    // dpkg-shlibdeps names the library packages of what the game links, each
    // with the least version that has the symbols it uses.
    for (const char* library : {"libsdl2-2.0-0 (>= ", "libglew2.2 (>= ", "libopenal1 (>= ",
                                "libpng16-16 (>= ", "libvorbisfile3 (>= "})
        EXPECT_NE(std::string::npos, out.find(library)) << library << " is missing from\n" << out;
}

TEST(Package, PassesTheDesktopsValidatorsAndLintian) {
    Scratch scratch;
    const fs::path root = scratch.dir / "root";
    Unpack(root);
    std::string out;
    const fs::path desktop = root / "usr/share/applications/quarrow.desktop";
    EXPECT_EQ(0, TestRunCommand("desktop-file-validate " + Quote(desktop.string()), out)) << out;
    EXPECT_EQ("", out);
    EXPECT_EQ(0, TestRunCommand("appstreamcli validate --no-net " +
                                    Quote((root / "usr/share/metainfo").string()) + "/*.xml",
                                out))
        << out;
    EXPECT_EQ(0, TestRunCommand("lintian --tag-display-limit 0 " + Quote(Deb()), out)) << out;
    EXPECT_FALSE(std::regex_search(out, std::regex("(^|\n)[EW]: "))) << out;
    // The desktop entry names an icon and a command the package has.
    const std::string entry = TestReadFile(desktop);
    for (const char* line : {"\nIcon=quarrow\n", "\nExec=quarrow\n", "\nCategories=Game;"})
        EXPECT_NE(std::string::npos, entry.find(line)) << entry;
}

// The unpacked package with its game replaced by a stub that writes the
// folder it was started in and its argument count to `record`, then runs
// `then` (a shell command; by default it ends with status 7).
struct Install {
    Scratch scratch;
    fs::path root = scratch.dir / "root";
    fs::path installed = root / "usr/share/games/quarrow";
    fs::path record = scratch.dir / "record";

    explicit Install(const std::string& then = "exit 7") {
        Unpack(root);
        WriteFile(root / "usr/lib/games/quarrow/quarrow",
                  "#!/bin/sh\n{ pwd -P; echo $#; } > " + Quote(record.string()) + "\n" + then +
                      "\n",
                  true);
    }
    // Runs the launcher with HOME and XDG_DATA_HOME as given ("-" unsets);
    // returns its status, its output in `out`.
    int Launch(const std::string& home, const std::string& dataHome, std::string& out) {
        std::string env = "env -u HOME -u XDG_DATA_HOME";
        if (home != "-") env += " HOME=" + Quote(home);
        if (dataHome != "-") env += " XDG_DATA_HOME=" + Quote(dataHome);
        fs::remove(record);
        return TestRunCommand("cd " + Quote(scratch.dir.string()) + " && " + env + " " +
                                  Quote((root / "usr/games/quarrow").string()),
                              out);
    }
    // What the stub wrote: the folder the game started in and "0" arguments.
    std::string Started() { return TestReadFile(record); }
};

// Every installed file has its link in the player's Resources and nothing
// else is there but `own` (the player's own files).
void ExpectLinked(const fs::path& installed, const fs::path& folder,
                  const std::set<std::string>& own = {}) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(installed / "Resources")) {
        const std::string name = entry.path().filename().string();
        names.insert(name);
        if (own.count(name)) continue;
        const fs::path link = folder / "Resources" / name;
        EXPECT_TRUE(fs::is_symlink(link)) << link;
        EXPECT_TRUE(fs::exists(link) && fs::equivalent(link, entry.path())) << link;
    }
    for (const auto& entry : fs::directory_iterator(folder / "Resources")) {
        const std::string name = entry.path().filename().string();
        EXPECT_TRUE(names.count(name) || own.count(name)) << name << " should not be there";
    }
}

// The player's folder is made where the data directory says, every
// installed file linked, and the game started there without arguments.
TEST(Launcher, MakesThePlayersFolderWhereTheDataDirectorySaysAndStartsTheGameThere) {
    Install install;
    const fs::path home = install.scratch.dir / "home";
    const std::string data = (install.scratch.dir / "data").string();
    const std::pair<std::string, fs::path> cases[] = {
        // XDG_DATA_HOME ("-": unset), folder
        {"-", home / ".local/share/quarrow"},
        {data, data + "/quarrow"},
        {"", home / ".local/share/quarrow"},
        {"data", home / ".local/share/quarrow"}, // relative: ignored
    };
    for (const auto& [dataHome, folder] : cases) {
        SCOPED_TRACE("XDG_DATA_HOME " + dataHome);
        fs::remove_all(home);
        fs::remove_all(data);
        fs::create_directories(home);
        std::string out;
        EXPECT_EQ(7, install.Launch(home.string(), dataHome, out)) << "the game's own status";
        EXPECT_EQ("", out);
        EXPECT_EQ(folder.string() + "\n0\n", install.Started());
        ExpectLinked(install.installed, folder);
    }
}

// An upgrade: the folder an older version left gets the new files, loses
// links to dropped ones, and keeps the ratings and the player's own files.
TEST(Launcher, AFolderLeftByAnOlderVersionGetsTheNewFilesAndKeepsTheRatings) {
    Install install;
    const fs::path home = install.scratch.dir / "home", folder = home / ".local/share/quarrow";
    std::string out;
    ASSERT_EQ(7, install.Launch(home.string(), "-", out)) << out;
    const std::string ratings = "Level1:3\nLevel2:1\nLevel3:0\nLevel4:0\nLevel5:0\nLevel6:0\n";
    WriteFile(folder / "Resources/Scores.txt", ratings);
    fs::remove(folder / "Resources/cursor.png"); // the player drew a cursor of their own
    WriteFile(folder / "Resources/cursor.png", "mine");
    fs::remove(install.installed / "Resources/BG6.png");
    WriteFile(install.installed / "Resources/BG7.png", "new");
    ASSERT_EQ(7, install.Launch(home.string(), "-", out)) << out;
    EXPECT_EQ(folder.string() + "\n0\n", install.Started());
    EXPECT_FALSE(fs::is_symlink(folder / "Resources/BG6.png")) << "a link to nothing is left";
    EXPECT_EQ("new", TestReadFile(folder / "Resources/BG7.png"));
    ExpectLinked(install.installed, folder, {"Scores.txt", "cursor.png"});
    EXPECT_FALSE(fs::is_symlink(folder / "Resources/Scores.txt"));
    EXPECT_EQ(ratings, TestReadFile(folder / "Resources/Scores.txt"));
    EXPECT_EQ("mine", TestReadFile(folder / "Resources/cursor.png"));
}

TEST(Launcher, AFolderThatCannotBeMadeLeavesTheGameToPlayWithoutRatings) {
    Install install;
    const fs::path blocker = install.scratch.dir / "a-file";
    WriteFile(blocker, "");
    const std::pair<std::string, std::string> cases[] = {
        // HOME, XDG_DATA_HOME ("-": unset)
        {install.scratch.dir.string(), (blocker / "data").string()}, // under a file
        {"-", "-"},
    };
    for (const auto& [home, dataHome] : cases) {
        SCOPED_TRACE("HOME " + home + ", XDG_DATA_HOME " + dataHome);
        std::string out;
        EXPECT_EQ(7, install.Launch(home, dataHome, out));
        EXPECT_EQ(install.installed.string() + "\n0\n", install.Started());
        EXPECT_NE(std::string::npos, out.find("quarrow: cannot write the game folder")) << out;
    }
}

// Two players: the game reaches the menu (its backdrop on screen) and level
// 1, and the ratings the level's end writes land in each player's HOME and
// nowhere else. The script skips the splash, waits out the loading screen,
// clicks level 1 (world (-350, 50), logical (50, 250)) three times, as
// another test's window on the shared display can move the cursor for a
// frame (the next-level screen takes no input after a click that took),
// and closes the window in the level.
TEST(Launcher, TheGameReachesTheMenuAndEachPlayersRatingsStayInTheirHome) {
    Scratch scripts;
    const fs::path script = scripts.dir / "play", menu = scripts.dir / "menu.png";
    WriteFile(script, "1 tap space\n400 report\n400 capture " + menu.string() +
                          "\n410 click 50 250\n415 click 50 250\n420 click 50 250\n"
                          "800 report\n810 close\n");
    Install install("exec " + Quote(TestDriverPath()) + " --seed 1 " + Quote(script.string()));
    const std::string buildScores = TestResourcesDir() + "/Scores.txt";
    const std::string buildScoresBefore = TestReadFile(buildScores);
    const std::tuple<std::string, std::string, std::string> players[] = {
        // name, score file before ("" for none), after (lines parted by |)
        {"anna", "Level1: 3\nLevel2: 2\n",
         "Level1:3|Level2:2|Level3:0|Level4:0|Level5:0|Level6:0|"},
        {"ben", "", "Level1:0|Level2:0|Level3:0|Level4:0|Level5:0|Level6:0|"},
    };
    std::vector<unsigned char> backdrop;
    int bw, bh;
    ASSERT_TRUE(
        VXImageDecodePNGFile((TestResourcesDir() + "/MenuBG.png").c_str(), backdrop, bw, bh));
    for (const auto& [name, before, after] : players) {
        SCOPED_TRACE(name);
        const fs::path home = install.scratch.dir / name, folder = home / ".local/share/quarrow";
        if (!before.empty()) {
            fs::create_directories(folder / "Resources");
            WriteFile(folder / "Resources/Scores.txt", before);
        }
        std::string out;
        EXPECT_EQ(0, install.Launch(home.string(), "-", out)) << out;
        EXPECT_EQ(folder.string() + "\n0\n", install.Started());
        EXPECT_TRUE(std::regex_search(out, std::regex("(^|\n)report 400 state=1 "))) << "the menu\n"
                                                                                     << out;
        EXPECT_TRUE(std::regex_search(out, std::regex("(^|\n)report 800 state=2 level=1 ")))
            << "level 1\n"
            << out;
        std::string written = TestReadFile(folder / "Resources/Scores.txt");
        std::replace(written.begin(), written.end(), '\n', '|');
        EXPECT_EQ(after, written);
        // The menu's backdrop, 1600 x 1200 for the 800 x 600 world, where no
        // button or cloud lies; neighbouring texels blend where it is scaled.
        std::vector<unsigned char> shot;
        int sw, sh;
        ASSERT_TRUE(VXImageDecodePNGFile(menu.c_str(), shot, sw, sh));
        constexpr TestTolerance kFilterTolerance = {"the backdrop's scaling filter", 24};
        for (auto [x, y] : {std::pair{-200.0f, -150.0f}, {150.0f, -100.0f}, {-150.0f, 0.0f}}) {
            const unsigned char* p =
                &backdrop[(size_t((300 - y) * 2) * bw + size_t((x + 400) * 2)) * 4];
            EXPECT_TRUE(TestPixelNear(TestPixelAtWorld(shot, sw, sh, x, y),
                                      TestRgba{p[0], p[1], p[2], p[3]}, kFilterTolerance))
                << "at (" << x << ", " << y << ")";
        }
        fs::remove(menu);
    }
    int scoreFiles = 0; // the players' two; none in the unpacked game
    for (const auto& entry : fs::recursive_directory_iterator(install.scratch.dir))
        scoreFiles += entry.path().filename() == "Scores.txt";
    EXPECT_EQ(2, scoreFiles);
    EXPECT_EQ(buildScoresBefore, TestReadFile(buildScores)) << "the build's own score file changed";
}

// The packaged game itself: started by the launcher, it gets its window and
// GL context (the graphics driver loaded), runs in the player's folder, and
// ends in order when asked as a desktop does at logout. Leaks are left to
// the tests that run the game in-process or through the driver: those keep
// the system's GL driver loaded so its own allocations can be told apart.
TEST(Launcher, TheInstalledGameRunsInThePlayersFolderAndEndsInOrderWhenAsked) {
    Scratch scratch;
    const fs::path root = scratch.dir / "root", home = scratch.dir / "home";
    Unpack(root);
    std::string out;
    const int status = TestRunCommand(
        "cd " + Quote(scratch.dir.string()) +
            " && ASAN_OPTIONS=\"$ASAN_OPTIONS:detect_leaks=0\" env -u XDG_DATA_HOME HOME=" +
            Quote(home.string()) + " " + Quote((root / "usr/games/quarrow").string()) +
            " & pid=$!; for i in $(seq 600); do grep -q _dri /proc/$pid/maps 2>/dev/null && break; "
            "sleep 0.1; done; sleep 2; echo \"cwd=$(readlink /proc/$pid/cwd)\"; "
            "kill -TERM $pid; wait $pid",
        out);
    EXPECT_EQ(0, status) << out;
    EXPECT_NE(std::string::npos, out.find("cwd=" + (home / ".local/share/quarrow").string() + "\n"))
        << out;
    EXPECT_NE(std::string::npos, out.find("Vexa Engine version: 3.05")) << out;
    ExpectLinked(root / "usr/share/games/quarrow", home / ".local/share/quarrow");
}

} // namespace
