// CTest label: package
// The Debian package as a player's computer meets it: the files it installs,
// the desktop's validators and lintian, and its launcher, run from a copy
// unpacked into a scratch root with scratch home folders.
//
// The package is built from this build folder by the package_build test, a
// CTest fixture these cases wait for; a case run on its own builds it first.
// Where a case needs to see the game's state, the unpacked game is replaced by
// a stub that records how the launcher started it and then runs the driver
// (the real game with its test seams) in its place; one case runs the
// packaged game itself.
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
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

// Every file the game reads, by name: the pictures, the window icon, the sounds.
std::set<std::string> GameFiles() {
    std::set<std::string> names = {kArtIconName};
    for (const ArtEntry& e : kArtManifest) names.insert(e.name);
    for (const SoundEntry& e : kSoundSet) names.insert(e.file);
    return names;
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

    std::map<std::string, std::string> expected = {
        {"usr/games/quarrow", "-rwxr-xr-x"},
        {"usr/lib/games/quarrow/quarrow", "-rwxr-xr-x"},
        {"usr/share/applications/quarrow.desktop", "-rw-r--r--"},
        {"usr/share/man/man6/quarrow.6.gz", "-rw-r--r--"},
        {"usr/share/doc/quarrow/copyright", "-rw-r--r--"},
        {"usr/share/doc/quarrow/changelog.Debian.gz", "-rw-r--r--"},
        {"usr/share/lintian/overrides/quarrow", "-rw-r--r--"},
    };
    for (const std::string& name : GameFiles())
        expected["usr/share/games/quarrow/Resources/" + name] = "-rw-r--r--";
    for (int side : {16, 32, 48, 64, 128, 256}) {
        const std::string n = std::to_string(side);
        expected["usr/share/icons/hicolor/" + n + "x" + n + "/apps/quarrow.png"] = "-rw-r--r--";
    }
    for (const auto& [path, mode] : expected) {
        ASSERT_TRUE(files.count(path)) << path << " is not in the package";
        EXPECT_EQ(mode, files[path]) << path;
    }
    // Besides those, the metainfo alone; no score file, no build stamps.
    std::vector<std::string> others;
    for (const auto& [path, mode] : files)
        if (!expected.count(path)) others.push_back(path);
    ASSERT_EQ(1u, others.size()) << "unexpected files, the first " << others[0];
    EXPECT_TRUE(
        std::regex_match(others[0], std::regex(R"(usr/share/metainfo/[^/]+\.metainfo\.xml)")))
        << others[0];

    ASSERT_EQ(0, TestRunCommand("dpkg-deb -f " + Quote(deb) + " Section Depends", out)) << out;
    EXPECT_NE(std::string::npos, out.find("Section: games")) << out;
    // dpkg-shlibdeps names the library packages of what the game links, each
    // with the least version that has the symbols it uses.
    for (const char* library : {"libsdl2-2.0-0 (>= ", "libglew2.2 (>= ", "libopenal1 (>= ",
                                "libpng16-16 (>= ", "libvorbisfile3 (>= "})
        EXPECT_NE(std::string::npos, out.find(library)) << library << " is missing from\n" << out;
}

// Unpacks the package into a scratch root.
void Unpack(const fs::path& root) {
    std::string out;
    ASSERT_EQ(0, TestRunCommand("dpkg-deb -x " + Quote(Deb()) + " " + Quote(root.string()), out))
        << out;
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
    const int lintian = TestRunCommand("lintian --tag-display-limit 0 " + Quote(Deb()), out);
    EXPECT_EQ(0, lintian) << out;
    EXPECT_FALSE(std::regex_search(out, std::regex("(^|\n)[EW]: "))) << out;

    // The desktop entry names an icon and a command the package has.
    const std::string entry = TestReadFile(desktop);
    EXPECT_NE(std::string::npos, entry.find("\nIcon=quarrow\n")) << entry;
    EXPECT_NE(std::string::npos, entry.find("\nExec=quarrow\n")) << entry;
    EXPECT_NE(std::string::npos, entry.find("\nCategories=Game;")) << entry;
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
    // Where the launcher started the game.
    std::string StartedIn() {
        std::istringstream in(TestReadFile(record));
        std::string folder, arguments;
        std::getline(in, folder);
        std::getline(in, arguments);
        return arguments == "0" ? folder : "(given " + arguments + " arguments) " + folder;
    }
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

TEST(Launcher, MakesThePlayersFolderWhereTheDataDirectorySaysAndStartsTheGameThere) {
    Install install;
    const fs::path home = install.scratch.dir / "home";
    const std::string data = (install.scratch.dir / "data").string();
    struct Case {
        const char* name;
        std::string dataHome; // "-": unset
        fs::path folder;
    } cases[] = {
        {"XDG_DATA_HOME unset", "-", home / ".local/share/quarrow"},
        {"XDG_DATA_HOME set", data, data + "/quarrow"},
        {"XDG_DATA_HOME empty", "", home / ".local/share/quarrow"},
        {"XDG_DATA_HOME relative: ignored", "data", home / ".local/share/quarrow"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        fs::remove_all(home);
        fs::remove_all(data);
        fs::create_directories(home);
        std::string out;
        EXPECT_EQ(7, install.Launch(home.string(), c.dataHome, out)) << "the game's own status";
        EXPECT_EQ("", out);
        EXPECT_EQ(c.folder.string(), install.StartedIn());
        ExpectLinked(install.installed, c.folder);
        EXPECT_EQ(GameFiles().size(),
                  (size_t)std::distance(fs::directory_iterator(c.folder / "Resources"),
                                        fs::directory_iterator{}));
    }
}

TEST(Launcher, AFolderLeftByAnOlderVersionGetsTheNewFilesAndKeepsTheRatings) {
    Install install;
    const fs::path home = install.scratch.dir / "home";
    const fs::path folder = home / ".local/share/quarrow";
    std::string out;
    ASSERT_EQ(7, install.Launch(home.string(), "-", out)) << out;
    const std::string ratings = "Level1:3\nLevel2:1\nLevel3:0\nLevel4:0\nLevel5:0\nLevel6:0\n";
    WriteFile(folder / "Resources/Scores.txt", ratings);
    // The player drew a cursor of their own.
    fs::remove(folder / "Resources/cursor.png");
    WriteFile(folder / "Resources/cursor.png", "mine");

    // The next version drops a picture and brings a new one.
    fs::remove(install.installed / "Resources/BG6.png");
    WriteFile(install.installed / "Resources/BG7.png", "new");
    ASSERT_EQ(7, install.Launch(home.string(), "-", out)) << out;
    EXPECT_EQ(folder.string(), install.StartedIn());
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
    struct Case {
        const char* name;
        std::string home, dataHome;
    } cases[] = {
        {"a data directory under a file", install.scratch.dir.string(),
         (blocker / "data").string()},
        {"no HOME and no data directory", "-", "-"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::string out;
        EXPECT_EQ(7, install.Launch(c.home, c.dataHome, out));
        EXPECT_EQ(install.installed.string(), install.StartedIn());
        EXPECT_NE(std::string::npos, out.find("quarrow: cannot write the game folder")) << out;
    }
}

// The world point (x, y) in a full-screen capture shows the menu's backdrop
// there: the picture is 1600 x 1200 for the 800 x 600 world, drawn filtered.
void ExpectBackdrop(const std::string& capture, float x, float y) {
    std::vector<unsigned char> shot, backdrop;
    int sw, sh, bw, bh;
    ASSERT_TRUE(VXImageDecodePNGFile(capture.c_str(), shot, sw, sh)) << capture;
    const std::string menu = TestResourcesDir() + "/MenuBG.png";
    ASSERT_TRUE(VXImageDecodePNGFile(menu.c_str(), backdrop, bw, bh));
    const TestRgba seen = TestPixelAtWorld(shot, sw, sh, x, y);
    const unsigned char* p =
        &backdrop[((size_t)((300 - y) * 2) * bw + (size_t)((x + 400) * 2)) * 4];
    // Neighbouring texels blend where the picture is scaled to the screen.
    constexpr TestTolerance kFilterTolerance = {"the backdrop's scaling filter", 24};
    EXPECT_TRUE(TestPixelNear(seen, TestRgba{p[0], p[1], p[2], p[3]}, kFilterTolerance))
        << "at (" << x << ", " << y << ")";
}

TEST(Launcher, TheGameReachesTheMenuAndEachPlayersRatingsStayInTheirHome) {
    Scratch scripts;
    const fs::path script = scripts.dir / "play";
    // Skip the splash, wait out the loading screen, choose level 1 (at world
    // (-350, 50), logical (50, 250)) and close the window in the level: the
    // level's end writes the score file. The state is read at the menu and
    // in the level. Another test's window appearing on the shared display
    // can move the cursor for a frame, so the level is clicked three times;
    // the next-level screen after a click that took takes no input.
    WriteFile(script, "1 tap space\n"
                      "400 report\n400 capture " +
                          (scripts.dir / "menu.png").string() +
                          "\n"
                          "410 click 50 250\n415 click 50 250\n420 click 50 250\n"
                          "800 report\n"
                          "810 close\n");
    Install install("exec " + Quote(TestDriverPath()) + " --seed 1 " + Quote(script.string()));
    const std::string buildScores = TestResourcesDir() + "/Scores.txt";
    const std::string buildScoresBefore = TestReadFile(buildScores);

    struct Player {
        const char* name;
        std::string scoresBefore; // "" for none
        std::string scoresAfter;  // as the game writes them, lines parted by |
    } players[] = {
        {"anna", "Level1: 3\nLevel2: 2\n", "Level1:3|Level2:2|Level3:0|Level4:0|Level5:0|Level6:0"},
        {"ben", "", "Level1:0|Level2:0|Level3:0|Level4:0|Level5:0|Level6:0"},
    };
    for (const Player& p : players) {
        SCOPED_TRACE(p.name);
        const fs::path home = install.scratch.dir / p.name;
        const fs::path folder = home / ".local/share/quarrow";
        if (!p.scoresBefore.empty()) {
            fs::create_directories(folder / "Resources");
            WriteFile(folder / "Resources/Scores.txt", p.scoresBefore);
        }
        std::string out;
        EXPECT_EQ(0, install.Launch(home.string(), "-", out)) << out;
        EXPECT_EQ(folder.string(), install.StartedIn());
        std::map<int, std::string> reports;
        std::istringstream lines(out);
        for (std::string line; std::getline(lines, line);) {
            std::smatch m;
            if (std::regex_match(line, m, std::regex(R"(report (\d+) (.*))")))
                reports[std::stoi(m[1])] = m[2];
        }
        EXPECT_NE(std::string::npos, reports[400].find("state=1 ")) << "the menu\n" << out;
        EXPECT_NE(std::string::npos, reports[800].find("state=2 level=1 ")) << "level 1\n" << out;
        std::string written = TestReadFile(folder / "Resources/Scores.txt");
        std::replace(written.begin(), written.end(), '\n', '|');
        EXPECT_EQ(p.scoresAfter + "|", written);
        for (auto [x, y] : {std::pair{-200.0f, -150.0f}, {150.0f, -100.0f}, {-150.0f, 0.0f}})
            ExpectBackdrop((scripts.dir / "menu.png").string(), x, y);
    }
    // No other score file anywhere: not in the unpacked game, not in the build.
    std::vector<std::string> scoreFiles;
    for (const auto& entry : fs::recursive_directory_iterator(install.scratch.dir))
        if (entry.path().filename() == "Scores.txt") scoreFiles.push_back(entry.path().string());
    EXPECT_EQ(2u, scoreFiles.size());
    EXPECT_EQ(buildScoresBefore, TestReadFile(buildScores)) << "the build's own score file changed";
}

TEST(Launcher, TheInstalledGameRunsInThePlayersFolderAndEndsInOrderWhenAsked) {
    Scratch scratch;
    const fs::path root = scratch.dir / "root", home = scratch.dir / "home";
    Unpack(root);
    // Start it, wait until its window has a GL context (the graphics driver
    // is loaded), let it play a while, and ask it to end as a desktop does
    // at logout. Leaks are left to the tests that run the game in-process or
    // through the driver: those keep the system's GL driver loaded, so that
    // its own allocations can be told apart; the game unloads it at exit.
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
