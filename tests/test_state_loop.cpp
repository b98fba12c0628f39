// The state loop: the order of load, init, update, draw, free and unload;
// restart, quit, a state that leaves in its init, pause, Escape in a level,
// the frame time handed to a new state, the window closing, and the fatal
// end of an invalid state id.
#include <gtest/gtest.h>
#include <unistd.h>

#include <deque>
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

template <int ID> void Load() {
    gLog.push_back(Name(ID) + ".load");
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
template <int ID> void Free() {
    gLog.push_back(Name(ID) + ".free");
}
template <int ID> void Unload() {
    gLog.push_back(Name(ID) + ".unload");
}
template <int ID> GameStateOps Ops() {
    return GameStateOps{Load<ID>, Init<ID>, Update<ID>, Draw<ID>, Free<ID>, Unload<ID>};
}

std::string Joined() {
    std::string s;
    for (const std::string& e : gLog) s += (s.empty() ? "" : " ") + e;
    return s;
}

class StateLoop : public ::testing::Test {
  protected:
    void SetUp() override {
        TestEngineStart();
        gGameStateTable[A] = Ops<A>();
        gGameStateTable[B] = Ops<B>();
        gGameStateTable[GS_LEVEL] = Ops<GS_LEVEL>();
        gLog.clear();
        gFirstFrameTimes.clear();
        for (int i = 0; i <= GS_QUIT; ++i) gExits[i].clear(), gInitNext[i] = -1;
        gQuitAfterDraws = gDraws = 0;
        gPaused = gConfirmOpen = gOptionsOpen = gHelpShown = false;
        gFrameTime = 0.0f;
    }
    void TearDown() override { TestEngineStop(); }
    void Run(int first) {
        gGameStateCurr = gGameStateNext = gGameStatePrev = first;
        GameStateLoop();
    }
};

TEST_F(StateLoop, RunsEachStateLoadInitFramesFreeUnloadAndChangesAfterTheFrame) {
    gExits[A] = {{2, B}};
    gExits[B] = {{1, GS_QUIT}};
    Run(A);
    EXPECT_EQ(Joined(), "A.load A.init(prev 5) A.update A.draw A.update A.draw A.free A.unload "
                        "B.load B.init(prev 5) B.update B.draw B.free B.unload");
    EXPECT_EQ(gGameStateCurr, GS_QUIT);
    EXPECT_EQ(gGameStatePrev, B);
}

TEST_F(StateLoop, RestartRunsFreeAndInitButNotUnloadOrLoad) {
    gExits[A] = {{2, GS_RESTART}, {1, GS_RESTART}, {1, GS_QUIT}};
    Run(A);
    EXPECT_EQ(Joined(), "A.load A.init(prev 5) A.update A.draw A.update A.draw A.free "
                        "A.init(prev 5) A.update A.draw A.free "
                        "A.init(prev 5) A.update A.draw A.free A.unload");
}

TEST_F(StateLoop, AStateThatLeavesInItsInitRunsNoFrame) {
    gInitNext[A] = B;
    gExits[B] = {{1, GS_QUIT}};
    Run(A);
    EXPECT_EQ(Joined(), "A.load A.init(prev 5) A.free A.unload "
                        "B.load B.init(prev 5) B.update B.draw B.free B.unload");
    // A restart requested by init skips the unload and comes straight back.
    gLog.clear();
    gInitNext[A] = GS_RESTART;
    gExits[A] = {{1, GS_QUIT}};
    Run(A);
    EXPECT_EQ(Joined(),
              "A.load A.init(prev 5) A.free A.init(prev 5) A.update A.draw A.free A.unload");
}

TEST_F(StateLoop, WhilePausedOnlyTheDrawRuns) {
    gPaused = true;
    gQuitAfterDraws = 3;
    Run(A);
    EXPECT_EQ(Joined(), "A.load A.init(prev 5) A.draw A.draw A.draw A.free A.unload");
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
    unsigned long held = 1;
};
void PressEscape(unsigned long frame, void* user) {
    EscapePlan& plan = *static_cast<EscapePlan*>(user);
    for (unsigned long p : plan.presses) {
        if (frame == plan.start + p) VXSeamInjectKey(VX_KEY_ESCAPE, true);
        if (frame == plan.start + p + plan.held) VXSeamInjectKey(VX_KEY_ESCAPE, false);
    }
}

TEST_F(StateLoop, EscapeTogglesPauseInALevelOnlyAndHidesTheHelpPicture) {
    EscapePlan plan{VXSeamFramesPresented(), {1, 4}};
    VXSeamSetFrameHook(PressEscape, &plan);
    gHelpShown = true;
    gQuitAfterDraws = 8;
    Run(GS_LEVEL);
    // Escape pressed after frame 1 is seen in frame 2 and pauses frames 3 to 5;
    // the second press, after frame 4, is seen in frame 5 and resumes at frame 6.
    EXPECT_EQ(Joined(), "L.load L.init(prev 2) L.update L.draw L.update L.draw L.update L.draw "
                        "L.draw L.draw L.draw L.update L.draw L.update L.draw L.free L.unload");
    EXPECT_FALSE(gHelpShown);
    EXPECT_FALSE(gPaused);

    gLog.clear();
    gDraws = 0;
    gQuitAfterDraws = 4;
    plan = EscapePlan{VXSeamFramesPresented(), {1}};
    Run(A);
    EXPECT_FALSE(gPaused);
    EXPECT_EQ(Joined(), "A.load A.init(prev 5) A.update A.draw A.update A.draw A.update A.draw "
                        "A.update A.draw A.free A.unload");
}

// Escape held down for six frames is one press: the game pauses once and
// stays paused.
TEST_F(StateLoop, EscapeHeldForSeveralFramesTogglesPauseOnce) {
    EscapePlan plan{VXSeamFramesPresented(), {1}, 6};
    VXSeamSetFrameHook(PressEscape, &plan);
    gQuitAfterDraws = 10;
    Run(GS_LEVEL);
    // Frames counted from 0: pressed after frame 1, seen (triggered) in
    // frame 2, which toggles; still down until after frame 7, it is never
    // triggered again. Frames 0 to 2 update, the seven after them only draw.
    EXPECT_EQ(Joined(), "L.load L.init(prev 2) L.update L.draw L.update L.draw L.update L.draw "
                        "L.draw L.draw L.draw L.draw L.draw L.draw L.draw L.free L.unload");
    EXPECT_TRUE(gPaused);
}

// The six channel slots, each playing a looping tone, as each update and
// each draw find them ('>' playing, 'P' held, 'x' not playing). The pause
// menu goes up in draw 1 and down in draw 2; a dialog opens in draw 3 and
// closes in draw 4; update 3 ends the run.
struct ChannelWatch {
    std::vector<std::string> seen;
    int updates = 0, draws = 0;
};
ChannelWatch gWatch;
std::string SlotStates() {
    std::string states;
    for (SoundChannel* slot : {&gChannelArrow, &gChannelAmbience, &gChannelFinalWave, &gChannelMenu,
                               &gChannelLose, &gChannelWin}) {
        bool paused = false, playing = false;
        ChannelIsPlaying(*slot, &playing);
        ChannelGetPaused(*slot, &paused);
        states += !playing ? 'x' : paused ? 'P' : '>';
    }
    return states;
}
void WatchUpdate() {
    gWatch.seen.push_back("update " + SlotStates());
    if (++gWatch.updates == 3) gGameStateNext = GS_QUIT;
}
void WatchDraw() {
    gWatch.seen.push_back("draw " + SlotStates());
    ++gWatch.draws;
    gPaused = gWatch.draws == 1;
    gConfirmOpen = gWatch.draws == 3;
}

TEST_F(StateLoop, AnOverlayHoldsAllSixChannelsAndTheNextUpdateResumesThem) {
    char dir[] = "/tmp/quarrow-loop-XXXXXX";
    ASSERT_NE(mkdtemp(dir), nullptr);
    const std::string tone = std::string(dir) + "/tone.ogg";
    ASSERT_TRUE(WriteToneOgg(tone, 0.5f, 1, 0.5f));
    Sound sound;
    ASSERT_EQ(SoundCreate(gLevelSoundSystem, tone.c_str(), &sound), SOUND_OK);
    for (SoundChannel* slot : {&gChannelArrow, &gChannelAmbience, &gChannelFinalWave, &gChannelMenu,
                               &gChannelLose, &gChannelWin})
        AudioPlayIntoSlot(gLevelSoundSystem, sound, slot, true);
    gGameStateTable[A].update = WatchUpdate;
    gGameStateTable[A].draw = WatchDraw;
    gWatch = {};
    Run(A);
    gConfirmOpen = false;
    // Held from the overlay's frame until the next frame that updates, which
    // resumes all six before its update runs.
    EXPECT_EQ(gWatch.seen, (std::vector<std::string>{"update >>>>>>", "draw >>>>>>", "draw PPPPPP",
                                                     "update >>>>>>", "draw >>>>>>",
                                                     "update >>>>>>", "draw >>>>>>"}));
    SoundRelease(sound);
    std::remove(tone.c_str());
    rmdir(dir);
}

void CloseAt(unsigned long frame, void* user) {
    if (frame == *static_cast<unsigned long*>(user)) VXSeamInjectClose();
}

TEST_F(StateLoop, ClosingTheWindowEndsTheGameAfterTheFrameWithFreeAndUnload) {
    unsigned long closeAt = VXSeamFramesPresented() + 2;
    VXSeamSetFrameHook(CloseAt, &closeAt);
    Run(A); // A never leaves by itself
    EXPECT_EQ(Joined(), "A.load A.init(prev 5) A.update A.draw A.update A.draw A.update A.draw "
                        "A.free A.unload");
    EXPECT_EQ(VXSysDoesWindowExist(), 0);
    EXPECT_EQ(gGameStateCurr, GS_QUIT);
}

// The fatal message (no line end) goes to standard output; the child sends
// standard output to standard error, where the test reads it.
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

TEST_F(StateLoop, AStateThatRequestsIdThreeEndsTheProgram) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    gExits[A] = {{2, 3}};
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            Run(A);
        },
        testing::ExitedWithCode(1), "VX_FATAL_ERROR: invalid state!!$");
}

} // namespace
