// Ogg Vorbis writer (see OggWriter.h). Depends on libvorbisenc and libogg.
// Limits: stereo only; the whole file is written in one go.
#include "OggWriter.h"

#include <vorbis/vorbisenc.h>

#include <algorithm>
#include <cstdio>

// Writes every page the stream has ready (or all of them when flushing).
static bool WritePages(ogg_stream_state& os, std::FILE* file, bool flush) {
    ogg_page page;
    while (flush ? ogg_stream_flush(&os, &page) : ogg_stream_pageout(&os, &page)) {
        if (std::fwrite(page.header, 1, size_t(page.header_len), file) != size_t(page.header_len))
            return false;
        if (std::fwrite(page.body, 1, size_t(page.body_len), file) != size_t(page.body_len))
            return false;
    }
    return true;
}

// Pulls finished packets out of the encoder into the stream.
static bool Drain(vorbis_dsp_state& vd, vorbis_block& vb, ogg_stream_state& os, std::FILE* file) {
    ogg_packet packet;
    while (vorbis_analysis_blockout(&vd, &vb) == 1) {
        vorbis_analysis(&vb, nullptr);
        vorbis_bitrate_addblock(&vb);
        while (vorbis_bitrate_flushpacket(&vd, &packet)) {
            ogg_stream_packetin(&os, &packet);
            if (!WritePages(os, file, false)) return false;
        }
    }
    return true;
}

// Encodes the buffer; the serial number is fixed so runs are identical.
bool WriteOgg(const std::string& path, const Buffer& buffer, float quality, int serial) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (!file) return false;
    vorbis_info vi;
    vorbis_info_init(&vi);
    if (vorbis_encode_init_vbr(&vi, 2, 44100, quality) != 0) {
        vorbis_info_clear(&vi);
        std::fclose(file);
        return false;
    }
    vorbis_comment vc;
    vorbis_comment_init(&vc);
    vorbis_comment_add_tag(&vc, "ENCODER", "quarrow-soundgen");
    vorbis_dsp_state vd;
    vorbis_block vb;
    ogg_stream_state os;
    vorbis_analysis_init(&vd, &vi);
    vorbis_block_init(&vd, &vb);
    ogg_stream_init(&os, serial);

    ogg_packet header, comments, codebooks;
    vorbis_analysis_headerout(&vd, &vc, &header, &comments, &codebooks);
    ogg_stream_packetin(&os, &header);
    ogg_stream_packetin(&os, &comments);
    ogg_stream_packetin(&os, &codebooks);
    // The audio starts on a fresh page, as players expect.
    bool ok = WritePages(os, file, true);

    const std::size_t chunk = 4096;
    std::size_t n = buffer.left.size();
    for (std::size_t at = 0; ok && at < n; at += chunk) {
        std::size_t count = std::min(chunk, n - at);
        float** in = vorbis_analysis_buffer(&vd, int(count));
        for (std::size_t i = 0; i < count; ++i) {
            in[0][i] = buffer.left[at + i];
            in[1][i] = buffer.right[at + i];
        }
        vorbis_analysis_wrote(&vd, int(count));
        ok = Drain(vd, vb, os, file);
    }
    vorbis_analysis_wrote(&vd, 0);
    if (ok) ok = Drain(vd, vb, os, file);
    if (ok) ok = WritePages(os, file, true);

    ogg_stream_clear(&os);
    vorbis_block_clear(&vb);
    vorbis_dsp_clear(&vd);
    vorbis_comment_clear(&vc);
    vorbis_info_clear(&vi);
    if (std::fclose(file) != 0) ok = false;
    if (!ok) std::remove(path.c_str());
    return ok;
}
