// TagEngine: writing and stripping the tag sets. Every change goes through a temporary
// copy beside the file (SafeWrite.h); the audio between the tags is copied byte for byte.
#include "tag/TagEngine.h"

#include "platform/PosixFile.h"
#include "platform/SafeFile.h"
#include "tag/EngineData.h"
#include "tag/FormatRead.h"
#include "tag/Id3v2Keep.h"
#include "tag/SafeWrite.h"
#include "tag/TagStreams.h"
#include "tag/TagText.h"
#include "tag/TrailerTags.h"
#include "tag/WriteSteps.h"

#include <QDir>
#include <QFile>

#include <array>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <taglib/asffile.h>
#include <taglib/flacfile.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/id3v2header.h>
#include <taglib/id3v2tag.h>
#include <taglib/oggflacfile.h>
#include <taglib/opusfile.h>
#include <taglib/speexfile.h>
#include <taglib/tfilestream.h>
#include <taglib/vorbisfile.h>

using namespace qlt_tag;

namespace {

bool SamePath(const QString& a, const QString& b) {
    if (a == b)
        return true;
    const QString ca = PosixFile::CanonicalPath(a);
    return !ca.isEmpty() && ca == PosixFile::CanonicalPath(b);
}

} // namespace

namespace qlt_tag {

bool WholeSet(const EngineData& d, const QString& path, TagSet set) {
    if (!SamePath(path, d.path))
        return true;
    return !(FileIdentity::Of(path) == d.synced[static_cast<size_t>(EngineData::SetIndex(set))]);
}

} // namespace qlt_tag

namespace {

const char* SetLabel(TagSet set) {
    switch (set) {
    case TagSet::V1:
        return "ID3v1";
    case TagSet::V2:
        return "ID3v2";
    case TagSet::Ape:
        return "APE";
    case TagSet::Lyrics:
        return "Lyrics3";
    case TagSet::Wma:
        return "WMA";
    case TagSet::Flac:
        return "FLAC";
    case TagSet::Ogg:
        return "Ogg";
    case TagSet::Mp4:
        return "MP4";
    case TagSet::Wav:
        return "RIFF INFO";
    default:
        return "";
    }
}

// Renders the trailer with the block of 'kind' replaced by 'bytes' (removed when empty),
// or, for a new block, inserted in front of the first of 'before' that exists.
QByteArray NewTrailer(TagLib::IOStream* stream, const FileLayout& lay, BlockKind kind,
                      const QByteArray& bytes, std::initializer_list<BlockKind> before) {
    bool placed = false;
    QByteArray out;
    auto isKind = [&](BlockKind k) {
        if (kind == BlockKind::Lyrics3v2 || kind == BlockKind::Lyrics3v1)
            return k == BlockKind::Lyrics3v2 || k == BlockKind::Lyrics3v1;
        return k == kind;
    };
    // Where a new block goes: in front of the first block of a 'before' kind.
    int insertAt = static_cast<int>(lay.trailer.size());
    for (int i = 0; i < static_cast<int>(lay.trailer.size()); ++i) {
        bool hit = false;
        for (BlockKind b : before)
            hit = hit || lay.trailer[static_cast<size_t>(i)].kind == b;
        if (hit) {
            insertAt = i;
            break;
        }
    }
    bool exists = false;
    for (const TrailerBlock& b : lay.trailer)
        exists = exists || isKind(b.kind);
    for (int i = 0; i <= static_cast<int>(lay.trailer.size()); ++i) {
        if (!exists && i == insertAt && !placed) {
            out += bytes;
            placed = true;
        }
        if (i == static_cast<int>(lay.trailer.size()))
            break;
        const TrailerBlock& b = lay.trailer[static_cast<size_t>(i)];
        if (isKind(b.kind)) {
            if (!placed)
                out += bytes;
            placed = true;
            continue;
        }
        out += ReadAt(stream, b.offset, b.length);
    }
    return out;
}

} // namespace

// ---- shared steps of every write ---------------------------------------------------------

namespace qlt_tag {

bool Prepare(EngineData& d, const QString& given, TagSet set, bool strip, Target* t) {
    d.error.clear();
    // A symbolic link is followed: the file it points to is rewritten and the link stays.
    QString path = given;
    struct stat link {};
    if (PosixFile::LStat(given, link) == 0 && S_ISLNK(link.st_mode)) {
        if (char* real = ::realpath(PosixFile::Native(given).constData(), nullptr)) {
            path = PosixFile::FromNative(real);
            std::free(real);
        }
    }
    if (!CanRewrite(path, &d.error))
        return false;
    const QByteArray native = PosixFile::Native(path);
    TagLib::FileStream stream(native.constData(), true);
    if (!stream.isOpen()) {
        d.error = QStringLiteral("The file %1 can't be read.").arg(QDir::toNativeSeparators(path));
        return false;
    }
    struct stat st {};
    ::stat(native.constData(), &st);
    t->path = path;
    t->before = FileIdentity::Of(path);
    t->type = DetectType(&stream, st.st_size, &t->layout);
    if (t->type == 0) {
        d.error = QStringLiteral("%1 is no audio file that can be read.").arg(QDir::toNativeSeparators(path));
        return false;
    }
    const bool allowed = strip ? StripsSet(t->type, set) : WritesSet(t->type, set);
    if (!allowed) {
        d.error = QStringLiteral("A %1 tag can't be %2 on this type of file.")
                      .arg(QLatin1String(SetLabel(set)),
                           strip ? QStringLiteral("removed") : QStringLiteral("written"));
        return false;
    }
    return true;
}

// After a successful write to the open file: its tags are on disk now.
void Written(EngineData& d, const Target& t, TagSet set) {
    if (!SamePath(t.path, d.path))
        return;
    d.ClearDirty(set);
    // The saved set is in step with the disk now; so is every set that was before, as the
    // write left it alone.
    const FileIdentity after = FileIdentity::Of(d.path);
    for (FileIdentity& id : d.synced) {
        if (id == t.before)
            id = after;
    }
    d.synced[static_cast<size_t>(EngineData::SetIndex(set))] = after;
    const QByteArray native = PosixFile::Native(d.path);
    TagLib::FileStream stream(native.constData(), true);
    if (!stream.isOpen())
        return;
    struct stat st {};
    ::stat(native.constData(), &st);
    d.size = st.st_size;
    DetectType(&stream, d.size, &d.layout);
    ReadPresence(&stream, d);
}

// After a successful strip of the open file: the set reads empty from now on.
void Stripped(EngineData& d, const Target& t, TagSet set) {
    Written(d, t, set);
    if (SamePath(t.path, d.path))
        d.ClearSet(set);
}

} // namespace qlt_tag

namespace {

Id3v1Data V1From(const EngineData& d) {
    Id3v1Data t;
    t.title = d.F(TagField::V1Title);
    t.artist = d.F(TagField::V1Artist);
    t.album = d.F(TagField::V1Album);
    t.year = d.F(TagField::V1Year);
    t.comment = d.F(TagField::V1Comment);
    t.track = d.F(TagField::V1Track);
    t.genre = d.v1Genre;
    return t;
}

struct KeyMap {
    TagField field;
    const char* key;
};

constexpr KeyMap kApeKeys[] = {{TagField::ApeGenre, "Genre"},     {TagField::ApeYear, "Year"},
                               {TagField::ApeTrack, "Track"},     {TagField::ApeArtist, "Artist"},
                               {TagField::ApeTitle, "Title"},     {TagField::ApeAlbum, "Album"},
                               {TagField::ApeComment, "Comment"}, {TagField::ApeCopyright, "Copyright"}};

constexpr KeyMap kLyricsKeys[] = {
    {TagField::LyricsGenre, "GRE"}, {TagField::LyricsArtist, "EAR"}, {TagField::LyricsTitle, "ETT"},
    {TagField::LyricsAlbum, "EAL"}, {TagField::LyricsInfo, "INF"},   {TagField::LyricsAuthor, "AUT"},
    {TagField::LyricsLink, "IMG"},  {TagField::LyricsLyric, "LYR"},  {TagField::LyricsExtra, "EXT"}};

// The largest tag behind the audio that a write carries along in memory.
constexpr long long kMaxTrailerBlock = 64LL * 1024 * 1024;

// Rewrites the file with a new trailer.
int WriteTrailer(EngineData& d, const Target& t, BlockKind kind, const QByteArray& bytes,
                 std::initializer_list<BlockKind> before, TagSet set, bool strip = false) {
    for (const TrailerBlock& b : t.layout.trailer) {
        if (b.length > kMaxTrailerBlock) {
            d.error = QStringLiteral("A tag behind the audio of the file is larger than 64 MB; the file is "
                                     "left as it is.");
            return 0;
        }
    }
    QByteArray tail;
    {
        TagLib::FileStream stream(PosixFile::Native(t.path).constData(), true);
        tail = NewTrailer(&stream, t.layout, kind, bytes, before);
    }
    if (!RewriteFile(t.path, QByteArray(), t.path, 0, t.layout.bodyEnd, tail, &d.error))
        return 0;
    if (strip)
        Stripped(d, t, set);
    else
        Written(d, t, set);
    return 1;
}

QByteArray ReadBlock(const Target& t, const TrailerBlock* b) {
    if (!b)
        return QByteArray();
    TagLib::FileStream stream(PosixFile::Native(t.path).constData(), true);
    return ReadAt(&stream, b->offset, b->length);
}

// An APE tag is replaced or removed only when it was read to the last byte: a footer
// whose size reaches into the audio, or items that don't fill the tag, would make the
// write drop bytes that it does not understand.
bool ApeReadable(const QByteArray& block, ApeData* out) {
    ApeData scratch;
    bool complete = false;
    return ParseApe(block, out ? out : &scratch, &complete) && complete;
}

QString HeadTooLong() {
    return QStringLiteral("The ID3v2 tag of the file claims more bytes than the file holds; the file is left "
                          "as it is.");
}

QString UnreadableApe() {
    return QStringLiteral("The APE tag of the file can't be read completely; the file is left as it is.");
}

} // namespace

int TagEngine::SaveV1(const QString& path) {
    Target t;
    if (!Prepare(*d, path, TagSet::V1, false, &t))
        return 0;
    return WriteTrailer(*d, t, BlockKind::Id3v1, RenderId3v1(V1From(*d)), {}, TagSet::V1);
}

int TagEngine::RemoveV1(const QString& path) {
    Target t;
    if (!Prepare(*d, path, TagSet::V1, true, &t))
        return 0;
    if (!t.layout.Find(BlockKind::Id3v1))
        return 1;
    return WriteTrailer(*d, t, BlockKind::Id3v1, QByteArray(), {}, TagSet::V1, true);
}

int TagEngine::SaveApe(const QString& path) {
    Target t;
    if (!Prepare(*d, path, TagSet::Ape, false, &t))
        return 0;
    const TrailerBlock* old = t.layout.Find(BlockKind::Ape);
    if (old && old->length > kMaxTrailerBlock) {
        d->error = QStringLiteral("The APE tag of the file is larger than 64 MB and is left as it is.");
        return 0;
    }
    ApeData ape;
    if (old && !ApeReadable(ReadBlock(t, old), &ape)) {
        d->error = UnreadableApe();
        return 0;
    }
    if (ape.version < 2000) {
        // Version 1 items are text in the old code page; version 2 wants UTF-8.
        for (ApeItem& item : ape.items) {
            if (((item.flags >> 1) & 3) == 0)
                item.value = DecodeLegacy(item.value).toUtf8();
        }
    }
    ape.version = 2000;
    const bool all = WholeSet(*d, path, TagSet::Ape);
    for (const KeyMap& k : kApeKeys) {
        if (all || d->Dirty(k.field))
            ape.SetText(k.key, d->F(k.field));
    }
    return WriteTrailer(*d, t, BlockKind::Ape, RenderApe(ape),
                        {BlockKind::Lyrics3v2, BlockKind::Lyrics3v1, BlockKind::Id3v1}, TagSet::Ape);
}

int TagEngine::RemoveApe(const QString& path) {
    Target t;
    if (!Prepare(*d, path, TagSet::Ape, true, &t))
        return 0;
    const TrailerBlock* old = t.layout.Find(BlockKind::Ape);
    if (!old)
        return 1;
    if (old->length > kMaxTrailerBlock || !ApeReadable(ReadBlock(t, old), nullptr)) {
        d->error = UnreadableApe();
        return 0;
    }
    return WriteTrailer(*d, t, BlockKind::Ape, QByteArray(), {}, TagSet::Ape, true);
}

int TagEngine::SaveLyrics(const QString& path) {
    Target t;
    if (!Prepare(*d, path, TagSet::Lyrics, false, &t))
        return 0;
    const TrailerBlock* old = t.layout.Find(BlockKind::Lyrics3v2);
    if (!old)
        old = t.layout.Find(BlockKind::Lyrics3v1);
    Lyrics3Data lyrics;
    ParseLyrics3(ReadBlock(t, old), &lyrics);
    lyrics.version = 2;
    const bool all = WholeSet(*d, path, TagSet::Lyrics);
    for (const KeyMap& k : kLyricsKeys) {
        if (all || d->Dirty(k.field))
            lyrics.SetText(k.key, d->F(k.field));
    }
    QByteArray bytes;
    if (lyrics.HasContent()) {
        bytes = RenderLyrics3(lyrics, &d->error);
        if (bytes.isEmpty())
            return 0;
    }
    return WriteTrailer(*d, t, BlockKind::Lyrics3v2, bytes, {BlockKind::Id3v1}, TagSet::Lyrics);
}

int TagEngine::RemoveLyrics(const QString& path) {
    Target t;
    if (!Prepare(*d, path, TagSet::Lyrics, true, &t))
        return 0;
    if (!t.layout.Find(BlockKind::Lyrics3v2) && !t.layout.Find(BlockKind::Lyrics3v1))
        return 1;
    return WriteTrailer(*d, t, BlockKind::Lyrics3v2, QByteArray(), {}, TagSet::Lyrics, true);
}

int TagEngine::SaveV2(const QString& path) {
    Target t;
    if (!Prepare(*d, path, TagSet::V2, false, &t))
        return 0;
    if (t.type == kTypeWav)
        return WriteWavId3(*d, t, false);
    QByteArray head;
    {
        TagLib::FileStream stream(PosixFile::Native(t.path).constData(), true);
        if (!HeadTagsFit(&stream, t.layout.size)) {
            d->error = HeadTooLong();
            return 0;
        }
        StreamFile file(&stream);
        std::unique_ptr<TagLib::ID3v2::Tag> tag;
        QByteArray original;
        if (t.layout.headEnd > 0) {
            tag = ReadHeadTags(&file, t.layout.headEnd);
            original =
                ReadAt(&stream, 0, std::min<long long>(t.layout.headEnd, tag->header()->completeTagSize()));
        } else {
            tag = std::make_unique<TagLib::ID3v2::Tag>();
        }
        // An existing tag keeps its version; v2.2 and new tags are written as v2.3.
        const int version = t.layout.headVersion == 4 ? 4 : 3;
        ApplyId3v2(*d, *tag, WholeSet(*d, path, TagSet::V2));
        head = RenderKeeping(*tag, original, version);
    }
    if (!RewriteFile(t.path, head, t.path, t.layout.headEnd, t.layout.size, QByteArray(), &d->error))
        return 0;
    Written(*d, t, TagSet::V2);
    return 1;
}

int TagEngine::RemoveV2(const QString& path) {
    Target t;
    if (!Prepare(*d, path, TagSet::V2, true, &t))
        return 0;
    if (t.type == kTypeWav)
        return WriteWavId3(*d, t, true);
    if (t.layout.headEnd == 0)
        return 1;
    {
        TagLib::FileStream stream(PosixFile::Native(t.path).constData(), true);
        if (!HeadTagsFit(&stream, t.layout.size)) {
            d->error = HeadTooLong();
            return 0;
        }
    }
    if (!RewriteFile(t.path, QByteArray(), t.path, t.layout.headEnd, t.layout.size, QByteArray(), &d->error))
        return 0;
    Stripped(*d, t, TagSet::V2);
    return 1;
}

// ---- typical sets: TagLib edits a copy of the audio part --------------------------------

namespace qlt_tag {

using XiphEdit = std::function<void(TagLib::Ogg::XiphComment&)>;

bool Finished(CheckedStream& stream, bool saved, const std::function<bool()>& reread, QString* error) {
    const int err = stream.Finish();
    if (!saved || err || !reread()) {
        *error =
            err ? QStringLiteral("The tag of the file can't be written: %1").arg(SafeFile::ErrorText(err))
                : QStringLiteral("The tag of the file can't be written.");
        return false;
    }
    return true;
}

static bool EditXiph(const QString& tempPath, int type, const XiphEdit& edit, QString* error) {
    const QByteArray native = PosixFile::Native(tempPath);
    auto fail = [&]() {
        *error = QStringLiteral("The tag of the file can't be written.");
        return false;
    };
    CheckedStream stream(native);
    if (type == kTypeFlac) {
        bool saved = false;
        {
            TagLib::FLAC::File f(&stream, TagLib::ID3v2::FrameFactory::instance(), false);
            if (!f.isValid() || !f.xiphComment(true))
                return fail();
            edit(*f.xiphComment(true));
            saved = f.save();
        }
        return Finished(
            stream, saved,
            [&] {
                TagLib::FileStream check(native.constData(), true);
                TagLib::FLAC::File f(&check, TagLib::ID3v2::FrameFactory::instance(), false);
                return f.isValid();
            },
            error);
    }
    TagLib::FileStream probe(native.constData(), true);
    const char codec = OggCodec(&probe, 0);
    auto run = [&](auto* tagless) {
        using FileT = std::remove_pointer_t<decltype(tagless)>;
        bool saved = false;
        {
            FileT f(&stream, false);
            if (!f.isValid() || !f.tag())
                return fail();
            edit(*f.tag());
            saved = f.save();
        }
        return Finished(
            stream, saved,
            [&] {
                TagLib::FileStream check(native.constData(), true);
                FileT f(&check, false);
                return f.isValid() && f.tag() != nullptr;
            },
            error);
    };
    switch (codec) {
    case 'v':
        return run(static_cast<TagLib::Ogg::Vorbis::File*>(nullptr));
    case 'o':
        return run(static_cast<TagLib::Ogg::Opus::File*>(nullptr));
    case 'f':
        return run(static_cast<TagLib::Ogg::FLAC::File*>(nullptr));
    case 's':
        return run(static_cast<TagLib::Ogg::Speex::File*>(nullptr));
    default:
        return fail();
    }
}

int EditBody(EngineData& d, const Target& t, const std::function<bool(const QString&, QString*)>& edit) {
    const long long start = TypeHasOuterTags(t.type) ? t.layout.headEnd : 0;
    const long long end = TypeHasOuterTags(t.type) ? t.layout.bodyEnd : t.layout.size;
    const bool whole = start == 0 && end == t.layout.size;
    QString temp;
    const bool edited = MakeEditableCopy(t.path, t.path, start, end, edit, &temp, &d.error);
    if (!edited) {
        if (!temp.isEmpty())
            SafeFile::RemoveTemp(temp);
        return 0;
    }
    bool ok = false;
    if (whole) {
        ok = RenameOver(temp, t.path, &d.error);
    } else {
        QByteArray head, tail;
        {
            TagLib::FileStream stream(PosixFile::Native(t.path).constData(), true);
            head = ReadAt(&stream, 0, start);
            tail = ReadAt(&stream, end, t.layout.size - end);
        }
        struct stat edited {};
        const long long editedSize = PosixFile::Stat(temp, edited) == 0 ? edited.st_size : -1;
        ok = editedSize >= 0 && RewriteFile(t.path, head, temp, 0, editedSize, tail, &d.error);
        if (editedSize < 0)
            d.error = QStringLiteral("The tag of the file can't be written.");
        SafeFile::RemoveTemp(temp);
    }
    return ok ? 1 : 0;
}

} // namespace qlt_tag

namespace {

// The content description object of ASF (title, author, copyright, description, rating).
constexpr unsigned char kAsfContentDescription[16] = {0x33, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                                                      0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C};

quint64 Le(const QByteArray& b, qsizetype at, int bytes) {
    quint64 v = 0;
    for (int i = bytes - 1; i >= 0; --i)
        v = (v << 8) | static_cast<unsigned char>(b[at + i]);
    return v;
}

QByteArray LeBytes(quint64 v, int bytes) {
    QByteArray b;
    for (int i = 0; i < bytes; ++i)
        b.append(static_cast<char>((v >> (8 * i)) & 0xFF));
    return b;
}

// The offset and size of the content description object in the header, 0 when none.
std::pair<qsizetype, qsizetype> FindContentDescription(const QByteArray& header) {
    for (qsizetype pos = 30; pos + 24 <= header.size();) {
        const auto size = static_cast<qsizetype>(Le(header, pos + 16, 8));
        if (size < 24 || pos + size > header.size())
            break;
        if (std::memcmp(header.constData() + pos, kAsfContentDescription, 16) == 0)
            return {pos, size};
        pos += size;
    }
    return {0, 0};
}

QByteArray AsfHeader(TagLib::IOStream* stream) {
    const QByteArray start = ReadAt(stream, 0, 30);
    if (start.size() < 30)
        return QByteArray();
    const quint64 size = Le(start, 16, 8);
    if (size < 30 || size > 64ULL * 1024 * 1024)
        return QByteArray();
    return ReadAt(stream, 0, static_cast<long long>(size));
}

// The text values of the extended content description object, by name. TagLib reads the
// metadata library of the header extension and this object into one list per name and
// writes the first value of each list into this object: where the header extension comes
// first, a save would swap the values of the two places.
std::vector<std::pair<QString, QString>> ExtendedDescriptionTexts(const QByteArray& header) {
    static const unsigned char kGuid[16] = {0x40, 0xA4, 0xD0, 0xD2, 0x07, 0xE3, 0xD2, 0x11,
                                            0x97, 0xF0, 0x00, 0xA0, 0xC9, 0x5E, 0xA8, 0x50};
    std::vector<std::pair<QString, QString>> texts;
    for (qsizetype pos = 30; pos + 24 <= header.size();) {
        const auto size = static_cast<qsizetype>(Le(header, pos + 16, 8));
        if (size < 24 || pos + size > header.size())
            break;
        if (std::memcmp(header.constData() + pos, kGuid, 16) == 0 && size >= 26) {
            const qsizetype end = pos + size;
            const auto count = static_cast<int>(Le(header, pos + 24, 2));
            qsizetype at = pos + 26;
            auto utf16 = [&](qsizetype from, qsizetype bytes) {
                QString t = QString::fromUtf16(reinterpret_cast<const char16_t*>(header.constData() + from),
                                               bytes / 2);
                while (t.endsWith(QChar(0)))
                    t.chop(1);
                return t;
            };
            for (int i = 0; i < count && at + 2 <= end; ++i) {
                const auto nameLen = static_cast<qsizetype>(Le(header, at, 2));
                if (at + 2 + nameLen + 4 > end)
                    break;
                const QString name = utf16(at + 2, nameLen);
                at += 2 + nameLen;
                const auto type = Le(header, at, 2);
                const auto valueLen = static_cast<qsizetype>(Le(header, at + 2, 2));
                at += 4;
                if (at + valueLen > end)
                    break;
                if (type == 0)
                    texts.emplace_back(name, utf16(at, valueLen));
                at += valueLen;
            }
            break;
        }
        pos += size;
    }
    return texts;
}

// Puts the value that stood in the extended content description first in its list.
void KeepExtendedDescriptionFirst(TagLib::ASF::Tag& tag,
                                  const std::vector<std::pair<QString, QString>>& texts) {
    TagLib::ASF::AttributeListMap& map = tag.attributeListMap();
    for (const auto& [name, value] : texts) {
        auto it = map.find(ToTL(name));
        if (it == map.end() || it->second.size() < 2)
            continue;
        TagLib::ASF::AttributeList& list = it->second;
        for (auto a = list.begin(); a != list.end(); ++a) {
            if (a->type() != TagLib::ASF::Attribute::UnicodeType || FromTL(a->toString()) != value)
                continue;
            if (a != list.begin()) {
                const TagLib::ASF::Attribute keep = *a;
                list.erase(a);
                list.prepend(keep);
            }
            break;
        }
    }
}

// The lengths of the five texts of the content description object (title, author,
// copyright, description, rating); all 0 when the header has none.
std::array<quint64, 5> ContentDescriptionLengths(const QByteArray& header) {
    std::array<quint64, 5> lengths{};
    const auto [at, size] = FindContentDescription(header);
    if (at != 0 && size >= 34)
        for (int i = 0; i < 5; ++i)
            lengths[i] = Le(header, at + 24 + 2 * i, 2);
    return lengths;
}

// TagLib writes all five texts of the content description object, an empty one as a lone
// terminator that other readers show as an empty value, and it writes the object where
// the file had none. A text that is empty now gets no bytes (unless it stood so before), and
// an object with nothing in it, where the file had none, goes, so a save adds no empty
// title, author, copyright, description or rating.
void CompactContentDescription(CheckedStream& stream, bool hadDescription,
                               const std::array<quint64, 5>& before) {
    const QByteArray header = AsfHeader(&stream);
    const auto [at, size] = FindContentDescription(header);
    if (at == 0 || size < 34)
        return;
    QList<QByteArray> texts;
    qsizetype pos = at + 34;
    for (int i = 0; i < 5; ++i) {
        const auto length = static_cast<qsizetype>(Le(header, at + 24 + 2 * i, 2));
        if (pos + length > at + size)
            return; // not as TagLib writes it: leave it
        QByteArray text = header.mid(pos, length);
        // An empty text stays as it stood (a lone terminator); one that had no bytes or was
        // emptied by this save gets none.
        if (text.count('\0') == text.size() && before[i] != quint64(text.size()))
            text.clear();
        texts.append(text);
        pos += length;
    }
    QByteArray object(reinterpret_cast<const char*>(kAsfContentDescription), 16);
    qsizetype textBytes = 0;
    for (const QByteArray& t : texts)
        textBytes += t.size();
    const quint64 count = Le(header, 24, 4);
    if (textBytes == 0 && !hadDescription) {
        stream.removeBlock(static_cast<unsigned long>(at), static_cast<unsigned long>(size));
        stream.seek(16);
        stream.writeBlock(TagLib::ByteVector(LeBytes(header.size() - size, 8).constData(), 8));
        stream.writeBlock(TagLib::ByteVector(LeBytes(count - 1, 4).constData(), 4));
        return;
    }
    object += LeBytes(quint64(34 + textBytes), 8);
    for (const QByteArray& t : texts)
        object += LeBytes(quint64(t.size()), 2);
    for (const QByteArray& t : texts)
        object += t;
    if (object.size() == size)
        return; // nothing to take away
    stream.insert(TagLib::ByteVector(object.constData(), static_cast<unsigned int>(object.size())),
                  static_cast<unsigned long>(at), static_cast<unsigned long>(size));
    stream.seek(16);
    stream.writeBlock(TagLib::ByteVector(LeBytes(header.size() - size + object.size(), 8).constData(), 8));
}

} // namespace

int TagEngine::SaveWma(const QString& path) {
    Target t;
    if (!Prepare(*d, path, TagSet::Wma, false, &t))
        return 0;
    const bool all = WholeSet(*d, path, TagSet::Wma);
    const EngineData& data = *d;
    const int ok = EditBody(*d, t, [&](const QString& temp, QString* error) {
        const QByteArray native = PosixFile::Native(temp);
        CheckedStream stream(native);
        const QByteArray header = AsfHeader(&stream);
        const bool hadDescription = FindContentDescription(header).first != 0;
        const std::array<quint64, 5> lengthsBefore = ContentDescriptionLengths(header);
        stream.seek(0);
        bool saved = false;
        {
            TagLib::ASF::File f(&stream, false);
            if (!f.isValid() || !f.tag()) {
                *error = QStringLiteral("The WMA file can't be read.");
                return false;
            }
            ApplyAsf(data, *f.tag(), all);
            KeepExtendedDescriptionFirst(*f.tag(), ExtendedDescriptionTexts(header));
            saved = f.save();
        }
        if (saved)
            CompactContentDescription(stream, hadDescription, lengthsBefore);
        return Finished(
            stream, saved,
            [&] {
                TagLib::FileStream check(native.constData(), true);
                TagLib::ASF::File f(&check, false);
                return f.isValid();
            },
            error);
    });
    if (ok)
        Written(*d, t, TagSet::Wma);
    return ok;
}

namespace {

int SaveXiphSet(EngineData& d, const QString& path, TagSet set, bool strip) {
    Target t;
    if (!Prepare(d, path, set, strip, &t))
        return 0;
    const bool all = WholeSet(d, path, set);
    const int ok = EditBody(d, t, [&](const QString& temp, QString* error) {
        return EditXiph(
            temp, t.type,
            [&](TagLib::Ogg::XiphComment& c) {
                if (strip)
                    c.removeAllFields();
                else
                    ApplyXiph(d, c, set, all);
            },
            error);
    });
    if (ok && strip)
        Stripped(d, t, set);
    else if (ok)
        Written(d, t, set);
    return ok;
}

} // namespace

int TagEngine::SaveFlac(const QString& path) {
    return SaveXiphSet(*d, path, TagSet::Flac, false);
}
int TagEngine::SaveOgg(const QString& path) {
    return SaveXiphSet(*d, path, TagSet::Ogg, false);
}
int TagEngine::RemoveOgg(const QString& path) {
    return SaveXiphSet(*d, path, TagSet::Ogg, true);
}

int TagEngine::Save(TagSet set, const QString& path) {
    switch (set) {
    case TagSet::V1:
        return SaveV1(path);
    case TagSet::V2:
        return SaveV2(path);
    case TagSet::Ape:
        return SaveApe(path);
    case TagSet::Lyrics:
        return SaveLyrics(path);
    case TagSet::Wma:
        return SaveWma(path);
    case TagSet::Flac:
        return SaveFlac(path);
    case TagSet::Ogg:
        return SaveOgg(path);
    case TagSet::Mp4:
        return SaveMp4(path);
    case TagSet::Wav:
        return SaveWav(path);
    case TagSet::None:
        break;
    }
    return 0;
}

int TagEngine::Remove(TagSet set, const QString& path) {
    switch (set) {
    case TagSet::V1:
        return RemoveV1(path);
    case TagSet::V2:
        return RemoveV2(path);
    case TagSet::Ape:
        return RemoveApe(path);
    case TagSet::Lyrics:
        return RemoveLyrics(path);
    case TagSet::Ogg:
        return RemoveOgg(path);
    case TagSet::Wma:
    case TagSet::Flac:
    case TagSet::Mp4:
    case TagSet::Wav:
    case TagSet::None:
        break;
    }
    return 0;
}
