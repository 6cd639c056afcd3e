// Saved lists and exports at the size of a large collection: 200,000 rows of 71 cells.
// Usage: bench_lists [rows]   (prints seconds and file sizes)

#include "core/AppPaths.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "file/ftcFileOps.h"
#include "list/InputColumns.h"
#include "list/modSavedLists.h"
#include "output/modExport.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>

namespace {

// Prompt that answers Yes and prints nothing.
class QuietPrompt : public Prompt {
public:
    void Tell(const QString&, Icon) override {}
    bool AskYesNo(const QString&, bool, Icon) override { return true; }
    bool AskOkCancel(const QString&, Icon) override { return true; }
    std::optional<QString> InputBox(const QString&, const QString& initial) override { return initial; }
};

void Fill(DataGrid& g, int rows) {
    for (int i = 0; i < InCol::Count; ++i) {
        const InputColumnDef& d = kInputColumns[std::size_t(i)];
        g.AddColumn(QString::fromLatin1(d.key), QStringLiteral("Spalte %1").arg(i + 1), d.widthTwips, d.align,
                    i < 40, d.sortType);
    }
    g.LockUpdate(true);
    QStringList cells;
    for (int r = 1; r <= rows; ++r) {
        cells.clear();
        const QString artist = QStringLiteral("Künstler %1").arg(r % 2000);
        const QString title = QStringLiteral("Titel Nummer %1").arg(r);
        cells << QString::number(r) << QString() << artist + " - " + title + ".mp3" << artist << title
              << "MP3" << QStringLiteral("/music/Sammlung/%1").arg(r % 500) << QString::number(180 + r % 200)
              << "03:20" << QString::number(4000000 + r) << "3,815"
              << "320"
              << "44100"
              << "V1 V2";
        for (int c = cells.size() + 1; c <= InCol::Count; ++c)
            cells << (c % 3 == 0 ? QString() : QStringLiteral("Wert %1").arg((r * c) % 5000));
        g.AddRow(cells);
    }
    g.LockUpdate(false);
}

void Report(const char* what, QElapsedTimer& t, const QString& file = QString()) {
    const double s = double(t.nsecsElapsed()) / 1e9;
    if (file.isEmpty())
        std::printf("%-28s %8.2f s\n", what, s);
    else
        std::printf("%-28s %8.2f s  %8.1f MB\n", what, s, double(QFileInfo(file).size()) / 1e6);
    std::fflush(stdout);
    t.restart();
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int rows = argc > 1 ? std::max(1, std::atoi(argv[1])) : 200000;
    QTemporaryDir dir;
    SetAppPath(dir.path());
    QuietPrompt prompt;
    QElapsedTimer t;
    t.start();

    DataGrid list;
    Fill(list, rows);
    std::printf("%d rows of %d cells\n", list.Rows(), list.Cols());
    Report("fill", t);

    EnsureSavedListFolder();
    QString saved;
    SaveList(list, SavedListFolder() + "/bench", {}, prompt, &saved);
    Report("SaveList", t, saved);
    const LoadListResult r = LoadList(list, saved, {}, {}, prompt);
    std::printf("  missing files marked: %d\n", r.missing);
    Report("LoadList (check of files)", t);

    const char* names[] = {"export.txt", "export.csv", "export.xls", "export.xml", "export.htm"};
    for (const char* n : names) {
        const QString path = dir.filePath(QString::fromLatin1(n));
        ExportByPath(list, path, prompt);
        Report(n, t, path);
    }

    // Copy and verified move of a large file within and across file systems.
    QByteArray block(1 << 20, 'x');
    const QString big = dir.filePath("big.bin");
    {
        QFile f(big);
        if (f.open(QIODevice::WriteOnly))
            for (int i = 0; i < 256; ++i)
                f.write(block);
    }
    t.restart();
    CopyFile(big, dir.filePath("copy.bin"), false);
    Report("CopyFile 256 MB", t);
    QTemporaryDir shm(QStringLiteral("/dev/shm/qlt-bench-XXXXXX"));
    if (shm.isValid()) {
        MoveFile(big, shm.path());
        Report("MoveFile 256 MB to tmpfs", t);
    }
    return 0;
}
