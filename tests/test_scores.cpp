// The score file: reading by position, every malformed shape, writing, and
// the star rule. Each case works in a scratch folder of its own.
#include "Scores.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

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
    static void Store(const int (&ratings)[6]) {
        for (int i = 0; i < 6; i++) gLevelRatings[i] = ratings[i];
    }
    static void WriteFile(const std::string& content) {
        std::ofstream("Resources/Scores.txt", std::ios::binary) << content;
    }
    static std::string ReadFile() {
        std::ifstream in("Resources/Scores.txt", std::ios::binary);
        return std::string((std::istreambuf_iterator<char>(in)), {});
    }
    std::string dir;
    std::filesystem::path previous;
};

} // namespace

TEST_F(Scores, FilesOfEveryShapeAreReadUpToTheFirstBadValue) {
    const std::string longLabel(70, 'x');
    struct Case {
        const char* name;
        std::string content; // "(none)" means no file at all
        int expected[6];
    } cases[] = {
        {"no file keeps the ratings", "(none)", {7, 7, 7, 7, 7, 7}},
        {"written by the game",
         "Level1:3\nLevel2:2\nLevel3:0\nLevel4:0\nLevel5:0\nLevel6:0\n",
         {3, 2, 0, 0, 0, 0}},
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
        {"only three lines", "Level1:1\nLevel2:1\nLevel3:1\n", {1, 1, 1, 7, 7, 7}},
        {"cut inside a label", "Level1:2\nLev", {2, 7, 7, 7, 7, 7}},
        {"a letter where a number stands", "Level1:2\nLevel2:x\nLevel3:3\n", {2, 7, 7, 7, 7, 7}},
        {"no colon at all", "Level1 3\nLevel2 3\n", {7, 7, 7, 7, 7, 7}},
        {"label over 64 characters", longLabel + ":3\nLevel2:1\n", {7, 7, 7, 7, 7, 7}},
        {"skip of 64 ends on digits", std::string(64, 'y') + "2:1\n", {2, 1, 7, 7, 7, 7}},
        {"negative and large values as read",
         "a:-4\nb:2147483647\nc:0\nd:9\ne:1\nf:-1\n",
         {-4, 2147483647, 0, 9, 1, -1}},
        {"a number too large for a rating", "a:1\nb:99999999999\nc:3\n", {1, 7, 7, 7, 7, 7}},
        {"binary noise",
         std::string("\x00\xff\x13:\x80\x01", 6) + std::string(300, '\xfe'),
         {7, 7, 7, 7, 7, 7}},
        {"huge file of colons and digits", std::string(4'000'000, ':') + "5", {7, 7, 7, 7, 7, 7}},
        {"huge run of digits", "a:" + std::string(2'000'000, '9'), {7, 7, 7, 7, 7, 7}},
    };
    for (const Case& c : cases) {
        std::filesystem::remove("Resources/Scores.txt");
        if (c.content != "(none)") WriteFile(c.content);
        Store({7, 7, 7, 7, 7, 7});
        LoadScores();
        for (int i = 0; i < 6; i++)
            EXPECT_EQ(c.expected[i], gLevelRatings[i]) << c.name << ", level " << i + 1;
    }
}

TEST_F(Scores, SaveWritesSixLinesAndReadsBackTheSame) {
    WriteFile(std::string(10000, 'z')); // an old file is replaced, not appended to
    Store({3, 0, 2, -1, 12, 1});
    SaveScores();
    EXPECT_EQ("Level1:3\nLevel2:0\nLevel3:2\nLevel4:-1\nLevel5:12\nLevel6:1\n", ReadFile());
    Store({0, 0, 0, 0, 0, 0});
    LoadScores();
    const int expected[6] = {3, 0, 2, -1, 12, 1};
    for (int i = 0; i < 6; i++) EXPECT_EQ(expected[i], gLevelRatings[i]) << "level " << i + 1;
}

TEST_F(Scores, SaveWithoutAFolderWritesNothingAndGoesOn) {
    std::filesystem::remove_all("Resources");
    Store({1, 1, 1, 1, 1, 1});
    SaveScores();
    EXPECT_FALSE(std::filesystem::exists("Resources/Scores.txt"));
    EXPECT_EQ(1, gLevelRatings[0]);
}

TEST(StarRule, CrystalHealthAtTheBossDeathGivesTheStars) {
    struct Case {
        int health, stars;
    } cases[] = {
        {100, 3}, {60, 3}, {59, 2}, {25, 2}, {24, 1}, {1, 1}, {0, 0}, {-5, 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.stars, StarsForCrystalHealth(c.health)) << "crystal health " << c.health;
}

TEST(StarRule, StoredRatingIsRaisedButNeverLowered) {
    struct Case {
        const char* name;
        int level, before, stars, after;
    } cases[] = {
        {"first win", 2, 0, 2, 2},
        {"better win", 3, 1, 3, 3},
        {"worse win keeps three", 4, 3, 2, 3},
        {"no stars keeps the rating", 5, 1, 0, 1},
        {"last level", 6, 0, 1, 1},
    };
    for (const Case& c : cases) {
        gLevelRatings[c.level - 1] = c.before;
        RaiseLevelRating(c.level, c.stars);
        EXPECT_EQ(c.after, gLevelRatings[c.level - 1]) << c.name;
    }
    // Level 7 (after continuing from the last level) has no rating to raise.
    RaiseLevelRating(7, 3);
    RaiseLevelRating(0, 3);
}
