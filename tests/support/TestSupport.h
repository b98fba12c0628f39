// Shared helpers for the test programs: start the real engine headless,
// read back pictures, run programs as subprocesses.
#pragma once

#include <string>
#include <vector>

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

// Reads the picture drawn so far in this frame (call before VXGfxEnd).
std::vector<unsigned char> TestReadFrame(int& width, int& height);
// The pixel under the world point (x, y) of the 800 x 600 logical window in
// the last TestReadFrame picture (world origin at the centre, y up).
TestRgba TestPixelAtWorld(const std::vector<unsigned char>& rgba, int width, int height, float x,
                          float y);
// True when every channel differs by at most tolerance.
bool TestNear(TestRgba a, TestRgba b, int tolerance);
std::string TestDescribe(TestRgba c);

// A fresh folder under /tmp whose Resources links to every built picture
// and sound but not to the score file: a game played there reads and
// writes a score file of its own while other tests run beside it.
std::string TestScratchGameFolder();

// Runs a shell command, returns its exit status and everything it printed
// on standard output and standard error.
int TestRunCommand(const std::string& command, std::string& output);

// Where things are: the build folder (the game's working directory), its
// Resources, the source tree, the game and the driver executables.
std::string TestBinaryDir();
std::string TestResourcesDir();
std::string TestSourceDir();
std::string TestDriverPath();
std::string TestGamePath();
