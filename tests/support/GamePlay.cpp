// GamePlay: the real game on the main thread, the test script beside it,
// taking turns at every presented frame.
#include "GamePlay.h"

#include <unistd.h>

#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <thread>

#include "GameMain.h"
#include "GameStateManager.h"
#include "Level.h"
#include "PauseOverlay.h"
#include "TestSupport.h"
#include "VXFrameRateController.h"
#include "VXInput.h"
#include "VXSeam.h"
#include "VXSystem.h"

struct GamePlay::Shared {
    std::mutex mutex;
    std::condition_variable changed;
    bool scriptsTurn = false;
    bool scriptDone = false;
    bool gameOver = false;
    bool closeSent = false;
    const std::function<void()>* task = nullptr;
    unsigned long presented = 0;
    GameScript script;
};

// The game's side of a turn: hand the frame to the script, run what it asks
// to run on this thread, and go on when it lets the next frame be drawn.
void GamePlay::Hook(unsigned long frame, void* user) {
    Shared& s = *static_cast<GamePlay*>(user)->shared_;
    std::unique_lock<std::mutex> lock(s.mutex);
    s.presented = frame + 1;
    if (s.scriptDone) {
        if (!s.closeSent) VXSeamInjectClose();
        s.closeSent = true;
        return;
    }
    s.scriptsTurn = true;
    s.changed.notify_all();
    for (;;) {
        s.changed.wait(lock, [&] { return !s.scriptsTurn || s.task; });
        if (s.task) {
            (*s.task)();
            s.task = nullptr;
            s.changed.notify_all();
            continue;
        }
        break;
    }
    if (s.scriptDone && !s.closeSent) {
        VXSeamInjectClose();
        s.closeSent = true;
    }
}

// A scratch folder with Resources linking every built file but the scores.
GamePlay::GamePlay() : folder_(TestScratchGameFolder()) {
    if (folder_.empty()) std::abort();
}

GamePlay::~GamePlay() {
    std::string ignored;
    TestRunCommand("rm -rf '" + folder_ + "'", ignored);
}

std::string GamePlay::ScoreFile() const {
    return folder_ + "/Resources/Scores.txt";
}

unsigned long GamePlay::Run(int state, int level, unsigned seed,
                            const std::function<void(GameScript&)>& script, bool windowed) {
    TestPinGLDriver();
    if (chdir(folder_.c_str()) != 0) std::abort();
    setenv("ALSOFT_DRIVERS", "null", 0);
    Shared shared;
    shared_ = &shared;
    shared.script.play_ = this;

    VXSeamUseVirtualClock(true);
    VXSeamSetFrameHook(Hook, this);
    GameStartup();
    VXSeedRand(seed);
    if (windowed) VXToogleFullScreen(false);
    gCurrentLevel = level;
    // A run before this one may have been closed with an overlay up; a new
    // process would start with none.
    gPaused = gConfirmOpen = gOptionsOpen = gHelpShown = false;
    gGameStatePrev = gGameStateNext = gGameStateCurr = state;

    std::thread scriptThread([&] {
        {
            std::unique_lock<std::mutex> lock(shared.mutex);
            shared.changed.wait(lock, [&] { return shared.scriptsTurn || shared.gameOver; });
            shared.script.presented_ = shared.presented;
        }
        if (!shared.gameOver) script(shared.script);
        std::lock_guard<std::mutex> lock(shared.mutex);
        shared.scriptDone = true;
        shared.scriptsTurn = false;
        shared.changed.notify_all();
    });

    GameStateLoop();
    GameShutdown();
    {
        std::lock_guard<std::mutex> lock(shared.mutex);
        shared.gameOver = true;
        shared.script.over_ = true;
        shared.changed.notify_all();
    }
    scriptThread.join();
    if (shared.script.record_) std::fclose(shared.script.record_);
    shared.script.record_ = nullptr;
    VXSeamSetFrameHook(nullptr, nullptr);
    VXSeamUseVirtualClock(false);
    shared_ = nullptr;
    return shared.presented;
}

bool GameScript::Frames(int n) {
    GamePlay::Shared& s = *play_->shared_;
    std::unique_lock<std::mutex> lock(s.mutex);
    for (int i = 0; i < n && !s.gameOver; ++i) {
        s.scriptsTurn = false;
        s.changed.notify_all();
        s.changed.wait(lock, [&] { return s.scriptsTurn || s.gameOver; });
        presented_ = s.presented;
        if (everyFrame_ && !s.gameOver) everyFrame_();
    }
    over_ = s.gameOver;
    return !s.gameOver;
}

int GameScript::Until(const std::function<bool()>& condition, int limit) {
    for (int waited = 0; waited <= limit; ++waited) {
        if (condition()) return waited;
        if (!Frames(1)) return -1;
    }
    return -1;
}

void GameScript::OnGameThread(const std::function<void()>& f) {
    GamePlay::Shared& s = *play_->shared_;
    std::unique_lock<std::mutex> lock(s.mutex);
    if (s.gameOver) return;
    s.task = &f;
    s.changed.notify_all();
    s.changed.wait(lock, [&] { return s.task == nullptr; });
}

bool GameScript::CapturePNG(const std::string& path) {
    bool ok = false;
    OnGameThread([&] { ok = VXSeamCaptureFramePNG(path.c_str()); });
    return ok;
}

unsigned GameScript::FramesInState() const {
    return VXFrameRateControllerGetFrameCount() + 1;
}

bool GameScript::RecordTo(const std::string& path) {
    if (record_) std::fclose(record_);
    record_ = std::fopen(path.c_str(), "w");
    return record_ != nullptr;
}

void GameScript::Write(const std::string& event) {
    if (!record_) return;
    std::fprintf(record_, "%lu %s\n", presented_ - 1, event.c_str());
    std::fflush(record_);
}

void GameScript::Note(const std::string& line) {
    if (!record_) return;
    if (line[0] == '#')
        std::fprintf(record_, "%s\n", line.c_str());
    else
        Write(line);
}

namespace {
// The driver's name of a key the scripts use.
std::string KeyName(unsigned char key) {
    switch (key) {
    case VX_KEY_LBUTTON:
        return "lbutton";
    case VX_KEY_ESCAPE:
        return "escape";
    case VX_KEY_SPACE:
        return "space";
    case VX_KEY_RETURN:
        return "return";
    default:
        if ((key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9')) return std::string(1, key);
        if (key >= VX_KEY_F1 && key < VX_KEY_F1 + 12) return "f" + std::to_string(key - 111);
        return "?";
    }
}
} // namespace

void GameScript::Move(int x, int y) {
    Write("move " + std::to_string(x) + " " + std::to_string(y));
    VXSeamInjectCursor(x, y);
}
void GameScript::MoveWorld(float x, float y) {
    Move((int)(x + 400.0f), (int)(300.0f - y));
}
void GameScript::Press(unsigned char key) {
    Write("press " + KeyName(key));
    VXSeamInjectKey(key, true);
}
void GameScript::Release(unsigned char key) {
    Write("release " + KeyName(key));
    VXSeamInjectKey(key, false);
}
void GameScript::ClickWorld(float x, float y) {
    MoveWorld(x, y);
    Frames(1); // the cursor arrives (and a release just before is seen) first
    Press(VX_KEY_LBUTTON);
    Frames(1);
    Release(VX_KEY_LBUTTON);
}
void GameScript::Tap(unsigned char key) {
    Press(key);
    Frames(1);
    Release(key);
}
void GameScript::Close() {
    Write("close");
    VXSeamInjectClose();
}
