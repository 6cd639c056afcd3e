#include "tag/TagFields.h"

#include <array>

namespace {

constexpr std::array<const char*, kTagFieldCount> kNames = {
    "V1Title",      "V1Artist",       "V1Album",         "V1Year",        "V1Comment",      "V1Track",
    "V1Genre",      "V2Genre",        "V2Year",          "V2Track",       "V2Artist",       "V2Title",
    "V2Album",      "V2Composer",     "V2Conductor",     "V2Orchestra",   "V2OrigArtist",   "V2Copyright",
    "V2EncodedBy",  "V2PublisherUrl", "V2AudFileUrl",    "ApeGenre",      "ApeYear",        "ApeTrack",
    "ApeArtist",    "ApeTitle",       "ApeAlbum",        "ApeComment",    "ApeCopyright",   "LyricsGenre",
    "LyricsArtist", "LyricsTitle",    "LyricsAlbum",     "LyricsInfo",    "LyricsAuthor",   "LyricsLink",
    "LyricsLyric",  "LyricsExtra",    "WmaGenre",        "WmaYear",       "WmaTrack",       "WmaArtist",
    "WmaTitle",     "WmaAlbum",       "WmaComment",      "WmaExtra1",     "WmaExtra2",      "WmaExtra3",
    "WmaExtra4",    "WmaExtra5",      "WmaExtra6",       "WmaExtra7",     "WmaExtra8",      "WmaRating",
    "WmaMood",      "FlacGenre",      "FlacYear",        "FlacTrack",     "FlacArtist",     "FlacTitle",
    "FlacAlbum",    "FlacComment",    "FlacDescription", "FlacPerformer", "FlacVendor",     "FlacCopyright",
    "FlacContact",  "FlacLicense",    "FlacLocation",    "OggGenre",      "OggYear",        "OggTrack",
    "OggArtist",    "OggTitle",       "OggAlbum",        "OggComment",    "OggDescription", "OggPerformer",
    "OggVendor",    "OggCopyright",   "OggContact",      "OggLicense",    "OggLocation"};

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
    return TagSet::Ogg;
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
    case TagSet::None:
        break;
    }
    return QString();
}
