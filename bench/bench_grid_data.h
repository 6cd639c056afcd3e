#pragma once
// A data list as a scan of a large collection leaves it: 71 cells per row with file
// names, artists, folders, numbers in the German format and dates. Used by the grid
// benchmarks; deterministic, so runs compare.

#include "core/DataGrid.h"
#include "list/InputColumns.h"

#include <QString>
#include <QStringList>
#include <random>

inline void DefineInputColumns(DataGrid& g) {
    for (const InputColumnDef& c : kInputColumns)
        g.AddColumn(QString::fromLatin1(c.key), QString::fromLatin1(c.key), c.widthTwips, c.align, true,
                    c.sortType);
}

inline QString GroupedNumber(qint64 v) {
    QString s = QString::number(v);
    for (int i = int(s.size()) - 3; i > 0; i -= 3)
        s.insert(i, QLatin1Char('.'));
    return s;
}

inline void FillInputRows(DataGrid& g, int rows, unsigned seed = 4711) {
    static const char* const kFirst[] = {"Anna",  "Die",   "The",       "Los",   "Müller", "Søren",
                                         "Björk", "Queen", "Chor",      "Kraft", "Blue",   "Silver",
                                         "Café",  "Nina",  "Orchester", "DJ"};
    static const char* const kSecond[] = {"Ärzte",    "Beatles", "Toten Hosen", "Werk", "Lindström",
                                          "Sisters",  "Kapelle", "Band",        "Trio", "Hagen",
                                          "Quartett", "Project", "Lichter"};
    static const char* const kWords[] = {"Liebe",  "Nacht",  "Sommer", "Heart",  "Night",  "Road",
                                         "Zeit",   "Himmel", "Fire",   "Rain",   "Herz",   "Stadt",
                                         "Winter", "Dream",  "Blues",  "Straße", "Morgen", "Song",
                                         "Love",   "Lied",   "Meer",   "Wind",   "Light",  "Tanz"};
    static const char* const kGenres[] = {"Rock",     "Pop",   "Jazz",  "Klassik",
                                          "Schlager", "Blues", "Metal", "Folk"};
    static const char* const kTypes[] = {"MP3", "MP3", "MP3", "FLAC", "OGG", "WMA", "M4A"};
    std::mt19937 rng(seed);
    auto pick = [&](auto& arr) { return QString::fromUtf8(arr[rng() % (sizeof(arr) / sizeof(arr[0]))]); };
    auto words = [&](int n) {
        QString s;
        for (int i = 0; i < n; ++i) {
            if (i)
                s += QLatin1Char(' ');
            s += pick(kWords);
        }
        return s;
    };
    g.LockUpdate(true);
    QStringList cells;
    for (int r = 1; r <= rows; ++r) {
        cells.clear();
        const QString artist = pick(kFirst) + QLatin1Char(' ') + pick(kSecond);
        const QString title = words(1 + int(rng() % 4));
        const QString album = words(1 + int(rng() % 3));
        const QString type = pick(kTypes);
        const int secs = 90 + int(rng() % 600);
        const qint64 bytes = qint64(secs) * (16000 + qint64(rng() % 24000));
        const QString year = QString::number(1960 + rng() % 64);
        const QString track = QString::number(1 + rng() % 20);
        const QString genre = pick(kGenres);
        cells << QString::number(r);                                                         // No
        cells << (rng() % 10 == 0 ? QStringLiteral("_#-->") : QString());                    // FTag
        cells << artist + QStringLiteral(" - ") + title + QLatin1Char('.') + type.toLower(); // FileName
        cells << artist << title << type;
        cells << QStringLiteral("/home/anna/Musik/") + artist + QLatin1Char('/') + album; // Path
        cells << GroupedNumber(secs);
        cells << QStringLiteral("%1:%2")
                     .arg(secs / 60, 2, 10, QLatin1Char('0'))
                     .arg(secs % 60, 2, 10, QLatin1Char('0'));
        cells << GroupedNumber(bytes);
        cells
            << QString::number(double(bytes) / 1048576.0, 'f', 3).replace(QLatin1Char('.'), QLatin1Char(','));
        cells << QString::number(128 + 32 * (rng() % 7)) << QStringLiteral("44100");
        cells << QStringLiteral("ID3v1, ID3v2.3");
        // ID3v1 (15-21)
        cells << genre << year << track << artist.left(30) << title.left(30) << album.left(30) << QString();
        // ID3v2 (22-38)
        cells << genre << year << track << artist << title << album << QStringLiteral("Ripped by EAC");
        cells << (rng() % 3 == 0 ? pick(kFirst) + QStringLiteral(" Komponist") : QString());
        for (int i = 0; i < 7; ++i)
            cells << QString();
        cells << (rng() % 5 == 0 ? QStringLiteral("1 [Lrc]") : QStringLiteral("0"));
        cells << QString::number(rng() % 3);
        // APE, Lyrics3, typical tags: mostly empty, FLAC and OGG carry their own
        for (int c = InCol::ApeFirst; c <= InCol::LyricsLast; ++c)
            cells << QString();
        const bool typ = type == u"FLAC" || type == u"OGG";
        cells << (typ ? genre : QString()) << (typ ? year : QString()) << (typ ? track : QString());
        cells << (typ ? artist : QString()) << (typ ? title : QString()) << (typ ? album : QString());
        for (int c = InCol::TagTypComment; c <= InCol::TagTypLocation; ++c)
            cells << QString();
        cells << (rng() % 4 == 0 ? QStringLiteral("***") : QString());
        cells << (rng() % 6 == 0 ? QStringLiteral("ruhig") : QString());
        cells << QStringLiteral("%1.%2.%3")
                     .arg(1 + rng() % 28, 2, 10, QLatin1Char('0'))
                     .arg(1 + rng() % 12, 2, 10, QLatin1Char('0'))
                     .arg(2000 + rng() % 26);
        if (cells.size() != InCol::Count)
            qFatal("bench data: %d cells instead of %d", int(cells.size()), InCol::Count);
        g.AddRow(cells);
    }
    g.LockUpdate(false);
}
