// Shared tools of the pieces composed in code: chord symbols turned into
// voicings, bass notes and arpeggios, and the finish every piece gets
// (room reverb, fades, loudness). Depends on Score.h and Synth.h.
// Limits: chord symbols cover major, minor and dominant-seventh chords
// ("C", "Am", "E7", "Bb"), which is all the pieces use.
#pragma once

#include "Score.h"

#include <string>
#include <vector>

// General MIDI programs the pieces use (zero-based).
namespace Gm {
inline constexpr int Celesta = 8, Violin = 40, Cello = 42, Contrabass = 43, Pizzicato = 45,
                     Harp = 46, Timpani = 47, Strings = 48, SlowStrings = 49, Choir = 52,
                     Trumpet = 56, Tuba = 58, Horn = 60, Brass = 61, Bassoon = 70, Flute = 73;
}

// General MIDI percussion keys.
namespace Drum {
inline constexpr int Kick = 36, SideStick = 37, Snare = 38, LowFloorTom = 41, ClosedHat = 42,
                     LowTom = 45, OpenHat = 46, MidTom = 47, HighMidTom = 48, Crash = 49,
                     HighTom = 50, Tambourine = 54, Cowbell = 56, Vibraslap = 58, HighWood = 76,
                     LowWood = 77, MuteCuica = 78, OpenCuica = 79, Triangle = 81, BassDrum = 35;
}

// A chord: root pitch class and its intervals above the root.
struct ChordShape {
    int root = 0;
    std::vector<int> intervals;
};

// Reads "C", "Am", "E7", "Bb", "F#m" (unknown text gives C major).
ChordShape ParseChord(const std::string& name);
// The chord's root in the octave starting at `low` (lowest key >= low).
int RootFrom(const ChordShape& chord, int low);
// The chord's tones in close position, the lowest at or above `low`.
std::vector<int> Voicing(const ChordShape& chord, int low);
// Tone number `index` of the chord counted upwards from `low` across
// octaves (0 = lowest chord tone at or above low): arpeggios.
int ChordTone(const ChordShape& chord, int low, int index);

// Sets a channel's instrument, volume and pan at the start of the piece.
void Setup(Score& score, int channel, int program, int volume, int pan);

// Renders the score and gives it a hall, a fade at the very end and the
// common loudness. Returns an empty buffer if the SoundFont is missing.
Buffer FinishPiece(const Score& score, const std::string& soundFont, double room, double wet);
