// CTest label: integration
// The script driver: scripts are checked before the game runs, frames are
// captured, closing the window ends the game in order; and the game exports
// the engine's interface by name. (No sound device: test_faults_driver.)
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "TestSupport.h"
#include "VXImage.h"

namespace {

// Named by the process: another run of these tests may write its own.
std::string WriteScript(const std::string& name, const std::string& text) {
    std::string path = testing::TempDir() + std::to_string(getpid()) + "-" + name;
    std::ofstream(path) << text;
    return path;
}

int RunDriver(const std::string& script, std::string& output) {
    return TestRunCommand("cd " + TestBinaryDir() + " && " + TestDriverPath() + " " + script,
                          output);
}

TEST(Driver, AMalformedScriptIsRefusedWithItsLineBeforeTheGameStarts) {
    struct Case {
        const char* name;
        const char* text;
        int line;
    } cases[] = {
        {"too few coordinates", "10 move 1\n", 1},
        {"unknown key after a comment and a blank", "# warm up\n\n5 tap nokey\n", 3},
        {"no thirteenth function key", "1 tap f12\n2 tap f13\n", 2},
        {"a key name with trailing letters", "1 press f1x\n", 1},
        {"no frame number", "move 1 2\n", 1},
        {"negative frame", "0 close\n-4 close\n", 2},
        {"capture without a file", "1 move 3 4\n3 capture\n", 2},
        {"close with arguments", "2 close now\n", 1},
        {"unknown command", "1 press space\n5 fly away\n", 2},
        {"coordinates that are not numbers", "7 click 1x 2\n", 1},
    };
    for (const Case& c : cases) {
        std::string path = WriteScript("bad.txt", c.text), output;
        EXPECT_EQ(RunDriver(path, output), 2) << c.name;
        EXPECT_NE(output.find("bad.txt:" + std::to_string(c.line) + ":"), std::string::npos)
            << c.name << "\n"
            << output;
        EXPECT_EQ(output.find("Vexa Engine"), std::string::npos) << c.name << ": the game ran";
    }
}

TEST(Driver, RunsTheGameCapturesFramesAndClosesItInOrder) {
    std::string shot = testing::TempDir() + std::to_string(getpid()) + "-shot.png";
    std::string path = WriteScript("good.txt", "# the splash screen for a third of a second\n"
                                               "3 move 400 300\n"
                                               "10 capture " +
                                                   shot +
                                                   "\n"
                                                   "19 close\n"
                                                   "500 tap space\n");
    std::string output;
    EXPECT_EQ(RunDriver(path, output), 0) << output;
    EXPECT_NE(output.find("Vexa Engine version: 3.05"), std::string::npos) << output;
    EXPECT_NE(output.find("Graphics: OpenGL"), std::string::npos) << output;
    EXPECT_NE(output.find("driver: 20 frames presented"), std::string::npos) << output;
    EXPECT_NE(output.find("2 events after the last frame"), std::string::npos) << output;
    std::vector<unsigned char> rgba;
    int w = 0, h = 0;
    ASSERT_TRUE(VXImageDecodePNGFile(shot.c_str(), rgba, w, h));
    // The game runs full screen: the test display is 1280 x 1024.
    EXPECT_EQ(w, 1280);
    EXPECT_EQ(h, 1024);
}

TEST(Game, ExportsTheEngineInterfaceByName) {
    std::string output;
    ASSERT_EQ(TestRunCommand("nm -D --defined-only " + TestGamePath(), output), 0);
    for (const char* name :
         {"VXSysInit", "VXSysFrameStart", "VXToogleFullScreen", "VXGetTime", "VXRandFloat",
          "VXFrameRateControllerEnd", "VXInputCheckTriggered", "VXInputGetCursorPosition",
          "VXGfxInit", "VXGfxSetRenderMode", "VXGfxMeshDraw", "VXGfxTextureLoad", "VXGfxTextureSet",
          "gVXWinScaleX", "gVXFullScreen", "gVXInputKeyCurr", "gVXWinMinX"})
        EXPECT_NE(output.find(std::string(" ") + name + "\n"), std::string::npos) << name;
    // The game's own names stay inside.
    EXPECT_EQ(output.find("GameStateManagerBind"), std::string::npos);
}

} // namespace
