#pragma once
// The text fields of the tag sets that TagEngine holds, one enumerator each, named like
// the engine's getters (TagField::V2Title <-> TagEngine::V2Title()). The name table lets
// the command-line tool and the cell editor address a field by its name or number.

#include <QString>

enum class TagField {
    V1Title,
    V1Artist,
    V1Album,
    V1Year,
    V1Comment,
    V1Track,
    V1Genre,
    V2Genre,
    V2Year,
    V2Track,
    V2Artist,
    V2Title,
    V2Album,
    V2Composer,
    V2Conductor,
    V2Orchestra,
    V2OrigArtist,
    V2Copyright,
    V2EncodedBy,
    V2PublisherUrl,
    V2AudFileUrl,
    ApeGenre,
    ApeYear,
    ApeTrack,
    ApeArtist,
    ApeTitle,
    ApeAlbum,
    ApeComment,
    ApeCopyright,
    LyricsGenre,
    LyricsArtist,
    LyricsTitle,
    LyricsAlbum,
    LyricsInfo,
    LyricsAuthor,
    LyricsLink,
    LyricsLyric,
    LyricsExtra,
    WmaGenre,
    WmaYear,
    WmaTrack,
    WmaArtist,
    WmaTitle,
    WmaAlbum,
    WmaComment,
    WmaExtra1,
    WmaExtra2,
    WmaExtra3,
    WmaExtra4,
    WmaExtra5,
    WmaExtra6,
    WmaExtra7,
    WmaExtra8,
    WmaRating,
    WmaMood,
    FlacGenre,
    FlacYear,
    FlacTrack,
    FlacArtist,
    FlacTitle,
    FlacAlbum,
    FlacComment,
    FlacDescription,
    FlacPerformer,
    FlacVendor,
    FlacCopyright,
    FlacContact,
    FlacLicense,
    FlacLocation,
    OggGenre,
    OggYear,
    OggTrack,
    OggArtist,
    OggTitle,
    OggAlbum,
    OggComment,
    OggDescription,
    OggPerformer,
    OggVendor,
    OggCopyright,
    OggContact,
    OggLicense,
    OggLocation,
    Count
};

// The tag sets. Values are bits so that a caller can name several at once.
enum class TagSet { None = 0, V1 = 1, V2 = 2, Ape = 4, Lyrics = 8, Wma = 16, Flac = 32, Ogg = 64 };

constexpr int kTagFieldCount = static_cast<int>(TagField::Count);

QString TagFieldName(TagField field);                     // "V2Title"
TagField TagFieldFromName(const QString& name, bool* ok); // case-insensitive
TagSet TagFieldSet(TagField field);
QString TagSetName(TagSet set); // "V1", "V2", "Ape", "Lyrics", "Wma", "Flac", "Ogg"
