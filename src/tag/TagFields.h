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
    Mp4Genre,
    Mp4Year,
    Mp4Track,
    Mp4Artist,
    Mp4Title,
    Mp4Album,
    Mp4Comment,
    Mp4Description,
    Mp4AlbumArtist,
    Mp4Encoder,
    Mp4Copyright,
    Mp4Composer,
    Mp4Grouping,
    Mp4Disc,
    WavGenre,
    WavYear,
    WavTrack,
    WavArtist,
    WavTitle,
    WavAlbum,
    WavComment,
    WavSubject,
    WavEngineer,
    WavSoftware,
    WavCopyright,
    WavCommissioned,
    WavKeywords,
    WavLocation,
    Count
};

// The tag sets. Values are bits so that a caller can name several at once.
enum class TagSet {
    None = 0,
    V1 = 1,
    V2 = 2,
    Ape = 4,
    Lyrics = 8,
    Wma = 16,
    Flac = 32,
    Ogg = 64,
    Mp4 = 128, // the iTunes-style item list of MP4 files
    Wav = 256  // the RIFF INFO list of WAV files
};

constexpr int kTagFieldCount = static_cast<int>(TagField::Count);

QString TagFieldName(TagField field);                     // "V2Title"
TagField TagFieldFromName(const QString& name, bool* ok); // case-insensitive
TagSet TagFieldSet(TagField field);
QString TagSetName(TagSet set); // "V1", "V2", "Ape", "Lyrics", "Wma", "Flac", "Ogg", "Mp4", "Wav"

// The typical set of each file type (Wma, Flac, Ogg, Mp4 or Wav; None for the rest) and its
// fourteen fields in the order of the data list's typical columns: genre, year, track,
// artist, title, album, comment, then the seven further fields of the set. The order is
// that of the set itself; the data list crosses year and genre of WMA on its own.
TagSet TypicalSetOfType(int type);
const TagField* TypicalFields(TagSet set); // 14 fields, nullptr for a set that is not typical
constexpr int kTypicalFieldCount = 14;
