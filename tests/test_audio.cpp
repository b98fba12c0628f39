// The sound bank on OpenAL's null output (set for every test), plus child
// runs of this program: under the wave writer (the mix really carries the
// sound) and for the fatal error report. No device at all is played through
// the whole game by test_faults_driver.
#include "Audio.h"
#include "TestSupport.h"
#include "TestTone.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

// A fresh folder for one test's files, removed with everything in it.
struct ScratchDir {
    std::string path;
    ScratchDir() {
        char pattern[] = "/tmp/quarrow-audio-XXXXXX";
        const char* dir = mkdtemp(pattern);
        path = dir ? dir : "/tmp/quarrow-audio-fallback";
    }
    ~ScratchDir() { std::filesystem::remove_all(path); }
    operator const std::string&() const { return path; }
};

// Creates a tone sound (on the level system unless named).
Sound MakeTone(const std::string& dir, const char* name, float seconds,
               SoundSystem* system = gLevelSoundSystem) {
    const std::string path = dir + "/" + name;
    EXPECT_TRUE(WriteToneOgg(path, seconds, 2, 0.5f));
    Sound sound;
    EXPECT_EQ(SOUND_OK, SoundCreate(system, path.c_str(), &sound));
    return sound;
}

void WaitMs(int ms) {
    std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

// Runs one child test of this program with extra environment settings.
int RunChild(const std::string& filter, const std::string& env, std::string& output) {
    return TestRunThisProgram(filter, "QUARROW_AUDIO_CHILD=1 " + env, output);
}

bool IsChild() {
    return std::getenv("QUARROW_AUDIO_CHILD") != nullptr;
}

} // namespace

TEST(Audio, BankSystemsPlayBeforeAnythingElseRuns) {
    ASSERT_NE(nullptr, gLevelSoundSystem);
    ASSERT_NE(nullptr, gMenuSoundSystem);
    Sound menu = MakeTone(ScratchDir(), "menu.ogg", 1.0f, gMenuSoundSystem);
    AudioPlayIntoSlot(gMenuSoundSystem, menu, &gChannelMenu, true);
    EXPECT_TRUE(TestChannelPlaying(gChannelMenu));
    // A sound belongs to the system it was made on.
    SoundChannel other;
    EXPECT_EQ(SOUND_ERR_INVALID_HANDLE, SoundPlay(gLevelSoundSystem, menu, false, &other));
    EXPECT_EQ(SOUND_OK, SoundRelease(menu));
}

TEST(Audio, UnreadableFilesGiveNoSoundAndNoCrash) {
    const ScratchDir scratch;
    const std::string& dir = scratch.path;
    std::string valid = dir + "/valid.ogg";
    ASSERT_TRUE(WriteToneOgg(valid, 20.0f, 2, 0.5f)); // long enough for many pages
    const std::string bytes = TestReadFile(valid);
    const std::string contents[] = {"", "not a sound at all\n", bytes.substr(0, 60),
                                    std::string(5000, '\xA7')};
    for (const std::string& content : contents) {
        std::ofstream(dir + "/bad.ogg", std::ios::binary) << content;
        Sound sound;
        EXPECT_EQ(SOUND_ERR_FILE_BAD,
                  SoundCreate(gLevelSoundSystem, (dir + "/bad.ogg").c_str(), &sound))
            << content.size() << " bytes";
        EXPECT_EQ(0u, sound.id) << content.size() << " bytes";
    }
    Sound missing;
    EXPECT_EQ(SOUND_ERR_FILE_NOT_FOUND,
              SoundCreate(gLevelSoundSystem, (dir + "/none.ogg").c_str(), &missing));
    // A file cut in the middle of its audio still plays what it holds.
    std::ofstream(dir + "/half.ogg", std::ios::binary) << bytes.substr(0, bytes.size() / 2);
    Sound half;
    EXPECT_EQ(SOUND_OK, SoundCreate(gLevelSoundSystem, (dir + "/half.ogg").c_str(), &half));
    SoundRelease(half);
}

TEST(Audio, NewArrowPlaysBesideTheOldOneAndTheSlotNamesTheNewest) {
    Sound arrow = MakeTone(ScratchDir(), "arrow.ogg", 2.0f);
    gMasterVolume = 1.0f;
    AudioPlayIntoSlot(gLevelSoundSystem, arrow, &gChannelArrow, false);
    SoundChannel first = gChannelArrow;
    AudioPlayIntoSlot(gLevelSoundSystem, arrow, &gChannelArrow, false);
    EXPECT_NE(first.id, gChannelArrow.id);
    EXPECT_TRUE(TestChannelPlaying(first));
    EXPECT_TRUE(TestChannelPlaying(gChannelArrow));
    // Pause and volume through the slot reach only the newest arrow.
    AudioChannelsSetPaused(true);
    ChannelSetVolume(gChannelArrow, 0.25f);
    EXPECT_TRUE(TestChannelPaused(gChannelArrow));
    EXPECT_FALSE(TestChannelPaused(first));
    EXPECT_FLOAT_EQ(0.25f, TestChannelVolume(gChannelArrow));
    EXPECT_FLOAT_EQ(1.0f, TestChannelVolume(first));
    // Release stops every channel of the sound; the slots go stale.
    EXPECT_EQ(SOUND_OK, SoundRelease(arrow));
    EXPECT_FALSE(TestChannelPlaying(first));
    EXPECT_FALSE(TestChannelPlaying(gChannelArrow));
    EXPECT_EQ(SOUND_ERR_INVALID_HANDLE, ChannelSetVolume(gChannelArrow, 1.0f));
    EXPECT_EQ(SOUND_ERR_INVALID_HANDLE, SoundRelease(arrow));
    EXPECT_EQ(SOUND_ERR_INVALID_HANDLE, SoundPlay(gLevelSoundSystem, arrow, false, &first));
}

TEST(Audio, LoopModeSetAfterPlayKeepsAShortSoundGoing) {
    Sound blip = MakeTone(ScratchDir(), "blip.ogg", 0.1f);
    SoundChannel looped, once;
    AudioPlayIntoSlot(gLevelSoundSystem, blip, &looped, true);
    AudioPlayIntoSlot(gLevelSoundSystem, blip, &once, false);
    WaitMs(400);
    EXPECT_TRUE(TestChannelPlaying(looped));
    EXPECT_FALSE(TestChannelPlaying(once));
    // An ended play is a free channel: calls on it do nothing.
    EXPECT_EQ(SOUND_ERR_INVALID_HANDLE, ChannelSetPaused(once, true));
    // Music kept going restarts only when its slot has gone quiet.
    SoundChannel kept = looped;
    AudioKeepPlaying(gLevelSoundSystem, blip, &kept);
    EXPECT_EQ(looped.id, kept.id);
    kept = once;
    AudioKeepPlaying(gLevelSoundSystem, blip, &kept);
    EXPECT_NE(once.id, kept.id);
    EXPECT_TRUE(TestChannelPlaying(kept));
    SoundRelease(blip);
}

// A later play at the muted volume: Towers.ShotPlaysTheArrowAtMasterVolume.
TEST(Audio, MuteSilencesThePlayingSlotsAndUnmuteRestoresThem) {
    Sound ambience = MakeTone(ScratchDir(), "amb.ogg", 2.0f);
    gMuted = false;
    gMasterVolume = 1.0f;
    AudioPlayIntoSlot(gLevelSoundSystem, ambience, &gChannelAmbience, true);
    AudioToggleMute();
    EXPECT_TRUE(gMuted);
    EXPECT_EQ(0.0f, gMasterVolume);
    EXPECT_EQ(0.0f, TestChannelVolume(gChannelAmbience));
    AudioToggleMute();
    EXPECT_EQ(1.0f, TestChannelVolume(gChannelAmbience));
    SoundRelease(ambience);
}

TEST(Audio, ThirtySeventhPlayTakesOverTheOldestChannel) {
    Sound tone = MakeTone(ScratchDir(), "tone.ogg", 2.0f);
    std::vector<SoundChannel> plays(37);
    for (SoundChannel& play : plays) SoundPlay(gLevelSoundSystem, tone, false, &play);
    EXPECT_FALSE(TestChannelPlaying(plays[0]));
    for (int i = 1; i < 37; i++) EXPECT_TRUE(TestChannelPlaying(plays[i])) << "play " << i;
    SoundRelease(tone);
}

TEST(Audio, EmptySlotsAndBadArgumentsDoNothing) {
    SoundChannel empty;
    bool flag = false;
    float volume = 0.5f;
    EXPECT_EQ(SOUND_ERR_INVALID_HANDLE, ChannelIsPlaying(empty, &flag));
    EXPECT_FALSE(flag);
    EXPECT_EQ(SOUND_ERR_INVALID_HANDLE, ChannelSetPaused(empty, true));
    EXPECT_EQ(SOUND_ERR_INVALID_HANDLE, ChannelSetLooping(empty, true));
    EXPECT_EQ(SOUND_ERR_INVALID_HANDLE, ChannelGetVolume(empty, &volume));
    EXPECT_EQ(0.5f, volume);
    EXPECT_EQ(SOUND_ERR_INVALID_HANDLE, SoundRelease(Sound()));
    EXPECT_EQ(SOUND_ERR_INVALID_HANDLE, SoundPlay(gLevelSoundSystem, Sound(), false, &empty));
    EXPECT_EQ(SOUND_ERR_INVALID_PARAM, SoundPlay(nullptr, Sound(), false, &empty));
    EXPECT_EQ(0u, empty.id);
    CheckSoundResult(SOUND_OK); // returns
    // The main loop's own system comes and goes without touching the bank.
    AudioMainSystemCreate();
    AudioMainSystemRelease();
    EXPECT_EQ(SOUND_OK, SoundSystemUpdate(gLevelSoundSystem));
}

// ---- Runs under other outputs, each in a child process ----

namespace {

// Length in seconds and peak of a recorded mix, as sox measures them.
bool MeasureWave(const std::string& path, double& seconds, double& peak) {
    std::string report;
    if (TestRunCommand("sox '" + path + "' -n stat", report) != 0) return false;
    const size_t length = report.find("Length (seconds):");
    const size_t maximum = report.find("Maximum amplitude:");
    if (length == std::string::npos || maximum == std::string::npos) return false;
    seconds = std::atof(report.c_str() + length + 17);
    peak = std::atof(report.c_str() + maximum + 18);
    return true;
}

} // namespace

TEST(AudioChild, PlayToneForWaveOutput) {
    if (!IsChild()) GTEST_SKIP() << "run by AudioOutput tests";
    gMasterVolume = float(std::atof(std::getenv("QUARROW_VOLUME")));
    Sound tone = MakeTone(ScratchDir(), "wave.ogg", 0.5f);
    AudioPlayIntoSlot(gLevelSoundSystem, tone, &gChannelArrow, false);
    if (std::getenv("QUARROW_PAUSE")) AudioChannelsSetPaused(true);
    // The mixer writes the file as it mixes, in real time; on a busy machine
    // it falls behind the clock, so wait for 0.8 s of mix, not of clock.
    // The header's bytes-per-second field says how much that is.
    const std::string mix = std::getenv("QUARROW_MIX");
    for (int waited = 0; waited < 20000; waited += 10) {
        std::ifstream file(mix, std::ios::binary);
        unsigned char header[32] = {};
        file.read(reinterpret_cast<char*>(header), sizeof header);
        const double bytesPerSecond =
            header[28] | header[29] << 8 | header[30] << 16 | header[31] << 24;
        if (file && std::filesystem::file_size(mix) > 0.8 * bytesPerSecond + 80) break;
        WaitMs(10);
    }
    SoundRelease(tone);
}

TEST(AudioOutput, PlayedSoundReachesTheMix) {
    struct Case {
        const char* name;
        const char* env;
        bool audible;
    } cases[] = {
        {"full volume is heard", "QUARROW_VOLUME=1", true},
        {"muted play is silent", "QUARROW_VOLUME=0", false},
        {"paused play is silent", "QUARROW_VOLUME=1 QUARROW_PAUSE=1", false},
    };
    for (const Case& c : cases) {
        const ScratchDir scratch;
        const std::string& dir = scratch.path;
        std::ofstream(dir + "/alsoft.conf") << "[wave]\nfile = " << dir << "/mix.wav\n";
        std::string output;
        int status = RunChild("AudioChild.PlayToneForWaveOutput",
                              std::string(c.env) + " ALSOFT_DRIVERS=wave ALSOFT_CONF=" + dir +
                                  "/alsoft.conf QUARROW_MIX=" + dir + "/mix.wav",
                              output);
        ASSERT_EQ(0, status) << c.name << "\n" << output;
        double seconds = 0.0, peak = -1.0;
        ASSERT_TRUE(MeasureWave(dir + "/mix.wav", seconds, peak)) << c.name;
        EXPECT_GT(seconds, 0.5) << c.name << ": the mix runs for the child's 0.8 s";
        if (c.audible)
            EXPECT_GT(peak, 0.1) << c.name;
        else
            EXPECT_EQ(0.0, peak) << c.name;
    }
}

TEST(AudioChild, ReportError) {
    if (!IsChild()) GTEST_SKIP() << "run by AudioOutput tests";
    CheckSoundResult(std::atoi(std::getenv("QUARROW_RESULT")));
}

TEST(AudioOutput, FailedResultEndsTheProgramWithItsText) {
    struct Case {
        const char* result;
        const char* line;
    } cases[] = {
        {"3", "FMOD error! (3) No sound output device could be opened.\n"},
        {"96", "FMOD error! (96) Unknown error.\n"},
        {"-2", "FMOD error! (-2) Unknown error.\n"},
    };
    for (const Case& c : cases) {
        std::string output;
        int status =
            RunChild("AudioChild.ReportError", std::string("QUARROW_RESULT=") + c.result, output);
        EXPECT_EQ(255, status) << c.result; // exit(-1)
        EXPECT_NE(std::string::npos, output.find(c.line)) << output;
    }
}
