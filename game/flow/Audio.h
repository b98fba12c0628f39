// The sound bank: sound systems, the sounds of the game and the six channel
// slots (arrow, ambience, final wave, menu, lose, win).
//
// A thin layer over OpenAL Soft (output) and libvorbisfile (OGG decoding).
// A sound system is one OpenAL context with 36 sources ("channels"); every
// system shares the one output device. A sound is checked when created and
// decoded completely into memory on a thread beside the game; a play made
// before its samples are there counts as playing and starts the moment the
// decoder hands them over. Handles to sounds and channels are small values
// that go stale when their sound is released or their channel is reused:
// calls on stale or empty handles fail quietly and do nothing.
//
// With no output device every system stays uninitialised: each call then
// returns an error that the callers ignore, and the game runs silent.
// The layer is called from the game thread; OpenAL mixes and the decoder
// decodes on threads of their own, and the decoder hands a finished sound
// over under the layer's lock.
#pragma once

// Results of the sound layer; 0 is success.
enum {
    SOUND_OK = 0,
    SOUND_ERR_INVALID_PARAM,
    SOUND_ERR_MEMORY,
    SOUND_ERR_NO_OUTPUT,
    SOUND_ERR_UNINITIALIZED,
    SOUND_ERR_INITIALIZED,
    SOUND_ERR_FILE_NOT_FOUND,
    SOUND_ERR_FILE_BAD,
    SOUND_ERR_INVALID_HANDLE,
    SOUND_ERR_OUTPUT,
    SOUND_RESULT_COUNT
};

// One output mixer with its own channels. Created and released by pointer.
struct SoundSystem;

// A decoded sound, id 0 = none. Ids are never reused.
struct Sound {
    unsigned id = 0;
};

// One play of a sound on a channel, id 0 = empty slot. The handle goes stale
// when that play ends, is stopped by a release, or its channel is reused.
struct SoundChannel {
    unsigned id = 0;
};

// The two systems of the bank: they exist before the program's entry runs
// and are released when the program ends.
extern SoundSystem* gLevelSoundSystem;
extern SoundSystem* gMenuSoundSystem;

extern Sound gSoundMenuAmbience;
extern Sound gSoundAmbience;
extern Sound gSoundArrow;
extern Sound gSoundFinalWave;
extern Sound gSoundWin;
extern Sound gSoundLose;

// The six channel slots, in the order in which they are treated alike.
extern SoundChannel gChannelArrow;
extern SoundChannel gChannelAmbience;
extern SoundChannel gChannelFinalWave;
extern SoundChannel gChannelMenu;
extern SoundChannel gChannelLose;
extern SoundChannel gChannelWin;

// 1.0, or 0.0 while muted; applied to a channel right after each play.
extern float gMasterVolume;
extern bool gMuted;

// Systems.
int SoundSystemCreate(SoundSystem** pSystem);
int SoundSystemGetNumDrivers(SoundSystem* system, int* pCount);
int SoundSystemInit(SoundSystem* system, int maxChannels);
int SoundSystemUpdate(SoundSystem* system);
int SoundSystemRelease(SoundSystem* system);

// Sounds. Create checks an OGG file and starts its decoding; Release stops
// every channel playing it.
int SoundCreate(SoundSystem* system, const char* path, Sound* pSound);
int SoundRelease(Sound sound);
// Starts the sound at once on a free channel (the oldest play is taken over
// when all are busy) and writes the channel into the slot.
int SoundPlay(SoundSystem* system, Sound sound, bool paused, SoundChannel* pSlot);

// Channels.
int ChannelSetLooping(SoundChannel channel, bool loop);
int ChannelSetVolume(SoundChannel channel, float volume);
int ChannelGetVolume(SoundChannel channel, float* pVolume);
// Leaves *pPlaying untouched for a stale or empty handle (preset it).
int ChannelIsPlaying(SoundChannel channel, bool* pPlaying);
int ChannelSetPaused(SoundChannel channel, bool paused);
int ChannelGetPaused(SoundChannel channel, bool* pPaused);
// Playback position in sample frames.
int ChannelGetPosition(SoundChannel channel, int* pFrames);

// How many sounds exist in all systems (created and not yet released), and
// how many channels are busy (playing, held, or waiting for samples). The
// screens release what they create, so over a long session these come back
// to the same numbers on the same screen; a soak test reads them to catch a
// sound or a looping channel that is never let go. The game never reads them.
int SoundLiveCount(void);
int SoundBusyChannelCount(void);

// Ends the program with "FMOD error! (<code>) <text>" and status -1 unless
// result is 0.
void CheckSoundResult(int result);
// The text for a result ("Unknown error." outside the table).
const char* SoundErrorString(int result);

// Calling patterns shared by the screens.
// Plays into the slot (looping when asked) and applies gMasterVolume.
void AudioPlayIntoSlot(SoundSystem* system, Sound sound, SoundChannel* pSlot, bool loop);
// Restarts the sound into the slot unless the slot still plays, then applies
// gMasterVolume (music kept going over an overlay).
void AudioKeepPlaying(SoundSystem* system, Sound sound, SoundChannel* pSlot);
// Flips gMuted, sets gMasterVolume and applies it to the six slots.
void AudioToggleMute(void);
// Applies gMasterVolume to the six slots.
void AudioChannelsApplyVolume(void);

// The main loop's own sound system object (created at start-up, released at
// shutdown). A failure to create it ends the program with status -1.
void AudioMainSystemCreate(void);
void AudioMainSystemRelease(void);
// Pauses or resumes the six channel slots (the main loop's pause rule).
void AudioChannelsSetPaused(bool paused);
