// CTest label: long
// With no sound device the driver plays tests/scripts/road-to-credits.txt
// (the splash, level 1 through its first wave, quit from the pause menu, the
// credits) silent to the credits, saying so in one line and nothing more.
// The script is recorded by RecordTheRoadToTheCredits when the road changes.
#include <gtest/gtest.h>

#include <string>

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

} // namespace

// An empty ALSA configuration makes ALSA fail on any machine, sound card or
// not, and OpenAL then finds no device at all.
TEST(FaultsDriver, NoSoundDeviceRunsSilentToTheCreditsWithOneLine) {
    const std::string errorFile = testing::TempDir() + "driver-errors.txt";
    std::string out;
    ASSERT_EQ(0,
              TestRunCommand("(cd '" + TestBinaryDir() +
                                 "' && ALSOFT_DRIVERS=alsa ALSA_CONFIG_PATH=/dev/null '" +
                                 TestDriverPath() + "' --windowed --seed " + std::to_string(kSeed) +
                                 " '" + ScriptPath() + "' 2> '" + errorFile + "')",
                             out))
        << out << TestReadFile(errorFile);
    EXPECT_EQ("No sound device: the game runs without sound.\n", TestReadFile(errorFile));
    const size_t at = out.rfind("\nreport ");
    ASSERT_NE(std::string::npos, at) << out;
    const std::string last = out.substr(at + 1, out.find('\n', at + 1) - at - 1);
    EXPECT_NE(std::string::npos, last.find(" state=5 ")) << last;
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
