// The program's start-up, state loop and shutdown. main() runs all three;
// the driver tool and the tests run them one by one.
#pragma once

extern float gFrameTime;

void GameStartup(void);
void GameStateLoop(void);
void GameShutdown(void);
int GameMain(void);
