// quarrow-driver: runs the real game (its start-up, state loop and shutdown)
// on the engine's virtual clock and feeds it a script of timed events through
// the engine's input seam. Every end-to-end test drives the game this way.
//
//   quarrow-driver [--real-clock] [--max-frames N] [--seed N] [--hash-every N]
//                  [--windowed] SCRIPT
//
// --seed fixes the game's random numbers (otherwise seeded from the time, as
// the game does). --hash-every N prints "hash FRAME STATE VALUE" after every
// Nth frame: a digest of what play depends on (the screen, the level, its
// monsters, towers and arrows, the crystal, the ratings and the flags), so
// that two runs can be compared frame by frame.
//
// A script has one event per line: "<frame> <command> [arguments]", where
// <frame> counts presented frames from the start of the program (0 is the
// first). An event at frame N happens after frame N is drawn, so the game
// sees it in frame N + 1; a capture at frame N saves frame N's picture.
//   move X Y        cursor to logical window pixel (X, Y) (800 x 600 window)
//   press KEY       key or button down, named as the engine names them
//   release KEY     (VXPlatformVirtualKeyFromName): lbutton, rbutton, mbutton
//                   for the mouse; escape, space, enter, tab, a..z, 0..9,
//                   f1..f12, left, up, right, down for keys
//   tap KEY         down at this frame, up at the next
//   click X Y       move there, left button down, up at the next frame
//   capture PATH    write this frame's picture as PNG
//   close           close the window (the game shuts down in order)
//   report          print "report FRAME state=S level=L ratings=R1,...,R6
//                   scores=LINE|LINE|..." (the score file's lines)
// Blank lines and lines starting with '#' are skipped. A malformed script is
// refused with its line number before the game starts.
#include <dlfcn.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "Crystal.h"
#include "GameMain.h"
#include "GameStateManager.h"
#include "Level.h"
#include "PauseOverlay.h"
#include "Projectile.h"
#include "Scores.h"
#include "Tower.h"
#include "VXSystem.h"
#include "WaveSpawner.h"
#include "VXPlatform.h"
#include "VXSeam.h"

namespace {

enum Kind { MOVE, KEY_DOWN, KEY_UP, CAPTURE, CLOSE, REPORT };

struct Event {
    unsigned long frame;
    Kind kind;
    int x, y;
    unsigned char key;
    std::string path;
    int line;
};

struct Script {
    std::vector<Event> events;
    size_t next = 0;
    unsigned long maxFrames = 0;
    unsigned long hashEvery = 0;
    int failures = 0;
};

bool ParseInt(const std::string& s, long& out) {
    if (s.empty()) return false;
    char* end = nullptr;
    out = std::strtol(s.c_str(), &end, 10);
    return *end == '\0';
}

// Parses the whole script; on the first bad line prints "FILE:LINE: why".
bool ParseScript(const char* path, Script& script) {
    std::ifstream in(path);
    if (!in) {
        std::fprintf(stderr, "%s: cannot open the script\n", path);
        return false;
    }
    std::string text;
    int lineNo = 0;
    auto fail = [&](const char* why) {
        std::fprintf(stderr, "%s:%d: %s\n", path, lineNo, why);
        return false;
    };
    while (std::getline(in, text)) {
        ++lineNo;
        std::istringstream words(text);
        std::vector<std::string> w;
        for (std::string s; words >> s;) w.push_back(s);
        if (w.empty() || w[0][0] == '#') continue;
        long frame;
        if (!ParseInt(w[0], frame) || frame < 0)
            return fail("the line must start with a frame number");
        if (w.size() < 2) return fail("a command must follow the frame number");
        const std::string& cmd = w[1];
        Event e{(unsigned long)frame, MOVE, 0, 0, 0, "", lineNo};
        long x = 0, y = 0;
        if (cmd == "move" || cmd == "click") {
            if (w.size() != 4 || !ParseInt(w[2], x) || !ParseInt(w[3], y))
                return fail("expected: move X Y / click X Y with whole numbers");
            e.x = (int)x;
            e.y = (int)y;
            script.events.push_back(e);
            if (cmd == "click") {
                e.kind = KEY_DOWN;
                e.key = 1;
                script.events.push_back(e);
                e.kind = KEY_UP;
                e.frame += 1;
                script.events.push_back(e);
            }
        } else if (cmd == "press" || cmd == "release" || cmd == "tap") {
            if (w.size() != 3) return fail("expected one key name");
            e.key = VXPlatformVirtualKeyFromName(w[2].c_str());
            if (!e.key) return fail("unknown key name");
            e.kind = cmd == "release" ? KEY_UP : KEY_DOWN;
            script.events.push_back(e);
            if (cmd == "tap") {
                e.kind = KEY_UP;
                e.frame += 1;
                script.events.push_back(e);
            }
        } else if (cmd == "capture") {
            if (w.size() != 3) return fail("expected: capture PATH (no spaces)");
            e.kind = CAPTURE;
            e.path = w[2];
            script.events.push_back(e);
        } else if (cmd == "close" || cmd == "report") {
            if (w.size() != 2) return fail("close and report take no arguments");
            e.kind = cmd == "close" ? CLOSE : REPORT;
            script.events.push_back(e);
        } else {
            return fail("unknown command");
        }
    }
    std::stable_sort(script.events.begin(), script.events.end(),
                     [](const Event& a, const Event& b) { return a.frame < b.frame; });
    return true;
}

// FNV-1a over the bytes of what play depends on.
struct Digest {
    uint64_t value = 1469598103934665603ull;
    template <typename T> void Add(const T& v) {
        const unsigned char* p = reinterpret_cast<const unsigned char*>(&v);
        for (size_t i = 0; i < sizeof v; ++i) value = (value ^ p[i]) * 1099511628211ull;
    }
};

uint64_t StateHash() {
    Digest d;
    d.Add(gGameStateCurr);
    d.Add(gCurrentLevel);
    d.Add(gWaveNumber);
    d.Add(gCountdownTime);
    d.Add(gLevelWon);
    d.Add(gLevelLost);
    d.Add(gBossKilled);
    d.Add(gStarsEarned);
    d.Add(gPaused);
    d.Add(gMuted);
    for (int rating : gLevelRatings) d.Add(rating);
    for (const auto& m : gWaveSpawner.monsterList) {
        d.Add(m->posX), d.Add(m->posY), d.Add(m->health), d.Add(m->tier);
    }
    for (const auto& t : towerList) {
        d.Add(t->posX), d.Add(t->posY), d.Add(t->fireTimer), d.Add(t->fireInterval);
        for (const auto& shot : t->projectiles) d.Add(shot->posX), d.Add(shot->posY);
    }
    if (const Crystal* crystal = LevelCrystal()) d.Add(crystal->health);
    return d.value;
}

// The screen, the level, the ratings in memory and the score file on disk.
void PrintReport(unsigned long frame) {
    std::ifstream in("Resources/Scores.txt");
    std::string scores, line;
    while (std::getline(in, line)) scores += (scores.empty() ? "" : "|") + line;
    std::printf("report %lu state=%d level=%d ratings=%d,%d,%d,%d,%d,%d scores=%s\n", frame,
                gGameStateCurr, gCurrentLevel, gLevelRatings[0], gLevelRatings[1], gLevelRatings[2],
                gLevelRatings[3], gLevelRatings[4], gLevelRatings[5], scores.c_str());
}

void OnFrame(unsigned long frame, void* user) {
    Script& script = *static_cast<Script*>(user);
    while (script.next < script.events.size() && script.events[script.next].frame <= frame) {
        const Event& e = script.events[script.next++];
        switch (e.kind) {
        case MOVE:
            VXSeamInjectCursor(e.x, e.y);
            break;
        case KEY_DOWN:
            VXSeamInjectKey(e.key, true);
            break;
        case KEY_UP:
            VXSeamInjectKey(e.key, false);
            break;
        case CLOSE:
            VXSeamInjectClose();
            break;
        case REPORT:
            PrintReport(frame);
            break;
        case CAPTURE:
            if (!VXSeamCaptureFramePNG(e.path.c_str())) {
                std::fprintf(stderr, "frame %lu: could not write %s\n", frame, e.path.c_str());
                ++script.failures;
            }
            break;
        }
    }
    if (script.hashEvery && (frame + 1) % script.hashEvery == 0)
        std::printf("hash %lu %d %016llx\n", frame, gGameStateCurr,
                    (unsigned long long)StateHash());
    // A script that forgets to close still ends.
    if (script.maxFrames && frame + 1 >= script.maxFrames) VXSeamInjectClose();
}

} // namespace

int main(int argc, char** argv) {
    bool virtualClock = true;
    bool seeded = false;
    bool windowed = false;
    unsigned seed = 0;
    Script script;
    script.maxFrames = 20 * 60 * 60; // twenty minutes of play
    const char* path = nullptr;
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--real-clock"))
            virtualClock = false;
        else if (!std::strcmp(argv[i], "--max-frames") && i + 1 < argc)
            script.maxFrames = std::strtoul(argv[++i], nullptr, 10);
        else if (!std::strcmp(argv[i], "--seed") && i + 1 < argc)
            seeded = true, seed = (unsigned)std::strtoul(argv[++i], nullptr, 10);
        else if (!std::strcmp(argv[i], "--windowed"))
            windowed = true;
        else if (!std::strcmp(argv[i], "--hash-every") && i + 1 < argc)
            script.hashEvery = std::strtoul(argv[++i], nullptr, 10);
        else if (!path)
            path = argv[i];
        else
            path = nullptr, i = argc;
    }
    if (!path) {
        std::fprintf(stderr, "usage: quarrow-driver [--real-clock] [--max-frames N] [--seed N] "
                             "[--hash-every N] [--windowed] SCRIPT\n");
        return 2;
    }
    if (!ParseScript(path, script)) return 2;
    // Sanitized test runs: keep the software GL driver loaded to the end so
    // that leak reports name its allocations (and its suppressions match).
    dlopen("/usr/lib/x86_64-linux-gnu/dri/swrast_dri.so", RTLD_NOW | RTLD_NODELETE);
    // Headless runs have no sound card: OpenAL's null output keeps sound "playing".
    setenv("ALSOFT_DRIVERS", "null", 0);

    VXSeamUseVirtualClock(virtualClock);
    VXSeamSetFrameHook(OnFrame, &script);
    GameStartup();
    if (seeded) VXSeedRand(seed);
    if (windowed) VXToogleFullScreen(false);
    GameStateLoop();
    GameShutdown();
    std::printf("driver: %lu frames presented\n", VXSeamFramesPresented());
    if (script.next < script.events.size())
        std::printf("driver: %zu events after the last frame were not run\n",
                    script.events.size() - script.next);
    return script.failures ? 1 : 0;
}
