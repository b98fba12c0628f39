// The makers of every sound in the game's set, one function per file of
// SoundManifest.h. Each returns the finished sound: looped sounds already
// joined seamlessly, everything mixed to the common loudness.
// Depends on Synth.h; the music makers also need a General MIDI SoundFont.
// Limits: every maker is deterministic and independent of the others, so
// they may run on separate threads.
#pragma once

#include "Synth.h"

#include <string>

// Ambiences built from noise, filters and reverb (Ambience.cpp, Weather.cpp).
Buffer MakeForest();
Buffer MakeOcean();
Buffer MakeVolcano();
Buffer MakeColdWind();
Buffer MakeRainThunder();

// The arrow leaving the bow (Effects.cpp).
Buffer MakeArrowSwoosh();

// Music rendered through the SoundFont (Groove.cpp, Music.cpp).
Buffer MakeComedyDrums(const std::string& soundFont);
Buffer MakeFinalWave(const std::string& soundFont);
Buffer MakeVictory(const std::string& soundFont);
Buffer MakeDefeat(const std::string& soundFont);

// Shared finish of the noise ambiences: drops the warm-up, joins the loop
// and masters it. The render holds warmUp + loop + fade samples.
void FinishAmbienceLoop(Buffer& buffer, std::size_t warmUp, std::size_t loop, std::size_t fade);
