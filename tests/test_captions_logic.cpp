// The caption table: lookup, load and padding, languages, and the translators'
// commands (import, export, erase, save, find).

#include "ProgramFolder.h"
#include "core/Captions.h"
#include "core/ControlCaptions.h"
#include "core/DataGrid.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "core/Startup.h"
#include "core/modLanguage.h"

#include <QtTest>

class TestCaptionsLogic : public QObject {
    Q_OBJECT

    static void WriteText(const QString& path, const QByteArray& bytes) {
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }

    static void Load(ProgramFolder& pf) {
        QVERIFY(pf.WriteStandard());
        QVERIFY(LoadSettings());
        QVERIFY(LoadCaptionTable());
        SetLanguageColumn(kLanguageGerman);
        SetCaptionTableChanged(false);
    }

private slots:
    void emptyRowGivesEmptyText() {
        ProgramFolder pf;
        Load(pf);
        QVERIFY(Caption(2).isEmpty());
        QVERIFY(Caption(0).isEmpty());
        QVERIFY(Caption(1401).isEmpty());
        QCOMPARE(Caption(96), QStringLiteral("Die Liste ist leer."));
        SetLanguageColumn(kLanguageEnglish);
        QCOMPARE(Caption(96), QStringLiteral("The list is empty."));
        SetLanguageColumn(6); // an empty slot: no fallback to another language
        QVERIFY(Caption(96).isEmpty());
    }

    void loadPadsNumbersAndNamesTheColumns() {
        ProgramFolder pf;
        DataGrid small;
        small.AddColumn("No", QString());
        small.AddColumn("Note", QString());
        small.AddColumn("Deutsch", "Deutsch");
        small.AddColumn("English", "English");
        small.AddRow({"77", "", "Eins", "One"});
        QVERIFY(small.SaveFile(pf.file("Caption.qlt")));
        SetLanguageColumn(kLanguageEnglish);
        QVERIFY(LoadCaptionTable());
        const DataGrid& t = CaptionTable();
        QCOMPARE(t.Rows(), kCaptionRowCount);
        QCOMPARE(t.Cols(), kCaptionColumnCount);
        QCOMPARE(t.CellText(1, 1), QStringLiteral("1")); // numbered at load, not from the file
        QCOMPARE(t.CellText(1400, 1), QStringLiteral("1400"));
        QCOMPARE(t.Column(1).caption, QStringLiteral("One"));
        QCOMPARE(t.Column(3).caption, QStringLiteral("Deutsch"));
        QCOMPARE(t.Column(4).caption, QStringLiteral("English"));
        QVERIFY(!t.Column(5).visible);
    }

    void importIntoSlot5() {
        ProgramFolder pf;
        Load(pf);
        QDir(pf.path()).mkpath("language");
        const QString file = pf.file("language/qlt_Español.lng");
        WriteText(file, QStringLiteral("Núm.\r\nMarca\r\n\r\nArtista\n").toUtf8());
        const QString de4 = CaptionTable().CellText(4, 3), en1 = CaptionTable().CellText(1, 4);
        CaptionTable().SetCellText(10, 5, QStringLiteral("old text"));
        QCOMPARE(ImportLanguage(5, file), QStringLiteral("Español"));
        const DataGrid& t = CaptionTable();
        QCOMPARE(t.CellText(1, 5), QStringLiteral("Núm."));
        QCOMPARE(t.CellText(2, 5), QStringLiteral("Marca"));
        QVERIFY(t.CellText(3, 5).isEmpty());
        QCOMPARE(t.CellText(4, 5), QStringLiteral("Artista"));
        QCOMPARE(t.CellText(10, 5), QStringLiteral("old text")); // beyond a short file: kept
        QCOMPARE(t.Column(5).caption, QStringLiteral("Español"));
        QVERIFY(t.Column(5).visible);
        QCOMPARE(Setting(Ini::CaptionImportSlot5, 1), QStringLiteral("1"));
        // Columns 3 and 4 untouched.
        QCOMPARE(t.CellText(4, 3), de4);
        QCOMPARE(t.CellText(1, 4), en1);
        QCOMPARE(t.CellText(1, 3), QStringLiteral("Nr."));
        QCOMPARE(t.CellText(60, 4), QStringLiteral("Close the program?"));
        QVERIFY(CaptionTableChanged());
        const auto langs = AvailableLanguages();
        QCOMPARE(int(langs.size()), 3);
        QCOMPARE(langs[2].column, 5);
        QCOMPARE(langs[2].name, QStringLiteral("Español"));
    }

    void importWithEmptyFirstLineIsNoLanguage() {
        ProgramFolder pf;
        Load(pf);
        const QString file = pf.file("qlt_Dansk.lng");
        WriteText(file, "\r\nMarkering\r\n");
        QCOMPARE(ImportLanguage(6, file), QStringLiteral("Dansk"));
        QCOMPARE(CaptionTable().CellText(2, 6), QStringLiteral("Markering"));
        for (const LanguageEntry& l : AvailableLanguages())
            QVERIFY(l.column != 6);
        QVERIFY(Setting(Ini::CaptionImportSlot5, 1).isEmpty()); // only slot 5 sets row 97
    }

    void importIsCutAt1400Lines() {
        ProgramFolder pf;
        Load(pf);
        QByteArray text;
        for (int i = 1; i <= 1500; ++i)
            text += "line " + QByteArray::number(i) + "\r\n";
        WriteText(pf.file("qlt_Long.lng"), text);
        QCOMPARE(ImportLanguage(5, pf.file("qlt_Long.lng")), QStringLiteral("Long"));
        QCOMPARE(CaptionTable().Rows(), kCaptionRowCount);
        QCOMPARE(CaptionTable().CellText(1400, 5), QStringLiteral("line 1400"));
    }

    void importReadsWindows1252WhenNotUtf8() {
        ProgramFolder pf;
        Load(pf);
        WriteText(pf.file("qlt_Alt.lng"), QByteArray("K\xfcnstler\r\n"));
        QCOMPARE(ImportLanguage(5, pf.file("qlt_Alt.lng")), QStringLiteral("Alt"));
        QCOMPARE(CaptionTable().CellText(1, 5), QStringLiteral("Künstler"));
    }

    void importOfAMissingFileChangesNothing() {
        ProgramFolder pf;
        Load(pf);
        QVERIFY(ImportLanguage(5, pf.file("qlt_None.lng")).isEmpty());
        QVERIFY(ImportLanguage(3, pf.file("qlt_None.lng")).isEmpty());
        QVERIFY(!CaptionTableChanged());
    }

    void exportPathAndRoundTrip() {
        ProgramFolder pf;
        Load(pf);
        QCOMPARE(LanguageExportPath("/somewhere/Deutsch.lng"), pf.file("language/qlt_Deutsch.lng"));
        QCOMPARE(LanguageExportPath("QLT_English.lng"), pf.file("language/QLT_English.lng"));
        QCOMPARE(LanguageExportPath("Suomi"), pf.file("language/qlt_Suomi.lng"));
        const QString out = LanguageExportPath("English");
        QVERIFY(ExportLanguage(4, out));
        const QByteArray bytes = pf.Read("language/qlt_English.lng");
        QCOMPARE(bytes.count("\r\n"), kCaptionRowCount);
        QVERIFY(bytes.startsWith("No.\r\n"));
        QCOMPARE(ImportLanguage(5, out), QStringLiteral("English"));
        for (int r = 1; r <= kCaptionRowCount; ++r)
            QCOMPARE(CaptionTable().CellText(r, 5), CaptionTable().CellText(r, 4));
    }

    void eraseEmptiesOneColumn() {
        ProgramFolder pf;
        Load(pf);
        EraseTranslation(4);
        QVERIFY(CaptionTable().CellText(60, 4).isEmpty());
        QCOMPARE(CaptionTable().CellText(60, 3), QStringLiteral("Soll das Programm beendet werden?"));
        QCOMPARE(CaptionTable().CellText(60, 1), QStringLiteral("60"));
        QVERIFY(CaptionTableChanged());
    }

    void saveKeepsTheSpellingOfTheFile() {
        ProgramFolder pf;
        QVERIFY(pf.WriteIni());
        QVERIFY(pf.WriteCaptions(ProgramFolder::StandardCaptions(), "caption.qlt"));
        QVERIFY(LoadCaptionTable());
        CaptionTable().SetCellText(5, 3, QStringLiteral("Titel"));
        SetCaptionTableChanged(true);
        QVERIFY(SaveCaptionTable());
        QVERIFY(!CaptionTableChanged());
        QVERIFY(!QDir(pf.path()).entryList(QDir::Files).contains("Caption.qlt"));
        DataGrid g;
        QVERIFY(g.LoadFile(pf.file("caption.qlt")));
        QCOMPARE(g.CellText(5, 3), QStringLiteral("Titel"));
    }

    void findWrapsAndFindFree() {
        ProgramFolder pf;
        Load(pf);
        QCOMPARE(FindCaptionText("liste", 3, 0), 96);
        QCOMPARE(FindCaptionText("LISTE", 3, 96), 96); // wraps to row 1 and meets it again
        QCOMPARE(FindCaptionText("beende", 3, 60), 1032);
        QCOMPARE(FindCaptionText("beende", 3, 1032), 60);
        QCOMPARE(FindCaptionText("nowhere", 3, 5), 0);
        CaptionTable().SetCellText(6, 2, "note");
        CaptionTable().SetCellText(7, 2, "note");
        QCOMPARE(FindFreeCaptionRow(5), 8);
        QCOMPARE(FindFreeCaptionRow(0), 2); // row 1 holds texts: not free
        CaptionTable().SetCellText(8, 4, "text in one language only");
        QCOMPARE(FindFreeCaptionRow(5), 9);
        QCOMPARE(FindFreeCaptionRow(kCaptionRowCount), 0);
    }

    void controlCaptionTable() {
        const auto e = ParseControlCaptions(QStringLiteral("# comment\n"
                                                           "btnPref_Lng\t12\ttext\r\n"
                                                           "btnTab1_Sign(0)\t13\ttooltip\n"
                                                           "TabInput\t14\ttab:3\n"
                                                           "bad\tx\ttext\n"
                                                           "bad2\t15\tcolour\n"
                                                           "\n"));
        QCOMPARE(int(e.size()), 3);
        QCOMPARE(e[1].objectName, QStringLiteral("btnTab1_Sign(0)"));
        QCOMPARE(e[1].kind, QStringLiteral("tooltip"));
        QCOMPARE(e[2].kind, QStringLiteral("tab"));
        QCOMPARE(e[2].index, 3);
        ProgramFolder pf;
        Load(pf);
        SetControlCaptions(ParseControlCaptions(QStringLiteral("lblX\t96\ttext\n")));
        QCOMPARE(NamedCaption("lblX"), QStringLiteral("Die Liste ist leer."));
        QVERIFY(NamedCaption("lblY").isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestCaptionsLogic)
#include "test_captions_logic.moc"
