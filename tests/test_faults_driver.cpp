// CTest label: long
// The game run as a player's machine without sound runs it, through the
// driver: with no sound device, one script (tests/scripts/road-to-credits.txt:
// the splash, level 1 through its first wave, quit from the pause menu, the
// credits) plays silent to the credits, saying so in one line and nothing
// more. The script was recorded from the real
// game by RecordTheRoadToTheCredits, run on its own when the road changes.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "GamePlay.h"
#include "GameStateManager.h"
#include "PlayerMoves.h"
#include "MainMenu.h"
#include "TestSupport.h"
#include "VXInput.h"

namespace {

// The seed the script was recorded with: the towers stand where it drags.
constexpr unsigned kSeed = 21;

std::string ScriptPath() {
    return TestSourceDir() + "/tests/scripts/road-to-credits.txt";
}

// Runs a driver on the script from the build folder; returns its exit
// status, its standard output, and (apart) its standard error.
int RunDriver(const std::string& driver, const std::string& env, std::string& out,
              std::string& errors) {
    const std::string errorFile = testing::TempDir() + "driver-errors.txt";
    const int status =
        TestRunCommand("(cd '" + TestBinaryDir() + "' && env " + env + " '" + driver +
                           "' --windowed --seed " + std::to_string(kSeed) + " --hash-every 30 '" +
                           ScriptPath() + "' 2> '" + errorFile + "')",
                       out);
    TestRunCommand("cat '" + errorFile + "'", errors);
    return status;
}

// The lines of the output that start with the word.
std::vector<std::string> Lines(const std::string& text, const std::string& word) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        if (line.rfind(word + " ", 0) == 0) lines.push_back(line);
    return lines;
}

} // namespace

// An empty ALSA configuration makes ALSA fail on any machine, sound card or
// not, and OpenAL then finds no device at all.
TEST(FaultsDriver, NoSoundDeviceRunsSilentToTheCreditsWithOneLine) {
    std::string out, errors;
    ASSERT_EQ(0, RunDriver(TestDriverPath(), "ALSOFT_DRIVERS=alsa ALSA_CONFIG_PATH=/dev/null", out,
                           errors))
        << out << errors;
    EXPECT_EQ("No sound device: the game runs without sound.\n", errors);
    const std::vector<std::string> reports = Lines(out, "report");
    ASSERT_FALSE(reports.empty()) << out;
    EXPECT_NE(std::string::npos, reports.back().find("state=5")) << reports.back();
}

// Records the script: the road into level 1's second wave, then quit from
// the pause menu (confirmed) and the credits from the main menu.
TEST(FaultsDriver, DISABLED_RecordTheRoadToTheCredits) {
    GamePlay play;
    play.Run(
        GS_SPLASH_SCREEN, 1, kSeed,
        [](GameScript& s) {
            ASSERT_TRUE(s.RecordTo(ScriptPath()));
            s.Note("# Recorded by test_faults_driver (RecordTheRoadToTheCredits), seed 21:");
            s.Note("# the splash, level 1 through its first wave, quit, the credits.");
            ASSERT_TRUE(PlayerIntoFirstWave(s));
            s.Tap(VX_KEY_ESCAPE);
            s.Frames(2);
            PlayerClickAt(s, 0.0f, -110.0f);  // quit
            PlayerClickAt(s, -75.0f, -25.0f); // yes
            ASSERT_GE(s.Until([] { return gGameStateCurr == GS_MAIN_MENU; }, 60), 0);
            s.Until([] { return !gMenuLevelButtons.empty(); }, 600);
            PlayerClickAt(s, 300.0f, -165.0f); // credits
            ASSERT_GE(s.Until([] { return gGameStateCurr == GS_CREDITS; }, 60), 0);
            s.Frames(60);
            s.Note("report");
            s.Note("close");
            s.Frames(1);
        },
        true);
}
