// The folder scan against its practical limit: a plain TagLib read loop over the same
// files, with one reader and with all cores, from the page cache and from the disk
// (the tree's pages dropped with posix_fadvise). Then the refresh of the resulting list
// with no file and with 1 % of the files changed, and save and load of the list. Usage:
//   bench_scan [COUNT...]      (default 10000; the trees go to /tmp/qlt_corpus_COUNT, or
//                               under QLT_BENCH_TREES; on a tmpfs the cold pass is left out)
#include "bench_clock.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/ftcReadPool.h"
#include "list/modList.h"
#include "list/modRefresh.h"
#include "list/modSavedLists.h"
#include "list/modScan.h"
#include "make_corpus.h"
#include "tag/TagEngine.h"
#include "tag/TagThreads.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <taglib/audioproperties.h>
#include <unistd.h>

namespace {

using bench::Cpu;
using bench::FixtureDir;
using bench::Seconds;

// What any tag reader must at least do: walk, open each file, read its tag and audio data.
double PlainTagLibLoop(const QString& root, int& files) {
    QElapsedTimer t;
    t.start();
    QStringList entries;
    int count = 0;
    FindFiles(root, QStringLiteral("*"), entries, true, count);
    files = 0;
    qint64 sink = 0;
    for (const QString& p : entries) {
        TagLib::FileRef f(QFile::encodeName(p).constData(), true, TagLib::AudioProperties::Average);
        if (f.isNull())
            continue;
        ++files;
        if (TagLib::Tag* tag = f.tag()) {
            sink += tag->title().size() + tag->artist().size() + tag->album().size() + tag->comment().size() +
                    tag->genre().size() + tag->year() + tag->track();
        }
        if (TagLib::AudioProperties* a = f.audioProperties())
            sink += a->lengthInMilliseconds() + a->bitrate() + a->sampleRate();
    }
    if (sink == 42)
        std::printf(" ");
    return Seconds(t);
}

// Drops the tree's pages from the page cache, so that the next pass reads from the disk.
void DropCache(const QString& root) {
    QStringList entries;
    int n = 0;
    FindFiles(root, QStringLiteral("*"), entries, true, n);
    for (const QString& p : entries) {
        const int fd = ::open(QFile::encodeName(p).constData(), O_RDONLY);
        if (fd < 0)
            continue;
        ::fdatasync(fd);
        ::posix_fadvise(fd, 0, 0, POSIX_FADV_DONTNEED);
        ::close(fd);
    }
}

struct Timed {
    double wall = 0, cpu = 0;
    int rows = 0;
};

Timed TimeScan(const QString& root, int threads, DataGrid* keep = nullptr) {
    DataGrid local;
    DataGrid& list = keep ? *keep : local;
    const bench::WallCpu t = bench::ScanTree(list, root, threads);
    return {t.wall, t.cpu, list.Rows()};
}

// The sequential and the parallel scan against the plain loop, in one run.
void CompareScans(const QString& root, const char* what, bool cold, DataGrid& keep) {
    const int threads = MachineReadThreads();
    int files = 0;
    if (cold)
        DropCache(root);
    const double c0 = Cpu();
    const double limit = PlainTagLibLoop(root, files);
    const double limitCpu = Cpu() - c0;
    if (cold)
        DropCache(root);
    const Timed one = TimeScan(root, 1);
    if (cold)
        DropCache(root);
    const Timed many = TimeScan(root, threads, &keep);
    std::printf("-- %s\n", what);
    std::printf("plain TagLib loop   %8.2f s  cpu %6.2f s  (%d files)   1.00x\n", limit, limitCpu, files);
    std::printf("scan, 1 thread      %8.2f s  cpu %6.2f s  (%d rows)  %.2fx of the loop\n", one.wall, one.cpu,
                one.rows, limit > 0 ? one.wall / limit : 0.0);
    std::printf(
        "scan, %d threads     %8.2f s  cpu %6.2f s  (%d rows)  %.2fx of the loop, %.2fx of 1 thread\n",
        threads, many.wall, many.cpu, many.rows, limit > 0 ? many.wall / limit : 0.0,
        one.wall > 0 ? many.wall / one.wall : 0.0);
}

// The refresh of the list just scanned: nothing changed, then 1 % of the files touched.
void TimeRefresh(DataGrid& list) {
    ScriptedPrompt prompt;
    TagEngine engine;
    QElapsedTimer t;
    t.start();
    RefreshResult r = RefreshChanged(list, engine, prompt);
    std::printf("refresh, unchanged  %8.2f s  (%d rows, %d read again)\n", Seconds(t), r.rows, r.reread);
    int touched = 0;
    for (int row = 1; row <= list.Rows(); row += 100, ++touched) {
        const QString p = list.CellText(row, 7) + QLatin1Char('/') + list.CellText(row, 3);
        struct timespec times[2] = {{0, UTIME_OMIT}, {0, UTIME_NOW}};
        ::utimensat(AT_FDCWD, QFile::encodeName(p).constData(), times, 0);
    }
    t.restart();
    r = RefreshChanged(list, engine, prompt);
    std::printf("refresh, 1%% changed %8.2f s  (%d rows, %d touched, %d read again)\n", Seconds(t), r.rows,
                touched, r.reread);
}

void RunOne(int count) {
    const QString root = bench::TreeFolder() + QStringLiteral("/qlt_corpus_%1").arg(count);
    QElapsedTimer gen;
    gen.start();
    if (!corpus::MakeCorpus(FixtureDir(), root, count)) {
        std::printf("could not write the tree %s\n", qPrintable(root));
        return;
    }
    std::printf("\n== %d files in %s (ready in %.1f s)\n", count, qPrintable(root), Seconds(gen));

    // Warm the page cache once, so that both runs read from memory.
    int files = 0;
    PlainTagLibLoop(root, files);
    double cpu0 = Cpu();
    const double limit = PlainTagLibLoop(root, files);
    const double limitCpu = Cpu() - cpu0;
    std::printf("plain TagLib loop   %8.2f s  cpu %6.2f s  (%d files)   1.00x\n", limit, limitCpu, files);

    TagEngine engine;
    {
        // The engine alone: the share of the scan that is reading the files.
        QElapsedTimer t;
        t.start();
        const double c0 = Cpu();
        QStringList entries;
        int n = 0;
        FindFiles(root, QStringLiteral("*"), entries, true, n);
        for (const QString& p : entries)
            engine.OpenFile(p);
        const double open = Seconds(t);
        const double openCpu = Cpu() - c0;
        std::printf(
            "TagEngine.OpenFile  %8.2f s  cpu %6.2f s                 %.2fx of the loop (cpu %.2fx)\n", open,
            openCpu, limit > 0 ? open / limit : 0.0, limitCpu > 0 ? openCpu / limitCpu : 0.0);
    }

    DataGrid list;
    EnsureInputColumns(list);
    ScanOptions o;
    o.subFolders = true;
    o.threads = 1;
    QElapsedTimer t;
    t.start();
    cpu0 = Cpu();
    const ScanResult r = ScanFolder(list, root, o, engine);
    const double scan = Seconds(t);
    const double scanCpu = Cpu() - cpu0;
    std::printf("scan (71 cells)     %8.2f s  cpu %6.2f s  (%d rows)  %.2fx of the loop (cpu %.2fx)\n", scan,
                scanCpu, list.Rows(), limit > 0 ? scan / limit : 0.0,
                limitCpu > 0 ? scanCpu / limitCpu : 0.0);
    if (r.failures)
        std::printf("  failures: %d\n", r.failures);
    {
        // The engine alone again, now with the full list in memory: how much of the scan's
        // extra time is the allocator working around 100,000 live rows.
        QElapsedTimer t2;
        t2.start();
        const double c0 = Cpu();
        QStringList entries;
        int n = 0;
        FindFiles(root, QStringLiteral("*"), entries, true, n);
        for (const QString& p : entries)
            engine.OpenFile(p);
        std::printf("  OpenFile again, list in memory %.2f s  cpu %.2f s\n", Seconds(t2), Cpu() - c0);
    }
    {
        // The closing steps of the scan, once more on the full list.
        QElapsedTimer c;
        c.start();
        list.DoSort(QStringLiteral("3"), 1);
        list.DoSort(QStringLiteral("7,3"), 1);
        const double sort = Seconds(c) / 2;
        c.restart();
        QStringList ratings, moods;
        RebuildValueLists(list, ratings, moods);
        ShowTotals(list);
        std::printf("  of which sort \"7,3\" %.2f s, totals and value lists %.2f s\n", sort, Seconds(c));
    }

    {
        // Sequential against parallel, in the page cache and from the disk.
        DataGrid scanned;
        CompareScans(root, "files in the page cache", false, scanned);
        TimeRefresh(scanned);
        struct statfs fs {};
        if (::statfs(QFile::encodeName(root).constData(), &fs) == 0 && fs.f_type == TMPFS_MAGIC) {
            std::printf("-- the tree lies on a tmpfs, whose pages can't be dropped: no pass from the disk\n");
        } else {
            DataGrid cold;
            CompareScans(root, "pages of the tree dropped before each pass", true, cold);
        }
    }

    ScriptedPrompt prompt;
    SavedListOptions so;
    so.noMsg = true;
    const QString data = root + ".data";
    t.restart();
    const bool saved = SaveList(list, data, so, prompt);
    const double save = Seconds(t);
    std::printf("save .data          %8.2f s  %s (%.1f MB)\n", save, saved ? "ok" : "FAILED",
                double(QFileInfo(data).size()) / 1048576.0);

    DataGrid loaded;
    EnsureInputColumns(loaded);
    t.restart();
    const LoadListResult lr = LoadList(loaded, data, so, {}, prompt);
    const double load = Seconds(t);
    std::printf("load .data          %8.2f s  %s (%d rows, %d missing)\n", load, lr.loaded ? "ok" : "FAILED",
                loaded.Rows(), lr.missing);
    QFile::remove(data);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QList<int> counts;
    for (int i = 1; i < argc; ++i)
        counts << QString::fromLocal8Bit(argv[i]).toInt();
    if (counts.isEmpty())
        counts << 10000;
    for (int c : counts)
        if (c > 0)
            RunOne(c);
    return 0;
}
