// Narrowing down a large data list: find, filter, doubles, selection and sums on a
// generated list of 100,000 rows with all 71 columns. Every step must stay under 1 s.

#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "list/InputColumns.h"
#include "list/modDoubles.h"
#include "list/modFilter.h"
#include "list/modFind.h"
#include "list/modMarks.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <cstdio>
#include <functional>

namespace {

constexpr int kRows = 100000;

const char* const kWords[] = {"love",  "night", "blue",  "river", "fire",   "heart", "summer", "rain",
                              "dream", "road",  "light", "dance", "shadow", "gold",  "wild",   "home",
                              "angel", "storm", "queen", "city",  "star",   "ocean", "stone",  "time"};
const char* const kGenres[] = {"Rock", "Pop", "Jazz", "Blues", "Classical", "Country", "Electronic", "Folk"};
const char* const kMoods[] = {"happy", "sad", "calm", "angry", "romantic"};

QString Words(QRandomGenerator& rng, int n) {
    QStringList parts;
    for (int i = 0; i < n; ++i) {
        QString w = QString::fromLatin1(kWords[rng.bounded(int(std::size(kWords)))]);
        if (i == 0)
            w[0] = w[0].toUpper();
        parts << w;
    }
    return parts.join(QLatin1Char(' '));
}

void Build(DataGrid& grid) {
    for (const InputColumnDef& def : kInputColumns)
        grid.AddColumn(QString::fromLatin1(def.key), QString::fromLatin1(def.key), def.widthTwips, def.align,
                       true, def.sortType);
    QRandomGenerator rng(4711);
    grid.LockUpdate(true);
    QStringList cells;
    for (int r = 1; r <= kRows; ++r) {
        cells.clear();
        for (int c = 0; c < InCol::Count; ++c)
            cells << QString();
        const QString artist = QStringLiteral("%1 %2").arg(Words(rng, 1)).arg(rng.bounded(3000));
        const QString title = Words(rng, 1 + rng.bounded(4));
        const int seconds = 90 + rng.bounded(400);
        const qint64 bytes = qint64(seconds) * 16000 + rng.bounded(50000);
        // About every twentieth file has a double somewhere else.
        const bool twin = rng.bounded(20) == 0;
        auto set = [&](int col, const QString& text) { cells[col - 1] = text; };
        set(InCol::No, QString::number(r));
        set(InCol::FileName, twin ? QStringLiteral("Track %1.mp3").arg(rng.bounded(2000))
                                  : QStringLiteral("%1 - %2.mp3").arg(artist, title));
        set(InCol::Artist, artist);
        set(InCol::Title, title);
        set(InCol::Type, rng.bounded(10) ? QStringLiteral("MP3") : QStringLiteral("FLAC"));
        set(InCol::Path, QStringLiteral("/home/music/%1/%2").arg(artist, Words(rng, 2)));
        set(InCol::DurationS, QString::number(seconds));
        set(InCol::DurationMS, QStringLiteral("%1:%2")
                                   .arg(seconds / 60, 2, 10, QLatin1Char('0'))
                                   .arg(seconds % 60, 2, 10, QLatin1Char('0')));
        set(InCol::SizeByte, QString::number(bytes));
        set(InCol::SizeMByte, QString::number(double(bytes) / 1048576.0, 'f', 3));
        set(InCol::Bitrate, QStringLiteral("128"));
        set(InCol::Frequency, QStringLiteral("44100"));
        set(InCol::HasTag, QStringLiteral("ID3v1, ID3v2.3"));
        const QString genre = QString::fromLatin1(kGenres[rng.bounded(int(std::size(kGenres)))]);
        const QString year = QString::number(1960 + rng.bounded(60));
        const QString track = QString::number(1 + rng.bounded(20));
        const QString album = Words(rng, 2);
        set(InCol::Tg1Genre, genre);
        set(InCol::Tg1Year, year);
        set(InCol::Tg1Track, track);
        set(InCol::Tg1Artist, artist.left(30));
        set(InCol::Tg1Title, title.left(30));
        set(InCol::Tg1Album, album.left(30));
        set(InCol::TagGenre, genre);
        set(InCol::TagYear, year);
        set(InCol::TagTrack, track);
        set(InCol::TagArtist, artist);
        set(InCol::TagTitle, title);
        set(InCol::TagAlbum, album);
        if (rng.bounded(4) == 0)
            set(InCol::TagComment, Words(rng, 6));
        if (rng.bounded(10) == 0)
            set(InCol::TagAnzLyrics, rng.bounded(2) ? QStringLiteral("1") : QStringLiteral("1 [Lrc]"));
        if (rng.bounded(3) == 0)
            set(InCol::TagAnzPic, QStringLiteral("1"));
        if (rng.bounded(8) == 0) {
            set(InCol::TagApeArtist, artist);
            set(InCol::TagApeTitle, title);
        }
        if (rng.bounded(3) == 0)
            set(InCol::Rating, QString(1 + rng.bounded(5), QLatin1Char('*')));
        if (rng.bounded(4) == 0)
            set(InCol::Mood, QString::fromLatin1(kMoods[rng.bounded(int(std::size(kMoods)))]));
        set(InCol::DateTime, QStringLiteral("%1.%2.%3")
                                 .arg(1 + rng.bounded(28), 2, 10, QLatin1Char('0'))
                                 .arg(1 + rng.bounded(12), 2, 10, QLatin1Char('0'))
                                 .arg(2000 + rng.bounded(24)));
        grid.AddRow(cells);
    }
    grid.LockUpdate(false);
}

bool g_allFast = true;

double Measure(const char* what, const std::function<QString()>& step) {
    QElapsedTimer t;
    t.start();
    const QString detail = step();
    const double ms = double(t.nsecsElapsed()) / 1e6;
    const bool ok = ms < 1000.0;
    g_allFast = g_allFast && ok;
    std::printf("%-44s %9.1f ms  %s  %s\n", what, ms, ok ? "ok  " : "SLOW", qPrintable(detail));
    std::fflush(stdout);
    return ms;
}

// The selection sum: seconds and bytes of every selected row, as the label shows them.
QString SelectionSum(const DataGrid& grid) {
    double seconds = 0, bytes = 0;
    const int n = grid.SelCount();
    for (int i = 1; i <= n; ++i) {
        const int row = grid.SelRow(i);
        seconds += DataGrid::NumericPrefix(grid.CellView(row, InCol::DurationS));
        bytes += DataGrid::NumericPrefix(grid.CellView(row, InCol::SizeByte));
    }
    return QStringLiteral("(%1)  %2 s / %3 Mb").arg(n).arg(qint64(seconds)).arg(bytes / 1048576.0, 0, 'f', 0);
}

} // namespace

int main() {
    QElapsedTimer build;
    build.start();
    DataGrid input, ref;
    Build(input);
    for (int c = 1; c <= 12; ++c)
        ref.AddColumn(QString::number(c), QString::number(c));
    std::printf("list of %d rows x %d columns built in %.0f ms\n\n", input.Rows(), input.Cols(),
                double(build.elapsed()));

    ScriptedPrompt prompt;
    ListEnv env(prompt);

    FindOptions find;
    find.noMsg = true;
    find.clearMarks = true;
    find.text = QStringLiteral("river");
    Measure("find \"river\" in all columns", [&] {
        int col = 0;
        return QStringLiteral("%1 rows hit").arg(FindInList(input, ref, find, col, env));
    });
    find.text = QStringLiteral("no such text anywhere");
    Measure("find a missing text in all columns", [&] {
        int col = 0;
        return QStringLiteral("%1 rows hit").arg(FindInList(input, ref, find, col, env));
    });
    find.text = QStringLiteral("queen");
    find.wholeWords = true;
    Measure("find whole word \"queen\" in all columns", [&] {
        int col = 0;
        return QStringLiteral("%1 rows hit").arg(FindInList(input, ref, find, col, env));
    });
    find.wholeWords = false;
    find.clearMarks = false;
    find.text = QStringLiteral("Love");
    Measure("find \"Love\", marks kept, in all columns", [&] {
        int col = 0;
        return QStringLiteral("%1 rows hit").arg(FindInList(input, ref, find, col, env));
    });

    FilterOptions filter;
    filter.noMsg = true;
    filter.columnIndex = 0; // artist
    QStringList values;
    Measure("filter: value list of the artist column", [&] {
        values = cmbTab1_Filter_Change(input, 0, filter, env).values;
        return QStringLiteral("%1 values").arg(values.size());
    });
    filter.value = input.CellText(1, InCol::Artist);
    filter.rating = input.CellText(1, InCol::Rating);
    Measure("filter: mark by value and rating", [&] {
        return QStringLiteral("%1 hits").arg(btnTab1_FilterMarkChoosen(input, filter, env).hits);
    });
    filter.columnIndex = 4; // ID3v1 genre, few values
    filter.value = QStringLiteral("Jazz");
    filter.rating.clear();
    Measure("filter: value list + mark on genre", [&] {
        const int n = int(cmbTab1_Filter_Change(input, 0, filter, env).values.size());
        return QStringLiteral("%1 values, %2 hits")
            .arg(n)
            .arg(btnTab1_FilterMarkChoosen(input, filter, env).hits);
    });

    Measure("sort by file name (part of FindDouble)", [&] {
        input.DoSort(InCol::FileName, 1);
        return QString();
    });
    Measure("sort by \"2,4\" (part of FindDouble)", [&] {
        input.DoSort(QStringLiteral("2,4"), 1);
        return QString();
    });
    prompt.answers = {true};
    Measure("FindDouble",
            [&] { return QStringLiteral("%1 groups").arg(btnTab1_FindDouble(input, env).groups); });
    input.SetSelected(1, true);
    Measure("EraseDouble", [&] {
        return QStringLiteral("%1 rows removed").arg(btnTab1_EraseDouble(input, true, env).removed);
    });

    input.ClearSelection();
    for (int r = 1; r <= input.Rows(); r += 3)
        input.SetSelected(r, true);
    Measure("invert selection", [&] {
        btnTab1_InvertHighlight(input, env);
        return QStringLiteral("%1 selected").arg(input.SelCount());
    });
    input.SelectAll();
    Measure("selection sum over all rows", [&] { return SelectionSum(input); });
    Measure("FTagBlue (select rows with any mark)", [&] {
        return QStringLiteral("%1 selected").arg(btnTab1_FTagBlue(input, QString(), true, env).count);
    });
    Measure("MarkLrc",
            [&] { return QStringLiteral("%1 marked").arg(btnTab1_MarkLrc(input, true, env).count); });

    std::printf("\n%s\n", g_allFast ? "all steps under 1 s" : "SOME STEPS TOOK 1 s OR MORE");
    return g_allFast ? 0 : 1;
}
