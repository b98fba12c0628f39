// Score building and the offline FluidSynth render (see Score.h).
// Depends on libfluidsynth. Limits: events falling inside one 64-sample
// block of FluidSynth take effect at the block start; the render is still
// the same on every run.
#include "Score.h"

#include <fluidsynth.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <sstream>

// A score at the given starting tempo.
Score::Score(double bpm, std::uint64_t seed, double jitter_) : rng(seed), jitter(jitter_) {
    tempo.push_back({0.0, bpm});
}

// Adds a tempo mark, keeping the marks in order.
void Score::Tempo(double beat, double bpm) {
    tempo.push_back({beat, bpm});
    std::stable_sort(tempo.begin(), tempo.end(),
                     [](const TempoMark& x, const TempoMark& y) { return x.beat < y.beat; });
}

// Program change event.
void Score::Program(double beat, int channel, int program) {
    events.push_back({beat, 2, channel, program, 0});
}

// Controller event.
void Score::Control(double beat, int channel, int control, int value) {
    events.push_back({beat, 1, channel, control, std::clamp(value, 0, 127)});
}

// A controller ramp in steps of a sixteenth of a beat.
void Score::Ramp(double beat, double length, int channel, int control, int from, int to) {
    int steps = std::max(1, int(length * 16));
    for (int s = 0; s <= steps; ++s)
        Control(beat + length * s / steps, channel, control,
                int(std::lround(from + double(to - from) * s / steps)));
}

// Note on and off, with a little velocity variation so repeated notes
// do not sound mechanical (the drum loop asks for none).
void Score::Note(double beat, double length, int channel, int key, int velocity) {
    if (key < 0 || key > 127) return;
    int human = int(std::lround(rng.Range(-jitter, jitter)));
    int v = std::clamp(velocity + human, 1, 127);
    events.push_back({beat, 3, channel, key, v});
    events.push_back({beat + length, 0, channel, key, 0});
}

// Several notes at once.
void Score::Chord(double beat, double length, int channel, int velocity,
                  const std::vector<int>& keys) {
    for (int key : keys) Note(beat, length, channel, key, velocity);
}

// MIDI key of a note name.
int KeyOf(const std::string& name) {
    static const int base[7] = {9, 11, 0, 2, 4, 5, 7}; // A B C D E F G
    if (name.size() < 2 || name[0] < 'A' || name[0] > 'G') return -1;
    int key = base[name[0] - 'A'];
    std::size_t at = 1;
    while (at < name.size() && (name[at] == '#' || name[at] == 'b'))
        key += name[at++] == '#' ? 1 : -1;
    if (at >= name.size()) return -1;
    int octave = 0;
    bool negative = name[at] == '-';
    if (negative) ++at;
    if (at >= name.size()) return -1;
    for (; at < name.size(); ++at) {
        if (name[at] < '0' || name[at] > '9') return -1;
        octave = octave * 10 + (name[at] - '0');
    }
    return key + 12 * ((negative ? -octave : octave) + 1);
}

// Parses "NOTE:BEATS" tokens and places them one after another.
double Score::Line(double beat, int channel, int velocity, const std::string& text, int transpose,
                   double legato) {
    std::istringstream in(text);
    std::string token;
    while (in >> token) {
        int v = velocity;
        if (token[0] == '>') {
            v += 18;
            token.erase(0, 1);
        }
        std::size_t colon = token.find(':');
        if (colon == std::string::npos) continue;
        double length = std::atof(token.c_str() + colon + 1);
        std::string notes = token.substr(0, colon);
        if (notes != "r") {
            std::size_t from = 0;
            while (from <= notes.size()) {
                std::size_t plus = notes.find('+', from);
                if (plus == std::string::npos) plus = notes.size();
                int key = KeyOf(notes.substr(from, plus - from));
                if (key >= 0) Note(beat, length * legato, channel, key + transpose, v);
                from = plus + 1;
            }
        }
        beat += length;
    }
    return beat;
}

// Integrates the tempo map up to the beat.
double Score::SecondsAt(double beat) const {
    double seconds = 0;
    for (std::size_t i = 0; i < tempo.size(); ++i) {
        double from = tempo[i].beat;
        double to = i + 1 < tempo.size() ? tempo[i + 1].beat : beat;
        if (beat <= from) break;
        seconds += (std::min(beat, to) - from) * 60.0 / tempo[i].bpm;
    }
    return seconds;
}

// Beat of the last event.
double Score::EndBeat() const {
    double end = 0;
    for (const Event& e : events) end = std::max(end, e.beat);
    return end;
}

// Hides FluidSynth's chatter (missing-instrument warnings and the like);
// real failures are reported by the caller.
static void QuietFluidSynth() {
    static std::once_flag once;
    std::call_once(once, [] {
        fluid_set_log_function(FLUID_WARN, nullptr, nullptr);
        fluid_set_log_function(FLUID_INFO, nullptr, nullptr);
        fluid_set_log_function(FLUID_DBG, nullptr, nullptr);
    });
}

// Renders the score offline: write samples up to each event, apply it,
// carry on; then let the tail ring out.
//
// One render at a time: FluidSynth instances in the same process share the
// SoundFont's sample cache, and a final-wave render made while another piece
// was loading the SoundFont came out different under heavy load. The other
// worker thread meanwhile synthesises the ambiences, which need no
// SoundFont.
Buffer RenderScore(const Score& score, const std::string& soundFont, double tailSeconds) {
    static std::mutex oneAtATime;
    std::lock_guard<std::mutex> lock(oneAtATime);
    QuietFluidSynth();
    fluid_settings_t* settings = new_fluid_settings();
    fluid_settings_setnum(settings, "synth.sample-rate", kRate);
    fluid_settings_setint(settings, "synth.reverb.active", 0);
    fluid_settings_setint(settings, "synth.chorus.active", 0);
    fluid_settings_setint(settings, "synth.cpu-cores", 1);
    fluid_settings_setint(settings, "synth.polyphony", 256);
    fluid_settings_setint(settings, "synth.dynamic-sample-loading", 0);
    fluid_settings_setnum(settings, "synth.gain", 0.5);
    fluid_synth_t* synth = new_fluid_synth(settings);
    Buffer out;
    if (!synth || fluid_synth_sfload(synth, soundFont.c_str(), 1) == FLUID_FAILED) {
        std::fprintf(stderr, "soundgen: cannot load SoundFont %s\n", soundFont.c_str());
        if (synth) delete_fluid_synth(synth);
        delete_fluid_settings(settings);
        return out;
    }

    std::vector<Score::Event> events = score.Events();
    std::stable_sort(events.begin(), events.end(),
                     [](const Score::Event& x, const Score::Event& y) {
                         return x.beat != y.beat ? x.beat < y.beat : x.type < y.type;
                     });
    std::size_t total = Frames(score.SecondsAt(score.EndBeat()) + tailSeconds);
    out = MakeBuffer(total);
    std::size_t written = 0;
    // Renders up to (not including) the given frame.
    auto renderTo = [&](std::size_t frame) {
        frame = std::min(frame, total);
        while (written < frame) {
            int count = int(std::min<std::size_t>(4096, frame - written));
            fluid_synth_write_float(synth, count, out.left.data() + written, 0, 1,
                                    out.right.data() + written, 0, 1);
            written += std::size_t(count);
        }
    };
    for (const Score::Event& e : events) {
        renderTo(Frames(score.SecondsAt(e.beat)));
        switch (e.type) {
        case 0:
            fluid_synth_noteoff(synth, e.channel, e.a);
            break;
        case 1:
            fluid_synth_cc(synth, e.channel, e.a, e.b);
            break;
        case 2:
            fluid_synth_program_change(synth, e.channel, e.a);
            break;
        default:
            fluid_synth_noteon(synth, e.channel, e.a, e.b);
            break;
        }
    }
    renderTo(total);
    delete_fluid_synth(synth);
    delete_fluid_settings(settings);
    return out;
}
