// Name splits of the data list: path, extension, artist and title, track numbers.
#include "core/DataGrid.h"
#include "list/InputColumns.h"
#include "list/ftcNames.h"

#include <QtTest>

namespace {

// The scan's road from a file name to artist and title.
QPair<QString, QString> ArtistTitle(const QString& name, int digits = 2) {
    QString base, ext, artist, title, number, rest;
    SplitExtension(name, base, ext);
    SplitArtistTitle(base, artist, title);
    StripArtistNumber(artist, number, 0, digits);
    StripTitleNumber(title, number, rest, digits);
    return {artist, rest};
}

} // namespace

class TestNames : public QObject {
    Q_OBJECT
private slots:
    void numberedArtistTitle() {
        QCOMPARE(ArtistTitle("01 - Artist - Song.mp3"), qMakePair(QString("Artist"), QString("Song")));
    }
    void numberAndTitleOnly() { QCOMPARE(ArtistTitle("01 - Song.mp3"), qMakePair(QString(), QString())); }
    void artistDashTitle() {
        QCOMPARE(ArtistTitle("Artist-Song.mp3"), qMakePair(QString("Artist"), QString("Song")));
    }
    void noDash() { QCOMPARE(ArtistTitle("Song.mp3"), qMakePair(QString("Song"), QString())); }
    void dashInTitleStays() {
        QCOMPARE(ArtistTitle("Artist - Song - Live.mp3"),
                 qMakePair(QString("Artist"), QString("Song - Live")));
    }
    void umlautsKept() {
        QCOMPARE(ArtistTitle("03 - Ärzte - Lied.ogg"), qMakePair(QString("Ärzte"), QString("Lied")));
    }

    void splitArtistTitleKeepsNumber() {
        QString a, t;
        SplitArtistTitle("07 - Band - Tune", a, t);
        QCOMPARE(a, QString("07 - Band"));
        QCOMPARE(t, QString("Tune"));
        SplitArtistTitle("Song", a, t);
        QCOMPARE(a, QString("Song"));
        QVERIFY(t.isEmpty());
        SplitArtistTitle("12-Song", a, t);
        QVERIFY(a.isEmpty() && t.isEmpty());
    }

    void splitPath() {
        QString f, n;
        SplitPath("/music/a/b.mp3", f, n);
        QCOMPARE(f, QString("/music/a"));
        QCOMPARE(n, QString("b.mp3"));
        SplitPath("b.mp3", f, n);
        QVERIFY(f.isEmpty());
        QCOMPARE(n, QString("b.mp3"));
        SplitPath("/b.mp3", f, n);
        QVERIFY(f.isEmpty());
        QCOMPARE(n, QString("b.mp3"));
    }

    void splitExtension() {
        QString b, e;
        SplitExtension("a.b.flac", b, e);
        QCOMPARE(b, QString("a.b"));
        QCOMPARE(e, QString("flac"));
        SplitExtension("noextension", b, e);
        QVERIFY(b.isEmpty() && e.isEmpty());
    }

    void artistNumberWidth() {
        QString a = "7 Band", n;
        StripArtistNumber(a, n, 0, 3);
        QCOMPARE(n, QString("007"));
        QCOMPARE(a, QString("Band"));
        a = "0012 - Band";
        StripArtistNumber(a, n, 0, 2);
        QCOMPARE(n, QString("12"));
        QCOMPARE(a, QString("Band"));
        a = "Band";
        StripArtistNumber(a, n, 0, 2);
        QVERIFY(n.isEmpty());
        QCOMPARE(a, QString("Band"));
    }

    void artistFromRowWhenEmpty() {
        DataGrid g;
        for (int c = 1; c <= InCol::Count; ++c)
            g.AddColumn(QString::number(c), QString());
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = "05 - The Band - Tune.mp3";
        g.AddRow(cells);
        QString a = "05 - ", n;
        StripArtistNumber(a, n, 1, 2, &g);
        QCOMPARE(n, QString("05"));
        QCOMPARE(a, QString("The Band"));
        a = "05 - ";
        StripArtistNumber(a, n, 0, 2, &g); // the scan passes row 0: stays empty
        QVERIFY(a.isEmpty());
    }

    void titleNumber() {
        QString n, r;
        StripTitleNumber("05 Song", n, r, 2);
        QCOMPARE(n, QString("05"));
        QCOMPARE(r, QString("Song"));
        StripTitleNumber("#3 Song", n, r, 3);
        QCOMPARE(n, QString("003"));
        QCOMPARE(r, QString("Song"));
        StripTitleNumber("Song 2", n, r, 2);
        QVERIFY(n.isEmpty());
        QCOMPARE(r, QString("Song 2"));
    }

    void numericText() {
        QVERIFY(IsNumericText(u" 01 "));
        QVERIFY(IsNumericText(u"1.5"));
        QVERIFY(!IsNumericText(u""));
        QVERIFY(!IsNumericText(u"A1"));
        QVERIFY(!IsNumericText(u"1 2"));
    }
};

QTEST_GUILESS_MAIN(TestNames)
#include "test_names.moc"
