// qlt.ini: shape, defaults of empty cells, the rating list and the link list.

#include "ProgramFolder.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "core/Startup.h"

#include <QtTest>

class TestSettings : public QObject {
    Q_OBJECT
private slots:
    void onlyRows11To40LoadWithDefaults() {
        ProgramFolder pf;
        QMap<QPair<int, int>, QString> cells;
        for (int r = 11; r <= 40; ++r)
            cells[{r, Ini::FindChrCol1}] = QStringLiteral("find %1").arg(r);
        QVERIFY(pf.WriteIni(cells, 40)); // an older, shorter file
        QVERIFY(pf.WriteCaptions(ProgramFolder::StandardCaptions()));
        ScriptedPrompt p;
        QCOMPARE(StartProgram(p, {}), StartCheck::Ok);
        QCOMPARE(int(p.shown.size()), 0); // no message
        QCOMPARE(Settings().Cols(), Ini::Columns);
        QVERIFY(Settings().Rows() >= Ini::MinRows);
        QCOMPARE(Setting(11, Ini::FindChrCol1), QStringLiteral("find 11"));
        QCOMPARE(Setting(Ini::NumberDigits, 1), QStringLiteral("1")); // first optPref_AnzNum, written back
        QCOMPARE(NumberDigits(), 1);
        QCOMPARE(Grids::lbxRating().Rows(), 6);
        QCOMPARE(Grids::lbxRating().CellText(1, 1), QStringLiteral("*"));
        QCOMPARE(Grids::lbxRating().CellText(6, 1), QStringLiteral("******"));
        QVERIFY(!SettingOn(Ini::NoMsg, 1));
        QCOMPARE(Grids::lbxLink().Rows(), 0);
    }

    void row27KeepsItsValue() {
        ProgramFolder pf;
        QVERIFY(pf.WriteIni({{{Ini::NumberDigits, 1}, QStringLiteral("3")}}));
        QVERIFY(pf.WriteCaptions(ProgramFolder::StandardCaptions()));
        ScriptedPrompt p;
        QCOMPARE(StartProgram(p, {}), StartCheck::Ok);
        QCOMPARE(NumberDigits(), 3);
    }

    void ratingRow61SetRow62EmptyKeepsRows() {
        ProgramFolder pf;
        QVERIFY(pf.WriteIni({{{61, Ini::RatingCol}, QStringLiteral("gut")}}));
        QVERIFY(pf.WriteCaptions(ProgramFolder::StandardCaptions()));
        ScriptedPrompt p;
        QCOMPARE(StartProgram(p, {}), StartCheck::Ok);
        QCOMPARE(Grids::lbxRating().Rows(), 6);
        QCOMPARE(Grids::lbxRating().CellText(1, 1), QStringLiteral("gut"));
        QVERIFY(Grids::lbxRating().CellText(2, 1).isEmpty());
        QVERIFY(Grids::lbxRating().CellText(6, 1).isEmpty());
    }

    void linkListStopsAtFirstEmptyRow() {
        ProgramFolder pf;
        QVERIFY(pf.WriteIni({{{1, 6}, QStringLiteral("A")},
                             {{1, 7}, QStringLiteral("a")},
                             {{2, 6}, QStringLiteral("B")},
                             {{4, 6}, QStringLiteral("after a gap")}}));
        QVERIFY(pf.WriteCaptions(ProgramFolder::StandardCaptions()));
        ScriptedPrompt p;
        QCOMPARE(StartProgram(p, {}), StartCheck::Ok);
        QCOMPARE(Grids::lbxLink().Rows(), 2);
        QCOMPARE(Grids::lbxLink().CellText(1, 2), QStringLiteral("a"));
    }

    void settingAccessIsPlainText() {
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        QVERIFY(LoadSettings());
        QVERIFY(Setting(0, 1).isEmpty());
        QVERIFY(Setting(1, 99).isEmpty());
        QVERIFY(Setting(5000, 1).isEmpty());
        SetSetting(Ini::PresetPathExport, 1, QStringLiteral(" /x/y "));
        QCOMPARE(Setting(Ini::PresetPathExport, 1), QStringLiteral(" /x/y ")); // no conversion
        SetSettingOn(Ini::ToolTips, 1, true);
        QCOMPARE(Setting(Ini::ToolTips, 1), QStringLiteral("1"));
        QVERIFY(SaveSettings());
        Settings().Clear();
        QVERIFY(LoadSettings());
        QCOMPARE(Setting(Ini::PresetPathExport, 1), QStringLiteral(" /x/y "));
        QVERIFY(SettingOn(Ini::ToolTips, 1));
    }

    void aFailedWriteIsReported() {
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        QVERIFY(LoadSettings());
        QVERIFY(QFile::remove(pf.file("qlt.ini")));
        QVERIFY(QDir(pf.path()).mkdir(QStringLiteral("qlt.ini")));
        QVERIFY(!SaveSettings());
    }
};

QTEST_GUILESS_MAIN(TestSettings)
#include "test_settings.moc"
