// TagEngine: opening a file, the getters and setters, the multi-valued members of V2.
#include "tag/TagEngine.h"

#include "platform/PosixFile.h"
#include "tag/EngineData.h"
#include "tag/FormatRead.h"
#include "tag/TagStreams.h"
#include "tag/TagText.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <taglib/id3v1genres.h>
#include <taglib/tfilestream.h>
#include <unistd.h>

using namespace qlt_tag;

namespace qlt_tag {

FileIdentity FileIdentity::Of(const QString& path) {
    FileIdentity id;
    struct stat st {};
    if (::stat(PosixFile::Native(path).constData(), &st) != 0)
        return id;
    id.device = st.st_dev;
    id.inode = st.st_ino;
    id.ctimeSec = st.st_ctim.tv_sec;
    id.ctimeNsec = st.st_ctim.tv_nsec;
    return id;
}

int EngineData::SetIndex(TagSet set) {
    int i = 0;
    for (int bits = static_cast<int>(set); bits > 1; bits >>= 1)
        ++i;
    return std::min(i, 8);
}

void EngineData::ClearSet(TagSet set) {
    for (int i = 0; i < kTagFieldCount; ++i) {
        if (TagFieldSet(static_cast<TagField>(i)) == set)
            fields[static_cast<size_t>(i)].clear();
    }
    if (set == TagSet::V1)
        v1Genre = 255;
    if (set == TagSet::V2)
        v2 = V2Lists();
}

void EngineData::ClearDirty(TagSet set) {
    for (int i = 0; i < kTagFieldCount; ++i) {
        if (TagFieldSet(static_cast<TagField>(i)) == set)
            dirty.reset(static_cast<size_t>(i));
    }
    if (set == TagSet::V2) {
        v2.commentsDirty = v2.lyricsDirty = v2.userFramesDirty = v2.picturesDirty = false;
    }
}

namespace {

bool In(int type, std::initializer_list<int> types) {
    for (int t : types) {
        if (t == type)
            return true;
    }
    return false;
}

} // namespace

bool ReadsSet(int type, TagSet set) {
    switch (set) {
    case TagSet::V1:
    case TagSet::Ape:
        return In(type, {1, 4, 6, 7});
    case TagSet::V2:
        return In(type, {1, 3, 4, 5, 6, 7, 8});
    case TagSet::Lyrics:
        return In(type, {1, 7});
    case TagSet::Mp4:
        return type == 9;
    case TagSet::Wav:
        return type == 5;
    case TagSet::Wma:
        return type == 2;
    case TagSet::Flac:
        return type == 4;
    case TagSet::Ogg:
        return type == 6;
    case TagSet::None:
        break;
    }
    return false;
}

bool WritesSet(int type, TagSet set) {
    return ReadsSet(type, set);
}

bool StripsSet(int type, TagSet set) {
    switch (set) {
    case TagSet::V1:
        return In(type, {1, 6, 7});
    case TagSet::Ape:
        return In(type, {1, 7});
    case TagSet::V2:
    case TagSet::Lyrics:
        return ReadsSet(type, set);
    case TagSet::Ogg:
        return type == 6;
    default:
        return false;
    }
}

} // namespace qlt_tag

TagEngine::TagEngine() : d(std::make_unique<EngineData>()) {}
TagEngine::~TagEngine() = default;

TagEngine& TagEngine::Shared() {
    static TagEngine engine;
    return engine;
}

int TagEngine::OpenFile(const QString& path) {
    *d = EngineData();
    d->path = path;
    const QByteArray native = PosixFile::Native(path);
    struct stat st {};
    if (path.isEmpty() || ::stat(native.constData(), &st) != 0) {
        d->error = QStringLiteral("The file %1 can't be found.").arg(QDir::toNativeSeparators(path));
        return 0;
    }
    d->statOk = true;
    d->statSize = st.st_size;
    d->mtimeSec = st.st_mtim.tv_sec;
    d->mtimeNsec = st.st_mtim.tv_nsec;
    if (!S_ISREG(st.st_mode)) {
        d->error = QStringLiteral("%1 is not a file.").arg(QDir::toNativeSeparators(path));
        return 0;
    }
    d->size = st.st_size;
    const FileIdentity id{static_cast<quint64>(st.st_dev), static_cast<quint64>(st.st_ino), st.st_ctim.tv_sec,
                          st.st_ctim.tv_nsec};
    d->synced.fill(id);
    qlt_tag::ReadStream stream(native, d->size);
    if (!stream.isOpen()) {
        d->error = QStringLiteral("The file %1 can't be read.").arg(QDir::toNativeSeparators(path));
        return 0;
    }
    d->type = DetectType(&stream, d->size, &d->layout);
    if (d->type != 0 && !ReadFormat(&stream, *d))
        d->type = 0;
    if (d->type == 0) {
        EngineData kept;
        kept.path = path;
        kept.size = d->size;
        kept.statOk = d->statOk;
        kept.statSize = d->statSize;
        kept.mtimeSec = d->mtimeSec;
        kept.mtimeNsec = d->mtimeNsec;
        *d = std::move(kept);
        d->error =
            QStringLiteral("%1 is no audio file that can be read.").arg(QDir::toNativeSeparators(path));
        return 0;
    }
    ReadOuterTags(&stream, *d);
    return d->type;
}

int TagEngine::FileType() const {
    return d->type;
}
QString TagEngine::FilePath() const {
    return d->path;
}
QString TagEngine::LastError() const {
    return d->error;
}

float TagEngine::DurationSeconds() const {
    return d->duration;
}
qint64 TagEngine::FileSizeBytes() const {
    return d->size;
}
bool TagEngine::OpenedFileTimes(qint64& size, qint64& mtimeSec, qint64& mtimeNsec) const {
    size = d->statSize;
    mtimeSec = d->mtimeSec;
    mtimeNsec = d->mtimeNsec;
    return d->statOk;
}
int TagEngine::Bitrate() const {
    return d->bitrate;
}
int TagEngine::Frequency() const {
    return d->frequency;
}

QString TagEngine::TrackNumberValue() const {
    static const QRegularExpression leadingNumber(QStringLiteral("^\\s*(\\d+)"));
    const TagField order[] = {TagField::V2Track,  TagField::ApeTrack,  TagField::V1Track,
                              TagField::WmaTrack, TagField::FlacTrack, TagField::OggTrack,
                              TagField::Mp4Track, TagField::WavTrack};
    for (TagField f : order) {
        const QRegularExpressionMatch m = leadingNumber.match(d->F(f));
        if (m.hasMatch())
            return QString::number(m.captured(1).toLongLong());
    }
    return QString::number(d->containerTrack);
}

bool TagEngine::HasV1() const {
    return d->hasV1;
}
bool TagEngine::HasV2() const {
    return d->hasV2;
}
bool TagEngine::HasApe() const {
    return d->hasApe;
}
bool TagEngine::HasLyrics() const {
    return d->hasLyrics;
}
bool TagEngine::HasMp4() const {
    return d->hasMp4;
}
bool TagEngine::HasWav() const {
    return d->hasWav;
}
QString TagEngine::V1Version() const {
    return d->v1Version;
}
QString TagEngine::V2Version() const {
    return d->v2Version;
}
QString TagEngine::ApeVersion() const {
    return d->apeVersion;
}
QString TagEngine::LyricsVersion() const {
    return d->lyricsVersion;
}

QString TagEngine::Field(TagField field) const {
    if (field == TagField::Count)
        return QString();
    return d->F(field);
}

void TagEngine::SetField(TagField field, const QString& value) {
    if (field == TagField::Count)
        return;
    if (field == TagField::V1Genre) {
        // The text names a genre of the table; anything else means no genre.
        int code = 255;
        const TagLib::StringList names = TagLib::ID3v1::genreList();
        for (unsigned i = 0; i < names.size(); ++i) {
            if (FromTL(names[i]).compare(value.trimmed(), Qt::CaseInsensitive) == 0) {
                code = static_cast<int>(i);
                break;
            }
        }
        SetV1GenreCode(code);
        return;
    }
    d->F(field) = value;
    d->dirty.set(static_cast<size_t>(field));
}

int TagEngine::V1GenreCode() const {
    return d->v1Genre;
}

void TagEngine::SetV1GenreCode(int code) {
    d->v1Genre = (code < 0 || code > 255) ? 255 : code;
    d->F(TagField::V1Genre) = GenreName(d->v1Genre);
    d->dirty.set(static_cast<size_t>(TagField::V1Genre));
}

QString TagEngine::V2Rating() const {
    QString value;
    for (const UserFrame& f : d->v2.userFrames) {
        if (f.text.startsWith(QLatin1String("QLT")))
            value = f.text.mid(3);
    }
    return value;
}

QString TagEngine::V2Mood() const {
    QString value;
    for (const UserFrame& f : d->v2.userFrames) {
        if (f.text.startsWith(QLatin1String("MOOD")))
            value = f.text.mid(4);
    }
    return value;
}

// ---- multi-valued members --------------------------------------------------------------

namespace {

template <typename T> const T* At(const std::vector<T>& list, int i) {
    if (i < 1 || i > static_cast<int>(list.size()))
        return nullptr;
    return &list[static_cast<size_t>(i - 1)];
}

// Replaces entry i, appends at count + 1 (or any index beyond), removes i when the new
// entry is empty. Returns false for a removal of an entry that does not exist.
template <typename T> bool Put(std::vector<T>& list, int i, const T& entry, bool empty, QString* error) {
    const int count = static_cast<int>(list.size());
    if (i >= 1 && i <= count) {
        if (empty)
            list.erase(list.begin() + (i - 1));
        else
            list[static_cast<size_t>(i - 1)] = entry;
        return true;
    }
    if (empty) {
        *error = QStringLiteral("There is no entry number %1 to remove.").arg(i);
        return false;
    }
    list.push_back(entry);
    return true;
}

} // namespace

int TagEngine::CommentCount() const {
    return static_cast<int>(d->v2.comments.size());
}
QString TagEngine::CommentLanguage(int i) const {
    const auto* e = At(d->v2.comments, i);
    return e ? e->language : QString();
}
QString TagEngine::CommentDescription(int i) const {
    const auto* e = At(d->v2.comments, i);
    return e ? e->description : QString();
}
QString TagEngine::CommentText(int i) const {
    const auto* e = At(d->v2.comments, i);
    return e ? e->text : QString();
}
int TagEngine::SetComment(int i, const QString& language, const QString& description, const QString& text) {
    const bool empty = language.isEmpty() && description.isEmpty() && text.isEmpty();
    if (!Put(d->v2.comments, i, TextEntry{language, description, text}, empty, &d->error))
        return 0;
    d->v2.commentsDirty = true;
    return 1;
}
void TagEngine::ClearComments() {
    d->v2.comments.clear();
    d->v2.commentsDirty = true;
}

int TagEngine::LyricCount() const {
    return static_cast<int>(d->v2.lyrics.size());
}
QString TagEngine::LyricLanguage(int i) const {
    const auto* e = At(d->v2.lyrics, i);
    return e ? e->language : QString();
}
QString TagEngine::LyricDescription(int i) const {
    const auto* e = At(d->v2.lyrics, i);
    return e ? e->description : QString();
}
QString TagEngine::LyricText(int i) const {
    const auto* e = At(d->v2.lyrics, i);
    return e ? e->text : QString();
}
int TagEngine::SetLyric(int i, const QString& language, const QString& description, const QString& text) {
    const bool empty = language.isEmpty() && description.isEmpty() && text.isEmpty();
    if (!Put(d->v2.lyrics, i, TextEntry{language, description, text}, empty, &d->error))
        return 0;
    d->v2.lyricsDirty = true;
    return 1;
}
void TagEngine::ClearLyrics() {
    d->v2.lyrics.clear();
    d->v2.lyricsDirty = true;
}

int TagEngine::UserFrameCount() const {
    return static_cast<int>(d->v2.userFrames.size());
}
QString TagEngine::UserFrameName(int i) const {
    const auto* e = At(d->v2.userFrames, i);
    return e ? e->name : QString();
}
QString TagEngine::UserFrameText(int i) const {
    const auto* e = At(d->v2.userFrames, i);
    return e ? e->text : QString();
}
int TagEngine::SetUserFrame(int i, const QString& name, const QString& text) {
    const bool empty = name.isEmpty() && text.isEmpty();
    if (!Put(d->v2.userFrames, i, UserFrame{name, text}, empty, &d->error))
        return 0;
    d->v2.userFramesDirty = true;
    return 1;
}

int TagEngine::PictureCount() const {
    return static_cast<int>(d->v2.pictures.size());
}
QString TagEngine::PictureDescription(int i) const {
    const auto* e = At(d->v2.pictures, i);
    return e ? e->description : QString();
}
int TagEngine::PictureType(int i) const {
    const auto* e = At(d->v2.pictures, i);
    return e ? e->type : 0;
}
QString TagEngine::PictureMime(int i) const {
    const auto* e = At(d->v2.pictures, i);
    return e ? e->mime : QString();
}
qint64 TagEngine::PictureSize(int i) const {
    const auto* e = At(d->v2.pictures, i);
    return e ? e->data.size() : 0;
}

int TagEngine::ExportPicture(int i, const QString& path) const {
    const auto* e = At(d->v2.pictures, i);
    if (!e) {
        d->error = QStringLiteral("There is no picture number %1.").arg(i);
        return 0;
    }
    if (e->data.isEmpty()) {
        d->error = QStringLiteral("Picture number %1 holds no picture data.").arg(i);
        return 0;
    }
    // Written by the bytes of the name: the song's own name may be no valid UTF-8.
    const QByteArray native = PosixFile::Native(path);
    const int fd = ::open(native.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    int err = fd < 0 ? errno : PosixFile::WriteAll(fd, e->data.constData(), e->data.size());
    if (fd >= 0 && ::close(fd) != 0 && !err)
        err = errno;
    if (err) {
        d->error = QStringLiteral("Can't write %1: %2")
                       .arg(PosixFile::DisplayName(path), QString::fromLocal8Bit(std::strerror(err)));
        if (fd >= 0)
            ::unlink(native.constData());
        return 0;
    }
    return 1;
}

namespace {

constexpr qint64 kMaxPictureBytes = 64LL * 1024 * 1024;

QString MimeOf(const QByteArray& data, const QString& path) {
    if (data.startsWith("\xFF\xD8"))
        return QStringLiteral("image/jpeg");
    if (data.startsWith("\x89PNG"))
        return QStringLiteral("image/png");
    if (data.startsWith("GIF8"))
        return QStringLiteral("image/gif");
    if (data.startsWith("BM"))
        return QStringLiteral("image/bmp");
    if (data.startsWith("II*") || data.startsWith("MM\0*"))
        return QStringLiteral("image/tiff");
    if (data.startsWith(QByteArray("\0\0\1\0", 4)))
        return QStringLiteral("image/x-icon");
    QString ext = path.section(QLatin1Char('.'), -1).toLower();
    if (ext == QLatin1String("jpg"))
        ext = QStringLiteral("jpeg");
    return QStringLiteral("image/") + ext;
}

} // namespace

int TagEngine::AddPicture(const QString& path, const QString& description, int i, int type,
                          const QString& mime) {
    PictureEntry p;
    p.description = description;
    p.type = type;
    p.mime = mime;
    if (!mime.startsWith(QLatin1String("-->"))) {
        QFile in;
        const int fd = ::open(PosixFile::Native(path).constData(), O_RDONLY | O_CLOEXEC);
        if (fd < 0 || !in.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
            const QString why = fd < 0 ? QString::fromLocal8Bit(std::strerror(errno)) : in.errorString();
            if (fd >= 0)
                ::close(fd);
            d->error = QStringLiteral("Can't read the picture %1: %2").arg(PosixFile::DisplayName(path), why);
            return 0;
        }
        if (in.size() > kMaxPictureBytes) {
            d->error =
                QStringLiteral("The picture %1 is larger than 64 MB.").arg(QDir::toNativeSeparators(path));
            return 0;
        }
        p.data = in.readAll();
        if (p.data.isEmpty()) {
            d->error = QStringLiteral("The picture %1 is empty.").arg(QDir::toNativeSeparators(path));
            return 0;
        }
        if (p.mime.isEmpty())
            p.mime = MimeOf(p.data, path);
    }
    if (!Put(d->v2.pictures, i, p, false, &d->error))
        return 0;
    d->v2.picturesDirty = true;
    return 1;
}

int TagEngine::RemovePicture(int i) {
    if (!Put(d->v2.pictures, i, PictureEntry(), true, &d->error))
        return 0;
    d->v2.picturesDirty = true;
    return 1;
}

void TagEngine::ClearPictures() {
    d->v2.pictures.clear();
    d->v2.picturesDirty = true;
}

int TagEngine::GenreCount() const {
    return static_cast<int>(TagLib::ID3v1::genreList().size());
}

QString TagEngine::GenreName(int i) const {
    if (i < 0 || i >= GenreCount())
        return QString();
    return FromTL(TagLib::ID3v1::genre(i));
}

QString HasTagText(const TagEngine& e) {
    QStringList parts;
    if (e.HasV1())
        parts << QStringLiteral("id3v") + e.V1Version();
    if (e.HasV2())
        parts << QStringLiteral("id3v") + e.V2Version();
    if (e.HasApe())
        parts << QStringLiteral("ape") + e.ApeVersion();
    if (e.HasLyrics())
        parts << QStringLiteral("lyrics") + e.LyricsVersion();
    if (e.HasMp4())
        parts << QStringLiteral("mp4");
    if (e.HasWav())
        parts << QStringLiteral("riff info");
    return parts.join(QStringLiteral(", "));
}

QString TypicalColumnText(const TagEngine& e, int type, int i) {
    const TagField* fields = TypicalFields(TypicalSetOfType(type));
    if (!fields || i < 0 || i >= kTypicalFieldCount)
        return QString();
    if (type == 2 && i < 2)
        i = 1 - i;
    return e.Field(fields[i]);
}
