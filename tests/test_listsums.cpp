// Guards and sums of the lists: FormatDuration, the footers of ShowTotals and the label
// of the selection and marked sums.

#include "ProgramFolder.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "core/Settings.h"
#include "list/InputColumns.h"
#include "list/modList.h"

#include <QLocale>
#include <QtTest>

class TestListSums : public QObject {
    Q_OBJECT

    DataGrid list;
    QString label, markBox;

    void AddSong(const QString& seconds, const QString& bytes, const QString& mark = QString(),
                 const QString& lyrics = QString(), const QString& pics = QString()) {
        QStringList cells(InCol::Count);
        cells[InCol::No - 1] = QString::number(list.Rows() + 1);
        cells[InCol::FTag - 1] = mark;
        cells[InCol::FileName - 1] = QStringLiteral("song%1.mp3").arg(list.Rows() + 1);
        cells[InCol::DurationS - 1] = seconds;
        cells[InCol::SizeByte - 1] = bytes;
        cells[InCol::TagAnzLyrics - 1] = lyrics;
        cells[InCol::TagAnzPic - 1] = pics;
        list.AddRow(cells);
    }

private slots:
    void initTestCase() {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        for (const InputColumnDef& c : kInputColumns)
            list.AddColumn(QString::fromLatin1(c.key), QString(), c.widthTwips, c.align, true, c.sortType);
    }
    void init() {
        list.Clear();
        list.ClearFooters();
        label.clear();
        markBox.clear();
        SumTarget t = DefaultSumTarget(QStringLiteral("Input"));
        t.grid = &list;
        t.markBox = [this] { return markBox; };
        t.setLabel = [this](const QString& s) { label = s; };
        RegisterSumTarget(QStringLiteral("Input"), t);
    }

    void formatDuration() {
        QCOMPARE(FormatDuration(0), QStringLiteral("00:00"));
        QCOMPARE(FormatDuration(59), QStringLiteral("00:59"));
        QCOMPARE(FormatDuration(187), QStringLiteral("03:07"));
        QCOMPARE(FormatDuration(3599), QStringLiteral("59:59"));
        QCOMPARE(FormatDuration(3600), QStringLiteral("1:00:00"));
        QCOMPARE(FormatDuration(3787), QStringLiteral("1:03:07"));
        QCOMPARE(FormatDuration(86399), QStringLiteral("23:59:59"));
        QCOMPARE(FormatDuration(90000), QStringLiteral("25:00:00"));
    }

    void megabytes() {
        QCOMPARE(FormatMegabytes(0), QStringLiteral("0,00"));
        QCOMPARE(FormatMegabytes(1024.0 * 1024.0 * 3.5), QStringLiteral("3,50"));
        QCOMPARE(FormatMegabytes(1024.0 * 1024.0 * 999.994), QStringLiteral("999,99"));
        QCOMPARE(FormatMegabytes(1024.0 * 1024.0 * 1234.4), QStringLiteral("1.234"));
    }

    void guards() {
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        QVERIFY(LoadCaptionTable());
        SetLanguageColumn(kLanguageEnglish);
        ScriptedPrompt p;
        QVERIFY(!ListNotEmpty(list, p));
        QCOMPARE(p.LastText(), QStringLiteral("The list is empty."));
        AddSong("10", "100");
        AddSong("10", "100");
        QVERIFY(ListNotEmpty(list, p));
        QVERIFY(!AtLeastRowsSelected(list, 1, p));
        QCOMPARE(p.LastText(), QStringLiteral("No row selected."));
        QCOMPARE(int(p.shown.size()), 2);
        list.SetSelected(1, true);
        QVERIFY(AtLeastRowsSelected(list, 1, p));
        QVERIFY(!AtLeastRowsSelected(list, 2, p));
        list.SetSelected(2, true);
        QVERIFY(AtLeastRowsSelected(list, 2, p));
        QCOMPARE(int(p.shown.size()), 3);
        SetLanguageColumn(kLanguageGerman);
    }

    void emptyListLabel() {
        ShowTotals(list);
        QCOMPARE(label, QStringLiteral("(0)  00:00 mm:ss / 0,0  Mb"));
        QCOMPARE(list.FooterText(InCol::FileName), QStringLiteral("0"));
        QVERIFY(list.FooterText(InCol::DurationMS).isEmpty());
    }

    // Numbers follow the program's language, not the system's: the empty label and the
    // sizes alike.
    void numbersFollowTheLanguage() {
        SetLanguageColumn(kLanguageEnglish);
        ShowTotals(list);
        QCOMPARE(label, QStringLiteral("(0)  00:00 mm:ss / 0.0  Mb"));
        QCOMPARE(FormatMegabytes(1024.0 * 1024.0 * 3.5), QStringLiteral("3.50"));
        QCOMPARE(FormatMegabytes(1024.0 * 1024.0 * 1234.4), QStringLiteral("1,234"));
        SetLanguageColumn(kLanguageGerman);
        ShowTotals(list);
        QCOMPARE(label, QStringLiteral("(0)  00:00 mm:ss / 0,0  Mb"));
        QCOMPARE(FormatMegabytes(1024.0 * 1024.0 * 3.5), QStringLiteral("3,50"));
    }

    void totalsWithThousandsAndLrc() {
        AddSong("1.234", "1048576", "", "3 [Lrc]", "1");
        AddSong("200", "2097152", "", "2", "");
        AddSong("abc", "x", "", "", "2");
        ShowTotals(list);
        QCOMPARE(list.FooterText(InCol::FileName), QStringLiteral("3"));
        // "1.234" reads as 1.234 seconds: 201 in all.
        QCOMPARE(list.FooterText(InCol::DurationMS), QStringLiteral("03:21"));
        QCOMPARE(list.FooterText(InCol::SizeMByte), QStringLiteral("3,00"));
        QCOMPARE(list.FooterText(InCol::TagAnzLyrics), QStringLiteral("5 [1]"));
        QCOMPARE(list.FooterText(InCol::TagAnzPic), QStringLiteral("3"));
        QCOMPARE(label, QStringLiteral("(0)  00:00 mm:ss / 0,0  Mb")); // nothing selected
    }

    void selectionSum() {
        AddSong("3000", "1048576");
        AddSong("700", "524288");
        AddSong("9", "1");
        list.SetSelected(1, true);
        list.SetSelected(2, true);
        ShowSelectionSum(QStringLiteral("Input"));
        QCOMPARE(label, QStringLiteral("(2)  1:01:40 h:mm:ss / 1,50 Mb"));
        list.ClearSelection();
        list.SetSelected(3, true);
        ShowSelectionSum(QStringLiteral("Input"));
        QCOMPARE(label, QStringLiteral("(1)  00:09 mm:ss / 0,00 Mb"));
    }

    void markedSumComparesWithoutCase() {
        AddSong("60", "1048576", "Gold");
        AddSong("60", "1048576", "GOLD");
        AddSong("60", "1048576", "silver");
        AddSong("60", "1048576", "gold"); // not selected
        list.SelectRange(1, 3, true);
        markBox = QStringLiteral("gold");
        ShowTotals(list); // mark box not empty: the marked sum
        QCOMPARE(label, QStringLiteral("(2)  02:00 mm:ss / 2,00 Mb"));
        markBox.clear();
        ShowTotals(list);
        QCOMPARE(label, QStringLiteral("(3)  03:00 mm:ss / 3,00 Mb"));
    }

    void largeSelectionRestoresTheFooter() {
        for (int i = 0; i < 60; ++i)
            AddSong("1", "1");
        ShowTotals(list);
        list.SelectAll();
        QString seenDuring;
        SumTarget* t = FindSumTarget(QStringLiteral("Input"));
        QVERIFY(t);
        connect(&list, &DataGrid::footersChanged, this,
                [&] { seenDuring += list.FooterText(InCol::FileName) + u'|'; });
        ShowSelectionSum(QStringLiteral("Input"));
        disconnect(&list, &DataGrid::footersChanged, this, nullptr);
        QCOMPARE(list.FooterText(InCol::FileName), QStringLiteral("60"));
        QCOMPARE(label, QStringLiteral("(60)  01:00 mm:ss / 0,00 Mb"));
    }

    void otherListsHaveTheirColumns() {
        QCOMPARE(DefaultSumTarget("Ref").secondsCol, 9);
        QCOMPARE(DefaultSumTarget("Ref").bytesCol, 11);
        QCOMPARE(DefaultSumTarget("Ref").hintFooterCol, 4);
        QCOMPARE(DefaultSumTarget("Playlist").secondsCol, 6);
        QCOMPARE(DefaultSumTarget("Playlist").bytesCol, 8);
        ShowSelectionSum(QStringLiteral("Nowhere")); // unknown list: nothing happens
    }
};

QTEST_GUILESS_MAIN(TestListSums)
#include "test_listsums.moc"
