// bench_grid [rows] [runs]
//
// The data list at full size: 100,000 rows of 71 cells. Times SaveFile and LoadFile
// against plain buffered writing and reading of the same bytes, DoSort("7,3", 1),
// FindRow over all rows, and the resident memory that the grid takes.
//
// Every figure is the best of a few runs, as wall time and as CPU time of the process:
// on a shared machine the wall time also counts the neighbours.

#include "bench_grid_data.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <ctime>
#include <unistd.h>

namespace {

// Resident memory of this process in MB, from /proc/self/status.
double RssMb() {
    QFile f(QStringLiteral("/proc/self/status"));
    if (!f.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : f.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024.0;
    return 0;
}

double CpuMs() {
    timespec ts{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
    return double(ts.tv_sec) * 1e3 + double(ts.tv_nsec) / 1e6;
}

struct Time {
    double wall = 1e300;
    double cpu = 1e300;
};

// Runs `prepare` (not timed) and `f` (timed) `runs` times; keeps the best of each clock.
template <typename P, typename F> Time Best(int runs, P prepare, F f) {
    Time best;
    for (int i = 0; i < runs; ++i) {
        prepare();
        QElapsedTimer t;
        const double c0 = CpuMs();
        t.start();
        f();
        best.wall = std::min(best.wall, double(t.nsecsElapsed()) / 1e6);
        best.cpu = std::min(best.cpu, CpuMs() - c0);
    }
    return best;
}
template <typename F> Time Best(int runs, F f) {
    return Best(
        runs, [] {}, f);
}

void Row(const char* what, Time t, const char* goal, bool ok) {
    std::printf("| %-36s | %9.1f ms | %9.1f ms | %-26s | %-4s |\n", what, t.wall, t.cpu, goal,
                ok ? "ok" : "MISS");
}

void Ratio(const char* what, Time a, Time b, const char* goal, double limit) {
    const double wall = a.wall / b.wall, cpu = a.cpu / b.cpu;
    std::printf("| %-36s | %9.1f x  | %9.1f x  | %-26s | %-4s |\n", what, wall, cpu, goal,
                std::min(wall, cpu) < limit ? "ok" : "MISS");
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int rows = argc > 1 ? std::max(1, atoi(argv[1])) : 100000;
    const int runs = argc > 2 ? std::max(1, atoi(argv[2])) : 5;
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("list.data"));
    const QString plainPath = dir.filePath(QStringLiteral("plain.bin"));

    const double rss0 = RssMb();
    auto grid = std::make_unique<DataGrid>();
    DefineInputColumns(*grid);
    const Time fill = Best(1, [&] { FillInputRows(*grid, rows); });
    const double rss1 = RssMb();

    bool saved = true;
    const Time save = Best(runs, [&] { saved = grid->SaveFile(path) && saved; });
    const QByteArray bytes = [&] {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }();

    // The same bytes written plainly: buffered, in 1 MB pieces, and flushed to the disk
    // as the save file does.
    const Time plainWrite = Best(
        runs, [&] { QFile::remove(plainPath); },
        [&] {
            QFile f(plainPath);
            if (f.open(QIODevice::WriteOnly)) {
                for (qsizetype off = 0; off < bytes.size(); off += 1 << 20)
                    f.write(bytes.constData() + off, std::min<qsizetype>(1 << 20, bytes.size() - off));
                f.flush();
                fsync(f.handle());
            }
        });
    qsizetype readBytes = 0;
    const Time plainRead = Best(runs, [&] {
        QFile f(plainPath);
        if (f.open(QIODevice::ReadOnly))
            readBytes = f.readAll().size();
    });

    DataGrid loaded;
    DefineInputColumns(loaded);
    bool ok = true;
    const Time load = Best(runs, [&] { ok = loaded.LoadFile(path, true) && ok; });
    const bool same =
        ok && loaded.Rows() == grid->Rows() && loaded.RowCells(rows / 2) == grid->RowCells(rows / 2);

    // Column 1 holds the running number: sorting by it brings back the scan order.
    const Time sort = Best(
        runs, [&] { grid->DoSort(1, 1); }, [&] { grid->DoSort(QStringLiteral("7,3"), 1); });
    const Time resort = Best(runs, [&] { grid->DoSort(QStringLiteral("7,3"), 1); });
    const Time numSort = Best(
        runs, [&] { grid->DoSort(1, 1); }, [&] { grid->DoSort(10, 2); });
    const Time dateSort = Best(
        runs, [&] { grid->DoSort(1, 1); }, [&] { grid->DoSort(71, 1); });

    int hit = 0, hit2 = 0;
    const Time find = Best(runs, [&] { hit = grid->FindRow(QStringLiteral("No Such File.mp3"), 3); });
    const Time findPart = Best(runs, [&] { hit2 = grid->FindRow(QStringLiteral("no such"), 3, 1, false); });

    std::printf("%d rows x %d columns, file %.1f MB (saved %s, loaded %s, same %s, read back %lld bytes), "
                "filled in %.0f ms, best of %d runs\n",
                rows, grid->Cols(), double(bytes.size()) / 1048576.0, saved ? "yes" : "NO", ok ? "yes" : "NO",
                same ? "yes" : "NO", static_cast<long long>(readBytes), fill.wall, runs);
    std::printf("| %-36s | %12s | %12s | %-26s | %-4s |\n", "measure", "wall", "CPU", "goal", "");
    std::printf(
        "|--------------------------------------|--------------|--------------|----------------------------|"
        "------|\n");
    Row("SaveFile", save, "< 1500 ms", save.wall < 1500);
    Row("plain buffered write + fsync", plainWrite, "", true);
    Ratio("SaveFile / plain write", save, plainWrite, "< 3x", 3);
    Row("LoadFile", load, "< 1500 ms", load.wall < 1500);
    Row("plain buffered read", plainRead, "", true);
    Ratio("LoadFile / plain read", load, plainRead, "< 3x", 3);
    Row("DoSort(\"7,3\", 1) from scan order", sort, "< 500 ms", sort.wall < 500);
    Row("DoSort(\"7,3\", 1) when sorted", resort, "", true);
    Row("DoSort(10, 2) (number)", numSort, "", true);
    Row("DoSort(71, 1) (date)", dateSort, "", true);
    Row("FindRow exact, all rows", find, "< 50 ms", find.wall < 50 && hit == 0);
    Row("FindRow part of the text, all rows", findPart, "< 50 ms", findPart.wall < 50 && hit2 == 0);
    std::printf("| %-36s | %9.1f MB | %12s | %-26s | %-4s |\n", "resident memory of the grid", rss1 - rss0,
                "", "< 250 MB", rss1 - rss0 < 250 ? "ok" : "MISS");
    return 0;
}
