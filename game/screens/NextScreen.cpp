// The NextScreen state: the screen between levels. Its screen is not built yet; the state runs
// empty frames until it is.
#include "GameStates.h"

void GameStateNextScreenInit(void) {
}
void GameStateNextScreenUpdate(void) {
}
void GameStateNextScreenDraw(void) {
}
