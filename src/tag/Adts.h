#pragma once
// Audio data of a raw AAC stream in ADTS frames.

#include <taglib/tiostream.h>

namespace qlt_tag {

struct AdtsInfo {
    bool valid = false;
    double seconds = 0;
    int bitrateKbps = 0;
    int sampleRate = 0;
    int channels = 0;
    long long frames = 0;
};

// Walks the frames of [start, end). Up to a few megabytes every frame is counted; of a
// longer stream the duration is taken from the mean frame size. Broken data ends the
// walk; at least one complete frame is needed.
AdtsInfo AnalyseAdts(TagLib::IOStream* stream, long long start, long long end);

} // namespace qlt_tag
