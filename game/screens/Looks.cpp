// Looks: the cache of look pictures, keyed by file name.
//
// Depends on: VXGraphics. Limits: see Looks.h.
#include "Looks.h"

#include <map>
#include <string>

namespace {
// std::less<> finds a name given as a C string without building a
// std::string for it: the buttons look their pictures up every frame.
std::map<std::string, VXGfxTexture*, std::less<>> sLooks;
} // namespace

// A missing or damaged file gives the loader's placeholder, which is kept
// like any picture: asking again would only fail again.
VXGfxTexture* LookPicture(const char* file) {
    auto found = sLooks.find(file);
    if (found != sLooks.end()) return found->second;
    VXGfxTexture* picture = VXGfxTextureLoad(file);
    sLooks.emplace(file, picture);
    return picture;
}

// One function for every table size: g++ 12 folds the identical template
// instances of an inline lookup and then warns that a 4-entry table is read
// as a 5-entry one.
VXGfxTexture* LookInTable(const char* const* table, int count, int n) {
    return (n >= 1 && n <= count) ? LookPicture(table[n - 1]) : nullptr;
}

void LooksFree(void) {
    for (auto& entry : sLooks)
        if (entry.second) VXGfxTextureUnload(entry.second);
    sLooks.clear();
}

int LooksHeldCount(void) {
    return (int)sLooks.size();
}
