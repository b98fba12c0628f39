// The final-wave music, played while the boss comes: a tense D minor piece
// of 72 bars at 132 beats a minute (a little over two minutes, enough to
// cover a boss fight) with a driving string ostinato, a horn theme, a
// choir, icy celesta figures and war drums. Depends on MusicKit.h.
// Form: intro 8 bars (at full strength from the first beat: it starts as
// the boss arrives), theme 16, second theme 16, quiet build 8, theme again
// with trumpets 16, ending 8.
#include "MusicKit.h"
#include "Sounds.h"

namespace {

enum Channel { Ostinato = 0, Bass, Horns, ChoirCh, Timp, Ice, Trumpets, HighStrings };

const char* const kIntro[8] = {"Dm", "Dm", "Dm", "Dm", "Dm", "Dm", "Bb", "A"};
const char* const kThemeA[8] = {"Dm", "Dm", "Bb", "C", "Dm", "Dm", "Gm", "A"};
const char* const kThemeB[8] = {"Bb", "C", "Dm", "Dm", "Gm", "Bb", "A", "A"};
const char* const kBuild[8] = {"Dm", "Dm", "Bb", "Bb", "Gm", "Gm", "A", "A"};
const char* const kEnding[8] = {"Dm", "Bb", "Gm", "A", "Dm", "Bb", "A", "Dm"};

// The horn theme, eight bars; the second ending turns it towards the
// second theme.
const char* const kHornTheme = "D4:1.5 E4:.5 F4:1 E4:1  D4:2 A3:2  Bb3:1.5 C4:.5 D4:1 F4:1  "
                               "E4:3 C4:1  D4:1.5 E4:.5 F4:1 G4:1  A4:2 F4:1 D4:1  ";
const char* const kHornEnd1 = "G4:1.5 F4:.5 E4:1 D4:1  C#4:2 E4:2";
const char* const kHornEnd2 = "G4:1.5 F4:.5 E4:1 G4:1  >A4:4";

// The horn call over the intro: twice, the second time turning to the
// theme's key chords.
const char* const kHornCall1 = "r:4  >D4:1.5 A3:.5 D4:1 F4:1  E4:2 D4:1 C4:1  D4:4  ";
const char* const kHornCall2 = "r:4  >D4:1.5 A3:.5 D4:1 F4:1  >F4:2 D4:2  E4:2 C#4:2";

// The second theme, sung high by the strings over the choir.
const char* const kHighTheme1 = "F5:4  G5:2 E5:2  A5:3 G5:.5 F5:.5  D5:4  Bb5:2 A5:1 G5:1  "
                                "F5:2 D5:2  E5:2 C#5:2  A4:4";
const char* const kHighTheme2 = "F5:4  G5:2 E5:2  A5:3 Bb5:.5 A5:.5  F5:2 D5:2  G5:2 Bb5:1 D6:1  "
                                "D6:2 Bb5:2  C#6:2 E5:2  A5:4";

// The celesta's glint of ice, two bars.
const char* const kIceFigure = "A5:.5 D6:.5 E6:.5 F6:.5 E6:.5 D6:.5 A5:1  "
                               "F5:.5 A5:.5 D6:.5 A5:.5 E6:2";

// Eighth-note ostinato on the bar's chord: low root pulsing against its
// octave, fifth and third.
void Ostinato8(Score& s, double at, const char* name, int velocity) {
    ChordShape c = ParseChord(name);
    int r = RootFrom(c, 45);
    const int steps[8] = {0, 0, 12, 0, 7, 0, c.intervals[1], 7};
    for (int k = 0; k < 8; ++k)
        s.Note(at + 0.5 * k, 0.32, Ostinato, r + steps[k], velocity + (k % 2 == 0 ? 8 : 0));
}

// Low strings and timpani on the bar's root.
void BassBar(Score& s, double at, const char* name, int velocity, bool timpani) {
    ChordShape c = ParseChord(name);
    int r = RootFrom(c, 31);
    s.Note(at, 3.8, Bass, r, velocity);
    s.Note(at, 3.8, Bass, r + 12, velocity - 20);
    if (timpani) {
        int t = RootFrom(c, 38);
        s.Note(at, 0.5, Timp, t, velocity);
        s.Note(at + 2.5, 0.5, Timp, t, velocity - 25);
        s.Note(at + 3, 0.5, Timp, t, velocity - 15);
    }
}

// A bar of war drums; `style` 0 driving, 1 half time, 2 full with crash.
void DrumBar(Score& s, double at, int style, bool crash) {
    using namespace Drum;
    const int D = kDrumChannel;
    if (crash) s.Note(at, 2, D, Crash, 90);
    if (style == 1) {
        s.Note(at, 0.3, D, BassDrum, 100);
        s.Note(at + 2, 0.3, D, Snare, 84);
        s.Note(at + 3, 0.3, D, LowTom, 70);
        s.Note(at + 3.5, 0.3, D, LowFloorTom, 78);
        return;
    }
    s.Note(at, 0.3, D, BassDrum, 104);
    s.Note(at + 1.5, 0.3, D, BassDrum, 80);
    s.Note(at + 2, 0.3, D, BassDrum, 96);
    s.Note(at + 1, 0.3, D, Snare, 72);
    s.Note(at + 3, 0.3, D, Snare, 78);
    s.Note(at + 3.5, 0.3, D, LowFloorTom, 76);
    for (int k = 0; k < 8; ++k) s.Note(at + 0.5 * k, 0.2, D, ClosedHat, k % 2 ? 34 : 46);
    if (style == 2) {
        s.Note(at + 3.75, 0.2, D, Snare, 60);
        s.Note(at + 2.5, 0.3, D, MidTom, 72);
    }
}

// A hammer blow of the whole orchestra on a chord, held for `length` beats.
void Blow(Score& s, double at, const char* name, double length) {
    ChordShape chord = ParseChord(name);
    std::vector<int> stab = Voicing(chord, 62);
    int root = RootFrom(chord, 38);
    s.Chord(at, length, Horns, 110, Voicing(chord, 57));
    s.Chord(at, length, Trumpets, 104, stab);
    s.Chord(at, length, ChoirCh, 96, stab);
    s.Chord(at, length, Ostinato, 100, {root + 7, root + 12});
    s.Note(at, length, Bass, root - 12, 110);
    s.Note(at, 0.5, Timp, root, 118);
    s.Note(at, 2, kDrumChannel, Drum::Crash, 100);
    s.Note(at, 0.5, kDrumChannel, Drum::BassDrum, 118);
}

// Long choir chord.
void ChoirBar(Score& s, double at, const char* name, int velocity) {
    s.Chord(at, 3.9, ChoirCh, velocity, Voicing(ParseChord(name), 62));
}

} // namespace

// Composes and renders the final-wave piece.
Buffer MakeFinalWave(const std::string& soundFont) {
    Score s(132, 81);
    Setup(s, Ostinato, Gm::Strings, 92, 40);
    Setup(s, Bass, Gm::Contrabass, 100, 56);
    Setup(s, Horns, Gm::Horn, 112, 76);
    Setup(s, ChoirCh, Gm::Choir, 78, 64);
    Setup(s, Timp, Gm::Timpani, 104, 60);
    Setup(s, Ice, Gm::Celesta, 82, 96);
    Setup(s, Trumpets, Gm::Trumpet, 88, 84);
    Setup(s, HighStrings, Gm::Strings, 96, 30);
    Setup(s, kDrumChannel, 0, 100, 64);

    double at = 0;
    // Intro: the boss is here and the level's ambience has just stopped, so
    // the piece hits at once: a blow of the whole orchestra, then the
    // ostinato and the war drums at full drive from the first bar, with a
    // horn call (trumpets joining the second time) and the ice glinting
    // above.
    for (int b = 0; b < 8; ++b, at += 4) {
        Ostinato8(s, at, kIntro[b], 84 + b);
        BassBar(s, at, kIntro[b], 98, true);
        DrumBar(s, at, b % 4 == 3 ? 2 : 0, b == 4);
    }
    Blow(s, 0, "Dm", 0.9);
    s.Line(0, Horns, 98, std::string(kHornCall1) + kHornCall2);
    s.Line(16, Trumpets, 86, kHornCall2, 12);
    s.Line(16, Ice, 70, kIceFigure);
    s.Line(24, Ice, 74, "Bb5:.5 D6:.5 F6:.5 D6:.5 Bb5:1 r:1  C#6:.5 E6:.5 A6:1 r:2");

    // First theme twice: horns over the full pulse.
    for (int pass = 0; pass < 2; ++pass) {
        double start = at;
        for (int b = 0; b < 8; ++b, at += 4) {
            Ostinato8(s, at, kThemeA[b], 80);
            BassBar(s, at, kThemeA[b], 96, true);
            DrumBar(s, at, 0, b == 0 && pass == 0);
        }
        s.Line(start, Horns, 92, std::string(kHornTheme) + (pass == 0 ? kHornEnd1 : kHornEnd2));
        if (pass == 1) s.Line(start, Ice, 60, std::string(kIceFigure) + " r:4 " + kIceFigure);
    }

    // Second theme twice: strings sing high, the choir swells, half-time drums.
    for (int pass = 0; pass < 2; ++pass) {
        double start = at;
        for (int b = 0; b < 8; ++b, at += 4) {
            Ostinato8(s, at, kThemeB[b], 76);
            BassBar(s, at, kThemeB[b], 94, b % 2 == 0);
            ChoirBar(s, at, kThemeB[b], 70 + 8 * pass);
            DrumBar(s, at, 1, b == 0);
            s.Chord(at, 3.8, Horns, 58, Voicing(ParseChord(kThemeB[b]), 53));
        }
        s.Line(start, HighStrings, 96, pass == 0 ? kHighTheme1 : kHighTheme2, 0, 1.0);
    }

    // The quiet build: the pulse, the choir and the ice, then a timpani roll
    // and snare roll that swell into the last return of the theme.
    double build = at;
    s.Ramp(build, 4, Ostinato, 11, 127, 90);
    s.Ramp(build + 16, 16, Ostinato, 11, 90, 127);
    for (int b = 0; b < 8; ++b, at += 4) {
        Ostinato8(s, at, kBuild[b], 70 + 3 * b);
        BassBar(s, at, kBuild[b], 84, false);
        ChoirBar(s, at, kBuild[b], 60 + 4 * b);
    }
    s.Line(build, Ice, 70, std::string(kIceFigure) + " r:8 " + kIceFigure);
    for (int k = 0; k < 32; ++k) {
        s.Note(build + 24 + 0.25 * k, 0.25, Timp, 45, 50 + k * 2);
        s.Note(build + 28 + 0.125 * k, 0.12, kDrumChannel, Drum::Snare, 40 + k * 2);
    }

    // The theme returns with trumpets doubling the horns an octave up.
    for (int pass = 0; pass < 2; ++pass) {
        double start = at;
        for (int b = 0; b < 8; ++b, at += 4) {
            Ostinato8(s, at, kThemeA[b], 86);
            BassBar(s, at, kThemeA[b], 102, true);
            ChoirBar(s, at, kThemeA[b], 80);
            DrumBar(s, at, 2, b % 4 == 0);
        }
        std::string theme = std::string(kHornTheme) + (pass == 0 ? kHornEnd1 : kHornEnd2);
        s.Line(start, Horns, 100, theme);
        s.Line(start, Trumpets, 92, theme, 12);
    }

    // Ending: the progression once more, then four hammer blows and a held D.
    for (int b = 0; b < 8; ++b, at += 4) {
        const char* chord = kEnding[b];
        if (b < 4) {
            Ostinato8(s, at, chord, 88);
            BassBar(s, at, chord, 104, true);
            ChoirBar(s, at, chord, 86);
            DrumBar(s, at, 2, b == 0);
            s.Chord(at, 3.8, Horns, 84, Voicing(ParseChord(chord), 57));
            continue;
        }
        Blow(s, at, chord, b == 7 ? 7.5 : 0.9);
    }
    s.Tempo(at - 8, 120);
    s.Tempo(at - 4, 104);
    return FinishPiece(s, soundFont, 0.8, 0.35);
}
