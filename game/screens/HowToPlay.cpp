// The HowToPlay state: the how-to-play pages. Its screen is not built yet; the state runs
// empty frames until it is.
#include "GameStates.h"

void GameStateHowToPlayInit(void) {
}
void GameStateHowToPlayUpdate(void) {
}
void GameStateHowToPlayDraw(void) {
}
void HowToPlayFreeObjects(void) {
}
