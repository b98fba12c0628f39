// CTest label: long
// The game's own files missing or damaged, as they may be on a player's
// machine: each picture, each sound and the icon removed in turn, then every
// picture, sound and icon damaged at once (cut short, noise, absurd
// headers). Each time the real game plays from the splash into level 1 and
// through its first wave, under the sanitizers: it must get there and end
// in order, show the 8 x 8 placeholder where a picture is missing, and keep
// a missing sound's slot silent. The same road with nothing missing shows
// what the checks look for: no placeholder anywhere, the sounds playing.
//
// A file the road never opens cannot change it. The run with nothing
// missing watches its own copy of the files (inotify) and proves the road
// opens exactly kRoadFiles; those are removed one at a time, and all the
// others together in one run, which must play exactly as the road with
// nothing missing.
#include <gtest/gtest.h>

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "Audio.h"
#include "DamagedFiles.h"
#include "GamePlay.h"
#include "GameStateManager.h"
#include "PlayerMoves.h"
#include "TestSupport.h"
#include "VXSeam.h"

namespace fs = std::filesystem;

namespace {

const char* const kNothing = "(nothing)";
const char* const kOffTheRoad = "(every file off the road)";

// Every file the road opens (the score file aside): the splash's logos, the
// interface art, the menu, the next-level screen, level 1 and its sounds.
const std::set<std::string> kRoadFiles = {"06 - Gypsy Songs for Violin and Orchestra.ogg",
                                          "1.png",
                                          "18 - Symphony No 1 in C Major, III Presto.ogg",
                                          "2.png",
                                          "24 - Arrow Swoosh.ogg",
                                          "3.png",
                                          "47 - FOREST, FANTASY MYSTICAL FOREST AMBIENCE.ogg",
                                          "53 - Ice Man.ogg",
                                          "ArcherT1.png",
                                          "ArcherT2.png",
                                          "BG.png",
                                          "DrumsComedy CTE10_45.4.ogg",
                                          "GoblinAttack.png",
                                          "GoblinWalking.png",
                                          "Layer 23.png",
                                          "Layer 24.png",
                                          "LeafBG.png",
                                          "LoseScreen.png",
                                          "MenuBG.png",
                                          "MosswickLogo.png",
                                          "NextScreen.png",
                                          "TolvernSG_Logo_CMYK-RED.png",
                                          "WinScreen.png",
                                          "btn1H.png",
                                          "btn1U.png",
                                          "btn2U.png",
                                          "btn3U.png",
                                          "btn4U.png",
                                          "btn5U.png",
                                          "btn6U.png",
                                          "btnCreditsU.png",
                                          "btnExitU.png",
                                          "btnHelpU.png",
                                          "btnMuteU.png",
                                          "button-pauseU.png",
                                          "cfmBG.png",
                                          "cloud1.png",
                                          "cloud2.png",
                                          "cloud3.png",
                                          "crystal.ico",
                                          "crystal.png",
                                          "cursor.png",
                                          "howtoplayPause.png",
                                          "loading.png",
                                          "lvl1wave1.png",
                                          "lvl1wave2.png",
                                          "lvlStarBG.png",
                                          "optionBG.png",
                                          "pauseM.png",
                                          "t1help.png",
                                          "t2help.png",
                                          "tutorial1.png",
                                          "tutorial2.png",
                                          "tutorial3.png"};

// The sounds that play on the road, with the slot each plays into.
struct SoundOnTheRoad {
    const char* file;
    SoundChannel* slot;
    int screen; // where it is made: GS_MAIN_MENU or GS_LEVEL
};
const SoundOnTheRoad kRoadSounds[] = {
    {"47 - FOREST, FANTASY MYSTICAL FOREST AMBIENCE.ogg", &gChannelMenu, GS_MAIN_MENU},
    {"DrumsComedy CTE10_45.4.ogg", &gChannelAmbience, GS_LEVEL},
    {"24 - Arrow Swoosh.ogg", &gChannelArrow, GS_LEVEL},
    {"53 - Ice Man.ogg", &gChannelFinalWave, GS_LEVEL},
    {"18 - Symphony No 1 in C Major, III Presto.ogg", &gChannelWin, GS_LEVEL},
    {"06 - Gypsy Songs for Violin and Orchestra.ogg", &gChannelLose, GS_LEVEL},
};

// Every picture, sound and the icon the build made.
std::vector<std::string> ResourceFiles() {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(TestResourcesDir())) {
        const std::string ext = entry.path().extension();
        if (ext == ".png" || ext == ".ogg" || ext == ".ico")
            names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
}

// What the road showed, gathered after every frame.
struct Seen {
    int placeholderDraws = 0;   // draws of the 8 x 8 placeholder, any picture
    int missingDrawnAsReal = 0; // draws of the missing picture at another size
    int missingDrawn = 0;       // draws of the missing picture
    int missingSlotPlaying = 0; // frames in which the missing sound's slot played
    bool slotPlayed[6] = {};    // the road's sounds that were heard at all
    int soundCountWrong = 0;    // frames with more sounds alive than the road makes
    std::string firstWrong;
    int realDraws = 0;  // draws of a named picture other than the placeholder
    int mostSounds = 0; // the most sounds alive at once
};

// Plays the road with `missing` gone (or nothing, or all damaged); returns
// what it saw.
Seen PlayTheRoad(GamePlay& play, const std::string& missing) {
    Seen seen;
    int expectedMenuSounds = 1, expectedLevelSounds = 5;
    const SoundOnTheRoad* missingSound = nullptr;
    for (const SoundOnTheRoad& sound : kRoadSounds) {
        if (missing != sound.file) continue;
        missingSound = &sound;
        (sound.screen == GS_MAIN_MENU ? expectedMenuSounds : expectedLevelSounds) -= 1;
    }
    bool arrived = false;
    play.Run(
        GS_SPLASH_SCREEN, 1, 21,
        [&](GameScript& s) {
            s.EveryFrame([&] {
                for (const VXSeamDraw& d : VXSeamDrawsThisFrame()) {
                    const bool placeholder = d.pictureWidth == 8 && d.pictureHeight == 8;
                    seen.placeholderDraws += placeholder;
                    seen.realDraws += d.picture[0] && !placeholder;
                    if (TestFileName(d.picture) != missing) continue;
                    seen.missingDrawn += 1;
                    seen.missingDrawnAsReal += !placeholder;
                }
                for (int i = 0; i < 6; ++i)
                    seen.slotPlayed[i] |= TestChannelPlaying(*kRoadSounds[i].slot);
                if (missingSound)
                    seen.missingSlotPlaying += TestChannelPlaying(*missingSound->slot);
                const int sounds = SoundLiveCount();
                seen.mostSounds = std::max(seen.mostSounds, sounds);
                const bool wrong =
                    (gGameStateCurr == GS_MAIN_MENU && sounds > expectedMenuSounds) ||
                    (gGameStateCurr == GS_LEVEL && sounds != expectedLevelSounds);
                if (wrong && seen.soundCountWrong++ == 0)
                    seen.firstWrong = "state " + std::to_string(gGameStateCurr) + ": " +
                                      std::to_string(sounds) + " sounds";
            });
            arrived = PlayerIntoFirstWave(s);
        },
        true);
    EXPECT_TRUE(arrived) << "the road into level 1's second wave, with " << missing << " missing";
    return seen;
}

// Watches a folder for the files opened in it.
class OpenWatch {
  public:
    explicit OpenWatch(const std::string& folder) : fd_(inotify_init1(IN_NONBLOCK)) {
        if (fd_ >= 0) inotify_add_watch(fd_, folder.c_str(), IN_OPEN);
    }
    ~OpenWatch() {
        if (fd_ >= 0) close(fd_);
    }
    // The names opened since the last call.
    std::set<std::string> Opened() {
        std::set<std::string> names;
        alignas(inotify_event) char buffer[65536];
        for (ssize_t n; fd_ >= 0 && (n = read(fd_, buffer, sizeof buffer)) > 0;)
            for (char* p = buffer; p < buffer + n;) {
                const inotify_event* event = reinterpret_cast<const inotify_event*>(p);
                if (event->len) names.insert(event->name);
                p += sizeof(inotify_event) + event->len;
            }
        return names;
    }

  private:
    int fd_;
};

// The run's Resources with copies in place of the links (whose opens the
// kernel reports in the folder they point into).
void CopyResources(const GamePlay& play) {
    for (const std::string& name : ResourceFiles()) {
        const fs::path copy = play.Folder() + "/Resources/" + name;
        fs::remove(copy);
        fs::copy_file(TestResourcesDir() + "/" + name, copy);
    }
}

class MissingFile : public ::testing::TestWithParam<std::string> {
  protected:
    void SetUp() override { VXSeamRecordDraws(true); }
    void TearDown() override { VXSeamRecordDraws(false); }
};

// What the road shows with every file there: no placeholder, the forest,
// the drums and the arrows heard.
void ExpectTheWholeRoad(const Seen& seen) {
    EXPECT_EQ(0, seen.placeholderDraws) << "every picture on the road is a real one";
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(seen.slotPlayed[i]) << kRoadSounds[i].file;
    EXPECT_EQ(0, seen.soundCountWrong) << seen.firstWrong;
}

} // namespace

TEST_F(MissingFile, NothingMissingTheRoadOpensExactlyItsFiles) {
    GamePlay play;
    CopyResources(play);
    OpenWatch watch(play.Folder() + "/Resources");
    ExpectTheWholeRoad(PlayTheRoad(play, kNothing));
    std::set<std::string> opened = watch.Opened();
    opened.erase("Scores.txt");
    opened.erase("Scores.txt.new");
    std::string listed;
    for (const std::string& name : opened) listed += "    \"" + name + "\",\n";
    EXPECT_EQ(kRoadFiles, opened) << "the files the road opened:\n" << listed;
}

TEST_F(MissingFile, EveryFileOffTheRoadMissingChangesNothing) {
    GamePlay play;
    for (const std::string& name : ResourceFiles())
        if (!kRoadFiles.count(name)) fs::remove(play.Folder() + "/Resources/" + name);
    ExpectTheWholeRoad(PlayTheRoad(play, kOffTheRoad));
}

TEST_P(MissingFile, GameRunsIntoTheFirstWaveWithPlaceholderOrSilence) {
    const std::string missing = GetParam();
    GamePlay play;
    ASSERT_TRUE(fs::remove(play.Folder() + "/Resources/" + missing));
    const Seen seen = PlayTheRoad(play, missing);
    EXPECT_EQ(0, seen.soundCountWrong) << seen.firstWrong;
    EXPECT_EQ(0, seen.missingDrawnAsReal) << missing << " drawn as something else";
    EXPECT_EQ(0, seen.missingSlotPlaying) << missing << "'s slot played";
    RecordProperty("placeholder_draws", seen.missingDrawn);
}

INSTANTIATE_TEST_SUITE_P(EachOnTheRoad, MissingFile, ::testing::ValuesIn(kRoadFiles),
                         [](const ::testing::TestParamInfo<std::string>& info) {
                             std::string name;
                             for (char c : info.param)
                                 if (std::isalnum((unsigned char)c)) name += c;
                             return name;
                         });

// Every picture, sound and the icon damaged the same way at once. Pictures
// and the icon are refused: every picture on the road is the placeholder.
// Sounds of noise are refused; a sound cut mid-stream plays what it holds,
// and one that lies about its length plays whole.
class DamagedFiles : public MissingFile {};

TEST_P(DamagedFiles, GameRunsIntoTheFirstWaveWithEveryPictureAPlaceholder) {
    const std::string damage = GetParam();
    GamePlay play;
    for (const std::string& name : ResourceFiles()) {
        const std::string bytes = TestReadFile(TestResourcesDir() + "/" + name);
        const std::string path = play.Folder() + "/Resources/" + name;
        fs::remove(path);
        ASSERT_TRUE(DamageWriteFile(path, DamageByName(damage, name, bytes))) << name;
    }
    const Seen seen = PlayTheRoad(play, "(every file " + damage + ")");
    EXPECT_EQ(0, seen.realDraws) << "draws of a picture other than the placeholder";
    if (damage == "noise") {
        EXPECT_EQ(0, seen.mostSounds) << "sounds made of noise";
    }
}

INSTANTIATE_TEST_SUITE_P(Each, DamagedFiles, ::testing::Values("cut", "noise", "absurd"));
