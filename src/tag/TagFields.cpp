#include "tag/TagFields.h"

#include <array>

namespace {

constexpr std::array<const char*, kTagFieldCount> kNames = {
    "V1Title",        "V1Artist",       "V1Album",         "V1Year",          "V1Comment",
    "V1Track",        "V1Genre",        "V2Genre",         "V2Year",          "V2Track",
    "V2Artist",       "V2Title",        "V2Album",         "V2Composer",      "V2Conductor",
    "V2Orchestra",    "V2OrigArtist",   "V2Copyright",     "V2EncodedBy",     "V2PublisherUrl",
    "V2AudFileUrl",   "ApeGenre",       "ApeYear",         "ApeTrack",        "ApeArtist",
    "ApeTitle",       "ApeAlbum",       "ApeComment",      "ApeCopyright",    "LyricsGenre",
    "LyricsArtist",   "LyricsTitle",    "LyricsAlbum",     "LyricsInfo",      "LyricsAuthor",
    "LyricsLink",     "LyricsLyric",    "LyricsExtra",     "WmaGenre",        "WmaYear",
    "WmaTrack",       "WmaArtist",      "WmaTitle",        "WmaAlbum",        "WmaComment",
    "WmaExtra1",      "WmaExtra2",      "WmaExtra3",       "WmaExtra4",       "WmaExtra5",
    "WmaExtra6",      "WmaExtra7",      "WmaExtra8",       "WmaRating",       "WmaMood",
    "FlacGenre",      "FlacYear",       "FlacTrack",       "FlacArtist",      "FlacTitle",
    "FlacAlbum",      "FlacComment",    "FlacDescription", "FlacPerformer",   "FlacVendor",
    "FlacCopyright",  "FlacContact",    "FlacLicense",     "FlacLocation",    "OggGenre",
    "OggYear",        "OggTrack",       "OggArtist",       "OggTitle",        "OggAlbum",
    "OggComment",     "OggDescription", "OggPerformer",    "OggVendor",       "OggCopyright",
    "OggContact",     "OggLicense",     "OggLocation",     "Mp4Genre",        "Mp4Year",
    "Mp4Track",       "Mp4Artist",      "Mp4Title",        "Mp4Album",        "Mp4Comment",
    "Mp4Description", "Mp4AlbumArtist", "Mp4Encoder",      "Mp4Copyright",    "Mp4Composer",
    "Mp4Grouping",    "Mp4Disc",        "WavGenre",        "WavYear",         "WavTrack",
    "WavArtist",      "WavTitle",       "WavAlbum",        "WavComment",      "WavSubject",
    "WavEngineer",    "WavSoftware",    "WavCopyright",    "WavCommissioned", "WavKeywords",
    "WavLocation"};

} // namespace

QString TagFieldName(TagField field) {
    const int i = static_cast<int>(field);
    if (i < 0 || i >= kTagFieldCount)
        return QString();
    return QString::fromLatin1(kNames[static_cast<size_t>(i)]);
}

TagField TagFieldFromName(const QString& name, bool* ok) {
    for (int i = 0; i < kTagFieldCount; ++i) {
        if (name.compare(QLatin1String(kNames[static_cast<size_t>(i)]), Qt::CaseInsensitive) == 0) {
            if (ok)
                *ok = true;
            return static_cast<TagField>(i);
        }
    }
    if (ok)
        *ok = false;
    return TagField::Count;
}

TagSet TagFieldSet(TagField field) {
    const int i = static_cast<int>(field);
    if (i < 0 || i >= kTagFieldCount)
        return TagSet::None;
    if (field <= TagField::V1Genre)
        return TagSet::V1;
    if (field <= TagField::V2AudFileUrl)
        return TagSet::V2;
    if (field <= TagField::ApeCopyright)
        return TagSet::Ape;
    if (field <= TagField::LyricsExtra)
        return TagSet::Lyrics;
    if (field <= TagField::WmaMood)
        return TagSet::Wma;
    if (field <= TagField::FlacLocation)
        return TagSet::Flac;
    if (field <= TagField::OggLocation)
        return TagSet::Ogg;
    if (field <= TagField::Mp4Disc)
        return TagSet::Mp4;
    return TagSet::Wav;
}

QString TagSetName(TagSet set) {
    switch (set) {
    case TagSet::V1:
        return QStringLiteral("V1");
    case TagSet::V2:
        return QStringLiteral("V2");
    case TagSet::Ape:
        return QStringLiteral("Ape");
    case TagSet::Lyrics:
        return QStringLiteral("Lyrics");
    case TagSet::Wma:
        return QStringLiteral("Wma");
    case TagSet::Flac:
        return QStringLiteral("Flac");
    case TagSet::Ogg:
        return QStringLiteral("Ogg");
    case TagSet::Mp4:
        return QStringLiteral("Mp4");
    case TagSet::Wav:
        return QStringLiteral("Wav");
    case TagSet::None:
        break;
    }
    return QString();
}

TagSet TypicalSetOfType(int type) {
    switch (type) {
    case 2:
        return TagSet::Wma;
    case 4:
        return TagSet::Flac;
    case 5:
        return TagSet::Wav;
    case 6:
        return TagSet::Ogg;
    case 9:
        return TagSet::Mp4;
    default:
        return TagSet::None;
    }
}

const TagField* TypicalFields(TagSet set) {
    using F = TagField;
    static constexpr F kWma[kTypicalFieldCount] = {
        F::WmaGenre,  F::WmaYear,   F::WmaTrack,  F::WmaArtist, F::WmaTitle,  F::WmaAlbum,  F::WmaComment,
        F::WmaExtra1, F::WmaExtra2, F::WmaExtra5, F::WmaExtra7, F::WmaExtra4, F::WmaExtra6, F::WmaExtra3};
    // FLAC, Ogg, MP4 and WAV keep their fields in column order, so the rest follow from the first.
    static constexpr auto kRun = [](F first) {
        std::array<F, kTypicalFieldCount> a{};
        for (int i = 0; i < kTypicalFieldCount; ++i)
            a[static_cast<size_t>(i)] = static_cast<F>(static_cast<int>(first) + i);
        return a;
    };
    static constexpr auto kFlac = kRun(F::FlacGenre);
    static constexpr auto kOgg = kRun(F::OggGenre);
    static constexpr auto kMp4 = kRun(F::Mp4Genre);
    static constexpr auto kWav = kRun(F::WavGenre);
    switch (set) {
    case TagSet::Wma:
        return kWma;
    case TagSet::Flac:
        return kFlac.data();
    case TagSet::Ogg:
        return kOgg.data();
    case TagSet::Mp4:
        return kMp4.data();
    case TagSet::Wav:
        return kWav.data();
    default:
        return nullptr;
    }
}
