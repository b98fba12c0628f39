// The Level state: a level being played. Its screen is not built yet; the state runs
// empty frames until it is.
#include "GameStates.h"
#include "Level.h"

int gCurrentLevel = 1;

void GameStateLevelLoad(void) {
}
void GameStateLevelInit(void) {
}
void GameStateLevelUpdate(void) {
}
void GameStateLevelDraw(void) {
}
void GameStateLevelFree(void) {
}
void GameStateLevelUnload(void) {
}
