// bench_grid [rows]
//
// The data list at full size: 100,000 rows of 71 cells. Times SaveFile and LoadFile
// against plain buffered writing and reading of the same bytes, DoSort("7,3", 1),
// FindRow over all rows, and the resident memory that the grid takes.

#include "bench_grid_data.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
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

double Ms(const QElapsedTimer& t) {
    return double(t.nsecsElapsed()) / 1e6;
}

void Line(const char* what, double value, const char* unit, const char* goal, bool ok) {
    std::printf("| %-38s | %10.1f %-3s | %-22s | %-4s |\n", what, value, unit, goal, ok ? "ok" : "MISS");
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int rows = argc > 1 ? std::max(1, atoi(argv[1])) : 100000;
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("list.data"));
    const QString plainPath = dir.filePath(QStringLiteral("plain.bin"));

    const double rss0 = RssMb();
    auto grid = std::make_unique<DataGrid>();
    DefineInputColumns(*grid);
    QElapsedTimer t;
    t.start();
    FillInputRows(*grid, rows);
    const double fillMs = Ms(t);
    const double rss1 = RssMb();

    t.restart();
    const bool saved = grid->SaveFile(path);
    const double saveMs = Ms(t);
    const QByteArray bytes = [&] {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }();

    // The same bytes written plainly: buffered, in 1 MB pieces, and flushed to the disk
    // as the save file does.
    t.restart();
    {
        QFile f(plainPath);
        if (f.open(QIODevice::WriteOnly)) {
            for (qsizetype off = 0; off < bytes.size(); off += 1 << 20)
                f.write(bytes.constData() + off, std::min<qsizetype>(1 << 20, bytes.size() - off));
            f.flush();
            fsync(f.handle());
        }
    }
    const double plainWriteMs = Ms(t);

    t.restart();
    qsizetype readBytes = 0;
    {
        QFile f(plainPath);
        if (f.open(QIODevice::ReadOnly))
            readBytes = f.readAll().size();
    }
    const double plainReadMs = Ms(t);

    DataGrid loaded;
    DefineInputColumns(loaded);
    t.restart();
    const bool ok = loaded.LoadFile(path, true);
    const double loadMs = Ms(t);
    const bool same =
        ok && loaded.Rows() == grid->Rows() && loaded.RowCells(rows / 2) == grid->RowCells(rows / 2);

    t.restart();
    grid->DoSort(QStringLiteral("7,3"), 1);
    const double sortMs = Ms(t);
    t.restart();
    grid->DoSort(QStringLiteral("7,3"), 1);
    const double resortMs = Ms(t);
    t.restart();
    grid->DoSort(QStringLiteral("10"), 2);
    const double numSortMs = Ms(t);

    t.restart();
    const int hit = grid->FindRow(QStringLiteral("No Such File.mp3"), 3);
    const double findMs = Ms(t);
    t.restart();
    const int hit2 = grid->FindRow(QStringLiteral("no such"), 3, 1, false);
    const double findPartMs = Ms(t);

    std::printf(
        "rows %d x %d columns, file %.1f MB (%s, loaded %s, same %s), fill %.0f ms, read back %lld bytes\n",
        rows, grid->Cols(), double(bytes.size()) / 1048576.0, saved ? "saved" : "SAVE FAILED",
        ok ? "yes" : "NO", same ? "yes" : "NO", fillMs, static_cast<long long>(readBytes));
    std::printf("| %-38s | %14s | %-22s | %-4s |\n", "measure", "value", "goal", "");
    std::printf("|%s|%s|%s|%s|\n", "----------------------------------------", "----------------",
                "------------------------", "------");
    Line("SaveFile", saveMs, "ms", "< 1500 ms", saveMs < 1500);
    Line("plain buffered write + fsync", plainWriteMs, "ms", "", true);
    Line("SaveFile / plain write", saveMs / plainWriteMs, "x", "< 3x", saveMs < 3 * plainWriteMs);
    Line("LoadFile", loadMs, "ms", "< 1500 ms", loadMs < 1500);
    Line("plain read", plainReadMs, "ms", "", true);
    Line("LoadFile / plain read", loadMs / plainReadMs, "x", "< 3x", loadMs < 3 * plainReadMs);
    Line("DoSort(\"7,3\", 1)", sortMs, "ms", "< 500 ms", sortMs < 500);
    Line("DoSort(\"7,3\", 1), sorted already", resortMs, "ms", "", true);
    Line("DoSort(\"10\", 2), number column", numSortMs, "ms", "", true);
    Line("FindRow exact, all rows", findMs, "ms", "< 50 ms", findMs < 50 && hit == 0);
    Line("FindRow part of the text, all rows", findPartMs, "ms", "< 50 ms", findPartMs < 50 && hit2 == 0);
    Line("resident memory of the grid", rss1 - rss0, "MB", "< 250 MB", rss1 - rss0 < 250);
    return 0;
}
