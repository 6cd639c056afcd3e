#pragma once
// Generator of a test collection for the benchmarks: a tree of small real audio files
// (copies of the test fixtures) with varied tags, 100 files per folder, in
// "Artist NNN/Album M/" folders, named "NN - Artist NNN - Title NNNNN.ext".
//
// A set of tagged templates per format is written with TagLib first; the files of the
// tree are byte copies of those templates, so that 100,000 files take seconds, not
// minutes. The tree lives under /tmp, never in the repository. A tree that exists with
// the marker file ".complete" is used as it stands.

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>
#include <cstdio>
#include <taglib/apetag.h>
#include <taglib/fileref.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/tag.h>
#include <taglib/textidentificationframe.h>
#include <vector>

namespace corpus {

struct Template {
    QString ext;
    QByteArray bytes;
};

inline TagLib::String T(const QString& s) {
    return TagLib::String(s.toStdString(), TagLib::String::UTF8);
}

// Writes `variants` tagged copies of each fixture and returns them in memory.
inline std::vector<std::vector<Template>> MakeTemplates(const QString& fixtureDir, const QString& work,
                                                        int variants) {
    // The mix of a typical collection: mostly MP3, then FLAC, OGG, M4A, WMA, the rest.
    const QStringList fixtures = {"tone.mp3", "tone.mp3",  "tone.mp3",  "tone.mp3", "tone.mp3",
                                  "tone.mp3", "tone.flac", "tone.flac", "tone.ogg", "tone.m4a",
                                  "tone.wma", "tone.mpc",  "tone.ape",  "tone.wav"};
    static const char* genres[] = {"Rock",  "Pop",  "Jazz",       "Klassik",
                                   "Blues", "Folk", "Electronic", "Hip-Hop"};
    std::vector<std::vector<Template>> out;
    QDir().mkpath(work);
    int serial = 0;
    for (const QString& fx : fixtures) {
        std::vector<Template> set;
        const QString ext = fx.mid(fx.lastIndexOf('.') + 1);
        for (int v = 0; v < variants; ++v, ++serial) {
            const QString path = work + QStringLiteral("/t%1.%2").arg(serial).arg(ext);
            QFile::remove(path);
            if (!QFile::copy(fixtureDir + "/" + fx, path))
                continue;
            QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
            const QString artist = QStringLiteral("Künstler %1").arg(v % 37);
            const QString title = QStringLiteral("Titel %1 é").arg(serial);
            const QString album = QStringLiteral("Album %1").arg(v % 11);
            const QString comment = QStringLiteral("Kommentar %1").arg(v);
            if (ext == QLatin1String("mp3")) {
                TagLib::MPEG::File f(QFile::encodeName(path).constData());
                for (TagLib::Tag* t : {static_cast<TagLib::Tag*>(f.ID3v2Tag(true)),
                                       static_cast<TagLib::Tag*>(f.ID3v1Tag(v % 2 == 0))}) {
                    if (!t)
                        continue;
                    t->setArtist(T(artist));
                    t->setTitle(T(title));
                    t->setAlbum(T(album));
                    t->setComment(T(comment));
                    t->setGenre(genres[v % 8]);
                    t->setYear(1960 + v % 60);
                    t->setTrack(1 + v % 20);
                }
                if (v % 3 == 0) {
                    auto* frame = new TagLib::ID3v2::UserTextIdentificationFrame(TagLib::String::UTF8);
                    frame->setDescription("QLT");
                    frame->setText(T(QStringLiteral("QLT") + QString(1 + v % 5, '*')));
                    f.ID3v2Tag(true)->addFrame(frame);
                }
                if (v % 5 == 0) {
                    TagLib::APE::Tag* ape = f.APETag(true);
                    ape->setArtist(T(artist));
                    ape->setTitle(T(title));
                }
                f.save(TagLib::MPEG::File::AllTags, TagLib::File::StripNone, TagLib::ID3v2::v3);
            } else if (ext != QLatin1String("wav")) {
                TagLib::FileRef f(QFile::encodeName(path).constData(), false);
                if (!f.isNull() && f.tag()) {
                    f.tag()->setArtist(T(artist));
                    f.tag()->setTitle(T(title));
                    f.tag()->setAlbum(T(album));
                    f.tag()->setComment(T(comment));
                    f.tag()->setGenre(genres[v % 8]);
                    f.tag()->setYear(1960 + v % 60);
                    f.tag()->setTrack(1 + v % 20);
                    f.save();
                }
            }
            QFile in(path);
            if (in.open(QIODevice::ReadOnly))
                set.push_back({ext, in.readAll()});
            QFile::remove(path);
        }
        out.push_back(std::move(set));
    }
    return out;
}

// The tree of `count` files under `root`; returns false when it can't be written.
inline bool MakeCorpus(const QString& fixtureDir, const QString& root, int count) {
    if (QFile::exists(root + "/.complete"))
        return true;
    QDir(root).removeRecursively();
    const auto templates = MakeTemplates(fixtureDir, root + "-templates", 32);
    QDir(root + "-templates").removeRecursively();
    std::size_t kinds = templates.size();
    if (kinds == 0)
        return false;
    for (int i = 0; i < count; ++i) {
        const int folder = i / 100;
        const QString dir =
            root + QStringLiteral("/Artist %1/Album %2").arg(folder / 10, 3, 10, QChar('0')).arg(folder % 10);
        if (i % 100 == 0 && !QDir().mkpath(dir))
            return false;
        const auto& set = templates[std::size_t(i) % kinds];
        if (set.empty())
            continue;
        const Template& t = set[std::size_t(i / int(kinds)) % set.size()];
        const QString name = QStringLiteral("%1 - Artist %2 - Title %3.%4")
                                 .arg(1 + i % 100, 2, 10, QChar('0'))
                                 .arg(folder, 3, 10, QChar('0'))
                                 .arg(i, 6, 10, QChar('0'))
                                 .arg(t.ext);
        QFile f(dir + "/" + name);
        if (!f.open(QIODevice::WriteOnly) || f.write(t.bytes) != t.bytes.size())
            return false;
        if (i % 10000 == 9999) {
            std::fprintf(stderr, "  %d files written\n", i + 1);
        }
    }
    QFile done(root + "/.complete");
    return done.open(QIODevice::WriteOnly);
}

} // namespace corpus
