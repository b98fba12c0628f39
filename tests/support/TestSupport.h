// Shared helpers for the test programs: start the real engine headless,
// read back pictures, run programs as subprocesses.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "Audio.h"
#include "Tile.h"

struct TestRgba {
    int r, g, b, a;
};

// Starts the engine in an 800 x 600 window (windowed, so one logical pixel is
// one screen pixel) on the virtual clock, with a black clear colour, inside
// the build folder that holds Resources. Stop undoes it.
void TestEngineStart();
void TestEngineStop();
// Keeps the system's software GL driver loaded until exit (done by
// TestEngineStart), so leak reports can name and suppress its allocations.
void TestPinGLDriver();

// Runs one whole frame (frame start, draw, frame end) and returns its
// picture as drawn, before it was shown.
std::vector<unsigned char> TestDrawFrame(const std::function<void()>& draw, int& width,
                                         int& height);
// Reads the picture drawn so far in this frame (call before VXGfxEnd).
std::vector<unsigned char> TestReadFrame(int& width, int& height);
// The pixel under the world point (x, y) of the 800 x 600 logical window in
// the last TestReadFrame picture (world origin at the centre, y up).
TestRgba TestPixelAtWorld(const std::vector<unsigned char>& rgba, int width, int height, float x,
                          float y);
std::string TestDescribe(TestRgba c);

// How far a pixel read back may stray from its hand-worked value, per colour
// channel (alpha is not compared: the presented picture's alpha means
// nothing), and why that much.
struct TestTolerance {
    const char* name;
    int steps;
};
// The value exactly: no arithmetic between the texel or vertex and the pixel.
constexpr TestTolerance kTestExact = {"exact", 0};
// One 8-bit step: the driver rounds a blended or tinted value either way.
constexpr TestTolerance kTestRounding = {"8-bit rounding", 1};
// Two 8-bit steps: two roundings in a row (a tint, then a blend).
constexpr TestTolerance kTestTwoRoundings = {"two 8-bit roundings", 2};
// Every pixel assertion goes through this: its message names the expected
// and the actual pixel and the tolerance allowed.
::testing::AssertionResult TestPixelNear(TestRgba actual, TestRgba expected,
                                         TestTolerance tolerance);
// A fresh folder under /tmp whose Resources links to every built picture
// and sound but not to the score file: a game played there reads and
// writes a score file of its own while other tests run beside it.
std::string TestScratchGameFolder();

// Runs a shell command, returns its exit status and everything it printed
// on standard output and standard error.
int TestRunCommand(const std::string& command, std::string& output);

// The whole file as it is on disk ("" when it cannot be read).
std::string TestReadFile(const std::string& path);
// A path's last part: the file name without its folder.
std::string TestFileName(const std::string& path);
// Whether a sound plays in the channel slot (paused counts as playing).
bool TestChannelPlaying(SoundChannel slot);
// Whether the slot's sound is held (false when nothing plays in it).
bool TestChannelPaused(SoundChannel slot);
// The slot's volume; -1 when nothing plays in it.
float TestChannelVolume(SoundChannel slot);
// The game's six channel slots, written out here rather than taken from the
// sound bank, so a slot the game forgets is one these tests still play into.
struct TestSoundSlot {
    SoundChannel* slot;
    const char* name;
};
extern const TestSoundSlot kTestSoundSlots[6];

// Runs a driver (the sanitized one unless named) in the folder with the
// arguments, on an 800 x 600 X display of its own, so its clicks never meet
// another test's window; returns its exit status and everything it printed.
int TestRunDriverAlone(const std::string& folder, const std::string& arguments, std::string& output,
                       const std::string& driver = "");

// A level's board as tile records without meshes (no renderer needed, as
// the path search sees it): on-board tiles free, the rest off the board
// (moveCost 1000), the crystal on tile 55, first-tier towers on the given
// tiles.
TileArray TestBoardRecords(int layoutId, const std::vector<int>& towers);

// Runs one test of this very program (a gtest filter) in a child process,
// with extra environment settings ("NAME=value ..."), optionally on an X
// display of its own; returns its exit status and everything it printed.
int TestRunThisProgram(const std::string& filter, const std::string& env, std::string& output,
                       bool ownDisplay = false);

// Where things are: the build folder (the game's working directory), its
// Resources, the source tree, the game and the driver executables.
std::string TestBinaryDir();
std::string TestResourcesDir();
std::string TestSourceDir();
std::string TestDriverPath();
std::string TestGamePath();
