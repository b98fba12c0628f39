// The light comedic drum groove of the first two levels: a swung kit with
// tick-tock woodblocks, an oom-pah of tuba and plucked strings and cartoon
// percussion (cuica, vibraslap, cowbell), as a 16-bar seamless loop.
// Depends on MusicKit.h and Mastering.h.
// Limits: the loop is exact only because the bar length is a whole number
// of FluidSynth's 64-sample blocks and nothing varies between passes.
#include "Mastering.h"
#include "MusicKit.h"
#include "Sounds.h"

namespace {

// 105 beats a minute makes a beat exactly 25200 samples and a bar a whole
// number of 64-sample blocks, so every pass renders identically.
const double kBpm = 105.0;
const int kBars = 16;
const double kSwing = 2.0 / 3.0;

const char* const kChords[kBars] = {"F", "C7", "F",  "C7", "Bb", "F",  "C7", "F",
                                    "F", "F7", "Bb", "Bb", "F",  "C7", "F",  "C7"};

// One bar of the groove; `bar` 0..15 picks the fills.
void AddBar(Score& s, double at, int bar) {
    using namespace Drum;
    const int D = kDrumChannel;
    bool fill = bar == kBars - 1;
    bool phraseEnd = bar % 4 == 3;
    // Kick with a bouncy pickup, side stick on the backbeat.
    s.Note(at, 0.3, D, Kick, 84);
    s.Note(at + 2, 0.3, D, Kick, 78);
    if (bar % 2 == 1) s.Note(at + 1 + kSwing, 0.2, D, Kick, 62);
    s.Note(at + 1, 0.2, D, SideStick, 80);
    if (!fill) s.Note(at + 3, 0.2, D, SideStick, 82);
    // Swung hats, softer off the beat.
    for (int b = 0; b < 4; ++b) {
        if (fill && b >= 2) break;
        s.Note(at + b, 0.2, D, ClosedHat, 50);
        s.Note(at + b + kSwing, 0.2, D, ClosedHat, 34);
    }
    // The clock-like tick-tock that makes it feel sneaky and silly.
    s.Note(at + 0.0, 0.2, D, HighWood, 58);
    s.Note(at + 1 + kSwing, 0.2, D, LowWood, 52);
    s.Note(at + 2.0, 0.2, D, HighWood, 58);
    s.Note(at + 3 + kSwing, 0.2, D, LowWood, 52);
    if (bar == 0) s.Note(at, 1.0, D, Crash, 70);
    if (bar >= 8 && bar % 2 == 0) {
        s.Note(at + 2 + kSwing, 0.2, D, MuteCuica, 70);
        s.Note(at + 3, 0.3, D, OpenCuica, 74);
    }
    if (phraseEnd && !fill) {
        s.Note(at + 3, 0.3, D, Cowbell, 60);
        s.Note(at + 3 + kSwing, 0.3, D, Cowbell, 70);
    }
    if (bar == 7) s.Note(at + 3, 1.0, D, Vibraslap, 84);
    if (fill) {
        // Tumbling toms down to the crash that opens the loop again.
        const int toms[6] = {HighTom, HighMidTom, MidTom, LowTom, LowFloorTom, LowFloorTom};
        for (int k = 0; k < 6; ++k) s.Note(at + 2 + k / 3.0, 0.2, D, toms[k], 70 + 4 * k);
    }
    // Tuba oom-pah: root on one, fifth on three, a walk-up at phrase ends.
    ChordShape chord = ParseChord(kChords[bar]);
    int root = RootFrom(chord, 36);
    s.Note(at, 0.45, 0, root, 88);
    s.Note(at + 2, 0.45, 0, root + 7 > 48 ? root - 5 : root + 7, 80);
    if (phraseEnd) {
        s.Note(at + 3, 0.3, 0, root + 2, 70);
        s.Note(at + 3 + kSwing, 0.3, 0, root + 4, 74);
    }
    // The "pah" to the tuba's "oom": plucked chords on two and four, which
    // also keep the groove's bounce on speakers too small for the tuba.
    std::vector<int> pah = Voicing(chord, 60);
    s.Chord(at + 1, 0.25, 2, 88, pah);
    if (!fill) s.Chord(at + 3, 0.25, 2, 84, pah);
    // Staccato bassoon chirps on the off-beats: the comic answer.
    if (bar % 4 == 1 || bar % 4 == 2) {
        std::vector<int> tones = Voicing(chord, 55);
        s.Note(at + 1 + kSwing, 0.2, 1, tones[1], 70);
        s.Note(at + 3 + kSwing, 0.2, 1, tones[2], 74);
    }
}

} // namespace

// Renders the last two bars as a lead-in, then the 16 bars, and keeps only
// the 16: the lead-in's ringing notes and reverb fill the head exactly as
// the end of the previous pass will when the loop comes round.
Buffer MakeComedyDrums(const std::string& soundFont) {
    Score s(kBpm, 71, 0.0);
    Setup(s, 0, Gm::Tuba, 80, 58);
    Setup(s, 1, Gm::Bassoon, 84, 80);
    Setup(s, 2, Gm::Pizzicato, 112, 44);
    Setup(s, kDrumChannel, 0, 110, 64);
    const int leadIn = 2;
    for (int k = 0; k < leadIn; ++k) AddBar(s, 4.0 * k, kBars - leadIn + k);
    for (int bar = 0; bar < kBars; ++bar) AddBar(s, 4.0 * (leadIn + bar), bar);
    // A no-op controller marks the loop end so the render runs exactly that far.
    s.Control(4.0 * (leadIn + kBars), 0, 11, 127);
    // Nothing may sound past the end of the loop: the render stops there.
    Buffer out = RenderScore(s, soundFont, 0.0);
    if (out.left.empty()) return out;
    std::size_t beat = Frames(60.0 / kBpm);
    std::size_t head = beat * 4 * leadIn, loop = beat * 4 * kBars;
    out.left.resize(head + loop);
    out.right.resize(head + loop);
    Reverb room(0.35, 0.6);
    room.Apply(out, 0.25);
    DropHead(out, head);
    Master(out, SoundKind::Loop);
    return out;
}
