// Shared helpers for the test programs.
#include "TestSupport.h"

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

#include "VXGraphics.h"
#include "VXSeam.h"
#include "VXSystem.h"

void TestPinGLDriver() {
    // The software GL driver is unloaded when the engine exits; leaks it
    // keeps would then be reported from an unnamed module that no
    // suppression can match. Kept loaded, they are named and suppressed.
    dlopen("/usr/lib/x86_64-linux-gnu/dri/swrast_dri.so", RTLD_NOW | RTLD_NODELETE);
}

void TestEngineStart() {
    TestPinGLDriver();
    if (chdir(QUARROW_BINARY_DIR) != 0) std::perror("chdir");
    VXSeamUseVirtualClock(true);
    VXSysInit(nullptr, 0, 800, 600, 0, 60, nullptr);
    VXGfxSetBackgroundColor(0.0f, 0.0f, 0.0f);
    VXSysReset();
}

void TestEngineStop() {
    VXSysExit();
    VXSeamUseVirtualClock(false);
    VXSeamSetFrameHook(nullptr, nullptr);
}

std::vector<unsigned char> TestReadFrame(int& width, int& height) {
    std::vector<unsigned char> rgba;
    VXSeamCaptureFrame(rgba, width, height);
    return rgba;
}

std::vector<unsigned char> TestDrawFrame(const std::function<void()>& draw, int& width,
                                         int& height) {
    VXSysFrameStart();
    draw();
    std::vector<unsigned char> rgba = TestReadFrame(width, height);
    VXSysFrameEnd();
    return rgba;
}

TestRgba TestPixelAtWorld(const std::vector<unsigned char>& rgba, int width, int height, float x,
                          float y) {
    // World (x, y) on the 800 x 600 logical window, stretched to the drawable.
    int px = (int)((x + 400.0f) * (float)width / 800.0f);
    int py = (int)((300.0f - y) * (float)height / 600.0f);
    if (px < 0 || py < 0 || px >= width || py >= height) return TestRgba{-1, -1, -1, -1};
    const unsigned char* p = &rgba[((size_t)py * width + px) * 4];
    return TestRgba{p[0], p[1], p[2], p[3]};
}

::testing::AssertionResult TestPixelNear(TestRgba actual, TestRgba expected,
                                         TestTolerance tolerance) {
    const int t = tolerance.steps;
    if (std::abs(actual.r - expected.r) <= t && std::abs(actual.g - expected.g) <= t &&
        std::abs(actual.b - expected.b) <= t)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << "pixel " << TestDescribe(actual) << ", expected " << TestDescribe(expected)
           << " within " << tolerance.name << " (" << t << " per colour channel)";
}

std::string TestDescribe(TestRgba c) {
    char text[64];
    std::snprintf(text, sizeof text, "(%d, %d, %d, %d)", c.r, c.g, c.b, c.a);
    return text;
}

int TestRunCommand(const std::string& command, std::string& output) {
    output.clear();
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (!pipe) return -1;
    char buffer[4096];
    size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) output.append(buffer, n);
    int status = pclose(pipe);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

std::string TestReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::string TestFileName(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

bool TestChannelPlaying(SoundChannel slot) {
    bool playing = false;
    ChannelIsPlaying(slot, &playing);
    return playing;
}

const TestSoundSlot kTestSoundSlots[6] = {
    {&gChannelArrow, "arrow"}, {&gChannelAmbience, "ambience"}, {&gChannelFinalWave, "final wave"},
    {&gChannelMenu, "menu"},   {&gChannelLose, "lose"},         {&gChannelWin, "win"}};

bool TestChannelPaused(SoundChannel slot) {
    bool paused = false;
    ChannelGetPaused(slot, &paused);
    return paused;
}

float TestChannelVolume(SoundChannel slot) {
    float volume = -1.0f;
    ChannelGetVolume(slot, &volume);
    return volume;
}

int TestRunDriverAlone(const std::string& folder, const std::string& arguments, std::string& output,
                       const std::string& driver) {
    return TestRunCommand("cd '" + folder + "' && xvfb-run -a -s '-screen 0 800x600x24' '" +
                              (driver.empty() ? TestDriverPath() : driver) + "' " + arguments,
                          output);
}

TileArray TestBoardRecords(int layoutId, const std::vector<int>& towers) {
    TileArray tiles;
    for (int i = 0; i < BOARD_TILE_COUNT; ++i) {
        auto t = std::make_unique<Tile>();
        t->tileIndex = i;
        t->moveCost = IsTileOnBoard(layoutId, i) ? 0u : 1000u;
        tiles.push_back(std::move(t));
    }
    tiles[BOARD_GOAL_TILE]->moveCost = 1;
    for (int t : towers) tiles[t]->moveCost = 2;
    return tiles;
}

int TestRunThisProgram(const std::string& filter, const std::string& env, std::string& output,
                       bool ownDisplay) {
    char self[4096] = {};
    ssize_t n = readlink("/proc/self/exe", self, sizeof self - 1);
    if (n <= 0) return -1000;
    const std::string display = ownDisplay ? "xvfb-run -a -s '-screen 0 1280x1024x24' " : "";
    return TestRunCommand("env " + env + " " + display + "'" + std::string(self, size_t(n)) +
                              "' --gtest_filter=" + filter,
                          output);
}

std::string TestBinaryDir() {
    return QUARROW_BINARY_DIR;
}
std::string TestResourcesDir() {
    return std::string(QUARROW_BINARY_DIR) + "/Resources";
}
std::string TestSourceDir() {
    return QUARROW_SOURCE_DIR;
}
std::string TestDriverPath() {
    return QUARROW_DRIVER;
}
std::string TestGamePath() {
    return QUARROW_GAME;
}

std::string TestScratchGameFolder() {
    namespace fs = std::filesystem;
    char pattern[] = "/tmp/quarrow-game-XXXXXX";
    if (!mkdtemp(pattern)) return "";
    const fs::path resources = fs::path(pattern) / "Resources";
    fs::create_directory(resources);
    for (const fs::directory_entry& entry : fs::directory_iterator(TestResourcesDir()))
        if (entry.path().filename() != "Scores.txt")
            fs::create_symlink(entry.path(), resources / entry.path().filename());
    return pattern;
}
