// DamagedFiles: the game's own files damaged as a disk or a download damages
// them (cut short, overwritten with noise, headers that claim absurd sizes),
// and a measure of the heap a decoder takes while it reads one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

bool DamageWriteFile(const std::string& path, const std::string& bytes);

// The first `keep` bytes.
std::string DamageCut(const std::string& bytes, size_t keep);
// As many bytes of noise (a fixed generator: the same seed, the same bytes).
std::string DamageNoise(size_t size, unsigned seed);
// A PNG whose header claims width x height (its checksum made right, so the
// claim is read as the file's own).
std::string DamagePngClaimingSize(const std::string& png, uint32_t width, uint32_t height);
// An OGG whose last page claims `frames` samples (checksum made right).
std::string DamageOggClaimingLength(const std::string& ogg, uint64_t frames);
// An OGG cut inside the body of the page at about `fraction` of the file:
// its stream ends in the middle of a packet.
std::string DamageOggCutMidPacket(const std::string& ogg, double fraction);
// An .ico whose entry the window loads (32 x 32) has a PNG claiming
// width x height.
std::string DamageIcoClaimingSize(const std::string& ico, uint32_t width, uint32_t height);
// An .ico whose window entry claims more bytes than the file holds.
std::string DamageIcoEntryPastTheEnd(const std::string& ico);
// An .ico cut in the middle of its window entry's picture.
std::string DamageIcoCutInItsEntry(const std::string& ico);
// Each damage of the game's files by name, applied to a file of any kind
// (.png, .ogg, .ico): "cut" (half of it, or of an icon's window entry), "noise" (its size in noise)
// and "absurd" (the header's claim above; a cut in the middle of a packet for nothing but an OGG's
// length).
std::string DamageByName(const std::string& damage, const std::string& fileName,
                         const std::string& bytes);

// The most heap the code between Start and Stop held at once, over what was
// held at Start. Works in sanitized builds (the sanitizer reports every
// allocation); Available() is false elsewhere.
struct DamageHeapPeak {
    static bool Available();
    void Start();
    long long Stop();
};
