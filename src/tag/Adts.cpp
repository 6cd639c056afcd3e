#include "tag/Adts.h"

#include "tag/TagLayout.h"

#include <QByteArray>

namespace qlt_tag {

namespace {
constexpr int kRates[13] = {96000, 88200, 64000, 48000, 44100, 32000, 24000,
                            22050, 16000, 12000, 11025, 8000,  7350};
constexpr long long kWalkLimit = 4 * 1024 * 1024;
constexpr qsizetype kChunk = 64 * 1024;
} // namespace

AdtsInfo AnalyseAdts(TagLib::IOStream* stream, long long start, long long end) {
    AdtsInfo info;
    long long pos = start;
    long long samples = 0;
    long long walked = 0;
    QByteArray buf;
    long long bufStart = start;
    while (pos + 7 <= end && walked < kWalkLimit) {
        // Keep at least one frame header in the buffer.
        if (pos + 7 > bufStart + buf.size()) {
            bufStart = pos;
            buf = ReadAt(stream, pos, std::min<long long>(kChunk, end - pos));
            if (buf.size() < 7)
                break;
        }
        const auto* h = reinterpret_cast<const unsigned char*>(buf.constData() + (pos - bufStart));
        const long long avail = bufStart + buf.size() - pos;
        const int len = AdtsFrameLength(h, avail);
        if (len <= 0 || pos + len > end)
            break;
        const int rate = kRates[(h[2] >> 2) & 15];
        if (info.sampleRate == 0) {
            info.sampleRate = rate;
            info.channels = ((h[2] & 1) << 2) | (h[3] >> 6);
        } else if (rate != info.sampleRate) {
            break; // a different stream or garbage: stop here
        }
        samples += 1024LL * ((h[6] & 3) + 1);
        ++info.frames;
        pos += len;
        walked += len;
    }
    if (info.frames == 0 || info.sampleRate == 0)
        return info;
    info.valid = true;
    const long long total = end - start;
    double seconds = double(samples) / info.sampleRate;
    if (pos < end && walked >= kWalkLimit) {
        // Scale by the mean frame size for the part not walked.
        seconds = seconds * double(total) / double(walked);
    }
    info.seconds = seconds;
    if (seconds > 0)
        info.bitrateKbps = static_cast<int>(double(total) * 8.0 / seconds / 1000.0 + 0.5);
    return info;
}

} // namespace qlt_tag
