// The rename engine on real files in a temporary folder: the name grammar, every command
// with its edge cases, the common frame (question, mark filter, failures, sort, report),
// names a file system refuses, the journal and the undo.

#include "InstalledCaptions.h"
#include "ProgramFolder.h"
#include "core/CaptionRows.h"
#include "core/DataGrid.h"
#include "core/Prompt.h"
#include "file/modRename.h"
#include "file/modRenameJournal.h"
#include "list/InputColumns.h"
#include "list/Marks.h"
#include "list/ftcNames.h"
#include "list/modListEnv.h"
#include "list/modScan.h"
#include "tag/TagEngine.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QtTest>
#include <unistd.h>

namespace {

void Touch(const QString& path, const QByteArray& data = QByteArrayLiteral("x")) {
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(data);
}

QStringList Names(const QString& dir) {
    return QDir(dir).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

// A data list with one row per name, all selected, artist and title as the scan makes
// them.
void FillList(DataGrid& list, const QString& dir, const QStringList& names) {
    EnsureInputColumns(list);
    list.Clear();
    for (const QString& n : names) {
        Touch(dir + u'/' + n);
        QString base, ext, artist, title, number;
        SplitExtension(n, base, ext);
        if (!n.contains(u'.'))
            base = n;
        SplitArtistTitle(base, artist, title);
        if (!artist.isEmpty() && artist[0].isDigit())
            StripArtistNumber(artist, number, 0, 2);
        QStringList cells(InCol::Count);
        cells[InCol::FileName - 1] = n;
        cells[InCol::Artist - 1] = artist;
        cells[InCol::Title - 1] = title;
        cells[InCol::Path - 1] = dir;
        list.AddRow(cells);
    }
    list.SelectAll();
}

QString Cell(const DataGrid& list, const QString& name, int col) {
    const int r = list.FindRow(name, InCol::FileName);
    return r ? list.CellText(r, col) : QStringLiteral("<no row>");
}

} // namespace

class TestRename : public QObject {
    Q_OBJECT

private:
    ProgramFolder program;
    QTemporaryDir dir;
    DataGrid list;
    ScriptedPrompt prompt;

    RenameRun Run(const RenameRequest& r, bool noMsg = true, bool preview = false) {
        ListEnv env(prompt);
        return RunRename(list, r, env, noMsg, preview, &TagEngine::Shared(), RenameJournalPath());
    }
    void Fresh(const QStringList& names) {
        for (const QString& n : Names(dir.path()))
            QFile::remove(dir.filePath(n));
        FillList(list, dir.path(), names);
        prompt.shown.clear();
        prompt.answers.clear();
    }
    static RenameRequest Req(RenameCommand c) {
        RenameRequest r;
        r.command = c;
        r.digits = 2;
        return r;
    }

private slots:
    void initTestCase() {
        QVERIFY(LoadInstalledCaptions());
        QDir().mkpath(program.file(QStringLiteral("temp")));
    }

    void grammar() {
        QString a, t, n, r;
        SplitArtistTitle(QStringLiteral("01 - Artist - Title"), a, t);
        SplitNumber(a, 2, n, r);
        QCOMPARE(r, QStringLiteral("Artist"));
        QCOMPARE(t, QStringLiteral("Title"));
        SplitArtistTitle(QStringLiteral("Artist"), a, t);
        QCOMPARE(a, QStringLiteral("Artist"));
        QVERIFY(t.isEmpty());
        SplitArtistTitle(QStringLiteral("Artist -"), a, t);
        QCOMPARE(a, QStringLiteral("Artist"));
        QVERIFY(t.isEmpty());
        SplitNumber(QStringLiteral("7. Song"), 3, n, r);
        QCOMPARE(n, QStringLiteral("007"));
        QCOMPARE(r, QStringLiteral("Song"));
        SplitNumber(QStringLiteral("12 - 3"), 2, n, r);
        QCOMPARE(n, QStringLiteral("12"));
        QVERIFY(r.isEmpty());
        SplitInternalNumber(QStringLiteral("#5 Artist - Title"), 2, n, r);
        QCOMPARE(n, QStringLiteral("05"));
        QCOMPARE(r, QStringLiteral("Artist - Title"));
        QCOMPARE(ExternalPrefix(QStringLiteral("07")), QStringLiteral("07_"));
        QCOMPARE(InternalPrefix(QStringLiteral("07")), QStringLiteral("#07 "));
    }

    void swapArtistTitle() {
        Fresh({QStringLiteral("01 - Artist - Title.mp3"), QStringLiteral("#3 Band - Song.mp3"),
               QStringLiteral("Plain - Name.ogg"), QStringLiteral("NoExt - Thing")});
        list.SetCellText(1, InCol::FTag, QStringLiteral("x"));
        const RenameRun run = Run(Req(RenameCommand::SwapArtistTitle));
        QCOMPARE(run.outcome.done, 4);
        QCOMPARE(Names(dir.path()),
                 (QStringList{QStringLiteral("#03 Song - Band.mp3"), QStringLiteral("01_Title - Artist.mp3"),
                              QStringLiteral("Name - Plain.ogg"), QStringLiteral("Thing - NoExt.")}));
        QCOMPARE(Cell(list, QStringLiteral("01_Title - Artist.mp3"), InCol::Artist), QStringLiteral("Title"));
        QCOMPARE(Cell(list, QStringLiteral("01_Title - Artist.mp3"), InCol::Title), QStringLiteral("Artist"));
        QVERIFY(Cell(list, QStringLiteral("01_Title - Artist.mp3"), InCol::FTag).isEmpty());
        // Undo puts every name back, whatever the order of the list.
        list.DoSort(InCol::FileName, 2);
        const UndoOutcome u = UndoLastBatch(&list, RenameJournalPath());
        QCOMPARE(u.done, 4);
        QCOMPARE(u.failed, 0);
        QCOMPARE(Names(dir.path()),
                 (QStringList{QStringLiteral("#3 Band - Song.mp3"), QStringLiteral("01 - Artist - Title.mp3"),
                              QStringLiteral("NoExt - Thing"), QStringLiteral("Plain - Name.ogg")}));
        QCOMPARE(Cell(list, QStringLiteral("01 - Artist - Title.mp3"), InCol::Artist),
                 QStringLiteral("Artist"));
        QVERIFY(!QFile::exists(RenameJournalPath()));
        QVERIFY(!UndoLastBatch(&list, RenameJournalPath()).hadJournal);
    }

    void numberExternal() {
        Fresh({QStringLiteral("1 - Abba - SOS.mp3"), QStringLiteral("Abba - Waterloo.mp3"),
               QStringLiteral("003.Abba - Fernando.mp3")});
        const RenameRun run = Run(Req(RenameCommand::NumExt));
        QCOMPARE(run.outcome.done, 2);
        QCOMPARE(Names(dir.path()),
                 (QStringList{QStringLiteral("01_Abba - SOS.mp3"), QStringLiteral("03_Abba - Fernando.mp3"),
                              QStringLiteral("Abba - Waterloo.mp3")}));
        QCOMPARE(Cell(list, QStringLiteral("03_Abba - Fernando.mp3"), InCol::Title),
                 QStringLiteral("Fernando"));
        QCOMPARE(UndoLastBatch(&list, RenameJournalPath()).done, 2);
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("1 - Abba - SOS.mp3"))));
    }

    void numberInternal() {
        Fresh({QStringLiteral("1_Abba - SOS.mp3"), QStringLiteral("12345_Long - Number.mp3"),
               QStringLiteral("#7 Abba - Fernando.mp3"), QStringLiteral("Abba - Waterloo.mp3")});
        const RenameRun run = Run(Req(RenameCommand::NumInt));
        QCOMPARE(run.outcome.done, 2);
        QCOMPARE(run.outcome.failed, 1);
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("#01 Abba - SOS.mp3"))));
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("#07 Abba - Fernando.mp3"))));
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("12345_Long - Number.mp3"))));
        // The failed row comes first, with its mark.
        QCOMPARE(list.CellText(1, InCol::FTag), Mark::Failed);
        QCOMPARE(list.CellText(1, InCol::FileName), QStringLiteral("12345_Long - Number.mp3"));
        QCOMPARE(UndoLastBatch(&list, RenameJournalPath()).done, 2);
    }

    void numberFromTrack() {
        Fresh({});
        QFile::copy(QStringLiteral(QLT_FIXTURE_DIR "/tone.mp3"),
                    dir.filePath(QStringLiteral("05 - Abba - SOS.mp3")));
        QFile::copy(QStringLiteral(QLT_FIXTURE_DIR "/tone.mp3"),
                    dir.filePath(QStringLiteral("Abba - Waterloo.mp3")));
        QFile::setPermissions(dir.filePath(QStringLiteral("05 - Abba - SOS.mp3")),
                              QFile::ReadOwner | QFile::WriteOwner);
        QFile::setPermissions(dir.filePath(QStringLiteral("Abba - Waterloo.mp3")),
                              QFile::ReadOwner | QFile::WriteOwner);
        TagEngine& e = TagEngine::Shared();
        QVERIFY(e.OpenFile(dir.filePath(QStringLiteral("05 - Abba - SOS.mp3"))) != 0);
        e.SetV2Track(QStringLiteral("9/12"));
        QVERIFY(e.SaveV2(dir.filePath(QStringLiteral("05 - Abba - SOS.mp3"))) > 0);
        FillList(list, dir.path(), {});
        EnsureInputColumns(list);
        for (const QString& n : Names(dir.path())) {
            QStringList cells(InCol::Count);
            cells[InCol::FileName - 1] = n;
            cells[InCol::Path - 1] = dir.path();
            list.AddRow(cells);
        }
        list.SelectAll();
        RenameRequest r = Req(RenameCommand::NumFromTrack);
        r.numberInternal = true;
        const RenameRun run = Run(r);
        QCOMPARE(run.outcome.done, 1);
        QCOMPARE(run.outcome.failed, 1); // no track: 0
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("#09 Abba - SOS.mp3"))));
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("Abba - Waterloo.mp3"))));
        QCOMPARE(UndoLastBatch(&list, RenameJournalPath()).done, 1);
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("05 - Abba - SOS.mp3"))));
    }

    void removeInternalNumber() {
        Fresh({QStringLiteral("Abba - #03 SOS.mp3"), QStringLiteral("Abba - Waterloo.mp3")});
        QCOMPARE(Run(Req(RenameCommand::RemoveNumInt)).outcome.done, 1);
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("Abba - SOS.mp3"))));
    }

    void specialPrefix() {
        Fresh({QStringLiteral("Abba - SOS.mp3"), QStringLiteral("_##_Abba - Waterloo.mp3")});
        QCOMPARE(Run(Req(RenameCommand::SpecialSet)).outcome.done, 1);
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("_##_Abba - SOS.mp3"))));
        QCOMPARE(Cell(list, QStringLiteral("_##_Abba - SOS.mp3"), InCol::Artist), QStringLiteral("_##_Abba"));
        QCOMPARE(Run(Req(RenameCommand::SpecialRemove)).outcome.done, 2);
        QCOMPARE(Names(dir.path()),
                 (QStringList{QStringLiteral("Abba - SOS.mp3"), QStringLiteral("Abba - Waterloo.mp3")}));
        QCOMPARE(Cell(list, QStringLiteral("Abba - Waterloo.mp3"), InCol::Artist), QStringLiteral("Abba"));
    }

    void cutModes_data() {
        QTest::addColumn<int>("a");
        QTest::addColumn<int>("b");
        QTest::addColumn<bool>("right");
        QTest::addColumn<QString>("expected");
        QTest::newRow("from start") << 0 << 3 << false << QStringLiteral("Abba - SOS.mp3");
        QTest::newRow("from position") << 11 << 0 << false << QStringLiteral("01_Abba - .mp3");
        QTest::newRow("range") << 1 << 4 << false << QStringLiteral("Abba - SOS.mp3");
        QTest::newRow("A = B") << 3 << 3 << false << QStringLiteral("01_Abba - SOS.mp3");
        QTest::newRow("right") << 0 << 4 << true << QStringLiteral("01_Abba -_.mp3");
        QTest::newRow("right all") << 0 << 14 << true << QStringLiteral("01_Abba - SOS.mp3");
    }
    void cutModes() {
        QFETCH(int, a);
        QFETCH(int, b);
        QFETCH(bool, right);
        QFETCH(QString, expected);
        Fresh({QStringLiteral("01_Abba - SOS.mp3")});
        RenameRequest r = Req(RenameCommand::Cut);
        r.cutA = a;
        r.cutB = b;
        r.cutFromRight = right;
        const RenameRun run = Run(r);
        QCOMPARE(Names(dir.path()), QStringList{expected});
        if (expected == u"01_Abba - SOS.mp3" && b == 14)
            QCOMPARE(run.outcome.failed, 1); // the base would be empty
    }

    void cutMessages() {
        Fresh({QStringLiteral("01_Abba - SOS.mp3")});
        RenameRequest r = Req(RenameCommand::Cut);
        r.cutA = 3;
        r.cutB = 2;
        QVERIFY(!Run(r, false).ran);
        QCOMPARE(prompt.shown.size(), std::size_t(1));
        QCOMPARE(prompt.shown[0].text, Caption(CapCutPositionsOrder));
        r.cutA = r.cutB = 0;
        QVERIFY(!Run(r, false).ran);
        QCOMPARE(prompt.shown.back().text, Caption(CapNoCutPositions));
        r.cutFromRight = true;
        r.cutA = 2;
        QVERIFY(!Run(r, false).ran);
        QCOMPARE(prompt.shown.back().text, Caption(CapCutRightNeedsCount));
        QCOMPARE(Names(dir.path()), QStringList{QStringLiteral("01_Abba - SOS.mp3")});
    }

    void cutHelper() {
        int a = -1, b = -1;
        QVERIFY(!CutPositionsFromMarks(QStringLiteral("Abba"), false, a, b));
        QVERIFY(CutPositionsFromMarks(QStringLiteral("01_@Abba"), false, a, b));
        QCOMPARE(a, 4);
        QCOMPARE(b, 0);
        QVERIFY(CutPositionsFromMarks(QStringLiteral("Abba - SOS@ live"), true, a, b));
        QCOMPARE(b, 5);
        QVERIFY(CutPositionsFromMarks(QStringLiteral("Ab@ba@ - SOS"), false, a, b));
        QCOMPARE(CutBase(QStringLiteral("Abba - SOS"), CutModeOf(a, b, false, nullptr), a, b),
                 QStringLiteral("Ab - SOS"));
    }

    void replaceArtistAndText() {
        Fresh({QStringLiteral("07_Abba - SOS.mp3"), QStringLiteral("Agnetha - Waterloo.mp3")});
        RenameRequest r = Req(RenameCommand::ReplaceArtist);
        QVERIFY(!Run(r, false).ran);
        QCOMPARE(prompt.shown.back().text, Caption(CapNoNewArtist));
        r.text = QStringLiteral("ABBA");
        QCOMPARE(Run(r).outcome.done, 2);
        QCOMPARE(Names(dir.path()),
                 (QStringList{QStringLiteral("07_ABBA - SOS.mp3"), QStringLiteral("ABBA - Waterloo.mp3")}));
        r = Req(RenameCommand::ReplaceString);
        r.text = QStringLiteral("abba");
        r.replacement = QStringLiteral("Björn");
        QCOMPARE(Run(r).outcome.done, 2);
        QCOMPARE(Names(dir.path()),
                 (QStringList{QStringLiteral("07_Björn - SOS.mp3"), QStringLiteral("Björn - Waterloo.mp3")}));
        QCOMPARE(Cell(list, QStringLiteral("07_Björn - SOS.mp3"), InCol::Artist), QStringLiteral("Björn"));
    }

    void previewMovesNothing() {
        Fresh({QStringLiteral("Abba - SOS.mp3")});
        const RenameRun run = Run(Req(RenameCommand::SwapArtistTitle), false, true);
        QVERIFY(run.ran);
        QCOMPARE(run.plan.steps.size(), std::size_t(1));
        QCOMPARE(run.plan.steps[0].newName, QStringLiteral("SOS - Abba.mp3"));
        QVERIFY(prompt.shown.empty()); // the preview is the question
        QCOMPARE(Names(dir.path()), QStringList{QStringLiteral("Abba - SOS.mp3")});
        ListEnv env(prompt);
        const RenameOutcome o = ApplyPlan(list, run.plan, &env, RenameJournalPath());
        QCOMPARE(o.done, 1);
        QCOMPARE(Names(dir.path()), QStringList{QStringLiteral("SOS - Abba.mp3")});
    }

    void questionNoAndMarkFilter() {
        Fresh({QStringLiteral("Abba - SOS.mp3"), QStringLiteral("Abba - Waterloo.mp3")});
        prompt.answers = {false};
        QVERIFY(!Run(Req(RenameCommand::SwapArtistTitle), false).ran);
        QCOMPARE(Names(dir.path()),
                 (QStringList{QStringLiteral("Abba - SOS.mp3"), QStringLiteral("Abba - Waterloo.mp3")}));
        // A mark filter that matches no selected row does nothing and reports 0.
        RenameRequest r = Req(RenameCommand::SwapArtistTitle);
        r.markFilter = QStringLiteral("nothing");
        prompt.answers = {true};
        const RenameRun run = Run(r, false);
        QCOMPARE(run.outcome.done, 0);
        QCOMPARE(prompt.shown.back().text, CountText(CapSwappedCount, 0));
        // With a matching mark only that row moves.
        list.SetCellText(list.FindRow(QStringLiteral("Abba - SOS.mp3"), InCol::FileName), InCol::FTag,
                         QStringLiteral("go"));
        r.markFilter = QStringLiteral("go");
        QCOMPARE(Run(r).outcome.done, 1);
        QCOMPARE(Names(dir.path()),
                 (QStringList{QStringLiteral("Abba - Waterloo.mp3"), QStringLiteral("SOS - Abba.mp3")}));
        // No command chosen.
        QVERIFY(!Run(Req(RenameCommand::None), false).ran);
        QCOMPARE(prompt.shown.back().text, Caption(CapNoActionChosen));
    }

    void collisionTakesFreeName() {
        Fresh({QStringLiteral("Abba - SOS.mp3"), QStringLiteral("SOS - Abba.mp3")});
        list.SetSelected(2, false);
        QCOMPARE(Run(Req(RenameCommand::SwapArtistTitle)).outcome.done, 1);
        QCOMPARE(Names(dir.path()),
                 (QStringList{QStringLiteral("SOS - Abba (2).mp3"), QStringLiteral("SOS - Abba.mp3")}));
        QCOMPARE(list.FindRow(QStringLiteral("SOS - Abba (2).mp3"), InCol::FileName) > 0, true);
        QCOMPARE(UndoLastBatch(&list, RenameJournalPath()).done, 1);
        QCOMPARE(Names(dir.path()),
                 (QStringList{QStringLiteral("Abba - SOS.mp3"), QStringLiteral("SOS - Abba.mp3")}));
    }

    void missingFileFails() {
        Fresh({QStringLiteral("Abba - SOS.mp3"), QStringLiteral("Abba - Gone.mp3")});
        QFile::remove(dir.filePath(QStringLiteral("Abba - Gone.mp3")));
        const RenameRun run = Run(Req(RenameCommand::SwapArtistTitle), false);
        QCOMPARE(run.outcome.done, 1);
        QCOMPARE(run.outcome.failed, 1);
        QCOMPARE(list.CellText(1, InCol::FileName), QStringLiteral("Abba - Gone.mp3"));
        QCOMPARE(list.CellText(1, InCol::FTag), Mark::Failed);
        QVERIFY(prompt.shown.back().text.startsWith(CountText(CapFailedCount, 1)));
        QCOMPARE(prompt.shown.back().icon, Prompt::Icon::Critical);
    }

    void refusedNames() {
        QVERIFY(NameRefusal(dir.path(), QStringLiteral("a:b.mp3")).isEmpty()); // ext4 takes ":"
        QVERIFY(!NameRefusal(dir.path(), QString(200, u'ä') + QStringLiteral(".mp3")).isEmpty());
        QVERIFY(!NameRefusal(dir.path(), QStringLiteral("a/b.mp3")).isEmpty());
        Fresh({QStringLiteral("Abba - SOS.mp3")});
        RenameRequest r = Req(RenameCommand::ReplaceArtist);
        r.text = QString(300, u'x');
        const RenameRun run = Run(r);
        QCOMPARE(run.outcome.failed, 1);
        QVERIFY(run.outcome.failures[0].contains(Caption(CapReasonTooLong)));
        QCOMPARE(Names(dir.path()), QStringList{QStringLiteral("Abba - SOS.mp3")});
    }

    // A second name of the same file stands in for a file system that ignores case: the
    // target name reaches the source itself. The rename goes through an intermediate name
    // (a plain rename onto the same file would do nothing) and leaves no other name.
    void caseOnlyRename() {
        Fresh({QStringLiteral("abba - sos.mp3")});
        QVERIFY(::link(QFile::encodeName(dir.filePath(QStringLiteral("abba - sos.mp3"))).constData(),
                       QFile::encodeName(dir.filePath(QStringLiteral("ABBA - SOS.mp3"))).constData()) == 0);
        RenameRequest r = Req(RenameCommand::ReplaceString);
        r.text = QStringLiteral("abba - sos");
        r.replacement = QStringLiteral("ABBA - SOS");
        const RenameRun run = Run(r);
        QCOMPARE(run.outcome.done, 1);
        QCOMPARE(Names(dir.path()), QStringList{QStringLiteral("ABBA - SOS.mp3")});
        QCOMPARE(list.CellText(1, InCol::FileName), QStringLiteral("ABBA - SOS.mp3"));
    }

    // The same on a real vfat volume, where the machine can mount one.
    void caseOnlyRenameOnVfat() {
        if (::geteuid() != 0)
            QSKIP("mounting a vfat image needs root");
        QTemporaryDir work;
        const QString image = work.filePath(QStringLiteral("fat.img"));
        const QString mountPoint = work.filePath(QStringLiteral("m"));
        QDir().mkpath(mountPoint);
        {
            QFile f(image);
            QVERIFY(f.open(QIODevice::WriteOnly));
            QVERIFY(f.resize(8 * 1024 * 1024));
        }
        QProcess mkfs;
        mkfs.start(QStringLiteral("mkfs.vfat"), {image});
        if (!mkfs.waitForFinished() || mkfs.exitCode() != 0)
            QSKIP("no mkfs.vfat on this machine");
        QProcess mount;
        mount.start(QStringLiteral("mount"),
                    {QStringLiteral("-o"), QStringLiteral("loop"), image, mountPoint});
        if (!mount.waitForFinished() || mount.exitCode() != 0)
            QSKIP("this kernel cannot mount vfat (the hard-link case above covers the rename path)");
        struct Unmount {
            QString at;
            ~Unmount() { QProcess::execute(QStringLiteral("umount"), {at}); }
        } unmount{mountPoint};
        FillList(list, mountPoint, {QStringLiteral("abba - sos.mp3")});
        RenameRequest r = Req(RenameCommand::ReplaceString);
        r.text = QStringLiteral("abba - sos");
        r.replacement = QStringLiteral("ABBA - SOS");
        QCOMPARE(Run(r).outcome.done, 1);
        QCOMPARE(Names(mountPoint), QStringList{QStringLiteral("ABBA - SOS.mp3")});
        // vfat refuses ":" and a closing dot: the row fails before anything moves.
        r.text = QStringLiteral("SOS");
        r.replacement = QStringLiteral("S:O:S");
        const RenameRun bad = Run(r);
        QCOMPARE(bad.outcome.failed, 1);
        QVERIFY(bad.outcome.failures[0].contains(Caption(CapReasonBadCharacter)));
        QCOMPARE(Names(mountPoint), QStringList{QStringLiteral("ABBA - SOS.mp3")});
    }

    void undoTellsChangedAndTaken() {
        Fresh({QStringLiteral("Abba - SOS.mp3"), QStringLiteral("Abba - Waterloo.mp3")});
        QCOMPARE(Run(Req(RenameCommand::SwapArtistTitle)).outcome.done, 2);
        Touch(dir.filePath(QStringLiteral("SOS - Abba.mp3")), QByteArrayLiteral("changed content"));
        Touch(dir.filePath(QStringLiteral("Abba - Waterloo.mp3"))); // the old name is taken again
        const UndoOutcome u = UndoLastBatch(&list, RenameJournalPath());
        QCOMPARE(u.done, 1);
        QCOMPARE(u.changedSince, 1);
        QCOMPARE(u.failed, 1);
        // What could not be put back stays in the journal.
        std::vector<JournalEntry> left;
        QVERIFY(ReadJournal(RenameJournalPath(), left));
        QCOMPARE(left.size(), std::size_t(1));
        QCOMPARE(left[0].oldName, QStringLiteral("Abba - Waterloo.mp3"));
        QFile::remove(dir.filePath(QStringLiteral("Abba - Waterloo.mp3")));
        QCOMPARE(UndoLastBatch(&list, RenameJournalPath()).done, 1);
    }

    // Every command, then the undo: the folder is as it was.
    void undoAfterEachCommand() {
        const QStringList start{
            QStringLiteral("#4 Cream - Crossroads.mp3"), QStringLiteral("01_Abba - SOS.mp3"),
            QStringLiteral("Abba - #03 Waterloo.mp3"), QStringLiteral("_##_Doors - Helpless.mp3"),
            QStringLiteral("1 - Eagles - Desperado.mp3")};
        for (RenameCommand c :
             {RenameCommand::SwapArtistTitle, RenameCommand::NumExt, RenameCommand::NumInt,
              RenameCommand::RemoveNumInt, RenameCommand::SpecialSet, RenameCommand::SpecialRemove,
              RenameCommand::Cut, RenameCommand::ReplaceArtist, RenameCommand::ReplaceString}) {
            Fresh(start);
            RenameRequest r = Req(c);
            r.cutA = 1;
            r.cutB = 3;
            r.text = QStringLiteral("a");
            r.replacement = QStringLiteral("Ä");
            const RenameRun run = Run(r);
            QVERIFY2(run.outcome.done > 0, qPrintable(QString::number(int(c))));
            const UndoOutcome u = UndoLastBatch(&list, RenameJournalPath());
            QCOMPARE(u.done, run.outcome.done);
            QCOMPARE(u.failed, 0);
            QStringList expected = start;
            expected.sort();
            QCOMPARE(Names(dir.path()), expected);
            for (const QString& n : start)
                QVERIFY(list.FindRow(n, InCol::FileName) > 0);
        }
    }

    void journalEscapes() {
        std::vector<JournalEntry> in{{QStringLiteral("/a\tb%"), QStringLiteral("x\ny.mp3"),
                                      QStringLiteral("z\r.mp3"), QStringLiteral("Ä"), QString(), 12, 34}};
        const QString path = program.file(QStringLiteral("temp/j"));
        QVERIFY(WriteJournal(path, in));
        std::vector<JournalEntry> out;
        QVERIFY(ReadJournal(path, out));
        QCOMPARE(out.size(), std::size_t(1));
        QCOMPARE(out[0].folder, in[0].folder);
        QCOMPARE(out[0].oldName, in[0].oldName);
        QCOMPARE(out[0].newName, in[0].newName);
        QCOMPARE(out[0].oldArtist, in[0].oldArtist);
        QCOMPARE(out[0].mtimeNs, qint64(34));
    }

    // Random names through every command's rules: no crash, and every proposed name is
    // either refused with a reason or a single path component.
    void fuzzNameRules() {
        QRandomGenerator rng(1234);
        const QString alphabet = QStringLiteral("aZ09 -_#.@äß:/\t");
        DataGrid rows;
        EnsureInputColumns(rows);
        for (int i = 0; i < 400; ++i) {
            QString name;
            const int len = int(rng.bounded(24));
            for (int k = 0; k < len; ++k)
                name += alphabet[int(rng.bounded(alphabet.size()))];
            QString base, ext, artist, title;
            SplitExtension(name, base, ext);
            SplitArtistTitle(name.contains(u'.') ? base : name, artist, title);
            QStringList cells(InCol::Count);
            cells[InCol::FileName - 1] = name;
            cells[InCol::Artist - 1] = artist;
            cells[InCol::Title - 1] = title;
            cells[InCol::Path - 1] = dir.path();
            rows.AddRow(cells);
        }
        rows.SelectAll();
        for (RenameCommand c :
             {RenameCommand::SwapArtistTitle, RenameCommand::NumExt, RenameCommand::NumInt,
              RenameCommand::RemoveNumInt, RenameCommand::SpecialSet, RenameCommand::SpecialRemove,
              RenameCommand::Cut, RenameCommand::ReplaceArtist, RenameCommand::ReplaceString}) {
            for (int round = 0; round < 5; ++round) {
                RenameRequest r = Req(c);
                r.digits = 1 + int(rng.bounded(4));
                r.cutA = int(rng.bounded(12));
                r.cutB = r.cutA + int(rng.bounded(12));
                r.cutFromRight = rng.bounded(2) == 1;
                r.text = QStringLiteral("a");
                r.replacement = QStringLiteral("/x");
                const RenamePlan plan = PlanRename(rows, r);
                for (const RenameStep& s : plan.steps)
                    QVERIFY2(!s.reason.isEmpty() || (!s.newName.contains(u'/') && !s.newName.isEmpty()),
                             qPrintable(s.oldName + QStringLiteral(" -> ") + s.newName));
            }
        }
    }

    // Random and damaged journals never crash the reader and never name empty paths.
    void fuzzJournal() {
        QRandomGenerator rng(4711);
        const QString path = program.file(QStringLiteral("temp/fuzz"));
        QByteArray seed = "quillotune-journal 1\n/f\ta.mp3\tb.mp3\tA\tT\t1\t2\n";
        for (int i = 0; i < 3000; ++i) {
            QByteArray data = seed;
            const int edits = 1 + int(rng.bounded(8));
            for (int k = 0; k < edits; ++k) {
                const int at = int(rng.bounded(data.size() + 1));
                switch (rng.bounded(3)) {
                case 0:
                    data.insert(at, char(rng.bounded(256)));
                    break;
                case 1:
                    if (at < data.size())
                        data.remove(at, 1);
                    break;
                default:
                    if (at < data.size())
                        data[at] = "\t\n%\r0"[rng.bounded(5)];
                }
            }
            QFile f(path);
            QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
            f.write(data);
            f.close();
            std::vector<JournalEntry> out;
            if (ReadJournal(path, out))
                for (const JournalEntry& e : out)
                    QVERIFY(!e.folder.isEmpty() && !e.oldName.isEmpty() && !e.newName.isEmpty());
        }
    }
};

QTEST_GUILESS_MAIN(TestRename)
#include "test_rename.moc"
