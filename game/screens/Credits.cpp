// The Credits state: the scrolling credits. Its screen is not built yet; the state runs
// empty frames until it is.
#include "GameStates.h"

void GameStateCreditsInit(void) {
}
void GameStateCreditsUpdate(void) {
}
void GameStateCreditsDraw(void) {
}
void CreditsFreeObjects(void) {
}
