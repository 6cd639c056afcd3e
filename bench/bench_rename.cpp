// The rename engine against a plain rename(2) loop: 10,000 files in one folder and in
// 100 folders of 100; the plan (what the preview shows, with its grid) of 10,000 rows;
// the batch with its journal; the undo. With --cli the command-line tool renames and
// undoes the one-folder set too (copies of the MP3 fixture, read by its scan).
//
//   bench_rename [--files N] [--cli]

#include "bench_clock.h"
#include "core/AppPaths.h"
#include "core/DataGrid.h"
#include "file/modRename.h"
#include "list/InputColumns.h"
#include "list/modScan.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>

namespace {

void MakeFiles(DataGrid& list, const QString& root, int files, int folders) {
    EnsureInputColumns(list);
    list.Clear();
    list.LockUpdate(true);
    for (int i = 0; i < files; ++i) {
        const QString folder =
            folders == 1 ? root : root + QStringLiteral("/f%1").arg(i % folders, 3, 10, QLatin1Char('0'));
        if (i < folders)
            QDir().mkpath(folder);
        const QString artist = QStringLiteral("Artist %1").arg(i);
        const QString title = QStringLiteral("Title %1").arg(i);
        const QString name = artist + QStringLiteral(" - ") + title + QStringLiteral(".mp3");
        QFile f(folder + u'/' + name);
        if (!f.open(QIODevice::WriteOnly))
            std::fprintf(stderr, "cannot write %s\n", qPrintable(f.fileName()));
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = name;
        cells[InCol::Artist - 1] = artist;
        cells[InCol::Title - 1] = title;
        cells[InCol::Path - 1] = folder;
        list.AddRow(cells);
    }
    list.LockUpdate(false);
    list.SelectAll();
}

// The plain baseline: rename(2) of every file to the swapped name, then back.
double PlainLoop(const DataGrid& list, bool back) {
    QElapsedTimer t;
    t.start();
    for (int r = 1; r <= list.Rows(); ++r) {
        const QString folder = list.CellText(r, InCol::Path);
        const QString a = folder + u'/' + list.CellText(r, InCol::FileName);
        const QString b = folder + u'/' + list.CellText(r, InCol::Title) + QStringLiteral(" - ") +
                          list.CellText(r, InCol::Artist) + QStringLiteral(".mp3");
        const QByteArray from = QFile::encodeName(back ? b : a), to = QFile::encodeName(back ? a : b);
        if (std::rename(from.constData(), to.constData()) != 0)
            std::fprintf(stderr, "rename failed\n");
    }
    return bench::Seconds(t);
}

void Run(const QString& label, int files, int folders) {
    QTemporaryDir dir;
    DataGrid list;
    MakeFiles(list, dir.path(), files, folders);
    const double plainThere = PlainLoop(list, false);
    const double plainBack = PlainLoop(list, true);
    const double plain = (plainThere + plainBack) / 2;

    RenameRequest request;
    request.command = RenameCommand::SwapArtistTitle;
    request.digits = 2;
    QElapsedTimer t;
    t.start();
    RenamePlan plan = PlanRename(list, request);
    const double planTime = bench::Seconds(t);
    // What the preview adds: its grid of five columns, one row per rename.
    t.restart();
    DataGrid preview;
    for (int c = 1; c <= 5; ++c)
        preview.AddColumn(QStringLiteral("C%1").arg(c), QString());
    preview.LockUpdate(true);
    for (const RenameStep& s : plan.steps)
        preview.AddRow({s.newName, s.oldName, s.folder, s.reason, QString::number(s.row)});
    preview.LockUpdate(false);
    const double previewTime = planTime + bench::Seconds(t);

    const QString journal = dir.filePath(QStringLiteral("journal"));
    t.restart();
    const RenameOutcome out = ApplyPlan(list, plan, nullptr, journal);
    const double batch = bench::Seconds(t);
    t.restart();
    const UndoOutcome undo = UndoLastBatch(&list, journal);
    const double undoTime = bench::Seconds(t);
    std::printf("%s: %d files, renamed %d, undone %d\n", qPrintable(label), files, out.done, undo.done);
    std::printf("  plain rename(2) loop  %8.1f ms  %6.1f us/file\n", plain * 1e3, plain * 1e6 / files);
    std::printf("  plan / preview        %8.1f ms / %.1f ms\n", planTime * 1e3, previewTime * 1e3);
    std::printf("  batch with journal    %8.1f ms  %6.1f us/file  %.2fx plain\n", batch * 1e3,
                batch * 1e6 / files, batch / plain);
    std::printf("  undo                  %8.1f ms  %6.1f us/file  %.2fx plain, %.2fx the batch\n",
                undoTime * 1e3, undoTime * 1e6 / files, undoTime / plain, undoTime / batch);
}

void RunCli(int files) {
    const QString cli = QCoreApplication::applicationDirPath() + QStringLiteral("/../bin/quillotune-cli");
    const QString fixture = bench::FixtureDir() + QStringLiteral("/tone.mp3");
    QTemporaryDir dir;
    for (int i = 0; i < files; ++i)
        QFile::copy(fixture, dir.filePath(QStringLiteral("Artist %1 - Title %1.mp3").arg(i)));
    auto timed = [&](const QStringList& args) {
        QElapsedTimer t;
        t.start();
        QProcess p;
        p.start(cli, args);
        p.waitForFinished(-1);
        return bench::Seconds(t);
    };
    const double dry = timed({QStringLiteral("rename"), dir.path(), QStringLiteral("--do"),
                              QStringLiteral("swap"), QStringLiteral("--dry-run")});
    const double real =
        timed({QStringLiteral("rename"), dir.path(), QStringLiteral("--do"), QStringLiteral("swap")});
    const double undo = timed({QStringLiteral("undo")});
    std::printf("command line, %d MP3 files in one folder (scan included)\n", files);
    std::printf("  rename --dry-run %8.1f ms  rename %8.1f ms (%.1f us/file)  undo %8.1f ms (%.1f us/file)\n",
                dry * 1e3, real * 1e3, real * 1e6 / files, undo * 1e3, undo * 1e6 / files);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    int files = 10000;
    bool cli = false;
    const QStringList args = app.arguments();
    for (int i = 1; i < args.size(); ++i) {
        if (args[i] == QLatin1String("--files") && i + 1 < args.size())
            files = args[++i].toInt();
        else if (args[i] == QLatin1String("--cli"))
            cli = true;
    }
    QTemporaryDir program;
    SetAppPath(program.path());
    Run(QStringLiteral("one folder"), files, 1);
    Run(QStringLiteral("100 folders"), files, 100);
    if (cli)
        RunCli(files);
    return 0;
}
