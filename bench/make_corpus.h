#pragma once
// Generator of a test collection for the benchmarks: a tree of small real audio files
// (copies of the test fixtures) with varied tags, 100 files per folder, in
// "Artist NNN/Album M/" folders, named "NN - Artist NNN - Title NNNNN.ext".
//
// A set of tagged templates per format is written with TagLib first; the files of the
// tree are byte copies of those templates, so that 100,000 files take seconds, not
// minutes. The tree lives under /tmp, never in the repository. A tree that exists with
// the marker file ".complete" is used as it stands. A caller may give each template more
// (lyrics, pictures) through a hook that gets the template's path, extension and variant.

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>
#include <cstdio>
#include <functional>
#include <taglib/apetag.h>
#include <taglib/attachedpictureframe.h>
#include <taglib/fileref.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/tag.h>
#include <taglib/textidentificationframe.h>
#include <taglib/unsynchronizedlyricsframe.h>
#include <vector>

namespace corpus {

using TemplateHook = std::function<void(const QString& path, const QString& ext, int variant)>;

struct Template {
    QString ext;
    QByteArray bytes;
};

inline TagLib::String T(const QString& s) {
    return TagLib::String(s.toStdString(), TagLib::String::UTF8);
}

// Writes `variants` tagged copies of each fixture and returns them in memory.
inline std::vector<std::vector<Template>> MakeTemplates(const QString& fixtureDir, const QString& work,
                                                        int variants, const TemplateHook& hook = {}) {
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
            if (hook)
                hook(path, ext, v);
            QFile in(path);
            if (in.open(QIODevice::ReadOnly))
                set.push_back({ext, in.readAll()});
            QFile::remove(path);
        }
        out.push_back(std::move(set));
    }
    return out;
}

// A hook for the searches of lyrics and pictures: the MP3 templates get 0 to 3 lyric
// entries; no picture, a cover (fixture cover.jpg), or a cover and a link to a picture
// file, of varied types; every fifth an "LRC" user frame, some of them behind another.
inline TemplateHook LyricsAndPictures(const QString& fixtureDir) {
    QFile cover(fixtureDir + "/cover.jpg");
    QByteArray jpeg = cover.open(QIODevice::ReadOnly) ? cover.readAll() : QByteArray();
    return [jpeg](const QString& path, const QString& ext, int v) {
        if (ext != QLatin1String("mp3"))
            return;
        TagLib::MPEG::File f(QFile::encodeName(path).constData());
        TagLib::ID3v2::Tag* tag = f.ID3v2Tag(true);
        static const char* languages[] = {"ger", "eng", "fra"};
        for (int i = 1; i <= v % 4; ++i) {
            auto* frame = new TagLib::ID3v2::UnsynchronizedLyricsFrame(TagLib::String::UTF8);
            frame->setLanguage(languages[(v + i) % 3]);
            frame->setDescription(T(QStringLiteral("Strophe %1/%2 ä").arg(i).arg(v)));
            frame->setText(T(QStringLiteral("Zeile eins %1\r\nZeile zwei").arg(v)));
            tag->addFrame(frame);
        }
        if (v % 3 >= 1) {
            auto* frame = new TagLib::ID3v2::AttachedPictureFrame;
            frame->setMimeType("image/jpeg");
            frame->setDescription(T(QStringLiteral("Cover %1").arg(v)));
            frame->setType(TagLib::ID3v2::AttachedPictureFrame::Type(v % 21));
            frame->setPicture(TagLib::ByteVector(jpeg.constData(), unsigned(jpeg.size())));
            tag->addFrame(frame);
        }
        if (v % 3 == 2) {
            auto* frame = new TagLib::ID3v2::AttachedPictureFrame;
            frame->setMimeType(T(QStringLiteral("-->/pictures/Bild %1.png").arg(v)));
            frame->setDescription("Link");
            frame->setType(TagLib::ID3v2::AttachedPictureFrame::Type((v + 7) % 21));
            tag->addFrame(frame);
        }
        if (v % 5 == 1) {
            auto* frame = new TagLib::ID3v2::UserTextIdentificationFrame(TagLib::String::UTF8);
            frame->setDescription("LRC");
            frame->setText(T(QStringLiteral("[00:01.00]Zeile %1").arg(v)));
            tag->addFrame(frame);
        }
        f.save(TagLib::MPEG::File::AllTags, TagLib::File::StripNone, TagLib::ID3v2::v3);
    };
}

// The tree of `count` files under `root`; returns false when it can't be written.
inline bool MakeCorpus(const QString& fixtureDir, const QString& root, int count,
                       const TemplateHook& hook = {}) {
    if (QFile::exists(root + "/.complete"))
        return true;
    QDir(root).removeRecursively();
    const auto templates = MakeTemplates(fixtureDir, root + "-templates", 32, hook);
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
