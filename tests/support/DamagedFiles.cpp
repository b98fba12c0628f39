// DamagedFiles: damaged copies of the game's files, and the heap peak.
#include "DamagedFiles.h"

#include <ogg/ogg.h>
#include <zlib.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
// The sanitizer's allocator interface (g++ ships no header for it).
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*onAllocate)(const volatile void*,
                                                                            size_t),
                                                         void (*onFree)(const volatile void*));
extern "C" size_t __sanitizer_get_allocated_size(const volatile void* p);
#endif

bool DamageWriteFile(const std::string& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
    return bool(out);
}

std::string DamageCut(const std::string& bytes, size_t keep) {
    return bytes.substr(0, std::min(keep, bytes.size()));
}

std::string DamageNoise(size_t size, unsigned seed) {
    std::string bytes(size, '\0');
    for (char& c : bytes) {
        seed = seed * 1664525u + 1013904223u;
        c = (char)(seed >> 24);
    }
    return bytes;
}

namespace {

void PutBe32(std::string& bytes, size_t at, uint32_t v) {
    for (int i = 0; i < 4; ++i) bytes[at + i] = (char)(v >> (24 - 8 * i));
}

uint32_t Le32(const std::string& bytes, size_t at) {
    uint32_t v = 0;
    for (int i = 3; i >= 0; --i) v = v << 8 | (unsigned char)bytes[at + i];
    return v;
}

// Where each page of an OGG file starts, and its size.
struct OggPage {
    size_t at, headerSize, bodySize;
};
std::vector<OggPage> OggPages(const std::string& ogg) {
    std::vector<OggPage> pages;
    for (size_t at = 0; at + 27 <= ogg.size() && ogg.compare(at, 4, "OggS") == 0;) {
        const size_t segments = (unsigned char)ogg[at + 26];
        if (at + 27 + segments > ogg.size()) break;
        size_t body = 0;
        for (size_t i = 0; i < segments; ++i) body += (unsigned char)ogg[at + 27 + i];
        pages.push_back({at, 27 + segments, body});
        at += 27 + segments + body;
    }
    return pages;
}

} // namespace

std::string DamagePngClaimingSize(const std::string& png, uint32_t width, uint32_t height) {
    std::string bytes = png;
    if (bytes.size() < 33) return bytes;
    // Signature (8), then the IHDR chunk: length, type, width, height, ...,
    // and a CRC over type and data.
    PutBe32(bytes, 16, width);
    PutBe32(bytes, 20, height);
    const uLong crc = crc32(0L, (const Bytef*)bytes.data() + 12, 17);
    PutBe32(bytes, 29, (uint32_t)crc);
    return bytes;
}

std::string DamageOggClaimingLength(const std::string& ogg, uint64_t frames) {
    std::string bytes = ogg;
    const std::vector<OggPage> pages = OggPages(bytes);
    if (pages.empty()) return bytes;
    const OggPage& last = pages.back();
    for (int i = 0; i < 8; ++i) bytes[last.at + 6 + i] = (char)(frames >> (8 * i));
    ogg_page page;
    page.header = (unsigned char*)&bytes[last.at];
    page.header_len = (long)last.headerSize;
    page.body = (unsigned char*)&bytes[last.at + last.headerSize];
    page.body_len = (long)last.bodySize;
    ogg_page_checksum_set(&page);
    return bytes;
}

std::string DamageOggCutMidPacket(const std::string& ogg, double fraction) {
    const std::vector<OggPage> pages = OggPages(ogg);
    for (const OggPage& page : pages)
        if (page.at >= ogg.size() * fraction && page.bodySize > 2)
            return ogg.substr(0, page.at + page.headerSize + page.bodySize / 2);
    return DamageCut(ogg, ogg.size() / 2);
}

namespace {

// The window loads the icon's 32 x 32 entry; the other sizes are for the
// desktop and never read by the game.
constexpr unsigned char kWindowIconSide = 32;

// Where the directory record of the window's entry starts (the first
// record when the icon has none of that size).
size_t WindowEntryRecord(const std::string& ico) {
    const size_t count = ico.size() < 8 ? 0 : Le32(ico, 4) & 0xFFFF;
    for (size_t i = 0; i < count && 6 + 16 * i + 16 <= ico.size(); ++i)
        if ((unsigned char)ico[6 + 16 * i] == kWindowIconSide) return 6 + 16 * i;
    return 6;
}

} // namespace

std::string DamageIcoClaimingSize(const std::string& ico, uint32_t width, uint32_t height) {
    const size_t record = WindowEntryRecord(ico);
    if (ico.size() < record + 16) return ico;
    const size_t size = Le32(ico, record + 8), offset = Le32(ico, record + 12);
    if (offset + size > ico.size()) return ico;
    return ico.substr(0, offset) + DamagePngClaimingSize(ico.substr(offset, size), width, height) +
           ico.substr(offset + size);
}

std::string DamageIcoEntryPastTheEnd(const std::string& ico) {
    std::string bytes = ico;
    const size_t record = WindowEntryRecord(ico);
    if (bytes.size() < record + 16) return bytes;
    for (int i = 0; i < 4; ++i) bytes[record + 8 + i] = '\xF0'; // 4 GB of entry
    return bytes;
}

std::string DamageIcoCutInItsEntry(const std::string& ico) {
    const size_t record = WindowEntryRecord(ico);
    if (ico.size() < record + 16) return DamageCut(ico, ico.size() / 2);
    return DamageCut(ico, Le32(ico, record + 12) + Le32(ico, record + 8) / 2);
}

std::string DamageByName(const std::string& damage, const std::string& fileName,
                         const std::string& bytes) {
    const std::string ext = fileName.substr(fileName.rfind('.') + 1);
    if (damage == "cut")
        return ext == "ico" ? DamageIcoCutInItsEntry(bytes) : DamageCut(bytes, bytes.size() / 2);
    if (damage == "noise") return DamageNoise(bytes.size(), (unsigned)bytes.size());
    if (ext == "png") return DamagePngClaimingSize(bytes, 100000, 100000);
    if (ext == "ico") return DamageIcoClaimingSize(bytes, 100000, 100000);
    return DamageOggClaimingLength(bytes, uint64_t(1) << 40);
}

namespace {

std::atomic<bool> sWatching{false};
std::atomic<long long> sHeld{0};
std::atomic<long long> sPeak{0};

#if defined(__SANITIZE_ADDRESS__)
void OnAllocate(const volatile void*, size_t size) {
    if (!sWatching.load()) return;
    const long long held = sHeld += (long long)size;
    long long peak = sPeak.load();
    while (held > peak && !sPeak.compare_exchange_weak(peak, held)) {
    }
}
void OnFree(const volatile void* p) {
    if (sWatching.load()) sHeld -= (long long)__sanitizer_get_allocated_size(p);
}
// Installed by the first measure only: other tests run without the hooks.
bool Hooked() {
    static const bool hooked = __sanitizer_install_malloc_and_free_hooks(OnAllocate, OnFree) != 0;
    return hooked;
}
#else
bool Hooked() {
    return false;
}
#endif

} // namespace

bool DamageHeapPeak::Available() {
    return Hooked();
}

void DamageHeapPeak::Start() {
    sHeld = 0;
    sPeak = 0;
    sWatching = true;
}

long long DamageHeapPeak::Stop() {
    sWatching = false;
    return sPeak.load();
}
