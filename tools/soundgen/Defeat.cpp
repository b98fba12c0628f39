// The defeat music for the lose screen: a slow, melancholic A minor song
// led by a solo violin in the gypsy manner (harmonic minor, the sighing
// flat ninth over E), with harp arpeggios, a cello line and soft strings.
// 12 bars at 66 beats a minute slowing at the end (about 47 seconds); the
// game starts it again when it ends. Depends on MusicKit.h.
#include "MusicKit.h"
#include "Sounds.h"

namespace {

enum Channel { Solo = 0, Pad, CelloCh, HarpCh, Second };

const char* const kChords[12] = {"Am", "Dm", "E7", "Am", "F",  "Dm",
                                 "E",  "E7", "Am", "Dm", "E7", "Am"};

// The violin's song, a bar per group.
const char* const kSong = "A4:.5 B4:.5 C5:1.5 B4:.5 A4:1  "
                          "D5:1.5 E5:.5 F5:1 E5:.5 D5:.5  "
                          "E5:1.5 F5:.5 G#4:1 B4:1  "
                          "A4:3 r:1  "
                          "C5:.5 D5:.5 E5:.5 F5:.5 A5:2  "
                          "G#5:.5 A5:.5 F5:1 E5:.5 D5:.5 F5:1  "
                          "E5:2 D5:.5 C5:.5 B4:1  "
                          "G#4:1 B4:1 D5:1 F5:1  "
                          "E5:1.5 A5:.5 C6:1.5 B5:.5  "
                          "A5:1 G#5:.5 A5:.5 F5:1 D5:1  "
                          "E5:1 F5:.5 E5:.5 D5:1 C5:.5 B4:.5  "
                          "A4:6";

// A second violin answers a third below in the last phrase.
const char* const kAnswer = "r:32  C5:1.5 E5:.5 A5:1.5 G#5:.5  F5:1 E5:.5 F5:.5 D5:1 A4:1  "
                            "C5:1 D5:.5 C5:.5 B4:1 A4:.5 G#4:.5  E4:6";

// Cello: the root, moving to the fifth halfway through some bars.
const char* const kCello = "A2:4  D3:2 F3:2  E2:2 G#2:2  A2:2 E2:2  F2:4  D2:2 F2:2  "
                           "E2:4  E2:2 B2:2  A2:4  D2:2 F2:2  E2:4  A2:6";

} // namespace

// Composes and renders the defeat piece.
Buffer MakeDefeat(const std::string& soundFont) {
    Score s(66, 101);
    Setup(s, Solo, Gm::Violin, 110, 70);
    Setup(s, Pad, Gm::SlowStrings, 74, 56);
    Setup(s, CelloCh, Gm::Cello, 96, 48);
    Setup(s, HarpCh, Gm::Harp, 84, 84);
    Setup(s, Second, Gm::Violin, 80, 40);

    s.Line(0, Solo, 92, kSong, 0, 1.0);
    s.Line(0, Second, 70, kAnswer, 0, 1.0);
    s.Line(0, CelloCh, 74, kCello, 0, 0.98);
    // The violin breathes: each bar swells into its middle and eases off
    // (the last bar has its own fade).
    for (int b = 0; b < 11; ++b) {
        double at = 4.0 * b;
        s.Ramp(at, 2, Solo, 11, 78, 118);
        s.Ramp(at + 2, 2, Solo, 11, 118, 90);
    }
    for (int b = 0; b < 12; ++b) {
        double at = 4.0 * b;
        ChordShape c = ParseChord(kChords[b]);
        bool last = b == 11;
        s.Chord(at, last ? 6 : 3.95, Pad, 56, Voicing(c, 57));
        // Harp: rolling eighth notes up and back down across two octaves.
        const int order[8] = {0, 1, 2, 3, 4, 3, 2, 1};
        int count = last ? 5 : 8;
        for (int k = 0; k < count; ++k)
            s.Note(at + 0.5 * k, last ? 4 : 1.2, HarpCh, ChordTone(c, 45, order[k]),
                   62 + (k == 0 ? 10 : 0));
    }
    // Slowing into the last bars, like a sigh.
    s.Tempo(36, 62);
    s.Tempo(40, 56);
    s.Tempo(44, 48);
    s.Ramp(44, 6, Solo, 11, 110, 60);
    return FinishPiece(s, soundFont, 0.75, 0.4);
}
