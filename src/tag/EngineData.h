#pragma once
// What TagEngine holds of the current file. Internal to src/tag.

#include "tag/TagFields.h"
#include "tag/TagLayout.h"

#include <QByteArray>
#include <QString>
#include <array>
#include <bitset>
#include <vector>

namespace TagLib {
namespace ID3v2 {
class Tag;
}
namespace Ogg {
class XiphComment;
}
namespace ASF {
class Tag;
}
namespace MP4 {
class Tag;
}
namespace RIFF::Info {
class Tag;
}
} // namespace TagLib

namespace qlt_tag {

struct TextEntry {
    QString language, description, text;
};
struct UserFrame {
    QString name, text;
};
struct PictureEntry {
    QString description;
    int type = 3;
    QString mime;
    QByteArray data;
};

struct V2Lists {
    std::vector<TextEntry> comments;
    std::vector<TextEntry> lyrics;
    std::vector<UserFrame> userFrames;
    std::vector<PictureEntry> pictures;
    bool commentsDirty = false;
    bool lyricsDirty = false;
    bool userFramesDirty = false;
    bool picturesDirty = false;
};

// Which file a path named at a moment: device, inode and change time.
struct FileIdentity {
    quint64 device = 0, inode = 0;
    qint64 ctimeSec = 0, ctimeNsec = 0;
    static FileIdentity Of(const QString& path);
    bool operator==(const FileIdentity&) const = default;
};

struct EngineData {
    QString path;
    // For each set, the identity of the file at which its bytes on disk were known to hold
    // what the engine holds (apart from staged changes). A save to a file with another
    // identity writes the whole set.
    std::array<FileIdentity, 9> synced;
    static int SetIndex(TagSet set);
    QString error;
    int type = 0;
    FileLayout layout;
    qint64 size = 0;
    bool statOk = false;                              // the file was found when it was opened
    qint64 statSize = 0, mtimeSec = 0, mtimeNsec = 0; // its size and modification time then
    float duration = 0;
    int bitrate = 0;
    int frequency = 0;
    int containerTrack = 0; // the track of an MP4 file's own tag

    std::array<QString, kTagFieldCount> fields;
    std::bitset<kTagFieldCount> dirty;
    int v1Genre = 255;

    bool hasV1 = false, hasV2 = false, hasApe = false, hasLyrics = false, hasMp4 = false, hasWav = false;
    QString v1Version, v2Version, apeVersion, lyricsVersion;
    V2Lists v2;

    QString& F(TagField f) { return fields[static_cast<size_t>(f)]; }
    const QString& F(TagField f) const { return fields[static_cast<size_t>(f)]; }
    bool Dirty(TagField f) const { return dirty.test(static_cast<size_t>(f)); }
    void ClearSet(TagSet set);   // empties the fields of a set, not staged
    void ClearDirty(TagSet set); // forgets staged changes of a set
};

// Which types carry which set (see the table in TagEngine.h).
bool ReadsSet(int type, TagSet set);
bool WritesSet(int type, TagSet set);
bool StripsSet(int type, TagSet set);

// ---- ID3v2 -------------------------------------------------------------------------------
void ReadId3v2(const TagLib::ID3v2::Tag& tag, EngineData& d);
// Puts the fields and lists into tag: all of them, or only the staged ones.
void ApplyId3v2(const EngineData& d, TagLib::ID3v2::Tag& tag, bool all);
// Renders with the text encodings of every frame set for the version (3 or 4): a v2.3
// tag carries only Latin-1 and UTF-16 text. Empty result for a tag without frames.
QByteArray RenderId3v2(TagLib::ID3v2::Tag& tag, int version);

// ---- typical sets --------------------------------------------------------------------------
void ReadXiph(const TagLib::Ogg::XiphComment& tag, EngineData& d, TagSet set);
void ApplyXiph(const EngineData& d, TagLib::Ogg::XiphComment& tag, TagSet set, bool all);
void ReadAsf(const TagLib::ASF::Tag& tag, EngineData& d);
void ApplyAsf(const EngineData& d, TagLib::ASF::Tag& tag, bool all);
void ReadMp4(const TagLib::MP4::Tag& tag, EngineData& d);
// Track and disc must be empty, a number or a number pair; false, and why, otherwise.
bool Mp4NumbersValid(const EngineData& d, QString* error);
void ApplyMp4(const EngineData& d, TagLib::MP4::Tag& tag, bool all);
void ReadInfo(const TagLib::RIFF::Info::Tag& tag, EngineData& d);
void ApplyInfo(const EngineData& d, TagLib::RIFF::Info::Tag& tag, bool all);
// RIFF INFO texts are read as UTF-8, or as Windows-1252 where they are no valid UTF-8, and
// written as UTF-8. Installed once, before the first WAV file is opened.
void UseInfoTextCodec();

} // namespace qlt_tag
