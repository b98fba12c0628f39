// The score file and the star ratings.
//
// The file is six lines "Level1:" ... "Level6:", each followed by the
// rating. The reader does not compare the labels: for each level it skips
// up to and including the next colon, at most 64 characters, and reads a
// decimal number after any white space. Writing replaces the file whole
// (see SaveScores). Depends on: the C++ file streams, POSIX fsync and rename.
// Limits: reading stops at the first value that cannot be read; the levels
// after it keep their ratings.
#include "Scores.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>

int gLevelRatings[6] = {0, 0, 0, 0, 0, 0};
int gStarsEarned = 0;

static const char* const kScoreFolder = "Resources";
static const char* const kScoreFile = "Resources/Scores.txt";
// The next score file, written in full before it replaces the score file.
static const char* const kScoreFileNew = "Resources/Scores.txt.new";

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
//
// The lines go to a file beside the score file first, and only once they
// are all written and on the disk does a rename put that file in the score
// file's place. A rename replaces a file whole, so whenever the game is
// killed or the disk fills up, the score file is either the old one or the
// new one, never empty or cut short: a player never loses a star already
// earned. A file that cannot be created at all still takes the old file
// with it, as the game has always done; a write that fails part way keeps
// the old file, which is the one the player would want.
void SaveScores(void) {
    FILE* file = std::fopen(kScoreFileNew, "w");
    if (!file) {
        std::remove(kScoreFile);
        return;
    }
    bool written = true;
    for (int n = 0; n < 6; n++)
        written = written && std::fprintf(file, "Level%d:%d\n", n + 1, gLevelRatings[n]) > 0;
    written = written && std::fflush(file) == 0 && fsync(fileno(file)) == 0;
    written = std::fclose(file) == 0 && written;
    if (!written || std::rename(kScoreFileNew, kScoreFile) != 0) {
        std::remove(kScoreFileNew);
        return;
    }
    // The rename itself is on the disk once the folder is.
    const int folder = open(kScoreFolder, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        fsync(folder);
        close(folder);
    }
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
