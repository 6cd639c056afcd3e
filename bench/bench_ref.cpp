// Reference lists at the size of a large collection.
// Usage: bench_ref [rows]   (default 100,000; prints seconds)
//   - mark matches of rows x rows in both directions (goal: under 1 s)
//   - the path check of `rows` rows against a plain stat loop over the same paths
//     (goal: within 2x), on a folder of real files, half of the rows missing; both on a
//     warm page cache, best of three
//   - save and load of a `rows`-row .ref (goal: under 0.5 s each)

#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/modListColumns.h"
#include "platform/PosixFile.h"
#include "ref/RefColumns.h"
#include "ref/modRef.h"
#include "ref/modRefMatch.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <sys/stat.h>

namespace {

class QuietPrompt : public Prompt {
public:
    void Tell(const QString&, Icon) override {}
    bool AskYesNo(const QString&, bool, Icon) override { return true; }
    bool AskOkCancel(const QString&, Icon) override { return true; }
    std::optional<QString> InputBox(const QString&, const QString& initial) override { return initial; }
};

QString Name(int i) {
    return QStringLiteral("Artist %1 - Title number %2.mp3").arg(i % 977).arg(i);
}

double Seconds(const QElapsedTimer& t) {
    return double(t.nsecsElapsed()) / 1e9;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int rows = argc > 1 ? std::max(1, atoi(argv[1])) : 100000;
    QuietPrompt prompt;
    QTemporaryDir dir;

    DataGrid input, ref;
    DefineInputColumns(input);
    DefineRefColumns(ref);
    input.LockUpdate(true);
    ref.LockUpdate(true);
    QStringList cells;
    for (int i = 0; i < rows; ++i) {
        cells.clear();
        for (int c = 1; c <= InCol::Count; ++c)
            cells << QString();
        cells[InCol::FileName - 1] = Name(i);
        cells[InCol::Path - 1] = dir.path();
        cells[InCol::DurationS - 1] = QString::number(100 + i % 300);
        cells[InCol::SizeByte - 1] = QString::number(3000000 + i);
        input.AddRow(cells);
        // Every second reference row names a file of the data list, the others none.
        ref.AddRow({QString(), QString(), QStringLiteral("yes"), Name(i % 2 ? i : rows + i), QString(),
                    QString(), QStringLiteral("MP3"), dir.path(), QStringLiteral("200"),
                    QStringLiteral("03:20"), QStringLiteral("3200000"), QStringLiteral("3,05"),
                    QStringLiteral("192"), QStringLiteral("44100"), QString(), QString()});
    }
    input.LockUpdate(false);
    ref.LockUpdate(false);

    MatchOptions o;
    o.noMsg = true;
    ref.SelectAll();
    QElapsedTimer t;
    t.start();
    MatchResult m = MarkMatches(input, ref, o, prompt);
    std::printf("mark matches ref->data %d x %d: %d matches, %.3f s (goal < 1 s)\n", rows, rows, m.matches,
                Seconds(t));
    input.SelectAll();
    o.direction = MatchDirection::DataToRef;
    t.restart();
    m = MarkMatches(input, ref, o, prompt);
    std::printf("mark matches data->ref %d x %d: %d matches, %.3f s (goal < 1 s)\n", rows, rows, m.matches,
                Seconds(t));

    // Half of the referenced files exist.
    for (int r = 1; r <= ref.Rows(); r += 2) {
        QFile f(dir.path() + u'/' + ref.CellText(r, RefCol::FileName));
        if (!f.open(QIODevice::WriteOnly))
            return 1;
    }
    // Both loops run on a warm page cache: one untimed pass over the paths first, then
    // each loop three times, the best time counting.
    auto plainLoop = [&ref] {
        int found = 0;
        struct stat st {};
        for (int r = 1; r <= ref.Rows(); ++r) {
            const QByteArray p =
                PosixFile::Native(ref.CellText(r, RefCol::Path) + u'/' + ref.CellText(r, RefCol::FileName));
            if (::stat(p.constData(), &st) == 0)
                ++found;
        }
        return found;
    };
    int plain = plainLoop();
    double plainSeconds = 1e9, checkSeconds = 1e9;
    RefCheckResult check;
    for (int round = 0; round < 3; ++round) {
        t.restart();
        plain = plainLoop();
        plainSeconds = std::min(plainSeconds, Seconds(t));
        t.restart();
        check = RefCheckPath(ref);
        checkSeconds = std::min(checkSeconds, Seconds(t));
    }
    std::printf(
        "path check %d rows: %d found, %.3f s; plain stat loop: %d found, %.3f s (ratio %.2f, goal <= 2)\n",
        rows, check.found, checkSeconds, plain, plainSeconds, checkSeconds / std::max(plainSeconds, 1e-9));

    const QString file = dir.path() + QStringLiteral("/bench.ref");
    t.restart();
    if (!SaveRefList(ref, file, true, prompt))
        return 1;
    std::printf("save %d rows: %.3f s (goal < 0.5 s), %lld bytes\n", rows, Seconds(t),
                static_cast<long long>(QFile(file).size()));
    DataGrid back;
    t.restart();
    if (!LoadRefList(back, file, prompt))
        return 1;
    std::printf("load %d rows: %.3f s (goal < 0.5 s)\n", back.Rows(), Seconds(t));
    return 0;
}
