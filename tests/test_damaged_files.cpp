// The decoders of every kind of file the game reads (PNG pictures, the .ico
// icon, OGG sounds), each given its real file damaged: cut short, noise in
// its place, headers claiming absurd sizes. Each damaged file is refused
// (or, for a sound, plays what it holds), and while reading it the decoder
// holds no more heap than it does for the real file. The score file has a
// fuzzer of its own (tests/fuzz).
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "Audio.h"
#include "DamagedFiles.h"
#include "TestSupport.h"
#include "VXImage.h"

namespace {

// A scratch folder of this process's own, removed at the end.
struct Scratch {
    std::string dir;
    Scratch() {
        char pattern[] = "/tmp/quarrow-damage-XXXXXX";
        dir = mkdtemp(pattern) ? pattern : "/tmp";
    }
    ~Scratch() { std::filesystem::remove_all(dir); }
};

// Decodes a picture file (PNG or icon) and returns whether it decoded and
// the heap it held at most.
bool DecodePicture(const std::string& path, long long& peak) {
    std::vector<unsigned char> pixels;
    int w = 0, h = 0;
    DamageHeapPeak heap;
    heap.Start();
    const bool ok = path.size() > 4 && path.substr(path.size() - 4) == ".ico"
                        ? VXImageDecodeIcoFile(path.c_str(), 32, pixels)
                        : VXImageDecodePNGFile(path.c_str(), pixels, w, h);
    peak = heap.Stop();
    return ok;
}

// Makes a sound of the file and plays it until its samples have been
// decoded (or refused); returns SoundCreate's result, whether the sound
// plays, and the heap held at most meanwhile.
int DecodeSound(const std::string& path, bool& plays, long long& peak) {
    DamageHeapPeak heap;
    heap.Start();
    Sound sound;
    const int result = SoundCreate(gLevelSoundSystem, path.c_str(), &sound);
    SoundChannel slot;
    SoundPlay(gLevelSoundSystem, sound, false, &slot);
    int position = 0;
    for (int waited = 0; waited < 1000 && TestChannelPlaying(slot) && position == 0; ++waited) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        ChannelGetPosition(slot, &position);
    }
    plays = TestChannelPlaying(slot);
    SoundRelease(sound);
    peak = heap.Stop();
    return result;
}

} // namespace

TEST(DamagedFiles, PicturesAndTheIconAreRefusedWithinTheRealFilesMemory) {
    if (!DamageHeapPeak::Available()) GTEST_SKIP() << "the heap is measured in sanitized builds";
    const Scratch scratch;
    const std::string png = TestReadFile(TestResourcesDir() + "/MenuBG.png");
    const std::string ico = TestReadFile(TestResourcesDir() + "/crystal.ico");
    ASSERT_GT(png.size(), 1000u);
    ASSERT_GT(ico.size(), 100u);
    long long realPng = 0, realIco = 0;
    ASSERT_TRUE(DecodePicture(TestResourcesDir() + "/MenuBG.png", realPng));
    ASSERT_TRUE(DecodePicture(TestResourcesDir() + "/crystal.ico", realIco));
    struct Case {
        const char* name;
        std::string bytes;
        const char* ext;
        long long realPeak;
    } cases[] = {
        {"picture cut in half", DamageCut(png, png.size() / 2), "png", realPng},
        {"picture cut after its header", DamageCut(png, 60), "png", realPng},
        {"picture of noise", DamageNoise(png.size(), 1), "png", realPng},
        {"picture claiming 100000 x 100000", DamagePngClaimingSize(png, 100000, 100000), "png",
         realPng},
        {"picture claiming 16384 x 16384", DamagePngClaimingSize(png, 16384, 16384), "png",
         realPng},
        {"icon cut inside the window's entry", DamageIcoCutInItsEntry(ico), "ico", realIco},
        {"icon of noise", DamageNoise(ico.size(), 2), "ico", realIco},
        {"icon whose picture claims 100000 x 100000", DamageIcoClaimingSize(ico, 100000, 100000),
         "ico", realIco},
        {"icon whose picture claims 32 x 16384", DamageIcoClaimingSize(ico, 32, 16384), "ico",
         realIco},
        {"icon entry past the end", DamageIcoEntryPastTheEnd(ico), "ico", realIco},
    };
    for (const Case& c : cases) {
        const std::string path = scratch.dir + "/damaged." + c.ext;
        ASSERT_TRUE(DamageWriteFile(path, c.bytes));
        long long peak = 0;
        EXPECT_FALSE(DecodePicture(path, peak)) << c.name;
        EXPECT_LE(peak, c.realPeak) << c.name << ": heap held, against the real file's";
    }
}

TEST(DamagedFiles, SoundsAreRefusedOrPlayWhatTheyHoldWithinTheRealFilesMemory) {
    if (!DamageHeapPeak::Available()) GTEST_SKIP() << "the heap is measured in sanitized builds";
    const Scratch scratch;
    const std::string real = TestResourcesDir() + "/DrumsComedy CTE10_45.4.ogg";
    const std::string ogg = TestReadFile(real);
    ASSERT_GT(ogg.size(), 10000u);
    bool plays = false;
    long long realPeak = 0;
    ASSERT_EQ(SOUND_OK, DecodeSound(real, plays, realPeak));
    ASSERT_TRUE(plays);
    // A length no file can hold gets room for twelve bytes of samples per
    // byte of file; the real file needs 8.5.
    const double kUntrustedLength = 12.0 / 8.5;
    struct Case {
        const char* name;
        std::string bytes;
        int result;
        bool plays;
        double allowance; // of the real file's heap
    } cases[] = {
        {"stream ending mid-packet", DamageOggCutMidPacket(ogg, 0.5), SOUND_OK, true, 1.0},
        {"cut inside the headers", DamageCut(ogg, 3000), SOUND_ERR_FILE_BAD, false, 1.0},
        {"noise", DamageNoise(ogg.size(), 3), SOUND_ERR_FILE_BAD, false, 1.0},
        {"last page claiming 2^40 samples", DamageOggClaimingLength(ogg, uint64_t(1) << 40),
         SOUND_OK, true, kUntrustedLength},
    };
    for (const Case& c : cases) {
        const std::string path = scratch.dir + "/damaged.ogg";
        ASSERT_TRUE(DamageWriteFile(path, c.bytes));
        long long peak = 0;
        EXPECT_EQ(c.result, DecodeSound(path, plays, peak)) << c.name;
        EXPECT_EQ(c.plays, plays) << c.name;
        EXPECT_LE(peak, (long long)(realPeak * c.allowance))
            << c.name << ": heap held, against the real file's " << realPeak;
    }
}
