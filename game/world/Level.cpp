// Level: the six operations of GS_LEVEL, frame by frame.
//
// Depends on: see Level.h. Limits: one level at a time; its objects live
// from its init to its free, its board from its load to its unload.
#include "Level.h"

#include <memory>

#include "Audio.h"
#include "Background.h"
#include "Buttons.h"
#include "Crystal.h"
#include "GameMain.h"
#include "GameStates.h"
#include "Healthbar.h"
#include "PathFinding.h"
#include "PauseOverlay.h"
#include "Projectile.h"
#include "Scores.h"
#include "Tile.h"
#include "Tower.h"
#include "TowerBuilding.h"
#include "WaveSpawner.h"
#include "WinLoseOverlay.h"

int gCurrentLevel = 1;
bool gCountdownActive = false;
float gCountdownTime = 0.0f;
int gCountdownDigit = 0;
bool gAllWavesDone = false;
bool gAmbienceReleased = false;
bool gFinalMusicReleased = false;
bool gLevelWon = false;

namespace {

// A level's countdown lasts three seconds of frame time.
constexpr float kCountdownSeconds = 3.0f;
constexpr int kTutorialLevel = 1;
constexpr int kLastWave = 3;

// The level's objects, made by its init, deleted by its free.
std::unique_ptr<Background> sCountdownPicture;
std::unique_ptr<Buttons> sPauseButton;
std::unique_ptr<Background> sWaveBanner;
std::unique_ptr<Background> sTutorialPicture;
std::unique_ptr<Background> sFirstHelpPicture;
std::unique_ptr<Background> sSecondHelpPicture;
std::unique_ptr<Crystal> sCrystal;
std::unique_ptr<Background> sLevelBackground;

// Per level 1..6: the background setter and the ambience.
struct LevelLook {
    void (Background::*setBackground)(void);
    const char* ambience;
};
const LevelLook kLevelLooks[6] = {
    {&Background::SetBGTexture, "Resources/DrumsComedy CTE10_45.4.ogg"},
    {&Background::SetBGTexture, "Resources/DrumsComedy CTE10_45.4.ogg"},
    {&Background::SetBG3Texture, "Resources/12 - WATER OCEAN WAVES COMING IN, LIGHT.ogg"},
    {&Background::SetBG4Texture,
     "Resources/91 - VOLCANO LARGE VOLCANO ERUPTING, EXPLODING, RUMBLE.ogg"},
    {&Background::SetBG5Texture, "Resources/33 - Med Cold Wind Trees.ogg"},
    {&Background::SetBG6Texture,
     "Resources/35 - RAIN, THUNDER HEAVY RAIN WITH THUNDER RUMBLE AND CLAPS.ogg"},
};

// The table row of the current level; levels outside 1..6 play as level 1.
const LevelLook& CurrentLook() {
    const int level = (gCurrentLevel >= 1 && gCurrentLevel <= 6) ? gCurrentLevel : 1;
    return kLevelLooks[level - 1];
}

// Releases a level sound once between its creation and the level's end.
void ReleaseOnce(Sound sound, bool& released) {
    if (released) return;
    SoundRelease(sound);
    released = true;
}

// The ambience and the final-wave music stop for good when the level ends.
void StopLevelMusic() {
    ReleaseOnce(gSoundFinalWave, gFinalMusicReleased);
    ReleaseOnce(gSoundAmbience, gAmbienceReleased);
}

// Starts the next wave when the countdown has run out: one more tower, the
// spawner set up; the third wave stops the ambience and starts the music.
void StartWaveWhenCountedDown() {
    if (!(gCountdownTime > kCountdownSeconds)) return;
    if (gWaveNumber < (unsigned)kLastWave) {
        gCountdownActive = false;
        gWaveNumber += 1;
        gCountdownTime = 0.0f;
        CreateTowers(1);
        gWaveSpawner.SetupWave();
    }
    if (gWaveNumber == (unsigned)kLastWave) {
        ReleaseOnce(gSoundAmbience, gAmbienceReleased);
        AudioKeepPlaying(gLevelSoundSystem, gSoundFinalWave, &gChannelFinalWave);
    }
}

// The win test: level 1 is won by clearing its waves, the others only
// once their boss has died too.
void CheckForWin() {
    const MonsterArray& monsters = gWaveSpawner.monsterList;
    gAllWavesDone = monsters.empty() && gWaveSpawner.isDone && gWaveNumber == (unsigned)kLastWave;
    if (!gAllWavesDone) return;
    if (gCurrentLevel == kTutorialLevel) {
        gStarsEarned = 3;
        gLevelWon = true;
        gLevelRatings[0] = 3;
    } else if (gBossKilled) {
        gLevelWon = true; // the stars were fixed when the boss died
    }
}

// The pause button: highlighted under the mouse, and its press pauses the
// game from the next frame on. The press is taken here, in the draw.
void DrawPauseButton() {
    if (!sPauseButton || gPaused) return;
    Buttons& button = *sPauseButton;
    if (button.IsUnderMouse(gLevelCursorX, gLevelCursorY)) {
        button.SetMenuTexture(18);
        gLevelObjects.DrawObject(button, 1.0f, 1.0f);
        if (MouseClicked()) gPaused = true;
    } else {
        button.SetMenuTexture(17);
        gLevelObjects.DrawObject(button, 1.0f, 1.0f);
    }
}

// The banner of the running wave; level 1 has its own first two and shows
// none for its empty third wave.
void DrawWaveBanner() {
    if (!sWaveBanner) return;
    const bool tutorial = gCurrentLevel == kTutorialLevel;
    int look = 0;
    if (gWaveNumber == 1) look = tutorial ? 4 : 1;
    if (gWaveNumber == 2) look = tutorial ? 5 : 2;
    if (gWaveNumber == 3 && !tutorial) look = 3;
    if (look == 0) return;
    sWaveBanner->SetWaveTexture(look);
    gLevelObjects.DrawObject(*sWaveBanner, 1.0f, 1.0f);
}

// The digits count down to each wave; level 1 shows none before its empty
// third wave.
void DrawCountdown() {
    if (!gCountdownActive || gAllWavesDone || !sCountdownPicture) return;
    if (gCurrentLevel == kTutorialLevel && gWaveNumber == 2) return;
    sCountdownPicture->SetCountdownTexture();
    gLevelObjects.DrawObject(*sCountdownPicture, 1.0f, 1.0f);
}

// Level 1's notes follow the player: move a tower, then find a merge
// partner; the second help note appears once a partner has been found.
void DrawTutorial() {
    if (gCurrentLevel != kTutorialLevel || gCountdownActive) return;
    if (sTutorialPicture) {
        sTutorialPicture->SetTutorialTexture(!gTutorialMoved ? 1 : !gTutorialMergeSeen ? 2 : 3);
        gLevelObjects.DrawObject(*sTutorialPicture, 1.0f, 1.0f);
    }
    DrawPicture(gLevelObjects, sFirstHelpPicture);
    if (gTutorialMergeSeen) DrawPicture(gLevelObjects, sSecondHelpPicture);
}

} // namespace

Crystal* LevelCrystal(void) {
    return sCrystal.get();
}

const char* LevelAmbienceFile(int level) {
    if (level < 1 || level > 6) level = 1;
    return kLevelLooks[level - 1].ambience;
}

void GameStateLevelLoad(void) {
    gWaveNumber = 0;
    gCountdownTime = 0.0f;
    gCountdownActive = false;
    gDragTower = -1;
    gDragMoveCost = 0;
    gDropBlocked = false;
    gMergePending = false;
    gAllWavesDone = false;
    gFinalMusicReleased = false;
    gAmbienceReleased = false;
    BuildBoard(BoardLayoutForLevel(gCurrentLevel));
}

void GameStateLevelInit(void) {
    MousePoint(&gLevelCursorX, &gLevelCursorY);

    CreateBackground(sCountdownPicture, nullptr, 100.0f, 150.0f, 0.0f, 0.0f);
    CreateButton(sPauseButton, ButtonShape::Pause, 330.0f, 250.0f);
    CreateBackground(sWaveBanner, nullptr, 100.0f, 30.0f, -250.0f, 250.0f);
    CreateBackground(sTutorialPicture, nullptr, 140.0f, 40.0f, -270.0f, -190.0f);
    CreateBackground(sFirstHelpPicture, nullptr, 140.0f, 40.0f, -270.0f, 170.0f);
    sFirstHelpPicture->SetTutorialTexture(4);
    CreateBackground(sSecondHelpPicture, nullptr, 140.0f, 40.0f, -270.0f, 70.0f);
    sSecondHelpPicture->SetTutorialTexture(5);

    SoundCreate(gLevelSoundSystem, CurrentLook().ambience, &gSoundAmbience);
    SoundCreate(gLevelSoundSystem, "Resources/24 - Arrow Swoosh.ogg", &gSoundArrow);
    SoundCreate(gLevelSoundSystem, "Resources/53 - Ice Man.ogg", &gSoundFinalWave);
    SoundCreate(gLevelSoundSystem, "Resources/18 - Symphony No 1 in C Major, III Presto.ogg",
                &gSoundWin);
    SoundCreate(gLevelSoundSystem, "Resources/06 - Gypsy Songs for Violin and Orchestra.ogg",
                &gSoundLose);
    SoundPlay(gLevelSoundSystem, gSoundAmbience, false, &gChannelAmbience);
    ChannelSetLooping(gChannelAmbience, true);
    for (SoundChannel* slot :
         {&gChannelArrow, &gChannelAmbience, &gChannelFinalWave, &gChannelLose, &gChannelWin})
        ChannelSetVolume(*slot, gMasterVolume);

    if (!tileList.empty()) {
        const Tile& goal = BoardTile(tileList, BOARD_GOAL_TILE);
        sCrystal = std::make_unique<Crystal>();
        sCrystal->SetPosition(goal.posX, goal.posY);
        sCrystal->SetTransform(goal.posX, goal.posY, sCrystal->size);
        sCrystal->SetMesh();
        BoardTile(tileList, BOARD_GOAL_TILE).moveCost = 1;
        CreateBackground(sLevelBackground, nullptr, 400.0f, 300.0f, 0.0f, 0.0f);
        ((*sLevelBackground).*CurrentLook().setBackground)();
    }

    CreateTowers(2);
    CreateHealthbars(sCrystal ? sCrystal->health : 100);
    gCountdownActive = true;
}

void GameStateLevelUpdate(void) {
    if (gCountdownActive) gCountdownDigit = 3 - (int)gCountdownTime;
    SoundSystemUpdate(gLevelSoundSystem);
    // Won or lost: the board stands still under the overlay.
    if (gLevelLost || gLevelWon) return;

    for (auto& tile : tileList) tile->tintColor[3] = 0.7f;
    if (gCountdownActive) gCountdownTime += gFrameTime;
    StartWaveWhenCountedDown();

    gWaveSpawner.Update();
    MonsterArray& monsters = gWaveSpawner.monsterList;
    if (monsters.empty() && gWaveSpawner.isDone) gCountdownActive = true;
    if (!towerList.empty()) HandleTowerDrag();
    for (auto& monster : monsters)
        monster->Update(tileList, PathLayoutFor(gCurrentLevel, monster->tier));
    if (sCrystal) sCrystal->Update();
    for (auto& tower : towerList)
        tower->Update(monsters, gSoundArrow, gLevelSoundSystem, sCrystal.get());
    CheckForWin();
}

void GameStateLevelDraw(void) {
    ObjectList& context = gLevelObjects;
    DrawPicture(context, sLevelBackground);
    for (auto& tile : tileList) context.DrawObject(*tile, 1.0f, 1.0f);
    for (auto& monster : gWaveSpawner.monsterList)
        context.DrawObject(*monster, monster->framesU, monster->framesV);
    for (auto& tower : towerList) {
        context.DrawObject(*tower, 1.0f, 1.0f);
        for (auto& shot : tower->projectiles) shot->DrawSparks();
        for (auto& shot : tower->projectiles) context.DrawObject(*shot, 1.0f, 1.0f);
    }
    if (sCrystal && sCrystal->pMesh) {
        context.DrawObject(*sCrystal, 1.0f, 1.0f);
        sCrystal->DrawShards();
    }
    for (auto& bar : healthbarList) context.DrawObject(*bar, 1.0f, 1.0f);
    DrawPauseButton();
    DrawWaveBanner();

    if (gLevelLost && !gAllWavesDone) {
        StopLevelMusic();
        AudioKeepPlaying(gLevelSoundSystem, gSoundLose, &gChannelLose);
        RunLoseOverlay();
    }
    if (gLevelWon) {
        StopLevelMusic();
        AudioKeepPlaying(gLevelSoundSystem, gSoundWin, &gChannelWin);
        if (gStarsEarned >= 1 && gStarsEarned <= 3) RunWinOverlay(gStarsEarned);
    }
    DrawCountdown();
    DrawTutorial();
}

void GameStateLevelFree(void) {
    gWaveNumber = 0;
    gTutorialMoved = gTutorialMergeSeen = false;
    gWaveSpawner.Clear();
    FreeHealthbars();
    towerList.clear();
    // The level's pictures, button and crystal go too: the next entry makes
    // fresh ones, and nothing of a level is shown between two entries.
    sCountdownPicture.reset();
    sPauseButton.reset();
    sWaveBanner.reset();
    sTutorialPicture.reset();
    sFirstHelpPicture.reset();
    sSecondHelpPicture.reset();
    sCrystal.reset();
    sLevelBackground.reset();
    ReleaseOnce(gSoundFinalWave, gFinalMusicReleased);
    ReleaseOnce(gSoundAmbience, gAmbienceReleased);
    SoundRelease(gSoundWin);
    SoundRelease(gSoundLose);
    SoundRelease(gSoundArrow);
}

void GameStateLevelUnload(void) {
    FreeBoard();
    SaveScores();
}
