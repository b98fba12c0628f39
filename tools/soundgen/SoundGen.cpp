// soundgen: writes every sound of the game into a folder as Ogg Vorbis,
// or draws spectrograms of a folder of them for review.
//   soundgen [--soundfont FILE] OUTDIR
//   soundgen --spectrograms OUTDIR DIR
// Depends on the makers of Sounds.h, OggWriter and, for spectrograms, the
// sox program. Sounds are made on two threads; each is independent and
// seeded, so the bytes are the same on every run whatever the thread order.
// Limits: needs a General MIDI SoundFont for the music; exits non-zero if
// any sound cannot be made or written.
#include "Mastering.h"
#include "OggWriter.h"
#include "SoundManifest.h"
#include "Sounds.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <ctime>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace {

// Vorbis quality: transparent enough for ambience and orchestra while the
// whole set stays near 10 MB.
const float kQuality = 0.6f;

// Places the SoundFont may be installed by the Debian packages.
const char* const kSoundFonts[] = {
    "/usr/share/sounds/sf3/FluidR3Mono_GM.sf3",
    "/usr/share/sounds/sf2/FluidR3Mono_GM.sf3",
    "/usr/share/sounds/sf2/FluidR3_GM.sf2",
    "/usr/share/sounds/sf2/default-GM.sf2",
};

// True if the file exists and can be read.
bool Readable(const std::string& path) {
    return access(path.c_str(), R_OK) == 0;
}

// The maker of each sound, in the order of kSoundSet.
std::function<Buffer()> MakerFor(std::size_t index, const std::string& soundFont) {
    switch (index) {
    case 0:
        return MakeForest;
    case 1:
        return MakeOcean;
    case 2:
        return MakeVolcano;
    case 3:
        return MakeColdWind;
    case 4:
        return MakeRainThunder;
    case 5:
        return [soundFont] { return MakeComedyDrums(soundFont); };
    case 6:
        return MakeArrowSwoosh;
    case 7:
        return [soundFont] { return MakeFinalWave(soundFont); };
    case 8:
        return [soundFont] { return MakeVictory(soundFont); };
    default:
        return [soundFont] { return MakeDefeat(soundFont); };
    }
}
static_assert(kSoundCount == 10, "every sound of the set needs a maker above");

// Makes and writes one sound; the file appears only when complete.
bool MakeOne(std::size_t index, const std::string& outDir, const std::string& soundFont) {
    timespec cpu0, cpu1;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &cpu0);
    const SoundEntry& entry = kSoundSet[index];
    Buffer sound = MakerFor(index, soundFont)();
    if (sound.left.empty()) {
        std::fprintf(stderr, "soundgen: could not make \"%s\"\n", entry.file);
        return false;
    }
    std::string path = outDir + "/" + entry.file;
    std::string part = path + ".part";
    // A fixed serial per sound keeps the stream bytes the same on every run.
    if (!WriteOgg(part, sound, kQuality, 0x51570000 + int(index)) ||
        std::rename(part.c_str(), path.c_str()) != 0) {
        std::fprintf(stderr, "soundgen: could not write \"%s\"\n", path.c_str());
        std::remove(part.c_str());
        return false;
    }
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &cpu1);
    double took = double(cpu1.tv_sec - cpu0.tv_sec) + 1e-9 * double(cpu1.tv_nsec - cpu0.tv_nsec);
    // The small-speaker figure shows at a glance what a laptop loses.
    std::printf("soundgen: %-62s %5.1f s  %5.1f LUFS (%5.1f small)  peak %5.1f dB  (%.1f s)\n",
                entry.file, double(sound.left.size()) / kRate, LoudnessOf(sound, entry.kind),
                LoudnessOf(SmallSpeaker(sound), entry.kind), PeakDb(sound), took);
    return true;
}

// Writes the whole set using two worker threads, longest sounds first, the
// music (rendered one piece at a time) taking turns with the synthesised
// sounds so that both threads stay busy.
int Generate(const std::string& outDir, const std::string& soundFont) {
    mkdir(outDir.c_str(), 0755);
    const std::size_t order[kSoundCount] = {7, 4, 9, 0, 8, 2, 5, 1, 3, 6};
    std::atomic<std::size_t> next{0};
    std::atomic<bool> ok{true};
    auto worker = [&] {
        for (std::size_t k; (k = next++) < kSoundCount;)
            if (!MakeOne(order[k], outDir, soundFont)) ok = false;
    };
    std::thread helper(worker);
    worker();
    helper.join();
    return ok ? 0 : 1;
}

// Runs sox to draw one spectrogram; no shell, so the names need no quoting.
bool Spectrogram(const std::string& in, const std::string& out, const std::string& title) {
    pid_t pid = fork();
    if (pid < 0) return false;
    if (pid == 0) {
        execlp("sox", "sox", in.c_str(), "-n", "spectrogram", "-x", "1200", "-y", "257", "-t",
               title.c_str(), "-o", out.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// One spectrogram PNG per sound of the set found in dir.
int Spectrograms(const std::string& outDir, const std::string& dir) {
    mkdir(outDir.c_str(), 0755);
    int failures = 0;
    for (const SoundEntry& entry : kSoundSet) {
        std::string name = entry.file;
        std::string png = outDir + "/" + name.substr(0, name.size() - 4) + ".png";
        if (!Spectrogram(dir + "/" + name, png, name)) {
            std::fprintf(stderr, "soundgen: no spectrogram for \"%s\"\n", name.c_str());
            ++failures;
        }
    }
    return failures == 0 ? 0 : 1;
}

// Prints how to call the program.
int Usage() {
    std::fprintf(stderr, "usage: soundgen [--soundfont FILE] OUTDIR\n"
                         "       soundgen --spectrograms OUTDIR DIR\n");
    return 2;
}

} // namespace

// Reads the command line and does one of the two jobs.
int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (!args.empty() && args[0] == "--spectrograms") {
        if (args.size() != 3) return Usage();
        return Spectrograms(args[1], args[2]);
    }
    std::string soundFont;
    if (args.size() >= 2 && args[0] == "--soundfont") {
        soundFont = args[1];
        args.erase(args.begin(), args.begin() + 2);
    }
    if (args.size() != 1) return Usage();
    for (const char* candidate : kSoundFonts)
        if (soundFont.empty() && Readable(candidate)) soundFont = candidate;
    if (soundFont.empty() || !Readable(soundFont)) {
        std::fprintf(stderr, "soundgen: no General MIDI SoundFont found (install "
                             "fluidr3mono-gm-soundfont or pass --soundfont FILE)\n");
        return 1;
    }
    return Generate(args[0], soundFont);
}
