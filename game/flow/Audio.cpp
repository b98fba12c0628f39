// The sound bank on OpenAL Soft and libvorbisfile. See Audio.h for the model.
//
// All systems share one output device, opened when the first system asks for
// drivers and closed when the last initialised system is released. Each
// system is an OpenAL context; the layer makes a system's context current
// before touching its sources, so several systems can live side by side.
// Channels are looked up by their play serial, which is unique for the whole
// run, so a slot that outlived its play can never steer a newer one.
#include "Audio.h"

#include <AL/al.h>
#include <AL/alc.h>
#include <fcntl.h>
#include <unistd.h>
// The thread-local context of the decoder thread is an OpenAL Soft extension.
#define AL_ALEXT_PROTOTYPES
#include <AL/alext.h>
#include <vorbis/vorbisfile.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "GameMain.h"

namespace {

// One sound's decoding, done beside the game on the decoder thread. The
// file is opened (and so checked) by SoundCreate; the decoder reads it to
// the end and closes it.
struct DecodeJob {
    unsigned soundId = 0;
    SoundSystem* system = nullptr;
    OggVorbis_File vf;
    bool open = false;
    int channels = 0; // of the file; the samples keep at most two
    long rate = 0;
    std::vector<char> pcm; // 16-bit little-endian samples, interleaved
    int result = SOUND_OK;
    std::atomic<bool> cancelled{false};

    ~DecodeJob() {
        if (open) ov_clear(&vf);
    }
};

struct ChannelRecord {
    ALuint source = 0;
    unsigned serial = 0; // the play it carries; 0 when none
    unsigned soundId = 0;
    // The play waits for its sound's samples: it counts as playing and
    // starts (held, when paused meanwhile) as soon as they are there.
    bool waiting = false;
    bool waitingPaused = false;
};

struct SoundRecord {
    unsigned id = 0;
    ALuint buffer = 0;
    std::shared_ptr<DecodeJob> job; // set while the samples are being decoded
    bool silent = false;            // the file held no audio after all
};

} // namespace

struct SoundSystem {
    ALCcontext* context = nullptr;
    bool holdsDevice = false;
    std::vector<ChannelRecord> channels;
    std::vector<SoundRecord> sounds;
};

SoundSystem* gLevelSoundSystem = nullptr;
SoundSystem* gMenuSoundSystem = nullptr;

Sound gSoundMenuAmbience;
Sound gSoundAmbience;
Sound gSoundArrow;
Sound gSoundFinalWave;
Sound gSoundWin;
Sound gSoundLose;

SoundChannel gChannelArrow;
SoundChannel gChannelAmbience;
SoundChannel gChannelFinalWave;
SoundChannel gChannelMenu;
SoundChannel gChannelLose;
SoundChannel gChannelWin;

float gMasterVolume = 1.0f;
bool gMuted = false;

// The layer's state is the game thread's, except that the decoder thread
// hands finished sounds over under this lock; every entry of the layer
// takes it too.
static std::recursive_mutex sLayerMutex;
static std::vector<SoundSystem*> sSystems;
static ALCdevice* sDevice = nullptr;
static bool sDeviceProbed = false;
static int sDeviceUsers = 0;
static unsigned sNextSoundId = 0;
static unsigned sNextPlaySerial = 0;
static SoundSystem* sMainSystem = nullptr;

// A decoded sound larger than this is refused: ten minutes of 48 kHz stereo.
static const size_t kMaxDecodedBytes = size_t(10) * 60 * 48000 * 2 * 2;

static const char* const kErrorTexts[SOUND_RESULT_COUNT] = {
    "No errors.",
    "An invalid parameter was passed to this function.",
    "Not enough memory or resources.",
    "No sound output device could be opened.",
    "The sound system has not been initialised.",
    "The sound system has already been initialised.",
    "The sound file could not be found or opened.",
    "The sound file is not a readable OGG Vorbis file.",
    "An invalid or stale handle was passed to this function.",
    "The sound output reported an error.",
};

// Opens the default output device with standard error silenced. Without a
// sound card every backend OpenAL tries reports its failure in its own words
// (ALSA alone prints eight lines), each library with its own switch or none;
// none of it tells a player more than the one line the probe prints.
static ALCdevice* OpenDeviceQuietly() {
    std::fflush(stderr);
    const int saved = dup(STDERR_FILENO);
    const int quiet = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (saved < 0 || quiet < 0 || dup2(quiet, STDERR_FILENO) < 0) {
        if (saved >= 0) close(saved);
        if (quiet >= 0) close(quiet);
        return alcOpenDevice(nullptr);
    }
    ALCdevice* device = alcOpenDevice(nullptr);
    std::fflush(stderr);
    dup2(saved, STDERR_FILENO);
    close(saved);
    close(quiet);
    return device;
}

// Opens the shared output device once; a failure is remembered and said in
// one line, and the game runs silent.
static bool DeviceProbe() {
    if (sDevice) return true;
    if (sDeviceProbed) return false;
    sDeviceProbed = true;
    sDevice = OpenDeviceQuietly();
    if (!sDevice) std::fprintf(stderr, "No sound device: the game runs without sound.\n");
    return sDevice != nullptr;
}

// Closes the device once no system needs it any more.
static void DeviceReleaseIfUnused() {
    if (sDevice && sDeviceUsers == 0) {
        alcMakeContextCurrent(nullptr);
        alcCloseDevice(sDevice);
        sDevice = nullptr;
        sDeviceProbed = false;
    }
}

// True when the pointer names a live system.
static bool SystemIsLive(SoundSystem* system) {
    return system && std::find(sSystems.begin(), sSystems.end(), system) != sSystems.end();
}

// Makes the system's context current; false for an uninitialised system.
static bool UseContext(SoundSystem* system) {
    if (!system->context) return false;
    if (alcGetCurrentContext() != system->context) alcMakeContextCurrent(system->context);
    return true;
}

// The source state of a channel record (context must be current).
static ALint SourceState(const ChannelRecord& channel) {
    ALint state = AL_STOPPED;
    alGetSourcei(channel.source, AL_SOURCE_STATE, &state);
    return state;
}

// Finds the live channel of a play: playing, paused or waiting for its
// samples, context made current.
// A play that has ended is no longer a channel, as with any free channel.
static ChannelRecord* FindChannel(SoundChannel handle) {
    if (handle.id == 0) return nullptr;
    for (SoundSystem* system : sSystems) {
        for (ChannelRecord& channel : system->channels) {
            if (channel.serial != handle.id) continue;
            if (!UseContext(system)) return nullptr;
            if (channel.waiting) return &channel;
            ALint state = SourceState(channel);
            if (state != AL_PLAYING && state != AL_PAUSED) return nullptr;
            return &channel;
        }
    }
    return nullptr;
}

// Opens an OGG file and reads its headers: what a sound can be made of is
// known at once, its samples come later.
static int OpenOgg(const char* path, DecodeJob& job) {
    FILE* file = std::fopen(path, "rb");
    if (!file) return SOUND_ERR_FILE_NOT_FOUND;
    if (ov_open_callbacks(file, &job.vf, nullptr, 0, OV_CALLBACKS_DEFAULT) != 0) {
        std::fclose(file);
        return SOUND_ERR_FILE_BAD;
    }
    job.open = true;
    vorbis_info* info = ov_info(&job.vf, -1);
    job.channels = info ? info->channels : 0;
    job.rate = info ? info->rate : 0;
    if (job.channels < 1 || job.rate < 1000 || job.rate > 192000) return SOUND_ERR_FILE_BAD;
    return SOUND_OK;
}

// Decodes the whole stream to 16-bit PCM (on the decoder thread). A damaged
// page keeps what was decoded before it; a cancelled job stops early.
static void DecodeOgg(DecodeJob& job) {
    const int channels = job.channels;
    // Files of more than two channels keep their first two.
    const int keep = std::min(channels, 2);
    // The length comes from the last page's header, and a damaged file may
    // claim any length at all. No sound of ours decodes to more than about
    // nine bytes per byte of file: room for twelve is all a claim gets, and
    // a longer sound, if one ever comes, grows as it is decoded.
    const ogg_int64_t frames = ov_pcm_total(&job.vf, -1);
    const ogg_int64_t fileBytes = ov_raw_total(&job.vf, -1);
    const size_t claimed = frames > 0 ? size_t(frames) * 2 * keep : 0;
    const size_t plausible = fileBytes > 0 ? size_t(fileBytes) * 12 : 0;
    job.pcm.reserve(std::min({claimed, plausible, kMaxDecodedBytes}));
    std::vector<char> block(4096);
    int section = 0;
    while (job.result == SOUND_OK && !job.cancelled.load()) {
        long got = ov_read(&job.vf, block.data(), 4096, 0, 2, 1, &section);
        if (got == 0) break;
        if (got < 0) {
            if (got == OV_HOLE) continue;
            break;
        }
        vorbis_info* linkInfo = ov_info(&job.vf, section);
        if (!linkInfo || linkInfo->channels != channels) break; // a chained file changed shape
        if (channels == keep) {
            job.pcm.insert(job.pcm.end(), block.data(), block.data() + got);
        } else {
            const long frameBytes = 2L * channels;
            for (long f = 0; f + frameBytes <= got; f += frameBytes)
                job.pcm.insert(job.pcm.end(), block.data() + f, block.data() + f + 2 * keep);
        }
        if (job.pcm.size() > kMaxDecodedBytes) job.result = SOUND_ERR_MEMORY;
    }
    ov_clear(&job.vf); // closes the file
    job.open = false;
    job.channels = keep;
    if (job.result == SOUND_OK && job.pcm.empty()) job.result = SOUND_ERR_FILE_BAD;
}

static void FinishDecode(const DecodeJob& job);

namespace {

// The decoder thread: decodes sounds in the order they were made, so a
// level starts at once and its ambience, created first, is ready first.
// Decoding a whole level's sounds takes about half a second; the game
// draws on meanwhile.
class Decoder {
  public:
    void Add(const std::shared_ptr<DecodeJob>& job) {
        std::lock_guard<std::mutex> lock(mutex_);
        if (!thread_.joinable()) thread_ = std::thread([this] { Run(); });
        queue_.push_back(job);
        wake_.notify_one();
    }
    ~Decoder() {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            stop_ = true;
            wake_.notify_one();
        }
        if (thread_.joinable()) thread_.join();
    }

  private:
    void Run() {
        for (;;) {
            std::shared_ptr<DecodeJob> job;
            {
                std::unique_lock<std::mutex> lock(mutex_);
                wake_.wait(lock, [this] { return stop_ || !queue_.empty(); });
                if (stop_) return;
                job = queue_.front();
                queue_.pop_front();
            }
            if (!job->cancelled.load()) DecodeOgg(*job);
            FinishDecode(*job);
        }
    }
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::shared_ptr<DecodeJob>> queue_;
    std::thread thread_;
    bool stop_ = false;
};

Decoder sDecoder;

} // namespace

// Hands a decoded sound to OpenAL and starts the plays that waited for it,
// from the decoder thread, under the layer's lock and with the sound's
// context current for this thread only (the game thread's stays as it is).
static void FinishDecode(const DecodeJob& job) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    if (job.cancelled.load() || !SystemIsLive(job.system) || !job.system->context) return;
    SoundSystem* system = job.system;
    for (SoundRecord& sound : system->sounds) {
        if (sound.id != job.soundId) continue;
        alcSetThreadContext(system->context);
        sound.silent = job.pcm.empty();
        if (!sound.silent) {
            alGetError();
            alBufferData(sound.buffer, job.channels == 2 ? AL_FORMAT_STEREO16 : AL_FORMAT_MONO16,
                         job.pcm.data(), ALsizei(job.pcm.size()), ALsizei(job.rate));
            sound.silent = alGetError() != AL_NO_ERROR;
        }
        for (ChannelRecord& channel : system->channels) {
            if (!channel.waiting || channel.soundId != sound.id) continue;
            channel.waiting = false;
            if (sound.silent) continue; // nothing to play: the channel is free again
            alSourcei(channel.source, AL_BUFFER, ALint(sound.buffer));
            alSourcePlay(channel.source);
            if (channel.waitingPaused) alSourcePause(channel.source);
        }
        sound.job.reset();
        alcSetThreadContext(nullptr);
        return;
    }
}

// Creates an empty, uninitialised system.
int SoundSystemCreate(SoundSystem** pSystem) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    if (!pSystem) return SOUND_ERR_INVALID_PARAM;
    *pSystem = new SoundSystem();
    sSystems.push_back(*pSystem);
    return SOUND_OK;
}

// Counts the output devices the system could use: 1 or 0.
int SoundSystemGetNumDrivers(SoundSystem* system, int* pCount) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    if (!SystemIsLive(system) || !pCount) return SOUND_ERR_INVALID_PARAM;
    *pCount = DeviceProbe() ? 1 : 0;
    return SOUND_OK;
}

// Opens the system's context on the shared device with maxChannels sources.
int SoundSystemInit(SoundSystem* system, int maxChannels) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    if (!SystemIsLive(system) || maxChannels < 1 || maxChannels > 1024)
        return SOUND_ERR_INVALID_PARAM;
    if (system->context) return SOUND_ERR_INITIALIZED;
    if (!DeviceProbe()) return SOUND_ERR_NO_OUTPUT;
    const ALCint attributes[] = {ALC_MONO_SOURCES, maxChannels, ALC_STEREO_SOURCES, maxChannels, 0};
    ALCcontext* context = alcCreateContext(sDevice, attributes);
    if (!context) return SOUND_ERR_OUTPUT;
    alcMakeContextCurrent(context);
    std::vector<ALuint> sources(maxChannels);
    alGetError();
    alGenSources(maxChannels, sources.data());
    if (alGetError() != AL_NO_ERROR) {
        alcMakeContextCurrent(nullptr);
        alcDestroyContext(context);
        return SOUND_ERR_MEMORY;
    }
    system->context = context;
    system->holdsDevice = true;
    sDeviceUsers++;
    for (ALuint source : sources) {
        ChannelRecord channel;
        channel.source = source;
        system->channels.push_back(channel);
    }
    return SOUND_OK;
}

// Mixing runs on OpenAL's own thread; nothing needs doing per frame.
int SoundSystemUpdate(SoundSystem* system) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    if (!SystemIsLive(system)) return SOUND_ERR_INVALID_PARAM;
    return system->context ? SOUND_OK : SOUND_ERR_UNINITIALIZED;
}

// Stops everything, frees the system's sounds, sources and context.
int SoundSystemRelease(SoundSystem* system) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    if (!SystemIsLive(system)) return SOUND_ERR_INVALID_PARAM;
    for (SoundRecord& sound : system->sounds)
        if (sound.job) sound.job->cancelled.store(true);
    if (UseContext(system)) {
        for (ChannelRecord& channel : system->channels) {
            alSourceStop(channel.source);
            alSourcei(channel.source, AL_BUFFER, 0);
            alDeleteSources(1, &channel.source);
        }
        for (SoundRecord& sound : system->sounds) alDeleteBuffers(1, &sound.buffer);
        alcMakeContextCurrent(nullptr);
        alcDestroyContext(system->context);
    }
    if (system->holdsDevice) sDeviceUsers--;
    sSystems.erase(std::find(sSystems.begin(), sSystems.end(), system));
    if (sMainSystem == system) sMainSystem = nullptr;
    delete system;
    DeviceReleaseIfUnused();
    return SOUND_OK;
}

// Checks the file and hands its decoding to the decoder thread: the sound
// exists at once, its samples follow (see FinishDecode).
int SoundCreate(SoundSystem* system, const char* path, Sound* pSound) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    if (!SystemIsLive(system) || !path || !pSound) return SOUND_ERR_INVALID_PARAM;
    if (!UseContext(system)) return SOUND_ERR_UNINITIALIZED;
    auto job = std::make_shared<DecodeJob>();
    const int result = OpenOgg(path, *job);
    if (result != SOUND_OK) return result;
    SoundRecord sound;
    alGetError();
    alGenBuffers(1, &sound.buffer);
    if (alGetError() != AL_NO_ERROR) return SOUND_ERR_MEMORY;
    sound.id = ++sNextSoundId;
    sound.job = job;
    job->soundId = sound.id;
    job->system = system;
    system->sounds.push_back(sound);
    sDecoder.Add(job);
    pSound->id = sound.id;
    return SOUND_OK;
}

// Finds the system holding a sound and the sound's record.
static SoundRecord* FindSound(Sound sound, SoundSystem** pOwner) {
    if (sound.id == 0) return nullptr;
    for (SoundSystem* system : sSystems) {
        for (SoundRecord& record : system->sounds) {
            if (record.id == sound.id) {
                *pOwner = system;
                return &record;
            }
        }
    }
    return nullptr;
}

int SoundLiveCount(void) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    size_t count = 0;
    for (SoundSystem* system : sSystems) count += system->sounds.size();
    return (int)count;
}

int SoundBusyChannelCount(void) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    int busy = 0;
    for (SoundSystem* system : sSystems) {
        if (!UseContext(system)) continue;
        for (const ChannelRecord& channel : system->channels) {
            const ALint state = SourceState(channel);
            busy += channel.waiting || state == AL_PLAYING || state == AL_PAUSED;
        }
    }
    return busy;
}

// Stops every channel playing the sound, then frees it.
int SoundRelease(Sound sound) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    SoundSystem* system = nullptr;
    SoundRecord* record = FindSound(sound, &system);
    if (!record || !UseContext(system)) return SOUND_ERR_INVALID_HANDLE;
    for (ChannelRecord& channel : system->channels) {
        if (channel.soundId != sound.id) continue;
        alSourceStop(channel.source);
        alSourcei(channel.source, AL_BUFFER, 0);
        channel.serial = 0;
        channel.soundId = 0;
        channel.waiting = false;
    }
    if (record->job) record->job->cancelled.store(true);
    alDeleteBuffers(1, &record->buffer);
    system->sounds.erase(system->sounds.begin() + (record - system->sounds.data()));
    return SOUND_OK;
}

// Starts the sound on a free channel, or on the oldest play when none is free.
int SoundPlay(SoundSystem* system, Sound sound, bool paused, SoundChannel* pSlot) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    if (!SystemIsLive(system) || !pSlot) return SOUND_ERR_INVALID_PARAM;
    if (!UseContext(system)) return SOUND_ERR_UNINITIALIZED;
    SoundSystem* owner = nullptr;
    SoundRecord* record = FindSound(sound, &owner);
    if (!record || owner != system) return SOUND_ERR_INVALID_HANDLE;
    if (record->silent) return SOUND_ERR_FILE_BAD;
    ChannelRecord* chosen = nullptr;
    for (ChannelRecord& channel : system->channels) {
        ALint state = SourceState(channel);
        if (!channel.waiting && state != AL_PLAYING && state != AL_PAUSED) {
            chosen = &channel;
            break;
        }
        if (!chosen || channel.serial < chosen->serial) chosen = &channel;
    }
    alSourceStop(chosen->source);
    alSourcei(chosen->source, AL_LOOPING, AL_FALSE);
    alSourcef(chosen->source, AL_GAIN, 1.0f);
    chosen->waiting = record->job != nullptr;
    chosen->waitingPaused = paused;
    if (chosen->waiting) {
        alSourcei(chosen->source, AL_BUFFER, 0);
    } else {
        alSourcei(chosen->source, AL_BUFFER, ALint(record->buffer));
        alSourcePlay(chosen->source);
        if (paused) alSourcePause(chosen->source);
    }
    chosen->serial = ++sNextPlaySerial;
    chosen->soundId = sound.id;
    pSlot->id = chosen->serial;
    return SOUND_OK;
}

// Loops the play endlessly (or lets it end after the current pass).
int ChannelSetLooping(SoundChannel handle, bool loop) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    ChannelRecord* channel = FindChannel(handle);
    if (!channel) return SOUND_ERR_INVALID_HANDLE;
    alSourcei(channel->source, AL_LOOPING, loop ? AL_TRUE : AL_FALSE);
    return SOUND_OK;
}

// Sets the channel's gain, clamped to 0 ... 1.
int ChannelSetVolume(SoundChannel handle, float volume) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    ChannelRecord* channel = FindChannel(handle);
    if (!channel) return SOUND_ERR_INVALID_HANDLE;
    if (!(volume >= 0.0f)) volume = 0.0f; // also catches NaN
    alSourcef(channel->source, AL_GAIN, std::min(volume, 1.0f));
    return SOUND_OK;
}

// Reads the channel's gain.
int ChannelGetVolume(SoundChannel handle, float* pVolume) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    ChannelRecord* channel = FindChannel(handle);
    if (!channel || !pVolume) return SOUND_ERR_INVALID_HANDLE;
    alGetSourcef(channel->source, AL_GAIN, pVolume);
    return SOUND_OK;
}

// True while the play runs, paused or not.
int ChannelIsPlaying(SoundChannel handle, bool* pPlaying) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    ChannelRecord* channel = FindChannel(handle);
    if (!channel || !pPlaying) return SOUND_ERR_INVALID_HANDLE;
    *pPlaying = true;
    return SOUND_OK;
}

// Holds the play where it is, or resumes it from there.
int ChannelSetPaused(SoundChannel handle, bool paused) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    ChannelRecord* channel = FindChannel(handle);
    if (!channel) return SOUND_ERR_INVALID_HANDLE;
    if (channel->waiting) {
        channel->waitingPaused = paused;
        return SOUND_OK;
    }
    ALint state = SourceState(*channel);
    if (paused && state == AL_PLAYING) alSourcePause(channel->source);
    if (!paused && state == AL_PAUSED) alSourcePlay(channel->source);
    return SOUND_OK;
}

// True while the play is held.
int ChannelGetPaused(SoundChannel handle, bool* pPaused) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    ChannelRecord* channel = FindChannel(handle);
    if (!channel || !pPaused) return SOUND_ERR_INVALID_HANDLE;
    *pPaused = channel->waiting ? channel->waitingPaused : SourceState(*channel) == AL_PAUSED;
    return SOUND_OK;
}

// Reads the playback position in sample frames.
int ChannelGetPosition(SoundChannel handle, int* pFrames) {
    std::lock_guard<std::recursive_mutex> lock(sLayerMutex);
    ChannelRecord* channel = FindChannel(handle);
    if (!channel || !pFrames) return SOUND_ERR_INVALID_HANDLE;
    ALint offset = 0;
    alGetSourcei(channel->source, AL_SAMPLE_OFFSET, &offset);
    *pFrames = offset;
    return SOUND_OK;
}

// The text for a result code.
const char* SoundErrorString(int result) {
    if (result < 0 || result >= SOUND_RESULT_COUNT) return "Unknown error.";
    return kErrorTexts[result];
}

// A sound system that cannot even be created leaves the game nothing to run
// its sound on: report and stop.
void CheckSoundResult(int result) {
    if (result == SOUND_OK) return;
    GameFatalExit(-1, "FMOD error! (%d) %s\n", result, SoundErrorString(result));
}

// Play, optional loop, then the master volume: the order every caller uses.
void AudioPlayIntoSlot(SoundSystem* system, Sound sound, SoundChannel* pSlot, bool loop) {
    SoundPlay(system, sound, false, pSlot);
    if (loop) ChannelSetLooping(*pSlot, true);
    ChannelSetVolume(*pSlot, gMasterVolume);
}

// Restarts a piece of music into its slot once the previous play has ended.
void AudioKeepPlaying(SoundSystem* system, Sound sound, SoundChannel* pSlot) {
    bool playing = false;
    ChannelIsPlaying(*pSlot, &playing);
    if (!playing) SoundPlay(system, sound, false, pSlot);
    ChannelSetVolume(*pSlot, gMasterVolume);
}

// The six slots in the order in which they are treated alike.
static SoundChannel* const kSlots[6] = {&gChannelArrow, &gChannelAmbience, &gChannelFinalWave,
                                        &gChannelMenu,  &gChannelLose,     &gChannelWin};

// Applies gMasterVolume to the six slots.
void AudioChannelsApplyVolume(void) {
    for (SoundChannel* slot : kSlots) ChannelSetVolume(*slot, gMasterVolume);
}

// Mute flips one volume for everything, including sounds already playing.
void AudioToggleMute(void) {
    gMuted = !gMuted;
    gMasterVolume = gMuted ? 0.0f : 1.0f;
    AudioChannelsApplyVolume();
}

// Pauses or resumes the six slots.
void AudioChannelsSetPaused(bool paused) {
    for (SoundChannel* slot : kSlots) ChannelSetPaused(*slot, paused);
}

// Creates a system and initialises it when there is an output device.
static SoundSystem* SystemCreateAndInit() {
    SoundSystem* system = nullptr;
    CheckSoundResult(SoundSystemCreate(&system));
    int drivers = 0;
    SoundSystemGetNumDrivers(system, &drivers);
    if (drivers >= 1) SoundSystemInit(system, 36);
    return system;
}

// The main loop's own system: created at start-up; nothing plays on it.
void AudioMainSystemCreate(void) {
    if (!sMainSystem) sMainSystem = SystemCreateAndInit();
}

// Releases the main loop's system at shutdown.
void AudioMainSystemRelease(void) {
    if (sMainSystem) SoundSystemRelease(sMainSystem);
    sMainSystem = nullptr;
}

namespace {

// The bank's two systems are made before the program's entry runs and
// released as the program ends, after the entry has returned.
struct AudioBankLifetime {
    AudioBankLifetime() {
        gLevelSoundSystem = SystemCreateAndInit();
        gMenuSoundSystem = SystemCreateAndInit();
    }
    ~AudioBankLifetime() {
        AudioMainSystemRelease();
        SoundSystemRelease(gLevelSoundSystem);
        SoundSystemRelease(gMenuSoundSystem);
        gLevelSoundSystem = gMenuSoundSystem = nullptr;
    }
};

AudioBankLifetime sBankLifetime;

} // namespace
