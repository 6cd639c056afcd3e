// Reading tags at scan speed: 10,000 small files with varied tags, each opened and all of
// its sets read through TagEngine, against a plain TagLib FileRef with audio properties.
//   bench_tagread [fixture folder] [file count]
#include "tag/TagEngine.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <taglib/fileref.h>

namespace {

const char* kFixtures[] = {"tone.mp3", "tone.mp3", "tone.mp3", "tone.mp3", "tone.flac",
                           "tone.ogg", "tone.wma", "tone.m4a", "tone.mpc", "tone.aac"};

// Reads everything a row of the data list needs.
qint64 ReadAllSets(TagEngine& e) {
    qint64 n = 0;
    for (int i = 0; i < kTagFieldCount; ++i)
        n += e.Field(static_cast<TagField>(i)).size();
    n += e.CommentText(1).size() + e.LyricCount() + e.PictureCount() + e.V2Rating().size();
    n += e.V1Version().size() + e.V2Version().size() + e.ApeVersion().size() + e.LyricsVersion().size();
    n += static_cast<qint64>(e.DurationSeconds()) + e.Bitrate() + e.Frequency();
    return n;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    const QString fixtures = args.size() > 1 ? args.at(1) : QStringLiteral(QLT_SOURCE_DIR "/tests/fixtures");
    const int count = args.size() > 2 ? args.at(2).toInt() : 10000;
    QTemporaryDir dir;
    std::printf("making %d files in %s ...\n", count, qPrintable(dir.path()));
    // Tagging goes through fsync, so a set of tagged templates is made first and the
    // 10,000 files are copies of them.
    constexpr int kTemplates = 40;
    QStringList templates;
    TagEngine e;
    for (int i = 0; i < kTemplates; ++i) {
        const QString fixture = QString::fromLatin1(kFixtures[i % std::size(kFixtures)]);
        const QString path = dir.path() + QStringLiteral("/template-%1-%2").arg(i).arg(fixture);
        if (!QFile::copy(fixtures + QLatin1Char('/') + fixture, path)) {
            std::fprintf(stderr, "can't copy %s\n", qPrintable(fixture));
            return 1;
        }
        templates << path;
        if (i % 3 == 2)
            continue; // a third stays untagged
        const int type = e.OpenFile(path);
        const QString tag = QStringLiteral("Song %1 ✓").arg(i);
        if (type == 1 || type == 7) {
            e.SetV2Title(tag);
            e.SetV2Artist(QStringLiteral("Artist %1").arg(i % 97));
            e.SetComment(1, QStringLiteral("eng"), QString(), QStringLiteral("comment"));
            e.SetUserFrame(0, QStringLiteral("QLT"), QStringLiteral("QLT%1").arg(i % 5));
            e.SetV1Title(tag);
            e.SaveV2(path);
            e.SaveV1(path);
            if (i % 2 == 0) {
                e.SetApeTitle(tag);
                e.SaveApe(path);
            }
            if (i % 4 == 0) {
                e.SetLyricsLyric(QStringLiteral("la la la"));
                e.SaveLyrics(path);
            }
        } else if (type == 4) {
            e.SetFlacTitle(tag);
            e.SaveFlac(path);
        } else if (type == 6) {
            e.SetOggTitle(tag);
            e.SaveOgg(path);
        } else if (type == 2) {
            e.SetWmaTitle(tag);
            e.SaveWma(path);
        } else if (type == 8) {
            e.SetV2Title(tag);
            e.SaveV2(path);
        }
    }
    QStringList files;
    for (int i = 0; i < count; ++i) {
        const QString& from = templates.at(i % kTemplates);
        const QString path =
            dir.path() +
            QStringLiteral("/%1-%2").arg(i, 5, 10, QLatin1Char('0')).arg(QFileInfo(from).fileName());
        if (!QFile::copy(from, path)) {
            std::fprintf(stderr, "can't copy %s\n", qPrintable(from));
            return 1;
        }
        files << path;
    }

    // Warm the page cache once so both runs read from memory.
    for (const QString& f : files)
        TagLib::FileRef(QFile::encodeName(f).constData(), true, TagLib::AudioProperties::Fast);

    qint64 sum = 0;
    QElapsedTimer t;
    t.start();
    for (const QString& f : files) {
        TagLib::FileRef ref(QFile::encodeName(f).constData(), true, TagLib::AudioProperties::Fast);
        if (!ref.isNull() && ref.tag())
            sum += ref.tag()->title().size() + ref.audioProperties()->lengthInMilliseconds();
    }
    const double fileRefMs = static_cast<double>(t.nsecsElapsed()) / 1e6;

    t.restart();
    int opened = 0;
    for (const QString& f : files) {
        if (e.OpenFile(f) != 0) {
            ++opened;
            sum += ReadAllSets(e);
        }
    }
    const double engineMs = static_cast<double>(t.nsecsElapsed()) / 1e6;

    std::printf("files: %d (opened by the engine: %d)\n", static_cast<int>(files.size()), opened);
    std::printf("TagLib FileRef with audio properties: %8.1f ms  (%.1f us per file)\n", fileRefMs,
                fileRefMs * 1000.0 / files.size());
    std::printf("TagEngine, all sets:                  %8.1f ms  (%.1f us per file)\n", engineMs,
                engineMs * 1000.0 / files.size());
    std::printf("ratio engine / FileRef: %.2f (checksum %lld)\n", engineMs / fileRefMs,
                static_cast<long long>(sum));
    return 0;
}
