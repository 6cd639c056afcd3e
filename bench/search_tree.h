#pragma once
// Shared by the benchmarks of the searches that open every file of a folder (lyric
// entries, embedded pictures, songs with an "lrc" frame): their tree, with lyric entries,
// pictures and "lrc" frames in its MP3 files, under bench::TreeFolder() as
// qlt_corpus_extras_COUNT; a plain TagLib loop that reads the same frames; the picture
// search over a folder; and the lines that compare a search on one reader and on all
// cores with that loop.

#include "bench_clock.h"
#include "core/DataGrid.h"
#include "list/ftcReadPool.h"
#include "list/modScan.h"
#include "make_corpus.h"
#include "picture/modEmbeddedPictures.h"

#include <QElapsedTimer>
#include <QStringList>
#include <cstdio>
#include <functional>
#include <taglib/fileref.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>

namespace bench {

struct Run {
    double wall = 0, cpu = 0;
    int rows = 0;
};

inline Run Timed(const std::function<int()>& fn) {
    QElapsedTimer t;
    t.start();
    const double c0 = Cpu();
    const int rows = fn();
    return {Seconds(t), Cpu() - c0, rows};
}

// The tree of `count` files with lyrics and pictures; empty when it can't be written.
inline QString SearchTree(int count) {
    const QString root = TreeFolder() + QStringLiteral("/qlt_corpus_extras_%1").arg(count);
    return corpus::MakeCorpus(FixtureDir(), root, count, corpus::LyricsAndPictures(FixtureDir())) ? root
                                                                                                  : QString();
}

// The least any search must do: walk, open each file with its audio data, and read the
// lyric, picture and user frames of its ID3v2 tag. Returns the files opened.
inline int PlainFrameLoop(const QString& root) {
    QStringList entries;
    int count = 0;
    FindFiles(root, QStringLiteral("*"), entries, true, count);
    int files = 0;
    qint64 sink = 0;
    for (const QString& entry : entries) {
        const QByteArray name = QFile::encodeName(entry);
        const TagLib::FileRef ref(name.constData(), true, TagLib::AudioProperties::Average);
        if (ref.isNull())
            continue;
        ++files;
        sink += ref.audioProperties() ? ref.audioProperties()->lengthInMilliseconds() : 0;
        auto* mp3 = dynamic_cast<TagLib::MPEG::File*>(ref.file());
        if (!mp3 || !mp3->hasID3v2Tag())
            continue;
        const TagLib::ID3v2::FrameListMap& frames = mp3->ID3v2Tag()->frameListMap();
        for (const char* id : {"USLT", "APIC", "TXXX"})
            if (frames.contains(id))
                for (const TagLib::ID3v2::Frame* frame : frames[id])
                    sink += frame->size();
    }
    if (sink == 42)
        std::printf(" ");
    return files;
}

// The embedded-picture search over every file below `root`, as the picture area runs it
// with its sub-folders. Returns the songs read.
inline int SearchPicturesBelow(DataGrid& list, TagEngine& engine, const QString& root,
                               const EmbeddedSearch& how) {
    QStringList paths;
    int count = 0;
    FindFiles(root, QStringLiteral("*"), paths, true, count);
    DefineEmbeddedPictureColumns(list);
    return SearchEmbeddedPictures(list, engine, paths, how);
}

// The tree sizes on the command line, 10,000 when none is given.
inline QList<int> TreeCounts(int argc, char** argv) {
    QList<int> counts;
    for (int i = 1; i < argc; ++i)
        if (const int c = QString::fromLocal8Bit(argv[i]).toInt(); c > 0)
            counts << c;
    if (counts.isEmpty())
        counts << 10000;
    return counts;
}

inline void PrintRun(const char* what, const Run& r, const Run& loop, const Run* one) {
    std::printf("%-30s %7.2f s  cpu %6.2f s  (%6d rows)  %5.2fx the loop", what, r.wall, r.cpu, r.rows,
                loop.wall > 0 ? r.wall / loop.wall : 0.0);
    if (one)
        std::printf("  %5.2fx one reader", one->wall > 0 ? r.wall / one->wall : 0.0);
    std::printf("\n");
}

// One search over `root` with one reader and with all cores, after the plain loop; each
// of the three twice, the better pass counting (the machine is shared).
inline void CompareSearch(const char* name, const QString& root,
                          const std::function<int(int threads)>& search) {
    const int threads = ScanReadThreads();
    auto best = [](const std::function<int()>& fn) {
        const Run a = Timed(fn), b = Timed(fn);
        return a.wall <= b.wall ? a : b;
    };
    const Run loop = best([&] { return PlainFrameLoop(root); });
    const Run one = best([&] { return search(1); });
    const Run many = best([&] { return search(threads); });
    std::printf("%-30s %7.2f s  cpu %6.2f s  (%6d files) 1.00x\n", "plain TagLib loop", loop.wall, loop.cpu,
                loop.rows);
    PrintRun(qPrintable(QStringLiteral("%1, 1 reader").arg(QLatin1String(name))), one, loop, nullptr);
    PrintRun(qPrintable(QStringLiteral("%1, %2 readers").arg(QLatin1String(name)).arg(threads)), many, loop,
             &one);
}

} // namespace bench
