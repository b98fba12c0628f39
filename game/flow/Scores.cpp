// The score file and the star ratings.
//
// The file is six lines "Level1:" ... "Level6:", each followed by the
// rating. The reader does not compare the labels: for each level it skips
// up to and including the next colon, at most 64 characters, and reads a
// decimal number after any white space. Depends on: the C++ file streams.
// Limits: reading stops at the first value that cannot be read; the levels
// after it keep their ratings.
#include "Scores.h"

#include <cstdio>
#include <fstream>

int gLevelRatings[6] = {0, 0, 0, 0, 0, 0};
int gStarsEarned = 0;

static const char* const kScoreFile = "Resources/Scores.txt";

// Reads the ratings by position; a missing file leaves them as they are.
void LoadScores(void) {
    std::ifstream file(kScoreFile);
    if (!file) return;
    for (int n = 0; n < 6; n++) {
        file.ignore(64, ':');
        // A value that cannot be read (or overflows) keeps the rating the
        // player already has rather than wiping it, and ends the reading.
        int value = 0;
        if (!(file >> value)) break;
        gLevelRatings[n] = value;
    }
}

// Replaces the score file with the six current ratings.
void SaveScores(void) {
    std::remove(kScoreFile);
    std::ofstream file(kScoreFile);
    if (!file) return;
    for (int n = 0; n < 6; n++) file << "Level" << n + 1 << ':' << gLevelRatings[n] << '\n';
}

// Crystal health at the boss's death to stars.
int StarsForCrystalHealth(int crystalHealth) {
    if (crystalHealth >= 60) return 3;
    if (crystalHealth >= 25) return 2;
    if (crystalHealth >= 1) return 1;
    return 0;
}

// Keeps the best rating a level has ever earned.
void RaiseLevelRating(int level, int stars) {
    if (level < 1 || level > 6) return;
    if (gLevelRatings[level - 1] < stars) gLevelRatings[level - 1] = stars;
}
