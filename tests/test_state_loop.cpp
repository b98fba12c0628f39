// The state loop: the order of load, init, update, draw, free and unload;
// restart, quit, a state that leaves in its init, Escape in a level, the
// channels under an overlay, the frame time handed to a new state, the
// window closing, and the fatal end of an invalid state id.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <deque>
#include <filesystem>
#include <string>
#include <vector>

#include "Audio.h"
#include "GameMain.h"
#include "GameStateManager.h"
#include "PauseOverlay.h"
#include "TestSupport.h"
#include "TestTone.h"
#include "VXFrameRateController.h"
#include "VXInput.h"
#include "VXSeam.h"
#include "VXSystem.h"

namespace {

const int A = GS_CREDITS, B = GS_HOW_TO_PLAY;

std::vector<std::string> gLog;
std::deque<std::pair<int, int>> gExits[GS_QUIT + 1]; // (after n updates, go to id)
int gUpdates[GS_QUIT + 1];
int gFramesInState[GS_QUIT + 1];
int gInitNext[GS_QUIT + 1];
int gQuitAfterDraws = 0; // for paused states, whose update does not run
int gDraws = 0;
std::vector<float> gFirstFrameTimes;

std::string Name(int id) {
    return id == A ? "A" : id == B ? "B" : "L";
}

template <int ID> void Init() {
    gLog.push_back(Name(ID) + ".init(prev " + std::to_string(gGameStatePrev) + ")");
    gUpdates[ID] = 0;
    gFramesInState[ID] = 0;
    if (gInitNext[ID] >= 0) gGameStateNext = gInitNext[ID], gInitNext[ID] = -1;
}
template <int ID> void Update() {
    if (gFramesInState[ID]++ == 0) {
        gFirstFrameTimes.push_back(gFrameTime);
        EXPECT_EQ(VXFrameRateControllerGetFrameCount(), 0u) << "the controller resets per state";
    }
    gLog.push_back(Name(ID) + ".update");
    if (!gExits[ID].empty() && ++gUpdates[ID] == gExits[ID].front().first) {
        gGameStateNext = gExits[ID].front().second;
        gExits[ID].pop_front();
        gUpdates[ID] = 0;
    }
}
template <int ID> void Draw() {
    gLog.push_back(Name(ID) + ".draw");
    if (gQuitAfterDraws && ++gDraws == gQuitAfterDraws) gGameStateNext = GS_QUIT;
}
template <int ID> GameStateOps Ops() {
    return GameStateOps{[] { gLog.push_back(Name(ID) + ".load"); },
                        Init<ID>,
                        Update<ID>,
                        Draw<ID>,
                        [] { gLog.push_back(Name(ID) + ".free"); },
                        [] { gLog.push_back(Name(ID) + ".unload"); }};
}

// The log of one stay in a state: load, init, a frame per letter (u: update
// and draw, d: draw only), free and unload.
std::string Stay(const std::string& name, int prev, const std::string& frames) {
    std::string log = name + ".load " + name + ".init(prev " + std::to_string(prev) + ")";
    for (char f : frames) log += (f == 'u' ? " " + name + ".update " : " ") + name + ".draw";
    return log + " " + name + ".free " + name + ".unload";
}

class StateLoop : public ::testing::Test {
  protected:
    void SetUp() override {
        TestEngineStart();
        gGameStateTable[A] = Ops<A>();
        gGameStateTable[B] = Ops<B>();
        gGameStateTable[GS_LEVEL] = Ops<GS_LEVEL>();
        gFirstFrameTimes.clear();
        for (int i = 0; i <= GS_QUIT; ++i) gExits[i].clear(), gInitNext[i] = -1;
        gPaused = gConfirmOpen = gOptionsOpen = gHelpShown = false;
        gFrameTime = 0.0f;
    }
    void TearDown() override { TestEngineStop(); }
    // Runs the loop from the state and returns the log of its operations.
    static std::string Run(int first, int quitAfterDraws = 0) {
        gLog.clear();
        gQuitAfterDraws = quitAfterDraws;
        gDraws = 0;
        gGameStateCurr = gGameStateNext = gGameStatePrev = first;
        GameStateLoop();
        std::string s;
        for (const std::string& e : gLog) s += (s.empty() ? "" : " ") + e;
        return s;
    }
};

TEST_F(StateLoop, RunsEachStateLoadInitFramesFreeUnloadAndChangesAfterTheFrame) {
    gExits[A] = {{2, B}};
    gExits[B] = {{1, GS_QUIT}};
    EXPECT_EQ(Run(A), Stay("A", 5, "uu") + " " + Stay("B", 5, "u"));
    EXPECT_EQ(gGameStateCurr, GS_QUIT);
    EXPECT_EQ(gGameStatePrev, B);
}

TEST_F(StateLoop, RestartRunsFreeAndInitButNotUnloadOrLoad) {
    gExits[A] = {{2, GS_RESTART}, {1, GS_RESTART}, {1, GS_QUIT}};
    EXPECT_EQ(Run(A), "A.load A.init(prev 5) A.update A.draw A.update A.draw A.free "
                      "A.init(prev 5) A.update A.draw A.free "
                      "A.init(prev 5) A.update A.draw A.free A.unload");
}

TEST_F(StateLoop, AStateThatLeavesInItsInitRunsNoFrame) {
    gInitNext[A] = B;
    gExits[B] = {{1, GS_QUIT}};
    EXPECT_EQ(Run(A), Stay("A", 5, "") + " " + Stay("B", 5, "u"));
    // A restart requested by init skips the unload and comes straight back.
    gInitNext[A] = GS_RESTART;
    gExits[A] = {{1, GS_QUIT}};
    EXPECT_EQ(Run(A),
              "A.load A.init(prev 5) A.free A.init(prev 5) A.update A.draw A.free A.unload");
}

TEST_F(StateLoop, ANewStateSeesThePreviousStatesLastFrameTime) {
    gExits[A] = {{3, B}};
    gExits[B] = {{1, GS_QUIT}};
    Run(A);
    ASSERT_EQ(gFirstFrameTimes.size(), 2u);
    EXPECT_EQ(gFirstFrameTimes[0], 0.0f); // the program's very first frame
    EXPECT_EQ(gFirstFrameTimes[1], 1.0f / 60.0f);
}

// Presses Escape at the given frames and lets it go `held` frames later.
struct EscapePlan {
    unsigned long start;
    std::vector<unsigned long> presses;
    unsigned long held;
};
void PressEscape(unsigned long frame, void* user) {
    EscapePlan& plan = *static_cast<EscapePlan*>(user);
    for (unsigned long p : plan.presses) {
        if (frame == plan.start + p) VXSeamInjectKey(VX_KEY_ESCAPE, true);
        if (frame == plan.start + p + plan.held) VXSeamInjectKey(VX_KEY_ESCAPE, false);
    }
}

// Frames counted from 0: a press after frame n is seen (triggered) in frame
// n + 1, which toggles the pause after its draw, hides the help picture,
// and is not triggered again while held.
TEST_F(StateLoop, EscapeTogglesPauseOnceAPressInALevelOnly) {
    struct Case {
        const char* name;
        int state;
        std::vector<unsigned long> presses;
        unsigned long held;
        const char* frames;
        bool paused;
    } cases[] = {
        {"pressed after frames 1 and 4", GS_LEVEL, {1, 4}, 1, "uuuddduu", false},
        {"held down for six frames: one toggle", GS_LEVEL, {1}, 6, "uuuddddddd", true},
        {"outside a level nothing pauses", A, {1}, 1, "uuuu", false},
    };
    for (const Case& c : cases) {
        EscapePlan plan{VXSeamFramesPresented(), c.presses, c.held};
        VXSeamSetFrameHook(PressEscape, &plan);
        gPaused = false;
        gHelpShown = c.state == GS_LEVEL;
        EXPECT_EQ(Run(c.state, std::strlen(c.frames)), Stay(Name(c.state), c.state, c.frames))
            << c.name;
        EXPECT_EQ(gPaused, c.paused) << c.name;
        EXPECT_FALSE(gHelpShown) << c.name;
        VXSeamSetFrameHook(nullptr, nullptr);
    }
}

// The six channel slots, each playing a looping tone, as each update and
// each draw find them ('>' playing, 'P' held, 'x' not playing). The pause
// menu goes up in draw 1 and down in draw 2; a dialog opens in draw 3 and
// closes in draw 4; update 3 ends the run.
std::vector<std::string> gSeen;
int gWatchUpdates = 0, gWatchDraws = 0;
std::string SlotStates() {
    std::string states;
    for (const TestSoundSlot& entry : kTestSoundSlots)
        states += !TestChannelPlaying(*entry.slot) ? 'x'
                  : TestChannelPaused(*entry.slot) ? 'P'
                                                   : '>';
    return states;
}

TEST_F(StateLoop, AnOverlayHoldsAllSixChannelsAndTheNextUpdateResumesThem) {
    char dir[] = "/tmp/quarrow-loop-XXXXXX";
    ASSERT_NE(mkdtemp(dir), nullptr);
    const std::string tone = std::string(dir) + "/tone.ogg";
    ASSERT_TRUE(WriteToneOgg(tone, 0.5f, 1, 0.5f));
    Sound sound;
    ASSERT_EQ(SoundCreate(gLevelSoundSystem, tone.c_str(), &sound), SOUND_OK);
    for (const TestSoundSlot& entry : kTestSoundSlots)
        AudioPlayIntoSlot(gLevelSoundSystem, sound, entry.slot, true);
    gGameStateTable[A].update = [] {
        gSeen.push_back("update " + SlotStates());
        if (++gWatchUpdates == 3) gGameStateNext = GS_QUIT;
    };
    gGameStateTable[A].draw = [] {
        gSeen.push_back("draw " + SlotStates());
        ++gWatchDraws;
        gPaused = gWatchDraws == 1;
        gConfirmOpen = gWatchDraws == 3;
    };
    Run(A);
    gConfirmOpen = false;
    // Held from the overlay's frame until the next frame that updates, which
    // resumes all six before its update runs.
    EXPECT_EQ(gSeen, (std::vector<std::string>{"update >>>>>>", "draw >>>>>>", "draw PPPPPP",
                                               "update >>>>>>", "draw >>>>>>", "update >>>>>>",
                                               "draw >>>>>>"}));
    SoundRelease(sound);
    std::filesystem::remove_all(dir);
}

void CloseAt(unsigned long frame, void* user) {
    if (frame == *static_cast<unsigned long*>(user)) VXSeamInjectClose();
}

TEST_F(StateLoop, ClosingTheWindowEndsTheGameAfterTheFrameWithFreeAndUnload) {
    unsigned long closeAt = VXSeamFramesPresented() + 2;
    VXSeamSetFrameHook(CloseAt, &closeAt);
    // A never leaves by itself.
    EXPECT_EQ(Run(A), Stay("A", 5, "uuu"));
    EXPECT_EQ(VXSysDoesWindowExist(), 0);
    EXPECT_EQ(gGameStateCurr, GS_QUIT);
}

// The fatal message (no line end) goes to standard output, sent on to
// standard error where the test reads it. The loop binds every new state
// through this check.
TEST(StateManager, AnIdOutsideTheTableIsFatal) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (int id : {3, -1, 9, 100}) {
        EXPECT_EXIT(
            {
                dup2(STDERR_FILENO, STDOUT_FILENO);
                gGameStateCurr = id;
                GameStateManagerBind();
            },
            testing::ExitedWithCode(1), "VX_FATAL_ERROR: invalid state!!$")
            << "id " << id;
    }
    // The pseudo-states leave the bound operations alone.
    gGameStateCurr = GS_MAIN_MENU;
    GameStateManagerBind();
    GameStateFn load = GameStateLoad;
    for (int id : {GS_RESTART, GS_QUIT}) {
        gGameStateCurr = id;
        GameStateManagerBind();
        EXPECT_EQ(GameStateLoad, load);
    }
}

} // namespace
