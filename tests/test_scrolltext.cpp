// The scrolling text window's logic: skins written and read back field by field, the
// short files of the lighter modes, odd fields, the file name rule, a fuzz of the reader;
// the rows taken from a text, the stepping by the timer, the end of a song, the colours
// of each mode and the plain list after the end.
#include "core/AppPaths.h"
#include "core/DataGrid.h"
#include "player/FakeMediaDevice.h"
#include "text/modSText.h"
#include "text/modScrollText.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

using namespace Scroll;

namespace {
ScrollSkin Sample(int mode) {
    ScrollSkin k;
    k.Mode = mode;
    k.WindowBack = 1122867;
    k.ListBack = 2236962;
    k.ListFore = 13421772;
    k.FontName = QStringLiteral("DejaVu Sans");
    k.FontSize = 23;
    k.FontBold = false;
    k.FontItalic = true;
    k.Alignment = 0;
    k.ActBack = 3355443;
    k.ActFore = 65535;
    k.ActBold = false;
    for (int i = 0; i < TableSize; ++i) {
        k.BackTable[size_t(i)] = 100 + i;
        k.ForeTable[size_t(i)] = 200000 + i * 1000;
    }
    k.Top1Bold = true;
    return k;
}

QString Lrc() {
    return QStringLiteral("Title line\r\n[00:01.00]one\r\n[00:02.00]two\r\nno stamp\r\n[00:03.50]three\r\n");
}
} // namespace

class TestScrollText : public QObject {
    Q_OBJECT
private slots:
    void defaultSkin() {
        const ScrollSkin k = DefaultScrollSkin();
        QCOMPARE(k.Mode, 3);
        QCOMPARE(k.WindowBack, 16711680);
        QCOMPARE(k.FontName, QStringLiteral("Tahoma"));
        QCOMPARE(k.FontSize, 20);
        QVERIFY(k.FontBold && !k.FontItalic && k.ActBold && !k.Top1Bold);
        QCOMPARE(k.ActFore, 355350);
        QCOMPARE(k.BackTable[9], 16762035);
        QCOMPARE(k.ForeTable[0], 16762035);
        QCOMPARE(k.ForeTable[4], 16772070);
        QCOMPARE(k.ForeTable[5], 16772070);
        QCOMPARE(k.ForeTable[8], 16764607);
        // the writer gives back the very text of the default
        QCOMPARE(BuildScrollSkin(k), DefaultScrollSkinText());
    }

    void mode3ReadsBackAll33() {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("a.scs"));
        const ScrollSkin k = Sample(3);
        QVERIFY(SaveScrollSkin(path, k, nullptr));
        QFile f(path);
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QByteArray bytes = f.readAll();
        QVERIFY(bytes.endsWith("||||||\r\n"));
        QCOMPARE(bytes.count('\n'), 1);
        const ScrollSkin back = LoadScrollSkin(path);
        QVERIFY(back == k);
    }

    void shortFilesOfTheLighterModes() {
        const QString m0 = BuildScrollSkin(Sample(0));
        QVERIFY(m0.endsWith(QStringLiteral("||3355443|")) && !m0.contains(QStringLiteral("|||")));
        const QString m1 = BuildScrollSkin(Sample(1));
        QVERIFY(m1.endsWith(QStringLiteral("|0|||")) && !m1.contains(QStringLiteral("||||")));
        const QString m2 = BuildScrollSkin(Sample(2));
        QVERIFY(m2.endsWith(QStringLiteral("|||100||||200000|||||")));
        const QString m4 = BuildScrollSkin(Sample(4));
        QVERIFY(m4.endsWith(QStringLiteral("209000|||||")) && !m4.contains(QStringLiteral("||||||")));

        // mode 1 has no tables: they keep the defaults, everything it wrote reads back
        ScrollSkin k = DefaultScrollSkin();
        ParseScrollSkin(m1, k);
        const ScrollSkin s = Sample(1);
        QCOMPARE(k.Mode, 1);
        QCOMPARE(k.ActBack, s.ActBack);
        QCOMPARE(k.ActFore, s.ActFore);
        QCOMPARE(k.ActBold, s.ActBold);
        QCOMPARE(k.FontName, s.FontName);
        QCOMPARE(k.BackTable, DefaultScrollSkin().BackTable);
        QVERIFY(!k.Top1Bold);
        // and the window shows it rightly: only the current row can be read
        QCOMPARE(ScrollRowStyle(k, 8, 8).fore, s.ActFore);
        QCOMPARE(ScrollRowStyle(k, 8, 9).fore, k.ListBack);
        QCOMPARE(ScrollRowStyle(k, 8, 7).back, k.ListBack);

        // mode 2 and 4 keep what they wrote
        ScrollSkin k4 = DefaultScrollSkin();
        ParseScrollSkin(m4, k4);
        QCOMPARE(k4.ForeTable, Sample(4).ForeTable);
        QVERIFY(!k4.Top1Bold);
        ScrollSkin k2 = DefaultScrollSkin();
        ParseScrollSkin(m2, k2);
        QCOMPARE(k2.BackTable[0], 100);
        QCOMPARE(k2.ForeTable[0], 200000);
        QCOMPARE(k2.BackTable[1], 16762035);
        // mode 0: section 2 is the one back colour of the current row
        ScrollSkin k0 = DefaultScrollSkin();
        ParseScrollSkin(m0, k0);
        QCOMPARE(k0.ActBack, 3355443);
        QCOMPARE(k0.ActFore, 355350);
    }

    void fontNameWithBarShiftsFields() {
        ScrollSkin s = Sample(3);
        s.FontName = QStringLiteral("Odd|Font");
        ScrollSkin k = DefaultScrollSkin();
        ParseScrollSkin(BuildScrollSkin(s), k);
        QCOMPARE(k.FontName, QStringLiteral("Odd"));
        QCOMPARE(k.FontSize, 20);       // "Font" does not convert: the old value stays
        QCOMPARE(k.FontBold, false);    // took the size "23": not 1
        QCOMPARE(k.FontItalic, false);  // took "0"
        QCOMPARE(k.Alignment, 1);       // took the italic flag
        QCOMPARE(k.ActBack, s.ActBack); // later sections are found by their bars
    }

    void modeOutsideRange() {
        ScrollSkin k = DefaultScrollSkin();
        ParseScrollSkin(QStringLiteral("7|1|2|3|Tahoma|20|1|0|2||"), k);
        QCOMPARE(k.Mode, 7);
        for (int row = 1; row < 20; ++row) {
            const ScrollRowLook l = ScrollRowStyle(k, 8, row);
            QCOMPARE(l.back, 2);
            QCOMPARE(l.fore, 3);
            QVERIFY(!l.bold);
        }
        QCOMPARE(ScrollVisibleRows(7), 15);
    }

    void fileNameRule() {
        QCOMPARE(ScrollSkinFileName(QStringLiteral("Night")), QStringLiteral("Night.scs"));
        QCOMPARE(ScrollSkinFileName(QStringLiteral("Night.scs")), QStringLiteral("Night.scs"));
        QCOMPARE(ScrollSkinFileName(QStringLiteral("Night.SCS")), QStringLiteral("Night.scs"));
        QTemporaryDir dir;
        const ScrollSkin a = Sample(2), b = Sample(4);
        QVERIFY(SaveScrollSkin(dir.filePath(ScrollSkinFileName(QStringLiteral("x"))), a, nullptr));
        QVERIFY(SaveScrollSkin(dir.filePath(ScrollSkinFileName(QStringLiteral("x.scs"))), b, nullptr));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files).size(), 1);
        QCOMPARE(LoadScrollSkin(dir.filePath(QStringLiteral("x.scs"))).Mode, 4);
    }

    void missingEmptyUnreadable() {
        QTemporaryDir dir;
        QVERIFY(LoadScrollSkin(QString()) == DefaultScrollSkin());
        QVERIFY(LoadScrollSkin(dir.filePath(QStringLiteral("none.scs"))) == DefaultScrollSkin());
        QFile e(dir.filePath(QStringLiteral("empty.scs")));
        QVERIFY(e.open(QIODevice::WriteOnly));
        e.close();
        QVERIFY(LoadScrollSkin(e.fileName()) == DefaultScrollSkin());
        QVERIFY(LoadScrollSkin(dir.path()) == DefaultScrollSkin()); // a folder
        ScrollSkin k;
        QString error;
        QVERIFY(!ReadScrollSkinFile(dir.filePath(QStringLiteral("none.scs")), k, &error));
        QVERIFY(!error.isEmpty());
    }

    void fuzzReader() {
        QRandomGenerator rng(16);
        const QString base = BuildScrollSkin(Sample(3));
        const QString alphabet = QStringLiteral("|0123456789-.x \r\n\xe4");
        for (int i = 0; i < 4000; ++i) {
            QString t = base.left(int(rng.bounded(base.size() + 1)));
            const int edits = int(rng.bounded(6));
            for (int e = 0; e < edits && !t.isEmpty(); ++e) {
                const int at = int(rng.bounded(t.size()));
                const QChar c = alphabet[int(rng.bounded(alphabet.size()))];
                if (rng.bounded(2))
                    t[at] = c;
                else
                    t.insert(at, c);
            }
            ScrollSkin k = DefaultScrollSkin();
            ParseScrollSkin(t, k);
            for (int row = 1; row < 30; ++row)
                ScrollRowStyle(k, 10, row);
            ScrollVisibleRows(k.Mode);
        }
        ScrollSkin k;
        ParseScrollSkin(QStringLiteral("99999999999999|1e400|nan||||||||||||||||||||"), k);
        QCOMPARE(k.Mode, 3);
    }

    void rowsFromText() {
        DataGrid g;
        DefineScrollColumns(g);
        QCOMPARE(g.Cols(), 3);
        QVERIFY(!g.Column(ColTime).visible);
        QCOMPARE(FillScrollListFromLrc(g, Lrc()), 3);
        for (int r = 1; r <= LeadRows; ++r)
            QVERIFY(g.CellText(r, ColText).isEmpty() && g.CellText(r, ColTime).isEmpty());
        QCOMPARE(g.CellText(6, ColText), QStringLiteral("one"));
        QCOMPARE(g.CellText(6, ColTime), QStringLiteral("1000"));
        QCOMPARE(g.CellText(8, ColText), QStringLiteral("three")); // the line without a stamp went
        QCOMPARE(g.CellText(8, ColTime), QStringLiteral("3500"));
        QVERIFY(g.Rows() >= 8 + TrailRows);
        QCOMPARE(FirstTimedScrollRow(g), 6);
        QCOMPARE(FillScrollListFromLrc(g, QStringLiteral("plain\r\ntext\r\n")), 0);
        QCOMPARE(FirstTimedScrollRow(g), 0);
    }

    void firstStampAtZero() {
        DataGrid g;
        DefineScrollColumns(g);
        FillScrollListFromLrc(g, QStringLiteral("[00:00.00]zero\r\n[00:05.00]five\r\n"));
        QCOMPARE(g.CellText(6, ColTime), QStringLiteral("0"));
        // the first tick moves to the row at 0 although the position is still 0
        QCOMPARE(ScrollTickStep(g, 5, 0, 200000), ScrollStep::Next);
        // with no next stamp due, position 0 (a stop) ends the song
        QCOMPARE(ScrollTickStep(g, 6, 0, 200000), ScrollStep::End);
        QCOMPARE(ScrollTickStep(g, 6, 100, 200000), ScrollStep::None);
    }

    void nearTheEndWithRowsLeft() {
        DataGrid g;
        DefineScrollColumns(g);
        FillScrollListFromLrc(g, QStringLiteral("[00:01.00]a\r\n[03:59.50]b\r\n"));
        // rows are left (b at 239500) but the song is within a second of its end
        QCOMPARE(ScrollTickStep(g, 6, 239100, 240000), ScrollStep::End);
        QCOMPARE(ScrollTickStep(g, 6, 238900, 240000), ScrollStep::None);
    }

    void noStampAfterRow10() {
        DataGrid g;
        DefineScrollColumns(g);
        QString text;
        for (int i = 0; i < 5; ++i)
            text += QStringLiteral("[00:0%1.00]line %1\r\n").arg(i + 1);
        FillScrollListFromLrc(g, text);
        FakeMediaDevice dev;
        dev.checkFiles = false;
        QVERIFY(dev.Open(QStringLiteral("/song.mp3")));
        dev.PlayFrom(0);
        int cur = 5;
        QList<int> ends;
        for (int tick = 1; tick < 2400; ++tick) {
            dev.Advance(TickMs);
            const ScrollStep s = ScrollTickStep(g, cur, dev.Position(), 120000);
            if (s == ScrollStep::Next)
                ++cur;
            if (s == ScrollStep::End) {
                ends << tick;
                break;
            }
        }
        QCOMPARE(cur, 10); // the last stamped row stays current
        QCOMPARE(ends.size(), 1);
        QCOMPARE(ends[0] * TickMs, 119000); // until a second before the end
    }

    void stepLagsAtMostOneTick() {
        DataGrid g;
        DefineScrollColumns(g);
        FillScrollListFromLrc(g, QStringLiteral("[00:01.23]a\r\n[00:02.07]b\r\n[00:02.50]c\r\n"));
        int cur = 5;
        for (qint32 pos = 10; pos < 3000; pos += TickMs) {
            if (ScrollTickStep(g, cur, pos, 240000) == ScrollStep::Next)
                ++cur;
            const qint32 due = cur + 1 <= 8 ? qint32(g.CellText(cur + 1, ColTime).toInt()) : 1 << 30;
            QVERIFY2(pos - due < TickMs, qPrintable(QString::number(pos)));
        }
        QCOMPARE(cur, 8);
    }

    void modesColourTheirRows() {
        ScrollSkin k = Sample(3);
        // mode 3 with the current row in the middle
        QCOMPARE(ScrollVisibleRows(3), 12);
        QCOMPARE(ScrollTopRow(3, 10), 5);
        for (int d = -5; d <= 5; ++d) {
            const ScrollRowLook l = ScrollRowStyle(k, 10, 10 + d);
            if (d == 0) {
                QCOMPARE(l.back, k.ActBack);
                QCOMPARE(l.fore, k.ActFore);
                QCOMPARE(l.bold, k.ActBold);
            } else {
                const int n = d < 0 ? 6 + d : 5 + d;
                QCOMPARE(l.back, k.BackTable[size_t(n - 1)]);
                QCOMPARE(l.fore, k.ForeTable[size_t(n - 1)]);
                QCOMPARE(l.bold, d == -1);
            }
        }
        QCOMPARE(ScrollRowStyle(k, 10, 16).fore, k.ListBack);
        QCOMPARE(ScrollRowStyle(k, 10, 4).fore, k.ListBack);
        k.Top1Bold = false;
        QVERIFY(!ScrollRowStyle(k, 10, 9).bold);
        // mode 3 with the current row above 6: top row 1, the table around the row
        QCOMPARE(ScrollTopRow(3, 4), 1);
        QCOMPARE(ScrollTopRow(3, 6), 1);
        QCOMPARE(ScrollRowStyle(k, 4, 5).back, k.BackTable[5]);
        QCOMPARE(ScrollRowStyle(k, 4, 1).back, k.BackTable[2]);
        // mode 4: ten rows below
        k.Mode = 4;
        QCOMPARE(ScrollVisibleRows(4), 13);
        QCOMPARE(ScrollTopRow(4, 10), 9);
        QCOMPARE(ScrollRowStyle(k, 10, 20).fore, k.ForeTable[9]);
        QCOMPARE(ScrollRowStyle(k, 10, 21).fore, k.ListBack);
        QCOMPARE(ScrollRowStyle(k, 10, 9).fore, k.ListBack);
        // mode 2: one row below
        k.Mode = 2;
        QCOMPARE(ScrollVisibleRows(2), 4);
        QCOMPARE(ScrollRowStyle(k, 10, 11).back, k.BackTable[0]);
        QCOMPARE(ScrollRowStyle(k, 10, 12).fore, k.ListBack);
        // mode 0: list colours, the current row white on black and bold
        k.Mode = 0;
        QCOMPARE(ScrollVisibleRows(0), 15);
        QCOMPARE(ScrollRowStyle(k, 10, 10).back, Black);
        QCOMPARE(ScrollRowStyle(k, 10, 10).fore, White);
        QVERIFY(ScrollRowStyle(k, 10, 10).bold);
        QVERIFY(!ScrollRowStyle(k, 10, 9).bold);
        QCOMPARE(ScrollRowStyle(k, 10, 14).fore, k.ListFore);
        QCOMPARE(ScrollVisibleRows(1), 3);
        QCOMPARE(ScrollTopRow(1, 1), 1);
    }

    void contrast() {
        QCOMPARE(ContrastTextColor(0), White);
        QCOMPARE(ContrastTextColor(16777215), Black);
        QCOMPARE(ContrastTextColor(16711680), White); // blue: 255
        QCOMPARE(ContrastTextColor(0x00FF00), Black); // green: 1275
        QCOMPARE(ContrastTextColor(0x00CC00), White); // 1020 < 1025
        QCOMPARE(ContrastTextColor(0x00CD00), Black); // 1025
    }

    void staticListAndBackToEditor() {
        DataGrid g;
        DefineScrollColumns(g);
        FillScrollListFromLrc(g, Lrc());
        QCOMPARE(MakeStaticScrollList(g, 8), 6);
        QCOMPARE(g.Rows(), 9); // blank rows from curRow + 2 on went
        DataGrid s;
        DefineSTextColumns(s);
        ScrollListToSText(g, s, FirstTextRow);
        QCOMPARE(s.CellText(3, SText::ColText), QStringLiteral("one"));
        QCOMPARE(s.CellText(3, SText::ColMmss), QStringLiteral("00:01.00"));
        QCOMPARE(RowTime(s, 5), 3500);
        QVERIFY(s.CellText(1, SText::ColText).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestScrollText)
#include "test_scrolltext.moc"
