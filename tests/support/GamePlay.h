// GamePlay: the real game (start-up, state loop, shutdown) on the engine's
// virtual clock, with a test script on a second thread taking turns with it
// one presented frame at a time. The script sees the game after each frame
// is drawn (before it is shown), injects input (seen by the next frame) and
// can run code on the game's thread.
//
//   GamePlay play;
//   play.Run(GS_NEXT_SCREEN, 1, 1234, [](GameScript& s) {
//       s.Until([] { return gGameStateCurr == GS_LEVEL; });
//       s.ClickWorld(330, 250);
//   });
//
// When the script returns, the window is closed and the game shuts down in
// order. Each run plays in a folder of its own whose Resources links to the
// built files but keeps its own score file (GamePlay::ScoreFile).
#pragma once

#include <cstdio>
#include <functional>
#include <string>

class GameScript {
  public:
    // Lets n frames be drawn; returns false once the game has ended.
    bool Frames(int n);
    // Lets frames be drawn until the condition holds after a frame (checked
    // before the first too). Returns the frames waited, or -1 when the game
    // ended or the limit passed first.
    int Until(const std::function<bool()>& condition, int limit = 60 * 60 * 20);
    // Runs f on the script's side after every frame from now on (before any
    // condition of Until looks at it): checks that must hold in every frame.
    void EveryFrame(const std::function<void()>& f) { everyFrame_ = f; }

    // Input, seen by the game from the next frame on. Positions are logical
    // window pixels of the 800 x 600 window (or world units for *World).
    void Move(int x, int y);
    void MoveWorld(float x, float y);
    void Press(unsigned char key);
    void Release(unsigned char key);
    // Moves there and lets a frame pass, presses the left button and lets
    // the frame of the press pass, then releases it: the script goes on in
    // the frame that took the click.
    void ClickWorld(float x, float y);
    // Presses and releases a key over two frames.
    void Tap(unsigned char key);
    void Close();

    // Writes every input given from now on, and every Note, as a script for
    // the driver (tools/driver): replaying it with the same seed plays the
    // same game. Returns false when the file cannot be written.
    bool RecordTo(const std::string& path);
    // A line for the driver's script at this frame ("report", "capture X",
    // a "# comment").
    void Note(const std::string& line);

    // Runs f on the game's thread, inside the current frame (its renderer is
    // current there): set up a scene, read pixels, capture a picture.
    void OnGameThread(const std::function<void()>& f);
    bool CapturePNG(const std::string& path);

    // Frames drawn in the running state so far, counting the current one
    // (the engine's frame count + 1), and since the program started.
    unsigned FramesInState() const;
    unsigned long FramesPresented() const { return presented_; }
    bool GameOver() const { return over_; }

  private:
    friend class GamePlay;
    // Writes one event of this frame to the recording, if one is kept.
    void Write(const std::string& event);
    class GamePlay* play_ = nullptr;
    std::FILE* record_ = nullptr;
    std::function<void()> everyFrame_;
    unsigned long presented_ = 0;
    bool over_ = false;
};

class GamePlay {
  public:
    // Starts the game, seeds its random numbers, and enters `state` with
    // gCurrentLevel = level instead of the splash screen (the splash screen
    // itself when state is GS_SPLASH_SCREEN). windowed: leave full screen
    // after start-up, so one logical pixel is one screen pixel. Returns
    // the frames presented.
    unsigned long Run(int state, int level, unsigned seed,
                      const std::function<void(GameScript&)>& script, bool windowed = false);

    // The run's score file; a test may write it before Run to start from
    // given ratings. Valid from construction until the GamePlay is gone.
    std::string ScoreFile() const;
    // The run's own working folder.
    const std::string& Folder() const { return folder_; }

    GamePlay();
    ~GamePlay();
    GamePlay(const GamePlay&) = delete;
    GamePlay& operator=(const GamePlay&) = delete;

  private:
    friend class GameScript;
    static void Hook(unsigned long frame, void* user);
    std::string folder_;
    struct Shared;
    Shared* shared_ = nullptr;
};
