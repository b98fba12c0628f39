// quarrow-driver: runs the real game (its start-up, state loop and shutdown)
// on the engine's virtual clock and feeds it a script of timed events through
// the engine's input seam. Every end-to-end test drives the game this way.
//
//   quarrow-driver [--real-clock] [--max-frames N] SCRIPT
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
// Blank lines and lines starting with '#' are skipped. A malformed script is
// refused with its line number before the game starts.
#include <dlfcn.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "GameMain.h"
#include "VXPlatform.h"
#include "VXSeam.h"

namespace {

enum Kind { MOVE, KEY_DOWN, KEY_UP, CAPTURE, CLOSE };

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
        } else if (cmd == "close") {
            if (w.size() != 2) return fail("close takes no arguments");
            e.kind = CLOSE;
            script.events.push_back(e);
        } else {
            return fail("unknown command");
        }
    }
    std::stable_sort(script.events.begin(), script.events.end(),
                     [](const Event& a, const Event& b) { return a.frame < b.frame; });
    return true;
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
        case CAPTURE:
            if (!VXSeamCaptureFramePNG(e.path.c_str())) {
                std::fprintf(stderr, "frame %lu: could not write %s\n", frame, e.path.c_str());
                ++script.failures;
            }
            break;
        }
    }
    // A script that forgets to close still ends.
    if (script.maxFrames && frame + 1 >= script.maxFrames) VXSeamInjectClose();
}

} // namespace

int main(int argc, char** argv) {
    bool virtualClock = true;
    Script script;
    script.maxFrames = 20 * 60 * 60; // twenty minutes of play
    const char* path = nullptr;
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--real-clock"))
            virtualClock = false;
        else if (!std::strcmp(argv[i], "--max-frames") && i + 1 < argc)
            script.maxFrames = std::strtoul(argv[++i], nullptr, 10);
        else if (!path)
            path = argv[i];
        else
            path = nullptr, i = argc;
    }
    if (!path) {
        std::fprintf(stderr, "usage: quarrow-driver [--real-clock] [--max-frames N] SCRIPT\n");
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
    GameStateLoop();
    GameShutdown();
    std::printf("driver: %lu frames presented\n", VXSeamFramesPresented());
    if (script.next < script.events.size())
        std::printf("driver: %zu events after the last frame were not run\n",
                    script.events.size() - script.next);
    return script.failures ? 1 : 0;
}
