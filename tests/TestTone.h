// A small OGG tone written with libvorbisenc, for the tests that need a
// sound without depending on the generated Resources.
#pragma once

#include <vorbis/vorbisenc.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

// Writes page by page what the Ogg stream has ready.
inline void WritePages(ogg_stream_state& os, FILE* file, bool flush) {
    ogg_page page;
    while (flush ? ogg_stream_flush(&os, &page) : ogg_stream_pageout(&os, &page)) {
        std::fwrite(page.header, 1, page.header_len, file);
        std::fwrite(page.body, 1, page.body_len, file);
    }
}

// Encodes a 440 Hz tone of the given length and peak into an OGG file.
inline bool WriteToneOgg(const std::string& path, float seconds, int channels, float peak) {
    const int rate = 22050;
    FILE* file = std::fopen(path.c_str(), "wb");
    if (!file) return false;
    vorbis_info vi;
    vorbis_info_init(&vi);
    vorbis_encode_init_vbr(&vi, channels, rate, 0.4f);
    vorbis_comment vc;
    vorbis_comment_init(&vc);
    vorbis_dsp_state vd;
    vorbis_analysis_init(&vd, &vi);
    vorbis_block vb;
    vorbis_block_init(&vd, &vb);
    ogg_stream_state os;
    ogg_stream_init(&os, 7);
    ogg_packet header, comment, code;
    vorbis_analysis_headerout(&vd, &vc, &header, &comment, &code);
    ogg_stream_packetin(&os, &header);
    ogg_stream_packetin(&os, &comment);
    ogg_stream_packetin(&os, &code);
    WritePages(os, file, true);
    const int total = int(seconds * rate);
    for (int done = 0; done <= total; done += 1024) {
        const int n = std::min(1024, total - done);
        if (n > 0) {
            float** buffer = vorbis_analysis_buffer(&vd, n);
            for (int i = 0; i < n; i++)
                for (int c = 0; c < channels; c++)
                    buffer[c][i] = peak * float(std::sin(2.0 * M_PI * 440.0 * (done + i) / rate));
        }
        vorbis_analysis_wrote(&vd, n > 0 ? n : 0);
        while (vorbis_analysis_blockout(&vd, &vb) == 1) {
            vorbis_analysis(&vb, nullptr);
            vorbis_bitrate_addblock(&vb);
            ogg_packet packet;
            while (vorbis_bitrate_flushpacket(&vd, &packet)) {
                ogg_stream_packetin(&os, &packet);
                WritePages(os, file, false);
            }
        }
    }
    WritePages(os, file, true);
    ogg_stream_clear(&os);
    vorbis_block_clear(&vb);
    vorbis_dsp_clear(&vd);
    vorbis_comment_clear(&vc);
    vorbis_info_clear(&vi);
    std::fclose(file);
    return true;
}
