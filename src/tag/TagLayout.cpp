#include "tag/TagLayout.h"

#include <algorithm>
#include <cstring>

namespace qlt_tag {

const TrailerBlock* FileLayout::Find(BlockKind kind) const {
    for (const TrailerBlock& b : trailer) {
        if (b.kind == kind)
            return &b;
    }
    return nullptr;
}

QByteArray ReadAt(TagLib::IOStream* stream, long long offset, long long length) {
    if (offset < 0 || length <= 0)
        return QByteArray();
    stream->seek(static_cast<long>(offset));
    const TagLib::ByteVector v = stream->readBlock(static_cast<unsigned long>(length));
    return QByteArray(v.data(), static_cast<qsizetype>(v.size()));
}

namespace {

quint32 Le32(const char* p) {
    const auto* u = reinterpret_cast<const unsigned char*>(p);
    return quint32(u[0]) | (quint32(u[1]) << 8) | (quint32(u[2]) << 16) | (quint32(u[3]) << 24);
}

bool AllDigits(const QByteArray& b) {
    if (b.isEmpty())
        return false;
    for (char c : b) {
        if (c < '0' || c > '9')
            return false;
    }
    return true;
}

} // namespace

long long LeadingId3v2Size(TagLib::IOStream* stream, long long fileSize, int* version) {
    long long pos = 0;
    if (version)
        *version = 0;
    for (int n = 0; n < 8 && pos + 10 <= fileSize; ++n) {
        const QByteArray h = ReadAt(stream, pos, 10);
        if (h.size() < 10 || !h.startsWith("ID3"))
            break;
        const auto* u = reinterpret_cast<const unsigned char*>(h.constData());
        if (u[3] < 2 || u[3] > 4 || u[4] == 0xFF || (u[6] | u[7] | u[8] | u[9]) & 0x80)
            break;
        long long size = (static_cast<long long>(u[6]) << 21) | (u[7] << 14) | (u[8] << 7) | u[9];
        size += 10;
        if (u[3] == 4 && (u[5] & 0x10))
            size += 10; // footer
        if (pos + size > fileSize)
            size = fileSize - pos; // a tag cut short: it still ends with the file
        if (version && n == 0)
            *version = u[3];
        pos += size;
    }
    return pos;
}

std::vector<TrailerBlock> ScanTrailer(TagLib::IOStream* stream, long long fileSize, long long minOffset) {
    std::vector<TrailerBlock> blocks;
    long long end = fileSize;
    bool seenV1 = false;
    for (int n = 0; n < 8; ++n) {
        const long long avail = end - minOffset;
        if (avail < 9)
            break;
        // The last 32 bytes before 'end' hold every marker we look for.
        const long long tailLen = std::min<long long>(avail, 160);
        const QByteArray tail = ReadAt(stream, end - tailLen, tailLen);
        if (tail.size() != tailLen)
            break;
        const char* t = tail.constData() + tail.size();
        TrailerBlock block{BlockKind::Id3v1, 0, 0};
        if (!seenV1 && avail >= 128 && tailLen >= 128 && std::memcmp(t - 128, "TAG", 3) == 0) {
            block = {BlockKind::Id3v1, end - 128, 128};
            seenV1 = true;
        } else if (avail >= 32 && std::memcmp(t - 32, "APETAGEX", 8) == 0) {
            const quint32 size = Le32(t - 32 + 12);
            const quint32 flags = Le32(t - 32 + 20);
            long long total = static_cast<long long>(size) + ((flags & 0x80000000u) ? 32 : 0);
            if (size < 32 || total > avail)
                break;
            block = {BlockKind::Ape, end - total, total};
        } else if (avail >= 15 && std::memcmp(t - 9, "LYRICS200", 9) == 0) {
            const QByteArray digits(t - 15, 6);
            if (!AllDigits(digits))
                break;
            const long long total = digits.toLongLong() + 15;
            if (total > avail || total < 26)
                break;
            if (ReadAt(stream, end - total, 11) != "LYRICSBEGIN")
                break;
            block = {BlockKind::Lyrics3v2, end - total, total};
        } else if (std::memcmp(t - 9, "LYRICSEND", 9) == 0) {
            // Lyrics3 v1: at most 5100 bytes of lyrics between the two markers.
            const long long span = std::min<long long>(avail, 5100 + 20);
            const QByteArray area = ReadAt(stream, end - span, span);
            const qsizetype at = area.lastIndexOf("LYRICSBEGIN");
            if (at < 0)
                break;
            block = {BlockKind::Lyrics3v1, end - span + at, span - at};
        } else {
            break;
        }
        blocks.insert(blocks.begin(), block);
        end = block.offset;
    }
    return blocks;
}

int MpegFrameLength(const unsigned char* h) {
    if (h[0] != 0xFF || (h[1] & 0xE0) != 0xE0)
        return 0;
    const int version = (h[1] >> 3) & 3; // 0 = 2.5, 1 reserved, 2 = 2, 3 = 1
    const int layer = (h[1] >> 1) & 3;   // 1 = III, 2 = II, 3 = I
    const int brIndex = (h[2] >> 4) & 15;
    const int srIndex = (h[2] >> 2) & 3;
    const int padding = (h[2] >> 1) & 1;
    if (version == 1 || layer == 0 || brIndex == 0 || brIndex == 15 || srIndex == 3)
        return 0;
    static const int kBitrates[2][3][15] = {
        {{0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
         {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
         {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320}},
        {{0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
         {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
         {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}}};
    static const int kRates[3] = {44100, 48000, 32000};
    const int v2 = version == 3 ? 0 : 1;
    const int layerIdx = 3 - layer; // 0 = I, 1 = II, 2 = III
    const int bitrate = kBitrates[v2][layerIdx][brIndex] * 1000;
    int rate = kRates[srIndex];
    if (version == 2)
        rate /= 2;
    else if (version == 0)
        rate /= 4;
    if (layerIdx == 0)
        return (12 * bitrate / rate + padding) * 4;
    if (layerIdx == 2 && v2)
        return 72 * bitrate / rate + padding;
    return 144 * bitrate / rate + padding;
}

int AdtsFrameLength(const unsigned char* h, long long available) {
    if (available < 7 || h[0] != 0xFF || (h[1] & 0xF6) != 0xF0)
        return 0;
    const int srIndex = (h[2] >> 2) & 15;
    if (srIndex > 12)
        return 0;
    const int length = ((h[3] & 3) << 11) | (h[4] << 3) | (h[5] >> 5);
    const int headerLen = (h[1] & 1) ? 7 : 9;
    return length > headerLen ? length : 0;
}

bool TypeHasOuterTags(int type) {
    return type == kTypeMp3 || type == kTypeMonkey || type == kTypeFlac || type == kTypeOgg ||
           type == kTypeMpc || type == kTypeAac;
}

namespace {

// Two MPEG frames in a row (or one that ends exactly at the end of the data) at 'at'.
bool MpegChainAt(const QByteArray& buf, qsizetype at, long long bytesLeftInFile) {
    const auto* u = reinterpret_cast<const unsigned char*>(buf.constData());
    if (at + 4 > buf.size())
        return false;
    const int len = MpegFrameLength(u + at);
    if (len <= 0)
        return false;
    if (at + len + 4 <= buf.size()) {
        const unsigned char* n = u + at + len;
        // The next header must agree on version, layer and sample rate.
        return MpegFrameLength(n) > 0 && (n[1] & 0xFE) == (u[at + 1] & 0xFE) &&
               ((n[2] ^ u[at + 2]) & 0x0C) == 0;
    }
    return len == bytesLeftInFile;
}

bool AdtsChainAt(const QByteArray& buf, qsizetype at, long long bytesLeftInFile) {
    const auto* u = reinterpret_cast<const unsigned char*>(buf.constData());
    const int len = AdtsFrameLength(u + at, buf.size() - at);
    if (len <= 0)
        return false;
    if (at + len + 7 <= buf.size())
        return AdtsFrameLength(u + at + len, buf.size() - at - len) > 0;
    return len == bytesLeftInFile;
}

} // namespace

int DetectType(TagLib::IOStream* stream, long long fileSize, FileLayout* layout) {
    FileLayout local;
    FileLayout& lay = layout ? *layout : local;
    lay = FileLayout();
    lay.size = fileSize;
    lay.bodyEnd = fileSize;
    if (fileSize < 4)
        return kTypeNone;
    QByteArray head = ReadAt(stream, 0, 16);
    int type = kTypeNone;
    // Formats that never carry an ID3v2 tag in front.
    if (head.size() >= 12 && head.startsWith("RIFF") && head.mid(8, 4) == "WAVE")
        return kTypeWav;
    static const unsigned char kAsfGuid[16] = {0x30, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                                               0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C};
    if (head.size() >= 16 && std::memcmp(head.constData(), kAsfGuid, 16) == 0)
        return kTypeWma;
    if (head.size() >= 8 && head.mid(4, 4) == "ftyp")
        return kTypeMp4;

    int version = 0;
    const long long start = LeadingId3v2Size(stream, fileSize, &version);
    lay.headEnd = start;
    lay.headVersion = version;
    if (start >= fileSize)
        return kTypeNone;
    // Enough to see a container signature, and to find the first MPEG frames behind
    // padding or junk.
    const long long probeLen = std::min<long long>(fileSize - start, 64 * 1024);
    const QByteArray probe = ReadAt(stream, start, probeLen);
    if (probe.size() < 4)
        return kTypeNone;
    if (probe.startsWith("fLaC"))
        type = kTypeFlac;
    else if (probe.startsWith("OggS"))
        type = kTypeOgg;
    else if (probe.startsWith("MAC "))
        type = kTypeMonkey;
    else if (probe.startsWith("MP+") || probe.startsWith("MPCK"))
        type = kTypeMpc;
    else {
        const long long left = fileSize - start;
        if (AdtsChainAt(probe, 0, left)) {
            type = kTypeAac;
        } else {
            // MPEG audio: the first frame chain within the probe. Only ID3v2 padding or a
            // little junk may stand in front of it.
            const auto* u = reinterpret_cast<const unsigned char*>(probe.constData());
            for (qsizetype i = 0; i + 4 <= probe.size(); ++i) {
                if (u[i] == 0xFF && MpegChainAt(probe, i, left - i)) {
                    type = kTypeMp3;
                    break;
                }
            }
        }
    }
    if (type == kTypeNone)
        return kTypeNone;
    lay.trailer = ScanTrailer(stream, fileSize, start);
    if (!lay.trailer.empty())
        lay.bodyEnd = lay.trailer.front().offset;
    return type;
}

} // namespace qlt_tag
