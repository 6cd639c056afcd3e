#pragma once
// TagEngine: the one road into every audio file.
//
// OpenFile(path) tells the file type by content and loads the audio data and every tag
// set of that file into memory. Field getters read that copy; field setters only stage a
// change; a Save...(path) writes one set and a Remove...(path) strips one set, each
// through a temporary copy in the same folder that replaces the file only when it is
// complete. Failures never throw: a 0 result, and LastError() tells why.
//
// File types (OpenFile's result): 0 nothing readable, 1 MP3, 2 WMA, 3 MONKEY, 4 FLAC,
// 5 WAV, 6 OGG, 7 MPP, 8 AAC, 9 MP4.
//
// Which set lives on which type:
//   set      read on          written on        stripped on
//   V1       1 4 6 7          1 4 6 7           1 6 7
//   V2       1 3 4 5 6 7 8    1 3 4 5 6 7 8     1 3 4 5 6 7 8
//   Ape      1 4 6 7          1 4 6 7           1 7
//   Lyrics   1 7              1 7               1 7
//   Wma      2                2                 -
//   Flac     4                4                 -
//   Ogg      6                6                 6
//   Mp4      9                9                 -
//   Wav      5                5                 -
// On WAV files V2 is the "id3 " chunk of the RIFF file (read, written and stripped there).
// A set that a type does not carry reads empty, its Has... is false, and its Save or
// Remove returns 0 without touching the file. Removing a set that the type allows but the
// file does not hold succeeds and changes nothing.
//
// Multi-valued members of V2 (comments, lyric texts, user text frames, pictures) use
// 1-based indices. Index count + 1 appends; a setter with all texts empty removes the
// entry. The field map to the byte formats is written down in docs/tag-fields.md.

#include "tag/TagFields.h"

#include <QString>
#include <QtGlobal>
#include <memory>

namespace qlt_tag {
struct EngineData;
}

class TagEngine {
public:
    TagEngine();
    ~TagEngine();
    TagEngine(const TagEngine&) = delete;
    TagEngine& operator=(const TagEngine&) = delete;

    // The one engine of the program, created on first use.
    static TagEngine& Shared();

    // ---- file -------------------------------------------------------------------------
    // Opens the file, forgets every staged change, returns the file type (0 to 9).
    int OpenFile(const QString& path);
    int FileType() const;      // type of the current file, 0 when none
    QString FilePath() const;  // path given to the last OpenFile
    QString LastError() const; // text of the last failure (reset by OpenFile and each save)

    // ---- audio data ---------------------------------------------------------------------
    float DurationSeconds() const;
    qint64 FileSizeBytes() const;
    // Size and modification time of the file as found by OpenFile before it read a byte;
    // false when it wasn't found.
    bool OpenedFileTimes(qint64& size, qint64& mtimeSec, qint64& mtimeNsec) const;
    int Bitrate() const;              // kbit/s
    int Frequency() const;            // Hz
    QString TrackNumberValue() const; // the file's track as a plain number, "0" for none

    // ---- tag presence -----------------------------------------------------------------
    bool HasV1() const;
    bool HasV2() const;
    bool HasApe() const;
    bool HasLyrics() const;
    QString V1Version() const;     // "1.0", "1.1"; empty without the tag
    QString V2Version() const;     // "2.2", "2.3", "2.4"
    QString ApeVersion() const;    // "1.0", "2.0"
    QString LyricsVersion() const; // "1.00", "2.00"
    bool HasMp4() const;           // an MP4 file with an item list (ilst) holding items
    bool HasWav() const;           // a WAV file with a RIFF INFO list holding fields

    // ---- fields by enumerator (the named getters and setters below use these) ----------
    QString Field(TagField field) const;
    void SetField(TagField field, const QString& value); // staged; empty clears the field

    // ---- V1 -----------------------------------------------------------------------------
    // V1GenreCode is the number of the genre table, 255 for none. Setting the code also
    // sets the text V1Genre; setting V1Genre to a name of the table sets the code.
    int V1GenreCode() const;
    void SetV1GenreCode(int code);

    // ---- V1: ID3v1
    QString V1Title() const { return Field(TagField::V1Title); }
    void SetV1Title(const QString& v) { SetField(TagField::V1Title, v); }
    QString V1Artist() const { return Field(TagField::V1Artist); }
    void SetV1Artist(const QString& v) { SetField(TagField::V1Artist, v); }
    QString V1Album() const { return Field(TagField::V1Album); }
    void SetV1Album(const QString& v) { SetField(TagField::V1Album, v); }
    QString V1Year() const { return Field(TagField::V1Year); }
    void SetV1Year(const QString& v) { SetField(TagField::V1Year, v); }
    QString V1Comment() const { return Field(TagField::V1Comment); }
    void SetV1Comment(const QString& v) { SetField(TagField::V1Comment, v); }
    QString V1Track() const { return Field(TagField::V1Track); }
    void SetV1Track(const QString& v) { SetField(TagField::V1Track, v); }
    QString V1Genre() const { return Field(TagField::V1Genre); }
    void SetV1Genre(const QString& v) { SetField(TagField::V1Genre, v); }
    // ---- V2: ID3v2
    QString V2Genre() const { return Field(TagField::V2Genre); }
    void SetV2Genre(const QString& v) { SetField(TagField::V2Genre, v); }
    QString V2Year() const { return Field(TagField::V2Year); }
    void SetV2Year(const QString& v) { SetField(TagField::V2Year, v); }
    QString V2Track() const { return Field(TagField::V2Track); }
    void SetV2Track(const QString& v) { SetField(TagField::V2Track, v); }
    QString V2Artist() const { return Field(TagField::V2Artist); }
    void SetV2Artist(const QString& v) { SetField(TagField::V2Artist, v); }
    QString V2Title() const { return Field(TagField::V2Title); }
    void SetV2Title(const QString& v) { SetField(TagField::V2Title, v); }
    QString V2Album() const { return Field(TagField::V2Album); }
    void SetV2Album(const QString& v) { SetField(TagField::V2Album, v); }
    QString V2Composer() const { return Field(TagField::V2Composer); }
    void SetV2Composer(const QString& v) { SetField(TagField::V2Composer, v); }
    QString V2Conductor() const { return Field(TagField::V2Conductor); }
    void SetV2Conductor(const QString& v) { SetField(TagField::V2Conductor, v); }
    QString V2Orchestra() const { return Field(TagField::V2Orchestra); }
    void SetV2Orchestra(const QString& v) { SetField(TagField::V2Orchestra, v); }
    QString V2OrigArtist() const { return Field(TagField::V2OrigArtist); }
    void SetV2OrigArtist(const QString& v) { SetField(TagField::V2OrigArtist, v); }
    QString V2Copyright() const { return Field(TagField::V2Copyright); }
    void SetV2Copyright(const QString& v) { SetField(TagField::V2Copyright, v); }
    QString V2EncodedBy() const { return Field(TagField::V2EncodedBy); }
    void SetV2EncodedBy(const QString& v) { SetField(TagField::V2EncodedBy, v); }
    QString V2PublisherUrl() const { return Field(TagField::V2PublisherUrl); }
    void SetV2PublisherUrl(const QString& v) { SetField(TagField::V2PublisherUrl, v); }
    QString V2AudFileUrl() const { return Field(TagField::V2AudFileUrl); }
    void SetV2AudFileUrl(const QString& v) { SetField(TagField::V2AudFileUrl, v); }
    // ---- Ape: APE
    QString ApeGenre() const { return Field(TagField::ApeGenre); }
    void SetApeGenre(const QString& v) { SetField(TagField::ApeGenre, v); }
    QString ApeYear() const { return Field(TagField::ApeYear); }
    void SetApeYear(const QString& v) { SetField(TagField::ApeYear, v); }
    QString ApeTrack() const { return Field(TagField::ApeTrack); }
    void SetApeTrack(const QString& v) { SetField(TagField::ApeTrack, v); }
    QString ApeArtist() const { return Field(TagField::ApeArtist); }
    void SetApeArtist(const QString& v) { SetField(TagField::ApeArtist, v); }
    QString ApeTitle() const { return Field(TagField::ApeTitle); }
    void SetApeTitle(const QString& v) { SetField(TagField::ApeTitle, v); }
    QString ApeAlbum() const { return Field(TagField::ApeAlbum); }
    void SetApeAlbum(const QString& v) { SetField(TagField::ApeAlbum, v); }
    QString ApeComment() const { return Field(TagField::ApeComment); }
    void SetApeComment(const QString& v) { SetField(TagField::ApeComment, v); }
    QString ApeCopyright() const { return Field(TagField::ApeCopyright); }
    void SetApeCopyright(const QString& v) { SetField(TagField::ApeCopyright, v); }
    // ---- Lyrics: Lyrics3
    QString LyricsGenre() const { return Field(TagField::LyricsGenre); }
    void SetLyricsGenre(const QString& v) { SetField(TagField::LyricsGenre, v); }
    QString LyricsArtist() const { return Field(TagField::LyricsArtist); }
    void SetLyricsArtist(const QString& v) { SetField(TagField::LyricsArtist, v); }
    QString LyricsTitle() const { return Field(TagField::LyricsTitle); }
    void SetLyricsTitle(const QString& v) { SetField(TagField::LyricsTitle, v); }
    QString LyricsAlbum() const { return Field(TagField::LyricsAlbum); }
    void SetLyricsAlbum(const QString& v) { SetField(TagField::LyricsAlbum, v); }
    QString LyricsInfo() const { return Field(TagField::LyricsInfo); }
    void SetLyricsInfo(const QString& v) { SetField(TagField::LyricsInfo, v); }
    QString LyricsAuthor() const { return Field(TagField::LyricsAuthor); }
    void SetLyricsAuthor(const QString& v) { SetField(TagField::LyricsAuthor, v); }
    QString LyricsLink() const { return Field(TagField::LyricsLink); }
    void SetLyricsLink(const QString& v) { SetField(TagField::LyricsLink, v); }
    QString LyricsLyric() const { return Field(TagField::LyricsLyric); }
    void SetLyricsLyric(const QString& v) { SetField(TagField::LyricsLyric, v); }
    QString LyricsExtra() const { return Field(TagField::LyricsExtra); }
    void SetLyricsExtra(const QString& v) { SetField(TagField::LyricsExtra, v); }
    // ---- Wma: ASF
    QString WmaGenre() const { return Field(TagField::WmaGenre); }
    void SetWmaGenre(const QString& v) { SetField(TagField::WmaGenre, v); }
    QString WmaYear() const { return Field(TagField::WmaYear); }
    void SetWmaYear(const QString& v) { SetField(TagField::WmaYear, v); }
    QString WmaTrack() const { return Field(TagField::WmaTrack); }
    void SetWmaTrack(const QString& v) { SetField(TagField::WmaTrack, v); }
    QString WmaArtist() const { return Field(TagField::WmaArtist); }
    void SetWmaArtist(const QString& v) { SetField(TagField::WmaArtist, v); }
    QString WmaTitle() const { return Field(TagField::WmaTitle); }
    void SetWmaTitle(const QString& v) { SetField(TagField::WmaTitle, v); }
    QString WmaAlbum() const { return Field(TagField::WmaAlbum); }
    void SetWmaAlbum(const QString& v) { SetField(TagField::WmaAlbum, v); }
    QString WmaComment() const { return Field(TagField::WmaComment); }
    void SetWmaComment(const QString& v) { SetField(TagField::WmaComment, v); }
    QString WmaExtra1() const { return Field(TagField::WmaExtra1); }
    void SetWmaExtra1(const QString& v) { SetField(TagField::WmaExtra1, v); }
    QString WmaExtra2() const { return Field(TagField::WmaExtra2); }
    void SetWmaExtra2(const QString& v) { SetField(TagField::WmaExtra2, v); }
    QString WmaExtra3() const { return Field(TagField::WmaExtra3); }
    void SetWmaExtra3(const QString& v) { SetField(TagField::WmaExtra3, v); }
    QString WmaExtra4() const { return Field(TagField::WmaExtra4); }
    void SetWmaExtra4(const QString& v) { SetField(TagField::WmaExtra4, v); }
    QString WmaExtra5() const { return Field(TagField::WmaExtra5); }
    void SetWmaExtra5(const QString& v) { SetField(TagField::WmaExtra5, v); }
    QString WmaExtra6() const { return Field(TagField::WmaExtra6); }
    void SetWmaExtra6(const QString& v) { SetField(TagField::WmaExtra6, v); }
    QString WmaExtra7() const { return Field(TagField::WmaExtra7); }
    void SetWmaExtra7(const QString& v) { SetField(TagField::WmaExtra7, v); }
    QString WmaExtra8() const { return Field(TagField::WmaExtra8); }
    void SetWmaExtra8(const QString& v) { SetField(TagField::WmaExtra8, v); }
    QString WmaRating() const { return Field(TagField::WmaRating); }
    void SetWmaRating(const QString& v) { SetField(TagField::WmaRating, v); }
    QString WmaMood() const { return Field(TagField::WmaMood); }
    void SetWmaMood(const QString& v) { SetField(TagField::WmaMood, v); }
    // ---- Flac: Vorbis comment of FLAC
    QString FlacGenre() const { return Field(TagField::FlacGenre); }
    void SetFlacGenre(const QString& v) { SetField(TagField::FlacGenre, v); }
    QString FlacYear() const { return Field(TagField::FlacYear); }
    void SetFlacYear(const QString& v) { SetField(TagField::FlacYear, v); }
    QString FlacTrack() const { return Field(TagField::FlacTrack); }
    void SetFlacTrack(const QString& v) { SetField(TagField::FlacTrack, v); }
    QString FlacArtist() const { return Field(TagField::FlacArtist); }
    void SetFlacArtist(const QString& v) { SetField(TagField::FlacArtist, v); }
    QString FlacTitle() const { return Field(TagField::FlacTitle); }
    void SetFlacTitle(const QString& v) { SetField(TagField::FlacTitle, v); }
    QString FlacAlbum() const { return Field(TagField::FlacAlbum); }
    void SetFlacAlbum(const QString& v) { SetField(TagField::FlacAlbum, v); }
    QString FlacComment() const { return Field(TagField::FlacComment); }
    void SetFlacComment(const QString& v) { SetField(TagField::FlacComment, v); }
    QString FlacDescription() const { return Field(TagField::FlacDescription); }
    void SetFlacDescription(const QString& v) { SetField(TagField::FlacDescription, v); }
    QString FlacPerformer() const { return Field(TagField::FlacPerformer); }
    void SetFlacPerformer(const QString& v) { SetField(TagField::FlacPerformer, v); }
    QString FlacVendor() const { return Field(TagField::FlacVendor); }
    void SetFlacVendor(const QString& v) { SetField(TagField::FlacVendor, v); }
    QString FlacCopyright() const { return Field(TagField::FlacCopyright); }
    void SetFlacCopyright(const QString& v) { SetField(TagField::FlacCopyright, v); }
    QString FlacContact() const { return Field(TagField::FlacContact); }
    void SetFlacContact(const QString& v) { SetField(TagField::FlacContact, v); }
    QString FlacLicense() const { return Field(TagField::FlacLicense); }
    void SetFlacLicense(const QString& v) { SetField(TagField::FlacLicense, v); }
    QString FlacLocation() const { return Field(TagField::FlacLocation); }
    void SetFlacLocation(const QString& v) { SetField(TagField::FlacLocation, v); }
    // ---- Ogg: Vorbis comment of Ogg
    QString OggGenre() const { return Field(TagField::OggGenre); }
    void SetOggGenre(const QString& v) { SetField(TagField::OggGenre, v); }
    QString OggYear() const { return Field(TagField::OggYear); }
    void SetOggYear(const QString& v) { SetField(TagField::OggYear, v); }
    QString OggTrack() const { return Field(TagField::OggTrack); }
    void SetOggTrack(const QString& v) { SetField(TagField::OggTrack, v); }
    QString OggArtist() const { return Field(TagField::OggArtist); }
    void SetOggArtist(const QString& v) { SetField(TagField::OggArtist, v); }
    QString OggTitle() const { return Field(TagField::OggTitle); }
    void SetOggTitle(const QString& v) { SetField(TagField::OggTitle, v); }
    QString OggAlbum() const { return Field(TagField::OggAlbum); }
    void SetOggAlbum(const QString& v) { SetField(TagField::OggAlbum, v); }
    QString OggComment() const { return Field(TagField::OggComment); }
    void SetOggComment(const QString& v) { SetField(TagField::OggComment, v); }
    QString OggDescription() const { return Field(TagField::OggDescription); }
    void SetOggDescription(const QString& v) { SetField(TagField::OggDescription, v); }
    QString OggPerformer() const { return Field(TagField::OggPerformer); }
    void SetOggPerformer(const QString& v) { SetField(TagField::OggPerformer, v); }
    QString OggVendor() const { return Field(TagField::OggVendor); }
    void SetOggVendor(const QString& v) { SetField(TagField::OggVendor, v); }
    QString OggCopyright() const { return Field(TagField::OggCopyright); }
    void SetOggCopyright(const QString& v) { SetField(TagField::OggCopyright, v); }
    QString OggContact() const { return Field(TagField::OggContact); }
    void SetOggContact(const QString& v) { SetField(TagField::OggContact, v); }
    QString OggLicense() const { return Field(TagField::OggLicense); }
    void SetOggLicense(const QString& v) { SetField(TagField::OggLicense, v); }
    QString OggLocation() const { return Field(TagField::OggLocation); }
    void SetOggLocation(const QString& v) { SetField(TagField::OggLocation, v); }
    // ---- Mp4: iTunes-style items of MP4
    QString Mp4Genre() const { return Field(TagField::Mp4Genre); }
    void SetMp4Genre(const QString& v) { SetField(TagField::Mp4Genre, v); }
    QString Mp4Year() const { return Field(TagField::Mp4Year); }
    void SetMp4Year(const QString& v) { SetField(TagField::Mp4Year, v); }
    QString Mp4Track() const { return Field(TagField::Mp4Track); }
    void SetMp4Track(const QString& v) { SetField(TagField::Mp4Track, v); }
    QString Mp4Artist() const { return Field(TagField::Mp4Artist); }
    void SetMp4Artist(const QString& v) { SetField(TagField::Mp4Artist, v); }
    QString Mp4Title() const { return Field(TagField::Mp4Title); }
    void SetMp4Title(const QString& v) { SetField(TagField::Mp4Title, v); }
    QString Mp4Album() const { return Field(TagField::Mp4Album); }
    void SetMp4Album(const QString& v) { SetField(TagField::Mp4Album, v); }
    QString Mp4Comment() const { return Field(TagField::Mp4Comment); }
    void SetMp4Comment(const QString& v) { SetField(TagField::Mp4Comment, v); }
    QString Mp4Description() const { return Field(TagField::Mp4Description); }
    void SetMp4Description(const QString& v) { SetField(TagField::Mp4Description, v); }
    QString Mp4AlbumArtist() const { return Field(TagField::Mp4AlbumArtist); }
    void SetMp4AlbumArtist(const QString& v) { SetField(TagField::Mp4AlbumArtist, v); }
    QString Mp4Encoder() const { return Field(TagField::Mp4Encoder); }
    void SetMp4Encoder(const QString& v) { SetField(TagField::Mp4Encoder, v); }
    QString Mp4Copyright() const { return Field(TagField::Mp4Copyright); }
    void SetMp4Copyright(const QString& v) { SetField(TagField::Mp4Copyright, v); }
    QString Mp4Composer() const { return Field(TagField::Mp4Composer); }
    void SetMp4Composer(const QString& v) { SetField(TagField::Mp4Composer, v); }
    QString Mp4Grouping() const { return Field(TagField::Mp4Grouping); }
    void SetMp4Grouping(const QString& v) { SetField(TagField::Mp4Grouping, v); }
    QString Mp4Disc() const { return Field(TagField::Mp4Disc); }
    void SetMp4Disc(const QString& v) { SetField(TagField::Mp4Disc, v); }
    // ---- Wav: RIFF INFO of WAV
    QString WavGenre() const { return Field(TagField::WavGenre); }
    void SetWavGenre(const QString& v) { SetField(TagField::WavGenre, v); }
    QString WavYear() const { return Field(TagField::WavYear); }
    void SetWavYear(const QString& v) { SetField(TagField::WavYear, v); }
    QString WavTrack() const { return Field(TagField::WavTrack); }
    void SetWavTrack(const QString& v) { SetField(TagField::WavTrack, v); }
    QString WavArtist() const { return Field(TagField::WavArtist); }
    void SetWavArtist(const QString& v) { SetField(TagField::WavArtist, v); }
    QString WavTitle() const { return Field(TagField::WavTitle); }
    void SetWavTitle(const QString& v) { SetField(TagField::WavTitle, v); }
    QString WavAlbum() const { return Field(TagField::WavAlbum); }
    void SetWavAlbum(const QString& v) { SetField(TagField::WavAlbum, v); }
    QString WavComment() const { return Field(TagField::WavComment); }
    void SetWavComment(const QString& v) { SetField(TagField::WavComment, v); }
    QString WavSubject() const { return Field(TagField::WavSubject); }
    void SetWavSubject(const QString& v) { SetField(TagField::WavSubject, v); }
    QString WavEngineer() const { return Field(TagField::WavEngineer); }
    void SetWavEngineer(const QString& v) { SetField(TagField::WavEngineer, v); }
    QString WavSoftware() const { return Field(TagField::WavSoftware); }
    void SetWavSoftware(const QString& v) { SetField(TagField::WavSoftware, v); }
    QString WavCopyright() const { return Field(TagField::WavCopyright); }
    void SetWavCopyright(const QString& v) { SetField(TagField::WavCopyright, v); }
    QString WavCommissioned() const { return Field(TagField::WavCommissioned); }
    void SetWavCommissioned(const QString& v) { SetField(TagField::WavCommissioned, v); }
    QString WavKeywords() const { return Field(TagField::WavKeywords); }
    void SetWavKeywords(const QString& v) { SetField(TagField::WavKeywords, v); }
    QString WavLocation() const { return Field(TagField::WavLocation); }
    void SetWavLocation(const QString& v) { SetField(TagField::WavLocation, v); }

    // ---- rating and mood as this program keeps them in V2 user text frames -----------
    // The last frame whose text begins "QLT" (rating) or "MOOD" (mood); the name is not
    // looked at. Writing goes through SetUserFrame.
    QString V2Rating() const;
    QString V2Mood() const;

    // ---- V2 comments (COMM) -----------------------------------------------------------
    int CommentCount() const;
    QString CommentLanguage(int i) const;
    QString CommentDescription(int i) const;
    QString CommentText(int i) const; // empty for an index out of range
    int SetComment(int i, const QString& language, const QString& description, const QString& text);
    void ClearComments();

    // ---- V2 lyric texts (USLT) --------------------------------------------------------
    int LyricCount() const;
    QString LyricLanguage(int i) const;
    QString LyricDescription(int i) const;
    QString LyricText(int i) const;
    int SetLyric(int i, const QString& language, const QString& description, const QString& text);
    void ClearLyrics();

    // ---- V2 user text frames (TXXX) ---------------------------------------------------
    int UserFrameCount() const;
    QString UserFrameName(int i) const;
    QString UserFrameText(int i) const;
    // Index 0 or count + 1 appends; name and text both empty removes frame i.
    int SetUserFrame(int i, const QString& name, const QString& text);

    // ---- V2 pictures (APIC) -----------------------------------------------------------
    // A mime of "-->" followed by a path is a link: the frame carries no picture data.
    int PictureCount() const;
    QString PictureDescription(int i) const;
    int PictureType(int i) const;
    QString PictureMime(int i) const;
    qint64 PictureSize(int i) const;                     // bytes of picture data
    int ExportPicture(int i, const QString& path) const; // writes the picture data to path
    QByteArray PictureData(int i) const;                 // the picture data (empty for a link)
    // Puts the picture file at index i (count + 1 appends, an existing index is
    // replaced). An empty mime is taken from the file's contents; a link mime stores no
    // data and the path is not read.
    int AddPicture(const QString& path, const QString& description, int i, int type = 3,
                   const QString& mime = QString());
    int RemovePicture(int i);
    void ClearPictures();

    // ---- the ID3v1 genre table ----------------------------------------------------------
    int GenreCount() const;
    QString GenreName(int i) const; // empty outside 0 .. GenreCount() - 1

    // ---- writing: non-zero = done, 0 = failed (reason in LastError) --------------------
    int SaveV1(const QString& path);
    int SaveV2(const QString& path);
    int SaveApe(const QString& path);
    int SaveLyrics(const QString& path);
    int SaveWma(const QString& path);
    int SaveFlac(const QString& path);
    int SaveOgg(const QString& path);
    int SaveMp4(const QString& path);
    int SaveWav(const QString& path);

    int RemoveV1(const QString& path);
    int RemoveV2(const QString& path);
    int RemoveApe(const QString& path);
    int RemoveLyrics(const QString& path);
    int RemoveOgg(const QString& path);

    // The same by set, for callers that loop over the sets: Save(set) is the Save... of
    // that set, Remove(set) its Remove... (0 for Wma, Flac, Mp4 and Wav, which are never
    // stripped).
    int Save(TagSet set, const QString& path);
    int Remove(TagSet set, const QString& path);

private:
    std::unique_ptr<qlt_tag::EngineData> d;
};

// The tags found in the open file, as the HasTag column shows them:
// "id3v1.1, id3v2.3, ape2.0, lyrics2.00, mp4, riff info" (only those present).
QString HasTagText(const TagEngine& e);
// The text of typical column i (0 to 13: genre, year, track, ...) for a file of this type.
// The data list shows a WMA file's year in the first and its genre in the second column.
QString TypicalColumnText(const TagEngine& e, int type, int i);
