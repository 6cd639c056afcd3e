// quillotune-cli pictures: lists, exports, adds and removes the pictures inside songs,
// through the tag engine's picture roles and its safe saves.
#include "cli/CliCommands.h"
#include "picture/image/ftcPictureFile.h"
#include "picture/modEmbeddedPictures.h"
#include "platform/PosixFile.h"
#include "platform/SafeFile.h"
#include "tag/TagEngine.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const char kUsage[] =
    "usage: quillotune-cli pictures SONG... [--json]\n"
    "       quillotune-cli pictures SONG... --export DIR\n"
    "       quillotune-cli pictures --add SONG PICTURE [--type N] [--description TEXT] [--link]\n"
    "       quillotune-cli pictures --remove SONG N|all\n"
    "  The first form lists the pictures in the ID3v2 tag of each song: index, type (number\n"
    "  and name), mime type or, for a link, the linked path, description, size in bytes and\n"
    "  width x height. --export writes each embedded picture into DIR as the song's base\n"
    "  name, \"_\", the index with two digits and the format (\"Song_01.jpg\"); links are\n"
    "  left out. --add appends PICTURE (type 3, front cover, by default); with --link only\n"
    "  a link to the picture's path is stored. --remove takes picture N, or all of them.";

QString SongBase(const QString& song) {
    QString name = song.mid(song.lastIndexOf(u'/') + 1);
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 ? name.left(dot) : name;
}

bool OpenSong(TagEngine& engine, const QString& song) {
    if (engine.OpenFile(song) != 0)
        return true;
    Err(QStringLiteral("quillotune-cli: cannot read %1: %2")
            .arg(PosixFile::DisplayName(song), engine.LastError()));
    return false;
}

int List(const QStringList& songs, bool json) {
    TagEngine engine;
    int failed = 0;
    QJsonArray all;
    for (const QString& song : songs) {
        if (!OpenSong(engine, song)) {
            ++failed;
            continue;
        }
        QJsonArray pictures;
        if (!json)
            Out(PosixFile::DisplayName(song));
        for (int i = 1; i <= engine.PictureCount(); ++i) {
            const QString mime = engine.PictureMime(i);
            const bool link = IsPictureLinkMime(mime);
            QSize size;
            if (link)
                size = PictureFileSize(PictureLinkPath(mime));
            else
                size = PictureDataSize(engine.PictureData(i));
            const QString dims =
                size.isValid() ? QStringLiteral("%1x%2").arg(size.width()).arg(size.height()) : QString();
            const int type = engine.PictureType(i);
            if (json) {
                QJsonObject o;
                o.insert(QStringLiteral("index"), i);
                o.insert(QStringLiteral("type"), type);
                o.insert(QStringLiteral("typeName"), PictureTypeName(type));
                if (link)
                    o.insert(QStringLiteral("link"), PictureLinkPath(mime));
                else
                    o.insert(QStringLiteral("mime"), mime);
                o.insert(QStringLiteral("description"), engine.PictureDescription(i));
                o.insert(QStringLiteral("size"), double(engine.PictureSize(i)));
                o.insert(QStringLiteral("dimensions"), dims);
                pictures.append(o);
            } else {
                Out(QStringLiteral("  %1\t%2 %3\t%4\t%5\t%6\t%7")
                        .arg(i, 2, 10, QLatin1Char('0'))
                        .arg(type)
                        .arg(PictureTypeName(type),
                             link ? QStringLiteral("--> ") + PictureLinkPath(mime) : mime,
                             engine.PictureDescription(i))
                        .arg(engine.PictureSize(i))
                        .arg(dims.isEmpty() ? QStringLiteral("?") : dims));
            }
        }
        if (json) {
            QJsonObject s;
            s.insert(QStringLiteral("song"), song);
            s.insert(QStringLiteral("pictures"), pictures);
            all.append(s);
        }
    }
    if (json)
        Out(QString::fromUtf8(QJsonDocument(all).toJson(QJsonDocument::Indented)).trimmed());
    return failed ? 1 : 0;
}

int Export(const QStringList& songs, const QString& dir) {
    TagEngine engine;
    int failed = 0, written = 0;
    for (const QString& song : songs) {
        if (!OpenSong(engine, song)) {
            ++failed;
            continue;
        }
        for (int i = 1; i <= engine.PictureCount(); ++i) {
            const QString mime = engine.PictureMime(i);
            if (IsPictureLinkMime(mime))
                continue;
            const QString target =
                dir + u'/' + EmbeddedPictureFileName(SongBase(song), i, engine.PictureDescription(i), mime);
            QString why;
            if (!SafeFile::WriteWholeFile(target, engine.PictureData(i), &why)) {
                Err(QStringLiteral("quillotune-cli: cannot write %1: %2")
                        .arg(PosixFile::DisplayName(target), why));
                ++failed;
                continue;
            }
            Out(target);
            ++written;
        }
    }
    Out(QStringLiteral("pictures written: %1").arg(written));
    return failed ? 1 : 0;
}

int Add(const QString& song, const QString& picture, int type, const QString& description, bool link) {
    if (!link && !PictureFileSize(picture).isValid()) {
        Err(QStringLiteral("quillotune-cli: %1 is no picture that can be read")
                .arg(PosixFile::DisplayName(picture)));
        return 1;
    }
    QString absolute = picture;
    if (link && !absolute.startsWith(u'/'))
        absolute = PosixFile::AbsolutePath(picture);
    TagEngine engine;
    QString error;
    if (!StorePictureInSong(engine, song, absolute, description, type, 0, link, &error)) {
        Err(QStringLiteral("quillotune-cli: %1: %2").arg(PosixFile::DisplayName(song), error));
        return 1;
    }
    Out(QStringLiteral("pictures in %1: %2").arg(PosixFile::DisplayName(song)).arg(engine.PictureCount()));
    return 0;
}

int Remove(const QString& song, const QString& which) {
    TagEngine engine;
    int index = 0;
    if (which != QLatin1String("all")) {
        bool ok = false;
        index = which.toInt(&ok);
        if (!ok || index < 1) {
            Err(QStringLiteral("quillotune-cli: --remove takes a picture number or \"all\""));
            return 2;
        }
        if (engine.OpenFile(song) != 0 && index > engine.PictureCount()) {
            Err(QStringLiteral("quillotune-cli: %1 has no picture number %2")
                    .arg(PosixFile::DisplayName(song))
                    .arg(index));
            return 1;
        }
    }
    QString error;
    if (!RemoveSongPictures(engine, song, index, &error)) {
        Err(QStringLiteral("quillotune-cli: %1: %2").arg(PosixFile::DisplayName(song), error));
        return 1;
    }
    Out(QStringLiteral("pictures in %1: %2").arg(PosixFile::DisplayName(song)).arg(engine.PictureCount()));
    return 0;
}

} // namespace

int RunPictures(const QStringList& args) {
    bool json = false, link = false;
    QString exportDir, removeWhich, description;
    int type = 3;
    QStringList plain;
    enum { ListMode, AddMode, RemoveMode } mode = ListMode;
    auto usage = [] {
        Err(QLatin1String(kUsage));
        return 2;
    };
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            Out(QLatin1String(kUsage));
            return 0;
        } else if (a == QLatin1String("--json")) {
            json = true;
        } else if (a == QLatin1String("--link")) {
            link = true;
        } else if (a == QLatin1String("--add")) {
            mode = AddMode;
        } else if (a == QLatin1String("--remove")) {
            mode = RemoveMode;
        } else if (a == QLatin1String("--export") || a == QLatin1String("--type") ||
                   a == QLatin1String("--description")) {
            if (i + 1 >= args.size())
                return usage();
            const QString v = args[++i];
            if (a == QLatin1String("--export")) {
                exportDir = v;
            } else if (a == QLatin1String("--description")) {
                description = v;
            } else {
                bool ok = false;
                type = v.toInt(&ok);
                if (!ok || type < 0 || type > 255)
                    return usage();
            }
        } else if (a.startsWith(QLatin1String("--"))) {
            return usage();
        } else {
            plain << a;
        }
    }
    if (mode == AddMode)
        return plain.size() == 2 ? Add(plain[0], plain[1], type, description, link) : usage();
    if (mode == RemoveMode)
        return plain.size() == 2 ? Remove(plain[0], plain[1]) : usage();
    if (plain.isEmpty())
        return usage();
    if (!exportDir.isEmpty()) {
        if (!QDir(exportDir).exists()) {
            Err(QStringLiteral("quillotune-cli: the folder %1 is not there").arg(exportDir));
            return 1;
        }
        return Export(plain, exportDir);
    }
    return List(plain, json);
}
