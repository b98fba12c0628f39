// Writes a stereo float buffer as an Ogg Vorbis file with libvorbisenc.
// Depends on Synth.h (Buffer) and libvorbisenc/libogg. The stream serial
// number is fixed by the caller, so the same samples give the same bytes.
// Limits: variable bit rate by quality only; 44.1 kHz stereo.
#pragma once

#include "Synth.h"

#include <string>

// Encodes the buffer at the Vorbis quality (-0.1 .. 1.0) into path.
// Returns false (and leaves no half-written promise) if the file cannot be
// written.
bool WriteOgg(const std::string& path, const Buffer& buffer, float quality, int serial);
