// A small score for music composed in code: notes, controller moves and
// instrument choices placed in beats, a tempo map, and an offline render of
// the score through FluidSynth with a General MIDI SoundFont.
// Depends on Synth.h (Buffer, Rng) and libfluidsynth. Limits: 4/4-agnostic
// beats only, no pitch bend; FluidSynth's own reverb and chorus are off
// (our reverb is added afterwards) so renders are repeatable.
#pragma once

#include "Synth.h"

#include <string>
#include <vector>

// General MIDI channel of the percussion kit (zero-based).
inline constexpr int kDrumChannel = 9;

class Score {
  public:
    struct Event {
        double beat;
        int type; // 0 note off, 1 control, 2 program, 3 note on (sort order at a tie)
        int channel, a, b;
    };

    // A score starting at the given tempo (beats per minute); velocities
    // vary at random by up to +-jitter, from the seed.
    Score(double bpm, std::uint64_t seed, double jitter = 4.0);
    // Changes the tempo from the given beat onwards.
    void Tempo(double beat, double bpm);
    // Chooses the General MIDI program of a channel (bank 0) at a beat.
    void Program(double beat, int channel, int program);
    // Sets a MIDI controller (7 volume, 10 pan, 11 expression, 64 sustain).
    void Control(double beat, int channel, int control, int value);
    // Moves a controller smoothly from one value to another over a span.
    void Ramp(double beat, double length, int channel, int control, int from, int to);
    // One note; velocity is given a slight human variation.
    void Note(double beat, double length, int channel, int key, int velocity);
    // Several notes at once.
    void Chord(double beat, double length, int channel, int velocity, const std::vector<int>& keys);
    // A line written as space-separated "NOTE:BEATS" tokens: NOTE is like
    // C4, F#5, Bb3 or several joined by '+', 'r' is a rest, a leading '>'
    // accents the note. Notes sound for `legato` of their length.
    // Returns the beat after the line.
    double Line(double beat, int channel, int velocity, const std::string& text, int transpose = 0,
                double legato = 0.92);

    // Seconds at which a beat falls under the tempo map.
    double SecondsAt(double beat) const;
    // Beat after the last event.
    double EndBeat() const;
    const std::vector<Event>& Events() const { return events; }

  private:
    struct TempoMark {
        double beat, bpm;
    };
    std::vector<TempoMark> tempo;
    std::vector<Event> events;
    Rng rng;
    double jitter;
};

// MIDI key of a note name such as "C4" (60), "F#5", "Bb3"; -1 if malformed.
int KeyOf(const std::string& name);

// Renders the score through the SoundFont, sample-accurate to FluidSynth's
// 64-sample blocks, and lets `tailSeconds` of release ring after the last
// event. Returns an empty buffer if the SoundFont cannot be loaded.
Buffer RenderScore(const Score& score, const std::string& soundFont, double tailSeconds);
