#include "tag/FormatRead.h"

#include "tag/Adts.h"
#include "tag/TagStreams.h"
#include "tag/TagText.h"
#include "tag/TrailerTags.h"

#include <taglib/apefile.h>
#include <taglib/asffile.h>
#include <taglib/flacfile.h>
#include <taglib/id3v1genres.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpcfile.h>
#include <taglib/mpegfile.h>
#include <taglib/oggflacfile.h>
#include <taglib/opusfile.h>
#include <taglib/speexfile.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavfile.h>

using namespace TagLib;

namespace qlt_tag {

namespace {

void TakeProperties(const AudioProperties* p, EngineData& d) {
    if (!p)
        return;
    d.duration = static_cast<float>(p->lengthInMilliseconds()) / 1000.0f;
    d.bitrate = p->bitrate();
    d.frequency = p->sampleRate();
}

constexpr auto kStyle = AudioProperties::Fast;

template <typename F> bool Props(F& file, EngineData& d) {
    if (!file.isValid() || !file.audioProperties() || file.audioProperties()->sampleRate() <= 0 ||
        file.audioProperties()->lengthInMilliseconds() <= 0)
        return false;
    TakeProperties(file.audioProperties(), d);
    return true;
}

// An APE tag larger than this is taken as broken rather than read into memory.
constexpr long long kMaxApeBytes = 64LL * 1024 * 1024;

QString ApeVersionText(int v) {
    return v >= 2000 ? QStringLiteral("2.0") : QStringLiteral("1.0");
}

// The "id3 " chunk (V2) and the INFO list (the typical set) of a WAV file.
void ReadWavTags(RIFF::WAV::File& f, EngineData& d) {
    d.hasWav = f.hasInfoTag() && !f.InfoTag()->isEmpty();
    if (d.hasWav)
        ReadInfo(*f.InfoTag(), d);
    d.hasV2 = f.hasID3v2Tag();
    if (d.hasV2) {
        ReadId3v2(*f.ID3v2Tag(), d);
        d.v2Version = QStringLiteral("2.%1").arg(f.ID3v2Tag()->header()->majorVersion());
    }
}

} // namespace

char OggCodec(IOStream* stream, long long start) {
    const QByteArray page = ReadAt(stream, start, 128);
    if (page.contains("\x01vorbis"))
        return 'v';
    if (page.contains("OpusHead"))
        return 'o';
    if (page.contains("\x7F"
                      "FLAC"))
        return 'f';
    if (page.contains("Speex   "))
        return 's';
    return 0;
}

bool ReadFormat(IOStream* stream, EngineData& d) {
    const bool outer = TypeHasOuterTags(d.type);
    RangeStream range(stream, outer ? d.layout.headEnd : 0, outer ? d.layout.bodyEnd : d.size);
    // TagLib's readers start reading where the stream stands.
    stream->seek(0);
    switch (d.type) {
    case kTypeMp3: {
        MPEG::File f(&range, ID3v2::FrameFactory::instance(), true, kStyle);
        return Props(f, d);
    }
    case kTypeWma: {
        ASF::File f(stream, true, kStyle);
        if (!Props(f, d))
            return false;
        if (f.tag())
            ReadAsf(*f.tag(), d);
        return true;
    }
    case kTypeMonkey: {
        APE::File f(&range, true, kStyle);
        return Props(f, d);
    }
    case kTypeFlac: {
        FLAC::File f(&range, ID3v2::FrameFactory::instance(), true, kStyle);
        if (!Props(f, d))
            return false;
        if (f.xiphComment())
            ReadXiph(*f.xiphComment(), d, TagSet::Flac);
        return true;
    }
    case kTypeWav: {
        UseInfoTextCodec();
        RIFF::WAV::File f(stream, true, kStyle);
        if (!Props(f, d))
            return false;
        ReadWavTags(f, d);
        return true;
    }
    case kTypeOgg: {
        switch (OggCodec(&range, 0)) {
        case 'v': {
            Ogg::Vorbis::File f(&range, true, kStyle);
            if (!Props(f, d))
                return false;
            if (f.tag())
                ReadXiph(*f.tag(), d, TagSet::Ogg);
            return true;
        }
        case 'o': {
            Ogg::Opus::File f(&range, true, kStyle);
            if (!Props(f, d))
                return false;
            if (f.tag())
                ReadXiph(*f.tag(), d, TagSet::Ogg);
            return true;
        }
        case 'f': {
            Ogg::FLAC::File f(&range, true, kStyle);
            if (!Props(f, d))
                return false;
            if (f.tag())
                ReadXiph(*f.tag(), d, TagSet::Ogg);
            return true;
        }
        case 's': {
            Ogg::Speex::File f(&range, true, kStyle);
            if (!Props(f, d))
                return false;
            if (f.tag())
                ReadXiph(*f.tag(), d, TagSet::Ogg);
            return true;
        }
        default:
            return false;
        }
    }
    case kTypeMpc: {
        // TagLib reads the 56 bytes of a version 7 header without checking their presence.
        if (range.length() < 56)
            return false;
        MPC::File f(&range, true, kStyle);
        return Props(f, d);
    }
    case kTypeAac: {
        const AdtsInfo info = AnalyseAdts(stream, d.layout.headEnd, d.layout.bodyEnd);
        if (!info.valid)
            return false;
        d.duration = static_cast<float>(info.seconds);
        d.bitrate = info.bitrateKbps;
        d.frequency = info.sampleRate;
        return true;
    }
    case kTypeMp4: {
        MP4::File f(stream, true, kStyle);
        if (!Props(f, d))
            return false;
        if (f.tag()) {
            d.containerTrack = static_cast<int>(f.tag()->track());
            ReadMp4(*f.tag(), d);
        }
        d.hasMp4 = f.hasMP4Tag() && f.tag() && !f.tag()->isEmpty();
        return true;
    }
    default:
        return false;
    }
}

namespace {

void FillV1(const Id3v1Data& t, EngineData& d) {
    d.F(TagField::V1Title) = t.title;
    d.F(TagField::V1Artist) = t.artist;
    d.F(TagField::V1Album) = t.album;
    d.F(TagField::V1Year) = t.year;
    d.F(TagField::V1Comment) = t.comment;
    d.F(TagField::V1Track) = t.track;
    d.v1Genre = t.genre;
    d.F(TagField::V1Genre) = t.genre < 255 ? FromTL(ID3v1::genre(t.genre)) : QString();
}

void FillApe(const ApeData& a, EngineData& d) {
    d.F(TagField::ApeGenre) = a.Text("Genre");
    d.F(TagField::ApeYear) = a.Text("Year");
    d.F(TagField::ApeTrack) = a.Text("Track");
    d.F(TagField::ApeArtist) = a.Text("Artist");
    d.F(TagField::ApeTitle) = a.Text("Title");
    d.F(TagField::ApeAlbum) = a.Text("Album");
    d.F(TagField::ApeComment) = a.Text("Comment");
    d.F(TagField::ApeCopyright) = a.Text("Copyright");
}

} // namespace

void ReadOuterTags(IOStream* stream, EngineData& d) {
    if (!TypeHasOuterTags(d.type))
        return;
    if (d.layout.headEnd > 0 && ReadsSet(d.type, TagSet::V2)) {
        StreamFile file(stream);
        const ID3v2::Tag tag(&file, 0, ID3v2::FrameFactory::instance());
        if (tag.header()->majorVersion() >= 2) {
            ReadId3v2(tag, d);
            d.hasV2 = true;
            d.v2Version = QStringLiteral("2.%1").arg(
                d.layout.headVersion ? d.layout.headVersion : static_cast<int>(tag.header()->majorVersion()));
        }
    }
    for (const TrailerBlock& b : d.layout.trailer) {
        if (b.kind == BlockKind::Id3v1 && ReadsSet(d.type, TagSet::V1)) {
            Id3v1Data t;
            if (ParseId3v1(ReadAt(stream, b.offset, b.length), &t)) {
                FillV1(t, d);
                d.hasV1 = true;
                d.v1Version = t.v11 ? QStringLiteral("1.1") : QStringLiteral("1.0");
            }
        } else if (b.kind == BlockKind::Ape && ReadsSet(d.type, TagSet::Ape) && b.length <= kMaxApeBytes) {
            ApeData a;
            if (ParseApe(ReadAt(stream, b.offset, b.length), &a)) {
                FillApe(a, d);
                d.hasApe = true;
                d.apeVersion = ApeVersionText(a.version);
            }
        } else if ((b.kind == BlockKind::Lyrics3v2 || b.kind == BlockKind::Lyrics3v1) &&
                   ReadsSet(d.type, TagSet::Lyrics)) {
            Lyrics3Data l;
            if (ParseLyrics3(ReadAt(stream, b.offset, b.length), &l)) {
                d.F(TagField::LyricsGenre) = l.Text("GRE");
                d.F(TagField::LyricsArtist) = l.Text("EAR");
                d.F(TagField::LyricsTitle) = l.Text("ETT");
                d.F(TagField::LyricsAlbum) = l.Text("EAL");
                d.F(TagField::LyricsInfo) = l.Text("INF");
                d.F(TagField::LyricsAuthor) = l.Text("AUT");
                d.F(TagField::LyricsLink) = l.Text("IMG");
                d.F(TagField::LyricsLyric) = l.Text("LYR");
                d.F(TagField::LyricsExtra) = l.Text("EXT");
                d.hasLyrics = true;
                d.lyricsVersion = l.version == 1 ? QStringLiteral("1.00") : QStringLiteral("2.00");
            }
        }
    }
}

void ReadPresence(IOStream* stream, EngineData& d) {
    d.hasV1 = d.hasV2 = d.hasApe = d.hasLyrics = d.hasMp4 = d.hasWav = false;
    d.v1Version.clear();
    d.v2Version.clear();
    d.apeVersion.clear();
    d.lyricsVersion.clear();
    if (d.type == kTypeWav || d.type == kTypeMp4) {
        // These carry their tags inside the container: ask the format reader.
        stream->seek(0);
        if (d.type == kTypeMp4) {
            MP4::File f(stream, false);
            d.hasMp4 = f.isValid() && f.hasMP4Tag() && f.tag() && !f.tag()->isEmpty();
        } else {
            UseInfoTextCodec();
            RIFF::WAV::File f(stream, false);
            const bool hasV2 = f.isValid() && f.hasID3v2Tag();
            d.hasWav = f.isValid() && f.hasInfoTag() && !f.InfoTag()->isEmpty();
            d.hasV2 = hasV2;
            if (hasV2)
                d.v2Version = QStringLiteral("2.%1").arg(f.ID3v2Tag()->header()->majorVersion());
        }
        return;
    }
    if (!TypeHasOuterTags(d.type))
        return;
    if (d.layout.headEnd > 0 && ReadsSet(d.type, TagSet::V2)) {
        d.hasV2 = true;
        d.v2Version = QStringLiteral("2.%1").arg(d.layout.headVersion);
    }
    for (const TrailerBlock& b : d.layout.trailer) {
        if (b.kind == BlockKind::Id3v1 && ReadsSet(d.type, TagSet::V1)) {
            const QByteArray bytes = ReadAt(stream, b.offset, b.length);
            d.hasV1 = true;
            d.v1Version = bytes.size() == 128 && bytes.at(125) == '\0' && bytes.at(126) != '\0'
                              ? QStringLiteral("1.1")
                              : QStringLiteral("1.0");
        } else if (b.kind == BlockKind::Ape && ReadsSet(d.type, TagSet::Ape)) {
            const QByteArray footer = ReadAt(stream, b.offset + b.length - 32, 32);
            const int v = footer.size() == 32 ? static_cast<unsigned char>(footer.at(8)) |
                                                    (static_cast<unsigned char>(footer.at(9)) << 8)
                                              : 2000;
            d.hasApe = true;
            d.apeVersion = ApeVersionText(v);
        } else if ((b.kind == BlockKind::Lyrics3v2 || b.kind == BlockKind::Lyrics3v1) &&
                   ReadsSet(d.type, TagSet::Lyrics)) {
            d.hasLyrics = true;
            d.lyricsVersion =
                b.kind == BlockKind::Lyrics3v1 ? QStringLiteral("1.00") : QStringLiteral("2.00");
        }
    }
}

} // namespace qlt_tag
