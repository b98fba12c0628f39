// The score reader under libFuzzer: every input becomes the score file, the
// game reads it into its ratings and writes them back. Whatever it read, the
// file written next must be the six well-formed lines "Level1:" ...
// "Level6:" holding exactly the ratings in memory, and reading that file
// must give the same ratings again. Built with clang apart from the game
// (see tests/CMakeLists.txt); `make fuzz SECONDS=N` runs it for longer.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "Scores.h"

namespace {

void Fail(const char* why, const std::string& text) {
    std::fprintf(stderr, "score file after a write: %s\n---\n%s---\n", why, text.c_str());
    std::abort();
}

std::string ReadBack() {
    std::string text;
    if (std::FILE* file = std::fopen("Resources/Scores.txt", "rb")) {
        char buffer[512];
        for (size_t n; (n = std::fread(buffer, 1, sizeof buffer, file)) > 0;)
            text.append(buffer, n);
        std::fclose(file);
    }
    return text;
}

// The written file, line by line: the label in order, a decimal number with
// nothing round it, a line end; each number the rating in memory.
void CheckWritten(const std::string& text) {
    size_t at = 0;
    for (int n = 0; n < 6; ++n) {
        const std::string label = "Level" + std::to_string(n + 1) + ":";
        if (text.compare(at, label.size(), label) != 0) Fail("label out of place", text);
        at += label.size();
        const size_t end = text.find('\n', at);
        if (end == std::string::npos) Fail("line without an end", text);
        const std::string digits = text.substr(at, end - at);
        char* stop = nullptr;
        const long value = std::strtol(digits.c_str(), &stop, 10);
        if (digits.empty() || *stop != '\0' || digits[0] == '+' || digits[0] == ' ')
            Fail("not a plain decimal number", text);
        if (value != gLevelRatings[n]) Fail("number differs from the rating", text);
        at = end + 1;
    }
    if (at != text.size()) Fail("more than six lines", text);
}

std::string sFolder;

// Leaves no folder behind when the run ends.
void RemoveFolder() {
    for (const char* name : {"Resources/Scores.txt", "Resources/Scores.txt.new"}) std::remove(name);
    rmdir("Resources");
    rmdir(sFolder.c_str());
}

} // namespace

// Works in a fresh folder on a memory file system where there is one, so
// the writer's flush to disk costs nothing.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    char pattern[] = "/dev/shm/quarrow-fuzz-XXXXXX";
    char fallback[] = "/tmp/quarrow-fuzz-XXXXXX";
    const char* dir = mkdtemp(pattern);
    if (!dir) dir = mkdtemp(fallback);
    if (!dir || chdir(dir) != 0 || mkdir("Resources", 0755) != 0) std::abort();
    sFolder = dir;
    std::atexit(RemoveFolder);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (std::FILE* file = std::fopen("Resources/Scores.txt", "wb")) {
        if (size) std::fwrite(data, 1, size, file);
        std::fclose(file);
    }
    // Ratings the reading may leave alone, different for every level.
    for (int n = 0; n < 6; ++n) gLevelRatings[n] = n * 7 - 20;
    LoadScores();
    SaveScores();
    CheckWritten(ReadBack());
    int kept[6];
    std::memcpy(kept, gLevelRatings, sizeof kept);
    for (int& rating : gLevelRatings) rating = 99;
    LoadScores();
    if (std::memcmp(kept, gLevelRatings, sizeof kept) != 0)
        Fail("read back differently", ReadBack());
    return 0;
}
