// The score file: reading by position, malformed shapes (any bytes at all
// are fuzzed by fuzz_scores), writing (also when the game is killed
// mid-write or the disk is full). The star rule is checked where the boss
// dies (test_projectiles).
#include "Scores.h"
#include "TestSupport.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>

namespace {

// Runs the test inside a fresh folder holding an empty Resources folder.
class Scores : public ::testing::Test {
  protected:
    void SetUp() override {
        char pattern[] = "/tmp/quarrow-scores-XXXXXX";
        ASSERT_NE(nullptr, mkdtemp(pattern));
        dir = pattern;
        std::filesystem::create_directory(dir + "/Resources");
        previous = std::filesystem::current_path();
        std::filesystem::current_path(dir);
    }
    void TearDown() override {
        std::filesystem::current_path(previous);
        std::filesystem::remove_all(dir);
    }
    std::string dir;
    std::filesystem::path previous;
};

void Store(const int (&ratings)[6]) {
    for (int i = 0; i < 6; i++) gLevelRatings[i] = ratings[i];
}
void WriteFile(const std::string& content) {
    std::ofstream("Resources/Scores.txt", std::ios::binary) << content;
}
std::string ReadFile() {
    return TestReadFile("Resources/Scores.txt");
}

// The file SaveScores writes for these ratings, worked out by hand.
const char* const kOldText = "Level1:3\nLevel2:2\nLevel3:0\nLevel4:0\nLevel5:0\nLevel6:0\n";
const int kNewRatings[6] = {3, 3, 1, 0, 0, 0};
const char* const kNewText = "Level1:3\nLevel2:3\nLevel3:1\nLevel4:0\nLevel5:0\nLevel6:0\n";

// Runs f in a child process and returns what it reports ("" for success);
// the child may change its limits and mounts without touching the test.
std::string InChild(const std::function<std::string()>& f) {
    int pipeEnds[2];
    if (pipe(pipeEnds) != 0) return "no pipe";
    const pid_t child = fork();
    if (child == 0) {
        close(pipeEnds[0]);
        const std::string report = f();
        if (write(pipeEnds[1], report.data(), report.size()) < 0) _exit(2);
        _exit(0);
    }
    close(pipeEnds[1]);
    std::string report;
    char buffer[256];
    for (ssize_t n; (n = read(pipeEnds[0], buffer, sizeof buffer)) > 0;) report.append(buffer, n);
    close(pipeEnds[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) report += " (child did not end well)";
    return report;
}

// A mount of its own for this process: root's mounts namespace, or, for a
// user who is not root, a user namespace in which it is.
bool OwnMountNamespace() {
    if (unshare(CLONE_NEWNS) != 0) {
        const uid_t uid = getuid();
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
        std::ofstream("/proc/self/setgroups") << "deny";
        std::ofstream("/proc/self/uid_map") << "0 " << uid << " 1";
    }
    // Nothing mounted here may show outside.
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

} // namespace

TEST_F(Scores, FilesOfEveryShapeAreReadUpToTheFirstBadValue) {
    const int kept[6] = {7, 7, 7, 7, 7, 7};
    struct Case {
        const char* name;
        std::string content; // "(none)" means no file at all
        int expected[6];
    } cases[] = {
        {"no file keeps the ratings", "(none)", {7, 7, 7, 7, 7, 7}},
        {"written by the game", kOldText, {3, 2, 0, 0, 0, 0}},
        {"line ends of another system",
         "Level1:1\r\nLevel2:2\r\nLevel3:3\r\nLevel4:1\r\nLevel5:2\r\nLevel6:3\r\n",
         {1, 2, 3, 1, 2, 3}},
        {"other labels read by position",
         "Stage1:2\nfoo:1\n:3\nX:0\nY:1\nZ:2\n",
         {2, 1, 3, 0, 1, 2}},
        {"white space before the numbers",
         "L1:  3\nL2:\t\n\n2\nL3:1 L4:1 L5:1 L6:1",
         {3, 2, 1, 1, 1, 1}},
        {"empty file", "", {7, 7, 7, 7, 7, 7}},
        {"cut inside a label", "Level1:2\nLev", {2, 7, 7, 7, 7, 7}},
        {"a letter where a number stands", "Level1:2\nLevel2:x\nLevel3:3\n", {2, 7, 7, 7, 7, 7}},
        {"label over 64 characters", std::string(70, 'x') + ":3\nLevel2:1\n", {7, 7, 7, 7, 7, 7}},
        {"skip of 64 ends on digits", std::string(64, 'y') + "2:1\n", {2, 1, 7, 7, 7, 7}},
        {"negative and large values as read",
         "a:-4\nb:2147483647\nc:0\nd:9\ne:1\nf:-1\n",
         {-4, 2147483647, 0, 9, 1, -1}},
        {"a number too large for a rating", "a:1\nb:99999999999\nc:3\n", {1, 7, 7, 7, 7, 7}},
    };
    for (const Case& c : cases) {
        std::filesystem::remove("Resources/Scores.txt");
        if (c.content != "(none)") WriteFile(c.content);
        Store(kept);
        LoadScores();
        for (int i = 0; i < 6; i++)
            EXPECT_EQ(c.expected[i], gLevelRatings[i]) << c.name << ", level " << i + 1;
    }
}

TEST_F(Scores, SaveWritesSixLinesAndReadsBackTheSame) {
    WriteFile(std::string(10000, 'z')); // an old file is replaced, not appended to
    const int ratings[6] = {3, 0, 2, -1, 12, 1};
    Store(ratings);
    SaveScores();
    EXPECT_EQ("Level1:3\nLevel2:0\nLevel3:2\nLevel4:-1\nLevel5:12\nLevel6:1\n", ReadFile());
    Store({0, 0, 0, 0, 0, 0});
    LoadScores();
    for (int i = 0; i < 6; i++) EXPECT_EQ(ratings[i], gLevelRatings[i]) << "level " << i + 1;
}

// A file that cannot be created at all still takes the old one with it;
// with no folder nothing is written and the game goes on.
TEST_F(Scores, SaveThatCannotCreateItsFileLeavesTheOldOneDeleted) {
    WriteFile(kOldText);
    std::filesystem::create_directory("Resources/Scores.txt.new"); // the new file's place
    Store(kNewRatings);
    SaveScores();
    EXPECT_FALSE(std::filesystem::exists("Resources/Scores.txt"));
    std::filesystem::remove_all("Resources");
    SaveScores();
    EXPECT_FALSE(std::filesystem::exists("Resources/Scores.txt"));
    EXPECT_EQ(3, gLevelRatings[0]);
}

// The game killed at any moment of a write leaves the old file or the new
// one. A child writes the two files in turn without end, telling the test
// after each write; the test lets it finish one to four writes, then kills
// it somewhere inside the next ones, 300 times. The delays are measured in
// writes on this very disk, since a write with its flushes takes a few
// microseconds on one machine and milliseconds on another.
TEST_F(Scores, KilledWhileWritingLeavesTheOldFileOrTheNewOne) {
    const auto start = std::chrono::steady_clock::now();
    for (int n = 0; n < 20; ++n) SaveScores();
    const auto oneWrite = std::chrono::duration_cast<std::chrono::microseconds>(
                              std::chrono::steady_clock::now() - start) /
                          20;
    WriteFile(kOldText);
    unsigned seed = 12345;
    int sawOld = 0, sawNew = 0;
    for (int kill = 0; kill < 300; ++kill) {
        int done[2];
        ASSERT_EQ(0, pipe(done));
        const pid_t child = fork();
        if (child == 0) {
            close(done[0]);
            for (int n = 0;; ++n) {
                if (n % 2)
                    Store(kNewRatings);
                else
                    Store({3, 2, 0, 0, 0, 0});
                SaveScores();
                if (write(done[1], "w", 1) != 1) _exit(1);
            }
        }
        close(done[1]);
        seed = seed * 1103515245u + 12345u;
        char mark;
        for (unsigned finished = 0; finished < 1 + (seed >> 16) % 4; ++finished)
            ASSERT_EQ(1, read(done[0], &mark, 1));
        seed = seed * 1103515245u + 12345u;
        std::this_thread::sleep_for(oneWrite * ((seed >> 8) % 2000) / 1000);
        ::kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        close(done[0]);
        const std::string text = ReadFile();
        sawOld += text == kOldText;
        sawNew += text == kNewText;
        ASSERT_TRUE(text == kOldText || text == kNewText) << "kill " << kill << " left:\n" << text;
    }
    EXPECT_GT(sawOld, 0);
    EXPECT_GT(sawNew, 0);
}

// A write that fails part way keeps the old file and leaves nothing beside
// it: a full disk (a 16 KiB tmpfs mounted over Resources and filled up) and
// a file-size limit that cuts the write after 20 bytes.
TEST_F(Scores, WriteFailingPartWayKeepsTheOldFile) {
    // Where the files go, then what breaks the writing.
    auto check = [](const std::function<bool()>& prepare,
                    const std::function<void()>& breakWriting) -> std::string {
        if (!prepare()) return "no tmpfs of our own can be mounted here";
        WriteFile(kOldText);
        breakWriting();
        Store(kNewRatings);
        SaveScores();
        const std::string text = ReadFile();
        if (text != kOldText) return "the score file became:\n" + text;
        if (std::filesystem::exists("Resources/Scores.txt.new")) return "a new file was left";
        return "";
    };
    const std::string fullDisk = InChild([&] {
        return check(
            [] {
                return OwnMountNamespace() &&
                       mount("tmpfs", "Resources", "tmpfs", 0, "size=16k") == 0;
            },
            [] {
                std::FILE* filler = std::fopen("Resources/filler", "w");
                static const char block[1024] = {};
                while (filler && std::fwrite(block, 1, sizeof block, filler) == sizeof block &&
                       std::fflush(filler) == 0) {
                }
                if (filler) std::fclose(filler);
            });
    });
    EXPECT_EQ("", fullDisk) << "full disk";
    const std::string cutShort = InChild([&] {
        return check([] { return true; },
                     [] {
                         signal(SIGXFSZ, SIG_IGN);
                         const rlimit limit = {20, 20};
                         setrlimit(RLIMIT_FSIZE, &limit);
                     });
    });
    EXPECT_EQ("", cutShort) << "write cut after 20 bytes";
}
