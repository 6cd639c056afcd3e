// Start-up and closing in a program folder of the test's own: the file checks with
// their messages, the order of the steps, the language column, the closing questions
// and the order and robustness of the closing writes.

#include "ProgramFolder.h"
#include "core/AppState.h"
#include "core/CaptionRows.h"
#include "core/Captions.h"
#include "core/DataGrid.h"
#include "core/GlobalGrids.h"
#include "core/Prompt.h"
#include "core/SettingRows.h"
#include "core/Settings.h"
#include "core/Startup.h"
#include "core/modLanguage.h"

#include <QFile>
#include <QtTest>
#include <unistd.h>

class TestStartup : public QObject {
    Q_OBJECT

    static void ResetGlobals() {
        State() = AppState();
        Grids::LbxSText().Tag.clear();
        Grids::LbxPic_Extern().Tag.clear();
        Grids::lbxLink().Clear();
        Grids::LbxPic_LinkToPic().Clear();
        Grids::LbxPic_LinkToPic().RemoveAllColumns();
    }

    static void CheckMessage(const ScriptedPrompt& p, const QString& germanFirst) {
        QCOMPARE(int(p.shown.size()), 1);
        QCOMPARE(p.shown[0].kind, QStringLiteral("tell"));
        QVERIFY(p.shown[0].icon == Prompt::Icon::Critical);
        const QStringList lines = p.shown[0].text.split(u'\n');
        QCOMPARE(lines.size(), 5);
        QCOMPARE(lines[0], germanFirst);
        QCOMPARE(lines[1], QStringLiteral("Ohne diese Datei kann das Programm nicht ausgeführt werden."));
        QVERIFY(lines[2].isEmpty());
        QVERIFY(lines[3].startsWith(QStringLiteral("The file '")));
        QCOMPARE(lines[4], QStringLiteral("Without this file the program could not be executed."));
    }

    // Starts the program in `pf` with no window steps; returns the result.
    static StartCheck Start(ScriptedPrompt& p, QStringList* order = nullptr) {
        StartupSteps s;
        auto note = [order](const char* what) {
            return [order, what] {
                if (order)
                    *order << QString::fromLatin1(what);
            };
        };
        s.createTagEngine = note("engine");
        s.fillLanguageChooser = [order](const std::vector<LanguageEntry>&) {
            if (order)
                *order << QStringLiteral("languages");
        };
        s.selectFirstMainTab = note("firstTab");
        s.defineGrids = note("grids");
        s.setCaptions = note("captions");
        s.applySettings = note("settings");
        s.resetTabsAndRedraw = note("tabs");
        s.fillTextInTagChooser = note("textInTag");
        s.showWindow = note("show");
        s.removeFocusRects = note("focus");
        s.selectFirstDrive = note("drive");
        return StartProgram(p, s);
    }

private slots:
    void init() { ResetGlobals(); }

    void missingIniStopsBeforeCaptionCheck() {
        ProgramFolder pf; // neither qlt.ini nor Caption.qlt
        ScriptedPrompt p;
        QStringList order;
        QCOMPARE(Start(p, &order), StartCheck::MissingIni);
        CheckMessage(p, QStringLiteral("Die Datei 'qlt.ini' wurde nicht gefunden."));
        QVERIFY(!order.contains(QStringLiteral("show"))); // no window appears
        QVERIFY(!QFile::exists(pf.file("qlt.ini")));
    }

    void missingCaptionFile() {
        ProgramFolder pf;
        QVERIFY(pf.WriteIni());
        ScriptedPrompt p;
        QCOMPARE(CheckFiles(p), StartCheck::MissingCaption);
        CheckMessage(p, QStringLiteral("Die Datei 'caption.qlt' wurde nicht gefunden."));
    }

    void unreadableIni() {
        ProgramFolder pf;
        QVERIFY(pf.WriteCaptions(ProgramFolder::StandardCaptions()));
        QFile f(pf.file("qlt.ini"));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("this is no settings file\n");
        f.close();
        ScriptedPrompt p;
        QStringList order;
        QCOMPARE(Start(p, &order), StartCheck::UnreadableIni);
        CheckMessage(p, QStringLiteral("Die Datei 'qlt.ini' konnte nicht gelesen werden."));
        QVERIFY(!order.contains(QStringLiteral("show")));
        QCOMPARE(pf.Read("qlt.ini"), QByteArray("this is no settings file\n")); // left as it was
    }

    void lowerCaseCaptionFileIsFound() {
        ProgramFolder pf;
        QVERIFY(pf.WriteIni());
        QVERIFY(pf.WriteCaptions(ProgramFolder::StandardCaptions(), QStringLiteral("caption.qlt")));
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok);
        QCOMPARE(int(p.shown.size()), 0);
        QCOMPARE(Caption(60), QStringLiteral("Soll das Programm beendet werden?"));
    }

    void startRunsItsStepsInOrderAndRewritesIni() {
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        ScriptedPrompt p;
        QStringList order;
        QCOMPARE(Start(p, &order), StartCheck::Ok);
        QCOMPARE(order, QStringList({"engine", "languages", "firstTab", "grids", "captions", "settings",
                                     "tabs", "textInTag", "show", "focus", "drive"}));
        QCOMPARE(CaptionTable().Rows(), kCaptionRowCount);
        // The defaults written back at start are on disk: qlt.ini was rewritten.
        DataGrid onDisk;
        QVERIFY(onDisk.LoadFile(pf.file("qlt.ini")));
        QCOMPARE(onDisk.CellText(Ini::NumberDigits, 1), QStringLiteral("1"));
    }

    void captionsAreSkippedWhileEventsAreSuppressed() {
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        State().SuppressEvents = true;
        ScriptedPrompt p;
        QStringList order;
        QCOMPARE(Start(p, &order), StartCheck::Ok);
        QVERIFY(!order.contains(QStringLiteral("captions")));
    }

    void emptyRow43GivesGerman() {
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok);
        QCOMPARE(LanguageColumn(), kLanguageGerman);
        QCOMPARE(Caption(1), QStringLiteral("Nr."));
        QCOMPARE(CaptionTable().Column(1).caption, QStringLiteral("Nr."));
    }

    void row43ChoosesTheLanguage() {
        ProgramFolder pf;
        QVERIFY(pf.WriteIni({{{Ini::Language, 1}, QStringLiteral("4")}}));
        QVERIFY(pf.WriteCaptions(ProgramFolder::StandardCaptions()));
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok);
        QCOMPARE(LanguageColumn(), kLanguageEnglish);
        QCOMPARE(Caption(60), QStringLiteral("Close the program?"));
        QCOMPARE(CaptionTable().Column(2).caption, QStringLiteral("Note"));
    }

    void row43OnAColumnWithoutLanguageGivesGerman() {
        ProgramFolder pf;
        QVERIFY(pf.WriteIni({{{Ini::Language, 1}, QStringLiteral("6")}}));
        QVERIFY(pf.WriteCaptions(ProgramFolder::StandardCaptions()));
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok);
        QCOMPARE(LanguageColumn(), kLanguageGerman);
        QCOMPARE(Caption(60), QStringLiteral("Soll das Programm beendet werden?"));
    }

    void unreadableCaptionFileStartsWithEmptyTexts() {
        ProgramFolder pf;
        QVERIFY(pf.WriteIni());
        QFile f(pf.file("Caption.qlt"));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("broken\n");
        f.close();
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok); // only the three file checks end the program
        QCOMPARE(int(p.shown.size()), 0);
        QCOMPARE(CaptionTable().Rows(), kCaptionRowCount);
        QVERIFY(Caption(60).isEmpty());
        QCOMPARE(pf.Read("Caption.qlt"), QByteArray("broken\n")); // never overwritten
    }

    void aDamagedCaptionFileIsNeverSavedOverWithNothing() {
        ProgramFolder pf;
        QVERIFY(pf.WriteIni());
        QVERIFY(pf.WriteCaptions(ProgramFolder::StandardCaptions()));
        // Damaged: the first bytes are gone.
        QByteArray damaged = pf.Read("Caption.qlt");
        damaged.remove(0, 12);
        QFile f(pf.file("Caption.qlt"));
        QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(damaged);
        f.close();
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok);
        QVERIFY(Caption(60).isEmpty());
        QVERIFY(!SaveCaptionTable()); // the caption window's Save
        QCOMPARE(pf.Read("Caption.qlt"), damaged);
        // Once there is a text, the table is saved as usual.
        CaptionTable().SetCellText(5, 3, QStringLiteral("Titel"));
        QVERIFY(SaveCaptionTable());
        QVERIFY(pf.Read("Caption.qlt") != damaged);
    }

    void anUnreadableLinkListIsKeptAside() {
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        QFile f(pf.file("lnkpic.qlt"));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("\x01\x02 nothing a link list could be\n");
        f.close();
        const QByteArray before = pf.Read("lnkpic.qlt");
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok);
        // the list comes in when the picture window loads, not at the start
        QCOMPARE(int(p.shown.size()), 0);
        EnsureLinkListLoaded(p);
        EnsureLinkListLoaded(p); // once
        QCOMPARE(int(p.shown.size()), 1);
        QVERIFY(p.shown[0].icon == Prompt::Icon::Warning);
        QVERIFY(p.shown[0].text.startsWith(Caption(CapReadFailed)));
        QVERIFY(p.shown[0].text.contains(QStringLiteral("lnkpic.qlt.unreadable")));
        QCOMPARE(pf.Read("lnkpic.qlt.unreadable"), before);
        int asked = 0;
        QVERIFY(QuitProgram(asked, -1, p));
        QCOMPARE(pf.Read("lnkpic.qlt.unreadable"), before);
        // A second start finds the new (empty) list and the file kept aside untouched.
        ResetGlobals();
        ScriptedPrompt again;
        QCOMPARE(Start(again), StartCheck::Ok);
        EnsureLinkListLoaded(again);
        QCOMPARE(int(again.shown.size()), 0);
        QCOMPARE(pf.Read("lnkpic.qlt.unreadable"), before);
    }

    void anUnreadableLinkListThatCantBeMovedIsNeverOverwritten() {
        if (::geteuid() == 0)
            QSKIP("root may rename in a write-protected folder");
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        QFile f(pf.file("lnkpic.qlt"));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("garbage\n");
        f.close();
        QVERIFY(QFile::setPermissions(pf.path(), QFile::ReadOwner | QFile::ExeOwner));
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok);
        EnsureLinkListLoaded(p);
        QVERIFY(QFile::setPermissions(pf.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        int asked = 0;
        QVERIFY(QuitProgram(asked, -1, p));
        QCOMPARE(pf.Read("lnkpic.qlt"), QByteArray("garbage\n"));
    }

    void languagesAreTheColumnsWithRowOne() {
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        ScriptedPrompt p;
        std::vector<LanguageEntry> seen;
        StartupSteps s;
        s.fillLanguageChooser = [&](const std::vector<LanguageEntry>& l) { seen = l; };
        QCOMPARE(StartProgram(p, s), StartCheck::Ok);
        QCOMPARE(int(seen.size()), 2);
        QCOMPARE(seen[0].column, 3);
        QCOMPARE(seen[0].name, QStringLiteral("Deutsch"));
        QCOMPARE(seen[1].column, 4);
        QCOMPARE(seen[1].name, QStringLiteral("English"));
    }

    // ---- closing ----------------------------------------------------------------------
    void noAtAnyQuestionChangesNothing_data() {
        QTest::addColumn<int>("question");
        QTest::newRow("close?") << 1;
        QTest::newRow("time-stamped text") << 2;
        QTest::newRow("picture links") << 3;
    }
    void noAtAnyQuestionChangesNothing() {
        QFETCH(int, question);
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok);
        const QByteArray before = pf.Read("qlt.ini");
        SetSetting(Ini::NoMsg, 1, QStringLiteral("1")); // a change in memory only
        Grids::LbxSText().Tag = QStringLiteral("edited");
        Grids::LbxPic_Extern().Tag = QStringLiteral("changes");
        QFile tempFile(pf.file("temp/scratch.txt"));
        QVERIFY(tempFile.open(QIODevice::WriteOnly));
        tempFile.close();
        for (int i = 1; i < question; ++i)
            p.answers.push_back(true);
        p.answers.push_back(false);
        int asked = 0;
        QVERIFY(!QuitProgram(asked, 0, p));
        QCOMPARE(p.Count(QStringLiteral("yesno")), question);
        QCOMPARE(pf.Read("qlt.ini"), before);
        QVERIFY(!QFile::exists(pf.file("lnkpic.qlt")));
        QVERIFY(QFile::exists(pf.file("temp/scratch.txt")));
        QVERIFY(!State().SuppressEvents);
    }

    void questionTexts() {
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok);
        Grids::LbxSText().Tag = QStringLiteral("edited");
        Grids::LbxPic_Extern().Tag = QStringLiteral("changes");
        int asked = 0;
        QVERIFY(QuitProgram(asked, 0, p));
        QCOMPARE(int(p.shown.size()), 3);
        QCOMPARE(p.shown[0].text, QStringLiteral("Soll das Programm beendet werden?"));
        QCOMPARE(p.shown[1].text, QStringLiteral("Text nicht gespeichert.\n\nTrotzdem beenden?"));
        QCOMPARE(p.shown[2].text, QStringLiteral("Links nicht gespeichert.\n\nTrotzdem beenden?"));
        QVERIFY(State().SuppressEvents);
    }

    void forcedCloseSkipsTheFirstQuestion() {
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok);
        int asked = 0;
        QVERIFY(QuitProgram(asked, -1, p));
        QCOMPARE(int(p.shown.size()), 0);
        int asked2 = -1;
        QVERIFY(QuitProgram(asked2, 0, p));
        QCOMPARE(int(p.shown.size()), 0);
    }

    void iniIsWrittenBeforeTheLinkList() {
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok);
        SetSetting(Ini::PurgeLinklist, 1, QStringLiteral("1"));
        SetSetting(Ini::NoMsg, 1, QStringLiteral("1"));
        bool iniWrittenFirst = false, linkListNotYet = false;
        QuitSteps s;
        s.purgeLinkList = [&] { // runs between the two writes
            DataGrid g;
            iniWrittenFirst = g.LoadFile(pf.file("qlt.ini")) && g.CellText(Ini::NoMsg, 1) == u"1";
            linkListNotYet = !QFile::exists(pf.file("lnkpic.qlt"));
        };
        int asked = 0;
        QVERIFY(QuitProgram(asked, -1, p, s));
        QVERIFY(iniWrittenFirst);
        QVERIFY(linkListNotYet);
        QVERIFY(QFile::exists(pf.file("lnkpic.qlt")));
    }

    void aFailedIniWriteDoesNotStopTheLinkList() {
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok);
        // qlt.ini can't be written: a folder stands in its place now.
        QVERIFY(QFile::remove(pf.file("qlt.ini")));
        QVERIFY(QDir(pf.path()).mkdir(QStringLiteral("qlt.ini")));
        Grids::LbxPic_LinkToPic().AddColumn(QStringLiteral("Song"), QString());
        Grids::LbxPic_LinkToPic().AddRow({QStringLiteral("/music/a.mp3")});
        bool mediaClosed = false, unloaded = false;
        QuitSteps s;
        s.closeMedia = [&] { mediaClosed = true; };
        s.unloadForms = [&] { unloaded = true; };
        int asked = 0;
        QVERIFY(QuitProgram(asked, -1, p, s));
        DataGrid links;
        QVERIFY(links.LoadFile(pf.file("lnkpic.qlt")));
        QCOMPARE(links.CellText(1, 1), QStringLiteral("/music/a.mp3"));
        QVERIFY(mediaClosed);
        QVERIFY(unloaded);
        Grids::LbxPic_LinkToPic().RemoveAllColumns();
        Grids::LbxPic_LinkToPic().Clear();
    }

    void aThrowingStepDoesNotStopTheRest() {
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok);
        SetSetting(Ini::PurgeLinklist, 1, QStringLiteral("1"));
        QuitSteps s;
        bool unloaded = false;
        s.purgeLinkList = [] { throw std::runtime_error("purge failed"); };
        s.unloadForms = [&] { unloaded = true; };
        int asked = 0;
        QVERIFY(QuitProgram(asked, -1, p, s));
        QVERIFY(QFile::exists(pf.file("lnkpic.qlt")));
        QVERIFY(unloaded);
    }

    void tempIsEmptiedOfFilesSubfoldersStay() {
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        QDir(pf.path()).mkpath(QStringLiteral("temp/keep"));
        for (const char* name :
             {"temp/PlayTmp.m3u", "temp/synctemp.txt", "temp/.hidden", "temp/keep/inner.txt"}) {
            QFile f(pf.file(QString::fromLatin1(name)));
            QVERIFY(f.open(QIODevice::WriteOnly));
        }
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok);
        int asked = 0;
        QVERIFY(QuitProgram(asked, -1, p));
        QVERIFY(QDir(pf.file("temp")).exists());
        QCOMPARE(QDir(pf.file("temp")).entryList(QDir::Files | QDir::Hidden).size(), 0);
        QVERIFY(QDir(pf.file("temp/keep")).exists());
        QVERIFY(QFile::exists(pf.file("temp/keep/inner.txt")));
    }

    void closingRewritesTheLinkRows() {
        ProgramFolder pf;
        QMap<QPair<int, int>, QString> cells;
        for (int r = 1; r <= 5; ++r) {
            cells[{r, Ini::LinkCol1}] = QStringLiteral("Link %1").arg(r);
            cells[{r, Ini::LinkCol2}] = QStringLiteral("https://example.org/%1").arg(r);
        }
        cells[{250, Ini::LinkCol1}] = QStringLiteral("stale");
        QVERIFY(pf.WriteIni(cells));
        QVERIFY(pf.WriteCaptions(ProgramFolder::StandardCaptions()));
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok);
        DataGrid& links = Grids::lbxLink();
        QCOMPARE(links.Rows(), 5);
        links.DeleteRow(2);                                           // a deleted link
        links.AddRow({QStringLiteral("Alpha"), QStringLiteral("a")}); // a new one, sorted in
        int asked = 0;
        QVERIFY(QuitProgram(asked, -1, p));
        DataGrid g;
        QVERIFY(g.LoadFile(pf.file("qlt.ini")));
        QCOMPARE(g.CellText(1, Ini::LinkCol1), QStringLiteral("Alpha"));
        QCOMPARE(g.CellText(2, Ini::LinkCol1), QStringLiteral("Link 1"));
        QCOMPARE(g.CellText(3, Ini::LinkCol1), QStringLiteral("Link 3"));
        QCOMPARE(g.CellText(5, Ini::LinkCol1), QStringLiteral("Link 5"));
        QCOMPARE(g.CellText(5, Ini::LinkCol2), QStringLiteral("https://example.org/5"));
        QVERIFY(g.CellText(6, Ini::LinkCol1).isEmpty());
        QVERIFY(g.CellText(6, Ini::LinkCol2).isEmpty());
        QVERIFY(g.CellText(250, Ini::LinkCol1).isEmpty());
    }

    void existingLinkListSurvivesAStartAndAClose() {
        ProgramFolder pf;
        QVERIFY(pf.WriteStandard());
        DataGrid links;
        links.AddColumn(QStringLiteral("Song"), QString());
        links.AddColumn(QStringLiteral("Picture"), QString());
        links.AddRow({QStringLiteral("/m/a.mp3"), QStringLiteral("/p/a.jpg")});
        QVERIFY(links.SaveFile(pf.file("lnkpic.qlt")));
        ScriptedPrompt p;
        QCOMPARE(Start(p), StartCheck::Ok);
        int asked = 0;
        QVERIFY(QuitProgram(asked, -1, p));
        DataGrid back;
        QVERIFY(back.LoadFile(pf.file("lnkpic.qlt")));
        QCOMPARE(back.Rows(), 1);
        QCOMPARE(back.CellText(1, 2), QStringLiteral("/p/a.jpg"));
        Grids::LbxPic_LinkToPic().RemoveAllColumns();
        Grids::LbxPic_LinkToPic().Clear();
    }
};

QTEST_GUILESS_MAIN(TestStartup)
#include "test_startup.moc"
