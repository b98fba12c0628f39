// The program's start-up, state loop and shutdown. main() runs all three;
// the driver tool and the tests run them one by one.
#pragma once

extern float gFrameTime;

void GameStartup(void);
void GameStateLoop(void);
void GameShutdown(void);
int GameMain(void);

// Ends the program on a fault it cannot go on from: the printf-style
// message on standard output, flushed, then the exit status. Every fatal
// end of the game goes through here.
[[noreturn]] void GameFatalExit(int status, const char* format, ...)
    __attribute__((format(printf, 2, 3)));
