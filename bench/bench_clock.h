#pragma once
// Small helpers shared by the scan benchmarks: where the fixtures lie, and the clocks.

#include "core/DataGrid.h"
#include "list/modScan.h"
#include "tag/TagEngine.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QString>
#include <ctime>

namespace bench {

// The fixtures of the tests: QLT_FIXTURE_DIR, else tests/fixtures of the source tree
// above the build folder.
inline QString FixtureDir() {
    const QString env = qEnvironmentVariable("QLT_FIXTURE_DIR");
    if (!env.isEmpty())
        return env;
    QDir d(QCoreApplication::applicationDirPath());
    for (int up = 0; up < 4; ++up, d.cdUp()) {
        if (QFile::exists(d.filePath(QStringLiteral("tests/fixtures/tone.mp3"))))
            return d.filePath(QStringLiteral("tests/fixtures"));
    }
    return QString();
}

// Where the generated trees lie: QLT_BENCH_TREES, else /tmp. A tree on a tmpfs (such as
// /dev/shm) stays in memory; on a disk the kernel may drop its pages between passes.
inline QString TreeFolder() {
    const QString env = qEnvironmentVariable("QLT_BENCH_TREES");
    return env.isEmpty() ? QStringLiteral("/tmp") : env;
}

// CPU time of this process: other programs on the machine do not count in it.
inline double Cpu() {
    timespec ts{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
    return double(ts.tv_sec) + double(ts.tv_nsec) / 1e9;
}

inline double Seconds(const QElapsedTimer& t) {
    return double(t.nsecsElapsed()) / 1e9;
}

// The folder scan of `root` with its sub-folders into `list` on `threads` readers, timed.
struct WallCpu {
    double wall = 0, cpu = 0;
};
inline WallCpu ScanTree(DataGrid& list, const QString& root, int threads) {
    EnsureInputColumns(list);
    ScanOptions o;
    o.subFolders = true;
    o.threads = threads;
    TagEngine engine;
    QElapsedTimer t;
    t.start();
    const double c0 = Cpu();
    ScanFolder(list, root, o, engine);
    return {Seconds(t), Cpu() - c0};
}

} // namespace bench
