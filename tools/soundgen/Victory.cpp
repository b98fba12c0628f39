// The victory music, a bright fast C major presto for the win screen:
// a trumpet fanfare, a running theme for flute and violins over bouncing
// string chords, pizzicato bass and timpani, a short turn to A minor and a
// closing run to the final chord. 26 bars at 168 beats a minute (about 37
// seconds); the game starts it again when it ends. Depends on MusicKit.h.
#include "MusicKit.h"
#include "Sounds.h"

namespace {

enum Channel { Violins = 0, Flute, Trumpets, Chords, Bass, Timp, Horns };

// Two chords per bar at most; "F G" splits the bar.
const char* const kThemeChords[8] = {"C", "G", "C", "F G", "C", "Am", "F G", "C"};
const char* const kTurnChords[4] = {"Am", "F", "D7", "G7"};
const char* const kCodaChords[4] = {"C", "F", "G", "C"};

const char* const kFanfare = ">C5:.5 C5:.5 C5:.5 E5:.5 >G5:1 E5:.5 G5:.5  >C6:3 r:1";

const char* const kTheme =
    "C5:.5 E5:.5 G5:.5 C6:.5 B5:.5 C6:.5 D6:.5 E6:.5  D6:1 B5:.5 G5:.5 D5:1 G5:1  "
    "E6:.5 D6:.5 C6:.5 E6:.5 >G6:1 E6:1  F6:.5 E6:.5 D6:.5 C6:.5 B5:1 D6:1  "
    "C6:.5 G5:.5 E5:.5 G5:.5 C6:.5 E6:.5 >G6:1  A6:1 E6:1 C6:1 A5:1  ";
const char* const kThemeEnd1 = "F5:.5 A5:.5 C6:.5 F6:.5 D6:.5 B5:.5 G5:.5 B5:.5  C6:2 r:1 G5:1";
const char* const kThemeEnd2 = "F6:.5 E6:.5 D6:.5 C6:.5 D6:1 B5:1  >C6:3 r:1";

const char* const kTurn = "A5:.5 B5:.5 C6:.5 D6:.5 E6:1 A5:1  F6:.5 E6:.5 D6:.5 C6:.5 A5:2  "
                          "F#5:.5 A5:.5 D6:.5 F#6:.5 E6:.5 D6:.5 C6:.5 A5:.5  "
                          "G5:.5 B5:.5 D6:.5 F6:.5 >G6:1 F6:1";
const char* const kCoda = "E6:.5 F6:.5 G6:1 E6:1 C6:1  A6:.5 G6:.5 F6:.5 E6:.5 D6:.5 C6:.5 A5:1  "
                          "G5:.5 A5:.5 B5:.5 C6:.5 D6:.5 E6:.5 F6:.5 D6:.5  >C6:4";

// Splits "F G" into the chords of each half bar.
std::vector<std::string> Halves(const char* bar) {
    std::string text = bar;
    std::size_t space = text.find(' ');
    if (space == std::string::npos) return {text};
    return {text.substr(0, space), text.substr(space + 1)};
}

// The accompaniment of one bar: string chords on every eighth, bass on the
// beats (root, fifth), timpani on one and three, horns holding the chord.
void Accompany(Score& s, double at, const char* bar, int velocity) {
    std::vector<std::string> parts = Halves(bar);
    double span = 4.0 / double(parts.size());
    for (std::size_t p = 0; p < parts.size(); ++p) {
        ChordShape c = ParseChord(parts[p]);
        double from = at + span * double(p);
        std::vector<int> chord = Voicing(c, 60);
        for (double k = 0; k < span; k += 0.5)
            s.Chord(from + k, 0.25, Chords, velocity - (int(k * 2) % 2 ? 14 : 0), chord);
        int root = RootFrom(c, 36);
        for (double k = 0; k < span; k += 1.0)
            s.Note(from + k, 0.4, Bass, int(k) % 2 ? root + 7 : root, velocity + 10);
        s.Note(from, 0.4, Timp, RootFrom(c, 36), velocity + 6);
        s.Chord(from, span - 0.1, Horns, velocity - 20, Voicing(c, 53));
    }
}

} // namespace

// Composes and renders the victory piece.
Buffer MakeVictory(const std::string& soundFont) {
    Score s(168, 91);
    Setup(s, Violins, Gm::Strings, 100, 44);
    Setup(s, Flute, Gm::Flute, 96, 80);
    Setup(s, Trumpets, Gm::Trumpet, 100, 70);
    Setup(s, Chords, Gm::Strings, 80, 60);
    Setup(s, Bass, Gm::Pizzicato, 110, 54);
    Setup(s, Timp, Gm::Timpani, 96, 64);
    Setup(s, Horns, Gm::Horn, 80, 84);
    Setup(s, kDrumChannel, 0, 90, 64);
    const int D = kDrumChannel;

    // Fanfare: two bars of trumpets over C and G timpani.
    s.Line(0, Trumpets, 96, kFanfare);
    s.Line(0, Trumpets, 84, kFanfare, -5);
    s.Note(0, 2, D, Drum::Crash, 96);
    for (int k = 0; k < 4; ++k) s.Note(k, 0.5, Timp, k % 2 ? 43 : 36, 90);
    s.Chord(4, 3, Horns, 90, {55, 60, 64});
    double at = 8;

    // The theme twice; trumpets join the second time an octave below.
    for (int pass = 0; pass < 2; ++pass) {
        std::string theme = std::string(kTheme) + (pass == 0 ? kThemeEnd1 : kThemeEnd2);
        s.Line(at, Violins, 92, theme, 0, 0.85);
        s.Line(at, Flute, 88, theme, 0, 0.85);
        if (pass == 1) s.Line(at, Trumpets, 74, theme, -12, 0.8);
        for (int b = 0; b < 8; ++b, at += 4) {
            Accompany(s, at, kThemeChords[b], 70 + 6 * pass);
            s.Note(at, 0.3, D, Drum::BassDrum, 70);
            if (b % 4 == 0) s.Note(at, 2, D, Drum::Crash, 70 + 10 * pass);
        }
    }

    // A quick turn through A minor and back to the dominant.
    s.Line(at, Violins, 96, kTurn, 0, 0.85);
    s.Line(at, Flute, 86, kTurn, 12, 0.85);
    for (int b = 0; b < 4; ++b, at += 4) {
        Accompany(s, at, kTurnChords[b], 78);
        s.Note(at, 0.3, D, Drum::BassDrum, 76);
    }
    for (int k = 0; k < 16; ++k) s.Note(at - 2 + 0.125 * k, 0.1, D, Drum::Snare, 50 + 3 * k);

    // Coda: the closing run and a long final chord with a timpani roll.
    s.Line(at, Violins, 100, kCoda, 0, 0.9);
    s.Line(at, Flute, 90, kCoda, 0, 0.9);
    s.Line(at, Trumpets, 86, kCoda, -12, 0.9);
    s.Note(at, 2, D, Drum::Crash, 96);
    for (int b = 0; b < 3; ++b, at += 4) Accompany(s, at, kCodaChords[b], 84);
    std::vector<int> final = {48, 55, 60, 64, 67, 72};
    s.Chord(at, 5.5, Chords, 96, final);
    s.Chord(at, 5.5, Horns, 92, {55, 60, 64});
    s.Chord(at, 5.5, Trumpets, 96, {64, 67, 72});
    s.Note(at, 5.5, Bass, 36, 110);
    for (int k = 0; k < 20; ++k) s.Note(at + 0.25 * k, 0.25, Timp, 36, 70 + k);
    s.Note(at + 5, 1, Timp, 36, 120);
    s.Note(at + 5, 3, D, Drum::Crash, 110);
    s.Note(at + 5, 0.5, D, Drum::BassDrum, 110);
    s.Chord(at + 5, 0.9, Trumpets, 110, {60, 64, 67, 72});
    s.Chord(at + 5, 0.9, Chords, 110, {48, 60, 64, 67, 72});
    s.Tempo(at - 4, 160);
    s.Tempo(at, 140);
    return FinishPiece(s, soundFont, 0.7, 0.3);
}
