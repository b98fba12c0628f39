// The operations of every screen, bound by the state table.
#pragma once

void GameStateSplashScreenLoad(void);
void GameStateSplashScreenInit(void);
void GameStateSplashScreenUpdate(void);
void GameStateSplashScreenDraw(void);
void GameStateSplashScreenUnload(void);

void GameStateMainMenuLoad(void);
void GameStateMainMenuInit(void);
void GameStateMainMenuUpdate(void);
void GameStateMainMenuDraw(void);
void GameStateMainMenuFree(void);
void GameStateMainMenuUnload(void);

void GameStateLevelLoad(void);
void GameStateLevelInit(void);
void GameStateLevelUpdate(void);
void GameStateLevelDraw(void);
void GameStateLevelFree(void);
void GameStateLevelUnload(void);

void GameStateCreditsInit(void);
void GameStateCreditsUpdate(void);
void GameStateCreditsDraw(void);

void GameStateHowToPlayInit(void);
void GameStateHowToPlayUpdate(void);
void GameStateHowToPlayDraw(void);

void GameStateNextScreenInit(void);
void GameStateNextScreenUpdate(void);
void GameStateNextScreenDraw(void);

// What the screens keep from one entry to the next (pictures and buttons
// that their next entry replaces), released once at shutdown while the
// renderer still runs.
void MainMenuFreeObjects(void);
void CreditsFreeObjects(void);
void HowToPlayFreeObjects(void);
void NextScreenFreeObjects(void);
void GameStatesFreeObjects(void);
