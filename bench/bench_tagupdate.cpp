// Batch update of one V2 field and the V2 filter build over 1,000 copies of a small MP3,
// each beside the plain engine work on the same files: time per file and the overhead
// of the tag list's frame (mark filter, progress, return of results to the data list).

#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "tag/TagEngine.h"
#include "tag/modTagFilter.h"
#include "tag/modTagList.h"
#include "tag/modTagUpdate.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>

namespace {

constexpr int kFiles = 1000;

double PerFileMs(qint64 ns, int n) {
    return double(ns) / 1e6 / n;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    // the sample beside the sources, or the file given as the first argument
    const QString sample = argc > 1 ? QString::fromLocal8Bit(argv[1])
                                    : QFileInfo(QStringLiteral(__FILE__)).absolutePath() +
                                          QStringLiteral("/../tests/fixtures/tone.mp3");
    QTemporaryDir dir;
    DataGrid input, tag;
    for (const auto& c : kInputColumns)
        input.AddColumn(QString::fromLatin1(c.key), QString(), c.widthTwips, c.align, true, c.sortType);
    TagEngine engine;
    for (int i = 0; i < kFiles; ++i) {
        const QString name = QStringLiteral("%1 - Song.mp3").arg(i, 4, 10, QLatin1Char('0'));
        if (!QFile::copy(sample, dir.filePath(name))) {
            std::fprintf(stderr, "cannot copy %s\n", qPrintable(sample));
            return 1;
        }
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = name;
        cells[InCol::Type - 1] = QStringLiteral("MP3");
        cells[InCol::Path - 1] = dir.path();
        input.AddRow(cells);
    }
    ScriptedPrompt prompt;
    input.SelectAll();
    LoadTagRequest req;
    req.typeText = QStringLiteral("MP3");
    LoadTagList(input, tag, req, prompt);
    tag.SelectAll();
    QStringList paths;
    for (int r = 1; r <= tag.Rows(); ++r)
        paths << TagRowPath(tag, r);

    // warm the file cache and give every file a V2 tag first
    for (const QString& p : paths) {
        engine.OpenFile(p);
        engine.SetV2Title(QStringLiteral("warm"));
        engine.SaveV2(p);
    }

    QElapsedTimer t;
    qint64 plainSave = 0, batch = 0, plainRead = 0, filter = 0;
    const int rounds = 3;
    for (int round = 0; round < rounds; ++round) {
        // the engine alone: open, one field, save
        t.start();
        for (const QString& p : paths) {
            engine.OpenFile(p);
            engine.SetV2Album(QStringLiteral("plain %1").arg(round));
            engine.SaveV2(p);
        }
        plainSave += t.nsecsElapsed();

        // the batch of the tag list with one enabled V2 box
        TagBoxes boxes;
        boxes.v2[4] = {true, QStringLiteral("batch %1").arg(round)};
        TagBatch b;
        b.lbxTag = &tag;
        b.lbxInput = &input;
        b.engine = &engine;
        b.prompt = &prompt;
        b.noMsg = true;
        int pumps = 0;
        b.progress = [&pumps](int, int) { ++pumps; };
        t.start();
        const BatchResult r = UpdateTags(b, UpdateSet::V2, boxes);
        batch += t.nsecsElapsed();
        if (r.done != kFiles || pumps != kFiles) {
            std::fprintf(stderr, "batch: %d done, %d failed, %d progress calls\n", r.done, r.failed, pumps);
            return 1;
        }

        // reading the sixteen filter values of each file, engine alone
        t.start();
        for (const QString& p : paths) {
            engine.OpenFile(p);
            FilterValuesOfFile(engine);
        }
        plainRead += t.nsecsElapsed();

        // the filter build of the tag list
        t.start();
        const FilterOnResult f = FilterOn(tag, engine, prompt, [](int, int) {});
        filter += t.nsecsElapsed();
        if (!f.turnedOn || tag.Rows() != kFiles) {
            std::fprintf(stderr, "filter build failed\n");
            return 1;
        }
    }
    const int n = kFiles * rounds;
    const double a = PerFileMs(plainSave, n), b = PerFileMs(batch, n);
    const double c = PerFileMs(plainRead, n), d = PerFileMs(filter, n);
    std::printf("files: %d x %d rounds\n", kFiles, rounds);
    std::printf(
        "update one V2 field: engine save %.3f ms/file, tag list batch %.3f ms/file, overhead %+.1f%%\n", a,
        b, (b - a) / a * 100.0);
    std::printf(
        "V2 filter build:     engine read %.3f ms/file, filter build   %.3f ms/file, overhead %+.1f%%\n", c,
        d, (d - c) / c * 100.0);
    return 0;
}
