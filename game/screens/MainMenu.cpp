// The MainMenu state: the main menu and level select. Its screen is not built yet; the state runs
// empty frames until it is.
#include "GameStates.h"

void GameStateMainMenuLoad(void) {
}
void GameStateMainMenuInit(void) {
}
void GameStateMainMenuUpdate(void) {
}
void GameStateMainMenuDraw(void) {
}
void GameStateMainMenuFree(void) {
}
void GameStateMainMenuUnload(void) {
}
void MainMenuFreeObjects(void) {
}
