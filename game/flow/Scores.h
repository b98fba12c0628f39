// The score file "Resources/Scores.txt" and the star ratings: the best
// rating (0 to 3 stars) of each of the six levels, kept between runs.
#pragma once

// Best rating of each level, element 0 for level 1; 0 means not yet won.
extern int gLevelRatings[6];
// Rating earned by the level just won (1 to 3); 0 while there is none.
extern int gStarsEarned;

// Reads the score file into gLevelRatings. A missing file changes nothing;
// reading stops at the first value that cannot be read.
void LoadScores(void);
// Writes gLevelRatings to the score file, replacing the old one.
void SaveScores(void);

// Stars for the crystal's health at the boss's death: 3 from 60, 2 from 25,
// 1 from 1, and 0 (nothing earned) when the crystal has no health left.
int StarsForCrystalHealth(int crystalHealth);
// Raises the stored rating of level (1 to 6) to stars; never lowers it.
void RaiseLevelRating(int level, int stars);
