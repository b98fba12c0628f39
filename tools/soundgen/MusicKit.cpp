// Chord helpers and the common finish of the composed pieces (see
// MusicKit.h). Depends on Score.h and Synth.h.
// Limits: voicings are close position only.
#include "MusicKit.h"
#include "Mastering.h"

#include <algorithm>

// Reads a chord symbol.
ChordShape ParseChord(const std::string& name) {
    ChordShape chord;
    int key =
        KeyOf(name.substr(0, name.size() > 1 && (name[1] == '#' || name[1] == 'b') ? 2 : 1) + "4");
    std::string rest = name.substr(name.size() > 1 && (name[1] == '#' || name[1] == 'b') ? 2 : 1);
    chord.root = key < 0 ? 0 : key % 12;
    bool minor = !rest.empty() && rest[0] == 'm';
    chord.intervals = {0, minor ? 3 : 4, 7};
    if (rest.find('7') != std::string::npos) chord.intervals.push_back(10);
    return chord;
}

// Lowest root at or above low.
int RootFrom(const ChordShape& chord, int low) {
    int key = low - ((low - chord.root) % 12 + 12) % 12;
    return key < low ? key + 12 : key;
}

// Counts chord tones upwards from low.
int ChordTone(const ChordShape& chord, int low, int index) {
    // Every chord tone from the octave below low upwards, in order.
    std::vector<int> tones;
    int base = RootFrom(chord, low) - 12;
    for (int octave = 0; octave < 6; ++octave)
        for (int interval : chord.intervals) {
            int key = base + 12 * octave + interval;
            if (key >= low) tones.push_back(key);
        }
    std::sort(tones.begin(), tones.end());
    return tones[std::size_t(index) % tones.size()];
}

// Close-position chord from low upwards.
std::vector<int> Voicing(const ChordShape& chord, int low) {
    std::vector<int> keys;
    for (std::size_t i = 0; i < chord.intervals.size(); ++i)
        keys.push_back(ChordTone(chord, low, int(i)));
    return keys;
}

// Instrument, volume and pan of a channel.
void Setup(Score& score, int channel, int program, int volume, int pan) {
    if (channel != kDrumChannel) score.Program(0, channel, program);
    score.Control(0, channel, 7, volume);
    score.Control(0, channel, 10, pan);
    score.Control(0, channel, 11, 127);
}

// Render, hall, fades, loudness.
Buffer FinishPiece(const Score& score, const std::string& soundFont, double room, double wet) {
    Buffer out = RenderScore(score, soundFont, 4.0);
    if (out.left.empty()) return out;
    Reverb hall(room, 0.45);
    hall.Apply(out, wet);
    RemoveDc(out);
    FadeEdges(out, Frames(0.002), Frames(1.5));
    Master(out, SoundKind::Music);
    return out;
}
