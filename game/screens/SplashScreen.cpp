// The SplashScreen state: the splash screen with the two logos. Its screen is not built yet; the
// state runs empty frames until it is.
#include "GameStates.h"

void GameStateSplashScreenLoad(void) {
}
void GameStateSplashScreenInit(void) {
}
void GameStateSplashScreenUpdate(void) {
}
void GameStateSplashScreenDraw(void) {
}
void GameStateSplashScreenUnload(void) {
}
