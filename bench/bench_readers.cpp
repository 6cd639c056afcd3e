// Where the time of reading on threads goes. Each layer of the parallel scan is timed on
// one thread and on all cores over disjoint shares of the same tree (page cache warm):
//   plain TagLib loop       the practical limit of any reader
//   TagEngine.OpenFile      our reader alone
//   OpenFile + row cells    what a reader of the scan does
//   ReadPool, rows dropped  the same through the pool, results taken in order
//   scan                    the whole scan into a list
// Usage: bench_readers [COUNT [LAYER]]   (default 10000; the tree is /tmp/qlt_corpus_COUNT;
// LAYER plain, open, cells, pool or scan times that layer alone, for a profiler)
#include "bench_clock.h"
#include "core/DataGrid.h"
#include "list/InputColumns.h"
#include "list/ftcReadPool.h"
#include "list/modList.h"
#include "list/modRefresh.h"
#include "list/modScan.h"
#include "make_corpus.h"
#include "tag/TagEngine.h"
#include "tag/TagThreads.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <atomic>
#include <cstdio>
#include <functional>
#include <taglib/audioproperties.h>
#include <taglib/fileref.h>
#include <taglib/tag.h>
#include <thread>
#include <vector>

namespace {

using bench::Cpu;
using bench::Seconds;

std::atomic<qint64> g_sink{0};

// Runs part(share, shares) on `threads` threads and returns wall and CPU seconds.
struct Timed {
    double wall = 0, cpu = 0;
};
Timed OnThreads(int threads, const std::function<void(int, int)>& part) {
    QElapsedTimer t;
    t.start();
    const double c0 = Cpu();
    std::vector<std::thread> th;
    for (int k = 0; k < threads; ++k)
        th.emplace_back(part, k, threads);
    for (std::thread& x : th)
        x.join();
    return {Seconds(t), Cpu() - c0};
}

void PlainLoop(const QStringList& files, int share, int shares) {
    qint64 sink = 0;
    for (int i = share; i < files.size(); i += shares) {
        TagLib::FileRef f(QFile::encodeName(files.at(i)).constData(), true, TagLib::AudioProperties::Average);
        if (f.isNull())
            continue;
        if (TagLib::Tag* tag = f.tag())
            sink += tag->title().size() + tag->artist().size() + tag->album().size() + tag->year();
        if (TagLib::AudioProperties* a = f.audioProperties())
            sink += a->lengthInMilliseconds() + a->bitrate();
    }
    g_sink += sink;
}

void OpenOnly(const QStringList& files, int share, int shares) {
    TagEngine engine;
    qint64 sink = 0;
    for (int i = share; i < files.size(); i += shares)
        sink += engine.OpenFile(files.at(i));
    g_sink += sink;
}

void OpenAndCells(const QStringList& files, int share, int shares) {
    TagEngine engine;
    qint64 sink = 0;
    for (int i = share; i < files.size(); i += shares) {
        const QString& p = files.at(i);
        const QString stamp = FileStampText(p);
        const int type = engine.OpenFile(p);
        sink += FileRowCells(engine, p, type, 0, 6).size() + stamp.size();
    }
    g_sink += sink;
}

void Line(const char* what, const Timed& one, const Timed& many, int threads, double limit) {
    std::printf(
        "%-24s 1: %6.2f s cpu %6.2f   %d: %6.2f s cpu %6.2f   %.2fx of 1, %.2fx of the loop, cpu %.2fx\n",
        what, one.wall, one.cpu, threads, many.wall, many.cpu, one.wall > 0 ? many.wall / one.wall : 0.0,
        limit > 0 ? many.wall / limit : 0.0, one.cpu > 0 ? many.cpu / one.cpu : 0.0);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int count = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 10000;
    const QString root = bench::TreeFolder() + QStringLiteral("/qlt_corpus_%1").arg(count);
    if (!corpus::MakeCorpus(bench::FixtureDir(), root, count)) {
        std::printf("could not write the tree %s\n", qPrintable(root));
        return 1;
    }
    QStringList files;
    int n = 0;
    QElapsedTimer walk;
    walk.start();
    FindFiles(root, QStringLiteral("*"), files, true, n);
    const double walkTime = Seconds(walk);
    PrepareTagReadersForThreads();
    const int threads = MachineReadThreads();
    std::printf("== %lld files, %d threads; the walk %.2f s\n", qint64(files.size()), threads, walkTime);
    PlainLoop(files, 0, 1); // warm the page cache

    const QString only = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QString();
    const auto wanted = [&only](const char* layer) { return only.isEmpty() || only == QLatin1String(layer); };
    const auto plain = [&](int s, int k) { PlainLoop(files, s, k); };
    const Timed p1 = OnThreads(1, plain);
    if (wanted("plain"))
        Line("plain TagLib loop", p1, OnThreads(threads, plain), threads, p1.wall);
    const auto open = [&](int s, int k) { OpenOnly(files, s, k); };
    if (wanted("open"))
        Line("TagEngine.OpenFile", OnThreads(1, open), OnThreads(threads, open), threads, p1.wall);
    const auto cells = [&](int s, int k) { OpenAndCells(files, s, k); };
    if (wanted("cells"))
        Line("OpenFile + row cells", OnThreads(1, cells), OnThreads(threads, cells), threads, p1.wall);

    const auto pool = [&](int t) {
        QElapsedTimer w;
        w.start();
        const double c0 = Cpu();
        TagEngine engine;
        ReadPool rp(int(files.size()), t, engine, [&files](TagEngine& e, int i, FileRead& out) {
            const QString& p = files.at(i);
            out.stamp = FileStampText(p);
            out.type = e.OpenFile(p);
            out.cells = FileRowCells(e, p, out.type, 0, 6);
        });
        qint64 sink = 0;
        for (int i = 0; i < files.size(); ++i)
            sink += rp.Take(i, {}).cells.size();
        rp.Stop();
        g_sink += sink;
        return Timed{Seconds(w), Cpu() - c0};
    };
    if (wanted("pool"))
        Line("ReadPool, rows dropped", pool(1), pool(threads), threads, p1.wall);

    const auto scan = [&](int t) {
        DataGrid list;
        const bench::WallCpu timed = bench::ScanTree(list, root, t);
        const Timed done{timed.wall, timed.cpu};
        if (t == 1) {
            // The steps after the reading, which no reader shares.
            QElapsedTimer w;
            w.start();
            list.DoSort(QStringLiteral("7,3"), 1);
            std::printf("  (sort \"7,3\" of the rows %.2f s)\n", Seconds(w));
        }
        return done;
    };
    if (wanted("scan"))
        Line("scan into a list", scan(1), scan(threads), threads, p1.wall);
    return g_sink == 42 ? 1 : 0;
}
