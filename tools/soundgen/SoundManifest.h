// The sound set of the game: every file name the game opens, whether it
// loops, how long it may be, and the loudness each family is mixed to.
// Shared by the sound generator and the resource tests so the list lives in
// one place. Depends on nothing. Names are relative to the Resources folder.
#pragma once

#include <cstddef>

// How the game plays a sound: looped ambience, a one-shot effect, or music
// that is started again whenever it ends (or played through once).
enum class SoundKind { Loop, OneShot, Music };

struct SoundEntry {
    const char* file;  // file name inside Resources
    SoundKind kind;    // how the game plays it
    double minSeconds; // shortest allowed length
    double maxSeconds; // longest allowed length
};

// Every sound is made at this rate, in stereo.
inline constexpr int kSoundRate = 44100;
inline constexpr int kSoundChannels = 2;

// Loudness (EBU R128, LUFS): each family has one level, so that sounds of
// very different spectra sound equally loud. Ambiences sit lowest, under
// everything; music, which never plays over an ambience, above them; the
// arrow, a short shot that must be heard over any ambience, highest, as its
// loudest 400 ms. Loops and music are measured over the whole file.
inline constexpr double kAmbienceLoudness = -23.0;
inline constexpr double kMusicLoudness = -18.0;
inline constexpr double kEffectLoudness = -14.0;

// The loudness each kind of sound is mixed to.
constexpr double LoudnessTarget(SoundKind kind) {
    return kind == SoundKind::Loop    ? kAmbienceLoudness
           : kind == SoundKind::Music ? kMusicLoudness
                                      : kEffectLoudness;
}
// How far a finished file may stray from its target (the codec and the
// limiter move it a little).
inline constexpr double kLoudnessToleranceLu = 1.0;
// Small speakers (laptops, tablets) give nothing below this (Hz); the
// ambiences are made to stay level with one another there too.
inline constexpr double kSmallSpeakerHz = 150.0;
// Peaks stay below this after encoding; the mix aims lower to leave room
// for the codec's overshoot.
inline constexpr double kPeakLimitDb = -1.0;
inline constexpr double kPeakCeilingDb = -2.0;

inline constexpr SoundEntry kSoundSet[] = {
    {"47 - FOREST, FANTASY MYSTICAL FOREST AMBIENCE.ogg", SoundKind::Loop, 20.0, 90.0},
    {"12 - WATER OCEAN WAVES COMING IN, LIGHT.ogg", SoundKind::Loop, 20.0, 90.0},
    {"91 - VOLCANO LARGE VOLCANO ERUPTING, EXPLODING, RUMBLE.ogg", SoundKind::Loop, 20.0, 90.0},
    {"33 - Med Cold Wind Trees.ogg", SoundKind::Loop, 20.0, 90.0},
    // The storm's loop is long so that its thunder does not come round on a beat.
    {"35 - RAIN, THUNDER HEAVY RAIN WITH THUNDER RUMBLE AND CLAPS.ogg", SoundKind::Loop, 60.0,
     90.0},
    {"DrumsComedy CTE10_45.4.ogg", SoundKind::Loop, 10.0, 90.0},
    {"24 - Arrow Swoosh.ogg", SoundKind::OneShot, 0.1, 0.5},
    {"53 - Ice Man.ogg", SoundKind::Music, 120.0, 200.0},
    {"18 - Symphony No 1 in C Major, III Presto.ogg", SoundKind::Music, 30.0, 90.0},
    {"06 - Gypsy Songs for Violin and Orchestra.ogg", SoundKind::Music, 30.0, 90.0},
};

inline constexpr std::size_t kSoundCount = sizeof(kSoundSet) / sizeof(kSoundSet[0]);
